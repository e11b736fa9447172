#include "mechanics/RescalePreview.h"

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
  form->label("lblSummary")
      .SetText(NumberText(values_.size()) + " values keep their numbers and change their counts.");
  form->grid("vsFG").Bind(this);
  form->Show(FormMode::modal);
  return goesOn;
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
