#include "scheduling/JobSelection.h"

#include "platform/controls/DataCombo.h"
#include "platform/jet/Database.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>

namespace scheduling {

JobSelection::JobSelection(QWidget* parent) : QGroupBox(u"Show"_s, parent) {
    setObjectName(u"fraSelect"_s);
    auto* grid = new QGridLayout(this);
    const auto combo = [&](const QString& name, const QString& spoken, int characters) {
        auto* made = screen::named(new controls::DataCombo(this), name, spoken);
        made->setMinimumContentsLength(characters);
        made->setTypingAllowed(false);
        return made;
    };
    auto* caption = new QLabel(u"C&ustomer:"_s, this);
    dbcCustomer = combo(u"dbcCustomer"_s, u"Customer"_s, 20);
    caption->setBuddy(dbcCustomer);
    txtCustomerNo = screen::named(new QLineEdit(this), u"txtCustomerNo"_s, u"Customer number"_s);
    txtCustomerNo->setReadOnly(true);
    txtCustomerNo->setFocusPolicy(Qt::ClickFocus);
    txtCustomerNo->setMaximumWidth(70);
    optJobNo = screen::named(new QRadioButton(u"&Job No.:"_s, this), u"optJobNo"_s);
    dbcJobNo = combo(u"dbcJobNo"_s, u"Job number"_s, 8);
    optJobPO = screen::named(new QRadioButton(u"&PO No.:"_s, this), u"optJobPO"_s);
    dbcJobPO = combo(u"dbcJobPO"_s, u"Purchase order of the customer"_s, 10);
    optJobNo->setChecked(true);
    grid->addWidget(caption, 0, 0);
    grid->addWidget(dbcCustomer, 0, 1, 1, 2);
    grid->addWidget(txtCustomerNo, 0, 3);
    grid->addWidget(optJobNo, 1, 0);
    grid->addWidget(dbcJobNo, 1, 1);
    grid->addWidget(optJobPO, 1, 2);
    grid->addWidget(dbcJobPO, 1, 3);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);

    dbcCustomer->chosen.connect([this] {
        if (!dbcCustomer->boundText().isEmpty())
            customerChosen(dbcCustomer->boundText().toLongLong());
    });
    dbcJobNo->chosen.connect([this] { chosen(); });
    dbcJobPO->chosen.connect([this] { chosen(); });
    for (QRadioButton* option : {optJobNo, optJobPO}) {
        connect(option, &QRadioButton::clicked, this, [this] {
            arrange();
            chosen();
        });
    }
    arrange();
}

void JobSelection::arrange() {
    dbcJobNo->setEnabled(!byOrder());
    dbcJobPO->setEnabled(byOrder());
}

void JobSelection::setCustomers(const jet::Recordset& customers) {
    dbcCustomer->setRows(customers, u"Company"_s, u"Custid"_s);
}

QStringList JobSelection::selects(qint64 custId) {
    const QString active = u" FROM Job WHERE CustID = %1 AND Shipped = FALSE"_s.arg(custId);
    return {u"SELECT JobNo"_s + active,
            u"SELECT DISTINCT PONo"_s + active + u" AND PONo IS NOT NULL"_s};
}

void JobSelection::showCustomer(jet::Database& database, qint64 custId) {
    dbcCustomer->setBoundText(QString::number(custId));
    txtCustomerNo->setText(dbcCustomer->boundText());
    const QStringList of = selects(custId);
    const jet::Recordset jobs = database.openRecordset(of[0], jet::RecordsetType::Snapshot);
    const jet::Recordset orders = database.openRecordset(of[1], jet::RecordsetType::Snapshot);
    dbcJobNo->clear();
    dbcJobPO->clear();
    dbcJobNo->setRows(jobs, u"JobNo"_s, u"JobNo"_s);
    dbcJobPO->setRows(orders, u"PONo"_s, u"PONo"_s);
}

void JobSelection::chooseJob(qint64 jobNo) {
    dbcJobNo->setBoundText(QString::number(jobNo));
}

qint64 JobSelection::customer() const {
    return txtCustomerNo->text().toLongLong();
}

qint64 JobSelection::jobNo() const {
    return dbcJobNo->boundText().toLongLong();
}

QString JobSelection::order() const {
    return dbcJobPO->boundText();
}

bool JobSelection::byOrder() const {
    return optJobPO->isChecked();
}

bool JobSelection::isChosen() const {
    return byOrder() ? !order().isEmpty() : jobNo() != 0;
}

} // namespace scheduling
