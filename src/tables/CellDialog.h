// The base of the three dialogs of the index table's cells: modal, OK and Cancel. Their result
// stays in their properties until it is read.
#pragma once

#include <memory>
#include <string>

#include "platform/Form.h"

namespace velmoor {

class CellDialog {
 public:
  virtual ~CellDialog() = default;
  CellDialog(const CellDialog&) = delete;
  CellDialog& operator=(const CellDialog&) = delete;

  // Returns when the dialog has closed; true after OK.
  [[nodiscard]] bool Show();

 protected:
  explicit CellDialog(std::string formName) : formName_(std::move(formName)) {}
  // Shows what the properties hold and binds the controls.
  virtual void FormLoad() = 0;
  // The last checks behind OK, with their words. True: the properties hold the result.
  virtual bool TakeResult() = 0;
  [[nodiscard]] Form& form() { return *form_; }

  Connections connections_;

 private:
  std::string formName_;
  std::unique_ptr<Form> form_;
  bool accepted_ = false;
};

}  // namespace velmoor
