// The faults and the transfers of a campaign.
#pragma once

#include <span>
#include <string_view>

namespace velmoor::campaign {

enum class Means { noise, fault, event };

struct FaultKindEntry {
  const char* name;
  Means means;
  const char* command;  // of the amplifier's console
  bool ends;            // the line stays dead, or at another speed, until it is mended
  bool deceives;        // what an upload reads may be wrong without a sign
};

// A command of the Tools menu, and what it moves.
struct Transfer {
  const char* command;
  bool upload;
  int weight;
  bool tables;
  bool parameters;
  const char* complete;  // words of the box at its end
};

[[nodiscard]] std::span<const FaultKindEntry> FaultKinds();
// The ways in which a single write is left undone, or its end unknown.
[[nodiscard]] std::span<const FaultKindEntry> WriteFaultKinds();
[[nodiscard]] std::span<const Transfer> Transfers();
[[nodiscard]] const Transfer& TransferOf(std::string_view command);

}  // namespace velmoor::campaign
