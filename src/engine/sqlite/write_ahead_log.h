// 日志的内容: what the write-ahead log beside an account file holds, read without SQLite.
#pragma once

#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

namespace jxc::sqlite {

/// A number in the header of the first page, in the field that SQLite keeps for its user. Every commit gives the set
/// another one, which carries half of the one before: high half the low half of its predecessor, low half by chance. So
/// a log tells which state of a file it was begun on, and which states it leads through.
std::uint32_t followingNumber(std::uint32_t number);

struct LogContent {
  std::vector<std::uint32_t> numbers;  // on its first pages, in order, spoilt ones too
  std::optional<std::uint32_t> first;  // of them, if it stands before anything spoilt
  bool holdsCommits = false;           // that SQLite is going to play into the file
  std::int64_t lostPages = 0;          // behind a place that does not check, of commits that SQLite is going to drop

  /// False only when it was certainly begun on another file: in its own there is either the number that stood there
  /// when the log began, or one of those that it has carried into the file since.
  bool belongsTo(std::uint32_t number) const;
};

/// Empty for a missing file and for what is no log.
LogContent readLog(const QString& file);

/// What the first page of an account file tells of itself.
struct FileHeader {
  bool keepsLog = false;  // false of a backup, which is complete by itself
  std::uint32_t number = 0;
};
FileHeader readHeader(int descriptor);

/// Where the header tells whether there is a log: two bytes that are both 2 then, and both 1 otherwise.
inline constexpr int logKeptOffset = 18;

}  // namespace jxc::sqlite
