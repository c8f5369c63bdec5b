#include "core/Security.h"
#include "core/MainMenu.h"
#include "platform/values/Literals.h"

#include <gtest/gtest.h>

namespace {

using core::ShellRights;

ShellRights::Input catalogue(const QString& user) {
    ShellRights::Input input;
    input.menuNames = core::menuNames();
    input.userName = user;
    input.catalogueCodes = core::menuNames();
    input.catalogueCodes.removeAll(u"mnuHelp32"_s);
    return input;
}

TEST(ShellRights, WhatTheCatalogueNamesIsOffForEverybodyWithoutAGrant) {
    ShellRights::Input input = catalogue(u"pat"_s);
    input.grantedCodes = {u"MNUFILEJOB"_s};
    const ShellRights rights(input);
    EXPECT_FALSE(rights.isEnabled(u"mnuFileEstimate"_s));
    EXPECT_TRUE(rights.isEnabled(u"mnuFileJob"_s));
    EXPECT_TRUE(rights.isEnabled(u"mnuHelp32"_s)) << "no row names it";

    const ShellRights admin(catalogue(u"aDMIN"_s));
    EXPECT_TRUE(admin.isEnabled(u"mnuFileEstimate"_s));
}

TEST(ShellRights, SecuritySetupIsTheAdministratorsAloneWhateverTheTablesSay) {
    ShellRights::Input input;
    input.menuNames = core::menuNames();
    const QString setup = u"mnuUtilitiesLoginSetup"_s;
    EXPECT_FALSE(ShellRights(input).isEnabled(setup)) << "an empty catalogue";
    input = catalogue(u"pat"_s);
    input.grantedCodes = {setup};
    EXPECT_FALSE(ShellRights(input).isEnabled(setup));
    input.userName = u"admin"_s;
    EXPECT_TRUE(ShellRights(input).isEnabled(setup));
}

TEST(ShellRights, FiveMenusVanishTheOthersAreGreyed) {
    const ShellRights rights(catalogue(u"pat"_s));
    for (const char* name : {"mnuAddOns", "mnuOptionsTables", "mnuOptionsUtilities", "mnuOptions",
                             "mnuOptionsReports"})
        EXPECT_FALSE(rights.isVisible(QString::fromLatin1(name))) << name;
    for (const char* name : {"mnuFile", "mnuTools", "mnuExternal", "mnuFileJob"})
        EXPECT_TRUE(rights.isVisible(QString::fromLatin1(name))) << name;
}

TEST(ShellRights, ASeparatorStandsWhileAButtonOfItsGroupDoes) {
    const auto visible = [](const QStringList& granted) {
        ShellRights::Input input = catalogue(u"pat"_s);
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
    EXPECT_EQ(visible({u"mnuFileTimeManagement"_s}), QList<int>({5, 6}));
    EXPECT_EQ(visible({u"mnuAP"_s}), QList<int>({8, 10}));
    EXPECT_EQ(visible({u"mnuFileCustomer"_s}), QList<int>({11, 14}));
    EXPECT_EQ(visible({u"mnuFileSpareParts"_s}), QList<int>({16, 17}));
    EXPECT_EQ(visible({u"mnuFileBenchline"_s}), QList<int>({20, 21}));
    EXPECT_EQ(visible({u"mnuHistory"_s}), QList<int>({22}));
    // An entry may share the right of another.
    const auto exceptions = [](const QStringList& granted) {
        return core::ShellRights(
                   {.menuNames = {u"mnuTimeExceptions"_s},
                    .userName = u"floor"_s,
                    .catalogueCodes = {u"mnuFileTimeManagement"_s},
                    .grantedCodes = granted,
                    .unavailableMenus = {},
                    .sharedRights = {{u"mnuTimeExceptions"_s, u"mnuFileTimeManagement"_s}}})
            .isEnabled(u"mnuTimeExceptions"_s);
    };
    EXPECT_FALSE(exceptions({}));
    EXPECT_TRUE(exceptions({u"mnuFileTimeManagement"_s}));
    // The companions need the menu above them too.
    EXPECT_EQ(visible({u"mnuFileBarcode"_s}), QList<int>());
    EXPECT_EQ(visible({u"mnuFileBarcode"_s, u"mnuExternal"_s}), QList<int>({18, 21}));
}

TEST(ShellRights, AnEntryWithoutItsScreenIsOffForTheAdministratorToo) {
    ShellRights::Input input = catalogue(u"Admin"_s);
    input.unavailableMenus = {u"mnuInvoice"_s};
    const ShellRights rights(input);
    EXPECT_FALSE(rights.isEnabled(u"mnuInvoice"_s));
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
