#pragma once

#include <QByteArray>
#include <QString>

#include <libpq-fe.h>

#include <memory>
#include <span>

namespace jet {

struct ResultCloser {
    void operator()(PGresult* result) const { PQclear(result); }
};
using ResultPtr = std::unique_ptr<PGresult, ResultCloser>;

/// The line to a server: one connection of libpq, on which commands are sent in groups and their
/// replies are read later. Throws Error(connectionFailed) where it is lost.
class PostgresLine {
  public:
    explicit PostgresLine(const QString& uri);
    ~PostgresLine();
    PostgresLine(const PostgresLine&) = delete;
    PostgresLine& operator=(const PostgresLine&) = delete;

    const QString& uri() const { return m_uri; }
    /// Connects, or connects anew.
    void connect();
    /// Looks at the line, without waiting, for what the server may have said of its end.
    bool isUp();
    /// Counts the connections, as each has its own prepared statements.
    int session() const { return m_session; }

    void prepare(const char* name, const char* sql);
    void execute(const char* name, std::span<const char* const> values = {});
    void command(const char* sql);
    /// Ends a group of commands and sends it. A command that fails lets the rest of its group fail.
    void endGroup();
    /// Leaves the replies to the groups that have been sent unread.
    void forgetReplies();

    struct Reply {
        enum class Kind {
            Done,    ///< `result` holds rows or the number of rows touched
            Failed,  ///< `result` holds the error
            Skipped, ///< a command before it in its group failed
            EndOfGroup,
        };
        Kind kind = Kind::Done;
        ResultPtr result;
    };
    /// The reply to the next command; waits for it.
    Reply receive();

    /// How often a reply was waited for. Connecting counts as two.
    quint64 waits() const { return m_waits; }

    [[noreturn]] void lost();
    /// Whether the line was lost because somebody didn't want to wait any longer.
    bool wasGivenUp() const { return m_givenUp; }

  private:
    [[noreturn]] void giveUp();
    void flush();
    void awaitReply();
    ResultPtr nextResult();
    Reply receiveAny();

    QString m_uri;
    PGconn* m_connection = nullptr;
    int m_session = 0;
    int m_groups = 0;    ///< sent, and their replies not read to the end
    int m_toForget = 0;  ///< of them, the first ones, whose replies nobody wants
    bool m_sent = false; ///< nothing was waited for since something was sent
    bool m_givenUp = false;
    quint64 m_waits = 0;
};

} // namespace jet
