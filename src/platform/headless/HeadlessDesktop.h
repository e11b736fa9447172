// What the program asks of a desktop, answered by a script.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <vector>

#include "platform/AppearanceDialogs.h"
#include "platform/HelpViewer.h"
#include "platform/TextViewer.h"

namespace velmoor::headless {

class HeadlessTextViewer final : public TextViewer {
 public:
  [[nodiscard]] bool IsAvailable() const override { return available; }
  bool Open(const std::string& path) override {
    opened.push_back(path);
    return starts;
  }

  bool available = true;
  bool starts = true;
  std::vector<std::string> opened;
};

class HeadlessHelpViewer final : public HelpViewer {
 public:
  void ShowPage(const std::string& page, const std::string& anchor) override {
    shown.push_back(page + "#" + anchor);
  }

  std::vector<std::string> shown;  // "tables.md#jog-table"
};

// Without an answer left: Cancel.
class HeadlessAppearanceDialogs final : public AppearanceDialogs {
 public:
  std::optional<FontChoice> ChooseFont(const FontChoice& /*present*/) override {
    return Next(fonts);
  }
  std::optional<std::uint32_t> ChooseColor(const std::string& title,
                                           std::uint32_t /*present*/) override {
    titles.push_back(title);
    return Next(colors);
  }

  std::deque<FontChoice> fonts;
  std::deque<std::uint32_t> colors;
  std::vector<std::string> titles;

 private:
  template <typename Choice>
  static std::optional<Choice> Next(std::deque<Choice>& answers) {
    if (answers.empty()) return std::nullopt;
    const Choice next = answers.front();
    answers.pop_front();
    return next;
  }
};

}  // namespace velmoor::headless
