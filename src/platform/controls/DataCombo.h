#pragma once

#include "platform/controls/Field.h"
#include "platform/jet/Recordset.h"
#include "platform/values/Text.h"

#include <QComboBox>
#include <QHash>
#include <QStringList>

class QCompleter;
class QStringListModel;

namespace controls {

class EntryRule;

/// A combo whose list comes from a recordset: it shows one column and is bound to another. Typing
/// completes from the list without regard to case, unless it is one of numbers; text that isn't on
/// the list may stand (its bound text is then empty).
class DataCombo : public QComboBox, public Field {
  public:
    explicit DataCombo(QWidget* parent = nullptr);

    /// Fills the list, keeping text and choice where they still stand. `boundField` may equal
    /// `listField`.
    void setRows(jet::Recordset rows, const QString& listField, const QString& boundField);
    void setItems(const QStringList& items);

    QString text() const override;
    void setText(const QString& text) override;
    /// Empties the text; the list stays.
    void clear() override { setText(QString()); }
    /// The key of the chosen row, empty if the text is on no row.
    QString boundText() const;
    void setBoundText(const QString& key);
    void setLocked(bool locked) override;
    bool isLocked() const override { return m_locked; }
    QWidget* widget() override { return this; }

    /// Whether text that is not on the list may be typed (default true). If not, such text gives
    /// way to the last choice when the field is left; what the program sets stands.
    void setTypingAllowed(bool allowed);
    void setLimit(int characters);
    void setKeyFilter(values::KeyFilter filter);
    void setUpperCase(bool upper);

    Event<> chosen; ///< the user chose a row from the list or completed its text
    /// Enter on a text that is on no row. Who wires this has that Enter for himself; the text is
    /// selected, to be typed over.
    Event<> notOnList;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override; ///< scrolls the page, never the choice
    void contextMenuEvent(QContextMenuEvent* event) override;
    void showPopup() override;

  private:
    void setList(const QStringList& texts, const QStringList& keys);
    int rowOf(const QString& text) const;
    void takeTyped();
    EntryRule* m_rule;
    QStringListModel* m_list;
    QCompleter* m_completer;
    QStringList m_texts;
    QStringList m_keys;
    QHash<QString, int> m_rowOfText; ///< by folded text, the first of equal ones
    bool m_locked = false;
    bool m_typingAllowed = true;
    QString m_lastChosen;
};

/// A plain list to choose from, each item with a number behind it.
class ListCombo : public QComboBox, public Field {
  public:
    explicit ListCombo(QWidget* parent = nullptr);
    void addRow(const QString& text, qint64 itemData = 0);
    qint64 itemNumber() const; ///< of the chosen item; 0 if none
    bool chooseNumber(qint64 itemData);

    QString text() const override { return currentText(); }
    /// Chooses the row of that text; a text that has no row yet gets one, so that what a database
    /// holds isn't lost. Empty text chooses none, unless there is an empty row.
    void setText(const QString& text) override;
    /// Chooses none; the list stays.
    void clear() override { setCurrentIndex(-1); }
    void clearRows() { QComboBox::clear(); }
    void setLocked(bool locked) override;
    bool isLocked() const override { return !isEnabled(); }
    QWidget* widget() override { return this; }

    Event<> chosen;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace controls
