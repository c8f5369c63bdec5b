#include "platform/screen/Seams.h"

#include "platform/jet/Error.h"
#include "platform/screen/Suspension.h"
#include "platform/system/Companions.h"
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
    }
    box.setEscapeButton(buttonOf(escape));
    auto first = buttonOf(defaultButton);
    if (first == QMessageBox::NoButton || !box.button(first))
        first = box.button(QMessageBox::Yes) ? QMessageBox::Yes : QMessageBox::Ok;
    box.setDefaultButton(first);
    switch (box.exec()) {
    case QMessageBox::Ok:
        return Answer::Ok;
    case QMessageBox::Yes:
        return Answer::Yes;
    case QMessageBox::No:
        return Answer::No;
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
    own.openFile = [](const QString& title, const QString& folder, const QString& filter) {
        return QFileDialog::getOpenFileName(QApplication::activeWindow(), title, folder, filter);
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
        seams().endProcess(1);
    };
    own.endProcess = [](int code) {
        try {
            if (seams().beforeEnd)
                seams().beforeEnd();
        } catch (const std::exception& error) {
            qWarning("%s", error.what()); // nothing may keep the program from ending
        }
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

bool guardedCall(const std::function<void()>& action) {
    // The report comes after the catch: its box runs a loop of its own, in which more may be
    // thrown.
    int number = 0;
    QString text;
    try {
        action();
        return true;
    } catch (const jet::Error& error) {
        number = error.number();
        text = error.text();
    } catch (const values::Overflow&) {
        number = 6;
        text = u"Overflow"_s;
    } catch (const std::exception& error) {
        number = 1000;
        text = QString::fromUtf8(error.what());
    }
    const Suspension arrow;
    seams().runTimeError(number, text);
    return false;
}

} // namespace screen
