// The four digits of a digit-wise parameter, each with its meaning and the values it may take,
// beside the grid that shows them as one text.
//
// There are a label and a list for each digit, 0 right-most. They are hidden while the current row
// is not coded in digits.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Event.h"
#include "platform/Form.h"
#include "tools/ParameterRules.h"

namespace velmoor {

class DigitPanel {
 public:
  static constexpr std::size_t kDigits = 4;
  using Labels = ControlRow<Label, kDigits>;
  using Lists = ControlRow<ComboBox, kDigits>;

  // Takes the controls of an open form. `chosen` gets the four digits after the user chose another
  // one.
  void Bind(const Labels& labels, const Lists& lists, Connections& connections,
            std::function<void(const std::string& digits)> chosen);
  // Shows that row's digits; one that is locked can be seen only.
  void Show(const ParameterRow& row, bool locked);

 private:
  void Hide();
  void Choose(std::size_t digit);

  std::optional<Labels> labels_;
  std::optional<Lists> lists_;

  std::function<void(const std::string&)> chosen_;
  std::string digits_ = "0000";  // of the row on show, left to right
};

}  // namespace velmoor
