// A socket at a port of this computer alone that the system has chosen.
#pragma once

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>

#include "platform/posix/FileDescriptor.h"

namespace velmoor {

struct LoopbackSocket {
  LoopbackSocket() : socket(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in place{};
    place.sin_family = AF_INET;
    place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    socklen_t size = sizeof place;
    auto* const at = reinterpret_cast<sockaddr*>(&place);
    EXPECT_EQ(::bind(socket.Get(), at, size), 0);
    EXPECT_EQ(::getsockname(socket.Get(), at, &size), 0);
    port = ntohs(place.sin_port);
  }

  posix::FileDescriptor socket;
  int port = 0;
};

}  // namespace velmoor
