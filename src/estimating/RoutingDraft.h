#pragma once

#include "estimating/Routing.h"

#include <QJsonObject>

namespace estimating {

/// What a draft keeps of the lines of a routed document, with the notes that were written in its
/// entry. Money that its user may not see is left out unless he has typed it.
QJsonObject packRouting(const RoutedLines& lines, const RoutedLines* before, bool withMoney);
/// The lines again, over those that are stored; what had been left out is theirs.
RoutedLines unpackRouting(const QJsonObject& packed, const RoutedLines& stored);

/// Rates and prices that were left out of lines which aren't stored: as the catalogue has them now.
void completeFromCatalogue(jet::Database& database, const RoutedLines& stored, RoutedLines& lines);

} // namespace estimating
