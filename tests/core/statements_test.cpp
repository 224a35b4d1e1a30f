#include "core/statements.h"

#include "harness/account_set_fixture.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace jxc {
namespace statements_test {

struct Statements : test::AccountSetFixture {};

TEST_F(Statements, RowsAreAddedAndPostedByTheirFields) {
  const std::int64_t first = insertRow("jxc_djbz", {{"dj_sn", "100001"}, {"dj_name", "客户自提"}, {"dj_pl", 0}});
  const std::int64_t second =
      insertRow("jxc_djbz", {{"dj_sn", 100002}, {"dj_name", QStringLiteral("急件")}, {"dj_pl", "3"}});
  EXPECT_EQ(second, first + 1);
  updateRow("jxc_djbz", first, {{"dj_name", "O'Neil?"}, {"dj_pl", 2.0}});
  const RowSet rows = openSelect("select * from jxc_djbz where dj_sn>=? order by id", "100001");
  ASSERT_EQ(rows.rowCount(), 2);
  EXPECT_EQ(rows[0].text("dj_name"), QStringLiteral("O'Neil?"));
  EXPECT_EQ(rows[0].integer("dj_pl"), 2);
  EXPECT_EQ(rows[1].text("dj_sn"), QStringLiteral("100002"));
  EXPECT_EQ(lookupNumber("select sum(dj_pl) from jxc_djbz"), 5);
  EXPECT_EQ(lookupValue("select dj_name from jxc_djbz where dj_sn='1'"), QString());

  Filter filter;
  filter.add("dj_pl>?", 2).add("dj_name like '%'+?+'%'", "急");
  EXPECT_EQ(openSelectWith("select * from jxc_djbz" + filter.where(), filter.values()).rowCount(), 1);
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

}  // namespace statements_test
}  // namespace jxc
