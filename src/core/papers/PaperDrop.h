#pragma once

#include <QObject>
#include <QStringList>

#include <functional>

class QMimeData;

namespace screen {
class Form;
}

namespace core {

/// Takes files that are dropped anywhere on a form whose record may have papers, on its fields too,
/// which would take their names for text.
class PaperDrop : public QObject {
  public:
    using Dropped = std::function<void(screen::Form& form, const QStringList& files)>;
    PaperDrop(QObject* parent, Dropped dropped);

    /// The files and folders on this machine that are dragged, or on the clipboard.
    static QStringList filesOf(const QMimeData* data);

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    Dropped m_dropped;
};

} // namespace core
