#pragma once

#include "platform/jet/Database.h"
#include "support/Print.h"

#include <gtest/gtest.h>

#include <QTemporaryDir>

#include <memory>

namespace testsupport {

enum class EngineKind { File, Server };

/// A database of its own for one test, gone with it. The server's stands on the server that
/// MIRSA_TEST_SERVER names.
class TestDatabase {
  public:
    enum class Contents {
        Empty,
        Shop, ///< all tables and the rows of a delivered database; copied from one made once
    };
    explicit TestDatabase(EngineKind kind, Contents contents = Contents::Empty);
    ~TestDatabase();
    TestDatabase(const TestDatabase&) = delete;
    TestDatabase& operator=(const TestDatabase&) = delete;

    jet::Database& database() { return *m_database; }
    /// Another station: a further connection to the same database.
    std::unique_ptr<jet::Database> station() const;
    /// The file's path or the server's URI.
    QString location() const { return m_location; }
    void close() { m_database.reset(); }

    static bool hasServer();

  private:
    EngineKind m_kind;
    QTemporaryDir m_folder;
    QString m_location;
    QString m_name; ///< of the server's database
    std::unique_ptr<jet::Database> m_database;
};

/// Runs a statement in PostgreSQL's own SQL on the test server's own database.
void onTestServer(const QString& sql);

/// Ends a test on the server's engine where there is no server: passed over at a desk, failed in
/// continuous integration.
#define MIRSA_NEEDS_ENGINE(kind)                                                                   \
    do {                                                                                           \
        if ((kind) == testsupport::EngineKind::Server &&                                           \
            !testsupport::TestDatabase::hasServer()) {                                             \
            if (qEnvironmentVariableIsSet("CI"))                                                   \
                FAIL() << "MIRSA_TEST_SERVER names no server";                                     \
            GTEST_SKIP() << "MIRSA_TEST_SERVER names no server";                                   \
        }                                                                                          \
    } while (false)

/// Base of tests that run on both engines: TEST_P bodies, and MIRSA_BOTH_ENGINES(TheFixture) once.
class DatabaseFixture : public ::testing::TestWithParam<EngineKind> {
  protected:
    explicit DatabaseFixture(TestDatabase::Contents contents = TestDatabase::Contents::Empty)
        : m_contents(contents) {}
    void SetUp() override;
    void TearDown() override;
    /// What a fixture adds to the database before each of its tests.
    virtual void prepare() {}

    jet::Database& db() { return m_test->database(); }
    std::unique_ptr<jet::Database> station() const { return m_test->station(); }
    TestDatabase& testDatabase() { return *m_test; }
    int execute(const char16_t* statement) { return db().execute(QString::fromUtf16(statement)); }
    /// The rows of a select, each as its fields' texts parted by "|".
    QStringList rows(const QString& select) { return rows(db(), select); }
    static QStringList rows(jet::Database& database, const QString& select);
    /// Number of the jet::Error that an action throws; 0 if it throws none.
    static int errorOf(const std::function<void()>& action);

  private:
    TestDatabase::Contents m_contents;
    std::unique_ptr<TestDatabase> m_test;
};

/// The same on a delivered shop's database.
class ShopDatabaseFixture : public DatabaseFixture {
  protected:
    ShopDatabaseFixture() : DatabaseFixture(TestDatabase::Contents::Shop) {}
};

std::string engineName(const ::testing::TestParamInfo<EngineKind>& info);

} // namespace testsupport

#define MIRSA_BOTH_ENGINES(fixture)                                                                \
    INSTANTIATE_TEST_SUITE_P(                                                                      \
        BothEngines, fixture,                                                                      \
        ::testing::Values(testsupport::EngineKind::File, testsupport::EngineKind::Server),         \
        testsupport::engineName)
