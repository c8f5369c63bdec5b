#include "platform/controls/GridModel.h"
#include "platform/controls/Look.h"
#include "platform/system/Remembered.h"
#include "platform/values/Literals.h"

#include <QHeaderView>
#include <QSet>
#include <QTableView>
#include <QTimer>

namespace controls {

GridLooks::GridLooks(QTableView& view, GridModel& model) : m_view(view), m_model(model) {
    view.setModel(&model);
    view.setAlternatingRowColors(true);
    view.setWordWrap(false);
    view.setTabKeyNavigation(false);
    view.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    view.verticalHeader()->hide();
    view.verticalHeader()->setMinimumSectionSize(8);
    auto* header = view.horizontalHeader();
    header->setStretchLastSection(true);
    header->setHighlightSections(false);
    header->setSectionsClickable(false);
    QObject::connect(header, &QHeaderView::sectionResized, &view, [this, header](int column) {
        // The last section fills what is left; that is not the user's doing.
        const bool fills = header->visualIndex(column) == header->count() - 1;
        if (m_applying || fills || !m_view.isVisible())
            return;
        m_userColumns = true;
        stretch();
    });
    QObject::connect(header, &QHeaderView::sectionMoved, &view, [this] {
        if (!m_applying)
            m_userColumns = true;
    });
    QObject::connect(header, &QHeaderView::sortIndicatorChanged, &view, [this](int column) {
        if (column >= 0)
            m_userSort = true;
    });
    QObject::connect(&model, &QAbstractItemModel::rowsInserted, &view,
                     [this] { sortAgainLater(); });
    QObject::connect(&model, &QAbstractItemModel::modelReset, &view, [this] { sortAgainLater(); });
    applyWidths();
}

void GridLooks::applyWidths() {
    m_applying = true;
    const QFontMetrics metrics = m_view.fontMetrics();
    m_view.verticalHeader()->setDefaultSectionSize(metrics.height() + 6);
    auto* header = m_view.horizontalHeader();
    // Where one types from cell to cell the columns stay in their order.
    header->setSectionsMovable(m_sortable && !m_model.hasEditableColumn());
    if (!m_userColumns) {
        for (int column = 0; column < m_model.columnCount(); ++column) {
            const int asked = metrics.averageCharWidth() * m_model.column(column).characters + 12;
            header->resizeSection(column, std::max(asked, header->sectionSizeHint(column) + 4));
        }
    }
    m_applying = false;
    stretch();
}

void GridLooks::stretch() {
    auto* header = m_view.horizontalHeader();
    int stretching = -1;
    int others = 0;
    for (int column = 0; column < m_model.columnCount(); ++column) {
        if (m_model.column(column).stretches)
            stretching = column;
        else if (!m_view.isColumnHidden(column))
            others += header->sectionSize(column);
    }
    header->setStretchLastSection(stretching < 0);
    if (stretching < 0 || m_applying)
        return;
    m_applying = true;
    const int asked =
        m_view.fontMetrics().averageCharWidth() * m_model.column(stretching).characters + 12;
    header->resizeSection(stretching, std::max(asked, m_view.viewport()->width() - others));
    m_applying = false;
}

void GridLooks::setSortable(bool sortable) {
    m_sortable = sortable;
    auto* header = m_view.horizontalHeader();
    header->setSectionsClickable(sortable);
    // Without a sorted column the rows stay as they are until somebody clicks.
    header->setSortIndicator(-1, Qt::AscendingOrder);
    m_view.setSortingEnabled(sortable);
    applyWidths();
}

// Where a screen fills rows one by one and tells their keys by place, they must not move under its
// hands; they are put back into the chosen order when its handler is done.
void GridLooks::sortAgainLater() {
    if (!m_sortable || m_sortPending || m_view.horizontalHeader()->sortIndicatorSection() < 0)
        return;
    m_sortPending = true;
    QTimer::singleShot(0, &m_view, [this] {
        m_sortPending = false;
        sortNow();
    });
}

void GridLooks::sortNow() {
    const auto* header = m_view.horizontalHeader();
    if (m_sortable && header->sortIndicatorSection() >= 0)
        m_model.sort(header->sortIndicatorSection(), header->sortIndicatorOrder());
}

QString GridLooks::place() const {
    const QString screen = screenName(&m_view);
    return screen.isEmpty() ? QString()
                            : u"lists/"_s + screen + u'/' + m_view.objectName().toLower();
}

QStringList GridLooks::titles() const {
    QStringList titles;
    for (int column = 0; column < m_model.columnCount(); ++column)
        titles << m_model.column(column).title;
    return titles;
}

void GridLooks::shown() {
    const QString name = place();
    if (m_restored || name.isEmpty())
        return;
    m_restored = true;
    restoreColumns(name);
    restoreSort(name);
}

void GridLooks::restoreColumns(const QString& name) {
    const QStringList kept = platform::remembered(name + u"/columns"_s).toStringList();
    const QStringList here = titles();
    // A program that has other columns by now begins anew.
    QStringList a = kept;
    QStringList b = here;
    a.sort();
    b.sort();
    const QStringList widths = platform::remembered(name + u"/widths"_s).toStringList();
    if (kept.isEmpty() || a != b || widths.size() != kept.size())
        return;
    m_applying = true;
    auto* header = m_view.horizontalHeader();
    QSet<int> placed;
    for (int to = 0; to < kept.size(); ++to) {
        int column = int(here.indexOf(kept[to]));
        while (placed.contains(column)) // of columns without a title, say, the next
            column = int(here.indexOf(kept[to], column + 1));
        placed.insert(column);
        if (header->sectionsMovable())
            header->moveSection(header->visualIndex(column), to);
        if (widths[to].toInt() > 0)
            header->resizeSection(column, widths[to].toInt());
    }
    m_applying = false;
    m_userColumns = true;
}

void GridLooks::restoreSort(const QString& name) {
    const QString sort = platform::remembered(name + u"/sort"_s).toString();
    const int column = int(titles().indexOf(sort.mid(1)));
    if (!m_sortable || sort.isEmpty() || column < 0)
        return;
    m_userSort = true;
    m_view.sortByColumn(column, sort.startsWith(u'-') ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void GridLooks::hidden() {
    const QString name = place();
    if (name.isEmpty())
        return;
    const auto* header = m_view.horizontalHeader();
    const QStringList here = titles();
    if (m_userColumns) {
        QStringList columns;
        QStringList widths;
        for (int at = 0; at < header->count(); ++at) {
            const int column = header->logicalIndex(at);
            columns << here.value(column);
            widths << QString::number(header->sectionSize(column));
        }
        platform::remember(name + u"/columns"_s, columns);
        platform::remember(name + u"/widths"_s, widths);
    }
    const int sorted = m_sortable ? header->sortIndicatorSection() : -1;
    if (m_userSort && sorted >= 0) {
        const bool down = header->sortIndicatorOrder() == Qt::DescendingOrder;
        platform::remember(name + u"/sort"_s, (down ? u"-"_s : u"+"_s) + here.value(sorted));
    }
}

} // namespace controls
