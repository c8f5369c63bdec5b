#pragma once

#include "platform/controls/Field.h"

#include <QDate>
#include <QLineEdit>

#include <optional>

namespace controls {

/// A date that may be empty. Typed as m/d/yyyy, m/d/yy or yyyymmdd, or picked from a calendar
/// (button, F4 or Alt+Down); T types today, + and - move by a day. Text that is no date stays and
/// is marked; the field then counts as empty. Escape brings back the date that stood on entry.
class DateField : public QLineEdit, public Field {
  public:
    enum class Shown { Short, Long };

    explicit DateField(QWidget* parent = nullptr);

    std::optional<QDate> date() const;
    void setDate(const std::optional<QDate>& date);
    void setShown(Shown shown); ///< how it shows while it doesn't have the focus
    /// Neither the calendar nor + goes past this date; a later one that is typed is marked, and
    /// stays for the screen to speak about.
    void setLatest(const QDate& latest) { m_latest = latest; }
    /// False while the field holds text that is no date.
    bool isValid() const;

    /// Short date text; empty for none. setText also takes "yyyymmdd".
    QString text() const override;
    void setText(const QString& text) override;
    void clear() override { setDate(std::nullopt); }
    jet::Value value() const override;
    void setValue(const jet::Value& value) override;
    void setLocked(bool locked) override;
    bool isLocked() const override { return isReadOnly(); }
    QWidget* widget() override { return this; }

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void showDate();
    void takeText();
    void tellChange();
    void mark();
    void openCalendar();
    std::optional<QDate> m_date;
    std::optional<QDate> m_atEntry;
    std::optional<QDate> m_latest;
    QString m_told;
    bool m_editing = false;
    Shown m_shown = Shown::Short;
};

} // namespace controls
