// What a row of parameters tells, as windows, reports and tests ask for it.
#pragma once

namespace velmoor {

enum class Column {
  category = 1,
  name,         // "Pn803", the key of a row
  description,  // shown text; units are appended at run time
  value,        // display form: a list item's text, or a number in user units
  minimum,
  maximum,
  initial,  // a list row's is the index of the item, from 0
  unit,     // "distance", "speed" and "acceleration" select a conversion
  listKey,  // key into the combo lists; 0 or empty: no list
  list,     // the list's items joined by "|"
  dirty,    // "1": changed and not yet sent
  size,
};

}  // namespace velmoor
