#include "console/RecordingCommands.h"

#include <algorithm>

#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "plant/LineWatcher.h"
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

// Of a project, of a line file's watch, or of the folder that a watch keeps.
RecordingFolder FolderNamed(const std::string& name) {
  const std::string path = world().files->Absolute(name);
  if (!world().files->Exists(path)) {
    const std::string kept = WatchRecordings(path);
    if (world().files->NamesIn(kept).empty()) {
      throw FileError(path + ": there is no such project, and no watch has recorded there");
    }
    return {kept, path};
  }
  if (!path.ends_with(".toml")) return RecordingFolder(path);
  return {WatchRecordings(WatchFolder(path, ReadLineFile(path).watch)), path};
}

bool Recordings(const Context& context) {
  const RecordingFolder folder = FolderNamed(context.Argument(1));
  if (context.line.Arguments().size() < 3) return PrintList(context, folder);
  const std::string& name = context.Argument(2);
  const auto names = folder.Names();
  if (std::ranges::find(names, name) == names.end()) {
    throw UsageError("There is no recording '" + name + "'");
  }
  PrintFigures(context, ReadRecording(folder.PathOf(name)));
  return true;
}

}  // namespace

Commands RecordingCommands() {
  return {{{"recordings",
            "print what was recorded, or the figures of one recording; FILE is a project, a line "
            "file or the folder of its watch",
            {FileArgument(), {.value = {"NAME"}, .required = false}},
            {"json"}},
           Recordings}};
}

}  // namespace velmoor
