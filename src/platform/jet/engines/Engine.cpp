#include "platform/jet/engines/Engine.h"

namespace jet {

void Engine::each(const PreparedPtr& statement, const Look& look) {
    Rows rows;
    run(statement, Arguments(), &rows);
    std::vector<Cell> cells;
    for (int row = 0; row < rows.count(); ++row) {
        rows.read(row, cells);
        look(cells);
    }
}

void Engine::sweep(const QByteArray& columns, const QByteArray& from, const Look& look) {
    each(prepare("SELECT " + columns + ' ' + from, Access::Reads), look);
}

void Engine::runTogether(std::vector<Read>& reads) {
    for (Read& read : reads)
        read.outcome = run(read.statement, read.arguments, read.rows, read.limit);
}

DeferredPtr Engine::writeLater(const PreparedPtr& statement, const Arguments& arguments,
                               const QString&) {
    auto deferred = std::make_shared<Deferred>();
    deferred->outcome = run(statement, arguments);
    deferred->state = Deferred::State::Done;
    return deferred;
}

DeferredPtr Engine::readLater(const PreparedPtr& statement, const Arguments& arguments, int limit) {
    auto deferred = std::make_shared<Deferred>();
    deferred->outcome = run(statement, arguments, &deferred->rows, limit);
    deferred->state = Deferred::State::Done;
    return deferred;
}

} // namespace jet
