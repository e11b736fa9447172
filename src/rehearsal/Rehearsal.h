// A project's programme on a simulated axis, without hardware and without waiting: what it would
// do, how long each step takes, and what goes wrong.
//
// The axis gets what a download would send it, in the amplifier's form: machine, parameters and
// tables. Its load is what the inertia ratio (Pn103) says. Time passes in steps of a quarter of a
// millisecond, as fast as they can be reckoned.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "rehearsal/InputScript.h"
#include "rehearsal/RehearsedProgramme.h"

namespace velmoor {

class clsHX7Project;

struct RehearsalOrder {
  std::vector<ScriptedInput> inputs;
  int startStep = 0;     // from 1; 0: where the amplifier starts by itself
  int passes = 1;        // of a programme that begins again
  double patience = 5;   // s: an event that does not come for so long, and nothing is planned
  double longest = 600;  // s: then it is ended
};

// What an engineer would see at one moment; as the monitoring window asks for it.
struct RehearsalSample {
  double seconds = 0;
  int step = 0;               // from 1; 0: none
  std::int32_t position = 0;  // counts
  std::int32_t speed = 0;     // min^-1 of the motor
  std::int32_t error = 0;     // counts, of the position
  std::int32_t torque = 0;    // % of the rated one
  std::uint32_t outputs = 0;  // POUT0 to POUT4, bit 0 first
  std::uint32_t zone = 0;
};
inline constexpr double kSampleSeconds = 0.001;
inline constexpr unsigned kRehearsedOutputs = 5;

struct RehearsedStep {
  int step = 0;                   // from 1
  double begin = 0;               // s
  double end = 0;                 // s; when the next one begins
  double moved = 0;               // s until its own move was over; 0: it has none
  bool ended = false;             // false: the rehearsal ended within it
  std::int32_t endPosition = 0;   // counts
  double topSpeed = 0;            // min^-1 of the motor, as commanded
  double wantedSpeed = 0;         // the same, by the table; 0: it has no move
  std::int32_t largestError = 0;  // counts
  std::int32_t peakTorque = 0;    // % of the rated one
};

struct RehearsalFinding {
  enum class Kind : std::uint8_t {
    refused,    // the amplifier would not take a value, or not run the programme
    alarm,      // an alarm or an error of the card: limits, end switches, overload, a bad step
    warning,    // overload or following error near their limits
    event,      // an event that never comes
    unreached,  // steps that are never run
    cut,        // a dwell that ends before its move does
    dwell,      // a dwell longer than its move
    speed       // a speed that is never attained
  };
  Kind kind = Kind::alarm;
  double seconds = 0;
  int step = 0;  // from 1; 0: of the whole programme
  std::string words;
};
// "event": as the command line names the kind.
[[nodiscard]] std::string_view WordOf(RehearsalFinding::Kind kind);
[[nodiscard]] std::vector<std::string> FindingWords();

struct RehearsalResult {
  std::vector<RehearsedStep> steps;  // in the order in which they ran, each repetition by itself
  std::vector<RehearsalFinding> findings;
  double seconds = 0;  // the whole
  // Of a programme that begins again: from the step that it comes back to, to the same one.
  std::optional<double> cycleSeconds;
  int cycleStep = 0;
};

// One rehearsal under way. What the project becomes meanwhile changes nothing: it was read when
// this was made.
class Rehearsal {
 public:
  // Each sample goes to `sink`, a millisecond after the one before. Throws NumberError where the
  // project's units are none.
  Rehearsal(clsHX7Project& project, RehearsalOrder order,
            std::function<void(const RehearsalSample&)> sink);
  ~Rehearsal();
  Rehearsal(const Rehearsal&) = delete;
  Rehearsal& operator=(const Rehearsal&) = delete;

  // Lets so many seconds pass. False: it is over.
  bool GoOn(double seconds);
  // What there is of it, once; it is over then. Steps that were not reached are told of a rehearsal
  // that ended by itself alone.
  [[nodiscard]] RehearsalResult End();
  [[nodiscard]] double Seconds() const;
  [[nodiscard]] const RehearsedProgramme& Programme() const;

 private:
  class Run;
  std::unique_ptr<Run> run_;
};

// The whole at once.
[[nodiscard]] RehearsalResult Rehearse(clsHX7Project& project, const RehearsalOrder& order,
                                       const std::function<void(const RehearsalSample&)>& sink);

}  // namespace velmoor
