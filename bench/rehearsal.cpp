// The rehearsal: how much faster than the axis it is, and how well it agrees with the same
// programmes run live on the simulated amplifier at the end of a paced line.
#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <vector>

#include "PacedLine.h"
#include "RehearsalProgrammes.h"
#include "platform/Files.h"
#include "platform/Numbers.h"
#include "platform/Rx900Utils.h"
#include "rehearsal/Rehearsal.h"
#include "tables/TableCsv.h"

namespace velmoor::bench {
namespace {

constexpr std::int32_t kRate = 38400;
constexpr Unit kPercent{"%", 100};
constexpr Unit kCounts{"counts", 1};
constexpr const char* kLoad = "300";  // %, that the simulated machine has

void Put(clsHX7Project& project, const std::string& rows) {
  Require(ImportCsv(project, project.Position(), kRehearsedHead + rows).empty() &&
              project.Position().ChangeAccepted(),
          "the storing of a programme");
}

void PutValue(clsHX7Project& project, const std::string& pn, const std::string& value) {
  clsHX7Editor& editor = project.Editor();
  editor.EditValue(editor.FindRow(pn), value);
  Require(editor.AcceptEdits(), "the storing of " + pn);
}

std::string NewProject(Workbench& bench) {
  std::string path = bench.folder / "rehearsed.spj";
  world().files->ReplaceDurably(JoinPath(world().appDirectory, "Velmoor.spt"), path);
  return path;
}

RehearsalResult Rehearsed(clsHX7Project& project) {
  return Rehearse(project, {}, [](const RehearsalSample&) {});
}

// Samples are seconds of the machine for a second of the axis.
void MeasureSpeed(Workbench& bench, clsHX7Project& project) {
  Figure figure{"A second of the axis, rehearsed", kMilliseconds, {}, Goal{10}, {}};
  for (const RehearsedCase& each : kRehearsedCases) {
    Put(project, each.rows);
    const Stopwatch watch;
    const RehearsalResult result = Rehearsed(project);
    figure.samples.push_back(watch.Seconds() / result.seconds);
  }
  bench.table.Add(figure);
}

class LiveAxis {
 public:
  explicit LiveAxis(SerialPort& port) : port_(port) {}

  struct Seen {
    double seconds = 0;  // of the programme
    double error = 0;    // counts, the largest
    std::int64_t position = 0;
  };
  [[nodiscard]] Seen RunProgramme() {
    Do("SVON");
    Do("START");
    Seen seen;
    const Stopwatch watch;
    do {
      seen.error = std::max(seen.error, std::abs(static_cast<double>(Number("PER"))));
    } while (Runs());
    seen.seconds = watch.Seconds();
    do {
      seen.position = Number("PUN");
    } while (Number("NFB") != 0 || Number("PUN") != seen.position);
    Do("SVOFF");
    return seen;
  }
  void Do(const std::string& word) { Require(Answer(word) == "0OK", word); }

 private:
  // Behind the echo.
  std::string Answer(const std::string& word) {
    port_.WriteLine("0" + word);
    (void)port_.ReadLine();
    return port_.ReadLine();
  }
  std::int64_t Number(const std::string& word) {
    const auto number = ParseWhole(Answer(word).substr(word.size() + 2));
    Require(number.has_value(), word);
    return *number;
  }
  // Bit 4 of the status, whose bit 0 comes last.
  bool Runs() {
    const std::string answer = Answer("STS");
    Require(answer.size() > 5, "STS");
    return answer[answer.size() - 5] == '1';
  }

  SerialPort& port_;
};

void MeasureAgreement(Workbench& bench, const std::string& path) {
  PacedLine line(bench.folder, kRate);
  ConsoleSession session(line.Port(), std::cerr);
  session.SetBaudRate(kRate);
  Open(session, path);
  GoOnline(session);
  clsHX7Project& project = session.project();
  PutValue(project, "Pn801", NumberText(kRate));
  PutValue(project, "Pn103", kLoad);
  Require(project.DownloadAll(), "the download of the project");
  Require(session.Hardware().connection.AwaitRestart({}).found, "finding the amplifier again");
  LiveAxis axis(line.Port());
  const auto off = [](const char* what, Unit unit, double most) {
    return Figure{
        std::string("Live from rehearsed, ") + what, unit, {}, Goal{most, Goal::Of::worst}, {}};
  };
  Figure time = off("time", kPercent, 2);
  Figure error = off("largest error", kPercent, 5);
  Figure place = off("end", kCounts, 1);
  for (const RehearsedCase& each : kRehearsedCases) {
    Put(project, each.rows);
    const RehearsalResult rehearsed = Rehearsed(project);
    Require(project.Position().Download(false), "the download of a programme");
    axis.Do("PGMSTORE");
    project.Position().ConfirmStored();
    axis.Do("RES");
    Require(session.Hardware().connection.AwaitRestart({}).found, "finding the amplifier again");
    const LiveAxis::Seen seen = axis.RunProgramme();
    time.samples.push_back(std::abs(seen.seconds / rehearsed.seconds - 1));
    const double largest =
        std::ranges::max(rehearsed.steps, {}, &RehearsedStep::largestError).largestError;
    // Where nothing moves there is none.
    error.samples.push_back(std::abs(seen.error - largest) / std::max(largest, 1.0));
    place.samples.push_back(
        std::abs(static_cast<double>(seen.position - rehearsed.steps.back().endPosition)));
  }
  bench.table.Add(time);
  bench.table.Add(error);
  bench.table.Add(place);
}

}  // namespace

void MeasureRehearsal(Workbench& bench) {
  const std::string path = NewProject(bench);
  {
    PacedLine line(bench.folder, kRate);
    ConsoleSession session(line.Port(), std::cerr);
    Open(session, path);
    MeasureSpeed(bench, session.project());
  }
  MeasureAgreement(bench, path);
}

}  // namespace velmoor::bench
