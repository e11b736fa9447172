// Draws the cells by their traits and makes their editors.
#pragma once

#include <QPointer>
#include <QStyledItemDelegate>
#include <functional>

#include "platform/Grid.h"

namespace velmoor::qt {

class GridModel;

class GridDelegate final : public QStyledItemDelegate {
 public:
  struct Hooks {
    std::function<void(const GridEdit&)> changed;    // the text under edit changed
    std::function<void(const GridEdit&)> committed;  // the edit ends by being accepted
    std::function<bool(const QKeyEvent&)> key;       // true: the editor shall not see the key
  };
  GridDelegate(const GridModel& model, Hooks hooks, QObject* parent);

  // The editor that is open, or null.
  [[nodiscard]] QWidget* Editor() const { return editor_; }
  // The part of a cell that its button takes.
  [[nodiscard]] static QRect ButtonRect(const QRect& cell);

  void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override;
  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  QWidget* createEditor(QWidget* parent, const QStyleOptionViewItem& option,
                        const QModelIndex& index) const override;
  void setEditorData(QWidget* editor, const QModelIndex& index) const override;
  void setModelData(QWidget* editor, QAbstractItemModel* model,
                    const QModelIndex& index) const override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  static void DrawSigns(QPainter& painter, const QStyleOptionViewItem& option,
                        const CellTraits& traits);
  QWidget* CreateComboEditor(QWidget* parent, const CellTraits& traits,
                             const QModelIndex& index) const;
  QWidget* CreateTextEditor(QWidget* parent, const QModelIndex& index) const;
  [[nodiscard]] static GridEdit ReadEditor(const QWidget& editor, const QModelIndex& index);

  const GridModel& model_;
  Hooks hooks_;
  mutable QPointer<QWidget> editor_;
};

}  // namespace velmoor::qt
