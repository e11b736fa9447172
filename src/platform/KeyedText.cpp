#include "platform/KeyedText.h"

#include <algorithm>

#include "platform/Numbers.h"
#include "platform/VisibleText.h"

namespace velmoor {
namespace {

// Sign, digits without a leading zero, and at most one point between digits.
bool IsPlainNumber(std::string_view text) {
  if (text.starts_with('-') || text.starts_with('+')) text.remove_prefix(1);
  const std::size_t point = std::min(text.find('.'), text.size());
  const std::string_view whole = text.substr(0, point);
  const auto digits = [](std::string_view part) {
    return !part.empty() && part.find_first_not_of("0123456789") == std::string_view::npos;
  };
  if (!digits(whole) || (whole.size() > 1 && whole.front() == '0')) return false;
  return point == text.size() || digits(text.substr(point + 1));
}

}  // namespace

const KeyedNode* KeyedNode::Find(std::string_view key) const {
  const auto entry = std::ranges::find(entries, key, &KeyedEntry::key);
  return entry == entries.end() ? nullptr : &entry->value;
}

// What steers is written as its number, so that nobody reviews another text than the one there is.
std::string QuotedText(std::string_view text) {
  std::string quoted = "\"";
  while (!text.empty()) {
    const TextCharacter character = FirstCharacter(text);
    const std::size_t bytes = std::max<std::size_t>(character.bytes, 1);
    const char first = text.front();
    if (first == '\n') {
      quoted += "\\n";
    } else if (first == '"' || first == '\\') {
      quoted += {'\\', first};
    } else if (character.steers) {
      quoted += "\\u" + HexText(character.code, 4);
    } else if (character.bytes == 0) {
      quoted += "\\" + VisibleText(text.substr(0, 1));
    } else {
      quoted += text.substr(0, bytes);
    }
    text.remove_prefix(bytes);
  }
  return quoted + "\"";
}

std::string InUtf8(std::string_view text) {
  std::string result;
  while (!text.empty()) {
    const std::size_t bytes = FirstCharacter(text).bytes;
    result += bytes > 0 ? std::string(text.substr(0, bytes)) : VisibleText(text.substr(0, 1));
    text.remove_prefix(std::max<std::size_t>(bytes, 1));
  }
  return result;
}

std::string NumberOrQuoted(std::string_view text) {
  return IsPlainNumber(text) ? std::string(text) : QuotedText(text);
}

std::string KeyedComment(std::string_view text) {
  return "# " + VisibleText(text);
}

}  // namespace velmoor
