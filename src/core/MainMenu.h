#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace core {

/// An entry of the shell's menu. Its name is also its security code, so it is part of the data: an
/// entry under another name would lose its right without a word.
struct MenuEntry {
    enum class Does {
        Menu,     ///< opens its children
        Document, ///< opens `screen` as a child of the shell
        Dialog,   ///< shows `screen` as a dialog
        Handler,  ///< what the shell itself does under that name
    };
    QString name;
    QString caption;
    Does does = Does::Menu;
    QString screen = {};
    std::vector<MenuEntry> children = {};
    QString shortcut = {}; ///< "Ctrl+Shift+J"; none for most
    QString right = {};    ///< the entry whose right this one shares; its own for most
};

/// The menu bar, in order.
const std::vector<MenuEntry>& mainMenu();
/// The menus that other screens pop up: InventoryNewPopup and mnuTravelPopup.
const std::vector<MenuEntry>& popupMenus();

/// Names of all entries of both, parents before their children.
QStringList menuNames();
/// Name of an entry and of all that are below it; none if there is no such entry.
QStringList menuNamesFrom(const QString& name);
/// Entry by name without regard to case; nullptr if there is none.
const MenuEntry* menuEntry(const QString& name);

} // namespace core
