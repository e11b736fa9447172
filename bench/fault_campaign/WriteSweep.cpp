// Every write of a whole download, upload, reset and test run, met by each way to leave it undone:
// what is told as done is stored, and the servo is off or the user was told that it may be on.

#include <algorithm>
#include <array>
#include <chrono>
#include <string_view>
#include <utility>

#include "fault_campaign/Campaign.h"
#include "fault_campaign/Kinds.h"
#include "fault_campaign/Program.h"

namespace velmoor::campaign {
namespace {

constexpr std::array<std::string_view, 14> kCommands{
    "SVON",    "SVOFF",    "SKIP",    "RES",      "PGMSTORE", "JSPDSTORE", "ZONESTORE",
    "PGMINIT", "JSPDINIT", "PRMINIT", "ZONEINIT", "ARES",     "TUNESTORE", "ALMTRCCLR"};
constexpr const char* kReset = "mnuToolsResetDefaultsAll";
constexpr const char* kTestRun = "mnuToolsServoJog";

bool IsWrite(std::string_view line) {
  const std::string_view command = line.substr(1);
  if (command.find('=') != std::string_view::npos || command.starts_with("JOG")) return true;
  return std::ranges::find(kCommands, command) != kCommands.end();
}

// A user who tries everything: on, a turn in each direction, off.
void RunTheMotor(headless::HeadlessForm& form) {
  form.Press("cmdServo");
  for (const char* const button : {"cmdJog_0", "cmdJog_1"}) {
    if (!form.button(button).Enabled()) continue;
    form.Hold(button);
    form.LetGo(button);
  }
  if (form.IsShown() && form.button("cmdServo").Caption() == "Disable &Servo") {
    form.Press("cmdServo");
  }
  if (form.IsShown()) form.Press("cmdExit");
}

}  // namespace

std::vector<int> Campaign::WritesSent() const {
  std::vector<int> places;
  const std::vector<std::string>& lines = wiring_.Port().Lines();
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (IsWrite(lines[i])) places.push_back(static_cast<int>(i));
  }
  return places;
}

void Campaign::RunWrites(int stride, int mostViolations) {
  mostViolations_ = mostViolations;
  const auto start = std::chrono::steady_clock::now();
  SweepTestRuns();
  SweepResets();
  SweepTransfer(TransferOf("mnuToolsUploadAll"), 1);
  SweepTransfer(TransferOf("mnuToolsDownloadAll"), stride);
  report_.seconds +=
      std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

void Campaign::SweepTransfer(const Transfer& transfer, int stride) {
  wiring_.Port().Before(-1, {});
  if (!Carry(transfer)) Blame({"fails undisturbed:" + program_->Words()}, transfer.command);
  const std::vector<int> writes = WritesSent();
  // The stores and the restart stand at the end.
  const std::size_t always = writes.size() > 12 ? writes.size() - 12 : 0;
  for (std::size_t i = 0; i < writes.size(); ++i) {
    if (i % static_cast<std::size_t>(stride) != 0 && i < always) continue;
    for (const FaultKindEntry& kind : WriteFaultKinds()) {
      if (std::cmp_greater_equal(report_.violations.size(), mostViolations_)) return;
      // A write that changes nothing could be left out without a sign; the first one connects.
      for (const char* const blank : {"PGMINIT", "ZONEINIT", "JSPDINIT"}) {
        if (!transfer.upload && i > 0) wiring_.Type(std::string("send ") + blank);
      }
      Disturb(transfer, kind, writes[i]);
    }
  }
}

void Campaign::DisturbWork(const std::string& what, const FaultKindEntry& kind, int planned,
                           const std::function<void()>& work) {
  PlanFault(kind, what, planned);
  work();
  if (HasHappened(kind)) {
    ++report_.faults;
    ++report_.kinds[kind.name].faults;
  } else {
    ++report_.missed;
  }
}

// ---- resets

void Campaign::ExamineReset() {
  const bool toldDone = program_->user.failures == 0;
  std::vector<std::string> wrong;
  for (const char* const question : {"POST5", "ZONENT3", "JSPDT3"}) {
    const std::string held = wiring_.Type(std::string("send ") + question);
    if (toldDone && !held.ends_with("=\n")) wrong.push_back("told as reset, but holds " + held);
  }
  const std::string gain = wiring_.Type("send PRM100");
  if (toldDone && gain != factoryGain_) wrong.push_back("told as reset, but holds " + gain);
  // Nothing is reset while the servo may be on.
  const bool servoTold = program_->Said("Error turning servo off!");
  if (servoTold && gain == factoryGain_) wrong.push_back("reset with the servo on");
  Blame(wrong, "after the reset");
}

void Campaign::SweepResets() {
  const auto fill = [this] {
    if (!Program::Form().IsOnline()) program_->Choose("mnuToolsOnline");
    if (!Carry(TransferOf("mnuToolsDownloadAll")))
      Blame({"a clean download fails:" + program_->Words()}, "behind a reset");
    wiring_.Type("send PRM100=77");
  };
  fill();
  wiring_.Port().Before(-1, {});
  program_->Choose(kReset);
  const std::vector<int> writes = WritesSent();
  for (const int write : writes) {
    for (const FaultKindEntry& kind : WriteFaultKinds()) {
      fill();
      DisturbWork(kReset, kind, write, [this] { program_->Choose(kReset); });
      ExamineReset();
      Mend(kind);
      wiring_.Type("send SVOFF");
      PowerCycle();
      if (program_->user.failures == 0) ExamineReset();
    }
  }
  fill();
}

// ---- test runs

void Campaign::ExamineMotor() {
  const bool off = wiring_.Type("send ALM").starts_with("0ALM BB");
  const bool told = program_->Said("emergency stop");
  if (!off && !told) Blame({"the servo stays on and nobody was told"}, "behind a test run");
}

void Campaign::SweepTestRuns() {
  if (!Program::Form().IsOnline()) program_->Choose("mnuToolsOnline");
  wiring_.Port().Before(-1, {});
  program_->ChooseWith(kTestRun, "frmServoJog", RunTheMotor);
  const std::vector<int> writes = WritesSent();
  if (writes.size() < 6) Blame({"an undisturbed test run sends too little"}, "before the faults");
  for (const int write : writes) {
    for (const FaultKindEntry& kind : WriteFaultKinds()) {
      DisturbWork(kTestRun, kind, write,
                  [this] { program_->ChooseWith(kTestRun, "frmServoJog", RunTheMotor); });
      ExamineMotor();
      Mend(kind);
      wiring_.WaitForRestart();
      Program::Form().MakeSafe();
      wiring_.Type("send SVOFF");
      if (Program::Form().IsOnline()) program_->Choose("mnuToolsOffline");
      program_->Choose("mnuToolsOnline");
    }
  }
}

}  // namespace velmoor::campaign
