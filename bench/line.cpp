// Sixteen axes on one line: search and information, a comparison of all, and what the program keeps
// of the machine's memory while it shows them.
#include <string>
#include <utility>

#include "Desktop.h"
#include "PacedLine.h"
#include "Workbench.h"
#include "operations/LineActions.h"
#include "platform/Files.h"

namespace velmoor::bench {
namespace {

constexpr std::int32_t kRate = 38400;
constexpr std::uint32_t kAxes = 16;

class QuietBoxes final : public AgreedBoxes {
 protected:
  void Told(const std::string& /*text*/, bool /*failure*/) override {}
};

// The boxes of the host are in force for as long as it is there.
class Host final : public LineHost {
 public:
  explicit Host(ConsoleSession& session)
      : session_(session), before_(std::exchange(world().boxes, &boxes_)) {
    boxes_.Agree(true);
  }
  ~Host() override { world().boxes = before_; }
  Host(const Host&) = delete;
  Host& operator=(const Host&) = delete;

  [[nodiscard]] SessionState& Session() override { return session_; }
  [[nodiscard]] Operations& Hardware() override { return session_.Hardware(); }
  [[nodiscard]] AgreedBoxes& Boxes() override { return boxes_; }
  [[nodiscard]] bool Open(const std::string& path) override { return session_.Open(path); }
  [[nodiscard]] bool Save() override {
    session_.project().Save();
    return true;
  }
  [[nodiscard]] bool Stopped() const override { return false; }
  void AxisBegins(const LineAxis& /*axis*/, std::size_t /*number*/,
                  std::size_t /*count*/) override {}
  void AxisEnds(const LineAxis& /*axis*/, const LineResult& /*result*/) override {}

 private:
  QuietBoxes boxes_;
  ConsoleSession& session_;
  MessageBoxes* before_;
};

// Each axis has a copy of the full project.
LineFile MakeLine(Workbench& bench, const std::string& device) {
  LineFile line{.port = device, .bitsPerSecond = kRate};
  for (std::uint32_t i = 0; i < kAxes; ++i) {
    const std::string project = bench.folder / ("axis" + HexText(i) + ".spj");
    world().files->ReplaceDurably(bench.fullProject, project);
    line.axes.push_back({HexText(i), "axis " + HexText(i), project});
  }
  return line;
}

void MeasureRuns(Workbench& bench, PacedLine& paced, const LineFile& line) {
  ConsoleSession session(paced.Port(), std::cerr);
  Require(session.Start("400"), "the start of the session");
  Host host(session);
  velmoor::LineRun run(host, line, line.axes, 0);
  LineTable table;
  const auto timed = [&](const char* what, LineTable (*work)(velmoor::LineRun&)) {
    return paced.Time(what, [&] {
      table = work(run);
      return table.done && table.rows.size() == kAxes;
    });
  };
  const LineRun info = timed("Search and information of the line", ReadLineInfo);
  bench.table.Add({"Search and information of sixteen axes",
                   kSeconds,
                   {info.taken},
                   Goal{10},
                   Limit{info.limit, "wire"}});
  bench.table.Add(LineFigure("Comparison of sixteen full projects", kSeconds,
                             {timed("Comparison of the line", CompareLine)}));
}

}  // namespace

void MeasureLine(Workbench& bench) {
  PacedLine paced(bench.folder, kRate, Pace::paced, kAxes);
  const LineFile line = MakeLine(bench, paced.Device());
  MeasureRuns(bench, paced, line);
  const std::string file = bench.folder / "line.toml";
  WriteLineFile(file, line);
  // The line is the window's from here on.
  paced.Port().Close();
  Desktop shown(bench.folder, file);
  shown.WaitForLineFile();
  bench.table.Add({"velmoor, a line of sixteen axes shown",
                   kMegabytes,
                   {shown.ResidentMemory()},
                   Goal{120},
                   std::nullopt});
}

}  // namespace velmoor::bench
