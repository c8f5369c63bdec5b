#include "core/records/RecordModule.h"

#include "core/MirsaMain.h"
#include "core/ReportLaunch.h"
#include "core/Shell.h"
#include "core/papers/PaperScreen.h"
#include "core/papers/Papers.h"
#include "core/records/EntryUndo.h"
#include "core/records/PaperCount.h"
#include "platform/controls/DataCombo.h"
#include "platform/screen/Forms.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QTimer>

#include <cmath>

namespace core {

using screen::Answer;
using screen::Buttons;
using screen::Icon;
using screen::MsgBox;

namespace {

void expect(const QStringList& selects) {
    MainDatabase().expect({selects.cbegin(), selects.cend()});
}

} // namespace

RecordModule::RecordModule(ModuleDescriptor descriptor)
    : Form(descriptor.formName, descriptor.caption), m_descriptor(std::move(descriptor)),
      m_data(new controls::DataControl(this)), m_modeLabel(new QLabel(this)),
      m_undo(std::make_unique<EntryUndo>(
          *this, static_cast<EntrySubject&>(*this),
          [this](const std::function<void()>& work) { guarded(work); })),
      m_draftTimer(new QTimer(this)) {
    on(m_draftTimer, &QTimer::timeout, [this] { keepDraft(); });
    screen::named(m_data, m_descriptor.dataControlName, u"Records"_s);
    screen::named(m_modeLabel, m_descriptor.modeLabelName);
    QFont bold = m_modeLabel->font();
    bold.setBold(true);
    m_modeLabel->setFont(bold);
    on(m_data->reposition, [this] { onReposition(); });
    on(m_data->approaching, [this](const jet::Value& key) { expectParts(key.toLong()); });

    if (!m_descriptor.numberWord.isEmpty()) {
        auto* ask = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_G), this);
        ask->setContext(Qt::WidgetWithChildrenShortcut);
        on(ask, &QShortcut::activated, [this] { GotoRecord(); });
    }
}

RecordModule::~RecordModule() = default;

void RecordModule::bindKey(controls::Field* field) {
    field->setLocked(true);
    field->widget()->setFocusPolicy(Qt::ClickFocus);
    m_showKey = [field](const QString& text) { field->setText(text); };
}

void RecordModule::bindKey(QLabel* label) {
    m_showKey = [label](const QString& text) { label->setText(text); };
}

void RecordModule::bindNameList(controls::DataCombo* combo, const QString& select,
                                const QString& listColumn, const QString& keyColumn) {
    m_names = combo;
    m_namesSelect = select;
    m_namesColumn = listColumn;
    m_namesKey = keyColumn;
    on(combo->chosen, [this] {
        const QString key = m_names->boundText();
        if (isBrowse() && values::isNumeric(key))
            m_data->findFirst(m_descriptor.keyColumn + u" = "_s + key);
    });
    on(combo->notOnList, [this] { complain(m_names->text() + u" not found!"_s, m_names); });
}

// Opening and activation

void RecordModule::Form_Load() {
    const screen::BusyPointer busy;
    expect(lookups());
    // The rows come with the lists, whoever has to do without them in the end.
    const jet::Recordset names = namesLater();
    jet::Recordset rows = MainDatabase().openLater(mainSelect(), jet::RecordsetType::Dynaset);
    rows.moveLast();
    if (!mayOpen()) {
        refuse();
        return;
    }
    orderTabs();
    m_fields.limitTo(core::MainDatabase(), m_descriptor.table);
    // Where nothing else of the record is read, its papers come with the lists.
    if (!rows.isEmpty() && partsOf(rows.bookmark().toLong()).isEmpty())
        if (const QString papers = papersOf(m_descriptor.formName, rows.bookmark().toLong());
            !papers.isEmpty())
            m_papers = MainDatabase().openLater(papers);
    openLookups();
    m_fresh = true;
    ShowModuleMode(Mode::Browse);
    show(rows, names);
    m_papers = {};
    leaveEmptyView();
    if (hasRecord())
        return;
    if (askNoRecords())
        startAdding();
    else if (m_descriptor.emptyTableCloses)
        refuse();
}

void RecordModule::Form_Activate() {
    if (m_fresh) {
        m_fresh = false;
        return;
    }
    if (isBrowse())
        showReadAgain();
}

void RecordModule::showReadAgain() {
    const jet::Recordset names = namesLater();
    const bool wasEmpty = !hasRecord();
    {
        const QScopedValueRollback quiet(m_quiet, true);
        m_data->requeryKeepingRow();
        if (wasEmpty && hasRecord())
            m_data->moveLast();
    }
    showNames(names);
    onReposition();
    leaveEmptyView();
}

void RecordModule::reopen(const QString& select, qint64 key) {
    const jet::Recordset names = namesLater();
    jet::Recordset rows = MainDatabase().openLater(select, jet::RecordsetType::Dynaset);
    if (key != 0) {
        expectParts(key);
        rows.findFirst(m_descriptor.keyColumn + u" = "_s + QString::number(key));
    }
    if (key == 0 || rows.noMatch())
        rows.moveLast();
    show(rows, names);
}

void RecordModule::show(const jet::Recordset& rows, const jet::Recordset& names) {
    {
        const QScopedValueRollback quiet(m_quiet, true);
        m_data->setRecordset(rows);
    }
    showNames(names);
    onReposition();
}

// All records or the active ones

void RecordModule::bindView(ActiveView view) {
    m_view = std::move(view);
    for (QRadioButton* option : {m_view.all, m_view.active})
        on(option, &RecordModule::chooseView);
}

bool RecordModule::activeOnly() const {
    return m_view.active && m_view.active->isChecked();
}

QString RecordModule::mainSelect() const {
    return activeOnly() ? m_view.select : m_descriptor.select;
}

void RecordModule::chooseView() {
    if (!isBrowse())
        return;
    reopen(mainSelect(), currentKey());
    if (hasRecord() || !activeOnly())
        return;
    MsgBox(m_view.none, Buttons::Ok, m_view.noneIcon, m_view.noneTitle);
    leaveEmptyView();
}

void RecordModule::showAllRecords() {
    if (!isBrowse() || !activeOnly())
        return;
    m_view.all->setChecked(true);
    reopen(mainSelect(), currentKey());
}

void RecordModule::leaveEmptyView() {
    if (!isBrowse() || hasRecord() || !activeOnly())
        return;
    m_view.all->setChecked(true);
    reopen(mainSelect());
}

bool RecordModule::askNoRecords() {
    const QString record =
        m_descriptor.recordWord.isEmpty() ? m_descriptor.moduleWord : m_descriptor.recordWord;
    return MsgBox(u"There are no records in the database. Before you can use the "_s +
                      m_descriptor.moduleWord + u" module you must add at least one "_s + record +
                      u". Would you like to do so now?"_s,
                  Buttons::YesNo, Icon::Question, u"No Records!"_s) == Answer::Yes;
}

void RecordModule::offerFirstRecord() {
    if (askNoRecords())
        startAdding();
    else if (m_descriptor.emptyTableCloses)
        unload();
}

bool RecordModule::hasRecord() const {
    return records().isOpen() && !records().isEmpty();
}

void RecordModule::refreshLookup(const QString& table) {
    if (table.compare(m_descriptor.table, Qt::CaseInsensitive) == 0 && isBrowse())
        showReadAgain();
}

void RecordModule::reloadNames() {
    showNames(namesLater());
}

/// The list of names, on its way beside what is read next.
jet::Recordset RecordModule::namesLater() const {
    return m_names ? core::MainDatabase().openLater(m_namesSelect) : jet::Recordset();
}

void RecordModule::showNames(const jet::Recordset& names) {
    if (m_names && names.isOpen())
        m_names->setRows(names, m_namesColumn, m_namesKey);
}

void RecordModule::setNamesSelect(const QString& select) {
    m_namesSelect = select;
    reloadNames();
}

// Modes

QString RecordModule::modeWord(Mode mode) const {
    switch (mode) {
    case Mode::Browse:
        return u"Browse"_s;
    case Mode::Add:
        return u"Add"_s;
    case Mode::Edit:
        return u"Edit"_s;
    case Mode::Copy:
        return m_descriptor.copyWord;
    }
    return {};
}

void RecordModule::setMode(Mode mode) {
    m_mode = mode;
    setProperty("mode", modeWord(mode));
    arrangeDraft();
    m_undo->restart();
}

void RecordModule::showTitle() {
    QString title = m_descriptor.caption;
    if (isAdding())
        title = u"New "_s + title;
    else if (m_key != 0)
        title += u' ' + QString::number(m_key);
    const QString name = isAdding() || m_key == 0 ? QString() : recordName().trimmed();
    setWindowTitle(name.isEmpty() ? title : title + u", "_s + name);
}

void RecordModule::ShowModuleMode(Mode mode) {
    setMode(mode);
    const bool browse = isBrowse();
    m_modeLabel->setText(modeWord(mode).toUpper());
    // Light enough on a dark background, dark enough on a light one.
    const bool dark = palette().color(QPalette::Window).lightness() < 128;
    QPalette colours = m_modeLabel->palette();
    colours.setColor(QPalette::WindowText, browse ? QColor(dark ? 0xff6b6b : 0xc00000)
                                                  : QColor(dark ? 0x6bd66b : 0x007000));
    m_modeLabel->setPalette(colours);

    lockFields(browse);
    m_data->setEnabled(browse);
    if (m_names)
        m_names->setEnabled(browse);
    for (QRadioButton* option : {m_view.all, m_view.active}) {
        if (option)
            option->setEnabled(browse);
    }
    arrangeButtons();
    showTitle();
    if (browse)
        return;
    if (isAdding()) {
        clearFields();
        if (m_showKey)
            m_showKey(m_descriptor.newKeyText);
        newDefaults();
    } else if (!isEditing()) {
        setMode(Mode::Add);
        if (m_showKey)
            m_showKey(m_descriptor.newKeyText);
    }
    showTitle();
    if (isAdding())
        beginDraft();
    if (QWidget* first = m_fields.firstEntry())
        first->setFocus();
}

void RecordModule::clearFields() {
    m_fields.clear();
    if (m_names)
        m_names->setText({});
}

void RecordModule::lockFields(bool locked) {
    m_fields.lock(locked);
}

// The record shown

void RecordModule::onReposition() {
    if (m_quiet)
        return;
    if (!hasRecord()) {
        showEmpty();
        return;
    }
    try {
        ShowCurrentRecord();
    } catch (const jet::Error& error) {
        if (error.number() != jet::errors::rowDeleted)
            throw;
        // Another station deleted the row since the keys were read.
        {
            const QScopedValueRollback quiet(m_quiet, true);
            m_data->requeryKeepingRow();
        }
        if (hasRecord())
            ShowCurrentRecord();
        else
            showEmpty();
    }
}

void RecordModule::showEmpty() {
    m_key = 0;
    setProperty(papersProperty, 0);
    if (isBrowse()) {
        clearFields();
        if (m_showKey)
            m_showKey({});
        showTitle();
    }
}

void RecordModule::ShowCurrentRecord() {
    if (!hasRecord())
        return;
    const jet::Value key = records().bookmark();
    if (m_expected != key.toLong())
        expectParts(key.toLong());
    m_expected = 0;
    m_fields.show(records());
    m_key = key.toLong();
    if (m_showKey)
        m_showKey(key.toText());
    if (m_names)
        m_names->setBoundText(key.toText());
    showRecord();
    countPapers();
    showTitle();
}

qint64 RecordModule::currentKey() const {
    return isAdding() ? 0 : m_key;
}

void RecordModule::expectParts(qint64 key) {
    m_expected = key;
    QStringList parts = partsOf(key);
    const QString papers =
        m_papers.isOpen() ? QString() : papersOf(m_descriptor.formName, key); // on their way else
    if (!papers.isEmpty())
        parts += papers;
    expect(parts);
}

/// How many papers the record has; the shell shows it.
void RecordModule::countPapers() {
    const QString select = papersOf(m_descriptor.formName, m_key);
    if (select.isEmpty())
        return;
    const jet::Recordset rows =
        m_papers.isOpen() ? m_papers
                          : MainDatabase().openRecordset(select, jet::RecordsetType::Snapshot);
    const auto papers = readPapers(rows, *paperKindOf(m_descriptor.formName), m_key);
    setProperty(papersProperty, static_cast<int>(papers.size()));
}

bool RecordModule::findKey(qint64 key) {
    if (!hasRecord())
        return false;
    expectParts(key);
    return m_data->findFirst(m_descriptor.keyColumn + u" = "_s + QString::number(key));
}

bool RecordModule::goToRecord(qint64 key) {
    if (!isBrowse())
        return false;
    if (findKey(key))
        return true;
    // Another station may have added it since the keys were read.
    showReadAgain();
    return findKey(key);
}

void RecordModule::GotoRecord() {
    if (!isBrowse())
        return;
    const QString& word = m_descriptor.numberWord;
    const QString answer =
        screen::InputBox(u"Please enter "_s + word + u" Number to go to:"_s).trimmed();
    if (answer.isEmpty())
        return;
    const double number = values::val(QString(answer).remove(u','));
    const bool found = values::isNumeric(answer) && number == std::floor(number) &&
                       std::abs(number) < 1e9 && goToRecord(static_cast<qint64>(number));
    if (!found) {
        screen::beep();
        MsgBox(word + u" Number "_s + answer + u" not found!"_s);
    }
}

} // namespace core
