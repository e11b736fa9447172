// Keys as the windows see them, apart from the characters that they type.
#pragma once

namespace velmoor {

// Key codes: letters and digits have their upper-case ASCII code, the others those below.
namespace keys {
inline constexpr int kBackspace = 8;
inline constexpr int kTab = 9;
inline constexpr int kEnter = 13;
inline constexpr int kEscape = 27;
inline constexpr int kSpace = 32;
inline constexpr int kPageUp = 33;
inline constexpr int kPageDown = 34;
inline constexpr int kEnd = 35;
inline constexpr int kHome = 36;
inline constexpr int kLeft = 37;
inline constexpr int kUp = 38;
inline constexpr int kRight = 39;
inline constexpr int kDown = 40;
inline constexpr int kInsert = 45;
inline constexpr int kDelete = 46;
inline constexpr int kPad0 = 96;  // to kPad0 + 9
inline constexpr int kPadPlus = 107;
inline constexpr int kPadMinus = 109;
inline constexpr int kF1 = 112;  // to kF1 + 11
inline constexpr int kF9 = kF1 + 8;
inline constexpr int kColon = 186;
inline constexpr int kEquals = 187;
inline constexpr int kMinus = 189;
}  // namespace keys

struct KeyEvent {
  int code = 0;  // 0: a key that has no code here
  bool shift = false;
  bool ctrl = false;
  bool alt = false;
  bool handled = false;  // set by a handler: the control does nothing of its own with the key

  [[nodiscard]] bool AnyShift() const { return shift || ctrl || alt; }
};

}  // namespace velmoor
