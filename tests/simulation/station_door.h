// 工位之门: what a simulated station takes for its database. Each call knocks first.
#pragma once

#include "engine/database.h"
#include "engine/posting.h"

#include <memory>
#include <string>
#include <string_view>

namespace jxc::test {

/// What a killed process feels: no handler of the program catches it.
struct Killed {};

/// What becomes of a call that waits at the door.
enum class Fate : char { Done, Killed, Cut, CommitLost, AnswerLost, Full, Busy };

/// Whoever lets the station go on.
class DoorKeeper {
 public:
  virtual ~DoorKeeper() = default;
  /// Waits for its turn. `writes`: the call takes the one place of those who write.
  virtual Fate knock(std::string_view call, const std::string& what, bool writes) = 0;
  /// The one place of those who write is taken, or free again.
  virtual void writing(bool on) = 0;
  /// The outermost level was kept: nobody is let between that and its telling.
  virtual void kept() = 0;
  /// Breaks the connection: now, or when the next commit or its answer is on its way.
  virtual void cut(Fate how) = 0;
};

class StationDoor final : public Database, private Posting {
 public:
  StationDoor(std::unique_ptr<Database> books, DoorKeeper& keeper) : books_(std::move(books)), keeper_(keeper) {}

  RowSet select(const SqlText& sql, std::span<const Value> values) override;
  Value lookup(const SqlText& sql, std::span<const Value> values) override;
  std::int64_t execute(const SqlText& sql, std::span<const Value> values) override;
  void check(const SqlText& sql) override { books_->check(sql); }
  std::int64_t lastCounter() const override { return books_->lastCounter(); }
  /// A question stands before the operator.
  void question() { pass("question", false); }
  /// Nobody reads behind the back of the one whose turn it is.
  OpenReader readerOpener() const override { return {}; }
  void backupTo(const QString& file, const std::function<bool(int percent)>& progress) override {
    books_->backupTo(file, progress);
  }
  StorageCheck checkStorage(const std::function<bool(int percent)>& progress) override {
    return books_->checkStorage(progress);
  }
  void interrupt() override { books_->interrupt(); }
  Posting* posting() override { return books_->posting() ? this : nullptr; }
  void begin() override;
  void commit() override;
  void rollback() override;
  bool inTransaction() const override { return books_->inTransaction(); }

 private:
  void post(const SqlText& sql, std::span<const Value> values) override;
  std::shared_ptr<const Outcome> sendAhead(const SqlText& sql, std::span<const Value> values) override;
  void collect() override;
  std::int64_t roundTrips() const override { return books_->posting()->roundTrips(); }

  void pass(std::string_view call, bool writes, std::string_view sql = {}, std::span<const Value> values = {});

  std::unique_ptr<Database> books_;
  DoorKeeper& keeper_;
  int depth_ = 0;
  bool killed_ = false;
};

}  // namespace jxc::test
