#include "reports/frmPreview.h"

#include <algorithm>
#include <array>

#include "platform/Numbers.h"
#include "platform/Printing.h"
#include "platform/Trapped.h"
#include "platform/World.h"
#include "reports/PdfFile.h"

namespace velmoor {
namespace {

constexpr std::array<int, 9> kZooms{25, 50, 75, 100, 125, 150, 200, 300, 400};
constexpr int kFitChoices = 2;  // of the list, in front of the sizes

constexpr const char* kTools[] = {"cmdPrint", "cmdSavePDF", "cmdFirst",  "cmdPrevious",
                                  "cmdNext",  "cmdLast",    "cmdZoomIn", "cmdZoomOut"};

}  // namespace

std::vector<Button*> frmPreview::Tools() {
  std::vector<Button*> tools;
  for (const char* const name : kTools) tools.push_back(&form().button(name));
  return tools;
}

void frmPreview::FormLoad() {
  const auto onClick = [this](const char* name, const std::function<void()>& work) {
    connections_ += form().button(name).Click.Connect(work);
  };
  onClick("cmdPrint", [this] { Print(); });
  onClick("cmdSavePDF", [this] { SaveAsPdf(project_, document_, paper_); });
  onClick("cmdFirst", [this] { GoTo(1); });
  onClick("cmdPrevious", [this] { GoTo(pages().Page() - 1); });
  onClick("cmdNext", [this] { GoTo(pages().Page() + 1); });
  onClick("cmdLast", [this] { GoTo(pages().Pages()); });
  onClick("cmdZoomIn", [this] { StepZoom(true); });
  onClick("cmdZoomOut", [this] { StepZoom(false); });
  onClick("cmdExit", [this] { Unload(); });
  form().button("cmdPrint").SetCaption("&Print...");
  std::vector<std::string> zooms{"Whole page", "Page width"};
  for (const int zoom : kZooms) zooms.push_back(NumberText(zoom) + " %");
  ComboBox& list = form().comboBox("cmbZoom");
  list.SetItems(zooms);
  list.SetListIndex(0);
  connections_ += list.Click.Connect([this] { ChooseZoom(); });
  connections_ +=
      form().textBox("txtPage").Validate.Connect([this](bool& keep) { TypePage(keep); });
  connections_ += pages().Moved.Connect([this] { ShowPlace(); });
  pages().Show(document_, paper_);
  pages().FitPage();
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
  const auto page = ParseWhole(form().textBox("txtPage").Text());
  if (page && *page >= 1 && *page <= pages().Pages()) return GoTo(static_cast<int>(*page));
  ShowPlace();
}

void frmPreview::ShowPlace() {
  const int page = pages().Page();
  const int last = pages().Pages();
  form().textBox("txtPage").SetText(NumberText(page));
  form().label("lblPages").SetText("of " + NumberText(last));
  for (const char* const name : {"cmdFirst", "cmdPrevious"}) {
    form().button(name).SetEnabled(page > 1);
  }
  for (const char* const name : {"cmdNext", "cmdLast"}) form().button(name).SetEnabled(page < last);
}

// ---- zoom

void frmPreview::ChooseZoom() {
  const int choice = form().comboBox("cmbZoom").ListIndex();
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
  form().comboBox("cmbZoom").SetListIndex(static_cast<int>(place) + kFitChoices);
}

void frmPreview::Print() {
  // The preview's errors bear the name of the printing's: intended.
  Trapped("frmPrint.PrintInformation: ", [this] {
    world().printing->Print(document_, paper_);
    return true;
  });
}

}  // namespace velmoor
