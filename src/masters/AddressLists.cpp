#include "masters/AddressLists.h"

#include "core/MirsaMain.h"
#include "core/records/RecordScreen.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QApplication>

#include <memory>

namespace masters {

namespace {

/// What differs between countries and states.
struct Place {
    QString subject, title, table, listName, insert;
};

const Place& country() {
    static const Place place{u"Country "_s, u"Country not Found"_s, u"Country"_s, u"country"_s,
                             u"INSERT INTO Country (country, code) VALUES ('%1', '%1')"_s};
    return place;
}

const Place& state() {
    static const Place place{u"State/Province "_s, u"State/Province not Found"_s, u"States"_s,
                             u"states"_s,
                             u"INSERT INTO States (description, code) VALUES ('%1', '%1')"_s};
    return place;
}

void offer(screen::Form& form, controls::DataCombo* field, const Place& place,
           const std::function<bool()>& entering) {
    const auto before = std::make_shared<QString>();
    form.on(field->entered, [field, before] { *before = field->text(); });
    form.on(field->left, [field, before, &place, entering] {
        const QString typed = field->text().trimmed();
        // Not of what stood there before, and not on the way out by Cancel.
        const QWidget* next = QApplication::focusWidget();
        if (!entering() || typed.isEmpty() || field->text() == *before ||
            !field->boundText().isEmpty() || (next && next->objectName() == u"cmdCancel"))
            return;
        if (screen::MsgBox(place.subject + typed + u" does not exist in the Mirsa "_s +
                               place.listName + u" table. Add?"_s,
                           screen::Buttons::YesNo, screen::Icon::Question,
                           place.title) != screen::Answer::Yes)
            return;
        core::MainDatabase().execute(place.insert.arg(values::quoted(typed)));
        field->setText(typed);
        core::refreshNeighbours(
            {u"frmCustomer"_s, u"frmVendor"_s, u"frmEmployee"_s, u"frmRFQ"_s, u"frmPO"_s},
            place.table);
    });
}

} // namespace

void offerUnknown(screen::Form& form, const screen::AddressBlock& address,
                  const std::function<bool()>& entering) {
    offer(form, address.state, state(), entering);
    offer(form, address.country, country(), entering);
}

void fillAddressLists(const std::vector<screen::AddressBlock>& addresses) {
    jet::Database& database = core::MainDatabase();
    const jet::Recordset states = database.openLater(u"Select * from States order by code"_s);
    const jet::Recordset countries =
        database.openLater(u"Select * from Country order by Country"_s);
    for (const screen::AddressBlock& address : addresses) {
        address.state->setRows(states, u"code"_s, u"code"_s);
        address.country->setRows(countries, u"country"_s, u"country"_s);
    }
}

bool isAddressTable(const QString& table) {
    return table.compare(u"States", Qt::CaseInsensitive) == 0 ||
           table.compare(u"Country", Qt::CaseInsensitive) == 0;
}

} // namespace masters
