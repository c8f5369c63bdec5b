#pragma once

#include <QSplitter>

namespace controls {

/// A splitter that stands again where the user left it, under the names of its screen and its own.
class Splitter : public QSplitter {
  public:
    explicit Splitter(Qt::Orientation orientation, QWidget* parent = nullptr);

  protected:
    void showEvent(QShowEvent* event) override;

  private:
    QString place() const;
    bool m_restored = false;
};

} // namespace controls
