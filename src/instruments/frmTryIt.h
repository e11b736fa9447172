// Trying gains: a test move for as long as a button is held, or one pass of the programme, recorded
// with the present gains; a change of gains that is sent; and the last two trials side by side.
//
// ServoRun keeps the motor safe, as in the test run.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "instruments/Instruments.h"
#include "instruments/OverlayView.h"
#include "instruments/TrialGains.h"
#include "instruments/TrialReadings.h"
#include "layouts/frmTryIt.h"
#include "online/ServoRun.h"
#include "online/TestMove.h"
#include "windows/Window.h"

namespace velmoor {

class frmTryIt final : public WindowOf<layouts::frmTryIt> {
 public:
  // Sets "Pn100=55" and others in the project and sends the gains to the amplifier. False: not
  // done, of which the user was told; the project has the values that it had.
  using Send = std::function<bool(const std::vector<std::string>& assignments)>;
  // `instruments` must outlive the window.
  frmTryIt(Instruments& instruments, Send send)
      : instruments_(instruments), send_(std::move(send)) {}
  ~frmTryIt() override { MakeSafe(); }
  // Stops and switches off, without a word: the program ends.
  void MakeSafe() { run_.MakeSafe(); }

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  enum class Trial { none, move, pass };

  // ---- the gains
  void ReadGains();
  void cmdSend_Click();
  void cmdBack_Click();
  // Values by the names of the gains.
  bool SendValues(const std::vector<std::string>& values);
  void OfferGains();

  // ---- a trial
  void ShowServo();
  void ShowUnit();
  // False: something typed cannot be taken, of which the user was told.
  bool TakeOrder();
  void cmdMove_Down();
  void cmdMove_Up();
  void cmdPass_Click();
  void BeginTrial(Trial trial, RecorderOrder order, const std::string& cause);
  void EndTrial();
  void tmrRead_Timer();
  void GoOn();
  void FollowPass();
  void ShowState();

  void TakeTrials();

  Instruments& instruments_;
  Send send_;
  ServoRun run_{[this] {
    if (IsOpen()) ShowServo();
  }};
  TestMove move_;
  TestMove::Order order_;
  std::int32_t speed_ = 0;  // rpm
  Trial trial_ = Trial::none;
  std::optional<double> passEnded_;  // s of the clock
  TrialReadings readings_;
  bool reading_ = false;
  TrialGains gains_;
  std::vector<std::string> former_;  // values before the last change that was sent
  std::vector<std::string> trials_;  // names of recordings; two at most
  OverlayView view_;
  std::unique_ptr<Timer> tmrRead_;  // while the window is open
};

}  // namespace velmoor
