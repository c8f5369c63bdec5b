#pragma once

#include "platform/screen/Form.h"
#include "reporting/Query.h"

#include <vector>

class QCheckBox;

namespace controls {
class Field;
}

namespace reporting {

/// What the results ask of the query that they belong to.
class QuerySource {
  public:
    virtual ~QuerySource() = default;
    virtual QString findsql() const = 0; ///< the whole statement
    virtual QString formula() const = 0; ///< the same as a selection formula
};

/// The criteria of a query. A criterion counts while its use box is ticked; entering a value ticks
/// it. The range box shows a second value. Every member of the family is a descriptor.
class QueryForm : public screen::Form, public QuerySource {
  public:
    explicit QueryForm(const QueryDescriptor& query);

    /// Back from the results, to what was asked.
    void Form_Activate() override;

    QString findsql() const override { return m_texts.statement; }
    QString formula() const override { return m_texts.formula; }

    void cmdGenerate_Click();

  private:
    struct Row {
        QCheckBox* use = nullptr;
        QCheckBox* range = nullptr; ///< nullptr: one value only
        controls::Field* first = nullptr;
        controls::Field* second = nullptr;
        bool listed = false; ///< the rows to choose from have been read
    };
    void makeRow(std::size_t index, class QGridLayout* grid);
    controls::Field* makeField(const Criterion& criterion, const QString& name,
                               const QString& spoken);
    void useBoxChanged(std::size_t index);
    void rangeBoxChanged(std::size_t index);
    void readList(std::size_t index);
    Given given(std::size_t index) const;

    const QueryDescriptor& m_query;
    std::vector<Row> m_rows;
    QueryTexts m_texts;
};

} // namespace reporting
