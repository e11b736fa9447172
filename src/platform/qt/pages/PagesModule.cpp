// The module with which a program without windows makes PDF documents.

#include <QGuiApplication>

#include "platform/qt/QtPdfMaker.h"

namespace velmoor::qt {
namespace {

// Fonts need an application object; this one has no screen.
class PagesModule final : public PdfMaker {
 public:
  PagesModule() {
    KeepOrderOfHashes();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    // What Qt has to say about the desktop that is not there concerns nobody.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    application_ = std::make_unique<QGuiApplication>(argc_, argv_);
  }
  [[nodiscard]] std::string Pdf(const PrintDocument& document, Paper paper) override {
    return maker_.Pdf(document, paper);
  }

 private:
  int argc_ = 1;
  char name_[8] = "velmoor";
  char* argv_[2] = {name_, nullptr};
  std::unique_ptr<QGuiApplication> application_;
  QtPdfMaker maker_;
};

}  // namespace
}  // namespace velmoor::qt

extern "C" __attribute__((visibility("default"))) velmoor::PdfMaker* velmoor_make_pdf_maker() {
  return std::make_unique<velmoor::qt::PagesModule>().release();
}
