#pragma once

#include <QDomElement>
#include <QString>
#include <QStringList>

#include <vector>

namespace qbcompany {

/// What a message may hold: elements in order, and choices between rows of elements.
struct Element {
    QString name;
    QString type; ///< STR, ID, AMT ...; empty for an aggregate
    int least = 1, most = 1;
    int limit = 0; ///< most letters; 0 for none
    QStringList values;
    std::vector<Element> children;
    std::vector<std::vector<Element>> alternatives; ///< of a choice, which has no name
};

/// The first thing that is wrong with a message: an unknown, missing or misplaced element, a text
/// too long, a value of the wrong type. Empty if nothing is. Takes requests and answers.
QString faultOf(const QDomElement& message);

/// The names of the elements that stand at a path of a message, in wire order.
QStringList elementOrder(const QString& message, const QStringList& path);

/// Whether the table knows a message of that name.
bool isKnownMessage(const QString& name);

} // namespace qbcompany
