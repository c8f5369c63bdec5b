#pragma once

#include "platform/controls/Event.h"
#include "platform/screen/Complaint.h"
#include "platform/values/Literals.h"

#include <QPointer>
#include <QPushButton>
#include <QWidget>

#include <functional>
#include <optional>
#include <type_traits>

class QAbstractButton;
class QAction;
class QBoxLayout;

namespace screen {

/// Base of every document screen and dialog. The object name is the class name ("frmJob"), every
/// control's object name is the control's name ("txtNotes(2)" for arrays). Handlers are wired with
/// on(), which guards them: an exception never crosses the event loop; what nobody caught is told
/// by guardedCall(). Size and place of a window are remembered for the user. Closing one never ends
/// the program by itself.
class Form : public QWidget {
  public:
    Form(const QString& name, const QString& caption);
    ~Form() override;

    QString name() const { return objectName(); }

    /// Once, before the form is shown for the first time. Call refuse() in it to stay closed.
    virtual void Form_Load() {}
    /// Whenever the form becomes the active document, coming from another one (or from none), and
    /// each time that it is shown as a dialog. Not when a dialog or a message box over it closes,
    /// nor when the user comes back from another program: what is being entered stays undisturbed.
    virtual void Form_Activate() {}
    /// Before the form closes, by whatever way; false keeps it open.
    virtual bool Form_QueryUnload() { return true; }

    /// A document with long lists gets all the room that the shell has.
    virtual bool opensMaximized() const { return false; }

    /// Runs Form_Load if that has not been done. False if the form refused.
    bool load();
    /// Asks Form_QueryUnload and closes the form. False if it stays open. A document screen that
    /// Forms::show made is deleted as soon as none of its handlers runs any more; others belong to
    /// whoever made them, and load afresh when they are shown again.
    bool unload();
    /// Shows the form as a dialog over the active window and returns when it was hidden or
    /// unloaded. The form still exists afterwards: its owner (Forms::dialog) deletes it. Its close
    /// box presses the cancel button, if there is one.
    void showModal();
    /// Ends showModal without unloading, fields kept.
    void hideModal();
    bool isModalNow() const { return m_modal; }

    /// Control of a name below this form; nullptr if there is none.
    template <class T = QWidget>
    T* control(const QString& controlName) const {
        return dynamic_cast<T*>(findControl(controlName));
    }

    // The only wiring there is: handlers run under the guard, whatever sends. A piece of a screen
    // (a panel) wires through its form too.

    /// Wires a button's click, an action's trigger or a control's event.
    template <class F>
    void on(QAbstractButton* button, void (F::*handler)()) {
        onClick(button, [this, handler] { (static_cast<F*>(this)->*handler)(); });
    }
    template <class Fn>
    requires std::is_invocable_v<Fn>
    void on(QAbstractButton* button, Fn handler) { onClick(button, std::move(handler)); }
    template <class F>
    void on(QAction* action, void (F::*handler)()) {
        onTrigger(action, [this, handler] { (static_cast<F*>(this)->*handler)(); });
    }
    template <class Fn>
    requires std::is_invocable_v<Fn>
    void on(QAction* action, Fn handler) { onTrigger(action, std::move(handler)); }
    template <class F, class... Args>
    void on(controls::Event<Args...>& event, void (F::*handler)(Args...)) {
        event.connect([this, handler](Args... args) {
            guarded([&] { (static_cast<F*>(this)->*handler)(args...); });
        });
    }
    template <class Fn, class... Args>
    requires std::is_invocable_v<Fn, Args...>
    void on(controls::Event<Args...>& event, Fn handler) {
        event.connect([this, handler](Args... args) { guarded([&] { handler(args...); }); });
    }

    /// Wires any signal; the handler may take the signal's arguments or leave them.
    template <class Sender, class Class, class Result, class... Args, class Fn>
    void on(const Sender* sender, Result (Class::*signal)(Args...), Fn handler) {
        connect(sender, signal, this, [this, handler = std::move(handler)](Args... args) {
            guarded([&] {
                if constexpr (std::is_invocable_v<const Fn&, Args...>)
                    handler(args...);
                else
                    handler();
            });
        });
    }

    /// Runs a handler under the guard. True if it ended without an error.
    bool guarded(const std::function<void()>& handler);

  protected:
    /// From Form_Load: the form is not to open.
    void refuse() { m_refused = true; }

    /// Enter presses this one, where the focused control has no use for Enter itself.
    void setDefaultButton(QPushButton* button);
    /// Escape presses this one.
    void setCancelButton(QPushButton* button);
    /// cmdOK and cmdCancel to the right of a row of their own; Enter and Escape press them, and
    /// Cancel hides the dialog. Returns cmdOK.
    QPushButton* addOkCancel(QBoxLayout* inside, const QString& ok = u"&OK"_s,
                             const QString& cancel = u"Cancel"_s);

    /// Before a text that was changed in a dialog is dropped: Yes takes it by `take`, No drops it,
    /// Cancel stays. False if the dialog is to stay.
    bool mayDrop(bool changed, const std::function<void()>& take);

    /// A message with the focus sent to a field, whose text is selected; its page comes to the
    /// front.
    void complain(const QString& text, QWidget* field, Icon icon = Icon::Exclamation,
                  const QString& title = {});
    void complain(const Complaint& complaint);

    void closeEvent(QCloseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void changeEvent(QEvent* event) override;
    /// Tab stays within the form and comes round, as a document of a larger window too.
    bool focusNextPrevChild(bool next) override;
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;

  private:
    friend class Forms;
    QObject* findControl(const QString& controlName) const;
    void onClick(QAbstractButton* button, std::function<void()> handler);
    void onTrigger(QAction* action, std::function<void()> handler);
    void becomeActive();
    void finishUnload();
    void deleteWhenIdle();
    void leaveSubWindow();
    void focusFirst();
    void pressDefault();
    QWidget* sized() const;
    void restoreSize();
    void rememberPlace() const;

    QPointer<QPushButton> m_default;
    QPointer<QPushButton> m_cancel;
    bool m_loaded = false;
    bool m_refused = false;
    bool m_modal = false;
    bool m_closing = false;
    bool m_ownsItself = false; ///< made by Forms::show
    bool m_placed = false;     ///< shown before
    int m_running = 0;         ///< handlers of this form on the stack
    std::function<void()> m_endModal;
};

} // namespace screen
