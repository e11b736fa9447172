#include "project/data/clsHX7Database.h"

#include <exception>
#include <utility>

#include "platform/Mcatbase.h"
#include "platform/MessageBoxes.h"
#include "platform/Numbers.h"
#include "platform/Trapped.h"
#include "platform/World.h"

namespace velmoor {
namespace {

// What the system asks the library for: its amplifier and option card, of any firmware.
constexpr std::int32_t kServoModel = 2;
constexpr std::int32_t kOptionModel = 1536;
constexpr std::int32_t kAny = 65535;
constexpr std::int16_t kFirstAxis = 1;

// True for 0. Any other result is shown as a bare number under `title`.
bool Succeeded(std::int32_t result, const std::string& title) {
  if (result != 0) ShowPlain(NumberText(result), title);
  return result == 0;
}

}  // namespace

clsHX7Database::clsHX7Database(std::int32_t language, std::string strMotorSize)
    : eLang_(language), strMotorSize_(std::move(strMotorSize)) {}

clsHX7Database::~clsHX7Database() {
  if (blnDBOpened_) CloseTHDatabase();
  if (blnDBCopied_) RemoveParameterDatabase();
}

bool clsHX7Database::GetParameterDatabase() {
  return CopyTHDatabase() && OpenTHDatabase() && UparaCreateTHDatabase() && CloseTHDatabase();
}

bool clsHX7Database::RemoveParameterDatabase() {
  return RemoveTHDatabase();
}

bool clsHX7Database::CopyTHDatabase() {
  return Trapped("CopyTHDatabase: ", [&] {
    if (!Succeeded(world().catalogue->McatCopy(eLang_), "Initial Error")) return false;
    blnDBCopied_ = true;
    return true;
  });
}

bool clsHX7Database::OpenTHDatabase() {
  return Trapped("OpenTHDatabase: ", [&] {
    if (!Succeeded(world().catalogue->McatOpen(), "Open Error")) return false;
    blnDBOpened_ = true;
    return true;
  });
}

bool clsHX7Database::UparaCreateTHDatabase() {
  return Trapped("UparaCreateTHDatabase: ", [&] {
    return world().catalogue->McatUparaCreate(ToInt16(eLang_), kServoModel, kAny, kAny,
                                              Int32FromCell(strMotorSize_), kOptionModel, kAny,
                                              kAny, kFirstAxis) == 0;
  });
}

bool clsHX7Database::CloseTHDatabase() {
  return Trapped("CloseTHDatabase: ", [&] {
    if (!Succeeded(world().catalogue->McatClose(), "Close Error")) return false;
    blnDBOpened_ = false;
    return true;
  });
}

bool clsHX7Database::RemoveTHDatabase() {
  return Trapped("RemoveTHDatabase: ", [&] {
    if (!Succeeded(world().catalogue->McatRemove(), "Remove Error")) return false;
    blnDBCopied_ = false;
    return true;
  });
}

}  // namespace velmoor
