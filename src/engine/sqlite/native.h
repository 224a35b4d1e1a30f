// SQLite 句柄: the handles of the C interface as owners.
#pragma once

#include <memory>
#include <sqlite3.h>

namespace jxc::sqlite {

struct CloseConnection {
  void operator()(sqlite3* connection) const;
};
struct FinalizeStatement {
  void operator()(sqlite3_stmt* statement) const { sqlite3_finalize(statement); }
};
struct FreeMemory {
  void operator()(void* memory) const { sqlite3_free(memory); }
};

using ConnectionHandle = std::unique_ptr<sqlite3, CloseConnection>;
using StatementHandle = std::unique_ptr<sqlite3_stmt, FinalizeStatement>;

/// A statement that is stepped now; leaving the scope lets go of its locks and rows.
class Running {
 public:
  explicit Running(sqlite3_stmt* statement) : statement_(statement) {}
  ~Running() { sqlite3_reset(statement_); }
  Running(const Running&) = delete;
  Running& operator=(const Running&) = delete;

 private:
  sqlite3_stmt* statement_;
};

}  // namespace jxc::sqlite
