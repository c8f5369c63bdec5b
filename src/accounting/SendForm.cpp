#include "accounting/SendForm.h"

#include "accounting/ItemNames.h"
#include "accounting/SentHistory.h"
#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Numbers.h"

#include <QGroupBox>
#include <QLabel>
#include <QSet>
#include <QVBoxLayout>

namespace accounting {

using controls::GridColumn;
using quickbooks::Waiting;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

const QColor again(0xB0, 0x30, 0x20);

/// Orders whose last send got no answer, while the program runs.
QSet<QString>& unanswered() {
    static QSet<QString> orders;
    return orders;
}

/// Figures with the currency symbol and commas.
values::KeyFilter money() {
    values::KeyFilter filter = values::keys::decimal();
    filter.allowed += u',' + core::shared().CurrencySymbol;
    return filter;
}

} // namespace

std::vector<GridColumn> SendForm::Plain::columns(bool typed) {
    using Kind = GridColumn::Kind;
    std::vector<GridColumn> made{{u"Select"_s, 7, Kind::Check},
                                 {u"Item"_s, 22, Kind::Combo},
                                 {u"Part #"_s, 16},
                                 {u"Description"_s, 34},
                                 {u"Quantity"_s, 10, Kind::Number},
                                 {u"Unit Price"_s, 12, Kind::Number}};
    for (const Column column : {Select, Item, Quantity, Price})
        made[column].editable = true;
    made[Part].editable = made[Description].editable = typed;
    made[Quantity].filter = values::keys::decimal();
    return made;
}

SendForm::SendForm(Kind kind)
    : QuickBooksForm(kind.formName, kind.caption), m_kind(std::move(kind)) {
    m_what = u"the "_s + m_kind.document;
}

void SendForm::build() {
    auto* layout = new QVBoxLayout(this);
    buildChoice(layout);
    buildOptions(layout);
    Frame1 = screen::frame(this, layout, u"Frame1"_s, u"Record Selection"_s);
    auto* inside = new QVBoxLayout(Frame1);
    m_lines = screen::named(new controls::Grid(Frame1), m_kind.gridName, u"Lines of the order"_s);
    auto columns = m_kind.columns;
    columns[std::size_t(m_kind.price)].filter = money();
    columns.push_back({u"Sent Before"_s, 28});
    m_lines->setColumns(columns);
    m_lines->setMinimumHeight(150);
    inside->addWidget(m_lines);
    lblTotals = screen::named(new QLabel(Frame1), u"lblTotals"_s);
    lblTotals->setTextFormat(Qt::PlainText);
    inside->addWidget(lblTotals);
    on(m_lines->cellChanged, [this](int row, int column) {
        normalisePrice(m_lines, row, column, m_kind.price);
        showMarks();
    });
    buildOptional(layout);
    buildButtons(layout);
}

void SendForm::buildChoice(QBoxLayout* inside) {
    screen::Fields fields(this, inside);
    screen::Line wide;
    wide.characters = 34;
    dbcCompID = fields.dataCombo(u"dbcCompID"_s, m_kind.partnerLabel, wide);
    dbcCompID->setTypingAllowed(false);
    fields.nextColumn();
    screen::Line number;
    number.characters = 8;
    txtName = fields.text(u"txtName"_s, u"Number:"_s, number);
    txtName->setLocked(true);
    txtName->setFocusPolicy(Qt::ClickFocus);
    fields.nextColumn();
    screen::Line order;
    order.characters = 20;
    dbcPO = fields.dataCombo(u"dbcPO"_s, u"Purchase &Order:"_s, order);
    dbcPO->setTypingAllowed(false);
    fields.grid()->setColumnStretch(6, 1);
    on(dbcCompID->chosen, &SendForm::dbcCompID_Chosen);
    on(dbcPO->chosen, &SendForm::dbcPO_Chosen);
}

void SendForm::buildOptional(QBoxLayout* inside) {
    auto* box = screen::frame(this, inside, u"Frame2"_s, u"Optional Fields"_s);
    auto* layout = new QVBoxLayout(box);
    vaSpread2 = screen::named(new controls::Grid(box), u"vaSpread2"_s, u"Optional fields"_s);
    auto columns = Plain::columns(true);
    columns[Plain::Price].filter = money();
    vaSpread2->setColumns(columns);
    std::vector<QStringList> rows;
    for (const QString& description : m_kind.optionalRows)
        rows.push_back({u"0"_s, {}, {}, description, u"1"_s, {}});
    vaSpread2->setRows(rows);
    vaSpread2->setFixedHeight(40 + 28 * int(rows.size()));
    layout->addWidget(vaSpread2);
    on(vaSpread2->cellChanged,
       [this](int row, int column) { normalisePrice(vaSpread2, row, column, Plain::Price); });
}

void SendForm::reportButton(screen::ButtonBar& bar, const QString& name, const QString& caption,
                            const QString& file, const QString& title) {
    on(bar.button(name, caption),
       [this, file, title] { core::launchReportFile(file, {}, title, this); });
}

void SendForm::buildButtons(QBoxLayout* inside) {
    screen::ButtonBar bar(this, inside);
    on(bar.button(u"cmdSelAll"_s, u"Select A&ll"_s), &SendForm::cmdSelAll_Click);
    on(bar.button(u"cmdSelNone"_s, u"Select &None"_s), &SendForm::cmdSelNone_Click);
    on(bar.button(m_kind.sendName, u"Send &Selected"_s), &SendForm::send);
    on(bar.button(u"Command1"_s, m_kind.historyCaption), &SendForm::Command1_Click);
    cmdRecord = bar.button(u"cmdRecord"_s, u"Record A&gain"_s);
    on(cmdRecord, &SendForm::cmdRecord_Click);
    bar.stretch();
    screen::ButtonBar below(this, inside);
    buildReports(below);
    makeFoot(below);
}

void SendForm::Form_Load() {
    showUnrecorded();
    fillPartners();
    if (!mayOpen()) {
        refuse();
        return;
    }
    m_showDollar = core::HasAccess(u"ShowDollar"_s);
    readItems();
}

bool SendForm::readItems() {
    Waiting waiting(u"Reading the items of QuickBooks ..."_s);
    const auto found = query(waiting, Message(u"ItemQueryRq"_s), u"ItemQueryRs"_s);
    if (!found)
        return false;
    QStringList names;
    for (const QDomElement& response : *found)
        names += itemNames(response);
    m_lines->setColumnChoices(m_kind.item, names);
    vaSpread2->setColumnChoices(Plain::Item, names);
    m_itemsRead = true;
    return true;
}

void SendForm::fillPartners() {
    dbcCompID->setRows(snapshot(partnersSelect()), u"Company"_s, u"ID"_s);
}

QString SendForm::partner() const {
    return dbcCompID->boundText();
}

QString SendForm::order() const {
    return dbcPO->boundText();
}

void SendForm::clearOrder() {
    m_shownPartner.clear();
    dbcPO->setItems({});
    dbcPO->clear();
    clearLines();
}

void SendForm::clearLines() {
    m_shownOrder.clear();
    m_all.clear();
    m_sent.clear();
    m_lines->clearRows();
    showCount();
    showSentBefore();
}

void SendForm::dbcCompID_Chosen() {
    if (partner().isEmpty() || partner() == m_shownPartner)
        return;
    clearOrder();
    m_shownPartner = partner();
    txtName->setText(m_shownPartner);
    const jet::Recordset rows = orders(m_shownPartner);
    const QString field = rows.fieldNames().value(0);
    dbcPO->setRows(rows, field, field);
}

void SendForm::dbcPO_Chosen() {
    if (partner().isEmpty() || order().isEmpty())
        return;
    // QuickBooks may have been started since the screen was opened.
    if (!m_itemsRead)
        readItems();
    if (order() != m_shownOrder) {
        for (int row = 0; row < vaSpread2->rowCount(); ++row)
            vaSpread2->setText(row, Plain::Select, u"0"_s);
        forgetDocument();
    }
    clearLines();
    m_shownOrder = order();
    const QStringList selects = linesSelects(partner(), m_shownOrder)
                                << sentSelect(m_kind.sent, m_shownOrder);
    core::MainDatabase().expect({selects.cbegin(), selects.cend()});
    m_all = fillLines(partner(), m_shownOrder);
    readSent();
    showCount();
    showSentBefore();
}

void SendForm::addLine(const QStringList& cells, qint64 key) {
    const int row = m_lines->rowCount();
    m_lines->insertRow(row);
    for (int column = 0; column < cells.size(); ++column)
        m_lines->setText(row, column, cells[column]);
    m_lines->setRowKey(row, key);
    if (!m_showDollar) {
        m_lines->setTextHidden(row, m_kind.price, true);
        m_lines->setCellLocked(row, m_kind.price, true);
    }
}

QString SendForm::shownPrice(const jet::Value& price) const {
    return price.isNull() ? QString()
                          : values::format(price.toCurrency(), core::moneyMask(u"#,##0.0000"_s));
}

void SendForm::normalisePrice(controls::Grid* grid, int row, int column, int priceColumn) {
    if (column != priceColumn)
        return;
    const QString figure = plainFigure(grid->text(row, column), core::shared().CurrencySymbol);
    if (values::isNumeric(figure))
        grid->setText(
            row, column,
            values::format(values::Currency::fromText(figure), core::moneyMask(u"#,##0.0000"_s)));
}

/// What was sent for the order shown, whether the database has it or it waits to be recorded.
void SendForm::readSent() {
    m_sent = sentRows(core::MainDatabase(), m_kind.sent, m_shownOrder);
    const auto waiting = Unrecorded(core::shared().ProgramFolder).kept();
    for (const SentDocument& document : waiting) {
        if (document.kind != m_kind.sent || document.order != m_shownOrder)
            continue;
        for (const auto& line : document.lines)
            m_sent.push_back({document.number, line.description, values::val(line.quantity),
                              values::format(document.date, u"Short Date")});
    }
}

void SendForm::showCount() {
    const int count = m_lines->rowCount();
    Frame1->setTitle(
        u"Record Selection - "_s + QString::number(count) +
        (count == 1 ? u" record currently displayed."_s : u" records currently displayed."_s));
}

Sendable SendForm::sendableAt(int row) const {
    Sendable line;
    line.description = recordedDescription(m_lines->text(row, m_kind.part),
                                           m_lines->text(row, m_kind.description));
    line.sending = values::val(m_lines->text(row, m_kind.quantity));
    line.selected = values::val(m_lines->text(row, 0)) != 0;
    return line;
}

void SendForm::showMarks() {
    std::vector<Sendable> shown;
    shown.reserve(std::size_t(m_lines->rowCount()));
    for (int row = 0; row < m_lines->rowCount(); ++row)
        shown.push_back(sendableAt(row));
    m_marks = repeats(m_sent, m_all, shown);
    const int column = m_lines->columnCount() - 1;
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        const QString before = sentBefore(m_sent, shown[std::size_t(row)].description);
        const bool marked = m_marks[std::size_t(row)];
        m_lines->setText(row, column, marked ? u"AGAIN: "_s + before : before);
        m_lines->setRowColour(row, marked ? again : QColor());
    }
}

void SendForm::showSentBefore() {
    double sent = 0;
    for (const SentRow& row : m_sent)
        sent += row.quantity;
    lblTotals->setText(
        m_shownOrder.isEmpty()
            ? QString()
            : totals() + u", "_s +
                  (m_kind.sent == SentKind::Invoice ? u"invoiced "_s : u"billed "_s) +
                  values::numberText(sent) + u'.');
    showMarks();
}

void SendForm::setAll(const QString& mark) {
    for (int row = 0; row < m_lines->rowCount(); ++row)
        m_lines->setText(row, 0, mark);
    showMarks();
}

void SendForm::cmdSelAll_Click() {
    setAll(u"1"_s);
}

void SendForm::cmdSelNone_Click() {
    setAll(u"0"_s);
}

void SendForm::Command1_Click() {
    if (partner().isEmpty() || order().isEmpty()) {
        tell(u"Please select a company and PO."_s, u"Nothing Selected"_s);
        return;
    }
    screen::Forms::dialog<SentHistory>(m_kind.historyForm)->ShowHistory(order());
    readSent();
    showSentBefore();
}

std::optional<std::vector<DocumentLine>> SendForm::selectedLines() const {
    return selected(m_lines, m_kind.item, m_kind.part, m_kind.description, m_kind.quantity,
                    m_kind.price);
}

std::optional<std::vector<DocumentLine>> SendForm::selectedOptional() const {
    return selected(vaSpread2, Plain::Item, Plain::Part, Plain::Description, Plain::Quantity,
                    Plain::Price);
}

std::optional<std::vector<DocumentLine>> SendForm::selected(const controls::Grid* grid, int item,
                                                            int part, int description, int quantity,
                                                            int price) const {
    std::vector<DocumentLine> lines;
    for (int row = 0; row < grid->rowCount(); ++row) {
        if (values::val(grid->text(row, 0)) == 0)
            continue;
        DocumentLine line;
        line.item = grid->text(row, item).trimmed();
        const QString number = grid->text(row, part);
        const QString words = grid->text(row, description);
        if (!number.isEmpty() || !words.isEmpty())
            line.description = number + u' ' + words;
        line.quantity = grid->text(row, quantity).trimmed();
        line.price = plainFigure(grid->text(row, price), core::shared().CurrencySymbol);
        if (!isLineRight(line, grid == vaSpread2))
            return std::nullopt;
        lines.push_back(line);
    }
    return lines;
}

QString SendForm::unansweredKey() const {
    return core::shared().DatabasePath + u'|' + m_kind.formName + u'|' + partner() + u'|' + order();
}

bool SendForm::askRepeats() {
    QStringList lines;
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        const Sendable line = sendableAt(row);
        if (line.selected && m_marks[std::size_t(row)])
            lines += line.description + u": "_s + sentBefore(m_sent, line.description);
    }
    QString question;
    if (!lines.isEmpty())
        question = u"This was sent before for this order:\r\n\r\n"_s + lines.join(u"\r\n"_s) +
                   u"\r\n\r\n"_s;
    if (unanswered().contains(unansweredKey()))
        question += u"The last time that this order was sent, QuickBooks gave no answer. If it "
                    "took the %1 then, this will be a second one.\r\n\r\n"_s.arg(m_kind.document);
    return question.isEmpty() ||
           MsgBox(question + u"Send it again?"_s, Buttons::YesNo, Icon::Question, u"Sent Before"_s,
                  screen::Answer::No) == screen::Answer::Yes;
}

void SendForm::send() {
    bool asked = false;
    while (sendOnce(asked)) {
    }
}

/// True if it is to be done again, since QuickBooks has just learnt who the partner is.
bool SendForm::sendOnce(bool& asked) {
    if (!isChosen())
        return false;
    std::optional<Message> ready = message();
    if (!ready || !isFit(ready->complaints()))
        return false;
    if (!asked) {
        // Another station may have sent it since the order was chosen.
        readSent();
        showSentBefore();
        if (!askRepeats())
            return false;
    }
    asked = true;
    {
        Waiting waiting(u"Sending the %1 to QuickBooks ..."_s.arg(m_kind.document));
        if (!sendTerms(waiting, termsFirst()))
            return false;
        const bool answered = exchange(waiting, ready->finish(), Purpose::Change);
        const auto answer =
            answered ? readAnswer(waiting, Purpose::Change, m_kind.responseTag) : std::nullopt;
        if (!answer) {
            if (mayHaveBeenTaken())
                unanswered().insert(unansweredKey());
            return false;
        }
        bool unknown = false, recorded = true;
        std::size_t expected = m_sent.size();
        for (const auto& item : answer->items(m_kind.responseTag)) {
            const QString what = unknownKind(item.status);
            unknown = item.status.code == u"3140" && (what.isEmpty() || what == m_kind.partnerKind);
            if (unknown)
                break;
            if (judge(waiting, item.status) == Verdict::Stop)
                return false;
            for (const QDomElement& ret : childElements(item.content)) {
                if (ret.tagName() != m_kind.retTag)
                    continue;
                const auto document = documentFrom(m_kind.sent, ret, order(), values::today());
                recorded = keepRecord(document);
                expected += document.lines.size();
            }
        }
        if (!unknown) {
            waiting.hide();
            unanswered().remove(unansweredKey());
            if (!recorded)
                return false; // the database may be gone: it isn't asked again now
            readSent();
            showSentBefore();
            tell(m_kind.success, u"Success"_s, Icon::Information);
            tellOthers(expected);
            return false;
        }
    }
    return MsgBox(m_kind.partnerKind + u" not found in Quickbooks Database. Add?"_s,
                  Buttons::OkCancel, Icon::Question, u"Data Error"_s) == screen::Answer::Ok &&
           addPartner();
}

/// Another station may have sent the same in the moment between the question and the answer. Then
/// both are in QuickBooks, and whoever was recorded last hears of it.
void SendForm::tellOthers(std::size_t expected) {
    if (m_sent.size() <= expected)
        return;
    QStringList lines;
    for (int row = 0; row < m_lines->rowCount(); ++row) {
        const Sendable line = sendableAt(row);
        if (line.selected && m_marks[std::size_t(row)])
            lines += line.description + u": "_s + sentBefore(m_sent, line.description);
    }
    if (!lines.isEmpty())
        tell(u"While this %1 was under way, another station sent for the same order:\r\n\r\n%2"
             "\r\n\r\nLook in QuickBooks whether one of them has to be taken back."_s.arg(
                 m_kind.document, lines.join(u"\r\n"_s)),
             u"Sent Twice"_s);
}

/// False if the database refused, which the user was told.
bool SendForm::keepRecord(const SentDocument& document) {
    if (document.lines.empty())
        return true;
    QString reason;
    try {
        record(core::MainDatabase(), document);
        return true;
    } catch (const jet::Error& error) {
        reason = error.text();
    }
    const bool kept = Unrecorded(core::shared().ProgramFolder).keep(document);
    const QString number =
        document.number.isEmpty() ? QString() : u" under the number "_s + document.number;
    MsgBox(u"QuickBooks holds the %1%2, but the database refused to record it: %3\r\n\r\n"_s.arg(
               m_kind.document, number, reason) +
               (kept ? u"Its lines are kept. \"Record Again\" records them; don't send them a "
                       "second time."_s
                     : u"Its lines couldn't be kept either: note the number, and don't send them a "
                       "second time."_s),
           Buttons::Ok, Icon::Critical, u"Not Recorded"_s);
    showUnrecorded();
    return false;
}

void SendForm::showUnrecorded() {
    cmdRecord->setVisible(!Unrecorded(core::shared().ProgramFolder).kept().empty());
}

void SendForm::cmdRecord_Click() {
    QString reason;
    const auto recorded =
        Unrecorded(core::shared().ProgramFolder).recordAll(core::MainDatabase(), reason);
    QStringList lines;
    for (const SentDocument& document : recorded)
        lines += (document.kind == SentKind::Invoice ? u"Invoice "_s : u"Bill "_s) +
                 document.number + u" of order "_s + document.order + u" is recorded."_s;
    if (!reason.isEmpty())
        lines += u"The rest still waits: "_s + reason;
    showUnrecorded();
    if (!m_shownOrder.isEmpty() && !recorded.empty()) {
        readSent();
        showSentBefore();
    }
    MsgBox(lines.join(u"\r\n"_s), Buttons::Ok,
           reason.isEmpty() ? Icon::Information : Icon::Exclamation, u"Record Again"_s);
}

} // namespace accounting
