#include "simulator/program/ProgramOptions.h"

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <utility>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

[[noreturn]] void Refuse(const std::string& text) {
  throw std::invalid_argument(text);
}

std::int32_t Number(std::string_view option, const std::string& text, std::int32_t least,
                    std::int32_t most) {
  const auto number = ParseWhole(text);
  if (!number || *number < least || *number > most) {
    Refuse(std::string(option) + ": not a number from " + NumberText(least) + " to " +
           NumberText(most) + ": " + text);
  }
  return static_cast<std::int32_t>(*number);
}

// Eight hexadecimal digits, padded on the left.
std::string Code(std::string_view option, const std::string& text) {
  const auto number = ParseHex(text);
  if (!number) Refuse(std::string(option) + ": not a hexadecimal number: " + text);
  return HexText(*number, 8);
}

using Setter = void (*)(ProgramOptions&, AmplifierSettings&, const std::string&);

struct Option {
  std::string_view name;
  std::string_view argument;  // empty for none
  std::string_view help;
  Setter set;
};

constexpr Option kOptions[] = {
    {"--link", "NAME", "make NAME a symbolic link to the pseudo-terminal",
     [](ProgramOptions& all, AmplifierSettings&, const std::string& text) { all.link = text; }},
    {"--script", "FILE", "execute the console commands of FILE first",
     [](ProgramOptions& all, AmplifierSettings&, const std::string& text) { all.script = text; }},
    {"--paced", "", "let every character take its time on the wire",
     [](ProgramOptions& all, AmplifierSettings&, const std::string&) { all.paced = true; }},
    {"--axis", "H", "axis of the amplifier, 0 to F; give it again for another one on the line",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       const auto axis = text.size() == 1 ? ParseHex(text) : std::nullopt;
       if (!axis) Refuse("--axis: not one hexadecimal digit: " + text);
       one.axis = HexText(*axis)[0];
     }},
    {"--baud", "N", "9600, 19200 or 38400",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       if (text != "9600" && text != "19200" && text != "38400") {
         Refuse("--baud: 9600, 19200 or 38400, not " + text);
       }
       one.baud = Number("--baud", text, 9600, 38400);
     }},
    {"--firmware", "N", "version of the option card",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.firmware = Number("--firmware", text, 0, 0xFFFF);
     }},
    {"--motor-size", "W", "rated power in watts",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.watts = Number("--motor-size", text, 10, 99990);
     }},
    {"--option-type", "T", "hexadecimal, 0600 is the right one",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.optionType = Code("--option-type", text);
     }},
    {"--servo-type", "T", "hexadecimal, 02 is the right one",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.servoType = Code("--servo-type", text);
     }},
    {"--motor-type", "T", "hexadecimal",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.motorType = Code("--motor-type", text);
     }},
    {"--encoder", "T", "hexadecimal, kind and bits: 11, 111, D, 110",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.encoder = Code("--encoder", text);
     }},
    {"--restart-ms", "MS", "how long a restart takes",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.restartTime = std::chrono::milliseconds(Number("--restart-ms", text, 0, 600000));
     }},
    {"--store-ms", "MS", "how long storing a table takes",
     [](ProgramOptions&, AmplifierSettings& one, const std::string& text) {
       one.storeTime = std::chrono::milliseconds(Number("--store-ms", text, 0, 600000));
     }},
    {"--help", "", "this text",
     [](ProgramOptions& all, AmplifierSettings&, const std::string&) { all.help = true; }}};

void AddAmplifier(ProgramOptions& options, const AmplifierSettings& settings) {
  const bool taken = std::ranges::any_of(options.amplifiers, [&](const AmplifierSettings& other) {
    return other.axis == settings.axis;
  });
  if (taken) Refuse("--axis: axis " + std::string(1, settings.axis) + " is given twice");
  options.amplifiers.push_back(settings);
}

}  // namespace

ProgramOptions ParseOptions(std::span<const char* const> words) {
  ProgramOptions options;
  AmplifierSettings settings;
  bool axisGiven = false;
  for (std::size_t i = 0; i < words.size(); ++i) {
    const std::string_view word = words[i];
    const auto option = std::ranges::find(kOptions, word, &Option::name);
    if (option == std::end(kOptions)) Refuse("Unknown option: " + std::string(word));
    // A further axis starts a further amplifier that takes over the settings so far.
    if (word == "--axis" && std::exchange(axisGiven, true)) AddAmplifier(options, settings);
    std::string argument;
    if (!option->argument.empty()) {
      if (++i == words.size()) Refuse(std::string(word) + " needs a value");
      argument = words[i];
    }
    option->set(options, settings, argument);
  }
  AddAmplifier(options, settings);
  return options;
}

std::string UsageText() {
  std::string text = "velmoor-simulator: a simulated amplifier on a pseudo-terminal\n";
  for (const Option& option : kOptions) {
    std::string usage(option.name);
    if (!option.argument.empty()) usage.append(" ").append(option.argument);
    usage.resize(std::max<std::size_t>(usage.size() + 1, 20), ' ');
    text.append("  ").append(usage).append(option.help).append("\n");
  }
  return text;
}

}  // namespace velmoor
