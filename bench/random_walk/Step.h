// What a user does, one act a step, in words that can be read and replayed.
//
//   open W                     one of the windows below; ok W, apply W and cancel W leave it
//   edit W ROW COLUMN TEXT     a cell: ROW is a parameter's name or a table's row from 1
//   limit W ROW low|high       types the limit that the row's tip tells
//   paste W ROW COLUMN TEXT    a text from elsewhere, at that cell
//   undo W, redo W             from the Edit menu, or by the keys where a window blocks it
//   system NAME, encoder N     in the machine's window
//   notch on|off, frequency TEXT   in the tuning window
//   save, reopen save|discard  the project
//   download ITEM FAULT N, upload ITEM commit|refuse FAULT N, compare
//                              ITEM ends a command of the Tools menu; FAULT at exchange N, or none
//   power                      the amplifier goes off and on
//   break N                    the write number N to the project's file from now on fails
//
// A last word "!no" answers every question of the step by No.
#pragma once

#include <string>
#include <vector>

namespace velmoor::walk {

struct Step {
  std::vector<std::string> words;

  [[nodiscard]] const std::string& Verb() const { return words.front(); }
  // Empty where the step has no such word.
  [[nodiscard]] std::string Word(std::size_t at) const {
    return at < words.size() ? words[at] : std::string();
  }
  [[nodiscard]] bool Refuses() const { return words.back() == "!no"; }
};

[[nodiscard]] std::string TextOf(const Step& step);
[[nodiscard]] std::string TextOf(const std::vector<Step>& steps);
// The steps of a text, one a line; empty lines and those that begin with "#" are none.
[[nodiscard]] std::vector<Step> ParseSteps(const std::string& text);

}  // namespace velmoor::walk
