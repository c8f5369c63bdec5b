#include "support/Gallery.h"

#include "platform/controls/DataControl.h"
#include "platform/screen/Form.h"
#include "platform/screen/Layout.h"
#include "platform/values/Literals.h"
#include "support/Paths.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAccessible>
#include <QApplication>
#include <QBoxLayout>
#include <QCalendarWidget>
#include <QCheckBox>
#include <QComboBox>
#include <QFileInfo>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabBar>
#include <QTabWidget>
#include <QTableView>

namespace testsupport {

namespace {

QString nameOf(const QWidget* widget) {
    if (!widget->objectName().isEmpty())
        return widget->objectName();
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return u'"' + label->text() + u'"';
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return u'"' + button->text() + u'"';
    return QString::fromLatin1(widget->metaObject()->className());
}

/// Whether it is a part of a control and no control itself.
bool isPart(const QWidget* widget, const QWidget* form) {
    if (widget->objectName().startsWith(u"qt_"))
        return true;
    for (const QWidget* above = widget->parentWidget(); above && above != form;
         above = above->parentWidget()) {
        if (qobject_cast<const QComboBox*>(above) || qobject_cast<const QAbstractSpinBox*>(above) ||
            qobject_cast<const QAbstractItemView*>(above) || qobject_cast<const QTabBar*>(above) ||
            qobject_cast<const QLineEdit*>(above) || qobject_cast<const QCalendarWidget*>(above) ||
            dynamic_cast<const controls::DataControl*>(above))
            return true;
    }
    return false;
}

QString withoutMnemonic(QString text) {
    return text.remove(u'&');
}

bool isClipped(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget)) {
        if (label->text().isEmpty() || Qt::mightBeRichText(label->text()))
            return false;
        if (label->wordWrap())
            return label->heightForWidth(label->width()) > label->height() + 1;
        const QString text = label->buddy() ? withoutMnemonic(label->text()) : label->text();
        const QSize needed = label->fontMetrics().size(0, text);
        return needed.width() > label->contentsRect().width() + 1 ||
               needed.height() > label->contentsRect().height() + 2;
    }
    if (const auto* button = qobject_cast<const QPushButton*>(widget)) {
        const QSize needed = button->fontMetrics().size(Qt::TextShowMnemonic, button->text());
        return needed.width() + 6 > button->width() || needed.height() > button->height();
    }
    if (qobject_cast<const QCheckBox*>(widget) || qobject_cast<const QRadioButton*>(widget))
        return widget->sizeHint().width() > widget->width() + 1;
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->fontMetrics().horizontalAdvance(withoutMnemonic(box->title())) >
               box->width() - 8;
    if (const auto* combo = qobject_cast<const QComboBox*>(widget)) {
        const auto* line = combo->lineEdit();
        return line && line->height() < line->fontMetrics().height();
    }
    if (qobject_cast<const QLineEdit*>(widget))
        return widget->height() < widget->fontMetrics().height() + 2;
    return false;
}

QStringList clippedHeaders(const QTableView* view) {
    QStringList found;
    const auto* header = view->horizontalHeader();
    if (header->isHidden())
        return found;
    for (int column = 0; column < header->count(); ++column) {
        const QString title = view->model()->headerData(column, Qt::Horizontal).toString();
        if (!header->isSectionHidden(column) &&
            header->fontMetrics().horizontalAdvance(title) + 6 > header->sectionSize(column))
            found << u"clipped: header \"%1\" of %2"_s.arg(title, nameOf(view));
    }
    return found;
}

QStringList overlaps(const QWidget* parent) {
    // Only where screens place controls themselves; composed controls know what they do.
    const QByteArray kind(parent->metaObject()->className());
    if (kind != "QWidget" && kind != "QGroupBox")
        return {};
    QStringList found;
    QList<QWidget*> shown;
    for (QObject* child : parent->children()) {
        auto* widget = qobject_cast<QWidget*>(child);
        if (widget && widget->isVisible() && !widget->isWindow())
            shown << widget;
    }
    for (qsizetype a = 0; a < shown.size(); ++a) {
        for (qsizetype b = a + 1; b < shown.size(); ++b) {
            const QRect common = shown[a]->geometry() & shown[b]->geometry();
            if (common.width() > 1 && common.height() > 1)
                found << u"overlap: %1 and %2"_s.arg(nameOf(shown[a]), nameOf(shown[b]));
        }
    }
    return found;
}

bool takesInput(const QWidget* widget) {
    return qobject_cast<const QLineEdit*>(widget) || qobject_cast<const QPlainTextEdit*>(widget) ||
           qobject_cast<const QComboBox*>(widget) ||
           qobject_cast<const QAbstractItemView*>(widget) ||
           qobject_cast<const QAbstractSpinBox*>(widget);
}

QString mnemonicText(const QWidget* widget) {
    if (const auto* label = qobject_cast<const QLabel*>(widget))
        return label->buddy() ? label->text() : QString();
    if (const auto* button = qobject_cast<const QAbstractButton*>(widget))
        return button->text();
    if (const auto* box = qobject_cast<const QGroupBox*>(widget))
        return box->title();
    return {};
}

bool hasColonByRule(const QLabel* label) {
    const QString text = withoutMnemonic(label->text()).trimmed();
    return text.isEmpty() || text.endsWith(u':') || text.endsWith(u'?');
}

/// A row or column of nothing but buttons.
QStringList complaintsOfBar(const QBoxLayout* bar, const QWidget* form) {
    QList<const QPushButton*> buttons;
    for (int i = 0; i < bar->count(); ++i) {
        const auto* button = qobject_cast<const QPushButton*>(bar->itemAt(i)->widget());
        if (button && button->isVisible() && !button->text().isEmpty())
            buttons << button;
        else if (!button && !bar->itemAt(i)->spacerItem())
            return {};
    }
    if (buttons.isEmpty())
        return {};
    QStringList found;
    const bool column = bar->direction() == QBoxLayout::TopToBottom;
    for (const QPushButton* button : buttons) {
        if (button->height() != buttons.first()->height() ||
            (column && button->width() != buttons.first()->width()))
            found << u"button size: %1 beside %2"_s.arg(nameOf(button), nameOf(buttons.first()));
        if (button->width() < screen::buttonWidth(*button))
            found << u"button size: %1 is %2 wide"_s.arg(nameOf(button)).arg(button->width());
    }
    const bool leaves = std::any_of(buttons.begin(), buttons.end(), [](const auto* button) {
        static const QStringList words{u"OK"_s, u"Cancel"_s, u"Close"_s, u"Done"_s};
        return words.contains(withoutMnemonic(button->text()));
    });
    const QRect place = bar->geometry();
    if (leaves && !column && place.right() - buttons.last()->geometry().right() > 2)
        found << u"button side: %1 isn't at the right"_s.arg(nameOf(buttons.last()));
    const QPoint middle = buttons.first()->parentWidget()->mapTo(form, place.center());
    if (leaves && column && middle.x() < form->width() / 2)
        found << u"button side: %1 isn't at the right half"_s.arg(nameOf(buttons.first()));
    return found;
}

QStringList lookOver(const QWidget* form, bool all) {
    QStringList found;
    QHash<QChar, QString> letters;
    const auto mnemonic = [&](const QString& text, const QString& name) {
        qsizetype at = text.indexOf(u'&');
        while (at >= 0 && at + 1 < text.size() && text.at(at + 1) == u'&')
            at = text.indexOf(u'&', at + 2);
        if (at < 0 || at + 1 >= text.size())
            return;
        const QChar letter = text.at(at + 1).toLower();
        // "&New" and "Do&ne" are the modules' captions as people know them; New goes first.
        const QString other = letters.value(letter);
        if (name == u"cmdClose" && (other == u"cmdNew" || other == u"cmdAdd"))
            return;
        if (letters.contains(letter))
            found << u"mnemonic: %1 on %2 and %3"_s.arg(QString(letter), letters.value(letter),
                                                        name);
        letters.insert(letter, name);
    };
    found << overlaps(form);
    if (all)
        for (const QBoxLayout* bar : form->findChildren<QBoxLayout*>())
            found << complaintsOfBar(bar, form);
    const auto below = form->findChildren<QWidget*>();
    for (const QWidget* widget : below) {
        if (!widget->isVisible() || isPart(widget, form))
            continue;
        if (isClipped(widget))
            found << u"clipped: %1"_s.arg(nameOf(widget));
        if (const auto* view = qobject_cast<const QTableView*>(widget))
            found << clippedHeaders(view);
        found << overlaps(widget);
        if (!all)
            continue;
        if (const auto* label = qobject_cast<const QLabel*>(widget);
            label && label->buddy() && takesInput(label->buddy()) &&
            !qobject_cast<const QAbstractItemView*>(label->buddy()) && !hasColonByRule(label))
            found << u"colon: %1 \"%2\""_s.arg(nameOf(widget), label->text());
        if (const auto* button = qobject_cast<const QPushButton*>(widget);
            button && button->text().trimmed().endsWith(u':'))
            found << u"colon: %1 \"%2\""_s.arg(nameOf(widget), button->text());
        const bool control = takesInput(widget) || qobject_cast<const QAbstractButton*>(widget);
        if (control && widget->objectName().isEmpty())
            found << u"unnamed: %1"_s.arg(nameOf(widget));
        if (takesInput(widget)) {
            auto* face = QAccessible::queryAccessibleInterface(const_cast<QWidget*>(widget));
            if (!face || face->text(QAccessible::Name).trimmed().isEmpty())
                found << u"unspoken: %1"_s.arg(nameOf(widget));
        }
        mnemonic(mnemonicText(widget), nameOf(widget));
        if (const auto* tabs = qobject_cast<const QTabBar*>(widget)) {
            for (int i = 0; i < tabs->count(); ++i)
                mnemonic(tabs->tabText(i), u"tab %1"_s.arg(i));
        }
    }
    return found;
}

void settleLayout(QWidget* frame) {
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
    const QSize needed = frame->minimumSizeHint().expandedTo(frame->minimumSize());
    frame->resize(frame->size().expandedTo(needed));
    QCoreApplication::processEvents();
}

} // namespace

QDir galleryFolder() {
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).baseName();
    QDir folder(builtFile(u"../gallery/"_s) + (program == u"test_app" ? QString() : program));
    folder.mkpath(u"."_s);
    return folder;
}

QStringList gallery(screen::Form& form) {
    QStringList found;
    const QDir folder = galleryFolder();
    QWidget* frame = qobject_cast<QMdiSubWindow*>(form.parentWidget());
    if (!frame)
        frame = &form;
    QCoreApplication::processEvents();

    // The shell's own menu, tool bar and status bar take about 110 of the 800 lines.
    const QSize needed = frame->minimumSizeHint().expandedTo(frame->minimumSize());
    const QSize room = frame == &form ? QSize(1280, 780) : QSize(1276, 690);
    if (needed.width() > room.width() || needed.height() > room.height())
        found << u"size: needs %1 x %2"_s.arg(needed.width()).arg(needed.height());

    const auto tabs = form.findChildren<QTabWidget*>();
    int pictures = 0;
    const auto eachPage = [&](const std::function<void()>& look) {
        look();
        for (QTabWidget* tab : tabs) {
            const int before = tab->currentIndex();
            for (int page = 0; page < tab->count(); ++page) {
                if (page == before || !tab->isTabEnabled(page) || !tab->isVisible())
                    continue;
                tab->setCurrentIndex(page);
                QCoreApplication::processEvents();
                look();
            }
            tab->setCurrentIndex(before);
        }
        QCoreApplication::processEvents();
    };
    eachPage([&] {
        const QString number = pictures > 0 ? u"-%1"_s.arg(pictures) : QString();
        ++pictures;
        form.grab().save(folder.filePath(form.name() + number + u".png"_s));
        found << lookOver(&form, true);
    });

    const QFont own = form.font();
    QFont larger = own;
    larger.setPointSizeF(own.pointSizeF() * 4 / 3);
    const QSize size = frame->size();
    form.setFont(larger);
    settleLayout(frame);
    eachPage([&] {
        const auto clipped = lookOver(&form, false);
        for (const QString& complaint : clipped)
            found << complaint + u" (larger font)"_s;
    });
    form.setFont(own);
    frame->resize(size);
    QCoreApplication::processEvents();
    found.removeDuplicates();
    return found;
}

} // namespace testsupport
