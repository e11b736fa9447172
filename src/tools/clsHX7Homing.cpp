#include "tools/clsHX7Homing.h"

#include "link/clsHX7Helix7.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "project/data/MiscSettings.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"

namespace velmoor {

bool clsHX7Homing::Takes(const ParameterDefinition& definition) const {
  const std::string& strPn = definition.user_constant;
  return strPn == "Pn81D" || (strPn >= "Pn823" && strPn <= "Pn828");
}

void clsHX7Homing::FillRow(int row, const ParameterDefinition& definition) {
  ParameterToolBase::FillRow(row, definition);
  // The catalogue's unit is not shown here: only the rows with a user unit have one.
  if (!UnitKindOf(definition.user_constant)) arBlockMatrix_.Set(row, Column::unit, "");
}

void clsHX7Homing::AfterUpload() {
  PostUpload();
  UpdateEditorBlockMatrix();
}

bool clsHX7Homing::ChangeResolution(std::int16_t digits) {
  // This prefix and that of ResetDefaults differ, on purpose.
  return ChangeResolutionOfRows("clsHX7Homing.ChangeResolution: ", digits);
}

bool clsHX7Homing::ResetDefaults(std::int16_t digits) {
  return Trapped(Prefix("ResetDefaults"), [&] {
    RewriteRows([&](int row) -> std::optional<std::string> {
      if (Int32FromCell(arBlockMatrix_.Text(row, Column::listKey)) != 0) return std::nullopt;
      return RoundTextToDigits(arBlockMatrix_.Text(row, Column::initial), digits);
    });
    MarkDirty();
    return true;
  });
}

std::string clsHX7Homing::GetHomingOffset() const {
  std::string offset;
  Trapped(Prefix("GetHomingOffset"), [&] {
    const auto value = ReadMiscSetting(WorkingFile(), schema::Misc::kHomingOffset);
    if (value && !value->empty()) {
      offset = RoundTextToDigits(*value, OpenedProject().MechanicalSystemSister().Resolution());
    }
    return true;
  });
  return offset;
}

bool clsHX7Homing::SetHomingOffset(const std::string& strValue) {
  return Trapped(Prefix("SetHomingOffset"), [&] {
    WriteMiscSetting(WorkingFile(), schema::Misc::kHomingOffset, strValue);
    return true;
  });
}

void clsHX7Homing::HandRowsToEditor() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    if (UnitKindOf(arBlockMatrix_.Text(row, Column::name))) {
      arBlockMatrix_.Set(row, Column::dirty, "1");
    }
  }
  SaveAndHandToEditor();
  RefreshWindow();
}

bool clsHX7Homing::UploadHomingOffset() {
  return Trapped(Prefix("UploadHomingOffset"), [this] {
    const int row = arBlockMatrix_.FindRow("Pn81D");
    std::string answer;
    if (row == 0 || gMainForm->Helix7()->GetParameter("81D", answer) != 0) return false;
    frm_.ReplaceValueInCell(row, UploadedValue(row, answer));
    arBlockMatrix_.Set(row, Column::value, UploadedValue(row, answer));
    arBlockMatrix_.Set(row, Column::dirty, "1");
    UpdateEditorBlockMatrix();
    return true;
  });
}

}  // namespace velmoor
