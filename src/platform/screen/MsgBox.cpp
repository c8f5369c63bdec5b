#include "platform/screen/MsgBox.h"

#include "platform/screen/Seams.h"
#include "platform/screen/Suspension.h"
#include "platform/values/Literals.h"

namespace screen {

namespace {

QString titleOf(const QString& title) {
    return title.isEmpty() ? u"Mirsa"_s : title;
}

} // namespace

Answer MsgBox(const QString& text, Buttons buttons, Icon icon, const QString& title,
              Answer defaultButton) {
    const Suspension arrow;
    return seams().msgBox(text, buttons, icon, titleOf(title), defaultButton);
}

bool confirmDeletion(const QString& question, const QString& title, Icon icon, Buttons buttons) {
    const bool yesNo = buttons == Buttons::YesNo;
    const Answer answer =
        MsgBox(question, buttons, icon, title, yesNo ? Answer::No : Answer::Cancel);
    return answer == Answer::Yes || answer == Answer::Ok;
}

QString InputBox(const QString& prompt, const QString& title, const QString& text) {
    const Suspension arrow;
    return seams().inputBox(prompt, titleOf(title), text);
}

void beep() {
    seams().beep();
}

} // namespace screen
