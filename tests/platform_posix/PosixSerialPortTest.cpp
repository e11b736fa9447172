// The serial port against the far side of a pseudo-terminal.
#include "platform/posix/PosixSerialPort.h"

#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include <filesystem>
#include <fstream>

#include "FarEnd.h"

namespace velmoor::posix {
namespace {

using namespace std::string_view_literals;

class PseudoTerminal : public testing::Test {
 protected:
  PseudoTerminal() {
    port.SetDeviceMap({{"COM1", far.path}});
    port.SetSettings("19200,e,7,2");
    port.SetReadTimeOut(1000);
  }
  FarEnd far;
  PosixSerialPort port;
};

TEST_F(PseudoTerminal, CarriesLinesBothWays) {
  ASSERT_TRUE(port.Open()) << port.LastError();
  port.WriteLine("0PRM800");
  EXPECT_EQ(far.Received(), "0PRM800\r");
  far.Send("0PRM800\r\n0Pn800=00000001\r\n");
  EXPECT_EQ(port.ReadLine(), "0PRM800");
  EXPECT_EQ(port.ReadLine(), "0Pn800=00000001");
}

TEST_F(PseudoTerminal, TakesEveryLineEndAndNoEmptyLine) {
  ASSERT_TRUE(port.Open());
  far.Send("a\rb\nc\r\n\r\n\n\rd\r\xB0\xCF\xCB\r"sv);
  for (const char* const line : {"a", "b", "c", "d", "0OK"}) EXPECT_EQ(port.ReadLine(), line);
  port.SetReadTimeOut(0);
  EXPECT_EQ(port.ReadLine(), "");
}

// The system gives a zero byte for a character of wrong parity.
TEST_F(PseudoTerminal, ADamagedCharacterIsNeverLeftOut) {
  ASSERT_TRUE(port.Open());
  far.Send("0Pn81D=0000\0001200\r0OK\r"sv);
  EXPECT_EQ(port.ReadLine(),
            "0Pn81D=0000\x7F"
            "1200");
  EXPECT_EQ(port.ReadLine(), "0OK");
  const int line = open(port.DevicePath().c_str(), O_RDWR | O_NOCTTY);
  termios attributes{};
  EXPECT_EQ(tcgetattr(line, &attributes), 0);
  EXPECT_NE(attributes.c_iflag & INPCK, 0U);
  EXPECT_EQ(attributes.c_iflag & (IGNPAR | PARMRK), 0U);
  close(line);
}

TEST_F(PseudoTerminal, HalfALineWaitsForItsEnd) {
  ASSERT_TRUE(port.Open());
  port.SetReadTimeOut(5);
  far.Send("0PUN=-0000");
  EXPECT_EQ(port.ReadLine(), "");
  EXPECT_EQ(port.WaitingBytes(), 10);
  far.Send("1234\r");
  EXPECT_EQ(port.WaitingBytes(), 15);
  EXPECT_EQ(port.ReadLine(), "0PUN=-00001234");
  EXPECT_EQ(port.WaitingBytes(), 0);
}

TEST_F(PseudoTerminal, EndlessLineIsCut) {
  ASSERT_TRUE(port.Open());
  port.SetReadTimeOut(5);
  far.Send(std::string(700, 'x'));
  EXPECT_EQ(port.ReadLine(), std::string(512, 'x'));
  far.Send(std::string(700, 'y'));
  EXPECT_EQ(port.ReadLine(), "");
  far.Send("z\r0OK\r");
  EXPECT_EQ(port.ReadLine(), "0OK");
}

TEST_F(PseudoTerminal, DiscardsOldInput) {
  far.Send("before the opening\r");
  ASSERT_TRUE(port.Open());
  EXPECT_EQ(port.WaitingBytes(), 0);
  far.Send("late\rhalf");
  EXPECT_EQ(port.WaitingBytes(), 9);
  port.DiscardInput();
  EXPECT_EQ(port.WaitingBytes(), 0);
  far.Send("late\rhalf");
  EXPECT_EQ(port.ReadLine(), "late");
  port.SetSettings("38400,e,7,2");
  EXPECT_EQ(port.WaitingBytes(), 0) << "a change of speed";
}

TEST_F(PseudoTerminal, SetsTheSpeedAndIgnoresForeignOnes) {
  ASSERT_TRUE(port.Open());
  const std::pair<const char*, speed_t> cases[] = {{"9600,e,7,2", B9600},   {"38400,e,7,2", B38400},
                                                   {"38400,e,7,2", B38400}, {"0,e,7,2", B38400},
                                                   {"57600,e,7,2", B38400}, {"", B38400},
                                                   {"19200,e,7,2", B19200}};
  for (const auto& [text, expected] : cases) {
    port.SetSettings(text);
    EXPECT_EQ(port.Settings(), text);
    EXPECT_EQ(far.Speed(), expected) << text;
    EXPECT_TRUE(port.IsOpen()) << text << port.LastError();
  }
}

TEST_F(PseudoTerminal, OpensAgainWhileOpen) {
  ASSERT_TRUE(port.Open());
  far.Send("old\r");
  EXPECT_TRUE(port.Open()) << port.LastError();
  EXPECT_EQ(port.WaitingBytes(), 0);
}

TEST_F(PseudoTerminal, OpensThroughASymbolicLink) {
  const std::string link = testing::TempDir() + "velmoor-line-" + std::to_string(getpid());
  std::filesystem::create_symlink(far.path, link);
  port.SetDeviceMap({{"COM3", link}});
  port.SetPortName("COM3");
  EXPECT_TRUE(port.Open()) << port.LastError();
  std::filesystem::remove(link);
}

TEST_F(PseudoTerminal, TellsWhoHoldsThePort) {
  ASSERT_TRUE(port.Open());
  PosixSerialPort second;
  second.SetDeviceMap({{"COM1", far.path}});
  EXPECT_FALSE(second.Open());
  EXPECT_EQ(second.LastError(), far.path + " is in use by test_platform_p (process " +
                                    std::to_string(getpid()) + ").  Close that program.");
  port.Close();
  EXPECT_TRUE(second.Open()) << second.LastError();
}

TEST_F(PseudoTerminal, VanishedPeerClosesThePort) {
  ASSERT_TRUE(port.Open());
  far.Send("0OK\r");
  far.HangUp();
  EXPECT_THROW((void)(port.ReadLine() + port.ReadLine()), SerialPortError);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_EQ(port.ReadLine(), "");
  port.WriteLine("0SVOFF");
  EXPECT_FALSE(port.Open());
  EXPECT_NE(port.LastError(), "");
}

TEST_F(PseudoTerminal, AnIdleLineThatVanishesIsNoticed) {
  ASSERT_TRUE(port.Open());
  EXPECT_EQ(port.WaitingBytes(), 0);
  far.HangUp();
  EXPECT_THROW((void)port.WaitingBytes(), SerialPortError);
  EXPECT_FALSE(port.IsOpen());
  EXPECT_EQ(port.WaitingBytes(), 0);
}

TEST_F(PseudoTerminal, WritingToAVanishedPeerClosesThePort) {
  ASSERT_TRUE(port.Open());
  far.HangUp();
  EXPECT_THROW(port.WriteLine("0SVOFF"), SerialPortError);
  EXPECT_FALSE(port.IsOpen());
}

TEST(SerialDevices, NamesAndTheirDevices) {
  PosixSerialPort port;
  port.SetDeviceMap({{"COM2", "/dev/ttyUSB7"}});
  const std::pair<const char*, const char*> cases[] = {{"COM1", "/dev/ttyS0"},
                                                       {"COM2", "/dev/ttyUSB7"},
                                                       {"COM8", "/dev/ttyS7"},
                                                       {"COM0", ""},
                                                       {"COM", ""},
                                                       {"LPT1", ""}};
  for (const auto& [name, path] : cases) {
    port.SetPortName(name);
    EXPECT_EQ(port.DevicePath(), path) << name;
  }
}

TEST(SerialDevices, RefusalsSayWhy) {
  const std::string file = testing::TempDir() + "velmoor-file-" + std::to_string(getpid());
  std::ofstream(file) << "text";
  const std::pair<std::string, std::string> cases[] = {
      {"/dev/no-such-line",
       "/dev/no-such-line does not exist.  Plug the adapter in, or assign another one."},
      {file, file + " is not a serial port.  Choose another port."},
      {"/dev/null", "/dev/null is not a serial port.  Choose another port."},
      {"", "The port COM1 is not assigned to a device."}};
  for (const auto& [path, words] : cases) {
    SCOPED_TRACE(words);
    PosixSerialPort port;
    port.SetDeviceMap({{"COM1", path}});
    EXPECT_FALSE(port.Open());
    EXPECT_EQ(port.LastError(), words);
    EXPECT_FALSE(port.IsOpen());
  }
  std::filesystem::remove(file);
}

}  // namespace
}  // namespace velmoor::posix
