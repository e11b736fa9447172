#include "platform/win32/ConsoleStreams.h"

#include <fcntl.h>
#include <io.h>

#include <cstdio>

#include "platform/win32/Text.h"
#include "platform/win32/Windows.h"
// Behind the header that it needs.
#include <shellapi.h>

namespace velmoor::win32 {

std::vector<std::string> TakeCommandLine() {
  for (std::FILE* const stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
  int count = 0;
  wchar_t** const words = CommandLineToArgvW(GetCommandLineW(), &count);
  std::vector<std::string> line;
  for (int i = 1; i < count; ++i) line.push_back(Narrow(words[i]));
  LocalFree(words);
  return line;
}

}  // namespace velmoor::win32
