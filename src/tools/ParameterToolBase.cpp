#include "tools/ParameterToolBase.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/UnitConversion.h"
#include "tools/ParameterGridWindow.h"
#include "tools/ParameterRules.h"

namespace velmoor {

ParameterToolBase::ParameterToolBase(ParameterStore& store, Tool tool, std::string className)
    : store_(store), tool_(tool), className_(std::move(className)) {
  connections_ += store_.Changed.Connect([this] { OnStoreChanged(); });
}

std::string ParameterToolBase::Prefix(std::string_view procedure) const {
  return className_ + "." + std::string(procedure) + ": ";
}

// ---- rows

void ParameterToolBase::TakeRows() {
  rows_.clear();
  edits_.clear();
  editUnits_ = store_.PresentUnits();
  for (int place = 0; place < store_.Count(); ++place) {
    if (Takes(store_.At(place).definition)) rows_.push_back(place);
  }
}

std::int16_t ParameterToolBase::RowsInArray() const {
  return Narrow<std::int16_t>(static_cast<int>(rows_.size()));
}

const Parameter& ParameterToolBase::ParameterOf(int row) const {
  return store_.At(rows_.at(static_cast<std::size_t>(row) - 1));
}

int ParameterToolBase::FindRow(std::string_view strPn) const {
  const auto found = std::ranges::find(
      rows_, strPn, [this](int place) -> std::string_view { return store_.At(place).Pn(); });
  return found == rows_.end() ? 0 : static_cast<int>(found - rows_.begin()) + 1;
}

std::string ParameterToolBase::Text(int row, Column column) const {
  const Parameter& parameter = ParameterOf(row);
  const ParameterDefinition& definition = parameter.definition;
  switch (column) {
    case Column::category:
      return {};
    case Column::name:
      return definition.user_constant;
    case Column::description:
      return definition.parameter_name;
    case Column::value: {
      const auto edit = edits_.find(row);
      return edit == edits_.end() ? parameter.text : edit->second;
    }
    case Column::minimum:
      return definition.Min;
    case Column::maximum:
      return definition.Max;
    case Column::initial:
      return definition.initial_value;
    case Column::unit:
      return parameter.unit ? UnitWord(*parameter.unit) : definition.Unit;
    case Column::listKey:
      return definition.dec_data_id;
    case Column::list:
      return parameter.list;
    case Column::dirty:
      return IsMarked(row) ? "1" : "0";
    case Column::size:
      return definition.Size;
  }
  return {};
}

bool ParameterToolBase::IsMarked(int row) const {
  return edits_.contains(row) || ParameterOf(row).IsMarked();
}

ParameterRow ParameterToolBase::Describe(int row) const {
  ParameterRow result;
  result.name = Text(row, Column::name);
  result.description = Text(row, Column::description);
  result.value = Text(row, Column::value);
  result.minimum = Text(row, Column::minimum);
  result.maximum = Text(row, Column::maximum);
  result.list = Text(row, Column::list);
  result.unit = Text(row, Column::unit);
  return result;
}

std::string ParameterToolBase::DefaultText(int row) const {
  const Parameter& parameter = ParameterOf(row);
  try {
    return ShownText(parameter, PlainController(parameter, parameter.definition.initial_value),
                     store_.PresentUnits());
  } catch (const NumberError&) {
    return {};
  }
}

bool ParameterToolBase::IsDefault(int row) const {
  const Parameter& parameter = ParameterOf(row);
  if (parameter.blank && !edits_.contains(row)) return true;
  return ComparedForm(parameter.Pn(), Text(row, Column::value)) ==
         ComparedForm(parameter.Pn(), DefaultText(row));
}

std::optional<std::string> ParameterToolBase::OtherInAmplifier(int row) const {
  const Parameter& parameter = ParameterOf(row);
  const auto compared = [&](const std::string& controller) {
    return ComparedForm(parameter.Pn(), controller);
  };
  if (!parameter.seen || compared(*parameter.seen) == compared(parameter.controller)) {
    return std::nullopt;
  }
  return ShownText(parameter, *parameter.seen, store_.PresentUnits());
}

const std::string& ParameterToolBase::Help(int row) const {
  return ParameterOf(row).definition.help;
}

std::int16_t ParameterToolBase::GetNumberOfNewRows() const {
  const auto marked =
      std::ranges::count_if(rows_, [this](int place) { return store_.At(place).IsMarked(); });
  return Narrow<std::int16_t>(marked);
}

// ---- edits

std::optional<std::string> ParameterToolBase::EditOf(int row) const {
  const auto edit = edits_.find(row);
  if (edit == edits_.end()) return std::nullopt;
  return edit->second;
}

void ParameterToolBase::EditValue(int row, const std::string& text) {
  if (text == ParameterOf(row).text) {
    edits_.erase(row);
  } else {
    edits_[row] = text;
  }
}

void ParameterToolBase::TakeEdit(const std::string& strPn, const std::string& text) {
  const int row = FindRow(strPn);
  if (row == 0 || frm_ == nullptr || !frm_->IsOpen()) return;
  EditValue(row, text);
  frm_->EditsChanged();
}

std::optional<std::string> ParameterToolBase::EditOf(const std::string& strPn) const {
  const int row = FindRow(strPn);
  return row == 0 ? std::nullopt : EditOf(row);
}

void ParameterToolBase::TakeSharedEdits(const SisterTool& sister) {
  for (const char* const strPn : {"Pn80C", "Pn80D"}) {
    if (const auto edit = sister.EditOf(std::string(strPn))) TakeEdit(strPn, *edit);
  }
}

// A change of the units keeps the number of an edit, as it keeps those of the project.
void ParameterToolBase::CarryEdits() {
  const Units& units = store_.PresentUnits();
  if (editUnits_.SameScale(units)) return;
  editUnits_ = units;
  for (auto& [row, text] : edits_) {
    const Parameter& parameter = ParameterOf(row);
    if (!parameter.unit) continue;
    const MeantValue meant =
        ValueMeant(parameter, FixedText(std::string_view(text), units.resolution), units);
    if (meant.limited) limitedEdits_.push_back(parameter.Pn());
    text = meant.text;
  }
}

void ParameterToolBase::PutBackEdit(int row, const std::optional<std::string>& edit) {
  EditValue(row, edit ? *edit : ParameterOf(row).text);
}

bool ParameterToolBase::AcceptEdits() {
  const bool stored = Trapped(Prefix("SaveToDB"), [this] {
    ParameterChanges changes;
    for (const auto& [row, text] : edits_) {
      const Parameter& parameter = ParameterOf(row);
      const MeantValue meant = ValueMeant(parameter, text, store_.PresentUnits());
      if (!meant.valid) {
        ShowExclamation("Overflow error while converting " + parameter.Pn() +
                        " value to encoder counts!\rPlease modify " + parameter.Pn() +
                        " until satisfactory.");
        return false;
      }
      changes[parameter.Pn()] = {meant.controller, meant.text, MarkChange::set, tool_};
    }
    const std::map<int, std::string> edits = std::exchange(edits_, {});
    try {
      store_.Commit(changes);
    } catch (...) {
      edits_ = edits;
      throw;
    }
    return true;
  });
  if (stored) Applied.Raise();
  return stored;
}

// Values that another window has stored are shown at once; an edit that says the same is none.
void ParameterToolBase::OnStoreChanged() {
  CarryEdits();
  std::erase_if(edits_,
                [this](const auto& edit) { return edit.second == ParameterOf(edit.first).text; });
  if (frm_ != nullptr) frm_->StoreChanged();
}

// ---- the window

void ParameterToolBase::AttachWindow(ParameterGridWindow& frm) {
  frm_ = &frm;
  connections_ += frm.ChangeAccepted.Connect([this] {
    if (!frm_PropertiesChangeAccepted()) frm_->CommitFailed();
  });
  connections_ += frm.ChangeCanceled.Connect([this] { frm_PropertiesChangeCanceled(); });
  connections_ += frm.Closed.Connect([this] { Closed.Raise(); });
  connections_ += frm.EditStateChanged.Connect([this] { EditStateChanged.Raise(); });
}

bool ParameterToolBase::ShowWindow(const std::string& caption, FormMode mode) {
  return frm_->Show(caption, mode);
}

void ParameterToolBase::UnloadWindow() {
  if (frm_ != nullptr) frm_->Unload();
  edits_.clear();
}

void ParameterToolBase::RefreshWindow() {
  if (frm_ != nullptr) frm_->RefreshGrid();
}

bool ParameterToolBase::frm_PropertiesChangeAccepted() {
  return edits_.empty() || AcceptEdits();
}

void ParameterToolBase::frm_PropertiesChangeCanceled() {
  edits_.clear();
}

// ---- helpers of the pattern

std::string WireNumber(std::string_view strPn) {
  return Right(strPn, 3);
}

void TrimCurrentUnits(std::string& strText) {
  const std::size_t at = strText.find('(');
  if (at != std::string::npos) strText = Trim(std::string_view(strText).substr(0, at));
}

}  // namespace velmoor
