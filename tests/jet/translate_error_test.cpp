// What cannot be said is refused when it is translated, with its kind and its place in the text.
#include "jet/plan.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace jxc::jet::translate_error_test {

/// A goods table and a stock table; a caret in a statement marks where the error must be found.
class SmallCatalogue : public Catalogue {
 public:
  SmallCatalogue() {
    goods_.name = "goods";
    stock_.name = "stock";
    for (const auto& [name, type] : std::vector<std::pair<const char*, const char*>>{
             {"id", "Counter"}, {"g_sn", "varchar (8)"}, {"g_kc", "numeric(28,6)"}, {"g_jy", "bit"}}) {
      goods_.columns.push_back(columnFromDeclaration(name, type));
    }
    for (const auto& [name, type] : std::vector<std::pair<const char*, const char*>>{
             {"id", "Counter"}, {"g_sn", "varchar (8)"}, {"kc_sl", "numeric(28,6)"}}) {
      stock_.columns.push_back(columnFromDeclaration(name, type));
    }
  }
  const Table* table(std::string_view name) const override {
    if (name == "goods" || name == "GOODS") return &goods_;
    return name == "stock" ? &stock_ : nullptr;
  }

 private:
  Table goods_, stock_;
};

struct Refused {
  TranslateError::Kind kind;
  int position;
};

Refused refusal(std::string statement) {
  try {
    translate(statement, SmallCatalogue(), Engine::Sqlite);
  } catch (const TranslateError& error) {
    return {error.kind, error.position};
  }
  ADD_FAILURE() << "not refused: " << statement;
  return {TranslateError::Kind::Unsupported, -1};
}

void expectRefused(TranslateError::Kind kind, std::vector<std::string> statements) {
  for (std::string statement : statements) {
    const std::size_t caret = statement.find('^');
    ASSERT_NE(caret, std::string::npos) << statement;
    statement.erase(caret, 1);
    const Refused found = refusal(statement);
    EXPECT_EQ(found.kind, kind) << statement;
    EXPECT_EQ(found.position, static_cast<int>(caret)) << statement;
  }
}

TEST(TranslateErrorTest, UnknownNames) {
  expectRefused(TranslateError::Kind::UnknownName,
                {"select * from ^kein",
                 "select ^nichts from goods",
                 "select a.^nichts from goods a",
                 "select ^b.g_sn from goods a",
                 "select ^b.* from goods a",
                 "select ^soundex(g_sn) from goods",
                 "insert into ^kein (a) values (1)",
                 "insert into goods (g_sn,^b) values (1,2)",
                 "update goods set ^b=1",
                 "update goods set g_kc=^b",
                 "delete from goods where ^b=1",
                 "select ^g_sn from goods a,stock b",
                 "select a.g_sn from goods a,stock b where ^g_sn='1'",
                 "update goods a,stock b set ^g_sn='1'",
                 "select * from goods order by ^b",
                 "select g_sn from goods union select g_sn from stock order by ^g_kc",
                 "drop table ^kein",
                 "alter table goods alter column ^b int",
                 "create index i on goods (^b)",
                 "select ^goods.g_sn from goods a",  // an alias takes the table's own name away
                 "select x.g_sn from (select g_sn from goods) x where x.^g_kc=1",
                 "select * from (select a.g_sn,b.g_sn from goods a,stock b) c where c.^g_sn='1'"});
}

TEST(TranslateErrorTest, Syntax) {
  expectRefused(TranslateError::Kind::Syntax, {"^",
                                               "^selekt 1",
                                               "select g_sn from goods ^1",
                                               "select g_sn from goods; ^select 1",
                                               "select ^from goods",
                                               "select g_sn ^fro",
                                               "select g_sn from goods where g_sn=^'1",
                                               "select (1^",
                                               "select 1 ^) from goods",
                                               "select ^left(g_sn) from goods",
                                               "select g_sn from goods where ^@=1",
                                               "select ^12ab from goods",
                                               "insert into goods (g_sn) ^",
                                               "insert into ^goods (g_sn) values (1,2)",
                                               "update goods ^where g_sn=1",
                                               "select top ^g_sn from goods",
                                               "select top ^1.5 g_sn from goods",
                                               "select g_sn from goods g_1 ^g_2",
                                               "select g_sn from goods where ^sum(g_kc)>1",
                                               "select sum(^max(g_kc)) from goods",
                                               "select ^g_sn,sum(g_kc) from goods",
                                               "select g_sn from goods order by ^3",
                                               "select 1 from goods union select ^1,2 from goods",
                                               "select 1 from goods a,^stock a",
                                               "create table neu (a ^blob)",
                                               "create table neu (a int,^a int)",
                                               "select g_sn ^a from goods",
                                               "insert into goods (g_sn,^g_sn) values (1,2)",
                                               "update goods set g_kc=1,^g_kc=2",
                                               "delete from goods a,^stock b where a.g_sn=b.g_sn",
                                               "select g_sn from goods where g_sn in (^)",
                                               "select ^b as a,a as b from goods",
                                               "without g_sn select ^g_sn from goods",
                                               "without ^select g_sn from goods",
                                               "without g_sn ^update goods set g_kc=1"});
}

TEST(TranslateErrorTest, TypesAndWhatThisEngineCannotSay) {
  expectRefused(TranslateError::Kind::TypeMismatch,
                {"select g_kc*^'viel' from goods", "update goods set g_kc=^'viel'",
                 "select * from goods where g_kc=^''", "select sum(^'a') from goods"});
  expectRefused(
      TranslateError::Kind::Unsupported,
      {"select * into ^kopie from goods", "select g_sn from goods union select g_sn from stock order by g_sn^+1",
       "select datediff(^'jahr',g_sn,g_sn) from goods", "create table ^goods (a int)",
       "update goods a,stock b set a.g_kc=1,b.kc_sl=1+^a.g_kc where a.id=b.id", "alter table goods add ^g_kc int",
       "alter table goods alter column id ^int", "update (select g_sn from goods) a set ^a.g_sn='1'"});
}

TEST(TranslateErrorTest, EndlessStatementsAreRefusedNotCrashedOn) {
  std::string conditions = "select g_sn from goods where g_kc=0", brackets = "select ";
  for (int i = 0; i < 100000; ++i) {
    conditions += " or g_kc=1";
    brackets += '(';
  }
  EXPECT_EQ(refusal(conditions).kind, TranslateError::Kind::Unsupported);
  EXPECT_EQ(refusal(brackets).kind, TranslateError::Kind::Syntax);
  EXPECT_EQ(refusal("select " + std::string(100000, '-') + "1").kind, TranslateError::Kind::Syntax);
}

TEST(TranslateErrorTest, ColumnTypesAreReadBackAsTheyWereWritten) {
  const auto text = [](const char* declared) {
    const Column column = columnFromDeclaration("a", declared);
    return column.declared + '/' + std::to_string(static_cast<int>(column.type)) + '/' + std::to_string(column.width);
  };
  for (const char* declared :
       {"varchar(8)", "nvarchar (128)", "numeric(28,6)", "int", "INTEGER", "bit", "text", "Counter"}) {
    const Column once = columnFromDeclaration("a", declared);
    EXPECT_EQ(text(declared), text(once.declared.c_str())) << declared;
  }
  EXPECT_EQ(columnFromDeclaration("a", "nvarchar (128)").width, 128);
  EXPECT_THROW(columnFromDeclaration("a", "varchar(x)"), TranslateError);
}

}  // namespace jxc::jet::translate_error_test
