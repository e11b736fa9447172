// The controls without a screen: plain state, from the layout and as the logic set it. What a user
// would do with them goes through HeadlessForm, which refuses what a user could not do.
#pragma once

#include <algorithm>
#include <memory>
#include <optional>
#include <set>
#include <utility>

#include "platform/Layout.h"

namespace velmoor::headless {

template <typename Port>
class HeadlessControl : public Port {
 public:
  explicit HeadlessControl(const ControlLayout& layout)
      : enabled_(layout.enabled), visible_(layout.visible), toolTip_(layout.toolTip) {}
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetVisible(bool visible) override { visible_ = visible; }
  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetToolTip(const std::string& text) override { toolTip_ = text; }
  [[nodiscard]] std::string ToolTip() const override { return toolTip_; }
  void SetFocus() override { ++focusRequests; }

  int focusRequests = 0;

 private:
  bool enabled_;
  bool visible_;
  std::string toolTip_;
};

template <typename Port>
class HeadlessCaptioned : public HeadlessControl<Port> {
 public:
  explicit HeadlessCaptioned(const ControlLayout& layout)
      : HeadlessControl<Port>(layout), caption_(layout.text) {}
  void SetCaption(const std::string& caption) override { caption_ = caption; }
  [[nodiscard]] std::string Caption() const override { return caption_; }

 private:
  std::string caption_;
};

class HeadlessButton final : public HeadlessCaptioned<Button> {
 public:
  using HeadlessCaptioned::HeadlessCaptioned;
  void SetEnabled(bool enabled) override;
  void SetVisible(bool visible) override;
  void Hold();
  void LetGo();  // Up, when the button is held

 private:
  bool held_ = false;
};

class HeadlessTextBox final : public HeadlessControl<TextBox> {
 public:
  explicit HeadlessTextBox(const ControlLayout& layout)
      : HeadlessControl(layout), text_(layout.text) {}
  void SetText(const std::string& text) override { text_ = text; }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SelectAll() override {}

 private:
  std::string text_;
};

class HeadlessComboBox final : public HeadlessControl<ComboBox> {
 public:
  explicit HeadlessComboBox(const ControlLayout& layout)
      : HeadlessControl(layout),
        items_(layout.choices.begin(), layout.choices.end()),
        index_(layout.chosen) {}
  void SetItems(const std::vector<std::string>& items) override;
  [[nodiscard]] std::vector<std::string> Items() const override { return items_; }
  void SetListIndex(int index) override;
  [[nodiscard]] int ListIndex() const override { return index_; }
  [[nodiscard]] std::string Text() const override;

 private:
  std::vector<std::string> items_;
  int index_;
};

class HeadlessCheckBox final : public HeadlessCaptioned<CheckBox> {
 public:
  explicit HeadlessCheckBox(const ControlLayout& layout)
      : HeadlessCaptioned(layout), checked_(layout.checked) {}
  void SetValue(bool checked) override { checked_ = checked; }
  [[nodiscard]] bool Value() const override { return checked_; }

 private:
  bool checked_;
};

class HeadlessOptionGroup final : public HeadlessControl<OptionGroup> {
 public:
  explicit HeadlessOptionGroup(const ControlLayout& layout)
      : HeadlessControl(layout),
        captions_(layout.choices.begin(), layout.choices.end()),
        value_(layout.chosen) {}
  [[nodiscard]] int Count() const override { return static_cast<int>(captions_.size()); }
  void SetValue(int index) override { value_ = index; }
  [[nodiscard]] int Value() const override { return value_; }
  void SetChoiceEnabled(int index, bool enabled) override;
  [[nodiscard]] bool ChoiceEnabled(int index) const override { return !disabled_.contains(index); }
  void SetChoiceCaption(int index, const std::string& caption) override {
    captions_.at(static_cast<std::size_t>(index)) = caption;
  }
  [[nodiscard]] std::string ChoiceCaption(int index) const override {
    return captions_.at(static_cast<std::size_t>(index));
  }

 private:
  std::vector<std::string> captions_;
  std::set<int> disabled_;
  int value_;
};

class HeadlessLabel final : public HeadlessControl<Label> {
 public:
  explicit HeadlessLabel(const ControlLayout& layout)
      : HeadlessControl(layout), text_(layout.text) {}
  void SetText(const std::string& text) override { text_ = text; }
  [[nodiscard]] std::string Text() const override { return text_; }
  void SetTone(Tone tone) override { tone_ = tone; }
  [[nodiscard]] Tone TextTone() const override { return tone_; }

 private:
  std::string text_;
  Tone tone_ = Tone::normal;
};

class HeadlessDrawing final : public HeadlessControl<Drawing> {
 public:
  using HeadlessControl::HeadlessControl;
  void SetShapes(double /*width*/, double /*height*/, std::vector<DrawingShape> shapes) override {
    shapes_ = std::move(shapes);
  }
  [[nodiscard]] const std::vector<DrawingShape>& Shapes() const override { return shapes_; }

 private:
  std::vector<DrawingShape> shapes_;
};

// A page for each section.
class HeadlessPageView final : public HeadlessControl<PageView> {
 public:
  using HeadlessControl::HeadlessControl;
  void Show(const PrintDocument& document, Paper /*paper*/) override {
    shown = document;
    page_ = 1;
  }
  [[nodiscard]] int Pages() const override { return static_cast<int>(shown.sections.size()); }
  [[nodiscard]] int Page() const override { return page_; }
  void GoTo(int page) override { page_ = page; }
  void FitPage() override { zoom_ = 60; }
  void FitWidth() override { zoom_ = 110; }
  void SetZoom(int percent) override { zoom_ = percent; }
  [[nodiscard]] int Zoom() const override { return zoom_; }
  void ScrollTo(int page) {
    page_ = page;
    Moved.Raise();
  }

  PrintDocument shown;

 private:
  int page_ = 1;
  int zoom_ = 100;
};

class HeadlessLamp final : public HeadlessControl<Lamp> {
 public:
  using HeadlessControl::HeadlessControl;
  void SetTone(Tone tone) override { tone_ = tone; }
  [[nodiscard]] Tone LampTone() const override { return tone_; }

 private:
  Tone tone_ = Tone::normal;
};

class HeadlessProgressBar final : public HeadlessControl<ProgressBar> {
 public:
  using HeadlessControl::HeadlessControl;
  void SetProgress(int value, int maximum) override {
    maximum_ = maximum;
    value_ = std::clamp(value, 0, std::max(maximum, 0));
  }
  [[nodiscard]] int Value() const override { return value_; }
  [[nodiscard]] int Maximum() const override { return maximum_; }

 private:
  int value_ = 0;
  int maximum_ = 0;
};

class HeadlessTerminalScreen final : public HeadlessControl<TerminalScreen> {
 public:
  explicit HeadlessTerminalScreen(const ControlLayout& layout) : HeadlessControl(layout) {
    Clear();
  }
  [[nodiscard]] int Rows() const override { return 24; }
  [[nodiscard]] int Columns() const override { return 80; }
  [[nodiscard]] int CursorRow() const override { return row_; }
  [[nodiscard]] int CursorColumn() const override { return column_; }
  void MoveCursor(int row, int column) override;
  void Write(const std::string& text) override;
  void SetBold(bool bold) override { bold_ = bold; }
  void ScrollUp() override;
  void Clear() override;
  void FitWindow() override { ++fits; }
  [[nodiscard]] std::string RowText(int row) const override;
  [[nodiscard]] std::string SelectedText() const override { return selected; }
  void SetFont(const std::string& name, int points) override;
  void SetColors(std::uint32_t text, std::uint32_t bold, std::uint32_t background) override;

  std::string selected;
  std::string boldText;  // all that was written bold
  int fits = 0;
  std::string fontName;
  int fontPoints = 0;
  std::uint32_t textColor = 0, boldColor = 0, backgroundColor = 0;

 private:
  std::vector<std::string> rows_;
  bool bold_ = false;
  int row_ = 1;
  int column_ = 1;
};

class HeadlessTimeChart final : public HeadlessControl<TimeChart> {
 public:
  using HeadlessControl::HeadlessControl;
  void Show(const TimeChartData& data, const std::string& /*emptyText*/) override {
    shown = data;
    ++shows;
  }
  [[nodiscard]] std::string Picture() const override { return "picture"; }
  [[nodiscard]] int WidthInPoints() const override { return 800; }

  TimeChartData shown;
  int shows = 0;
};

class HeadlessChart final : public HeadlessControl<Chart> {
 public:
  using HeadlessControl::HeadlessControl;
  void Show(const ChartData& data, const std::string& emptyText) override {
    shown = data;
    shownEmptyText = emptyText;
  }

  ChartData shown;
  std::string shownEmptyText;
};

class HeadlessGrid final : public HeadlessControl<Grid> {
 public:
  using HeadlessControl::HeadlessControl;
  void Bind(GridSource* source) override;
  void Refresh() override;
  void RefreshRow(int) override {}
  void SetColumnHidden(int column, bool hidden) override;
  [[nodiscard]] bool ColumnHidden(int column) const override {
    return hiddenColumns_.contains(column);
  }
  void SetRowHidden(int row, bool hidden) override;
  [[nodiscard]] bool RowHidden(int row) const override { return hiddenRows_.contains(row); }
  void SetColumnWidth(int, int) override {}
  void SetColumnShare(int) override {}
  void SetSortMark(int, bool) override {}
  void SetRowsInSight(int) override {}
  [[nodiscard]] int Row() const override { return row_; }
  [[nodiscard]] int Column() const override { return column_; }
  void SetCurrent(int row, int column) override;
  [[nodiscard]] GridBlock Selection() const override;
  void Select(const GridBlock& block) override;
  [[nodiscard]] bool IsEditing() const override { return edit_.has_value(); }
  void BeginEdit() override;
  bool FinishEdit() override;

  // ---- as the user
  // Makes the cell current. False: no such cell, or hidden.
  bool GoTo(int row, int column);
  // Opens the current cell's edit and types `text` into it, without leaving it; false where it
  // cannot be edited or its drop-down does not offer the text.
  bool TypeInCell(const std::string& text);
  // GoTo, TypeInCell and FinishEdit. Returns whether the edit was written.
  bool EditCell(int row, int column, const std::string& text);
  void GiveUpEdit() { edit_.reset(); }
  // At the cell whose refused text stays under edit; else empty.
  [[nodiscard]] std::string Hint() const { return edit_ ? edit_->hint : std::string(); }
  [[nodiscard]] std::string TipAt(int row, int column) const;
  // What the grid shows; null before it is bound.
  [[nodiscard]] const GridSource* Source() const { return source_; }

 private:
  GridSource* source_ = nullptr;
  int row_ = -1;
  int column_ = -1;
  std::optional<GridBlock> block_;
  std::optional<GridEdit> edit_;
  std::set<int> hiddenColumns_;
  std::set<int> hiddenRows_;
};

class HeadlessCommand final : public Command {
 public:
  explicit HeadlessCommand(const CommandLayout& layout)
      : enabled_(layout.enabled),
        visible_(layout.visible),
        checked_(layout.checked),
        text_(layout.text) {}
  void SetEnabled(bool enabled) override { enabled_ = enabled; }
  [[nodiscard]] bool Enabled() const override { return enabled_; }
  void SetVisible(bool visible) override { visible_ = visible; }
  [[nodiscard]] bool Visible() const override { return visible_; }
  void SetChecked(bool checked) override { checked_ = checked; }
  [[nodiscard]] bool Checked() const override { return checked_; }
  void SetText(const std::string& text) override { text_ = text; }
  [[nodiscard]] std::string Text() const override { return text_; }

 private:
  bool enabled_, visible_, checked_;
  std::string text_;
};

// The control as its layout has it.
[[nodiscard]] std::unique_ptr<Control> MakeTwin(const ControlLayout& layout);

}  // namespace velmoor::headless
