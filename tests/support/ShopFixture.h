#pragma once

#include "support/DatabaseFixture.h"
#include "support/ScreenFixture.h"

#include <memory>

namespace testsupport {

/// A screen test on a fresh database of the shop, once on each engine, with the delivered rows and
/// no others. The administrator is signed in. MIRSA_BOTH_ENGINES(TheFixture) runs its TEST_Ps. The
/// clock, the preview and what all screens share are put back at the end.
class ShopTest : public ScreenFixture, public ::testing::WithParamInterface<EngineKind> {
  protected:
    void SetUp() override;
    void TearDown() override;
    /// What a fixture adds to the shop before each of its tests.
    virtual void prepare() {}

    /// The database that the screens work on.
    jet::Database& database() const;
    /// A second connection to the same database: another station.
    std::unique_ptr<jet::Database> anotherStation() const { return m_test->station(); }

    /// For a station that is a process of its own.
    QString databaseLocation() const { return m_test->location(); }

  private:
    std::unique_ptr<TestDatabase> m_test;
};

} // namespace testsupport
