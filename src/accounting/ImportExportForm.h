#pragma once

#include "accounting/ImportMembers.h"
#include "accounting/QuickBooksForm.h"
#include "platform/controls/Grid.h"

#include <vector>

class QTabWidget;

namespace accounting {

/// Keeps a list of the program and the one of QuickBooks in step: a page to export, one to import,
/// and one for the marks that tell what QuickBooks knows.
class ImportExportForm : public QuickBooksForm {
  public:
    explicit ImportExportForm(const ImportMember& member);
    void Form_Load() override;

    void cmdExport_Click();
    void Command3_Click(); ///< import
    void Command8_Click(); ///< writes the marks
    void Command7_Click(); ///< the export list again
    void Command6_Click(); ///< asks QuickBooks again
    void Command5_Click(); ///< the marks again

  private:
    void buildExport(QWidget* page);
    void buildImport(QWidget* page);
    void buildManage(QWidget* page);
    void addSelectButtons(QWidget* page, QBoxLayout* inside, controls::Grid* grid,
                          const QString& all, const QString& none);
    bool queryList();
    void showOffered();
    struct Outgoing {
        qint64 number = 0;
        QString name, terms, text;
    };
    /// The messages of the marked records; empty after a complaint.
    std::vector<Outgoing> outgoing(const std::vector<qint64>& numbers);
    /// False stops the run. `added` tells whether QuickBooks took the record.
    bool exportOne(quickbooks::Waiting& waiting, const Outgoing& record, bool& added);
    bool findTerms(const QStringList& names, std::vector<QString>& days);
    std::vector<int> markedRows(const controls::Grid* grid) const;

    const ImportMember& m_member;
    QTabWidget* SSTab1;
    controls::Grid* vaSpread1 = nullptr;
    controls::Grid* vaSpread2 = nullptr;
    controls::Grid* vaSpread3 = nullptr;
    std::vector<QStringList> m_offered;
    std::vector<bool> m_shownMarks;
};

} // namespace accounting
