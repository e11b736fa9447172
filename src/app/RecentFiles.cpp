#include "app/RecentFiles.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/Settings.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// How an empty place is stored.
constexpr std::string_view kEmpty = "n/a";
constexpr std::size_t kShortestPath = 8;

std::string NameOf(std::size_t index) {
  return "RecentFile" + std::to_string(index + 1);
}

bool IsProjectPath(const std::string& text) {
  return text.size() >= kShortestPath && LowerCase(Right(text, 4)) == ".spj";
}

}  // namespace

void RecentFiles::Load() {
  for (std::size_t i = 0; i < kPlaces; ++i) {
    const std::string text = world().settings->ReadText(NameOf(i), kEmpty);
    files_[i] = IsProjectPath(text) ? text : std::string();
  }
}

void RecentFiles::Add(const std::string& fname) {
  if (fname.empty()) return;
  const auto found = std::find(files_.begin(), files_.end(), fname);
  const auto last = found == files_.end() ? files_.end() - 1 : found;
  std::move_backward(files_.begin(), last, last + 1);
  files_.front() = fname;
}

void RecentFiles::Remove(std::size_t index) {
  if (index >= kPlaces) return;
  std::move(files_.begin() + static_cast<std::ptrdiff_t>(index) + 1, files_.end(),
            files_.begin() + static_cast<std::ptrdiff_t>(index));
  files_.back().clear();
}

std::vector<std::string> RecentFiles::Captions() const {
  std::vector<std::string> captions;
  for (std::size_t i = 0; i < kPlaces; ++i) {
    const bool shown = !files_[i].empty() && files_[i] != kEmpty;
    captions.push_back(shown ? "&" + std::to_string(i + 1) + " " + files_[i] : std::string());
  }
  return captions;
}

void RecentFiles::Save() const {
  for (std::size_t i = 0; i < kPlaces; ++i) {
    world().settings->Write(NameOf(i), files_[i].empty() ? kEmpty : std::string_view(files_[i]));
  }
}

}  // namespace velmoor
