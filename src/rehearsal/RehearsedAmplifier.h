// The simulated amplifier that a project is rehearsed on, with what a download would have sent it.
#pragma once

#include <string>
#include <vector>

#include "simulator/SimulatedAmplifier.h"

namespace velmoor {

class clsHX7Project;

class RehearsedAmplifier {
 public:
  explicit RehearsedAmplifier(clsHX7Project& project);

  [[nodiscard]] SimulatedAmplifier& Amplifier() { return amplifier_; }
  [[nodiscard]] SimulatedAxis& Axis() { return amplifier_.State().axis; }
  [[nodiscard]] const AmplifierMemory& Memory() const { return amplifier_.State().memory; }
  // Counts of a motor's turn, through the electronic gear.
  [[nodiscard]] double CountsPerTurn() const { return countsPerTurn_; }
  // "PRM81B=99999999": the lines that were not taken.
  [[nodiscard]] const std::vector<std::string>& Refused() const { return refused_; }

 private:
  void Send(const std::string& line);
  void SendParameters(clsHX7Project& project);
  void SendTables(clsHX7Project& project);

  SimulatedAmplifier amplifier_;
  std::vector<std::string> refused_;
  double countsPerTurn_ = 1;
};

}  // namespace velmoor
