// The test run: its speed, kept in the project, and its window.
#pragma once

#include <cstdint>
#include <string>

#include "online/frmServoJog.h"
#include "platform/Event.h"

namespace velmoor {

class clsHX7ServoJog {
 public:
  clsHX7ServoJog();

  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  [[nodiscard]] std::int32_t Speed() const { return lngSpeed_; }  // rpm, as typed by the user
  void SetSpeed(std::int32_t speed) { lngSpeed_ = speed; }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }

  // A project without the setting keeps the preset speed of 10.
  bool ReadFromDB();
  bool SaveToDB();

  // Returns when the window has closed.
  bool Show_ServoJog();
  void Unload_ServoJog() { frm_.Unload(); }
  void BringToFront() { frm_.BringToFront(); }
  // Stops the motor and switches it off, without a word: the program ends.
  void MakeSafe() { frm_.MakeSafe(); }

  Event<> ServoJogClosed;

 private:
  void frm_ServoJogClosed();

  std::int32_t lngSpeed_ = 10;
  std::string strDatabasePath_;
  bool blnNeedsSaving_ = false;
  frmServoJog frm_;
  Connection closed_;
};

}  // namespace velmoor
