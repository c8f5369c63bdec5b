#pragma once

#include "platform/controls/Field.h"
#include "platform/values/Literals.h"
#include "platform/values/Text.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace controls {

class EntryRule;

/// One line of text. The key filter and the limit act on typed keys and on pasted and dropped text.
class TextField : public QLineEdit, public Field {
  public:
    explicit TextField(QWidget* parent = nullptr);

    QString text() const override { return QLineEdit::text(); }
    /// Takes any text, cut to the limit: the key filter is for what people enter.
    void setText(const QString& text) override;
    void clear() override { setText(QString()); }
    void setLocked(bool locked) override;
    bool isLocked() const override { return isReadOnly(); }
    QWidget* widget() override { return this; }

    void setKeyFilter(values::KeyFilter filter);
    /// Most characters; 0 is no limit.
    void setLimit(int characters);
    /// Reformats with values::numberField on leaving. Empty mask: no reformatting.
    void setNumberMask(const QString& mask, const QString& prefix = {});
    void setUpperCase(bool upper);
    double number() const; ///< Val of the text

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    /// Puts the text into its form when the field is left.
    virtual void reformat();

  private:
    EntryRule* m_rule;
    QString m_mask;
    QString m_prefix;
};

/// Money in a line: digits, one point, a sign; value() is a Currency, Null while the field is
/// empty. Shown through a mask, which may have a currency symbol in front.
class CurrencyField : public TextField {
  public:
    explicit CurrencyField(QWidget* parent = nullptr);
    jet::Value value() const override;
    void setValue(const jet::Value& value) override;
    values::Currency amount() const;
    void setAmount(values::Currency amount);
    void setMask(const QString& mask);

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void reformat() override;

  private:
    QString m_displayMask = u"#####0.0000"_s;
};

/// Several lines of text. Tab moves on instead of writing a tab.
class MemoField : public QPlainTextEdit, public Field {
  public:
    explicit MemoField(QWidget* parent = nullptr);

    /// Lines are parted by CR LF, as the database holds them.
    QString text() const override;
    void setText(const QString& text) override;
    void clear() override { setText(QString()); }
    void setLocked(bool locked) override;
    bool isLocked() const override { return isReadOnly(); }
    QWidget* widget() override { return this; }

    void setKeyFilter(values::KeyFilter filter);
    /// Most characters, a line's end counted as the two that the database holds; 0 is no limit.
    void setLimit(int characters);

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void insertFromMimeData(const QMimeData* source) override;
    void inputMethodEvent(QInputMethodEvent* event) override;

  private:
    void cutToLimit();
    values::KeyFilter m_filter;
    int m_limit = 0;
};

} // namespace controls
