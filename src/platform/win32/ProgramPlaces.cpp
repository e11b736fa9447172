#include "platform/win32/ProgramPlaces.h"

#include <filesystem>
#include <stdexcept>

#include "platform/Files.h"
#include "platform/win32/Text.h"

namespace velmoor::win32 {
namespace {

namespace fs = std::filesystem;

const std::string kPlaces = "run";
const std::string kLock = "lock";

// Nobody else opens it while it is open, and it vanishes with the handle.
Handle LockedPlace(const std::string& directory) {
  return Handle(CreateFileW(Wide(JoinPath(directory, kLock)).c_str(), GENERIC_WRITE | DELETE, 0,
                            nullptr, CREATE_ALWAYS,
                            FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr));
}

// A place that no process holds was left by one that was killed.
void ClearForsakenPlaces(const std::string& places) {
  std::error_code ignored;
  for (const auto& entry : fs::directory_iterator(Wide(places), ignored)) {
    Handle free = LockedPlace(Narrow(entry.path().wstring()));
    if (!free.IsValid()) continue;
    free.Reset();
    fs::remove_all(entry.path(), ignored);
  }
}

std::string Folder(const wchar_t* variable) {
  const std::string folder = Variable(variable);
  if (!folder.empty()) return folder;
  std::error_code ignored;
  return Narrow(fs::temp_directory_path(ignored).wstring());
}

}  // namespace

std::string ExecutableDirectory() {
  std::wstring path(32'767, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return GetFileDirectory(Narrow(path));
}

std::string ProgramDirectory() {
  const std::string named = Variable(L"VELMOOR_DIRECTORY");
  if (named.empty()) return ExecutableDirectory();
  return Narrow(fs::absolute(Wide(named)).lexically_normal().wstring());
}

std::string StateDirectory() {
  return JoinPath(Folder(L"LOCALAPPDATA"), "Velmoor");
}

std::string SettingsFile() {
  return JoinPath(JoinPath(Folder(L"APPDATA"), "Velmoor"), "velmoor.ini");
}

CatalogueCopyPlace::CatalogueCopyPlace() {
  const std::string places = JoinPath(StateDirectory(), kPlaces);
  ClearForsakenPlaces(places);
  directory_ = JoinPath(places, "velmoor-" + std::to_string(GetCurrentProcessId()));
  // Another process that clears may take a new place for a forsaken one, once.
  for (int tries = 0; tries < 3 && !lock_.IsValid(); ++tries) {
    std::error_code ignored;
    fs::create_directories(Wide(directory_), ignored);
    lock_ = LockedPlace(directory_);
  }
  if (!lock_.IsValid()) {
    throw std::runtime_error("There is no place for the catalogue's copy in " + places);
  }
}

CatalogueCopyPlace::~CatalogueCopyPlace() {
  lock_.Reset();
  std::error_code ignored;
  fs::remove_all(Wide(directory_), ignored);
}

}  // namespace velmoor::win32
