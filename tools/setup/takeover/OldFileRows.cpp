#include "setup/takeover/OldFileAccess.h"

#include "platform/values/Literals.h"

#include <QIODevice>
#include <QtEndian>

#include <iconv.h>

#include <cstring>

namespace takeover {

namespace {

template <class T>
T little(const uchar* at) {
    return qFromLittleEndian<T>(at);
}

/// Bytes of a Windows code page as UTF-8. What the page doesn't define stays under its own number,
/// as Windows has it.
class CodePage {
  public:
    explicit CodePage(int number)
        : m_handle(iconv_open("UTF-8", ("CP" + QByteArray::number(number)).constData())) {
        if (m_handle == none())
            m_handle = iconv_open("UTF-8", "CP1252");
    }
    ~CodePage() { iconv_close(m_handle); }
    CodePage(const CodePage&) = delete;
    CodePage& operator=(const CodePage&) = delete;

    QByteArray decode(const uchar* text, std::size_t size) {
        QByteArray result(static_cast<qsizetype>(size) * 4 + 8, Qt::Uninitialized);
        auto* in = const_cast<char*>(reinterpret_cast<const char*>(text));
        char* out = result.data();
        std::size_t left = size, room = static_cast<std::size_t>(result.size());
        while (left > 0 &&
               iconv(m_handle, &in, &left, &out, &room) == static_cast<std::size_t>(-1)) {
            if (left == 0)
                break;
            const auto odd = static_cast<uchar>(*in++);
            --left;
            *out++ = static_cast<char>(0xc0 | (odd >> 6));
            *out++ = static_cast<char>(0x80 | (odd & 0x3f));
            room -= 2;
            iconv(m_handle, nullptr, nullptr, nullptr, nullptr);
        }
        result.truncate(out - result.data());
        return result;
    }

  private:
    static iconv_t none() { return reinterpret_cast<iconv_t>(-1); }
    iconv_t m_handle;
};

/// UTF-16, or behind FF FE bytes for characters below 256 in which a 0 switches to UTF-16 and back.
QByteArray wideText(const uchar* text, std::size_t size) {
    QString wide;
    const auto pair = [&](std::size_t at) { wide += QChar(little<quint16>(text + at)); };
    if (size >= 2 && text[0] == 0xff && text[1] == 0xfe) {
        bool compressed = true;
        for (std::size_t i = 2; i < size;) {
            if (text[i] == 0) {
                compressed = !compressed;
                ++i;
            } else if (compressed) {
                wide += QChar(text[i++]);
            } else if (i + 1 < size) {
                // A character whose low byte is 0 would look like the switch, and never stands
                // here.
                pair(i);
                i += 2;
            } else {
                break;
            }
        }
    } else {
        for (std::size_t i = 0; i + 1 < size; i += 2)
            pair(i);
    }
    return wide.toUtf8();
}

/// Writes the values of one row.
class RowWriter {
  public:
    void clear() { m_bytes.clear(); }
    const QByteArray& bytes() const { return m_bytes; }
    void tag(OldValue::Kind kind) { m_bytes += static_cast<char>(kind); }
    template <class T>
    void plain(OldValue::Kind kind, T value) {
        tag(kind);
        m_bytes.append(reinterpret_cast<const char*>(&value), sizeof value);
    }
    void text(OldValue::Kind kind, const QByteArray& value) {
        plain(kind, static_cast<qint32>(value.size()));
        m_bytes += value;
    }

  private:
    QByteArray m_bytes;
};

class Decoder {
  public:
    explicit Decoder(MdbHandle* file)
        : m_file(file), m_narrow(IS_JET3(file)), m_page(file->f->code_page) {}

    qint64 broken = 0;

    void write(const MdbColumn& column, const MdbField& field, RowWriter& row) {
        using Kind = OldValue::Kind;
        if (column.col_type == MDB_BOOL) {
            row.plain(Kind::Whole, qint64{field.is_null ? 0 : 1});
            return;
        }
        const auto* at = static_cast<const uchar*>(field.value);
        const auto size = static_cast<std::size_t>(std::max(field.siz, 0));
        if (field.is_null || at == nullptr) {
            row.tag(Kind::Null);
            return;
        }
        if (size < needed(column.col_type)) {
            fail(row);
            return;
        }
        switch (column.col_type) {
        case MDB_BYTE:
            row.plain(Kind::Whole, qint64{*at});
            break;
        case MDB_INT:
            row.plain(Kind::Whole, qint64{little<qint16>(at)});
            break;
        case MDB_LONGINT:
            row.plain(Kind::Whole, qint64{little<qint32>(at)});
            break;
        case MDB_MONEY:
            row.plain(Kind::Money, little<qint64>(at));
            break;
        case MDB_FLOAT:
            row.plain(Kind::Real, double{little<float>(at)});
            break;
        case MDB_DOUBLE:
            row.plain(Kind::Real, little<double>(at));
            break;
        case MDB_DATETIME:
            row.plain(Kind::Date, little<double>(at));
            break;
        case MDB_TEXT:
            row.text(Kind::Text, text(at, size));
            break;
        case MDB_MEMO:
        case MDB_OLE:
            longValue(at, size, column.col_type == MDB_MEMO, row);
            break;
        case MDB_NUMERIC:
            row.text(Kind::Decimal, decimal(at, column.col_scale));
            break;
        case MDB_REPID:
            row.text(Kind::Text, guid(at));
            break;
        default:
            row.text(Kind::Bytes,
                     QByteArray(reinterpret_cast<const char*>(at), static_cast<qsizetype>(size)));
        }
    }

  private:
    static std::size_t needed(int type) {
        switch (type) {
        case MDB_BYTE:
            return 1;
        case MDB_INT:
            return 2;
        case MDB_LONGINT:
        case MDB_FLOAT:
            return 4;
        case MDB_MONEY:
        case MDB_DOUBLE:
        case MDB_DATETIME:
            return 8;
        case MDB_MEMO:
        case MDB_OLE:
            return 12;
        case MDB_REPID:
            return 16;
        case MDB_NUMERIC:
            return 17;
        default:
            return 0;
        }
    }

    void fail(RowWriter& row) {
        ++broken;
        row.tag(OldValue::Kind::Broken);
    }

    QByteArray text(const uchar* at, std::size_t size) {
        return m_narrow ? m_page.decode(at, size) : wideText(at, size);
    }

    void longValue(const uchar* at, std::size_t size, bool isText, RowWriter& row) {
        const quint32 head = little<quint32>(at);
        const std::size_t length = head & 0x3fffffff;
        QByteArray whole;
        bool sound = true;
        if (head & 0x80000000) {
            whole = QByteArray(reinterpret_cast<const char*>(at + 12),
                               static_cast<qsizetype>(size - 12));
        } else if (length > 0) {
            sound = collect(little<quint32>(at + 4), length, (head & 0x40000000) != 0, whole);
        }
        if (!sound || static_cast<std::size_t>(whole.size()) != length) {
            fail(row);
            return;
        }
        if (isText)
            row.text(OldValue::Kind::Text,
                     text(reinterpret_cast<const uchar*>(whole.constData()), length));
        else
            row.text(OldValue::Kind::Bytes, whole);
    }

    /// The rows of other pages in which a long value stands.
    bool collect(quint32 place, std::size_t length, bool single, QByteArray& whole) {
        const auto pages = static_cast<qint64>(length / 16 + 2);
        for (qint64 step = 0; place != 0 && step < pages; ++step) {
            void* buffer = nullptr;
            int start = 0;
            std::size_t size = 0;
            if (mdb_find_pg_row(m_file, static_cast<int>(place), &buffer, &start, &size) != 0 ||
                buffer == nullptr)
                return false;
            start &= 0x1fff;
            const std::size_t head = single ? 0 : 4;
            if (size < head || static_cast<std::size_t>(start) + size >
                                   static_cast<std::size_t>(m_file->fmt->pg_size))
                return false;
            const auto* bytes = static_cast<const uchar*>(buffer) + start;
            whole.append(reinterpret_cast<const char*>(bytes + head),
                         static_cast<qsizetype>(size - head));
            if (single)
                return true;
            if (static_cast<std::size_t>(whole.size()) > length)
                return false;
            place = little<quint32>(bytes);
        }
        return place == 0;
    }

    /// Sign, then 128 bits in four words, the highest first.
    static QByteArray decimal(const uchar* at, int scale) {
        std::array<quint32, 4> words{};
        for (std::size_t i = 0; i < 4; ++i)
            words[i] = little<quint32>(at + 1 + 4 * i);
        QByteArray digits;
        while (std::any_of(words.begin(), words.end(), [](quint32 w) { return w != 0; })) {
            quint64 rest = 0;
            for (quint32& word : words) {
                rest = (rest << 32) | word;
                word = static_cast<quint32>(rest / 10);
                rest %= 10;
            }
            digits.prepend(static_cast<char>('0' + rest));
        }
        while (digits.size() <= scale)
            digits.prepend('0');
        if (scale > 0)
            digits.insert(digits.size() - scale, '.');
        return at[0] != 0 ? '-' + digits : digits;
    }

    static QByteArray guid(const uchar* at) {
        QByteArray text = "{";
        for (const int i : {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15})
            text += i < 0 ? QByteArray("-")
                          : QByteArray(reinterpret_cast<const char*>(at + i), 1).toHex().toUpper();
        return text + '}';
    }

    MdbHandle* m_file;
    bool m_narrow;
    CodePage m_page;
};

void send(QIODevice& out, char mark, const QByteArray& bytes) {
    const auto size = static_cast<qint32>(bytes.size());
    QByteArray head(1, mark);
    head.append(reinterpret_cast<const char*>(&size), sizeof size);
    out.write(head + bytes);
}

} // namespace

int writeRows(const QString& path, const QString& name, QIODevice& out) {
    const OpenOldFile file(path);
    const TableOfFile table(file, name);
    if (!table)
        return 1;
    MdbTableDef* definition = table.definition();
    Decoder decoder(file.handle());
    OldEnd end;
    RowWriter row;
    std::vector<MdbField> fields(definition->num_cols);
    MdbHandle* handle = file.handle();
    mdb_rewind_table(definition);
    while (mdb_read_next_dpg(definition)) {
        const int rows = mdb_get_int16(handle->pg_buf, handle->fmt->row_count_offset);
        for (int i = 0; i < rows; ++i) {
            int start = 0;
            std::size_t size = 0;
            if (mdb_find_row(handle, i, &start, &size) != 0 || size == 0) {
                ++end.damagedRows;
                continue;
            }
            if (start & 0x4000) { // deleted, or moved: a moved row comes on its own page
                ++end.deleted;
                continue;
            }
            if (mdb_crack_row(definition, start & 0x1fff, size, fields.data()) < 0) {
                ++end.damagedRows;
                continue;
            }
            row.clear();
            for (const MdbField& field : fields)
                decoder.write(*table.column(static_cast<unsigned>(field.colnum)), field, row);
            send(out, 'R', row.bytes());
            ++end.rows;
        }
    }
    end.brokenValues = decoder.broken;
    send(out, 'E', QByteArray(reinterpret_cast<const char*>(&end), sizeof end));
    return 0;
}

} // namespace takeover
