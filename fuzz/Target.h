// A fuzzing target: takes any bytes, and must neither crash nor break what it checks.
//
// Under the preset "fuzz" libFuzzer drives it; otherwise ReplayMain.cpp hands it its corpus.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <string_view>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace velmoor::fuzz {

inline std::string_view Text(const std::uint8_t* data, std::size_t size) {
  return {reinterpret_cast<const char*>(data), size};
}

// What the first byte chooses, from 0 to `choices` - 1; it is cut off.
inline unsigned Choose(std::string_view& text, unsigned choices) {
  if (text.empty()) return 0;
  const auto choice = static_cast<unsigned char>(text.front()) % choices;
  text.remove_prefix(1);
  return choice;
}

inline void Require(bool holds, const char* what) {
  if (holds) return;
  std::cerr << "Broken: " << what << "\n";
  std::abort();
}

}  // namespace velmoor::fuzz
