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

inline QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace setuptest
