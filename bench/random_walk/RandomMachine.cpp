#include "random_walk/RandomMachine.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace velmoor::walk {
namespace {

int Below(std::mt19937_64& random, int count) {
  return static_cast<int>(random() % static_cast<std::uint64_t>(count));
}

double Uniform(std::mt19937_64& random) {
  return static_cast<double>(random() >> 11U) / static_cast<double>(1ULL << 53U);
}

// Small gearings are as likely as large ones.
long Gearing(std::mt19937_64& random) {
  if (Below(random, 4) == 0) return 1;
  return std::lround(std::pow(32767.0, Uniform(random)));
}

// A plain decimal text with so many digits that mean something.
std::string Significant(double value, int digits) {
  const int magnitude = static_cast<int>(std::floor(std::log10(value)));
  const double unit = std::pow(10.0, magnitude - digits + 1);
  const double round = std::nearbyint(value / unit) * unit;
  char text[64];
  const int places = std::max(digits - 1 - magnitude, 0);
  (void)std::snprintf(text, sizeof text, "%.*f", places, round);
  return text;
}

// Of the whole machine: the ratio that the measure is chosen for.
void ChooseMeasure(std::mt19937_64& random, TypedMachine& machine) {
  const double span = Below(random, 4) == 0 ? 1.5 : 0.98;  // powers of a hundred about 1
  const double ratio = std::pow(100.0, (2 * Uniform(random) - 1) * span);
  const double multiplier = MultiplierOf(machine);
  const double measure = 4.0 * std::atof(machine.encoder.c_str()) * std::atof(machine.n2.c_str()) /
                         (ratio * std::pow(10.0, std::atoi(machine.resolution.c_str())) *
                          multiplier * std::atof(machine.n1.c_str()));
  machine.measure = Significant(measure, 1 + Below(random, 9));
}

void Spoil(std::mt19937_64& random, TypedMachine& machine) {
  switch (Below(random, 8)) {
    case 0:
      machine.n1 = "0";
      break;
    case 1:
      machine.n2 = "32768";
      break;
    case 2:
      machine.n1 = "1.5";
      break;
    case 3:
      machine.measure = "0";
      break;
    case 4:
      machine.measure = "-" + machine.measure;
      break;
    case 5:
      machine.resolution = "23";
      break;
    default:
      machine.units = kUnits.at(static_cast<std::size_t>(Below(random, 6)));
      break;
  }
}

}  // namespace

TypedMachine RandomMachine(std::mt19937_64& random) {
  TypedMachine machine;
  machine.system = Below(random, 5);
  const int unit = IsRotary(machine.system) ? 4 + Below(random, 2)
                   : machine.system == 4    ? Below(random, 6)
                                            : Below(random, 4);
  machine.units = kUnits.at(static_cast<std::size_t>(unit));
  machine.time = Below(random, 2) == 0 ? "seconds" : "minutes";
  machine.encoder = kEncoders.at(static_cast<std::size_t>(Below(random, 3)));
  machine.resolution = std::to_string(Below(random, 10));
  machine.n1 = std::to_string(Gearing(random));
  machine.n2 = std::to_string(Gearing(random));
  ChooseMeasure(random, machine);
  if (Below(random, 12) == 0) Spoil(random, machine);
  return machine;
}

TypedMachine RandomValidMachine(std::mt19937_64& random) {
  for (;;) {
    TypedMachine machine = RandomMachine(random);
    const Judgement judgement = Judge(machine);
    if (judgement.valid && !judgement.doubtful) return machine;
  }
}

}  // namespace velmoor::walk
