#include "core/fillers.h"

#include "core/defaults.h"
#include "core/small_lookups.h"
#include "harness/account_set_fixture.h"

namespace jxc::test {

/// Two warehouses, two more employees, and an operator 小王 of the second warehouse.
class ListsStory : public AccountSetFixture {
 protected:
  using Items = std::vector<ListItem>;

  ListsStory() {
    insertRow("jxc_ckxx", {{"ck_sn", "100002"}, {"ck_name", "二店"}, {"ck_asn", "100002,"}, {"ck_default", 0}});
    addEmployee("100002", "小李", "100001", 1);
    addEmployee("100003", "小张", "100002", 0);
    setRights("100002", "qtcz", QString(19, u'1'));
  }
  void addEmployee(const char* sn, const char* name, const char* warehouse, int sells) {
    execSql("insert into jxc_user (u_sn,u_name,ck_sn,u_xs,u_cg,u_jy,u_cgpl,u_xspl) values (?,?,?,?,1,0,0,0)", sn, name,
            warehouse, sells);
  }
  void bindLists() {
    setParameter("cs_shtc", 1);
    becomeOperator(QStringLiteral("小王"), "100002", "100002");
  }
  static Items named(std::initializer_list<std::pair<const char*, const char*>> pairs) {
    Items items;
    for (const auto& [text, key] : pairs)
      items.push_back({QString::fromUtf8(text), QString::fromUtf8(key)});
    return items;
  }
  static QStringList texts(const Items& items) {
    QStringList list;
    for (const ListItem& item : items)
      list << item.text;
    return list;
  }
};

TEST_F(ListsStory, TheItemForAllStandsWhereEachListHasIt) {
  const QString all = QStringLiteral("全部");
  EXPECT_EQ(fillPlainCombo("jxc_zone", "z_name", all, true, "z_sn"),
            named({{"", ""}, {"全部", ""}, {"省会地区", ""}, {"地市区域", ""}, {"其他区域", ""}}));
  EXPECT_EQ(texts(fillPlainComboProps("jxc_zone", "z_name", all, true, "z_sn")).first(), all);
  EXPECT_EQ(fillKeyedCombo("jxc_ckxx", "ck_name", all, "id", "ck_sn"),
            named({{"全部", "-1"}, {"主仓库", "100001"}, {"二店", "100002"}}));

  Filter second;
  second.add("ck_sn=?", "100002");
  EXPECT_EQ(fillKeyedComboWhere("jxc_ckxx", "ck_name", all, second, "id", "ck_sn"),
            named({{"二店", "100002"}, {"全部", "-1"}}));
  EXPECT_EQ(fillKeyedComboWhereTop("jxc_ckxx", "ck_name", all, second, "id", "ck_sn"),
            named({{"全部", "-1"}, {"二店", "100002"}}));
  EXPECT_EQ(texts(fillKeyedComboWhere("jxc_ckxx", "ck_name", all, {}, "id", "ck_sn")).last(), QStringLiteral("二店"))
      << "without a condition the item is not offered";
  EXPECT_EQ(fillWarehouseCombo(QStringLiteral("所有仓库")).front().key, QStringLiteral("-1"));
  EXPECT_EQ(fillWarehouseCombo(all).front().key, QStringLiteral("100001"));

  EXPECT_EQ(fillSettleModes("cg"), named({{"按实付款结算", "1"}, {"余款记入应付帐", "2"}}));
  EXPECT_EQ(fillSettleModes("xs").back().text, QStringLiteral("余款记入应收帐"));
  EXPECT_EQ(fillSettleModes({}).size(), 1u);
}

TEST_F(ListsStory, BoundListsShowTheOperatorsWarehousesOnly) {
  const QString all = QStringLiteral("所有");
  EXPECT_EQ(texts(fillEmployees({}, all)), QStringList({"所有", "默认员工", "小李", "小张"}));
  EXPECT_EQ(texts(fillEmployees("u_xs")), QStringList({"默认员工", "小李"}));
  EXPECT_EQ(texts(fillOperators(all)), QStringList({"所有", "admin"}));

  bindLists();
  EXPECT_EQ(texts(fillEmployees({}, all)), QStringList({"默认员工", "小张"})) << "of all warehouses, or of his";
  EXPECT_EQ(fillOperators(all), named({{"小王", "100002"}})) << "himself alone";
  execSql("update jxc_ghsxx set ck_sn='100001'");
  EXPECT_TRUE(fillSuppliers().isEmpty());
  execSql("update jxc_ghsxx set ck_sn='-1'");
  EXPECT_FALSE(fillSuppliers().isEmpty());

  setParameter("cs_shtc", 0);
  EXPECT_EQ(texts(fillOperators(all)), QStringList({"admin", "小王"})) << "all of them is for the administrator";
}

TEST_F(ListsStory, CustomersKeepTheirOrderAndTheirSalesmenComeFirst) {
  execSql("delete from jxc_khxx");
  execSql(
      "insert into jxc_khxx (kh_sn,kh_name,kt_sn,kh_forbid,kh_default,kh_usn,ck_sn) values "
      "('100005','光明','9999',0,0,'100002,','-1')");
  execSql(
      "insert into jxc_khxx (kh_sn,kh_name,kh_forbid,kh_default,kh_usn,ck_sn) values "
      "('100006','大众',0,1,'','100001')");
  insertRow("jxc_khxx", {{"kh_sn", "100007"}, {"kh_name", "停业"}, {"kh_forbid", 1}, {"ck_sn", "-1"}});
  const RowSet customers = fillCustomers(SortOrder::Descending);
  ASSERT_EQ(customers.rowCount(), 2) << "also those whose type is gone; not the forbidden one";
  EXPECT_EQ(customers.front().text("kh_name"), QStringLiteral("大众"));
  EXPECT_TRUE(customers.front().isNull("ktname"));

  EXPECT_EQ(fillSalesmenFor("100005"), named({{"小李", "100002"}, {"默认员工", "100001"}}));
  EXPECT_EQ(fillSalesmenFor("100006"), named({{"默认员工", "100001"}, {"小李", "100002"}}));
  execSql("update jxc_user set u_xs=1");
  bindLists();
  EXPECT_EQ(fillSalesmenFor("100005"), named({{"默认员工", "100001"}, {"小张", "100003"}}));
  EXPECT_EQ(fillCustomers().rowCount(), 1);

  EXPECT_EQ(defaultCustomerSn(), QStringLiteral("100006"));
  execSql("update jxc_khxx set kh_default=0");
  EXPECT_EQ(defaultCustomerName(), QStringLiteral("光明"));
  execSql("update jxc_khxx set kh_forbid=1");
  EXPECT_EQ(defaultCustomerSn(), QString());
}

TEST_F(ListsStory, DefaultsAndSmallLookups) {
  EXPECT_EQ(defaultEmployeeName(), QStringLiteral("默认员工")) << "the first, while none has an empty name";
  execSql("update jxc_user set u_name=null where u_sn='100003'");
  EXPECT_EQ(defaultEmployeeSn(), QStringLiteral("100003"));
  becomeOperator(QStringLiteral("小李"), "100009", "100001");
  EXPECT_EQ(defaultEmployeeName(), QStringLiteral("小李")) << "who works here acts himself";
  const std::vector<ListItem> others{{"a", "1"}, {"b", "2"}};
  EXPECT_EQ(keyToPropose(others, "2"), "2");
  EXPECT_EQ(keyToPropose(others, "3"), "1") << "not allowed for this document";
  becomeOperator("admin", "100001", "100001");
  EXPECT_EQ(defaultWarehouseName(), QStringLiteral("主仓库"));
  execSql("update jxc_ckxx set ck_default=1 where ck_sn='100002'");
  execSql("update jxc_ckxx set ck_default=0 where ck_sn='100001'");
  EXPECT_EQ(defaultWarehouseSn(), QStringLiteral("100002"));

  EXPECT_EQ(getStockQty("00010001", "100001"), QStringLiteral("0"));
  insertRow("jxc_kcsp", {{"g_sn", "00010001"}, {"ck_sn", "100001"}, {"kc_sl", 2.5}});
  EXPECT_EQ(getStockQty("00010001", "100001"), QStringLiteral("2.5"));

  ensureZone(QStringLiteral("海外"));
  ensureZone(QStringLiteral("海外"));
  EXPECT_EQ(lookupValue("select z_sn+z_jm from jxc_zone where z_name='海外'"), QStringLiteral("100004HW"));
  EXPECT_EQ(lookupNumber("select count(*) from jxc_zone"), 4);

  insertRow("jxc_tempspxf", {{"g_sn", "00010001"}, {"a_name", "admin"}});
  insertRow("jxc_tempspxf", {{"g_sn", "00010001"}, {"a_name", "小王"}});
  clearStaging();
  EXPECT_EQ(lookupValue("select a_name from jxc_tempspxf"), QStringLiteral("小王"));
}

}  // namespace jxc::test
