#include "core/frmSpelling.h"

#include "core/EditActions.h"
#include "core/MirsaMain.h"
#include "core/Spelling.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"

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
        spelling::Speller::open(programFile(QStringLiteral("userdic.txt")));
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
        screen::MsgBox(QStringLiteral("There is no spelling dictionary on this computer."),
                       screen::Buttons::Ok, screen::Icon::Exclamation);
        return;
    }
    frmSpelling dialog(control, *speller());
    dialog.showModal();
}

frmSpelling::frmSpelling(QWidget* control, spelling::Speller& speller)
    : Form(QString::fromLatin1(formName), QStringLiteral("Spelling")),
      m_line(qobject_cast<QLineEdit*>(control)), m_memo(qobject_cast<QPlainTextEdit*>(control)),
      m_speller(speller) {
    auto* across = new QHBoxLayout(this);
    auto* left = new QVBoxLayout;
    across->addLayout(left, 1);
    screen::Fields fields(this, left);
    lblWord = fields.shown(QStringLiteral("lblWord"), QStringLiteral("Not in the dictionary:"), 24);
    txtChange = fields.text(QStringLiteral("txtChange"), QStringLiteral("Change &to:"));
    auto* suggestions = new QLabel(QStringLiteral("&Suggestions:"), this);
    left->addWidget(suggestions);
    lstSuggestions = screen::named(new QListWidget(this), QStringLiteral("lstSuggestions"),
                                   QStringLiteral("Suggestions"));
    suggestions->setBuddy(lstSuggestions);
    left->addWidget(lstSuggestions);

    screen::ButtonBar bar(this, across);
    auto* change = bar.button(QStringLiteral("cmdChange"), QStringLiteral("&Change"));
    on(change, &frmSpelling::cmdChange_Click);
    on(bar.button(QStringLiteral("cmdChangeAll"), QStringLiteral("Change A&ll")),
       &frmSpelling::cmdChangeAll_Click);
    on(bar.button(QStringLiteral("cmdIgnore"), QStringLiteral("&Ignore")),
       &frmSpelling::cmdIgnore_Click);
    on(bar.button(QStringLiteral("cmdIgnoreAll"), QStringLiteral("Ig&nore All")),
       &frmSpelling::cmdIgnoreAll_Click);
    on(bar.button(QStringLiteral("cmdAdd"), QStringLiteral("&Add")), &frmSpelling::cmdAdd_Click);
    auto* cancel = bar.button(QStringLiteral("cmdCancel"), QStringLiteral("Close"));
    on(cancel, [this] { unload(); });
    bar.stretch();
    setDefaultButton(change);
    setCancelButton(cancel);
    connect(lstSuggestions, &QListWidget::currentTextChanged, this, [this](const QString& text) {
        if (!text.isEmpty())
            txtChange->setText(text);
    });
    connect(lstSuggestions, &QListWidget::itemActivated, this,
            [this] { guarded([this] { cmdChange_Click(); }); });
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
        screen::MsgBox(QStringLiteral("The spelling check is complete."), screen::Buttons::Ok,
                       screen::Icon::Information, QStringLiteral("Spelling"));
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
        screen::MsgBox(QStringLiteral("The word can't be kept: the file of your own words can't be "
                                      "written."),
                       screen::Buttons::Ok, screen::Icon::Exclamation);
    next();
}

} // namespace core
