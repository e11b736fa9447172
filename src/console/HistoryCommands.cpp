#include "console/HistoryCommands.h"

#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "operations/TransferHistory.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "project/ProjectCompare.h"

namespace velmoor {
namespace {

// What the amplifier held: read for this entry, or what was sent last.
std::string KnownWord(const HistoryEntry& entry) {
  if (entry.before.empty()) return "unknown";
  return entry.read || entry.upload ? "read" : "sent";
}

void PrintEntries(const Context& context, const TransferHistory& history) {
  TableOut table(
      context, CsvRow{"entry", "moment", "axis", "transfer", "parts", "result", "cause", "before"});
  for (const HistoryEntry& entry : history.Entries()) {
    table.Row({NumberText(entry.number), entry.moment, entry.axis, entry.name, PartsOf(entry),
               ResultOf(entry), entry.cause, KnownWord(entry)});
  }
}

// The entry that the command line names. Throws UsageError.
const HistoryEntry& EntryNamed(const TransferHistory& history, const std::string& word) {
  const auto number = ParseWhole(word);
  const HistoryEntry* const entry = number ? history.Find(static_cast<int>(*number)) : nullptr;
  if (entry == nullptr) throw UsageError("The history has no entry '" + word + "'");
  return *entry;
}

bool PrintChanges(const Context& context, const TransferHistory& history,
                  const HistoryEntry& entry) {
  if (entry.before.empty() || entry.after.empty()) {
    ShowExclamation("What entry " + NumberText(entry.number) + " has changed is not known.");
    return false;
  }
  TableOut table(context, CsvRow{"part", "row", "field", "before", "after"});
  for (const PartComparison& part :
       CompareProjects(history.PathOf(entry.before), history.PathOf(entry.after))) {
    for (const ProjectDifference& d : part.differences) {
      table.Row({d.part, d.row, d.field, d.first, d.second});
    }
  }
  return true;
}

bool History(const Context& context) {
  const TransferHistory history(world().files->Absolute(context.Argument(1)));
  if (context.line.Arguments().size() < 3) {
    PrintEntries(context, history);
    return true;
  }
  return PrintChanges(context, history, EntryNamed(history, context.Argument(2)));
}

bool Restore(const Context& context) {
  (void)context.line.Required("port");
  RequireAgreement(context);
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  const TransferHistory history(work.project().FileName());
  const HistoryEntry& entry = EntryNamed(history, context.Argument(2));
  Transfers& transfers = work.session().Hardware().transfers;
  transfers.SetVerify(context.line.Has("verify"));
  // What an upload has read is what the amplifier held.
  return transfers.Restore(entry, entry.upload || context.line.Has("after"));
}

}  // namespace

Commands HistoryCommands() {
  const ArgumentEntry file = FileArgument();
  return {
      {{"history",
        "print what was sent and read, or what one entry has changed",
        {file, {.value = {"ENTRY"}, .required = false}},
        {"json"}},
       History},
      {{"restore",
        "send what the amplifier held before an entry of the history",
        {file, {.value = {"ENTRY"}}},
        {"port", "axis", "motor-size", "yes", "after", "verify"}},
       Restore},
  };
}

}  // namespace velmoor
