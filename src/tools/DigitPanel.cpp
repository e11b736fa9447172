#include "tools/DigitPanel.h"

#include "platform/Numbers.h"
#include "platform/Utility.h"

namespace velmoor {
namespace {

std::vector<std::string> Choices(const NibbleDigit& digit) {
  std::vector<std::string> choices;
  for (int value = 0; value < std::max(digit.use_bit, 1); ++value) {
    choices.push_back(DigitInWords(digit, value));
  }
  return choices;
}

}  // namespace

void DigitPanel::Bind(const Labels& labels, const Lists& lists, Connections& connections,
                      std::function<void(const std::string& digits)> chosen) {
  labels_.emplace(labels);
  lists_.emplace(lists);
  chosen_ = std::move(chosen);
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    connections += (*lists_)[digit].Click.Connect([this, digit] { Choose(digit); });
  }
  Hide();
}

void DigitPanel::Hide() {
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    (*lists_)[digit].SetVisible(false);
    (*labels_)[digit].SetVisible(false);
  }
}

void DigitPanel::Show(const ParameterRow& row, bool locked) {
  if (row.nibble == nullptr) return Hide();
  digits_ = Right(PadToDigits(UpperCase(row.value), kDigits), kDigits);
  for (std::size_t digit = 0; digit < kDigits; ++digit) {
    const NibbleDigit& definition = row.nibble->digits[digit];
    const std::size_t place = kDigits - 1 - digit;
    const bool used = definition.use_bit > 0;
    const bool fixed = row.fixedDigits.at(place) == '1';
    ComboBox& combo = (*lists_)[digit];
    combo.SetItems(Choices(definition));
    combo.SetListIndex(static_cast<int>(HexDigitValue(digits_.substr(place, 1))));
    combo.SetEnabled(used && !fixed && !locked);
    combo.SetVisible(true);
    Label& label = (*labels_)[digit];
    label.SetText("Digit " + std::to_string(digit) + ": " +
                  (used ? definition.digit_name : "not used") +
                  (used && fixed ? " (not modifiable)" : ""));
    label.SetVisible(true);
  }
}

void DigitPanel::Choose(std::size_t digit) {
  std::string next = digits_;
  next[kDigits - 1 - digit] =
      HexText(static_cast<std::uint32_t>((*lists_)[digit].ListIndex())).at(0);
  chosen_(next);
}

}  // namespace velmoor
