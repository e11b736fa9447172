#include "platform/cli/RunProgram.h"
#include "simulator/program/SimulatorProgram.h"

int main(int argc, char** argv) {
  return velmoor::RunProgram(velmoor::SimulatorTable(), argc, argv,
                             [](const velmoor::CommandLine& line) {
                               return velmoor::SimulatorProgram(velmoor::OptionsOf(line)).Run();
                             });
}
