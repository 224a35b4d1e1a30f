// 报价: the second quotation beats the first, deletion falls back, and the sale takes what counts.
#include "masterdata/quotations.h"

#include "core/text.h"
#include "masterdata/prices.h"
#include "sales/sale.h"
#include "stock/line_import.h"
#include "stock/shop.h"

namespace jxc::quotations_test {

class QuotationsTest : public test::ShopTest {
 protected:
  QuotationsTest() {
    addGoods("A", 10, "6901");
    addGoods("B", 3, "6902");
    session().canSeeCost = true;
  }
  /// The only sale line that a new sale to the customer proposes.
  double sold() {
    const LinePlace place{.date = u"2021-05-03"_qs, .partner = customer(), .warehouse = test::mainWarehouse};
    return sale::rules().lines().newLine("A", place, false).amounts.price();
  }
  bool quote(const PartnerSide& side, const QString& partner, double yuan, const QString& note = {}) {
    return quotations::stage("A", yuan, prompt) &&
           quotations::save(side, {u"甲"_qs, partner, u"2021-05-03"_qs, u"gone"_qs, note}, prompt);
  }
  static QString listed(const PartnerSide& side, const Criteria& criteria = {}) {
    return test::textsOf(openSelect(quotations::list(side, criteria)), {"rq", "g_sn", "bj", "u_name", "note"})
        .join(u'|');
  }
};

TEST_F(QuotationsTest, TheLastOneCountsAndTheOneBeforeComesBack) {
  for (const auto& [head, words] : {std::pair(quotations::Quotation{{}, customer()}, "客户名称必须填写！"),
                                    {{u"甲"_qs, {}}, "客户名称不正确，重新填写！"},
                                    {{u"甲"_qs, u"99"_qs}, "客户名称不正确，重新填写！"},
                                    {{u"甲"_qs, customer()}, "报价日期必须填写！"},
                                    {{u"甲"_qs, customer(), u"2021-05-03"_qs}, "没有选择报价商品，不能保存！"}})
    EXPECT_EQ(prompt.refused(quotations::save(customerSide, head, prompt)), words);
  EXPECT_EQ(prompt.refused(quotations::save(supplierSide, {}, prompt)), "供货商名称必须填写！");
  for (const double yuan : {0.0, -1.0, 0.001})
    EXPECT_EQ(prompt.refused(quotations::stage("A", yuan, prompt)), "报价必须大于0！");

  EXPECT_EQ(sold(), 10);
  ASSERT_TRUE(quote(customerSide, customer(), 8, u"促销,快"_qs));
  ASSERT_TRUE(quote(customerSide, customer(), 9.5));
  setParameter("cs_xsdj", 1);  // what he paid last gives way
  EXPECT_EQ(sold(), 9.5);
  ASSERT_TRUE(quote(customerSide, customer(), 7));
  EXPECT_EQ(sold(), 7);  // the later one, although it is lower
  // The employee is gone: the rows stay.
  EXPECT_EQ(listed(customerSide), "2021-05-03 A 8  促销，快|2021-05-03 A 9.5  |2021-05-03 A 7  ");
  EXPECT_EQ(listed(customerSide, {.kind = u"促"_qs}), "2021-05-03 A 8  促销，快");
  EXPECT_EQ(listed(customerSide, {.key = u"6901"_qs, .boxes = quotations::kOnlyLast}), "2021-05-03 A 7  ");
  EXPECT_EQ(listed(customerSide, {.to = u"2021-05-02"_qs}), "");

  const std::int64_t id = lookupValue("select max(id) from jxc_khbj").toLongLong();
  EXPECT_EQ(prompt.refused(quotations::change(customerSide, id, 0, {}, prompt)), "报价必须大于0！");
  EXPECT_TRUE(quotations::change(customerSide, id, 7.256, u"改"_qs, prompt));
  EXPECT_EQ(sold(), 7.26);
  EXPECT_TRUE(quotations::remove(customerSide, id, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), "您确定要删除该客户报价信息吗！");
  EXPECT_EQ(sold(), 9.5);

  // What a supplier offers is no price for a customer.
  ASSERT_TRUE(quote(supplierSide, "100001", 4));
  EXPECT_EQ(sold(), 9.5);
  EXPECT_EQ(quotations::propose(supplierSide, "100001", "A")->price, 4);
  EXPECT_EQ(quotations::propose(supplierSide, "100001", "B")->price, 3);
  EXPECT_EQ(listed(supplierSide), "2021-05-03 A 4  ");
}

// A supplier's price list: no quantities, each row with a price above nothing; picked again goods take the new price.
TEST_F(QuotationsTest, APriceListComesInFromASpreadsheet) {
  RowSet sheet({"商品编号", "商品条码", "报价"});
  for (const auto& [code, barcode, price] : {std::tuple("A", "", "4.5"),
                                             {"", "6902", "0"},
                                             {"B", "", ""},
                                             {"", "6902", "2"},
                                             {"A", "", "5"},
                                             {"X", "", "1"}})
    for (const char* cell : {code, barcode, price})
      sheet.addText(cell);
  ASSERT_TRUE(quotations::stage("A", 9, prompt));
  const auto judged = judgeLines(sheet, quotations::sheet, quotations::lines(), {}, prompt);
  QStringList told;
  for (const ImportLine& each : *judged)
    told << each.words;
  EXPECT_EQ(told.join(u'|'), "可顺利导入|报价必须大于0|报价不正确|可顺利导入|商品重复|商品不存在");
  EXPECT_EQ(importLines(*judged, quotations::lines(), {}, Lines::Staging, prompt)->taken, 2);
  EXPECT_EQ(quotations::save(supplierSide, {u"甲"_qs, u"100001"_qs, u"2021-05-03"_qs, {}, {}}, prompt), 2);
  EXPECT_EQ(listed(supplierSide), "2021-05-03 A 4.5  |2021-05-03 B 2  ");
  EXPECT_TRUE(openSelect(stagedLines()).isEmpty());

  RowSet noPrice({"商品编号", "数量"});
  noPrice.addText("A");
  noPrice.addText("1");
  EXPECT_FALSE(judgeLines(noPrice, quotations::sheet, quotations::lines(), {}, prompt));
  EXPECT_EQ(prompt.lastNotice(), "表格中没有“报价”这一列，请按模板填写！");
}

// What an operator may ask for: an answer, never an error.
TEST_F(QuotationsTest, OddQuestionsAreAnswered) {
  execSql("update jxc_goods set g_name=? where g_sn='A'", sanitizeText(u"50%棉布'大'号"_qs));
  ASSERT_TRUE(quote(customerSide, customer(), 8, u"五折50%起"_qs));
  const QString found = listed(customerSide);
  EXPECT_NE(found, "");
  for (const char* key : {"50%棉", "布'大", "0%"})
    EXPECT_EQ(listed(customerSide, {.key = QString::fromUtf8(key)}), found) << key;
  for (const char* key : {"5%布", "%'--", "\\", "0%')"})
    EXPECT_EQ(listed(customerSide, {.key = QString::fromUtf8(key)}), "") << key;
  EXPECT_EQ(listed(customerSide, {.kind = u"50%"_qs}), found);
  EXPECT_EQ(listed(customerSide, {.kind = u"五%起"_qs}), "");
  EXPECT_EQ(listed(customerSide, {.from = u"0001-01-01"_qs, .to = u"9999-12-31"_qs}), found);
  EXPECT_EQ(listed(customerSide, {.from = u"9999-12-31"_qs, .to = u"0001-01-01"_qs}), "");
  EXPECT_EQ(listed(customerSide, {.partner = u"gone"_qs}), "");
}

}  // namespace jxc::quotations_test
