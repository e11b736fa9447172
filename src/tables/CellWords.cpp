#include "tables/CellWords.h"

#include "platform/Numbers.h"
#include "tables/CellRules.h"
#include "tables/ProgrammePath.h"
#include "tables/clsHX7Position.h"

namespace velmoor {
namespace {

std::string MoveInWords(const Project& project, const std::string& text) {
  if (text == "+INFINITE") return "Runs forward without end, at the speed of this step";
  if (text == "-INFINITE") return "Runs in reverse without end, at the speed of this step";
  if (text == "STOP") return "Stops the axis";
  if (text == "-") return "No move";
  if (text.size() < 2) return {};
  const std::string distance = text.substr(1) + " " + project.DistanceUnits();
  if (text[0] == 'A') return "Moves to the position " + distance;
  return text[0] == 'I' ? "Moves by " + distance + " from where the axis stands" : std::string();
}

std::string OutputInWords(char state) {
  switch (state) {
    case 'A':
      return "on";
    case 'N':
      return "off";
    case 'Z':
      return "zone signal";
    default:
      return "as it was";
  }
}

std::string OutputsInWords(const std::string& text) {
  if (!CheckOutputs(text).accepted) return {};
  std::string words;
  for (std::size_t output = 0; output < text.size(); ++output) {
    words +=
        (output == 0 ? "POUT" : ", POUT") + NumberText(output) + " " + OutputInWords(text[output]);
  }
  return words;
}

std::string WaitInWords(const std::string& word) {
  if (word == "I") return "Until the axis is in position";
  if (word == "N") return "Until the axis is near its position";
  if (word == "D") return "Until the commanded move has ended";
  if (word == ":") return "The event of the step before";
  return word.starts_with("SEL") ? "Until input " + word + " is set" : std::string();
}

std::string EventInWords(const std::string& text) {
  if (!CheckEvent(text).accepted) return {};
  const std::string wait = WaitInWords(EventWord(text));
  const std::string time = NumberText(EventTime(text)) + " ms";
  if (wait.empty()) return "After " + time;
  return EventTime(text) > 0 ? wait + ", then " + time : wait;
}

}  // namespace

std::string CellInWords(const Project& project, int column, const std::string& text) {
  if (text.empty()) return {};
  switch (column) {
    case clsHX7Position::position:
      return MoveInWords(project, text);
    case clsHX7Position::registrationDistance:
      return text == "-" ? "No registration move" : std::string();
    case clsHX7Position::outputs:
      return OutputsInWords(text);
    case clsHX7Position::event:
      return EventInWords(text);
    case clsHX7Position::next:
      return text == "END" ? "The programme ends here" : "Goes on with the step of that label";
    default:
      return {};
  }
}

}  // namespace velmoor
