#pragma once

#include <QString>
#include <QStringList>

namespace quickbooks {

/// The program that carries messages to QuickBooks, as the file Mirsa.quickbooks in the program
/// folder names it: its command line, and perhaps a line "seconds=600" for the time limit. Lines
/// that begin with # are remarks. A program in the program folder needs no path.
///
/// The program takes one request on its standard input, up to its end, and writes the answer in
/// UTF-8 to its standard output. Its exit code tells how it went:
///
///     0   the answer is there
///     1   QuickBooks isn't running or has no company open; nothing was sent
///     2   the request didn't go out for another reason, which standard error tells
///     any other, or a death: nobody knows whether QuickBooks took the request
struct Door {
    static constexpr char16_t fileName[] = u"Mirsa.quickbooks";

    QString program; ///< empty if there is no door; `complaint` then says why
    QStringList arguments;
    QString folder;
    int seconds = 300;
    QString complaint;
};

/// The door of a program folder.
Door doorOf(const QString& programFolder);

/// What became of a request.
struct Outcome {
    enum class Kind {
        Answered, ///< `text` is the answer
        NotOpen,  ///< QuickBooks isn't running; nothing was sent
        NotSent,  ///< `text` says why; nothing was sent
        NoAnswer, ///< `text` says why; whether QuickBooks took the request isn't known
        Cancelled ///< the user gave up waiting; as NoAnswer
    };
    Kind kind = Kind::NotSent;
    QString text;
};

} // namespace quickbooks
