#include "platform/screen/Forms.h"

#include "platform/screen/Pointer.h"

#include <QHash>

#include <stdexcept>

namespace screen {

namespace {

struct Registry {
    QHash<QString, Forms::Factory> factories; ///< by lower-cased name
    QStringList names;
    QList<Form*> open;
    std::function<void(Form&)> place;
    std::function<void(Form&)> bringForward;
};

Registry& registry() {
    static Registry all;
    return all;
}

} // namespace

void Forms::add(const QString& name, const Factory& factory) {
    if (!isKnown(name))
        registry().names << name;
    registry().factories.insert(name.toLower(), factory);
}

bool Forms::isKnown(const QString& name) {
    return registry().factories.contains(name.toLower());
}

QStringList Forms::known() {
    return registry().names;
}

std::unique_ptr<Form> Forms::make(const QString& name) {
    const auto factory = registry().factories.constFind(name.toLower());
    if (factory == registry().factories.constEnd())
        throw std::logic_error("There is no screen " + name.toStdString());
    return (*factory)();
}

Form* Forms::show(const QString& name) {
    if (!isKnown(name))
        return nullptr;
    BusyPointer hourglass;
    if (Form* open = findForm(name)) {
        if (open->m_ownsItself && registry().bringForward) {
            registry().bringForward(*open);
        } else {
            open->show();
            open->raise();
            open->activateWindow();
        }
        open->becomeActive();
        return open;
    }
    auto made = make(name);
    if (!made->load())
        return nullptr;
    Form* form = made.release();
    form->m_ownsItself = true;
    if (registry().place) {
        registry().place(*form);
    } else {
        form->show();
        form->raise();
        form->activateWindow();
    }
    form->becomeActive();
    // Its activation may have closed it.
    return all().contains(form) ? form : nullptr;
}

void Forms::showModal(const QString& name) {
    auto form = make(name);
    form->showModal();
}

bool Forms::isLoaded(const QString& name) {
    return findForm(name) != nullptr;
}

Form* Forms::findForm(const QString& name) {
    for (Form* form : std::as_const(registry().open)) {
        if (form->name().compare(name, Qt::CaseInsensitive) == 0)
            return form;
    }
    return nullptr;
}

QList<Form*> Forms::all() {
    return registry().open;
}

void Forms::setHost(std::function<void(Form&)> place, std::function<void(Form&)> bringForward) {
    registry().place = std::move(place);
    registry().bringForward = std::move(bringForward);
}

void Forms::opened(Form* form) {
    if (!registry().open.contains(form))
        registry().open << form;
}

void Forms::gone(Form* form) {
    registry().open.removeAll(form);
}

} // namespace screen
