#pragma once

#include "platform/values/Clock.h"
#include "platform/values/Literals.h"
#include "purchasing/OrderLine.h"
#include "support/DatabaseFixture.h"

namespace testsupport {

/// A shop that buys: vendors and an employee, on 3/2/2026.
class BuyingRows : public ShopDatabaseFixture {
  protected:
    void prepare() override {
        values::setNow(QDateTime(QDate(2026, 3, 2), QTime(9, 0)));
        m_harrow = vendor(u"Harrow Bearings"_s);
        m_obrien = vendor(u"O'Brien Steel"_s);
        execute(u"INSERT INTO Employee (firstname, lastname) VALUES ('Ann', 'Berg')");
        m_ann = db().lastCounter();
    }

    qint64 vendor(const QString& company) {
        db().execute(
            u"INSERT INTO Vendor (company, Address1, City, Terms, OurNotes, Email) VALUES "
            "(%1, '1 High St', 'Leeds', 'Net 30', 'Ring first', 'sales@example.com')"_s.arg(
                purchasing::sqlText(company)));
        return db().lastCounter();
    }
    static purchasing::OrderLine line(const QString& part, qint64 quantity, double price) {
        purchasing::OrderLine line;
        line.partNumber = part;
        line.description = u"The "_s + part;
        line.units = u"EA"_s;
        line.quantity = quantity;
        line.unitPrice = values::Currency::fromDouble(price);
        line.complete();
        return line;
    }
    QString one(const QString& select) { return rows(select).join(u" / "_s); }

    qint64 m_harrow = 0;
    qint64 m_obrien = 0;
    qint64 m_ann = 0;
};

} // namespace testsupport
