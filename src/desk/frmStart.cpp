#include "desk/frmStart.h"

#include "core/MirsaMain.h"
#include "desk/ListKinds.h"
#include "desk/ListScreen.h"
#include "desk/OpenRecord.h"
#include "platform/jet/Native.h"
#include "platform/screen/Forms.h"
#include "platform/screen/Layout.h"
#include "platform/system/Remembered.h"
#include "platform/values/Clock.h"
#include "platform/values/Format.h"
#include "platform/values/Literals.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

#include <QCloseEvent>
#include <QDateTime>
#include <QLabel>
#include <QPushButton>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace desk {

/// What the thread knows of its last reading.
struct StartReading {
    qint64 version = -1;
    QDateTime at;
};

namespace {

const QString wantedKey = u"desk/start"_s;
const QString timeMenu = u"mnuFileTimeManagement"_s;
constexpr int lookMilliseconds = 3000;
constexpr int secondsBetweenReadings = 60;
constexpr int targetRole = Qt::UserRole;

QString counted(const StartSection& section) {
    return section.count > 0
               ? u"%1: %2"_s.arg(section.title,
                                 values::format(static_cast<double>(section.count), u"#,##0"))
               : section.title;
}

} // namespace

bool frmStart::isWanted() {
    return platform::remembered(wantedKey, true).toBool();
}

frmStart::frmStart() : Form(QString::fromLatin1(formName), u"Start Page"_s) {
    auto* outside = new QVBoxLayout(this);
    tvwToday = screen::named(new QTreeWidget(this), u"tvwToday"_s, u"What needs you today"_s);
    tvwToday->setHeaderLabels(
        {u"What needs you today"_s, u"Who"_s, u"Part or title"_s, u"Date"_s, u"State"_s});
    tvwToday->setUniformRowHeights(true);
    tvwToday->setAllColumnsShowFocus(true);
    tvwToday->setExpandsOnDoubleClick(false);
    const int character = fontMetrics().averageCharWidth();
    for (const auto& [column, characters] : {std::pair{0, 46}, {1, 28}, {2, 34}, {3, 13}, {4, 24}})
        tvwToday->setColumnWidth(column, character * characters + 12);
    outside->addWidget(tvwToday, 1);
    lblState = screen::named(new QLabel(this), u"lblState"_s, u"State of the page"_s);
    lblState->setWordWrap(true);
    outside->addWidget(lblState);
    screen::ButtonBar bar(this, outside);
    QPushButton* cmdOpen = bar.button(u"cmdOpen"_s, u"&Open"_s);
    QPushButton* cmdRefresh = bar.button(u"cmdRefresh"_s, u"&Read Again"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    cmdClose->setToolTip(u"Window, Start Page brings it back"_s);
    on(cmdOpen, &frmStart::cmdOpen_Click);
    on(cmdRefresh, [this] { readLater(true); });
    on(cmdClose, [this] {
        m_byUser = true;
        unload();
    });
    on(tvwToday, &QTreeWidget::itemActivated, [this] { cmdOpen_Click(); });
    on(&m_timer, &QTimer::timeout, [this] {
        if (isVisible())
            readLater(false);
    });
    m_timer.setInterval(lookMilliseconds);
}

frmStart::~frmStart() = default;

QSize frmStart::sizeHint() const {
    return {1240, 680};
}

void frmStart::Form_Load() {
    platform::remember(wantedKey, true);
    m_byUser = false;
    m_fresh = true;
    m_isRead = false;
    m_sections.clear();
    m_rights = Rights::read(core::MainDatabase());
    m_reading = std::make_shared<StartReading>();
    m_background = std::make_unique<core::Background>(core::MainDatabase().name(), this);
    show(m_sections);
    readLater(true);
    m_timer.start();
    tvwToday->setFocus();
}

void frmStart::Form_Activate() {
    if (!std::exchange(m_fresh, false))
        readLater(true);
}

bool frmStart::Form_QueryUnload() {
    if (m_byUser)
        platform::remember(wantedKey, false);
    m_timer.stop();
    m_background.reset();
    return true;
}

/// By its frame or Ctrl+F4; the shell's own end goes through unload().
void frmStart::closeEvent(QCloseEvent* event) {
    m_byUser = true;
    Form::closeEvent(event);
}

// Reading

void frmStart::readLater(bool evenIfUnchanged) {
    showExceptions();
    if (m_background->isBusy())
        return;
    auto sections = std::make_shared<std::optional<std::vector<StartSection>>>();
    m_background->run(
        [sections, reading = m_reading, rights = m_rights, evenIfUnchanged, now = values::now(),
         folder = core::shared().ProgramFolder](jet::Database& database, const core::Background&) {
            // Of a server nobody tells that something was written.
            const qint64 version =
                database.isServer()
                    ? -1
                    : jet::Native(database).value("PRAGMA data_version").toInteger();
            const bool recent =
                reading->at.isValid() && std::abs(reading->at.secsTo(now)) < secondsBetweenReadings;
            if (!evenIfUnchanged && recent && version == reading->version)
                return;
            auto read = startSections(database, rights, now.date());
            if (auto backup = backupSection(folder, rights, now))
                read.push_back(std::move(*backup));
            reading->version = version;
            reading->at = now;
            *sections = std::move(read);
        },
        [this, sections](const QString& failure) {
            guarded([&] {
                const QString state =
                    failure.isEmpty() ? u"Enter or a double click opens a line; Ctrl+K finds any "
                                        "record, Ctrl+L shows a module's list."_s
                                      : u"Could not be read: "_s + failure;
                if (*sections && (!m_isRead || **sections != m_sections)) {
                    m_isRead = true;
                    m_sections = **sections;
                    show(m_sections);
                }
                if (lblState->text() != state)
                    lblState->setText(state);
            });
        });
}

/// The count of the time exceptions is known without reading.
void frmStart::showExceptions() {
    if (!m_rights.mayUse(timeMenu))
        return;
    const auto lines = timemgmt::ExceptionWatch::on(core::MainDatabase().name()).lines();
    const qint64 count = lines ? static_cast<qint64>(lines->size()) : -1;
    if (count == m_exceptions)
        return;
    m_exceptions = count;
    if (m_isRead)
        show(m_sections);
}

void frmStart::show(const std::vector<StartSection>& read) {
    std::vector<StartSection> sections = read;
    if (m_exceptions > 0)
        sections.push_back(
            {u"Time exceptions"_s, m_exceptions, {}, {.form = u"frmTimeExceptions"_s}});
    // The same line is the current one again.
    const QTreeWidgetItem* current = tvwToday->currentItem();
    const int was = current ? current->data(0, targetRole).toInt() : -1;
    const std::optional<StartTarget> stays =
        was >= 0 ? std::optional(m_targets[static_cast<std::size_t>(was)]) : std::nullopt;
    QStringList closed;
    for (int i = 0; i < tvwToday->topLevelItemCount(); ++i) {
        if (!tvwToday->topLevelItem(i)->isExpanded())
            closed << tvwToday->topLevelItem(i)->data(0, targetRole + 1).toString();
    }
    tvwToday->clear();
    m_targets.clear();
    QFont bold = tvwToday->font();
    bold.setBold(true);
    QTreeWidgetItem* chosen = nullptr;
    const auto add = [&](QTreeWidgetItem* item, const StartTarget& target) {
        item->setData(0, targetRole, static_cast<int>(m_targets.size()));
        m_targets.push_back(target);
        if (!chosen && stays && *stays != StartTarget() && *stays == target)
            chosen = item;
        for (int column = 1; column < 5; ++column)
            item->setToolTip(column, item->text(column));
    };
    const auto addGroup = [&](const QString& title, const QString& text,
                              const StartTarget& target) {
        auto* group = new QTreeWidgetItem(tvwToday, {text});
        group->setFont(0, bold);
        group->setFirstColumnSpanned(true);
        group->setData(0, targetRole + 1, title);
        add(group, target);
        return group;
    };
    for (const StartSection& section : sections) {
        QTreeWidgetItem* group = addGroup(section.title, counted(section), section.all);
        for (const StartLine& line : section.lines)
            add(new QTreeWidgetItem(group,
                                    {line.what, line.who, line.subject, line.when, line.left}),
                line.target);
        if (section.count > static_cast<qint64>(section.lines.size()) && !section.lines.empty())
            add(new QTreeWidgetItem(group, {u"... and %1 more"_s.arg(values::format(
                                               static_cast<double>(section.count) -
                                                   static_cast<double>(section.lines.size()),
                                               u"#,##0"))}),
                section.all);
    }
    if (sections.empty() && m_isRead)
        addGroup(u"Nothing"_s, u"Nothing needs you today."_s, {});
    QTreeWidgetItem* lists = addGroup(u"Lists"_s, u"Lists"_s, {});
    for (const ListKind& kind : listKinds()) {
        if (m_rights.mayUse(kind.menu))
            add(new QTreeWidgetItem(lists, {kind.caption}), {.form = kind.form});
    }
    for (int i = 0; i < tvwToday->topLevelItemCount(); ++i) {
        QTreeWidgetItem* group = tvwToday->topLevelItem(i);
        group->setExpanded(!closed.contains(group->data(0, targetRole + 1).toString()));
    }
    tvwToday->setCurrentItem(chosen ? chosen : tvwToday->topLevelItem(0));
    if (!m_isRead)
        lblState->setText(u"Reading..."_s);
}

// Opening

void frmStart::cmdOpen_Click() {
    const QTreeWidgetItem* current = tvwToday->currentItem();
    if (current)
        follow(
            StartTarget(m_targets[static_cast<std::size_t>(current->data(0, targetRole).toInt())]));
}

void frmStart::follow(const StartTarget& target) {
    if (!target.module.isEmpty()) {
        openRecord(target.module, target.key);
    } else if (target.isDialog) {
        screen::Forms::showModal(target.form);
        readLater(true);
    } else if (!target.form.isEmpty()) {
        auto* list = dynamic_cast<ListScreen*>(screen::Forms::show(target.form));
        if (list && !target.view.isEmpty())
            list->showView(target.view);
    }
}

} // namespace desk
