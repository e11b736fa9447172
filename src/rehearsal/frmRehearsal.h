// The window of the rehearsal: runs the project's programme on a simulated axis of its own, and
// shows what it did over time, each step's times and what went wrong. It touches no hardware.
//
// The rehearsal is reckoned in short slices between which events are served, and reads the project
// at its beginning alone: what happens to that meanwhile concerns only the next one.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "layouts/frmRehearsal.h"
#include "rehearsal/Rehearsal.h"
#include "rehearsal/RehearsalChart.h"
#include "rehearsal/RehearsalGrids.h"
#include "windows/TextGrid.h"
#include "windows/Window.h"

namespace velmoor {

class frmRehearsal final : public WindowOf<layouts::frmRehearsal> {
 public:
  struct Hooks {
    // The open project, with what was edited applied where the user wishes; null: not now.
    std::function<clsHX7Project*()> project;
    // The step is to be the current one of the index table. `front`: and its window in front.
    std::function<void(int step, bool front)> goTo;
  };

  explicit frmRehearsal(Hooks hooks) : hooks_(std::move(hooks)) {}

  // Opens the window, or comes to the front, and rehearses.
  void Rehearse();
  // Another project: what was typed for the former one goes.
  void Forget();

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  // ---- a run
  void Begin();
  void GoOn();
  void End(bool byUser);
  [[nodiscard]] bool TakeOrder(RehearsalOrder& order);
  void OfferSteps(clsHX7Project& project);
  [[nodiscard]] std::string Summary(bool byUser) const;
  void ShowResult();
  void OfferButtons();

  // ---- what the user looks at
  void ConnectChart();
  void ConnectFindings();
  void ConnectInputs();
  void ShowChart();
  void LookAtStep();
  void LookAtFinding(bool front);

  // ---- files
  void LoadInputs();
  void SaveInputs();
  void SaveRecord();
  void SavePicture();

  Hooks hooks_;
  std::unique_ptr<Timer> tmrRun_;  // while the window is open
  std::unique_ptr<Rehearsal> run_;
  std::vector<RehearsalSample> samples_;  // of the run under way
  RehearsalResult result_;
  bool showing_ = false;         // another result: no choice of the user
  Units units_;                  // of the result
  std::vector<int> startSteps_;  // of the choices behind the first
  RehearsalChart chart_;
  TextGrid stepsGrid_{StepHeadings()};
  TextGrid findingsGrid_{FindingHeadings()};
  InputsGrid inputsGrid_;
};

}  // namespace velmoor
