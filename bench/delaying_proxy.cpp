#include "delaying_proxy.h"

#include <algorithm>
#include <arpa/inet.h>
#include <netinet/tcp.h>
#include <poll.h>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>

namespace jxc::bench {
namespace delaying_proxy_detail {

sockaddr_in loopback(int port) {
  sockaddr_in address{};
  address.sin_family = AF_INET;
  address.sin_port = htons(static_cast<std::uint16_t>(port));
  address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  return address;
}

int atOnce(int socket) {
  const int on = 1;
  ::setsockopt(socket, IPPROTO_TCP, TCP_NODELAY, &on, sizeof on);
  return socket;
}

int connected(int port) {
  const int socket = atOnce(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0));
  const sockaddr_in address = loopback(port);
  if (::connect(socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
    throw std::runtime_error("the proxy cannot reach the server");
  return socket;
}

void sendAll(int socket, const std::string& bytes) {
  for (std::size_t at = 0; at < bytes.size();) {
    const ssize_t sent = ::send(socket, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
    if (sent <= 0) return;  // that side has left; the other one notices by itself
    at += static_cast<std::size_t>(sent);
  }
}

}  // namespace delaying_proxy_detail

DelayingProxy::DelayingProxy(int serverPort, std::chrono::microseconds eachWay)
    : serverPort_(serverPort), eachWay_(eachWay) {
  listener_ = ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in address = delaying_proxy_detail::loopback(0);
  socklen_t size = sizeof address;
  if (::bind(listener_, reinterpret_cast<const sockaddr*>(&address), size) != 0 || ::listen(listener_, 8) != 0 ||
      ::getsockname(listener_, reinterpret_cast<sockaddr*>(&address), &size) != 0)
    throw std::runtime_error("the proxy cannot listen");
  port_ = ntohs(address.sin_port);
  thread_ = std::thread([this] { serve(); });
}

DelayingProxy::~DelayingProxy() {
  ending_ = true;
  thread_.join();
  for (const Pair& pair : pairs_) {
    ::close(pair.there.from);
    ::close(pair.there.to);
  }
  ::close(listener_);
}

/// False: that side has left.
bool DelayingProxy::read(Direction& direction) const {
  std::string bytes(std::size_t{1} << 16, '\0');
  const ssize_t got = ::recv(direction.from, bytes.data(), bytes.size(), 0);
  if (got <= 0) return false;
  bytes.resize(static_cast<std::size_t>(got));
  direction.pieces.push_back({Clock::now() + eachWay_, std::move(bytes)});
  return true;
}

void DelayingProxy::serve() {
  using namespace delaying_proxy_detail;
  std::vector<pollfd> sockets;
  while (!ending_) {
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
      bool open = true;
      if (sockets[1 + 2 * i].revents != 0 && (open = read(pair.there)) && pair.answered) {
        ++trips_;
        pair.answered = false;
      }
      if (open && sockets[2 + 2 * i].revents != 0 && (open = read(pair.back))) pair.answered = true;
      for (Direction* direction : {&pair.there, &pair.back})
        while (!direction->pieces.empty() && (direction->pieces.front().due <= Clock::now() || !open)) {
          sendAll(direction->to, direction->pieces.front().bytes);
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
      const int server = connected(serverPort_);
      pairs_.push_back({.there = {client, server, {}}, .back = {server, client, {}}});
    }
  }
}

}  // namespace jxc::bench
