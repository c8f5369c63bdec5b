#pragma once

#include "setup/takeover/OldFile.h"

#include <functional>

namespace takeover {

/// What a file is by its own first bytes, whatever its name says.
enum class FileKind { Nothing, OldDatabase, PresentDatabase, Other };
FileKind kindOf(const QString& path);

/// The password that an old file's owner set; empty for none.
QString passwordOfFile(const QString& path);

/// Reads a file of the old system through processes of its own, a further one for each table: one
/// that crashes or hangs costs that table and nothing else.
class OldReader {
  public:
    /// `program` is mirsa-setup itself; `path` a copy that nobody else touches.
    OldReader(QString program, QString path)
        : m_program(std::move(program)), m_path(std::move(path)) {}

    /// Throws keeping::Refusal where the file can't be read at all.
    OldCatalogue catalogue() const;

    /// Gives each row of a table, in the order of the file. The values are good until the next row.
    /// Returns what came of it; nothing, with a reason in `problem`, where the reading process
    /// ended before its time.
    std::optional<OldEnd> rows(const OldTable& table,
                               const std::function<void(const std::vector<OldValue>&)>& take,
                               QString& problem) const;

  private:
    QString m_program, m_path;
};

} // namespace takeover
