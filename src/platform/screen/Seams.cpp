#include "platform/screen/Seams.h"

#include "platform/jet/Error.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Suspension.h"
#include "platform/system/Companions.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QApplication>
#include <QFileDialog>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>

#include <algorithm>
#include <cstdlib>
#include <optional>

namespace screen {

namespace {

QMessageBox::StandardButton buttonOf(Answer answer) {
    switch (answer) {
    case Answer::Cancel:
        return QMessageBox::Cancel;
    case Answer::Yes:
        return QMessageBox::Yes;
    case Answer::No:
        return QMessageBox::No;
    case Answer::Ok:
        return QMessageBox::Ok;
    case Answer::Retry:
        return QMessageBox::Retry;
    case Answer::Close:
        return QMessageBox::Close;
    }
    return QMessageBox::NoButton;
}

/// A box whose text has lines of its own gets wide enough for them, within reason; otherwise they
/// are broken once more.
void keepLines(QMessageBox& box, const QString& text) {
    auto* label = box.findChild<QLabel*>(u"qt_msgbox_label"_s);
    if (!label || !text.contains(u'\n'))
        return;
    constexpr int reason = 720;
    const int widest = label->fontMetrics().boundingRect(QRect(), Qt::AlignLeft, text).width();
    label->setMinimumWidth(std::min(widest + 8, reason));
}

Answer showBox(const QString& text, Buttons buttons, Icon icon, const QString& title,
               Answer defaultButton) {
    QMessageBox box(QApplication::activeWindow());
    box.setWindowTitle(title);
    box.setTextFormat(Qt::PlainText);
    box.setText(text);
    keepLines(box, text);
    switch (icon) {
    case Icon::None:
        break;
    case Icon::Critical:
        box.setIcon(QMessageBox::Critical);
        break;
    case Icon::Question:
        box.setIcon(QMessageBox::Question);
        break;
    case Icon::Exclamation:
        box.setIcon(QMessageBox::Warning);
        break;
    case Icon::Information:
        box.setIcon(QMessageBox::Information);
        break;
    }
    Answer escape = Answer::Ok;
    switch (buttons) {
    case Buttons::Ok:
        box.setStandardButtons(QMessageBox::Ok);
        break;
    case Buttons::OkCancel:
        box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
        escape = Answer::Cancel;
        break;
    case Buttons::YesNo:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No);
        escape = Answer::No;
        break;
    case Buttons::YesNoCancel:
        box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
        escape = Answer::Cancel;
        break;
    case Buttons::RetryClose:
        box.setStandardButtons(QMessageBox::Retry | QMessageBox::Close);
        escape = Answer::Close;
        break;
    }
    box.setEscapeButton(buttonOf(escape));
    auto first = buttonOf(defaultButton);
    if (first == QMessageBox::NoButton || !box.button(first))
        first = box.button(QMessageBox::Yes)     ? QMessageBox::Yes
                : box.button(QMessageBox::Retry) ? QMessageBox::Retry
                                                 : QMessageBox::Ok;
    box.setDefaultButton(first);
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
    case QMessageBox::Retry:
        return Answer::Retry;
    default:
        return escape;
    }
}

QString askLine(const QString& prompt, const QString& title, const QString& text) {
    bool taken = false;
    const QString line = QInputDialog::getText(QApplication::activeWindow(), title, prompt,
                                               QLineEdit::Normal, text, &taken);
    return taken ? line : QString();
}

Seams desktop() {
    Seams own;
    own.msgBox = showBox;
    own.inputBox = askLine;
    own.saveFile = [](const QString& title, const QString& suggested, const QString& filter) {
        return QFileDialog::getSaveFileName(QApplication::activeWindow(), title, suggested, filter);
    };
    own.openFiles = [](const QString& title, const QString& folder, const QString& filter) {
        return QFileDialog::getOpenFileNames(QApplication::activeWindow(), title, folder, filter);
    };
    own.startProgram = platform::startProgram;
    own.startMaximised = platform::startMaximised;
    own.isInstalled = platform::isInstalled;
    own.activateWindow = platform::activateWindow;
    own.beep = [] { QApplication::beep(); };
    own.runTimeError = [](int number, const QString& text) {
        if (qApp) {
            QMessageBox::critical(QApplication::activeWindow(), u"Mirsa"_s,
                                  u"Run-time error '%1':\n\n%2"_s.arg(number).arg(text));
        }
    };
    own.endProcess = [](int code) {
        try {
            if (seams().beforeEnd)
                seams().beforeEnd();
        } catch (const std::exception& error) {
            qWarning("%s", error.what()); // nothing may keep the program from ending
        }
        platform::writeRemembered();
        std::_Exit(code);
    };
    return own;
}

} // namespace

Seams& seams() {
    static Seams inForce = desktop();
    return inForce;
}

void resetSeams() {
    seams() = desktop();
}

namespace {

/// What an action threw.
struct Failure {
    int number = 0;
    QString text;
    bool ofProgram = false;
    jet::Failure kind = jet::Failure::Statement;
};

std::optional<Failure> run(const std::function<void()>& action) {
    try {
        action();
        return std::nullopt;
    } catch (const jet::Error& error) {
        return Failure{error.number(), error.text(), false, error.failure()};
    } catch (const values::Overflow&) {
        return Failure{6, u"Overflow"_s};
    } catch (const std::exception& error) {
        return Failure{1000, QString::fromUtf8(error.what()), true};
    }
}

/// What is told of a failure that may pass by itself or that somebody can mend outside; empty for
/// all others.
QString passing(const Failure& failure) {
    // At the start nobody has entered anything yet.
    const QString stays =
        Forms::all().isEmpty() ? QString() : u"\n\nWhat you entered is still on the screen."_s;
    switch (failure.kind) {
    case jet::Failure::Statement:
        return {};
    case jet::Failure::ConnectionLost:
        return u"The database server can't be reached. Please check that it runs and that the "
               "network is connected.\n\n"_s +
               failure.text + stays;
    case jet::Failure::LockNotHad:
        return u"Another station is writing to the database and didn't finish in time."_s + stays;
    case jet::Failure::DiskFull:
        return u"The disk of the database is full. Please make room on it.\n\n"_s + failure.text +
               stays;
    case jet::Failure::ReadOnly:
        return u"The database can be read only. Please check the rights to its file and folder."_s +
               stays;
    case jet::Failure::FileGone:
        return u"The database can't be found or opened.\n\n"_s + failure.text + stays;
    }
    return {};
}

} // namespace

bool guardedCall(const std::function<void()>& action) {
    // The report comes after the catch: its box runs a loop of its own, in which more may be
    // thrown.
    while (const auto failure = run(action)) {
        const Suspension arrow;
        const QString sentence = passing(*failure);
        if (!sentence.isEmpty()) {
            if (MsgBox(sentence, Buttons::RetryClose, Icon::Critical) == Answer::Retry)
                continue;
            return false;
        }
        seams().runTimeError(failure->number, failure->text);
        if (failure->ofProgram)
            seams().endProcess(1);
        return false;
    }
    return true;
}

} // namespace screen
