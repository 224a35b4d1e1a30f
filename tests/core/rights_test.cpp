#include "core/rights.h"

#include "harness/account_set_fixture.h"

namespace jxc::test {

class RightsStory : public AccountSetFixture {};

TEST_F(RightsStory, ARoleIsReadCharacterByCharacterAtEachTest) {
  setRights("100002", "cggl", QStringLiteral("101"));
  becomeOperator(QStringLiteral("小王"), "100002", "100002");
  EXPECT_TRUE(hasRight("cggl", 1));
  EXPECT_FALSE(hasRight("cggl", 2));
  EXPECT_FALSE(hasRight("cggl", 4)) << "beyond the end of the role";
  EXPECT_FALSE(hasRight("cggl", 0));
  EXPECT_FALSE(hasRight("xsgl", 1)) << "a group that was never filled";
  setRights("100002", "cggl", QStringLiteral("011"));
  EXPECT_FALSE(hasRight("cggl", 1)) << "a change applies at once";

  EXPECT_TRUE(hasRightOf("cggl", 1, QStringLiteral("admin"))) << "another operator authorises";
  EXPECT_FALSE(hasRightOf("cggl", 1, QStringLiteral("小王")));
  EXPECT_FALSE(hasRightOf("cggl", 1, QStringLiteral("' or '1'='1")));
  EXPECT_THROW(hasRight("cggl from jxc_role--", 1), std::invalid_argument);

  execSql("delete from jxc_role where r_sn='100002'");
  EXPECT_FALSE(hasRight("cggl", 2)) << "the role is gone";
  dispMsg(prompt, QStringLiteral("采购进货！"));
  EXPECT_EQ(prompt.lastNotice(), QStringLiteral("您没有权限进行采购进货！"));
}

TEST_F(RightsStory, BoundToWarehousesAnOperatorOfNoneMayDoNothing) {
  setRights("100002", "cggl", QStringLiteral("1"));
  setParameter("cs_cgyh", 1);
  EXPECT_TRUE(hasRight("cggl", 1)) << "the administrator is never bound";
  execSql("update jxc_ckxx set ck_asn=''");
  EXPECT_TRUE(hasRight("cggl", 1));
  becomeOperator(QStringLiteral("小王"), "100002", "100002");
  EXPECT_FALSE(hasRight("cggl", 1));
  EXPECT_TRUE(hasRightOf("cggl", 1, QStringLiteral("小王")));
  execSql("update jxc_ckxx set ck_asn='100001,100002,'");
  EXPECT_TRUE(hasRight("cggl", 1));
}

}  // namespace jxc::test
