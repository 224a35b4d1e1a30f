// 升级: walking the ladder.
#include "core/schema/upgrade.h"

#include "core/passwords.h"
#include "core/schema/indexes.h"
#include "core/schema/schema.h"
#include "engine/error.h"
#include "engine/waiting.h"

#include <algorithm>
#include <array>
#include <stdexcept>

namespace jxc {
namespace upgrade_detail {

using schema::UpgradeAction;
using schema::UpgradeBlock;

bool hasColumn(Database& database, std::string_view table, std::string_view column) {
  return stands(database, "select " + std::string(column).append(" from ").append(table));
}

std::string declaredType(std::string_view table, std::string_view column) {
  if (const schema::TableDefinition* definition = schema::findDefinition(table)) {
    for (const schema::ColumnLine& line : schema::columnsOf(*definition)) {
      if (line.name == column) return std::string(line.type);
    }
  }
  throw std::logic_error("no such column: " + std::string(table).append(".").append(column));
}

void addColumns(Database& database, const UpgradeAction& action) {
  if (!hasColumn(database, action.text, "id")) {  // a table that this database never had comes in today's shape
    createTable(database, action.text);
    return;
  }
  std::string set;
  for (const schema::NewColumn& column : action.columns) {
    if (hasColumn(database, action.text, column.name)) continue;
    database.execute("alter table " + std::string(action.text) + " add " + std::string(column.name) + " " +
                     declaredType(action.text, column.name) + " null");
    if (!column.initial.empty())
      set.append(set.empty() ? " set " : ",").append(column.name).append("=").append(column.initial);
  }
  if (!set.empty()) database.execute("update " + std::string(action.text) + set);
}

void perform(Database& database, const UpgradeAction& action) {
  switch (action.kind) {
    case UpgradeAction::Kind::Run:
      database.execute(action.text);
      break;
    case UpgradeAction::Kind::Recreate:
      createTable(database, action.text);
      break;
    case UpgradeAction::Kind::AddColumns:
      addColumns(database, action);
      break;
    case UpgradeAction::Kind::Call:
      action.walk(database);
      break;
  }
}

void perform(Database& database, const UpgradeBlock& block) {
  switch (block.when) {
    case UpgradeBlock::When::Missing:
      if (stands(database, block.test)) return;
      break;
    case UpgradeBlock::When::NoRow:
      if (!database.lookup(block.test).text().isEmpty()) return;
      break;
    case UpgradeBlock::When::Guarded:
      try {
        for (const UpgradeAction& action : block.actions)
          perform(database, action);
      } catch (const DbError&) {
        // A table of the order module may be missing: the rest of this block has nothing to do then.
      }
      return;
    case UpgradeBlock::When::Always:
      break;
  }
  for (const UpgradeAction& action : block.actions)
    perform(database, action);
}

/// What whoever logs in has to know: where it stopped, and that going on is not the same as going back.
UpgradeFailed stepFailed(const schema::UpgradeStep& step, const DbError& failure, const QString& copy) {
  const auto date = QString::fromUtf8(step.stamp.data(), qsizetype(step.stamp.size()));
  QString text = QStringLiteral("帐套升级没有完成，停在 %1 这一步：%2\r\n\r\n").arg(date, failure.message());
  text += copy.isEmpty() ? QStringLiteral("请先不要录入单据，用升级以前的备份恢复后再升级。")
                         : QStringLiteral("请先不要录入单据，用升级前的备份恢复后再升级：\r\n%1").arg(copy);
  text += step.untilDone ? QStringLiteral("\r\n\r\n再次登录时重做这一步。")
                         : QStringLiteral("\r\n\r\n再次登录时从下一步继续，这一步不会重做。");
  return UpgradeFailed(failure.kind(), text, failure.statement(), failure.position());
}

QString copied(const CopyBefore& copyBefore) {
  try {
    return copyBefore();
  } catch (const DbError& failure) {
    throw UpgradeFailed(failure.kind(), QStringLiteral("帐套需要升级，升级前的备份没有写成，升级没有开始。\r\n\r\n") +
                                            failure.message());
  }
}

}  // namespace upgrade_detail

bool isSchemaCurrent(Database& database) {
  const std::string stamp = database.lookup("select cs_employdate from jxc_xtcs").text().toStdString();
  return std::ranges::all_of(schema::upgradeSteps(), [&](const auto& step) { return stamp >= step.guard; });
}

bool holdsWork(Database& database) {
  return database.lookup("select count(*) from jxc_goodslist").integer() > 0 ||
         database.lookup("select count(*) from jxc_goods").integer() > 1;
}

void upgradeSchema(Database& database, const CopyBefore& copyBefore) {
  const LongWork longWork;
  // Read once: what the steps write does not decide about the steps behind them.
  const std::string stamp = database.lookup("select cs_employdate from jxc_xtcs").text().toStdString();
  bool changed = false;
  QString copy;
  for (const schema::UpgradeStep& step : schema::upgradeSteps()) {
    if (stamp >= step.guard) continue;
    if (!changed) {
      hashOldPasswords(database);  // before the copy, which would keep them
      if (copyBefore && (!stamp.empty() || holdsWork(database))) copy = upgrade_detail::copied(copyBefore);
    }
    changed = true;
    const std::array<Value, 1> values{Value(QString::fromUtf8(step.stamp.data(), qsizetype(step.stamp.size())))};
    const auto date = [&] { database.execute("update jxc_xtcs set cs_employdate=?", values); };
    // First of all: a step that fails half-way is not tried again, so that one bad step cannot lock every login.
    if (!step.untilDone) date();
    try {
      for (const schema::UpgradeBlock& block : step.blocks)
        upgrade_detail::perform(database, block);
      if (step.untilDone) date();
    } catch (const DbError& failure) {
      throw upgrade_detail::stepFailed(step, failure, copy);
    }
  }
  if (!changed) return schema::createNewIndexes(database);
  for (const std::string_view name : schema::companionTables()) {
    if (!upgrade_detail::hasColumn(database, name, "id")) createTable(database, name);
  }
  schema::createMissingIndexes(database);
}

}  // namespace jxc
