// The window of the recordings: begins and ends one, lists those of the project, lays several over
// each other, and tells their figures.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "instruments/Instruments.h"
#include "instruments/Overlay.h"
#include "instruments/TriggerChoices.h"
#include "layouts/frmRecordings.h"
#include "windows/TextGrid.h"
#include "windows/Window.h"

namespace velmoor {

class frmRecordings final : public WindowOf<layouts::frmRecordings>, private GridSource {
 public:
  // Must outlive the window.
  explicit frmRecordings(Instruments& instruments) : instruments_(instruments) {}

  // Comes to the front, or opens; `shown`, where it is no empty text, is laid on the chart alone.
  void Open(const std::string& shown = {});

 protected:
  void FormLoad() override;
  void FormUnload() override;

 private:
  struct Row {
    std::string name;
    RecordingHeading heading;  // empty where the file cannot be read
    std::string fault;
    bool shown = false;
  };

  // ---- recording
  void ConnectOrder();
  void OfferEvents();
  // False: something typed cannot be taken, of which the user was told.
  bool TakeOrder();
  void ShowRecorder();

  // ---- the list, as the grid's source
  [[nodiscard]] int Rows() const override { return static_cast<int>(rows_.size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  void SetText(int row, int column, const std::string& text) override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
  void ConnectList();
  void ReadFolder();
  [[nodiscard]] Row* Current();
  void Toggle(Row& row);
  void ShowDetails();
  void cmdDelete_Click();

  // ---- the chart
  void ConnectChart();
  // Reads what is to be shown.
  void TakeShown();
  void ShowChart();
  void Shift(double part);
  void SaveFigures();
  void SavePicture();

  Instruments& instruments_;
  std::vector<Row> rows_;
  std::vector<TriggerChoice> choices_;
  Overlay overlay_;
  TextGrid figuresGrid_{{"Figure"}};
  TextGrid detailsGrid_{{"What", "As it was"}};
  std::unique_ptr<Timer> tmrLook_;  // while the window is open
};

}  // namespace velmoor
