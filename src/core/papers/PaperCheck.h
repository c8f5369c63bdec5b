#pragma once

#include "core/keeping/PaperStore.h"

#include <QObject>

#include <atomic>
#include <functional>
#include <thread>

namespace core {

/// Looks whether papers are what was stored, beside the program's work: first whether they are
/// there, then by reading them. What was read once isn't read again in this run while it keeps its
/// date.
class PaperCheck {
  public:
    using State = keeping::PaperStore::State;
    /// Told on the thread of the user interface, where the owner is still there.
    using Told = std::function<void(const QString& hash, State state)>;
    PaperCheck(keeping::PaperStore store, std::vector<keeping::Content> contents, QObject* owner,
               Told told);
    /// Breaks it off.
    ~PaperCheck();
    PaperCheck(const PaperCheck&) = delete;
    PaperCheck& operator=(const PaperCheck&) = delete;

  private:
    void run(const keeping::PaperStore& store, std::vector<keeping::Content> contents,
             QObject* owner, const Told& told);

    std::atomic<bool> m_stop = false;
    std::thread m_thread;
};

} // namespace core
