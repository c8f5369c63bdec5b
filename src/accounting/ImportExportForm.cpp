#include "accounting/ImportExportForm.h"

#include "accounting/ImportRows.h"
#include "accounting/Literals.h"
#include "core/MirsaMain.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/values/Numbers.h"

#include <QSet>
#include <QTabWidget>
#include <QVBoxLayout>

namespace accounting {

using controls::GridColumn;
using quickbooks::Waiting;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

controls::Grid* grid(QWidget* page, QBoxLayout* inside, const QString& name, const QString& spoken,
                     std::vector<GridColumn> columns) {
    auto* made = screen::named(new controls::Grid(page), name, spoken);
    columns[0].kind = GridColumn::Kind::Check;
    columns[0].editable = true;
    made->setColumns(std::move(columns));
    made->setMinimumSize(700, 340);
    inside->addWidget(made, 1);
    return made;
}

bool isMarked(const controls::Grid* grid, int row) {
    return values::val(grid->text(row, 0)) != 0;
}

} // namespace

ImportExportForm::ImportExportForm(const ImportMember& member)
    : QuickBooksForm(member.formName, member.caption), m_member(member) {
    m_what = u"the "_s + member.one;
    auto* layout = new QVBoxLayout(this);
    SSTab1 = screen::named(new QTabWidget(this), u"SSTab1"_s);
    layout->addWidget(SSTab1, 1);
    buildExport(screen::tab(SSTab1, u"Export"_s));
    buildImport(screen::tab(SSTab1, u"Import"_s));
    if (member.hasMarks)
        buildManage(screen::tab(SSTab1, u"Manage"_s));
    screen::ButtonBar bar(this, layout);
    makeFoot(bar);
}

void ImportExportForm::addSelectButtons(QWidget* page, QBoxLayout* inside, controls::Grid* grid,
                                        const QString& all, const QString& none) {
    const auto button = [&](const QString& name, const QString& caption, const QString& mark) {
        auto* made = screen::named(new QPushButton(caption, page), name);
        made->setAutoDefault(false);
        inside->addWidget(made);
        on(made, [grid, mark] {
            for (int row = 0; row < grid->rowCount(); ++row)
                grid->setText(row, 0, mark);
        });
    };
    button(all, u"Select &All"_s, u"1"_s);
    button(none, u"Select &None"_s, u"0"_s);
}

void ImportExportForm::buildExport(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    vaSpread1 = grid(page, layout, u"vaSpread1"_s, u"Not yet in QuickBooks"_s,
                     {{u"Export"_s, 8},
                      {m_member.numberTitle, 12, GridColumn::Kind::Number},
                      {m_member.nameTitle, 44}});
    screen::ButtonBar bar(page, layout);
    addSelectButtons(page, bar.layout(), vaSpread1, u"cmdSelAll"_s, u"cmdSelNone"_s);
    on(bar.button(u"cmdExport"_s, u"Export &Selected"_s), &ImportExportForm::cmdExport_Click);
    on(bar.button(u"Command7"_s, u"&Refresh"_s), &ImportExportForm::Command7_Click);
    bar.stretch();
}

void ImportExportForm::buildImport(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    std::vector<GridColumn> columns{{u"Import"_s, 8}};
    for (const ImportColumn& column : m_member.columns)
        columns.push_back({column.title, column.characters});
    vaSpread2 =
        grid(page, layout, u"vaSpread2"_s, u"In QuickBooks and not here"_s, std::move(columns));
    screen::ButtonBar bar(page, layout);
    addSelectButtons(page, bar.layout(), vaSpread2, u"cmdImpAll"_s, u"cmdImpNone"_s);
    on(bar.button(u"Command3"_s, u"Import &Selected"_s), &ImportExportForm::Command3_Click);
    on(bar.button(u"Command6"_s, u"&Refresh"_s), &ImportExportForm::Command6_Click);
    bar.stretch();
}

void ImportExportForm::buildManage(QWidget* page) {
    auto* layout = new QVBoxLayout(page);
    vaSpread3 = grid(page, layout, u"vaSpread3"_s, u"Known to QuickBooks"_s,
                     {{u"Exported"_s, 10},
                      {m_member.numberTitle, 12, GridColumn::Kind::Number},
                      {m_member.nameTitle, 44}});
    screen::ButtonBar bar(page, layout);
    on(bar.button(u"Command8"_s, u"&Update Records"_s), &ImportExportForm::Command8_Click);
    on(bar.button(u"Command5"_s, u"&Refresh"_s), &ImportExportForm::Command5_Click);
    bar.stretch();
}

void ImportExportForm::Form_Load() {
    Command7_Click();
    Command5_Click();
    if (!queryList() && isStopped())
        refuse();
}

void ImportExportForm::Command7_Click() {
    const auto records = listedRecords(core::MainDatabase(), m_member, true);
    std::vector<QStringList> rows;
    rows.reserve(records.size());
    for (const ListedRecord& record : records)
        rows.push_back({u"0"_s, QString::number(record.number), record.name});
    vaSpread1->setRows(std::move(rows));
}

void ImportExportForm::Command5_Click() {
    if (!vaSpread3)
        return;
    const auto records = listedRecords(core::MainDatabase(), m_member, false);
    std::vector<QStringList> rows;
    m_shownMarks.clear();
    for (const ListedRecord& record : records) {
        rows.push_back(
            {record.sent ? u"1"_s : u"0"_s, QString::number(record.number), record.name});
        m_shownMarks.push_back(record.sent);
    }
    vaSpread3->setRows(std::move(rows));
}

void ImportExportForm::Command6_Click() {
    queryList();
}

bool ImportExportForm::queryList() {
    Message question(m_member.kind().record + u"QueryRq"_s);
    if (m_member.queriesAll)
        question.text(u"ActiveStatus"_s, u"All"_s, 10, u"status"_s);
    Waiting waiting(u"Reading the list of QuickBooks ..."_s);
    const auto found = query(waiting, question, m_member.kind().record + u"QueryRs"_s);
    if (!found)
        return false;
    std::vector<QDomElement> records;
    const QString ret = m_member.kind().record + u"Ret"_s;
    for (const QDomElement& response : *found) {
        for (const QDomElement& record : childElements(response)) {
            if (record.tagName() == ret)
                records.push_back(record);
        }
    }
    m_offered = offeredRecords(core::MainDatabase(), m_member, records);
    showOffered();
    return true;
}

void ImportExportForm::showOffered() {
    std::vector<QStringList> rows;
    rows.reserve(m_offered.size());
    for (const QStringList& record : m_offered)
        rows.push_back(QStringList(u"0"_s) + record);
    vaSpread2->setRows(std::move(rows));
}

std::vector<int> ImportExportForm::markedRows(const controls::Grid* grid) const {
    std::vector<int> rows;
    for (int row = 0; row < grid->rowCount(); ++row) {
        if (isMarked(grid, row))
            rows.push_back(row);
    }
    return rows;
}

std::vector<ImportExportForm::Outgoing>
ImportExportForm::outgoing(const std::vector<qint64>& numbers) {
    const RecordKind& kind = m_member.kind();
    std::vector<Outgoing> records;
    QStringList complaints;
    jet::Recordset rows =
        snapshot(u"SELECT * FROM "_s + m_member.table + u" WHERE ["_s + m_member.key + u"] IN ("_s +
                 numberList(numbers) + u") ORDER BY ["_s + m_member.key + u']');
    for (; !rows.eof(); rows.moveNext()) {
        const FieldTexts fields = fieldsOf(kind, rows);
        Message message = addRequest(kind, fields);
        complaints += message.complaints();
        records.push_back({rows[m_member.key].toLong(), fields.value(kind.name),
                           kind.hasTerms ? fields.value(u"terms"_s) : QString(), message.finish()});
    }
    if (!isFit(complaints))
        records.clear();
    return records;
}

bool ImportExportForm::exportOne(Waiting& waiting, const Outgoing& record, bool& added) {
    if (!exchange(waiting, record.text, Purpose::Change))
        return false;
    const QString responseTag = m_member.kind().record + u"AddRs"_s;
    const auto answer = readAnswer(waiting, Purpose::Change, responseTag);
    if (!answer)
        return false;
    for (const auto& item : answer->items(responseTag)) {
        if (item.status.isError() && saysNameInUse(item.status)) {
            waiting.hide();
            if (MsgBox(m_member.inUse + nameInUse(item.status) +
                           u" already exists in Quickbooks and will not be added. Continue?"_s,
                       Buttons::OkCancel, Icon::Question,
                       m_member.inUseTitle) != screen::Answer::Ok)
                return false;
        } else if (judge(waiting, item.status) == Verdict::Stop) {
            return false;
        } else {
            added = true;
        }
    }
    return true;
}

void ImportExportForm::cmdExport_Click() {
    if (vaSpread1->rowCount() == 0) {
        tell(u"No %1 records to export."_s.arg(m_member.one), u"Nothing to Export"_s);
        return;
    }
    std::vector<qint64> numbers;
    for (const int row : markedRows(vaSpread1))
        numbers.push_back(vaSpread1->text(row, 1).toLongLong());
    if (numbers.empty()) {
        tell(u"No records were selected."_s, u"Nothing Selected"_s);
        return;
    }
    const auto records = outgoing(numbers);
    if (records.empty())
        return;
    int count = 0, sent = 0;
    bool whole = true;
    QSet<QString> termsSent;
    {
        Waiting waiting(QString{});
        for (const Outgoing& record : records) {
            waiting.setText(
                u"Sending %1 of %2: %3"_s.arg(++count).arg(records.size()).arg(record.name));
            bool added = false;
            whole = (termsSent.contains(record.terms) || sendTerms(waiting, record.terms)) &&
                    exportOne(waiting, record, added);
            termsSent.insert(record.terms);
            if (added) {
                ++sent;
                // At once: what QuickBooks has taken must not be sent again.
                if (m_member.hasMarks)
                    whole = markSent(u"Update "_s + m_member.table + u" SET QBSent = 1 where "_s +
                                     m_member.key + u" = "_s + QString::number(record.number)) &&
                            whole;
            }
            if (!whole)
                break;
        }
    }
    Command7_Click();
    Command5_Click();
    if (!whole)
        return;
    if (sent == 0)
        tell(u"No new %1 records were selected."_s.arg(m_member.one), u"Nothing Selected"_s);
    else
        tell(u"Successfully added %1 to Quickbooks."_s.arg(m_member.exported), u"Success"_s,
             Icon::Information);
}

bool ImportExportForm::findTerms(const QStringList& names, std::vector<QString>& days) {
    Waiting waiting(u"Reading the terms of QuickBooks ..."_s);
    for (const QString& name : names) {
        Message question(u"StandardTermsQueryRq"_s);
        question.text(u"FullName"_s, name, 36, u"terms"_s);
        const auto found = query(waiting, question, u"StandardTermsQueryRs"_s);
        if (!found)
            return false;
        days.push_back(found->empty() ? QString()
                                      : textAt(found->back(), u"StandardTermsRet/StdDueDays"_s));
    }
    return true;
}

void ImportExportForm::Command3_Click() {
    if (m_offered.empty()) {
        tell(u"No %1 records to import."_s.arg(m_member.one), u"Nothing to Import"_s);
        return;
    }
    std::vector<QStringList> records, rest;
    for (int row = 0; row < vaSpread2->rowCount(); ++row)
        (isMarked(vaSpread2, row) ? records : rest).push_back(m_offered[std::size_t(row)]);
    if (records.empty()) {
        tell(u"No records were selected for import."_s, u"Nothing Selected"_s);
        return;
    }
    jet::Database& database = core::MainDatabase();
    const QStringList complaints = importComplaints(database, m_member, records);
    if (!complaints.isEmpty()) {
        tell(u"Nothing was imported, since it doesn't fit:\r\n\r\n"_s +
                 complaints.mid(0, 12).join(u"\r\n"_s),
             u"Not Imported"_s);
        return;
    }
    QStringList countries;
    const QStringList unknown =
        unknownTexts(database, m_member, ImportColumn::Kind::Country, records);
    for (const QString& country : unknown) {
        if (MsgBox(wordsFor(m_member, country, records) + country +
                       u" does not exist in the Mirsa country table. Add?"_s,
                   Buttons::YesNo, Icon::Question, u"Country not Found"_s) == screen::Answer::Yes)
            countries += country;
    }
    const QStringList names = unknownTexts(database, m_member, ImportColumn::Kind::Terms, records);
    std::vector<QString> days;
    if (!findTerms(names, days))
        return;
    std::vector<NewTerms> terms;
    for (std::size_t i = 0; i < days.size(); ++i)
        terms.push_back({names[qsizetype(i)], days[i]});
    importRecords(database, m_member, records, countries, terms);
    m_offered = std::move(rest);
    showOffered();
    Command7_Click();
    Command5_Click();
    tell(u"Successfully imported %1 from Quickbooks."_s.arg(m_member.imported), u"Success"_s,
         Icon::Information);
}

void ImportExportForm::Command8_Click() {
    if (vaSpread3->rowCount() == 0) {
        tell(u"No records shown to update."_s, u"Nothing to update"_s);
        return;
    }
    std::vector<qint64> changed[2];
    for (int row = 0; row < vaSpread3->rowCount(); ++row) {
        const bool mark = isMarked(vaSpread3, row);
        if (mark != m_shownMarks[std::size_t(row)])
            changed[mark ? 1 : 0].push_back(vaSpread3->text(row, 1).toLongLong());
    }
    jet::Database& database = core::MainDatabase();
    jet::Transaction transaction(database);
    for (const int mark : {0, 1}) {
        if (!changed[mark].empty())
            database.execute(u"Update "_s + m_member.table + u" set QBSent = "_s +
                             QString::number(mark) + u" where "_s + m_member.key + u" IN ("_s +
                             numberList(changed[mark]) + u')');
    }
    transaction.commit();
    Command7_Click();
    Command5_Click();
    tell(u"Successfully updated %1 records."_s.arg(m_member.one), u"Success"_s, Icon::Information);
}

} // namespace accounting
