// One parameter of the project: what it is, and its one value in the two forms that it has.
//
// The controller form is the value: a count, a whole number, digits, an item's index, just as it
// goes to the amplifier. The text is how it is shown; what was typed stays as it was typed for as
// long as it means that value.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "project/data/ParameterCatalogue.h"
#include "project/data/Units.h"
#include "session/Tools.h"

namespace velmoor {

// How a value is written and read.
enum class ValueForm {
  number,  // a whole number, shown as it is
  units,   // counts, shown in units of the machine
  list,    // the index of an item, shown by the item's text
  digits,  // four hexadecimal digits
  halves,  // eight decimal digits, half of a longer number
};

// What is known of the amplifier's copy of a value in this session.
struct AmplifierCopy {
  enum class State { untold, unknown, held };
  State state = State::untold;  // untold: as the project's file says
  std::string value;            // held: the last one that it has acknowledged
};

struct Parameter {
  ParameterDefinition definition;
  ValueForm form = ValueForm::number;
  std::optional<UnitKind> unit;  // of the form `units`
  std::string list;              // of the form `list`: items joined by "|"
  const NibbleDefinition* nibble = nullptr;

  std::string controller;
  std::string text;
  // The tool whose change of it the amplifier does not have; nothing: the amplifier has the value.
  std::optional<Tool> markedBy;
  bool passedOver = false;  // marked, but the connected option card does not have it
  bool recorded = true;     // the file has a record of it
  bool blank = false;  // its record holds no value: it is shown by its initial one, and not sent
  AmplifierCopy amplifier;
  // What the amplifier held when it was asked last in this session, in the controller's form; it is
  // shown, and nothing relies on it, since anybody may write to the amplifier.
  std::optional<std::string> seen;

  [[nodiscard]] const std::string& Pn() const { return definition.user_constant; }
  [[nodiscard]] bool IsMarked() const { return markedBy.has_value(); }
};

// The limits of a form that counts, in the controller's form. Throws NumberError where the
// catalogue has none.
struct ValueLimits {
  std::int32_t low, high;
};
[[nodiscard]] ValueLimits LimitsOf(const Parameter& parameter);

// The text that shows a value in the controller's form. Throws NumberError for a value that is none
// of its form.
[[nodiscard]] std::string ShownText(const Parameter& parameter, const std::string& controller,
                                    const Units& units);

// A text as the value that it means. A number in units beyond the limits becomes the limit, and the
// text follows.
struct MeantValue {
  bool valid = false;  // the text is a value of that form
  bool limited = false;
  std::string controller;
  std::string text;
};
[[nodiscard]] MeantValue ValueMeant(const Parameter& parameter, const std::string& text,
                                    const Units& units);

// A controller's form as it stands in a file or an answer, in its plain spelling: "0010" reads "10"
// for a count, digits and halves are cut to their length. Throws NumberError for what is none.
[[nodiscard]] std::string PlainController(const Parameter& parameter, const std::string& raw);

// What of a value in the controller's form counts in a comparison: the axis digit of Pn000 comes
// from the connection.
[[nodiscard]] std::string ComparedForm(std::string_view strPn, std::string controller);

// The parameters that no tool ever sends.
[[nodiscard]] bool IsNeverSent(std::string_view strPn);
// Inputs that exist from version 3 of the option card on.
[[nodiscard]] bool NeedsNewOptionVersion(std::string_view strPn);
// The eight parameters with which the card's own memory describes the machine.
[[nodiscard]] bool IsMechSystemPn(std::string_view strPn);

}  // namespace velmoor
