#pragma once

#include "core/records/EntryPart.h"
#include "platform/controls/LineModel.h"

#include <QObject>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

class QKeyEvent;
class QWidget;

namespace core {

/// What was done in an entry, step by step, until it ends: changes of fields and boxes, and what
/// was done to lines. Ctrl+Z takes the last step back and Ctrl+Y does it again, wherever the focus
/// is; while a field is being typed in, they do what they do in any field. A step is what came of
/// one thing that the user did: a field with all that a lookup filled in for it, a line with the
/// sums that it changed.
class EntryUndo : public QObject {
  public:
    /// `form` is the screen of the entry; `guarded` runs its handlers.
    EntryUndo(QWidget& form, EntrySubject& subject,
              std::function<void(const std::function<void()>&)> guarded);

    /// Steps of these lines belong to the history; `word` is what it calls one of them.
    void follow(controls::LineList& lines, const QString& word);
    /// An entry begins or has ended: there is nothing to take back.
    void restart();
    /// Takes a step back, or does it again. False where there is none.
    bool undo();
    bool redo();
    /// Takes what is being typed as a step: before they are named.
    void settle() { look(true); }
    /// What the next of them would do: "change of Quantity"; empty where there is none.
    QString undoName() const;
    QString redoName() const;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    struct Change {
        QString key;
        jet::Value before, after;
        QWidget* widget;
        bool reckoned;
    };
    struct Step {
        QString name;
        controls::LineList* lines = nullptr;
        std::vector<Change> changes;
        bool linesBack = false; ///< its lines are taken back
    };
    void look(bool withFocus);
    void lineStep(controls::LineList& lines, const QString& name);
    bool step(std::vector<Step>& from, std::vector<Step>& to, bool forward);
    void apply(Step& step, bool forward);
    void push(Step step);
    bool isTyping(const QWidget* focus, bool forward) const;
    bool handle(QWidget* focus, QEvent* event);
    QString wordsOf(const QWidget* widget) const;
    void goTo(const Step& step) const;

    QWidget& m_form;
    EntrySubject& m_subject;
    std::function<void(const std::function<void()>&)> m_guarded;
    std::vector<EntryPart> m_parts; ///< as they stood at the last look
    bool m_begun = false;
    bool m_open = false; ///< the last step still takes in what comes of it
    bool m_applying = false;
    std::vector<Step> m_done;
    std::vector<Step> m_undone;
    QTimer m_later;
};

} // namespace core
