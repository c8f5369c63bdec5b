#include "platform/controls/GridModel.h"
#include "platform/values/Literals.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QHash>
#include <QHeaderView>
#include <QTimer>

#include <algorithm>

namespace controls {

namespace {

struct Kept {
    std::vector<int> widths;
    int sortColumn = -1;
    Qt::SortOrder order = Qt::AscendingOrder;
};

QHash<QString, Kept>& keptLooks() {
    static QHash<QString, Kept> looks;
    return looks;
}

} // namespace

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
        m_userWidths = true;
        stretch();
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
    if (!m_userWidths) {
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
    for (const QWidget* above = m_view.parentWidget(); above; above = above->parentWidget()) {
        if (above->objectName().startsWith(u"frm", Qt::CaseInsensitive))
            return above->objectName().toLower() + u'/' + m_view.objectName();
    }
    return {};
}

void GridLooks::shown() {
    const auto kept = keptLooks().constFind(place());
    if (m_restored || kept == keptLooks().constEnd())
        return;
    m_restored = true;
    if (int(kept->widths.size()) == m_model.columnCount()) {
        m_applying = true;
        for (int column = 0; column < m_model.columnCount(); ++column)
            m_view.setColumnWidth(column, kept->widths[size_t(column)]);
        m_applying = false;
        m_userWidths = true;
    }
    if (m_sortable && kept->sortColumn >= 0 && kept->sortColumn < m_model.columnCount())
        m_view.sortByColumn(kept->sortColumn, kept->order);
}

void GridLooks::hidden() {
    const QString name = place();
    const auto* header = m_view.horizontalHeader();
    const int sortColumn = m_sortable ? header->sortIndicatorSection() : -1;
    if (name.isEmpty() || (!m_userWidths && sortColumn < 0))
        return;
    Kept kept{{}, sortColumn, header->sortIndicatorOrder()};
    for (int column = 0; m_userWidths && column < m_model.columnCount(); ++column)
        kept.widths.push_back(m_view.columnWidth(column));
    keptLooks().insert(name, kept);
}

void GridLooks::copy() const {
    auto chosen = m_view.selectionModel()->selectedIndexes();
    if (chosen.isEmpty())
        return;
    std::sort(chosen.begin(), chosen.end());
    QString lines;
    int row = chosen.first().row();
    bool atStart = true;
    for (const QModelIndex& cell : std::as_const(chosen)) {
        if (m_view.isColumnHidden(cell.column()))
            continue;
        if (cell.row() != row)
            lines += u'\n';
        else if (!atStart)
            lines += u'\t';
        row = cell.row();
        atStart = false;
        const bool isCheck = m_model.column(cell.column()).kind == GridColumn::Kind::Check;
        QString text = cell.data(isCheck ? Qt::EditRole : Qt::DisplayRole).toString();
        lines += text.replace(u"\r\n"_s, u" "_s).replace(u'\n', u' ').replace(u'\t', u' ');
    }
    QGuiApplication::clipboard()->setText(lines);
}

} // namespace controls
