#include "tools/NibbleDefinitions.h"

#include <algorithm>

#include "platform/Numbers.h"

namespace velmoor {

std::optional<std::size_t> NibbleDefinitions::Find(const std::string& nibbleDataId) const {
  const auto found =
      std::find_if(records_.begin(), records_.end(), [&](const NibbleRecord& record) {
        return record.nibble_data_id == nibbleDataId;
      });
  if (found == records_.end()) return std::nullopt;
  return static_cast<std::size_t>(found - records_.begin());
}

std::optional<int> NibbleDefinitions::Allowed(int digit, std::size_t index) const {
  const std::size_t at = index + static_cast<std::size_t>(digit);
  if (at >= records_.size() || records_[at].use_bit.empty()) return std::nullopt;
  return Int32FromText(records_[at].use_bit);
}

std::string NibbleDefinitions::MaximumHex(std::size_t index) const {
  std::string text;
  for (int digit = 3; digit >= 0; --digit) {
    const int allowed = Allowed(digit, index).value_or(0);
    text += allowed > 0 ? HexText(static_cast<std::uint32_t>(allowed - 1)) : "0";
  }
  return text;
}

}  // namespace velmoor
