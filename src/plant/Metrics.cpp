#include "plant/Metrics.h"

#include "online/MonitoredItems.h"
#include "plant/Messages.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"

namespace velmoor {
namespace {

// A label's value in quotes: a text from outside never ends it.
std::string Quoted(const std::string& text) {
  std::string quoted = "\"";
  for (const char c : VisibleText(text)) {
    if (c == '"' || c == '\\') quoted += '\\';
    quoted += c;
  }
  return quoted + "\"";
}

struct Family {
  std::string name;  // without "_total"
  const char* type;
  const char* unit;  // the name ends in it; empty: none
  const char* help;
};

class Writer {
 public:
  void Begin(const Family& family) {
    const std::string_view type = family.type;
    name_ = family.name + (type == "counter" ? "_total" : type == "info" ? "_info" : "");
    text_ += "# TYPE " + family.name + " " + family.type + "\n";
    if (*family.unit != '\0') text_ += "# UNIT " + family.name + " " + family.unit + "\n";
    text_ += "# HELP " + family.name + " " + family.help + "\n";
  }
  void Sample(const std::string& labels, const std::string& value) {
    text_ += name_ + "{" + labels + "} " + value + "\n";
  }
  [[nodiscard]] std::string Ended() { return text_ + "# EOF\n"; }

 private:
  std::string name_, text_;
};

const char* UnitOf(ValueKind kind) {
  switch (kind) {
    case ValueKind::distance:
      return "reference_units";
    case ValueKind::speed:
      return "rpm";
    case ValueKind::torque:
      return "percent";
    case ValueKind::bits:
      break;
  }
  return "";
}

void WriteItem(Writer& writer, int item, const std::vector<AxisState>& axes,
               const std::vector<std::string>& labels) {
  const MonitoredItem& info = MonitoredItems()[static_cast<std::size_t>(item)];
  const std::string unit = UnitOf(info.kind);
  writer.Begin({"velmoor_axis_" + FieldOf(item) + (unit.empty() ? "" : "_") + unit, "gauge",
                UnitOf(info.kind), "As the amplifier tells it."});
  for (std::size_t i = 0; i < axes.size(); ++i) {
    const auto value = axes[i].values.find(item);
    if (value != axes[i].values.end()) writer.Sample(labels[i], NumberText(value->second));
  }
}

void WriteAxes(Writer& writer, const std::string& line, const std::vector<AxisState>& axes,
               const std::vector<int>& items) {
  std::vector<std::string> labels;
  for (const AxisState& axis : axes) {
    labels.push_back(line + ",axis=" + Quoted(axis.axis.address) +
                     ",name=" + Quoted(axis.axis.name));
  }
  const auto all = [&](const Family& family, const auto& value) {
    writer.Begin(family);
    for (std::size_t i = 0; i < axes.size(); ++i) writer.Sample(labels[i], value(axes[i]));
  };
  all({"velmoor_axis_answers", "gauge", "", "1: the axis answers."},
      [](const AxisState& axis) { return NumberText(axis.standing == Standing::answers ? 1 : 0); });
  const auto inAlarm = [](const AxisState& axis) {
    return axis.standing == Standing::answers && IsAlarm(axis.reading);
  };
  all({"velmoor_axis_alarm", "gauge", "", "1: an alarm that has taken the servo off is there."},
      [&](const AxisState& axis) {
        return NumberText(inAlarm(axis) && !IsWarning(axis.reading) ? 1 : 0);
      });
  all({"velmoor_axis_warning", "gauge", "", "1: a warning is there."}, [&](const AxisState& axis) {
    return NumberText(inAlarm(axis) && IsWarning(axis.reading) ? 1 : 0);
  });
  all({"velmoor_axis_questions", "counter", "", "Questions to the axis."},
      [](const AxisState& axis) { return NumberText(axis.questions); });
  all({"velmoor_axis_failures", "counter", "", "Questions without an answer that can be read."},
      [](const AxisState& axis) { return NumberText(axis.failures); });
  writer.Begin({"velmoor_axis_state", "info", "", "State and panel display."});
  for (std::size_t i = 0; i < axes.size(); ++i) {
    writer.Sample(labels[i] + ",state=" + Quoted(StateWord(axes[i])) +
                      ",display=" + Quoted(axes[i].reading.display),
                  "1");
  }
  for (const int item : items) WriteItem(writer, item, axes, labels);
}

}  // namespace

std::string MetricsText(const LineFigures& figures, const std::vector<AxisState>& axes,
                        const std::vector<int>& items) {
  const std::string line = "line=" + Quoted(figures.line);
  Writer writer;
  const auto one = [&](const Family& family, const std::string& value) {
    writer.Begin(family);
    writer.Sample(line, value);
  };
  one({"velmoor_line_watched", "gauge", "", "1: the port is open and its axes are asked."},
      NumberText(figures.watched ? 1 : 0));
  one({"velmoor_line_round_seconds", "gauge", "seconds", "The latest round over all axes."},
      FixedText(figures.roundSeconds, 3));
  one({"velmoor_line_wire_seconds", "gauge", "seconds", "What its bytes took on the wire."},
      FixedText(figures.wireSeconds, 3));
  one({"velmoor_line_rounds", "counter", "", "Rounds since the watch was started."},
      NumberText(figures.rounds));
  if (figures.publishes) {
    one({"velmoor_publisher_connected", "gauge", "", "1: messages are taken."},
        NumberText(figures.connected ? 1 : 0));
    one({"velmoor_publisher_delivered_messages", "counter", "messages",
         "Since the watch was started."},
        NumberText(figures.delivered));
    one({"velmoor_publisher_waiting_messages", "gauge", "messages", "Kept, to be delivered."},
        NumberText(figures.waiting));
    one({"velmoor_publisher_dropped_changes", "counter", "changes",
         "Beyond the bound, or unwritable."},
        NumberText(figures.droppedChanges));
    one({"velmoor_publisher_dropped_values", "counter", "values",
         "Beyond the bound, or unwritable."},
        NumberText(figures.droppedValues));
  }
  WriteAxes(writer, line, axes, items);
  return writer.Ended();
}

}  // namespace velmoor
