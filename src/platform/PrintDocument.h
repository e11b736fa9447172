// A document as it is to be printed: what stands in it, without any measure. Whoever sets its pages
// decides about fonts' sizes, columns' widths and breaks.
#pragma once

#include <string>
#include <vector>

#include "platform/Events.h"

namespace velmoor {

struct PrintCell {
  std::string text;
  // Numbers of a column stand with their decimal points below each other, other texts at its left.
  bool number = false;
  bool operator==(const PrintCell&) const = default;
};

// One table. Its headings are repeated on each page that it reaches.
struct PrintSection {
  std::string name;  // of the place that it fills, "srptIndex"
  std::string title;
  std::string note;  // a sentence below the title; may be empty
  std::string font;  // family
  bool newPage = false;
  std::vector<std::string> headings;
  std::vector<std::vector<PrintCell>> rows;  // as many cells each as there are headings
};

// "Machine", "Ball Screw".
struct PrintFact {
  std::string label, text;
  bool operator==(const PrintFact&) const = default;
};

struct PrintDocument {
  std::string title, subtitle;   // on the first page
  std::vector<PrintFact> facts;  // below them
  std::vector<std::string>
      signatures;           // below those: lines to be signed, and what stands under each
  std::string header;       // above each page
  std::string date, time;   // below each page
  std::string page, pages;  // the words around the page number: "Page #", "of #"
  std::string font;         // of all this
  WallTime moment;          // of printing
  std::vector<PrintSection> sections;
};

enum class Paper { a4, letter };

}  // namespace velmoor
