#include "tools/clsHX7OverTravel.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"

namespace velmoor {
namespace {

bool BeginsWith(const std::string& text, std::string_view lowerCase) {
  return LowerCase(Left(text, lowerCase.size())) == lowerCase;
}

}  // namespace

std::string RotaryUpperLimit(float length, std::int16_t digits) {
  return FixedText(static_cast<double>(length) - PowerOfTen(-digits), digits);
}

clsHX7OverTravel::clsHX7OverTravel() : ParameterToolBase("clsOverTravel") {
  AttachWindow(frm_);
  overTravelChanged_ =
      frm_.PropertiesOverTravelChanged.Connect([this] { frm_PropertiesOverTravelChanged(); });
}

bool clsHX7OverTravel::Takes(const ParameterDefinition& definition) const {
  static constexpr std::array<std::string_view, 6> kRows{"Pn80C", "Pn80D", "Pn819",
                                                         "Pn81A", "Pn81B", "Pn81C"};
  return std::find(kRows.begin(), kRows.end(), definition.user_constant) != kRows.end();
}

std::string clsHX7OverTravel::InitialLimit(const std::string& strPn) const {
  const int row = arBlockMatrix_.FindRow(strPn);
  if (row == 0) return {};
  return CountsToUnits(Int32FromCell(arBlockMatrix_.Text(row, Column::initial)),
                       FactorOf(OpenedProject(), UnitKind::distance),
                       OpenedProject().MechanicalSystemSister().Resolution());
}

void clsHX7OverTravel::InitOverTravelLimits() {
  Trapped(Prefix("InitOverTravelLimits"), [this] {
    strOldPn81B_ = InitialLimit("Pn81B");
    strOldPn81C_ = InitialLimit("Pn81C");
    return true;
  });
}

clsHX7OverTravel::Limits clsHX7OverTravel::LimitsFor(std::int16_t digits, float length,
                                                     const std::string& axisKind) const {
  Limits limits;
  limits.axisKind = Trim(axisKind);
  if (OpenedProject().MechanicalSystemSister().SelectedSystem() == kRotaryTable) {
    if (limits.axisKind.empty() || BeginsWith(limits.axisKind, "linear")) {
      limits.axisKind = "Rotary(Shortest Path)";
    }
    limits.upper = RotaryUpperLimit(length, digits);
    limits.lower = RoundTextToDigits("0", digits);
  } else {
    if (limits.axisKind.empty() || BeginsWith(limits.axisKind, "rotary")) {
      limits.axisKind = "Linear";
    }
    limits.upper = RoundTextToDigits(strOldPn81B_, digits);
    limits.lower = RoundTextToDigits(strOldPn81C_, digits);
  }
  return limits;
}

void clsHX7OverTravel::UpdateOverTravel(std::int16_t digits, float length) {
  Trapped(Prefix("UpdateOverTravel"), [&] {
    const int kind = arBlockMatrix_.FindRow("Pn81A");
    const Limits limits =
        LimitsFor(digits, length, kind > 0 ? arBlockMatrix_.Text(kind, Column::value) : "");
    const auto put = [this](const char* strPn, const std::string& value, bool asNumber) {
      const int row = arBlockMatrix_.FindRow(strPn);
      if (row == 0) return;
      const std::string& old = arBlockMatrix_.Text(row, Column::value);
      // A limit that is equal as a number stays as it is written, and clean.
      const bool same = asNumber ? ParseFloat(old) == ParseFloat(value) : old == value;
      if (same) return;
      arBlockMatrix_.Set(row, Column::value, value);
      arBlockMatrix_.Set(row, Column::dirty, "1");
    };
    put("Pn81A", limits.axisKind, false);
    put("Pn81B", limits.upper, true);
    put("Pn81C", limits.lower, true);
    RefreshWindow();
    UpdateEditorBlockMatrixPostMechSys();
    return true;
  });
}

// In spite of its name it copies nothing to the editor.
void clsHX7OverTravel::UpdateEditorBlockMatrixPostMechSys() {
  SaveToDB();
  MarkDirty();
}

bool clsHX7OverTravel::ChangeResolution(std::int16_t digits) {
  return ChangeResolutionOfRows(Prefix("ChangeResolution"), digits);
}

bool clsHX7OverTravel::ResetDefaults(std::int16_t digits, float length) {
  return Trapped(Prefix("ResetDefaults"), [&] {
    const bool rotary = OpenedProject().MechanicalSystemSister().SelectedSystem() == kRotaryTable;
    RewriteRows([&](int row) -> std::optional<std::string> {
      const std::string& strPn = arBlockMatrix_.Text(row, Column::name);
      if (rotary && strPn == "Pn81B") return RotaryUpperLimit(length, digits);
      if (rotary && strPn == "Pn81C") return RoundTextToDigits("0", digits);
      if (!ScalesWithResolution(row)) return std::nullopt;
      return GetSelectedComboListItem(row,
                                      Int32FromCell(arBlockMatrix_.Text(row, Column::initial)));
    });
    MarkDirty();
    RefreshWindow();
    return true;
  });
}

void clsHX7OverTravel::UpdateFlexibleIOBlockMatrix() const {
  CopyValuesInto(OpenedProject().FlexibleIOSister());
}

void clsHX7OverTravel::UpdateOtherBlockMatrices() {
  UpdateEditorBlockMatrix();
  UpdateFlexibleIOBlockMatrix();
  PostUpload();
  OpenedProject().FlexibleIOSister().PostUpload();
}

// The sister shows the limits at once, before any Apply; a Cancel does not call them back.
void clsHX7OverTravel::frm_PropertiesOverTravelChanged() {
  CopyEditsInto(OpenedProject().FlexibleIOSister());
  OpenedProject().FlexibleIOSister().PostUpload();
}

}  // namespace velmoor
