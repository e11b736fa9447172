// Transfers of a whole project and of single tools by the desktop program's session, each with one
// fault of the line or of the amplifier somewhere in it, and what is examined after each.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include "fault_campaign/Truth.h"
#include "fault_campaign/Wiring.h"

namespace velmoor::campaign {

class Program;
struct Transfer;
struct FaultKindEntry;

// What became of the transfers that met one kind of fault.
struct Tally {
  int faults = 0;
  int downloadsFinished = 0;
  int downloadsFailed = 0;
  int uploadsFinished = 0;
  int uploadsFailed = 0;
  int unnoticed = 0;  // uploads whose value the protocol has no means to doubt
  double seconds = 0;
};

struct Report {
  std::map<std::string, Tally> kinds;
  std::vector<std::string> violations;
  std::vector<std::string> unnoticed;
  int faults = 0;
  int missed = 0;  // transfers that were over before their fault came
  double seconds = 0;
};

class Campaign {
 public:
  // `folder` is the campaign's own and lies on a fast disk. Throws std::runtime_error when an
  // undisturbed transfer does not work.
  Campaign(Wiring& wiring, std::string folder, std::uint64_t seed);
  ~Campaign();
  Campaign(const Campaign&) = delete;
  Campaign& operator=(const Campaign&) = delete;

  // Goes on until so many more faults have happened, or so many violations were found.
  void Run(int faults, int mostViolations = 20);
  // Meets every `stride`th write of a whole download and upload, and every write of a reset of
  // everything and of a test run, once with each way to leave a write undone.
  void RunWrites(int stride, int mostViolations = 20);
  [[nodiscard]] const Report& Result() const { return report_; }

  // For tests of the campaign itself: runs behind each disturbed transfer, before it is examined.
  std::function<void(Wiring& wiring, const std::string& workingFile)> sabotage;

 private:
  void Prepare();
  void Measure();
  void OneFault();
  // The fault of that kind at exchange `planned` of the transfer.
  void Disturb(const Transfer& transfer, const FaultKindEntry& kind, int planned);
  void SweepTransfer(const Transfer& transfer, int stride);
  void SweepResets();
  void SweepTestRuns();
  // Runs `work` with that fault at its exchange `planned`, and counts it.
  void DisturbWork(const std::string& what, const FaultKindEntry& kind, int planned,
                   const std::function<void()>& work);
  void ExamineReset();
  void ExamineMotor();
  [[nodiscard]] std::vector<int> WritesSent() const;
  void EditProject(const Transfer& transfer);
  void EditAmplifier(const Transfer& transfer);
  void EditTables();
  void EditParameters();
  void PlanFault(const FaultKindEntry& kind, const std::string& what, int planned);
  [[nodiscard]] bool HasHappened(const FaultKindEntry& kind);
  void Mend(const FaultKindEntry& kind);
  // Chooses the command; true when the program says that it is complete.
  bool Carry(const Transfer& transfer);
  void Examine(const FaultKindEntry& kind, const Transfer& transfer, bool finished);
  void ExamineSession(const FaultKindEntry& kind, bool finished);
  void ExamineUpload(const FaultKindEntry& kind, const Transfer& transfer, bool finished,
                     const std::vector<FileRow>& rows);
  void Recover();
  void Retry(const Transfer& transfer, bool finished);
  void PowerCycle();
  [[nodiscard]] std::vector<FileRow> File() const;
  void Blame(const std::vector<std::string>& wrong, const char* when);
  [[nodiscard]] int Random(int below);

  Wiring& wiring_;
  std::string folder_;
  std::uint64_t seed_;
  std::mt19937_64 random_;
  std::unique_ptr<Program> program_;
  Exempt exempt_;
  std::map<std::string, int> exchanges_;  // of the undisturbed transfers, by their command
  std::vector<FileRow> before_;           // the file before an upload
  std::string doing_;
  int planned_ = 0;          // the exchange of the fault
  std::string factoryGain_;  // the amplifier's answer before anything was written
  int mostViolations_ = 20;
  Report report_;
};

// The table of a report.
void Print(const Report& report, const std::string& title);

}  // namespace velmoor::campaign
