#include <exception>
#include <iostream>
#include <stdexcept>

#include "simulator/program/SimulatorProgram.h"

int main(int argc, char** argv) {
  try {
    const std::span<const char* const> words(argv, static_cast<std::size_t>(argc));
    const velmoor::ProgramOptions options = velmoor::ParseOptions(words.subspan(1));
    if (options.help) {
      std::cout << velmoor::UsageText();
      return 0;
    }
    return velmoor::SimulatorProgram(options).Run();
  } catch (const std::invalid_argument& error) {
    std::cerr << error.what() << "\n" << velmoor::UsageText();
    return 2;
  } catch (const std::exception& error) {
    std::cerr << "velmoor-simulator: " << error.what() << "\n";
    return 1;
  }
}
