#include "platform/screen/Layout.h"

#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>

namespace screen {

namespace {

/// The words of a label as a screen reader says them.
QString spoken(const QString& label) {
    QString words;
    for (qsizetype i = 0; i < label.size(); ++i) {
        if (label.at(i) != u'&')
            words += label.at(i);
        else if (i + 1 < label.size() && label.at(i + 1) == u'&')
            words += label.at(++i);
    }
    words = words.trimmed();
    if (words.endsWith(u':'))
        words.chop(1);
    return words.trimmed();
}

int widthOf(const QWidget* widget, int characters) {
    return widget->fontMetrics().averageCharWidth() * characters + 16;
}

void applyLine(controls::TextField* field, const Line& line) {
    field->setKeyFilter(line.filter);
    field->setLimit(line.limit);
    if (!line.mask.isEmpty()) {
        field->setNumberMask(line.mask);
        field->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    }
    if (line.password)
        field->setEchoMode(QLineEdit::Password);
    field->setMinimumWidth(widthOf(field, line.characters));
}

} // namespace

Line wide(int characters) {
    Line line;
    line.characters = characters;
    return line;
}

Line number(const QString& mask, int limit, int characters) {
    return {
        .limit = limit, .filter = values::keys::decimal(), .mask = mask, .characters = characters};
}

Fields::Fields(QWidget* parent) : m_parent(parent) {
    m_grid = qobject_cast<QGridLayout*>(parent->layout());
    if (!m_grid)
        m_grid = new QGridLayout(parent);
    m_first = m_row = m_top = m_grid->count() > 0 ? m_grid->rowCount() : 0;
}

Fields::Fields(QWidget* parent, QBoxLayout* inside) : m_parent(parent), m_grid(new QGridLayout) {
    inside->addLayout(m_grid);
}

void Fields::place(QWidget* control, const QString& name, const QString& label, QLayout* inside) {
    control->setObjectName(name);
    const bool tall = qobject_cast<QPlainTextEdit*>(control) != nullptr;
    const int front = label.isEmpty() ? 0 : 1;
    const int across = m_span * 2 - front;
    m_label = nullptr;
    if (front) {
        // A label in front of a field ends with a colon, whoever wrote it.
        m_label = new QLabel(fieldTitle(label), m_parent);
        m_label->setBuddy(control);
        m_grid->addWidget(m_label, m_row, m_column,
                          (tall ? Qt::AlignTop : Qt::AlignVCenter) | Qt::AlignLeft);
        control->setAccessibleName(spoken(label));
    }
    if (inside)
        m_grid->addLayout(inside, m_row, m_column + front, 1, across);
    else
        m_grid->addWidget(control, m_row, m_column + front, 1, across);
    if (m_hidden) {
        if (m_label)
            m_hidden->push_back(m_label);
        m_hidden->push_back(control);
    }
    m_hidden = nullptr;
    ++m_row;
    m_span = 1;
}

controls::TextField* Fields::text(const QString& name, const QString& label, const Line& line) {
    auto* field = new controls::TextField(m_parent);
    applyLine(field, line);
    place(field, name, label);
    return field;
}

controls::CurrencyField* Fields::currency(const QString& name, const QString& label,
                                          const QString& mask) {
    auto* field = new controls::CurrencyField(m_parent);
    if (!mask.isEmpty())
        field->setMask(mask);
    field->setMinimumWidth(widthOf(field, 12));
    place(field, name, label);
    return field;
}

controls::MemoField* Fields::memo(const QString& name, const QString& label, int lines, int limit,
                                  const values::KeyFilter& filter) {
    auto* field = new controls::MemoField(m_parent);
    field->setLimit(limit);
    field->setKeyFilter(filter);
    field->setMinimumHeight(field->fontMetrics().lineSpacing() * lines + 12);
    place(field, name, label);
    return field;
}

controls::DateField* Fields::date(const QString& name, const QString& label) {
    auto* field = new controls::DateField(m_parent);
    field->setMinimumWidth(widthOf(field, 15));
    place(field, name, label);
    return field;
}

controls::DateField* Fields::longDate(const QString& name, const QString& label) {
    controls::DateField* field = date(name, label);
    field->setShown(controls::DateField::Shown::Long);
    return field;
}

controls::DataCombo* Fields::dataCombo(const QString& name, const QString& label,
                                       const Line& line) {
    auto* field = new controls::DataCombo(m_parent);
    field->setKeyFilter(line.filter);
    field->setLimit(line.limit);
    field->setMinimumContentsLength(line.characters);
    place(field, name, label);
    return field;
}

controls::ListCombo* Fields::listCombo(const QString& name, const QString& label) {
    auto* field = new controls::ListCombo(m_parent);
    place(field, name, label);
    return field;
}

QCheckBox* Fields::check(const QString& name, const QString& caption) {
    auto* box = new QCheckBox(caption, m_parent);
    place(box, name, {});
    return box;
}

QRadioButton* Fields::option(const QString& name, const QString& caption) {
    auto* button = new QRadioButton(caption, m_parent);
    place(button, name, {});
    return button;
}

QLabel* Fields::shown(const QString& name, const QString& label, int characters) {
    auto* value = new QLabel(m_parent);
    value->setTextFormat(Qt::PlainText);
    value->setTextInteractionFlags(Qt::TextSelectableByMouse);
    value->setFrameShape(QFrame::StyledPanel);
    value->setMinimumWidth(widthOf(value, characters));
    place(value, name, label);
    return value;
}

QLabel* Fields::figure(const QString& name, const QString& label, int characters) {
    QLabel* value = shown(name, label, characters);
    value->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    value->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    return value;
}

void Fields::add(QWidget* control, const QString& name, const QString& label, QLayout* inside) {
    place(control, name, label, inside);
}

void Fields::add(QLayout* layout) {
    m_grid->addLayout(layout, m_row++, m_column, 1, m_span * 2);
    m_span = 1;
}

QPushButton* Fields::pick(const QString& name, const QString& spoken) {
    QWidget* control = m_grid->itemAt(m_grid->count() - 1)->widget();
    int row = 0, column = 0, rows = 0, across = 0;
    m_grid->getItemPosition(m_grid->count() - 1, &row, &column, &rows, &across);
    auto* button = named(new QPushButton(u"..."_s, m_parent), name, spoken);
    button->setAutoDefault(false);
    button->setMaximumWidth(32);
    button->setToolTip(spoken);
    m_grid->removeWidget(control);
    auto* both = new QHBoxLayout;
    both->setSpacing(2);
    both->addWidget(control, 1);
    both->addWidget(button);
    m_grid->addLayout(both, row, column, rows, across);
    return button;
}

QLabel* Fields::note(const QString& text) {
    auto* label = new QLabel(text, m_parent);
    label->setWordWrap(true);
    m_grid->addWidget(label, m_row++, m_column, 1, m_span * 2);
    m_span = 1;
    return label;
}

void Fields::nextColumn() {
    m_column += 2;
    m_row = m_top;
}

void Fields::nextRow() {
    m_column = 0;
    m_row = m_top = m_grid->rowCount();
}

Fields& Fields::at(int row, int column) {
    m_row = m_first + row;
    m_column = column * 2;
    return *this;
}

Fields& Fields::secured(std::vector<QWidget*>& hidden) {
    m_hidden = &hidden;
    return *this;
}

Fields& Fields::tight() {
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setVerticalSpacing(3);
    return *this;
}

void Fields::keepTogether() const {
    m_grid->setRowStretch(m_grid->rowCount(), 1);
}

Fields& Fields::span(int fields) {
    m_span = std::max(1, fields);
    return *this;
}

namespace {

/// One with a short caption is as wide as the others.
class BarButton : public QPushButton {
  public:
    using QPushButton::QPushButton;
    QSize sizeHint() const override {
        return QPushButton::sizeHint().expandedTo({buttonWidth(*this), 0});
    }
    QSize minimumSizeHint() const override {
        return QPushButton::minimumSizeHint().expandedTo({buttonWidth(*this), 0});
    }
};

} // namespace

ButtonBar::ButtonBar(QWidget* parent, QBoxLayout* inside) : m_parent(parent) {
    const bool inRow = inside->direction() == QBoxLayout::LeftToRight ||
                       inside->direction() == QBoxLayout::RightToLeft;
    m_layout = new QBoxLayout(inRow ? QBoxLayout::TopToBottom : QBoxLayout::LeftToRight);
    inside->addLayout(m_layout);
    if (!inRow)
        m_layout->addStretch(1);
}

int buttonWidth(const QWidget& button) {
    return button.fontMetrics().averageCharWidth() * 12;
}

QString fieldTitle(const QString& words) {
    return words.endsWith(u':') || words.endsWith(u'?') ? words : words + u':';
}

QPushButton* ButtonBar::button(const QString& name, const QString& caption) {
    auto* made = new BarButton(caption, m_parent);
    made->setObjectName(name);
    made->setAutoDefault(false);
    m_layout->addWidget(made);
    return made;
}

void ButtonBar::stretch() {
    // What stands before it goes to the other side.
    if (m_trailing && m_layout->direction() == QBoxLayout::LeftToRight && m_layout->count() > 1)
        delete m_layout->takeAt(0);
    m_trailing = false;
    m_layout->addStretch(1);
}

QGroupBox* frame(QWidget* parent, QBoxLayout* inside, const QString& name, const QString& title) {
    auto* box = new QGroupBox(title, parent);
    box->setObjectName(name);
    inside->addWidget(box);
    return box;
}

QWidget* tab(QTabWidget* tabs, const QString& caption) {
    auto* page = new QWidget(tabs);
    tabs->addTab(page, caption);
    return page;
}

} // namespace screen
