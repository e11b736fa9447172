// The main window: menus and tool bars of its layout, a status bar, the area of the child windows.
#pragma once

#include <QMainWindow>
#include <QMdiArea>
#include <map>
#include <memory>

#include "platform/MainWindow.h"
#include "platform/qt/DesktopTheme.h"
#include "platform/qt/EventWatch.h"
#include "platform/qt/QtCommands.h"

class QDropEvent;
class QLabel;
class QScrollArea;
class QStackedWidget;
class QToolButton;

namespace velmoor::qt {

class LampWidget;
class QtForms;

class QtMainWindow final : public MainWindow {
 public:
  // Takes `window` over.
  QtMainWindow(QtForms& forms, const Layout& layout, QMainWindow& window);
  ~QtMainWindow() override;
  QtMainWindow(const QtMainWindow&) = delete;
  QtMainWindow& operator=(const QtMainWindow&) = delete;

  void SetCaption(const std::string& caption) override;
  [[nodiscard]] std::string Caption() const override { return caption_; }
  void SetChanged(bool changed) override;
  void SetPanel(StatusPanel panel, const std::string& text) override;
  [[nodiscard]] std::string Panel(StatusPanel panel) const override;
  void SetStatusTone(Tone tone) override;
  [[nodiscard]] Tone StatusTone() const override;
  void SetRecentEntries(const std::vector<std::string>& captions) override;
  [[nodiscard]] std::vector<std::string> RecentEntries() const override { return recent_; }
  void SetToolBarVisible(ToolBar bar, bool visible) override;
  void SetStatusBarVisible(bool visible) override;
  void Arrange(Arrangement arrangement) override;
  void Show() override;
  [[nodiscard]] bool IsVisible() const override;
  [[nodiscard]] bool IsMinimised() const override;
  void Activate() override;
  [[nodiscard]] WindowGeometry Geometry() const override;
  void SetGeometry(std::optional<int> left, std::optional<int> top, std::optional<int> width,
                   std::optional<int> height) override;
  bool Close() override;

  [[nodiscard]] QMdiArea& Area() const { return *area_; }
  // What fills the window while nothing covers it; null: nothing. The caller keeps `page`.
  void SetPage(QWidget* page);
  void CoverPage(bool covered);
  [[nodiscard]] QMainWindow& Window() const { return window_; }

 private:
  // The layout has a menu and tools, and no control.
  Control& ControlAt(std::size_t place) override;
  Command& CommandAt(std::size_t place) override { return commands_.At(place); }
  void SetUpStatusBar();
  void SetUpConnection();
  void SetUpRecentEntries();
  // The windows one below or beside the other, each no smaller than it can be read.
  void Tile(Qt::Orientation direction);
  void SetUpWindowList();
  void SetUpTheme();
  void PaintArea();
  void SetUpPages();
  bool LookAtWindow(QEvent& event);
  // Files alone, and those of this computer.
  bool LookAtDrag(QDropEvent& event);
  void MoveOntoScreen();

  QtForms& forms_;
  QMainWindow& window_;
  QMdiArea* area_;
  QStackedWidget* stack_ = nullptr;  // the area, or the page in its stead
  QScrollArea* page_ = nullptr;
  EventWatch watch_;
  std::string caption_;
  std::map<StatusPanel, QLabel*> panels_;
  std::unique_ptr<EventWatch> lineClicks_;
  QToolButton* connection_ = nullptr;
  LampWidget* lamp_ = nullptr;
  std::vector<std::string> recent_;
  QList<QAction*> windowEntries_;
  QtCommands commands_;
  std::unique_ptr<DesktopTheme> desktop_;
  QObject context_;  // ends the connections with the window
  bool closing_ = false;
};

}  // namespace velmoor::qt
