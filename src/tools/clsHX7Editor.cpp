#include "tools/clsHX7Editor.h"

#include "platform/Numbers.h"
#include "platform/Utility.h"
#include "session/Session.h"
#include "tools/ParameterRules.h"

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

bool clsHX7Editor::Takes(const ParameterDefinition& definition) const {
  const std::string& type = definition.edit_type;
  return type != "1001" && type != "1002" && type != "1003";
}

// The limits of rows that are coded in digits are hexadecimal texts.
std::string clsHX7Editor::Text(int row, Column column) const {
  const Parameter& parameter = ParameterOf(row);
  if (column == Column::category) return ShortCategory(parameter.definition.category_name);
  if (parameter.nibble != nullptr && column == Column::maximum) {
    return GetMaximumHex(*parameter.nibble);
  }
  const std::string& minimum = parameter.definition.Min;
  if (parameter.nibble != nullptr && column == Column::minimum && !minimum.empty()) {
    return HexText(static_cast<std::uint32_t>(Int32FromText(minimum)), 4);
  }
  return ParameterToolBase::Text(row, column);
}

ParameterRow clsHX7Editor::Describe(int row) const {
  ParameterRow result = ParameterToolBase::Describe(row);
  result.nibble = ParameterOf(row).nibble;
  result.fixedDigits = PadToDigits(ParameterOf(row).definition.fixed_digit, 4);
  return result;
}

std::string clsHX7Editor::GetParameterValue(const std::string& strPn) const {
  const int row = FindRow(strPn);
  return row > 0 ? ParameterOf(row).text : std::string();
}

// ---- transfers

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

}  // namespace velmoor
