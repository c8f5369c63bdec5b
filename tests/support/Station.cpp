#include "support/Station.h"

#include "platform/jet/Location.h"

#include <QCoreApplication>

#include <cstdio>

namespace testsupport {

int runStation(int argc, char* argv[],
               const std::function<int(jet::Database&, const QStringList&)>& work) {
    const QCoreApplication application(argc, argv);
    const QStringList words = QCoreApplication::arguments();
    try {
        const auto database = jet::isServerUri(words[1]) ? jet::Database::openServer(words[1])
                                                         : jet::Database::openFile(words[1]);
        return work(*database, words.mid(2));
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
}

void tell(const QString& line) {
    std::puts(qPrintable(line));
    std::fflush(stdout);
}

} // namespace testsupport
