#include "platform/qt/QtKeys.h"

#include <array>
#include <utility>

namespace velmoor::qt {
namespace {

constexpr std::array<std::pair<int, int>, 22> kCodes{{
    {Qt::Key_Backspace, keys::kBackspace},
    {Qt::Key_Tab, keys::kTab},
    {Qt::Key_Backtab, keys::kTab},
    {Qt::Key_Return, keys::kEnter},
    {Qt::Key_Enter, keys::kEnter},
    {Qt::Key_Escape, keys::kEscape},
    {Qt::Key_Space, keys::kSpace},
    {Qt::Key_PageUp, keys::kPageUp},
    {Qt::Key_PageDown, keys::kPageDown},
    {Qt::Key_End, keys::kEnd},
    {Qt::Key_Home, keys::kHome},
    {Qt::Key_Left, keys::kLeft},
    {Qt::Key_Up, keys::kUp},
    {Qt::Key_Right, keys::kRight},
    {Qt::Key_Down, keys::kDown},
    {Qt::Key_Insert, keys::kInsert},
    {Qt::Key_Delete, keys::kDelete},
    {Qt::Key_Colon, keys::kColon},
    {Qt::Key_Equal, keys::kEquals},
    {Qt::Key_Plus, keys::kEquals},  // the equals key with Shift
    {Qt::Key_Minus, keys::kMinus},
    {Qt::Key_Underscore, keys::kMinus},
}};

int Code(int key, bool keypad) {
  if (keypad && key >= Qt::Key_0 && key <= Qt::Key_9) return keys::kPad0 + key - Qt::Key_0;
  if (keypad && key == Qt::Key_Plus) return keys::kPadPlus;
  if (keypad && key == Qt::Key_Minus) return keys::kPadMinus;
  const bool letterOrDigit =
      (key >= Qt::Key_A && key <= Qt::Key_Z) || (key >= Qt::Key_0 && key <= Qt::Key_9);
  if (letterOrDigit) return key;
  if (key >= Qt::Key_F1 && key <= Qt::Key_F12) return keys::kF1 + key - Qt::Key_F1;
  for (const auto& [qtKey, code] : kCodes) {
    if (qtKey == key) return code;
  }
  return 0;
}

}  // namespace

KeyEvent ToKeyEvent(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers();
  const bool keypad = modifiers.testFlag(Qt::KeypadModifier);
  KeyEvent key;
  key.code = Code(event.key(), keypad);
  key.shift = modifiers.testFlag(Qt::ShiftModifier);
  key.ctrl = modifiers.testFlag(Qt::ControlModifier);
  key.alt = modifiers.testFlag(Qt::AltModifier);
  return key;
}

}  // namespace velmoor::qt
