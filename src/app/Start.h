#pragma once

#include <QString>

#include <memory>

namespace core {
class MDIMain;
}
namespace platform {
class SingleInstance;
}

namespace screen {
class Application;
}

namespace app {

/// The running program: its place as the only instance, and its shell. Main() takes it from nothing
/// to a signed-in shell.
class Program {
  public:
    /// `application` is the guarding one, so that no timer's or event's exception ends the program.
    explicit Program(screen::Application& application);
    ~Program();

    /// Runs the start in its fixed order, on the database in the program folder (a path without a
    /// slash at its end). False if the program is to end: no database, a second instance, or a
    /// login that was given up; the process has been told to end by then.
    bool Main(const QString& programFolder);

    core::MDIMain* shell() const { return m_shell.get(); }

  private:
    bool openShop(const QString& programFolder);

    std::unique_ptr<platform::SingleInstance> m_instance;
    std::unique_ptr<core::MDIMain> m_shell;
};

} // namespace app
