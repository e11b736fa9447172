#include "random_walk/Step.h"

#include <iomanip>
#include <sstream>

namespace velmoor::walk {

std::string TextOf(const Step& step) {
  std::ostringstream text;
  for (std::size_t i = 0; i < step.words.size(); ++i) {
    const std::string& word = step.words[i];
    if (i > 0) text << ' ';
    const bool plain = !word.empty() && word.find_first_of(" \t\"\\#") == std::string::npos;
    if (plain) {
      text << word;
    } else {
      text << std::quoted(word);
    }
  }
  return text.str();
}

std::string TextOf(const std::vector<Step>& steps) {
  std::string text;
  for (const Step& step : steps) text += TextOf(step) + "\n";
  return text;
}

std::vector<Step> ParseSteps(const std::string& text) {
  std::vector<Step> steps;
  std::istringstream lines(text);
  for (std::string line; std::getline(lines, line);) {
    std::istringstream words(line);
    Step step;
    for (std::string word; words >> std::quoted(word);) step.words.push_back(word);
    if (!step.words.empty() && !step.words.front().starts_with("#")) steps.push_back(step);
  }
  return steps;
}

}  // namespace velmoor::walk
