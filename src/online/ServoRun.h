// The servo and the motion of a window that runs the motor for as long as a button is held.
//
// A safety shape: nothing moves while the servo is off, motion ends with the button's release,
// however that comes about, and every way out of the window turns the servo off. What ends motion
// is repeated until it is acknowledged, before any box; what could not be confirmed is told, shown
// as a servo that may be on, and tried again by every way out, to the end of the program.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "link/LinkFailure.h"
#include "platform/Controls.h"

namespace velmoor {

class ServoRun {
 public:
  using Window = std::weak_ptr<const void>;  // expires as the window closes

  // `shown` shows the servo as it is known, whenever that may have changed; while the servo is not
  // on it disables the buttons that move.
  explicit ServoRun(std::function<void()> shown) : shown_(std::move(shown)) {}

  // A window opens: nothing is on by its doing.
  void Reset();
  [[nodiscard]] bool IsOn() const { return on_; }
  [[nodiscard]] bool IsHeld() const { return held_; }
  // Of the button that toggles, of the lamp and of the label beside them.
  [[nodiscard]] std::string Caption() const;
  [[nodiscard]] Tone LampTone() const;
  [[nodiscard]] std::string Words() const;

  // Asks and switches on, or switches off: what may be on is switched off, whatever was asked for
  // last. Failures are told.
  void Toggle();
  // The failure is the link's latest.
  ResultCode SwitchOff();

  // A button went down that `start`s a motion. Whatever `start` throws ends the motion and is told.
  void Press(const Window& window, const std::function<void()>& start);
  // Where nothing was started after all.
  void LetGo() { held_ = false; }
  // Moves while the button is held and the servo is on: `index` 0 forward, 1 in reverse. Events run
  // between the questions to the amplifier, so that a release is seen before anything starts to
  // move. Failures are told.
  void Start(std::int32_t index, std::int32_t rpm, const Window& window);
  // The button is up. Failures are told.
  void Release();
  // Ends the motion; the servo is off where that was not acknowledged. Without `words` the caller
  // tells.
  void Stop(const char* words);
  // Ends the motion and lets the button stay down: another motion may follow. False: as Stop.
  bool Pause(const char* words);

  // The window closes.
  void Leave();
  // Stops and switches off, without a word: the program ends.
  void MakeSafe();

 private:
  std::optional<LinkFailure> AskAndEnable();
  void Tell(const LinkFailure& failure, const char* words) const;

  std::function<void()> shown_;
  bool on_ = false;  // the user's last request
  bool held_ = false;
  bool stopping_ = false;  // a button that is let go meanwhile needs no stop of its own
};

}  // namespace velmoor
