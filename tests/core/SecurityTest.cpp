#include "core/Security.h"
#include "core/MainMenu.h"

#include <gtest/gtest.h>

namespace {

using core::ShellRights;

ShellRights::Input catalogue(const QString& user) {
    ShellRights::Input input;
    input.menuNames = core::menuNames();
    input.userName = user;
    input.catalogueCodes = core::menuNames();
    input.catalogueCodes.removeAll(QStringLiteral("mnuHelp32"));
    return input;
}

TEST(ShellRights, WhatTheCatalogueNamesIsOffForEverybodyWithoutAGrant) {
    ShellRights::Input input = catalogue(QStringLiteral("pat"));
    input.grantedCodes = {QStringLiteral("MNUFILEJOB")};
    const ShellRights rights(input);
    EXPECT_FALSE(rights.isEnabled(QStringLiteral("mnuFileEstimate")));
    EXPECT_TRUE(rights.isEnabled(QStringLiteral("mnuFileJob")));
    EXPECT_TRUE(rights.isEnabled(QStringLiteral("mnuHelp32"))) << "no row names it";

    const ShellRights admin(catalogue(QStringLiteral("aDMIN")));
    EXPECT_TRUE(admin.isEnabled(QStringLiteral("mnuFileEstimate")));
}

TEST(ShellRights, SecuritySetupIsTheAdministratorsAloneWhateverTheTablesSay) {
    ShellRights::Input input;
    input.menuNames = core::menuNames();
    const QString setup = QStringLiteral("mnuUtilitiesLoginSetup");
    EXPECT_FALSE(ShellRights(input).isEnabled(setup)) << "an empty catalogue";
    input = catalogue(QStringLiteral("pat"));
    input.grantedCodes = {setup};
    EXPECT_FALSE(ShellRights(input).isEnabled(setup));
    input.userName = QStringLiteral("admin");
    EXPECT_TRUE(ShellRights(input).isEnabled(setup));
}

TEST(ShellRights, FiveMenusVanishTheOthersAreGreyed) {
    const ShellRights rights(catalogue(QStringLiteral("pat")));
    for (const char* name : {"mnuAddOns", "mnuOptionsTables", "mnuOptionsUtilities", "mnuOptions",
                             "mnuOptionsReports"})
        EXPECT_FALSE(rights.isVisible(QString::fromLatin1(name))) << name;
    for (const char* name : {"mnuFile", "mnuTools", "mnuExternal", "mnuFileJob"})
        EXPECT_TRUE(rights.isVisible(QString::fromLatin1(name))) << name;
}

TEST(ShellRights, ASeparatorStandsWhileAButtonOfItsGroupDoes) {
    const auto visible = [](const QStringList& granted) {
        ShellRights::Input input = catalogue(QStringLiteral("pat"));
        input.grantedCodes = granted;
        const ShellRights rights(input);
        QList<int> numbers;
        for (int number = 0; number <= 23; ++number) {
            if (rights.isButtonVisible(number))
                numbers << number;
        }
        return numbers;
    };
    EXPECT_EQ(visible({}), QList<int>());
    EXPECT_EQ(visible({QStringLiteral("mnuFileTimeManagement")}), QList<int>({5, 6}));
    EXPECT_EQ(visible({QStringLiteral("mnuAP")}), QList<int>({8, 10}));
    EXPECT_EQ(visible({QStringLiteral("mnuFileCustomer")}), QList<int>({11, 14}));
    EXPECT_EQ(visible({QStringLiteral("mnuFileSpareParts")}), QList<int>({16, 17}));
    EXPECT_EQ(visible({QStringLiteral("mnuFileBenchline")}), QList<int>({20, 21}));
    EXPECT_EQ(visible({QStringLiteral("mnuHistory")}), QList<int>({22}));
    // The companions need the menu above them too.
    EXPECT_EQ(visible({QStringLiteral("mnuFileBarcode")}), QList<int>());
    EXPECT_EQ(visible({QStringLiteral("mnuFileBarcode"), QStringLiteral("mnuExternal")}),
              QList<int>({18, 21}));
}

TEST(ShellRights, AnEntryWithoutItsScreenIsOffForTheAdministratorToo) {
    ShellRights::Input input = catalogue(QStringLiteral("Admin"));
    input.unavailableMenus = {QStringLiteral("mnuInvoice")};
    const ShellRights rights(input);
    EXPECT_FALSE(rights.isEnabled(QStringLiteral("mnuInvoice")));
    EXPECT_FALSE(rights.isButtonVisible(4));
    EXPECT_TRUE(rights.isButtonVisible(3));
}

TEST(MainMenu, EveryButtonPressesAnEntryAndNoNameStandsTwice) {
    const QStringList names = core::menuNames();
    EXPECT_EQ(QSet<QString>(names.begin(), names.end()).size(), names.size());
    for (int number = 1; number <= core::toolButtons; ++number) {
        if (core::isToolSeparator(number))
            EXPECT_TRUE(core::toolButtonMenu(number).isEmpty()) << number;
        else
            EXPECT_NE(core::menuEntry(core::toolButtonMenu(number)), nullptr) << number;
    }
}

} // namespace
