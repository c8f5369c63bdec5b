#include "support/DelayingLine.h"

#include <QUrl>

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <deque>
#include <list>
#include <stdexcept>

namespace testsupport {

namespace {

using Clock = std::chrono::steady_clock;

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

void setUp(int socket) {
    const int on = 1;
    setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
    fcntl(socket, F_SETFL, O_NONBLOCK);
    fcntl(socket, F_SETFD, FD_CLOEXEC);
}

/// One way of a connection: what was read, and when it may go on.
struct Way {
    int from = -1, to = -1;
    std::deque<std::pair<Clock::time_point, QByteArray>> under_way;

    /// False: the sender has gone.
    bool read(std::chrono::microseconds delay) {
        char bytes[65536];
        const ssize_t count = ::read(from, bytes, sizeof bytes);
        if (count > 0)
            under_way.emplace_back(Clock::now() + delay, QByteArray(bytes, count));
        return count > 0 || (count < 0 && errno == EAGAIN);
    }
    bool write() {
        while (!under_way.empty() && under_way.front().first <= Clock::now()) {
            QByteArray& bytes = under_way.front().second;
            const ssize_t count =
                send(to, bytes.constData(), static_cast<std::size_t>(bytes.size()), MSG_NOSIGNAL);
            if (count < 0)
                return errno == EAGAIN;
            bytes.remove(0, count);
            if (bytes.isEmpty())
                under_way.pop_front();
        }
        return true;
    }
};

} // namespace

struct DelayingLine::Connection {
    Way there, back;
    bool answered = true;
    explicit Connection(int client, int server) {
        there = {client, server, {}};
        back = {server, client, {}};
    }
    ~Connection() {
        close(there.from);
        close(there.to);
    }
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
};

DelayingLine::DelayingLine(const QString& uri, std::chrono::microseconds roundTrip)
    : m_half(roundTrip / 2) {
    QUrl url(uri);
    m_port = url.port(5432);
    m_listener = socket(AF_INET, SOCK_STREAM, 0);
    setUp(m_listener);
    sockaddr_in address = loopback(0);
    socklen_t size = sizeof address;
    if (bind(m_listener, reinterpret_cast<sockaddr*>(&address), size) != 0 ||
        listen(m_listener, 16) != 0)
        throw std::runtime_error("no port for the line");
    getsockname(m_listener, reinterpret_cast<sockaddr*>(&address), &size);
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(ntohs(address.sin_port));
    m_uri = url.toString(QUrl::FullyEncoded);
    m_thread = std::thread([this] { run(); });
}

DelayingLine::~DelayingLine() {
    m_stop = true;
    m_thread.join();
    close(m_listener);
}

void DelayingLine::run() {
    std::list<Connection> connections;
    while (!m_stop) {
        if (m_cut.exchange(false))
            connections.clear();
        std::vector<pollfd> looks{{m_listener, POLLIN, 0}};
        Clock::time_point due = Clock::now() + std::chrono::milliseconds(5);
        if (!m_silent) {
            for (const Connection& connection : connections) {
                looks.push_back({connection.there.from, POLLIN, 0});
                looks.push_back({connection.back.from, POLLIN, 0});
                for (const Way* way : {&connection.there, &connection.back})
                    if (!way->under_way.empty())
                        due = std::min(due, way->under_way.front().first);
            }
        }
        const auto wait = std::chrono::duration_cast<std::chrono::nanoseconds>(due - Clock::now());
        const timespec time{0, std::max<long>(0, wait.count())};
        ppoll(looks.data(), looks.size(), &time, nullptr);
        if ((looks[0].revents & POLLIN) != 0) {
            const int client = accept(m_listener, nullptr, nullptr);
            const int server = socket(AF_INET, SOCK_STREAM, 0);
            sockaddr_in address = loopback(m_port);
            if (connect(server, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0) {
                close(client);
                close(server);
            } else {
                setUp(client);
                setUp(server);
                connections.emplace_back(client, server);
            }
        }
        if (m_silent)
            continue;
        connections.remove_if([this](Connection& connection) {
            const std::size_t asked = connection.there.under_way.size();
            const std::size_t answered = connection.back.under_way.size();
            bool stands = connection.there.read(m_half) && connection.back.read(m_half);
            if (connection.there.under_way.size() > asked && connection.answered) {
                connection.answered = false;
                ++m_trips;
            }
            if (connection.back.under_way.size() > answered)
                connection.answered = true;
            stands = stands && connection.there.write() && connection.back.write();
            return !stands;
        });
    }
}

} // namespace testsupport
