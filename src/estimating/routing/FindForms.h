#pragma once

#include "platform/controls/Grid.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"

#include <QString>
#include <QStringList>

#include <vector>

class QLabel;

namespace estimating {

/// What "frmEstFind" and "frmJobFind" offer.
class FindDialog {
  public:
    virtual ~FindDialog() = default;
    /// Asks for the number of a document; 0 if the user cancelled.
    virtual qint64 askNumber() = 0;
    /// Asks for a part number, whole or a piece of it; empty if the user cancelled.
    virtual QString askPart() = 0;
};

/// What "frmEstFound" and "frmJobFound" offer.
class FoundDialog {
  public:
    virtual ~FoundDialog() = default;
    /// Lists the documents whose part number holds `part`, narrowed by further criteria of the
    /// dialect (" AND Shipped = False"); the number of the one chosen, 0 for none.
    virtual qint64 pick(const QString& part, const QString& further = {}) = 0;
};

/// What differs between the two modules' find dialogs.
struct FindKind {
    QString find; ///< name of the find dialog
    QString numberCaption;
    QString numberPrompt;
    QString partPrompt;
    values::KeyFilter partKeys;
    QString found; ///< name of the found dialog
    QString foundCaption;
    QString table;
    QString key;
    std::vector<std::pair<QString, QString>> columns; ///< column and heading, key first
};

class FindForm : public screen::Form, public FindDialog {
  public:
    explicit FindForm(const FindKind& kind);
    qint64 askNumber() override;
    QString askPart() override;

  private:
    QString ask(const QString& caption, const QString& prompt, int limit,
                const values::KeyFilter& filter);
    const FindKind& m_kind;
    QLabel* lblPrompt;
    controls::TextField* txtNo;
    bool m_ok = false;
};

class FoundForm : public screen::Form, public FoundDialog {
  public:
    explicit FoundForm(const FindKind& kind);
    qint64 pick(const QString& part, const QString& further) override;

  private:
    void cmdSelect_Click();
    const FindKind& m_kind;
    controls::ListView* m_list;
    qint64 m_chosen = 0;
};

} // namespace estimating
