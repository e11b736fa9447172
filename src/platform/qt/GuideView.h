// Shows one page of the guide: Markdown, laid out so that it reads well in the palette in force.
#pragma once

#include <QTextBrowser>

#include "platform/qt/GuidePages.h"

namespace velmoor::qt {

class GuideView final : public QTextBrowser {
 public:
  explicit GuideView(QWidget* parent);

  // False: there is no such page, and the present one stays.
  bool ShowPage(const QString& file);
  // To the heading, or to the top of the page where it has none like it.
  void ScrollTo(const QString& anchor);
  // Scrolls to what is selected.
  void ShowCursor();
  // The same page anew, in other colours or another size, at the same place.
  void ShowAgain();
  [[nodiscard]] const QString& Page() const { return page_; }

 protected:
  QVariant loadResource(int type, const QUrl& name) override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void LayOut();
  void LayOutTables();
  void FitImages();

  QString page_;
};

}  // namespace velmoor::qt
