// The four digits of a digit-wise parameter, each with its meaning and the values it may take,
// beside the grid that shows them as one text.
//
// The form has a label lblDigit<n> and a list cmbDigit<n> for each digit n, 0 right-most. They are
// hidden while the current row is not coded in digits.
#pragma once

#include <functional>
#include <string>

#include "platform/Event.h"
#include "platform/Form.h"
#include "tools/ParameterRules.h"

namespace velmoor {

class DigitPanel {
 public:
  // `chosen` gets the four digits after the user chose another one.
  void Bind(Form& form, Connections& connections,
            std::function<void(const std::string& digits)> chosen);
  // Shows that row's digits; one that is locked can be seen only.
  void Show(Form& form, const ParameterRow& row, bool locked);
  void Hide(Form& form);

 private:
  void Choose(Form& form, std::size_t digit);

  std::function<void(const std::string&)> chosen_;
  std::string digits_ = "0000";  // of the row on show, left to right
};

}  // namespace velmoor
