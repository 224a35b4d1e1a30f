// 大帐套: an account set of the size that is asked for, and workstations that post into it meanwhile.
#pragma once

#include <QString>
#include <QTemporaryDir>

#include <vector>

namespace jxc::bench {

/// A shop of a thousand goods, whose stock ledger has been filled with rows of others until the file is large enough:
/// JXC_BENCH_MB, 64 when not said; 1000 for figures to keep. One for all measurements.
class LargeSet {
 public:
  LargeSet();
  const QString& file() const { return file_; }
  /// On the same disk.
  QString beside(const char* name) const { return folder_.filePath(QString::fromLatin1(name)); }

 private:
  QString file_;
  QTemporaryDir folder_;
};
LargeSet& largeSet();

/// Two other processes that save and audit receipts of five lines one after the other, as fast as they can, until this
/// one ends them.
class TwoStations {
 public:
  /// They begin. The set is closed for that moment: they are begun by a fork.
  TwoStations();
  ~TwoStations();
  TwoStations(const TwoStations&) = delete;
  TwoStations& operator=(const TwoStations&) = delete;
  /// Ends them. How long each command took, in milliseconds, from the shortest to the longest.
  std::vector<double> end();

 private:
  struct Shared;
  Shared* shared_;
  std::vector<int> ends_;  // of the pipes on which they tell
  std::vector<int> processes_;
};

}  // namespace jxc::bench
