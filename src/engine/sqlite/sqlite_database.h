// SQLite 连接: statements translated once, kept by their text, run by plan; transactions by savepoints.
#pragma once

#include "engine/bulk.h"
#include "engine/database.h"
#include "engine/row_walk.h"
#include "engine/sqlite/checkpointer.h"
#include "engine/sqlite/failure.h"
#include "engine/sqlite/native.h"
#include "engine/sqlite/open_files.h"
#include "engine/sqlite/own_file.h"
#include "engine/sqlite/parameter_binding.h"
#include "engine/sqlite/sqlite_catalogue.h"
#include "engine/text_hash.h"
#include "jet/plan.h"

#include <array>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jxc::sqlite {

class RowTaker;

/// From a statement's text to a plan; jet::translate, or plans made by hand in a test.
using Translator = std::function<jet::Plan(std::string_view, const jet::Catalogue&)>;
Translator jetTranslator();

class SqliteDatabase final : public Database, public Bulk {
 public:
  SqliteDatabase(ConnectionHandle connection, FileRole role, Translator translator = jetTranslator(),
                 Opening opening = {});
  ~SqliteDatabase() override;

  RowSet select(const SqlText& sql, std::span<const Value> values) override;
  Value lookup(const SqlText& sql, std::span<const Value> values) override;
  std::int64_t execute(const SqlText& sql, std::span<const Value> values) override;
  void check(const SqlText& sql) override;
  std::int64_t lastCounter() const override { return sqlite3_last_insert_rowid(connection_.get()); }

  OpenReader readerOpener() const override;
  void backupTo(const QString& file, const std::function<bool(int percent)>& progress) override;
  StorageCheck checkStorage(const std::function<bool(int percent)>& progress) override;
  QStringList openingRemarks() const override { return opening_.remarks; }
  void interrupt() override { sqlite3_interrupt(connection_.get()); }

  void begin() override;
  void commit() override;
  void rollback() override;
  bool inTransaction() const override { return depth_ > 0; }

  std::vector<StoredTable> storedTables() override;
  std::vector<StoredObject> storedObjects() override;
  void append(const jet::Table& table, const RowSet& rows) override;
  void setCounter(const jet::Table& table, std::int64_t last) override;
  void analyze() override;
  void expectPauses() override {}
  void forgetReplaced(const char* table) override;
  bool giveRoomBack(const std::function<bool()>& goOn) override;
  void overwriteDeleted(bool isWanted) override;

  /// Rows of a select summed by their first `keys` columns (engine/grouped_sums.h).
  RowSet groupedSums(const SqlText& lines, std::span<const Value> values, int keys);
  /// Rows of a select one by one (engine/row_walk.h).
  void walkRows(const SqlText& rows, std::span<const Value> values, const TakeRow& take);

  sqlite3* native() const { return connection_.get(); }
  const FileRole& role() const { return role_; }

 private:
  struct Step {
    const jet::Step* plan = nullptr;
    StatementHandle native;
  };
  /// A translated statement with what SQLite made of its steps.
  struct Statement {
    jet::Plan plan;
    std::vector<Step> steps;
    std::shared_ptr<const ColumnNames> names;
  };

  /// A statement at the place where its text stands in the program: a literal is found there again without hashing it.
  struct Place {
    std::string_view text;  // the key in statements_
    Statement* statement = nullptr;
  };

  Statement& statementFor(std::string_view text);
  Statement& translateAndKeep(std::string_view text);
  std::unique_ptr<Statement> translate(std::string_view text);
  StatementHandle prepare(const std::string& native, std::string_view text) const;
  template <class Read>
  auto readFresh(const SqlText& sql, std::span<const Value> values, Read read);
  void takeRows(const Statement& statement, std::span<const Value> values, const std::string& walk,
                std::string_view text, RowTaker& taker);
  RowSet readRows(Statement& statement, const Step& step, std::span<const Value> values, std::string_view text);
  std::int64_t runStep(const Step& step, std::span<const Value> values, std::string_view text,
                       const RowSet* driving = nullptr, int row = 0);
  std::int64_t runSteps(Statement& statement, std::span<const Value> values, std::string_view text);
  std::int64_t runJoined(Statement& statement, std::span<const Value> values, std::string_view text);
  void define(const jet::Plan& plan, std::span<const Value> values, std::string_view text);
  std::int64_t exportSheet(Statement& statement, std::span<const Value> values, std::string_view text);
  int step(sqlite3_stmt* statement, std::string_view text);
  [[noreturn]] void fail(int code, std::string_view text);
  int widthBehind(std::string_view message) const;
  void requireLive(std::string_view text) const;
  void requireFileInPlace(std::string_view text);
  [[noreturn]] void tellLogGone(std::string_view text);
  bool canBeCarried();
  void beginSession();
  void countCommit();
  void followSchema();
  std::int64_t schemaVersion();
  void forgetStatements();
  bool run(const char* command);
  void runOrThrow(const char* command);

  ConnectionHandle connection_;
  FileRole role_;
  Opening opening_;
  int changesBefore_ = 0;                     // rows that this connection had changed when its command began
  std::optional<FileWatch> watch_;            // of a file
  std::optional<Checkpointer> checkpointer_;  // of a connection that writes a file
  Translator translator_;
  SqliteCatalogue catalogue_;
  ParameterBinder binder_;
  std::unordered_map<std::string, std::unique_ptr<Statement>, TextHash, std::equal_to<>> statements_;
  std::array<Place, 256> places_;
  std::unordered_map<std::string, StatementHandle, TextHash, std::equal_to<>> commands_;
  std::int64_t schemaVersion_ = 0;
  int depth_ = 0;
  bool lost_ = false;     // a savepoint could not be taken back; everything fails until its guards are gone
  bool defined_ = false;  // this transaction changed the schema
};

/// Commits of this connection do not wait for the disk any more: while a file is filled that is thrown away when that
/// fails.
void doNotWaitForDisk(Database& database);

/// The SqliteDatabase behind a Database; throws DbError(Unsupported) for another engine.
SqliteDatabase& asSqlite(Database& database);

/// A new connection with the settings of every connection of this program. `file` is a path or ":memory:".
ConnectionHandle openConnection(const FileRole& role, const SqliteOptions& options, Opening* told = nullptr);
/// The settings and the functions of the dialect; part of openConnection.
void prepareConnection(sqlite3* connection, const FileRole& role, int busyMilliseconds);
/// Throws the failure to open when the content is not an account database, or its schema cannot be read.
void requireAccountSet(sqlite3* connection, const FileRole& role);

/// Gives a database another number by chance: it is the state of no other one. False on a failure.
bool giveNewNumber(sqlite3* connection);
/// What is said by whoever reads a file that was moved away or replaced; the program goes on.
DbError fileIsGone(const QString& file);

/// The mark of an account database in the header of its file: "JXC1".
inline constexpr int applicationId = 0x4a584331;

}  // namespace jxc::sqlite
