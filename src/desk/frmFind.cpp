#include "desk/frmFind.h"

#include "core/MirsaMain.h"
#include "desk/ListKinds.h"
#include "desk/OpenRecord.h"
#include "desk/Rights.h"
#include "desk/find/FindKinds.h"
#include "desk/find/Indexer.h"
#include "platform/controls/TextField.h"
#include "platform/screen/Layout.h"
#include "platform/screen/Seams.h"
#include "platform/values/Literals.h"

#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPointer>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace desk {

namespace {

constexpr int stateMilliseconds = 500;
constexpr int indexRole = Qt::UserRole;

/// Once the dialog has gone: at its end the window below gets its focus back, and with it the
/// front.
void openAfter(const QPointer<frmFind>& dialog, const QString& module, qint64 key) {
    QTimer::singleShot(0, qApp, [dialog, module, key] {
        if (dialog)
            openAfter(dialog, module, key);
        else
            screen::guardedCall([&] { openRecord(module, key); });
    });
}

} // namespace

frmFind::frmFind() : Form(QString::fromLatin1(formName), u"Find Anything"_s) {
    auto* outside = new QVBoxLayout(this);
    screen::Fields fields(this, outside);
    txtFind = fields.text(u"txtFind"_s, u"&Find:"_s, screen::wide(50));
    txtFind->setToolTip(u"A number, or words: names, part numbers, purchase orders, notes"_s);
    txtFind->installEventFilter(this);
    tvwFound = screen::named(new QTreeWidget(this), u"tvwFound"_s, u"Records found"_s);
    tvwFound->setHeaderLabels(
        {u"Record"_s, u"Name or part"_s, u"Description"_s, u"Company or place"_s});
    tvwFound->setRootIsDecorated(false);
    tvwFound->setUniformRowHeights(true);
    tvwFound->setAllColumnsShowFocus(true);
    tvwFound->setMinimumHeight(160);
    const int character = fontMetrics().averageCharWidth();
    for (const auto& [column, characters] : {std::pair{0, 18}, {1, 26}, {2, 42}, {3, 20}})
        tvwFound->setColumnWidth(column, character * characters + 12);
    outside->addWidget(tvwFound, 1);
    lblState = screen::named(new QLabel(this), u"lblState"_s, u"What was found"_s);
    outside->addWidget(lblState);
    screen::ButtonBar bar(this, outside);
    bar.stretch();
    cmdOpen = bar.button(u"cmdOpen"_s, u"&Open"_s);
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdOpen);
    setCancelButton(cmdClose);
    on(cmdOpen, &frmFind::cmdOpen_Click);
    on(cmdClose, [this] { unload(); });
    on(txtFind, &QLineEdit::textEdited, [this] { search(); });
    on(tvwFound, &QTreeWidget::itemActivated, [this] { cmdOpen_Click(); });
    on(&m_timer, &QTimer::timeout, [this] { showState(); });
    m_timer.setInterval(stateMilliseconds);
    resize(860, 480);
}

frmFind::~frmFind() = default;

void frmFind::Form_Load() {
    const Rights rights = Rights::read(core::MainDatabase());
    m_kinds.clear();
    for (std::size_t i = 0; i < findKinds().size(); ++i) {
        if (rights.mayUse(listKind(findKinds()[i].module)->menu))
            m_kinds.insert(static_cast<int>(i));
    }
    const QString location = core::MainDatabase().name();
    Indexer::on(location);
    m_finder = std::make_shared<std::unique_ptr<Finder>>();
    m_background = std::make_unique<core::Background>(location, this);
    showFound({});
    m_timer.start();
    txtFind->setFocus();
}

bool frmFind::Form_QueryUnload() {
    m_timer.stop();
    m_background.reset();
    return true;
}

void frmFind::search() {
    const QString text = txtFind->text();
    m_opens = false;
    if (text.trimmed().isEmpty()) {
        m_answered.clear();
        showFound({});
        return;
    }
    const Indexer* indexer = Indexer::on(core::MainDatabase().name());
    auto found = std::make_shared<std::vector<FoundRecord>>();
    m_background->run(
        [finder = m_finder, path = indexer ? indexer->path() : QString(), text, kinds = m_kinds,
         found](jet::Database& database, const core::Background&) {
            if (!*finder)
                *finder = std::make_unique<Finder>(database, path);
            try {
                *found = (*finder)->find(text, kinds);
            } catch (...) {
                finder->reset(); // the next one begins on a new connection
                throw;
            }
        },
        [this, found, text](const QString& failure) {
            guarded([&] {
                m_failure = failure;
                m_answered = text;
                showFound(*found);
                if (std::exchange(m_opens, false))
                    cmdOpen_Click();
            });
        });
}

void frmFind::showFound(const std::vector<FoundRecord>& found) {
    m_found = found;
    tvwFound->clear();
    QTreeWidgetItem* group = nullptr;
    int kind = -1;
    for (std::size_t i = 0; i < m_found.size(); ++i) {
        const FoundRecord& record = m_found[i];
        const FindKind& of = findKinds()[static_cast<std::size_t>(record.kind)];
        if (record.kind != kind) {
            kind = record.kind;
            group = new QTreeWidgetItem(tvwFound, {listKind(of.module)->caption});
            group->setFlags(Qt::ItemIsEnabled);
            group->setFirstColumnSpanned(true);
            QFont bold = tvwFound->font();
            bold.setBold(true);
            group->setFont(0, bold);
        }
        auto* item = new QTreeWidgetItem(
            group, {of.word + u' ' + QString::number(record.key), record.name,
                    record.line.isEmpty() ? record.detail : record.line, record.beside});
        item->setData(0, indexRole, static_cast<int>(i));
        for (int column = 1; column < 4; ++column)
            item->setToolTip(column, item->text(column));
    }
    tvwFound->expandAll();
    if (!m_found.empty())
        tvwFound->setCurrentItem(tvwFound->topLevelItem(0)->child(0));
    showState();
}

void frmFind::showState() {
    QString state;
    const Indexer* indexer = Indexer::on(core::MainDatabase().name());
    if (!m_failure.isEmpty())
        state = u"Could not search: "_s + m_failure;
    else if (m_kinds.isEmpty())
        state = u"You don't have the right to any of the modules."_s;
    else if (!m_answered.isEmpty() && m_found.empty() && txtFind->text() == m_answered)
        state = u"Nothing was found."_s;
    else if (m_found.empty())
        state = u"Type a number, or any words of a record."_s;
    if (indexer && indexer->percent() < 100)
        state += u" Words are being read in: %1 %."_s.arg(indexer->percent());
    if (lblState->text() == state)
        return;
    lblState->setWordWrap(!m_failure.isEmpty());
    lblState->setText(state);
}

bool frmFind::eventFilter(QObject* object, QEvent* event) {
    if (object == txtFind && event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Down || key == Qt::Key_Up) {
            step(key == Qt::Key_Down ? 1 : -1);
            return true;
        }
        if (key == Qt::Key_PageDown || key == Qt::Key_PageUp) {
            step(key == Qt::Key_PageDown ? 10 : -10);
            return true;
        }
    }
    return Form::eventFilter(object, event);
}

void frmFind::step(int by) {
    const QTreeWidgetItem* current = tvwFound->currentItem();
    if (!current || m_found.empty())
        return;
    const int last = static_cast<int>(m_found.size()) - 1;
    const int wanted = std::clamp(current->data(0, indexRole).toInt() + by, 0, last);
    for (QTreeWidgetItemIterator each(tvwFound); *each; ++each) {
        if ((*each)->parent() && (*each)->data(0, indexRole).toInt() == wanted) {
            tvwFound->setCurrentItem(*each);
            return;
        }
    }
}

void frmFind::cmdOpen_Click() {
    if (txtFind->text() != m_answered && !txtFind->text().trimmed().isEmpty()) {
        m_opens = true; // what was asked for, not what stands there from before
        return;
    }
    const QTreeWidgetItem* current = tvwFound->currentItem();
    if (!current || !current->parent())
        return;
    const FoundRecord record =
        m_found[static_cast<std::size_t>(current->data(0, indexRole).toInt())];
    openAfter(this, findKinds()[static_cast<std::size_t>(record.kind)].module, record.key);
    unload();
}

} // namespace desk
