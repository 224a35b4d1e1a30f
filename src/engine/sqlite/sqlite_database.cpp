#include "engine/sqlite/sqlite_database.h"

#include "engine/sheet_export.h"
#include "engine/sqlite/functions.h"
#include "engine/sqlite/native_cell.h"
#include "engine/sqlite/sums_by_key.h"
#include "engine/sqlite/write_ahead_log.h"
#include "engine/transaction.h"
#include "engine/waiting.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>

namespace jxc::sqlite {
namespace sqlite_database_detail {

using Kind = DbError::Kind;

// Screens put their list filters together from parts, so the number of texts has no bound of its own.
constexpr std::size_t statementLimit = 4000;

bool returnsRows(const jet::Plan& plan) {
  return plan.kind == jet::Plan::Kind::Select;
}

Value cellValue(sqlite3_stmt* statement, int column) {
  const NativeCell cell(statement, column);
  switch (cell.kind()) {
    case SQLITE_NULL:
      return {};
    case SQLITE_INTEGER:
      return Value(static_cast<long long>(cell.integer()));
    case SQLITE_FLOAT:
      return Value(cell.real());
    default: {
      const std::string_view text = cell.utf8();
      return Value(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    }
  }
}

/// SQLite compiles a statement anew when the schema changed under it; the plan may be out of date then too.
bool compiledAnew(sqlite3_stmt* statement) {
  return sqlite3_stmt_status(statement, SQLITE_STMTSTATUS_REPREPARE, 1) != 0;
}

/// Savepoint commands by level; deeper nesting than this many levels is a program that calls itself.
struct Level {
  const char* open;
  const char* keep;
  const char* back;
};
constexpr std::array levels{
    Level{"begin immediate", "commit", "rollback"},        Level{"savepoint s1", "release s1", "rollback to s1"},
    Level{"savepoint s2", "release s2", "rollback to s2"}, Level{"savepoint s3", "release s3", "rollback to s3"},
    Level{"savepoint s4", "release s4", "rollback to s4"}, Level{"savepoint s5", "release s5", "rollback to s5"},
    Level{"savepoint s6", "release s6", "rollback to s6"}, Level{"savepoint s7", "release s7", "rollback to s7"},
};

/// Nothing when it cannot be read: a number that follows from none would make the file's own log a foreign one.
std::optional<std::uint32_t> numberOf(sqlite3* connection) {
  sqlite3_stmt* raw = nullptr;
  sqlite3_prepare_v2(connection, "pragma user_version", -1, &raw, nullptr);
  const StatementHandle statement(raw);
  if (raw == nullptr || sqlite3_step(raw) != SQLITE_ROW) return {};
  return static_cast<std::uint32_t>(sqlite3_column_int(raw, 0));
}

bool setNumber(sqlite3* connection, std::uint32_t number) {
  const std::string command = "pragma user_version=" + std::to_string(static_cast<std::int32_t>(number));
  return sqlite3_exec(connection, command.c_str(), nullptr, nullptr, nullptr) == SQLITE_OK;
}

void carryLog(sqlite3* connection) {
  sqlite3_wal_checkpoint_v2(connection, "main", SQLITE_CHECKPOINT_PASSIVE, nullptr, nullptr);
}

const Level& levelAt(int depth) {
  if (depth >= static_cast<int>(levels.size())) throw DbError(Kind::Other, QStringLiteral("事务嵌套过深。"));
  return levels[static_cast<std::size_t>(depth)];
}

}  // namespace sqlite_database_detail

Translator jetTranslator() {
  return [](std::string_view text, const jet::Catalogue& catalogue) {
    return jet::translate(text, catalogue, jet::Engine::Sqlite);
  };
}

SqliteDatabase::SqliteDatabase(ConnectionHandle connection, FileRole role, Translator translator, Opening opening)
    : connection_(std::move(connection)),
      role_(std::move(role)),
      opening_(std::move(opening)),
      translator_(std::move(translator)),
      catalogue_(connection_.get(), role_) {
  schemaVersion_ = schemaVersion();
  if (role_.file.isEmpty()) return;
  watch_.emplace(connection_.get(), role_.file);
  if (!role_.reader) checkpointer_.emplace(connection_.get(), role_.file, *watch_);
}

/// Whoever closes a file last carries its log into it and takes the log away by its name: not when another file or
/// another log stands there now.
SqliteDatabase::~SqliteDatabase() {
  checkpointer_.reset();
  if (!watch_ || watch_->look(connection_.get()) == FileWatch::State::Mine) return;
  if (canBeCarried()) sqlite_database_detail::carryLog(connection_.get());
  sqlite3_db_config(connection_.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
}

// ---- statements by their text ----

SqliteDatabase::Statement& SqliteDatabase::statementFor(std::string_view text) {
  Place& place = places_[((reinterpret_cast<std::uintptr_t>(text.data()) >> 3) + text.size()) %
                         std::tuple_size_v<decltype(places_)>];
  if (place.statement == nullptr || place.text != text) {
    const auto found = statements_.find(text);
    if (found == statements_.end()) return translateAndKeep(text);
    place = {found->first, found->second.get()};
  }
  return *place.statement;
}

SqliteDatabase::Statement& SqliteDatabase::translateAndKeep(std::string_view text) {
  if (statements_.size() >= sqlite_database_detail::statementLimit) forgetStatements();
  auto statement = translate(text);
  if (statement->plan.kind != jet::Plan::Kind::Definition) {
    for (const jet::Step& step : statement->plan.steps)
      statement->steps.push_back({&step, prepare(step.sql, text)});
  }
  return *statements_.emplace(std::string(text), std::move(statement)).first->second;
}

std::unique_ptr<SqliteDatabase::Statement> SqliteDatabase::translate(std::string_view text) {
  auto statement = std::make_unique<Statement>();
  for (bool again = false;; again = true) {
    try {
      statement->plan = translator_(text, catalogue_);
      break;
    } catch (const jet::TranslateError& error) {
      // The name may have come with a schema that another station has changed meanwhile.
      if (!again && error.kind == jet::TranslateError::Kind::UnknownName && schemaVersion() != schemaVersion_) {
        followSchema();
        continue;
      }
      throw untranslatable(error, text);
    }
  }
  std::vector<std::string> names;
  for (const jet::ResultColumn& column : statement->plan.columns)
    names.push_back(column.name);
  statement->names = std::make_shared<ColumnNames>(std::move(names));
  return statement;
}

StatementHandle SqliteDatabase::prepare(const std::string& native, std::string_view text) const {
  sqlite3_stmt* raw = nullptr;
  const int code = sqlite3_prepare_v3(connection_.get(), native.c_str(), static_cast<int>(native.size() + 1),
                                      SQLITE_PREPARE_PERSISTENT, &raw, nullptr);
  if (code != SQLITE_OK) throw statementFailed(role_, code, sqlite3_errmsg(connection_.get()), text);
  return StatementHandle(raw);
}

void SqliteDatabase::check(const SqlText& sql) {
  statementFor(sql.view());
}

void SqliteDatabase::forgetStatements() {
  places_.fill({});
  statements_.clear();
  catalogue_.forget();
}

std::int64_t SqliteDatabase::schemaVersion() {
  auto& statement = commands_["pragma schema_version"];
  if (!statement) statement = prepare("pragma schema_version", {});
  const Running running(statement.get());
  if (const int code = sqlite3_step(statement.get()); code != SQLITE_ROW) fail(code, {});
  return sqlite3_column_int64(statement.get(), 0);
}

/// Drops what was made for an older schema, when another station changed it.
void SqliteDatabase::followSchema() {
  const std::int64_t now = schemaVersion();
  if (now == schemaVersion_) return;
  schemaVersion_ = now;
  forgetStatements();
}

// ---- reading ----

int SqliteDatabase::step(sqlite3_stmt* statement, std::string_view text) {
  const int code = sqlite3_step(statement);
  if (code != SQLITE_ROW && code != SQLITE_DONE) fail(code, text);
  return code;
}

void SqliteDatabase::fail(int code, std::string_view text) {
  const std::string message = sqlite3_errmsg(connection_.get());
  if (const int limit = widthBehind(message); limit > 0) {
    const DbError error = tooWide(QString::fromStdString(message.substr(function_failure::kTooWide.size())), limit);
    throw DbError(error.kind(), error.message(), std::string(text));
  }
  throw statementFailed(role_, code, message.c_str(), text);
}

/// Width of the column that a function of the dialect found too narrow; 0 for any other message.
int SqliteDatabase::widthBehind(std::string_view message) const {
  if (!message.starts_with(function_failure::kTooWide)) return 0;
  message.remove_prefix(function_failure::kTooWide.size());
  const std::size_t point = message.find('.');
  if (point == std::string_view::npos) return 0;
  const jet::Table* table = catalogue_.table(message.substr(0, point));
  const jet::Column* column = table != nullptr ? table->find(message.substr(point + 1)) : nullptr;
  return column != nullptr ? column->width : 0;
}

void SqliteDatabase::requireLive(std::string_view text) const {
  // SQLite takes a transaction back on its own when the disk fails. What the command does next must not be kept apart
  // from what it did before, so everything fails until its guards are gone.
  const bool tookBack = depth_ > 0 && sqlite3_get_autocommit(connection_.get()) != 0;
  if (!lost_ && !tookBack) return;
  throw DbError(DbError::Kind::Other, QStringLiteral("本次操作已被数据库撤销，请重新操作。"), std::string(text));
}

// ---- the file under the work ----

/// A file that was moved away, deleted or replaced while it is open would take with it whatever is written now.
void SqliteDatabase::requireFileInPlace(std::string_view text) {
  if (!watch_) return;
  switch (watch_->look(connection_.get())) {
    case FileWatch::State::Mine:
      return;
    case FileWatch::State::LogGone:
      tellLogGone(text);
    case FileWatch::State::FileGone:
      throw DbError(
          DbError::Kind::File,
          QStringLiteral("帐套文件已被移走、删除或替换，数据没有保存。请先把原来的文件放回原处，再继续操作。"),
          std::string(text));
  }
}

/// Whether the log that is open, whatever became of its name, can still be played into the file that is open. Not into
/// one that was copied over it, and not where somebody has begun another log.
bool SqliteDatabase::canBeCarried() {
  return depth_ == 0 && !role_.reader && !watch_->isOverwritten(connection_.get()) && !watch_->hasOtherLog();
}

/// What was saved since the log was carried last stands in a log that has no name any more and ends with this process.
void SqliteDatabase::tellLogGone(std::string_view text) {
  const bool isSaved = canBeCarried() && sqlite3_wal_checkpoint_v2(connection_.get(), "main", SQLITE_CHECKPOINT_FULL,
                                                                   nullptr, nullptr) == SQLITE_OK;
  throw DbError(DbError::Kind::File,
                isSaved
                    ? QStringLiteral("帐套旁边的日志文件（-wal）被删除了。以前保存的单据已全部写回帐套文件，没有丢失；"
                                     "这一次没有保存。请退出系统，重新进入后再操作。")
                    : QStringLiteral("帐套旁边的日志文件（-wal）被删除或替换了，这一次没有保存，最近保存的单据可能"
                                     "不在帐套文件里。请不要再操作，立即联系维护人员。"),
                std::string(text));
}

/// The first command of whoever opens a file alone: the file gets another number before anything else is written, so
/// that no copy that was made of it until now passes for the file on which the new log stands. It may fail: where it
/// cannot be done the command itself will say why, and where others read the copy is believed.
void SqliteDatabase::beginSession() {
  using namespace sqlite_database_detail;
  if (!std::exchange(opening_.alone, false)) return;
  sqlite3* const connection = connection_.get();
  if (sqlite3_exec(connection, "begin immediate", nullptr, nullptr, nullptr) != SQLITE_OK) return;
  const auto number = numberOf(connection);
  const bool isCounted = number && setNumber(connection, followingNumber(*number)) &&
                         sqlite3_exec(connection, "commit", nullptr, nullptr, nullptr) == SQLITE_OK;
  if (sqlite3_get_autocommit(connection) == 0) sqlite3_exec(connection, "rollback", nullptr, nullptr, nullptr);
  if (isCounted) carryLog(connection);
}

/// Each commit carries the next number, in the header of the first page: see write_ahead_log.h.
void SqliteDatabase::countCommit() {
  using namespace sqlite_database_detail;
  const auto number = numberOf(connection_.get());
  if (!number || !setNumber(connection_.get(), followingNumber(*number)))
    fail(sqlite3_extended_errcode(connection_.get()), "commit");
}

/// Runs `read` on a select; once more when its plan turns out to belong to an older schema.
template <class Read>
auto SqliteDatabase::readFresh(const SqlText& sql, std::span<const Value> values, Read read) {
  requireLive(sql.view());
  // A reader that is kept would go on with the rows of a file that stands there no more.
  if (role_.reader && watch_->look(connection_.get()) != FileWatch::State::Mine) throw fileIsGone(role_.file);
  for (;;) {
    Statement& statement = statementFor(sql.view());
    if (!sqlite_database_detail::returnsRows(statement.plan))
      throw misuse(QStringLiteral("这不是查询语句。"), sql.view());
    requireValues(statement.plan, values, sql.view());
    sqlite3_stmt* native = statement.steps.front().native.get();
    auto result = read(statement);
    // Nobody else sees a database in memory, and nobody else writes during a transaction.
    if (role_.file.isEmpty() || depth_ > 0 || !sqlite_database_detail::compiledAnew(native)) return result;
    const std::int64_t before = schemaVersion_;
    followSchema();
    if (schemaVersion_ == before) return result;
  }
}

RowSet SqliteDatabase::readRows(Statement& statement, const Step& step, std::span<const Value> values,
                                std::string_view text) {
  sqlite3_stmt* native = step.native.get();
  const Running running(native);
  binder_.bind(native, step.plan->parameters, values);
  int code = this->step(native, text);
  const int columns = sqlite3_column_count(native);
  std::shared_ptr<const ColumnNames> names = statement.names;
  if (static_cast<int>(names->names().size()) != columns) {  // driving rows have no names of their own
    std::vector<std::string> own;
    for (int i = 0; i < columns; ++i)
      own.emplace_back(sqlite3_column_name(native, i));
    names = std::make_shared<ColumnNames>(std::move(own));
  }
  RowSet rows(std::move(names));
  for (; code == SQLITE_ROW; code = this->step(native, text))
    for (int i = 0; i < columns; ++i)
      addCell(rows, NativeCell(native, i));
  return rows;
}

RowSet SqliteDatabase::select(const SqlText& sql, std::span<const Value> values) {
  return readFresh(sql, values, [&](Statement& statement) {
    return readRows(statement, statement.steps.front(), values, sql.view());
  });
}

Value SqliteDatabase::lookup(const SqlText& sql, std::span<const Value> values) {
  return readFresh(sql, values, [&](Statement& statement) {
    const Step& only = statement.steps.front();
    const Running running(only.native.get());
    binder_.bind(only.native.get(), only.plan->parameters, values);
    return step(only.native.get(), sql.view()) == SQLITE_ROW ? sqlite_database_detail::cellValue(only.native.get(), 0)
                                                             : Value();
  });
}

RowSet SqliteDatabase::groupedSums(const SqlText& lines, std::span<const Value> values, int keys) {
  if (depth_ == 0 && !role_.file.isEmpty()) followSchema();
  return readFresh(lines, values, [&](Statement& statement) {
    SumsByKey sums(statement.names, keys);
    takeRows(statement, values, sums.over(statement.steps.front().plan->sql), lines.view(), sums);
    return sums.rows();
  });
}

void SqliteDatabase::walkRows(const SqlText& rows, std::span<const Value> values, const TakeRow& take) {
  if (depth_ == 0 && !role_.file.isEmpty()) followSchema();
  readFresh(rows, values, [&](Statement& statement) {
    RowByRow each(statement.names, take);
    const Step& only = statement.steps.front();
    const std::string walk = each.inOrderOver(only.plan->sql);
    if (readsInOrder(connection_.get(), walk))
      takeRows(statement, values, walk, rows.view(), each);
    else
      jxc::walkRows(readRows(statement, only, values, rows.view()), take);
    return true;
  });
}

void SqliteDatabase::takeRows(const Statement& statement, std::span<const Value> values, const std::string& walk,
                              std::string_view text, RowTaker& taker) {
  const StatementHandle native = prepare(walk, text);
  binder_.bind(native.get(), statement.steps.front().plan->parameters, values);
  taker.bind(native.get());
  const int code = sqlite3_step(native.get());
  taker.rethrow();
  if (code != SQLITE_ROW && code != SQLITE_DONE) fail(code, text);
}

// ---- writing ----

std::int64_t SqliteDatabase::execute(const SqlText& sql, std::span<const Value> values) {
  const std::string_view text = sql.view();
  requireLive(text);
  const Wait forTheOther;
  // Inside a transaction nobody else can change the schema; before it began it was looked at.
  if (depth_ == 0 && !role_.file.isEmpty()) {
    requireFileInPlace(text);
    followSchema();
  }
  Statement& statement = statementFor(text);
  requireValues(statement.plan, values, text);
  const bool writes =
      statement.plan.kind != jet::Plan::Kind::Select && statement.plan.kind != jet::Plan::Kind::SheetExport;
  if (depth_ == 0 && watch_ && writes) {
    Transaction own(*this);  // it counts as a commit
    const std::int64_t changed = execute(sql, values);
    own.commit();
    return changed;
  }
  switch (statement.plan.kind) {
    case jet::Plan::Kind::Change:
      return statement.steps.size() == 1 ? runStep(statement.steps.front(), values, text)
                                         : runSteps(statement, values, text);
    case jet::Plan::Kind::JoinedUpdate:
      return runJoined(statement, values, text);
    case jet::Plan::Kind::Definition: {
      const jet::Plan plan = statement.plan;  // a copy, because the statements are forgotten on the way
      define(plan, values, text);
      return 0;
    }
    case jet::Plan::Kind::SheetExport:
      return exportSheet(statement, values, text);
    case jet::Plan::Kind::Select:
      break;
  }
  throw misuse(QStringLiteral("查询语句不能作为命令执行。"), text);
}

std::int64_t SqliteDatabase::runStep(const Step& step, std::span<const Value> values, std::string_view text,
                                     const RowSet* driving, int row) {
  sqlite3_stmt* native = step.native.get();
  const Running running(native);
  binder_.bind(native, step.plan->parameters, values, driving, row);
  while (this->step(native, text) == SQLITE_ROW) {
  }
  return sqlite3_changes64(connection_.get());
}

std::int64_t SqliteDatabase::runSteps(Statement& statement, std::span<const Value> values, std::string_view text) {
  Transaction transaction(*this);
  std::int64_t changed = 0;
  for (const Step& step : statement.steps)
    changed = runStep(step, values, text);
  transaction.commit();
  return changed;
}

/// The joined rows are read whole first: an update must not see its own work among the rows that drive it.
std::int64_t SqliteDatabase::runJoined(Statement& statement, std::span<const Value> values, std::string_view text) {
  Transaction transaction(*this);
  const RowSet driving = readRows(statement, statement.steps.front(), values, text);
  std::int64_t changed = 0;
  for (int row = 0; row < driving.rowCount(); ++row)
    for (std::size_t i = 1; i < statement.steps.size(); ++i)
      changed += runStep(statement.steps[i], values, text, &driving, row);
  transaction.commit();
  return changed;
}

void SqliteDatabase::define(const jet::Plan& plan, std::span<const Value> values, std::string_view text) {
  const std::string kept(text);  // the caller's text may be the key of a statement that is forgotten now
  Transaction transaction(*this);
  defined_ = true;
  forgetStatements();
  for (const jet::Step& step : plan.steps) {
    // One after the other: a step may name what the one before it made.
    const Step next{&step, prepare(step.sql, kept)};
    runStep(next, values, kept);
  }
  transaction.commit();
  schemaVersion_ = schemaVersion();
}

std::int64_t SqliteDatabase::exportSheet(Statement& statement, std::span<const Value> values, std::string_view text) {
  const Step& step = statement.steps.front();
  sqlite3_stmt* native = step.native.get();
  const Running running(native);
  binder_.bind(native, step.plan->parameters, values);
  int code = this->step(native, text);
  std::int64_t count = 0;
  const auto next = [&] {
    RowSet piece(statement.names);
    for (int row = 0; row < rowsOfPiece && code == SQLITE_ROW; ++row, ++count, code = this->step(native, text)) {
      for (int i = 0; i < piece.columnCount(); ++i)
        addCell(piece, NativeCell(native, i));
    }
    return piece;
  };
  const jet::Plan& plan = statement.plan;
  const QString file = plan.fileParameter < 0 ? QString::fromStdString(plan.file)
                                              : values[static_cast<std::size_t>(plan.fileParameter)].text();
  exportRows(next, QString::fromStdString(plan.sheet), file);
  return count;
}

// ---- transactions ----

bool SqliteDatabase::run(const char* command) {
  auto found = commands_.find(std::string_view(command));
  if (found == commands_.end()) found = commands_.emplace(command, prepare(command, command)).first;
  const Running running(found->second.get());
  return sqlite3_step(found->second.get()) == SQLITE_DONE;
}

void SqliteDatabase::runOrThrow(const char* command) {
  if (!run(command)) fail(sqlite3_extended_errcode(connection_.get()), command);
}

void SqliteDatabase::begin() {
  const sqlite_database_detail::Level& level = sqlite_database_detail::levelAt(depth_);
  requireLive(level.open);
  const bool isCommand = depth_ == 0 && !role_.reader && watch_;
  {
    const Wait forTheOther;
    if (isCommand) {
      requireFileInPlace(level.open);
      beginSession();
    }
    // A command writes: taking the right to write at once means that it never fails half-way because another one does.
    // A reader asks for nothing but that what it reads is of one moment.
    runOrThrow(depth_ == 0 && role_.reader ? "begin" : level.open);
  }
  ++depth_;
  if (isCommand) changesBefore_ = sqlite3_total_changes(connection_.get());
  if (depth_ > 1 || role_.file.isEmpty()) return;
  try {
    followSchema();
  } catch (...) {
    rollback();
    throw;
  }
}

void SqliteDatabase::commit() {
  if (depth_ == 0) throw DbError(DbError::Kind::Other, QStringLiteral("没有可以提交的事务。"));
  std::optional<DbError> failure;
  try {
    requireLive("commit");
    if (depth_ == 1 && watch_ && !role_.reader && sqlite3_total_changes(connection_.get()) != changesBefore_)
      countCommit();
    runOrThrow(sqlite_database_detail::levelAt(depth_ - 1).keep);
  } catch (const DbError& error) {
    failure = error;
  }
  if (failure) {
    rollback();
    throw *failure;
  }
  --depth_;
  if (depth_ == 0) defined_ = false;
}

void SqliteDatabase::rollback() {
  if (depth_ == 0) return;
  const sqlite_database_detail::Level& level = sqlite_database_detail::levels[static_cast<std::size_t>(--depth_)];
  try {
    if (!lost_ && sqlite3_get_autocommit(connection_.get()) == 0) {
      const bool back = run(level.back) && (depth_ == 0 || run(level.keep));
      if (!back) lost_ = true;
    }
    if (defined_) {
      // Tables that were made or changed inside are as they were before.
      forgetStatements();
      schemaVersion_ = schemaVersion();
    }
  } catch (const DbError&) {
    // Preparing the command failed for want of memory; the connection takes everything back when it closes.
    lost_ = depth_ > 0;
  }
  if (depth_ == 0) lost_ = defined_ = false;
}

DbError fileIsGone(const QString& file) {
  return cannotReach({.file = file, .essential = false},
                     QStringLiteral("文件已被移走、删除或替换。请先把原来的文件放回原处，再继续操作。"));
}

bool giveNewNumber(sqlite3* connection) {
  std::uint32_t number = 0;
  sqlite3_randomness(sizeof number, &number);
  return sqlite_database_detail::setNumber(connection, number);
}

SqliteDatabase& asSqlite(Database& database) {
  if (auto* sqlite = dynamic_cast<SqliteDatabase*>(&database)) return *sqlite;
  throw DbError(DbError::Kind::Unsupported, QStringLiteral("此数据库不支持该操作。"));
}

}  // namespace jxc::sqlite
