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

enum Column { kShow, kName, kStarted, kNote, kColumns };
constexpr std::array<const char*, kColumns> kHeadings{"", "Name", "Began", "Note"};
constexpr std::array<int, kColumns> kWidths{7, 20, 14, 20};
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
  for (std::size_t i = 0; i < rows_.size(); ++i) {
    rows_[i].shown = rows_[i].name == shown;
    if (rows_[i].shown) ui().vsRecordings.SetCurrent(static_cast<int>(i) + 1, kShow);
  }
  ui().vsRecordings.Refresh();
  TakeShown();
  ShowDetails();
}

void frmRecordings::FormLoad() {
  rows_.clear();
  overlay_ = {};
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
  overlay_ = {};
  rows_.clear();
}

// ---- recording

void frmRecordings::ConnectOrder() {
  choices_ = TriggerChoices(instruments_.Items());
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
                            : instruments_.StepTrigger(static_cast<int>(step.value_or(0)));
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

int frmRecordings::Columns() const {
  return kColumns;
}

std::string frmRecordings::Text(int row, int column) const {
  if (row == 0) return kHeadings.at(static_cast<std::size_t>(column));
  const Row& at = rows_.at(static_cast<std::size_t>(row) - 1);
  switch (column) {
    case kShow:
      return at.shown ? "Hide" : "Show";
    case kName:
      return at.name;
    case kStarted:
      return at.fault.empty() ? at.heading.cause : "cannot be read";
    default:
      return at.heading.note;
  }
}

CellTraits frmRecordings::Traits(int row, int column) const {
  CellTraits traits;
  if (row == 0) return traits;
  const bool readable = rows_.at(static_cast<std::size_t>(row) - 1).fault.empty();
  traits.action = column == kShow && readable;
  traits.editable = column == kName || (column == kNote && readable);
  if (column == kStarted && !readable) traits.tone = Tone::alarm;
  return traits;
}

// An edit that ValidateEdit let pass.
void frmRecordings::SetText(int row, int column, const std::string& text) {
  Row& at = rows_.at(static_cast<std::size_t>(row) - 1);
  const auto folder = instruments_.Folder();
  if (!folder) return;
  Trapped("The recording cannot be changed!\r", [&] {
    if (column == kName && text != at.name) {
      folder->Rename(at.name, text);
      at.name = text;
    }
    if (column == kNote && text != at.heading.note) {
      folder->Annotate(at.name, text);
      at.heading.note = text;
    }
    return true;
  });
}

void frmRecordings::ConnectList() {
  Grid& grid = ui().vsRecordings;
  grid.Bind(this);
  for (std::size_t i = 0; i < kWidths.size(); ++i) {
    grid.SetColumnWidth(static_cast<int>(i), kWidths.at(i));
  }
  connections_ += grid.ValidateEdit.Connect([this](GridEdit& edit) {
    edit.text = std::string(Trim(edit.text));
    const auto folder = instruments_.Folder();
    const Row& row = rows_.at(static_cast<std::size_t>(edit.row) - 1);
    if (edit.column != kName || !folder || edit.text == row.name) return;
    edit.hint = folder->WhyNot(edit.text);
    edit.cancel = !edit.hint.empty();
  });
  connections_ += grid.AfterEdit.Connect([this](int row, int column) {
    ui().vsRecordings.RefreshRow(row);
    if (column == kName) TakeShown();
    ShowDetails();
  });
  connections_ += grid.CellButton.Connect([this](int row, int) {
    if (row > 0) Toggle(rows_.at(static_cast<std::size_t>(row) - 1));
  });
  connections_ += grid.RowChosen.Connect([this](int row) {
    if (row > 0) Toggle(rows_.at(static_cast<std::size_t>(row) - 1));
  });
  connections_ += grid.RowColChange.Connect([this] { ShowDetails(); });
  connections_ +=
      grid.Tip.Connect([this](int row, int column, std::string& tip) { tip = Text(row, column); });
  connections_ += ui().cmdDelete.Click.Connect([this] { cmdDelete_Click(); });
  ui().vsDetails.Bind(&detailsGrid_);
  constexpr int kWords = 18;
  ui().vsDetails.SetColumnWidth(0, kWords);
  connections_ += ui().vsDetails.Tip.Connect(
      [this](int row, int column, std::string& tip) { tip = detailsGrid_.Text(row, column); });
}

// What was shown stays so.
void frmRecordings::ReadFolder() {
  std::vector<Row> rows;
  if (const auto folder = instruments_.Folder()) {
    for (const std::string& name : folder->Names()) {
      Row row{.name = name, .heading = {}, .fault = {}};
      try {
        row.heading = ReadRecordingHeading(folder->PathOf(name));
      } catch (const std::exception& error) {
        row.fault = error.what();
      }
      const auto before = std::ranges::find(rows_, name, &Row::name);
      row.shown = before != rows_.end() && before->shown;
      rows.push_back(std::move(row));
    }
  }
  const Row* const current = Current();
  const std::string name = current != nullptr ? current->name : std::string();
  rows_ = std::move(rows);
  ui().vsRecordings.Refresh();
  const auto place = std::ranges::find(rows_, name, &Row::name);
  if (!rows_.empty()) {
    const auto row = place == rows_.end() ? 0 : place - rows_.begin();
    ui().vsRecordings.SetCurrent(static_cast<int>(row) + 1, kShow);
  }
  ui().lblList.SetText(rows_.empty() ? "There is no recording of this project yet."
                                     : NumberText(rows_.size()) + " of this project, kept in " +
                                           instruments_.Folder()->Title() + " beside it");
  ShowDetails();
}

frmRecordings::Row* frmRecordings::Current() {
  const int row = ui().vsRecordings.Row();
  return row < 1 || row >= Rows() ? nullptr : &rows_[static_cast<std::size_t>(row) - 1];
}

void frmRecordings::Toggle(Row& row) {
  if (!row.fault.empty()) return;
  row.shown = !row.shown;
  ui().vsRecordings.Refresh();
  TakeShown();
}

void frmRecordings::ShowDetails() {
  std::vector<CsvRow> rows{{"What", "As it was"}};
  const Row* const row = Current();
  ui().cmdDelete.SetEnabled(row != nullptr);
  if (row != nullptr) {
    const RecordingHeading& heading = row->heading;
    const std::array<std::pair<const char*, std::string>, 9> texts{
        {{"Fault", row->fault},
         {"Moment of time 0", heading.begun},
         {"Project", heading.project},
         {"Axis", heading.axis},
         {"Began", heading.cause},
         {"Gains", heading.gains},
         {"In-position window", heading.window},
         {"Samples a second", heading.rate},
         {"Note", heading.note}}};
    for (const auto& [word, text] : texts) {
      if (!text.empty()) rows.push_back({word, text});
    }
    for (const std::string& remark : heading.remarks) {
      const std::size_t colon = remark.find(": ");
      const bool parted = colon != std::string::npos;
      rows.push_back(
          {parted ? remark.substr(0, colon) : "", parted ? remark.substr(colon + 2) : remark});
    }
  }
  detailsGrid_.SetTable(std::move(rows));
  ui().vsDetails.Refresh();
}

void frmRecordings::cmdDelete_Click() {
  const Row* const row = Current();
  const auto folder = instruments_.Folder();
  if (row == nullptr || !folder) return;
  if (!AskGraveYesNo("The recording " + row->name + " is deleted for good.\rDo you wish that?")) {
    return;
  }
  const bool shown = row->shown;
  Trapped("The recording cannot be deleted!\r", [&] {
    folder->Remove(row->name);
    return true;
  });
  ReadFolder();
  if (shown) TakeShown();
}

// ---- the chart

void frmRecordings::ConnectChart() {
  TimeChart& chart = ui().chtTimes;
  ui().cmbAlign.SetItems({"where each began", "the start of motion"});
  ui().cmbAlign.SetListIndex(0);
  connections_ += ui().cmbAlign.Click.Connect([this] {
    overlay_.Align(ui().cmbAlign.ListIndex() == 1 ? Alignment::motion : Alignment::begin);
    ShowChart();
  });
  connections_ += chart.Zoom.Connect([this](double time, double factor) {
    overlay_.Zoom(time, factor);
    ShowChart();
  });
  connections_ += chart.Pan.Connect([this](double seconds) {
    overlay_.Pan(seconds);
    ShowChart();
  });
  connections_ += chart.Point.Connect([this](double time) {
    overlay_.PointAt(time);
    ShowChart();
  });
  connections_ += ui().cmdWhole.Click.Connect([this] {
    overlay_.ShowWhole();
    ShowChart();
  });
  connections_ += ui().cmdEarlier.Click.Connect([this] { Shift(-kShiftPart); });
  connections_ += ui().cmdLater.Click.Connect([this] { Shift(kShiftPart); });
  connections_ += ui().cmdSaveFigures.Click.Connect([this] { SaveFigures(); });
  connections_ += ui().cmdSavePicture.Click.Connect([this] { SavePicture(); });
}

void frmRecordings::TakeShown() {
  const auto folder = instruments_.Folder();
  std::vector<Overlay::Shown> shown;
  for (Row& row : rows_) {
    if (!row.shown || !folder) continue;
    row.shown = Trapped("The recording cannot be shown!\r", [&] {
      shown.push_back({.name = row.name, .recording = ReadRecording(folder->PathOf(row.name))});
      return true;
    });
  }
  // In the order of time, as names have it.
  std::ranges::reverse(shown);
  overlay_.Take(std::move(shown));
  figuresGrid_.SetTable(overlay_.FigureTable());
  ui().vsFigures.Bind(&figuresGrid_);
  constexpr int kFigure = 30;
  constexpr int kValue = 20;
  for (int i = 0; i < figuresGrid_.Columns(); ++i) {
    ui().vsFigures.SetColumnWidth(i, i == 0 ? kFigure : kValue);
  }
  ShowChart();
}

void frmRecordings::ShowChart() {
  TimeChart& chart = ui().chtTimes;
  chart.Show(overlay_.Visible(chart.WidthInPoints()), kNothing);
  ui().lblCursors.SetText(overlay_.CursorWords());
  const bool any = !overlay_.All().empty();
  ui().cmdSaveFigures.SetEnabled(any);
  ui().cmdSavePicture.SetEnabled(any);
  ui().cmdEarlier.SetEnabled(overlay_.All().size() > 1);
  ui().cmdLater.SetEnabled(overlay_.All().size() > 1);
}

// The current recording of the list, where it is shown; else the last of those that are.
void frmRecordings::Shift(double part) {
  const auto& all = overlay_.All();
  if (all.empty()) return;
  const Row* const current = Current();
  auto which =
      current == nullptr ? all.end() : std::ranges::find(all, current->name, &Overlay::Shown::name);
  if (which == all.end()) which = std::prev(all.end());
  const TimeChartData seen = overlay_.Visible(1);
  overlay_.Shift(static_cast<std::size_t>(which - all.begin()), part * (seen.to - seen.from));
  ShowChart();
}

void frmRecordings::SaveFigures() {
  (void)SaveAs({"Save Figures", "Comma-Separated Text (*.csv)|*.csv", "csv", "", "figures.csv"},
               "The figures cannot be saved!\r", [this] {
                 std::string text;
                 for (const CsvRow& row : figuresGrid_.Table()) text += CsvLine(row);
                 return text;
               });
}

void frmRecordings::SavePicture() {
  (void)SaveAs({"Save Picture", "Picture (*.png)|*.png", "png", "", "recordings.png"},
               "The picture cannot be saved!\r", [this] { return ui().chtTimes.Picture(); });
}

}  // namespace velmoor
