#include "support/DatabaseFixture.h"

#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "setup/Setup.h"

#include <QCoreApplication>
#include <QFile>
#include <QUrl>

#include <libpq-fe.h>

namespace testsupport {

namespace {

QString serverUri() {
    return qEnvironmentVariable("MIRSA_TEST_SERVER");
}

QString uriOf(const QString& database) {
    QUrl url(serverUri());
    url.setPath(u'/' + database);
    return url.toString(QUrl::FullyEncoded);
}

QString freshName() {
    static int count = 0;
    return u"mirsa_test_%1_%2"_s.arg(QCoreApplication::applicationPid()).arg(++count);
}

/// The delivered shop, made once for a run and copied from then on.
class Template {
  public:
    static const QString& file() {
        static const Template made(EngineKind::File);
        return made.m_location;
    }
    static const QString& serverDatabase() {
        static const Template made(EngineKind::Server);
        return made.m_location;
    }
    ~Template() {
        if (m_kind == EngineKind::Server)
            onTestServer(u"DROP DATABASE IF EXISTS %1"_s.arg(m_location));
    }

  private:
    explicit Template(EngineKind kind) : m_kind(kind) {
        std::unique_ptr<jet::Database> database;
        if (kind == EngineKind::File) {
            m_location = m_folder.filePath(u"Shop.mdb"_s);
            database = jet::Database::createFile(m_location);
        } else {
            m_location = freshName();
            onTestServer(u"CREATE DATABASE %1 TEMPLATE template0"_s.arg(m_location));
            database = jet::Database::openServer(uriOf(m_location));
        }
        setup::install(*database);
    }

    EngineKind m_kind;
    QTemporaryDir m_folder;
    QString m_location;
};

} // namespace

void onTestServer(const QString& sql) {
    PGconn* connection = PQconnectdb(serverUri().toUtf8().constData());
    PGresult* result = PQexec(connection, sql.toUtf8().constData());
    const bool done = PQresultStatus(result) == PGRES_COMMAND_OK;
    if (!done)
        ADD_FAILURE() << sql.toStdString() << ": " << PQerrorMessage(connection);
    PQclear(result);
    PQfinish(connection);
}

bool TestDatabase::hasServer() {
    return !serverUri().isEmpty();
}

TestDatabase::TestDatabase(EngineKind kind, Contents contents) : m_kind(kind) {
    const bool shop = contents == Contents::Shop;
    if (kind == EngineKind::File) {
        m_location = m_folder.filePath(u"Mirsa.mdb"_s);
        if (shop)
            QFile::copy(Template::file(), m_location);
        m_database =
            shop ? jet::Database::openFile(m_location) : jet::Database::createFile(m_location);
        return;
    }
    const QString source = shop ? Template::serverDatabase() : u"template0"_s;
    m_name = freshName();
    onTestServer(u"CREATE DATABASE %1 TEMPLATE %2"_s.arg(m_name, source));
    m_location = uriOf(m_name);
    m_database = jet::Database::openServer(m_location);
}

TestDatabase::~TestDatabase() {
    m_database.reset();
    if (m_kind == EngineKind::Server)
        onTestServer(u"DROP DATABASE IF EXISTS %1 WITH (FORCE)"_s.arg(m_name));
}

std::unique_ptr<jet::Database> TestDatabase::station() const {
    return m_kind == EngineKind::File ? jet::Database::openFile(m_location)
                                      : jet::Database::openServer(m_location);
}

void DatabaseFixture::SetUp() {
    MIRSA_NEEDS_ENGINE(GetParam());
    m_test = std::make_unique<TestDatabase>(GetParam(), m_contents);
    prepare();
}

void DatabaseFixture::TearDown() {
    values::setNow(std::nullopt);
}

QStringList DatabaseFixture::rows(jet::Database& database, const QString& select) {
    QStringList result;
    jet::Recordset rs = database.openRecordset(select, jet::RecordsetType::Snapshot);
    const int columns = static_cast<int>(rs.fieldNames().size());
    for (; !rs.eof(); rs.moveNext()) {
        QStringList fields;
        for (int i = 0; i < columns; ++i)
            fields << rs.field(i).toText();
        result << fields.join(u'|');
    }
    return result;
}

int DatabaseFixture::errorOf(const std::function<void()>& action) {
    try {
        action();
    } catch (const jet::Error& error) {
        return error.number();
    }
    return 0;
}

std::string engineName(const ::testing::TestParamInfo<EngineKind>& info) {
    return info.param == EngineKind::File ? "File" : "Server";
}

} // namespace testsupport
