#pragma once

#include <QDomElement>
#include <QStringList>

namespace accounting {

/// The items of an "ItemQueryRs" that can stand on a line: those that are no percentage of others.
QStringList itemNames(const QDomElement& response);

} // namespace accounting
