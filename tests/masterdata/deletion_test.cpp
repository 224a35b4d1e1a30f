// What another station begins to use while the question of a deletion stands is not deleted.
#include "accounts/cash_accounts.h"
#include "core/operators.h"
#include "core/roles.h"
#include "harness/account_set_fixture.h"
#include "masterdata/departments.h"
#include "masterdata/employees.h"
#include "masterdata/goods_change.h"
#include "masterdata/goods_classes.h"
#include "masterdata/partner_contacts.h"
#include "masterdata/partner_kinds.h"
#include "masterdata/partners.h"
#include "masterdata/units.h"
#include "masterdata/warehouses.h"
#include "masterdata/zones.h"

namespace jxc::deletion_test {

class DeletionTest : public test::AccountSetFixture {};

TEST_F(DeletionTest, LooksAgainBehindItsQuestion) {
  struct Case {
    const char *table, *row, *use;
    bool (*erase)(std::int64_t id, Prompt& prompt);
    const char16_t* refusal;
  };
  static constexpr Case cases[] = {
      {"jxc_zone", "(z_sn,z_name) values ('200001','城东')",
       "insert into jxc_khxx (kh_sn,kh_name,z_name) values ('300001','王五','城东')",
       [](std::int64_t id, Prompt& p) { return deleteNamed(zoneList, id, p); },
       u"该地区供货商在使用，不能删除！\r\n\r\n地区 200001 城东\r\n用于：客户 300001 "
       u"王五\r\n\r\n请先在那里选择其他的，再删除。"},
      {"jxc_dept", "(de_sn,de_name) values ('200001','门市')", "insert into jxc_yyfy (de_sn) values ('200001')",
       [](std::int64_t id, Prompt& p) { return deleteNamed(departmentList, id, p); },
       u"该部门已经在使用，不能删除！\r\n\r\n部门 200001 "
       u"门市\r\n用于：费用及收入\r\n\r\n请先在那里选择其他的，再删除。"},
      // Used under the name that it was given while the question stood.
      {"jxc_ghstype", "(gt_sn,gt_name) values ('200001','镜片')",
       "update jxc_ghstype set gt_name='一般' where gt_sn='200001'",
       [](std::int64_t id, Prompt& p) {
         insertRow("jxc_ghsxx", {{"gt_name", u"一般"}});
         return deleteNamed(supplierKindList, id, p);
       },
       u"该类别供货商在使用，不能删除！\r\n\r\n供货商类型 200001 "
       u"一般\r\n用于：供货商\r\n\r\n请先在那里选择其他的，再删除。"},
      {"jxc_ckxx", "(ck_sn,ck_name) values ('200001','分店')",
       "insert into jxc_goodslist (ck_sn,gl_djh) values ('200001','DB1')", deleteWarehouse,
       u"该仓库中有商品，或已发生过业务，不能删除！\r\n\r\n仓库 200001 分店\r\n用于：库存流水账 "
       u"DB1\r\n\r\n不再使用的话，可以改名。"},
      {"jxc_user", "(u_sn,u_name) values ('200001','小李')", "insert into jxc_xjyh (u_name) values ('小李')",
       deleteEmployee,
       u"该员工已发生过业务，不能删除！\r\n\r\n员工 200001 小李\r\n用于：现金银行账\r\n\r\n不再使用的话，可以禁用。"},
      {"jxc_ckxx", "(ck_sn,ck_name) values ('200002','柜台')", "insert into jxc_khxx (ck_sn) values ('200002')",
       deleteWarehouse,
       u"该仓库正在使用，不能删除！\r\n\r\n仓库 200002 柜台\r\n用于：客户\r\n\r\n请先在那里选择其他仓库，再删除。"},
      {"jxc_user", "(u_sn,u_name) values ('200002','小赵')", "insert into jxc_jhd (j_sn,u_sn) values ('CJ1','200002')",
       deleteEmployee,
       u"该员工正在使用，不能删除！\r\n\r\n员工 200002 小赵\r\n用于：采购进货单 CJ1\r\n\r\n不再使用的话，可以禁用。"},
      {"jxc_khxx", "(kh_sn,kh_name) values ('200001','张三')",
       "insert into jxc_lsxsd (gl_djh,kh_sn) values ('XS1','200001')",
       [](std::int64_t id, Prompt& p) { return deletePartner(customerSide, id, p); },
       u"该客户已发生过业务，不能删除！\r\n\r\n客户 200001 张三\r\n用于：商品销售单 "
       u"XS1\r\n\r\n不再使用的话，可以禁用。"},
      {"jxc_goods", "(g_sn,g_name) values ('20000001','镜盒')",
       "insert into jxc_jhsp (j_sn,g_sn) values ('CJ1','20000001')", deleteGoods,
       u"该商品已发生过业务，单据号：CJ1 不能删除！\r\n\r\n商品信息 20000001 镜盒\r\n\r\n不再使用的话，可以禁用。"},
      {"jxc_goodsclass", "(gc_sn,gc_name,gc_key,gc_pid) values ('9001','护理',77,1)",
       "insert into jxc_goods (g_sn,gc_sn) values ('20000002','9001')", deleteGoodsClass,
       u"该类别下有商品信息，不能删除！\r\n\r\n商品类别 9001 护理\r\n用于：商品信息 "
       u"20000002\r\n\r\n请先把这些商品改为其他类别，再删除。"},
      {"jxc_yhzh", "(yh_name) values ('农行')", "insert into jxc_xjyh (xj_kmmc,xj_dlx) values ('农行','入款')",
       cash::deleteAccount,
       u"该账户已发生过业务，不能删除！\r\n\r\n银行账户 农行\r\n用于：现金银行账\r\n\r\n不再使用的话，可以改名。"},
      {"jxc_admin", "(a_sn,a_name) values ('200001','小李')", "insert into jxc_jhd (a_name) values ('小李')",
       deleteOperator,
       u"该操作员已发生过业务，不能删除！\r\n\r\n操作员 200001 "
       u"小李\r\n用于：采购进货单\r\n\r\n不再使用的话，可以停用。"},
      {"jxc_role", "(r_sn,r_name) values ('200001','店员')", "insert into jxc_admin (r_sn) values ('200001')",
       deleteRole,
       u"该角色已在使用，不能删除！\r\n\r\n角色 200001 "
       u"店员\r\n用于：操作员\r\n\r\n请先给这些操作员选择其他角色，再删除。"},
  };
  for (const Case& each : cases) {
    const std::string table = each.table;
    execSql("insert into " + table + " " + each.row);
    const auto id = static_cast<std::int64_t>(lookupNumber("select max(id) from " + table));
    test::WhileAsked asked([&] { execSql(std::string(each.use)); });
    EXPECT_FALSE(each.erase(id, asked)) << table;
    EXPECT_EQ(asked.notices, QStringList(QString::fromUtf16(each.refusal))) << table;
    EXPECT_FALSE(openSelect("select id from " + table + " where id=?", id).isEmpty()) << table;

    // Gone already, by another station: no fault, and nothing of a row that came since under its number goes along.
    test::WhileAsked late([&] { FAIL() << table; });
    EXPECT_TRUE(each.erase(id + 1000, late)) << table;
  }
}

TEST_F(DeletionTest, WhatCameUnderTheNumberOfADeletedRowStays) {
  execSql("insert into jxc_khxx (kh_sn,kh_name) values ('200001','张三')");
  const auto id = static_cast<std::int64_t>(lookupNumber("select max(id) from jxc_khxx"));
  test::WhileAsked asked([&] {
    execSql("delete from jxc_khxx where id=?", id);
    execSql("insert into jxc_khxx (kh_sn,kh_name) values ('200001','李四')");
    insertRow(customerSide.diary, {{"kh_sn", u"200001"}, {"lx_note", u"新客户"}});
  });
  EXPECT_TRUE(deletePartner(customerSide, id, asked));
  EXPECT_EQ(lookupNumber(compose("select count(*) from {}", {customerSide.diary})), 1);
}

}  // namespace jxc::deletion_test
