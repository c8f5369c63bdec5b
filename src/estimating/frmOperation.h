#pragma once

#include "estimating/OperationCatalogue.h"
#include "platform/controls/ListView.h"
#include "platform/screen/Form.h"

#include <functional>
#include <vector>

class QPushButton;
class QStackedWidget;
class QTabWidget;

namespace controls {
class Tree;
}

namespace estimating {

/// The catalogue of operations: in-house ones as a list or under their departments, overhead and
/// contractors as lists.
class frmOperation : public screen::Form {
  public:
    static constexpr char formName[] = "frmOperation";
    frmOperation();
    QSize sizeHint() const override;
    void Form_Load() override;

  private:
    QWidget* inhousePage();
    QWidget* listPage(const QString& type, const QString& prefix, controls::ListView*& list);
    controls::ListView* newList(QWidget* parent, const QString& name, const QString& spoken);

    void fillList(controls::ListView* list, const QString& type,
                  const OperationCatalogue& catalogue);
    void fillTree(const OperationCatalogue& catalogue);
    void fillInhouse();
    bool showsTree() const;
    /// Key of the selected node or row of the in-house tab: "D7", "O17D7", "O17"; empty for none.
    QString selectedInhouse() const;
    void tvwOper_NodeClick();

    void cmdView_Click();
    void cmdNewDept_Click();
    void cmdNewOper_Click();
    void cmdEdit_Click();
    void cmdDelete_Click();
    void newOperation(controls::ListView* list, const QString& type);
    void editOperation(controls::ListView* list, const QString& type);
    void removeOperation(controls::ListView* list, const QString& type);
    /// True if the operation may go and the user says so; it is gone then.
    bool deleteAfterQuestion(qint64 operNo, const QString& type);

    QTabWidget* SSTabOper;
    QStackedWidget* m_views;
    controls::ListView* lvwIN;
    controls::ListView* lvwOH;
    controls::ListView* lvwCO;
    controls::Tree* tvwOper;
    QPushButton* cmdView;
    QPushButton* cmdNewOper;
};

} // namespace estimating
