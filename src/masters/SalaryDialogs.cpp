#include "masters/SalaryDialogs.h"

#include "core/MirsaMain.h"
#include "masters/EmployeeChecks.h"
#include "masters/EmployeePay.h"
#include "platform/controls/DropMenu.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace masters {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

frmEmpSalary::frmEmpSalary() : Form(QString::fromLatin1(formName), u"Salary History"_s) {
    auto* layout = new QVBoxLayout(this);
    sprSalary = screen::named(new controls::Grid(this), u"sprSalary"_s, u"Salary history"_s);
    using Kind = controls::GridColumn::Kind;
    sprSalary->setColumns({{.title = u"Date"_s, .characters = 12},
                           {.title = u"Amount"_s, .characters = 14, .kind = Kind::Number},
                           {.title = u"Frequency"_s, .characters = 14}});
    sprSalary->setMinimumSize(420, 240);
    layout->addWidget(sprSalary);
    screen::ButtonBar bar(this, layout);
    auto* add = bar.button(u"cmdAdd"_s, u"&Add"_s);
    auto* edit = bar.button(u"cmdEdit"_s, u"&Edit"_s);
    auto* remove = bar.button(u"cmdDelete"_s, u"&Delete"_s);
    bar.stretch();
    auto* close = bar.button(u"cmdClose"_s, u"Do&ne"_s);
    on(add, &frmEmpSalary::cmdAdd_Click);
    on(edit, &frmEmpSalary::cmdEdit_Click);
    on(remove, &frmEmpSalary::cmdDelete_Click);
    on(close, [this] { unload(); });
    on(sprSalary->rowDoubleClicked, [this](int) { cmdEdit_Click(); });
    controls::offerInMenu(sprSalary, {add, edit, remove});
    setCancelButton(close);
}

void frmEmpSalary::begin(qint64 empId) {
    m_empId = empId;
    showHistory();
}

void frmEmpSalary::showHistory() {
    const int before = sprSalary->activeRow();
    const std::vector<SalaryRow> history = salaryHistory(core::MainDatabase(), m_empId);
    std::vector<QStringList> lines;
    lines.reserve(history.size());
    for (const SalaryRow& row : history)
        lines.push_back({row.date ? values::format(*row.date, u"Short Date") : QString(),
                         values::format(row.amount, core::moneyMask(u"###,##0.00"_s)),
                         row.frequency});
    sprSalary->setRows(std::move(lines));
    for (std::size_t row = 0; row < history.size(); ++row)
        sprSalary->setRowKey(int(row), history[row].index);
    if (!history.empty())
        sprSalary->setActiveRow(std::clamp(before, 0, int(history.size()) - 1));
}

qint64 frmEmpSalary::selected() const {
    const int row = sprSalary->activeRow();
    return row < 0 ? 0 : sprSalary->rowKey(row);
}

void frmEmpSalary::showRow(const QString& dialog, qint64 index) {
    const auto row = screen::Forms::dialog<SalaryRowDialog>(dialog);
    if (row->begin(m_empId, index))
        row.form().showModal();
    showHistory();
}

void frmEmpSalary::cmdAdd_Click() {
    showRow(u"frmSalaryAdd"_s, 0);
}

void frmEmpSalary::cmdEdit_Click() {
    if (const qint64 index = selected())
        showRow(u"frmSalaryEdit"_s, index);
    else
        MsgBox(u"You have not selected a record to edit!"_s, Buttons::Ok, Icon::Exclamation,
               u"Nothing Selected"_s);
}

void frmEmpSalary::cmdDelete_Click() {
    const qint64 index = selected();
    if (index == 0) {
        MsgBox(u"You have not selected a record to delete!"_s, Buttons::Ok, Icon::Exclamation,
               u"Nothing Selected"_s);
        return;
    }
    if (!screen::confirmDeletion(u"Once Deleted, Salary data will be unrecoverable. Continue?"_s,
                                 u"Warning!"_s))
        return;
    deleteSalary(core::MainDatabase(), m_empId, index);
    showHistory();
}

SalaryForm::SalaryForm(const QString& formName, const QString& title) : Form(formName, title) {
    auto* layout = new QVBoxLayout(this);
    screen::Fields fields(this, layout);
    etxtDate = fields.date(u"etxtDate"_s, u"&Date:"_s);
    txtAmount = fields.text(u"txtAmount"_s, u"&Amount:"_s);
    txtAmount->setLimit(20);
    cboFrequency = fields.listCombo(u"cboFrequency"_s, u"&Frequency:"_s);
    for (const QString& frequency : salaryFrequencies())
        cboFrequency->addRow(frequency);
    cboFrequency->clear();
    screen::ButtonBar bar(this, layout);
    bar.stretch();
    auto* save = bar.button(u"cmdSave"_s, u"&Save"_s);
    auto* cancel = bar.button(u"cmdCancel"_s, u"&Cancel"_s);
    on(save, &SalaryForm::cmdSave_Click);
    on(cancel, [this] { unload(); });
    setDefaultButton(save);
    setCancelButton(cancel);
}

bool SalaryForm::begin(qint64 empId, qint64 index) {
    m_empId = empId;
    m_index = index;
    if (index == 0)
        return true;
    const std::vector<SalaryRow> history = salaryHistory(core::MainDatabase(), empId);
    const auto row = std::find_if(history.begin(), history.end(),
                                  [index](const SalaryRow& any) { return any.index == index; });
    if (row == history.end()) {
        tellGone();
        return false;
    }
    etxtDate->setDate(row->date);
    txtAmount->setText(values::format(row->amount, u"0.00##"));
    cboFrequency->setText(row->frequency);
    return true;
}

void SalaryForm::tellGone() {
    MsgBox(u"This record has been deleted by another user."_s, Buttons::Ok, Icon::Exclamation);
}

bool SalaryForm::mayBeEarly(const QDate& date) {
    const std::vector<SalaryRow> history = salaryHistory(core::MainDatabase(), m_empId);
    return history.empty() || !history.back().date || date >= *history.back().date ||
           MsgBox(u"The date you have entered is earlier than the last Salary date "
                  "currently in the database!  Continue?"_s,
                  Buttons::OkCancel, Icon::Question, u"Date Warning!"_s) == Answer::Ok;
}

void SalaryForm::cmdSave_Click() {
    const SalaryEntry entry{etxtDate->date(), txtAmount->text(), cboFrequency->text()};
    if (const auto wrong = checkSalary(entry, values::today())) {
        complain(*wrong);
        return;
    }
    if (m_index == 0 && !mayBeEarly(*entry.date)) {
        etxtDate->setFocus();
        return;
    }
    const SalaryRow row{m_index, entry.date,
                        values::Currency::fromText(QString(entry.amount).remove(u',')),
                        entry.frequency};
    if (m_index == 0)
        addSalary(core::MainDatabase(), m_empId, row);
    else if (!changeSalary(core::MainDatabase(), m_empId, row))
        tellGone();
    unload();
}

} // namespace masters
