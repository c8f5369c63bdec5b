#include "platform/screen/Pointer.h"

#include "platform/screen/Suspension.h"

#include <QGuiApplication>

#include <algorithm>
#include <vector>

namespace screen {

namespace {

struct Shown {
    const BusyPointer* owner;
    BusyPointer::Shape shape;
};

struct Pointers {
    std::vector<Shown> stack;
    size_t suspended = 0; ///< how many of them, from the bottom, stand under a dialog
    bool overriding = false;

    void apply() {
        if (!qGuiApp)
            return;
        const bool wanted = stack.size() > suspended;
        if (wanted) {
            const QCursor cursor(stack.back().shape == BusyPointer::Hourglass ? Qt::WaitCursor
                                                                              : Qt::BusyCursor);
            if (overriding)
                QGuiApplication::changeOverrideCursor(cursor);
            else
                QGuiApplication::setOverrideCursor(cursor);
        } else if (overriding) {
            QGuiApplication::restoreOverrideCursor();
        }
        overriding = wanted;
    }
};

Pointers& pointers() {
    static Pointers all;
    return all;
}

} // namespace

BusyPointer::BusyPointer(Shape shape) {
    pointers().stack.push_back({this, shape});
    pointers().apply();
}

BusyPointer::~BusyPointer() {
    reset();
}

void BusyPointer::reset() {
    if (!m_shown)
        return;
    m_shown = false;
    auto& all = pointers();
    const auto found = std::find_if(all.stack.begin(), all.stack.end(),
                                    [this](const Shown& shown) { return shown.owner == this; });
    if (found == all.stack.end())
        return;
    if (size_t(found - all.stack.begin()) < all.suspended)
        --all.suspended;
    all.stack.erase(found);
    all.apply();
}

Suspension::Suspension() : m_below(pointers().suspended) {
    pointers().suspended = pointers().stack.size();
    pointers().apply();
}

Suspension::~Suspension() {
    auto& all = pointers();
    all.suspended = std::min(m_below, all.stack.size());
    all.apply();
}

} // namespace screen
