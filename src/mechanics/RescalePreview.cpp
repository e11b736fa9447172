#include "mechanics/RescalePreview.h"

#include <algorithm>
#include <array>

#include "platform/Form.h"
#include "platform/Numbers.h"
#include "platform/World.h"

namespace velmoor {

bool RescalePreview::Ask() {
  const std::unique_ptr<Form> form = world().forms->Load("frmRescalePreview");
  bool goesOn = false;
  Connections connections;
  connections += form->button("cmdOK").Click.Connect([&] {
    goesOn = true;
    form->Unload();
  });
  connections += form->button("cmdCancel").Click.Connect([&] { form->Unload(); });
  form->label("lblSummary").SetText(Summary());
  form->grid("vsFG").Bind(this);
  form->Show(FormMode::modal);
  return goesOn;
}

// A value with a rounding error is one whose number stays.
std::string RescalePreview::Summary() const {
  const auto kept = std::ranges::count_if(values_, [](const RescaledValue& value) {
    return !value.error.empty() && value.oldCounts != value.newCounts;
  });
  const auto others = static_cast<std::ptrdiff_t>(values_.size()) - kept;
  std::string text;
  if (kept > 0) {
    text = NumberText(kept) + " values keep their numbers and change their counts.";
  }
  if (others > 0) {
    text += (text.empty() ? "" : "  ") + NumberText(others) + " values change otherwise.";
  }
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
