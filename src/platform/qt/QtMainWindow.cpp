#include "platform/qt/QtMainWindow.h"

#include <QApplication>
#include <QDropEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QMdiSubWindow>
#include <QMenu>
#include <QMimeData>
#include <QScreen>
#include <QScrollArea>
#include <QStackedWidget>
#include <QStatusBar>
#include <QStyle>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QUrl>
#include <algorithm>

#include "platform/Settings.h"
#include "platform/World.h"
#include "platform/qt/LampWidget.h"
#include "platform/qt/QtAppearance.h"
#include "platform/qt/QtForms.h"
#include "platform/qt/WindowSizes.h"

namespace velmoor::qt {
namespace {

struct PanelLook {
  StatusPanel panel;
  const char* tip;
};

// The panels at the right, from left to right.
constexpr PanelLook kPanels[] = {
    {StatusPanel::module, "Current module"},
    {StatusPanel::pending, "Items that are not downloaded yet"},
    {StatusPanel::model, "Amplifier model"},
    {StatusPanel::axis, "Axis"},
    {StatusPanel::port, "Serial port"},
    {StatusPanel::baudRate, "Speed of the serial line in bits per second"},
};

// The first "&" marks the key; those of the file's name are of the name.
QString MenuText(const std::string& caption) {
  if (caption.empty()) return {};
  QString text = ToQt(caption);
  return text.replace(QLatin1Char('&'), QLatin1String("&&")).replace(0, 2, QLatin1String("&"));
}

const char* const kToolBarNames[] = {"tbStandard", "tbModule"};

}  // namespace

QtMainWindow::QtMainWindow(QtForms& forms, const Layout& layout, QMainWindow& window)
    : MainWindow(layout),
      forms_(forms),
      window_(window),
      area_(window.findChild<QMdiArea*>(QStringLiteral("mdiArea"))),
      watch_(window, [this](QEvent& event) { return LookAtWindow(event); }),
      commands_(window, layout) {
  ApplyIcons(window);
  // Behind a window that closes comes the one that was in front before it.
  area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
  SetUpPages();
  SetUpStatusBar();
  SetUpConnection();
  SetUpRecentEntries();
  SetUpWindowList();
  SetUpTheme();
  PaintArea();
  window_.setAcceptDrops(true);
  QObject::connect(area_, &QMdiArea::subWindowActivated, &context_,
                   [&forms](const QMdiSubWindow* child) { forms.NoteActiveChild(child); });
}

QtMainWindow::~QtMainWindow() {
  forms_.ForgetMain();
  window_.hide();
  window_.deleteLater();
}

bool QtMainWindow::LookAtWindow(QEvent& event) {
  switch (event.type()) {
    case QEvent::ApplicationPaletteChange:
      PaintArea();
      return false;
    case QEvent::DragEnter:
    case QEvent::Drop:
      return LookAtDrag(static_cast<QDropEvent&>(event));
    case QEvent::Close:
      if (!window_.isVisible()) return false;
      event.setAccepted(Close());
      return true;
    default:
      return false;
  }
}

bool QtMainWindow::LookAtDrag(QDropEvent& event) {
  QStringList files;
  for (const QUrl& url : event.mimeData()->urls()) {
    if (url.isLocalFile()) files << url.toLocalFile();
  }
  if (files.isEmpty()) return false;
  event.acceptProposedAction();
  if (event.type() != QEvent::Drop) return true;
  // Whoever the files come from waits for the drop to end.
  for (const QString& file : files) {
    QTimer::singleShot(0, &context_, [this, file] { FileDropped.Raise(FromQt(file)); });
  }
  return true;
}

// ---- the page

void QtMainWindow::SetUpPages() {
  stack_ = new QStackedWidget(&window_);
  page_ = new QScrollArea(stack_);
  page_->setObjectName(QStringLiteral("page"));
  page_->setWidgetResizable(true);
  page_->setFrameShape(QFrame::NoFrame);
  page_->setFocusPolicy(Qt::NoFocus);
  window_.takeCentralWidget();
  stack_->addWidget(area_);
  stack_->addWidget(page_);
  window_.setCentralWidget(stack_);
  area_->show();
}

void QtMainWindow::SetPage(QWidget* page) {
  if (QWidget* const before = page_->takeWidget()) {
    before->hide();
    before->setParent(nullptr);
  }
  if (page != nullptr) page_->setWidget(page);
}

void QtMainWindow::CoverPage(bool covered) {
  QWidget* const page = page_->widget();
  QWidget* const front = covered || page == nullptr ? static_cast<QWidget*>(area_) : page_;
  if (stack_->currentWidget() == front) return;
  // A window that comes next looks at once how much room there is.
  front->setGeometry(stack_->contentsRect());
  stack_->setCurrentWidget(front);
  if (front != page_) return;
  QWidget* const last = page->focusWidget();
  QWidget* const next = last != nullptr ? last : page->nextInFocusChain();
  next->setFocus();
}

void QtMainWindow::SetUpStatusBar() {
  QStatusBar& bar = *window_.statusBar();
  lamp_ = new LampWidget(&bar);
  bar.addWidget(lamp_);
  auto* const line = new QLabel(&bar);
  line->setObjectName(QStringLiteral("frmMainLine"));
  line->setToolTip(QStringLiteral("State of the line; in an alarm a click opens Monitoring"));
  line->setContentsMargins(0, 0, 6, 0);
  bar.addWidget(line);
  panels_[StatusPanel::line] = line;
  lineClicks_ = std::make_unique<EventWatch>(*line, [this](const QEvent& event) {
    if (event.type() != QEvent::MouseButtonRelease) return false;
    PanelChosen.Raise(StatusPanel::line);
    return true;
  });
  auto* const status = new QLabel(&bar);
  status->setObjectName(QStringLiteral("frmMainStatus"));
  // A long text gives way, not the panels.
  status->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
  bar.addWidget(status, 1);
  panels_[StatusPanel::status] = status;
  for (const PanelLook& look : kPanels) {
    auto* const label = new QLabel(&bar);
    label->setToolTip(QString::fromLatin1(look.tip));
    label->setContentsMargins(6, 0, 6, 0);
    label->hide();
    bar.addPermanentWidget(label);
    panels_[look.panel] = label;
  }
}

// The tools of the bar are icons, this one is its words.
void QtMainWindow::SetUpConnection() {
  connection_ = new QToolButton(&window_);
  connection_->setObjectName(QStringLiteral("connection"));
  connection_->setMenu(window_.findChild<QMenu*>(QStringLiteral("mnuToolsConnection")));
  connection_->setPopupMode(QToolButton::InstantPopup);
  connection_->setToolButtonStyle(Qt::ToolButtonTextOnly);
  connection_->setFocusPolicy(Qt::TabFocus);
  connection_->setToolTip(
      QStringLiteral("State of the connection; a click offers ports and speeds"));
  auto* const bar = window_.findChild<QToolBar*>(QStringLiteral("tbStandard"));
  bar->addSeparator();
  bar->addWidget(connection_);
}

void QtMainWindow::PaintArea() {
  area_->setBackground(QApplication::palette().midlight());
}

void QtMainWindow::SetUpRecentEntries() {
  for (int place = 0;; ++place) {
    auto* const action = window_.findChild<QAction*>(QStringLiteral("recentFile_%1").arg(place));
    if (action == nullptr) break;
    QObject::connect(action, &QAction::triggered, &context_,
                     [this, place] { RecentChosen.Raise(place); });
  }
  SetRecentEntries({});
}

// The windows that are open, below the entries of the menu's layout.
void QtMainWindow::SetUpWindowList() {
  auto* const menu = window_.findChild<QMenu*>(QStringLiteral("mnuWindow"));
  QObject::connect(menu, &QMenu::aboutToShow, &context_, [this, menu] {
    qDeleteAll(windowEntries_);
    windowEntries_.clear();
    QList<QMdiSubWindow*> children = area_->subWindowList();
    children.removeIf([](const QMdiSubWindow* child) { return child->isHidden(); });
    if (!children.isEmpty()) windowEntries_ << menu->addSeparator();
    for (QMdiSubWindow* const child : children) {
      QString title = child->windowTitle().remove(QLatin1String("[*]"));
      title.replace(QLatin1Char('&'), QLatin1String("&&"));
      auto* const entry =
          menu->addAction(QStringLiteral("&%1 %2").arg(windowEntries_.size()).arg(title));
      entry->setCheckable(true);
      entry->setChecked(child == area_->activeSubWindow());
      QObject::connect(entry, &QAction::triggered, child, [this, child] {
        if (child->isMinimized()) child->showNormal();
        area_->setActiveSubWindow(child);
      });
      windowEntries_ << entry;
    }
  });
}

void QtMainWindow::SetUpTheme() {
  auto* const dark = window_.findChild<QAction*>(QStringLiteral("viewDark"));
  dark->setChecked(IsDark());
  const auto isChosen = [] {
    return world().settings != nullptr && !world().settings->ReadText(kThemeSetting, "").empty();
  };
  desktop_ = std::make_unique<DesktopTheme>([dark, isChosen](bool wanted) {
    if (isChosen()) return;
    SetDark(wanted);
    dark->setChecked(wanted);
  });
  // What the desktop wants too is no choice of the user's: it is followed again.
  QObject::connect(dark, &QAction::triggered, &context_, [this](bool on) {
    SetDark(on);
    const bool follows = desktop_->WantsDark() == on;
    KeepComfort(kThemeSetting, follows ? "" : on ? kDarkTheme : kLightTheme);
  });
}

void QtMainWindow::SetCaption(const std::string& caption) {
  caption_ = caption;
  window_.setWindowTitle(ToQt(caption) + QStringLiteral("[*]"));
}

void QtMainWindow::SetChanged(bool changed) {
  window_.setWindowModified(changed);
}

void QtMainWindow::SetPanel(StatusPanel panel, const std::string& text) {
  if (panel == StatusPanel::connection) return connection_->setText(ToQt(text));
  QLabel& label = *panels_.at(panel);
  label.setText(ToQt(text));
  if (panel != StatusPanel::status) label.setVisible(!text.empty());
}

std::string QtMainWindow::Panel(StatusPanel panel) const {
  if (panel == StatusPanel::connection) return FromQt(connection_->text());
  return FromQt(panels_.at(panel)->text());
}

void QtMainWindow::SetStatusTone(Tone tone) {
  lamp_->SetTone(tone);
}

Tone QtMainWindow::StatusTone() const {
  return lamp_->LampTone();
}

void QtMainWindow::SetRecentEntries(const std::vector<std::string>& captions) {
  recent_ = captions;
  bool any = false;
  for (std::size_t place = 0;; ++place) {
    auto* const action = window_.findChild<QAction*>(QStringLiteral("recentFile_%1").arg(place));
    if (action == nullptr) break;
    const std::string caption = place < captions.size() ? captions[place] : std::string();
    action->setText(MenuText(caption));
    action->setVisible(!caption.empty());
    any = any || !caption.empty();
  }
  if (auto* const separator = window_.findChild<QAction*>(QStringLiteral("recentSeparator"))) {
    separator->setVisible(any);
  }
}

void QtMainWindow::SetToolBarVisible(ToolBar bar, bool visible) {
  const QString name = QString::fromLatin1(kToolBarNames[static_cast<int>(bar)]);
  window_.findChild<QToolBar*>(name)->setVisible(visible);
}

void QtMainWindow::SetStatusBarVisible(bool visible) {
  window_.statusBar()->setVisible(visible);
}

void QtMainWindow::Arrange(Arrangement arrangement) {
  switch (arrangement) {
    case Arrangement::cascade:
      area_->cascadeSubWindows();
      break;
    case Arrangement::tileVertical:
      Tile(Qt::Horizontal);
      break;
    case Arrangement::tileHorizontal:
      Tile(Qt::Vertical);
      break;
  }
}

void QtMainWindow::Tile(Qt::Orientation direction) {
  QList<QMdiSubWindow*> children = area_->subWindowList();
  children.removeIf([](const QMdiSubWindow* child) { return !child->isVisible(); });
  if (children.isEmpty()) return;
  const bool below = direction == Qt::Vertical;
  const auto count = static_cast<int>(children.size());
  const QSize room = area_->maximumViewportSize();
  QSize share = below ? QSize(room.width(), room.height() / count)
                      : QSize(room.width() / count, room.height());
  QSize least(0, 0);
  for (const QMdiSubWindow* const child : children) {
    least += share.expandedTo(child->minimumSizeHint());
  }
  // The bar to scroll by takes its room from the other direction.
  const int bar = area_->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  if (below && least.height() > room.height()) share.rwidth() -= bar;
  if (!below && least.width() > room.width()) share.rheight() -= bar;
  QPoint place(0, 0);
  for (QMdiSubWindow* const child : children) {
    child->showNormal();
    child->setGeometry(QRect(place, share.expandedTo(child->minimumSizeHint())));
    place += below ? QPoint(0, child->height()) : QPoint(child->width(), 0);
  }
}

Control& QtMainWindow::ControlAt(std::size_t /*place*/) {
  throw std::logic_error("The main window has no controls");
}

void QtMainWindow::Show() {
  window_.show();
}

bool QtMainWindow::IsVisible() const {
  return window_.isVisible();
}

bool QtMainWindow::IsMinimised() const {
  return window_.isMinimized();
}

void QtMainWindow::Activate() {
  if (window_.isMinimized()) window_.showNormal();
  window_.raise();
  window_.activateWindow();
}

WindowGeometry QtMainWindow::Geometry() const {
  const QPoint place = window_.pos();
  return {place.x(), place.y(), window_.width(), window_.height()};
}

void QtMainWindow::SetGeometry(std::optional<int> left, std::optional<int> top,
                               std::optional<int> width, std::optional<int> height) {
  // The layout's size may be more than a small or enlarged screen has.
  const QSize fitting = FittingScreen(window_.size());
  window_.resize(width.value_or(fitting.width()), height.value_or(fitting.height()));
  if (left || top) {
    window_.move(left.value_or(window_.x()), top.value_or(window_.y()));
    MoveOntoScreen();
  }
}

void QtMainWindow::MoveOntoScreen() {
  constexpr int kGrip = 80;  // so much of the title bar must be in reach
  const QRect title(window_.pos(), QSize(window_.width(), kGrip));
  const auto screens = QGuiApplication::screens();
  const bool inReach = std::any_of(screens.begin(), screens.end(), [&](const QScreen* screen) {
    const QRect seen = screen->availableGeometry().intersected(title);
    return seen.width() >= kGrip && seen.height() >= kGrip / 2;
  });
  if (!inReach) window_.move(QGuiApplication::primaryScreen()->availableGeometry().topLeft());
}

bool QtMainWindow::Close() {
  if (closing_) return false;
  if (!window_.isVisible()) return true;
  closing_ = true;
  QueryUnload.Raise();
  bool cancel = false;
  Unload.Raise(cancel);
  closing_ = false;
  if (cancel) return false;
  window_.hide();
  Closed.Raise();
  return true;
}

}  // namespace velmoor::qt
