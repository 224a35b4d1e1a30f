// 网络调用: one call to a server of somebody else, made beside the window in a thread of its own that knows no
// database.
#pragma once

#include <QString>

#include <chrono>
#include <cstdint>
#include <functional>
#include <memory>

namespace jxc::net {

/// What is known of a call that is over. Who pays or sends by one goes by this alone: what was surely not sent may be
/// sent again; after what is unknown the server has to be asked first.
enum class Outcome : std::uint8_t {
  Answered,  // the server has said yes or no to it: Result::accepted
  NotSent,   // surely nothing of it has reached the server
  Unknown    // the line broke, fell silent or was stopped after the server had been asked
};

/// Why a call was not answered, or what the answer was about.
enum class Reason : std::uint8_t {
  None,         // accepted
  Stopped,      // by stop()
  Silent,       // nothing came or went for Terms::silence
  UnknownName,  // the name of the server stands for no address
  Unreachable,  // nobody answers at that address
  Unencrypted,  // the server offers no encryption, and the terms want it
  Unverified,   // its certificate was issued by nobody whom this machine knows, is out of date, or for another name
  OtherKey,     // its certificate is not the one that is trusted
  Login,        // name or password
  Folder,       // the folder is not there, or the user may not go into it
  Refused,      // anything else that the server said no to
  Cut,          // the line broke
  File,         // the file on this machine: not to be read to its end, not to be written
  Changed       // the file on this machine, while it was sent
};

/// Whom a server says to be. Empty where it did not say.
struct Certificate {
  QString subject;      // as libcurl writes it: "CN = nas, O = …"
  QString expires;      // the same: "Nov 26 16:15:37 2027 GMT"
  QString fingerprint;  // SHA-256 of the certificate, as a browser shows it: "AB:CD:…"
  QString pin;          // SHA-256 of its public key in base64, 44 characters: what stays when it is renewed
};

struct Result {
  Outcome outcome = Outcome::NotSent;
  bool accepted = false;
  Reason reason = Reason::None;
  int code = 0;             // of the server's answer; 0: there was none
  QString answer;           // the server's words, without the password if it should repeat it
  Certificate certificate;  // of a server that was not trusted, where the call asked for it
};

/// What holds for a call besides what it does.
struct Terms {
  std::chrono::milliseconds silence{20000};  // it ends when nothing came or went for so long
  QString authorities;                       // file of the certificates that are trusted; empty: those of the machine
};

/// Percent of what goes through the line, 0 to 99 until the answer is there; false stops the call.
using Progress = std::function<bool(int percent)>;

class Line;

/// A call that has begun. It belongs to the thread that made it; only `stop` may be called from another one.
class Call {
 public:
  /// Runs in the call's own thread and may touch nothing but the line and what it holds itself.
  using Work = std::function<Result(Line& line)>;

  Call(Terms terms, Work work);
  /// Stops it when it is not over, and waits for its thread, which then has nothing left to wait for.
  ~Call();
  Call(const Call&) = delete;
  Call& operator=(const Call&) = delete;

  /// Ends it at once, wherever it stands.
  void stop();
  bool isOver() const;
  int percent() const;

  /// Waits for the end. `progress` is called in this thread, about every 30 ms: it may run the event loop.
  Result wait(const Progress& progress = {});

 private:
  struct Shared;
  std::unique_ptr<Shared> shared_;
};

}  // namespace jxc::net
