#pragma once

#include "platform/values/Literals.h"

#include <QString>
#include <QStringList>

#include <ostream>

/// Lets a failed comparison show texts as such.
inline void PrintTo(const QString& text, std::ostream* out) {
    *out << '"' << text.toStdString() << '"';
}

inline void PrintTo(const QStringList& texts, std::ostream* out) {
    *out << "[\"" << texts.join(u"\", \""_s).toStdString() << "\"]";
}
