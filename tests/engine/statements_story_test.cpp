#include "engine/row_walk.h"
#include "engine/snapshot.h"
#include "engine/transaction.h"
#include "plan_book.h"
#include "server/test_engine.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace jxc::statements_story_test {

using Kind = DbError::Kind;
using test::failureOf;
using test::number;

// A small shop in the words of the dialect: from the definition of its tables to the figures that come back.
struct StatementsStory : testing::Test {
  std::unique_ptr<Database> db = test::openEmpty();

  void SetUp() override {
    db->execute(
        "create table [jxc_goods] ([id] Counter, g_sn varchar (8) null, g_name nvarchar (6) null, "
        "g_pjjj numeric(28,6) null, g_jy bit null, g_note text null, g_pl int null, "
        "Constraint StatePrimary Primary key ([id]))");
    addGoods("1001", "镜架", 99.9);
    addGoods("1002", "镜片", 12.5);
  }
  void addGoods(const char* sn, const char* name, double price) {
    db->execute("insert into jxc_goods (g_sn,g_name,g_pjjj,g_jy,g_pl) values (?,?,?,0,0)",
                std::array{Value(sn), Value(name), Value(price)});
  }
};

TEST_F(StatementsStory, RefusalsNameWhatIsWrong) {
  DbError error = failureOf([&] { addGoods("1003", "渐进多焦点镜片", 1); });
  EXPECT_EQ(error.kind(), Kind::TooWide);
  EXPECT_TRUE(error.message().contains(QStringLiteral("jxc_goods.g_name"))) << error.what();
  // The same for a text that only the database sees: copied from one column to a narrower one.
  db->execute("update jxc_goods set g_note='一段很长很长的说明文字'");
  error = failureOf([&] { db->execute("update jxc_goods set g_name=g_note"); });
  EXPECT_EQ(error.kind(), Kind::TooWide);
  EXPECT_TRUE(error.message().contains(QStringLiteral("jxc_goods.g_name 的内容太长：最多 6 个字符"))) << error.what();
  EXPECT_EQ(failureOf([&] { db->select("select g_nothing from jxc_goods"); }).kind(), Kind::UnknownName);
  EXPECT_EQ(failureOf([&] { db->select("select * from jxc_nothing"); }).kind(), Kind::UnknownName);
  EXPECT_EQ(failureOf([&] { db->select("selekt * from jxc_goods"); }).kind(), Kind::Syntax);
  EXPECT_EQ(failureOf([&] { db->check("update jxc_goods set g_nothing=1"); }).kind(), Kind::UnknownName);
  EXPECT_EQ(failureOf([&] { db->select("select g_pjjj/g_pl as q from jxc_goods"); }).kind(), Kind::Arithmetic);
  db->check("update jxc_goods set g_pjjj=0");
  EXPECT_EQ(number(*db, "select sum(g_pjjj) from jxc_goods"), 112.4);
  EXPECT_EQ(db->lookup("select g_name from jxc_goods where g_sn='1001'").text(), QStringLiteral("镜架"));
}

TEST_F(StatementsStory, NumbersHaveOneRangeOnBothEngines) {
  addGoods("1003", "大", 9.99e21);
  EXPECT_EQ(number(*db, "select g_pjjj from jxc_goods where g_sn='1003'"), 9.99e21);
  for (const double beyond : {1e22, -1e22, 1e300}) {
    const DbError error = failureOf([&] { addGoods("1004", "大", beyond); });
    EXPECT_EQ(error.kind(), Kind::Arithmetic);
    EXPECT_TRUE(error.message().contains(QStringLiteral("超出范围"))) << error.what();
  }
  EXPECT_EQ(failureOf([&] { db->execute("update jxc_goods set g_pjjj=g_pjjj*100"); }).kind(), Kind::Arithmetic);
  EXPECT_EQ(number(*db, "select g_pjjj from jxc_goods where g_sn='1001'"), 99.9) << "and none of its rows changed";
}

TEST_F(StatementsStory, RowsThatAreWalkedAreThoseOfASelectInItsOrder) {
  addGoods("1003", "布", 3);
  addGoods("1000", "盒", 0);
  db->execute("update jxc_goods set g_note='7.5x',g_pl=12 where g_sn='1002'");
  db->execute("update jxc_goods set g_pjjj=null where g_sn='1003'");
  const std::array from{Value(2)};
  db->execute("create index walked on jxc_goods (g_sn)");
  const std::string cells = "select a.id,a.g_sn,a.g_pjjj,a.g_pl,a.g_note from jxc_goods a where a.id>=? order by ";
  // Along the key, sorted behind the reading, and chosen or joined behind what the index tells.
  for (const std::string& sql :
       {cells + "a.id", cells + "a.g_sn", cells + "a.g_pjjj desc,a.id",
        std::string("select g_sn from jxc_goods where g_name<>'镜架' and len(g_sn)>? order by g_sn"),
        std::string(
            "select a.g_sn from jxc_goods a inner join jxc_goods b on b.id<=a.id where b.id>? order by a.id")}) {
    const RowSet due = db->select(sql, from);
    ASSERT_EQ(due.rowCount(), 3);
    int row = 0;
    walkRows(*db, sql, from, [&](const WalkedRow& walked) {
      for (int column = 0; column < due.columnCount(); ++column) {
        EXPECT_EQ(walked.isNull(column), due.isNull(row, column)) << sql;
        EXPECT_EQ(walked.number(column), due.number(row, column)) << sql;
        EXPECT_EQ(walked.integer(column), due.integer(row, column)) << sql;
        EXPECT_EQ(walked.utf8(column), due.utf8(row, column)) << sql;
        EXPECT_EQ(walked.text(column), due.text(row, column)) << sql;
      }
      ++row;
    });
    EXPECT_EQ(row, 3) << sql;
    int taken = 0;
    EXPECT_THROW(walkRows(*db, sql, from,
                          [&](const WalkedRow&) {
                            if (++taken == 2) throw std::out_of_range(sql);
                          }),
                 std::out_of_range);
    EXPECT_EQ(taken, 2) << sql;
  }
  EXPECT_EQ(failureOf([&] { walkRows(*db, "select g_nothing from jxc_goods", {}, {}); }).kind(), Kind::UnknownName);
}

TEST_F(StatementsStory, TablesChangeAndComeBackWithASnapshot) {
  db->execute("alter table jxc_goods add g_gg nvarchar (32) null");
  db->execute("update jxc_goods set g_gg='1.56'");
  EXPECT_EQ(db->lookup("select g_gg from jxc_goods where g_sn='1001'").text(), QStringLiteral("1.56"));
  if (test::onServer()) return;  // a server's account set is copied otherwise
  const auto fresh = openSqliteSnapshot(snapshot(*db));
  db->execute("drop table jxc_goods");
  EXPECT_EQ(failureOf([&] { db->select("select * from jxc_goods"); }).kind(), Kind::UnknownName);
  EXPECT_EQ(number(*fresh, "select count(*) from jxc_goods where g_gg='1.56'"), 2);
  EXPECT_EQ(fresh->execute("insert into jxc_goods (g_sn) values ('1003')"), 1);
  EXPECT_EQ(fresh->lastCounter(), 3);
}

}  // namespace jxc::statements_story_test
