#include "tools/clsHX7Editor.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/Utility.h"
#include "project/data/Schema.h"
#include "session/Session.h"
#include "tools/UnitConversion.h"
#include "tools/clsHX7OverTravel.h"

namespace velmoor {
namespace {

constexpr const char* kOptionCard = "RX900";

// "RX900-Input Signals" is filed under "RX900".
std::string ShortCategory(const std::string& categoryName) {
  std::string category = categoryName.empty() ? kOptionCard : categoryName;
  category = category.substr(0, category.find('-'));
  return category.substr(0, category.find(' '));
}

}  // namespace

bool NotNonDownloadPns(std::string_view strPn) {
  static constexpr std::array<std::string_view, 10> kNeverSent{
      "Pn207", "Pn50A", "Pn50B", "Pn50C", "Pn50D", "Pn50E", "Pn50F", "Pn510", "Pn511", "Pn512"};
  return std::find(kNeverSent.begin(), kNeverSent.end(), strPn) == kNeverSent.end();
}

// ---- rows

bool clsHX7Editor::Takes(const ParameterDefinition& definition) const {
  const std::string& type = definition.edit_type;
  return type != "1001" && type != "1002" && type != "1003";
}

void clsHX7Editor::FillRow(int row, const ParameterDefinition& definition) {
  ParameterToolBase::FillRow(row, definition);
  arBlockMatrix_.Set(row, Column::category, ShortCategory(definition.category_name));
  arBlockMatrix_.Set(row, Column::size, definition.Size);
  extras_.resize(static_cast<std::size_t>(row));
  extras_.back() = {definition.nibble_data_id, PadToDigits(definition.fixed_digit, 4)};
}

void clsHX7Editor::DefinitionsRead() {
  nibbles_ = ReadNibbleDefinitions(CataloguePath(), strNibbleTable_);
  ReplaceNibbleLimits();
}

// The limits of digit-wise rows become hexadecimal texts.
void clsHX7Editor::ReplaceNibbleLimits() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const NibbleDefinition* const definition = NibbleOf(row);
    if (definition == nullptr) continue;
    arBlockMatrix_.Set(row, Column::maximum, GetMaximumHex(*definition));
    const std::string& minimum = arBlockMatrix_.Text(row, Column::minimum);
    if (minimum.empty()) continue;
    arBlockMatrix_.Set(row, Column::minimum,
                       HexText(static_cast<std::uint32_t>(Int32FromText(minimum)), 4));
  }
}

const clsHX7Editor::Extra& clsHX7Editor::ExtraOf(int row) const {
  return extras_.at(static_cast<std::size_t>(row) - 1);
}

const NibbleDefinition* clsHX7Editor::NibbleOf(int row) const {
  return FindNibble(nibbles_, ExtraOf(row).nibbleKey);
}

const std::string& clsHX7Editor::NibbleFixed(int row) const {
  return ExtraOf(row).fixedDigits;
}

ParameterRow clsHX7Editor::Describe(int row) const {
  ParameterRow result = ParameterToolBase::Describe(row);
  result.nibble = NibbleOf(row);
  result.fixedDigits = NibbleFixed(row);
  return result;
}

bool clsHX7Editor::IsOptionCard(int row) const {
  return arBlockMatrix_.Text(row, Column::category) == kOptionCard;
}

std::string clsHX7Editor::GetParameterValue(const std::string& strPn) const {
  const int row = arBlockMatrix_.FindRow(strPn);
  return row > 0 ? arBlockMatrix_.Text(row, Column::value) : std::string();
}

// ---- display form and controller form

std::optional<std::string> clsHX7Editor::GetSelectedComboListIndex(int row) {
  if (!arBlockMatrix_.Text(row, Column::list).empty()) {
    return ParameterToolBase::GetSelectedComboListIndex(row);
  }
  const std::string value = arBlockMatrix_.Text(row, Column::value);
  if (!IsOptionCard(row) && !value.empty()) return value;
  // An option card row outside the unit table is taken for a distance, on purpose.
  const auto kind = UnitKindOf(arBlockMatrix_.Text(row, Column::name));
  return ConvertUnitsToCounts(row, kind.value_or(UnitKind::distance));
}

std::string clsHX7Editor::GetSelectedComboListItem(int row, std::int32_t selected) const {
  const bool plain = arBlockMatrix_.Text(row, Column::list).empty() && !IsOptionCard(row);
  return plain ? NumberText(selected) : ParameterToolBase::GetSelectedComboListItem(row, selected);
}

std::string clsHX7Editor::ConvertCountsToUnitsPublic(std::int32_t count, UnitKind kind) const {
  return CountsToUnits(count, FactorOf(OpenedProject(), kind), OpenedProject().Resolution());
}

// ---- transfers

void clsHX7Editor::MarkAllForDownload() {
  for (int row = 1; row <= arBlockMatrix_.Rows(); ++row) {
    const bool sent = NotNonDownloadPns(arBlockMatrix_.Text(row, Column::name));
    arBlockMatrix_.Mark(row, sent ? "1" : "0");
  }
}

bool clsHX7Editor::GoesOut(int /*row*/, const RowSet& record, bool blnOverRide) const {
  return blnOverRide || record.Text(schema::Parameters::kDirty) == "1";
}

// The axis digit comes from the connection, not from the project.
std::string clsHX7Editor::GetCurrentPn000Value(const std::string& strValue) {
  return Left(strValue, 1) + gMainForm->Axis() + Right(strValue, 2);
}

std::string clsHX7Editor::ValueToSend(const std::string& strPn,
                                      const std::string& controllerValue) const {
  return strPn == "Pn000" ? GetCurrentPn000Value(controllerValue) : controllerValue;
}

void clsHX7Editor::BeforeSend(const std::string& strPn, const std::string& value) {
  if (strPn == "Pn801") EditorDownloadPn801.Raise(value);
}

void clsHX7Editor::SendFailed(const std::string& strPn) {
  if (strPn == "Pn801") Pn801SendFailed.Raise();
}

std::string clsHX7Editor::UploadedValue(int row, const std::string& answer) const {
  if (IsNibbleKey(ExtraOf(row).nibbleKey)) return DigitsOfAnswer(answer);
  return ParameterToolBase::UploadedValue(row, answer);
}

void clsHX7Editor::AfterUpload() {
  PostUpload();
  UpdateIndexerBlockMatrices();
}

void clsHX7Editor::UpdateIndexerBlockMatrices() {
  Project& current = OpenedProject();
  current.InterfaceSister().UpdateBlockMatrix();
  current.FlexibleIOSister().UpdateBlockMatrix();
  current.OverTravelSister().UpdateBlockMatrix();
  current.HomingSister().UpdateBlockMatrix();
  current.TuningSister().UpdateBlockMatrix();
  current.MechanicalSystemSister().UpdateFromEditorBlockMatrix();
}

// ---- a change of machine

bool clsHX7Editor::ScalesWithResolution(int row) const {
  return IsOptionCard(row) && ParameterToolBase::ScalesWithResolution(row);
}

bool clsHX7Editor::ChangeResolution(std::int16_t digits) {
  return ChangeResolutionOfRows("clsHX7Editor.ChangeResolution: ", digits);
}

bool clsHX7Editor::ResetDefaults(std::int16_t digits, float length) {
  return Trapped(Prefix("ResetDefaults"), [&] {
    const bool rotary = OpenedProject().MechanicalSystemSister().SelectedSystem() == kRotaryTable;
    RewriteRows([&](int row) -> std::optional<std::string> {
      const std::string& strPn = arBlockMatrix_.Text(row, Column::name);
      if (rotary && strPn == "Pn81B") return RotaryUpperLimit(length, digits);
      // "1" here, where the over-travel tool writes "0", on purpose.
      if (rotary && strPn == "Pn81C") return RoundTextToDigits("1", digits);
      const auto kind = UnitKindOf(strPn);
      if (!kind || arBlockMatrix_.Text(row, Column::value).empty()) return std::nullopt;
      return ConvertCountsToUnitsPublic(Int32FromCell(arBlockMatrix_.Text(row, Column::initial)),
                                        *kind);
    });
    MarkDirty();
    RefreshWindow();
    return true;
  });
}

}  // namespace velmoor
