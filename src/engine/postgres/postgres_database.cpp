#include "engine/postgres/postgres_database.h"

#include "engine/number_text.h"
#include "engine/postgres/failure.h"
#include "engine/sheet_export.h"
#include "engine/transaction.h"

#include <QUuid>

#include <charconv>
#include <cstdlib>
#include <cstring>

namespace jxc::postgres {
namespace postgres_database_detail {

using Kind = DbError::Kind;

constexpr std::size_t statementLimit = 2000;
constexpr std::size_t commandsAtOnce = 256;  // on their way before results are read

// Types of the server whose texts are numbers.
constexpr Oid boolType = 16, int8Type = 20, int2Type = 21, int4Type = 23, float4Type = 700, float8Type = 701,
              numericType = 1700;

double doubleOf(const char* text, int length) {
  double number = 0;
  std::from_chars(text, text + length, number);
  return number;
}

std::int64_t integerOf(const char* text, int length) {
  std::int64_t number = 0;
  std::from_chars(text, text + length, number);
  return number;
}

void addCell(RowSet& rows, const PGresult* result, int row, int column) {
  if (PQgetisnull(result, row, column) != 0) return rows.addNull();
  const char* text = PQgetvalue(result, row, column);
  const int length = PQgetlength(result, row, column);
  switch (PQftype(result, column)) {
    case int8Type:
    case int4Type:
    case int2Type:
      return rows.addInteger(integerOf(text, length));
    case numericType:
    case float8Type:
    case float4Type:
      return rows.addReal(doubleOf(text, length));
    case boolType:
      return rows.addInteger(*text == 't');
    default:
      return rows.addText({text, static_cast<std::size_t>(length)});
  }
}

bool isGood(const PGresult* result) {
  const ExecStatusType status = PQresultStatus(result);
  return status == PGRES_COMMAND_OK || status == PGRES_TUPLES_OK;
}

}  // namespace postgres_database_detail

PostgresDatabase::PostgresDatabase(std::string address, const PostgresOptions& options)
    : address_(std::move(address)),
      options_(options),
      catalogue_([this](const char* sql, const std::string* value) {
        return ask(sql, value ? std::vector{*value} : std::vector<std::string>{});
      }),
      station_(QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString()) {
  connect();
}

PostgresDatabase::~PostgresDatabase() = default;

// ---- statements by their text ----

PostgresDatabase::Statement& PostgresDatabase::statementFor(std::string_view text) {
  if (const auto found = statements_.find(text); found != statements_.end()) return *found->second;
  if (statements_.size() >= postgres_database_detail::statementLimit && sent_.empty()) forgetStatements();
  auto statement = translate(text);
  const std::string& key = statement->text;
  return *statements_.emplace(key, std::move(statement)).first->second;
}

std::unique_ptr<PostgresDatabase::Statement> PostgresDatabase::translate(std::string_view text) {
  auto statement = std::make_unique<Statement>();
  statement->text = text;
  for (bool again = false;; again = true) {
    try {
      statement->plan = jet::translate(text, catalogue_, jet::Engine::Postgres);
      break;
    } catch (const jet::TranslateError& error) {
      // The name may have come with a schema that another station has changed meanwhile.
      if (!again && depth_ == 0 && !options_.trial && error.kind == jet::TranslateError::Kind::UnknownName) {
        catalogue_.forget();
        if (sent_.empty()) forgetStatements();
        continue;
      }
      throw untranslatable(error, text);
    }
  }
  for (const jet::Step& step : statement->plan.steps)
    statement->steps.push_back({&step, "s" + std::to_string(++nextName_), false});
  std::vector<std::string> names;
  for (const jet::ResultColumn& column : statement->plan.columns)
    names.push_back(column.name);
  statement->names = std::make_shared<ColumnNames>(std::move(names));
  return statement;
}

void PostgresDatabase::check(const SqlText& sql) {
  statementFor(sql.view());
}

void PostgresDatabase::forgetStatements() {
  statements_.clear();
  deallocate_ = true;
}

/// Once more with a statement made anew when another station changed the tables under the old one.
template <class Run>
auto PostgresDatabase::withFreshStatement(std::string_view text, Run run) {
  for (bool again = false;; again = true) {
    try {
      return run(statementFor(text));
    } catch (const DbError&) {
      const bool stale = isStale(lastState_);
      lastState_.clear();
      if (!stale) throw;
      if (spoiled_ || again) throw;
      forgetStatements();
      catalogue_.forget();
    }
  }
}

// ---- sending ----

void PostgresDatabase::control(const char* sql, Sent::What what) {
  Link& to = link();
  try {
    to.send(sql);
  } catch (const LinkLost& lost) {
    loseLink(sql, lost);
  }
  sent_.push_back({.what = what, .text = sql});
}

void PostgresDatabase::queue(Statement& statement, Step& step, std::span<const Value> values, Sent::What what,
                             const RowSet* driving, int row) {
  const std::span<const char* const> texts = arguments_.of(step.plan->parameters, values, driving, row);
  openLevels();
  tellPatience();
  if (deallocate_) {
    control("deallocate all");
    deallocate_ = false;
  }
  Link& to = link();
  try {
    if (!step.prepared) {
      to.prepare(step.name, step.plan->sql);
      sent_.push_back({.what = Sent::What::Prepare, .step = &step, .text = statement.text});
      step.prepared = true;
    }
    to.run(step.name, texts);
  } catch (const LinkLost& lost) {
    loseLink(statement.text, lost);
  }
  sent_.push_back({.what = what, .step = &step, .text = statement.text});
}

/// Results of what is wanted, in order. Throws the first failure of anything that was on its way.
std::vector<ResultHandle> PostgresDatabase::exchange() {
  using namespace postgres_database_detail;
  std::vector<ResultHandle> results;
  const std::string text = sent_.empty() ? std::string() : sent_.back().text;
  ++trips_;
  try {
    results = link_->exchange();
  } catch (const LinkLost& lost) {
    loseLink(text, lost);
  }
  const std::vector<Sent> sent = std::exchange(sent_, {});
  std::vector<ResultHandle> wanted;
  const PGresult* failed = nullptr;
  std::string_view failedText;
  for (std::size_t i = 0; i < results.size(); ++i) {
    PGresult* result = results[i].get();
    if (isGood(result)) {
      // A server that has taken a transaction back answers its commit politely.
      if (sent[i].what == Sent::What::Commit && std::string_view(PQcmdStatus(result)) != "COMMIT")
        throw DbError(DbError::Kind::Other, QStringLiteral("本次操作已被数据库撤销，请重新操作。"), "commit");
      if (sent[i].what == Sent::What::Posted) changedBy(result);
      if (Outcome* outcome = sent[i].outcome.get()) {
        if (sent[i].names)
          outcome->rows = rowsOf(result, sent[i].names);
        else
          outcome->changed = changedBy(result);
        outcome->there = true;
      }
      if (sent[i].what == Sent::What::Wanted) wanted.push_back(std::move(results[i]));
      continue;
    }
    if (sent[i].what == Sent::What::Prepare) sent[i].step->prepared = false;
    if (!failed && PQresultStatus(result) == PGRES_FATAL_ERROR) {
      failed = result;
      failedText = sent[i].text;
    }
  }
  if (!failed) return wanted;
  lastState_ = stateOf(failed);
  if (endsConnection(lastState_)) loseLink(failedText, {});
  spoiled_ = opened_ > 0;
  toldPatience_ = {};  // what was told on the way may have been taken back with it
  throw statementFailed(
      failed, failedText,
      [](void* catalogue, std::string_view place) {
        const std::size_t point = place.find('.');
        const jet::Table* table = static_cast<const PostgresCatalogue*>(catalogue)->known(place.substr(0, point));
        const jet::Column* column = table ? table->find(place.substr(point + 1)) : nullptr;
        return column ? column->width : 0;
      },
      &catalogue_);
}

/// Something in the server's own words.
void PostgresDatabase::askFor(const char* sql, const std::vector<std::string>& values, Sent::What what) {
  std::vector<const char*> texts;
  for (const std::string& value : values)
    texts.push_back(value.c_str());
  try {
    link().ask(sql, texts);
  } catch (const LinkLost& lost) {
    loseLink(sql, lost);
  }
  sent_.push_back({.what = what, .text = sql});
}

RowSet PostgresDatabase::ask(const char* sql, const std::vector<std::string>& values) {
  askFor(sql, values, Sent::What::Wanted);
  return rowsOf(exchange().back().get(), nullptr);
}

ResultHandle PostgresDatabase::roundTrip(Statement& statement, Step& step, std::span<const Value> values) {
  queue(statement, step, values, Sent::What::Wanted);
  return std::move(exchange().back());
}

// ---- reading ----

ResultHandle PostgresDatabase::readResult(std::string_view text, std::span<const Value> values,
                                          std::shared_ptr<const ColumnNames>* names) {
  requireLive(text);
  const auto read = [&] {
    return withFreshStatement(text, [&](Statement& statement) {
      if (statement.plan.kind != jet::Plan::Kind::Select) throw misuse(QStringLiteral("这不是查询语句。"), text);
      requireValues(statement.plan, values, text);
      if (names) *names = statement.names;
      return roundTrip(statement, statement.steps.front(), values);
    });
  };
  if (depth_ > 0) return read();
  if (options_.trial) {
    Transaction own(*this);  // what fails must not spoil the rest of the test
    ResultHandle result = read();
    own.commit();
    return result;
  }
  try {
    return read();
  } catch (const ConnectionLost& lost) {
    if (lost.isSilent()) throw;
    return read();  // a select may be asked again
  }
}

RowSet PostgresDatabase::rowsOf(const PGresult* result, std::shared_ptr<const ColumnNames> names) const {
  const int columns = PQnfields(result);
  if (!names || static_cast<int>(names->names().size()) != columns) {
    std::vector<std::string> own;
    for (int i = 0; i < columns; ++i)
      own.emplace_back(PQfname(result, i));
    names = std::make_shared<ColumnNames>(std::move(own));
  }
  RowSet rows(std::move(names));
  for (int row = 0; row < PQntuples(result); ++row)
    for (int column = 0; column < columns; ++column)
      postgres_database_detail::addCell(rows, result, row, column);
  return rows;
}

RowSet PostgresDatabase::select(const SqlText& sql, std::span<const Value> values) {
  std::shared_ptr<const ColumnNames> names;
  const ResultHandle result = readResult(sql.view(), values, &names);
  return rowsOf(result.get(), names);
}

Value PostgresDatabase::lookup(const SqlText& sql, std::span<const Value> values) {
  const ResultHandle result = readResult(sql.view(), values, nullptr);
  if (PQntuples(result.get()) == 0) return {};
  RowSet one({std::string("value")});
  postgres_database_detail::addCell(one, result.get(), 0, 0);
  return one.value(0, 0);
}

// ---- writing ----

std::int64_t PostgresDatabase::execute(const SqlText& sql, std::span<const Value> values) {
  const std::string_view text = sql.view();
  requireLive(text);
  return withFreshStatement(text, [&](Statement& statement) {
    requireValues(statement.plan, values, text);
    if (statement.plan.kind == jet::Plan::Kind::Select)
      throw misuse(QStringLiteral("查询语句不能作为命令执行。"), text);
    if (statement.plan.kind == jet::Plan::Kind::SheetExport) return exportSheet(statement, values);
    if (depth_ > 0) return runStatement(statement, values);
    for (bool again = false;; again = true) {
      bool ending = false;
      try {
        Transaction own(*this);
        const std::int64_t changed = runStatement(statement, values);
        ending = true;
        own.commit();
        return changed;
      } catch (const ConnectionLost& lost) {
        if (again || ending || lost.isSilent())
          throw;  // before its end nothing of it was kept, so it may be said again
      }
    }
  });
}

void PostgresDatabase::post(const SqlText& sql, std::span<const Value> values) {
  const std::string_view text = sql.view();
  requireLive(text);
  Statement* statement = depth_ > 0 ? &statementFor(text) : nullptr;
  if (!statement || statement->plan.kind != jet::Plan::Kind::Change || statement->steps.size() != 1) {
    execute(sql, values);
    return;
  }
  requireValues(statement->plan, values, text);
  queue(*statement, statement->steps.front(), values, Sent::What::Posted);
  if (sent_.size() >= postgres_database_detail::commandsAtOnce) exchange();
}

std::shared_ptr<const Outcome> PostgresDatabase::sendAhead(const SqlText& sql, std::span<const Value> values) {
  const std::string_view text = sql.view();
  requireLive(text);
  auto outcome = std::make_shared<Outcome>();
  Statement& statement = statementFor(text);
  const bool isSelect = statement.plan.kind == jet::Plan::Kind::Select;
  if (depth_ == 0 && isSelect) {
    requireValues(statement.plan, values, text);
    questions_.push_back({std::string(text), {values.begin(), values.end()}, outcome});
    return outcome;
  }
  if (depth_ == 0 || statement.steps.size() != 1 || (!isSelect && statement.plan.kind != jet::Plan::Kind::Change)) {
    if (isSelect)
      outcome->rows = select(sql, values);
    else
      outcome->changed = execute(sql, values);
    outcome->there = true;
    return outcome;
  }
  requireValues(statement.plan, values, text);
  queue(statement, statement.steps.front(), values, Sent::What::Ahead);
  sent_.back().outcome = outcome;
  if (isSelect) sent_.back().names = statement.names;
  if (sent_.size() >= postgres_database_detail::commandsAtOnce) exchange();
  return outcome;
}

void PostgresDatabase::collect() {
  requireLive("collect");
  if (depth_ == 0)
    askQuestions();
  else if (!sent_.empty())
    exchange();
}

/// All in one trip. When one of them fails, each is asked by itself: that mends what can be mended, and tells which.
void PostgresDatabase::askQuestions() {
  std::vector<Question> questions = std::exchange(questions_, {});
  std::erase_if(questions, [](const Question& question) { return question.outcome.use_count() == 1; });
  const auto ask = [&] {
    for (const Question& question : questions) {
      Statement& statement = statementFor(question.text);
      queue(statement, statement.steps.front(), question.values, Sent::What::Ahead);
      sent_.back().outcome = question.outcome;
      sent_.back().names = statement.names;
    }
    exchange();
  };
  if (questions.size() > 1) {
    try {
      if (!options_.trial) return ask();
      Transaction own(*this);
      ask();
      return own.commit();
    } catch (const DbError&) {
    }
  }
  for (const Question& question : questions) {
    question.outcome->rows = select(question.text, question.values);
    question.outcome->there = true;
  }
}

std::int64_t PostgresDatabase::lastCounter() const {
  if (!sent_.empty()) const_cast<PostgresDatabase*>(this)->exchange();
  return lastCounter_;
}

std::int64_t PostgresDatabase::runStatement(Statement& statement, std::span<const Value> values) {
  switch (statement.plan.kind) {
    case jet::Plan::Kind::JoinedUpdate:
      return runJoined(statement, values);
    case jet::Plan::Kind::Definition: {
      const jet::Plan plan = statement.plan;  // copies, because the statements are forgotten on the way
      const std::string text = statement.text;
      define(plan, values, text);
      return 0;
    }
    default:
      break;
  }
  std::int64_t changed = 0;
  for (Step& step : statement.steps)
    changed = changedBy(roundTrip(statement, step, values).get());
  return changed;
}

std::int64_t PostgresDatabase::changedBy(const PGresult* result) {
  if (PQresultStatus(result) == PGRES_TUPLES_OK && PQntuples(result) > 0)  // the number that a new row was given
    lastCounter_ = std::strtoll(PQgetvalue(result, PQntuples(result) - 1, 0), nullptr, 10);
  return std::strtoll(PQcmdTuples(const_cast<PGresult*>(result)), nullptr, 10);
}

/// The joined rows are read whole first; then each is applied in turn, all of them on one way.
std::int64_t PostgresDatabase::runJoined(Statement& statement, std::span<const Value> values) {
  const RowSet driving = rowsOf(roundTrip(statement, statement.steps.front(), values).get(), nullptr);
  std::int64_t changed = 0;
  const auto collect = [&] {
    for (const ResultHandle& result : exchange())
      changed += changedBy(result.get());
  };
  for (int row = 0; row < driving.rowCount(); ++row) {
    for (std::size_t i = 1; i < statement.steps.size(); ++i)
      queue(statement, statement.steps[i], values, Sent::What::Wanted, &driving, row);
    if (sent_.size() >= postgres_database_detail::commandsAtOnce) collect();
  }
  if (!sent_.empty()) collect();
  return changed;
}

void PostgresDatabase::define(const jet::Plan& plan, std::span<const Value>, std::string_view text) {
  openLevels();
  if (!sent_.empty()) exchange();
  defined_ = true;
  forgetStatements();
  catalogue_.forgetSome();
  for (const jet::Step& step : plan.steps) {
    control(step.sql.c_str());
    sent_.back().text = text;
  }
  exchange();
}

/// By a cursor, which lives as long as its transaction: the rows of a whole table are never here together.
std::int64_t PostgresDatabase::exportSheet(Statement& statement, std::span<const Value> values) {
  Transaction own(*this);
  const jet::Plan& plan = statement.plan;
  jet::Step declaring = plan.steps.front();
  declaring.sql = "declare rows_of_sheet no scroll cursor for " + declaring.sql;
  Step step{&declaring, "p" + std::to_string(++nextName_)};
  roundTrip(statement, step, values);
  std::int64_t count = 0;
  const std::string fetch = "fetch forward " + std::to_string(rowsOfPiece) + " from rows_of_sheet";
  const auto next = [&] {
    askFor(fetch.c_str(), {}, Sent::What::Wanted);
    RowSet piece = rowsOf(exchange().back().get(), statement.names);
    count += piece.rowCount();
    return piece;
  };
  const QString file = plan.fileParameter < 0 ? QString::fromStdString(plan.file)
                                              : values[static_cast<std::size_t>(plan.fileParameter)].text();
  exportRows(next, QString::fromStdString(plan.sheet), file);
  control("close rows_of_sheet");
  control(("deallocate " + step.name).c_str());
  exchange();
  own.commit();
  return count;
}

/// Its copy is an account file, which makeVerifiedCopy fetches row by row: there is one way back, whatever a shop works
/// on. Dumps of the server are its administrator's.
void PostgresDatabase::backupTo(const QString& file, const std::function<bool(int percent)>&) {
  throw DbError(DbError::Kind::Other, QStringLiteral("服务器上的帐套不能这样写成文件：") + file);
}

/// The server reads its own pages; whether it would notice one that the disk has changed is all that can be asked.
StorageCheck PostgresDatabase::checkStorage(const std::function<bool(int percent)>&) {
  StorageCheck check;
  if (ask("show data_checksums", {}).text(0, 0) == u"off")
    check.advice << QStringLiteral(
        "服务器没有打开数据校验（data_checksums），磁盘悄悄改坏的数据不会被发现；停止服务器后用 pg_checksums --enable "
        "打开");
  return check;
}

}  // namespace jxc::postgres

namespace jxc {
namespace postgres_database_detail {

/// An address is read by everyone who may read the account file; a password is not for them.
void requireNoPassword(const std::string& address) {
  char* complaint = nullptr;
  PQconninfoOption* const options = PQconninfoParse(address.c_str(), &complaint);
  const std::string failure = complaint ? complaint : "";
  PQfreemem(complaint);
  bool found = false;
  for (const PQconninfoOption* option = options; option && option->keyword; ++option)
    found |= option->val && std::string_view(option->keyword) == "password";
  PQconninfoFree(options);
  if (!options)
    throw DbError(DbError::Kind::File,
                  QStringLiteral("数据库服务器的连接地址有错：") + QString::fromStdString(failure).trimmed());
  if (found)
    throw DbError(DbError::Kind::File,
                  QStringLiteral("连接地址里不能写密码，请写在用户目录的 .pgpass 文件里（权限 0600），格式：\r\n"
                                 "服务器:端口:数据库:用户:密码"));
}

}  // namespace postgres_database_detail

std::unique_ptr<Database> openPostgres(const QString& address, const PostgresOptions& options) {
  postgres_database_detail::requireNoPassword(address.trimmed().toStdString());
  return std::make_unique<postgres::PostgresDatabase>(address.trimmed().toStdString(), options);
}

}  // namespace jxc
