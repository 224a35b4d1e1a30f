// 期初建账: a shop's first day by all ways in, and what may be corrected and taken out until when.
#include "inventory/opening_stock.h"

#include "masterdata/lens_sheet.h"
#include "stock/line_import.h"
#include "stock/opening_row.h"
#include "stock/shop.h"

namespace jxc::opening_stock_test {

class OpeningStockTest : public test::ShopTest {
 protected:
  OpeningStockTest() {
    addGoods("A", 10, "6901");
    addGoods("B", 3, "6902");
  }
  bool enter(const QString& goods, double quantity, double cost) {
    return opening_stock::enter({goods, test::mainWarehouse, quantity, cost}, prompt);
  }
  bool change(double quantity, double cost) {
    return opening_stock::change({u"A"_qs, test::mainWarehouse, quantity, cost}, prompt);
  }
  QString removed(const QStringList& goods) {
    const auto result = opening_stock::remove(test::mainWarehouse, goods);
    return QString::number(result->goods) + u' ' + result->refusals.join(u'|');
  }
  static QString month() { return row("select js_sl,js_zje,js_cgsl,js_cgje from jxc_kcjs where ck_sn='100001'"); }
  static QString ledger() {
    return row(
        "select "
        "gl_flag,gl_djh,gl_kdrq,g_sn,gl_dj,gl_sl,gl_zje,gl_je,gl_taxdj,gl_kc,gl_pjjj,gl_kczje,gl_sysl,gl_checker,"
        "gl_chkrq,ghs_name,ck_name from jxc_goodslist where g_sn='A' order by id");
  }
  static QString goods(const QString& number) {
    return row("select g_kc,g_jj,g_scjj,g_pjjj from jxc_goods where g_sn=?", number);
  }
  static LinePlace place() { return {.date = u"2021-05-03"_qs, .warehouse = test::mainWarehouse}; }
};

TEST_F(OpeningStockTest, OneGoodsIsEnteredCorrectedAndTakenOut) {
  for (const auto& [entry, words] : {std::pair(opening_stock::Entry{u"X"_qs, test::mainWarehouse}, "请选择商品！"),
                                     {{u"A"_qs, {}}, "请选择仓库！"},
                                     {{u"A"_qs, test::mainWarehouse, -1}, "期初数量不能为负数！"},
                                     {{u"A"_qs, test::mainWarehouse, 1, -1}, "成本价不正确，请重新输入！"},
                                     {{u"A"_qs, test::mainWarehouse, 1e8}, "数量过大，请检查是否输入了条码或单价！"}})
    EXPECT_EQ(prompt.refused(opening_stock::enter(entry, prompt)), words);

  ASSERT_TRUE(enter("A", 3, 4.555));
  EXPECT_EQ(ledger(), "qc  2021-01-01 A 4.555 3 13.67 13.67 4.555 3 4.555 13.67 3 admin 2021-05-03 期初建账 主仓库");
  EXPECT_EQ(balanceOf("A"), "3 3 4.555");
  EXPECT_EQ(goods("A"), "3 4.555 4.555 4.555");
  EXPECT_EQ(month(), "3 13.67 0 0");
  EXPECT_EQ(prompt.refused(enter("A", 1, 1)), "该仓库已有该商品，可以修改其数量和成本价！");

  // A barcode in the quantity; nothing happens unless it is meant.
  prompt.willSayNo().willSayNo().willSayNo();
  EXPECT_FALSE(enter("B", 1500000, 3));
  EXPECT_FALSE(change(1500000, 3));
  EXPECT_EQ(opening_stock::enterClass(test::mainWarehouse, "1003", 1500000, prompt), std::nullopt);
  EXPECT_EQ(prompt.questions.size(), 3);
  for (const QString& question : std::exchange(prompt.questions, {}))
    EXPECT_TRUE(question.contains(u"是不是把条码扫进了数量栏"_qs)) << question.toStdString();

  // Half as many more at another cost: the month moves by the difference, the row of the ledger is the same one.
  ASSERT_TRUE(change(5, 2));
  EXPECT_EQ(ledger(), "qc  2021-01-01 A 2 5 10 10 2 5 2 10 5 admin 2021-05-03 期初建账 主仓库");
  EXPECT_EQ(balanceOf("A"), "5 5 2");
  EXPECT_EQ(goods("A"), "5 2 2 2");
  EXPECT_EQ(month(), "5 10 0 0");
  EXPECT_EQ(test::brokenInvariants(), QStringList());

  // Nothing of it is known too.
  ASSERT_TRUE(enter("B", 0, 3));
  EXPECT_EQ(balanceOf("B"), "0 0 3");
  EXPECT_EQ(removed({u"A"_qs, u"B"_qs, u"gone"_qs}), "2 ");
  EXPECT_EQ(ledger() + goods("A") + balanceOf("A"), "0 2 2 2no row");
  EXPECT_EQ(month(), "0 0 -5 -10");
  EXPECT_EQ(lookupValue("select log_note from jxc_log where log_note like '%商品编号：A，%'"),
            "删除期初建账商品数据商品编号：A，商品名称：镜架A，操作员：admin，仓库编号：100001，库存数量：5");
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

// As told before, the figure of the first day would become the stock of today.
TEST_F(OpeningStockTest, AnyDocumentOfAnyKindOrOtherRowKeepsTheFigureAsItIs) {
  ASSERT_TRUE(enter("A", 10, 2));
  const auto words = [](const QString& number, const char* what) {
    return u"商品编号：A 商品名称：镜架A  已发生过业务，单据号：%1 %2"_qs.arg(number, what);
  };
  for (const DocumentFamily& family : documentFamilies()) {
    if (family.sharesTables) continue;
    const Transaction trial(accountDb());
    std::vector<Field> head;
    if (!family.into.empty()) head = {{family.warehouse, u"100002"}, {family.into, test::mainWarehouse}};
    if (!family.whole.goods.empty()) head = {{family.whole.goods, u"A"}};
    const QString number =
        test::waitingDocument(family, "2021-05-03", head, {{family.whole.goods.empty() ? "A" : "B", 1, 2}});
    EXPECT_EQ(prompt.refused(change(9, 2)), words(number, "不能修改！"));
    EXPECT_EQ(removed({u"A"_qs}), "0 " + words(number, "不能删除！"));
  }
  // Nobody else's document is in the way: of another warehouse, of another goods.
  test::waitingDocument(families::sale, "2021-05-03", {{"ck_sn", u"100002"}}, {{"A", 1, 2}});
  test::waitingDocument(families::sale, "2021-05-03", {}, {{"B", 1, 2}});
  ASSERT_TRUE(change(9, 2));

  // A closing or a sync left a row: it keeps its figures, and the goods may only be taken out whole.
  insertRow("jxc_goodslist", {{"gl_flag", "qc"},
                              {"gl_djh", ""},
                              {"ghs_name", u"库存同步"},
                              {"g_sn", "A"},
                              {"ck_sn", test::mainWarehouse},
                              {"gl_kdrq", u"2021-05-01"},
                              {"gl_sl", 4.0}});
  EXPECT_EQ(prompt.refused(change(8, 2)), words(u"库存同步"_qs, "不能修改！"));
  EXPECT_EQ(removed({u"A"_qs}), "1 ");
}

// 300 frames from a file, two lens products by their sheets, sundries by class; the first receipt and the first sale
// stand on them.
TEST_F(OpeningStockTest, AShopsFirstDay) {
  RowSet sheet({"商品编号", "商品条码", "数量", "成本价"});
  const auto sheetRow = [&](const QString& code, const QString& barcode, const char* quantity, const char* cost) {
    for (const QString& cell : {code, barcode, QString(quantity), QString(cost)})
      sheet.addText(cell.toStdString());
  };
  for (int i = 0; i < 300; ++i) {
    addGoods(u"F%1"_qs.arg(i), 50);
    sheetRow(u"F%1"_qs.arg(i), {}, "2", i % 2 == 0 ? "40" : "");  // without a cost at its own price
  }
  sheetRow({}, u"6901"_qs, "10", "5");
  sheetRow(u"A"_qs, {}, "1", "5");
  sheetRow(u"B"_qs, {}, "-1", "x");
  sheetRow(u"none"_qs, {}, "1e9", "");
  const auto judged = judgeLines(sheet, opening_stock::sheet, opening_stock::lines(), place(), prompt);
  ASSERT_TRUE(judged);
  QStringList told;
  for (std::size_t i = 299; i < judged->size(); ++i)
    told << (*judged)[i].words;
  EXPECT_EQ(told.join(u" | "_qs), "可顺利导入 | 可顺利导入 | 商品重复 | 数量不能为负数；成本价不正确 | 商品不存在");
  bool goOn = false;
  EXPECT_FALSE(
      importLines(*judged, opening_stock::lines(), place(), Lines::Waiting, prompt, [&](int) { return goOn; }));
  EXPECT_EQ(balanceOf("F0"), "no row");  // stopped: nothing of it stays
  EXPECT_EQ(importLines(*judged, opening_stock::lines(), place(), Lines::Waiting, prompt)->taken, 301);
  EXPECT_EQ(balanceOf("F0") + u' ' + balanceOf("F1") + u' ' + balanceOf("A"), "2 2 40 2 2 50 10 10 5");
  EXPECT_EQ(judgeLines(sheet, opening_stock::sheet, opening_stock::lines(), place(), prompt)->front().words,
            "该仓库已有该商品");

  for (const auto& [code, product, sphere] : {std::tuple("L1", "清晰1.56", "-1.00"), {"L2", "清晰1.60", "-2.00"}}) {
    addGoods(QString(code), 20);
    execSql("update jxc_goods set g_isjp=1,g_qc=?,g_qgd=?,g_sgd='0' where g_sn=?", QString(product), QString(sphere),
            QString(code));
  }
  std::vector<LensSheet> sheets{readLensSheet(u"清晰1.56"_qs, opening_stock::lines(), place()),
                                readLensSheet(u"清晰1.60"_qs, opening_stock::lines(), place())};
  for (LensSheet& each : sheets)
    each.cells.front().quantity = 6;
  sheets[1].price = 18;
  EXPECT_EQ(takeLensSheets(sheets, opening_stock::lines(), place(), Lines::Waiting, prompt)->lines, 2);
  EXPECT_EQ(balanceOf("L1") + u' ' + balanceOf("L2"), "6 6 20 6 6 18");

  // Exactly this class: not what is below it, and what the warehouse knows stays.
  for (const auto& [code, in] : {std::pair("S1", "1003"), {"S2", "1003"}, {"S3", "1003100"}}) {
    addGoods(QString(code), 1.5);
    execSql("update jxc_goods set gc_sn=? where g_sn=?", QString(in), QString(code));
  }
  ASSERT_TRUE(enter("S1", 7, 1));
  EXPECT_EQ(opening_stock::enterClass(test::mainWarehouse, "1003", 20, prompt), 1);
  EXPECT_EQ(balanceOf("S1") + u' ' + balanceOf("S2") + u' ' + balanceOf("S3"), "7 7 1 20 20 1.5 no row");
  EXPECT_EQ(goods("S2"), "20 1.5 1.5 1.5");
  EXPECT_EQ(opening_stock::enterClass(test::mainWarehouse, "1777", 20, prompt), 0) << "deleted while it was chosen";

  // 150 × 2 × 40 + 150 × 2 × 50 + 50 + 120 + 108 + 7 + 30
  EXPECT_EQ(month(), "649 27315 0 0");
  receive("2021-05-03", {{"A", 10, 8}});
  EXPECT_EQ(balanceOf("A"), "20 20 6.5");
  const QString sale = sell("2021-05-03", {{"A", 4, 20}});
  EXPECT_EQ(row("select gl_sl,gl_cbj,gl_zcb,gl_lr from jxc_goodslist where gl_djh=?", sale), "4 6.5 26 54");
  EXPECT_EQ(balanceOf("A"), "16 16 6.5");
  EXPECT_FALSE(change(10, 5));
  EXPECT_EQ(test::brokenInvariants(), QStringList());
}

}  // namespace jxc::opening_stock_test
