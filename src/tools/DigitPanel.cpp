#include "tools/DigitPanel.h"

#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

constexpr std::size_t kDigits = 4;

std::string NameOf(const char* control, std::size_t digit) {
  return control + std::to_string(digit);
}

std::vector<std::string> Choices(int count) {
  std::vector<std::string> choices;
  for (int value = 0; value < std::max(count, 1); ++value) {
    choices.push_back(HexText(static_cast<std::uint32_t>(value)));
  }
  return choices;
}

}  // namespace

void DigitPanel::Bind(Form& form, Connections& connections,
                      std::function<void(const std::string& digits)> chosen) {
  chosen_ = std::move(chosen);
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    connections += form.comboBox(NameOf("cmbDigit", digit)).Click.Connect([this, &form, digit] {
      Choose(form, digit);
    });
  }
  Hide(form);
}

void DigitPanel::Hide(Form& form) {
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    form.comboBox(NameOf("cmbDigit", digit)).SetVisible(false);
    form.label(NameOf("lblDigit", digit)).SetVisible(false);
  }
}

void DigitPanel::Show(Form& form, const ParameterRow& row, bool locked) {
  if (row.nibble == nullptr) return Hide(form);
  digits_ = Right(PadToDigits(UpperCase(row.value), kDigits), kDigits);
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    const NibbleDigit& definition = row.nibble->digits[digit];
    const std::size_t place = kDigits - 1 - digit;
    const bool used = definition.use_bit > 0;
    const bool fixed = row.fixedDigits.at(place) == '1';
    ComboBox& combo = form.comboBox(NameOf("cmbDigit", digit));
    combo.SetItems(Choices(definition.use_bit));
    combo.SetListIndex(static_cast<int>(HexDigitValue(digits_.substr(place, 1))));
    combo.SetEnabled(used && !fixed && !locked);
    combo.SetVisible(true);
    Label& label = form.label(NameOf("lblDigit", digit));
    label.SetText("Digit " + std::to_string(digit) + ": " +
                  (used ? definition.digit_name : "not used") +
                  (used && fixed ? " (not modifiable)" : ""));
    label.SetVisible(true);
  }
}

void DigitPanel::Choose(Form& form, std::size_t digit) {
  std::string next = digits_;
  next[kDigits - 1 - digit] = form.comboBox(NameOf("cmbDigit", digit)).Text().at(0);
  chosen_(next);
}

}  // namespace velmoor
