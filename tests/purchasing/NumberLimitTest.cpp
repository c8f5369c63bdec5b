#include "BuyingRows.h"
#include "purchasing/PoStore.h"
#include "purchasing/RfqStore.h"

using namespace purchasing;

namespace {

constexpr qint64 highest = 32767;

/// A shop whose numbers are about to leave what older programs know.
class NumberLimit : public testsupport::BuyingRows {
  protected:
    void prepare() override {
        BuyingRows::prepare();
        db().execute(u"INSERT INTO RFQ (PONumber, Title) VALUES (%1, 'Last')"_s.arg(highest));
        db().execute(
            u"INSERT INTO PO (PONumber, Title, Active) VALUES (%1, 'Last', True)"_s.arg(highest));
        addVendor(db(), highest, m_harrow);
        replaceRfqLines(db(), highest, m_harrow, {line(u"A"_s, 1, 2)});
        db().execute(u"INSERT INTO POVendor (OrderNumber, VendorID, Company) VALUES (%1, %2, "
                     "'Harrow')"_s.arg(highest)
                         .arg(m_harrow));
        replacePoLines(db(), highest, {}, {line(u"A"_s, 1, 2)});
    }
    QString stored() {
        return one(u"SELECT COUNT(*), MAX(PONumber) FROM PO"_s) + u' ' +
               one(u"SELECT COUNT(*), MAX(PONumber) FROM RFQ"_s) + u' ' +
               one(u"SELECT COUNT(*), MAX(ID) FROM POItem"_s) + u' ' +
               one(u"SELECT COUNT(*) FROM RFQItem"_s);
    }
};

TEST_P(NumberLimit, AboveItNothingIsWrittenUntilThePreferenceAllowsIt) {
    const QString key = vendorKey(highest, m_harrow);
    const QString line1 = u"%1-1"_s.arg(highest);
    const ChosenRequest chosen{key, {key + u"-1"_s}};
    const std::function<void()> steps[] = {
        [&] { copyGroup(db(), highest, {chosen}); },
        [&] { orderFromRequest(db(), highest, chosen, {}); },
        [&] { copyOrder(db(), highest, {line1}, {}); },
        [&] {
            jet::Transaction transaction(db());
            const qint64 group = createGroup(db(), m_obrien);
            replaceRfqLines(db(), group, m_obrien, {line(u"B"_s, 1, 1)});
            transaction.commit();
        },
        [&] { // a line whose number has passed the limit, in an order that hasn't
            auto lines = loadPoLines(db(), highest);
            lines[0].id = highest + 1;
            jet::Transaction transaction(db());
            replacePoLines(db(), highest, {}, lines);
            transaction.commit();
        }};
    const QString before = stored();
    for (const auto& step : steps) {
        try {
            step();
            ADD_FAILURE() << "no overflow";
        } catch (const jet::Error& error) {
            EXPECT_EQ(error.number(), jet::errors::overflow);
            EXPECT_TRUE(error.text().contains(u"Allow numbers above 32,767"));
        }
        EXPECT_EQ(stored(), before);
    }
    execute(u"UPDATE SystemSettings SET LargeNumbers = True");
    for (const auto& step : steps)
        EXPECT_NO_THROW(step());
    EXPECT_GT(db().lookup(u"SELECT MAX(PONumber) FROM PO"_s).toLong(), highest);
}

} // namespace

MIRSA_BOTH_ENGINES(NumberLimit);
