#include "platform/qt/PageViewWidget.h"

#include <QBoxLayout>
#include <QGraphicsView>

#include "platform/qt/PageSetter.h"

namespace velmoor::qt {

PageViewWidget::PageViewWidget(QWidget* parent)
    : QWidget(parent), printer_(QPrinter::HighResolution), preview_(&printer_, this) {
  // Any installed printer would have its say about margins and sizes.
  printer_.setOutputFormat(QPrinter::PdfFormat);
  printer_.setResolution(kDotsPerInch);
  auto* const layout = new QVBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(&preview_);
  // The part that scrolls takes the keys.
  setFocusProxy(preview_.findChild<QGraphicsView*>());
  connect(&preview_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
    if (pages_) DrawPages(*pages_, *printer);
  });
  connect(&preview_, &QPrintPreviewWidget::previewChanged, this, [this] { Moved.Raise(); });
}

PageViewWidget::~PageViewWidget() = default;

void PageViewWidget::SetDocument(const PrintDocument& document, Paper paper) {
  pages_ = std::make_unique<PageSetter>(document, paper);
  LayOut(printer_, paper);
  preview_.updatePreview();
}

}  // namespace velmoor::qt
