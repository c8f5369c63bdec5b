#pragma once

#include "estimating/EstimateStore.h"
#include "platform/jet/Database.h"
#include "platform/values/Numbers.h"
#include "platform/values/Text.h"

#include <QString>

namespace shoprows {

inline qint64 operation(jet::Database& db, const QString& name, char16_t type = u'I',
                        double rate = 40) {
    db.execute(QStringLiteral("INSERT INTO operation (description, opertype, opershoprate, "
                              "operdepartment_id) VALUES('") +
               values::quoted(name) + QStringLiteral("','") + QChar(type) + QStringLiteral("',") +
               values::numberText(rate) + QStringLiteral(",0)"));
    return db.lastCounter();
}

inline void operationNote(jet::Database& db, qint64 operNo, const QString& note) {
    db.execute(QStringLiteral("INSERT INTO OperNote (OperNo, [Note]) VALUES(") +
               QString::number(operNo) + QStringLiteral(",'") + values::quoted(note) +
               QStringLiteral("')"));
}

inline qint64 item(jet::Database& db, const QString& name, const QString& unit, double price) {
    db.execute(QStringLiteral("INSERT INTO miscitems (description, unitofmeasure, unitprice) "
                              "VALUES('") +
               values::quoted(name) + QStringLiteral("','") + unit + QStringLiteral("',") +
               values::numberText(price) + QStringLiteral(")"));
    return db.lastCounter();
}

inline qint64 customer(jet::Database& db, const QString& company) {
    db.execute(QStringLiteral("INSERT INTO Customer (company) VALUES('") + values::quoted(company) +
               QStringLiteral("')"));
    return db.lastCounter();
}

inline qint64 job(jet::Database& db, qint64 custId, qint64 estNo = 0) {
    db.execute(
        QStringLiteral("INSERT INTO Job (CustID, PONo, PartNo, Description, Quantity, "
                       "JobShopRate, OneShopRate, JobShopCost, TravelerNotes, JobNotes, "
                       "EstNo) VALUES(") +
        QString::number(custId) +
        QStringLiteral(",'PO7','JP-1','Bracket',12,55.5,False,3.25,'go slow','call first',") +
        QString::number(estNo) + QStringLiteral(")"));
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
