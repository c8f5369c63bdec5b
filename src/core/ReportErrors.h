#pragma once

#include <QString>

namespace core {

/// What a code of the report engine means, as shown behind the code: ":  Report Not Found.  ...";
/// ":  Unknown Error!" for codes that the engine doesn't have.
QString reportErrorText(int code);

/// Shows a code of the report engine and its meaning in a box, and gives the same text back.
void ShowReportError(int code, QString& message);

} // namespace core
