#include "console/RecordingCommands.h"

#include <algorithm>

#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "recordings/RecordingFigures.h"
#include "recordings/RecordingFolder.h"

namespace velmoor {
namespace {

// What cannot be read is told, and is a failure behind all others.
bool PrintList(const Context& context, const RecordingFolder& folder) {
  TableOut table(context, CsvRow{"recording", "moment", "axis", "began", "rate", "note"});
  bool all = true;
  for (const std::string& name : folder.Names()) {
    try {
      const RecordingHeading heading = ReadRecordingHeading(folder.PathOf(name));
      table.Row({name, heading.begun, heading.axis, heading.cause, heading.rate, heading.note});
    } catch (const FileError& error) {
      TellFaults(context, {error.what()});
      all = false;
    }
  }
  return all;
}

void PrintFigures(const Context& context, const Recording& recording) {
  TableOut table(context, CsvRow{"figure", "unit", "value"});
  for (const RecordingFigure& figure : FiguresOf(recording)) {
    table.Row({figure.name, figure.unit,
               figure.value ? FixedText(*figure.value, figure.decimals) : std::string()});
  }
}

bool Recordings(const Context& context) {
  const std::string project = world().files->Absolute(context.Argument(1));
  if (!world().files->Exists(project)) throw FileError(project + ": there is no such project");
  const RecordingFolder folder(project);
  if (context.line.Arguments().size() < 3) return PrintList(context, folder);
  const std::string& name = context.Argument(2);
  const auto names = folder.Names();
  if (std::ranges::find(names, name) == names.end()) {
    throw UsageError("The project has no recording '" + name + "'");
  }
  PrintFigures(context, ReadRecording(folder.PathOf(name)));
  return true;
}

}  // namespace

Commands RecordingCommands() {
  return {{{"recordings",
            "print what was recorded of the axis, or the figures of one recording",
            {FileArgument(), {.value = {"NAME"}, .required = false}},
            {"json"}},
           Recordings}};
}

}  // namespace velmoor
