// What is taken from outside at most. What is beyond is refused with the reason; where it can only
// be told, it is cut. The guide names the figures (docs/guide/limits.md, which a test compares).
#pragma once

#include <cstddef>

namespace velmoor::bounds {

inline constexpr std::size_t kFile = std::size_t{4} * 1024 * 1024;  // one that is read whole
inline constexpr std::size_t kLine = 4096;  // bytes of a line of one that is read line by line

inline constexpr std::size_t kCsvRows = 1000;
inline constexpr std::size_t kCsvLine = 4096;  // bytes of a row
inline constexpr std::size_t kCsvFields = 64;  // of a row
inline constexpr std::size_t kFaultsTold = 50;
inline constexpr std::size_t kFaultText = 300;  // bytes of what is told of one fault

inline constexpr std::size_t kScriptLines = 10000;
inline constexpr std::size_t kScriptLine = 256;

inline constexpr std::size_t kSamples = 2000000;  // of a recording that is shown

inline constexpr std::size_t kSettings = std::size_t{256} * 1024;  // the file

inline constexpr std::size_t kCatalogueText = 4096;

inline constexpr std::size_t kAnswer = 512;  // one line of the amplifier
inline constexpr std::size_t kInstanceMessage = 65536;

}  // namespace velmoor::bounds
