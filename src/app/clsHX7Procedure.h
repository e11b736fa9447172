// The progress of one long transfer: its figures and texts, and the dialog that shows them.
//
// Held by the main window for the length of the transfer. While the dialog is up no other window
// takes input; its Stop button sets the session's stop request, which the tools look at.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "layouts/frmDialogStop.h"
#include "windows/Window.h"

namespace velmoor {

class clsHX7Procedure;

// The dialog. It cannot be closed by its frame; it goes with the procedure.
class frmDialogStop final : public WindowOf<layouts::frmDialogStop> {
 public:
  // `procedure` must outlive the dialog.
  frmDialogStop(const clsHX7Procedure& procedure, std::string strCaption, bool blnShowCurrent);

 protected:
  void FormLoad() override;
  void FormQueryUnload(bool& cancel) override { cancel = true; }

 private:
  void UpdateProgress();
  void UpdateTimes();
  void cmdStop_Click();

  const clsHX7Procedure& procedure_;
  std::string strCaption_;
  bool blnShowCurrent_;
  std::chrono::milliseconds start_;
  std::unique_ptr<Timer> tmrUpdate_;  // while the dialog is open
};

class clsHX7Procedure {
 public:
  // Of the item under way, and its count of steps.
  int CurrentFinished = 0;
  int CurrentSteps = 0;
  std::string Current;
  // Of the whole procedure.
  int Finished = 0;
  int Steps = 0;
  std::string Total;

  // With `blnShowCurrent` the item under way has a bar and a text of its own.
  void Show_Procedure(const std::string& strCaption, bool blnShowCurrent);
  // Takes the dialog away; the end of the procedure does the same.
  void Unload_Procedure();

  clsHX7Procedure() = default;
  ~clsHX7Procedure() { Unload_Procedure(); }
  clsHX7Procedure(const clsHX7Procedure&) = delete;
  clsHX7Procedure& operator=(const clsHX7Procedure&) = delete;

 private:
  std::unique_ptr<frmDialogStop> frmProcedure_;
};

}  // namespace velmoor
