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
void noteClosed(sqlite3* connection);

/// Which file and which log a connection has open. Of a connection that has read already, for its log is there from
/// then on and stays as long as the connection does. May be asked in any thread.
class FileWatch {
 public:
  explicit FileWatch(const QString& file);

  enum class State : char { Mine, FileGone, LogGone };
  /// Whether the names still mean what is open. Costs two looks into the folder.
  State look() const;

 private:
  QString file_, log_;
  FileIdentity fileIdentity_, logIdentity_;
};

}  // namespace jxc::sqlite
