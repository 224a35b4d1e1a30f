// Customers and suppliers, warehouses, employees, units: saving, renaming into history, refusals.
#include "masterdata/partners.h"

#include "harness/account_set_fixture.h"
#include "masterdata/employees.h"
#include "masterdata/units.h"
#include "masterdata/warehouses.h"
#include "stock/ledger.h"

namespace jxc::partners_test {

class PartnersTest : public test::AccountSetFixture {
 protected:
  static WarehouseDraft ofAdmin(const QString& name) {
    return {.name = name, .operatorKeys = {u"100001"_qs}, .operatorNames = {u"admin"_qs}};
  }
};

TEST_F(PartnersTest, OpeningAmountIsALedgerLineAndGoesWithThePartner) {
  setClock(u"2026-03-05 10:00:00"_qs);
  for (const PartnerSide* side : {&supplierSide, &customerSide}) {
    PartnerDraft draft;
    draft.name = u"华光眼镜"_qs;
    draft.opening = 1200.5;
    draft.isDefault = true;
    const auto number = savePartner(*side, draft, prompt);
    ASSERT_TRUE(number);
    EXPECT_EQ(*number, u"100002"_qs);

    const QString type = QString::fromUtf8(side->type.data());
    const RowSet line = openSelect("select * from jxc_ysyfk where k_type=? and k_ghskh=?", type, *number);
    ASSERT_EQ(line.rowCount(), 1);
    EXPECT_EQ(line[0].number("k_ljje"), 1200.5);
    EXPECT_EQ(line[0].text("gl_djh"), QString::fromUtf8(side->openingPrefix.data()) + u"26030510001"_qs);
    EXPECT_EQ(openSelect(compose("select * from {} where {}<>0", {side->table, side->isDefault})).rowCount(), 1);

    prompt.willSayYes();
    EXPECT_TRUE(deletePartner(
        *side, lookupValue(compose("select id from {} where {}='100002'", {side->table, side->sn})).toLongLong(),
        prompt));
    EXPECT_TRUE(prompt.questions.contains(u"您确定要删除当前%1吗！"_qs.arg(QString::fromUtf16(side->noun))));
    EXPECT_EQ(lookupValue("select top 1 log_note from jxc_log order by id desc"),
              u"删除%1，编号：100002，名称：华光眼镜"_qs.arg(QString::fromUtf16(side->noun)));
    EXPECT_EQ(openSelect("select id from jxc_ysyfk").rowCount(), 0);
    EXPECT_EQ(openSelect("select id from jxc_ysyfk_dj").rowCount(), 0);
  }
}

TEST_F(PartnersTest, BuiltInPartnersStayAndNamesMayStandTwice) {
  EXPECT_EQ(prompt.refused(deletePartner(supplierSide, 1, prompt)),
            u"该供货商为系统内置供货商，不能删除！\r\n\r\n供货商 100001 普通供货商\r\n\r\n不再使用的话，可以改名。"_qs);

  PartnerDraft draft;
  draft.name = u"普通供货商"_qs;
  EXPECT_TRUE(savePartner(supplierSide, draft, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.contains(u"供货商已经存在，确认可以重复吗？"_qs));
}

TEST_F(PartnersTest, NewWarehouseStandsInThisMonthsFiguresAndNeedsAnOperator) {
  setClock(u"2026-03-05 10:00:00"_qs);
  WarehouseDraft draft;
  draft.name = u"二号库"_qs;
  EXPECT_EQ(prompt.refused(saveWarehouse(draft, prompt)), u"必须选择操作员！"_qs);
  draft.operatorKeys = {u"100001"_qs};
  draft.operatorNames = {u"admin"_qs};
  draft.isDefault = true;
  const auto number = saveWarehouse(draft, prompt);
  ASSERT_EQ(number, u"100002"_qs);
  EXPECT_EQ(lookupValue("select ck_asn from jxc_ckxx where ck_sn='100002'"), u"100001,"_qs);
  EXPECT_EQ(lookupValue("select count(*) from jxc_kcjs where js_rq='2026-03' and ck_sn='100002'"), u"1"_qs);
  EXPECT_EQ(lookupValue("select ck_default from jxc_ckxx where ck_sn='100001'"), u"0"_qs);
}

/// Two warehouses of one name from older days, with goods, a document and money each.
TEST_F(PartnersTest, WarehousesAreToldApartByTheirNumbers) {
  WarehouseDraft draft = ofAdmin(u"主仓库"_qs);
  EXPECT_EQ(prompt.refused(saveWarehouse(draft, prompt)), u"仓库名称“主仓库”已经存在，请使用其他名称！"_qs);
  draft.name = u"二号库"_qs;
  ASSERT_EQ(saveWarehouse(draft, prompt), u"100002"_qs);
  execSql("update jxc_ckxx set ck_name='主仓库'");
  for (const char* number : {"100001", "100002"}) {
    const QString document = u"XS2105031"_qs + number;
    insertRow("jxc_goodslist", {{"gl_djh", document}, {"ck_sn", number}, {"ck_name", u"主仓库"}});
    insertRow("jxc_xjyh", {{"gl_djh", document}, {"ck_name", u"主仓库"}});
    insertRow("jxc_khxx", {{"ck_sn", number}, {"ck_name", u"主仓库"}});
  }
  draft = readWarehouse(2);
  draft.note = u"楼上"_qs;
  EXPECT_TRUE(saveWarehouse(draft, prompt)) << "it may keep the name that it has";
  draft.name = u"二号库"_qs;
  ASSERT_TRUE(saveWarehouse(draft, prompt));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_goodslist where ck_name='二号库' and ck_sn='100002'"), 1);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_khxx where ck_name='二号库' and ck_sn='100002'"), 1);
  for (const char* table : {"jxc_goodslist", "jxc_khxx", "jxc_xjyh"})
    EXPECT_EQ(lookupNumber(compose("select count(*) from {} where ck_name='二号库'", {table})), 1) << table;
  EXPECT_EQ(lookupValue("select gl_djh from jxc_xjyh where ck_name='二号库'"), u"XS2105031100002"_qs);
}

TEST_F(PartnersTest, ADeletedWarehouseLeavesNothingToTheNextOne) {
  WarehouseDraft draft = ofAdmin(u"临时库"_qs);
  ASSERT_EQ(saveWarehouse(draft, prompt), u"100002"_qs);
  ensureStockRows(u"2021-06"_qs);
  prompt.willSayYes();
  EXPECT_TRUE(deleteWarehouse(2, prompt));
  for (const char* table : {"jxc_kcjs", "jxc_kcsp"})
    EXPECT_EQ(lookupNumber(compose("select count(*) from {} where ck_sn='100002'", {table})), 0) << table;
  EXPECT_EQ(saveWarehouse(draft, prompt), u"100003"_qs) << "the number is not given again";
}

TEST_F(PartnersTest, OperatorsOfAWarehouseStayWithinItsLists) {
  execSql("insert into jxc_admin (a_sn,a_name,a_jyt) values ('100002','王芳',1)");
  execSql("insert into jxc_admin (a_sn,a_name,a_jyt) values ('100003','李明',1)");
  execSql("update jxc_ckxx set ck_asn='100001,100002,',ck_aname='admin,王芳,'");
  const auto offered = bindableOperators(readWarehouse(1));
  ASSERT_EQ(offered.size(), 2u) << "a disabled one stays bound, and is not bound anew";
  EXPECT_TRUE(offered[1].isDisabled && offered[1].isBound);

  WarehouseDraft draft = readWarehouse(1);
  const auto bind = [&](int operators, int letters) {
    draft.operatorKeys.clear();
    draft.operatorNames.clear();
    for (int i = 0; i < operators; ++i) {
      draft.operatorKeys << QString::number(100001 + i);
      draft.operatorNames << QString(letters, u'王');
    }
    return saveWarehouse(draft, prompt).has_value();
  };
  EXPECT_TRUE(bind(28, 6));
  EXPECT_EQ(prompt.refused(bind(30, 2)), u"一个仓库最多选择28个操作员，现在选择了30个，请减少2个！"_qs);
  EXPECT_FALSE(bind(10, 20));
  EXPECT_TRUE(prompt.lastNotice().startsWith(u"所选操作员的名称合起来太长"_qs)) << prompt.lastNotice().toStdString();
}

TEST_F(PartnersTest, EmployeeAtTheTillNeedsACommissionSomewhere) {
  EmployeeDraft draft;
  draft.name = u"王验光"_qs;
  draft.optometrist = true;
  EXPECT_EQ(prompt.refused(saveEmployee(draft, prompt)), u"选择POS销售属性时必须在商品管理设置提成！"_qs);
  execSql("update jxc_goods set g_ygtc=5");
  ASSERT_TRUE(saveEmployee(draft, prompt));
  EXPECT_EQ(prompt.refused(saveEmployee(draft, prompt)), u"员工姓名不能重复！"_qs);
}

TEST_F(PartnersTest, UnitsAreNotDoubledAndGoodsKeepTheirWord) {
  EXPECT_EQ(prompt.refused(addUnit(u"付"_qs, prompt)), u"单位名称已经存在，请重新输入！"_qs);
  EXPECT_EQ(addUnit(u"盒"_qs, prompt), u"100004"_qs);
  execSql("update jxc_goods set dw_name='盒'");
  EXPECT_TRUE(deleteUnit(3, prompt.willSayYes()));
  EXPECT_TRUE(prompt.questions.contains(u"您确定要删除该单位信息吗！"_qs));
  EXPECT_EQ(lookupValue("select top 1 dw_name from jxc_goods"), u"盒"_qs);
}

}  // namespace jxc::partners_test
