#include "support/ShopFixture.h"

#include "core/MirsaMain.h"
#include "platform/report/Report.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"

namespace testsupport {

void ShopTest::SetUp() {
    MIRSA_NEEDS_ENGINE(GetParam());
    m_test = std::make_unique<TestDatabase>(GetParam(), TestDatabase::Contents::Shop);
    core::SharedState& state = core::shared();
    state.MainDatabase = m_test->station();
    state.DatabasePath = m_test->location();
    state.CurrentUserName = u"Admin"_s;
    useDatabase(*state.MainDatabase);
    prepare();
}

void ShopTest::TearDown() {
    ScreenFixture::TearDown();
    while (!screen::Forms::all().isEmpty())
        delete screen::Forms::all().first(); // one may have others with it
    core::shared() = core::SharedState();
    report::setPreviewer({});
    values::setNow(std::nullopt);
}

jet::Database& ShopTest::database() const {
    return core::MainDatabase();
}

} // namespace testsupport
