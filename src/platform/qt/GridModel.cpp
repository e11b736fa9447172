#include "platform/qt/GridModel.h"

#include <algorithm>

#include "platform/qt/QtText.h"

namespace velmoor::qt {

void GridModel::Bind(GridSource* source) {
  source_ = source;
  Reload();
}

void GridModel::Reload() {
  const int rows = source_ == nullptr ? 0 : std::max(0, source_->Rows() - 1);
  const int columns = source_ == nullptr ? 0 : source_->Columns();
  if (rows != rows_ || columns != columns_) {
    beginResetModel();
    rows_ = rows;
    columns_ = columns;
    endResetModel();
    return;
  }
  if (rows_ == 0 || columns_ == 0) return;
  Q_EMIT dataChanged(index(0, 0), index(rows_ - 1, columns_ - 1));
  Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

void GridModel::ReloadRow(int row) {
  if (row < 1 || row > rows_ || columns_ == 0) return;
  Q_EMIT dataChanged(index(row - 1, 0), index(row - 1, columns_ - 1));
}

CellTraits GridModel::Traits(const QModelIndex& index) const {
  const bool known = source_ != nullptr && index.isValid() && index.row() + 1 < source_->Rows();
  return known ? source_->Traits(index.row() + 1, index.column()) : CellTraits();
}

int GridModel::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int GridModel::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant GridModel::data(const QModelIndex& index, int role) const {
  const bool text = role == Qt::DisplayRole || role == Qt::EditRole;
  if (!text || source_ == nullptr || index.row() + 1 >= source_->Rows()) return {};
  return ToQt(source_->Text(index.row() + 1, index.column()));
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const {
  if (source_ == nullptr || orientation != Qt::Horizontal) return {};
  if (role == Qt::TextAlignmentRole) {
    // Over lamps, which stand in the middle of their cells, and over numbers.
    const CellTraits traits = rows_ > 0 ? Traits(index(0, section)) : CellTraits();
    const Qt::AlignmentFlag across = traits.lamp != CellLamp::none ? Qt::AlignHCenter
                                     : traits.decimals >= 0        ? Qt::AlignRight
                                                                   : Qt::AlignLeft;
    return static_cast<int>(across | Qt::AlignVCenter);
  }
  return role == Qt::DisplayRole ? ToQt(source_->Text(0, section)) : QVariant();
}

Qt::ItemFlags GridModel::flags(const QModelIndex& index) const {
  const Qt::ItemFlags common = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
  return Traits(index).editable ? common | Qt::ItemIsEditable : common;
}

}  // namespace velmoor::qt
