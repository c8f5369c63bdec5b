#include "accounting/Answer.h"
#include "core/drafts/Draft.h"
#include "estimating/EstimateStore.h"
#include "estimating/RoutingDraft.h"
#include "platform/jet/Location.h"
#include "platform/jet/Translate.h"
#include "platform/report/ReportError.h"
#include "platform/report/ReportFile.h"
#include "platform/report/SelectionFormula.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "setup/Setup.h"

#include <QFile>
#include <QJsonDocument>
#include <QTemporaryDir>

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <map>

// Texts that come from outside, mutated by libFuzzer: whatever they hold, they are taken or refused
// with an error of their kind. MIRSA_FUZZ names which ones; corpus/ has some of each to begin with.

namespace {

/// An empty shop, to say what the names of a statement are.
jet::Database& shop() {
    static const QTemporaryDir folder;
    static const auto made = [] {
        auto database = jet::Database::createFile(folder.filePath(u"Mirsa.mdb"_s));
        setup::createTables(*database);
        return database;
    }();
    return *made;
}

void statement(const QByteArray& input) {
    const QString text = QString::fromUtf8(input);
    const jet::Schema& schema = shop().schema();
    for (const jet::Dialect& dialect : {jet::Dialect::sqlite(), jet::Dialect::postgres()}) {
        try {
            const jet::Translation translated =
                jet::translate(jet::normalize(text), schema, dialect);
            if (translated.kind == jet::StatementKind::Select && !dialect.isPostgres())
                shop().openRecordset(text, jet::RecordsetType::Snapshot);
        } catch (const jet::Error&) {
            continue;
        }
    }
}

void formula(const QByteArray& input) {
    try {
        report::whereCondition(
            QString::fromUtf8(input),
            [](const QString& table, const QString& field) -> std::optional<report::FormulaField> {
                const jet::Table* known = shop().schema().table(table);
                const jet::Column* column = known ? known->column(field) : nullptr;
                if (!column)
                    return std::nullopt;
                return report::FormulaField{u'[' + field + u']', column->type, {}};
            });
    } catch (const report::ReportError&) {
        return;
    }
}

/// Fields that hold one of each kind.
class AnyRow : public report::Scope {
  public:
    jet::Value field(const QString& name) const override {
        switch (name.size() % 4) {
        case 0:
            return name;
        case 1:
            return 12.5;
        case 2:
            return QDate(2026, 3, 2);
        default:
            return {};
        }
    }
    jet::Value total(int) const override { return 3; }
};

void reportFile(const QByteArray& input) {
    try {
        report::readReportText(input, u"fuzz.rpt"_s);
    } catch (const report::ReportError&) {
    }
    try {
        const report::Template text = report::Template::parse(QString::fromUtf8(input));
        text.text(AnyRow());
        text.sql(AnyRow());
    } catch (const std::invalid_argument&) {
    } catch (const report::ReportError&) {
    }
}

void serverFile(const QByteArray& input) {
    static const QTemporaryDir folder;
    QFile file(folder.filePath(u"Mirsa.server"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(input) != input.size())
        std::abort();
    file.close();
    try {
        const QString uri = jet::serverOfFolder(folder.path());
        if (!jet::passwordOf(jet::withoutPassword(uri)).isEmpty())
            std::abort();
        jet::withoutPassword(u"FATAL: "_s + uri, uri);
    } catch (const jet::Error&) {
    }
}

void answer(const QByteArray& input) {
    QString reason;
    const auto read = accounting::Answer::load(QString::fromUtf8(input), reason);
    if (!read)
        return;
    for (const auto* tag : {u"InvoiceAddRs", u"CustomerQueryRs", u"BillAddRs"}) {
        for (const auto& item : read->items(QString::fromUtf16(tag))) {
            accounting::unknownKind(item.status);
            accounting::nameInUse(item.status);
            accounting::textAt(item.content, u"InvoiceRet/TxnID"_s);
        }
    }
}

void draft(const QByteArray& input) {
    const core::Draft read{.form = u"frmEstimate"_s,
                           .entry = QJsonDocument::fromJson(input).object()};
    read.inWords();
    try {
        const QJsonObject now = read.entry[u"now"_s].toObject();
        estimating::unpackRouting(now[u"lines"_s].toObject(), {});
        core::unpackDocument(estimating::estimateColumns(), now[u"header"_s].toObject(),
                             estimating::EstimateHeader());
    } catch (const values::Overflow&) {
    }
}

const std::function<void(const QByteArray&)>& target() {
    static const std::map<std::string, std::function<void(const QByteArray&)>> targets{
        {"statements", statement}, {"formulas", formula}, {"reports", reportFile},
        {"server", serverFile},    {"answers", answer},   {"drafts", draft}};
    const auto found = targets.find(qgetenv("MIRSA_FUZZ").toStdString());
    if (found == targets.end()) {
        std::fputs("MIRSA_FUZZ names no kind of text\n", stderr);
        std::exit(2);
    }
    return found->second;
}

} // namespace

// Outside of the time that an input may take.
extern "C" int LLVMFuzzerInitialize(int*, char***) {
    target();
    shop();
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    static const auto& take = target();
    take(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    return 0;
}
