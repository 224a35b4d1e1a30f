// PostgreSQL 连接: statements translated once, prepared once a connection, sent in as few round trips as possible.
#pragma once

#include "engine/bulk.h"
#include "engine/postgres/arguments.h"
#include "engine/postgres/link.h"
#include "engine/postgres/postgres_catalogue.h"
#include "engine/posting.h"
#include "engine/server.h"
#include "engine/text_hash.h"
#include "jet/plan.h"

#include <chrono>
#include <memory>
#include <mutex>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace jxc::postgres {

/// A transaction takes the account set's lock when it begins, so that one command writes at a time, as on a file: each
/// sees what the one before it left, numbers are unique, and no two ever wait for each other. The lock is the server's
/// own and goes with the transaction, also with that of a station that died.
///
/// `begin` and savepoints travel with the first statement behind them. A statement that fails spoils the innermost
/// level: it can only be taken back. Whoever wants to go on after a failure opens a level of its own.
class PostgresDatabase final : public Database, public Bulk, public Posting {
 public:
  PostgresDatabase(std::string address, const PostgresOptions& options);
  ~PostgresDatabase() override;

  RowSet select(const SqlText& sql, std::span<const Value> values) override;
  Value lookup(const SqlText& sql, std::span<const Value> values) override;
  std::int64_t execute(const SqlText& sql, std::span<const Value> values) override;
  void post(const SqlText& sql, std::span<const Value> values) override;
  std::shared_ptr<const Outcome> sendAhead(const SqlText& sql, std::span<const Value> values) override;
  void collect() override;
  std::int64_t roundTrips() const override { return trips_; }
  Posting* posting() override { return this; }
  void check(const SqlText& sql) override;
  std::int64_t lastCounter() const override;

  OpenReader readerOpener() const override;
  void backupTo(const QString& file, const std::function<bool(int percent)>& progress) override;
  StorageCheck checkStorage(const std::function<bool(int percent)>& progress) override;
  void interrupt() override;

  void begin() override;
  void commit() override;
  void rollback() override;
  bool inTransaction() const override { return depth_ > 0; }

  std::vector<StoredTable> storedTables() override;
  std::vector<StoredObject> storedObjects() override;
  void append(const jet::Table& table, const RowSet& rows) override;
  void setCounter(const jet::Table& table, std::int64_t last) override;
  void analyze() override;
  void expectPauses() override;
  void forgetReplaced(const char* table) override;
  bool giveRoomBack(const std::function<bool()>& goOn) override;
  void overwriteDeleted(bool) override {}  // a server never does

  /// The owner of the tables; empty when this connection may do what he may.
  std::string ownerToAsk();
  void letRowsStay(std::string_view table);
  const std::string& address() const { return address_; }
  std::string user() const { return options_.user.toStdString(); }
  bool isTrial() const { return options_.trial; }

 private:
  struct Step {
    const jet::Step* plan = nullptr;
    std::string name;
    bool prepared = false;
  };
  struct Statement {
    std::string text;
    jet::Plan plan;
    std::vector<Step> steps;
    std::shared_ptr<const ColumnNames> names;
  };
  /// A command on its way, and what its result is for.
  struct Sent {
    enum class What { Control, Commit, Prepare, Wanted, Posted, Ahead };
    What what;
    Step* step = nullptr;
    std::string text;  // its own: savepoints are put together on the way, and statements may be forgotten
    std::shared_ptr<Outcome> outcome;  // of what was sent ahead
    std::shared_ptr<const ColumnNames> names;
  };

  /// A select that was sent ahead outside a transaction.
  struct Question {
    std::string text;
    std::vector<Value> values;
    std::shared_ptr<Outcome> outcome;
  };

  // statements
  Statement& statementFor(std::string_view text);
  std::unique_ptr<Statement> translate(std::string_view text);
  void forgetStatements();
  template <class Run>
  auto withFreshStatement(std::string_view text, Run run);

  // sending
  Link& link();
  void connect();
  void changeLink(std::unique_ptr<Link> link);
  void openLevels();
  void tellPatience();
  void control(const char* sql, Sent::What what = Sent::What::Control);
  void queue(Statement& statement, Step& step, std::span<const Value> values, Sent::What what,
             const RowSet* driving = nullptr, int row = 0);
  std::vector<ResultHandle> exchange();
  void askFor(const char* sql, const std::vector<std::string>& values, Sent::What what);
  RowSet ask(const char* sql, const std::vector<std::string>& values);
  ResultHandle roundTrip(Statement& statement, Step& step, std::span<const Value> values);
  [[noreturn]] void loseLink(std::string_view text, const LinkLost& how);
  void requireLive(std::string_view text) const;

  // reading and writing
  void askQuestions();
  ResultHandle readResult(std::string_view text, std::span<const Value> values,
                          std::shared_ptr<const ColumnNames>* names);
  RowSet rowsOf(const PGresult* result, std::shared_ptr<const ColumnNames> names) const;
  std::int64_t runStatement(Statement& statement, std::span<const Value> values);
  std::int64_t runJoined(Statement& statement, std::span<const Value> values);
  void define(const jet::Plan& plan, std::span<const Value> values, std::string_view text);
  std::int64_t exportSheet(Statement& statement, std::span<const Value> values);
  std::int64_t changedBy(const PGresult* result);
  void finish();
  bool settle();
  int level() const { return depth_ + (options_.trial ? 1 : 0); }

  std::string address_;
  PostgresOptions options_;
  std::unique_ptr<Link> link_;
  std::mutex changingLink_;  // an interruption comes from another thread
  PostgresCatalogue catalogue_;
  Arguments arguments_;
  std::unordered_map<std::string, std::unique_ptr<Statement>, TextHash, std::equal_to<>> statements_;
  std::vector<Sent> sent_;
  std::vector<Question> questions_;
  std::int64_t trips_ = 0;
  std::string station_;                  // this connection's name for the server, however often it is made again
  std::int64_t command_ = 0;             // the number of its last command
  std::vector<std::string> savepoints_;  // of the inner levels that the server knows
  std::string lastState_;                // of the last failure
  std::uint64_t nextName_ = 0;
  std::int64_t lastCounter_ = 0;
  int depth_ = 0;         // levels that the caller opened
  int opened_ = 0;        // those that the server knows
  bool spoiled_ = false;  // a statement failed: the innermost level can only be taken back
  bool lost_ = false;     // the connection broke inside a transaction
  bool defined_ = false;  // this transaction changed the schema
  bool deallocate_ = false;
  std::chrono::seconds toldPatience_{0};  // that the server knows; 0: not told
};

}  // namespace jxc::postgres
