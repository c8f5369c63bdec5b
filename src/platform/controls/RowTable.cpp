#include "platform/controls/RowTable.h"

#include "platform/controls/DropMenu.h"
#include "platform/controls/GridTools.h"
#include "platform/values/Csv.h"
#include "platform/values/Literals.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHeaderView>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollBar>
#include <QVBoxLayout>

#include <algorithm>

namespace controls {

namespace {

constexpr std::size_t mostKept = 100; ///< selected rows that are looked for again

} // namespace

RowTable::RowTable(std::vector<RowColumn> columns, const QString& name, const QString& spoken,
                   QWidget* parent)
    : QWidget(parent), m_model(std::make_unique<RowModel>(std::move(columns))),
      m_view(new QTableView(this)), m_strip(new QWidget(this)), m_menu(new DropMenu(this)) {
    auto* down = new QVBoxLayout(this);
    down->setContentsMargins(0, 0, 0, 0);
    down->setSpacing(2);
    m_strip->setObjectName(name + u"Filters"_s);
    down->addWidget(m_strip);
    down->addWidget(m_view, 1);
    m_view->setObjectName(name);
    m_view->setAccessibleName(spoken);
    m_view->setModel(m_model.get());
    m_view->setAlternatingRowColors(true);
    m_view->setWordWrap(false);
    m_view->setTabKeyNavigation(false);
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setMinimumSectionSize(8);
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    QHeaderView* header = m_view->horizontalHeader();
    header->setSectionsMovable(true);
    header->setSectionsClickable(true);
    header->setHighlightSections(false);
    header->setSortIndicatorShown(true);
    header->setSortIndicator(-1, Qt::AscendingOrder);
    for (std::size_t i = 0; i < m_model->columns().size(); ++i) {
        const RowColumn& column = m_model->columns()[i];
        auto* edit = new QLineEdit(m_strip);
        edit->setObjectName(name + u"Filter(%1)"_s.arg(i));
        edit->setAccessibleName(u"Show only: "_s + column.title);
        edit->setToolTip(
            column.kind == rows::Kind::Text
                ? u"Words that are to stand in %1; =words for exactly that"_s.arg(column.title)
                : u"What %1 is to show; also > 5, <= 5, 5..10"_s.arg(column.title));
        edit->installEventFilter(this);
        connect(edit, &QLineEdit::textEdited, this, [this, at = static_cast<int>(i)] {
            keeping([&] { m_model->setFilter(at, field(at)->text()); });
        });
        m_fields.push_back(edit);
        m_view->setColumnHidden(static_cast<int>(i), !column.shown);
    }
    connect(header, &QHeaderView::sectionResized, this, [this] { placeFields(); });
    connect(header, &QHeaderView::sectionMoved, this, [this] { placeFields(); });
    connect(header, &QHeaderView::sectionClicked, this, [this](int column) {
        sortBy(column, m_model->order().sortColumn() == column && !m_model->order().isDown());
    });
    connect(m_view->horizontalScrollBar(), &QScrollBar::valueChanged, this,
            [this] { placeFields(); });
    connect(m_view, &QTableView::doubleClicked, this, [this] { opened(); });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
        if (!m_quiet)
            selectionChanged();
    });
    m_view->installEventFilter(this);
    setFocusProxy(m_view);
    applyWidths();
}

RowTable::~RowTable() {
    // The view's own end must not report to a model that is gone.
    m_view->setModel(nullptr);
}

void RowTable::setCurrencySymbol(const QString& symbol) {
    m_model->setCurrencySymbol(symbol);
}

// Rows

/// Changes what is shown and selects again what stays.
template <class Change>
void RowTable::keeping(Change change) {
    std::vector<qint64> selected;
    for (const auto& [first, last] : selectedPlaces()) {
        for (int place = first; place <= last && selected.size() <= mostKept; ++place)
            selected.push_back(m_model->keyAt(place));
    }
    if (selected.size() > mostKept)
        selected.clear();
    const qint64 current = m_model->keyAt(m_view->currentIndex().row());
    m_quiet = true;
    change();
    putBack(selected, current);
    m_quiet = false;
    rowsChanged();
}

void RowTable::putBack(const std::vector<qint64>& selected, qint64 current) {
    const int column = m_view->horizontalHeader()->logicalIndex(0);
    const int place = current != 0 ? m_model->placeOfKey(current) : -1;
    QItemSelection again;
    for (const qint64 key : selected) {
        if (const int at = m_model->placeOfKey(key); at >= 0)
            again.select(m_model->index(at, 0), m_model->index(at, m_model->columnCount() - 1));
    }
    QItemSelectionModel* selection = m_view->selectionModel();
    if (m_model->rowCount() > 0)
        selection->setCurrentIndex(m_model->index(std::max(place, 0), column),
                                   QItemSelectionModel::NoUpdate);
    selection->select(again, QItemSelectionModel::ClearAndSelect);
    if (place >= 0)
        m_view->scrollTo(m_model->index(place, column));
}

void RowTable::setStore(std::shared_ptr<const rows::Store> store) {
    const int scrolled = m_view->verticalScrollBar()->value();
    keeping([&] { m_model->setStore(std::move(store)); });
    m_view->verticalScrollBar()->setValue(scrolled);
}

void RowTable::setFilter(int column, const QString& typed) {
    field(column)->setText(typed);
    keeping([&] { m_model->setFilter(column, typed); });
}

void RowTable::clearFilters() {
    keeping([&] {
        for (std::size_t i = 0; i < m_fields.size(); ++i) {
            m_fields[i]->clear();
            if (!m_model->order().filter(static_cast<int>(i)).isEmpty())
                m_model->setFilter(static_cast<int>(i), {});
        }
    });
}

void RowTable::sortBy(int column, bool down) {
    m_view->horizontalHeader()->setSortIndicator(column,
                                                 down ? Qt::DescendingOrder : Qt::AscendingOrder);
    keeping([&] { m_model->sortBy(column, down); });
}

qint64 RowTable::currentKey() const {
    return m_model->keyAt(std::max(0, m_view->currentIndex().row()));
}

std::vector<std::pair<int, int>> RowTable::selectedPlaces() const {
    std::vector<std::pair<int, int>> ranges;
    const QItemSelection selection = m_view->selectionModel()->selection();
    for (const QItemSelectionRange& range : selection)
        ranges.emplace_back(range.top(), range.bottom());
    std::sort(ranges.begin(), ranges.end());
    return ranges;
}

// Columns

bool RowTable::isColumnShown(int column) const {
    return !m_view->isColumnHidden(column);
}

void RowTable::showColumn(int column, bool shown) {
    // One at least stays, or nobody could bring the others back.
    if (!shown && shownColumns().size() <= 1)
        return;
    m_view->setColumnHidden(column, !shown);
    if (!shown)
        setFilter(column, {}); // what can't be seen doesn't hide rows
    placeFields();
}

std::vector<int> RowTable::shownColumns() const {
    std::vector<int> columns;
    const QHeaderView* header = m_view->horizontalHeader();
    for (int place = 0; place < header->count(); ++place) {
        const int column = header->logicalIndex(place);
        if (!header->isSectionHidden(column))
            columns.push_back(column);
    }
    return columns;
}

void RowTable::applyWidths() {
    const QFontMetrics metrics = m_view->fontMetrics();
    m_view->verticalHeader()->setDefaultSectionSize(metrics.height() + 6);
    QHeaderView* header = m_view->horizontalHeader();
    for (int column = 0; column < m_model->columnCount(); ++column) {
        const int asked = metrics.averageCharWidth() *
                              m_model->columns()[static_cast<std::size_t>(column)].characters +
                          12;
        header->resizeSection(column, std::max(asked, header->sectionSizeHint(column) + 4));
    }
    m_strip->setFixedHeight(m_fields.empty() ? 0 : m_fields.front()->sizeHint().height());
    placeFields();
}

void RowTable::placeFields() {
    const QHeaderView* header = m_view->horizontalHeader();
    const int left =
        m_view->frameWidth() +
        (m_view->verticalHeader()->isVisible() ? m_view->verticalHeader()->width() : 0);
    QWidget* before = nullptr;
    for (const int column : shownColumns()) {
        QLineEdit* edit = field(column);
        edit->setGeometry(left + header->sectionViewportPosition(column), 0,
                          header->sectionSize(column), m_strip->height());
        edit->show();
        if (before)
            setTabOrder(before, edit);
        before = edit;
    }
    for (int column = 0; column < m_model->columnCount(); ++column) {
        if (header->isSectionHidden(column))
            field(column)->hide();
    }
    if (before)
        setTabOrder(before, m_view);
}

QString RowTable::arrangement(bool withFilters) const {
    QJsonArray columns;
    QJsonObject filters;
    const auto& all = m_model->columns();
    for (const int column : shownColumns()) {
        const QString& title = all[static_cast<std::size_t>(column)].title;
        columns.append(QJsonArray{title, m_view->columnWidth(column)});
        if (const QString typed = m_model->order().filter(column); !typed.isEmpty())
            filters.insert(title, typed);
    }
    const int sorted = m_model->order().sortColumn();
    QJsonObject made{{u"columns"_s, columns},
                     {u"sort"_s, sorted < 0 ? QString()
                                            : (m_model->order().isDown() ? u"-"_s : u"+"_s) +
                                                  all[static_cast<std::size_t>(sorted)].title}};
    if (withFilters)
        made.insert(u"filters"_s, filters);
    return QString::fromUtf8(QJsonDocument(made).toJson(QJsonDocument::Compact));
}

void RowTable::arrange(const QString& arrangement) {
    const QJsonObject given = QJsonDocument::fromJson(arrangement.toUtf8()).object();
    const auto columnOf = [this](const QString& title) {
        const auto& all = m_model->columns();
        const auto found = std::find_if(
            all.begin(), all.end(), [&](const RowColumn& column) { return column.title == title; });
        return found == all.end() ? -1 : static_cast<int>(found - all.begin());
    };
    QHeaderView* header = m_view->horizontalHeader();
    std::vector<std::pair<int, int>> shown; // column and width
    const QJsonArray columns = given[u"columns"_s].toArray();
    for (const auto& each : columns) {
        if (const int column = columnOf(each.toArray().at(0).toString()); column >= 0)
            shown.emplace_back(column, each.toArray().at(1).toInt());
    }
    if (!shown.empty()) {
        for (int column = 0; column < m_model->columnCount(); ++column)
            header->setSectionHidden(column, true);
        int place = 0;
        for (const auto& [column, width] : shown) {
            header->setSectionHidden(column, false);
            header->moveSection(header->visualIndex(column), place++);
            if (width > 0)
                header->resizeSection(column, width);
        }
    }
    const QJsonObject filters = given[u"filters"_s].toObject();
    keeping([&] {
        if (given.contains(u"sort"_s)) {
            const QString sort = given[u"sort"_s].toString();
            const int sorted = sort.isEmpty() ? -1 : columnOf(sort.mid(1));
            const bool downwards = sort.startsWith(u'-');
            header->setSortIndicator(sorted, downwards ? Qt::DescendingOrder : Qt::AscendingOrder);
            m_model->sortBy(sorted, downwards);
        }
        for (int column = 0; given.contains(u"filters"_s) && column < m_model->columnCount();
             ++column) {
            const QString typed =
                filters[m_model->columns()[static_cast<std::size_t>(column)].title].toString();
            field(column)->setText(typed);
            if (!typed.isEmpty())
                header->setSectionHidden(column, false); // what hides rows is in sight
            if (m_model->order().filter(column) != typed)
                m_model->setFilter(column, typed);
        }
    });
    placeFields();
}

// Keys and the context menu

bool RowTable::eventFilter(QObject* object, QEvent* event) {
    if (object == m_view) {
        if (event->type() == QEvent::ContextMenu) {
            const auto* asked = static_cast<QContextMenuEvent*>(event);
            openMenu(asked->reason() == QContextMenuEvent::Keyboard
                         ? m_view->visualRect(m_view->currentIndex()).center()
                         : m_view->viewport()->mapFromGlobal(asked->globalPos()));
            return true;
        }
        return rowsKey(event) || QWidget::eventFilter(object, event);
    }
    const auto found = std::find(m_fields.begin(), m_fields.end(), object);
    if (found != m_fields.end() && fieldKey(static_cast<int>(found - m_fields.begin()), event))
        return true;
    return QWidget::eventFilter(object, event);
}

bool RowTable::fieldKey(int column, QEvent* event) {
    if (event->type() == QEvent::FocusIn) {
        // Behind the edge a field comes into sight with its column.
        if (m_model->rowCount() > 0)
            m_view->scrollTo(m_model->index(std::max(0, m_view->rowAt(0)), column));
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    switch (key->key()) {
    case Qt::Key_Down:
        if (m_model->rowCount() > 0)
            m_view->selectRow(std::max(0, m_view->currentIndex().row()));
        m_view->setFocus(Qt::OtherFocusReason);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (m_model->rowCount() > 0)
            opened();
        return true;
    case Qt::Key_Escape:
        if (field(column)->text().isEmpty())
            return false;
        setFilter(column, {});
        return true;
    default:
        return false;
    }
}

bool RowTable::rowsKey(QEvent* event) {
    if (event->type() == QEvent::ShortcutOverride) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Find))
            event->accept();
        return false;
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto* key = static_cast<QKeyEvent*>(event);
    const auto toField = [this](bool words) -> QLineEdit* {
        const std::vector<int> shown = shownColumns();
        int column = m_view->currentIndex().column();
        if (column < 0 || !isColumnShown(column))
            column = shown.front();
        const auto holdsText = [this](int each) {
            return m_model->columns()[static_cast<std::size_t>(each)].kind == rows::Kind::Text;
        };
        // Words make no sense in a column of numbers.
        if (words && !holdsText(column)) {
            const auto found = std::find_if(shown.begin(), shown.end(), holdsText);
            column = found == shown.end() ? column : *found;
        }
        field(column)->setFocus(Qt::ShortcutFocusReason);
        return field(column);
    };
    if (key->matches(QKeySequence::Copy)) {
        copy();
    } else if (key->matches(QKeySequence::Find)) {
        toField(false)->selectAll();
    } else if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
        if (m_model->rowCount() > 0)
            opened();
    } else if (key->key() == Qt::Key_Escape) {
        event->ignore();
        return false;
    } else if (!key->text().isEmpty() && key->text().front().isPrint() &&
               key->text().front() != u' ' &&
               !(key->modifiers() & (Qt::ControlModifier | Qt::AltModifier))) {
        QLineEdit* edit = toField(key->text().front().isLetter());
        edit->end(false);
        edit->insert(key->text());
        edit->textEdited(edit->text());
    } else {
        return false;
    }
    return true;
}

void RowTable::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    placeFields();
}

void RowTable::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange)
        applyWidths();
}

void RowTable::openMenu(const QPoint& place) {
    m_menu->clear();
    menuAsked(*m_menu);
    const bool any = m_model->rowCount() > 0;
    m_menu->addSeparator();
    m_menu->add(
        u"&Copy Rows"_s, [this] { copy(); }, m_view->selectionModel()->hasSelection());
    m_menu->showKey(QKeySequence(QKeySequence::Copy).toString());
    m_menu->add(
        u"Save List as CS&V..."_s, [this] { saveCsv(); }, any);
    m_menu->open(m_view->viewport()->mapToGlobal(place));
}

void RowTable::copy() const {
    const std::vector<int> columns = shownColumns();
    QStringList lines;
    QStringList cells;
    for (const int column : columns)
        cells << m_model->columns()[static_cast<std::size_t>(column)].title;
    lines << cells.join(u'\t');
    for (const auto& [first, last] : selectedPlaces()) {
        for (int place = first; place <= last; ++place) {
            cells.clear();
            for (const int column : columns)
                cells << m_model->textAt(place, column).simplified();
            lines << cells.join(u'\t');
        }
    }
    if (lines.size() > 1)
        QGuiApplication::clipboard()->setText(lines.join(u'\n'));
}

QByteArray RowTable::csv() const {
    const std::vector<int> columns = shownColumns();
    QString text{QChar(QChar::ByteOrderMark)};
    const auto addLine = [&](const auto& addCell) {
        bool first = true;
        for (const int column : columns) {
            if (!std::exchange(first, false))
                text += u',';
            addCell(column);
        }
        text += u"\r\n";
    };
    addLine([&](int column) {
        values::appendCsvText(text, m_model->columns()[static_cast<std::size_t>(column)].title);
    });
    const rows::Store* store = m_model->order().store().get();
    for (int place = 0; place < m_model->rowCount(); ++place) {
        addLine([&](int column) {
            const QString shown = store->shown(column, m_model->order().row(place));
            const rows::Kind kind = store->kind(column);
            if (kind == rows::Kind::Date)
                text += values::isoDate(shown);
            else if (kind == rows::Kind::Text || kind == rows::Kind::YesNo)
                values::appendCsvText(text, shown);
            else
                text += QString(shown).remove(u',');
        });
    }
    return text.toUtf8();
}

void RowTable::saveCsv() const {
    if (fileSaver())
        fileSaver()(m_view->accessibleName() + u".csv"_s, [this] { return csv(); });
}

} // namespace controls
