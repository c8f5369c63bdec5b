#pragma once

#include <QString>

/// Texts are written u"..."_s, everywhere.
using namespace Qt::StringLiterals;
