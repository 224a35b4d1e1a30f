// 列表装载: runs the query of a list without freezing the window; the answer of an old query is dropped.
#pragma once

#include "core/statements.h"

#include <QObject>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace jxc::ui {

/// A statement with its values, kept while it runs elsewhere.
using GridQuery = BoundStatement;

/// Runs queries on a second connection in a thread of its own. The first rows come ahead of the rest where the
/// statement allows it. In memory, inside a transaction, and where no second connection can be had, it runs at once.
class ListLoader : public QObject {
 public:
  explicit ListLoader(QObject* parent);
  ~ListLoader() override;  // interrupts and waits

  /// `arrived(rows, complete)` comes in the window's thread: once with the first rows, perhaps, and once with all.
  /// `failed` gets what the query threw. A newer load drops what an older one still has to say.
  void load(GridQuery query, std::function<void(RowSet, bool complete)> arrived,
            std::function<void(std::exception_ptr)> failed);
  /// Stops what is running; nothing more arrives.
  void cancel();
  bool isRunning() const;
  /// Blocks for at most so long, and takes the answer when it is there by then.
  bool waitFor(int milliseconds);

 private:
  struct Job;
  void take(const std::shared_ptr<Job>& job);
  std::shared_ptr<Job> job_;
  std::vector<std::shared_ptr<Job>> old_;  // interrupted, not yet ended
};

}  // namespace jxc::ui
