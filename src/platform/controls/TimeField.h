#pragma once

#include "platform/controls/Field.h"

#include <QLineEdit>
#include <QTime>

#include <optional>

namespace controls {

/// A time of day that may be empty, shown as "hh:nn AM" (with seconds where it has some). Typed as
/// 7, 730, 7:30, 19:30, with a, p, AM or PM behind it; without one the hours are those of 24. Text
/// that is no time stays and is marked; the field then counts as empty. Escape brings back the time
/// that stood on entry. Every edit by the user tells a change, also one that means the same time.
class TimeField : public QLineEdit, public Field {
  public:
    explicit TimeField(QWidget* parent = nullptr);

    std::optional<QTime> time() const { return m_time; }
    void setTime(const std::optional<QTime>& time);
    /// False while the field holds text that is no time.
    bool isValid() const;

    /// The time as shown; empty for none.
    QString text() const override;
    void setText(const QString& text) override;
    void clear() override { setTime(std::nullopt); }
    jet::Value value() const override;
    /// Of a moment the time of day.
    void setValue(const jet::Value& value) override;
    void setLocked(bool locked) override;
    bool isLocked() const override { return isReadOnly(); }
    QWidget* widget() override { return this; }

    /// The time that a typed text means; nothing for what is no time.
    static std::optional<QTime> timeFromText(const QString& text);

  protected:
    void changeEvent(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void takeText();
    void showHint();
    void tellChange();
    void mark();
    std::optional<QTime> m_time;
    std::optional<QTime> m_atEntry;
    QString m_told;
    bool m_editing = false;
};

} // namespace controls
