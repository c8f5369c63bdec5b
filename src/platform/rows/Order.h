#pragma once

#include "platform/rows/Store.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace rows {

/// What somebody typed above a column to see fewer rows. In any column: all of the words, somewhere
/// in what is shown, without regard to case or marks; "=words" for exactly that, "=" for nothing.
/// In columns of numbers and dates also "> 5", "<= 3/2/2026", "5..10"; a date may be "today", or
/// "+7" and "-30" for so many days from today.
class Condition {
  public:
    Condition() = default;
    Condition(const QString& typed, Kind kind);

    bool isAny() const { return m_how == How::Any; }
    bool holds(const Store& store, int column, int row) const;
    /// Whether all rows that meet this one meet the other too.
    bool narrows(const Condition& other) const;

  private:
    enum class How { Any, Words, Exactly, Between };
    How m_how = How::Any;
    std::vector<QByteArray> m_words;
    double m_from = 0, m_to = 0; ///< ends included unless open
    bool m_fromOpen = false, m_toOpen = false;
};

/// Which rows of a store are shown, and in which order. A letter more in a filter looks only at the
/// rows that are left.
class Order {
  public:
    Order() = default;

    void setStore(std::shared_ptr<const Store> store);
    const std::shared_ptr<const Store>& store() const { return m_store; }

    void setFilter(int column, const QString& typed);
    QString filter(int column) const;
    bool isFiltered() const;
    /// By a column; -1: as the store has them.
    void sortBy(int column, bool down);
    int sortColumn() const { return m_sortColumn; }
    bool isDown() const { return m_down; }

    int count() const { return static_cast<int>(m_shown.size()); }
    /// The store's row at a place.
    int row(int place) const { return m_shown[static_cast<std::size_t>(place)]; }
    /// The place of a store's row; -1 if it isn't shown.
    int placeOf(int row) const;
    /// The sum of a column over the places from `first` to `last`.
    double sum(int column, int first, int last) const;

  private:
    struct Filter {
        QString typed;
        Condition condition;
    };
    void readFilters();
    void arrange();
    void filterAll();
    bool passes(int row) const;

    std::shared_ptr<const Store> m_store;
    std::vector<Filter> m_filters;
    std::vector<int> m_all;   ///< in the order of the sort
    std::vector<int> m_shown; ///< those that pass
    int m_sortColumn = -1;
    bool m_down = false;
};

} // namespace rows
