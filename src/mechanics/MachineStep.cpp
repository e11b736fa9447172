#include "mechanics/MachineStep.h"

#include <optional>

#include "platform/Numbers.h"

namespace velmoor {
namespace {

bool BeginsWith(const std::string& text, std::string_view lowerCase) {
  return LowerCase(Left(text, lowerCase.size())) == lowerCase;
}

bool IsTravelLimit(const std::string& strPn) {
  return strPn == "Pn81B" || strPn == "Pn81C";
}

Tool OwnerOf(const std::string& strPn) {
  if (strPn == "Pn81D" || (strPn >= "Pn825" && strPn <= "Pn828")) return Tool::homing;
  if (strPn == "Pn81A" || IsTravelLimit(strPn)) return Tool::overTravel;
  return Tool::editor;
}

class Step {
 public:
  Step(const ParameterStore& store, const MachineChange& change)
      : store_(store),
        change_(change),
        from_(DescribeMachine(store)),
        before_(store.PresentUnits()),
        after_(change.to.ShownUnits()) {}

  ParameterStep Run() {
    result_.changes = DescriptionChanges(store_, change_);
    for (int place = 0; place < store_.Count(); ++place) {
      const Parameter& parameter = store_.At(place);
      if (parameter.blank) continue;
      if (parameter.Pn() == "Pn81A") CarryAxisKind(parameter);
      if (parameter.unit) Carry(parameter);
    }
    return std::move(result_);
  }

 private:
  enum class Why { numberStays, follows, typed };

  [[nodiscard]] const Machine& To() const { return change_.to.machine; }
  [[nodiscard]] bool IsRotary() const { return To().system == kRotaryTable; }
  [[nodiscard]] bool WasRotary() const { return from_.machine.system == kRotaryTable; }
  // The limits of a turning axis are one turn, whatever they were; an axis that no longer turns
  // goes back to the catalogue's limits, not to what the user had typed: intended.
  [[nodiscard]] bool TravelFollows() const {
    if (IsRotary() != WasRotary()) return true;
    return IsRotary() &&
           (To().length != from_.machine.length || To().resolution != from_.machine.resolution);
  }

  void Carry(const Parameter& parameter) {
    const std::string& strPn = parameter.Pn();
    const auto typed = change_.typed.find(strPn);
    if (typed != change_.typed.end()) return Take(parameter, Places(typed->second), Why::typed);
    if (IsTravelLimit(strPn) && TravelFollows()) return FollowTravel(parameter);
    if (IsTravelLimit(strPn) && DiscardsData(from_, change_.to)) return Reset(parameter);
    // The number stays, and what it means to the amplifier changes.
    if (!before_.SameScale(after_)) {
      Take(parameter, Places(parameter.text), Why::numberStays);
    }
  }

  [[nodiscard]] std::string Places(const std::string& number) const {
    return FixedText(std::string_view(number), after_.resolution);
  }

  void CarryAxisKind(const Parameter& parameter) {
    if (!TravelFollows()) return;
    const std::string kind(Trim(parameter.text));
    if (IsRotary() && (kind.empty() || BeginsWith(kind, "linear"))) {
      Take(parameter, "Rotary(Shortest Path)", Why::follows);
    } else if (!IsRotary() && (kind.empty() || BeginsWith(kind, "rotary"))) {
      Take(parameter, "Linear", Why::follows);
    }
  }

  void FollowTravel(const Parameter& parameter) {
    if (!IsRotary()) return Reset(parameter);
    // The positive limit is one least step below a whole turn.
    const double turn = static_cast<double>(To().length) - PowerOfTen(-To().resolution);
    const std::string text = FixedText(parameter.Pn() == "Pn81B" ? turn : 0.0, To().resolution);
    // A limit that is equal as a number stays as it is, and clean.
    if (before_.SameScale(after_) && ParseFloat(parameter.text) == ParseFloat(text)) return;
    Take(parameter, text, Why::follows);
  }

  void Reset(const Parameter& parameter) {
    const std::string counts = NumberText(Int32FromCell(parameter.definition.initial_value));
    Put(parameter, {true, false, counts, ShownText(parameter, counts, after_)}, std::nullopt);
  }

  void Take(const Parameter& parameter, const std::string& text, Why why) {
    const MeantValue meant = ValueMeant(parameter, text, after_);
    if (!meant.valid) {
      throw NumberError("The value of " + parameter.Pn() + " is none: " + parameter.text);
    }
    if (meant.limited) result_.limited.emplace(parameter.Pn(), OwnerOf(parameter.Pn()));
    const bool kept = why == Why::numberStays && !meant.limited;
    Put(parameter, meant, kept ? ParseFloat(text) : std::nullopt,
        why == Why::typed && !meant.limited);
  }

  // `number` is the one that stays; without one there is no rounding to tell of.
  void Put(const Parameter& parameter, const MeantValue& meant, std::optional<double> number,
           bool silent = false) {
    const bool moved = meant.controller != parameter.controller;
    if (!moved && meant.text == parameter.text) return;
    result_.changes[parameter.Pn()] = {meant.controller, meant.text,
                                       moved ? MarkChange::set : MarkChange::keep,
                                       OwnerOf(parameter.Pn())};
    if (silent) return;
    std::string error;
    if (parameter.unit && number) {
      error =
          FixedText(Int32FromText(meant.controller) - *number * after_.Factor(*parameter.unit), 3);
    }
    result_.values.push_back({parameter.Pn() + " " + parameter.definition.parameter_name,
                              parameter.text, meant.text, parameter.controller, meant.controller,
                              error});
  }

  const ParameterStore& store_;
  const MachineChange& change_;
  MachineDescription from_;
  Units before_, after_;
  ParameterStep result_;
};

}  // namespace

void KeepNumbers(const ParameterStore& store, const Units& after, ParameterChanges& changes,
                 std::map<std::string, Tool>& limited) {
  if (store.PresentUnits().SameScale(after)) return;
  for (int place = 0; place < store.Count(); ++place) {
    const Parameter& parameter = store.At(place);
    if (!parameter.unit || parameter.blank || changes.contains(parameter.Pn())) continue;
    const std::string text = FixedText(std::string_view(parameter.text), after.resolution);
    const MeantValue meant = ValueMeant(parameter, text, after);
    const Tool owner = OwnerOf(parameter.Pn());
    const bool moved = meant.controller != parameter.controller;
    if (meant.limited) limited.emplace(parameter.Pn(), owner);
    changes[parameter.Pn()] = {meant.controller, meant.text,
                               moved ? MarkChange::set : MarkChange::keep, owner};
  }
}

bool DiscardsData(const MachineDescription& from, const MachineDescription& to) {
  return from.machine.system != to.machine.system &&
         from.machine.resolution != to.machine.resolution;
}

ParameterStep StepParameters(const ParameterStore& store, const MachineChange& change) {
  return Step(store, change).Run();
}

}  // namespace velmoor
