#include "estimating/OperationCatalogue.h"
#include "estimating/Catalogue.h"
#include "estimating/CatalogueDialogs.h"
#include "platform/values/Literals.h"

#include "core/MirsaMain.h"
#include "support/ShopFixture.h"

#include <QTreeWidget>

using namespace estimating;
using screen::Answer;
using screen::Icon;

namespace {

class OperationCatalogue : public testsupport::ShopTest {
  protected:
    void prepare() override {
        registerCatalogue();
        database().execute(u"DELETE * FROM Operation"_s);
        database().execute(u"DELETE * FROM OperDepartment"_s);
    }
    qint64 department(const QString& name) {
        saveDepartment(database(), 0, name);
        return database().lastCounter();
    }
    qint64 add(const QString& type, const QString& description, qint64 departmentId = 0,
               const QString& note = {}) {
        OperationDraft draft;
        draft.type = type;
        draft.description = description;
        draft.rate = u"1,250.50"_s;
        draft.departmentId = departmentId;
        draft.note = note;
        return saveOperation(database(), draft);
    }
    QStringList operations() const {
        return rows(u"SELECT Description, OperType, OperShopRate, "
                    "operdepartment_id FROM Operation ORDER BY OperNo"_s);
    }
    QStringList notes() const {
        return rows(u"SELECT OperNo, [Note] FROM OperNote ORDER BY OperNo"_s);
    }
    /// Makes a node of the tree the current one, by its text.
    void clickNode(const QString& wanted) {
        auto* tree = control<QTreeWidget>(u"tvwOper"_s);
        const auto found = tree->findItems(wanted, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << wanted.toStdString();
        tree->setCurrentItem(found.first());
    }

    const QString in = QString::fromUtf16(inhouseType);
    const QString out = QString::fromUtf16(contractorType);
    const QString over = QString::fromUtf16(overheadType);
};

TEST_P(OperationCatalogue, ADescriptionBelongsToOneOperationOfAllTypes) {
    const qint64 lathes = department(u"Lathes"_s);
    const qint64 turning = add(in, u"Turning"_s, lathes);
    add(over, u"Sweeping"_s);

    OperationDraft draft = *loadOperation(database(), turning);
    EXPECT_FALSE(checkOperation(database(), draft));
    draft.description = u"sweeping "_s;
    EXPECT_EQ(checkOperation(database(), draft)->text, u"sweeping already exists!"_s);
    draft.operNo = 0;
    draft.description = u"turning"_s;
    EXPECT_EQ(checkOperation(database(), draft)->field, u"txtDescription"_s);
    draft.description = u"  "_s;
    EXPECT_EQ(checkOperation(database(), draft)->text, u"Description may not be blank!"_s);

    draft.description = u"Boring"_s;
    draft.rate = u"4.5.6"_s;
    draft.departmentId = 0;
    EXPECT_EQ(checkOperation(database(), draft)->text, u"Invalid Shop Rate!"_s);
    draft.rate = u"45"_s;
    EXPECT_EQ(checkOperation(database(), draft)->text, u"Department may not be blank!"_s);
    draft.type = out;
    EXPECT_FALSE(checkOperation(database(), draft));

    EXPECT_EQ(checkDepartment(database(), 0, u"LATHES"_s)->text, u"LATHES already exists!"_s);
    EXPECT_FALSE(checkDepartment(database(), lathes, u"LATHES"_s));
}

TEST_P(OperationCatalogue, OnlyInhouseOperationsHaveRateAndDepartment) {
    const qint64 lathes = department(u"Lathes"_s);
    add(in, u"Turning"_s, lathes);
    const qint64 plating = add(out, u"Plating"_s, lathes);
    EXPECT_EQ(operations(),
              QStringList({u"Turning|I|1250.5|%1"_s.arg(lathes), u"Plating|C|0|0"_s}));
    OperationDraft draft = *loadOperation(database(), plating);
    draft.description = u"Zinc plating"_s;
    draft.rate = u"9"_s;
    EXPECT_EQ(saveOperation(database(), draft), plating);
    EXPECT_EQ(operations().last(), u"Zinc plating|C|0|0"_s);
}

TEST_P(OperationCatalogue, AnEmptyNoteHasNoRow) {
    const qint64 number = add(out, u"Plating"_s, 0, u"Rinse it"_s);
    EXPECT_EQ(notes(), QStringList(u"%1|Rinse it"_s.arg(number)));
    OperationDraft draft = *loadOperation(database(), number);
    EXPECT_EQ(draft.note, u"Rinse it"_s);
    draft.note = u"Rinse it twice"_s;
    saveOperation(database(), draft);
    EXPECT_EQ(notes(), QStringList(u"%1|Rinse it twice"_s.arg(number)));
    draft.note.clear();
    saveOperation(database(), draft);
    EXPECT_TRUE(notes().isEmpty());
    draft.note = u"Dry it"_s;
    saveOperation(database(), draft);
    EXPECT_EQ(notes(), QStringList(u"%1|Dry it"_s.arg(number)));
    deleteOperation(database(), number);
    EXPECT_EQ(notes().size(), 1);
}

TEST_P(OperationCatalogue, WhatIsInUseStaysByItsKindsOwnRule) {
    const qint64 number = add(in, u"Turning"_s, 1);
    const QString all = u"DELETE * FROM "_s;
    const auto put = [&](const char16_t* table) {
        database().execute(
            u"INSERT INTO %1 (OperNo) VALUES(%2)"_s.arg(QString::fromUtf16(table)).arg(number));
    };
    const auto refusal = [](const char16_t* place) {
        return u"This operation has been included in "_s + QString::fromUtf16(place) +
               u". It cannot be deleted!"_s;
    };
    put(u"Timelog");
    EXPECT_EQ(operationInUse(database(), number, in), QString());
    EXPECT_EQ(operationInUse(database(), number, out), QString());
    EXPECT_EQ(operationInUse(database(), number, over), refusal(u"time management"));
    database().execute(all + u"Timelog"_s);

    put(u"DefaultSetOper");
    EXPECT_EQ(operationInUse(database(), number, out),
              refusal(u"Default Operations for Estimate/Job"));
    put(u"EstOper");
    EXPECT_EQ(operationInUse(database(), number, in), refusal(u"Estimate"));
    put(u"JobOper");
    EXPECT_EQ(operationInUse(database(), number, in), refusal(u"Job"));
    EXPECT_EQ(operationInUse(database(), number, over), QString());
}

TEST_P(OperationCatalogue, TheTreeDeletesOnlyEmptyDepartments) {
    const qint64 lathes = department(u"Lathes"_s);
    add(in, u"Turning"_s, lathes);
    open(u"frmOperation"_s);
    const QString cmdDelete = u"cmdDelete"_s;
    EXPECT_TRUE(isEnabled(u"cmdNewOper"_s));

    expectBox(u"Please delete the operation(s) first before deleting the "
              "department."_s);
    press(cmdDelete);
    clickNode(u"Turning"_s);
    EXPECT_FALSE(isEnabled(u"cmdNewOper"_s));
    expectBox(u"Delete this operation?"_s, Answer::No, u"Delete"_s);
    press(cmdDelete);
    EXPECT_EQ(operations().size(), 1);
    expectBox(u"Delete this operation?"_s, Answer::Yes);
    press(cmdDelete);
    EXPECT_TRUE(operations().isEmpty());
    clickNode(u"Lathes"_s);
    expectBox(u"Delete this department?"_s, Answer::Yes);
    press(cmdDelete);
    EXPECT_FALSE(database().hasRows(u"SELECT * FROM OperDepartment"_s));
    clickNode(u"There are no items to view"_s);
}

TEST_P(OperationCatalogue, DialogsAddOneAfterTheOther) {
    open(u"frmOperation"_s);
    press(u"cmdView"_s);
    expectBox(u"You may not add an inhouse operation without any department "
              "defined!. Please add the department first."_s);
    press(u"cmdNewOper"_s);

    whenShown(u"frmOperDeptAddEdit"_s, [&] {
        expectBox(u"Description may not be blank!"_s);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"La'th#es"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNewDept"_s);
    const QString id = database()
                           .lookup(u"SELECT id FROM OperDepartment WHERE department = "
                                   "'Lathes'"_s)
                           .toText();
    press(u"cmdView"_s);
    clickNode(u"Lathes"_s);

    whenShown(u"frmOperAddEdit"_s, [&] {
        EXPECT_EQ(form().windowTitle(), u"New Inhouse Operation"_s);
        EXPECT_EQ(text(u"txtOperShopRate"_s), u"60.00"_s);
        EXPECT_EQ(text(u"cboDept"_s), u"Lathes"_s);
        type(u"txtDescription"_s, u"Turning"_s);
        type(u"txtOperShopRate"_s, u"1250.5"_s);
        type(u"Text1"_s, u"Use coolant"_s);
        press(u"cmdOKNew"_s);
        EXPECT_EQ(focusName(), u"txtDescription"_s);
        EXPECT_EQ(text(u"Text1"_s), QString());
        type(u"txtDescription"_s, u"TURNING"_s);
        expectBox(u"TURNING already exists!"_s);
        press(u"cmdOK"_s);
        type(u"txtDescription"_s, u"Boring"_s);
        press(u"cmdOK"_s);
    });
    press(u"cmdNewOper"_s);
    EXPECT_EQ(operations(), QStringList({u"Turning|I|1250.5|"_s + id, u"Boring|I|60|"_s + id}));
    EXPECT_EQ(notes().size(), 1);

    press(u"cmdView"_s);
    EXPECT_EQ(cells(u"lvwIN"_s),
              QStringList({u"Boring|$60.00|Lathes"_s, u"Turning|$1,250.50|Lathes"_s}));
    whenShown(u"frmOperAddEdit"_s, [&] {
        EXPECT_EQ(form().windowTitle(), u"Edit Contracted Operation"_s);
        EXPECT_FALSE(isVisible(u"txtOperShopRate"_s));
        EXPECT_FALSE(isEnabled(u"cmdOKNew"_s));
        press(u"cmdCancel"_s);
    });
    const qint64 plating = add(out, u"Plating"_s);
    screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s)
        ->ShowForm(u"Edit"_s, plating, 0, out);
    expectBox(u"4711 record id not found! Operation table may need to be fixed!"_s, Answer::Ok, {},
              {}, Icon::Critical);
    screen::Forms::dialog<OperationDialog>(u"frmOperAddEdit"_s)->ShowForm(u"Edit"_s, 4711, 0, out);
}

MIRSA_BOTH_ENGINES(OperationCatalogue);

} // namespace
