// The test run's speed and its record in the project. The window that moves the motor is not here
// yet: this object only reads and keeps the speed.
#pragma once

#include <cstdint>
#include <string>

#include "platform/Event.h"

namespace velmoor {

class clsHX7ServoJog {
 public:
  void SetDatabasePath(const std::string& path) { strDatabasePath_ = path; }
  [[nodiscard]] std::int32_t Speed() const { return lngSpeed_; }  // as typed by the user
  void SetSpeed(std::int32_t speed) { lngSpeed_ = speed; }
  [[nodiscard]] bool NeedsSaving() const { return blnNeedsSaving_; }
  void SetNeedsSaving(bool needed) { blnNeedsSaving_ = needed; }

  // A project without the setting keeps the preset speed of 10.
  bool ReadFromDB();
  bool SaveToDB();

  Event<> ServoJogClosed;

 private:
  std::int32_t lngSpeed_ = 10;
  std::string strDatabasePath_;
  bool blnNeedsSaving_ = false;
};

}  // namespace velmoor
