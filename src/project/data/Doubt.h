// A value of the project that nobody has answered for: its text and what would go to the amplifier
// mean two things, or what would go lies outside of its limits or has no known form. It comes from
// a file that another program has written, or from an amplifier. While one stands nothing is
// downloaded.
#pragma once

#include <cstdint>
#include <string>

#include "session/Tools.h"

namespace velmoor {

struct Doubt {
  enum class Kind : std::uint8_t { differs, outside, unknown };

  Kind kind = Kind::differs;
  Tool part = Tool::editor;  // whose download would send it
  int row = 0;               // of a table, from 1
  int column = 0;            // the same, in the order of the layout
  std::string place;         // "Pn100"; "Step 3"
  std::string field;         // "Speed"; a parameter's name
  std::string limits;        // "1 to 2000 Hz", as they are shown; empty where there are none
  std::string shown;         // the text beside it in the file; of the kind `differs`
  std::string sent;          // what would go out
  std::string sentShown;     // the text that means this
  bool shownMeans = false;   // `shown` is a value that could go out instead
};

// What a Doubt is settled by: the shown value takes the place of the other and is marked to
// download, or the one that would go out stays.
enum class Keep : std::uint8_t { shown, sent };

}  // namespace velmoor
