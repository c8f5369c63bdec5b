#include "estimating/Catalogue.h"
#include "estimating/CatalogueDialogs.h"
#include "estimating/OperationCatalogue.h"

#include "core/MirsaMain.h"
#include "support/ShopFixture.h"

#include <QTreeWidget>

using namespace estimating;
using screen::Answer;
using screen::Icon;

namespace {

class OperationCatalogue : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (IsSkipped())
            return;
        registerCatalogue();
        database().execute(QStringLiteral("DELETE * FROM Operation"));
        database().execute(QStringLiteral("DELETE * FROM OperDepartment"));
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
        draft.rate = QStringLiteral("1,250.50");
        draft.departmentId = departmentId;
        draft.note = note;
        return saveOperation(database(), draft);
    }
    QStringList operations() const {
        return rows(QStringLiteral("SELECT Description, OperType, OperShopRate, "
                                   "operdepartment_id FROM Operation ORDER BY OperNo"));
    }
    QStringList notes() const {
        return rows(QStringLiteral("SELECT OperNo, [Note] FROM OperNote ORDER BY OperNo"));
    }
    /// Makes a node of the tree the current one, by its text.
    void clickNode(const QString& wanted) {
        auto* tree = control<QTreeWidget>(QStringLiteral("tvwOper"));
        const auto found = tree->findItems(wanted, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(found.size(), 1) << wanted.toStdString();
        tree->setCurrentItem(found.first());
    }

    const QString in = QString::fromUtf16(inhouseType);
    const QString out = QString::fromUtf16(contractorType);
    const QString over = QString::fromUtf16(overheadType);
};

TEST_P(OperationCatalogue, ADescriptionBelongsToOneOperationOfAllTypes) {
    const qint64 lathes = department(QStringLiteral("Lathes"));
    const qint64 turning = add(in, QStringLiteral("Turning"), lathes);
    add(over, QStringLiteral("Sweeping"));

    OperationDraft draft = *loadOperation(database(), turning);
    EXPECT_FALSE(checkOperation(database(), draft));
    draft.description = QStringLiteral("sweeping ");
    EXPECT_EQ(checkOperation(database(), draft)->text, QStringLiteral("sweeping already exists!"));
    draft.operNo = 0;
    draft.description = QStringLiteral("turning");
    EXPECT_EQ(checkOperation(database(), draft)->field, QStringLiteral("txtDescription"));
    draft.description = QStringLiteral("  ");
    EXPECT_EQ(checkOperation(database(), draft)->text,
              QStringLiteral("Description may not be blank!"));

    draft.description = QStringLiteral("Boring");
    draft.rate = QStringLiteral("4.5.6");
    draft.departmentId = 0;
    EXPECT_EQ(checkOperation(database(), draft)->text, QStringLiteral("Invalid Shop Rate!"));
    draft.rate = QStringLiteral("45");
    EXPECT_EQ(checkOperation(database(), draft)->text,
              QStringLiteral("Department may not be blank!"));
    draft.type = out;
    EXPECT_FALSE(checkOperation(database(), draft));

    EXPECT_EQ(checkDepartment(database(), 0, QStringLiteral("LATHES"))->text,
              QStringLiteral("LATHES already exists!"));
    EXPECT_FALSE(checkDepartment(database(), lathes, QStringLiteral("LATHES")));
}

TEST_P(OperationCatalogue, OnlyInhouseOperationsHaveRateAndDepartment) {
    const qint64 lathes = department(QStringLiteral("Lathes"));
    add(in, QStringLiteral("Turning"), lathes);
    const qint64 plating = add(out, QStringLiteral("Plating"), lathes);
    EXPECT_EQ(operations(), QStringList({QStringLiteral("Turning|I|1250.5|%1").arg(lathes),
                                         QStringLiteral("Plating|C|0|0")}));
    OperationDraft draft = *loadOperation(database(), plating);
    draft.description = QStringLiteral("Zinc plating");
    draft.rate = QStringLiteral("9");
    EXPECT_EQ(saveOperation(database(), draft), plating);
    EXPECT_EQ(operations().last(), QStringLiteral("Zinc plating|C|0|0"));
}

TEST_P(OperationCatalogue, AnEmptyNoteHasNoRow) {
    const qint64 number = add(out, QStringLiteral("Plating"), 0, QStringLiteral("Rinse it"));
    EXPECT_EQ(notes(), QStringList(QStringLiteral("%1|Rinse it").arg(number)));
    OperationDraft draft = *loadOperation(database(), number);
    EXPECT_EQ(draft.note, QStringLiteral("Rinse it"));
    draft.note = QStringLiteral("Rinse it twice");
    saveOperation(database(), draft);
    EXPECT_EQ(notes(), QStringList(QStringLiteral("%1|Rinse it twice").arg(number)));
    draft.note.clear();
    saveOperation(database(), draft);
    EXPECT_TRUE(notes().isEmpty());
    draft.note = QStringLiteral("Dry it");
    saveOperation(database(), draft);
    EXPECT_EQ(notes(), QStringList(QStringLiteral("%1|Dry it").arg(number)));
    deleteOperation(database(), number);
    EXPECT_EQ(notes().size(), 1);
}

TEST_P(OperationCatalogue, WhatIsInUseStaysByItsKindsOwnRule) {
    const qint64 number = add(in, QStringLiteral("Turning"), 1);
    const QString all = QStringLiteral("DELETE * FROM ");
    const auto put = [&](const char16_t* table) {
        database().execute(QStringLiteral("INSERT INTO %1 (OperNo) VALUES(%2)")
                               .arg(QString::fromUtf16(table))
                               .arg(number));
    };
    const auto refusal = [](const char16_t* place) {
        return QStringLiteral("This operation has been included in ") + QString::fromUtf16(place) +
               QStringLiteral(". It cannot be deleted!");
    };
    put(u"Timelog");
    EXPECT_EQ(operationInUse(database(), number, in), QString());
    EXPECT_EQ(operationInUse(database(), number, out), QString());
    EXPECT_EQ(operationInUse(database(), number, over), refusal(u"time management"));
    database().execute(all + QStringLiteral("Timelog"));

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
    const qint64 lathes = department(QStringLiteral("Lathes"));
    add(in, QStringLiteral("Turning"), lathes);
    open(QStringLiteral("frmOperation"));
    const QString cmdDelete = QStringLiteral("cmdDelete");
    EXPECT_TRUE(isEnabled(QStringLiteral("cmdNewOper")));

    expectBox(QStringLiteral("Please delete the operation(s) first before deleting the "
                             "department."));
    press(cmdDelete);
    clickNode(QStringLiteral("Turning"));
    EXPECT_FALSE(isEnabled(QStringLiteral("cmdNewOper")));
    expectBox(QStringLiteral("Delete this operation?"), Answer::No, QStringLiteral("Delete"));
    press(cmdDelete);
    EXPECT_EQ(operations().size(), 1);
    expectBox(QStringLiteral("Delete this operation?"), Answer::Yes);
    press(cmdDelete);
    EXPECT_TRUE(operations().isEmpty());
    clickNode(QStringLiteral("Lathes"));
    expectBox(QStringLiteral("Delete this department?"), Answer::Yes);
    press(cmdDelete);
    EXPECT_FALSE(database().hasRows(QStringLiteral("SELECT * FROM OperDepartment")));
    clickNode(QStringLiteral("There are no items to view"));
}

TEST_P(OperationCatalogue, DialogsAddOneAfterTheOther) {
    open(QStringLiteral("frmOperation"));
    press(QStringLiteral("cmdView"));
    expectBox(QStringLiteral("You may not add an inhouse operation without any department "
                             "defined!. Please add the department first."));
    press(QStringLiteral("cmdNewOper"));

    whenShown(QStringLiteral("frmOperDeptAddEdit"), [&] {
        expectBox(QStringLiteral("Description may not be blank!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDescription"), QStringLiteral("La'th#es"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNewDept"));
    const QString id =
        database()
            .lookup(QStringLiteral("SELECT id FROM OperDepartment WHERE department = "
                                   "'Lathes'"))
            .toText();
    press(QStringLiteral("cmdView"));
    clickNode(QStringLiteral("Lathes"));

    whenShown(QStringLiteral("frmOperAddEdit"), [&] {
        EXPECT_EQ(form().windowTitle(), QStringLiteral("New Inhouse Operation"));
        EXPECT_EQ(text(QStringLiteral("txtOperShopRate")), QStringLiteral("60.00"));
        EXPECT_EQ(text(QStringLiteral("cboDept")), QStringLiteral("Lathes"));
        type(QStringLiteral("txtDescription"), QStringLiteral("Turning"));
        type(QStringLiteral("txtOperShopRate"), QStringLiteral("1250.5"));
        type(QStringLiteral("Text1"), QStringLiteral("Use coolant"));
        press(QStringLiteral("cmdOKNew"));
        EXPECT_EQ(focusName(), QStringLiteral("txtDescription"));
        EXPECT_EQ(text(QStringLiteral("Text1")), QString());
        type(QStringLiteral("txtDescription"), QStringLiteral("TURNING"));
        expectBox(QStringLiteral("TURNING already exists!"));
        press(QStringLiteral("cmdOK"));
        type(QStringLiteral("txtDescription"), QStringLiteral("Boring"));
        press(QStringLiteral("cmdOK"));
    });
    press(QStringLiteral("cmdNewOper"));
    EXPECT_EQ(operations(), QStringList({QStringLiteral("Turning|I|1250.5|") + id,
                                         QStringLiteral("Boring|I|60|") + id}));
    EXPECT_EQ(notes().size(), 1);

    press(QStringLiteral("cmdView"));
    EXPECT_EQ(cells(QStringLiteral("lvwIN")),
              QStringList({QStringLiteral("Boring|$60.00|Lathes"),
                           QStringLiteral("Turning|$1,250.50|Lathes")}));
    whenShown(QStringLiteral("frmOperAddEdit"), [&] {
        EXPECT_EQ(form().windowTitle(), QStringLiteral("Edit Contracted Operation"));
        EXPECT_FALSE(isVisible(QStringLiteral("txtOperShopRate")));
        EXPECT_FALSE(isEnabled(QStringLiteral("cmdOKNew")));
        press(QStringLiteral("cmdCancel"));
    });
    const qint64 plating = add(out, QStringLiteral("Plating"));
    screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"))
        ->ShowForm(QStringLiteral("Edit"), plating, 0, out);
    expectBox(QStringLiteral("4711 record id not found! Operation table may need to be fixed!"),
              Answer::Ok, {}, {}, Icon::Critical);
    screen::Forms::dialog<OperationDialog>(QStringLiteral("frmOperAddEdit"))
        ->ShowForm(QStringLiteral("Edit"), 4711, 0, out);
}

MIRSA_BOTH_ENGINES(OperationCatalogue);

} // namespace
