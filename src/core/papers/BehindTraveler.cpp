#include "core/papers/BehindTraveler.h"

#include "core/MirsaMain.h"
#include "core/keeping/Files.h"
#include "core/papers/Aside.h"
#include "platform/report/Attachment.h"
#include "platform/report/ReportError.h"
#include "platform/values/Literals.h"

namespace core {

std::vector<Paper> papersBehind(qint64 jobNo) {
    jet::Database& database = MainDatabase();
    if (!keepsPapers(database))
        return {};
    return readPapers(database, behindSelect(jobNo), *paperKind(u"Job"_s), jobNo);
}

namespace {

/// Of a large one the work on the report goes on meanwhile, and can be cancelled.
keeping::PaperStore::State checked(const keeping::PaperStore& store,
                                   const keeping::Content& content, const keeping::Progress& goOn) {
    auto state = keeping::PaperStore::State::Unreadable;
    bool goesOn = true;
    runAside([&](const keeping::Progress& read) { state = store.check(content, read); },
             [&](int percent) { return goesOn = goesOn && goOn(percent); });
    if (!goesOn)
        throw report::ReportError(report::codes::cancelled, u"Cancelled"_s);
    return state;
}

} // namespace

QStringList appendPapers(report::Document& document, const std::vector<Paper>& papers,
                         const report::Progress& progress) {
    QStringList complaints;
    try {
        const auto goOn = [&](int) { return !progress || progress(document.pageCount()); };
        const keeping::PaperStore store = paperStore(MainDatabase(), shared().ProgramFolder);
        // Stored as they came: the latest is read first, and the first is printed first.
        for (auto paper = papers.rbegin(); paper != papers.rend(); ++paper) {
            using State = keeping::PaperStore::State;
            const State state = checked(store, paper->content, goOn);
            const QString why =
                state == State::Missing   ? u"the file is missing"_s
                : state == State::Changed ? u"the file was changed from outside"_s
                : state == State::Good
                    ? report::appendFile(document, store.pathOf(paper->content.hash), progress)
                    : u"the folder for papers is out of reach"_s;
            if (!why.isEmpty())
                complaints += paper->fileName + u": "_s + why;
        }
    } catch (const keeping::Refusal& refusal) {
        complaints += refusal.text();
    }
    return complaints;
}

} // namespace core
