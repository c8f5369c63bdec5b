#include "platform/report/Document.h"

#include "platform/report/ReportError.h"
#include "platform/values/Literals.h"

#include <QDataStream>
#include <QDir>

#include <algorithm>

namespace report {

namespace {

constexpr qint64 memoryLimit = 8 << 20;

void write(QDataStream& out, const Page& page) {
    out << static_cast<quint32>(page.items.size());
    for (const auto& item : page.items) {
        out << static_cast<quint8>(item.kind) << static_cast<quint8>(item.align) << item.style
            << item.x << item.y << item.w << item.h;
        switch (item.kind) {
        case PageItem::Kind::Text:
            out << item.text;
            break;
        case PageItem::Kind::Line:
        case PageItem::Kind::Box:
            out << item.thickness << item.color << item.fill;
            break;
        case PageItem::Kind::Picture:
            break;
        case PageItem::Kind::Bars:
            out << item.text << static_cast<quint32>(item.rectangles.size());
            for (const float value : item.rectangles)
                out << value;
            break;
        case PageItem::Kind::Scan:
            out << item.picture;
            break;
        }
    }
}

Page read(QDataStream& in) {
    Page page;
    quint32 count = 0;
    in >> count;
    page.items.resize(count);
    for (auto& item : page.items) {
        quint8 kind = 0;
        quint8 align = 0;
        in >> kind >> align >> item.style >> item.x >> item.y >> item.w >> item.h;
        item.kind = static_cast<PageItem::Kind>(kind);
        item.align = static_cast<Align>(align);
        switch (item.kind) {
        case PageItem::Kind::Text:
            in >> item.text;
            break;
        case PageItem::Kind::Line:
        case PageItem::Kind::Box:
            in >> item.thickness >> item.color >> item.fill;
            break;
        case PageItem::Kind::Picture:
            break;
        case PageItem::Kind::Bars: {
            quint32 values = 0;
            in >> item.text >> values;
            item.rectangles.resize(values);
            for (auto& value : item.rectangles)
                in >> value;
            break;
        }
        case PageItem::Kind::Scan:
            in >> item.picture;
            break;
        }
    }
    return page;
}

} // namespace

void Document::append(const Page& page) {
    QByteArray bytes;
    QDataStream out(&bytes, QIODevice::WriteOnly);
    out.setFloatingPointPrecision(QDataStream::SinglePrecision);
    write(out, page);
    m_offsets.push_back(m_size);
    m_size += bytes.size();
    const auto cannotWrite = [&] {
        throw ReportError(codes::fileError, m_file->fileName() + u": "_s + m_file->errorString());
    };
    if (!m_file && m_size <= memoryLimit) {
        m_memory += bytes;
        return;
    }
    if (!m_file) {
        m_file = std::make_unique<QTemporaryFile>(QDir::temp().filePath(u"mirsa-report-XXXXXX"_s));
        if (!m_file->open() || m_file->write(m_memory) != m_memory.size())
            cannotWrite();
        m_memory = QByteArray();
    }
    m_file->seek(m_file->size());
    if (m_file->write(bytes) != bytes.size())
        cannotWrite();
}

Page Document::page(int index) const {
    const auto place = static_cast<std::size_t>(index);
    const qint64 from = m_offsets[place];
    const qint64 to = place + 1 < m_offsets.size() ? m_offsets[place + 1] : m_size;
    QByteArray bytes;
    if (m_file) {
        m_file->seek(from);
        bytes = m_file->read(to - from);
    } else {
        bytes = QByteArray::fromRawData(m_memory.constData() + from, to - from);
    }
    QDataStream in(bytes);
    in.setFloatingPointPrecision(QDataStream::SinglePrecision);
    Page result = read(in);
    for (auto& item : result.items) {
        if (item.kind == PageItem::Kind::Text && item.text.contains(QChar(pageTotalMark)))
            item.text.replace(QChar(pageTotalMark), QString::number(pageCount()));
        else if (item.kind == PageItem::Kind::Text)
            item.align = Align::Left;
    }
    return result;
}

QString Page::text() const {
    std::vector<const PageItem*> texts;
    for (const auto& item : items) {
        if (item.kind == PageItem::Kind::Text)
            texts.push_back(&item);
    }
    const auto above = [](const PageItem* a, const PageItem* b) { return a->y < b->y; };
    std::stable_sort(texts.begin(), texts.end(), above);
    QString result;
    for (std::size_t first = 0; first < texts.size();) {
        // Texts that share the greater part of their heights are read as one row.
        std::size_t last = first;
        while (last < texts.size() && texts[last]->y < texts[first]->y + texts[first]->h / 2)
            ++last;
        std::stable_sort(texts.begin() + static_cast<std::ptrdiff_t>(first),
                         texts.begin() + static_cast<std::ptrdiff_t>(last),
                         [](const PageItem* a, const PageItem* b) { return a->x < b->x; });
        for (std::size_t index = first; index < last; ++index) {
            result += index == first ? QString() : u"\t"_s;
            result += texts[index]->text;
        }
        result += u'\n';
        first = last;
    }
    return result;
}

} // namespace report
