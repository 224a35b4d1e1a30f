#include "core/account_copy.h"

#include "core/schema/indexes.h"
#include "core/schema/schema.h"
#include "core/statements.h"
#include "engine/bulk.h"
#include "engine/replacing.h"
#include "engine/server.h"
#include "engine/transaction.h"
#include "engine/waiting.h"

#include <QScopeGuard>

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

/// The rows of a table and the number that its counter goes on with.
void carry(Database& from, Database& to, const StoredTable& stored, CopyProgress& done,
           const std::function<void(const CopyProgress&)>& progress) {
  done.table = QString::fromStdString(stored.table.name);
  walk(from, stored.table, [&](const RowSet& rows) {
    bulkOf(to).append(stored.table, rows);
    done.rows += rows.rowCount();
    if (progress) progress(done);
  });
  bulkOf(to).setCounter(stored.table, stored.lastCounter);
}

/// The last step: what was carried over is what was there.
QStringList differencesOf(Database& from, Database& to, const std::vector<StoredTable>& tables) {
  schema::createMissingIndexes(to);
  bulkOf(to).analyze();
  QStringList differences;
  for (const StoredTable& stored : tables)
    compare(from, to, stored.table, differences);
  return differences;
}

/// Whether rows of the one fit into the other as it stands.
bool isSameShape(const jet::Table& one, const jet::Table& other) {
  return one.columns.size() == other.columns.size() && std::ranges::all_of(one.columns, [&](const jet::Column& column) {
           const jet::Column* const there = other.find(column.name);
           return there != nullptr && there->type == column.type && there->width == column.width;
         });
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
    makeTable(to, stored.table.name, createText(stored.table));
    carry(from, to, stored, done, progress);
  }
  QStringList differences = differencesOf(from, to, tables);
  if (differences.isEmpty()) target.commit();
  return differences;
}

namespace account_copy_detail {

bool isReplacing = false;

QStringList carryTables(Database& from, Database& to, const std::function<void(const CopyProgress&)>& progress) {
  const LongWork longWork;
  Transaction source(from);
  Transaction target(to);
  for (Database* each : {&from, &to})
    bulkOf(*each).expectPauses();
  const std::vector<StoredTable> tables = bulkOf(from).storedTables(), present = bulkOf(to).storedTables();
  const auto named = [](const std::vector<StoredTable>& all, const std::string& name) {
    return std::ranges::find_if(all, [&](const StoredTable& each) { return each.table.name == name; });
  };
  CopyProgress done;
  for (const StoredTable& stored : tables)
    done.totalRows += rowCount(from, stored.table);
  for (const StoredTable& old : present)
    if (named(tables, old.table.name) == tables.end()) to.execute("delete from [" + old.table.name + "]");
  for (const StoredTable& stored : tables) {
    const auto old = named(present, stored.table.name);
    if (old != present.end() && isSameShape(old->table, stored.table)) {
      to.execute("delete from [" + stored.table.name + "]");
    } else {
      dropTableIfExists(to, stored.table.name);
      makeTable(to, stored.table.name, createText(stored.table));
    }
    carry(from, to, stored, done, progress);
  }
  QStringList differences = differencesOf(from, to, tables);
  if (differences.isEmpty()) target.commit();
  return differences;
}

}  // namespace account_copy_detail

bool isReplacingAccountSet() {
  return account_copy_detail::isReplacing;
}

bool replaceAccountSet(Database& from, Database& to, const std::function<bool(int percent)>& progress) {
  account_copy_detail::isReplacing = true;
  const auto over = qScopeGuard([] { account_copy_detail::isReplacing = false; });
  if (!isOnServer(to)) return replaceContent(to, from, progress);
  struct Stopped {};
  try {
    const QStringList differences = account_copy_detail::carryTables(from, to, [&](const CopyProgress& done) {
      const auto total = std::max<std::int64_t>(done.totalRows, 1);
      if (progress && !progress(static_cast<int>(99 * done.rows / total))) throw Stopped();
    });
    if (!differences.isEmpty())
      throw DbError(DbError::Kind::Other, QStringLiteral("写进去的数据和来源不符，没有保留：") +
                                              differences.mid(0, 2).join(QStringLiteral("；")));
  } catch (const Stopped&) {
    return false;
  }
  if (progress) progress(100);
  return true;
}

}  // namespace jxc
