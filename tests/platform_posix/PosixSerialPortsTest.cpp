// What is told of a port without opening it, and which devices stand behind the ports.
#include "platform/posix/PosixSerialPorts.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/file.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>

#include "platform/IniSettings.h"
#include "platform/posix/FileDescriptor.h"
#include "platform/posix/PosixFiles.h"
#include "support/TemporaryFolder.h"

namespace velmoor::posix {
namespace {

class SerialPortsOfTheSystem : public testing::Test {
 protected:
  SerialPortsOfTheSystem()
      : master(posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)),
        settings(files, folder.At("velmoor.ini")) {
    EXPECT_EQ(grantpt(master.Get()) + unlockpt(master.Get()), 0);
    device = ptsname(master.Get());
    std::filesystem::create_symlink(device, folder.At("line"));
    settings.Write("COM2", folder.At("line"));
    settings.Write("COM3", folder.At("nowhere"));
  }
  PosixSerialPorts Ports() {
    return {port, settings, folder.At("no-such-program"),
            [] { return std::vector<SerialAdapter>(); }};
  }

  TemporaryFolder folder;
  FileDescriptor master;
  std::string device;
  PosixFiles files;
  IniSettings settings;
  PosixSerialPort port;
};

TEST_F(SerialPortsOfTheSystem, APortIsFreeUntilAnotherProgramHoldsIt) {
  const PosixSerialPorts ports = Ports();
  const PortLook look = ports.Look(1);
  EXPECT_EQ(look.state, PortState::free);
  EXPECT_EQ(look.device, folder.At("line"));
  EXPECT_EQ("/dev/" + look.name, device) << "the name is that of what the link leads to";
  const FileDescriptor holder(open(device.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  ASSERT_EQ(flock(holder.Get(), LOCK_EX | LOCK_NB), 0);
  const PortLook held = ports.Look(1);
  EXPECT_EQ(held.state, PortState::busy);
  EXPECT_TRUE(held.words.ends_with(".  Close that program.")) << held.words;
}

TEST_F(SerialPortsOfTheSystem, TheOwnConnectionIsNoOtherProgram) {
  const PosixSerialPorts ports = Ports();
  port.SetPortName("COM2");
  ASSERT_TRUE(port.Open());
  EXPECT_EQ(ports.Look(1).state, PortState::free);
  EXPECT_EQ(ports.Look(1).words, "Velmoor is connected by " + folder.At("line") + ".");
}

TEST_F(SerialPortsOfTheSystem, ADeviceThatIsNotThereIsAbsent) {
  const PortLook look = Ports().Look(2);
  EXPECT_EQ(look.state, PortState::missing);
  EXPECT_EQ(look.name, "nowhere");
  EXPECT_EQ(look.words,
            folder.At("nowhere") + " does not exist.  Plug the adapter in, or assign another one.");
}

TEST_F(SerialPortsOfTheSystem, AnAssignedDeviceIsUsedAtOnceAndKept) {
  PosixSerialPorts ports = Ports();
  ports.Bind(4, device);
  EXPECT_EQ(ports.Look(4).state, PortState::free);
  EXPECT_EQ(port.DeviceOf("COM5"), device);
  EXPECT_EQ(IniSettings(files, folder.At("velmoor.ini")).Read("COM5"), device);
}

TEST_F(SerialPortsOfTheSystem, AMissingSimulatorIsTold) {
  EXPECT_EQ(Ports().StartSimulator(38400),
            "The simulated amplifier was not found at " + folder.At("no-such-program") + ".");
}

}  // namespace
}  // namespace velmoor::posix
