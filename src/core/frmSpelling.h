#pragma once

#include "platform/controls/TextField.h"
#include "platform/screen/Form.h"
#include "platform/spelling/Speller.h"

#include <QPointer>

class QLabel;
class QLineEdit;
class QListWidget;
class QPlainTextEdit;

namespace core {

/// Goes through the wrong words of one control's text and changes them there.
class frmSpelling : public screen::Form {
  public:
    static constexpr const char* formName = "frmSpelling";
    /// The control is a line or a memo.
    frmSpelling(QWidget* control, spelling::Speller& speller);

    void Form_Load() override;

    void cmdChange_Click();
    void cmdChangeAll_Click();
    void cmdIgnore_Click();
    void cmdIgnoreAll_Click();
    void cmdAdd_Click();

  private:
    QString controlText() const;
    void replace(const spelling::Word& word, const QString& with);
    bool showNext();
    void next();

    QPointer<QLineEdit> m_line;
    QPointer<QPlainTextEdit> m_memo;
    spelling::Speller& m_speller;
    spelling::Word m_word; ///< the wrong word on show
    QLabel* lblWord;
    controls::TextField* txtChange;
    QListWidget* lstSuggestions;
};

} // namespace core
