#include "tools/clsHX7Homing.h"

#include "link/clsHX7Helix7.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "project/data/MiscSettings.h"
#include "project/data/Schema.h"
#include "session/Session.h"

namespace velmoor {

std::string clsHX7Homing::Text(int row, Column column) const {
  if (column == Column::unit && !ParameterOf(row).unit) return {};
  return ParameterToolBase::Text(row, column);
}

std::string clsHX7Homing::GetHomingOffset() const {
  std::string offset;
  Trapped(Prefix("GetHomingOffset"), [&] {
    const auto value = ReadMiscSetting(Store().WorkingFile(), schema::Misc::kHomingOffset);
    if (value && !value->empty()) {
      offset = RoundTextToDigits(*value, Store().PresentUnits().resolution);
    }
    return true;
  });
  return offset;
}

bool clsHX7Homing::SetHomingOffset(const std::string& strValue) {
  return Trapped(Prefix("SetHomingOffset"), [&] {
    WriteMiscSetting(Store().WorkingFile(), schema::Misc::kHomingOffset, strValue);
    return true;
  });
}

bool clsHX7Homing::UploadHomingOffset() {
  return Trapped(Prefix("UploadHomingOffset"), [this] {
    std::string answer;
    if (gMainForm->Helix7()->GetParameter("81D", answer) != kSuccess) return false;
    const std::string controller = PlainController(Store().Get("Pn81D"), answer);
    Store().Commit({{"Pn81D", {controller, {}, MarkChange::set, Tool::homing}}});
    Applied.Raise();
    return true;
  });
}

}  // namespace velmoor
