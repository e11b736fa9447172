#include "platform/qt/HelpWindow.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QShortcut>
#include <QSplitter>
#include <QToolBar>
#include <QTreeWidget>
#include <QWindow>
#include <algorithm>

#include "platform/Settings.h"
#include "platform/World.h"
#include "platform/qt/GuideView.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/WindowSizes.h"

namespace velmoor::qt {
namespace {

constexpr const char* kName = "helpWindow";
constexpr const char* kZoomSetting = "HelpZoom";
constexpr QSize kFirstSize(1080, 760);
constexpr QSize kLeastSize(480, 320);
constexpr int kMostZoom = 10;
constexpr int kLeastZoom = -4;
constexpr int kPageRole = Qt::UserRole;
constexpr int kAnchorRole = Qt::UserRole + 1;

GuidePlace PlaceOf(const QTreeWidgetItem& item) {
  return {item.data(0, kPageRole).toString(), item.data(0, kAnchorRole).toString()};
}

QTreeWidgetItem* MakeItem(const QString& text, const GuidePlace& place) {
  auto* const item = new QTreeWidgetItem(QStringList(text));
  item->setData(0, kPageRole, place.page);
  item->setData(0, kAnchorRole, place.anchor);
  return item;
}

}  // namespace

bool IsHelpWindow(const QWidget* window) {
  return dynamic_cast<const HelpWindow*>(window) != nullptr;
}

HelpWindow::HelpWindow()
    : pages_(GuidePages()), contents_(new QTreeWidget), view_(new GuideView(nullptr)) {
  setObjectName(QString::fromLatin1(kName));
  auto* const bar = new QToolBar;
  MakeTools(*bar);
  contents_->setObjectName(QStringLiteral("helpContents"));
  contents_->setAccessibleName(QStringLiteral("Contents of the user guide"));
  contents_->setHeaderHidden(true);
  contents_->setFrameShape(QFrame::NoFrame);
  view_->setObjectName(QStringLiteral("helpPage"));
  FillContents();
  auto* const halves = new QSplitter(Qt::Horizontal);
  halves->addWidget(contents_);
  halves->addWidget(view_);
  halves->setStretchFactor(1, 1);
  halves->setSizes({260, 820});
  auto* const rows = new QVBoxLayout(this);
  rows->setContentsMargins(0, 0, 0, 0);
  rows->setSpacing(0);
  rows->addWidget(bar);
  rows->addWidget(halves, 1);
  connect(view_, &QTextBrowser::anchorClicked, this,
          [this](const QUrl& link) { Go(PlaceOfLink(link.toString(), view_->Page())); });
  connect(contents_, &QTreeWidget::itemClicked, this,
          [this](const QTreeWidgetItem* item) { Go(PlaceOf(*item)); });
  connect(contents_, &QTreeWidget::itemActivated, this,
          [this](const QTreeWidgetItem* item) { Go(PlaceOf(*item)); });
  auto* const escape = new QShortcut(QKeySequence(Qt::Key_Escape), this);
  connect(escape, &QShortcut::activated, this, &QWidget::close);
  ReadSettings();
}

HelpWindow::~HelpWindow() = default;

QAction* HelpWindow::AddTool(QToolBar& bar, const char* icon, const char* text,
                             const QList<QKeySequence>& keys, void (HelpWindow::*handler)()) {
  QAction* const action = bar.addAction(ProgramIcon(QString::fromLatin1(icon)), QString());
  action->setText(QString::fromLatin1(text));
  action->setToolTip(action->text() + QStringLiteral(" (") +
                     keys.front().toString(QKeySequence::NativeText) + QLatin1Char(')'));
  action->setShortcuts(keys);
  connect(action, &QAction::triggered, this, handler);
  return action;
}

void HelpWindow::MakeTools(QToolBar& bar) {
  bar.setIconSize(QSize(20, 20));
  back_ = AddTool(bar, "back", "Back", {QKeySequence(Qt::ALT | Qt::Key_Left)}, &HelpWindow::Back);
  forward_ = AddTool(bar, "forward", "Forward", {QKeySequence(Qt::ALT | Qt::Key_Right)},
                     &HelpWindow::Forward);
  AddTool(bar, "home", "First page", {QKeySequence(Qt::ALT | Qt::Key_Home)}, &HelpWindow::Home);
  bar.addSeparator();
  AddTool(bar, "zoomout", "Smaller", {QKeySequence(Qt::CTRL | Qt::Key_Minus)},
          &HelpWindow::ZoomOut);
  AddTool(bar, "zoomin", "Larger",
          {QKeySequence(Qt::CTRL | Qt::Key_Plus), QKeySequence(Qt::CTRL | Qt::Key_Equal)},
          &HelpWindow::ZoomIn);
  auto* const actual = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_0), this);
  connect(actual, &QShortcut::activated, this, &HelpWindow::ZoomReset);
  bar.addSeparator();
  find_ = new QLineEdit;
  find_->setObjectName(QStringLiteral("helpFind"));
  find_->setPlaceholderText(QStringLiteral("Find in the guide"));
  find_->setAccessibleName(find_->placeholderText());
  find_->setClearButtonEnabled(true);
  find_->setMaximumWidth(280);
  bar.addWidget(find_);
  AddTool(bar, "find", "Find next", {QKeySequence(Qt::Key_F3)}, &HelpWindow::FindNext);
  found_ = new QLabel;
  found_->setObjectName(QStringLiteral("helpFound"));
  found_->setContentsMargins(8, 0, 8, 0);
  bar.addWidget(found_);
  connect(find_, &QLineEdit::returnPressed, this, &HelpWindow::FindNext);
  connect(find_, &QLineEdit::textEdited, this, [this] { found_->clear(); });
  auto* const start = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_F), this);
  connect(start, &QShortcut::activated, this, &HelpWindow::StartFinding);
}

void HelpWindow::FillContents() {
  for (const GuidePage& page : pages_) {
    QTreeWidgetItem* const item = MakeItem(page.title, {page.file, {}});
    for (const QString& heading : page.headings) {
      item->addChild(MakeItem(heading, {page.file, AnchorOf(heading)}));
    }
    contents_->addTopLevelItem(item);
  }
}

// ---- places

void HelpWindow::Go(const GuidePlace& place) {
  const bool known = !GuideText(place.page).isEmpty();
  const GuidePlace next = known ? place : GuidePlace{QString::fromLatin1(kFirstPage), {}};
  if (history_.empty() || history_[present_] != next) {
    if (!history_.empty()) history_.resize(present_ + 1);
    history_.push_back(next);
    present_ = history_.size() - 1;
  }
  ShowPresent();
}

void HelpWindow::ShowPresent() {
  const GuidePlace& place = history_[present_];
  if (view_->Page() != place.page) (void)view_->ShowPage(place.page);
  view_->ScrollTo(place.anchor);
  back_->setEnabled(present_ > 0);
  forward_->setEnabled(present_ + 1 < history_.size());
  MarkContents();
}

void HelpWindow::MarkContents() {
  const GuidePlace& place = history_[present_];
  for (int i = 0; i < contents_->topLevelItemCount(); ++i) {
    QTreeWidgetItem* const page = contents_->topLevelItem(i);
    if (PlaceOf(*page).page != place.page) continue;
    QTreeWidgetItem* marked = page;
    for (int j = 0; j < page->childCount(); ++j) {
      if (PlaceOf(*page->child(j)) == place) marked = page->child(j);
    }
    page->setExpanded(true);
    contents_->setCurrentItem(marked);
    // The first page bears the guide's own name.
    const QString guide = QStringLiteral("Velmoor User Guide");
    setWindowTitle(i == 0 ? guide : page->text(0) + QStringLiteral(" - ") + guide);
  }
}

void HelpWindow::Back() {
  if (present_ == 0) return;
  --present_;
  ShowPresent();
}

void HelpWindow::Forward() {
  if (present_ + 1 >= history_.size()) return;
  ++present_;
  ShowPresent();
}

void HelpWindow::Home() {
  Go({QString::fromLatin1(kFirstPage), {}});
}

// ---- finding

void HelpWindow::StartFinding() {
  find_->setFocus();
  find_->selectAll();
}

void HelpWindow::FindNext() {
  const QString words = find_->text();
  if (words.isEmpty()) return StartFinding();
  const bool found = view_->find(words) || FindOnOtherPage(words);
  found_->setText(found ? QString() : QStringLiteral("Not found"));
  if (found) view_->ShowCursor();
}

bool HelpWindow::FindOnOtherPage(const QString& words) {
  const auto here = std::find_if(pages_.begin(), pages_.end(), [this](const GuidePage& page) {
    return page.file == view_->Page();
  });
  const auto start = static_cast<std::size_t>(here - pages_.begin());
  for (std::size_t i = 1; i <= pages_.size(); ++i) {
    const GuidePage& page = pages_[(start + i) % pages_.size()];
    if (!GuideWords(page.file).contains(words, Qt::CaseInsensitive)) continue;
    Go({page.file, {}});
    if (view_->find(words)) return true;
  }
  return false;
}

// ---- size

void HelpWindow::Zoom(int steps) {
  const int next = std::clamp(zoom_ + steps, kLeastZoom, kMostZoom);
  view_->zoomIn(next - zoom_);
  zoom_ = next;
}

void HelpWindow::ReadSettings() {
  resize(FittingScreen(StoredWindowSize(kName).value_or(kFirstSize).expandedTo(kLeastSize)));
  Zoom(world().settings->ReadNumber(kZoomSetting, 0));
}

void HelpWindow::WriteSettings() {
  StoreWindowSize(kName, size());
  KeepComfort(kZoomSetting, std::to_string(zoom_));
}

// ---- the window among the others

void HelpWindow::Present() {
  const bool opens = !isVisible();
  if (isMinimized()) showNormal();
  show();
  FollowModal();
  if (opens) ShowPresent();  // a page has its heights only now
  raise();
  activateWindow();
  view_->setFocus();
}

// A modal window shuts out all that it is not the parent of.
void HelpWindow::FollowModal() {
  if (windowHandle() == nullptr) return;
  const QWidget* const modal = QApplication::activeModalWidget();
  windowHandle()->setTransientParent(modal != nullptr ? modal->window()->windowHandle() : nullptr);
}

bool HelpWindow::event(QEvent* event) {
  if (event->type() == QEvent::WindowBlocked) {
    // Behind the opening of the modal window, which tells all others just now.
    QMetaObject::invokeMethod(
        this, [this] { FollowModal(); }, Qt::QueuedConnection);
  }
  return QWidget::event(event);
}

void HelpWindow::closeEvent(QCloseEvent* event) {
  WriteSettings();
  QWidget::closeEvent(event);
}

void HelpWindow::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) view_->ShowAgain();
}

}  // namespace velmoor::qt
