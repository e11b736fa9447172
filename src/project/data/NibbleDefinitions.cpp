#include "project/data/NibbleDefinitions.h"

#include <algorithm>

#include "platform/Numbers.h"

namespace velmoor {

const NibbleDefinition* FindNibble(const std::vector<NibbleDefinition>& definitions,
                                   const std::string& nibbleDataId) {
  if (!IsNibbleKey(nibbleDataId)) return nullptr;
  const auto found =
      std::find_if(definitions.begin(), definitions.end(), [&](const NibbleDefinition& definition) {
        return definition.nibble_data_id == nibbleDataId;
      });
  return found == definitions.end() ? nullptr : &*found;
}

bool IsNibbleKey(const std::string& nibbleDataId) {
  return !nibbleDataId.empty() && nibbleDataId != "0";
}

std::string GetMaximumHex(const NibbleDefinition& definition) {
  std::string text;
  for (std::size_t digit = definition.digits.size(); digit-- > 0;) {
    const int allowed = definition.digits[digit].use_bit;
    text += allowed > 0 ? HexText(static_cast<std::uint32_t>(allowed - 1)) : "0";
  }
  return text;
}

std::string DigitsOfAnswer(const std::string& answer) {
  std::string digits = Right(answer, 4);
  if (digits.size() < 4 || !ParseHex(digits)) {
    throw NumberError("Type mismatch: '" + answer + "' has no four digits");
  }
  return digits;
}

}  // namespace velmoor
