#pragma once

#include <QString>

#include <atomic>
#include <chrono>
#include <memory>
#include <thread>

namespace testsupport {

/// A line to the test server that is as long as is wished: a relay on loopback that hands on each
/// byte after half of the round trip. It can also be cut, or fall silent while it stands.
class DelayingLine {
  public:
    /// `uri` names the server at the far end.
    explicit DelayingLine(const QString& uri, std::chrono::microseconds roundTrip = {});
    ~DelayingLine();
    DelayingLine(const DelayingLine&) = delete;
    DelayingLine& operator=(const DelayingLine&) = delete;

    /// The address of the same database through the line.
    QString uri() const { return m_uri; }
    /// How often something was sent to the server after it had answered: the round trips.
    int trips() const { return m_trips; }
    /// Nothing goes through any more, and nothing is said; new connections are taken and left so.
    void setSilent(bool silent) { m_silent = silent; }
    /// Ends all connections; new ones go through again.
    void cut() { m_cut = true; }

  private:
    struct Connection;
    void run();

    QString m_uri;
    QByteArray m_host;
    int m_port = 0;
    int m_listener = -1;
    std::chrono::microseconds m_half;
    std::atomic<int> m_trips{0};
    std::atomic<bool> m_silent{false}, m_cut{false}, m_stop{false};
    std::thread m_thread;
};

} // namespace testsupport
