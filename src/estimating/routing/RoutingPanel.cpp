#include "estimating/routing/RoutingPanel.h"

#include "core/MirsaMain.h"
#include "estimating/NoteStaging.h"
#include "estimating/routing/Dialogs.h"
#include "estimating/routing/Pictures.h"
#include "platform/controls/Splitter.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
#include <QVBoxLayout>

namespace estimating {

using controls::GridColumn;
using values::Currency;

namespace {

QString figure(const std::optional<double>& value) {
    return value ? values::format(*value, u"#####0.00##") : QString();
}

QString money(Currency value) {
    return values::format(value, u"#####0.00##");
}

/// Reads what was typed into a figure's cell; an empty one is 0. Says why it can't be read.
QString readFigure(const QString& typed, Currency& into) {
    const QString text = typed.trimmed();
    if (!text.isEmpty() && !values::isNumeric(text))
        return u"\""_s + text + u"\" is not a number."_s;
    try {
        into = Currency::fromText(QString(text).remove(u','));
    } catch (const values::Overflow&) {
        return u"The number is too large."_s;
    }
    return {};
}

GridColumn figureLook(const QString& title, int characters) {
    return {title, characters, GridColumn::Kind::Number, true, values::keys::decimal(), {}, 12};
}

/// A number of every row.
template <class Row>
std::vector<qint64> numbers(const std::vector<Row>& rows, qint64 Row::*number) {
    std::vector<qint64> result(rows.size());
    std::transform(rows.begin(), rows.end(), result.begin(),
                   [number](const Row& row) { return row.*number; });
    return result;
}

} // namespace

RoutingPanel::RoutingPanel(screen::Form& form, const RoutingKind& kind, Qt::Orientation orientation)
    : QWidget(&form), m_form(form), m_kind(kind) {
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    auto* splitter = screen::named(new controls::Splitter(orientation, this), u"splRouting"_s);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(operPane());
    splitter->addWidget(miscPane());
    // A job's routing has more columns.
    splitter->setStretchFactor(0, m_kind.hasProgress ? 3 : 1);
    splitter->setStretchFactor(1, m_kind.hasProgress ? 2 : 1);
    splitter->setSizes(m_kind.hasProgress ? QList<int>{760, 460} : QList<int>{620, 580});
    layout->addWidget(splitter);
    setMode(RoutingMode::Browse);
}

QPushButton* RoutingPanel::button(const QString& name, const QString& caption,
                                  const QString& meaning, std::function<void()> click) {
    auto* result = screen::named(new QPushButton(caption, this), name, meaning);
    result->setToolTip(meaning);
    result->setAutoDefault(false);
    m_form.on(result, std::move(click));
    return result;
}

QWidget* RoutingPanel::operPane() {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    m_oper = screen::named(new controls::LineGrid<OperRow>(m_operations, operColumns(), pane),
                           u"sprOper"_s, u"Operations"_s);
    m_operations->staging = [this](const controls::LineStep& step, OperRow& row) {
        stage(step, row);
    };
    m_operations->changing = [this](int place, const OperRow& stands, const OperRow& put) {
        writeNote(place, stands, put);
    };
    m_operations->restored.connect([this] { m_form.guarded([this] { costChanged(); }); });
    m_oper->entryTaken.connect([this](int, int) { m_form.guarded([this] { costChanged(); }); });
    m_oper->cellClicked.connect([this](int row, int column) {
        if (column == m_noteColumn)
            m_form.guarded([&] { openNote(row); });
    });
    m_oper->activeRowChanged.connect([this](int) { operationsFollowed(); });
    m_operations->touched.connect([this] { operationsFollowed(); });
    m_oper->insertAsked.connect([this] { m_form.guarded([this] { insertOperation(); }); });
    m_oper->removeAsked.connect([this] { m_form.guarded([this] { removeOperation(); }); });

    auto* buttons = new QHBoxLayout;
    m_operButtons[0] = button(u"cmdOper(0)"_s, u"Insert..."_s, u"Insert an operation"_s,
                              [this] { insertOperation(); });
    m_operButtons[1] = button(u"cmdOper(1)"_s, u"Remove"_s, u"Remove the operation"_s,
                              [this] { removeOperation(); });
    m_rateButtons[0] =
        button(u"cmdOperRate(0)"_s, u"One Rate"_s, QString(), [this] { switchRateMode(true); });
    m_rateButtons[1] = button(u"cmdOperRate(1)"_s, u"Rate/Operation"_s, QString(),
                              [this] { switchRateMode(false); });
    buttons->addWidget(m_operButtons[0]);
    buttons->addWidget(m_operButtons[1]);
    buttons->addStretch();
    buttons->addWidget(new QLabel(u"For Inhouse Operations, Use:"_s, pane));
    buttons->addWidget(m_rateButtons[0]);
    buttons->addWidget(m_rateButtons[1]);
    layout->addWidget(m_oper);
    layout->addLayout(buttons);
    return pane;
}

QWidget* RoutingPanel::miscPane() {
    auto* pane = new QWidget(this);
    auto* layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    m_misc = screen::named(new controls::LineGrid<MiscRow>(m_fixedCosts, miscColumns(), pane),
                           u"sprMisc"_s, u"Fixed costs"_s);
    m_fixedCosts->restored.connect([this] { m_form.guarded([this] { fixedCostsChanged(); }); });
    m_misc->entryTaken.connect([this](int, int) { m_form.guarded([this] { costChanged(); }); });
    m_misc->insertAsked.connect([this] { m_form.guarded([this] { insertItems(); }); });
    m_misc->removeAsked.connect([this] { m_form.guarded([this] { removeItem(); }); });
    auto* buttons = new QHBoxLayout;
    m_miscButtons[0] =
        button(u"cmdMisc(0)"_s, u"Insert..."_s, u"Insert fixed costs"_s, [this] { insertItems(); });
    m_miscButtons[1] =
        button(u"cmdMisc(1)"_s, u"Remove"_s, u"Remove the fixed cost"_s, [this] { removeItem(); });
    buttons->addWidget(m_miscButtons[0]);
    buttons->addWidget(m_miscButtons[1]);
    buttons->addStretch();
    layout->addWidget(m_misc);
    layout->addLayout(buttons);
    return pane;
}

controls::LineColumn<OperRow> RoutingPanel::figureColumn(const QString& title, int characters,
                                                         std::optional<double> OperRow::*which) {
    return {.look = figureLook(title, characters),
            .text = [which](const OperRow& row) { return figure(row.*which); },
            .take =
                [which](OperRow& row, const QString& typed) {
                    Currency read;
                    QString why = readFigure(typed, read);
                    if (why.isEmpty())
                        row.*which = read.toDouble();
                    return why;
                },
            .secret = [this](const OperRow& row) { return !m_showDollar && !row.inhouse; }};
}

std::vector<controls::LineColumn<OperRow>> RoutingPanel::operColumns() {
    using Kind = GridColumn::Kind;
    const bool job = m_kind.hasProgress;
    std::vector<controls::LineColumn<OperRow>> columns;
    columns.push_back({.look = {u"Seq"_s, 4, Kind::Number}});
    m_noteColumn = static_cast<int>(columns.size());
    columns.push_back({.look = {u"Note"_s, 6, Kind::Picture}, .picture = [](const OperRow& row) {
                           return row.hasNote ? controls::CellPicture{noteIcon(), u"Note"_s}
                                              : controls::CellPicture{};
                       }});
    columns.push_back({.look = {.title = u"Description"_s, .characters = 26, .stretches = true},
                       .text = [](const OperRow& row) { return row.description; }});
    if (job) {
        columns.push_back(
            {.look = {u" Sts"_s, 5, Kind::Picture}, .picture = [this](const OperRow& row) {
                 if (!statusPicture)
                     return controls::CellPicture{};
                 auto [icon, words] = statusPicture(row);
                 return controls::CellPicture{icon, words};
             }});
    }
    auto time = figureColumn(job ? u"Time \\ Amount"_s : u"Time/Amount"_s, 14, &OperRow::time);
    time.locked = [this](const OperRow& row) { return row.inhouse && m_kind.inhouseTimeIsBooked; };
    m_timeColumn = static_cast<int>(columns.size());
    columns.push_back(std::move(time));
    columns.push_back({.look = {u"Unit"_s, 5}, .text = [this](const OperRow& row) -> QString {
                           if (row.inhouse)
                               return u"hrs"_s;
                           return m_showDollar ? core::shared().CurrencySymbol : QString();
                       }});
    if (job) {
        auto estimated = figureColumn(u"Estimate Time/Amt"_s, 15, &OperRow::estimated);
        estimated.locked = [this](const OperRow&) { return m_estimatedLocked; };
        columns.push_back(std::move(estimated));
    }
    columns.push_back(
        {.look = figureLook(job ? u"Rate for Inhouse $"_s : u"Rate"_s, job ? 15 : 10),
         .text = [](const OperRow& row) { return row.inhouse ? money(row.rate) : QString(); },
         .take = [](OperRow& row, const QString& typed) { return readFigure(typed, row.rate); },
         .locked =
             [this](const OperRow& row) { return !row.inhouse || m_oneShopRate || !m_showDollar; },
         .secret = [this](const OperRow&) { return !m_showDollar; }});
    return columns;
}

std::vector<controls::LineColumn<MiscRow>> RoutingPanel::miscColumns() {
    using Kind = GridColumn::Kind;
    const auto secret = [this](const MiscRow&) { return !m_showDollar; };
    const auto take = [](Currency MiscRow::*which) {
        return [which](MiscRow& row, const QString& typed) {
            QString why = readFigure(typed, row.*which);
            if (!why.isEmpty())
                return why;
            try {
                row.retotal();
            } catch (const values::Overflow&) {
                return u"The total is too large."_s;
            }
            return QString();
        };
    };
    return {
        {.look = {.title = u"Description"_s, .characters = 22, .stretches = true},
         .text = [](const MiscRow& row) { return row.description; }},
        {.look = {u"Unit"_s, 7, Kind::Text, true, values::keys::description(), {}, 10},
         .text = [](const MiscRow& row) { return row.unit.trimmed(); },
         .take =
             [](MiscRow& row, const QString& typed) {
                 row.unit = typed;
                 return QString();
             }},
        {.look = figureLook(u"Unit Price"_s, 10),
         .text = [](const MiscRow& row) { return money(row.price); },
         .take = take(&MiscRow::price),
         .locked = secret,
         .secret = secret},
        {.look = figureLook(u"Qty"_s, 8),
         .text = [](const MiscRow& row) { return row.quantity.toText(); },
         .take = take(&MiscRow::quantity)},
        {.look = {u"Total"_s, 11, Kind::Number},
         .text = [](const MiscRow& row) { return money(row.total); },
         .secret = secret},
    };
}

QString RoutingPanel::complaint() {
    const QString why = m_oper->complaint();
    return why.isEmpty() ? m_misc->complaint() : why;
}

qint64 RoutingPanel::activeOperation() const {
    const int row = m_oper->activeRow();
    return row >= 0 && row < m_operations->count() ? m_operations->row(row).operNo : 0;
}

void RoutingPanel::bringTime(qint64 operNo, double figureToBring) {
    const std::vector<OperRow>& rows = operations();
    const auto found = std::find_if(rows.begin(), rows.end(),
                                    [operNo](const OperRow& row) { return row.operNo == operNo; });
    if (m_mode == RoutingMode::Browse || found == rows.end())
        return;
    const int place = static_cast<int>(found - rows.begin());
    m_oper->setCurrentIndex(m_oper->model()->index(place, m_timeColumn));
    m_oper->scrollTo(m_oper->currentIndex());
    m_oper->setFocus(Qt::OtherFocusReason);
    m_oper->enter(place, m_timeColumn, figure(figureToBring));
}

void RoutingPanel::setShowDollar(bool showDollar) {
    m_showDollar = showDollar;
    m_operations->redraw();
    m_fixedCosts->redraw();
}

void RoutingPanel::showRows(qint64 documentNo, std::vector<OperRow> operations,
                            std::vector<MiscRow> fixedCosts, bool oneShopRate) {
    m_documentNo = documentNo;
    m_oneShopRate = oneShopRate;
    m_notes.clear();
    m_storedNotes.clear();
    m_operations->setRows(std::move(operations));
    m_fixedCosts->setRows(std::move(fixedCosts));
    showRateMode();
}

void RoutingPanel::setMode(RoutingMode mode) {
    m_mode = mode;
    if (mode == RoutingMode::Add)
        m_documentNo = 0;
    const bool locked = mode == RoutingMode::Browse;
    m_oper->setLocked(locked);
    m_misc->setLocked(locked);
    for (QPushButton* one : {m_operButtons[0], m_operButtons[1], m_miscButtons[0], m_miscButtons[1],
                             m_rateButtons[0], m_rateButtons[1]})
        one->setEnabled(!locked);
    showRateMode();
}

void RoutingPanel::setEstimatedLocked(bool locked) {
    m_estimatedLocked = locked;
    m_operations->redraw();
}

void RoutingPanel::setOneShopRate(bool oneShopRate) {
    m_oneShopRate = oneShopRate;
    m_operations->redraw();
    showRateMode();
}

void RoutingPanel::redraw() {
    const int oper = m_oper->activeRow();
    const int misc = m_misc->activeRow();
    m_operations->refresh();
    m_fixedCosts->refresh();
    m_oper->setActiveRow(std::max(0, oper));
    m_misc->setActiveRow(std::max(0, misc));
    showRateMode();
}

void RoutingPanel::showRateMode() {
    for (int i = 0; i < 2; ++i) {
        QFont font = m_rateButtons[i]->font();
        const bool inForce = (i == 0) == m_oneShopRate;
        font.setBold(inForce);
        m_rateButtons[i]->setFont(font);
        m_rateButtons[i]->setAccessibleDescription(inForce ? u"in force"_s : QString());
    }
}

void RoutingPanel::stage(const controls::LineStep& step, OperRow& row) {
    using Kind = controls::LineStep::Kind;
    jet::Database& database = core::MainDatabase();
    NoteStaging staging(database, m_kind, m_documentNo);
    jet::Transaction transaction(database);
    switch (step.kind) {
    case Kind::Insert: {
        const KeptNote& kept = m_notes[row.operNo];
        if (kept.comesBack)
            staging.rowRestored(step.place + 1, step.rows, row.id, row.operNo, kept.text);
        else
            staging.rowInserted(step.place + 1, step.rows, row.newNote = kept.text);
        row.hasNote = !kept.text.isEmpty();
        break;
    }
    case Kind::Remove:
        m_notes[row.operNo] = {staging.note(step.place + 1).value_or(QString()), true};
        staging.rowRemoved(step.place + 1, step.rows);
        break;
    case Kind::Move:
        staging.rowMoved(step.place + 1, step.to + 1);
        break;
    }
    transaction.commit();
}

void RoutingPanel::insertOperation() {
    if (m_mode == RoutingMode::Browse)
        return;
    auto dialog = screen::Forms::dialog<InsertOperationDialog>(u"frmInsOper"_s);
    const auto chosen = dialog->insert(numbers(operations(), &OperRow::operNo));
    if (!chosen)
        return;
    const int place = insertPlace(m_operations->count(), m_oper->activeRow(), chosen->before);
    OperRow row = newRow(chosen->operation);
    m_notes[row.operNo] = {
        chosen->useNote ? defaultNote(core::MainDatabase(), row.operNo) : QString(), false};
    if (m_kind.hasProgress)
        row.time = 0;
    m_operations->insert(place, std::move(row));
    m_oper->setFocus();
}

void RoutingPanel::removeOperation() {
    const int row = m_oper->activeRow();
    if (m_mode == RoutingMode::Browse || row < 0)
        return;
    const OperRow oper = m_operations->row(row);
    if (mayRemove && !mayRemove(oper))
        return;
    if (screen::MsgBox(u"Delete operation "_s + oper.description + u"?"_s, screen::Buttons::YesNo,
                       screen::Icon::Question) != screen::Answer::Yes)
        return;
    m_operations->remove(row);
}

void RoutingPanel::insertItems() {
    if (m_mode == RoutingMode::Browse)
        return;
    auto dialog = screen::Forms::dialog<InsertItemsDialog>(u"frmInsItem"_s);
    const auto chosen = dialog->insert(numbers(fixedCosts(), &MiscRow::itemNo));
    if (!chosen || chosen->rows.empty())
        return;
    const int place = insertPlace(m_fixedCosts->count(), m_misc->activeRow(), chosen->before);
    {
        const MiscLines::Group group(*m_fixedCosts);
        int next = place;
        for (const MiscRow& row : chosen->rows)
            m_fixedCosts->insert(next++, row);
    }
    m_misc->setActiveRow(place);
    m_misc->setFocus();
    fixedCostsChanged();
}

void RoutingPanel::removeItem() {
    const int row = m_misc->activeRow();
    if (m_mode == RoutingMode::Browse || row < 0)
        return;
    const QString description = m_fixedCosts->row(row).description;
    if (screen::MsgBox(u"Delete item "_s + description + u"?"_s, screen::Buttons::YesNo,
                       screen::Icon::Question) != screen::Answer::Yes)
        return;
    m_fixedCosts->remove(row);
    fixedCostsChanged();
}

void RoutingPanel::switchRateMode(bool oneShopRate) {
    if (m_mode == RoutingMode::Browse || oneShopRate == m_oneShopRate)
        return;
    if (screen::MsgBox(u"You are about to recalculate the Pricing for Inhouse "
                       "Operations. Are you sure?"_s,
                       screen::Buttons::YesNo, screen::Icon::Question) != screen::Answer::Yes)
        return;
    setOneShopRate(oneShopRate);
    costChanged();
}

void RoutingPanel::openNote(int row) {
    if (row < 0)
        return;
    m_oper->setActiveRow(row);
    auto dialog = screen::Forms::dialog<OperationNoteDialog>(m_kind.noteDialog);
    const auto note = dialog->edit(
        {m_documentNo, row + 1, m_operations->row(row).description, m_mode == RoutingMode::Browse});
    if (!note)
        return;
    // What stood there is known by now: it is what undo writes.
    OperRow oper = m_operations->row(row);
    if (oper.hasNote && oper.newNote.isEmpty()) {
        m_storedNotes.insert(oper.operNo);
        m_operations->patch(row, [&](OperRow& stands) { stands.newNote = note->before; });
    }
    oper.hasNote = !note->after.isEmpty();
    oper.newNote = note->after;
    const QScopedValueRollback written(m_noteIsWritten, true);
    m_operations->nextChange = u"Note"_s;
    m_operations->change(row, std::move(oper));
}

/// A step that is taken back or done again writes the note where its row stands now. That of a row
/// as it was stored is bound to it again, so that it outlives a Cancel as it does without any step.
void RoutingPanel::writeNote(int place, const OperRow& stands, const OperRow& put) {
    const bool same = stands.hasNote == put.hasNote && stands.newNote == put.newNote;
    const bool asStored = put.hasNote && put.newNote.isEmpty(); // and so it stands by now
    if (m_noteIsWritten || same || asStored)
        return;
    NoteStaging(core::MainDatabase(), m_kind, m_documentNo)
        .write(place + 1, put.hasNote ? put.newNote : QString(),
               m_storedNotes.contains(put.operNo) ? put.id : 0);
}

} // namespace estimating
