#pragma once

#include "estimating/EstimateStore.h"
#include "platform/jet/Database.h"
#include "platform/values/Literals.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QString>

namespace shoprows {

inline qint64 operation(jet::Database& db, const QString& name, char16_t type = u'I',
                        double rate = 40) {
    db.execute(u"INSERT INTO operation (description, opertype, opershoprate, "
               "operdepartment_id) VALUES('"_s +
               values::quoted(name) + u"','"_s + QChar(type) + u"',"_s + values::numberText(rate) +
               u",0)"_s);
    return db.lastCounter();
}

inline void operationNote(jet::Database& db, qint64 operNo, const QString& note) {
    db.execute(u"INSERT INTO OperNote (OperNo, [Note]) VALUES("_s + QString::number(operNo) +
               u",'"_s + values::quoted(note) + u"')"_s);
}

inline qint64 item(jet::Database& db, const QString& name, const QString& unit, double price) {
    db.execute(u"INSERT INTO miscitems (description, unitofmeasure, unitprice) "
               "VALUES('"_s +
               values::quoted(name) + u"','"_s + unit + u"',"_s + values::numberText(price) +
               u")"_s);
    return db.lastCounter();
}

inline qint64 customer(jet::Database& db, const QString& company) {
    db.execute(u"INSERT INTO Customer (company) VALUES('"_s + values::quoted(company) + u"')"_s);
    return db.lastCounter();
}

inline qint64 job(jet::Database& db, qint64 custId, qint64 estNo = 0) {
    db.execute(u"INSERT INTO Job (CustID, PONo, PartNo, Description, Quantity, "
               "JobShopRate, OneShopRate, JobShopCost, TravelerNotes, JobNotes, "
               "EstNo) VALUES("_s +
               QString::number(custId) +
               u",'PO7','JP-1','Bracket',12,55.5,False,3.25,'go slow','call first',"_s +
               QString::number(estNo) + u")"_s);
    return db.lastCounter();
}

inline estimating::OperRow row(qint64 operNo, const QString& name, double time,
                               bool inhouse = true) {
    estimating::OperRow made;
    made.operNo = operNo;
    made.description = name;
    made.inhouse = inhouse;
    made.time = time;
    made.rate = values::Currency::fromInteger(40);
    return made;
}

} // namespace shoprows
