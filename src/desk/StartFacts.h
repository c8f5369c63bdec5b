#pragma once

#include "desk/Rights.h"

#include <QDate>
#include <QString>

#include <optional>
#include <vector>

namespace desk {

/// Where a line of the start page leads: a record of a module; a list, by its view; or a screen.
struct StartTarget {
    QString module = {};
    qint64 key = 0;
    QString form = {};
    QString view = {};
    bool isDialog = false;

    friend bool operator==(const StartTarget&, const StartTarget&) = default;
};

/// A record that needs a person today.
struct StartLine {
    QString what; ///< "Job 1043"
    QString who;
    QString subject;
    QString when;
    QString left;
    StartTarget target;

    friend bool operator==(const StartLine&, const StartLine&) = default;
};

/// Records that need a person for one reason: how many there are, and the most urgent of them.
struct StartSection {
    QString title;
    qint64 count = 0;
    std::vector<StartLine> lines;
    StartTarget all;

    friend bool operator==(const StartSection&, const StartSection&) = default;
};

/// What the signed-in user's modules know of that, read in one wait. Sections without a record are
/// left out.
std::vector<StartSection> startSections(jet::Database& database, const Rights& rights,
                                        const QDate& today);

/// The age of the last good backup, for who may make one; the folder is read.
std::optional<StartSection> backupSection(const QString& programFolder, const Rights& rights,
                                          const QDateTime& now);

} // namespace desk
