// The verdict on an edited cell, shared by windows, paste, import and the console program.
#pragma once

#include <string>
#include <utility>

namespace velmoor {

struct CellCheck {
  bool accepted = false;
  std::string text;   // accepted: what the cell takes
  std::string words;  // refused: why; empty for an edit that is dropped without a word

  static CellCheck Accept(std::string text) { return {true, std::move(text), {}}; }
  static CellCheck Refuse(std::string words) { return {false, {}, std::move(words)}; }
};

}  // namespace velmoor
