// Shows the pages of a document, all below each other, at any size.
#pragma once

#include <QPrintPreviewWidget>
#include <QPrinter>
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
  QPrinter printer_;
  QPrintPreviewWidget preview_;
  std::unique_ptr<PageSetter> pages_;
};

}  // namespace velmoor::qt
