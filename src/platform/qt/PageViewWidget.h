// Shows the pages of a document, all below each other, at any size, with small pictures of them
// beside.
#pragma once

#include <QListWidget>
#include <QPrintPreviewWidget>
#include <QPrinter>
#include <QTimer>
#include <QWidget>
#include <memory>

#include "platform/Event.h"
#include "platform/PrintDocument.h"

namespace velmoor::qt {

class PageSetter;

class PageViewWidget final : public QWidget {
  Q_OBJECT

 public:
  explicit PageViewWidget(QWidget* parent = nullptr);
  ~PageViewWidget() override;
  void SetDocument(const PrintDocument& document, Paper paper);
  [[nodiscard]] QPrintPreviewWidget& Preview() { return preview_; }

  Event<> Moved;

 private:
  // One picture at a time, so that the window is there before the last of them.
  void DrawNextPicture();
  void ShowPlace();

  QPrinter printer_;
  QPrintPreviewWidget preview_;
  QListWidget pictures_;
  QTimer drawing_;
  int drawn_ = 0;
  Paper paper_ = Paper::a4;
  std::unique_ptr<PageSetter> pages_;
};

}  // namespace velmoor::qt
