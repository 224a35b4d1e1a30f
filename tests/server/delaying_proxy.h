// 延时代理: a way to the server that is longer than loopback, and that counts round trips.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <string>
#include <thread>
#include <vector>

namespace jxc::test {

/// Listens on a port of its own on 127.0.0.1 and hands everything on to another port there, each piece so much later.
class DelayingProxy {
 public:
  DelayingProxy(int serverPort, std::chrono::microseconds eachWay);
  ~DelayingProxy();
  DelayingProxy(const DelayingProxy&) = delete;
  DelayingProxy& operator=(const DelayingProxy&) = delete;

  int port() const { return port_; }
  /// How often somebody asked after the server had answered.
  long roundTrips() const { return trips_; }
  long connections() const { return connections_; }

 private:
  using Clock = std::chrono::steady_clock;
  struct Piece {
    Clock::time_point due;
    std::string bytes;
  };
  struct Direction {
    int from, to;
    std::deque<Piece> pieces;
  };
  struct Pair {
    Direction there, back;
    bool answered = true;
  };
  void serve();
  bool read(Direction& direction) const;

  int serverPort_, port_ = 0, listener_ = -1;
  std::chrono::microseconds eachWay_;
  std::atomic<long> trips_ = 0, connections_ = 0;
  std::atomic<bool> ending_ = false;
  std::vector<Pair> pairs_;
  std::thread thread_;
};

}  // namespace jxc::test
