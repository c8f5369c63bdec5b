#include "core/Screens.h"
#include "platform/values/Literals.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include "platform/spelling/Options.h"

namespace {

class Preferences : public testsupport::ShopTest {
  protected:
    void prepare() override { core::registerScreens(); }
    void openPreferences() { ASSERT_TRUE(open(u"frmSystemSettings"_s)); }
    QString stored(const char* columns) {
        return rows(u"SELECT "_s + QString::fromLatin1(columns) + u" FROM SystemSettings"_s)
            .join(u';');
    }
    void set(const char* field, const char* value) {
        type(QString::fromLatin1(field), QString::fromLatin1(value));
    }
};

TEST_P(Preferences, EveryFieldComesBackFromTheOneRow) {
    struct Pair {
        const char* field;
        const char* column;
    };
    const Pair pairs[] = {{"txtMname", "CompanyName"},
                          {"txtMAdd1", "CompanyAddress1"},
                          {"txtMAdd2", "CompanyAddress2"},
                          {"txtMcity", "CompanyCity"},
                          {"dbcState", "CompanyState"},
                          {"dbcCountry", "companycountry"},
                          {"txtZip1", "companyzip"},
                          {"txtPhone", "CompanyPhone"},
                          {"txtFax", "CompanyFax"},
                          {"txtEm", "CompanyEmail"},
                          {"dbcTerms", "Terms"},
                          {"txtFob", "FOB"},
                          {"txtShipping", "Shipping"},
                          {"txtQH", "qteHeader"},
                          {"txtQValid", "qtevmessage"},
                          {"dbcVterms", "vTerms"},
                          {"txtVfob", "vFOB"},
                          {"txtVShipping", "vShipping"},
                          {"txtPname", "poshiptoname"},
                          {"txtPadd1", "poshiptoaddress1"},
                          {"txtPadd2", "poshiptoaddress2"},
                          {"txtPadd3", "poshiptoaddress3"},
                          {"txtPcity", "poshiptocity"},
                          {"dbcPstate", "poshiptostate"},
                          {"txtEm2", "poshiptoemail"},
                          {"dbcPCountry", "poshiptocountry"},
                          {"txtPZip1", "poshiptozip"}};
    openPreferences();
    int n = 10;
    for (const Pair& pair : pairs)
        type(QString::fromLatin1(pair.field), u"X'%1"_s.arg(n++));
    press(u"cmdOK"_s);
    EXPECT_FALSE(screen::Forms::isLoaded(u"frmSystemSettings"_s));
    openPreferences();
    n = 10;
    for (const Pair& pair : pairs) {
        const QString value = u"X'%1"_s.arg(n++);
        EXPECT_EQ(stored(pair.column), value) << pair.column;
        EXPECT_EQ(text(QString::fromLatin1(pair.field)), value) << pair.field;
    }
    EXPECT_EQ(rows(u"SELECT CompanyName FROM SystemSettings"_s).size(), 1);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
}

TEST_P(Preferences, AnEmptyRateIsNullAndSwitchesAndCharactersAreKept) {
    openPreferences();
    set("txtRate(0)", "75.5");
    set("txtRate(1)", "");
    set("txtArchM", "");
    check(u"chkSec"_s);
    check(u"chkPartsQty"_s);
    check(u"chkLargeNumbers"_s);
    set("txtSec(0)", "Q");
    set("txtSec(1)", "7");
    press(u"cmdUpdate"_s);
    EXPECT_TRUE(screen::Forms::isLoaded(u"frmSystemSettings"_s)) << "Apply stays";
    for (const char* button : {"cmdOK", "cmdUpdate", "cmdClose"})
        EXPECT_TRUE(isEnabled(QString::fromLatin1(button))) << button;
    const jet::Recordset row =
        database().openRecordset(u"SELECT * FROM SystemSettings"_s, jet::RecordsetType::Snapshot);
    EXPECT_EQ(row[u"EstOneRate"].toCurrency(), values::Currency::fromText(u"75.5"_s));
    EXPECT_TRUE(row[u"jobonerate"].isNull());
    EXPECT_TRUE(row[u"ArchiveMonths"].isNull());
    EXPECT_TRUE(row[u"Securityon"].toBool());
    EXPECT_TRUE(row[u"partsqtyon"].toBool());
    EXPECT_TRUE(row[u"LargeNumbers"].toBool());
    EXPECT_EQ(row.text(u"SecurityCode"), u"Q7"_s);

    set("txtMname", "Nobody's");
    set("txtRate(0)", "1");
    press(u"cmdClose"_s);
    EXPECT_NE(stored("CompanyName"), u"Nobody's"_s) << "Cancel saves nothing";
    openPreferences();
    EXPECT_EQ(text(u"txtRate(0)"_s), u"75.50"_s);
    EXPECT_EQ(text(u"txtRate(1)"_s), QString());
    EXPECT_EQ(text(u"txtArchM"_s), QString());
    EXPECT_EQ(text(u"txtSec(0)"_s), u"Q"_s);
    EXPECT_EQ(text(u"txtSec(1)"_s), u"7"_s);
    EXPECT_TRUE(isChecked(u"chkSec"_s));
}

TEST_P(Preferences, SpellingOptionsCountForTheRunOnceApplied) {
    const spelling::Options before = spelling::options();
    openPreferences();
    check(u"chkIgnoreAllCapsWords"_s, !before.ignoreAllCapsWords);
    press(u"cmdClose"_s);
    EXPECT_EQ(spelling::options().ignoreAllCapsWords, before.ignoreAllCapsWords);
    openPreferences();
    EXPECT_EQ(isChecked(u"chkIgnoreAllCapsWords"_s), before.ignoreAllCapsWords);
    check(u"chkIgnoreAllCapsWords"_s, !before.ignoreAllCapsWords);
    press(u"cmdOK"_s);
    EXPECT_EQ(spelling::options().ignoreAllCapsWords, !before.ignoreAllCapsWords);
    openPreferences();
    EXPECT_EQ(isChecked(u"chkIgnoreAllCapsWords"_s), !before.ignoreAllCapsWords);
    spelling::options() = before;
}

MIRSA_BOTH_ENGINES(Preferences);

} // namespace
