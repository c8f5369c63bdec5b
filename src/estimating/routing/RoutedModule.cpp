#include "estimating/routing/RoutedModule.h"

#include "core/MirsaMain.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Layout.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>

#include <utility>

namespace estimating {

using core::ModuleButton;
using core::Role;

RoutedModule::RoutedModule(core::ModuleDescriptor descriptor)
    : RecordModule(std::move(descriptor)) {
    // What stands beside the arrows keeps its place while they are hidden.
    QSizePolicy policy = datMain()->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    datMain()->setSizePolicy(policy);
}

void RoutedModule::Form_Load() {
    RecordModule::Form_Load();
    // As after a save: from the first field in the title line a stray key would leave the record.
    if (QPushButton* close = button(Role::Close); close && isBrowse())
        close->setFocus();
}

bool RoutedModule::mayOpen() {
    if (!core::MainDatabase().hasRows(u"SELECT CustID FROM Customer"_s)) {
        screen::MsgBox(u"You cannot use the "_s + descriptor().moduleWord +
                           u" module if you do not have any Customers in the "
                           "database!"_s,
                       screen::Buttons::Ok, screen::Icon::Critical, u"Error"_s);
        return false;
    }
    const bool showDollar = core::HasAccess(u"ShowDollar"_s);
    for (QWidget* widget : m_secured)
        widget->setVisible(showDollar);
    m_routing->setShowDollar(showDollar);
    return true;
}

void RoutedModule::openLookups() {
    dbcCustomer->setRows(core::MainDatabase().openRecordset(
                             u"SELECT Company, CustID FROM Customer ORDER BY Company"_s,
                             jet::RecordsetType::Snapshot),
                         u"Company"_s, u"CustID"_s);
}

void RoutedModule::refreshLookup(const QString& table) {
    if (table.compare(u"Customer"_s, Qt::CaseInsensitive) == 0) {
        openLookups();
        dbcCustomer->setBoundText(lblCustID->text());
    }
    RecordModule::refreshLookup(table);
}

void RoutedModule::ShowModuleMode(const QString& mode) {
    RecordModule::ShowModuleMode(mode);
    fraBrowse->setVisible(isBrowse());
    fraEdit->setVisible(!isBrowse());
    datMain()->setVisible(isBrowse());
    m_routing->setMode(isBrowse()   ? RoutingMode::Browse
                       : isAdding() ? RoutingMode::Add
                                    : RoutingMode::Edit);
}

QWidget* RoutedModule::makeButtonPane(const std::vector<std::vector<ModuleButton>>& browseColumns) {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    fraBrowse = screen::named(new QWidget(pane), u"fraBrowse"_s);
    fraEdit = screen::named(new QWidget(pane), u"fraEdit"_s);
    layout->addWidget(fraBrowse);
    layout->addWidget(fraEdit);
    layout->addStretch();

    auto* columns = new QHBoxLayout(fraBrowse);
    columns->setContentsMargins(0, 0, 0, 0);
    for (const std::vector<ModuleButton>& buttons : browseColumns) {
        auto* column = new QVBoxLayout;
        column->setSpacing(3);
        columns->addLayout(column);
        makeButtons(column, buttons);
        column->addStretch();
    }
    auto* entry = new QHBoxLayout(fraEdit);
    entry->setContentsMargins(0, 0, 0, 0);
    entry->addStretch();
    makeButtons(entry, {{Role::Save, u"cmdSave"_s, u"&Save"_s},
                        {Role::Cancel, u"cmdCancel"_s, u"&Cancel"_s}});
    // The lists above keep their height when the frames change places.
    pane->setMinimumHeight(fraBrowse->sizeHint().height());
    return pane;
}

QLayout* RoutedModule::makeCustomer(QWidget* parent) {
    dbcCustomer = screen::named(new controls::DataCombo(parent), u"dbcCustomer"_s, u"Customer"_s);
    lblCustID = screen::named(new QLabel(parent), u"lblCustID"_s, u"Customer No."_s);
    lblCustID->setFrameShape(QFrame::StyledPanel);
    lblCustID->setMinimumWidth(52);
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(dbcCustomer, 1);
    row->addWidget(lblCustID);
    fields().bind({u"CustID"_s,
                   [this](const jet::Value& value) { showCustomer(value.toText()); },
                   {},
                   [this] {
                       lblCustID->clear();
                       dbcCustomer->setText(QString());
                   },
                   [this](bool locked) { dbcCustomer->setLocked(locked); },
                   dbcCustomer});
    return row;
}

void RoutedModule::bindNumber(const QString& column, controls::TextField* field,
                              const QString& mask) {
    fields().bind({column,
                   [field, mask](const jet::Value& value) {
                       field->setText(values::format(value.toDouble(), mask));
                   },
                   {},
                   [field] { field->setText(QString()); },
                   [field](bool locked) { field->setLocked(locked); },
                   field});
}

void RoutedModule::showCustomer(const QString& custId) {
    lblCustID->setText(custId);
    dbcCustomer->setBoundText(custId);
    if (dbcCustomer->boundText() == custId ||
        !core::MainDatabase().hasRows(u"SELECT CustID FROM Customer WHERE CustID = "_s + custId))
        return;
    openLookups();
    dbcCustomer->setBoundText(custId);
}

void RoutedModule::wireCustomer() {
    const auto taken = [this] { lblCustID->setText(dbcCustomer->boundText()); };
    on(dbcCustomer->chosen, taken);
    // The number of a customer who has been deleted stays until another one is chosen.
    connect(dbcCustomer->lineEdit(), &QLineEdit::textEdited, this,
            [this] { m_customerTyped = true; });
    on(dbcCustomer->left, [this, taken] {
        if (std::exchange(m_customerTyped, false) && !isBrowse())
            taken();
    });
}

} // namespace estimating
