#include "engine/sheet_export.h"
#include "engine/transaction.h"
#include "plan_book.h"

#include <gtest/gtest.h>
#include <thread>

namespace jxc::plan_execution_test {

using jet::ColumnType;
using jet::Plan;
using Kind = DbError::Kind;
using test::failureOf;
using test::number;

jet::Parameter typed(int source, ColumnType type, int width = 0, std::string label = {}) {
  return {.source = source, .target = type, .typed = true, .width = width, .label = std::move(label)};
}

struct PlanExecution : testing::Test {
  std::shared_ptr<test::PlanBook> book = std::make_shared<test::PlanBook>();
  std::unique_ptr<Database> db = test::openBook(book);

  void SetUp() override {
    db->execute(
        "create table goods (id integer primary key, sn nvarchar(8) unique, name nvarchar(4), qty numeric(28,6), "
        "pl int, dis bit)");
    Plan insert;
    insert.kind = Plan::Kind::Change;
    insert.parameterCount = 5;
    insert.steps = {{"insert into goods (sn,name,qty,pl,dis) values (?,?,?,?,?)",
                     {typed(0, ColumnType::Text, 8, "goods.sn"), typed(1, ColumnType::Text, 4, "goods.name"),
                      typed(2, ColumnType::Numeric, 0, "goods.qty"), typed(3, ColumnType::Integer, 0, "goods.pl"),
                      typed(4, ColumnType::Bit, 0, "goods.dis")}}};
    book->plans["add"] = insert;
  }
  void add(const Value& sn, const Value& name, const Value& qty = 0, const Value& pl = 0, const Value& dis = false) {
    const Value values[] = {sn, name, qty, pl, dis};
    EXPECT_EQ(db->execute("add", values), 1);
  }
};

TEST_F(PlanExecution, AStatementIsTranslatedOnce) {
  add("1001", "镜架");
  const int before = book->translations;
  for (int i = 0; i < 20; ++i)
    add("2" + QString::number(i), "镜片");
  EXPECT_EQ(book->translations, before);
  const std::string composed = std::string("select count(*) from goods where sn") + "<?";
  EXPECT_EQ(db->lookup(SqlText(composed), std::array{Value("2")}).integer(), 1);
  EXPECT_EQ(db->lookup("select count(*) from goods where sn<?", std::array{Value("3")}).integer(), 21);
  EXPECT_EQ(book->translations, before + 1);
  EXPECT_TRUE(db->lookup("select sn from goods where id<0").isNull());
  EXPECT_EQ(failureOf([&] { db->execute("select 1"); }).kind(), Kind::Syntax);
  EXPECT_EQ(failureOf([&] { db->select("add"); }).kind(), Kind::Syntax);
}

TEST_F(PlanExecution, AFailingStatementLeavesNothing) {
  add("1001", "镜架", 1);
  add("1002", "镜片", 2);
  Plan plan;
  plan.kind = Plan::Kind::Change;
  plan.steps = {{"update goods set qty=qty+10", {}}, {"insert into goods (sn) values ('1001')", {}}};
  book->plans["two steps"] = plan;
  const DbError error = failureOf([&] { db->execute("two steps"); });
  EXPECT_EQ(error.kind(), Kind::Constraint);
  EXPECT_TRUE(error.message().contains(QStringLiteral("goods.sn")));
  EXPECT_EQ(error.statement(), "two steps");
  EXPECT_EQ(number(*db, "select sum(qty) from goods"), 3);
  {
    Transaction transaction(*db);
    db->execute("update goods set qty=qty+1");
    failureOf([&] { db->execute("two steps"); });
    transaction.commit();
  }
  EXPECT_EQ(number(*db, "select sum(qty) from goods"), 5);
  EXPECT_FALSE(db->inTransaction());
}

// An order line is written off by its stock line; two lines of one goods must both count, and the update must not see
// rows that its own steps made to fit.
TEST_F(PlanExecution, AJoinedUpdateAppliesEveryRowInTurn) {
  add("1001", "镜架", 10);
  add("1002", "镜片", 20);
  db->execute("create table line (id integer primary key, sn nvarchar(8), n numeric(28,6))");
  db->execute("insert into line (sn,n) values ('1001',3),('1001',4),('1002',5)");
  Plan plan;
  plan.kind = Plan::Kind::JoinedUpdate;
  plan.parameterCount = 1;
  jet::Parameter id{.source = 0, .fromDrivingRow = true}, n{.source = 1, .fromDrivingRow = true};
  plan.steps = {{"select g.id,l.n from goods g join line l on l.sn=g.sn where g.qty>? order by l.id", {{.source = 0}}},
                {"update goods set qty=qty-? where id=?", {n, id}}};
  book->plans["write off"] = plan;
  EXPECT_EQ(db->execute("write off", std::array{Value(5)}), 3);
  EXPECT_EQ(number(*db, "select qty from goods where sn='1001'"), 3);
  EXPECT_EQ(number(*db, "select qty from goods where sn='1002'"), 15);

  // A row in the middle that fails takes the rows before it back. (What is stored in a file does not run.)
  sqlite3_db_config(sqlite::asSqlite(*db).native(), SQLITE_DBCONFIG_ENABLE_TRIGGER, 1, nullptr);
  db->execute(
      "create trigger refuse before update on goods when new.qty<0 begin select raise(abort,'below zero'); end");
  failureOf([&] { db->execute("write off", std::array{Value(0)}); });
  EXPECT_EQ(number(*db, "select qty from goods where sn='1001'"), 3);
}

TEST_F(PlanExecution, TransactionsNest) {
  {
    Transaction outer(*db);
    add("1001", "镜架");
    {
      Transaction inner(*db);
      add("1002", "镜片");
    }
    EXPECT_TRUE(db->inTransaction());
    {
      Transaction inner(*db);
      add("1003", "镜布");
      inner.commit();
    }
    outer.commit();
  }
  EXPECT_EQ(number(*db, "select sum(sn) from goods"), 2004);
  {
    Transaction outer(*db);
    Transaction inner(*db);
    add("1004", "镜盒");
    inner.commit();
  }
  EXPECT_EQ(number(*db, "select count(*) from goods"), 2);
  EXPECT_FALSE(db->inTransaction());
  EXPECT_THROW(db->commit(), DbError);
}

TEST_F(PlanExecution, DefinitionsDropWhatWasKnownAndGoWithTheirTransaction) {
  EXPECT_EQ(db->select("select * from goods").columnCount(), 6);
  db->execute("alter table goods add column note nvarchar(200)");
  EXPECT_EQ(db->select("select * from goods").columnIndex("NOTE"), 6);
  {
    Transaction transaction(*db);
    db->execute("create table temp1 (id integer primary key)");
    db->execute("insert into temp1 values (null)");
    EXPECT_EQ(number(*db, "select count(*) from temp1"), 1);
  }
  EXPECT_EQ(failureOf([&] { db->select("select count(*) from temp1"); }).kind(), Kind::UnknownName);
  Plan plan;
  plan.kind = Plan::Kind::Definition;
  plan.steps = {{"create table next (id integer primary key, sn nvarchar(8))", {}},
                {"insert into next select id,sn from goods", {}},
                {"create table goods (id integer)", {}}};
  book->plans["remake"] = plan;
  failureOf([&] { db->execute("remake"); });
  EXPECT_EQ(failureOf([&] { db->select("select * from next"); }).kind(), Kind::UnknownName);
  EXPECT_EQ(db->select("select * from goods").columnCount(), 7);
}

TEST_F(PlanExecution, AFullDiskTakesTheCommandBackAndTheProgramGoesOn) {
  db->execute("create table pictures (id integer primary key, content text)");
  sqlite3_exec(sqlite::asSqlite(*db).native(), "pragma max_page_count=40", nullptr, nullptr, nullptr);
  const QString large(60000, u'x');
  {
    Transaction outer(*db);
    add("1001", "镜架");
    const DbError error = failureOf([&] {
      for (int i = 0; i < 100; ++i)
        db->execute("insert into pictures (content) values (?)", std::array{Value(large)});
    });
    EXPECT_EQ(error.kind(), Kind::Full);
    EXPECT_FALSE(error.message().contains(QLatin1String("jxc.mdb")));
    EXPECT_TRUE(error.message().contains(QStringLiteral("磁盘")));
  }
  EXPECT_EQ(number(*db, "select count(*) from goods"), 0);
  add("1002", "镜片");
  EXPECT_EQ(number(*db, "select count(*) from goods"), 1);
}

TEST_F(PlanExecution, NothingIsWrittenBehindATransactionThatTheDatabaseTookBack) {
  {
    Transaction outer(*db);
    add("1001", "镜架");
    sqlite3_exec(sqlite::asSqlite(*db).native(), "rollback", nullptr, nullptr,
                 nullptr);  // as SQLite does after a failure of the disk
    EXPECT_THROW(db->execute("add", std::array<Value, 5>{"1002", "镜片", 1, 1, 1}), DbError);
    EXPECT_THROW(db->lookup("select count(*) from goods"), DbError);
    EXPECT_THROW(Transaction inner(*db), DbError);
    EXPECT_THROW(outer.commit(), DbError);
  }
  EXPECT_EQ(number(*db, "select count(*) from goods"), 0);
  add("1003", "镜布");
}

TEST_F(PlanExecution, ARunningSelectStopsWhenAsked) {
  std::thread stopper([&] {
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    db->interrupt();
  });
  const DbError error = failureOf([&] {
    db->select(
        "select count(*) from (with recursive n(i) as (select 1 union all select i+1 from n where i<2000000000) "
        "select i from n)");
  });
  stopper.join();
  EXPECT_EQ(error.kind(), Kind::Other);
  EXPECT_EQ(number(*db, "select 1"), 1);
}

TEST_F(PlanExecution, RowsForASheetGoToTheStandIn) {
  add("1001", "镜架");
  Plan plan;
  plan.kind = Plan::Kind::SheetExport;
  plan.steps = {{"select sn,name from goods", {}}};
  plan.columns = {{"商品编号"}, {"商品名称"}};
  plan.sheet = "Sheet1";
  plan.file = "goods.xls";
  book->plans["export"] = plan;
  EXPECT_EQ(failureOf([&] { db->execute("export"); }).kind(), Kind::Unsupported);
  for (int i = 0; i < rowsOfPiece; ++i)
    add(QString::number(2001 + i), "镜片");
  QString told;
  int rows = 0;
  SheetExporter exporter;
  exporter.add = [&](const RowPieces& pieces, const QString& sheet, const QString& file) {
    for (RowSet piece = pieces(); !piece.isEmpty(); piece = pieces()) {
      told += sheet + file + piece.front().text("商品编号");
      rows += piece.rowCount();
    }
  };
  exporter.begin = [](const QString&) { return nullptr; };
  setSheetExporter(exporter);
  EXPECT_EQ(db->execute("export"), rowsOfPiece + 1);
  setSheetExporter({});
  EXPECT_EQ(rows, rowsOfPiece + 1);
  EXPECT_EQ(told, QStringLiteral("Sheet1goods.xls1001Sheet1goods.xls3000"));
}

}  // namespace jxc::plan_execution_test
