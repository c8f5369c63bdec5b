#include "core/frmRecordHistory.h"

#include "core/MirsaMain.h"
#include "core/journal/JournalTables.h"
#include "platform/values/Literals.h"

#include <QVBoxLayout>

namespace core {

frmRecordHistory::frmRecordHistory()
    : JournalForm(QString::fromLatin1(formName), u"History of a Record"_s) {
    makeList(new QVBoxLayout(this));
}

void frmRecordHistory::showRecord(const QString& screen, qint64 key) {
    const Access access = readAccess();
    m_showMoney = access.has(u"ShowDollar"_s);
    QStringList tables = journalTablesOf(screen);
    const JournalTable* first = journalTable(tables.value(0));
    m_heading = u"History of %1 %2"_s.arg(first ? first->words : QString()).arg(key);
    setWindowTitle(m_heading);
    tables.removeIf([&](const QString& name) { return !access.has(journalTable(name)->right); });
    showChanges({.tables = tables, .record = key});
}

} // namespace core
