#include "platform/qt/PageViewWidget.h"

#include <QBoxLayout>
#include <QGraphicsView>
#include <QPixmap>
#include <QScrollBar>
#include <QSignalBlocker>

#include "platform/qt/PageSetter.h"

namespace velmoor::qt {
namespace {

constexpr int kPictureHeight = 110;  // of a page beside the others, in points of the screen
constexpr int kSpacing = 6;
constexpr int kFrame = 34;  // beside a picture: the list's own edges and its bar

}  // namespace

PageViewWidget::PageViewWidget(QWidget* parent)
    : QWidget(parent), printer_(QPrinter::HighResolution), preview_(&printer_, this) {
  // Any installed printer would have its say about margins and sizes.
  printer_.setOutputFormat(QPrinter::PdfFormat);
  printer_.setResolution(kDotsPerInch);
  pictures_.setAccessibleName(tr("Small pictures of the pages"));
  pictures_.setToolTip(tr("The pages of the document; a click goes to one"));
  pictures_.setUniformItemSizes(true);
  pictures_.setSpacing(2);
  pictures_.setVerticalScrollMode(QAbstractItemView::ScrollPerPixel);
  auto* const layout = new QHBoxLayout(this);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->addWidget(&pictures_);
  layout->addWidget(&preview_, 1);
  // The part that scrolls takes the keys.
  setFocusProxy(preview_.findChild<QGraphicsView*>());
  connect(&preview_, &QPrintPreviewWidget::paintRequested, this, [this](QPrinter* printer) {
    if (pages_) DrawPages(*pages_, *printer);
  });
  connect(&preview_, &QPrintPreviewWidget::previewChanged, this, [this] {
    ShowPlace();
    Moved.Raise();
  });
  connect(&pictures_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row >= 0) preview_.setCurrentPage(row + 1);
  });
  connect(&drawing_, &QTimer::timeout, this, [this] { DrawNextPicture(); });
}

PageViewWidget::~PageViewWidget() = default;

void PageViewWidget::SetDocument(const PrintDocument& document, Paper paper) {
  pages_ = std::make_unique<PageSetter>(document, paper);
  paper_ = paper;
  LayOut(printer_, paper);
  preview_.updatePreview();
  const QSizeF size = PaperInDots(paper);
  const QSize picture(static_cast<int>(kPictureHeight * size.width() / size.height()),
                      kPictureHeight);
  pictures_.clear();
  pictures_.setIconSize(picture);
  for (std::size_t page = 0; page < pages_->Pages().size(); ++page) {
    auto* const item = new QListWidgetItem(QString::number(page + 1), &pictures_);
    item->setSizeHint(QSize(picture.width() + kFrame, kPictureHeight + kSpacing));
  }
  pictures_.setFixedWidth(picture.width() + kFrame +
                          pictures_.fontMetrics().horizontalAdvance(QStringLiteral("000")) +
                          pictures_.verticalScrollBar()->sizeHint().width());
  drawn_ = 0;
  drawing_.start(0);
  ShowPlace();
}

void PageViewWidget::DrawNextPicture() {
  if (drawn_ >= pictures_.count()) return drawing_.stop();
  const double ratio = devicePixelRatioF();
  QPixmap picture(pictures_.iconSize() * ratio);
  picture.fill(Qt::white);
  QPainter painter(&picture);
  painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
  const double scale = picture.height() / PaperInDots(paper_).height();
  painter.scale(scale, scale);
  pages_->Draw(static_cast<std::size_t>(drawn_), painter);
  painter.resetTransform();
  painter.setPen(Qt::gray);
  painter.drawRect(picture.rect().adjusted(0, 0, -1, -1));
  painter.end();
  picture.setDevicePixelRatio(ratio);
  pictures_.item(drawn_)->setIcon(QIcon(picture));
  ++drawn_;
}

void PageViewWidget::ShowPlace() {
  const QSignalBlocker quiet(pictures_);
  pictures_.setCurrentRow(preview_.currentPage() - 1);
}

}  // namespace velmoor::qt
