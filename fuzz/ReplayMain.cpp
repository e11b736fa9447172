// Hands the files of the directories named to the target, once each.

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>
#include <string>

#include "Target.h"

int main(int argc, char** argv) {
  int count = 0;
  for (int i = 1; i < argc; ++i) {
    for (const auto& entry : std::filesystem::directory_iterator(argv[i])) {
      std::ifstream file(entry.path(), std::ios::binary);
      const std::string bytes{std::istreambuf_iterator<char>(file), {}};
      std::cout << entry.path().filename().string() << std::endl;
      LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
      ++count;
    }
  }
  std::cout << count << " inputs replayed\n";
  return count > 0 ? 0 : 1;
}
