#include "server/server_proxy.h"

#include "server/loopback.h"

#include <algorithm>
#include <netinet/tcp.h>
#include <poll.h>

namespace jxc::test {
namespace server_proxy_detail {

// Signs of the protocol: the text of the command with its zero, and what the server says when it has done it.
constexpr std::string_view command{"commit\0", 7}, answer{"COMMIT\0", 7};

int atOnce(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return socket;
}

}  // namespace server_proxy_detail

ServerProxy::ServerProxy(int serverPort, std::chrono::microseconds eachWay)
    : serverPort_(serverPort), eachWay_(eachWay) {
  const loopback::Listener listener = loopback::listenAnywhere();
  listener_ = listener.socket;
  port_ = listener.port;
  thread_ = std::thread([this] { serve(); });
}

ServerProxy::~ServerProxy() {
  ending_ = true;
  thread_.join();
  for (const Pair& pair : pairs_) {
    ::close(pair.there.from);
    ::close(pair.there.to);
  }
  ::close(listener_);
}

/// False: that side has left, or is cut off.
bool ServerProxy::read(Pair& pair, Direction& direction) {
  using namespace server_proxy_detail;
  std::string bytes(std::size_t{1} << 16, '\0');
  const ssize_t got = ::recv(direction.from, bytes.data(), bytes.size(), 0);
  if (got <= 0) return false;
  bytes.resize(static_cast<std::size_t>(got));
  const bool fromStation = &direction == &pair.there;
  if (fromStation && next_ != Cut::Never && bytes.find(command) != bytes.npos) {
    if (next_.exchange(Cut::Never) == Cut::BeforeCommit) return false;
    pair.answerIsLost = true;
  }
  if (!fromStation && pair.answerIsLost) return bytes.find(answer) == bytes.npos;
  direction.pieces.push_back({Clock::now() + eachWay_, std::move(bytes)});
  return true;
}

void ServerProxy::serve() {
  using namespace server_proxy_detail;
  std::vector<pollfd> sockets;
  while (!ending_) {
    if (silent_) {
      std::this_thread::sleep_for(std::chrono::milliseconds(10));
      continue;
    }
    Clock::time_point next = Clock::now() + std::chrono::milliseconds(50);  // to see that it shall end
    sockets.assign(1, {listener_, POLLIN, 0});
    for (const Pair& pair : pairs_) {
      sockets.push_back({pair.there.from, POLLIN, 0});
      sockets.push_back({pair.back.from, POLLIN, 0});
      for (const Direction* direction : {&pair.there, &pair.back})
        if (!direction->pieces.empty()) next = std::min(next, direction->pieces.front().due);
    }
    const auto patience = std::max(Clock::duration::zero(), next - Clock::now());
    const timespec wait{0, std::chrono::duration_cast<std::chrono::nanoseconds>(patience).count()};
    ::ppoll(sockets.data(), sockets.size(), &wait, nullptr);
    std::vector<std::size_t> left;
    for (std::size_t i = 0; i < pairs_.size(); ++i) {
      Pair& pair = pairs_[i];
      bool open = !away_;
      if (open && sockets[1 + 2 * i].revents != 0 && (open = read(pair, pair.there)) && pair.answered) {
        ++trips_;
        pair.answered = false;
      }
      if (open && sockets[2 + 2 * i].revents != 0 && (open = read(pair, pair.back))) pair.answered = true;
      for (Direction* direction : {&pair.there, &pair.back})
        while (!direction->pieces.empty() && (direction->pieces.front().due <= Clock::now() || !open)) {
          // When that side has left, the other one notices by itself.
          loopback::sendAll(direction->to, direction->pieces.front().bytes);
          direction->pieces.pop_front();
        }
      if (!open) left.push_back(i);
    }
    for (; !left.empty(); left.pop_back()) {
      ::close(pairs_[left.back()].there.from);
      ::close(pairs_[left.back()].there.to);
      pairs_.erase(pairs_.begin() + static_cast<std::ptrdiff_t>(left.back()));
    }
    if (sockets[0].revents != 0) {
      const int client = atOnce(::accept4(listener_, nullptr, nullptr, SOCK_CLOEXEC));
      ++connections_;
      const int server = away_ ? -1 : loopback::connected(serverPort_);
      if (server < 0) {
        ::close(client);
        continue;
      }
      atOnce(server);
      pairs_.push_back({.there = {client, server, {}}, .back = {server, client, {}}});
    }
  }
}

}  // namespace jxc::test
