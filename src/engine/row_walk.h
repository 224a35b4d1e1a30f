// 逐行读取: the rows of a select while they are read, for whoever goes through a whole ledger and keeps little of it.
#pragma once

#include "engine/database.h"

#include <cstdint>
#include <functional>
#include <span>
#include <string_view>

namespace jxc {

/// A row in the hands of the engine: its cells by place, read as those of a RowSet are. Texts are there until the next
/// row comes.
class WalkedRow {
 public:
  virtual bool isNull(int column) const = 0;
  virtual double number(int column) const = 0;
  virtual std::int64_t integer(int column) const = 0;
  virtual std::string_view utf8(int column) const = 0;
  virtual QString text(int column) const = 0;

 protected:
  ~WalkedRow() = default;
};

using TakeRow = std::function<void(const WalkedRow&)>;

/// `take` gets the rows in their order; what it throws ends the walk. It may not use this connection, which is in the
/// middle of them. A server answers with all of them at once.
void walkRows(Database& database, const SqlText& rows, std::span<const Value> values, const TakeRow& take);
/// The same of rows in memory.
void walkRows(const RowSet& rows, const TakeRow& take);

}  // namespace jxc
