#include "core/frmSpelling.h"

#include "core/EditActions.h"
#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Literals.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>

namespace core {

namespace {

spelling::Speller* speller() {
    static const std::unique_ptr<spelling::Speller> opened =
        spelling::Speller::open(programFile(u"userdic.txt"_s));
    return opened.get();
}

} // namespace

void checkSpelling(QWidget* control) {
    if (auto* combo = qobject_cast<QComboBox*>(control)) {
        if (edit::isLocked(combo))
            return;
        control = combo->lineEdit();
    }
    const bool text = qobject_cast<QLineEdit*>(control) || qobject_cast<QPlainTextEdit*>(control);
    if (!text || edit::isLocked(control))
        return;
    if (!speller()) {
        screen::MsgBox(u"There is no spelling dictionary on this computer."_s, screen::Buttons::Ok,
                       screen::Icon::Exclamation);
        return;
    }
    frmSpelling dialog(control, *speller());
    dialog.showModal();
}

frmSpelling::frmSpelling(QWidget* control, spelling::Speller& speller)
    : Form(QString::fromLatin1(formName), u"Spelling"_s), m_line(qobject_cast<QLineEdit*>(control)),
      m_memo(qobject_cast<QPlainTextEdit*>(control)), m_speller(speller) {
    auto* across = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    across->addLayout(left, 1);
    screen::Fields fields(this, left);
    lblWord = fields.shown(u"lblWord"_s, u"Not in the dictionary:"_s, 24);
    txtChange = fields.text(u"txtChange"_s, u"Change &to:"_s);
    auto* suggestions = new QLabel(u"&Suggestions:"_s, this);
    left->addWidget(suggestions);
    lstSuggestions = screen::named(new QListWidget(this), u"lstSuggestions"_s, u"Suggestions"_s);
    suggestions->setBuddy(lstSuggestions);
    left->addWidget(lstSuggestions);

    screen::ButtonBar bar(this, across);
    auto* change = bar.button(u"cmdChange"_s, u"&Change"_s);
    on(change, &frmSpelling::cmdChange_Click);
    on(bar.button(u"cmdChangeAll"_s, u"Change A&ll"_s), &frmSpelling::cmdChangeAll_Click);
    on(bar.button(u"cmdIgnore"_s, u"&Ignore"_s), &frmSpelling::cmdIgnore_Click);
    on(bar.button(u"cmdIgnoreAll"_s, u"Ig&nore All"_s), &frmSpelling::cmdIgnoreAll_Click);
    on(bar.button(u"cmdAdd"_s, u"&Add"_s), &frmSpelling::cmdAdd_Click);
    auto* cancel = bar.button(u"cmdCancel"_s, u"Close"_s);
    on(cancel, [this] { unload(); });
    bar.stretch();
    setDefaultButton(change);
    setCancelButton(cancel);
    on(lstSuggestions, &QListWidget::currentTextChanged, [this](const QString& text) {
        if (!text.isEmpty())
            txtChange->setText(text);
    });
    on(lstSuggestions, &QListWidget::itemActivated, [this] { cmdChange_Click(); });
}

void frmSpelling::Form_Load() {
    if (!showNext())
        refuse();
}

QString frmSpelling::controlText() const {
    if (m_line)
        return m_line->text();
    return m_memo ? m_memo->toPlainText() : QString();
}

bool frmSpelling::showNext() {
    const QString text = controlText();
    m_word = m_speller.firstWrong(text, m_word.start + m_word.length, spelling::options());
    if (m_word.length == 0) {
        screen::MsgBox(u"The spelling check is complete."_s, screen::Buttons::Ok,
                       screen::Icon::Information, u"Spelling"_s);
        return false;
    }
    if (m_line) {
        m_line->setSelection(m_word.start, m_word.length);
    } else {
        QTextCursor cursor = m_memo->textCursor();
        cursor.setPosition(m_word.start);
        cursor.setPosition(m_word.start + m_word.length, QTextCursor::KeepAnchor);
        m_memo->setTextCursor(cursor);
    }
    const QString word = text.mid(m_word.start, m_word.length);
    lblWord->setText(word);
    lstSuggestions->clear();
    lstSuggestions->addItems(m_speller.suggestions(word));
    txtChange->setText(lstSuggestions->count() > 0 ? lstSuggestions->item(0)->text() : word);
    txtChange->setFocus();
    return true;
}

void frmSpelling::next() {
    if (!showNext())
        unload();
}

void frmSpelling::replace(const spelling::Word& word, const QString& with) {
    if (m_line) {
        m_line->setSelection(word.start, word.length);
        m_line->insert(with);
        // A text that is set anew has nothing to take back.
        if (!spelling::options().canUndo) {
            const int place = m_line->cursorPosition();
            m_line->QLineEdit::setText(m_line->text());
            m_line->setCursorPosition(place);
        }
    } else if (m_memo) {
        QTextCursor cursor = m_memo->textCursor();
        cursor.setPosition(word.start);
        cursor.setPosition(word.start + word.length, QTextCursor::KeepAnchor);
        m_memo->setTextCursor(cursor);
        m_memo->insertPlainText(with);
        if (!spelling::options().canUndo)
            m_memo->document()->clearUndoRedoStacks();
    }
}

void frmSpelling::cmdChange_Click() {
    const QString with = txtChange->text();
    replace(m_word, with);
    m_word = {m_word.start, static_cast<int>(with.size())};
    next();
}

void frmSpelling::cmdChangeAll_Click() {
    const QString wrong = lblWord->text();
    const QString with = txtChange->text();
    // From the end, so that the places in front stay as they are.
    const QString text = controlText();
    std::vector<spelling::Word> all = spelling::words(text, spelling::options());
    for (auto word = all.rbegin(); word != all.rend(); ++word) {
        if (word->start >= m_word.start && text.mid(word->start, word->length) == wrong)
            replace(*word, with);
    }
    m_word = {m_word.start, static_cast<int>(with.size())};
    next();
}

void frmSpelling::cmdIgnore_Click() {
    next();
}

void frmSpelling::cmdIgnoreAll_Click() {
    m_speller.ignore(lblWord->text());
    next();
}

void frmSpelling::cmdAdd_Click() {
    if (!m_speller.add(lblWord->text()))
        screen::MsgBox(u"The word can't be kept: the file of your own words can't be "
                       "written."_s,
                       screen::Buttons::Ok, screen::Icon::Exclamation);
    next();
}

} // namespace core
