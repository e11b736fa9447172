#include "operations/MotorMatch.h"

#include "link/clsHX7Helix7.h"
#include "mechanics/RescalePreview.h"
#include "operations/FailureText.h"
#include "platform/Log.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "project/data/MachineUnits.h"

namespace velmoor {
namespace {

constexpr const char* kTrap = "MotorMatch: ";

std::string OfferOf(const MotorJudgement& judgement) {
  if (judgement.encoderIndex < 0) return "the motor's rated power";
  return judgement.watts.empty() ? "the motor's encoder"
                                 : "the motor's encoder and its rated power";
}

// What the shell mends it with.
std::string CommandOf(const clsHX7Project& project, const MotorJudgement& judgement) {
  std::string command = "velmoorctl set " + project.FileName();
  if (judgement.encoderIndex >= 0) {
    command += " encoder=" + NumberText(EncoderCountFromIndex(judgement.encoderIndex));
  }
  if (!judgement.watts.empty()) command += " motor=" + judgement.watts;
  return command;
}

// What both readings tell alike.
MotorFacts Common(const MotorFacts& a, const MotorFacts& b) {
  return {a.encoderLines == b.encoderLines ? a.encoderLines : 0,
          a.watts == b.watts ? a.watts : std::string(),
          a.firmware == b.firmware ? a.firmware : std::string()};
}

}  // namespace

// ---- what is connected

// What cannot be read is not judged: the operation that follows tells of a line that fails.
const MotorFacts& MotorMatch::Read() {
  clsHX7Helix7& helix = *session_.Helix7();
  facts_ = {};
  const bool read = helix.GetEncoderResolution(facts_.encoderLines) == kSuccess &&
                    helix.GetMotorSize(facts_.watts) == kSuccess &&
                    helix.GetOptionVersion(facts_.firmware) == kSuccess;
  if (!read) {
    LogWarning("session",
               FailureText("The connected motor could not be compared with the project."));
    ForgetFailures();
  }
  return facts_;
}

std::optional<MotorJudgement> MotorMatch::Look() {
  clsHX7Project* const project = session_.OwnProject();
  if (project == nullptr || !project->IsOpen() || !session_.IsOnline()) return std::nullopt;
  std::optional<MotorJudgement> judgement;
  Trapped(kTrap, [&] {
    const MotorFacts first = Read();
    judgement = Judge(*project, first);
    // A difference that the line has made is none.
    if (!judgement->differences.empty()) judgement = Judge(*project, Common(first, Read()));
    if (project->IsReadOnly()) judgement->CannotBeMended();
    return true;
  });
  return judgement;
}

// ---- telling

std::optional<MotorJudgement> MotorMatch::News(std::string& words) {
  std::optional<MotorJudgement> judgement = Look();
  if (!judgement || judgement->differences.empty()) return std::nullopt;
  const clsHX7Project& project = *session_.OwnProject();
  words = "The connected motor is not what project " + project.Title() + " describes!";
  for (const std::string& difference : judgement->differences) words += "\r\r" + difference;
  const std::string news = project.FileName() + "\r" + words;
  if (news == told_) return std::nullopt;
  told_ = news;
  return judgement;
}

MotorMatch::Answer MotorMatch::Ask(const MotorJudgement& judgement, const std::string& words,
                                   bool goesOn) {
  if (!desk_.IsAttended()) {
    const bool mends = judgement.CanBeMended();
    ShowInformation(
        words +
        (mends ? "\r\rTo take it over: " + CommandOf(*session_.OwnProject(), judgement) : ""));
    return Answer::leave;
  }
  if (!judgement.CanBeMended()) {
    if (goesOn) {
      return AskOkCancel(words + "\r\rDo you wish to proceed?") ? Answer::leave : Answer::cancel;
    }
    ShowExclamation(words);
    return Answer::leave;
  }
  const std::string question =
      words + "\r\rDo you wish to take " + OfferOf(judgement) + " into the project?";
  if (!goesOn) return AskYesNo(question) ? Answer::mend : Answer::leave;
  switch (AskYesNoCancel(question + "\rNo goes on with the project as it is.")) {
    case BoxAnswer::yes:
      return Answer::mend;
    case BoxAnswer::no:
      return Answer::leave;
    default:
      return Answer::cancel;
  }
}

void MotorMatch::Tell() {
  std::string words;
  const auto judgement = News(words);
  if (judgement && Ask(*judgement, words, false) == Answer::mend) (void)Mend(*judgement);
}

bool MotorMatch::MayGoOn() {
  std::string words;
  const auto judgement = News(words);
  if (!judgement) return true;
  switch (Ask(*judgement, words, true)) {
    case Answer::mend:
      if (Mend(*judgement)) return true;
      break;
    case Answer::leave:
      return true;
    case Answer::cancel:
      break;
  }
  // It is asked again before the next one.
  told_.clear();
  return false;
}

// ---- taking the motor into the project

bool MotorMatch::Mend(const MotorJudgement& judgement) {
  return Trapped(kTrap, [&] {
    if (judgement.encoderIndex >= 0 && !MendEncoder(judgement.encoderIndex)) return false;
    if (!judgement.watts.empty()) session_.OwnProject()->SetMotorSize(judgement.watts);
    return true;
  });
}

// The question was the agreement to another gear ratio; what becomes of values is shown before.
bool MotorMatch::MendEncoder(std::int32_t index) {
  clsHX7MechanicalSystem& machine = session_.OwnProject()->MechanicalSystem();
  MachineEdit edit = machine.Edit();
  (void)edit.SetEncoder(index);
  const MachineFigures figures = edit.Figures();
  if (!figures.valid) {
    ShowExclamation("The machine cannot be set with the motor's encoder:\r" + figures.reason +
                    "\rIt is unchanged.  Set it in the mechanical system's window.");
    return false;
  }
  if (!RescalePreview::AskFor(edit.Wanted())) return false;
  const std::string information = edit.CommitInformation();
  if (!information.empty()) ShowInformation(information);
  if (!machine.Accept(edit)) return false;
  desk_.StatusTold("Encoder of the machine: " + NumberText(EncoderCountFromIndex(index)) +
                   " lines, gear ratio B/A = " + NumberText(machine.B_Value()) + "/" +
                   NumberText(machine.A_Value()));
  return true;
}

void MotorMatch::Note() {
  if (facts_.watts.empty()) return;
  Trapped(kTrap, [this] {
    clsHX7Project& project = *session_.OwnProject();
    if (!Judge(project, facts_).outside) project.NoteMotorSize(facts_.watts);
    return true;
  });
}

void MotorMatch::Take() {
  Trapped(kTrap, [this] {
    session_.OwnProject()->SetMotorSize(session_.Helix7()->MotorSize());
    return true;
  });
}

}  // namespace velmoor
