#include "random_walk/MachineOracle.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "random_walk/Literal.h"

namespace velmoor::walk {
namespace {

constexpr long kMostTerm = 65535;
constexpr const char* kOutside = "Selected resolution is out of range for described system.";

int IndexIn(std::string_view word, const char* const* words, int count) {
  for (int i = 0; i < count; ++i) {
    if (word == words[i]) return i;
  }
  return -1;
}

std::string Padded(const std::string& text, std::size_t digits) {
  return std::string(text.size() < digits ? digits - text.size() : 0, '0') + text;
}

// ---- each cell alone

bool IsWhole(const std::string& text) {
  const std::size_t sign = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
  return text.size() > sign && text.find_first_not_of("0123456789", sign) == std::string::npos;
}

void JudgeWhole(Judgement& judgement, const std::string& text, long low, long high) {
  if (!IsWhole(text)) {
    judgement.words.push_back("Value must be an integer!");
    return;
  }
  const long value = std::atol(text.c_str());
  if (value >= low && value <= high) return;
  judgement.words.push_back("The value " + text +
                            " is out of the allowable range! Value must range from " +
                            std::to_string(low) + " to " + std::to_string(high) + ".");
}

void JudgeCells(Judgement& judgement, const TypedMachine& machine) {
  JudgeWhole(judgement, machine.n1, 1, 32767);
  JudgeWhole(judgement, machine.n2, 1, 32767);
  JudgeWhole(judgement, machine.resolution, 0, 22);
  const auto measure = Number(machine.measure);
  if (!measure || *measure <= 0) judgement.words.push_back("Please enter a positive float value.");
  const int unit = IndexIn(machine.units, kUnits.data(), 6);
  if (machine.system <= 2 && unit >= 4) {
    judgement.words.push_back("Selected system cannot have rotary units!");
  }
  if (IsRotary(machine.system) && unit < 4) {
    judgement.words.push_back("Selected system cannot have linear units!");
  }
}

// ---- the machine as a whole

struct Gear {
  double a, b;      // before the reduction; a has as many places as the resolution
  bool whole;       // a has none of them
  bool onTheVerge;  // a lies so near the middle between two texts that a bit decides
};

Gear GearOf(const TypedMachine& machine) {
  const int places = std::atoi(machine.resolution.c_str());
  const auto length = static_cast<double>(static_cast<float>(std::atof(machine.measure.c_str())));
  const double multiplier = MultiplierOf(machine);
  const double feed = length * multiplier;
  const double scale = std::pow(10.0, places);
  const double exact = scale * feed * std::atof(machine.n1.c_str());
  const double scaled = exact * scale;
  Gear gear{};
  // A larger number has no such places.
  gear.a = scaled < 4.5e15 ? std::nearbyint(scaled) / scale : exact;
  gear.b = 4.0 * std::atof(machine.encoder.c_str()) * std::atof(machine.n2.c_str());
  gear.whole = gear.a == std::floor(gear.a);
  const double fraction = scaled - std::floor(scaled);
  gear.onTheVerge = exact < 65536 && std::fabs(fraction - 0.5) < scaled * 1e-15;
  return gear;
}

// The walks over powers of ten, with a 32-bit ratio.
struct Steps {
  float ratio;
  int digits;
  void More() {
    ratio = static_cast<float>(static_cast<double>(ratio) / 10);
    ++digits;
  }
  void Less() {
    ratio = static_cast<float>(static_cast<double>(ratio) * 10);
    --digits;
  }
};

void RangeOf(Judgement& judgement, double quotient, int digits) {
  constexpr float kHigh = 100.0F;
  constexpr float kLow = 0.01F;
  const Steps start{static_cast<float>(quotient), digits};
  Steps walk = start;
  if (start.ratio > kHigh) {
    while (walk.ratio > kHigh) walk.More();
    judgement.low = walk.digits;
    while (walk.ratio > kLow) walk.More();
    judgement.high = walk.digits - 1;
  } else if (start.ratio < kLow) {
    while (walk.ratio < kLow) walk.Less();
    judgement.high = walk.digits;
    while (walk.ratio < kHigh) walk.Less();
    judgement.low = walk.digits + 1;
  } else {
    while (walk.ratio > kLow) walk.More();
    judgement.high = walk.digits - 1;
    walk = start;
    while (walk.ratio < kHigh) walk.Less();
    judgement.low = walk.digits + 1;
  }
  if (judgement.low < 0) judgement.low = 0;
  judgement.hasRange = judgement.high >= 0;
}

void Doubt(Judgement& judgement, const std::string& reason) {
  judgement.doubtful = true;
  judgement.reason = reason;
}

// The best fraction with both terms within 65535, the smallest A of equally good ones.
void Reduce(Judgement& judgement, const Gear& gear) {
  const double target = gear.b / gear.a;
  double least = 99999999999999.0;
  for (long i = 1; i <= kMostTerm; ++i) {
    const double term = std::nearbyint(static_cast<double>(i) * target);
    const double error = std::fabs(term / static_cast<double>(i) - target);
    if (error < least && term <= static_cast<double>(kMostTerm)) {
      least = error;
      judgement.a = i;
      judgement.b = static_cast<long>(term);
    }
  }
}

void JudgeGear(Judgement& judgement, const TypedMachine& machine) {
  const int digits = std::atoi(machine.resolution.c_str());
  const Gear gear = GearOf(machine);
  if (gear.a < 1) {
    judgement.words.push_back("A is less than 1.  A must be within the range from 1 to 65535.");
    return;
  }
  const double quotient = gear.b / gear.a;
  for (const double edge : {0.01, 100.0}) {
    if (std::fabs(quotient / edge - 1) < 1e-6) Doubt(judgement, "a ratio at its very limit");
  }
  RangeOf(judgement, quotient, digits);
  if (quotient < 0.01 || quotient > 100) {
    judgement.words.push_back(
        std::string(kOutside) + " Resolution for described system must be within the range from " +
        std::to_string(judgement.low) + " to " + std::to_string(judgement.high) + ".");
    if (judgement.high < 0) Doubt(judgement, "no resolution fits, and the range ends below 0");
    return;
  }
  if (gear.onTheVerge) Doubt(judgement, "a term between two texts");
  if (gear.a <= kMostTerm && gear.b <= kMostTerm && gear.whole) {
    judgement.a = static_cast<long>(gear.a);
    judgement.b = static_cast<long>(gear.b);
  } else {
    Reduce(judgement, gear);
  }
}

// ---- the records

std::string ChecksumOf(const std::string& text) {
  std::uint64_t hash = 14695981039346656037U;
  for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
  return Padded(std::to_string(hash % 9999999999999999U + 1), 16);
}

void FillRecords(Judgement& judgement, const TypedMachine& machine) {
  const auto plain = [](const std::string& text) {
    return std::to_string(std::atol(text.c_str()));
  };
  const auto bits =
      std::bit_cast<std::uint32_t>(static_cast<float>(std::atof(machine.measure.c_str())));
  const std::string measure = Padded(std::to_string(bits), 16);
  const std::string selections = std::to_string(IndexIn(machine.encoder, kEncoders.data(), 3)) +
                                 std::to_string(machine.system) +
                                 (machine.time == "minutes" ? "1" : "0") +
                                 std::to_string(IndexIn(machine.units, kUnits.data(), 6));
  const std::string checksum =
      ChecksumOf(plain(machine.n1) + "|" + plain(machine.n2) + "|" + plain(machine.resolution) +
                 "|" + measure + "|" + selections);
  judgement.records = {
      {"Pn202", std::to_string(judgement.b)}, {"Pn203", std::to_string(judgement.a)},
      {"Pn82B", plain(machine.n1)},           {"Pn82C", plain(machine.n2)},
      {"Pn82D", plain(machine.resolution)},   {"Pn82E", selections},
      {"Pn82F", measure.substr(0, 8)},        {"Pn830", measure.substr(8)},
      {"Pn829", checksum.substr(0, 8)},       {"Pn82A", checksum.substr(8)}};
}

}  // namespace

std::string SystemName(int system) {
  return kSystems.at(static_cast<std::size_t>(system));
}

std::vector<std::string> TypedMachine::Assignments() const {
  return {
      "system=" + SystemName(system), "measure=" + measure, "n1=" + n1,     "n2=" + n2,
      "resolution=" + resolution,     "units=" + units,     "time=" + time, "encoder=" + encoder};
}

std::string TypedMachine::Text() const {
  std::string text;
  for (const std::string& word : Assignments()) text += (text.empty() ? "" : " ") + word;
  return text;
}

Judgement Judge(const TypedMachine& machine) {
  Judgement judgement;
  JudgeCells(judgement, machine);
  const bool cellsFit = judgement.words.empty() || judgement.words.front().starts_with("Selected");
  if (cellsFit) JudgeGear(judgement, machine);
  judgement.valid = judgement.words.empty();
  if (judgement.valid) FillRecords(judgement, machine);
  return judgement;
}

double MultiplierOf(const TypedMachine& machine) {
  // Both of a diameter: pi, as a double has it.
  return machine.system == 1 || machine.system == 2 ? 3.14159265358979323846 : 1.0;
}

// ---- what becomes of the other rows

namespace {

// One least step below a whole turn, and 0; or, for a straight axis, as far as counts reach.
ExpectedRow TravelLimit(const std::string& pn, const TypedMachine& machine) {
  const int digits = std::atoi(machine.resolution.c_str());
  const long double scale = powl(10, digits);
  if (!IsRotary(machine.system)) {
    const long count = pn == "Pn81B" ? 99999999 : -99999999;
    return {{Fixed(count / scale, digits)}, std::to_string(count)};
  }
  if (pn == "Pn81C") return {{Rounded("0", digits)}, "0"};
  const float length = static_cast<float>(std::atof(machine.measure.c_str()));
  const long double turn = rintl(static_cast<long double>(length) * scale);
  // A turn of less than one step, or of more than the counts reach, has no such limit.
  if (turn < 2 || turn > 99999998) return {};
  // The 32-bit length may end in digits that were never typed: either reading is right.
  const std::string wide = Fixed(static_cast<long double>(length) - 1 / scale, digits);
  const std::string typed = Fixed(Number(machine.measure).value_or(0) - 1 / scale, digits);
  if (wide == typed) return {{wide}, Fixed(CountsOf(wide, scale), 0)};
  return {{wide, typed}, ""};
}

}  // namespace

ExpectedRow AfterChange(const std::string& pn, const UnitRow& row, const TypedMachine& before,
                        const TypedMachine& after, long low, long high) {
  const bool resolution = before.resolution != after.resolution;
  const bool rescaled = resolution || before.time != after.time;
  const bool system = before.system != after.system;
  const bool measure = before.measure != after.measure;
  if (pn == "Pn81B" || pn == "Pn81C") {
    const bool follows = IsRotary(before.system) != IsRotary(after.system) ||
                         (IsRotary(after.system) && (measure || resolution)) ||
                         (system && resolution);
    if (follows) return TravelLimit(pn, after);
  }
  // Two rules speak about these rows then; what they hold has to agree, and nothing more.
  if (system && resolution) return {};
  if (!rescaled) return {{row.text}, row.count};
  const int digits = std::atoi(after.resolution.c_str());
  const long double factor = FactorFor(KindOf(pn), digits, after.time);
  const std::string text = Rounded(row.text, digits);
  const long double count = CountsOf(text, factor);
  const long double limited = count < low ? low : count > high ? high : count;
  const bool tie = fabsl(fabsl(Number(text).value_or(0) * factor - count) - 0.5L) < 1e-9L;
  return {{limited == count ? text : Fixed(limited / factor, digits)},
          tie ? std::string() : Fixed(limited, 0)};
}

}  // namespace velmoor::walk
