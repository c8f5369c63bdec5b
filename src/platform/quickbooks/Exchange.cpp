#include "platform/quickbooks/Exchange.h"

#include "platform/values/Literals.h"

namespace quickbooks {

using Kind = Outcome::Kind;

Exchange::Exchange(Door door, QByteArray request)
    : m_door(std::move(door)), m_request(std::move(request)) {
    m_limit.setSingleShot(true);
    QObject::connect(&m_limit, &QTimer::timeout, &m_limit, [this] {
        giveUp({Kind::NoAnswer, u"There was no answer within %1 seconds."_s.arg(m_door.seconds)});
    });
    QObject::connect(&m_process, &QProcess::errorOccurred, &m_process,
                     [this](QProcess::ProcessError error) {
                         // The others are told by the end of the program.
                         if (error == QProcess::FailedToStart)
                             finish({Kind::NotSent, u"The program %1 doesn't start: %2"_s.arg(
                                                        m_door.program, m_process.errorString())});
                     });
    QObject::connect(&m_process, &QProcess::finished, &m_process,
                     [this](int code, QProcess::ExitStatus status) { ended(code, status); });
}

Exchange::~Exchange() {
    m_done = true;
    endProgram();
}

void Exchange::start() {
    if (m_door.program.isEmpty()) {
        finish({Kind::NotSent, m_door.complaint});
        return;
    }
    m_process.setProgram(m_door.program);
    m_process.setArguments(m_door.arguments);
    m_process.setWorkingDirectory(m_door.folder);
    m_limit.start(m_door.seconds * 1000);
    m_process.start();
    if (m_done)
        return;
    m_process.write(m_request);
    m_process.closeWriteChannel();
}

void Exchange::cancel() {
    giveUp({Kind::Cancelled, u"You stopped waiting for QuickBooks."_s});
}

void Exchange::giveUp(const Outcome& outcome) {
    if (m_done)
        return;
    m_done = true; // what the program says at its end doesn't count any more
    endProgram();
    m_done = false;
    finish(outcome);
}

/// Asked first, so that it can take leave of QuickBooks.
void Exchange::endProgram() {
    constexpr int patience = 1000;
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(patience)) {
        m_process.kill();
        m_process.waitForFinished(patience);
    }
}

void Exchange::ended(int exitCode, QProcess::ExitStatus status) {
    const QString said = QString::fromUtf8(m_process.readAllStandardError()).trimmed();
    const bool died = status == QProcess::CrashExit;
    if (!died && exitCode == 0) {
        const QByteArray answer = m_process.readAllStandardOutput();
        if (answer.trimmed().isEmpty())
            finish(
                {Kind::NoAnswer, u"The program that asks QuickBooks ended without an answer."_s});
        else
            finish({Kind::Answered, QString::fromUtf8(answer)});
    } else if (!died && exitCode == 1) {
        finish({Kind::NotOpen, said});
    } else if (!died && exitCode == 2) {
        finish({Kind::NotSent, said.isEmpty() ? u"QuickBooks refused the message."_s : said});
    } else {
        finish({Kind::NoAnswer,
                said.isEmpty() ? u"The program that asks QuickBooks broke off."_s : said});
    }
}

void Exchange::finish(const Outcome& outcome) {
    if (m_done)
        return;
    m_done = true;
    m_limit.stop();
    if (finished)
        finished(outcome);
}

} // namespace quickbooks
