#pragma once

#include "core/MirsaMain.h"
#include "core/Screens.h"
#include "estimating/Screens.h"
#include "estimating/ShopRows.h"
#include "platform/values/Clock.h"
#include "support/ShopFixture.h"

/// The screens of estimating on a shop with a customer and three operations, on November 22, 2026.
class EstimatingShop : public testsupport::ShopTest {
  protected:
    void prepare() override {
        core::registerScreens();
        estimating::registerScreens();
        core::shared().CurrencySymbol = u"$"_s;
        values::setNow(QDateTime(QDate(2026, 11, 22), QTime(9, 0)));
        m_acme = shoprows::customer(database(), u"Acme"_s);
        m_mill = shoprows::operation(database(), u"Mill"_s);
        m_turn = shoprows::operation(database(), u"Turn"_s, u'I', 35);
        m_plate = shoprows::operation(database(), u"Plating"_s, u'C', 0);
    }

    qint64 m_acme = 0, m_mill = 0, m_turn = 0, m_plate = 0;
};
