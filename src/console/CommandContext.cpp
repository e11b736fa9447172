#include "console/CommandContext.h"

#include <algorithm>

#include <ostream>

#include "console/ConsoleBoxes.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "project/data/MotorLimits.h"

namespace velmoor {

Work::Work(const Context& context)
    : session_(context.program.port, context.program.err, context.program.progress,
               context.program.ends),
      boxes_(context.program.boxes),
      newer_(context.line.Has("read-only") ? NewerProject::readOnly : NewerProject::refuse) {
  if (const auto axis = context.line.Value("axis")) {
    session_.SetAxis(*axis);
    if (session_.Axis() != UpperCase(Trim(*axis))) {
      throw UsageError("Option --axis needs one hexadecimal digit");
    }
  }
  if (const auto device = context.line.Value("port")) {
    context.program.setDevice(context.program.port, *device);
  }
  if (const auto given = context.line.Value("motor-size")) {
    givenSize_ = CheckedMotorSize(*given);
    if (givenSize_.empty()) {
      throw UsageError("Option --motor-size needs a whole number of watts from 1 to 65535");
    }
  }
  started_ = session_.Start(givenSize_.empty() ? session_.LastMotorSize() : givenSize_);
}

bool Work::Open(const std::string& fileName) {
  if (!started_ || !session_.Open(fileName, newer_, givenSize_)) return false;
  boxes_.TakeAsRemarks();
  return true;
}

bool Work::Save() {
  const std::string concern = project().SaveConcern();
  if (!concern.empty() && !AskExclamationYesNo(concern + "\r\rDo you wish to save all the same?")) {
    ShowExclamation("Nothing was saved.  Say --yes to agree.");
    return false;
  }
  project().Save();
  return true;
}

std::vector<std::string> SplitAtCommas(std::string_view list) {
  std::vector<std::string> items;
  for (std::size_t begin = 0; begin <= list.size();) {
    const std::size_t end = std::min(list.find(',', begin), list.size());
    items.emplace_back(list.substr(begin, end - begin));
    begin = end + 1;
  }
  return items;
}

void TellFaults(const Context& context, const std::vector<std::string>& faults) {
  for (const std::string& fault : faults) context.program.err << VisibleLines(fault) << '\n';
}

void RequireAgreement(const Context& context) {
  if (!context.line.Has("yes")) {
    throw UsageError("This overwrites data: say --yes to agree");
  }
  context.program.boxes.Agree(true);
}

}  // namespace velmoor
