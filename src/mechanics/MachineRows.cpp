// The rows of a machine under edit, as window, console and report show them.

#include <algorithm>
#include <array>

#include "mechanics/MachineEdit.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "platform/World.h"
#include "project/data/MachineUnits.h"
#include "project/data/UnitConversion.h"

namespace velmoor {
namespace {

struct MachineRow {
  std::string_view name;
  std::string_view description;  // empty: the catalogue's
};

// The measure's description is the system's label of it.
constexpr std::array<MachineRow, 20> kRows{{
    {"Pn82E.0", "Machine Units Base"},
    {"Pn82E.1", "Time Base"},
    {"Pn82F.0", {}},
    {"Pn82B", "N1"},
    {"Pn82C", "N2"},
    {"Pn82D", "Resolution"},
    {"Pn81E", "Default Speed"},
    {"Pn81F", {}},
    {"Pn820", {}},
    {"Pn821", "In Position Window"},
    {"Pn822", "Near Position Window"},
    {"Pn829", {}},
    {"Pn82A", {}},
    {"Pn82E", {}},
    {"Pn82F", {}},
    {"Pn830", {}},
    {"Pn82E.2", "System"},
    {"Pn82E.3", "Encoder Count"},
    {"Pn202", "Electronic Gear Ratio (B)"},
    {"Pn203", "Electronic Gear Ratio (A)"},
}};

// The parameter that a row shows, or shows a part of.
std::string ParameterOfRow(std::string_view name) {
  return std::string(name.substr(0, name.find('.')));
}

bool IsView(std::string_view name) {
  return name.find('.') != std::string_view::npos;
}

}  // namespace

int MachineEdit::Rows() {
  return static_cast<int>(kRows.size());
}

int MachineEdit::FindRow(std::string_view name) {
  const auto* const found = std::ranges::find(kRows, name, &MachineRow::name);
  return found == kRows.end() ? 0 : static_cast<int>(found - kRows.begin()) + 1;
}

std::string_view MachineEdit::NameOf(int row) {
  return kRows.at(static_cast<std::size_t>(row) - 1).name;
}

std::string MachineEdit::MeasureText() const {
  const Machine machine = Description().machine;
  const std::string text = NumberText(machine.length);
  if (machine.resolution == store_.PresentUnits().resolution) return text;
  // It takes the new places too, unless rounding would describe another machine.
  const std::string rounded = FixedText(std::string_view(text), machine.resolution);
  const auto number = ParseFloat(rounded);
  return number && static_cast<float>(*number) == machine.length ? rounded : text;
}

std::string MachineEdit::Value(std::string_view name) const {
  const MachineDescription description = Description();
  if (name == "Pn82E.0") return description.distanceUnits;
  if (name == "Pn82E.1") return description.timeUnits;
  if (name == "Pn82E.2") return MechanicalSystemFromIndex(description.machine.system);
  if (name == "Pn82E.3") return NumberText(description.machine.encoderCount);
  if (name == "Pn82F.0") return MeasureText();
  const ParameterStep& step = Change();
  const auto changed = step.changes.find(name);
  return changed != step.changes.end() ? changed->second.text : store_.Get(name).text;
}

bool MachineEdit::IsMarked(int row) const {
  const std::string_view name = NameOf(row);
  const std::string strPn = ParameterOfRow(name);
  const auto marked = [this](const std::string& parameter) {
    return store_.Get(parameter).IsMarked();
  };
  if (IsView(name) && Value(name) != MachineEdit(store_).Value(name)) return true;
  if (name == "Pn82F.0") return marked("Pn82F") || marked("Pn830");
  return marked(strPn) || (!IsView(name) && Change().changes.contains(strPn));
}

std::string MachineEdit::Text(int row, Column column) const {
  const MachineRow& shown = kRows.at(static_cast<std::size_t>(row) - 1);
  const Parameter& parameter = store_.Get(ParameterOfRow(shown.name));
  const bool measure = shown.name == "Pn82F.0";
  switch (column) {
    case Column::name:
      return std::string(shown.name);
    case Column::description:
      if (measure) return SystemMeasureDescription(Description().machine.system);
      return shown.description.empty() ? parameter.definition.parameter_name
                                       : std::string(shown.description);
    case Column::value:
      return Value(shown.name);
    case Column::minimum:
      return IsView(shown.name) ? "0" : parameter.definition.Min;
    case Column::maximum:
      if (measure) return "1E+16";
      return IsView(shown.name) ? "" : parameter.definition.Max;
    case Column::initial:
      return IsView(shown.name) ? "0" : parameter.definition.initial_value;
    case Column::unit: {
      const auto kind = measure ? UnitKind::distance : UnitKindOf(shown.name);
      return kind ? Description().ShownUnits().Word(*kind) : std::string();
    }
    case Column::dirty:
      return IsMarked(row) ? "1" : "0";
    default:
      return {};
  }
}

std::string MachineEdit::MinimumText(int row) const {
  return LimitText(row, false);
}

std::string MachineEdit::MaximumText(int row) const {
  return LimitText(row, true);
}

std::string MachineEdit::LimitText(int row, bool high) const {
  const std::string name = Text(row, Column::name);
  const auto kind = UnitKindOf(name);
  if (!kind) return Text(row, high ? Column::maximum : Column::minimum);
  const ValueLimits limits = LimitsOf(store_.Get(name));
  return Description().ShownUnits().Shown(high ? limits.high : limits.low, *kind);
}

}  // namespace velmoor
