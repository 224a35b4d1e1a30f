#include "engine/row_walk.h"

#include "engine/sqlite/sqlite_database.h"

namespace jxc {
namespace row_walk_detail {

class KeptRow final : public WalkedRow {
 public:
  explicit KeptRow(const RowSet& set) : set_(set) {}
  bool isNull(int column) const override { return set_.isNull(row, column); }
  double number(int column) const override { return set_.number(row, column); }
  std::int64_t integer(int column) const override { return set_.integer(row, column); }
  std::string_view utf8(int column) const override { return set_.utf8(row, column); }
  QString text(int column) const override { return set_.text(row, column); }

  int row = 0;

 private:
  const RowSet& set_;
};

}  // namespace row_walk_detail

void walkRows(const RowSet& rows, const TakeRow& take) {
  row_walk_detail::KeptRow at(rows);
  for (const int count = rows.rowCount(); at.row < count; ++at.row)
    take(at);
}

void walkRows(Database& database, const SqlText& rows, std::span<const Value> values, const TakeRow& take) {
  if (auto* sqlite = dynamic_cast<sqlite::SqliteDatabase*>(&database)) return sqlite->walkRows(rows, values, take);
  walkRows(database.select(rows, values), take);
}

}  // namespace jxc
