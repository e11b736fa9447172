// The guide's window: contents at the left, a page at the right, forward and back, find and zoom.
//
// It belongs to no other window, and takes input while a modal form or box is up.
#pragma once

#include <QWidget>
#include <vector>

#include "platform/qt/GuidePages.h"

class QAction;
class QLabel;
class QLineEdit;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

namespace velmoor::qt {

class GuideView;

class HelpWindow final : public QWidget {
 public:
  HelpWindow();
  ~HelpWindow() override;

  // Shows the place and keeps the present one to go back to. Where the guide has no such page, its
  // first one.
  void Go(const GuidePlace& place);
  // Opens the window, or brings it to the front.
  void Present();

 protected:
  bool event(QEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void MakeTools(QToolBar& bar);
  QAction* AddTool(QToolBar& bar, const char* icon, const char* text,
                   const QList<QKeySequence>& keys, void (HelpWindow::*handler)());
  void FillContents();
  void ShowPresent();
  void MarkContents();
  void Back();
  void Forward();
  void Home();
  void StartFinding();
  void FindNext();
  // On the pages behind the present one, around the guide's end. False: on none.
  bool FindOnOtherPage(const QString& words);
  void Zoom(int steps);
  void ZoomIn() { Zoom(1); }
  void ZoomOut() { Zoom(-1); }
  void ZoomReset() { Zoom(-zoom_); }
  void FollowModal();
  void ReadSettings();
  void WriteSettings();

  std::vector<GuidePage> pages_;
  std::vector<GuidePlace> history_;
  std::size_t present_ = 0;  // place in the history
  int zoom_ = 0;
  QTreeWidget* contents_;
  GuideView* view_;
  QLineEdit* find_ = nullptr;
  QLabel* found_ = nullptr;
  QAction* back_ = nullptr;
  QAction* forward_ = nullptr;
};

[[nodiscard]] bool IsHelpWindow(const QWidget* window);

}  // namespace velmoor::qt
