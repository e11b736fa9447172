#include "random_walk/Shrink.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <optional>

namespace velmoor::walk {
namespace {

using Fails = std::function<bool(const std::vector<Step>&)>;

std::vector<Step> Without(const std::vector<Step>& steps, std::size_t at, std::size_t count) {
  std::vector<Step> fewer(steps.begin(), steps.begin() + static_cast<std::ptrdiff_t>(at));
  const std::size_t end = std::min(steps.size(), at + count);
  fewer.insert(fewer.end(), steps.begin() + static_cast<std::ptrdiff_t>(end), steps.end());
  return fewer;
}

// Halves, quarters and so on, down to single steps.
void LeaveOut(std::vector<Step>& steps, const Fails& fails) {
  for (std::size_t size = std::max<std::size_t>(steps.size() / 2, 1);; size /= 2) {
    for (std::size_t at = steps.size(); at > 0;) {
      at -= std::min(at, size);
      std::vector<Step> fewer = Without(steps, at, size);
      if (fails(fewer)) steps = std::move(fewer);
      at = std::min(at, steps.size());
    }
    if (size <= 1) return;
  }
}

std::vector<std::string> ShorterThan(const std::string& word) {
  std::vector<std::string> shorter;
  for (const char* const plain : {"0", "1", "2", "5", "10", "none"}) {
    if (std::string(plain).size() < word.size()) shorter.emplace_back(plain);
  }
  if (word.size() > 1) shorter.push_back(word.substr(0, word.size() / 2));
  if (word.size() > 1) shorter.push_back(word.substr(0, word.size() - 1));
  return shorter;
}

// Values are the last word of an edit, and the words of a transfer's fault.
void Shorten(std::vector<Step>& steps, const Fails& fails) {
  for (std::size_t i = 0; i < steps.size(); ++i) {
    if (steps[i].Refuses()) {
      std::vector<Step> agreeing = steps;
      agreeing[i].words.pop_back();
      if (fails(agreeing)) steps = std::move(agreeing);
    }
    const bool hasValue = steps[i].Verb() == "edit" || steps[i].Verb() == "paste" ||
                          steps[i].Verb() == "download" || steps[i].Verb() == "upload";
    if (!hasValue) continue;
    const std::size_t last = steps[i].words.size() - (steps[i].Refuses() ? 2 : 1);
    for (bool again = true; again;) {
      again = false;
      for (const std::string& word : ShorterThan(steps[i].words[last])) {
        std::vector<Step> shorter = steps;
        shorter[i].words[last] = word;
        if (!fails(shorter)) continue;
        steps = std::move(shorter);
        again = true;
        break;
      }
    }
  }
}

}  // namespace

std::vector<Violation> Replay(const std::string& folder, const std::vector<Step>& steps,
                              const std::set<std::string>& ignored) {
  std::filesystem::remove_all(folder);
  std::filesystem::create_directories(folder);
  std::vector<Violation> found;
  {
    Walk walk(folder, ignored);
    std::size_t at = 0;
    walk.Run([&steps, &at](Walk&) -> std::optional<Step> {
      if (at == steps.size()) return std::nullopt;
      return steps[at++];
    });
    found = walk.Found();
  }
  std::filesystem::remove_all(folder);
  return found;
}

std::vector<Step> Shrink(const std::string& folder, std::vector<Step> steps,
                         const std::string& kind, const std::set<std::string>& ignored) {
  const Fails fails = [&](const std::vector<Step>& candidate) {
    const std::vector<Violation> found = Replay(folder, candidate, ignored);
    return std::ranges::any_of(found, [&kind](const Violation& each) { return each.kind == kind; });
  };
  for (std::size_t before = steps.size() + 1; steps.size() < before;) {
    before = steps.size();
    LeaveOut(steps, fails);
  }
  Shorten(steps, fails);
  return steps;
}

}  // namespace velmoor::walk
