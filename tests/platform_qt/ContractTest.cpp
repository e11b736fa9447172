// What windows and their controls owe the logic: asked of the real ones and of the twin alike.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <sstream>

#include "SampleGrid.h"
#include "Stages.h"
#include "layouts/AllLayouts.h"

namespace velmoor {
namespace {

using testing::ElementsAre;

// ---- as a window opens

// All that the logic can ask of a control.
std::string StateOf(Control& control) {
  std::ostringstream out;
  out << (control.Enabled() ? "" : "disabled ") << (control.Visible() ? "" : "hidden ")
      << control.ToolTip() << '|';
  if (const auto* button = dynamic_cast<Button*>(&control)) out << button->Caption();
  if (const auto* box = dynamic_cast<TextBox*>(&control)) out << box->Text();
  if (const auto* label = dynamic_cast<Label*>(&control)) out << label->Text();
  if (const auto* lamp = dynamic_cast<Lamp*>(&control)) out << static_cast<int>(lamp->LampTone());
  if (const auto* bar = dynamic_cast<ProgressBar*>(&control)) out << bar->Value();
  if (const auto* box = dynamic_cast<CheckBox*>(&control)) out << box->Caption() << box->Value();
  if (const auto* grid = dynamic_cast<Grid*>(&control)) out << grid->Row() << grid->Column();
  if (const auto* screen = dynamic_cast<TerminalScreen*>(&control)) {
    out << screen->Rows() << 'x' << screen->Columns() << screen->CursorRow();
  }
  if (const auto* combo = dynamic_cast<ComboBox*>(&control)) {
    for (const std::string& item : combo->Items()) out << item << ';';
    out << combo->ListIndex() << combo->Text();
  }
  if (const auto* group = dynamic_cast<OptionGroup*>(&control)) {
    for (int i = 0; i < group->Count(); ++i) {
      out << group->ChoiceCaption(i) << group->ChoiceEnabled(i) << ';';
    }
    out << group->Value();
  }
  return out.str();
}

// A line for each control and command of the layout.
std::vector<std::string> StatesOf(LaidOut& window, const Layout& layout) {
  const LayoutAccess access(window, layout);
  std::vector<std::string> states;
  for (std::size_t i = 0; i < layout.controls.size(); ++i) {
    states.push_back(std::string(layout.controls[i].name) + ": " + StateOf(access.At<Control>(i)));
  }
  for (std::size_t i = 0; i < layout.commands.size(); ++i) {
    const Command& command = access.CommandAt(i);
    states.push_back(std::string(layout.commands[i].name) + ": " +
                     (command.Enabled() ? "" : "disabled ") + (command.Visible() ? "" : "hidden ") +
                     (command.Checked() ? "checked" : ""));
  }
  return states;
}

TEST(TwinTest, EveryWindowOpensAsTheRealOneDoes) {
  QtStage real;
  TwinStage twin;
  for (const Layout* const layout : layouts::kAll) {
    SCOPED_TRACE(layout->name);
    if (layout == &layouts::frmMain::kLayout) {
      EXPECT_EQ(StatesOf(*twin.forms().LoadMainWindow(*layout), *layout),
                StatesOf(*real.forms().LoadMainWindow(*layout), *layout));
      continue;
    }
    const auto expected = real.forms().Load(*layout);
    const auto form = twin.forms().Load(*layout);
    EXPECT_EQ(form->Caption(), expected->Caption());
    EXPECT_EQ(StatesOf(*form, *layout), StatesOf(*expected, *layout));
    EXPECT_FALSE(StatesOf(*form, *layout).empty());
  }
}

// ---- what happens then

template <typename Stage>
class Contract : public testing::Test {
 protected:
  template <typename Ui>
  struct Opened {
    explicit Opened(Forms& forms) : form(forms.Load(Ui::kLayout)), ui(*form) {
      form->Show(FormMode::blocking);
    }
    std::unique_ptr<Form> form;
    Ui ui;
  };
  using Communications = Opened<layouts::frmCommunications>;
  // Notes `word` at each event.
  template <typename Event>
  void Note(Event& event, const std::string& word) {
    held += event.Connect([this, word](auto&&...) { seen.push_back(word); });
  }

  Stage stage;
  std::vector<std::string> seen;
  Connections held;
};
using Stages = testing::Types<QtStage, TwinStage>;
TYPED_TEST_SUITE(Contract, Stages);

TYPED_TEST(Contract, AFormOfAnotherLayoutIsNotTaken) {
  const auto form = this->stage.forms().Load(layouts::frmZone::kLayout);
  EXPECT_EQ(form->Name(), "frmZone");
  EXPECT_THROW((void)layouts::frmJog(*form), std::logic_error);
}

TYPED_TEST(Contract, AFormIsListedWhileItIsShownAndAsksBeforeItCloses) {
  Forms& forms = this->stage.forms();
  const auto form = forms.Load(layouts::frmDialogStop::kLayout);
  bool refuse = true;
  this->Note(form->Activated, "activated");
  this->held += form->QueryUnload.Connect([&](bool& cancel) { cancel = refuse; });
  this->held += form->Unloaded.Connect(
      [&] { this->seen.emplace_back(form->IsShown() ? "unloaded and shown" : "unloaded"); });
  EXPECT_FALSE(form->IsShown());
  form->Show(FormMode::blocking);
  EXPECT_THAT(forms.Shown(), ElementsAre(form.get()));
  EXPECT_EQ(forms.Active(), form.get());
  EXPECT_TRUE(forms.InputBlocked());
  EXPECT_FALSE(form->Unload());
  this->stage.CloseByFrame(*form);
  EXPECT_TRUE(form->IsShown());
  refuse = false;
  EXPECT_TRUE(form->Unload());
  EXPECT_TRUE(forms.Shown().empty());
  EXPECT_FALSE(forms.InputBlocked());
  EXPECT_THAT(this->seen, ElementsAre("activated", "unloaded"));
}

TYPED_TEST(Contract, AModalFormReturnsWhenItsHandlerUnloadsIt) {
  auto form = this->stage.forms().Load(layouts::frmCommunications::kLayout);
  const layouts::frmCommunications ui(*form);
  this->held += ui.cmdCancel.Click.Connect([&] { (void)form->Unload(); });
  // From within the event, as a window class does.
  this->held += form->Unloaded.Connect([&] { form.reset(); });
  this->stage.WhenModal(layouts::frmCommunications::kLayout,
                        [this] { this->stage.Press("cmdCancel"); });
  form->Show(FormMode::modal);
  EXPECT_EQ(form, nullptr);
  EXPECT_FALSE(this->stage.forms().InputBlocked());
}

TYPED_TEST(Contract, ASplashCountsNowhere) {
  const auto splash = this->stage.forms().Load(layouts::frmSplash::kLayout);
  splash->Show(FormMode::splash);
  EXPECT_TRUE(splash->IsShown());
  EXPECT_TRUE(this->stage.forms().Shown().empty());
  EXPECT_FALSE(this->stage.forms().InputBlocked());
}

TYPED_TEST(Contract, CommandsAreChosenByTheUserAlone) {
  const auto main = this->stage.forms().LoadMainWindow(layouts::frmMain::kLayout);
  main->Show();
  const auto form = this->stage.forms().Load(layouts::frmZone::kLayout);
  const layouts::frmZone ui(*form);
  using Id = layouts::frmZone::Id;
  form->Show(FormMode::modeless);
  this->held = ui.commands.OnChosen([&](Id id) { this->seen.push_back(ui.commands.NameOf(id)); });
  this->stage.ChooseCommand("mnuTableClear");
  ui.commands[Id::mnuTableClear].SetChecked(true);
  ui.commands[Id::mnuTableClear].SetEnabled(false);
  this->stage.ChooseCommand("mnuTableClear");
  this->stage.ChooseCommand("mnuTableExport");
  EXPECT_THAT(this->seen, ElementsAre("mnuTableClear", "mnuTableExport"));
  EXPECT_FALSE(ui.commands[Id::mnuTableClear].Enabled());
  ui.commands[Id::mnuTable].SetVisible(false);
  EXPECT_FALSE(ui.commands[Id::mnuTable].Visible());
}

TYPED_TEST(Contract, AButtonIsPressedWhereItIsEnabled) {
  const typename TestFixture::Communications opened(this->stage.forms());
  Button& button = opened.ui.cmdConnect;
  this->Note(button.Click, "click");
  this->stage.Press("cmdConnect");
  button.SetEnabled(false);
  this->stage.Press("cmdConnect");
  EXPECT_FALSE(button.Enabled());
  EXPECT_THAT(this->seen, ElementsAre("click"));
  button.SetCaption("&Go");
  EXPECT_EQ(button.Caption(), "&Go");
  button.SetVisible(false);
  EXPECT_FALSE(button.Visible());
  button.SetToolTip("Why");
  EXPECT_EQ(button.ToolTip(), "Why");
}

TYPED_TEST(Contract, AHeldButtonIsLetGoExactlyOnce) {
  const typename TestFixture::Communications opened(this->stage.forms());
  Button& button = opened.ui.cmdConnect;
  this->Note(button.Down, "d");
  this->Note(button.Up, "u");
  this->stage.Hold("cmdConnect");
  this->stage.LetGo("cmdConnect");
  this->stage.LetGo("cmdConnect");
  this->stage.Hold("cmdConnect");
  button.SetEnabled(false);
  this->stage.LetGo("cmdConnect");
  button.SetEnabled(true);
  this->stage.Hold("cmdConnect");
  button.SetVisible(false);
  button.SetVisible(true);
  EXPECT_THAT(this->seen, ElementsAre("d", "u", "d", "u", "d", "u"));
}

TYPED_TEST(Contract, ATextBoxTellsOfTypingAndMayKeepTheUser) {
  const typename TestFixture::template Opened<layouts::frmHomePosition> opened(this->stage.forms());
  TextBox& box = opened.ui.txtOffset;
  this->Note(box.Change, "change");
  this->held += box.Validate.Connect([&](bool& cancel) { cancel = box.Text() == "bad"; });
  box.SetText("12");
  EXPECT_TRUE(this->seen.empty());
  this->stage.Type("txtOffset", "7");
  EXPECT_EQ(box.Text(), "7");
  EXPECT_THAT(this->seen, ElementsAre("change"));
  box.SetText("bad");
  EXPECT_FALSE(this->stage.Leave("txtOffset"));
  box.SetText("good");
  EXPECT_TRUE(this->stage.Leave("txtOffset"));
}

TYPED_TEST(Contract, AListTellsOfTheUsersChoiceAlone) {
  const typename TestFixture::Communications opened(this->stage.forms());
  ComboBox& combo = opened.ui.cmbAxes;
  this->held += combo.Click.Connect([&] { this->seen.push_back(combo.Text()); });
  combo.SetItems({"0", "A", "F"});
  EXPECT_EQ(combo.ListIndex(), -1);
  EXPECT_EQ(combo.Text(), "");
  combo.SetListIndex(1);
  EXPECT_EQ(combo.Text(), "A");
  for (const int outside : {3, -1, -2}) {
    combo.SetListIndex(1);
    combo.SetListIndex(outside);
    EXPECT_EQ(combo.ListIndex(), -1) << outside;
  }
  EXPECT_TRUE(this->seen.empty());
  this->stage.Select("cmbAxes", 2);
  EXPECT_THAT(this->seen, ElementsAre("F"));
  EXPECT_EQ(combo.ListIndex(), 2);
  EXPECT_THAT(combo.Items(), ElementsAre("0", "A", "F"));
}

TYPED_TEST(Contract, ATickTellsOfTheUserAlone) {
  const typename TestFixture::template Opened<layouts::frmPrint> opened(this->stage.forms());
  CheckBox& box = opened.ui.chkPrint_[2];
  this->held += box.Click.Connect([&] { this->seen.emplace_back(box.Value() ? "on" : "off"); });
  box.SetValue(true);
  EXPECT_TRUE(box.Value());
  EXPECT_TRUE(this->seen.empty());
  this->stage.Check("chkPrint_2");
  this->stage.Check("chkPrint_2");
  EXPECT_THAT(this->seen, ElementsAre("off", "on"));
  box.SetCaption("&Zones");
  EXPECT_EQ(box.Caption(), "&Zones");
}

TYPED_TEST(Contract, ChoicesExcludeEachOtherAndComeWithTheirPlace) {
  const typename TestFixture::Communications opened(this->stage.forms());
  OptionGroup& group = opened.ui.optBaudRate;
  std::vector<int> chosen;
  this->held += group.Click.Connect([&](int index) { chosen.push_back(index); });
  ASSERT_EQ(group.Count(), 3);
  for (const int index : {2, -1, 0}) {
    group.SetValue(index);
    EXPECT_EQ(group.Value(), index);
  }
  EXPECT_TRUE(chosen.empty());
  group.SetChoiceEnabled(1, false);
  EXPECT_FALSE(group.ChoiceEnabled(1));
  this->stage.Choose("optBaudRate", 1);
  this->stage.Choose("optBaudRate", 2);
  EXPECT_THAT(chosen, ElementsAre(2));
  EXPECT_EQ(group.Value(), 2);
  group.SetChoiceCaption(0, "9600, at last");
  EXPECT_EQ(group.ChoiceCaption(0), "9600, at last");
  EXPECT_THROW(group.SetChoiceCaption(3, "x"), std::out_of_range);
}

TYPED_TEST(Contract, WhatIsShownCanBeAskedFor) {
  const typename TestFixture::template Opened<layouts::frmMonitoring> opened(this->stage.forms());
  Label& label = opened.ui.lblComment;
  label.SetText("One\rtwo");
  label.SetTone(Tone::alarm);
  EXPECT_EQ(label.Text(), "One\rtwo");
  EXPECT_EQ(label.TextTone(), Tone::alarm);
  Lamp& lamp = opened.ui.lmpStatus_[3];
  EXPECT_EQ(lamp.LampTone(), Tone::normal);
  lamp.SetTone(Tone::good);
  EXPECT_EQ(lamp.LampTone(), Tone::good);
  const typename TestFixture::Communications other(this->stage.forms());
  ProgressBar& bar = other.ui.pgbAxes;
  for (const auto& [value, maximum, shown] :
       {std::tuple{3, 16, 3}, {20, 16, 16}, {5, 0, 0}, {-1, 16, 0}}) {
    bar.SetProgress(value, maximum);
    EXPECT_EQ(bar.Value(), shown) << value << " of " << maximum;
  }
}

TYPED_TEST(Contract, ATimerTicksWhileItIsEnabled) {
  const auto timer = this->stage.forms().NewTimer();
  this->Note(timer->Tick, "tick");
  EXPECT_FALSE(timer->Enabled());
  timer->SetInterval(std::chrono::milliseconds(1));
  this->stage.Wait(std::chrono::milliseconds(5));
  EXPECT_TRUE(this->seen.empty());
  timer->SetEnabled(true);
  EXPECT_TRUE(timer->Enabled());
  for (int i = 0; i < 100 && this->seen.size() < 2; ++i) {
    this->stage.Wait(std::chrono::milliseconds(5));
  }
  EXPECT_GE(this->seen.size(), 2U);
  timer->SetEnabled(false);
  this->seen.clear();
  this->stage.Wait(std::chrono::milliseconds(5));
  EXPECT_TRUE(this->seen.empty());
}

TYPED_TEST(Contract, ATerminalScreenWrapsAtItsLastColumnAndScrollsAtItsLastRow) {
  const typename TestFixture::template Opened<layouts::frmTerminalOptions> opened(
      this->stage.forms());
  TerminalScreen& screen = opened.ui.VtSample;
  const int rows = screen.Rows();
  const auto columns = static_cast<std::size_t>(screen.Columns());
  screen.MoveCursor(rows, 1);
  screen.Write("first  ");
  EXPECT_EQ(screen.RowText(rows), "first");
  EXPECT_EQ(screen.CursorColumn(), 8);
  screen.MoveCursor(rows, 1);
  screen.Write(std::string(columns, 'x') + "yz");
  EXPECT_EQ(screen.RowText(rows - 1), std::string(columns, 'x'));
  EXPECT_EQ(screen.RowText(rows), "yz");
  EXPECT_EQ(screen.CursorRow(), rows);
  screen.ScrollUp();
  EXPECT_EQ(screen.RowText(rows - 1), "yz");
  screen.MoveCursor(rows + 5, 0);
  EXPECT_EQ(screen.CursorRow(), rows);
  EXPECT_EQ(screen.CursorColumn(), 1);
  screen.Clear();
  EXPECT_EQ(screen.RowText(rows - 1), "");
  EXPECT_EQ(screen.CursorRow(), 1);
}

// ---- the grid

template <typename Stage>
class GridContract : public Contract<Stage> {
 protected:
  GridContract() {
    grid.Bind(&rows);
    this->held += grid.ValidateEdit.Connect([this](GridEdit& edit) {
      if (edit.text == "bad") edit.cancel = true;
      if (edit.text == "5") edit.text = "5.00";
    });
    this->Note(grid.RowColChange, "moved");
    this->held += grid.AfterEdit.Connect(
        [this](int row, int column) { this->seen.push_back(rows.Text(row, column)); });
  }
  bool Type(const char* text) { return this->stage.TypeInCell("vsFG", text); }

  SampleGrid rows;  // outlives the grid
  typename Contract<Stage>::template Opened<layouts::frmCompare> opened{this->stage.forms()};
  Grid& grid = opened.ui.vsFG;
};
TYPED_TEST_SUITE(GridContract, Stages);

TYPED_TEST(GridContract, AnEditGoesThroughTheCheckIntoTheSource) {
  this->grid.SetCurrent(1, 1);
  EXPECT_TRUE(this->Type("5"));
  EXPECT_EQ(this->rows.texts[1][1], "5.00");
  EXPECT_TRUE(this->Type("bad"));
  EXPECT_EQ(this->rows.texts[1][1], "5.00");
  EXPECT_THAT(this->seen, testing::Contains("5.00").Times(1));
}

TYPED_TEST(GridContract, ARefusedTextWithAHintStaysUnderEditUntilItIsTakenOrGivenUp) {
  this->held += this->grid.ValidateEdit.Connect(
      [](GridEdit& edit) { edit.hint = edit.cancel ? "1 to 9" : ""; });
  this->grid.SetCurrent(1, 1);
  EXPECT_TRUE(this->Type("bad"));
  EXPECT_TRUE(this->grid.IsEditing());
  EXPECT_FALSE(this->grid.FinishEdit()) << "it is as bad as before";
  this->stage.Wait(std::chrono::milliseconds(1));
  EXPECT_TRUE(this->grid.IsEditing());
  EXPECT_EQ(this->rows.texts[1][1], "100");
}

TYPED_TEST(GridContract, TryingToEditALockedCellIsToldAndGoingThereIsNot) {
  std::vector<int> denied;
  this->held += this->grid.EditDenied.Connect([&](int row) { denied.push_back(row); });
  this->grid.SetCurrent(2, 1);
  this->stage.GoDown("vsFG");
  EXPECT_TRUE(denied.empty());
  EXPECT_FALSE(this->Type("5"));
  this->grid.BeginEdit();
  EXPECT_THAT(denied, ElementsAre(3, 3));
}

TYPED_TEST(GridContract, OnlyWhatMayBeEditedOpens) {
  for (const auto& [row, column, opens] :
       {std::tuple{1, 1, true}, {1, 0, false}, {3, 1, false}, {-1, -1, false}}) {
    this->grid.SetCurrent(row, column);
    EXPECT_FALSE(this->grid.IsEditing());
    this->grid.BeginEdit();
    EXPECT_EQ(this->grid.IsEditing(), opens) << row << ", " << column;
    EXPECT_TRUE(this->grid.FinishEdit());
  }
  EXPECT_TRUE(std::ranges::find(this->seen, "moved") == this->seen.end());
}

TYPED_TEST(GridContract, OnlyTheUserMovesTheCurrentCellWithAnEventAndPassesHiddenRows) {
  this->grid.SetCurrent(1, 1);
  this->grid.SetRowHidden(2, true);
  this->grid.SetColumnHidden(0, true);
  EXPECT_TRUE(this->seen.empty());
  EXPECT_TRUE(this->grid.RowHidden(2));
  EXPECT_TRUE(this->grid.ColumnHidden(0));
  this->stage.GoDown("vsFG");
  EXPECT_EQ(this->grid.Row(), 3);
  EXPECT_EQ(this->grid.Column(), 1);
  EXPECT_THAT(this->seen, ElementsAre("moved"));
}

TYPED_TEST(GridContract, ABlockIsSelectedAndRefreshedWithTheSource) {
  this->grid.SetCurrent(1, 0);
  EXPECT_EQ(this->grid.Selection(), (GridBlock{1, 0, 1, 0}));
  this->grid.Select({2, 1, 3, 1});
  EXPECT_EQ(this->grid.Selection(), (GridBlock{2, 1, 3, 1}));
  EXPECT_EQ(this->grid.Row(), 2);
  this->grid.SetCurrent(3, 1);
  this->rows.texts.pop_back();
  this->grid.Refresh();
  EXPECT_EQ(this->grid.Row(), -1);
  this->grid.Bind(nullptr);
  EXPECT_EQ(this->grid.Row(), -1);
}

}  // namespace
}  // namespace velmoor
