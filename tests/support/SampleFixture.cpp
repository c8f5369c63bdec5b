#include "support/SampleFixture.h"

#include "app/Screens.h"
#include "core/MirsaMain.h"
#include "desk/find/Indexer.h"
#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "sample/Sample.h"
#include "timemgmt/exceptions/ExceptionWatch.h"

namespace testsupport {

void SampleTest::prepare() {
    app::registerAllScreens();
    values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
    core::shared().CurrentUserNo = 1;
    core::shared().CurrencySymbol = u"$"_s;
    sample::fill(database(), {.years = 1, .jobs = m_jobs});
}

void SampleTest::TearDown() {
    timemgmt::ExceptionWatch::end();
    desk::Indexer::end();
    ShopTest::TearDown();
}

} // namespace testsupport
