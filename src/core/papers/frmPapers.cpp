#include "core/papers/frmPapers.h"

#include "core/MirsaMain.h"
#include "core/journal/RecordHistory.h"
#include "core/keeping/Files.h"
#include "core/papers/Aside.h"
#include "core/papers/PaperDrop.h"
#include "core/papers/PaperFiles.h"
#include "core/records/RecordScreen.h"
#include "platform/controls/DropMenu.h"
#include "platform/controls/ListView.h"
#include "platform/report/ProgressBox.h"
#include "platform/screen/Layout.h"
#include "platform/screen/MsgBox.h"
#include "platform/screen/Pointer.h"
#include "platform/screen/Seams.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QFileInfo>
#include <QImage>
#include <QLabel>
#include <QMimeData>
#include <QTemporaryDir>
#include <QVBoxLayout>

namespace core {

using controls::GridColumn;
using keeping::PaperStore;
using State = PaperStore::State;
using screen::Buttons;
using screen::Icon;

namespace {

constexpr int stateColumn = 6;
const QString title = u"Papers"_s;

QString inWords(State state) {
    switch (state) {
    case State::Good:
        return {};
    case State::Missing:
        return u"Missing"_s;
    case State::Changed:
        return u"Changed from outside"_s;
    case State::Unreadable:
        return u"Out of reach"_s;
    }
    return {};
}

void tell(const QString& text, Icon icon = Icon::Exclamation) {
    screen::MsgBox(text, Buttons::Ok, icon, title);
}

std::vector<qint64> idsOf(const std::vector<Paper>& papers) {
    std::vector<qint64> ids;
    ids.reserve(papers.size());
    for (const Paper& paper : papers)
        ids.push_back(paper.id);
    return ids;
}

} // namespace

frmPapers::frmPapers() : Form(QString::fromLatin1(formName), title) {
    setAcceptDrops(true);
    auto* outside = new QVBoxLayout(this);
    lvwPapers = screen::named(new controls::ListView(this), u"lvwPapers"_s, title);
    lvwPapers->setColumns({{u"Paper"_s, 34},
                           {u"Beside"_s, 20},
                           {u"Size"_s, 10, GridColumn::Kind::Number},
                           {u"Added"_s, 18},
                           {u"By"_s, 12},
                           {u"Behind traveler"_s, 14},
                           {u"State"_s, 20}});
    lvwPapers->setMultipleSelection(true);
    outside->addWidget(lvwPapers, 1);
    lblState = screen::named(new QLabel(this), u"lblState"_s, u"How many there are"_s);
    lblState->setWordWrap(true);
    outside->addWidget(lblState);
    makeButtons(outside);
    resize(980, 420);
    arrange();
}

void frmPapers::makeButtons(QBoxLayout* outside) {
    screen::ButtonBar bar(this, outside);
    cmdOpen = bar.button(u"cmdOpen"_s, u"&Open"_s);
    cmdSave = bar.button(u"cmdSave"_s, u"&Save a Copy..."_s);
    cmdAdd = bar.button(u"cmdAdd"_s, u"&Add..."_s);
    cmdKeep = bar.button(u"cmdKeep"_s, u"&Keep Here Too"_s);
    cmdBehind = bar.button(u"cmdBehind"_s, u"Print &Behind Traveler"_s);
    cmdRemove = bar.button(u"cmdRemove"_s, u"&Remove"_s);
    bar.stretch();
    QPushButton* cmdClose = bar.button(u"cmdClose"_s, u"&Close"_s);
    setDefaultButton(cmdOpen);
    setCancelButton(cmdClose);
    on(cmdOpen, &frmPapers::cmdOpen_Click);
    on(cmdSave, &frmPapers::cmdSave_Click);
    on(cmdAdd, &frmPapers::cmdAdd_Click);
    on(cmdKeep, &frmPapers::cmdKeep_Click);
    on(cmdBehind, &frmPapers::cmdBehind_Click);
    on(cmdRemove, &frmPapers::cmdRemove_Click);
    on(cmdClose, [this] { unload(); });
    on(lvwPapers->rowDoubleClicked, [this](int) { cmdOpen_Click(); });
    on(lvwPapers->selectionChangedByUser, [this] { arrange(); });
    controls::offerInMenu(lvwPapers, {cmdOpen, cmdSave, cmdAdd, cmdKeep, cmdBehind, cmdRemove});
    const auto keyed = [this](const QString& text, const QKeySequence& keys,
                              void (frmPapers::*handler)()) {
        auto* action = new QAction(text, this);
        action->setShortcut(keys);
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
        addAction(action);
        on(action, handler);
    };
    keyed(u"Paste"_s, QKeySequence(Qt::CTRL | Qt::Key_V), &frmPapers::cmdPaste_Click);
    keyed(u"Remove"_s, QKeySequence(Qt::Key_Delete), &frmPapers::cmdRemove_Click);
}

void frmPapers::Form_Activate() {
    if (m_kind)
        reload();
}

void frmPapers::showRecord(const QString& screen, qint64 key) {
    m_kind = paperKindOf(screen);
    m_key = key;
    const Access access = readAccess();
    m_mayEdit = access.has(m_kind->right);
    m_others.clear();
    for (const PaperKind& kind : paperKinds())
        if (access.has(kind.right))
            m_others += kind.name;
    setWindowTitle(u"Papers of %1 %2"_s.arg(m_kind->words).arg(key));
    reload();
}

void frmPapers::reload() {
    jet::Database& database = MainDatabase();
    m_check.reset();
    if (!keepsPapers(database)) {
        lblState->setText(u"This database keeps no papers yet: mirsa-setup upgrade lets it."_s);
        return;
    }
    m_papers = readPapers(database, papersSelect(*m_kind, m_key, m_others), *m_kind, m_key);
    std::vector<controls::ListRow> rows;
    std::vector<keeping::Content> contents;
    for (const Paper& paper : m_papers) {
        rows.push_back({u"P%1"_s.arg(paper.id),
                        {paper.fileName, placeOf(paper), sizeInWords(paper.content.bytes),
                         paper.added.toString(u"yyyy-MM-dd hh:mm"_s), paper.addedBy,
                         paper.behind ? u"Yes"_s : QString(), QString()}});
        contents.push_back(paper.content);
    }
    lvwPapers->setRows(std::move(rows));
    lblState->setText(m_papers.empty()
                          ? u"No papers yet. Add files, paste them, or drop them on this window or "
                            "on the record's."_s
                      : m_papers.size() == 1 ? u"1 paper."_s
                                             : u"%1 papers."_s.arg(m_papers.size()));
    arrange();
    tellModule();
    if (m_papers.empty())
        return;
    try {
        m_check = std::make_unique<PaperCheck>(
            paperStore(database, shared().ProgramFolder), std::move(contents), this,
            [this](const QString& hash, State state) { showState(hash, state); });
    } catch (const keeping::Refusal& refusal) {
        lblState->setText(refusal.text());
    }
}

/// The record's own window shows how many there are.
void frmPapers::tellModule() const {
    screen::Form* module = screen::Forms::find(m_kind->screen);
    const auto* records = dynamic_cast<RecordScreen*>(module);
    const auto* list = dynamic_cast<ShownRecord*>(module);
    if (m_key == (records ? records->currentKey() : list ? list->shownRecord() : 0))
        module->setProperty(papersProperty, static_cast<int>(m_papers.size()));
}

void frmPapers::showState(const QString& hash, State state) {
    int wrong = 0;
    for (const Paper& paper : m_papers) {
        const int row = lvwPapers->rowOf(u"P%1"_s.arg(paper.id));
        if (paper.content.hash == hash && row >= 0)
            lvwPapers->setRowText(row, stateColumn, inWords(state));
        wrong += row >= 0 && !lvwPapers->rowText(row, stateColumn).isEmpty() ? 1 : 0;
    }
    if (wrong > 0)
        lblState->setText(
            (m_papers.size() == 1
                 ? u"1 paper, %1 not as stored. "_s.arg(wrong)
                 : u"%1 papers, %2 not as stored. "_s.arg(m_papers.size()).arg(wrong)) +
            u"A file that is added again is whole again; mirsa-setup check --mend brings back what "
            "the backups have."_s);
}

void frmPapers::arrange() {
    const bool any = !selected(false).empty(), own = !selected(true).empty();
    cmdOpen->setEnabled(any);
    cmdSave->setEnabled(any);
    cmdAdd->setEnabled(m_kind && m_mayEdit);
    cmdKeep->setEnabled(m_mayEdit && selected(false).size() > selected(true).size());
    cmdBehind->setEnabled(m_mayEdit && own && m_kind->behind);
    cmdRemove->setEnabled(m_mayEdit && own);
}

bool frmPapers::isOwn(const Paper& paper) const {
    return paper.kind == m_kind->name && paper.record == m_key;
}

QString frmPapers::placeOf(const Paper& paper) const {
    const PaperKind* kind = paperKind(paper.kind);
    return isOwn(paper) ? u"This "_s + m_kind->words.left(1).toLower() + m_kind->words.mid(1)
                        : u"%1 %2"_s.arg(kind ? kind->words : paper.kind).arg(paper.record);
}

std::vector<Paper> frmPapers::selected(bool own) const {
    std::vector<Paper> papers;
    for (const int row : lvwPapers->selectedRows())
        for (const Paper& paper : m_papers)
            if (paper.id == lvwPapers->keyNumber(row) && (!own || isOwn(paper)))
                papers.push_back(paper);
    return papers;
}

std::optional<PaperStore> frmPapers::store() {
    try {
        return paperStore(MainDatabase(), shared().ProgramFolder);
    } catch (const keeping::Refusal& refusal) {
        tell(refusal.text());
        return std::nullopt;
    }
}

void frmPapers::tellState(const Paper& paper, State state) {
    showState(paper.content.hash, state);
    if (state == State::Missing)
        tell(paper.fileName + u" is missing from the folder for papers: somebody has removed the "
                              "file there."_s);
    else if (state == State::Changed)
        tell(paper.fileName + u" isn't what was stored: the file was changed from outside. It "
                              "isn't opened."_s);
    else if (state == State::Unreadable)
        tell(paper.fileName +
             u" can't be read just now. The folder for papers may be out of reach."_s);
}

void frmPapers::work(const QString& words, std::size_t files,
                     const std::function<void(const keeping::Progress&)>& work) {
    const screen::BusyPointer hourglass;
    report::ProgressBox progress(words, windowTitle(), this, static_cast<int>(files) * 100);
    runAside(work, [&](int percent) { return progress.goOn(percent); });
}

bool frmPapers::copyTo(const Paper& paper, const QString& path) {
    const auto files = store();
    if (!files)
        return false;
    State state = State::Unreadable;
    try {
        work(u"Reading %1 ..."_s.arg(paper.fileName), 1, [&](const keeping::Progress& progress) {
            state = files->copyOut(paper.content, path, progress);
        });
    } catch (const keeping::Refusal& refusal) {
        tell(refusal.text());
        return false;
    }
    tellState(paper, state);
    return state == State::Good;
}

void frmPapers::cmdOpen_Click() {
    for (const Paper& paper : selected(false)) {
        QString path;
        try {
            path = placeForCopy(paper.fileName);
        } catch (const keeping::Refusal& refusal) {
            tell(refusal.text());
            return;
        }
        if (!copyTo(paper, path))
            continue;
        // What is opened is a copy: nothing that is done to it comes back by itself.
        QFile::setPermissions(path, QFileDevice::ReadOwner);
        QString error;
        if (!screen::seams().startProgram(u"xdg-open"_s, {path}, error))
            tell(paper.fileName + u" can't be opened: "_s + error);
    }
}

void frmPapers::cmdSave_Click() {
    for (const Paper& paper : selected(false)) {
        const QString path = screen::seams().saveFile(u"Save a Copy"_s, paper.fileName, {});
        if (path.isEmpty())
            return;
        if (copyTo(paper, path))
            QFile::setPermissions(path, QFile::permissions(path) | QFileDevice::WriteOwner);
    }
}

void frmPapers::cmdAdd_Click() {
    addFiles(screen::seams().openFiles(u"Add Papers"_s, {}, {}));
}

void frmPapers::cmdPaste_Click() {
    const QMimeData* data = QApplication::clipboard()->mimeData();
    const QStringList files = PaperDrop::filesOf(data);
    if (!files.isEmpty()) {
        addFiles(files);
        return;
    }
    const QImage picture = QApplication::clipboard()->image();
    const QTemporaryDir folder;
    const QString path =
        folder.filePath(u"Picture %1.png"_s.arg(values::now().toString(u"yyyy-MM-dd hh.mm.ss"_s)));
    if (picture.isNull() || !picture.save(path))
        tell(u"There is no file and no picture on the clipboard."_s, Icon::Information);
    else
        addFiles({path});
}

void frmPapers::addFiles(const QStringList& paths) {
    if (paths.isEmpty() || !m_kind)
        return;
    if (!m_mayEdit) {
        tell(u"You may look at these papers, and not add any."_s);
        return;
    }
    const auto files = store();
    if (!files || !keepsPapers(MainDatabase()))
        return;
    if (isGone(MainDatabase(), *files)) {
        tell(u"The folder for papers, %1, is out of reach. Nothing was added."_s.arg(
            files->folder()));
        return;
    }
    QStringList refused;
    const std::vector<NamedContent> stored = storeFiles(*files, paths, refused);
    if (!stored.empty() && putBeside(stored)) {
        reload();
        for (const NamedContent& file : stored)
            for (const Paper& paper : m_papers)
                if (isOwn(paper) && paper.content.hash == file.content.hash)
                    lvwPapers->selectKey(u"P%1"_s.arg(paper.id));
        arrange();
        lvwPapers->setFocus();
    }
    if (!refused.isEmpty())
        tell(refused.join(u"\n"_s));
}

bool frmPapers::putBeside(const std::vector<NamedContent>& stored) {
    std::optional<int> added;
    // Retry writes the rows alone, and passes over what was written before the line broke.
    const bool written = guarded([&] {
        added = addPapers(MainDatabase(), *m_kind, m_key, stored, shared().CurrentUserName);
    });
    if (!written)
        tell(u"The papers could not be put beside the record. Your files are as they were: add "
             "them again when the database can be reached."_s);
    else if (!added)
        tell(u"%1 %2 isn't there any more: somebody has deleted it. Your files are as they were."_s
                 .arg(m_kind->words)
                 .arg(m_key));
    return added.has_value();
}

std::vector<NamedContent> frmPapers::storeFiles(const PaperStore& files, const QStringList& paths,
                                                QStringList& refused) {
    std::vector<NamedContent> stored;
    work(u"Storing the files ..."_s, static_cast<std::size_t>(paths.size()),
         [&](const keeping::Progress& progress) {
             int before = 0;
             bool brokenOff = false;
             for (const QString& path : paths) {
                 if (brokenOff)
                     break;
                 try {
                     const auto goOn = [&](int percent) {
                         brokenOff = !progress(before + percent);
                         return !brokenOff;
                     };
                     stored.push_back({QFileInfo(path).fileName(), files.add(path, goOn)});
                 } catch (const keeping::Refusal& refusal) {
                     refused += refusal.text();
                 }
                 before += 100;
             }
         });
    return stored;
}

void frmPapers::cmdKeep_Click() {
    std::vector<NamedContent> files;
    for (const Paper& paper : selected(false))
        if (!isOwn(paper))
            files.push_back({paper.fileName, paper.content});
    if (putBeside(files))
        reload();
}

void frmPapers::cmdBehind_Click() {
    const std::vector<Paper> papers = selected(true);
    for (const Paper& paper : papers)
        if (!isPrintable(paper.fileName)) {
            tell(paper.fileName + u" is neither a PDF nor a picture: only these are printed "
                                  "behind the traveler."_s);
            return;
        }
    const bool all =
        std::all_of(papers.begin(), papers.end(), [](const Paper& paper) { return paper.behind; });
    printBehind(MainDatabase(), idsOf(papers), !all);
    reload();
}

void frmPapers::cmdRemove_Click() {
    const std::vector<Paper> papers = selected(true);
    if (!cmdRemove->isEnabled() || papers.empty())
        return;
    const QString what =
        papers.size() == 1 ? papers.front().fileName : u"these %1 papers"_s.arg(papers.size());
    if (!screen::confirmDeletion(u"Do you want to remove %1 from %2 %3? The file itself is kept "
                                 "until a backup has it."_s.arg(what, m_kind->words)
                                     .arg(m_key),
                                 title))
        return;
    removePapers(MainDatabase(), idsOf(papers));
    reload();
}

} // namespace core
