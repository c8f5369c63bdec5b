#pragma once

#include "estimating/Routing.h"
#include "platform/jet/Database.h"
#include "platform/values/Literals.h"
#include "sample/Sample.h"

#include <QDateTime>
#include <QStringList>

#include <vector>

namespace sample {

/// The same numbers on every machine and run.
class Random {
  public:
    explicit Random(std::uint64_t seed) : m_state(seed) {}
    /// 0 to below - 1.
    int below(int limit);
    int between(int low, int high) { return low + below(high - low + 1); }
    bool chance(int percent) { return below(100) < percent; }
    template <class T>
    const T& of(const std::vector<T>& items) {
        return items[static_cast<std::size_t>(below(static_cast<int>(items.size())))];
    }
    const QString& of(const QStringList& items) {
        return items[below(static_cast<int>(items.size()))];
    }

  private:
    std::uint64_t m_state;
};

/// Builds the INSERT of one row and runs it. Text is quoted, Null stays out.
class Row {
  public:
    explicit Row(const char16_t* table) : m_table(QString::fromUtf16(table)) {}
    Row& set(const char16_t* column, const QString& text);
    Row& set(const char16_t* column, const char16_t* text) {
        return set(column, QString::fromUtf16(text));
    }
    Row& set(const char16_t* column, qint64 number);
    Row& set(const char16_t* column, int number) { return set(column, qint64{number}); }
    Row& set(const char16_t* column, double number);
    Row& set(const char16_t* column, values::Currency amount);
    Row& set(const char16_t* column, bool yes);
    Row& set(const char16_t* column, const QDate& date);
    Row& set(const char16_t* column, const QDateTime& moment);
    /// Null in place of the column's default.
    Row& setNull(const char16_t* column) { return add(column, u"Null"_s); }
    /// Returns the counter that the row was given.
    qint64 insert(jet::Database& database) const;

  private:
    Row& add(const char16_t* column, const QString& literal);
    QString m_table, m_columns, m_values;
};

struct Operation {
    qint64 operNo = 0;
    QString description;
    QChar type;
    values::Currency rate;
};

struct Part {
    QString number;
    QString description;
};

/// A job as far as later steps need it.
struct JobMade {
    qint64 jobNo = 0;
    qint64 custID = 0;
    QString poNo;
    Part part;
    QDate in, due;
    int quantity = 0;
    bool shipped = false;
};

/// What has been made so far.
struct Shop {
    jet::Database& database;
    Options options;
    QDate today, start;
    Random random;

    std::vector<qint64> customers;
    std::vector<qint64> vendors, contractors;
    std::vector<qint64> employees;
    std::vector<Operation> inhouse, outside, overhead;
    std::vector<estimating::MiscRow> fixedCosts; ///< catalogue items, quantity 0
    std::vector<JobMade> jobs;
    std::vector<qint64> estimates;
    std::vector<qint64> items;
};

void makeCatalogue(Shop& shop);
void makeMasters(Shop& shop);
/// Attendance, estimates, jobs and the hours booked on them.
void makeWork(Shop& shop);
void makePurchasing(Shop& shop);
void makeInventory(Shop& shop);
/// What was sent to QuickBooks: invoices and payables up to some weeks ago.
void makeSent(Shop& shop);
void makeUsers(Shop& shop);

Part madeUpPart(Random& random);

} // namespace sample
