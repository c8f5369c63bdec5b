#pragma once

#include "estimating/Routing.h"

#include <QIcon>
#include <QString>

#include <utility>

namespace jobs {

/// Picture and words of a routing row's status: round in house, square at a contractor, its colour
/// and mark by the letter.
std::pair<QIcon, QString> statusPicture(const estimating::OperRow& row);

} // namespace jobs
