#include "inventory/frmItemCount.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/history/HistoryTargets.h"
#include "inventory/StockEmployees.h"
#include "inventory/StockNewItem.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Clock.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace inventory {

using Kind = controls::GridColumn::Kind;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

const QString system = u"System Message"_s;

QString takeCount(CountLine& line, const QString& typed) {
    const QString text = typed.trimmed();
    bool whole = true;
    const qint64 counted = text.isEmpty() ? 0 : text.toLongLong(&whole);
    if (!whole)
        return u"\"%1\" is not a quantity."_s.arg(text);
    line.counted = text.isEmpty() ? std::nullopt : std::optional(counted);
    return {};
}

std::vector<controls::LineColumn<CountLine>> columns() {
    const auto text = [](const controls::GridColumn& look, QString CountLine::*member) {
        return controls::LineColumn<CountLine>{
            .look = look, .text = [member](const CountLine& line) { return line.*member; }};
    };
    return {{.look = {u"Item"_s, 7, Kind::Number},
             .text = [](const CountLine& line) { return QString::number(line.itemId); }},
            text({.title = u"Description"_s, .characters = 26, .stretches = true},
                 &CountLine::description),
            text({u"Part Number"_s, 16}, &CountLine::partNumber),
            text({u"Location"_s, 16}, &CountLine::location),
            text({u"Units"_s, 7}, &CountLine::units),
            {.look = {u"In Stock"_s, 9, Kind::Number},
             .text = [](const CountLine& line) { return QString::number(line.stock); }},
            {.look = {u"Counted"_s, 9, Kind::Number, true, values::keys::digits(), {}, 9},
             .text =
                 [](const CountLine& line) {
                     return line.counted ? QString::number(*line.counted) : QString();
                 },
             .take = takeCount},
            {.look = {u"Difference"_s, 10, Kind::Number}, .text = [](const CountLine& line) {
                 return line.counted ? QString::number(line.difference()) : QString();
             }}};
}

} // namespace

frmItemCount::frmItemCount() : Form(QString::fromLatin1(formName), u"Count Stock"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtLocation = fields.text(u"txtLocation"_s, u"Location:"_s, screen::wide(44));
    txtLocation->setLocked(true);
    auto* cmdTreeLoc = new QPushButton(u"Select &Location..."_s, this);
    fields.add(cmdTreeLoc, u"cmdTreeLoc"_s);
    fields.nextColumn();
    dbcEmployee = fields.dataCombo(u"dbcEmployee"_s, u"Counted &by:"_s, {.characters = 28});
    txtDate = fields.date(u"txtDate"_s, u"&Date:"_s);
    sprCount = screen::named(new controls::LineGrid<CountLine>(m_lines, columns(), this),
                             u"sprCount"_s, u"Counted items"_s);
    sprCount->setMovable(false);
    outside->addWidget(sprCount, 1);
    lblSum = screen::named(new QLabel(this), u"lblSum"_s);
    outside->addWidget(lblSum);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdPrint = bar.button(u"cmdPrint"_s, u"&Print Count Sheet"_s);
    bar.stretch();
    QPushButton* cmdPost = bar.button(u"cmdPost"_s, u"Post Co&rrections"_s);
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    on(cmdTreeLoc, &frmItemCount::pickLocation);
    on(cmdPrint, &frmItemCount::cmdPrint_Click);
    on(cmdPost, &frmItemCount::cmdPost_Click);
    on(cmdClose, [this] { unload(); });
    on(sprCount->entryTaken, [this](int, int) { showSum(); });
}

QSize frmItemCount::sizeHint() const {
    return {940, 560};
}

void frmItemCount::Form_Load() {
    fillActiveEmployees(dbcEmployee);
    txtDate->setDate(values::today());
    showSum();
}

bool frmItemCount::hasCounts() const {
    const auto& lines = m_lines->rows();
    return std::any_of(lines.begin(), lines.end(),
                       [](const CountLine& line) { return line.counted.has_value(); });
}

bool frmItemCount::Form_QueryUnload() {
    bool posted = true;
    return mayDrop(hasCounts(), [&] { posted = post(); }) && posted;
}

bool frmItemCount::countAt(qint64 location) {
    if (hasCounts())
        return false;
    read(location);
    return true;
}

void frmItemCount::pickLocation() {
    if (hasCounts() && MsgBox(u"What you have counted is not posted and will be lost. Continue?"_s,
                              Buttons::YesNo, Icon::Question, system) != screen::Answer::Yes)
        return;
    const auto picked =
        screen::Forms::dialog<FolderPicker>(u"frmItemTreeSelect"_s)->pickFolder(u"Location"_s);
    if (picked)
        read(picked->folder);
}

void frmItemCount::read(qint64 location) {
    const screen::BusyPointer busy;
    jet::Database& database = core::MainDatabase();
    m_location = location;
    txtLocation->setText(pathText(pathTo(database, locationView(), location)));
    m_folders = countFolders(database, location);
    m_lines->setRows(countSheet(database, m_folders));
    showSum();
    sprCount->setFocus();
}

void frmItemCount::showSum() {
    qint64 counted = 0, different = 0;
    for (const CountLine& line : m_lines->rows()) {
        counted += line.counted ? 1 : 0;
        different += line.difference() != 0 ? 1 : 0;
    }
    lblSum->setText(u"%1 items, %2 counted, %3 with a difference"_s.arg(m_lines->count())
                        .arg(counted)
                        .arg(different));
}

void frmItemCount::cmdPrint_Click() {
    if (m_location == 0)
        complain(u"Please select a location to count."_s, control(u"cmdTreeLoc"_s),
                 Icon::Exclamation, system);
    else
        core::launchReportFile(u"Inventory_Count.rpt"_s, countFormula(m_folders), u"Count Sheet"_s,
                               this);
}

void frmItemCount::cmdPost_Click() {
    if (post())
        MsgBox(u"The corrections have been posted."_s, Buttons::Ok, Icon::Information, system);
}

bool frmItemCount::post() {
    sprCount->setFocus(); // what is being typed counts
    if (const QString why = sprCount->complaint(); !why.isEmpty()) {
        MsgBox(why, Buttons::Ok, Icon::Exclamation);
        return false;
    }
    const auto refuse = [this](bool missing, const QString& text, QWidget* field) {
        if (missing)
            complain(text, field, Icon::Exclamation, system);
        return missing;
    };
    if (refuse(!hasCounts(), u"Please enter what you have counted."_s, sprCount) ||
        refuse(dbcEmployee->boundText().isEmpty(), u"Employee field cannot be blank."_s,
               dbcEmployee) ||
        refuse(!txtDate->date(), u"Date must be specified."_s, txtDate))
        return false;
    jet::Database& database = core::MainDatabase();
    const auto changed = postCount(database, m_lines->rows(), dbcEmployee->boundText().toLongLong(),
                                   *txtDate->date());
    if (!changed.empty()) {
        tellChanged(changed);
        return false;
    }
    read(m_location);
    if (auto* explorer = screen::Forms::find<Explorer>(u"frmInventory"_s))
        explorer->showAgain();
    core::RefreshHistoryIfOpen(u"Items"_s);
    return true;
}

void frmItemCount::tellChanged(const std::vector<CountChange>& changed) {
    QStringList names;
    const controls::LineModel<CountLine>::Group group(*m_lines);
    for (const CountChange& change : changed) {
        for (int place = 0; place < m_lines->count(); ++place) {
            CountLine line = m_lines->row(place);
            if (line.itemId != change.itemId)
                continue;
            names << (change.stock ? u"%1: %2 instead of %3"_s.arg(line.description)
                                         .arg(*change.stock)
                                         .arg(line.stock)
                                   : u"%1: deleted"_s.arg(line.description));
            if (change.stock)
                line.stock = *change.stock;
            else
                line.counted.reset();
            m_lines->change(place, std::move(line));
        }
    }
    if (names.size() > 12)
        names = names.mid(0, 12) << u"..."_s;
    showSum();
    complain(u"Nothing has been posted. The stock of these items has changed since the sheet was "
             "read; please look at them again.\n\n"_s +
                 names.join(u'\n'),
             sprCount, Icon::Exclamation, system);
}

} // namespace inventory
