#include "fault_campaign/Campaign.h"

#include <array>
#include <chrono>
#include <stdexcept>
#include <utility>

#include "fault_campaign/Kinds.h"
#include "fault_campaign/Program.h"
#include "platform/Numbers.h"
#include "tools/ParameterRules.h"

namespace velmoor::campaign {

namespace {

constexpr int kBytesOfAnExchange = 12;  // in either direction, about

}  // namespace

// ---- before the faults

Campaign::Campaign(Wiring& wiring, std::string folder, std::uint64_t seed)
    : wiring_(wiring), folder_(std::move(folder)), seed_(seed), random_(seed) {
  program_ = std::make_unique<Program>(wiring_.Port(), folder_);
  factoryGain_ = wiring_.Type("send PRM100");
  Prepare();
  Measure();
}

Campaign::~Campaign() = default;

int Campaign::Random(int below) {
  return static_cast<int>(random_() % static_cast<std::uint64_t>(below));
}

std::vector<FileRow> Campaign::File() const {
  return ReadRows(folder_ + "/campaign.tmp");
}

void Campaign::PowerCycle() {
  wiring_.Type("power");
  wiring_.WaitForRestart();
}

// Everything filled, everything sent; what still differs is what the program never sends.
void Campaign::Prepare() {
  clsHX7Project& project = Program::Project();
  for (int row = 1; row <= project.Position().RowsInArray(); ++row) {
    const std::string label = "step" + NumberText(row);
    const std::string next = row < 128 ? "step" + NumberText(row + 1) : "END";
    const std::array<std::string, 9> cells{
        label, "I+" + NumberText(row) + ".000", "50.000", "-", "1.000", "NNAZ:", "SEL0T100", "1",
        next};
    for (std::size_t i = 0; i < cells.size(); ++i) {
      project.Position().SetText(row, static_cast<int>(i), cells[i]);
    }
  }
  for (int row = 1; row <= project.Zone().RowsInArray(); ++row) {
    project.Zone().SetText(row, 0, NumberText(row) + ".000");
    project.Zone().SetText(row, 1, NumberText(row + 1) + ".000");
  }
  for (int row = 1; row <= project.Jog().RowsInArray(); ++row) {
    project.Jog().SetText(row, 0, NumberText(row) + ".000");
  }
  const bool stored = project.Position().ChangeAccepted() && project.Zone().ChangeAccepted() &&
                      project.Jog().ChangeAccepted();
  if (!stored || !Carry(TransferOf("mnuToolsDownloadAll"))) {
    throw std::runtime_error("an undisturbed download fails:" + program_->Words());
  }
  PowerCycle();
  for (const FileRow& row : File()) {
    if (!Untruths({row}, wiring_, {}, Rows::all).empty()) exempt_.insert(row.Name());
  }
}

void Campaign::Measure() {
  for (const Transfer& transfer : Transfers()) {
    if (transfer.upload) {
      EditAmplifier(transfer);
    } else {
      EditProject(transfer);
    }
    wiring_.Port().Before(-1, {});
    if (!Carry(transfer)) {
      throw std::runtime_error(std::string(transfer.command) +
                               " fails undisturbed:" + program_->Words());
    }
    exchanges_[transfer.command] = wiring_.Port().Exchanges();
    Retry(transfer, true);
  }
}

// ---- what is to be moved

void Campaign::EditTables() {
  clsHX7Project& project = Program::Project();
  for (int i = 0; i < 2; ++i) {
    const int step = 1 + Random(128);
    project.Position().SetText(step, clsHX7Position::position,
                               (Random(2) == 0 ? "I+" : "A-") + NumberText(Random(1000)) + ".500");
    project.Position().SetText(step, clsHX7Position::loop, NumberText(1 + Random(99999)));
    const int zone = 1 + Random(32);
    const int lower = Random(1000);
    project.Zone().SetText(zone, 0, NumberText(lower) + ".000");
    project.Zone().SetText(zone, 1, NumberText(lower + 5) + ".000");
    project.Jog().SetText(1 + Random(16), 0, NumberText(1 + Random(1000)) + ".000");
  }
  const bool stored = project.Position().ChangeAccepted() && project.Zone().ChangeAccepted() &&
                      project.Jog().ChangeAccepted();
  if (!stored) throw std::runtime_error("the tables refuse an edit");
}

namespace {

// A value that the user could type into the row; empty for one that is left alone.
std::string AnotherValue(const ParameterRow& row, ParameterWindow window, int random) {
  const Project& project = OpenedProject();
  const bool link = row.name >= "Pn800" && row.name <= "Pn802";
  if (link || row.name == "Pn000" || row.name == "Pn80B" || !LockedReason(row.name).empty()) {
    return {};
  }
  if (!row.list.empty() || row.nibble != nullptr || row.unit == "acceleration") return {};
  const auto low = ParseFloat(MinimumText(project, row));
  const auto high = ParseFloat(MaximumText(project, row));
  if (!low || !high || *high - *low < 2) return {};
  const double span = std::min(*high - *low, 1000.0);
  const auto value = static_cast<std::int64_t>(*low + 1 + random % static_cast<int>(span - 1));
  const CellCheck check = CheckParameter(project, window, row, NumberText(value));
  return check.accepted ? check.text : std::string();
}

}  // namespace

void Campaign::EditParameters() {
  ParameterToolBase* const tools[] = {&Program::Project().Editor(), &Program::Project().Editor(),
                                      &Program::Project().Tuning(), &Program::Project().Homing(),
                                      &Program::Project().OverTravel()};
  ParameterToolBase& tool = *tools[Random(static_cast<int>(std::size(tools)))];
  const ParameterWindow window = &tool == tools[0]   ? ParameterWindow::editor
                                 : &tool == tools[2] ? ParameterWindow::tuning
                                                     : ParameterWindow::properties;
  for (int i = 0; i < 4; ++i) {
    const int row = 1 + Random(tool.RowsInArray());
    const std::string value = AnotherValue(tool.Describe(row), window, Random(1 << 20));
    if (!value.empty()) tool.EditValue(row, value);
  }
  if (!tool.AcceptEdits()) throw std::runtime_error("a parameter tool refuses an edit");
}

void Campaign::EditProject(const Transfer& transfer) {
  if (transfer.tables) EditTables();
  if (transfer.parameters) EditParameters();
}

// Somebody else has changed what the amplifier holds.
void Campaign::EditAmplifier(const Transfer& transfer) {
  const std::string command = transfer.command;
  const bool all = command == "mnuToolsUploadAll";
  const auto moves = [&](const char* word) {
    return all || command.find(word) != std::string::npos;
  };
  if (moves("TablesAll") || moves("TableJog")) {
    wiring_.Type("send JSPDT" + NumberText(Random(16)) + "=" + NumberText(60 * Random(1000)));
    wiring_.Type("send JSPDSTORE");
  }
  if (moves("TablesAll") || moves("TableZone")) {
    const std::string row = NumberText(Random(32));
    const int lower = Random(100000);
    wiring_.Type("send ZONENT" + row + "=" + NumberText(lower));
    wiring_.Type("send ZONEPT" + row + "=" + NumberText(lower + 100));
    wiring_.Type("send ZONESTORE");
  }
  if (moves("TablesAll")) {
    wiring_.Type("send POST" + NumberText(Random(128)) + "=A-" + NumberText(Random(100000)));
    wiring_.Type("send PGMSTORE");
  }
  if (moves("Parameter")) wiring_.Type("send PRM100=" + NumberText(1 + Random(200)));
}

// ---- one fault

void Campaign::Run(int faults, int mostViolations) {
  const auto start = std::chrono::steady_clock::now();
  const int until = report_.faults + faults;
  while (report_.faults < until && std::cmp_less(report_.violations.size(), mostViolations)) {
    OneFault();
  }
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  report_.seconds += taken.count();
}

void Campaign::OneFault() {
  int weight = Random(100);
  const Transfer* transfer = Transfers().data();
  while (weight >= transfer->weight) weight -= (transfer++)->weight;
  const FaultKindEntry& kind =
      FaultKinds()[static_cast<std::size_t>(Random(static_cast<int>(FaultKinds().size())))];
  Disturb(*transfer, kind, Random(exchanges_.at(transfer->command)));
}

void Campaign::Disturb(const Transfer& transfer, const FaultKindEntry& kind, int planned) {
  if (transfer.upload) {
    EditAmplifier(transfer);
  } else {
    EditProject(transfer);
  }
  before_ = File();
  PlanFault(kind, transfer.command, planned);
  const auto start = std::chrono::steady_clock::now();
  const bool finished = Carry(transfer);
  if (sabotage) sabotage(wiring_, folder_ + "/campaign.tmp");
  const bool happened = HasHappened(kind);
  if (!happened) ++report_.missed;
  Examine(kind, transfer, finished);
  if (!happened) return;
  const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - start;
  Tally& tally = report_.kinds[kind.name];
  ++report_.faults;
  ++tally.faults;
  tally.seconds += taken.count();
  if (transfer.upload) ++(finished ? tally.uploadsFinished : tally.uploadsFailed);
  if (!transfer.upload) ++(finished ? tally.downloadsFinished : tally.downloadsFailed);
}

void Campaign::PlanFault(const FaultKindEntry& kind, const std::string& what, int planned) {
  planned_ = planned;
  std::string command = kind.command;
  if (const std::size_t late = command.find("late", command.find(' ')); late != std::string::npos) {
    command.replace(late, 4, "delay=" + NumberText(wiring_.TooLate()));
  }
  doing_ = what + ", " + kind.name + " at exchange " + NumberText(planned_) + " (fault " +
           NumberText(report_.faults) + " of seed " + NumberText(static_cast<std::int64_t>(seed_)) +
           ")";
  std::function<void()> event;
  switch (kind.means) {
    case Means::noise:
      wiring_.Type("noise " + command + " skip=" +
                   NumberText(planned_ * kBytesOfAnExchange + Random(kBytesOfAnExchange)) +
                   " bits=" + NumberText((1 << Random(3)) | (1 << (3 + Random(3)))));
      break;
    case Means::fault:
      wiring_.Type("fault " + command + " skip=" + NumberText(planned_));
      break;
    case Means::event:
      event = [this, command] {
        if (command != "speed") {
          wiring_.Type(command);
          return;
        }
        const std::string speed = wiring_.Type("send PRM801");
        wiring_.Type("send PRM801=" + NumberText(1 + Random(2)));
        wiring_.Type("power");
        wiring_.Type("send PRM801=" + speed.substr(speed.find('=') + 1, 8));
      };
      break;
  }
  wiring_.Port().Before(planned_, event);
}

bool Campaign::HasHappened(const FaultKindEntry& kind) {
  if (kind.means == Means::noise) return wiring_.Type("noise").starts_with("none");
  return wiring_.Port().Exchanges() > planned_;
}

void Campaign::Mend(const FaultKindEntry& kind) {
  wiring_.Port().Before(-1, {});
  wiring_.Type("clear");
  const std::string_view command = kind.command;
  if (command == "unplug" || command.starts_with("hang-up")) wiring_.Type("plug");
  if (command.ends_with(" late")) wiring_.WaitForLate();
}

bool Campaign::Carry(const Transfer& transfer) {
  program_->Choose(transfer.command);
  return program_->Said(transfer.complete);
}

}  // namespace velmoor::campaign
