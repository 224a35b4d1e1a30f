#include "core/account_copy.h"

#include "core/schema/indexes.h"
#include "core/statements.h"
#include "engine/bulk.h"
#include "engine/transaction.h"
#include "engine/waiting.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

namespace jxc {
namespace account_copy_detail {

constexpr int rowsAtOnce = 10000;

const jet::Column* counterOf(const jet::Table& table) {
  const auto found = std::find_if(table.columns.begin(), table.columns.end(),
                                  [](const jet::Column& column) { return column.type == jet::ColumnType::Counter; });
  return found == table.columns.end() ? nullptr : &*found;
}

std::string createText(const jet::Table& table) {
  std::string sql = "create table [" + table.name + "] (";
  for (const jet::Column& column : table.columns) {
    if (&column != &table.columns.front()) sql += ',';
    sql.append("[").append(column.name).append("] ").append(column.declared);
    if (column.type != jet::ColumnType::Counter) sql += " null";
  }
  if (const jet::Column* counter = counterOf(table))
    sql += ", Constraint StatePrimary Primary key ([" + counter->name + "])";
  return sql + ")";
}

std::int64_t rowCount(Database& database, const jet::Table& table) {
  return database.lookup("select count(*) from [" + table.name + "]").integer();
}

/// Rows of a table in the order of their numbers, a handful at a time.
template <class Take>
void walk(Database& from, const jet::Table& table, Take take) {
  const jet::Column* counter = counterOf(table);
  if (!counter) {
    take(from.select("select * from [" + table.name + "]"));
    return;
  }
  const std::string next = "select top " + std::to_string(rowsAtOnce) + " * from [" + table.name + "] where [" +
                           counter->name + "]>? order by [" + counter->name + "]";
  std::int64_t last = 0;
  if (const Value least = from.lookup("select min([" + counter->name + "]) from [" + table.name + "]"); !least.isNull())
    last = least.integer() - 1;
  for (;;) {
    const std::array<Value, 1> values{Value(static_cast<long long>(last))};
    const RowSet rows = from.select(next, values);
    if (rows.isEmpty()) return;
    last = rows.integer(rows.rowCount() - 1, rows.columnIndex(counter->name));
    take(rows);
    if (rows.rowCount() < rowsAtOnce) return;
  }
}

/// How many rows, and for each column the sum of its numbers, or of the lengths of its texts and of their first and
/// last characters.
std::vector<double> figuresOf(Database& database, const jet::Table& table) {
  std::string sql = "select count(*)";
  for (const jet::Column& column : table.columns) {
    const std::string name = '[' + column.name + ']';
    const bool isText = column.type == jet::ColumnType::Text || column.type == jet::ColumnType::LongText;
    sql += ",count(" + name + ")";
    if (isText)
      sql += ",sum(len(" + name + ")),sum(asc(" + name + ")),sum(asc(right(" + name + ",1)))";
    else
      sql += ",sum(" + name + ")";
  }
  const RowSet row = database.select(sql + " from [" + table.name + "]");
  std::vector<double> figures;
  for (int i = 0; i < row.columnCount(); ++i)
    figures.push_back(row.number(0, i));
  return figures;
}

/// Sums of many binary fractions differ in their last digits from those of decimals.
bool isSame(double a, double b) {
  return std::fabs(a - b) <= 1e-6 + 1e-11 * std::max(std::fabs(a), std::fabs(b));
}

void compare(Database& from, Database& to, const jet::Table& table, QStringList& differences) {
  const std::vector<double> before = figuresOf(from, table), after = figuresOf(to, table);
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (i < after.size() && isSame(before[i], after[i])) continue;
    differences << QStringLiteral("%1：第 %2 个合计不符，原有 %3，现有 %4")
                       .arg(QString::fromStdString(table.name))
                       .arg(i + 1)
                       .arg(before[i], 0, 'g', 15)
                       .arg(i < after.size() ? after[i] : 0.0, 0, 'g', 15);
  }
}

}  // namespace account_copy_detail

QStringList copyAccountSet(Database& from, Database& to, const std::function<void(const CopyProgress&)>& progress) {
  using namespace account_copy_detail;
  const LongWork longWork;
  Transaction source(from);  // nobody writes there meanwhile
  Transaction target(to);
  for (Database* each : {&from, &to})
    bulkOf(*each).expectPauses();
  const std::vector<StoredTable> tables = bulkOf(from).storedTables();
  if (!bulkOf(to).storedTables().empty())
    throw DbError(DbError::Kind::Constraint, QStringLiteral("目标数据库里已经有数据表，不能复制到这里。"));
  CopyProgress done;
  for (const StoredTable& stored : tables)
    done.totalRows += rowCount(from, stored.table);
  for (const StoredTable& stored : tables) {
    done.table = QString::fromStdString(stored.table.name);
    to.execute(createText(stored.table));
    walk(from, stored.table, [&](const RowSet& rows) {
      bulkOf(to).append(stored.table, rows);
      done.rows += rows.rowCount();
      if (progress) progress(done);
    });
    bulkOf(to).setCounter(stored.table, stored.lastCounter);
  }
  schema::createMissingIndexes(to);
  bulkOf(to).analyze();
  QStringList differences;
  for (const StoredTable& stored : tables)
    compare(from, to, stored.table, differences);
  if (differences.isEmpty()) target.commit();
  return differences;
}

}  // namespace jxc
