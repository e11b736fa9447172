#include "platform/qt/QtHelpViewer.h"

#include "platform/qt/HelpWindow.h"
#include "platform/qt/QtText.h"

namespace velmoor::qt {

QtHelpViewer::QtHelpViewer() = default;
QtHelpViewer::~QtHelpViewer() = default;

void QtHelpViewer::ShowPage(const std::string& page, const std::string& anchor) {
  if (!window_) window_ = std::make_unique<HelpWindow>();
  window_->Go({ToQt(page), ToQt(anchor)});
  window_->Present();
}

}  // namespace velmoor::qt
