#include "core/frmJournal.h"

#include "core/MirsaMain.h"
#include "core/journal/JournalTables.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

namespace core {

frmJournal::frmJournal() : JournalForm(QString::fromLatin1(formName), u"Journal of Changes"_s) {
    auto* outside = new QVBoxLayout(this);
    auto* criteria = new QWidget(this);
    outside->addWidget(criteria);
    screen::Fields fields(criteria);
    txtWho = fields.text(u"txtWho"_s, u"&User:"_s, {.limit = 60, .characters = 12});
    fields.nextColumn();
    cboTable = fields.listCombo(u"cboTable"_s, u"Rows &of:"_s);
    fields.nextColumn();
    txtRecord = fields.text(u"txtRecord"_s, u"&Record:"_s,
                            {.limit = 9, .filter = values::keys::digits(), .characters = 8});
    fields.nextColumn();
    datFrom = fields.date(u"datFrom"_s, u"&From:"_s);
    fields.nextColumn();
    datUntil = fields.date(u"datUntil"_s, u"Unti&l:"_s);
    fields.grid()->setContentsMargins(0, 0, 0, 0);
    auto* cmdShow = screen::named(new QPushButton(u"&Show"_s, this), u"cmdShow"_s);
    makeList(outside, cmdShow);
    on(cmdShow, &frmJournal::cmdShow_Click);
}

void frmJournal::Form_Load() {
    const Access access = readAccess();
    m_showMoney = access.has(u"ShowDollar"_s);
    std::vector<std::pair<QString, QString>> tables;
    for (const JournalTable& table : journalTables())
        if (access.has(table.right))
            tables.emplace_back(table.words, table.name);
    std::sort(tables.begin(), tables.end());
    cboTable->addRow(u"(all)"_s);
    for (const auto& [words, name] : tables) {
        m_tables += name;
        cboTable->addRow(words, m_tables.size());
    }
    cboTable->setText(u"(all)"_s);
    datUntil->setDate(values::today());
    datFrom->setDate(values::today().addDays(-7));
    cmdShow_Click();
}

void frmJournal::cmdShow_Click() {
    JournalCriteria criteria;
    criteria.who = txtWho->text().trimmed();
    criteria.from = datFrom->date().value_or(QDate());
    criteria.until = datUntil->date().value_or(QDate());
    if (criteria.from.isValid() && criteria.until.isValid() && criteria.from > criteria.until) {
        complain(u"The first day may not be later than the last."_s, datFrom);
        return;
    }
    if (const QString record = txtRecord->text().trimmed(); !record.isEmpty())
        criteria.record = record.toLongLong();
    if (const qint64 table = cboTable->itemNumber(); table > 0)
        criteria.tables = QStringList{m_tables[table - 1]};
    else if (m_tables.size() < static_cast<qsizetype>(journalTables().size()))
        criteria.tables = m_tables;
    showChanges(criteria);
}

} // namespace core
