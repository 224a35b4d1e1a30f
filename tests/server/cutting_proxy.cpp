#include "server/cutting_proxy.h"

#include <arpa/inet.h>
#include <array>
#include <cstdlib>
#include <libpq-fe.h>
#include <poll.h>
#include <stdexcept>
#include <string_view>
#include <sys/socket.h>
#include <unistd.h>

namespace jxc::test {
namespace cutting_proxy_detail {

// Signs of the protocol: the text of the command with its zero, and what the server says when it has done it.
constexpr std::string_view command{"commit\0", 7}, answer{"COMMIT\0", 7};

sockaddr_in local(int port) {
  sockaddr_in place{};
  place.sin_family = AF_INET;
  place.sin_port = htons(static_cast<std::uint16_t>(port));
  place.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return place;
}

int portOf(const std::string& address) {
  int port = 0;
  PQconninfoOption* const options = PQconninfoParse(address.c_str(), nullptr);
  for (const PQconninfoOption* option = options; option && option->keyword; ++option)
    if (option->val && std::string_view(option->keyword) == "port") port = std::atoi(option->val);
  PQconninfoFree(options);
  return port;
}

bool sendAll(int to, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t sent = ::send(to, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (sent <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(sent));
  }
  return true;
}

}  // namespace cutting_proxy_detail

CuttingProxy::CuttingProxy(const std::string& serverAddress)
    : serverPort_(cutting_proxy_detail::portOf(serverAddress)) {
  const int listener = ::socket(AF_INET, SOCK_STREAM, 0);
  sockaddr_in place = cutting_proxy_detail::local(0);
  socklen_t size = sizeof place;
  if (::bind(listener, reinterpret_cast<sockaddr*>(&place), size) != 0 || ::listen(listener, 4) != 0 ||
      ::getsockname(listener, reinterpret_cast<sockaddr*>(&place), &size) != 0)
    throw std::runtime_error("no port for the proxy");
  address_ = serverAddress + " host=127.0.0.1 port=" + std::to_string(ntohs(place.sin_port));
  thread_ = std::thread([this, listener] { serve(listener); });
}

CuttingProxy::~CuttingProxy() {
  ends_ = true;
  thread_.join();
}

void CuttingProxy::serve(int listener) {
  while (!ends_) {
    pollfd waiting{listener, POLLIN, 0};
    if (::poll(&waiting, 1, 50) <= 0) continue;
    const int station = ::accept(listener, nullptr, nullptr);
    const int server = ::socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in place = cutting_proxy_detail::local(serverPort_);
    if (!away_ && ::connect(server, reinterpret_cast<sockaddr*>(&place), sizeof place) == 0) carry(station, server);
    ::close(station);
    ::close(server);
  }
  ::close(listener);
}

void CuttingProxy::carry(int station, int server) {
  using namespace cutting_proxy_detail;
  std::array<char, 65536> room{};
  bool answerIsLost = false;
  while (!ends_ && !away_) {
    std::array<pollfd, 2> sides = {pollfd{station, POLLIN, 0}, pollfd{server, POLLIN, 0}};
    if (::poll(sides.data(), sides.size(), 50) <= 0) continue;
    for (const pollfd& side : sides) {
      if (side.revents == 0) continue;
      const ssize_t got = ::recv(side.fd, room.data(), room.size(), 0);
      if (got <= 0) return;
      const std::string_view bytes(room.data(), static_cast<std::size_t>(got));
      if (side.fd == station && next_ != Cut::Never && bytes.find(command) != bytes.npos) {
        if (next_.exchange(Cut::Never) == Cut::BeforeCommit) return;
        answerIsLost = true;
      }
      if (side.fd == server && answerIsLost) {
        if (bytes.find(answer) != bytes.npos) return;
        continue;
      }
      if (!sendAll(side.fd == station ? server : station, bytes)) return;
    }
  }
}

}  // namespace jxc::test
