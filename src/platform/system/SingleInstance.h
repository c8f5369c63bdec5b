#pragma once

#include <QString>

#include <memory>

class QLockFile;

namespace platform {

/// Holds this user's place as the one running program on this machine, by a lock file in the
/// program folder (in the temporary folder where that can't be written). The name of machine and
/// user are part of the file's name, so that stations that share a program folder don't meet. A
/// lock that a dead process left behind is taken over.
class SingleInstance {
  public:
    explicit SingleInstance(const QString& programFolder);
    ~SingleInstance();

    /// False if another instance is running.
    bool isFirst() const { return m_first; }

  private:
    std::unique_ptr<QLockFile> m_lock;
    bool m_first = false;
};

} // namespace platform
