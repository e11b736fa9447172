// One simulated amplifier with its option card: an axis on a line.
//
// It takes whole command lines and gives whole answers; bytes, speeds and faults of the line are
// SimulatedLine's. Time is told by the caller, in microseconds of any clock that never goes back.
#pragma once

#include <array>
#include <chrono>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/axis/SimulatedAxis.h"
#include "simulator/memory/AmplifierMemory.h"

namespace velmoor {

// What the amplifier is, and how long its slow commands take.
struct AmplifierSettings {
  char axis = '0';           // one upper-case hexadecimal digit; a switch, no parameter changes it
  std::int32_t baud = 9600;  // 9600, 19200 or 38400 at power-on
  int firmware = 3;          // of the option card; SEL5 and SEL6 need 3
  std::int32_t watts = 400;  // rated power of the motor
  std::string optionType = "00000600";
  std::string servoType = "00000002";
  std::string motorType = "00000100";
  std::string encoder = "0000000D";  // hexadecimal: kind and bits; that of a new project
  Micros restartTime = std::chrono::milliseconds(300);
  Micros storeTime{0};  // of each store and initialise command
};

// The answers to value words that were set by hand, by their word.
using FixedValues = std::map<std::string, std::int32_t, std::less<>>;

struct AmplifierState {
  explicit AmplifierState(AmplifierSettings amplifierSettings);
  AmplifierState(const AmplifierState&) = delete;
  AmplifierState& operator=(const AmplifierState&) = delete;

  AmplifierSettings settings;
  AmplifierMemory memory;
  AlarmState alarm;
  SimulatedAxis axis;
  FixedValues values;
  std::int32_t rigidity = 4;
  bool echo = true;
};

// What comes back for a line.
struct Reply {
  std::string text;           // behind the axis character; empty for silence
  bool acknowledges = false;  // an "OK" that Pn802 may suppress
  bool accepted = true;
  Micros takes{0};        // time before the answer
  bool restarts = false;  // the amplifier restarts once it has answered
};

struct JournalEntry {
  Micros when;
  std::string line;
  std::string answer;
};

class SimulatedAmplifier {
 public:
  explicit SimulatedAmplifier(AmplifierSettings settings = {});

  [[nodiscard]] char Axis() const { return state_.settings.axis; }
  // Speed and echo in force. Both follow their parameters at a restart.
  [[nodiscard]] std::int32_t BaudRate() const { return baudRate_; }
  [[nodiscard]] bool Echo() const { return state_.echo; }
  void SetEcho(bool echo) { state_.echo = echo; }

  // False while it restarts.
  [[nodiscard]] bool Listens(Micros now) const { return now >= deafUntil_; }
  // Executes a line without its axis character. The answer has the axis in front.
  Reply Execute(std::string_view command, Micros now);
  // Counts and keeps a line that is not executed.
  void Pass(std::string_view command, Micros now);
  // Off and on again: the tables come from the stored copies, the servo is off.
  void Restart(Micros now);

  // Lets the axis move until `now`.
  void AdvanceTo(Micros now) { state_.axis.AdvanceTo(now); }
  // "A.9F": shown, kept in the history, and the servo goes off.
  void RaiseAlarm(const std::string& display) { state_.axis.Trip(display); }
  // Four characters such as "E5A1", told until the alarm is reset; "0000" for none.
  void SetError(const std::string& code) { state_.alarm.error = code; }
  // The answer to a value word from now on, whatever the axis does; of INERTIA and STIFF what they
  // really are. False for a word that is no value word.
  bool SetValue(std::string_view word, std::int32_t value);
  // The answer follows the axis again.
  void FreeValue(const std::string& word) { state_.values.erase(word); }
  // One line of "IN1" or "IN2"; one of "OUT1" or "OUT2" is fixed like a value.
  bool SetBit(std::string_view word, int bit, bool on);

  [[nodiscard]] AmplifierState& State() { return state_; }
  [[nodiscard]] const AmplifierState& State() const { return state_; }

  // How often each word was asked; writes to a parameter or table field count under the word with
  // "=". Refused lines count too, unknown ones under "?".
  [[nodiscard]] int Asked(std::string_view word) const;
  [[nodiscard]] const std::map<std::string, int, std::less<>>& Counts() const { return counts_; }
  // The last lines with their answers, oldest first, ten thousand at most.
  [[nodiscard]] const std::deque<JournalEntry>& Journal() const { return journal_; }
  void ForgetWhatWasAsked();

 private:
  void Count(std::string_view command);
  void Keep(std::string_view command, const std::string& answer, Micros now);

  AmplifierState state_;
  std::int32_t baudRate_;
  Micros deafUntil_ = Micros::min();
  std::map<std::string, int, std::less<>> counts_;
  std::deque<JournalEntry> journal_;
};

}  // namespace velmoor
