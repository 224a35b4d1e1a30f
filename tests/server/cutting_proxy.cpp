#include "server/cutting_proxy.h"

#include "server/loopback.h"
#include "server/test_engine.h"

#include <array>
#include <poll.h>
#include <string_view>

namespace jxc::test {
namespace cutting_proxy_detail {

// Signs of the protocol: the text of the command with its zero, and what the server says when it has done it.
constexpr std::string_view command{"commit\0", 7}, answer{"COMMIT\0", 7};

}  // namespace cutting_proxy_detail

CuttingProxy::CuttingProxy(const std::string& serverAddress) : serverPort_(portOf(serverAddress)) {
  const loopback::Listener listener = loopback::listenAnywhere();
  address_ = serverAddress + " host=127.0.0.1 port=" + std::to_string(listener.port);
  thread_ = std::thread([this, socket = listener.socket] { serve(socket); });
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
    const int server = away_ ? -1 : loopback::connected(serverPort_);
    if (server >= 0) {
      carry(station, server);
      ::close(server);
    }
    ::close(station);
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
      if (!loopback::sendAll(side.fd == station ? server : station, bytes)) return;
    }
  }
}

}  // namespace jxc::test
