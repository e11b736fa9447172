// What an exchange costs: processor time of the host, and wall time against the time of its bytes.
//
//   bench_link [path of velmoor-simulator]
//
// Starts the simulator as a child, unpaced for the processor time and paced for the wall time.
#include <unistd.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <stdexcept>
#include <string>
#include <vector>

#include "SimulatorChild.h"
#include "link/ClassSerialComm.h"
#include "platform/Numbers.h"
#include "platform/posix/PosixSerialPort.h"

namespace velmoor {
namespace {

constexpr std::int32_t kBaudRate = 38400;
double ProcessorSeconds() {
  timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / 1e9;
}

// A mixture as a download and a monitoring pass send it.
const char* const kCommands[] = {"0PRM81D", "0PUN", "0POST5=I+100", "0PRM81D=-1200", "0ALM"};

std::size_t RunExchanges(ClassSerialComm& comm, int count) {
  std::size_t bytes = 0;
  for (int i = 0; i < count; ++i) {
    const std::string command = kCommands[static_cast<std::size_t>(i) % std::size(kCommands)];
    RawResponse response;
    const ResultCode result = comm.writeToSerial(command, response);
    if (result != kSuccess) {
      throw std::runtime_error(command + ": " + comm.ErrorMessages(result));
    }
    bytes += command.size() + 1 + response[0].size() + 2 + response[1].size() + 2;
  }
  return bytes;
}

void Measure(const std::string& simulator, bool paced, int count) {
  const bench::SimulatorChild child(simulator, kBaudRate, paced);
  posix::PosixSerialPort port;
  port.SetDeviceMap({{"COM1", child.Link()}});
  ClassSerialComm comm;
  comm.setupClass(port, 0, kBaudRate, true, 1, 5000);
  if (!comm.manualConnect()) throw std::runtime_error(port.LastError());
  RunExchanges(comm, 20);

  const double processor = ProcessorSeconds();
  const auto start = std::chrono::steady_clock::now();
  const std::size_t bytes = RunExchanges(comm, count);
  const std::chrono::duration<double> wall = std::chrono::steady_clock::now() - start;
  const double used = ProcessorSeconds() - processor;
  const double wire = bench::WireSeconds(bytes, kBaudRate);
  std::cout << (paced ? "paced" : "unpaced") << ": " << count << " exchanges, " << bytes
            << " bytes; processor time an exchange " << FixedText(used / count * 1e6, 1)
            << " us; wall time " << FixedText(wall.count(), 3) << " s";
  if (paced) {
    std::cout << ", wire time " << FixedText(wire, 3) << " s, "
              << FixedText((wall.count() / wire - 1) * 100, 2) << " % above";
  }
  std::cout << "\n";
}

}  // namespace
}  // namespace velmoor

int main(int argc, char** argv) {
  try {
    const std::string own = std::filesystem::read_symlink("/proc/self/exe").parent_path();
    const std::string simulator = argc > 1 ? argv[1] : own + "/velmoor-simulator";
    velmoor::Measure(simulator, false, 20000);
    velmoor::Measure(simulator, true, 1000);
    return 0;
  } catch (const std::exception& error) {
    std::cerr << "bench_link: " << error.what() << "\n";
    return 1;
  }
}
