#include "console/ReportCommand.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/World.h"
#include "reports/PdfFile.h"
#include "reports/rptHX7Main.h"

namespace velmoor {
namespace {

std::string SectionWords() {
  std::string words;
  for (const ReportItem& item : ReportItems()) {
    words += (words.empty() ? "" : ", ") + std::string(item.word);
  }
  return words;
}

// The sections of a list such as "index,zone"; all of them without one.
PrintItems ChosenSections(const std::optional<std::string>& list) {
  PrintItems chosen{};
  if (!list) {
    chosen.fill(true);
    return chosen;
  }
  for (const std::string& name : SplitAtCommas(*list)) {
    const std::string word = LowerCase(Trim(name));
    const auto items = ReportItems();
    const auto found = std::ranges::find(items, word, &ReportItem::word);
    if (found == items.end()) {
      throw UsageError("'" + word + "' is no section: --sections takes " + SectionWords());
    }
    chosen[static_cast<std::size_t>(found - items.begin())] = true;
  }
  return chosen;
}

Paper ChosenPaper(const CommandLine& line) {
  const std::string word = LowerCase(line.Value("paper").value_or("a4"));
  if (word == "a4") return Paper::a4;
  if (word == "letter") return Paper::letter;
  throw UsageError("'" + word + "' is no paper: --paper takes a4 or letter");
}

// The moment that SOURCE_DATE_EPOCH asks for, in universal time; nothing where it is not set.
std::optional<WallTime> MomentOfEnvironment() {
  using std::chrono::floor, std::chrono::days;
  const char* const text = std::getenv("SOURCE_DATE_EPOCH");
  if (text == nullptr || *text == '\0') return std::nullopt;
  constexpr std::int64_t kLast = 253402300799;  // the year 9999
  const auto seconds = ParseWhole(text);
  if (!seconds || *seconds < 0 || *seconds > kLast) {
    throw UsageError("SOURCE_DATE_EPOCH is no number of seconds since 1970");
  }
  const std::chrono::sys_seconds moment{std::chrono::seconds(*seconds)};
  const auto day = floor<days>(moment);
  const std::chrono::year_month_day date(day);
  const std::chrono::hh_mm_ss time(moment - day);
  return WallTime{.year = static_cast<int>(date.year()),
                  .month = static_cast<int>(static_cast<unsigned>(date.month())),
                  .day = static_cast<int>(static_cast<unsigned>(date.day())),
                  .hour = static_cast<int>(time.hours().count()),
                  .minute = static_cast<int>(time.minutes().count()),
                  .second = static_cast<int>(time.seconds().count())};
}

bool Report(const Context& context) {
  const std::string path = world().files->Absolute(context.line.Required("out"));
  (void)ChosenSections(context.line.Value("sections"));
  (void)ChosenPaper(context.line);
  (void)MomentOfEnvironment();
  Work work(context);
  return work.Open(context.Argument(1)) && WriteReport(context, work.project(), path);
}

}  // namespace

bool WriteReport(const Context& context, clsHX7Project& project, const std::string& path) {
  if (world().files->Exists(path)) RequireAgreement(context);
  const PrintItems sections = ChosenSections(context.line.Value("sections"));
  rptHX7Main report;
  report.SetProject(project);
  report.SetPrintReportItems(sections);
  report.SetPrintCount(static_cast<std::int16_t>(std::ranges::count(sections, true)));
  if (const auto moment = MomentOfEnvironment()) report.SetMoment(*moment);
  return WritePdf(project, report.Run(), ChosenPaper(context.line), path);
}

Commands ReportCommands() {
  return {{{"report",
            "make a PDF of the project, all of it or --sections",
            {FileArgument()},
            {"out", "sections", "paper", "motor-size", "read-only", "yes"}},
           Report}};
}

}  // namespace velmoor
