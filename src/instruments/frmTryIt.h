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
#include "instruments/Overlay.h"
#include "layouts/frmTryIt.h"
#include "online/ServoRun.h"
#include "online/TestMove.h"
#include "windows/TextGrid.h"
#include "windows/Window.h"

namespace velmoor {

class frmTryIt final : public WindowOf<layouts::frmTryIt>, private GridSource {
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
  struct Gain {
    std::string number;  // "Pn100"
    std::string name;
    std::string value;   // of the project and, once it was sent, of the amplifier
    std::string edited;  // what is to be sent
  };
  enum class Trial { none, move, pass };

  // ---- the gains, as the grid's source
  [[nodiscard]] int Rows() const override { return static_cast<int>(gains_.size()) + 1; }
  [[nodiscard]] int Columns() const override { return 4; }
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
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
  // The next of what is read, one question each time.
  ResultCode ReadNext();
  void GoOn();
  void FollowPass();
  void ShowState();

  // ---- what came of it
  void ConnectChart();
  void TakeTrials();
  void ShowChart();

  Instruments& instruments_;
  Send send_;
  ServoRun run_{[this] {
    if (IsOpen()) ShowServo();
  }};
  TestMove move_;
  TestMove::Order order_;
  std::int32_t speed_ = 0;  // rpm
  Trial trial_ = Trial::none;
  bool sawPass_ = false;             // the programme runs, or has run
  std::optional<double> passEnded_;  // s of the clock
  std::optional<std::int32_t> position_, status_;
  bool tripped_ = false;
  bool reading_ = false;
  std::size_t turn_ = 0;
  std::vector<Gain> gains_;
  std::vector<std::string> former_;  // values before the last change that was sent
  std::vector<std::string> trials_;  // names of recordings; two at most
  Overlay overlay_;
  TextGrid figuresGrid_{{"Figure"}};
  std::unique_ptr<Timer> tmrRead_;  // while the window is open
};

}  // namespace velmoor
