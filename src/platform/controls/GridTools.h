#pragma once

#include <QByteArray>
#include <QPoint>
#include <QString>

#include <functional>

class QEvent;
class QKeyEvent;
class QTableView;

namespace controls {

class DropMenu;
class FindBar;
class GridModel;

/// Where a list's rows go as a file: asks for a name, of which `suggested` is the begin, and writes
/// what `content` gives. The screens' ground sets it.
using FileSaver =
    std::function<void(const QString& suggested, const std::function<QByteArray()>& content)>;
void setFileSaver(FileSaver saver);
const FileSaver& fileSaver();

/// What every grid and list can do with its rows beside showing them: copy them with their headers
/// (Ctrl+C), search in them (Ctrl+F, F3 for the next place), write them as CSV, and offer all that
/// in its context menu.
class GridTools {
  public:
    GridTools(QTableView& view, GridModel& model);

    /// Whether a key is one of these; the view then takes it before the shell's menus do.
    static bool isOwn(const QKeyEvent& key);
    /// Does what the key says; false if it isn't one of these.
    bool press(const QKeyEvent& key);
    /// Adds the entries that every list has, and opens the menu at the place in the view.
    void openMenu(DropMenu& menu, const QPoint& place);

    /// The selected rows or cells as lines with tabs, their headers in front; one cell alone is
    /// copied as it is.
    void copy() const;
    /// All rows as UTF-8 with its mark and lines that end in CR LF, the columns as they are shown:
    /// dates ISO, numbers plain.
    QByteArray csv() const;

  private:
    void find();
    void saveCsv() const;

    QTableView& m_view;
    GridModel& m_model;
    FindBar* m_bar = nullptr;
};

} // namespace controls
