// The page of a line: its axes, row by row, and what can be done with those that are chosen. It
// fills the main window while a line is open and no project is.
//
// Owned by LineWorkplace, whose states it shows. It asks nobody: a button, Enter or a double click
// calls a hook.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <string>

#include "app/LineStates.h"
#include "layouts/frmLine.h"
#include "platform/Grid.h"
#include "windows/Window.h"

namespace velmoor {

enum class LineAction : std::uint8_t {
  info,
  compare,
  downloadNew,
  downloadAll,
  upload,
  resetAlarm,
  set,
  copy,
  report
};
inline constexpr std::size_t kLineActions = 9;

class LinePage final : public WindowOf<layouts::frmLine>, private ReadOnlyGridSource {
 public:
  struct Hooks {
    std::function<void(LineAction action)> act;
    std::function<void(std::size_t place)> open;  // an axis, from 0
  };

  // `states` must outlive the page.
  LinePage(LineStates& states, Hooks hooks) : states_(states), hooks_(std::move(hooks)) {}
  // On show from now on, under that title.
  void ShowLine(const std::string& title, const std::string& place);
  // What is known of all axes, or of one, has changed; `remark` stands below the rows.
  void Refresh();
  void RefreshAxis(std::size_t place);
  void ShowRemark(const std::string& remark);
  // The axis of the current row, from 0.
  [[nodiscard]] std::size_t Current() const;
  // Null while it is not on show.
  [[nodiscard]] const Form* Shown() const { return IsOpen() ? &form() : nullptr; }

 protected:
  void FormLoad() override;

 private:
  [[nodiscard]] std::array<Button*, kLineActions> Buttons() const;
  void Choose(int row);
  void ChooseAll(bool chosen);
  void OnKey(KeyEvent& key);
  void OfferActions();
  [[nodiscard]] int Rows() const override { return static_cast<int>(states_.Axes().size()) + 1; }
  [[nodiscard]] int Columns() const override;
  [[nodiscard]] std::string Text(int row, int column) const override;
  [[nodiscard]] CellTraits Traits(int row, int column) const override;
  [[nodiscard]] const LineAxisState& At(int row) const {
    return states_.Axes().at(static_cast<std::size_t>(row) - 1);
  }

  LineStates& states_;
  Hooks hooks_;
};

}  // namespace velmoor
