#include "core/statements.h"

#include "harness/account_set_fixture.h"

#include <stdexcept>

namespace jxc::statements_test {

struct Statements : test::AccountSetFixture {};

TEST_F(Statements, TextAndValuesStayTogether) {
  const auto add = [](const char* number, const char* name, int uses) {
    insertRow("jxc_djbz", {{"dj_sn", number}, {"dj_name", name}, {"dj_pl", uses}});
  };
  add("100001", "自提", 1);
  add("100002", "急件?", 2);
  add("100003", "急件", 3);
  const Sql often("select dj_sn,dj_name from jxc_djbz where dj_pl>?", 1);
  Filter filter;
  EXPECT_EQ(Sql(often).andWhere(filter).where(filter), often);
  filter.add("x.dj_sn in (select dj_sn from jxc_djbz where dj_name like ?)", "急%").add("x.dj_name<>'急件?'");
  // Values stand in the order of their marks, whatever the order in which the parts were made.
  const Sql whole = Sql("select x.*,? as mark from (", "m").add(often).add(") x").where(filter).add(" order by dj_sn");
  const RowSet rows = openSelect(whole);
  ASSERT_EQ(rows.rowCount(), 1);
  EXPECT_EQ(rows[0].text("dj_sn") + rows[0].text("mark"), QStringLiteral("100003m"));
  EXPECT_EQ(lookupNumber(Sql("select sum(dj_pl) from jxc_djbz where dj_pl<>?", 2)), 4);
  EXPECT_EQ(lookupValue(Sql(whole)), QStringLiteral("100003"));

  EXPECT_EQ(count(often), 2);
  EXPECT_EQ(count(Sql(often).add(" union all ").add(often)), 4);
  EXPECT_EQ(count({"select dj_pl,count(*) as n from jxc_djbz group by dj_pl order by dj_pl desc"}), 3);
  EXPECT_TRUE(exists(whole));
  EXPECT_TRUE(exists("select a.*,b.* from jxc_djbz a,jxc_djbz b where a.id=b.id and a.dj_pl=?", 3));
  EXPECT_TRUE(exists("select top 2 null as nothing from jxc_djbz order by id"));
  EXPECT_FALSE(exists("select id from jxc_djbz where dj_pl>?", 3));

  EXPECT_EQ(execSql(Sql("delete from jxc_djbz where dj_pl=?", 3)), 1);
  EXPECT_THROW(Sql("select ?"), std::invalid_argument);
  EXPECT_THROW(Sql("select '?'", 1), std::invalid_argument);
  EXPECT_THROW(Sql().add("a=? and ", 1, 2), std::invalid_argument);
  EXPECT_THROW(Filter().add("a=?"), std::invalid_argument);
}

TEST_F(Statements, OnlyNamesBecomePartOfAStatement) {
  EXPECT_EQ(compose("update {} set {}=1 where {}=?", {"jxc_goods", "g_jy", "a.g_sn"}),
            "update jxc_goods set g_jy=1 where a.g_sn=?");
  for (const char* name : {"", "a b", "a'b", "a.b.c", ".a", "a.", "jxc_goods;", "商品"})
    EXPECT_THROW(compose("select * from {}", {name}), std::invalid_argument) << name;
  EXPECT_THROW(compose("select {} from {}", {"a"}), std::invalid_argument);
  EXPECT_THROW(compose("select {}", {"a", "b"}), std::invalid_argument);
  EXPECT_THROW(insertRow("jxc_djbz", {{"dj_sn)", 1}}), std::invalid_argument);
  EXPECT_THROW(insertRow("jxc_djbz", {}), std::invalid_argument);
  EXPECT_THROW(updateRow("jxc_djbz where 1=1 or", 1, {{"dj_pl", 1}}), std::invalid_argument);
}

}  // namespace jxc::statements_test
