// 事务: a command happens whole or not at all.
#pragma once

#include "engine/database.h"

namespace jxc {

/// Guard of one writing command. Nests: an inner one is a savepoint of the outer. Leaving the scope without `commit`
/// takes everything back. Ask the operator before you open one, never inside.
class Transaction {
 public:
  explicit Transaction(Database& database) : database_(database) { database_.begin(); }
  ~Transaction() {
    if (!done_) database_.rollback();
  }
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Throws when the database cannot keep the work (disk full, another station in the way); all of it is taken back
  /// then.
  void commit() {
    done_ = true;  // also a commit that fails ends this level
    database_.commit();
  }

 private:
  Database& database_;
  bool done_ = false;
};

}  // namespace jxc
