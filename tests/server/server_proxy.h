// 服务器代理: a way to the server that may be longer than loopback, counts round trips, and breaks when it is told.
#pragma once

#include <atomic>
#include <chrono>
#include <deque>
#include <string>
#include <thread>
#include <vector>

namespace jxc::test {

/// Listens on a port of its own on 127.0.0.1 and hands everything on to another port there, each piece so much later.
class ServerProxy {
 public:
  enum class Cut : char { Never, BeforeCommit, BeforeItsAnswer };

  explicit ServerProxy(int serverPort, std::chrono::microseconds eachWay = {});
  ~ServerProxy();
  ServerProxy(const ServerProxy&) = delete;
  ServerProxy& operator=(const ServerProxy&) = delete;

  int port() const { return port_; }
  /// An address of the server by way of this proxy.
  std::string address(const std::string& server) const {
    return server + " host=127.0.0.1 port=" + std::to_string(port_);
  }
  /// How often somebody asked after the server had answered.
  long roundTrips() const { return trips_; }
  long connections() const { return connections_; }
  /// Cuts once, at the next commit: nothing of it reaches the server, or the server does it and the answer is lost.
  void cut(Cut when) { next_ = when; }
  /// A server that is away ends its connections and takes no new ones.
  void setAway(bool away) { away_ = away; }
  /// A silent one keeps its connections, takes new ones and hands nothing on.
  void setSilent(bool silent) { silent_ = silent; }

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
    bool answered = true, answerIsLost = false;
  };
  void serve();
  bool read(Pair& pair, Direction& direction);

  int serverPort_, port_ = 0, listener_ = -1;
  std::chrono::microseconds eachWay_;
  std::atomic<long> trips_ = 0, connections_ = 0;
  std::atomic<Cut> next_ = Cut::Never;
  std::atomic<bool> away_ = false, silent_ = false, ending_ = false;
  std::vector<Pair> pairs_;
  std::thread thread_;
};

}  // namespace jxc::test
