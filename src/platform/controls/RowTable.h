#pragma once

#include "platform/controls/Event.h"
#include "platform/controls/RowModel.h"

#include <QTableView>
#include <QWidget>

#include <memory>

class QLineEdit;

namespace controls {

class DropMenu;

/// A list of any length with a field above each column that leaves those rows which hold what is
/// typed there, while it is typed: see rows::Condition. A letter typed in the rows goes to the
/// field of the column where the user is. Columns are shown, hidden, moved and made wider; a click
/// on a heading sorts. Copying and CSV work as in the other lists, Ctrl+F goes to the field.
class RowTable : public QWidget {
  public:
    RowTable(std::vector<RowColumn> columns, const QString& name, const QString& spoken,
             QWidget* parent);
    ~RowTable() override;

    const RowModel& model() const { return *m_model; }
    void setCurrencySymbol(const QString& symbol);
    /// Shows other rows; those that stay selected, current and in sight are told by their keys.
    void setStore(std::shared_ptr<const rows::Store> store);

    void setFilter(int column, const QString& typed);
    void clearFilters();
    void sortBy(int column, bool down);
    bool isColumnShown(int column) const;
    void showColumn(int column, bool shown);
    /// Everything about the columns, the sort and the filters, as text; what a text given back
    /// doesn't say, or says of unknown columns, stays as it is.
    QString arrangement(bool withFilters) const;
    void arrange(const QString& arrangement);

    /// Key of the current row, or of the first one where none is; 0 where there is no row.
    qint64 currentKey() const;
    /// The places that are selected, as ranges from first to last.
    std::vector<std::pair<int, int>> selectedPlaces() const;
    QByteArray csv() const;
    /// The columns that are seen, from left to right.
    std::vector<int> shownColumns() const;
    QTableView& view() const { return *m_view; }

    Event<> opened;      ///< Enter or a double click on a row
    Event<> rowsChanged; ///< other rows are shown
    Event<> selectionChanged;
    Event<DropMenu&> menuAsked;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    bool fieldKey(int column, QEvent* event);
    bool rowsKey(QEvent* event);
    void applyWidths();
    void placeFields();
    void putBack(const std::vector<qint64>& selected, qint64 current);
    template <class Change>
    void keeping(Change change);
    void openMenu(const QPoint& place);
    void copy() const;
    void saveCsv() const;
    QLineEdit* field(int column) const { return m_fields[static_cast<std::size_t>(column)]; }

    std::unique_ptr<RowModel> m_model;
    QTableView* m_view;
    QWidget* m_strip; ///< of the fields
    std::vector<QLineEdit*> m_fields;
    DropMenu* m_menu;
    bool m_quiet = false; ///< the program selects
};

} // namespace controls
