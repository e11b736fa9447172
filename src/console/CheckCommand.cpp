#include "console/CheckCommand.h"

#include <algorithm>
#include <vector>

#include "console/CommandContext.h"
#include "console/ConsoleBoxes.h"
#include "console/TableOut.h"
#include "project/Doubts.h"

namespace velmoor {
namespace {

Keep KeepOf(const std::string& word) {
  if (word == "shown") return Keep::shown;
  if (word == "sent") return Keep::sent;
  throw UsageError("'" + word + "' is none of shown and sent");
}

// Those alone of which there are two values.
std::vector<Doubt> Answerable(const std::vector<Doubt>& doubts, Keep keep) {
  std::vector<Doubt> answerable;
  std::ranges::copy_if(doubts, std::back_inserter(answerable), [keep](const Doubt& doubt) {
    return doubt.kind == Doubt::Kind::differs && (keep == Keep::sent || doubt.shownMeans);
  });
  return answerable;
}

// False: it was not saved.
bool Settle(Work& work, Keep keep) {
  const std::vector<Doubt> answered = Answerable(work.project().Doubts(), keep);
  work.project().Settle(answered, keep);
  return answered.empty() || work.Save();
}

}  // namespace

bool Check(const Context& context) {
  const auto word = context.line.Value("keep");
  const Keep keep = word ? KeepOf(*word) : Keep::sent;
  Work work(context);
  if (!work.Open(context.Argument(1))) return false;
  context.program.boxes.Agree(context.line.Has("yes"));
  if (word && !Settle(work, keep)) return false;
  const std::vector<Doubt> doubts = work.project().Doubts();
  TableOut table(context, CsvRow{"row", "field", "doubt", "shown", "sent", "meaning", "limits"});
  for (const Doubt& doubt : doubts) {
    table.Row({doubt.place, doubt.field, std::string(WordOf(doubt.kind)), doubt.shown, doubt.sent,
               doubt.sentShown, doubt.limits});
  }
  return doubts.empty();
}

}  // namespace velmoor
