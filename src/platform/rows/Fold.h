#pragma once

#include <QByteArray>
#include <QStringView>

#include <string>
#include <string_view>

namespace rows {

/// A text as it is searched: small letters without their marks ("Müller" is "muller"), UTF-8.
QByteArray folded(QStringView text);
/// The same of a text that is UTF-8 already, appended.
void appendFolded(std::string& to, std::string_view utf8);

} // namespace rows
