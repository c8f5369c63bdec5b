#include "core/keeping/BackupJob.h"

#include "core/keeping/Files.h"
#include "platform/jet/Error.h"

namespace keeping {

BackupJob::BackupJob(QString programFolder, QString targetFolder)
    : m_thread([this, from = std::move(programFolder), to = std::move(targetFolder)] {
          run(from, to);
      }) {}

BackupJob::~BackupJob() {
    m_stop = true;
    m_thread.join();
}

void BackupJob::run(const QString& programFolder, const QString& targetFolder) {
    QString failure;
    try {
        backUp(programFolder, targetFolder, [this](int percent) {
            m_percent = percent;
            return !m_stop;
        });
    } catch (const Refusal& refusal) {
        failure = refusal.text();
    } catch (const jet::Error& error) {
        failure = error.text();
    } catch (const std::exception& error) {
        failure = QString::fromUtf8(error.what());
    }
    {
        const std::scoped_lock lock(m_mutex);
        m_failure = failure;
    }
    m_done = true;
}

QString BackupJob::failure() const {
    const std::scoped_lock lock(m_mutex);
    return m_failure;
}

std::unique_ptr<BackupJob>& BackupJob::current() {
    static std::unique_ptr<BackupJob> job;
    return job;
}

} // namespace keeping
