#include "setup/takeover/OldReader.h"

#include "core/keeping/Files.h"
#include "platform/values/Literals.h"

#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QtEndian>

#include <cstring>

namespace takeover {

namespace {

/// A reading process that has said nothing for so long won't any more.
constexpr int silentMilliseconds = 60000;

QByteArray firstBytes(const QString& path, qint64 count) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.read(count) : QByteArray();
}

QByteArray unmasked(const QByteArray& key, const QByteArray& bytes) {
    std::array<uchar, 256> state{};
    for (std::size_t i = 0; i < state.size(); ++i)
        state[i] = static_cast<uchar>(i);
    for (std::size_t i = 0, j = 0; i < state.size(); ++i) {
        j = (j + state[i] + static_cast<uchar>(key[static_cast<qsizetype>(i) % key.size()])) & 0xff;
        std::swap(state[i], state[j]);
    }
    QByteArray result = bytes;
    std::size_t i = 0, j = 0;
    for (char& byte : result) {
        i = (i + 1) & 0xff;
        j = (j + state[i]) & 0xff;
        std::swap(state[i], state[j]);
        byte = static_cast<char>(static_cast<uchar>(byte) ^ state[(state[i] + state[j]) & 0xff]);
    }
    return result;
}

/// Takes the values of a row out of its bytes; false where they end too early.
bool parseRow(const QByteArray& bytes, std::vector<OldValue>& values) {
    const char* at = bytes.constData();
    const char* const end = at + bytes.size();
    const auto take = [&](void* into, std::size_t size) {
        if (end - at < static_cast<qsizetype>(size))
            return false;
        std::memcpy(into, at, size);
        at += size;
        return true;
    };
    using Kind = OldValue::Kind;
    for (OldValue& value : values) {
        char kind = 0;
        if (!take(&kind, 1))
            return false;
        value.kind = static_cast<Kind>(kind);
        switch (value.kind) {
        case Kind::Null:
        case Kind::Broken:
            break;
        case Kind::Whole:
        case Kind::Money:
            if (!take(&value.whole, sizeof value.whole))
                return false;
            break;
        case Kind::Real:
        case Kind::Date:
            if (!take(&value.real, sizeof value.real))
                return false;
            break;
        default: {
            qint32 size = 0;
            if (!take(&size, sizeof size) || size < 0 || end - at < size)
                return false;
            value.bytes = QByteArray::fromRawData(at, size);
            at += size;
        }
        }
    }
    return at == end;
}

QStringList texts(const QJsonValue& array) {
    QStringList list;
    const QJsonArray items = array.toArray();
    for (const QJsonValue& item : items)
        list += item.toString();
    return list;
}

OldTable tableOf(const QJsonObject& object) {
    OldTable table;
    table.name = object[u"name"].toString();
    table.problem = object[u"problem"].toString();
    table.rowsTold = object[u"rows"].toInteger();
    table.lastGiven = object[u"given"].toInteger();
    const QJsonArray columns = object[u"columns"].toArray();
    for (const QJsonValue& item : columns)
        table.columns.push_back({item[u"name"].toString(),
                                 static_cast<OldType>(item[u"type"].toInt()),
                                 item[u"width"].toInt(), item[u"counter"].toBool()});
    return table;
}

} // namespace

QString nameOf(OldType type, bool counter) {
    switch (type) {
    case OldType::YesNo:
        return u"YESNO"_s;
    case OldType::Byte:
        return u"BYTE"_s;
    case OldType::Integer:
        return u"INTEGER"_s;
    case OldType::Long:
        return counter ? u"COUNTER"_s : u"LONG"_s;
    case OldType::Currency:
        return u"CURRENCY"_s;
    case OldType::Single:
        return u"SINGLE"_s;
    case OldType::Double:
        return u"DOUBLE"_s;
    case OldType::DateTime:
        return u"DATETIME"_s;
    case OldType::Text:
        return u"TEXT"_s;
    case OldType::Memo:
        return u"MEMO"_s;
    case OldType::Guid:
        return u"GUID"_s;
    case OldType::Decimal:
        return u"DECIMAL"_s;
    case OldType::Ole:
        return u"OLE"_s;
    default:
        return u"BINARY"_s;
    }
}

FileKind kindOf(const QString& path) {
    const QByteArray head = firstBytes(path, 32);
    if (head.isEmpty())
        return FileKind::Nothing;
    if (head.mid(4, 15) == "Standard Jet DB" || head.mid(4, 15) == "Standard ACE DB")
        return FileKind::OldDatabase;
    return head.startsWith("SQLite format 3") ? FileKind::PresentDatabase : FileKind::Other;
}

QString passwordOfFile(const QString& path) {
    const QByteArray head = firstBytes(path, 0x98);
    if (head.size() < 0x98)
        return {};
    const bool narrow = head[0x14] == 0; // Jet 3
    const QByteArray plain =
        unmasked(QByteArray::fromHex("c7da396b"), head.mid(0x18, narrow ? 126 : 128));
    QByteArray password = plain.mid(0x42 - 0x18, narrow ? 20 : 40);
    if (narrow) {
        const auto end = password.indexOf('\0');
        return QString::fromLatin1(end < 0 ? password : password.left(end));
    }
    double created = 0;
    std::memcpy(&created, plain.constData() + 0x72 - 0x18, sizeof created);
    const quint32 mask = qToLittleEndian(
        std::abs(created) < 1e9 ? static_cast<quint32>(static_cast<qint32>(created)) : 0U);
    const auto* bytes = reinterpret_cast<const char*>(&mask);
    QString text;
    for (qsizetype i = 0; i < password.size(); ++i)
        password[i] = static_cast<char>(password[i] ^ bytes[i % 4]);
    for (qsizetype i = 0; i + 1 < password.size(); i += 2) {
        const auto unit = qFromLittleEndian<quint16>(password.constData() + i);
        if (unit == 0)
            break;
        text += QChar(unit);
    }
    return text;
}

OldCatalogue OldReader::catalogue() const {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(m_program, {u"old-catalogue"_s, m_path});
    if (!process.waitForFinished(silentMilliseconds) ||
        process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0) {
        process.kill();
        process.waitForFinished();
        throw keeping::Refusal(
            u"The file is too damaged to be read: its catalogue can't be found."_s);
    }
    const QJsonObject object = QJsonDocument::fromJson(process.readAllStandardOutput()).object();
    OldCatalogue catalogue;
    catalogue.format = object[u"format"].toString();
    catalogue.codePage = object[u"codePage"].toInt();
    catalogue.linked = texts(object[u"linked"]);
    catalogue.others = texts(object[u"others"]);
    catalogue.damages = texts(object[u"damages"]);
    const QJsonArray tables = object[u"tables"].toArray();
    for (const QJsonValue& table : tables)
        catalogue.tables.push_back(tableOf(table.toObject()));
    return catalogue;
}

std::optional<OldEnd> OldReader::rows(const OldTable& table,
                                      const std::function<void(const std::vector<OldValue>&)>& take,
                                      QString& problem) const {
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.setReadChannel(QProcess::StandardOutput);
    process.start(m_program, {u"old-rows"_s, m_path, table.name});
    std::vector<OldValue> values(table.columns.size());
    QByteArray buffer;
    qsizetype at = 0;
    std::optional<OldEnd> end;
    try {
        while (!end &&
               (process.bytesAvailable() > 0 || process.waitForReadyRead(silentMilliseconds))) {
            buffer.remove(0, at);
            at = 0;
            buffer += process.readAll();
            while (buffer.size() - at >= 5) {
                qint32 size = 0;
                std::memcpy(&size, buffer.constData() + at + 1, sizeof size);
                if (size < 0 || buffer.size() - at - 5 < size)
                    break;
                const QByteArray frame = QByteArray::fromRawData(buffer.constData() + at + 5, size);
                if (buffer[at] == 'E' && size == static_cast<qint32>(sizeof(OldEnd)))
                    std::memcpy(&end.emplace(), frame.constData(), sizeof(OldEnd));
                else if (parseRow(frame, values))
                    take(values);
                at += 5 + size;
            }
        }
    } catch (...) {
        process.kill();
        process.waitForFinished();
        throw;
    }
    if (process.state() != QProcess::NotRunning && !process.waitForFinished(end ? 10000 : 1000)) {
        process.kill();
        process.waitForFinished();
        problem = u"reading it hangs"_s;
        return end;
    }
    if (!end)
        problem = u"reading it breaks off"_s;
    return end;
}

} // namespace takeover
