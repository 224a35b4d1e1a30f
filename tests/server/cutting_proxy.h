// 断线代理: stands between a station and the server, and cuts their connection at the end of a command.
#pragma once

#include <atomic>
#include <string>
#include <thread>

namespace jxc::test {

/// Serves one connection after the other, on this machine.
class CuttingProxy {
 public:
  enum class Cut { Never, BeforeCommit, BeforeItsAnswer };

  explicit CuttingProxy(const std::string& serverAddress);
  ~CuttingProxy();
  CuttingProxy(const CuttingProxy&) = delete;
  CuttingProxy& operator=(const CuttingProxy&) = delete;

  /// The address of the server by way of this proxy.
  const std::string& address() const { return address_; }
  /// Cuts once, at the next commit: nothing of it reaches the server, or the server does it and the answer is lost.
  void cut(Cut when) { next_ = when; }
  /// A server that is away ends its connections and takes no new ones.
  void setAway(bool away) { away_ = away; }

 private:
  void serve(int listener);
  void carry(int station, int server);

  std::string address_;
  int serverPort_ = 0;
  std::atomic<Cut> next_ = Cut::Never;
  std::atomic<bool> away_ = false, ends_ = false;
  std::thread thread_;
};

}  // namespace jxc::test
