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
    QStringList m_keys;
    std::vector<std::pair<qint64, QString>> m_places; ///< key in the module, and below it
};

} // namespace reporting
