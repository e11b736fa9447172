// Who asks for figures gets them; who asks for anything else, or nothing, holds nobody up for long.

#include "platform/posix/MetricsListener.h"

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <sys/socket.h>

#include <stdexcept>

#include "platform/Numbers.h"
#include "support/Loopback.h"

namespace velmoor::posix {
namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

FileDescriptor Connect(int port) {
  FileDescriptor connection(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  place.sin_port = htons(static_cast<std::uint16_t>(port));
  EXPECT_EQ(::connect(connection.Get(), reinterpret_cast<const sockaddr*>(&place), sizeof place),
            0);
  return connection;
}

std::string Answer(int port, const std::string& request) {
  const FileDescriptor connection = Connect(port);
  EXPECT_GT(::send(connection.Get(), request.data(), request.size(), MSG_NOSIGNAL), 0);
  std::string answer;
  char piece[4096];
  for (ssize_t count = 0; (count = ::recv(connection.Get(), piece, sizeof piece, 0)) > 0;) {
    answer.append(piece, static_cast<std::size_t>(count));
  }
  return answer;
}

// A port that was free a moment ago.
int FreePort() {
  return LoopbackSocket().port;
}

TEST(MetricsListener, GivesTheLatestFiguresAndNothingElse) {
  const int port = FreePort();
  MetricsListener listener(NumberText(port));
  listener.Show("old");
  listener.Show("a 1\n# EOF\n");
  const std::string answer = Answer(port, "GET /metrics HTTP/1.1\r\nHost: x\r\n\r\n");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\nContent-Type: application/openmetrics-text"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Length: 10\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\na 1\n# EOF\n"));
  for (const std::string& other : {std::string("GET /etc/passwd HTTP/1.1\r\n\r\n"),
                                   std::string("POST /metrics HTTP/1.1\r\n\r\n"),
                                   std::string(20000, 'x'), std::string("\x16\x03\x01\r\n\r\n")}) {
    EXPECT_THAT(Answer(port, other), testing::Not(HasSubstr("a 1"))) << other.substr(0, 20);
  }
  // One that says nothing has two seconds; then the next is served.
  const FileDescriptor silent = Connect(port);
  EXPECT_THAT(Answer(port, "GET /metrics HTTP/1.0\r\n\r\n"), HasSubstr("a 1"));
}

TEST(MetricsListener, ListensAtThisComputerAloneUnlessAnAddressIsNamed) {
  for (const char* const bad : {"", "x", "0", "65536", "host:9464", ":9464", "[::1:9464"}) {
    EXPECT_THROW(MetricsListener{bad}, std::runtime_error) << bad;
  }
  const int port = FreePort();
  const MetricsListener listener(NumberText(port));
  EXPECT_THROW(MetricsListener("127.0.0.1:" + NumberText(port)), std::runtime_error);
  EXPECT_NO_THROW(MetricsListener("127.0.0.2:" + NumberText(port)));
}

}  // namespace
}  // namespace velmoor::posix
