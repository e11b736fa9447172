#include "online/OnlineWindow.h"

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

std::string Numbered(const std::string& name, int number) {
  return name + NumberText(number);
}

OnlineWindow::~OnlineWindow() {
  connections_.Clear();
}

bool OnlineWindow::Show(FormMode mode) {
  return Trapped(formName_ + ".Show: ", [&] {
    form_ = world().forms->Load(formName_);
    token_ = std::make_shared<int>();
    connections_ += form_->Unloaded.Connect([this] { OnUnloaded(); });
    try {
      FormLoad();
      form_->Show(mode);
    } catch (...) {
      connections_.Clear();
      token_.reset();
      form_.reset();
      throw;
    }
    return true;
  });
}

void OnlineWindow::OnUnloaded() {
  FormUnload();
  token_.reset();
  connections_.Clear();
  form_.reset();
  Closed.Raise();
}

void OnlineWindow::Unload() {
  if (form_) form_->Unload();
}

void OnlineWindow::BringToFront() {
  if (form_) form_->Activate();
}

}  // namespace velmoor
