#pragma once

#include "platform/screen/Form.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>

namespace screen {

/// A dialog for the time of a call, seen through the small interface that it offers.
template <class Interface>
class Dialog {
  public:
    explicit Dialog(std::unique_ptr<Form> form)
        : m_form(std::move(form)), m_interface(dynamic_cast<Interface*>(m_form.get())) {
        Q_ASSERT_X(m_interface, "Forms::dialog", "the form doesn't offer that interface");
    }
    Interface* operator->() const { return m_interface; }
    Interface& operator*() const { return *m_interface; }
    Form& form() const { return *m_form; }

  private:
    std::unique_ptr<Form> m_form;
    Interface* m_interface;
};

/// The screens of the program by name, and those of them that are open. Screens open and refresh
/// each other through it, so that none needs another's header.
class Forms {
  public:
    using Factory = std::function<std::unique_ptr<Form>()>;

    /// Makes a screen known under its name. Names compare without regard to case.
    static void add(const QString& name, const Factory& factory);
    template <class F>
    static void add() {
        auto factory = [] { return std::unique_ptr<Form>(new F); };
        add(QString::fromLatin1(F::formName), std::move(factory));
    }
    static bool isKnown(const QString& name);
    static QStringList known();

    /// Opens a document screen as a child of the shell, or brings the open one forward, with the
    /// hourglass meanwhile. nullptr if it refused to open or isn't known.
    static Form* show(const QString& name);
    /// A dialog to be shown with showModal through its interface; it counts as open while it lives.
    template <class Interface>
    static Dialog<Interface> dialog(const QString& name) {
        auto form = make(name);
        opened(form.get());
        return Dialog<Interface>(std::move(form));
    }
    /// Shows a dialog that takes and gives nothing.
    static void showModal(const QString& name);

    /// Whether a screen of that name is open (loaded, shown or hidden).
    static bool isLoaded(const QString& name);
    /// The open screen of that name, seen through an interface; nullptr if there is none.
    template <class Interface = Form>
    static Interface* find(const QString& name) {
        return dynamic_cast<Interface*>(findForm(name));
    }
    /// In the order of opening.
    static QList<Form*> all();
    /// The active document screen; nullptr if there is none.
    static Form* active();

    /// Where document screens are placed; the shell sets it. Without one they are windows of their
    /// own.
    static void setHost(std::function<void(Form&)> place, std::function<void(Form&)> bringForward);

    /// The form as made, not yet loaded. Throws std::logic_error for an unknown name.
    static std::unique_ptr<Form> make(const QString& name);

  private:
    friend class Form;
    static Form* findForm(const QString& name);
    static void opened(Form* form);
    static void gone(Form* form);
};

} // namespace screen
