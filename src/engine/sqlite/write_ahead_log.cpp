#include "engine/sqlite/write_ahead_log.h"

#include <QFile>

#include <algorithm>
#include <array>
#include <cstring>
#include <sqlite3.h>
#include <unistd.h>

namespace jxc::sqlite {
namespace write_ahead_log_detail {

// The format of file and log is part of SQLite's promise and will not change.
constexpr std::size_t logHeaderBytes = 32, frameHeaderBytes = 24, checkedHeaderBytes = 24, checkedFrameBytes = 8;
constexpr std::uint32_t magicLittle = 0x377f0682, magicBig = 0x377f0683;
constexpr std::size_t numberOffset = 60, fileHeaderBytes = 100;
constexpr std::uint32_t lowHalf = 0xffff;

std::uint32_t bigEndian(const unsigned char* bytes) {
  return std::uint32_t{bytes[0]} << 24 | std::uint32_t{bytes[1]} << 16 | std::uint32_t{bytes[2]} << 8 | bytes[3];
}

/// The running sum over everything before.
struct Sum {
  std::uint32_t first = 0, second = 0;
  bool bigWords = false;

  void add(const unsigned char* bytes, std::size_t size) {
    for (std::size_t at = 0; at + 8 <= size; at += 8) {
      first += word(bytes + at) + second;
      second += word(bytes + at + 4) + first;
    }
  }
  bool stands(const unsigned char* at) const { return bigEndian(at) == first && bigEndian(at + 4) == second; }

 private:
  std::uint32_t word(const unsigned char* at) const {
    if (bigWords) return bigEndian(at);
    return std::uint32_t{at[3]} << 24 | std::uint32_t{at[2]} << 16 | std::uint32_t{at[1]} << 8 | at[0];
  }
};

/// The frames up to one that ends a commit.
struct Commit {
  std::optional<std::uint32_t> number;  // on its first page, which every commit of ours writes
  std::int64_t spoilt = 0;              // frames that do not check
  bool isTorn = false;                  // one in between is nobody's
};

/// The commits of a log in their order. A station that is killed while it commits leaves frames that nobody was told
/// of; who comes next writes over them, and what is longer stays behind what he wrote: whole and of this log, but it
/// goes on from a commit before his, or has lost its first page to him.
class Commits {
 public:
  /// Whether it stood in the log when its station told it as saved.
  bool add(const Commit& commit) {
    const bool stood = commit.spoilt == 0 || !last_ || commit.isTorn || follows(commit.number);
    if (!stood || !commit.number) return stood;
    if (last_)
      earlier_.push_back(*last_ & lowHalf);
    else
      earlier_.push_back(*commit.number >> 16U);
    last_ = commit.number;
    return true;
  }

 private:
  /// A number that tells nothing is a spoilt one.
  bool follows(const std::optional<std::uint32_t>& number) const {
    if (!number) return false;
    const std::uint32_t before = *number >> 16U;
    return before == (*last_ & lowHalf) || std::ranges::find(earlier_, before) == earlier_.end();
  }

  std::optional<std::uint32_t> last_;
  std::vector<std::uint32_t> earlier_;  // low halves of the numbers before the last one
};

}  // namespace write_ahead_log_detail

std::uint32_t followingNumber(std::uint32_t number) {
  using namespace write_ahead_log_detail;
  std::uint32_t next = 0;
  do {
    sqlite3_randomness(sizeof next, &next);
    next &= lowHalf;
  } while (next == (number & lowHalf));
  return number << 16U | next;
}

bool LogContent::belongsTo(std::uint32_t number) const {
  using write_ahead_log_detail::lowHalf;
  if (!first) return true;
  return *first >> 16U == (number & lowHalf) || std::ranges::find(numbers, number) != numbers.end();
}

LogContent readLog(const QString& name) {
  using namespace write_ahead_log_detail;
  LogContent content;
  QFile file(name);
  std::array<unsigned char, logHeaderBytes> header{};
  if (!file.open(QIODevice::ReadOnly) ||
      file.read(reinterpret_cast<char*>(header.data()), logHeaderBytes) != qint64{logHeaderBytes})
    return content;
  const std::uint32_t magic = bigEndian(header.data());
  const std::size_t pageBytes = bigEndian(header.data() + 8);
  if ((magic != magicLittle && magic != magicBig) || pageBytes < 512 || pageBytes > 65536) return content;
  Sum sum;
  sum.bigWords = magic == magicBig;
  sum.add(header.data(), checkedHeaderBytes);
  bool checks = sum.stands(header.data() + checkedHeaderBytes);
  const unsigned char* const salts = header.data() + 16;

  std::vector<unsigned char> frame(frameHeaderBytes + pageBytes);
  const auto size = static_cast<qint64>(frame.size());
  Commits commits;
  Commit commit;
  while (file.read(reinterpret_cast<char*>(frame.data()), size) == size) {
    if (std::memcmp(frame.data() + 8, salts, 8) != 0) {  // left over from the log before, or spoilt
      checks = false;
      commit.isTorn = true;
      continue;
    }
    if (checks) {
      sum.add(frame.data(), checkedFrameBytes);
      sum.add(frame.data() + frameHeaderBytes, pageBytes);
      checks = sum.stands(frame.data() + 16);
    }
    // Also what does not check any more: a part of it may have been carried into the file while it still did.
    if (bigEndian(frame.data()) == 1) {
      commit.number = bigEndian(frame.data() + frameHeaderBytes + numberOffset);
      content.numbers.push_back(*commit.number);
      if (checks && content.numbers.size() == 1) content.first = commit.number;
    }
    const bool ends = bigEndian(frame.data() + 4) != 0;
    if (!checks) ++commit.spoilt;
    if (!ends) continue;
    if (checks) content.holdsCommits = true;
    if (commits.add(commit)) content.lostPages += commit.spoilt;
    commit = {};
  }
  return content;
}

FileHeader readHeader(int descriptor) {
  using namespace write_ahead_log_detail;
  std::array<unsigned char, fileHeaderBytes> bytes{};
  if (::pread(descriptor, bytes.data(), bytes.size(), 0) != ssize_t{fileHeaderBytes}) return {.keepsLog = true};
  return {.keepsLog = bytes[logKeptOffset] != 1 || bytes[logKeptOffset + 1] != 1,
          .number = bigEndian(bytes.data() + numberOffset)};
}

}  // namespace jxc::sqlite
