// 线路: what the thread of a call speaks through: one session of libcurl that can be stopped and that ends when it
// falls silent. For the protocols of this folder; who calls sees Call only.
#pragma once

#include "platform/net/call.h"

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <curl/curl.h>
#include <mutex>
#include <set>
#include <string>
#include <string_view>

namespace jxc::net {

class Line {
 public:
  explicit Line(Terms terms);
  ~Line();
  Line(const Line&) = delete;
  Line& operator=(const Line&) = delete;

  const Terms& terms() const { return terms_; }
  /// To be set up for the next step; what all calls have in common is set already. One line is one session: a step
  /// finds the connection of the one before.
  CURL* handle() const { return handle_; }
  /// Forgets what the last step was set up for.
  void begin();
  /// Does the step. `order`: what the server gets once it is asked to do what the call is for ("STOR "), from where on
  /// nobody can say that nothing was sent; empty where a step changes nothing. `secret` is blotted out of the server's
  /// words.
  Result perform(std::string_view order, const QByteArray& secret);

  /// Hangs up. In the call's thread, once it has nothing more to say.
  void close();

  /// From any thread.
  void stop();
  bool isStopped() const { return stopped_; }
  int percent() const { return percent_; }

 private:
  static int heard(CURL*, curl_infotype type, char* text, std::size_t size, void* self);
  static std::size_t answered(char* text, std::size_t size, std::size_t count, void* self);
  static int moved(void* self, curl_off_t total, curl_off_t down, curl_off_t totalUp, curl_off_t up);
  static curl_socket_t opened(void* self, curlsocktype, curl_sockaddr* address);
  static int closed(void* self, curl_socket_t socket);
  bool mustEnd();
  CURLcode run();
  Result resultOf(CURLcode code, const QByteArray& secret) const;

  Terms terms_;
  CURLM* session_;
  CURL* handle_;
  std::atomic<bool> stopped_ = false;
  std::atomic<int> percent_ = 0;
  std::mutex mutex_;                 // guards the sockets, and the session against its end
  std::set<curl_socket_t> sockets_;  // that are open

  // Of the step that runs, in the call's thread only.
  std::chrono::steady_clock::time_point lastSign_;
  bool fellSilent_ = false, wasAsked_ = false;
  std::string order_;
  QByteArray answer_;
};

}  // namespace jxc::net
