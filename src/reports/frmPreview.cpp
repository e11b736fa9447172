#include "reports/frmPreview.h"

#include <algorithm>
#include <array>
#include <functional>

#include "platform/Numbers.h"
#include "platform/Printing.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "reports/PdfFile.h"

namespace velmoor {
namespace {

constexpr std::array<int, 9> kZooms{25, 50, 75, 100, 125, 150, 200, 300, 400};
constexpr int kFitChoices = 2;  // of the list, in front of the sizes

}  // namespace

std::vector<Button*> frmPreview::Tools() {
  return {&ui().cmdPrint, &ui().cmdSavePDF, &ui().cmdFirst,  &ui().cmdPrevious,
          &ui().cmdNext,  &ui().cmdLast,    &ui().cmdZoomIn, &ui().cmdZoomOut};
}

void frmPreview::FormLoad() {
  const auto onClick = [this](Button& button, const std::function<void()>& work) {
    connections_ += button.Click.Connect(work);
  };
  onClick(ui().cmdPrint, [this] { Print(); });
  onClick(ui().cmdSavePDF, [this] { SaveAsPdf(project_, document_, paper_); });
  onClick(ui().cmdFirst, [this] { GoTo(1); });
  onClick(ui().cmdPrevious, [this] { GoTo(pages().Page() - 1); });
  onClick(ui().cmdNext, [this] { GoTo(pages().Page() + 1); });
  onClick(ui().cmdLast, [this] { GoTo(pages().Pages()); });
  onClick(ui().cmdZoomIn, [this] { StepZoom(true); });
  onClick(ui().cmdZoomOut, [this] { StepZoom(false); });
  onClick(ui().cmdExit, [this] { Unload(); });
  ui().cmdPrint.SetCaption("&Print...");
  std::vector<std::string> zooms{"Whole page", "Page width"};
  for (const int zoom : kZooms) zooms.push_back(NumberText(zoom) + " %");
  ComboBox& list = ui().cmbZoom;
  list.SetItems(zooms);
  // What is read first is the text, which a whole page on a screen makes too small.
  list.SetListIndex(1);
  connections_ += list.Click.Connect([this] { ChooseZoom(); });
  connections_ += ui().txtPage.Validate.Connect([this](bool& keep) { TypePage(keep); });
  connections_ += pages().Moved.Connect([this] { ShowPlace(); });
  pages().Show(document_, paper_);
  pages().FitWidth();
  pages().SetFocus();
  ShowPlace();
  Loaded.Raise();
}

// ---- paging

void frmPreview::GoTo(int page) {
  pages().GoTo(std::clamp(page, 1, std::max(pages().Pages(), 1)));
  ShowPlace();
}

// What is no page of the document leaves the view where it is.
void frmPreview::TypePage(bool& /*keep*/) {
  const auto page = ParseWhole(ui().txtPage.Text());
  if (page && *page >= 1 && *page <= pages().Pages()) return GoTo(static_cast<int>(*page));
  ShowPlace();
}

void frmPreview::ShowPlace() {
  const int page = pages().Page();
  const int last = pages().Pages();
  ui().txtPage.SetText(NumberText(page));
  ui().lblPages.SetText("of " + NumberText(last));
  for (Button* const button : {&ui().cmdFirst, &ui().cmdPrevious}) button->SetEnabled(page > 1);
  for (Button* const button : {&ui().cmdNext, &ui().cmdLast}) button->SetEnabled(page < last);
}

// ---- zoom

void frmPreview::ChooseZoom() {
  const int choice = ui().cmbZoom.ListIndex();
  if (choice == 0) return pages().FitPage();
  if (choice == 1) return pages().FitWidth();
  ShowZoom(kZooms.at(static_cast<std::size_t>(choice - kFitChoices)));
}

void frmPreview::StepZoom(bool closer) {
  const int now = pages().Zoom();
  if (closer) {
    const auto* const next = std::ranges::upper_bound(kZooms, now);
    if (next != kZooms.end()) ShowZoom(*next);
  } else {
    const auto* const next = std::ranges::lower_bound(kZooms, now);
    if (next != kZooms.begin()) ShowZoom(*(next - 1));
  }
}

void frmPreview::ShowZoom(int percent) {
  pages().SetZoom(percent);
  const auto place = std::ranges::find(kZooms, percent) - kZooms.begin();
  ui().cmbZoom.SetListIndex(static_cast<int>(place) + kFitChoices);
}

void frmPreview::Print() {
  // The preview's errors bear the name of the printing's: intended.
  Trapped("frmPrint.PrintInformation: ", [this] {
    world().printing->Print(document_, paper_);
    return true;
  });
}

}  // namespace velmoor
