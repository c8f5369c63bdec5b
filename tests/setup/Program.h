#pragma once

#include "platform/values/Literals.h"
#include "support/Paths.h"

#include <QFile>
#include <QProcess>
#include <QString>
#include <QStringList>

namespace setuptest {

struct Answer {
    int code = -1;
    QString out, err;
};

inline QString program() {
    return testsupport::builtFile(u"tools/setup/mirsa-setup"_s);
}

/// Runs mirsa-setup to its end.
inline Answer run(const QStringList& words, const QByteArray& typed = {}) {
    QProcess process;
    process.start(setuptest::program(), words);
    process.write(typed);
    process.closeWriteChannel();
    Answer answer;
    if (process.waitForFinished(240000)) {
        answer.code = process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -2;
        answer.out = QString::fromUtf8(process.readAllStandardOutput());
        answer.err = QString::fromUtf8(process.readAllStandardError());
    }
    return answer;
}

/// mirsa-setup with no file allowed to grow beyond so many kilobytes: a disk that is full there.
inline int runOnFullDisk(int kilobytes, const QStringList& words, QString& err) {
    QProcess process;
    process.start(u"bash"_s,
                  QStringList{u"-c"_s, u"ulimit -f %1; exec \"$0\" \"$@\""_s.arg(kilobytes),
                              setuptest::program()} +
                      words);
    if (!process.waitForFinished(60000))
        return -1;
    err = QString::fromUtf8(process.readAllStandardError());
    return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
}

inline QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace setuptest
