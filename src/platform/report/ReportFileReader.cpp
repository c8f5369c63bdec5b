#include "platform/report/ReportError.h"
#include "platform/report/ReportFile.h"
#include "platform/values/Literals.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QXmlStreamReader>

#include <stdexcept>

namespace report {

namespace {

QSizeF paperSize(const QString& name) {
    static const QHash<QString, QSizeF> sizes{
        {u"letter"_s, {215.9, 279.4}}, {u"legal"_s, {215.9, 355.6}}, {u"tabloid"_s, {279.4, 431.8}},
        {u"a3"_s, {297, 420}},         {u"a4"_s, {210, 297}},        {u"a5"_s, {148, 210}}};
    return sizes.value(name.toLower());
}

/// The path as it stands in its folder: names are given without regard to case, as the catalogue
/// has them. Empty if there is no such file.
QString existingFile(const QString& path) {
    const QFileInfo info(path);
    if (info.isFile())
        return path;
    const QDir folder = info.dir();
    for (const auto& name : folder.entryList(QDir::Files)) {
        if (name.compare(info.fileName(), Qt::CaseInsensitive) == 0)
            return folder.filePath(name);
    }
    return {};
}

class Reader {
  public:
    Reader(const QByteArray& xml, const QString& path) : m_xml(xml) { m_report.path = path; }

    ReportFile read() {
        try {
            readReport();
        } catch (const std::invalid_argument& error) {
            fail(QString::fromUtf8(error.what()));
        }
        return std::move(m_report);
    }

  private:
    /// Attributes of the current element; each must be asked for, so that a misspelt one is told.
    class Attributes {
      public:
        explicit Attributes(Reader& reader)
            : m_reader(reader), m_element(reader.m_xml.name().toString()),
              m_attributes(reader.m_xml.attributes()) {}

        bool has(QLatin1String name) {
            m_known.insert(name);
            return m_attributes.hasAttribute(name);
        }
        QString text(QLatin1String name, const QString& otherwise = {}) {
            return has(name) ? m_attributes.value(name).toString() : otherwise;
        }
        QString required(QLatin1String name) {
            if (!has(name) || text(name).isEmpty())
                m_reader.fail(u"<%1> needs the attribute %2"_s.arg(m_element, name));
            return text(name);
        }
        double number(QLatin1String name, double otherwise) {
            if (!has(name))
                return otherwise;
            bool ok = false;
            const double value = text(name).toDouble(&ok);
            if (!ok)
                wrong(name, u"is no number"_s);
            return value;
        }
        bool flag(QLatin1String name, bool otherwise) {
            return choice<bool>(name, {{"yes", true}, {"no", false}}, otherwise);
        }
        template <class T>
        T choice(QLatin1String name, std::initializer_list<std::pair<const char*, T>> choices,
                 T otherwise) {
            if (!has(name))
                return otherwise;
            QStringList words;
            for (const auto& [word, value] : choices) {
                if (text(name).compare(QLatin1String(word), Qt::CaseInsensitive) == 0)
                    return value;
                words.append(QLatin1String(word));
            }
            wrong(name, u"is none of %1"_s.arg(words.join(u", "_s)));
        }
        QColor color(QLatin1String name, const QColor& otherwise) {
            if (!has(name))
                return otherwise;
            const QColor value(text(name));
            if (!value.isValid())
                wrong(name, u"is no colour"_s);
            return value;
        }
        std::optional<Expression> condition(QLatin1String name) {
            if (!has(name))
                return std::nullopt;
            return Expression::parse(text(name));
        }
        void end() const {
            for (const auto& attribute : m_attributes) {
                if (!m_known.contains(attribute.name().toString()))
                    m_reader.fail(u"<%1> has no attribute %2"_s.arg(m_element, attribute.name()));
            }
        }

      private:
        [[noreturn]] void wrong(QLatin1String name, const QString& what) {
            m_reader.fail(u"%1=\"%2\" of <%3> %4"_s.arg(name, text(name), m_element, what));
        }
        Reader& m_reader;
        QString m_element;
        QXmlStreamAttributes m_attributes;
        QSet<QString> m_known;
    };

    [[noreturn]] void fail(const QString& what) const {
        throw ReportError(codes::unableToLoad,
                          u"%1:%2: %3"_s.arg(QFileInfo(m_report.path).fileName())
                              .arg(m_xml.lineNumber())
                              .arg(what));
    }
    [[noreturn]] void unexpected(QLatin1String inside) const {
        fail(u"<%1> has no place in <%2>"_s.arg(m_xml.name(), inside));
    }
    bool nextChild() {
        const bool found = m_xml.readNextStartElement();
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return found;
    }
    bool is(QLatin1String name) const { return m_xml.name() == name; }
    QString content() {
        const QString text = m_xml.readElementText();
        if (m_xml.hasError())
            fail(m_xml.errorString());
        return text.trimmed();
    }
    void plain() { Attributes(*this).end(); }

    void readReport() {
        if (!nextChild())
            fail(u"The file is empty"_s);
        if (!is(QLatin1String("report")))
            fail(u"A report file begins with <report>"_s);
        Attributes attributes(*this);
        m_report.title = attributes.text(QLatin1String("title"));
        m_report.documentName = Template::parse(attributes.text(QLatin1String("documentName")));
        m_report.mailTo = Template::parse(attributes.text(QLatin1String("mailTo")));
        attributes.end();
        m_report.styles.push_back({});
        m_styleNames.insert(QString(), 0);
        m_report.body.name = u"report"_s;
        bool hasQuery = false;
        while (nextChild()) {
            if (is(QLatin1String("page"))) {
                readPage();
            } else if (is(QLatin1String("style"))) {
                readStyle();
            } else if (is(QLatin1String("parameter"))) {
                Attributes named(*this);
                const QString name = named.required(QLatin1String("name"));
                named.end();
                m_report.parameters.push_back({name, content()});
            } else if (is(QLatin1String("query"))) {
                readQuery();
                hasQuery = true;
            } else if (is(QLatin1String("pageHeader"))) {
                Attributes header(*this);
                m_report.headerOnFirstPage = header.flag(QLatin1String("firstPage"), true);
                header.end();
                readSection(m_report.pageHeader, -1);
            } else if (is(QLatin1String("pageFooter"))) {
                plain();
                readSection(m_report.pageFooter, -1);
            } else if (is(QLatin1String("body"))) {
                plain();
                readList(m_report.body);
            } else {
                unexpected(QLatin1String("report"));
            }
        }
        if (!hasQuery || m_report.query.from.isEmpty())
            fail(u"<query> with <select> and <from> is missing"_s);
        connectTotals();
    }

    void readPage() {
        Attributes attributes(*this);
        Paper& paper = m_report.paper;
        const QString name = attributes.text(QLatin1String("size"), u"Letter"_s);
        QSizeF size = paperSize(name);
        if (size.isEmpty())
            fail(u"%1 is no paper size that is known"_s.arg(name));
        if (attributes.choice<bool>(QLatin1String("orientation"),
                                    {{"portrait", false}, {"landscape", true}}, false))
            size.transpose();
        paper.size = {attributes.number(QLatin1String("width"), size.width()),
                      attributes.number(QLatin1String("height"), size.height())};
        paper.left = attributes.number(QLatin1String("left"), paper.left);
        paper.top = attributes.number(QLatin1String("top"), paper.top);
        paper.right = attributes.number(QLatin1String("right"), paper.right);
        paper.bottom = attributes.number(QLatin1String("bottom"), paper.bottom);
        attributes.end();
        if (paper.contentWidth() < 20 || paper.size.height() - paper.top - paper.bottom < 40)
            fail(u"The margins leave no room on the page"_s);
        content();
    }

    void readStyle() {
        Attributes attributes(*this);
        const QString name = attributes.text(QLatin1String("name"));
        Style style = m_report.styles.front();
        readFont(attributes, style);
        attributes.end();
        content();
        if (name.isEmpty() || name == u"text") {
            m_report.styles.front() = style;
            return;
        }
        m_styleNames.insert(name, addStyle(style));
    }

    static void readFont(Attributes& attributes, Style& style) {
        style.family = attributes.text(QLatin1String("family"), style.family);
        style.size = attributes.number(QLatin1String("size"), style.size);
        style.bold = attributes.flag(QLatin1String("bold"), style.bold);
        style.italic = attributes.flag(QLatin1String("italic"), style.italic);
        style.color = attributes.color(QLatin1String("color"), style.color);
    }

    int addStyle(const Style& style) {
        auto& styles = m_report.styles;
        const auto found = std::find(styles.begin(), styles.end(), style);
        if (found != styles.end())
            return static_cast<int>(found - styles.begin());
        styles.push_back(style);
        return static_cast<int>(styles.size()) - 1;
    }

    void readQuery() {
        Attributes attributes(*this);
        Query& query = m_report.query;
        query.distinct = attributes.flag(QLatin1String("distinct"), false);
        attributes.end();
        query.select = u"*"_s;
        while (nextChild()) {
            if (is(QLatin1String("formulaTable"))) {
                Attributes through(*this);
                query.through.push_back({through.required(QLatin1String("name")),
                                         through.required(QLatin1String("column")),
                                         through.required(QLatin1String("key"))});
                through.end();
                content();
                continue;
            }
            static const QHash<QString, QString Query::*> clauses{{u"select"_s, &Query::select},
                                                                  {u"from"_s, &Query::from},
                                                                  {u"where"_s, &Query::where},
                                                                  {u"groupBy"_s, &Query::groupBy},
                                                                  {u"orderBy"_s, &Query::orderBy}};
            const auto clause = clauses.constFind(m_xml.name().toString());
            if (clause == clauses.constEnd())
                unexpected(QLatin1String("query"));
            plain();
            query.*(*clause) = content().simplified();
        }
    }

    /// What stands inside of <body> or <list>. Totals found on the way belong to this list.
    void readList(List& list) {
        while (nextChild()) {
            if (is(QLatin1String("query")) && &list != &m_report.body) {
                plain();
                list.query = Template::parse(content().simplified());
            } else if (is(QLatin1String("computed"))) {
                Attributes attributes(*this);
                const QString name = attributes.required(QLatin1String("name")).toLower();
                attributes.end();
                list.computed.push_back({name, Expression::parse(content())});
            } else if (is(QLatin1String("group"))) {
                readGroup(list);
            } else if (is(QLatin1String("header"))) {
                Attributes attributes(*this);
                list.repeatHeader =
                    attributes.flag(QLatin1String("repeat"), &list != &m_report.body);
                attributes.end();
                readSection(list.header, -1);
                keepWithNext(list.header);
            } else if (is(QLatin1String("detail"))) {
                plain();
                // Totals in a detail band are running totals of the innermost group.
                readSection(list.detail, static_cast<int>(list.groups.size()) - 1, &list);
            } else if (is(QLatin1String("footer"))) {
                plain();
                readSection(list.footer, -1, &list);
            } else if (is(QLatin1String("none"))) {
                plain();
                readSection(list.none, -1);
            } else {
                unexpected(&list == &m_report.body ? QLatin1String("body") : QLatin1String("list"));
            }
        }
    }

    void readGroup(List& list) {
        Attributes attributes(*this);
        Group group;
        group.by = Expression::parse(attributes.required(QLatin1String("by")));
        group.repeat = attributes.flag(QLatin1String("repeat"), true);
        group.keepTogether = attributes.flag(QLatin1String("keepTogether"), false);
        group.newPage = attributes.flag(QLatin1String("newPage"), false);
        attributes.end();
        const int index = static_cast<int>(list.groups.size());
        list.groups.push_back(std::move(group));
        while (nextChild()) {
            if (is(QLatin1String("header"))) {
                plain();
                Section header;
                readSection(header, -1);
                keepWithNext(header);
                list.groups[static_cast<std::size_t>(index)].header = std::move(header);
            } else if (is(QLatin1String("footer"))) {
                plain();
                Section footer;
                readSection(footer, index, &list);
                list.groups[static_cast<std::size_t>(index)].footer = std::move(footer);
            } else {
                unexpected(QLatin1String("group"));
            }
        }
    }

    static void keepWithNext(Section& section) {
        for (auto& part : section) {
            if (auto* band = std::get_if<Band>(&part))
                band->keepWithNext = true;
        }
    }

    /// `totalsOf` is the list whose rows have gone by when the section is printed; null where a
    /// total can't be known yet.
    void readSection(Section& section, int group, List* totalsOf = nullptr) {
        while (nextChild()) {
            if (is(QLatin1String("band"))) {
                section.emplace_back(readBand(group, totalsOf));
            } else if (is(QLatin1String("list"))) {
                Attributes attributes(*this);
                auto list = std::make_unique<List>();
                list->name = attributes.required(QLatin1String("name"));
                attributes.end();
                const int line = static_cast<int>(m_xml.lineNumber());
                if (m_lists.contains(list->name.toLower()))
                    fail(u"There are two lists named %1"_s.arg(list->name));
                readList(*list);
                if (list->query.isEmpty())
                    fail(u"The list %1 of line %2 has no <query>"_s.arg(list->name).arg(line));
                m_lists.insert(list->name.toLower(), list.get());
                section.emplace_back(std::move(list));
            } else {
                fail(u"<%1> has no place here: <band> or <list> is expected"_s.arg(m_xml.name()));
            }
        }
    }

    Band readBand(int group, List* totalsOf) {
        Attributes attributes(*this);
        Band band;
        band.height = attributes.number(QLatin1String("height"), 0);
        band.showIf = attributes.condition(QLatin1String("showIf"));
        band.money = attributes.flag(QLatin1String("money"), false);
        band.keepTogether = attributes.flag(QLatin1String("keepTogether"), true);
        const QString with = attributes.text(QLatin1String("keepWithNext"), u"no"_s);
        if (with == u"yes")
            band.keepWithNext = true;
        else if (with != u"no")
            band.keepWithNextIf = Expression::parse(with);
        band.newPage = attributes.flag(QLatin1String("newPage"), false);
        attributes.end();
        std::vector<TotalRequest> totals;
        if (band.showIf)
            band.showIf->collectTotals(totals);
        while (nextChild()) {
            band.elements.push_back(readElement());
            const auto& element = band.elements.back();
            element.text.collectTotals(totals);
            for (auto* expression : {&element.showIf, &element.from, &element.to}) {
                if (*expression)
                    (*expression)->collectTotals(totals);
            }
        }
        for (const auto& total : totals)
            m_totals.push_back({total, group, totalsOf, m_xml.lineNumber()});
        return band;
    }

    Element readElement() {
        static const QHash<QString, Element::Kind> kinds{{u"text"_s, Element::Kind::Text},
                                                         {u"line"_s, Element::Kind::Line},
                                                         {u"box"_s, Element::Kind::Box},
                                                         {u"picture"_s, Element::Kind::Picture},
                                                         {u"barcode"_s, Element::Kind::Barcode}};
        const auto kind = kinds.constFind(m_xml.name().toString());
        if (kind == kinds.constEnd())
            unexpected(QLatin1String("band"));
        Attributes attributes(*this);
        Element element;
        element.kind = *kind;
        element.x = attributes.number(QLatin1String("x"), 0);
        element.y = attributes.number(QLatin1String("y"), 0);
        const double rest = m_report.paper.contentWidth() - element.x;
        const bool line = element.kind == Element::Kind::Line;
        const bool upright = line && (attributes.has(QLatin1String("h")) ||
                                      attributes.has(QLatin1String("stretch")));
        element.w = attributes.number(QLatin1String("w"), upright ? 0 : rest);
        element.h = attributes.number(QLatin1String("h"), 0);
        element.showIf = attributes.condition(QLatin1String("showIf"));
        element.money = attributes.flag(QLatin1String("money"), false);
        switch (element.kind) {
        case Element::Kind::Text:
            readTextAttributes(attributes, element);
            break;
        case Element::Kind::Line:
        case Element::Kind::Box:
            element.thickness = attributes.number(QLatin1String("thickness"), element.thickness);
            element.color = attributes.color(QLatin1String("color"), element.color);
            element.stretch = attributes.flag(QLatin1String("stretch"), false);
            if (!line) {
                element.fill = attributes.color(QLatin1String("fill"), QColor());
                element.from = attributes.condition(QLatin1String("from"));
                element.to = attributes.condition(QLatin1String("to"));
            }
            break;
        case Element::Kind::Picture:
            element.file = attributes.required(QLatin1String("file"));
            break;
        case Element::Kind::Barcode:
            element.symbology = attributes.choice<Symbology>(
                QLatin1String("code"),
                {{"39", Symbology::Code39}, {"128", Symbology::Code128}, {"qr", Symbology::Qr}},
                Symbology::Code39);
            element.showText = attributes.flag(QLatin1String("showText"), true);
            element.module = attributes.number(QLatin1String("module"), element.module);
            readTextAttributes(attributes, element);
            break;
        }
        attributes.end();
        if (rest <= 0 || element.x < 0 || element.y < 0 || element.w > rest + 0.01)
            fail(u"<%1> lies outside the margins"_s.arg(m_xml.name()));
        const bool needsHeight =
            element.kind == Element::Kind::Barcode || element.kind == Element::Kind::Picture;
        if (needsHeight && element.h <= 0)
            fail(u"<%1> needs the attribute h"_s.arg(m_xml.name()));
        const bool hasText =
            element.kind == Element::Kind::Text || element.kind == Element::Kind::Barcode;
        const QString text = hasText ? lines() : content();
        if (hasText)
            element.text = Template::parse(text);
        return element;
    }

    void readTextAttributes(Attributes& attributes, Element& element) {
        const QString name = attributes.text(QLatin1String("style"));
        const auto known = m_styleNames.constFind(name == u"text" ? QString() : name);
        if (known == m_styleNames.constEnd())
            fail(u"There is no style %1 above"_s.arg(name));
        Style style = m_report.styles[static_cast<std::size_t>(*known)];
        readFont(attributes, style);
        element.style = addStyle(style);
        element.align = attributes.choice<Align>(
            QLatin1String("align"),
            {{"left", Align::Left}, {"center", Align::Center}, {"right", Align::Right}},
            Align::Left);
        element.verticalShare = attributes.choice<double>(
            QLatin1String("valign"), {{"top", 0.0}, {"middle", 0.5}, {"bottom", 1.0}}, 0.0);
        element.grow = attributes.flag(QLatin1String("grow"), true);
        element.skipEmptyLines = attributes.flag(QLatin1String("skipEmptyLines"), false);
    }

    /// The text of an element: its lines joined by blanks, <br/> begins a new one.
    QString lines() {
        QString text;
        QString piece;
        while (!m_xml.atEnd()) {
            const auto token = m_xml.readNext();
            if (token == QXmlStreamReader::Characters) {
                piece += m_xml.text();
            } else if (token == QXmlStreamReader::StartElement) {
                if (!is(QLatin1String("br")))
                    unexpected(QLatin1String("text"));
                m_xml.skipCurrentElement();
                text += piece.simplified() + u'\n';
                piece.clear();
            } else if (token == QXmlStreamReader::EndElement) {
                return text + piece.simplified();
            }
        }
        fail(m_xml.errorString());
    }

    void connectTotals() {
        for (const auto& wanted : m_totals) {
            List* list = wanted.list;
            int group = wanted.group;
            if (!wanted.request.list.isEmpty()) {
                list = m_lists.value(wanted.request.list.toLower());
                group = -1;
                if (!list)
                    failAt(wanted.line, u"There is no list %1"_s.arg(wanted.request.list));
            }
            if (!list)
                failAt(wanted.line, u"A total can stand in details and footers only"_s);
            *wanted.request.id = m_report.totals;
            list->totals.push_back(
                {m_report.totals++, wanted.request.kind, wanted.request.of, group});
        }
    }
    [[noreturn]] void failAt(qint64 line, const QString& what) const {
        throw ReportError(
            codes::unableToLoad,
            u"%1:%2: %3"_s.arg(QFileInfo(m_report.path).fileName()).arg(line).arg(what));
    }

    struct WantedTotal {
        TotalRequest request;
        int group;
        List* list;
        qint64 line;
    };

    QXmlStreamReader m_xml;
    ReportFile m_report;
    QHash<QString, int> m_styleNames;
    QHash<QString, List*> m_lists;
    std::vector<WantedTotal> m_totals;
};

} // namespace

ReportFile readReportText(const QByteArray& xml, const QString& path) {
    return Reader(xml, path).read();
}

ReportFile readReportFile(const QString& path) {
    const QString found = existingFile(path);
    if (found.isEmpty())
        throw ReportError(codes::reportNotFound, path);
    QFile file(found);
    if (!file.open(QIODevice::ReadOnly))
        throw ReportError(codes::unableToLoad, u"%1: %2"_s.arg(path, file.errorString()));
    return readReportText(file.readAll(), found);
}

} // namespace report
