// 本机套接字: the few calls that a proxy on this machine needs.
#pragma once

#include <arpa/inet.h>
#include <cstdint>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace jxc::loopback {

inline sockaddr_in place(int port) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(static_cast<std::uint16_t>(port));
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return place;
}

struct Listener {
  int socket = -1;
  int port = 0;
};

/// Listens on a port that the system picks. Throws std::runtime_error.
inline Listener listenAnywhere() {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in here = place(0);
  socklen_t size = sizeof here;
  if (::bind(socket, reinterpret_cast<const sockaddr*>(&here), size) != 0 || ::listen(socket, 8) != 0 ||
      ::getsockname(socket, reinterpret_cast<sockaddr*>(&here), &size) != 0)
    throw std::runtime_error("no port for the proxy");
  return {socket, ntohs(here.sin_port)};
}

/// A socket connected to that port, or -1.
inline int connected(int port) {
  const int socket = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  const sockaddr_in there = place(port);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&there), sizeof there) == 0) return socket;
  ::close(socket);
  return -1;
}

/// False: that side has left.
inline bool sendAll(int socket, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(socket, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace jxc::loopback
