#include "tables/CellDialog.h"

#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {

bool CellDialog::Show() {
  return Trapped(formName_ + ".Show: ", [this] {
    accepted_ = false;
    form_ = world().forms->Load(formName_);
    connections_ += form_->button("cmdOK").Click.Connect([this] {
      if (!TakeResult()) return;
      accepted_ = true;
      form_->Unload();
    });
    connections_ += form_->button("cmdCancel").Click.Connect([this] { form_->Unload(); });
    FormLoad();
    form_->Show(FormMode::modal);
    connections_.Clear();
    form_.reset();
    return accepted_;
  });
}

}  // namespace velmoor
