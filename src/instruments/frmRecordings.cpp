#include "instruments/frmRecordings.h"

#include <algorithm>
#include <array>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "windows/SaveAs.h"

namespace velmoor {
namespace {

constexpr std::array<int, 4> kWidths{7, 20, 14, 20};
constexpr std::chrono::milliseconds kLook{250};
constexpr double kLongest = 24 * 3600;  // s
constexpr double kShiftPart = 0.01;     // of what is shown
constexpr const char* kNothing =
    "Show one recording or several of the list: their curves are laid over each other here.";

}  // namespace

void frmRecordings::Open(const std::string& shown) {
  if (IsOpen()) {
    BringToFront();
    ReadFolder();
  } else if (!Show(FormMode::modeless)) {
    return;
  }
  ui().vsRecordings.SetFocus();
  if (shown.empty()) return;
  const int row = list_.ShowOnly(shown);
  ui().vsRecordings.Refresh();
  if (row > 0) ui().vsRecordings.SetCurrent(row, RecordingList::show);
  TakeShown();
  ShowDetails();
}

void frmRecordings::FormLoad() {
  list_ = {};
  view_.Forget();
  ConnectOrder();
  ConnectList();
  ConnectChart();
  connections_ += ui().cmdExit.Click.Connect([this] { Unload(); });
  connections_ += instruments_.Record().Changed.Connect([this] { ShowRecorder(); });
  connections_ += instruments_.Record().Ended.Connect([this] { ReadFolder(); });
  connections_ += instruments_.AlarmKept.Connect([this](const std::string&) { ReadFolder(); });
  tmrLook_ = world().forms->NewTimer();
  tmrLook_->SetInterval(kLook);
  connections_ += tmrLook_->Tick.Connect([this] { ShowRecorder(); });
  tmrLook_->SetEnabled(true);
  ReadFolder();
  TakeShown();
  ShowRecorder();
}

void frmRecordings::FormUnload() {
  tmrLook_.reset();
  view_.Forget();
  list_ = {};
}

// ---- recording

void frmRecordings::ConnectOrder() {
  choices_ = TriggerChoices(instruments_.Headings().Items());
  std::vector<std::string> texts;
  for (const TriggerChoice& choice : choices_) texts.push_back(choice.text);
  ui().cmbTrigger.SetItems(texts);
  ui().cmbTrigger.SetListIndex(0);
  OfferEvents();
  connections_ += ui().cmbTrigger.Click.Connect([this] { OfferEvents(); });
  connections_ += ui().cmdRecord.Click.Connect([this] {
    const bool begins = instruments_.Record().Now() == Recorder::State::idle;
    if (!begins || TakeOrder()) instruments_.Toggle();
  });
}

void frmRecordings::OfferEvents() {
  const int index = ui().cmbTrigger.ListIndex();
  const TriggerChoice& choice = choices_.at(static_cast<std::size_t>(std::max(index, 0)));
  const auto events = EventsOf(choice);
  const bool isValue = choice.kind == TriggerChoice::Kind::value;
  const bool isStep = choice.kind == TriggerChoice::Kind::step;
  ui().cmbEvent.SetItems(events);
  ui().cmbEvent.SetListIndex(events.empty() ? -1 : 0);
  ui().cmbEvent.SetEnabled(!events.empty());
  ui().txtLevel.SetEnabled(isValue || isStep);
  ui().lblLevelUnit.SetText(isStep ? "number" : isValue ? choice.item.unit : "");
  ui().txtBefore.SetEnabled(choice.kind != TriggerChoice::Kind::hand);
}

bool frmRecordings::TakeOrder() {
  RecorderOrder order;
  const auto seconds = [](TextBox& box, double most, double& taken) {
    const std::string text(Trim(box.Text()));
    const auto number = text.empty() ? 0 : ParseFloat(text);
    if (number && *number >= 0 && *number <= most) {
      taken = *number;
      return true;
    }
    ShowExclamation("A time is a number of seconds from 0 to " + NumberText(most) + ".");
    box.SetFocus();
    return false;
  };
  if (!seconds(ui().txtLength, kLongest, order.length)) return false;
  const TriggerChoice& choice = choices_.at(static_cast<std::size_t>(ui().cmbTrigger.ListIndex()));
  if (choice.kind != TriggerChoice::Kind::hand) {
    if (!seconds(ui().txtBefore, Recorder::kLongestBefore, order.before)) return false;
    const std::string level = ui().txtLevel.Text();
    const bool isStep = choice.kind == TriggerChoice::Kind::step;
    const auto step = isStep ? ParseWhole(level) : std::nullopt;
    order.trigger = !isStep ? TriggerOf(choice, ui().cmbEvent.ListIndex(), level)
                            : instruments_.Headings().OfStep(static_cast<int>(step.value_or(0)));
    if (!order.trigger) {
      ShowExclamation(isStep ? "A step is told by its target, so it must be one of the index table "
                               "with an absolute position."
                             : "The level is a number in " + choice.item.unit + ".");
      ui().txtLevel.SetFocus();
      return false;
    }
  }
  instruments_.order = std::move(order);
  return true;
}

void frmRecordings::ShowRecorder() {
  const Recorder& recorder = instruments_.Record();
  const bool idle = recorder.Now() == Recorder::State::idle;
  ui().cmdRecord.SetCaption(idle ? "&Record" : "Stop &Recording");
  ui().cmdRecord.SetEnabled(!idle || instruments_.Folder().has_value());
  ui().lblRecorder.SetText(recorder.Words());
  ui().lblRecorder.SetTone(recorder.Now() == Recorder::State::running ? Tone::busy : Tone::normal);
}

// ---- the list

void frmRecordings::ConnectList() {
  Grid& grid = ui().vsRecordings;
  grid.Bind(&list_);
  for (std::size_t i = 0; i < kWidths.size(); ++i) {
    grid.SetColumnWidth(static_cast<int>(i), kWidths.at(i));
  }
  connections_ += grid.ValidateEdit.Connect([this](GridEdit& edit) {
    edit.text = std::string(Trim(edit.text));
    if (edit.column == RecordingList::name) edit.hint = list_.WhyNot(edit.row, edit.text);
    edit.cancel = !edit.hint.empty();
  });
  connections_ += grid.AfterEdit.Connect([this](int row, int column) {
    ui().vsRecordings.RefreshRow(row);
    if (column == RecordingList::name) TakeShown();
    ShowDetails();
  });
  connections_ += grid.CellButton.Connect([this](int row, int) { Toggle(row); });
  connections_ += grid.RowChosen.Connect([this](int row) { Toggle(row); });
  connections_ += grid.RowColChange.Connect([this] { ShowDetails(); });
  connections_ += grid.Tip.Connect(
      [this](int row, int column, std::string& tip) { tip = list_.Text(row, column); });
  connections_ += ui().cmdDelete.Click.Connect([this] { cmdDelete_Click(); });
  ui().vsDetails.Bind(&detailsGrid_);
  constexpr int kWords = 18;
  ui().vsDetails.SetColumnWidth(0, kWords);
  connections_ += ui().vsDetails.Tip.Connect(
      [this](int row, int column, std::string& tip) { tip = detailsGrid_.Text(row, column); });
}

// The current one stays so.
void frmRecordings::ReadFolder() {
  const RecordingList::Row* const current = list_.At(ui().vsRecordings.Row());
  const std::string name = current != nullptr ? current->name : std::string();
  list_.Read(instruments_.Folder());
  ui().vsRecordings.Refresh();
  const int count = list_.Rows() - 1;
  if (count > 0) {
    ui().vsRecordings.SetCurrent(std::max(list_.RowOf(name), 1), RecordingList::show);
  }
  ui().lblList.SetText(count == 0 ? "There is no recording of this project yet."
                                  : NumberText(count) + " of this project, kept in " +
                                        list_.Folder()->Title() + " beside it");
  ShowDetails();
}

void frmRecordings::Toggle(int row) {
  if (!list_.Toggle(row)) return;
  ui().vsRecordings.Refresh();
  TakeShown();
}

void frmRecordings::ShowDetails() {
  const int row = ui().vsRecordings.Row();
  ui().cmdDelete.SetEnabled(list_.At(row) != nullptr);
  detailsGrid_.SetTable(list_.Details(row));
  ui().vsDetails.Refresh();
}

void frmRecordings::cmdDelete_Click() {
  const RecordingList::Row* const row = list_.At(ui().vsRecordings.Row());
  if (row == nullptr) return;
  const std::string name = row->name;
  const bool shown = row->shown;
  const auto token = Token();
  if (!AskGraveYesNo("The recording " + name + " is deleted for good.\rDo you wish that?")) return;
  if (token.expired()) return;
  Trapped("The recording cannot be deleted!\r", [&] {
    list_.Folder()->Remove(name);
    return true;
  });
  ReadFolder();
  if (shown) TakeShown();
}

// ---- the chart

void frmRecordings::ConnectChart() {
  view_.Bind(ui().chtTimes, ui().vsFigures, ui().lblCursors, kNothing, connections_);
  ui().cmbAlign.SetItems({"where each began", "the start of motion"});
  ui().cmbAlign.SetListIndex(0);
  connections_ += ui().cmbAlign.Click.Connect([this] {
    view_.Of().Align(Chosen());
    view_.Show();
  });
  connections_ += ui().cmdWhole.Click.Connect([this] {
    view_.Of().ShowWhole();
    view_.Show();
  });
  connections_ += ui().cmdEarlier.Click.Connect([this] { Shift(-kShiftPart); });
  connections_ += ui().cmdLater.Click.Connect([this] { Shift(kShiftPart); });
  connections_ += ui().cmdSaveFigures.Click.Connect([this] { SaveFigures(); });
  connections_ += ui().cmdSavePicture.Click.Connect([this] { SavePicture(); });
}

Alignment frmRecordings::Chosen() const {
  return ui().cmbAlign.ListIndex() == 1 ? Alignment::motion : Alignment::begin;
}

void frmRecordings::TakeShown() {
  std::vector<Overlay::Shown> shown;
  for (auto& [name, recording] : list_.TakeShown()) {
    shown.push_back({.name = name, .recording = std::move(recording)});
  }
  constexpr int kFigure = 30;
  constexpr int kValue = 20;
  view_.Take(std::move(shown), Chosen(), kFigure, kValue);
  const std::size_t count = view_.All().size();
  ui().cmdSaveFigures.SetEnabled(count > 0);
  ui().cmdSavePicture.SetEnabled(count > 0);
  ui().cmdEarlier.SetEnabled(count > 1);
  ui().cmdLater.SetEnabled(count > 1);
}

// The current recording of the list, where it is shown; else the last of those that are.
void frmRecordings::Shift(double part) {
  const auto& all = view_.All();
  if (all.empty()) return;
  const RecordingList::Row* const current = list_.At(ui().vsRecordings.Row());
  auto which =
      current == nullptr ? all.end() : std::ranges::find(all, current->name, &Overlay::Shown::name);
  if (which == all.end()) which = std::prev(all.end());
  view_.Of().Shift(static_cast<std::size_t>(which - all.begin()), part);
  view_.Show();
}

void frmRecordings::SaveFigures() {
  (void)SaveAs({"Save Figures", "Comma-Separated Text (*.csv)|*.csv", "csv", "", "figures.csv"},
               "The figures cannot be saved!\r", [this] { return view_.FiguresCsv(); });
}

void frmRecordings::SavePicture() {
  (void)SaveAs({"Save Picture", "Picture (*.png)|*.png", "png", "", "recordings.png"},
               "The picture cannot be saved!\r", [this] { return ui().chtTimes.Picture(); });
}

}  // namespace velmoor
