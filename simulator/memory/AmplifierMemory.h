// What the simulated amplifier remembers: parameters and tables.
//
// Parameters are stored the moment they are written. The tables exist twice: the working copy,
// which a write changes, and the stored one, which a store command fills and a restart loads.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>

#include "simulator/memory/FactoryValues.h"

namespace velmoor {

inline constexpr std::size_t kIndexRows = 128;
inline constexpr std::size_t kZoneRows = 32;
inline constexpr std::size_t kJogRows = 16;

using IndexTable = std::array<std::array<std::string, 8>, kIndexRows>;
using ZoneTable = std::array<std::array<std::string, 2>, kZoneRows>;
using JogTable = std::array<std::string, kJogRows>;

template <typename Table>
struct StoredTable {
  Table working{};
  Table stored{};

  void Store() { stored = working; }
  void Load() { working = stored; }
  void Init() { working = stored = Table{}; }
};

class ParameterMemory {
 public:
  ParameterMemory() { Init(); }
  // All to their factory values.
  void Init();
  // The value in its form on the wire: eight places, a sign only where it is negative. Nothing for
  // a number that no parameter has.
  [[nodiscard]] std::optional<std::string> Read(std::uint32_t pn) const;
  // False, with nothing changed, for an unknown number, a text that is no value, or a value outside
  // its limits.
  bool Write(std::uint32_t pn, std::string_view text);
  // The plain number; 0 for an unknown parameter.
  [[nodiscard]] std::int64_t Value(std::uint32_t pn) const;

 private:
  struct Cell {
    const FactoryValue* factory;
    std::int64_t value;
  };
  std::map<std::uint32_t, Cell> cells_;
};

struct AmplifierMemory {
  ParameterMemory parameters;
  StoredTable<IndexTable> index;
  StoredTable<ZoneTable> zones;
  StoredTable<JogTable> jog;
};

}  // namespace velmoor
