#include "platform/jet/engines/PostgresLine.h"

#include "platform/jet/Error.h"
#include "platform/jet/Location.h"
#include "platform/jet/Waiting.h"
#include "platform/values/Literals.h"

#include <poll.h>

#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

namespace jet {

namespace {

/// What every session is like, sent with the connection's own first message.
constexpr char sessionOptions[] =
    "-c client_min_messages=error -c DateStyle=ISO,MDY -c standard_conforming_strings=on "
    "-c extra_float_digits=1 -c default_transaction_isolation=read\\ committed "
    "-c bytea_output=hex -c lock_timeout=10s -c idle_in_transaction_session_timeout=2s ";

/// Unless the address says otherwise: a host that doesn't answer is given up after some seconds,
/// and a line that is cut is noticed, also while nothing is sent.
constexpr std::pair<const char*, const char*> lineSettings[] = {
    {"connect_timeout", "6"},    {"keepalives_idle", "5"},      {"keepalives_interval", "3"},
    {"keepalives_count", "2"},   {"tcp_user_timeout", "11000"}, {"application_name", "Mirsa"},
    {"client_encoding", "UTF8"},
};

struct OptionsCloser {
    void operator()(PQconninfoOption* options) const { PQconninfoFree(options); }
};

/// The parts of an address with our own settings beside them.
struct Parameters {
    std::vector<std::pair<QByteArray, QByteArray>> list;
    explicit Parameters(const QString& uri) {
        char* message = nullptr;
        const std::unique_ptr<PQconninfoOption, OptionsCloser> parsed(
            PQconninfoParse(uri.toUtf8().constData(), &message));
        if (!parsed) {
            const QString text = QString::fromUtf8(message).trimmed();
            PQfreemem(message);
            throw Error(
                errors::connectionFailed,
                u"Connection to the database server failed: %1"_s.arg(withoutPassword(text, uri)),
                Failure::ConnectionLost);
        }
        QByteArray options = sessionOptions;
        for (const PQconninfoOption* one = parsed.get(); one->keyword != nullptr; ++one) {
            if (one->val == nullptr)
                continue;
            if (qstrcmp(one->keyword, "options") == 0)
                options += one->val; // the address has the last word
            else
                list.emplace_back(one->keyword, one->val);
        }
        list.emplace_back("options", options);
        for (const auto& ours : lineSettings) {
            if (std::none_of(list.begin(), list.end(),
                             [&](const auto& one) { return one.first == ours.first; }))
                list.emplace_back(ours.first, ours.second);
        }
    }
};

/// Connects in a thread of its own, as looking up a host's name can't be interrupted. Who waits may
/// give up; what comes of it then closes itself.
class Connecting {
  public:
    explicit Connecting(Parameters parameters)
        : m_state(std::make_shared<State>(std::move(parameters))) {
        std::thread([state = m_state] { state->run(); }).detach();
    }
    ~Connecting() {
        const std::lock_guard lock(m_state->mutex);
        m_state->wanted = false;
        PQfinish(m_state->connection);
        m_state->connection = nullptr;
    }
    Connecting(const Connecting&) = delete;
    Connecting& operator=(const Connecting&) = delete;

    /// False: not there yet.
    bool wait(std::chrono::milliseconds time) {
        std::unique_lock lock(m_state->mutex);
        return m_state->ready.wait_for(lock, time, [this] { return m_state->done; });
    }
    PGconn* take() {
        const std::lock_guard lock(m_state->mutex);
        return std::exchange(m_state->connection, nullptr);
    }

  private:
    struct State {
        explicit State(Parameters given) : parameters(std::move(given)) {}
        void run() {
            std::vector<const char*> names, values;
            for (const auto& [name, value] : parameters.list) {
                names.push_back(name.constData());
                values.push_back(value.constData());
            }
            names.push_back(nullptr);
            values.push_back(nullptr);
            PGconn* made = PQconnectdbParams(names.data(), values.data(), 0);
            const std::lock_guard lock(mutex);
            if (wanted)
                connection = made;
            else
                PQfinish(made);
            done = true;
            ready.notify_all();
        }
        const Parameters parameters;
        std::mutex mutex;
        std::condition_variable ready;
        PGconn* connection = nullptr;
        bool done = false;
        bool wanted = true;
    };
    std::shared_ptr<State> m_state;
};

void ignoreNotice(void*, const PGresult*) {}

} // namespace

PostgresLine::PostgresLine(const QString& uri) : m_uri(uri) {
    connect();
}

PostgresLine::~PostgresLine() {
    PQfinish(m_connection);
}

void PostgresLine::connect() {
    PQfinish(std::exchange(m_connection, nullptr));
    m_groups = m_toForget = 0;
    m_sent = m_givenUp = false;
    m_waits += 2;
    const auto failed = [this](const QString& why) {
        return Error(
            errors::connectionFailed,
            u"Connection to the database server failed: %1"_s.arg(withoutPassword(why, m_uri)),
            Failure::ConnectionLost);
    };
    Connecting connecting{Parameters(m_uri)};
    Waiting waiting;
    while (!connecting.wait(waiting.slice())) {
        if (!waiting.goOn()) {
            m_givenUp = true;
            throw failed(u"given up"_s);
        }
    }
    m_connection = connecting.take();
    if (PQstatus(m_connection) != CONNECTION_OK) {
        const QString why = QString::fromUtf8(PQerrorMessage(m_connection)).trimmed();
        PQfinish(std::exchange(m_connection, nullptr));
        throw failed(why);
    }
    ++m_session;
    PQsetNoticeReceiver(m_connection, ignoreNotice, nullptr);
    PQsetnonblocking(m_connection, 1);
    PQenterPipelineMode(m_connection);
}

bool PostgresLine::isUp() {
    if (m_connection == nullptr || PQstatus(m_connection) != CONNECTION_OK)
        return false;
    // What the server says unasked is that it ends; then the end of the line follows.
    for (int i = 0; i < 4; ++i) {
        pollfd look{PQsocket(m_connection), POLLIN, 0};
        if (poll(&look, 1, 0) <= 0)
            break;
        if (PQconsumeInput(m_connection) == 0)
            return false;
        while (PQisBusy(m_connection) == 0 && m_toForget > 0) {
            const ResultPtr reply(PQgetResult(m_connection));
            if (PQresultStatus(reply.get()) == PGRES_PIPELINE_SYNC) {
                --m_groups;
                --m_toForget;
            }
        }
        if (PQstatus(m_connection) != CONNECTION_OK)
            return false;
    }
    return true;
}

void PostgresLine::lost() {
    PQfinish(std::exchange(m_connection, nullptr));
    m_groups = m_toForget = 0;
    throw Error(errors::connectionFailed, u"The connection to the database server was lost."_s,
                Failure::ConnectionLost);
}

void PostgresLine::giveUp() {
    m_givenUp = true;
    lost();
}

void PostgresLine::prepare(const char* name, const char* sql) {
    if (PQsendPrepare(m_connection, name, sql, 0, nullptr) == 0)
        lost();
}

void PostgresLine::execute(const char* name, std::span<const char* const> values) {
    if (PQsendQueryPrepared(m_connection, name, static_cast<int>(values.size()), values.data(),
                            nullptr, nullptr, 0) == 0)
        lost();
}

void PostgresLine::command(const char* sql) {
    if (PQsendQueryParams(m_connection, sql, 0, nullptr, nullptr, nullptr, nullptr, 0) == 0)
        lost();
}

void PostgresLine::endGroup() {
    if (PQpipelineSync(m_connection) == 0)
        lost();
    ++m_groups;
    m_sent = true;
}

void PostgresLine::forgetReplies() {
    m_toForget = m_groups;
    m_sent = false;
    flush();
}

void PostgresLine::flush() {
    Waiting waiting;
    int left = 0;
    while ((left = PQflush(m_connection)) > 0) {
        pollfd look{PQsocket(m_connection), POLLIN | POLLOUT, 0};
        if (poll(&look, 1, static_cast<int>(waiting.slice().count())) == 0 && !waiting.goOn())
            giveUp();
        if ((look.revents & POLLIN) != 0 && PQconsumeInput(m_connection) == 0)
            lost();
    }
    if (left < 0)
        lost();
}

void PostgresLine::awaitReply() {
    if (std::exchange(m_sent, false))
        ++m_waits;
    flush();
    Waiting waiting;
    while (PQisBusy(m_connection) != 0) {
        pollfd look{PQsocket(m_connection), POLLIN, 0};
        const int ready = poll(&look, 1, static_cast<int>(waiting.slice().count()));
        if (ready == 0 && !waiting.goOn())
            giveUp();
        if (ready > 0 && PQconsumeInput(m_connection) == 0)
            lost();
    }
}

ResultPtr PostgresLine::nextResult() {
    awaitReply();
    return ResultPtr(PQgetResult(m_connection));
}

PostgresLine::Reply PostgresLine::receiveAny() {
    ResultPtr first = nextResult();
    if (!first)
        lost();
    Reply reply;
    switch (PQresultStatus(first.get())) {
    case PGRES_PIPELINE_SYNC:
        --m_groups;
        reply.kind = Reply::Kind::EndOfGroup;
        return reply;
    case PGRES_TUPLES_OK:
    case PGRES_COMMAND_OK:
        break;
    case PGRES_PIPELINE_ABORTED:
        reply.kind = Reply::Kind::Skipped;
        break;
    default:
        reply.kind = Reply::Kind::Failed;
    }
    reply.result = std::move(first);
    while (nextResult()) {
    }
    // The server's last words before it ends a session come as a failure of the command.
    if (PQstatus(m_connection) != CONNECTION_OK)
        lost();
    return reply;
}

PostgresLine::Reply PostgresLine::receive() {
    for (; m_toForget > 0; --m_toForget) {
        while (receiveAny().kind != Reply::Kind::EndOfGroup) {
        }
    }
    return receiveAny();
}

} // namespace jet
