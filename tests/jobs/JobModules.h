#pragma once

#include "JobShop.h"

#include "core/records/RecordScreen.h"
#include "estimating/routing/Register.h"
#include "jobs/Screens.h"
#include "platform/values/Clock.h"

/// The shop of JobShop with the screens of jobs, on Monday, March 9, 2026.
class JobModules : public JobShop {
  protected:
    void prepare() override {
        jobs::registerScreens();
        estimating::registerRoutingDialogs();
        values::setNow(QDateTime(QDate(2026, 3, 9), QTime(8, 0), Qt::UTC));
    }
    static QString s(const char16_t* text) { return QString::fromUtf16(text); }
};
