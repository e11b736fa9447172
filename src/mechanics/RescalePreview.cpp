#include "mechanics/RescalePreview.h"

#include <array>

#include "platform/Numbers.h"

namespace velmoor {

bool RescalePreview::AskFor(const MachineChange& change) {
  const MachineConsequences consequences = gMainForm->CurrentProject()->Consequences(change);
  return consequences.values.empty() || RescalePreview(consequences).Ask();
}

void RescalePreview::FormLoad() {
  ui().lblSummary.SetText(Summary());
  ui().vsFG.Bind(this);
}

// A value without a rounding error is one whose number does not stay.
std::string RescalePreview::Summary() const {
  std::ptrdiff_t kept = 0, form = 0, others = 0;
  for (const RescaledValue& value : values_) {
    (value.error.empty() ? others : value.oldCounts == value.newCounts ? form : kept) += 1;
  }
  std::string text;
  const auto tell = [&text](std::ptrdiff_t count, const char* words) {
    if (count == 0) return;
    text += (text.empty() ? "" : "  ") + NumberText(count) + (count == 1 ? " value " : " values ") +
            words;
  };
  tell(kept, kept == 1 ? "keeps its number and changes its counts."
                       : "keep their numbers and change their counts.");
  tell(form, form == 1 ? "changes its form alone." : "change their form alone.");
  tell(others, others == 1 ? "takes a limit or follows the machine."
                           : "take a limit or follow the machine.");
  for (const std::string& table : consequences_.emptied) text += "  " + table + " is emptied.";
  return text;
}

std::string RescalePreview::Text(int row, int column) const {
  static constexpr std::array<const char*, 6> kHeadings{
      "Value", "Now", "After the change", "Counts now", "Counts after", "Rounding error (counts)"};
  if (row == 0) return kHeadings[static_cast<std::size_t>(column)];
  const RescaledValue& value = values_.at(static_cast<std::size_t>(row) - 1);
  const std::array<const std::string*, 6> cells{&value.place,     &value.oldText,   &value.newText,
                                                &value.oldCounts, &value.newCounts, &value.error};
  return *cells[static_cast<std::size_t>(column)];
}

}  // namespace velmoor
