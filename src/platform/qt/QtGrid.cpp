#include "platform/qt/QtGrid.h"

#include <QHeaderView>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QTableView>
#include <QTimer>
#include <QToolTip>
#include <utility>

#include "platform/qt/QtKeys.h"

namespace velmoor::qt {

QtGrid::QtGrid(QTableView& view)
    : QtControl(view),
      view_(view),
      model_(new GridModel(&view)),
      delegate_(
          new GridDelegate(*model_,
                           {.changed = [this](const GridEdit& edit) { ChangeEdit.Raise(edit); },
                            .committed = [this](const GridEdit& edit) { Commit(edit); },
                            .key = [this](const QKeyEvent& event) { return LookAtKey(event); }},
                           &view)),
      keyWatch_(view,
                [this](QEvent& event) {
                  return event.type() == QEvent::KeyPress &&
                         LookAtKey(static_cast<const QKeyEvent&>(event));
                }),
      viewportWatch_(*view.viewport(), [this](QEvent& event) { return LookAtViewport(event); }),
      headingWatch_(*view.horizontalHeader()->viewport(), [this](QEvent& event) {
        if (event.type() != QEvent::ToolTip) return false;
        const auto& help = static_cast<const QHelpEvent&>(event);
        return ShowTip(help, 0, view_.horizontalHeader()->logicalIndexAt(help.pos()));
      }) {
  SetUpView();
  // After the view's own answer, which knows nothing of a box in front.
  QObject::connect(delegate_, &QAbstractItemDelegate::closeEditor, &context_,
                   [this] { EditorClosed(); });
  QObject::connect(view.selectionModel(), &QItemSelectionModel::currentChanged, &context_,
                   [this] { CurrentMoved(); });
  QObject::connect(&view, &QTableView::clicked, &context_,
                   [this](const QModelIndex& index) { CellClicked(index); });
  QObject::connect(&view, &QTableView::doubleClicked, &context_,
                   [this](const QModelIndex& index) { ChooseRow(index); });
  QObject::connect(&view, &QTableView::customContextMenuRequested, &context_,
                   [this](const QPoint& place) { OpenContextMenu(place); });
  QObject::connect(view.horizontalHeader(), &QHeaderView::sectionClicked, &context_,
                   [this](int column) { HeadingClick.Raise(column); });
}

QtGrid::~QtGrid() {
  // The view lives a little longer than the source.
  model_->Bind(nullptr);
}

void QtGrid::SetUpView() {
  view_.setModel(model_);
  view_.setItemDelegate(delegate_);
  view_.setSelectionMode(QAbstractItemView::ContiguousSelection);
  view_.setEditTriggers(QAbstractItemView::DoubleClicked | QAbstractItemView::AnyKeyPressed |
                        QAbstractItemView::EditKeyPressed);
  view_.setContextMenuPolicy(Qt::CustomContextMenu);
  view_.setWordWrap(false);
  view_.setAlternatingRowColors(true);
  view_.verticalHeader()->hide();
  FitRows();
  view_.horizontalHeader()->setStretchLastSection(true);
  view_.horizontalHeader()->setHighlightSections(false);
}

void QtGrid::Bind(GridSource* source) {
  const QScopedValueRollback guard(fromCode_, true);
  model_->Bind(source);
  FitColumns();
}

void QtGrid::Refresh() {
  const QScopedValueRollback guard(fromCode_, true);
  if (QWidget* const editor = delegate_->Editor(); editor != nullptr && !committing_) {
    Q_EMIT delegate_->closeEditor(editor, QAbstractItemDelegate::RevertModelCache);
  }
  const int rows = model_->rowCount();
  model_->Reload();
  if (rows != model_->rowCount()) FitColumns();
}

void QtGrid::RefreshRow(int row) {
  model_->ReloadRow(row);
}

void QtGrid::SetColumnHidden(int column, bool hidden) {
  view_.setColumnHidden(column, hidden);
}

bool QtGrid::ColumnHidden(int column) const {
  return view_.isColumnHidden(column);
}

void QtGrid::SetRowHidden(int row, bool hidden) {
  view_.setRowHidden(row - 1, hidden);
}

bool QtGrid::RowHidden(int row) const {
  return view_.isRowHidden(row - 1);
}

void QtGrid::SetColumnWidth(int column, int characters) {
  const auto at = static_cast<std::size_t>(column);
  if (widths_.size() <= at) widths_.resize(at + 1, 0);
  widths_[at] = characters;
  FitColumns();
}

void QtGrid::SetColumnShare(int column) {
  QHeaderView& heading = *view_.horizontalHeader();
  heading.setStretchLastSection(false);
  heading.setSectionResizeMode(column, QHeaderView::Stretch);
}

void QtGrid::SetRowsInSight(int rows) {
  view_.setMinimumHeight(view_.horizontalHeader()->sizeHint().height() +
                         rows * view_.verticalHeader()->defaultSectionSize() +
                         2 * view_.frameWidth());
}

void QtGrid::SetSortMark(int column, bool descending) {
  QHeaderView& heading = *view_.horizontalHeader();
  // A heading that sorts does not select its column.
  QObject::disconnect(&heading, &QHeaderView::sectionPressed, &view_, nullptr);
  heading.setSortIndicatorShown(column >= 0);
  heading.setSortIndicator(column, descending ? Qt::DescendingOrder : Qt::AscendingOrder);
}

// Rows that bear buttons are as high as these want to be.
void QtGrid::FitRows() {
  constexpr int kAction = 14, kPlain = 8;
  const QModelIndex last = model_->index(0, model_->columnCount() - 1);
  const int room = last.isValid() && model_->Traits(last).action ? kAction : kPlain;
  view_.verticalHeader()->setDefaultSectionSize(view_.fontMetrics().height() + room);
}

void QtGrid::FitColumns() {
  constexpr int kWidest = 320;
  constexpr int kRoom = 16;
  FitRows();
  const int character = view_.fontMetrics().averageCharWidth();
  for (int column = 0; column < model_->columnCount(); ++column) {
    const auto at = static_cast<std::size_t>(column);
    const int asked = at < widths_.size() ? widths_[at] : 0;
    if (asked > 0) {
      const int heading = view_.horizontalHeader()->sectionSizeHint(column);
      view_.setColumnWidth(column, std::max(asked * character + kRoom, heading));
      continue;
    }
    view_.resizeColumnToContents(column);
    view_.setColumnWidth(column, std::min(view_.columnWidth(column) + kRoom, kWidest));
  }
}

int QtGrid::Row() const {
  const QModelIndex current = view_.currentIndex();
  return current.isValid() ? current.row() + 1 : -1;
}

int QtGrid::Column() const {
  return view_.currentIndex().isValid() ? view_.currentIndex().column() : -1;
}

void QtGrid::SetCurrent(int row, int column) {
  const QScopedValueRollback guard(fromCode_, true);
  view_.setCurrentIndex(row < 1 ? QModelIndex() : model_->index(row - 1, column));
}

GridBlock QtGrid::Selection() const {
  const QItemSelection selection = view_.selectionModel()->selection();
  if (selection.size() != 1) return {Row(), Column(), Row(), Column()};
  const QItemSelectionRange& range = selection.first();
  return {range.top() + 1, range.left(), range.bottom() + 1, range.right()};
}

void QtGrid::Select(const GridBlock& block) {
  const QScopedValueRollback guard(fromCode_, true);
  SetCurrent(block.top, block.left);
  view_.selectionModel()->select(QItemSelection(model_->index(block.top - 1, block.left),
                                                model_->index(block.bottom - 1, block.right)),
                                 QItemSelectionModel::ClearAndSelect);
}

bool QtGrid::IsEditing() const {
  const QWidget* const editor = delegate_->Editor();
  return editor != nullptr && editor->isVisible();
}

void QtGrid::CurrentMoved() {
  view_.viewport()->update();  // the buttons of the current row
  if (!fromCode_) RowColChange.Raise();
}

void QtGrid::BeginEdit() {
  const QModelIndex current = view_.currentIndex();
  if (current.isValid() && model_->Traits(current).editable) {
    view_.edit(current);
  } else {
    (void)Denies(current);
  }
}

// True: the cell is locked, of which the logic was told.
bool QtGrid::Denies(const QModelIndex& index) {
  if (!model_->Traits(index).locked) return false;
  EditDenied.Raise(index.row() + 1);
  return true;
}

bool QtGrid::FinishEdit() {
  QWidget* const editor = delegate_->Editor();
  if (!IsEditing() || committing_) return true;
  refused_ = false;
  const QScopedValueRollback guard(finishing_, true);
  const QPointer<QWidget> alive(&view_);
  Q_EMIT delegate_->commitData(editor);
  if (!alive) return true;
  if (delegate_->Editor() != nullptr) Q_EMIT delegate_->closeEditor(delegate_->Editor());
  return !refused_;
}

// An editor that closes behind a box has no focus to pass on: when the box is gone the window would
// give the keyboard to nobody, or to the next window.
void QtGrid::EditorClosed() {
  const QWidget* const focus = view_.window()->focusWidget();
  if (focus != nullptr && view_.isAncestorOf(focus)) view_.setFocus();
}

void QtGrid::Commit(GridEdit edit) {
  // A box that a check shows takes the focus from the editor, which would commit once more.
  if (committing_ || model_->Source() == nullptr) return;
  const GridEdit kept = std::exchange(kept_, {});
  // Who leaves a refused text as it is has given it up.
  const bool same = edit.row == kept.row && edit.column == kept.column && edit.text == kept.text;
  if (same && !finishing_) return;
  const QScopedValueRollback guard(committing_, true);
  ValidateEdit.Raise(edit);
  refused_ = edit.cancel;
  if (edit.cancel && !edit.hint.empty()) KeepRefused(edit);
  if (edit.cancel) return;
  model_->Source()->SetText(edit.row, edit.column, edit.text);
  model_->ReloadRow(edit.row);
  AfterEdit.Raise(edit.row, edit.column);
}

// The box about it has closed the editor.
void QtGrid::KeepRefused(const GridEdit& edit) {
  kept_ = edit;
  QTimer::singleShot(0, &context_, [this] {
    const QModelIndex cell = model_->index(kept_.row - 1, kept_.column);
    if (kept_.row == 0 || !view_.isVisible()) return;
    SetCurrent(kept_.row, kept_.column);
    view_.setFocus();
    view_.edit(cell);
    auto* const line = qobject_cast<QLineEdit*>(delegate_->Editor());
    if (line == nullptr) return;
    line->setText(ToQt(kept_.text));
    line->selectAll();
    const QRect place = view_.visualRect(cell);
    QToolTip::showText(view_.viewport()->mapToGlobal(place.bottomLeft()), ToQt(kept_.hint), &view_);
  });
}

void QtGrid::CellClicked(const QModelIndex& index) {
  // The logic has led the cursor to another cell of the row: the selection follows.
  QItemSelectionModel& selection = *view_.selectionModel();
  if (selection.selectedIndexes() == QModelIndexList{index} && view_.currentIndex() != index) {
    selection.select(view_.currentIndex(), QItemSelectionModel::ClearAndSelect);
  }
  const CellTraits traits = model_->Traits(index);
  if (traits.editable && !traits.comboItems.empty()) view_.edit(index);
}

bool QtGrid::LookAtKey(const QKeyEvent& event) {
  KeyEvent key = ToKeyEvent(event);
  KeyDown.Raise(key);
  if (key.handled || IsEditing()) return key.handled;
  const QModelIndex current = view_.currentIndex();
  const bool presses = key.code == keys::kEnter || key.code == keys::kSpace;
  if (presses && !key.AnyShift() && current.isValid() && model_->Traits(current).action) {
    CellButton.Raise(current.row() + 1, current.column());
    return true;
  }
  if (key.code == keys::kEnter && !key.AnyShift()) ChooseRow(current);
  const bool types = !key.ctrl && !key.alt && !event.text().isEmpty() && event.text()[0].isPrint();
  return (types || event.key() == Qt::Key_F2) && Denies(current);
}

void QtGrid::ChooseRow(const QModelIndex& index) {
  if (Denies(index)) return;
  const CellTraits traits = model_->Traits(index);
  // A button of the cell has had the click already.
  if (index.isValid() && !traits.editable && !traits.action) RowChosen.Raise(index.row() + 1);
}

bool QtGrid::ShowTip(const QHelpEvent& help, int row, int column) {
  std::string tip;
  if (column >= 0) Tip.Raise(row, column, tip);
  QToolTip::showText(help.globalPos(), tip.empty() ? view_.toolTip() : ToQt(tip), &view_);
  return true;
}

// The menu that the layout names for the cells; at the current one by the key.
void QtGrid::OpenContextMenu(const QPoint& place) {
  const QString name = view_.property("contextMenu").toString();
  QMenu* menu = nullptr;
  for (QWidget* around = &view_; around != nullptr && menu == nullptr && !name.isEmpty();
       around = around->parentWidget()) {
    menu = around->findChild<QMenu*>(name);
  }
  if (menu == nullptr || !FinishEdit()) return;
  const bool within = view_.indexAt(place).isValid();
  const QPoint at = within ? place : view_.visualRect(view_.currentIndex()).bottomLeft();
  menu->popup(view_.viewport()->mapToGlobal(at));
}

bool QtGrid::LookAtViewport(QEvent& event) {
  if (event.type() == QEvent::ToolTip) {
    const auto& help = static_cast<const QHelpEvent&>(event);
    const QModelIndex index = view_.indexAt(help.pos());
    return ShowTip(help, index.row() + 1, index.column());
  }
  if (event.type() == QEvent::MouseButtonPress) pressed_ = Row();
  if (event.type() == QEvent::MouseButtonRelease) {
    const auto& mouse = static_cast<const QMouseEvent&>(event);
    const QModelIndex index = view_.indexAt(mouse.pos());
    const CellTraits traits = model_->Traits(index);
    const bool hit =
        traits.action || (traits.button && pressed_ == index.row() + 1 &&
                          GridDelegate::ButtonRect(view_.visualRect(index)).contains(mouse.pos()));
    if (hit) CellButton.Raise(index.row() + 1, index.column());
  }
  return false;
}

}  // namespace velmoor::qt
