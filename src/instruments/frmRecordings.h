// The window of the recordings: begins and ends one, lists those of the project, lays several over
// each other, and tells their figures.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "instruments/Instruments.h"
#include "instruments/OverlayView.h"
#include "instruments/RecordingList.h"
#include "instruments/TriggerChoices.h"
#include "layouts/frmRecordings.h"
#include "windows/TextGrid.h"
#include "windows/Window.h"

namespace velmoor {

class frmRecordings final : public WindowOf<layouts::frmRecordings> {
 public:
  // Must outlive the window.
  explicit frmRecordings(Instruments& instruments) : instruments_(instruments) {}

  // Comes to the front, or opens; `shown`, where it is no empty text, is laid on the chart alone.
  void Open(const std::string& shown = {});

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  // ---- recording
  void ConnectOrder();
  void OfferEvents();
  // False: something typed cannot be taken, of which the user was told.
  bool TakeOrder();
  void ShowRecorder();

  // ---- the list
  void ConnectList();
  void ReadFolder();
  void Toggle(int row);
  void ShowDetails();
  void cmdDelete_Click();

  // ---- the chart
  void ConnectChart();
  // Reads what is to be shown.
  void TakeShown();
  [[nodiscard]] Alignment Chosen() const;
  void Shift(double part);
  void SaveFigures();
  void SavePicture();

  Instruments& instruments_;
  RecordingList list_;
  std::vector<TriggerChoice> choices_;
  OverlayView view_;
  TextGrid detailsGrid_{{"What", "As it was"}};
  std::unique_ptr<Timer> tmrLook_;  // while the window is open
};

}  // namespace velmoor
