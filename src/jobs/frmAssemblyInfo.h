#pragma once

#include "estimating/AssemblyTree.h"
#include "jobs/AssemblyRules.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Form.h"

class QLabel;

namespace controls {
class Tree;
}

namespace jobs {

/// The assemblies among a customer's estimates or jobs, as a tree in which they are hung under each
/// other.
class frmAssemblyInfo : public screen::Form, public estimating::AssemblyTree {
  public:
    static constexpr char formName[] = "frmAssemblyInfo";
    frmAssemblyInfo();
    void showTree(qint64 custId, const QString& order, qint64 number, const QString& mode) override;

  private:
    void cboCustomer_Click();
    void cboPoOrRfq_Click();
    void fillOrders();
    void fillTree();
    void showNodes();
    void moveNode(qint64 number, qint64 under);
    QString selection() const;
    void hang(qint64 number, qint64 under);
    void goTo(qint64 number);

    controls::ListCombo* cboCustomer;
    controls::ListCombo* cboPoOrRfq;
    QLabel* lblPoOrRfq;
    QLabel* lblDescription;
    controls::Tree* tvwAssembly;
    QPushButton* cmdCut;
    QPushButton* cmdPaste;
    const AssemblyKind* m_kind;
    Assembly m_assembly;
    bool m_changed = false;
};

} // namespace jobs
