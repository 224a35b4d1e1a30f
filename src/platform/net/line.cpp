#include "platform/net/line.h"

#include <algorithm>
#include <new>
#include <stdexcept>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace jxc::net {
namespace line_detail {

using Clock = std::chrono::steady_clock;

constexpr int kLongestWait = 200;  // ms, between two looks at the clock
constexpr int kNearlyDone = 99;    // percent: all has gone out, the answer is still to come
constexpr qsizetype kMostOfAnswer = 200;
constexpr long kRefusal = 400;  // answers from here on are a no, with FTP, mail and HTTP alike

void startLibrary() {
  static const CURLcode started = curl_global_init(CURL_GLOBAL_DEFAULT);
  if (started != CURLE_OK) throw std::runtime_error(curl_easy_strerror(started));
}

/// A line of the server's as it may be shown: no marks that a display obeys, no password, not a book.
QString shown(QByteArray answer, const QByteArray& secret) {
  if (!secret.isEmpty()) answer.replace(secret, "***");
  QString text = QString::fromUtf8(answer).simplified();
  text.removeIf([](QChar each) { return !each.isPrint(); });
  return text.left(kMostOfAnswer);
}

Reason reasonOf(CURLcode code, long answer) {
  switch (code) {
    case CURLE_OK:
      return Reason::None;
    case CURLE_COULDNT_RESOLVE_HOST:
      return Reason::UnknownName;
    case CURLE_COULDNT_CONNECT:
      return Reason::Unreachable;
    case CURLE_USE_SSL_FAILED:
      return Reason::Unencrypted;
    case CURLE_PEER_FAILED_VERIFICATION:
    case CURLE_SSL_CACERT_BADFILE:
    case CURLE_SSL_ISSUER_ERROR:
      return Reason::Unverified;
    case CURLE_SSL_PINNEDPUBKEYNOTMATCH:
      return Reason::OtherKey;
    case CURLE_LOGIN_DENIED:
      return Reason::Login;
    case CURLE_REMOTE_ACCESS_DENIED:
      return Reason::Folder;
    case CURLE_READ_ERROR:
    case CURLE_WRITE_ERROR:
    case CURLE_ABORTED_BY_CALLBACK:
      return Reason::File;
    default:
      return answer >= kRefusal ? Reason::Refused : Reason::Cut;
  }
}

}  // namespace line_detail

Line::Line(Terms terms) : terms_(std::move(terms)) {
  line_detail::startLibrary();
  session_ = curl_multi_init();
  handle_ = curl_easy_init();
  if (!session_ || !handle_) throw std::bad_alloc();
  begin();
}

Line::~Line() {
  close();
}

void Line::close() {
  CURLM* session = nullptr;
  {
    const std::lock_guard lock(mutex_);
    std::swap(session, session_);
    // A server that does not hear us say goodbye would be waited for.
    for (const curl_socket_t each : sockets_)
      ::shutdown(each, SHUT_RDWR);
  }
  if (!session) return;
  curl_easy_cleanup(handle_);
  curl_multi_cleanup(session);
}

void Line::begin() {
  curl_easy_reset(handle_);
  const auto set = [this](CURLoption option, auto value) { curl_easy_setopt(handle_, option, value); };
  set(CURLOPT_NOSIGNAL, 1L);
  set(CURLOPT_QUICK_EXIT, 1L);  // whoever stops a call does not wait for the name of a server to be looked up
  set(CURLOPT_PROXY, "");       // one would be told name and password
  set(CURLOPT_TCP_KEEPALIVE, 1L);
  set(CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
  if (!terms_.authorities.isEmpty()) set(CURLOPT_CAINFO, terms_.authorities.toLocal8Bit().constData());
  // The clock of silence is our own: it also runs where libcurl waits for an answer inside one of its calls.
  set(CURLOPT_SERVER_RESPONSE_TIMEOUT, static_cast<long>(terms_.silence.count() / 1000 + 5));
  set(CURLOPT_VERBOSE, 1L);
  set(CURLOPT_DEBUGFUNCTION, &Line::heard);
  set(CURLOPT_DEBUGDATA, static_cast<void*>(this));
  set(CURLOPT_HEADERFUNCTION, &Line::answered);
  set(CURLOPT_HEADERDATA, static_cast<void*>(this));
  set(CURLOPT_NOPROGRESS, 0L);
  set(CURLOPT_XFERINFOFUNCTION, &Line::moved);
  set(CURLOPT_XFERINFODATA, static_cast<void*>(this));
  set(CURLOPT_OPENSOCKETFUNCTION, &Line::opened);
  set(CURLOPT_OPENSOCKETDATA, static_cast<void*>(this));
  set(CURLOPT_CLOSESOCKETFUNCTION, &Line::closed);
  set(CURLOPT_CLOSESOCKETDATA, static_cast<void*>(this));
}

Result Line::perform(std::string_view order, const QByteArray& secret) {
  order_ = order;
  answer_.clear();
  wasAsked_ = fellSilent_ = false;
  lastSign_ = line_detail::Clock::now();
  curl_multi_add_handle(session_, handle_);
  const CURLcode code = run();
  const Result result = resultOf(code, secret);
  curl_multi_remove_handle(session_, handle_);
  return result;
}

CURLcode Line::run() {
  for (;;) {
    int running = 0, left = 0;
    curl_multi_perform(session_, &running);
    if (const CURLMsg* said = curl_multi_info_read(session_, &left)) return said->data.result;
    if (mustEnd()) return CURLE_ABORTED_BY_CALLBACK;
    curl_multi_poll(session_, nullptr, 0, line_detail::kLongestWait, nullptr);
  }
}

Result Line::resultOf(CURLcode code, const QByteArray& secret) const {
  long answer = 0;
  curl_easy_getinfo(handle_, CURLINFO_RESPONSE_CODE, &answer);
  Result result;
  result.code = static_cast<int>(answer);
  result.answer = line_detail::shown(answer_, secret);
  result.accepted = code == CURLE_OK;
  // A line that was shut down under libcurl ends with whatever it stumbled over.
  if (code != CURLE_OK && stopped_)
    result.reason = Reason::Stopped;
  else if (code != CURLE_OK && fellSilent_)
    result.reason = Reason::Silent;
  else
    result.reason = line_detail::reasonOf(code, answer);
  const bool hasAnswered = result.accepted || result.reason == Reason::Login || result.reason == Reason::Folder ||
                           result.reason == Reason::Refused;
  result.outcome = hasAnswered ? Outcome::Answered : wasAsked_ ? Outcome::Unknown : Outcome::NotSent;
  return result;
}

bool Line::mustEnd() {
  if (!stopped_ && line_detail::Clock::now() - lastSign_ >= terms_.silence) fellSilent_ = true;
  return stopped_ || fellSilent_;
}

void Line::stop() {
  const std::lock_guard lock(mutex_);
  stopped_ = true;
  for (const curl_socket_t each : sockets_)
    ::shutdown(each, SHUT_RDWR);
  if (session_) curl_multi_wakeup(session_);
}

int Line::heard(CURL*, curl_infotype type, char* text, std::size_t size, void* self) {
  Line& line = *static_cast<Line*>(self);
  if (type == CURLINFO_TEXT) return 0;  // libcurl to itself
  line.lastSign_ = line_detail::Clock::now();
  if (type == CURLINFO_HEADER_OUT && !line.order_.empty() && std::string_view(text, size).starts_with(line.order_))
    line.wasAsked_ = true;
  return 0;
}

std::size_t Line::answered(char* text, std::size_t size, std::size_t count, void* self) {
  if (const QByteArray answer = QByteArray(text, static_cast<qsizetype>(size * count)).trimmed(); !answer.isEmpty())
    static_cast<Line*>(self)->answer_ = answer;
  return size * count;
}

int Line::moved(void* self, curl_off_t total, curl_off_t down, curl_off_t totalUp, curl_off_t up) {
  Line& line = *static_cast<Line*>(self);
  const curl_off_t all = std::max(total, totalUp), done = std::max(down, up);
  if (all > 0) line.percent_ = std::min(line_detail::kNearlyDone, static_cast<int>(std::min(done, all) * 100 / all));
  return line.mustEnd() ? 1 : 0;
}

curl_socket_t Line::opened(void* self, curlsocktype, curl_sockaddr* address) {
  Line& line = *static_cast<Line*>(self);
  const std::lock_guard lock(line.mutex_);
  if (line.stopped_) return CURL_SOCKET_BAD;
  const curl_socket_t made = ::socket(address->family, address->socktype | SOCK_CLOEXEC, address->protocol);
  if (made != CURL_SOCKET_BAD) line.sockets_.insert(made);
  return made;
}

int Line::closed(void* self, curl_socket_t socket) {
  Line& line = *static_cast<Line*>(self);
  {
    const std::lock_guard lock(line.mutex_);
    line.sockets_.erase(socket);
  }
  return ::close(socket);
}

}  // namespace jxc::net
