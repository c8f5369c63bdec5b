#pragma once

#include "platform/controls/Grid.h"
#include "platform/jet/Recordset.h"
#include "platform/screen/Form.h"
#include "reporting/Query.h"

class QGroupBox;
class QLabel;

namespace controls {
class DataCombo;
}

namespace reporting {

/// The rows that a query found: a double click goes to the record in its module, and a report of
/// the catalogue prints all of them or those that are selected.
class ResultsForm : public screen::Form {
  public:
    explicit ResultsForm(const QueryDescriptor& query);

    void Form_Load() override;
    void cmdPrintScr_Click();
    void cmdPrintSel_Click();
    void cmdRedo_Click();
    void cmdCancel_Click();
    /// Goes to the record of a row; nothing where there is none.
    void goToRow(int row);

  private:
    void openReports();
    /// False if there is none; nothing is shown then.
    bool showRows();
    /// A field of a row of the grid, by the row's key.
    jet::Value valueAt(qint64 row, int field);
    QString shownColumns(const QString& statement) const;
    QString cellText(const ResultColumn& column, const jet::Value& value) const;
    /// File of the chosen report; empty after a message.
    QString chosenFile();

    const QueryDescriptor& m_query;
    controls::Grid* m_grid;
    controls::DataCombo* dbcReport;
    QLabel* lbldesc;
    QGroupBox* fraMain;
    QPushButton* cmdPrintScr;
    jet::Recordset m_reports;
    QString m_formula; ///< of the query, as it was when the rows were read
    jet::Recordset m_found;
    std::vector<int> m_order; ///< of each row of the grid as filled, its place in m_found
    int m_key = 0, m_module = 0,
        m_below = -1; ///< fields of m_found; below: the key within a record
};

} // namespace reporting
