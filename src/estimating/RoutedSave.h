#pragma once

#include "core/records/DocumentColumns.h"
#include "estimating/NoteStaging.h"
#include "estimating/Routing.h"
#include "estimating/RoutingMerge.h"

#include <functional>
#include <optional>

namespace estimating {

using core::Complaint;
using core::SaveOutcome;

/// What a kind of document adds to the save, within its transaction.
struct SaveSteps {
    /// Header columns that both changed, where this station's is to stand.
    QStringList settled = {};
    /// Over the rows as they are stored now, before anything is written.
    std::function<std::optional<Complaint>(const RoutedLines& stored)> refuse = {};
    /// Something of another station came into the document.
    std::function<void()> joined = {};
    /// The document has its number and its rows.
    std::function<void(qint64 documentNo)> alsoWrite = {};
};

/// Runs a step of a save or deletion: if it fails, its name goes behind the engine's text.
void runStep(jet::Database& database, const RoutingKind& kind, const QString& name,
             const std::function<void()>& work);

/// The stored row of a document, or an empty set to add one to (number 0). Throws rowDeleted.
jet::Recordset openDocument(jet::Database& database, const RoutingKind& kind, qint64 documentNo);
/// Take the rows of a job before they are read: a program that doesn't take turns with ours then
/// waits with its change, or we have waited for it. Figures that some program left empty become 0,
/// so that what others add to them counts.
void holdOperations(jet::Database& database, const RoutingKind& kind, qint64 documentNo);
void holdFixedCosts(jet::Database& database, const RoutingKind& kind, qint64 documentNo);
/// Lets the lines of a document come with what is read next.
void expectLines(jet::Database& database, const RoutingKind& kind, qint64 documentNo);

/// Deletes a document with its rows and notes in one transaction, after what `deleteFirst` deletes.
/// Throws jet::Error with the failed step in its text.
void deleteRouted(jet::Database& database, const RoutingKind& kind, qint64 documentNo,
                  const std::function<void()>& deleteFirst = {});

/// Writes a document with its lines and adopts its notes, in one transaction: a new row for number
/// 0, else over the stored one. `before` is the document as it was when its editing began: what
/// others have stored since goes into `draft`, and what both changed comes back as a conflict, with
/// nothing written. Throws jet::Error with the failed step in its text, and values::Overflow.
///
/// Draft is RoutedLines with a `header`.
template <class Draft, class Header>
SaveOutcome saveRouted(jet::Database& database, const RoutingKind& kind,
                       const core::DocumentColumns<Header>& columns, qint64 documentNo,
                       Draft& draft, const Draft* before, const SaveSteps& steps) {
    jet::Transaction transaction(database);
    const qint64 editedNo = documentNo;
    jet::Recordset row;
    Header storedHeader;
    RoutedLines stored;
    if (editedNo != 0) {
        runStep(database, kind, u"Delete "_s + kind.operTable,
                [&] { holdOperations(database, kind, documentNo); });
        runStep(database, kind, u"Delete "_s + kind.miscTable,
                [&] { holdFixedCosts(database, kind, documentNo); });
        expectLines(database, kind, documentNo);
    }
    runStep(database, kind, u"Update"_s, [&] { row = openDocument(database, kind, documentNo); });
    if (editedNo != 0) {
        storedHeader = columns.load(row);
        runStep(database, kind, u"Delete "_s + kind.operTable,
                [&] { stored.operations = loadOperRows(database, kind, documentNo); });
        runStep(database, kind, u"Delete "_s + kind.miscTable,
                [&] { stored.fixedCosts = loadMiscRows(database, kind, documentNo); });
        if (steps.refuse) {
            if (auto refusal = steps.refuse(stored))
                return {0, std::move(refusal)};
        }
        if (before) {
            auto conflict = columns.join(before->header, storedHeader, draft.header, steps.settled);
            if (!conflict)
                conflict =
                    joinOperations(kind, before->operations, stored.operations, draft.operations);
            if (!conflict)
                conflict =
                    joinFixedCosts(kind, before->fixedCosts, stored.fixedCosts, draft.fixedCosts);
            if (conflict)
                return {0, {}, std::move(conflict)};
            if (steps.joined &&
                (!columns.same(before->header, storedHeader) || !sameLines(kind, *before, stored)))
                steps.joined();
        }
    }
    runStep(database, kind, u"Update"_s, [&] {
        if (editedNo == 0) {
            row.addNew();
            columns.write(draft.header, row);
        } else {
            row.edit();
            columns.writeChanges(draft.header, storedHeader, row);
        }
        row.update();
        if (editedNo == 0)
            documentNo = row.lastAddedKey().toLong();
    });
    runStep(database, kind, kind.insertOperStep, [&] {
        replaceOperRows(database, kind, documentNo, stored.operations, draft.operations,
                        editedNo != 0);
    });
    runStep(database, kind, kind.insertMiscStep, [&] {
        replaceMiscRows(database, kind, documentNo, stored.fixedCosts, draft.fixedCosts,
                        editedNo != 0);
    });
    runStep(database, kind, u"Update "_s + kind.noteTable,
            [&] { NoteStaging(database, kind, editedNo).adopt(documentNo); });
    if (steps.alsoWrite)
        steps.alsoWrite(documentNo);
    draft.documentNo = documentNo;
    runStep(database, kind, u"Commit Trans"_s, [&] { transaction.commit(); });
    return {documentNo};
}

} // namespace estimating
