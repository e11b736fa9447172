// A GridSource as a Qt table: row 0 of the source is the header, so table row 0 is source row 1.
#pragma once

#include <QAbstractTableModel>

#include "platform/Grid.h"

namespace velmoor::qt {

class GridModel final : public QAbstractTableModel {
 public:
  using QAbstractTableModel::QAbstractTableModel;

  void Bind(GridSource* source);
  void Reload();
  void ReloadRow(int row);

  [[nodiscard]] GridSource* Source() const { return source_; }
  [[nodiscard]] CellTraits Traits(const QModelIndex& index) const;

  [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
  [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
  [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation,
                                    int role) const override;
  [[nodiscard]] Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  GridSource* source_ = nullptr;
  int rows_ = 0;  // as the views know them; the source may have moved on
  int columns_ = 0;
};

}  // namespace velmoor::qt
