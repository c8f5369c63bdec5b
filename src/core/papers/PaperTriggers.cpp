#include "core/papers/PaperTriggers.h"

#include "core/papers/PaperKinds.h"
#include "platform/jet/Native.h"
#include "platform/values/Literals.h"

#include <QSet>

namespace core {

namespace {

constexpr char function[] = "mirsa_papers_gone";

QByteArray triggerName(const PaperKind& kind) {
    return "papers_of_" + kind.table.toLower().toUtf8();
}

} // namespace

void installPaperTriggers(jet::Database& database) {
    const jet::Native native(database);
    QByteArray all;
    if (database.isServer()) {
        const QByteArray schema =
            jet::Native(database).value("SELECT quote_ident(current_schema())").toText().toUtf8();
        all = QByteArray("CREATE OR REPLACE FUNCTION ") + function +
              "() RETURNS trigger LANGUAGE plpgsql SECURITY DEFINER SET search_path = " + schema +
              ", pg_temp AS $body$BEGIN DELETE FROM papers WHERE kind = TG_ARGV[0] AND record IN "
              "(SELECT (to_jsonb(g)->>TG_ARGV[1])::integer FROM gone g); RETURN NULL; "
              "END$body$;\n";
    }
    for (const PaperKind& kind : paperKinds()) {
        const QByteArray name = triggerName(kind), table = native.quoted(kind.table);
        if (database.isServer())
            all += "DROP TRIGGER IF EXISTS " + name + " ON " + table + ";\nCREATE TRIGGER " + name +
                   " AFTER DELETE ON " + table +
                   " REFERENCING OLD TABLE AS gone FOR EACH STATEMENT EXECUTE FUNCTION " +
                   function + "('" + kind.name.toUtf8() + "', '" + kind.key.toLower().toUtf8() +
                   "');\n";
        else
            all += "DROP TRIGGER IF EXISTS " + name + ";\nCREATE TRIGGER " + name +
                   " AFTER DELETE ON " + table + " BEGIN DELETE FROM Papers WHERE Kind = '" +
                   kind.name.toUtf8() + "' AND Record = OLD." + native.quoted(kind.key) +
                   "; END;\n";
    }
    jet::Native(database).execute(database.isServer() ? "DO $all$ BEGIN " + all + " END $all$"
                                                      : all);
}

bool hasPaperTriggers(jet::Database& database) {
    jet::Native native(database);
    QSet<QString> found;
    for (const jet::Native::Row& row : native.rows(
             database.isServer() ? "SELECT tgname::text FROM pg_trigger WHERE NOT tgisinternal AND "
                                   "tgenabled <> 'D'"
                                 : "SELECT name FROM sqlite_schema WHERE type = 'trigger'"))
        found.insert(row.front().toText());
    for (const PaperKind& kind : paperKinds())
        if (!found.contains(QString::fromUtf8(triggerName(kind))))
            return false;
    return true;
}

} // namespace core
