// The guide's window, made when it is first asked for.
#pragma once

#include <memory>

#include "platform/HelpViewer.h"

namespace velmoor::qt {

class HelpWindow;

class QtHelpViewer final : public HelpViewer {
 public:
  QtHelpViewer();
  ~QtHelpViewer() override;
  void ShowPage(const std::string& page, const std::string& anchor) override;

 private:
  std::unique_ptr<HelpWindow> window_;
};

}  // namespace velmoor::qt
