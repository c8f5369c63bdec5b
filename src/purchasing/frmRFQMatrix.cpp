#include "purchasing/frmRFQMatrix.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Seams.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QPainter>
#include <QSaveFile>
#include <QVBoxLayout>

namespace purchasing {

using controls::GridColumn;
using Kind = GridColumn::Kind;

namespace {

constexpr int columnsOfLine = 4; ///< part, description, quantity, units
constexpr int offerColumns = 3;

QIcon lowestIcon() {
    QPixmap picture(32, 32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x2e9e44));
    painter.drawPolygon(QPolygon({{4, 8}, {28, 8}, {16, 26}}));
    painter.end();
    return QIcon(picture);
}

QString money(values::Currency amount, const QString& mask) {
    return values::format(amount, core::moneyMask(mask));
}

} // namespace

frmRFQMatrix::frmRFQMatrix() : Form(QString::fromLatin1(formName), u"Vendor Comparison"_s) {
    auto* outside = new QVBoxLayout(this);
    sprMatrix = screen::named(new controls::Grid(this), u"sprMatrix"_s, u"Offers"_s);
    sprMatrix->setSelectionBehavior(QAbstractItemView::SelectItems);
    outside->addWidget(sprMatrix, 1);
    screen::ButtonBar bar(this, outside);
    auto* cmdCreatePO = bar.button(u"cmdCreatePO"_s, u"Create a &PO"_s);
    auto* cmdPrint = bar.button(u"cmdPrint"_s, u"P&rint"_s);
    auto* cmdExport = bar.button(u"cmdExport"_s, u"&Export..."_s);
    bar.stretch();
    auto* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdClose);
    on(cmdCreatePO, &frmRFQMatrix::cmdCreatePO_Click);
    on(cmdPrint, [this] {
        core::launchReportFile(u"RFQ_Comparison.rpt"_s,
                               u"{rfq.ponumber} = "_s + QString::number(m_group),
                               u"Vendor Comparison"_s, this);
    });
    on(cmdExport, &frmRFQMatrix::cmdExport_Click);
    on(cmdClose, [this] { hideModal(); });
    resize(1100, 520);
}

std::optional<QString> frmRFQMatrix::choose(qint64 group) {
    m_group = group;
    m_matrix = loadMatrix(core::MainDatabase(), group);
    setWindowTitle(u"Vendor Comparison of RFQ Group "_s + QString::number(group));
    fill();
    sprMatrix->setFocus();
    showModal();
    return m_chosen;
}

void frmRFQMatrix::fill() {
    std::vector<GridColumn> columns{
        {u"Part #"_s, 16}, {u"Description"_s, 26}, {u"Qty"_s, 7, Kind::Number}, {u"Units"_s, 6}};
    for (const Bidder& bidder : m_matrix.vendors) {
        columns.push_back({bidder.company, 18, Kind::Number});
        columns.push_back({u"Total"_s, 14, Kind::Number});
        columns.push_back({u"Delivery"_s, 16});
    }
    sprMatrix->setColumns(std::move(columns));

    std::vector<QStringList> rows;
    for (const auto& line : m_matrix.lines) {
        QStringList cells{line.partNumber, line.description, QString::number(line.quantity),
                          line.units};
        for (const Offer& offer : line.offers) {
            cells << (offer.quoted ? money(offer.unitPrice, u"########.0000"_s) : u"no quote"_s)
                  << (offer.quoted ? money(offer.total, u"###########.00"_s) : QString())
                  << offer.delivery;
        }
        rows.push_back(std::move(cells));
    }
    QStringList totals{u"Total"_s, {}, {}, {}};
    QStringList history{u"Last receipt"_s, {}, {}, {}};
    QStringList onTime{u"On time"_s, {}, {}, {}};
    for (const Bidder& bidder : m_matrix.vendors) {
        totals << (bidder.complete ? QString() : u"not all quoted"_s)
               << money(bidder.total, u"###########.00"_s) << QString();
        history << ageText(bidder.lastReceipt, values::today()) << QString() << QString();
        onTime << (bidder.onTime ? values::format(*bidder.onTime * 100, u"##0") + u" %"_s
                                 : QString())
               << QString() << QString();
    }
    const int totalRow = static_cast<int>(rows.size());
    rows.push_back(std::move(totals));
    rows.push_back(std::move(history));
    rows.push_back(std::move(onTime));
    sprMatrix->setRows(std::move(rows));

    const QIcon lowest = lowestIcon();
    for (int v = 0; v < static_cast<int>(m_matrix.vendors.size()); ++v) {
        const auto place = static_cast<std::size_t>(v);
        const int column = columnsOfLine + v * offerColumns;
        for (int row = 0; row < totalRow; ++row) {
            if (m_matrix.lines[static_cast<std::size_t>(row)].offers[place].lowest)
                sprMatrix->setPicture(row, column, lowest, u"lowest"_s);
        }
        if (m_matrix.vendors[place].lowest)
            sprMatrix->setPicture(totalRow, column + 1, lowest, u"lowest of all"_s);
    }
    if (sprMatrix->columnCount() > columnsOfLine)
        sprMatrix->setCurrentIndex(sprMatrix->model()->index(0, columnsOfLine));
}

int frmRFQMatrix::activeVendor() const {
    const int column = sprMatrix->currentIndex().column();
    return column < columnsOfLine ? -1 : (column - columnsOfLine) / offerColumns;
}

void frmRFQMatrix::cmdCreatePO_Click() {
    const int vendor = activeVendor();
    if (vendor < 0) {
        screen::MsgBox(u"Please select a cell of the vendor."_s, screen::Buttons::Ok,
                       screen::Icon::Information);
        return;
    }
    m_chosen = m_matrix.vendors[static_cast<std::size_t>(vendor)].key;
    hideModal();
}

void frmRFQMatrix::cmdExport_Click() {
    QString path = screen::seams().saveFile(
        u"Export"_s, u"RFQ "_s + QString::number(m_group) + u" vendors.csv"_s,
        u"Comma-separated files (*.csv)"_s);
    if (path.isEmpty())
        return;
    if (!path.endsWith(u".csv"_s, Qt::CaseInsensitive))
        path += u".csv"_s;
    QSaveFile file(path);
    const QByteArray text = matrixCsv(m_matrix).toUtf8();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || !file.commit()) {
        screen::MsgBox(u"The file can't be written: "_s + file.errorString(), screen::Buttons::Ok,
                       screen::Icon::Exclamation);
    }
}

} // namespace purchasing
