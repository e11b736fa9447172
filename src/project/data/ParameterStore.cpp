#include "project/data/ParameterStore.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"
#include "project/data/MachineUnits.h"
#include "project/data/NibbleDefinitions.h"
#include "project/data/Schema.h"
#include "project/data/UnitConversion.h"

namespace velmoor {

using schema::Parameters;

namespace {

constexpr int kMostPlaces = 22;

ValueForm FormOf(const ParameterDefinition& definition, bool listed) {
  const std::string& strPn = definition.user_constant;
  if (listed) return ValueForm::list;
  if (UnitKindOf(strPn)) return ValueForm::units;
  if (IsNibbleKey(definition.nibble_data_id)) return ValueForm::digits;
  const bool halves = strPn == "Pn829" || strPn == "Pn82A" || strPn == "Pn82F" || strPn == "Pn830";
  return halves ? ValueForm::halves : ValueForm::number;
}

}  // namespace

// ---- opening

void ParameterStore::Open(const Source& source, const ComboLists& lists) {
  source_ = source;
  staged_.clear();
  doubts_.clear();
  ReadDefinitions(lists);
  ReadRecords();
  units_ = UnitsAfter({});
  ShowValues();
  ++revision_;
  Changed.Raise();
}

void ParameterStore::ReadDefinitions(const ComboLists& lists) {
  nibbles_ = ReadNibbleDefinitions(source_.catalogue, source_.nibbleTable);
  parameters_.clear();
  places_.clear();
  for (ParameterDefinition& definition :
       ReadParameterDefinitions(source_.catalogue, source_.parametersTable)) {
    Parameter parameter;
    const std::int32_t key = Int32FromCell(definition.dec_data_id);
    if (key > 0) parameter.list = lists.at(static_cast<std::size_t>(key) - 1);
    parameter.form = FormOf(definition, !parameter.list.empty());
    parameter.unit = UnitKindOf(definition.user_constant);
    parameter.nibble = FindNibble(nibbles_, definition.nibble_data_id);
    parameter.definition = std::move(definition);
    places_.emplace(parameter.Pn(), parameters_.size());
    parameters_.push_back(std::move(parameter));
  }
  SetLimits(source_.limits);
}

void ParameterStore::SetLimits(const MotorLimits& limits) {
  for (Parameter& parameter : parameters_) {
    const auto own = limits.find(parameter.Pn());
    if (own == limits.end()) continue;
    parameter.definition.Min = own->second.min;
    parameter.definition.Max = own->second.max;
    parameter.definition.initial_value = own->second.initial;
  }
}

void ParameterStore::TakeLimits(const MotorLimits& limits) {
  source_.limits = limits;
  SetLimits(limits);
  for (const Parameter& parameter : parameters_) JudgeValue(parameter);
  ++revision_;
  Changed.Raise();
}

void ParameterStore::ReadRecords() {
  const auto database = OpenForReading(source_.workingFile);
  const auto records = database->OpenTable(Parameters::kTable);
  for (Parameter& parameter : parameters_) ReadRecord(parameter, *records);
}

void ParameterStore::ReadRecord(Parameter& parameter, RowSet& records) const {
  const std::string& strPn = parameter.Pn();
  parameter.recorded = records.FindFirst(Parameters::kPn, strPn);
  try {
    if (!parameter.recorded) {
      parameter.controller = PlainController(parameter, parameter.definition.initial_value);
      return;
    }
    parameter.text = records.Text(Parameters::kValue);
    parameter.blank = parameter.text.empty();
    const std::string& held = records.Text(Parameters::kControllerValue);
    parameter.controller = parameter.blank ? held : PlainController(parameter, held);
  } catch (const NumberError& error) {
    throw ProjectDataError("The value of " + strPn + " cannot be read.  " + error.what());
  }
  if (records.Text(Parameters::kDirty) != "1" || IsNeverSent(strPn)) return;
  parameter.markedBy = IsMechSystemPn(strPn) ? Tool::mechanicalSystem : Tool::editor;
}

// A text that does not mean the value which stands beside it, and would go out, gives way to one
// that does.
void ParameterStore::ShowValues() {
  for (Parameter& parameter : parameters_) {
    // A blank record shows the bare initial value, the index where it is a list's: intended.
    if (parameter.blank) {
      parameter.text = parameter.definition.initial_value;
      continue;
    }
    JudgeText(parameter);
    const MeantValue meant = ValueMeant(parameter, parameter.text, units_);
    if (!meant.valid || meant.limited || meant.controller != parameter.controller) {
      parameter.text = ShownText(parameter, parameter.controller, units_);
    }
    JudgeValue(parameter);
  }
}

// ---- reading

const Parameter& ParameterStore::At(int index) const {
  return parameters_.at(static_cast<std::size_t>(index));
}

Parameter* ParameterStore::FindOwn(std::string_view strPn) {
  const auto place = places_.find(strPn);
  return place == places_.end() ? nullptr : &parameters_[place->second];
}

const Parameter* ParameterStore::Find(std::string_view strPn) const {
  return const_cast<ParameterStore*>(this)->FindOwn(strPn);
}

const Parameter& ParameterStore::Get(std::string_view strPn) const {
  const Parameter* const parameter = Find(strPn);
  if (parameter == nullptr) {
    throw ProjectDataError("The catalogue has no parameter " + std::string(strPn) + ".");
  }
  return *parameter;
}

bool ParameterStore::IsMarkedBy(Tool tool) const {
  return std::ranges::any_of(parameters_, [tool](const Parameter& parameter) {
    return parameter.markedBy == tool && !parameter.passedOver;
  });
}

// ---- units

Units ParameterStore::UnitsAfter(const ParameterChanges& changes) const {
  const auto value = [&](const char* strPn) {
    const auto changed = changes.find(strPn);
    return changed == changes.end() ? Get(strPn).controller : changed->second.controller;
  };
  const std::string bits = value("Pn82E");
  const auto places = ParseWhole(value("Pn82D"));
  const std::string distance = DistanceUnitsFromIndex(SelectionDigit(bits, 0));
  const std::string time = TimeUnitsFromIndex(SelectionDigit(bits, 1));
  if (!places || *places < 0 || *places > kMostPlaces) {
    throw ProjectDataError("The resolution in Pn82D cannot be read.");
  }
  if (distance.empty() || time.empty()) {
    throw ProjectDataError("The units in Pn82E cannot be read.");
  }
  return Units::Of(Narrow<std::int16_t>(*places), distance, time);
}

// ---- committing

ParameterChanges ParameterStore::Completed(ParameterChanges changes) const {
  const Units after = UnitsAfter(changes);
  for (const Parameter& parameter : parameters_) {
    const auto changed = changes.find(parameter.Pn());
    if (changed != changes.end()) {
      ParameterChange& change = changed->second;
      if (change.text.empty()) change.text = ShownText(parameter, change.controller, after);
      continue;
    }
    if (parameter.form != ValueForm::units || parameter.blank) continue;
    const MeantValue meant = ValueMeant(parameter, parameter.text, after);
    if (meant.valid && !meant.limited && meant.controller == parameter.controller) continue;
    std::string text = ShownText(parameter, parameter.controller, after);
    // What the file has in its place is in doubt, and stays so.
    if (text == parameter.text) continue;
    changes[parameter.Pn()] = {parameter.controller, std::move(text)};
  }
  return changes;
}

void ParameterStore::Commit(const ParameterChanges& changes) {
  const ParameterChanges completed = Completed(changes);
  const auto database = OpenForWriting(source_.workingFile);
  try {
    Write(*database, completed);
    database->Commit();
  } catch (...) {
    database->Rollback();
    throw;
  }
  TakeTyped(completed, changes);
}

void ParameterStore::TakeTyped(const ParameterChanges& completed, const ParameterChanges& typed) {
  for (const auto& [strPn, change] : typed) doubts_.erase(strPn);
  Take(completed);
}

// A parameter of which the file has no record gets one with the first commit, marked.
void ParameterStore::Write(Database& database, const ParameterChanges& completed) const {
  const auto records = database.OpenTable(Parameters::kTable);
  for (const Parameter& parameter : parameters_) {
    const auto changed = completed.find(parameter.Pn());
    if (changed == completed.end() && parameter.recorded) continue;
    if (records->FindFirst(Parameters::kPn, parameter.Pn())) {
      records->Edit();
    } else {
      records->AddNew();
      records->Set(Parameters::kPn, parameter.Pn());
      records->Set(Parameters::kDirty, "1");
    }
    const bool changes = changed != completed.end();
    records->Set(Parameters::kValue, changes ? changed->second.text : parameter.text);
    records->Set(Parameters::kControllerValue,
                 changes ? changed->second.controller : parameter.controller);
    if (changes && changed->second.mark != MarkChange::keep) {
      records->Set(Parameters::kDirty, changed->second.mark == MarkChange::set ? "1" : "0");
    }
    records->Update();
  }
}

void ParameterStore::Take(const ParameterChanges& completed) {
  for (Parameter& parameter : parameters_) {
    if (!parameter.recorded) {
      parameter.recorded = true;
      if (!IsNeverSent(parameter.Pn())) parameter.markedBy = Tool::editor;
    }
    const auto changed = completed.find(parameter.Pn());
    if (changed == completed.end()) continue;
    const ParameterChange& change = changed->second;
    const bool other = parameter.controller != change.controller;
    parameter.controller = change.controller;
    parameter.text = change.text;
    parameter.blank = false;
    // What was answered for stays so for as long as the value does. What the amplifier holds takes
    // the place of both that the file had.
    if (change.mark == MarkChange::clear) doubts_.erase(parameter.Pn());
    if (other) JudgeValue(parameter);
    if (change.mark == MarkChange::keep) continue;
    parameter.passedOver = false;
    if (change.mark == MarkChange::clear) {
      parameter.markedBy.reset();
      parameter.amplifier = {AmplifierCopy::State::held, change.controller};
    } else if (!IsNeverSent(parameter.Pn())) {
      parameter.markedBy = change.by;
    }
  }
  units_ = UnitsAfter({});
  ++revision_;
  Changed.Raise();
}

// ---- marks

void ParameterStore::Mark(const std::vector<std::string>& names, Tool by) {
  const auto database = OpenForWriting(source_.workingFile);
  const auto records = database->OpenTable(Parameters::kTable);
  std::vector<Parameter*> marked;
  for (const std::string& strPn : names) {
    Parameter* const parameter = FindOwn(strPn);
    // These would keep their mark for ever, or for as long as the option card is an old one.
    if (parameter == nullptr || IsNeverSent(strPn) || NeedsNewOptionVersion(strPn)) continue;
    if (parameter->blank || !records->FindFirst(Parameters::kPn, strPn)) continue;
    marked.push_back(parameter);
    if (records->Text(Parameters::kDirty) == "1") continue;
    records->Edit();
    records->Set(Parameters::kDirty, "1");
    records->Update();
  }
  database->Commit();
  for (Parameter* const parameter : marked) {
    if (!parameter->markedBy) parameter->markedBy = by;
    parameter->passedOver = false;
    parameter->seen.reset();
  }
  Changed.Raise();
}

void ParameterStore::AboutToSend(const std::string& strPn) {
  if (Parameter* const parameter = FindOwn(strPn)) {
    parameter->amplifier = {AmplifierCopy::State::unknown, {}};
    parameter->seen.reset();
  }
}

void ParameterStore::Acknowledge(Database& database, RowSet& records, const std::string& strPn,
                                 const std::string& sent) {
  Parameter* const parameter = FindOwn(strPn);
  if (parameter == nullptr) return;
  parameter->amplifier = {AmplifierCopy::State::held, sent};
  parameter->seen = sent;
  if (parameter->controller != sent || !records.FindFirst(Parameters::kPn, strPn)) return;
  records.Edit();
  records.Set(Parameters::kDirty, "0");
  records.Update();
  // What the amplifier has acknowledged is never sent again, whatever happens next.
  database.Commit();
  parameter->markedBy.reset();
  parameter->passedOver = false;
}

void ParameterStore::PassOver(const std::string& strPn) {
  if (Parameter* const parameter = FindOwn(strPn)) parameter->passedOver = true;
}

// ---- an upload

void ParameterStore::Stage(const std::string& strPn, const std::string& answer) {
  const std::string plain = PlainController(Get(strPn), answer);
  staged_[strPn] = plain;
  FindOwn(strPn)->seen = plain;
}

ParameterChanges ParameterStore::StagedChanges() const {
  ParameterChanges changes;
  for (const auto& [strPn, controller] : staged_) {
    ParameterChange& change = changes[strPn];
    change.controller = controller;
    change.mark = MarkChange::clear;
  }
  return changes;
}

}  // namespace velmoor
