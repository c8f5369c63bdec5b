#include "estimating/frmOperAddEdit.h"

#include "core/EditActions.h"
#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "platform/screen/Layout.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QAction>
#include <QGroupBox>
#include <QMenu>
#include <QMenuBar>
#include <QVBoxLayout>

namespace estimating {

namespace {

QString rateMask() {
    return u"##,###.00"_s;
}

} // namespace

frmOperAddEdit::frmOperAddEdit() : AddEditForm(QString::fromLatin1(formName), QString()) {
    auto* outside = new QVBoxLayout(this);
    createMenus();
    screen::Fields fields(this, outside);
    txtDescription = fields.text(u"txtDescription"_s, u"&Description:"_s,
                                 {core::MainDatabase().width(u"Operation", u"Description"),
                                  values::keys::description(),
                                  {},
                                  36});

    m_inhouseFields = new QWidget(this);
    outside->addWidget(m_inhouseFields);
    screen::Fields inhouse(m_inhouseFields);
    m_inhouseFields->layout()->setContentsMargins(0, 0, 0, 0);
    txtOperShopRate = inhouse.text(u"txtOperShopRate"_s,
                                   u"Shop &Rate "_s + core::shared().CurrencySymbol + u"/hr:"_s,
                                   {10, values::keys::decimal(), {}, 12});
    cboDept = inhouse.listCombo(u"cboDept"_s, u"De&partment:"_s);

    QGroupBox* frame = screen::frame(this, outside, u"fraNotes"_s, u"Default Operation Notes"_s);
    auto* inFrame = new QVBoxLayout(frame);
    Text1 = screen::named(new controls::MemoField(frame), u"Text1"_s, u"Default Operation Notes"_s);
    Text1->setKeyFilter(values::keys::description());
    inFrame->addWidget(Text1);

    makeButtons(outside, u"&Cancel"_s);

    // The rate is stored in the field without its mask's commas, which Val would stop at.
    on(txtOperShopRate->left, [this] {
        const QString text = txtOperShopRate->text().remove(QLatin1Char(','));
        if (values::isNumeric(text))
            txtOperShopRate->setText(values::format(values::Currency::fromText(text), rateMask()));
    });
    resize(520, 400);
}

void frmOperAddEdit::createMenus() {
    auto* menus = new QMenuBar(this);
    layout()->setMenuBar(menus);
    QMenu* edit = menus->addMenu(u"&Edit"_s);
    QMenu* tools = menus->addMenu(u"&Tools"_s);
    const auto entry = [&](QMenu* menu, const char16_t* name, const char16_t* caption,
                           void (*act)(QWidget*)) {
        QAction* action = menu->addAction(QString::fromUtf16(caption));
        action->setObjectName(QString::fromUtf16(name));
        on(action, [this, act] { act(focusWidget()); });
    };
    entry(edit, u"mnuEditCut", u"Cu&t", core::edit::cut);
    entry(edit, u"mnuEditCopy", u"&Copy", core::edit::copy);
    entry(edit, u"mnuEditPaste", u"&Paste", core::edit::paste);
    entry(edit, u"mnuEditDelete", u"&Delete", core::edit::deleteSelection);
    entry(tools, u"mnuToolsSpelling", u"&Spelling...", core::checkSpelling);
}

bool frmOperAddEdit::isInhouse() const {
    return m_draft.type == QString::fromUtf16(inhouseType);
}

bool frmOperAddEdit::ShowForm(const QString& mode, qint64 operNo, qint64 departmentId,
                              const QString& operType) {
    m_draft = OperationDraft();
    if (!operType.isEmpty())
        m_draft.type = operType;
    m_department = departmentId;
    const bool editing = mode == u"Edit"_s;
    setWindowTitle(mode + u" "_s + operationTitle(m_draft.type));
    m_inhouseFields->setVisible(isInhouse());
    setAdding(!editing);

    if (isInhouse() && !fillDepartments())
        return false;
    if (!editing)
        clearFields();
    else if (!showOperation(operNo))
        return false;
    txtDescription->setFocus();
    return run();
}

bool frmOperAddEdit::fillDepartments() {
    jet::Recordset set = core::MainDatabase().openRecordset(
        u"SELECT * FROM operdepartment ORDER BY department"_s, jet::RecordsetType::Snapshot);
    if (set.isEmpty()) {
        screen::MsgBox(u"You may not add an inhouse operation without any department "
                       "defined!. Please add the department first."_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
        return false;
    }
    for (; !set.eof(); set.moveNext())
        cboDept->addRow(set.text(u"department"), set[u"id"].toLong());
    return true;
}

void frmOperAddEdit::clearFields() {
    m_draft.operNo = 0;
    txtDescription->clear();
    Text1->clear();
    if (!isInhouse())
        return;
    const jet::Value rate = core::MainDatabase().lookup(u"SELECT jobonerate FROM SystemSettings"_s);
    txtOperShopRate->setText(values::format(rate.toCurrency(), rateMask()));
    cboDept->setCurrentIndex(-1);
    cboDept->chooseNumber(m_department);
}

bool frmOperAddEdit::showOperation(qint64 operNo) {
    const auto stored = loadOperation(core::MainDatabase(), operNo);
    if (!stored) {
        screen::MsgBox(QString::number(operNo) +
                           u" record id not found! Operation table may need to be fixed!"_s,
                       screen::Buttons::Ok, screen::Icon::Critical);
        return false;
    }
    m_draft.operNo = operNo;
    txtDescription->setText(stored->description);
    Text1->setText(stored->note);
    if (!isInhouse())
        return true;
    txtOperShopRate->setText(values::format(values::Currency::fromText(stored->rate), rateMask()));
    if (!cboDept->chooseNumber(stored->departmentId)) {
        cboDept->setCurrentIndex(-1);
        screen::MsgBox(u"The Department ID ("_s + QString::number(stored->departmentId) +
                           u") for this operation does not exist in the "
                           "operdepartment table!"_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
    }
    return true;
}

bool frmOperAddEdit::save() {
    m_draft.description = txtDescription->text();
    m_draft.rate = txtOperShopRate->text();
    m_draft.departmentId = cboDept->itemNumber();
    m_draft.note = Text1->text();
    jet::Database& database = core::MainDatabase();
    if (const auto complaint = checkOperation(database, m_draft)) {
        complain(*complaint);
        return false;
    }
    saveOperation(database, m_draft);
    return true;
}

void frmOperAddEdit::startNext() {
    clearFields();
    txtDescription->setFocus();
}

} // namespace estimating
