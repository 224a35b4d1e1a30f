// Lenses: names, ranges, library, power table; prices set over many goods.
#include "masterdata/goods_lenses.h"

#include "core/clock.h"
#include "harness/account_set_fixture.h"
#include "harness/row_texts.h"
#include "masterdata/goods_change.h"
#include "masterdata/goods_classes.h"
#include "masterdata/goods_prices.h"

namespace jxc::goods_lenses_test {

class GoodsLensesTest : public test::AccountSetFixture {
 protected:
  GoodsDraft lens(const QString& product = u"1.56非球面"_qs) {
    GoodsDraft draft;
    draft.number = u"x"_qs;
    draft.name = product;
    draft.unit = u"片"_qs;
    draft.classNumber = u"1000"_qs;
    draft.purchasePrice = 28.345;
    draft.salePrice = 120;
    draft.levelPrices = {100, 90, 80, 0, 0};
    return draft;
  }
};

TEST_F(GoodsLensesTest, RangeMakesOneArticleAPair) {
  EXPECT_EQ(addLensRange(lens(), {0, 1, 0.25}, {0, 1, 0.25}, prompt), 25);
  const RowSet rows = openSelect("select * from jxc_goods where g_isjp=1 order by g_sn");
  ASSERT_EQ(rows.rowCount(), 25);
  const QStringList made = test::textsOf(rows, {"g_sn", "g_qgd", "g_sgd", "g_qc", "g_jm", "g_sj2", "g_kc"});
  EXPECT_EQ(made.first(), u"20000001 +0 +0 1.56非球面 1.56FQM 90 0"_qs);
  EXPECT_EQ(made[5], u"20000006 +0.25 +0 1.56非球面 1.56FQM 90 0"_qs);
  EXPECT_EQ(made.last(), u"20000025 +1 +1 1.56非球面 1.56FQM 90 0"_qs);
  EXPECT_EQ(rows[1].text("g_name"), u"1.56非球面:屈光度+0:散光度+0.25"_qs);
  EXPECT_EQ(lookupValue("select count(*) from jxc_kcsp where g_sn<>'00000000'"), u"0"_qs);
  EXPECT_EQ(nextGoodsSn(2), u"20000026"_qs);  // the next range goes on behind

  EXPECT_EQ(addLensRange(lens(), {-2, -1, 0.5}, {0, 0, 1.5}, prompt), 3);
  // A range over what is there: known pairs are counted, skipped or made again, however their powers are written.
  execSql("update jxc_goods set g_qgd='-2.00' where g_qgd='-2'");
  const auto count = countLensRange(u"1.56非球面"_qs, {-2, 1, 0.25}, {0, 1, 0.25}).value();
  EXPECT_EQ(std::pair(count.pairs, count.there), std::pair(65, 28));
  EXPECT_FALSE(countLensRange(u"1.56非球面"_qs, {-1, -2, 0.25}, {0, 0, 1}));
  EXPECT_EQ(addLensRange(lens(), {-2, -1.75, 0.25}, {0, 0, 1}, prompt), 1);
  EXPECT_EQ(prompt.refused(addLensRange(lens(), {-2, -1.75, 0.25}, {0, 0, 1}, prompt)),
            u"这个范围的光度都已存在，没有需要增加的商品！"_qs);
  EXPECT_EQ(addLensRange(lens(), {-2, -1.75, 0.25}, {0, 0, 1}, prompt, {}, PairsThere::AreMadeAgain), 2);
  execSql("delete from jxc_goods where g_qgd='-1.75' or g_sn>'20000028'");
  EXPECT_EQ(prompt.refused(addLensRange(lens(), {-1, -2, 0.25}, {0, 0, 0.25}, prompt)), u"屈光度范围不正确！"_qs);
  EXPECT_EQ(prompt.refused(addLensRange(lens(), {0, 0, 0.25}, {1, 0, 0.25}, prompt)), u"散光度范围不正确！"_qs);
  EXPECT_EQ(prompt.refused(addLensRange(lens({}), {0, 0, 0.25}, {0, 0, 0.25}, prompt)), u"商品名称必须填写！"_qs);
  // Stopped half-way: nothing of it stays.
  EXPECT_FALSE(addLensRange(lens(), {-8, 0, 0.25}, {-2, 0, 0.25}, prompt, [](int percent) { return percent < 40; }));
  EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_isjp=1"), u"28"_qs);
}

TEST_F(GoodsLensesTest, OpeningStockOfALensBeginsTodayWithThePlainAmount) {
  setClock(u"2026-03-05"_qs);
  EXPECT_EQ(powerText(-1.25), u"-1.25"_qs);
  EXPECT_EQ(powerText(0.5), u"+0.5"_qs);
  EXPECT_EQ(powerText(0), u"+0"_qs);
  GoodsDraft draft = lens();
  draft.number = u"20000001"_qs;
  draft.lens = LensPowers{draft.name, powerText(-1.25), powerText(-0.5)};
  draft.name = lensName(draft.name, draft.lens->sphere, draft.lens->cylinder);
  draft.openingStock = 3;
  draft.warehouse = u"100001"_qs;
  ASSERT_TRUE(addGoods(draft, prompt));
  EXPECT_EQ(test::textsOf(openSelect("select gl_kdrq,gl_zje,g_name from jxc_goodslist where g_sn='20000001'")),
            QStringList("2026-03-05 85.035 1.56非球面:屈光度-1.25:散光度-0.5"));  // 3 × 28.345

  // Only a purchase locks the number of a lens; its opening stock follows, its history keeps the old name.
  const auto id = static_cast<std::int64_t>(lookupNumber("select id from jxc_goods where g_sn='20000001'"));
  GoodsDraft changed = readGoods(id);
  ASSERT_TRUE(changed.lens);
  changed.number = u"JP-1"_qs;
  changed.lens->cylinder = powerText(-0.75);
  changed.name = lensName(changed.lens->product, changed.lens->sphere, changed.lens->cylinder);
  ASSERT_TRUE(changeGoods(id, changed, false, prompt));
  EXPECT_EQ(lookupValue("select kc_zsl from jxc_kcsp where g_sn='JP-1'"), u"3"_qs);
  EXPECT_EQ(lookupValue("select g_name from jxc_goodslist where g_sn='JP-1'"), u"1.56非球面:屈光度-1.25:散光度-0.5"_qs);
  EXPECT_EQ(lookupValue("select g_sgd from jxc_goods where g_sn='JP-1'"), u"-0.75"_qs);
}

TEST_F(GoodsLensesTest, LibraryHoldsOrdinaryAndContactLenses) {
  EXPECT_EQ(prompt.refused(saveLensProduct({.brand = u" "_qs}, prompt)), u"品牌名称不能为空！"_qs);
  ASSERT_TRUE(saveLensProduct({.brand = u"海岸"_qs, .item1 = u"8.6"_qs, .item2 = u"38%"_qs, .contact = true}, prompt));
  ASSERT_TRUE(saveLensProduct({.brand = u"晶朗"_qs, .item1 = u"加硬"_qs, .item2 = u"1.56"_qs}, prompt));
  const auto list = [](const QString& typed) {
    return test::textsOf(openSelect(lensProductsStatement(typed)), {"jp_spmc"});
  };
  EXPECT_EQ(list({}), QStringList({u"晶朗加硬折射1.56"_qs, u"海岸8.6含水38％"_qs}));  // ordinary lenses first
  EXPECT_EQ(list(u"jlj"_qs), QStringList(u"晶朗加硬折射1.56"_qs));
  auto product = readLensProduct(1);
  EXPECT_TRUE(product.contact);
  product.contact = false;
  ASSERT_TRUE(saveLensProduct(product, prompt));
  EXPECT_EQ(lookupValue("select jp_hsl from jxc_jplx where id=1"), QString());
  EXPECT_TRUE(deleteLensProduct(1, prompt.willSayYes()));
  EXPECT_EQ(list({}).size(), 1);
}

TEST_F(GoodsLensesTest, PowerTableStandsByTheTextOfThePowers) {
  const auto put = [](const char* number, const char* sphere, const char* cylinder, double stock) {
    insertRow(
        "jxc_goods",
        {{"g_sn", number}, {"g_name", "1.60"}, {"g_isjp", 1}, {"g_qgd", sphere}, {"g_sgd", cylinder}, {"g_kc", stock}});
    insertRow("jxc_kcsp", {{"g_sn", number}, {"ck_sn", "100001"}, {"kc_sl", stock - 1}});
  };
  put("1", "-1.25", "-0.5", 7);
  put("2", "-1.25", "-0.75", 8);
  put("3", "-1.250", "-0.5", 9);
  const auto names = [](const QString& typed, const QString& warehouse) {
    return answer(lensNames, {.warehouse = warehouse, .key = typed});
  };
  ASSERT_EQ(names(u"1.6"_qs, {}).rowCount(), 1);
  EXPECT_EQ(names(u"1.6"_qs, {}).text(0, 0), u"1.60"_qs);
  EXPECT_EQ(names(u"1.6"_qs, u"100002"_qs).rowCount(), 0);
  const PowerTable table = lensPowerTable(u"1.60"_qs, {});
  EXPECT_EQ(table.spheres, QStringList({u"-1.25"_qs, u"-1.250"_qs}));
  EXPECT_EQ(table.cylinders, QStringList({u"-0.5"_qs, u"-0.75"_qs}));
  EXPECT_EQ(table.cells[0][1], 8);
  EXPECT_EQ(table.cells[1][1], std::nullopt);
  EXPECT_EQ(lensPowerTable(u"1.60"_qs, {.warehouse = u"100001"_qs}).cells[1][0], 8);

  // By product: other names, one table; powers ascend as numbers and are one however they are written.
  put("4", "+0.5", "-10", 1);
  execSql("update jxc_goods set g_qc='1.60',g_name=g_sn");
  execSql("update jxc_goods set g_isjp=0 where g_sn='00000000'");
  EXPECT_EQ(answer(lensProducts, {.key = u"-1.25"_qs}).rowCount(), 1);
  EXPECT_EQ(answer(lensProducts, {.key = u"-1"_qs}).rowCount(), 0);
  const PowerTable whole = lensProductTable(u"1.60"_qs, {});
  EXPECT_EQ(whole.spheres, QStringList({u"-1.25"_qs, u"+0.5"_qs}));
  EXPECT_EQ(whole.cylinders, QStringList({u"-10"_qs, u"-0.75"_qs, u"-0.5"_qs}));
  EXPECT_EQ(whole.cells[0][2], 16);
  EXPECT_EQ(whole.cells[1][2], std::nullopt);
}

TEST_F(GoodsLensesTest, PricesOfAClassAreComputedFromOneAnother) {
  const GoodsClass frames = *addGoodsClass(1, u"镜架"_qs, prompt);
  const GoodsClass plates = *addGoodsClass(frames.key, u"板材"_qs, prompt);
  GoodsDraft draft = lens();
  for (const auto& [number, goodsClass] : {std::pair(u"A"_qs, frames), std::pair(u"B"_qs, plates)}) {
    draft.number = number;
    draft.classNumber = goodsClass.number;
    draft.warnSameName = false;
    ASSERT_TRUE(addGoods(draft, prompt));
  }
  const auto price = [](const char* number) { return lookupValue("select g_sj1 from jxc_goods where g_sn=?", number); };
  // Level one from the preset sale price; subclasses have prices of their own; nothing is rounded.
  EXPECT_EQ(setBulkPrice({.target = bulkPriceTargets()[0], .source = bulkPriceSources()[0], .factor = 0.8512},
                         {.classNumber = frames.number}),
            1);
  EXPECT_EQ(price("A"), u"102.144"_qs);
  EXPECT_EQ(price("B"), u"100"_qs);
  setBulkPrice({.target = bulkPriceTargets()[0], .source = bulkPriceSources()[1]}, {});
  EXPECT_EQ(price("A"), u"102.144"_qs);
  // Marked goods alone: to the half yuan, and a price for all of them.
  const BulkGoods marked{.ids = {{static_cast<std::int64_t>(lookupNumber("select id from jxc_goods where g_sn='A'"))}}};
  EXPECT_EQ(countGoods(marked), 1);
  setBulkPrice({.target = bulkPriceTargets()[0], .source = bulkPriceSources()[1], .factor = 0.95, .step = 0.5}, marked);
  EXPECT_EQ(price("A"), u"97"_qs);
  setBulkPrice({.target = bulkPriceTargets()[0], .source = {}, .factor = 88}, marked);
  EXPECT_EQ(price("A"), u"88"_qs);
  EXPECT_EQ(price("B"), u"100"_qs);

  EXPECT_EQ(prompt.refused(savePosCommissions(u"A"_qs, {.workshop = {-0.5, true}}, prompt)), u"提成不能小于0！"_qs);
  ASSERT_TRUE(savePosCommissions(u"A"_qs, {.workshop = {5, true}, .salesman = {3, false}}, prompt));
  EXPECT_EQ(readPosCommissions(u"A"_qs).workshop.value, 5);
  EXPECT_TRUE(readPosCommissions(u"A"_qs).workshop.yuan);
  EXPECT_EQ(readPosCommissions(u"B"_qs).workshop.value, 0);
}

}  // namespace jxc::goods_lenses_test
