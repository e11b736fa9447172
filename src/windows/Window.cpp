#include "windows/Window.h"

#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

Window::~Window() {
  connections_.Clear();
}

bool Window::Show(FormMode mode) {
  return Trapped(FormName() + ".Show: ", [&] {
    form_ = world().forms->Load(layout_);
    token_ = std::make_shared<int>();
    connections_ += form_->Activated.Connect([this] { FormActivate(); });
    connections_ += form_->QueryUnload.Connect([this](bool& cancel) { FormQueryUnload(cancel); });
    connections_ += form_->Unloaded.Connect([this] { OnUnloaded(); });
    try {
      TakeControls(*form_);
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

void Window::OnUnloaded() {
  FormUnload();
  token_.reset();
  connections_.Clear();
  const std::unique_ptr<Form> closing = std::move(form_);
  Closed.Raise();
}

void Window::Unload() {
  if (form_) form_->Unload();
}

void Window::BringToFront() {
  if (form_) form_->Activate();
}

bool Window::IsActive() const {
  return form_ && world().forms->Active() == form_.get();
}

}  // namespace velmoor
