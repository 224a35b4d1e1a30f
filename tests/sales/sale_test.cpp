// The sale: prices, discounts, gifts, stock, prepayment, saving and audit.
#include "sales/sale.h"

#include "masterdata/prices.h"
#include "stock/shop.h"

namespace jxc::sale_test {

class SaleTest : public test::ShopTest {
 protected:
  SaleTest() {
    addGoods("A", 40, "6901");
    addGoods("B", 100, "6902");
    addGoods("C", 2, "6903");
    execSql("update jxc_goods set g_sj=100,g_sj1=90,g_sj2=0,g_lsj=120 where g_sn='A'");
    execSql("update jxc_goods set g_sj=250 where g_sn='B'");
    execSql("update jxc_goods set g_iszp=1,g_sj=5 where g_sn='C'");
    receive("2021-05-01", {{"A", 10, 40}, {"B", 2, 100}, {"C", 100, 2}});
  }

  LinePlace place() { return placeOf(draft); }
  void begin() { draft = sale::rules().fresh({}); }
  const LineRules& lines() { return sale::rules().lines(); }
  std::int64_t scan(const QString& code) {
    const ScanResult result = lines().enterBarcode(place(), code, false, prompt);
    draft.number = result.number;
    lastRefusal = result.refusal.text;
    return result.id;
  }
  std::int64_t add(const QString& goods, double quantity, std::optional<double> price = {}) {
    return ShopTest::add(lines(), place(), goods, quantity, price).id;
  }
  QString saveSale(double paid, Settlement settlement) {
    draft.paid = paid;
    draft.settlement = settlement;
    draft.account = "现金";
    prompt.willSayYes();
    const SaveResult saved = sale::rules().save(draft, prompt);
    EXPECT_TRUE(saved);
    return saved.number;
  }
  static QString line(std::int64_t id) {
    return row(
        "select ls_sl,ls_dj,ls_tax,ls_taxdj,ls_dzl,ls_je,ls_taxje,ls_zje,ls_cbj,ls_zcb,ls_cksl from jxc_lsxssp "
        "where id=?",
        id);
  }

  TradingDraft draft;
  QString lastRefusal;
};

TEST_F(SaleTest, PriceByQuotationLastSaleAndLevel) {
  const QString k = customer();
  EXPECT_EQ(getSalePrice(k, "A"), 100);
  setParameter("cs_cs013", 1);
  execSql("update jxc_khxx set kt_sn='1001' where kh_sn=?", k);
  EXPECT_EQ(getSalePrice(k, "A"), 90);
  execSql("update jxc_khxx set kt_sn='1002' where kh_sn=?", k);
  EXPECT_EQ(getSalePrice(k, "A"), 0);  // a level price of nothing is a price
  setParameter("cs_xsdj", 1);
  execSql("update jxc_khxx set kt_sn='1001' where kh_sn=?", k);
  EXPECT_EQ(getSalePrice(k, "A"), 90);  // never sold to him
  sell("2021-05-02", {{"A", 1, 77.777}});
  EXPECT_EQ(getSalePrice(k, "A"), 77.78);
  insertRow("jxc_khbj", {{"g_sn", u"A"}, {"kh_sn", k}, {"kb_bj", 81.0}});
  EXPECT_EQ(getSalePrice(k, "A"), 81);
  setParameter("cs_xsdj", 0);
  setParameter("cs_cs013", 0);
  execSql("delete from jxc_khbj");
  EXPECT_EQ(getSalePrice(k, "A"), 100);
}

TEST_F(SaleTest, BarcodeFindsWhatTheWarehouseKnowsAndAddsUp) {
  begin();
  setParameter("cs_tax", 13);
  setParameter("cs_possk", 1);
  execSql("update jxc_goods set g_sj=9.99 where g_sn='A'");
  const auto id = scan("6901");
  // 9.99 × 1.13 = 11.2887: the line's total keeps what the rounded price with tax would lose.
  EXPECT_EQ(line(id), "1 9.99 13 11.29 1 9.99 1.2987 11.2887 40 40 1");
  EXPECT_EQ(scan("6901"), id);
  EXPECT_EQ(scan("6901"), id);
  EXPECT_EQ(line(id).section(u' ', 0, 0), "3");
  EXPECT_EQ(row("select ls_zje,ls_zcb,ls_cksl from jxc_lsxssp where id=?", id), "33.8661 120 3");
  EXPECT_EQ(lines().enterBarcode(place(), "6901", true, prompt).outcome, Scan::AlreadyThere);

  addGoods("D", 1, "6904");
  EXPECT_EQ(scan("6904"), 0);  // no row in this warehouse, whatever the stock may do
  EXPECT_EQ(lastRefusal, "当前仓库中没有找到与该条码匹配的商品，请检查！");

  sell("2021-05-02", {{"B", 2, 250}});
  prompt.willSayNo();
  EXPECT_EQ(scan("6902"), 0);
  EXPECT_EQ(prompt.questions.last(), "库存数量小于销售数量，销售后将产生负库存，继续销售吗?");
  setParameter("cs_kc", 0);
  EXPECT_EQ(scan("6902"), 0);  // not offered at all
  EXPECT_EQ(lastRefusal, "当前仓库中没有找到与该条码匹配的商品，请检查！");
}

TEST_F(SaleTest, LineDialogRefusesAndAsksInItsOrder) {
  begin();
  setParameter("cs_jhzk", 1);
  setParameter("cs_zdzk", 0.7);
  LineDraft line = lines().newLine("A", place(), false);
  EXPECT_EQ(line.cost, 40);
  EXPECT_EQ(line.retail, 120);
  EXPECT_FALSE(lines().mayWrite(line, place(), prompt));  // no quantity: silently
  EXPECT_TRUE(prompt.notices.isEmpty());
  line.amounts.setQuantity(1);
  EXPECT_TRUE(lines().mayWrite(line, place(), prompt));
  line.amounts.setDiscount(0.69);
  EXPECT_FALSE(lines().mayWrite(line, place(), prompt));
  EXPECT_EQ(prompt.lastNotice(), "商品的最低折扣为：“0.7”，\r\n\r\n打折率不能低于最低折扣！");
  line.amounts.setDiscount(1);
  line.amounts.setQuantity(11);
  line.amounts.setPrice(39.99);
  prompt.forget();
  prompt.willSayYes().willSayYes().willSayYes();
  EXPECT_TRUE(lines().mayWrite(line, place(), prompt));
  EXPECT_EQ(prompt.questions,
            QStringList({"库存数量小于销售数量，销售后将产生负库存，继续销售吗?", "打折后售价小于进价，继续销售吗?",
                         "该商品销售价格低于其成本价格，是否继续销售?"}));
  setParameter("cs_kc", 0);
  EXPECT_EQ(prompt.refused(lines().mayWrite(line, place(), prompt)), "库存数量小于销售数量，不能出库！");

  const auto id = add("A", 2, 100);
  EXPECT_EQ(lines().setChange("0.6", u"dzl", Lines::Draft, id, prompt), 1);
  EXPECT_EQ(prompt.lastNotice(),
            "商品的最低折扣为：“0.7”，\r\n\r\n打折率不能低于最低折扣！\r\n\r\n已恢复到无折扣状态！");
  EXPECT_EQ(lines().setChange("0.8", u"dzl", Lines::Draft, id, prompt), 0.8);
  EXPECT_EQ(SaleTest::line(id), "2 100 0 100 0.8 160 0 160 40 80 2");
  EXPECT_EQ(lines().setChange("0", u"dzl", Lines::Draft, id, prompt), 1);
  setParameter("cs_xgdj", 0);
  lines().setChange("1", u"dj", Lines::Draft, id, prompt);
  EXPECT_EQ(SaleTest::line(id), "2 100 0 100 1 200 0 200 40 80 2");
}

TEST_F(SaleTest, SoldOnAccountAndAudited) {
  begin();
  add("A", 2);
  add("B", 1);
  EXPECT_EQ(sale::rules().payable(draft.number), 450);
  EXPECT_EQ(sale::rules().paidAfter(450, 7, {}), 450);
  const QString number = saveSale(200, Settlement::RestOnAccount);
  EXPECT_EQ(lastLog(), "增加未审核销售单" + number + "，共2种商品");
  EXPECT_EQ(row("select ls_yfje,ls_sfje,ls_yhje,ls_crk,ls_status,ls_jsfs,ls_xsrq from jxc_lsxsd"),
            "450 200 0 1 0 1 2021-05-03");
  ASSERT_EQ(sale::rules().waiting({.key = number}).rowCount(), 1);
  EXPECT_EQ(sale::rules().waiting({}).front().number("wfje"), 250);

  EXPECT_EQ(audit(number), AuditOutcome::Audited);
  EXPECT_EQ(openSelect(sale::saleHistory("A", customer())).rowCount(), 1);
  EXPECT_EQ(openSelect(sale::saleHistory("A", "x")).rowCount(), 0);
}

TEST_F(SaleTest, GiftsNeedStockAndKeepTheirMark) {
  begin();
  setParameter("cs_kc", 0);
  EXPECT_EQ(prompt.refused(sale::addGift(Lines::Draft, place(), "C", 101, prompt)), "库存数量小于出库数量，不能出库！");
  const auto id = sale::addGift(Lines::Draft, place(), "C", 2, prompt).id;
  EXPECT_TRUE(sale::changeGift(Lines::Draft, id, place(), 4, prompt));
  EXPECT_FALSE(sale::changeGift(Lines::Draft, id, place(), 0, prompt));
  EXPECT_EQ(lines().setChange("9", u"dj", Lines::Draft, id, prompt), 0);
  EXPECT_EQ(line(id), "4 0 0 0 1 0 0 0 2 8 4");
  EXPECT_EQ(row("select t_zp,ls_lsj from jxc_lsxssp where id=?", id), "(赠品) 0");
  EXPECT_EQ(openSelect(sale::rules().draftLines(draft.number)).front().text("g_name"), "镜架C(赠品)");
}

TEST_F(SaleTest, SaveRefusesShortStockAndAsksAboutThePrepayment) {
  begin();
  EXPECT_EQ(prompt.refused(sale::rules().save(draft, prompt)), "单据中没有业务发生，不能保存！");
  add("A", 11);
  const QString partner = std::exchange(draft.partner, QString());
  EXPECT_EQ(prompt.refused(sale::rules().save(draft, prompt)), "请选择客户！");
  draft.partner = partner;
  setParameter("cs_kc", 0);
  EXPECT_EQ(prompt.refused(sale::rules().save(draft, prompt)), "该单据中至少一种商品库存不足，\r\n\r\n“A”：不能销售！");
  setParameter("cs_kc", 1);
  setParameter("cs_cs001", 1);
  draft.settlement = Settlement::RestOnAccount;
  prompt.forget();
  EXPECT_FALSE(sale::rules().save(draft, prompt.willSayYes().willSayNo()));
  EXPECT_EQ(prompt.questions.last(), "该客户当前的预付款余额为：0，\r\n\r\n不足以支付本单的金额。\r\n\r\n继续保存吗？");
  draft.paid = 1100;
  prompt.willSayYes().willSayYes();  // stock, and the save itself: nothing is left open
  EXPECT_TRUE(sale::rules().save(draft, prompt));
  // At audit the head as it stands is asked about again.
  execSql("update jxc_lsxsd set ls_sfje=0");
  prompt.willSayYes().willSayNo();
  EXPECT_EQ(audit(draft.number), AuditOutcome::Refused);
}

TEST_F(SaleTest, AuditedAtOnceWithTheTimeOfDay) {
  setParameter("cs_shdj", 1);
  setParameter("cs_cs014", 1);
  begin();
  draft.freight = 12;
  draft.wePayFreight = true;
  add("A", 1);
  const QString number = saveSale(100, Settlement::AtPaidAmount);
  EXPECT_EQ(prompt.questions.last(),
            "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“销售退货查询”功能中取消审核！");
  EXPECT_EQ(row("select ls_xsrq,ls_status from jxc_lsxsd where gl_djh=?", number), "2021-05-03 14:30:00 1");
  EXPECT_EQ(cash(), 88);
}

TEST_F(SaleTest, PickListStagingAndIssueLater) {
  setParameter("cs_spck", 1);
  begin();
  const auto found = [&](const PickFilter& filter) { return goodsToPick(lines(), place(), filter); };
  addGoods("D", 1);
  EXPECT_EQ(found({.inStock = true}), "A B C");
  EXPECT_EQ(found({}), "A B C D");
  sell("2021-05-02", {{"B", 1, 250}});
  EXPECT_EQ(found({.ofPartner = true}), "B");
  EXPECT_EQ(found({.inStock = true}), "B A C");  // best sellers first

  PickingMemory memory;
  prompt.willSayNo();  // one answer for the whole selection
  EXPECT_EQ(lines().stageGoods("D", 1, place(), Lines::Draft, memory, prompt), 0);
  EXPECT_EQ(lines().stageGoods("B", 5, place(), Lines::Draft, memory, prompt), 0);
  EXPECT_NE(lines().stageGoods("A", 2, place(), Lines::Draft, memory, prompt), 0);
  EXPECT_EQ(lines().copyStaged(place(), Lines::Draft).lines, 1);
  const auto id = openSelect(sale::rules().draftLines(draft.number)).front().integer("id");
  EXPECT_EQ(line(id), "2 100 0 100 1 200 0 200 40 80 0");
  EXPECT_EQ(row("select ls_cbj2,ls_lsj,ls_zhje,t_zp,ls_qxsl from jxc_lsxssp where id=?", id), "40 120 200  0");
  const QString number = audited(saveSale(200, Settlement::AtPaidAmount));
  EXPECT_EQ(balanceOf("A"), "10 8 40");  // sold, still on the shelf
  EXPECT_EQ(lookupValue("select ls_crk from jxc_lsxsd where gl_djh=?", number), "0");
  // An audited sale takes no change any more.
  LineDraft late = lines().newLine("A", place(), false);
  late.amounts.setQuantity(1);
  LinePlace there = place();
  there.number = number;
  EXPECT_FALSE(lines().addLine(Lines::Waiting, there, late, prompt));
}

}  // namespace jxc::sale_test
