#include "project/Doubts.h"

#include <algorithm>

#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/VisibleText.h"
#include "project/clsHX7Project.h"

namespace velmoor {
namespace {

constexpr std::size_t kTold = 12;
constexpr std::size_t kTextTold = 60;

std::string Told(const std::string& text) {
  return text.empty() ? "nothing" : Shortened(VisibleText(text), kTextTold);
}

}  // namespace

std::string_view WordOf(Doubt::Kind kind) {
  switch (kind) {
    case Doubt::Kind::differs:
      return "differs";
    case Doubt::Kind::outside:
      return "outside";
    case Doubt::Kind::unknown:
      break;
  }
  return "unknown";
}

std::string InWords(const Doubt& doubt) {
  std::string words = doubt.place + ", " + doubt.field + ": ";
  const std::string sent = Told(doubt.sent);
  const std::string meaning =
      doubt.sentShown == doubt.sent ? std::string() : " (" + Told(doubt.sentShown) + ")";
  switch (doubt.kind) {
    case Doubt::Kind::differs:
      return words + "shows " + Told(doubt.shown) + ", and " + sent + " would go out" + meaning;
    case Doubt::Kind::outside:
      return words + sent + meaning + " lies outside of the limits" +
             (doubt.limits.empty() ? "" : ", " + doubt.limits);
    case Doubt::Kind::unknown:
      break;
  }
  return words + sent + meaning + " has no known form";
}

std::string InWords(const std::vector<Doubt>& doubts) {
  std::string words;
  for (std::size_t i = 0; i < std::min(doubts.size(), kTold); ++i) {
    words += (i == 0 ? "" : "\r") + InWords(doubts[i]);
  }
  if (doubts.size() > kTold) words += "\rand " + NumberText(doubts.size() - kTold) + " more";
  return words;
}

std::vector<Doubt> clsHX7Project::Doubts() const {
  std::vector<Doubt> all;
  for (const MotionTable* const table : Tables()) {
    all.insert(all.end(), table->Doubts().begin(), table->Doubts().end());
  }
  for (const auto& [strPn, doubt] : parameters_.Doubts()) all.push_back(doubt);
  return all;
}

void clsHX7Project::Settle(const std::vector<Doubt>& doubts, Keep keep) {
  for (const Doubt& doubt : doubts) {
    if (MotionTable* const table = TableOf(doubt.part)) {
      table->Settle(doubt, keep);
    } else {
      parameters_.Settle(doubt.place, keep);
    }
    blnNeedsSaving_ = true;
  }
}

bool clsHX7Project::MayDownload() const {
  const std::vector<Doubt> doubts = Doubts();
  if (doubts.empty()) return true;
  ShowExclamation("Nothing is downloaded while values of the project are in doubt:\r" +
                  InWords(doubts));
  return false;
}

}  // namespace velmoor
