// 打开的文件: which account files this process has open.
#pragma once

#include <QString>

#include <cstdint>
#include <sqlite3.h>
#include <utility>

namespace jxc::sqlite {

/// Which file stands there, whatever it is called; {0, 0} when there is none.
using FileIdentity = std::pair<std::uint64_t, std::uint64_t>;
FileIdentity identityOf(const QString& file);

/// Every connection of this process is noted, before it reads for the first time: a second descriptor of an open file,
/// once closed, would take the locks of the first with it, so nothing looks into a file that is open here.
void noteOpened(sqlite3* connection, const QString& file);
void closeNoted(sqlite3* connection);

/// No connection of this process begins or ends meanwhile.
class NobodyOpens {
 public:
  NobodyOpens();
  ~NobodyOpens();
  NobodyOpens(const NobodyOpens&) = delete;
  NobodyOpens& operator=(const NobodyOpens&) = delete;
};
/// The next two are asked while NobodyOpens stands.
bool isOpenHere(const QString& file);
/// Keeps other programs from a file that is not open here: held only when nobody has it open. Whoever opens it waits.
/// Another descriptor of the file, once closed, would end it.
class Exclusion {
 public:
  explicit Exclusion(const QString& file);
  ~Exclusion();
  Exclusion(const Exclusion&) = delete;
  Exclusion& operator=(const Exclusion&) = delete;
  bool isHeld() const { return held_; }
  int descriptor() const { return descriptor_; }

 private:
  int descriptor_;
  bool held_ = false;
};

/// Which file and which log a connection has open. Of a connection that has read already, for its log is there from
/// then on and stays as long as the connection does.
class FileWatch {
 public:
  FileWatch(sqlite3* connection, const QString& file);

  enum class State : char { Mine, FileGone, LogGone };
  /// Whether the names still mean what is open, and whether no backup was copied over it, which leaves the names as
  /// they are. Never wrong when it says that something is gone; other copies over an open file are not seen. Costs two
  /// looks into the folder. May be asked in any thread, over a connection of that thread; null: only the names are
  /// looked at.
  State look(sqlite3* connection) const;
  bool isOverwritten(sqlite3* connection) const;
  /// Whether another log stands under the name of the one that is open.
  bool hasOtherLog() const;

 private:
  QString file_, log_;
  FileIdentity fileIdentity_, logIdentity_;
  bool keepsLog_;
};

}  // namespace jxc::sqlite
