#include "platform/jet/Dialect.h"

#include "platform/values/Literals.h"

namespace jet {

QByteArray Dialect::quoted(const QString& name) const {
    QString text = isPostgres() ? name.toLower() : name;
    return '"' + text.replace(u'"', u"\"\""_s).toUtf8() + '"';
}

QByteArray Dialect::parameter(int number) const {
    return (isPostgres() ? '$' : '?') + QByteArray::number(number);
}

QByteArray Dialect::returning(const QString& keyColumn) const {
    return isPostgres() ? " RETURNING " + quoted(keyColumn) : QByteArray();
}

QByteArray Dialect::catchUp(const QString& table, const QString& counter) {
    const Dialect server = postgres();
    const QByteArray sequence = "pg_get_serial_sequence('" + server.quoted(table) + "', '" +
                                counter.toLower().toUtf8() + "')";
    return "SELECT setval(" + sequence + ", greatest(max(" + server.quoted(counter) +
           "), nextval(" + sequence + ") - 1, 1)) FROM " + server.quoted(table);
}

} // namespace jet
