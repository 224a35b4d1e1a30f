// 赠品: the store of gift items with its checks and movements, and goods that are gifts.
#include "masterdata/gifts.h"

#include "core/reading.h"
#include "stock/shop.h"

namespace jxc::gifts_test {

class GiftsTest : public test::ShopTest {
 protected:
  std::int64_t added(const QString& number, const QString& name, double quantity = 0) {
    EXPECT_TRUE(gifts::save({0, number, name, quantity, 100}, {}, prompt));
    return lookupValue("select max(id) from jxc_zpxx").toLongLong();
  }
  static QString store() { return test::textsOf(openSelect(gifts::items({})), {"zp_sn", "zp_jm", "zp_sl"}).join(u'|'); }
};

TEST_F(GiftsTest, AnItemIsCheckedInTheOrderOfItsForm) {
  added(u"1001"_qs, u"眼镜盒"_qs, 10);
  for (const auto& [item, words] : {std::pair(gifts::Item{0, u" "_qs, {}, -1, -1}, "赠品编号必须填写！"),
                                    {{0, u"1001"_qs, u" "_qs, -1, -1}, "赠品名称必须填写！"},
                                    {{0, u"1001"_qs, u"镜布"_qs, -1, -1}, "赠品数量不能为负数！"},
                                    {{0, u"1001"_qs, u"镜布"_qs, 0, -1}, "兑换积分不能为负数！"},
                                    {{0, u"1001"_qs, u"镜布"_qs, 0, 0}, "赠品编号已经存在，请重新输入！"}})
    EXPECT_EQ(prompt.refused(gifts::save(item, {}, prompt)), words);
  const std::int64_t cloth = added(u"1002"_qs, u"镜布"_qs);
  for (const char* key : {"%", "1%2", "'", "0'--"})
    EXPECT_TRUE(openSelect(gifts::items({.key = QString::fromUtf8(key)})).isEmpty()) << key;
  EXPECT_EQ(store(), "1002 JB 0|1001 YJH 10");
  EXPECT_EQ(test::textsOf(openSelect(gifts::items({.key = u"yjh"_qs})), {"zp_name"}), QStringList("眼镜盒"));

  // While one corrects the quantity, another receives: both count.
  const gifts::Item shown = gifts::read(cloth);
  EXPECT_EQ(prompt.refused(gifts::receive(cloth, {u"2021-05-03"_qs, -1, {}}, prompt)), "进货数量不能为负数！");
  ASSERT_TRUE(gifts::receive(cloth, {u"2021-05-03"_qs, 5, u"促销"_qs}, prompt));
  gifts::Item typed = shown;
  typed.quantity = 2;
  EXPECT_TRUE(gifts::save(typed, shown, prompt));
  EXPECT_EQ(gifts::read(cloth).quantity, 7);
  typed.number = u"1003"_qs;
  EXPECT_EQ(prompt.refused(gifts::save(typed, shown, prompt)), "该赠品已经发生过业务，不能修改赠品编号！");
  EXPECT_EQ(prompt.refused(gifts::remove(cloth, prompt)),
            "该赠品已经发生过业务，不能删除！\r\n\r\n赠品 1002 镜布\r\n\r\n不再使用的话，可以改名。");
}

// Receipts first, then redemptions, then gifts with sales, each the newest first; of one item and between two days.
TEST_F(GiftsTest, MovementsOfThreeSources) {
  const std::int64_t item = added(u"1001"_qs, u"眼镜盒"_qs), other = added(u"1002"_qs, u"镜布"_qs);
  for (const auto& [id, day, pieces] : {std::tuple(item, u"2021-05-01"_qs, 5.0),
                                        {item, u"2021-05-03"_qs, 6.0},
                                        {item, u"2021-04-30"_qs, 9.0},
                                        {other, u"2021-05-01"_qs, 8.0}})
    ASSERT_TRUE(gifts::receive(id, {day, pieces, {}}, prompt));
  insertRow(
      "jxc_dhd",
      {{"gl_djh", u"DH1"}, {"dh_dhrq", u"2021-05-03 18:30:00"}, {"hy_sn", u"100001"}, {"ck_sn", test::mainWarehouse}});
  insertRow("jxc_dhzp", {{"gl_djh", u"DH1"}, {"g_sn", u"1001"}, {"dh_sl", 2.0}, {"dh_zpjf", 100.0}, {"dh_jf", 200.0}});
  insertRow("jxc_zsd", {{"gl_djh", u"ZS1"}, {"gl_xsdjh", u"XS1"}, {"zp_zsrq", u"2021-05-02"}});
  insertRow("jxc_zszp", {{"gl_djh", u"ZS1"}, {"zp_sn", u"1001"}, {"zp_sl", 1.0}});
  const auto listed = [](const Criteria& criteria) {
    return test::textsOf(openSelect(gifts::movements(criteria)), {"lx", "rq", "sl", "djh"}).join(u'|');
  };
  EXPECT_EQ(
      listed({.from = u"2021-05-01"_qs, .to = u"2021-05-03"_qs, .kind = u"1001"_qs}),
      "赠品进货 2021-05-03 6 |赠品进货 2021-05-01 5 |积分兑换 2021-05-03 18:30:00 -2 DH1|销售赠送 2021-05-02 -1 XS1");
  EXPECT_EQ(listed({.from = u"2021-05-04"_qs, .kind = u"1001"_qs}), "");
  EXPECT_EQ(listed({.from = u"2021-05-03"_qs, .to = u"2021-05-01"_qs}), "");
  EXPECT_EQ(listed({.from = u"0001-01-01"_qs, .to = u"9999-12-31"_qs, .kind = u"1001"_qs}).count(u'|'), 4);
  EXPECT_EQ(openSelect(gifts::movements({})).rowCount(), 6);
  EXPECT_EQ(test::textsOf(answer(Source(gifts::redemptions), {}), {"gl_djh", "spmc", "dh_sl", "dh_jf"}),
            QStringList("DH1 眼镜盒 2 200"));

  // An item that was only redeemed can be deleted.
  execSql("delete from jxc_zpjh where zp_sn='1001'");
  EXPECT_TRUE(gifts::remove(item, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要删除该赠品信息吗？");
}

TEST_F(GiftsTest, GoodsAreGiftsInUseOrNot) {
  addGoods("A", 10);
  addGoods("B", 3);
  execSql("update jxc_goods set g_iszp=iif(g_sn='A',1,0),g_sy=0,g_zpjf=0");
  const auto listed = [](const Sql& list) { return test::textsOf(openSelect(list), {"g_sn", "g_zpjf"}).join(u'|'); };
  EXPECT_EQ(listed(gifts::goodsNotInUse({})) + u'/' + listed(gifts::goodsInUse({})), "A 0/");
  const std::int64_t id = lookupValue("select id from jxc_goods where g_sn='A'").toLongLong();
  EXPECT_EQ(prompt.refused(gifts::use(id, -1, prompt)), "积分不能为负数！");
  EXPECT_TRUE(gifts::use(id, 120, prompt));
  EXPECT_EQ(listed(gifts::goodsNotInUse({})) + u'/' + listed(gifts::goodsInUse({})), "/A 120");
  gifts::stopUsing(id);
  EXPECT_EQ(listed(gifts::goodsNotInUse({})), "A 120");
}

}  // namespace jxc::gifts_test
