#pragma once

#include "platform/quickbooks/Door.h"

#include <QByteArray>
#include <QProcess>
#include <QTimer>

#include <functional>

namespace quickbooks {

/// One request on its way through the door. It needs a running event loop, and ends by calling
/// `finished` once: with the answer, the failure, at the time limit, or after cancel().
class Exchange {
  public:
    Exchange(Door door, QByteArray request);
    ~Exchange();
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;

    std::function<void(const Outcome&)> finished;

    void start();
    /// Ends the program and waits no longer.
    void cancel();

  private:
    void ended(int exitCode, QProcess::ExitStatus status);
    void giveUp(const Outcome& outcome);
    void finish(const Outcome& outcome);
    void endProgram();

    Door m_door;
    QByteArray m_request;
    QProcess m_process;
    QTimer m_limit;
    bool m_done = false;
};

} // namespace quickbooks
