// The terminal screen on a TerminalWidget.
#pragma once

#include "platform/qt/QtControls.h"
#include "platform/qt/TerminalWidget.h"

namespace velmoor::qt {

// The font of that name; one of fixed width where this system lacks the name.
[[nodiscard]] QFont FixedFont(const std::string& name, int points);

class QtTerminalScreen final : public QtControl<TerminalScreen> {
 public:
  explicit QtTerminalScreen(TerminalWidget& widget);
  ~QtTerminalScreen() override;
  QtTerminalScreen(const QtTerminalScreen&) = delete;
  QtTerminalScreen& operator=(const QtTerminalScreen&) = delete;

  [[nodiscard]] int Rows() const override { return TerminalWidget::kRows; }
  [[nodiscard]] int Columns() const override { return TerminalWidget::kColumns; }
  [[nodiscard]] int CursorRow() const override { return row_; }
  [[nodiscard]] int CursorColumn() const override { return column_; }
  void MoveCursor(int row, int column) override;
  void Write(const std::string& text) override;
  void SetBold(bool bold) override { bold_ = bold; }
  void ScrollUp() override { widget_.ScrollUp(); }
  void Clear() override;
  [[nodiscard]] std::string RowText(int row) const override;
  [[nodiscard]] std::string SelectedText() const override;
  void SetFont(const std::string& name, int points) override;
  void SetColors(std::uint32_t text, std::uint32_t bold, std::uint32_t background) override;
  void FitWindow() override;

 private:
  bool LookAtKey(const QKeyEvent& event);
  TerminalWidget& widget_;
  bool bold_ = false;
  int row_ = 1;
  int column_ = 1;
};

}  // namespace velmoor::qt
