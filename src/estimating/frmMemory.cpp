#include "estimating/frmMemory.h"

#include "core/MirsaMain.h"
#include "platform/screen/Layout.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"

#include <QCloseEvent>
#include <QLabel>
#include <QPushButton>
#include <QTabWidget>
#include <QVBoxLayout>

#include <cmath>

namespace estimating {

using controls::GridColumn;
using Kind = GridColumn::Kind;

namespace {

constexpr qint64 patienceMilliseconds = 10000;

enum LineColumn {
    Operation,
    Of,
    Jobs,
    Pieces,
    Estimated,
    Booked,
    BookedHalf,
    Each,
    EachHalf,
    ForLot,
    CostEach,
    Scrap
};
enum JobColumn { JobNo, JobPart, JobShipped, JobPieces, JobEstimated, JobBooked, JobEach, JobLot };

QString figure(double value) {
    return values::format(value, u"#,##0.00");
}

QString fineFigure(double value) {
    return values::format(value, u"#,##0.000");
}

QString whole(double value) {
    return values::format(value, u"#,##0");
}

QString half(const Spread& spread, QString (*text)(double)) {
    return spread.count > 1 ? text(spread.low) + u" - "_s + text(spread.high) : QString();
}

QString scrapText(double scrap, double pieces) {
    if (scrap <= 0)
        return u"0"_s;
    return pieces > 0
               ? u"%1 (%2%)"_s.arg(whole(scrap), values::format(100 * scrap / pieces, u"##0.0"))
               : whole(scrap);
}

QString outcomeText(const QuotedBefore& quote) {
    using Outcome = QuotedBefore::Outcome;
    switch (quote.outcome) {
    case Outcome::Won:
        return u"Won, job "_s + QString::number(quote.jobNo);
    case Outcome::Lost:
        return u"Lost"_s;
    case Outcome::Open:
        return u"Open"_s;
    case Outcome::NotQuoted:
        break;
    }
    return u"Not quoted"_s;
}

QString pricesText(const QuotedBefore& quote, bool money) {
    QStringList texts;
    for (const QuotedPrice& price : quote.prices)
        texts << (money ? u"%1 at %2"_s.arg(whole(price.quantity),
                                            values::format(price.each, u"#,##0.00##"))
                        : whole(price.quantity));
    return texts.join(u"; "_s);
}

QString dateText(const std::optional<QDate>& date) {
    return date ? values::format(*date, u"Short Date") : QString();
}

controls::Grid* grid(QWidget* parent, const QString& name, const QString& spoken,
                     std::vector<GridColumn> columns) {
    auto* made = screen::named(new controls::Grid(parent), name, spoken);
    made->setColumns(std::move(columns));
    // A figure is chosen by its cell.
    made->setSelectionBehavior(QAbstractItemView::SelectItems);
    made->setSelectionMode(QAbstractItemView::SingleSelection);
    return made;
}

} // namespace

frmMemory::frmMemory() : Form(QString::fromLatin1(formName), u"Memory of the Shop"_s) {
    auto* outside = new QVBoxLayout(this);
    outside->setContentsMargins(6, 6, 6, 6);
    outside->setSpacing(4);
    sprMemory = grid(this, u"sprMemory"_s, u"What it took before"_s,
                     {{.title = u"Operation"_s, .characters = 22, .stretches = true},
                      {u"In"_s, 9},
                      {u"Jobs"_s, 6, Kind::Number},
                      {u"Pieces"_s, 8, Kind::Number},
                      {u"Estimated"_s, 10, Kind::Number},
                      {u"Booked"_s, 9, Kind::Number},
                      {u"Half Between"_s, 17, Kind::Number},
                      {u"A Piece"_s, 9, Kind::Number},
                      {u"Half Between"_s, 17, Kind::Number},
                      {u"This Lot"_s, 9, Kind::Number},
                      {u"Cost Each"_s, 10, Kind::Number},
                      {u"Scrap"_s, 12, Kind::Number}});
    outside->addWidget(sprMemory, 3);
    SSTabBehind = screen::named(new QTabWidget(this), u"SSTabBehind"_s, u"What is behind it"_s);
    outside->addWidget(SSTabBehind, 2);
    QWidget* jobs = screen::tab(SSTabBehind, u"Jobs Behind the Line"_s);
    auto* jobsLayout = new QVBoxLayout(jobs);
    sprJobs = grid(jobs, u"sprJobs"_s, u"Jobs behind the line"_s,
                   {{u"Job #"_s, 8, Kind::Number},
                    {.title = u"Part #"_s, .characters = 16, .stretches = true},
                    {u"Shipped"_s, 11},
                    {u"Pieces"_s, 8, Kind::Number},
                    {u"Estimated"_s, 10, Kind::Number},
                    {u"Booked"_s, 10, Kind::Number},
                    {u"A Piece"_s, 10, Kind::Number},
                    {u"This Lot"_s, 10, Kind::Number},
                    {u"Cost Each"_s, 10, Kind::Number},
                    {u"Scrap"_s, 8, Kind::Number},
                    {u"State"_s, 16}});
    jobsLayout->addWidget(sprJobs);
    QWidget* quotes = screen::tab(SSTabBehind, u"Quoted Before"_s);
    auto* quotesLayout = new QVBoxLayout(quotes);
    sprQuotes = grid(quotes, u"sprQuotes"_s, u"What was quoted before"_s,
                     {{u"Est. #"_s, 8, Kind::Number},
                      {u"Date"_s, 11},
                      {u"Customer"_s, 24},
                      {u"Quantity"_s, 10, Kind::Number},
                      {.title = u"Quoted"_s, .characters = 40, .stretches = true},
                      {u"Outcome"_s, 18}});
    quotesLayout->addWidget(sprQuotes);
    for (QBoxLayout* page : {jobsLayout, quotesLayout})
        page->setContentsMargins(2, 2, 2, 2);
    lblState = screen::named(new QLabel(this), u"lblState"_s, u"State of the memory"_s);
    lblState->setWordWrap(true);
    outside->addWidget(lblState);
    screen::ButtonBar bar(this, outside);
    cmdBring = bar.button(u"cmdBring"_s, u"&Bring into the Estimate"_s);
    cmdBring->setToolTip(u"The figure of the cell, or what this lot would take (Enter, or a click "
                         "on the figure)"_s);
    QPushButton* cmdBack = bar.button(u"cmdBack"_s, u"Bac&k to the Estimate"_s);
    cmdBack->setToolTip(u"Esc; Ctrl+M comes here again"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setCancelButton(cmdBack);

    on(cmdBring, &frmMemory::cmdBring_Click);
    on(cmdBack, &frmMemory::cmdBack_Click);
    on(cmdClose, [this] {
        m_byUser = true;
        unload();
    });
    on(sprMemory->activeRowChanged, [this](int) { showJobs(); });
    on(sprMemory->cellClicked, [this](int row, int column) {
        if (column >= Estimated)
            bring(figureOfLine(row, column));
    });
    on(sprJobs->cellClicked, [this](int row, int column) { bring(figureOfJob(row, column)); });
    for (controls::Grid* one : {sprMemory, sprJobs})
        on(one->rowDoubleClicked, [this, one](int) { bringCell(one); });
}

QSize frmMemory::sizeHint() const {
    return {1080, 320};
}

void frmMemory::Form_Load() {
    m_byUser = false;
    m_isRead = false;
    m_isAsked = false;
    m_failure.clear();
    m_failed.invalidate();
    m_shown = {};
    m_background = std::make_unique<core::Background>(core::MainDatabase().name(), this);
    show({});
}

bool frmMemory::Form_QueryUnload() {
    if (m_byUser && m_host.closedByUser)
        m_host.closedByUser();
    m_background.reset();
    return true;
}

/// By its frame; the estimate's own end goes another way.
void frmMemory::closeEvent(QCloseEvent* event) {
    m_byUser = true;
    Form::closeEvent(event);
}

// Reading

void frmMemory::follow(const MemoryShown& shown) {
    // A line that broke is tried again, not at each step of the user.
    const bool tryAgain = m_failed.isValid() && m_failed.hasExpired(patienceMilliseconds);
    const bool asked = shown.question != m_shown.question || !m_isAsked || tryAgain;
    const bool otherLot = shown.quantity != m_shown.quantity;
    const bool moved = shown.activeOper != m_shown.activeOper;
    m_shown = shown;
    if (asked)
        read();
    else if (otherLot)
        showLines();
    if (moved && !asked)
        selectActive();
    showState();
}

void frmMemory::read() {
    if (!m_background)
        return;
    m_isRead = false;
    m_isAsked = true;
    m_failure.clear();
    m_failed.invalidate();
    auto memory = std::make_shared<Memory>();
    m_background->run([memory, question = m_shown.question, today = values::today()](
                          jet::Database& database,
                          const core::Background&) { *memory = recall(database, question, today); },
                      [this, memory, question = m_shown.question](const QString& failure) {
                          guarded([&] {
                              if (question != m_shown.question)
                                  return; // another answer is on its way
                              m_isRead = failure.isEmpty();
                              m_failure = failure;
                              if (!m_isRead)
                                  m_failed.start();
                              show(std::move(*memory));
                              selectActive();
                          });
                      });
}

// Showing

void frmMemory::show(Memory memory) {
    m_memory = std::move(memory);
    showLines();
    showQuotes();
    showState();
}

QStringList frmMemory::textsOf(const MemoryLine& line) const {
    const bool isPart = line.operation.operNo == 0;
    const bool hidden = !m_shown.question.money && !isPart && !line.operation.inhouse;
    const int count = line.booked.count;
    const auto shown = [&](bool is, const QString& text) {
        return is && count > 0 ? text : QString();
    };
    return {isPart ? u"Part "_s + m_shown.question.partNo : line.operation.description,
            line.samePart ? u"This part"_s : u"All parts"_s,
            QString::number(count),
            shown(true, whole(line.pieces)),
            shown(!hidden, figure(line.estimated.median)),
            shown(!hidden, figure(line.booked.median)),
            shown(!hidden, half(line.booked, figure)),
            shown(!hidden, fineFigure(line.bookedEach.median)),
            shown(!hidden, half(line.bookedEach, fineFigure)),
            shown(!hidden, figure(line.bookedEach.median * lot())),
            shown(m_shown.question.money, figure(line.costEach.median)),
            shown(isPart || line.operation.inhouse, scrapText(line.scrap, line.pieces))};
}

void frmMemory::showLines() {
    const QModelIndex at = sprMemory->currentIndex();
    std::vector<QStringList> rows;
    for (const MemoryLine& line : m_memory.lines)
        rows.push_back(textsOf(line));
    sprMemory->setRows(std::move(rows));
    if (at.isValid() && at.row() < sprMemory->rowCount())
        sprMemory->setCurrentIndex(sprMemory->model()->index(at.row(), at.column()));
    showJobs();
}

const MemoryLine* frmMemory::line() const {
    const int row = sprMemory->activeRow();
    return row >= 0 && row < static_cast<int>(m_memory.lines.size())
               ? &m_memory.lines[static_cast<std::size_t>(row)]
               : nullptr;
}

void frmMemory::showJobs() {
    std::vector<QStringList> rows;
    const MemoryLine* shown = line();
    const bool money = m_shown.question.money;
    const bool hidden =
        shown && !money && shown->operation.operNo != 0 && !shown->operation.inhouse;
    if (shown) {
        for (const Took& job : shown->jobs) {
            const auto amount = [hidden](const QString& text) { return hidden ? QString() : text; };
            rows.push_back({QString::number(job.jobNo), job.partNo, dateText(job.shipped),
                            whole(job.pieces), amount(figure(job.estimated)),
                            amount(figure(job.booked)), amount(fineFigure(job.bookedEach())),
                            amount(figure(job.bookedEach() * lot())),
                            money ? figure(job.costEach) : QString(), whole(job.scrap),
                            job.counts    ? u"In the figures"_s
                            : job.shipped ? u"Nothing booked"_s
                                          : u"Not done yet"_s});
        }
    }
    sprJobs->setRows(std::move(rows));
    showState();
}

void frmMemory::showQuotes() {
    std::vector<QStringList> rows;
    for (const QuotedBefore& quote : m_memory.quotes)
        rows.push_back({QString::number(quote.estNo), dateText(quote.date), quote.company,
                        whole(quote.quantity), pricesText(quote, m_shown.question.money),
                        outcomeText(quote)});
    sprQuotes->setRows(std::move(rows));
    const auto won = std::count_if(
        m_memory.quotes.begin(), m_memory.quotes.end(),
        [](const QuotedBefore& quote) { return quote.outcome == QuotedBefore::Outcome::Won; });
    SSTabBehind->setTabText(
        1, m_memory.quotes.empty()
               ? u"Quoted Before"_s
               : u"Quoted Before: %1, Won %2"_s.arg(m_memory.quotes.size()).arg(won));
}

void frmMemory::showState() {
    const MemoryLine* shown = line();
    cmdBring->setEnabled(m_isRead && m_shown.isEntry && shown && shown->operation.operNo != 0);
    QString state;
    if (!m_failure.isEmpty())
        state = u"Could not be read: "_s + m_failure;
    else if (!m_isRead &&
             (!m_shown.question.operations.empty() || !m_shown.question.partNo.isEmpty()))
        state = u"Reading..."_s;
    else if (m_memory.lines.empty())
        state = u"Enter a part number or an operation into the estimate to see what it took "
                "before."_s;
    else
        state = u"Hours (amounts of contractors), medians of the jobs that are done; this part: "
                "its latest %1 jobs%2; all parts: the latest %3 jobs of the operation."_s
                    .arg(memoryPartJobs)
                    .arg(m_memory.partIsCut ? u", there are more"_s : QString())
                    .arg(memoryOperationJobs);
    if (lblState->text() != state)
        lblState->setText(state);
}

/// The line of the operation where the user is; of the part, where that knows it.
void frmMemory::selectActive() {
    int best = -1;
    for (int row = 0; row < static_cast<int>(m_memory.lines.size()); ++row) {
        const MemoryLine& line = m_memory.lines[static_cast<std::size_t>(row)];
        if (line.operation.operNo != m_shown.activeOper || m_shown.activeOper == 0)
            continue;
        const bool known =
            best >= 0 && m_memory.lines[static_cast<std::size_t>(best)].booked.count > 0;
        if (best < 0 || (!known && line.booked.count > 0))
            best = row;
    }
    if (best < 0)
        return;
    sprMemory->setCurrentIndex(sprMemory->model()->index(best, ForLot));
    sprMemory->scrollTo(sprMemory->currentIndex());
}

// Bringing

std::optional<double> frmMemory::figureOfLine(int row, int column) const {
    const MemoryLine& line = m_memory.lines[static_cast<std::size_t>(row)];
    if (line.booked.count == 0 || sprMemory->text(row, ForLot).isEmpty())
        return std::nullopt;
    switch (column) {
    case Estimated:
        return line.estimated.median;
    case Booked:
        return line.booked.median;
    case ForLot:
        return line.bookedEach.median * lot();
    default:
        return std::nullopt;
    }
}

std::optional<double> frmMemory::figureOfJob(int row, int column) const {
    const MemoryLine* shown = line();
    if (!shown || sprJobs->text(row, JobLot).isEmpty())
        return std::nullopt;
    const Took& job = shown->jobs[static_cast<std::size_t>(row)];
    switch (column) {
    case JobEstimated:
        return job.estimated;
    case JobBooked:
        return job.booked;
    case JobLot:
        return job.bookedEach() * lot();
    default:
        return std::nullopt;
    }
}

void frmMemory::bring(std::optional<double> figure) {
    const MemoryLine* shown = line();
    // What is still shown while another part is read belongs to the last one.
    if (m_isRead && figure && shown && shown->operation.operNo != 0 && m_shown.isEntry &&
        m_host.bring)
        m_host.bring(shown->operation.operNo, std::round(*figure * 100) / 100); // as it is shown
}

void frmMemory::bringCell(const controls::Grid* grid) {
    const QModelIndex at = grid->currentIndex();
    if (!at.isValid())
        return;
    const bool ofJobs = grid == sprJobs;
    const auto figureOf = [&](int column) {
        return ofJobs ? figureOfJob(at.row(), column) : figureOfLine(at.row(), column);
    };
    const std::optional<double> chosen = figureOf(at.column());
    bring(chosen ? chosen : figureOf(ofJobs ? int(JobLot) : int(ForLot)));
}

void frmMemory::cmdBring_Click() {
    bringCell(sprMemory);
}

void frmMemory::cmdBack_Click() {
    if (m_host.goBack)
        m_host.goBack();
}

} // namespace estimating
