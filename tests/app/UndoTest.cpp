#include "core/UndoScreen.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DataCombo.h"
#include "platform/controls/DateField.h"
#include "platform/controls/TextField.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"
#include "support/SampleFixture.h"

#include <QAbstractItemModel>
#include <QCheckBox>
#include <QLabel>

#include <random>

namespace {

using screen::Answer;
using screen::Forms;

/// The entries of all modules, with what their users may do in them by chance.
class UndoTest : public testsupport::SampleTest {
  protected:
    UndoTest() : SampleTest(40) {}
    int below(int limit) {
        return static_cast<int>(m_random() % static_cast<unsigned>(std::max(1, limit)));
    }
    core::UndoScreen& entry() const { return dynamic_cast<core::UndoScreen&>(form()); }
    /// What a person sees of the entry.
    QStringList seen() const {
        QStringList texts;
        for (const auto* widget : form().findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            const QWidget* parent = widget->parentWidget();
            if (name.isEmpty() || name.startsWith(u"qt_") ||
                (parent && parent->inherits("QAbstractItemView")))
                continue;
            if (const auto* box = qobject_cast<const QCheckBox*>(widget))
                texts << name + u'=' + QString::number(box->isChecked());
            else if (const auto* label = qobject_cast<const QLabel*>(widget))
                texts << name + u'=' + label->text();
            else if (const auto* field = dynamic_cast<const controls::Field*>(widget))
                texts << name + u'=' + field->text();
            else if (dynamic_cast<const controls::Grid*>(widget))
                texts << name + u'=' + cells(name).join(u'/');
        }
        texts.sort(); // pages come to the front of each other
        return texts;
    }
    /// The rows of the tables that the modules write, without what a save counts up.
    QStringList stored() const {
        QStringList all;
        for (const char* table :
             {"Customer", "Vendor", "Employee", "Estimate", "EstOper", "EstMiscCost", "EstOperNote",
              "RfqNotes", "Job", "JobOper", "JobMiscCost", "JobOperNote", "JobOperSchedule", "RFQ",
              "RFQVendor", "RFQItem", "PO", "POVendor"})
            all << rows(u"SELECT * FROM "_s + QString::fromLatin1(table));
        // Its lines are written anew by each save, and get new numbers.
        const QStringList items = rows(u"SELECT * FROM POItem"_s);
        for (const QString& item : items)
            all << item.section(u'|', 1);
        all.sort();
        return all;
    }

    QStringList entries(bool (*wanted)(const QWidget*)) const {
        QStringList names;
        for (const auto* widget : form().findChildren<QWidget*>()) {
            if (!widget->objectName().isEmpty() && wanted(widget) &&
                isVisible(widget->objectName()) && isEnabled(widget->objectName()) &&
                (widget->focusPolicy() & Qt::TabFocus))
                names << widget->objectName();
        }
        return names;
    }
    static bool isField(const QWidget* widget) {
        const auto* field = dynamic_cast<const controls::Field*>(widget);
        const QString name = widget->objectName();
        return field && !field->isLocked() && name != u"dbcJobsCreated" &&
               !name.startsWith(u"qt_") && !widget->parentWidget()->inherits("QComboBox") &&
               !widget->parentWidget()->inherits("QAbstractItemView");
    }
    static bool isBox(const QWidget* widget) { return qobject_cast<const QCheckBox*>(widget); }
    static bool isGrid(const QWidget* widget) {
        const auto* grid = dynamic_cast<const controls::Grid*>(widget);
        return grid && grid->rowCount() > 0 && !grid->isLocked() &&
               widget->objectName() != u"sprVendor";
    }

    void change(const QString& name) {
        auto* widget = form().control(name);
        if (auto* combo = dynamic_cast<QComboBox*>(widget)) {
            if (combo->count() > 0)
                choose(name, combo->itemText(below(combo->count())));
        } else if (dynamic_cast<controls::DateField*>(widget)) {
            type(name, u"3/%1/2026"_s.arg(1 + below(28)));
        } else {
            type(name, QString::number(1 + below(60)));
        }
        leave();
    }
    void changeGrid(const QString& name) {
        auto* grid = control<controls::Grid>(name);
        const int row = below(grid->rowCount());
        std::vector<int> columns;
        for (int column = 0; column < grid->columnCount(); ++column) {
            if (!grid->isCellLocked(row, column) && !grid->isColumnHidden(column))
                columns.push_back(column);
        }
        go(name);
        grid->setActiveRow(row);
        const int what = below(4);
        if (what > 1 && !columns.empty())
            setCell(name, row, columns[static_cast<std::size_t>(below(int(columns.size())))],
                    QString::number(1 + below(40)));
        else if (what == 1 || form().name() == u"frmJob")
            key(below(2) == 0 ? Qt::Key_Down : Qt::Key_Up, Qt::ControlModifier | Qt::ShiftModifier);
        else if (grid->rowCount() > 1 && !grid->isRowHidden(row)) {
            expectBoxContaining(u"elete"_s, form().name() == u"frmPO" ? Answer::Ok : Answer::Yes);
            key(Qt::Key_Delete);
        }
    }
    /// What is picked in a dialog and inserted, or written in a window of its own.
    void changeByDialog() {
        const QString module = form().name();
        const auto picks = [this](const QString& list) {
            return [this, list] {
                selectRow(list, below(rowCount(list)));
                press(u"cmdOK"_s);
            };
        };
        if (module == u"frmPO" || module == u"frmRFQ") {
            whenShown(module + u"addItem"_s, [this] {
                type(u"txtPartNumber"_s, u"P-%1"_s.arg(below(9)));
                type(u"txtDescription"_s, u"Bar "_s + QString::number(below(100)));
                type(u"txtQty"_s, QString::number(1 + below(40)));
                type(u"dbcUnits"_s, u"EA"_s);
                press(u"cmdOK"_s);
            });
            press(u"cmdAddItem"_s);
        } else if (form().control(u"sprOper"_s)) {
            const int operations = rowCount(u"sprOper"_s), what = below(4);
            if (what == 0 && operations < 8) {
                whenShown(u"frmInsOper"_s, picks(u"lstOper"_s));
                press(u"cmdOper(0)"_s);
            } else if (what == 1 && rowCount(u"sprMisc"_s) < 4) {
                whenShown(u"frmInsItem"_s, picks(u"lstItems"_s));
                press(u"cmdMisc(0)"_s);
            } else if (operations > 0) {
                whenShown(module == u"frmJob" ? u"frmJobOperNote"_s : u"frmEstOperNote"_s, [this] {
                    const int words = below(4);
                    type(u"Text1"_s, words == 0 ? QString() : u"Note %1"_s.arg(words));
                    press(u"cmdOK"_s);
                });
                clickCell(u"sprOper"_s, below(operations), 1);
            }
        }
    }
    void changeAnything() {
        const QStringList fields = entries(isField), boxes = entries(isBox),
                          grids = entries(isGrid);
        const int what = below(13);
        if (what > 9)
            changeByDialog();
        else if (what < 4 && !grids.isEmpty())
            changeGrid(grids[below(int(grids.size()))]);
        else if (what == 4 && !boxes.isEmpty())
            check(boxes[below(int(boxes.size()))], below(2) == 0);
        else if (!fields.isEmpty())
            change(fields[below(int(fields.size()))]);
        settle();
    }
    int takeAll(int code) {
        int steps = 0;
        while (!(code == Qt::Key_Z ? entry().undoName() : entry().redoName()).isEmpty()) {
            const QString before = entry().undoName() + u'|' + entry().redoName();
            key(code, Qt::ControlModifier);
            settle();
            ++steps;
            if (before == entry().undoName() + u'|' + entry().redoName() && steps > 200) {
                ADD_FAILURE() << "no step is taken: " << before.toStdString();
                break;
            }
        }
        return steps;
    }
    /// The first few differences, to read.
    static void expectSame(const QStringList& now, const QStringList& wanted, const char* when) {
        EXPECT_EQ(now.size(), wanted.size()) << when;
        int told = 0;
        for (qsizetype i = 0; i < std::min(now.size(), wanted.size()) && told < 4; ++i) {
            if (now[i] == wanted[i])
                continue;
            ADD_FAILURE() << when << ": " << now[i].toStdString() << "\n  wanted "
                          << wanted[i].toStdString();
            ++told;
        }
    }

    std::mt19937 m_random{5};
};

} // namespace

TEST_P(UndoTest, AllThatIsDoneInAnEntryIsTakenBackAndDoneAgain) {
    for (const char* module :
         {"frmEstimate", "frmJob", "frmRFQ", "frmPO", "frmCustomer", "frmVendor", "frmEmployee"}) {
        SCOPED_TRACE(module);
        for (unsigned seed = 1; seed <= 3; ++seed) {
            SCOPED_TRACE(seed);
            m_random.seed(seed);
            const QStringList before = stored();
            open(QString::fromLatin1(module));
            for (unsigned i = 1; i < seed; ++i)
                key(Qt::Key_Left, Qt::AltModifier);
            press(u"cmdEdit"_s);
            settle();
            const QStringList first = seen();
            for (int i = 0; i < 25; ++i)
                changeAnything();
            leave();
            settle();
            const QStringList last = seen();
            EXPECT_NE(first, last);
            const int steps = takeAll(Qt::Key_Z);
            EXPECT_GT(steps, 8);
            expectSame(seen(), first, "all taken back");
            EXPECT_EQ(takeAll(Qt::Key_Y), steps);
            expectSame(seen(), last, "all done again");
            EXPECT_EQ(takeAll(Qt::Key_Z), steps);
            expectSame(seen(), first, "all taken back again");
            press(u"cmdSave"_s);
            EXPECT_EQ(dynamic_cast<core::RecordScreen&>(form()).mode(), u"Browse"_s);
            expectSame(stored(), before, "saved");
            EXPECT_TRUE(entry().undoName().isEmpty());
            form().unload();
            settle();
        }
    }
}

TEST_P(UndoTest, AStepIsOneThingThatTheUserDid) {
    const auto undoKey = [this] {
        key(Qt::Key_Z, Qt::ControlModifier);
        settle();
    };
    database().execute(u"DELETE * FROM EstOperNote"_s);
    database().execute(u"INSERT INTO EstOperNote (ID, EstNo, SeqNo, OperNotes) SELECT ID, EstNo, "
                       "SeqNo, 'Two clamps' FROM EstOper WHERE SeqNo = 1"_s);
    open(u"frmEstimate"_s);
    press(u"cmdEdit"_s);
    settle();
    const QString quantity = text(u"txtQuantity"_s), price = text(u"fpQtyPrice(0)"_s);
    // While a field is typed in, it has its own steps.
    type(u"txtQuantity"_s, u"77"_s);
    settle();
    EXPECT_TRUE(entry().undoName().isEmpty());
    undoKey();
    EXPECT_NE(text(u"txtQuantity"_s), u"77"_s);
    EXPECT_EQ(focusName(), u"txtQuantity"_s);
    type(u"txtQuantity"_s, u"77"_s);
    leave();
    EXPECT_EQ(entry().undoName(), u"change of Quantity"_s);
    EXPECT_NE(text(u"fpQtyPrice(0)"_s), price);
    // Rows with their notes: the figures follow each step.
    const QString notes = u"SELECT ID, SeqNo, OperNotes FROM EstOperNote ORDER BY EstNo, SeqNo"_s;
    const QStringList was = rows(notes);
    const QStringList operations = cells(u"sprOper"_s);
    go(u"sprOper"_s);
    expectBoxContaining(u"Delete operation"_s, Answer::Yes);
    key(Qt::Key_Delete);
    settle();
    EXPECT_EQ(entry().undoName(), u"removal of operation"_s);
    setCell(u"sprOper"_s, 0, 3, u"4.5"_s);
    settle();
    EXPECT_EQ(entry().undoName(), u"change of Time/Amount"_s);
    // From another place on the screen, in the order in which they were done.
    go(u"txtDescription"_s);
    undoKey();
    EXPECT_EQ(entry().undoName(), u"removal of operation"_s);
    undoKey();
    EXPECT_EQ(cells(u"sprOper"_s), operations);
    EXPECT_EQ(rows(notes), was);
    undoKey();
    EXPECT_EQ(text(u"txtQuantity"_s), quantity);
    EXPECT_EQ(text(u"fpQtyPrice(0)"_s), price);
    EXPECT_EQ(focusName(), u"txtQuantity"_s) << "it is shown where";
    EXPECT_TRUE(entry().undoName().isEmpty());
    // A note is written at once. Taken back, it is the stored one again, and outlives Cancel.
    whenShown(u"frmEstOperNote"_s, [this] {
        type(u"Text1"_s, QString());
        press(u"cmdOK"_s);
    });
    clickCell(u"sprOper"_s, 0, 1);
    EXPECT_NE(rows(notes), was);
    settle();
    EXPECT_EQ(entry().undoName(), u"change of Note"_s);
    undoKey();
    EXPECT_EQ(rows(notes), was);
    expectBoxContaining(u"cancel"_s, Answer::Yes);
    press(u"cmdCancel"_s);
    EXPECT_EQ(rows(notes), was);
    EXPECT_TRUE(entry().redoName().isEmpty());
    form().unload();
    settle();

    // A vendor brings his address and terms.
    open(u"frmPO"_s);
    press(u"cmdEdit"_s);
    settle();
    const QStringList first = seen();
    const QString vendor =
        database()
            .lookup(u"SELECT MAX(Company) FROM Vendor WHERE Company <> '%1'"_s.arg(
                values::quoted(text(u"dbcVend"_s))))
            .toText();
    choose(u"dbcVend"_s, vendor);
    leave();
    settle();
    EXPECT_NE(seen(), first);
    EXPECT_EQ(entry().undoName(), u"change of Vendor"_s);
    undoKey();
    expectSame(seen(), first, "vendor");
    EXPECT_TRUE(entry().undoName().isEmpty());
    expectBoxContaining(u"cancel"_s, Answer::Yes);
    press(u"cmdCancel"_s);
}

MIRSA_BOTH_ENGINES(UndoTest);
