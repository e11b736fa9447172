#include "simulator/program/ProgramOptions.h"

#include <algorithm>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

std::int32_t Number(std::string_view option, const std::string& text, std::int32_t least,
                    std::int32_t most) {
  const auto number = ParseWhole(text);
  if (!number || *number < least || *number > most) {
    throw UsageError(std::string(option) + ": not a number from " + NumberText(least) + " to " +
                     NumberText(most) + ": " + text);
  }
  return static_cast<std::int32_t>(*number);
}

// Eight hexadecimal digits, padded on the left.
std::string Code(std::string_view option, const std::string& text) {
  const auto number = ParseHex(text);
  if (!number) throw UsageError(std::string(option) + ": not a hexadecimal number: " + text);
  return HexText(*number, 8);
}

using Setter = void (*)(ProgramOptions&, AmplifierSettings&, const std::string&);

struct Option {
  OptionEntry entry;
  Setter set;
};

const std::vector<Option>& Options() {
  using Kind = ValueEntry::Kind;
  static const std::vector<Option> kOptions{
      {{"link", "make NAME a symbolic link to the pseudo-terminal", {"NAME", Kind::file}},
       [](ProgramOptions& all, AmplifierSettings&, const std::string& text) { all.link = text; }},
      {{"script", "execute the console commands of FILE first", {"FILE", Kind::file}},
       [](ProgramOptions& all, AmplifierSettings&, const std::string& text) { all.script = text; }},
      {{"paced", "let every character take its time on the wire"},
       [](ProgramOptions& all, AmplifierSettings&, const std::string&) { all.paced = true; }},
      {{"axis",
        "axis of the amplifier, 0 to F; give it again for another one on the line",
        {"H",
         Kind::words,
         {"0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "A", "B", "C", "D", "E", "F"}},
        true},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         const auto axis = text.size() == 1 ? ParseHex(text) : std::nullopt;
         if (!axis) throw UsageError("--axis: not one hexadecimal digit: " + text);
         one.axis = HexText(*axis)[0];
       }},
      {{"baud", "9600, 19200 or 38400", {"N", Kind::words, {"9600", "19200", "38400"}}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         if (text != "9600" && text != "19200" && text != "38400") {
           throw UsageError("--baud: 9600, 19200 or 38400, not " + text);
         }
         one.baud = Number("--baud", text, 9600, 38400);
       }},
      {{"firmware", "version of the option card", {"N"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.firmware = Number("--firmware", text, 0, 0xFFFF);
       }},
      {{"motor-size", "rated power in watts", {"W"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.watts = Number("--motor-size", text, 10, 99990);
       }},
      {{"option-type", "hexadecimal, 0600 is the right one", {"T"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.optionType = Code("--option-type", text);
       }},
      {{"servo-type", "hexadecimal, 02 is the right one", {"T"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.servoType = Code("--servo-type", text);
       }},
      {{"motor-type", "hexadecimal", {"T"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.motorType = Code("--motor-type", text);
       }},
      {{"encoder", "hexadecimal, kind and bits: 11, 111, D, 110", {"T"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.encoder = Code("--encoder", text);
       }},
      {{"restart-ms", "how long a restart takes", {"MS"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.restartTime = std::chrono::milliseconds(Number("--restart-ms", text, 0, 600000));
       }},
      {{"store-ms", "how long storing a table takes", {"MS"}},
       [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
         one.storeTime = std::chrono::milliseconds(Number("--store-ms", text, 0, 600000));
       }}};
  return kOptions;
}

void AddAmplifier(ProgramOptions& options, const AmplifierSettings& settings) {
  const bool taken = std::ranges::any_of(options.amplifiers, [&](const AmplifierSettings& other) {
    return other.axis == settings.axis;
  });
  if (taken) throw UsageError("--axis: axis " + std::string(1, settings.axis) + " is given twice");
  options.amplifiers.push_back(settings);
}

const Option& OptionOf(const std::string& name) {
  return *std::ranges::find_if(Options(),
                               [&](const Option& option) { return option.entry.name == name; });
}

}  // namespace

const ProgramTable& SimulatorTable() {
  static const ProgramTable kTable = [] {
    ProgramTable table{
        .name = "velmoor-simulator",
        .about = "a simulated amplifier on a pseudo-terminal",
        .options = {},
        .notes =
            "A console on the standard input raises alarms and makes faults: type help. In the\n"
            "background of a terminal (&) it runs without it. A signal ends it.\n"};
    for (const Option& option : Options()) table.options.push_back(option.entry);
    return table;
  }();
  return kTable;
}

ProgramOptions OptionsOf(const CommandLine& line) {
  ProgramOptions options;
  AmplifierSettings settings;
  bool axisGiven = false;
  for (const CommandLine::Option& given : line.Options()) {
    // A further axis starts a further amplifier that takes over the settings so far.
    if (given.name == "axis" && std::exchange(axisGiven, true)) AddAmplifier(options, settings);
    OptionOf(given.name).set(options, settings, given.value);
  }
  AddAmplifier(options, settings);
  return options;
}

}  // namespace velmoor
