#include "core/Screens.h"
#include "support/Gallery.h"
#include "support/ShopFixture.h"

#include "platform/spelling/Options.h"

namespace {

class Preferences : public testsupport::ShopTest {
  protected:
    void SetUp() override {
        ShopTest::SetUp();
        if (!IsSkipped())
            core::registerScreens();
    }
    void openPreferences() { ASSERT_TRUE(open(QStringLiteral("frmSystemSettings"))); }
    QString stored(const char* columns) {
        return rows(QStringLiteral("SELECT ") + QString::fromLatin1(columns) +
                    QStringLiteral(" FROM SystemSettings"))
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
        type(QString::fromLatin1(pair.field), QStringLiteral("X'%1").arg(n++));
    press(QStringLiteral("cmdOK"));
    EXPECT_FALSE(screen::Forms::isLoaded(QStringLiteral("frmSystemSettings")));
    openPreferences();
    n = 10;
    for (const Pair& pair : pairs) {
        const QString value = QStringLiteral("X'%1").arg(n++);
        EXPECT_EQ(stored(pair.column), value) << pair.column;
        EXPECT_EQ(text(QString::fromLatin1(pair.field)), value) << pair.field;
    }
    EXPECT_EQ(rows(QStringLiteral("SELECT CompanyName FROM SystemSettings")).size(), 1);
    EXPECT_EQ(testsupport::gallery(form()), QStringList());
}

TEST_P(Preferences, AnEmptyRateIsNullAndSwitchesAndCharactersAreKept) {
    openPreferences();
    set("txtRate(0)", "75.5");
    set("txtRate(1)", "");
    set("txtArchM", "");
    check(QStringLiteral("chkSec"));
    check(QStringLiteral("chkPartsQty"));
    set("txtSec(0)", "Q");
    set("txtSec(1)", "7");
    press(QStringLiteral("cmdUpdate"));
    EXPECT_TRUE(screen::Forms::isLoaded(QStringLiteral("frmSystemSettings"))) << "Apply stays";
    for (const char* button : {"cmdOK", "cmdUpdate", "cmdClose"})
        EXPECT_TRUE(isEnabled(QString::fromLatin1(button))) << button;
    const jet::Recordset row = database().openRecordset(
        QStringLiteral("SELECT * FROM SystemSettings"), jet::RecordsetType::Snapshot);
    EXPECT_EQ(row[u"EstOneRate"].toCurrency(), values::Currency::fromText(QStringLiteral("75.5")));
    EXPECT_TRUE(row[u"jobonerate"].isNull());
    EXPECT_TRUE(row[u"ArchiveMonths"].isNull());
    EXPECT_TRUE(row[u"Securityon"].toBool());
    EXPECT_TRUE(row[u"partsqtyon"].toBool());
    EXPECT_EQ(row.text(u"SecurityCode"), QStringLiteral("Q7"));

    set("txtMname", "Nobody's");
    set("txtRate(0)", "1");
    press(QStringLiteral("cmdClose"));
    EXPECT_NE(stored("CompanyName"), QStringLiteral("Nobody's")) << "Cancel saves nothing";
    openPreferences();
    EXPECT_EQ(text(QStringLiteral("txtRate(0)")), QStringLiteral("75.50"));
    EXPECT_EQ(text(QStringLiteral("txtRate(1)")), QString());
    EXPECT_EQ(text(QStringLiteral("txtArchM")), QString());
    EXPECT_EQ(text(QStringLiteral("txtSec(0)")), QStringLiteral("Q"));
    EXPECT_EQ(text(QStringLiteral("txtSec(1)")), QStringLiteral("7"));
    EXPECT_TRUE(isChecked(QStringLiteral("chkSec")));
}

TEST_P(Preferences, SpellingOptionsCountForTheRunOnceApplied) {
    const spelling::Options before = spelling::options();
    openPreferences();
    check(QStringLiteral("chkIgnoreAllCapsWords"), !before.ignoreAllCapsWords);
    press(QStringLiteral("cmdClose"));
    EXPECT_EQ(spelling::options().ignoreAllCapsWords, before.ignoreAllCapsWords);
    openPreferences();
    EXPECT_EQ(isChecked(QStringLiteral("chkIgnoreAllCapsWords")), before.ignoreAllCapsWords);
    check(QStringLiteral("chkIgnoreAllCapsWords"), !before.ignoreAllCapsWords);
    press(QStringLiteral("cmdOK"));
    EXPECT_EQ(spelling::options().ignoreAllCapsWords, !before.ignoreAllCapsWords);
    openPreferences();
    EXPECT_EQ(isChecked(QStringLiteral("chkIgnoreAllCapsWords")), !before.ignoreAllCapsWords);
    spelling::options() = before;
}

MIRSA_BOTH_ENGINES(Preferences);

} // namespace
