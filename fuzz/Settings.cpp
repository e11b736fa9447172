// The settings file: anything may stand in it, and what is written reads the same.

#include "platform/IniSettings.h"

#include <fstream>

#include "Folder.h"
#include "Target.h"
#include "platform/Numbers.h"
#include "platform/posix/PosixFiles.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmoor;
  static const fuzz::Folder folder("settings");
  const std::string path = folder.path + "/velmoor.ini";
  const std::string_view text = fuzz::Text(data, size);
  std::ofstream(path, std::ios::binary) << text;
  posix::PosixFiles files;
  IniSettings settings(files, path);
  const auto colours = settings.Read("Colors");
  (void)settings.Read("COM1");
  const std::string value(text.substr(0, text.size() / 2));
  settings.Write("Left", value);
  // Blanks around a value are the file's, and these two have no place in a text of lines.
  std::string kept = value;
  std::erase_if(kept, [](char c) { return c == '\r' || c == '\0'; });
  fuzz::Require(settings.Read("Left") == Trim(kept), "a setting that was written reads the same");
  fuzz::Require(settings.Read("Colors") == colours, "another setting stays");
  return 0;
}
