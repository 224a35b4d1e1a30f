// Catalogue: class numbers, goods numbers, adding an article with opening stock.
#include "masterdata/goods.h"

#include "harness/account_set_fixture.h"
#include "harness/articles.h"
#include "harness/row_texts.h"
#include "masterdata/goods_classes.h"

namespace jxc::goods_test {

class GoodsTest : public test::AccountSetFixture {
 protected:
  GoodsClass addClass(std::int64_t parent, const QString& name) {
    const auto added = addGoodsClass(parent, name, prompt);
    EXPECT_TRUE(added);
    return added.value_or(GoodsClass{});
  }

  GoodsDraft frame(const QString& number, const QString& classNumber) {
    GoodsDraft draft = test::article(number, u"钛架 8801"_qs, classNumber);
    draft.purchasePrice = 45.5;
    draft.salePrice = 198;
    return draft;
  }
};

TEST_F(GoodsTest, ClassTreeGrowsByFourThenThreeDigitsAndStopsAtFiveLevels) {
  const GoodsClass frames = addClass(1, u"镜架"_qs);
  EXPECT_EQ(frames.number, u"1001"_qs);
  EXPECT_EQ(frames.mnemonic, u"JJ"_qs);
  const GoodsClass first = addClass(frames.key, u"板材"_qs);
  const GoodsClass second = addClass(frames.key, u"金属"_qs);
  EXPECT_EQ(first.number, u"1001100"_qs);
  EXPECT_EQ(second.number, u"1001101"_qs);

  GoodsClass deepest = first;
  for (int level = 3; level <= 5; ++level)
    deepest = addClass(deepest.key, u"下级"_qs);
  EXPECT_EQ(deepest.number.size(), 16);
  EXPECT_FALSE(addGoodsClass(deepest.key, u"再下级"_qs, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"该类别层数已到底层，不能添加下级类别！"_qs);
  EXPECT_EQ(prompt.refused(deleteGoodsClass(goodsClasses()[1].id, prompt)),
            u"该类别是系统内置类别，不能删除！\r\n\r\n商品类别 1000 镜片\r\n\r\n不再使用的话，可以改名。"_qs);

  // Keys lead goods numbers: 20 would lead the same numbers as 2, so it is left out.
  for (int i = 0; i < 14; ++i)
    addClass(1, u"类%1"_qs.arg(i));
  EXPECT_TRUE(lookupValue("select gc_key from jxc_goodsclass where gc_key=20").isEmpty());
  EXPECT_EQ(lookupValue("select gc_key from jxc_goodsclass where gc_key=21"), u"21"_qs);
}

TEST_F(GoodsTest, NumbersOfAClassBeginWithItsIdentity) {
  const GoodsClass frames = addClass(1, u"镜架"_qs);  // identity 3
  EXPECT_EQ(proposedGoodsSn(frames.number), u"30000001"_qs);
  ASSERT_TRUE(addGoods(frame(u"30000001"_qs, frames.number), prompt));
  EXPECT_EQ(proposedGoodsSn(frames.number), u"30000002"_qs);
  // A number typed by hand that is no number or of another length does not disturb the series.
  GoodsDraft odd = frame(u"3ABCDEFG"_qs, frames.number);
  odd.warnSameName = false;
  ASSERT_TRUE(addGoods(odd, prompt));
  EXPECT_EQ(nextGoodsSn(frames.identity), u"30000002"_qs);
}

TEST_F(GoodsTest, OpeningStockStandsBeforeAllDocuments) {
  setClock(u"2026-03-05 10:00:00"_qs);
  const GoodsClass frames = addClass(1, u"镜架"_qs);
  GoodsDraft draft = frame(u"30000001"_qs, frames.number);
  draft.openingStock = 4;
  ASSERT_TRUE(addGoods(draft, prompt));

  EXPECT_EQ(
      test::textsOf(openSelect("select gl_flag,gl_kdrq,gl_kczje,ghs_name from jxc_goodslist where g_sn='30000001'")),
      QStringList("qc 2021-01-01 182 期初建账"));  // 4 × 45.50
  EXPECT_EQ(lookupValue("select kc_zsl from jxc_kcsp where g_sn='30000001'"), u"4"_qs);
  EXPECT_EQ(lookupValue("select js_zje from jxc_kcjs where js_rq='2026-03' and ck_sn='100001'"), u"182"_qs);
  EXPECT_EQ(lookupValue("select g_qc from jxc_goods where g_sn='30000001'"), draft.name);
}

TEST_F(GoodsTest, RefusalsComeInTheOrderOfTheFormAndChangeNothing) {
  const GoodsClass frames = addClass(1, u"镜架"_qs);
  const GoodsDraft good = frame(u"30000001"_qs, frames.number);
  const auto refused = [&](auto spoil, const QString& text) {
    GoodsDraft draft = good;
    spoil(draft);
    EXPECT_FALSE(addGoods(draft, prompt)) << text.toStdString();
    EXPECT_EQ(prompt.lastNotice(), text);
  };
  refused([](GoodsDraft& d) { d.classNumber.reset(), d.number.clear(); }, u"类别名称必须填写！"_qs);
  refused([](GoodsDraft& d) { d.number = u"  "_qs, d.name.clear(); }, u"商品编号必须填写！"_qs);
  refused([](GoodsDraft& d) { d.name.clear(); }, u"商品名称必须填写！"_qs);
  refused([](GoodsDraft& d) { d.unit.clear(); }, u"商品单位必须填写！"_qs);
  refused([](GoodsDraft& d) { d.number = u"00000000"_qs; }, u"商品编号已经存在，请重新输入！"_qs);

  GoodsDraft withBarcode = good;
  withBarcode.barcode = u"6901"_qs;
  ASSERT_TRUE(addGoods(withBarcode, prompt));
  GoodsDraft same = withBarcode;
  same.number = u"30000002"_qs;
  prompt.willSayYes();
  EXPECT_FALSE(addGoods(same, prompt.willSayNo()));
  EXPECT_TRUE(prompt.questions.contains(u"商品条码已经存在，确认输入吗？"_qs));
  EXPECT_TRUE(prompt.questions.contains(u"商品名称已经存在，确认输入吗？"_qs));
  EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_sn<>'00000000'"), u"1"_qs);

  // Text wider than its column is refused by name and leaves nothing behind.
  same.name = QString(200, QChar(u'长'));
  prompt.willSayYes();
  EXPECT_THROW(addGoods(same, prompt), DbError);
  EXPECT_TRUE(prompt.questions.contains(u"商品条码已经存在，确认输入吗？"_qs));
  EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_sn<>'00000000'"), u"1"_qs);
}

}  // namespace jxc::goods_test
