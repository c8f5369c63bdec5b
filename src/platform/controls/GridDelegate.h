#pragma once

#include <QStyledItemDelegate>

namespace controls {

class GridModel;

/// Edits a grid's cells through the same entry fields that forms have, so that key filters and
/// limits hold there too.
class GridDelegate : public QStyledItemDelegate {
  public:
    GridDelegate(GridModel& model, QObject* parent) : QStyledItemDelegate(parent), m_model(model) {}

    QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                          const QModelIndex& index) const override;
    void setEditorData(QWidget* editor, const QModelIndex& index) const override;
    void setModelData(QWidget* editor, QAbstractItemModel* model,
                      const QModelIndex& index) const override;

  protected:
    bool eventFilter(QObject* object, QEvent* event) override;

  private:
    bool refuses(QWidget* editor) const;
    GridModel& m_model;
};

} // namespace controls
