#include "rehearsal/RehearsedAmplifier.h"

#include <bit>
#include <cstdint>

#include "link/CommandWords.h"
#include "platform/Numbers.h"
#include "project/clsHX7Project.h"
#include "simulator/axis/AxisSettings.h"

namespace velmoor {
namespace {

constexpr std::uint32_t kInertiaRatio = 0x103;  // %

// The bits of a motor's turn: four counts a line.
int EncoderBits(clsHX7Project& project) {
  const auto counts =
      static_cast<std::uint32_t>(project.MechanicalSystem().Description().machine.encoderCount) * 4;
  return counts == 0 ? 13 : std::bit_width(counts) - 1;
}

AmplifierSettings SettingsFor(clsHX7Project& project) {
  AmplifierSettings settings;
  settings.encoder = HexText(static_cast<std::uint32_t>(EncoderBits(project)), 8);
  return settings;
}

}  // namespace

RehearsedAmplifier::RehearsedAmplifier(clsHX7Project& project) : amplifier_(SettingsFor(project)) {
  SendParameters(project);
  SendTables(project);
  const ParameterMemory& parameters = Memory().parameters;
  countsPerTurn_ = ReadAxisSettings(parameters, EncoderBits(project)).countsPerTurn;
  constexpr double kPercent = 100;
  DrivenLoad load;
  load.inertiaRatio = static_cast<double>(parameters.Value(kInertiaRatio)) / kPercent;
  Axis().SetLoad(load);
}

void RehearsedAmplifier::Send(const std::string& line) {
  if (!amplifier_.Execute(line, Micros(0)).accepted) refused_.push_back(line);
}

void RehearsedAmplifier::SendParameters(clsHX7Project& project) {
  const ParameterStore& store = project.Parameters();
  for (int i = 0; i < store.Count(); ++i) {
    const Parameter& parameter = store.At(i);
    if (IsNeverSent(parameter.Pn()) || parameter.blank || !parameter.recorded) continue;
    Send("PRM" + parameter.Pn().substr(2) + "=" + parameter.controller);
  }
}

void RehearsedAmplifier::SendTables(clsHX7Project& project) {
  const auto send = [this](MotionTable& table, const auto& words, std::size_t firstColumn) {
    for (int row = 1; row <= table.RowsInArray(); ++row) {
      const std::vector<std::string>& texts = table.Stored(row).controller;
      for (std::size_t i = 0; i < words.size(); ++i) {
        const std::string& text = texts[firstColumn + i];
        if (text.empty()) continue;
        Send(std::string(words[i].word) + NumberText(row - 1) + "=" + text);
      }
    }
  };
  send(project.Position(), kIndexTableCommands, clsHX7Position::position);
  send(project.Zone(), kZoneTableCommands, clsHX7Zone::lower);
  send(project.Jog(), kJogTableCommands, clsHX7Jog::speed);
}

}  // namespace velmoor
