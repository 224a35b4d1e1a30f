// Changing and deleting goods, and moving classes with their numbers.
#include "masterdata/goods_change.h"

#include "core/session.h"
#include "harness/account_set_fixture.h"
#include "harness/articles.h"
#include "harness/row_texts.h"
#include "masterdata/goods_class_move.h"
#include "masterdata/goods_classes.h"

#include <tuple>

namespace jxc::goods_change_test {

class GoodsChangeTest : public test::AccountSetFixture {
 protected:
  GoodsClass addClass(std::int64_t parent, const QString& name) { return *addGoodsClass(parent, name, prompt); }

  std::int64_t addArticle(const QString& number, const QString& name, const QString& classNumber, double stock = 0) {
    GoodsDraft draft = test::article(number, name, classNumber, stock);
    draft.model = QStringLiteral("54");
    EXPECT_TRUE(addGoods(draft, prompt));
    return static_cast<std::int64_t>(lookupNumber("select id from jxc_goods where g_sn=?", number));
  }

  static void used(const QString& number) {
    insertRow("jxc_goodslist", {{"gl_flag", "xs"}, {"gl_djh", "XS21050310001"}, {"g_sn", number}});
  }

  // The tree in its order, with parents by name: "镜架<所有类别 1001".
  static QStringList tree() {
    QStringList lines;
    for (const Row row : openSelect(R"(select a.gc_name,b.gc_name as above,a.gc_sn
      from jxc_goodsclass a left join jxc_goodsclass b on a.gc_pid=b.gc_key order by a.gc_key)")) {
      lines << row.text("gc_name") + u'<' + row.text("above") + u' ' + row.text("gc_sn");
    }
    return lines;
  }

  GoodsClass frames = addClass(1, QStringLiteral("镜架"));
};

TEST_F(GoodsChangeTest, HistoryFollowsANewNameAndThePriceCounts) {
  const auto id = addArticle(u"30000001"_qs, u"钛架"_qs, frames.number, 4);
  const auto other = addArticle(u"30000002"_qs, u"板材架"_qs, frames.number);
  GoodsDraft draft = readGoods(id);
  EXPECT_EQ(draft.name, u"钛架"_qs);
  draft.name = u"钛架二代"_qs;
  draft.unit = u"片"_qs;
  draft.model = u"56"_qs;
  draft.purchasePrice = 12.5;
  draft.commissionKind = 2;
  draft.commission = 3;
  draft.number = u"X"_qs;  // stock stands under the number: it stays
  ASSERT_TRUE(changeGoods(id, draft, true, prompt));

  EXPECT_EQ(test::textsOf(openSelect("select g_name,dw_name,gg_name from jxc_goodslist where g_sn='30000001'")),
            QStringList("钛架二代 片 56"));
  // The cost is the ledger's business.
  EXPECT_EQ(test::textsOf(openSelect("select g_jj,g_scjj,g_pjjj,g_cbj,dw_name2 from jxc_goods where id=?", id)),
            QStringList("12.5 12.5 12.5 10 片"));
  EXPECT_EQ(lookupValue("select g_tc from jxc_goods where id=?", other), u"3"_qs);  // the whole class

  GoodsDraft unused = readGoods(other);
  unused.number = u"00000000"_qs;
  EXPECT_EQ(prompt.refused(changeGoods(other, unused, false, prompt)), u"商品编号已存在！"_qs);
  unused.number = u"B 2"_qs;  // never bought nor stocked: the number is free
  unused.name = u"钛架二代"_qs;
  ASSERT_TRUE(changeGoods(other, unused, false, prompt.willSayYes()));
  EXPECT_EQ(prompt.questions.last(), u"商品名称已经存在，确认修改吗？"_qs);
  EXPECT_EQ(lookupValue("select g_sn from jxc_goods where id=?", other), u"B 2"_qs);
  unused.salePrice = -1;
  EXPECT_FALSE(changeGoods(other, unused, false, prompt));
}

// Receipts made the last and the average price, somebody chose the letters, and the name was taken twice on purpose.
TEST_F(GoodsChangeTest, SavingOneFieldLeavesTheOthersAlone) {
  addArticle(u"30000001"_qs, u"钛架"_qs, frames.number);
  prompt.willSayYes();
  const auto id = addArticle(u"30000002"_qs, u"钛架"_qs, frames.number);
  execSql("update jxc_goods set g_sptm='690'");
  execSql("update jxc_goods set g_scjj=11,g_pjjj=10.5,g_jm='TJ88' where id=?", id);
  const auto asked = prompt.questions.size();
  const auto kept = [&] {
    const RowSet now = openSelect("select g_jj,g_scjj,g_pjjj,g_jm from jxc_goods where id=?", id);
    return now.text(0, 0) + u' ' + now.text(0, 1) + u' ' + now.text(0, 2) + u' ' + now.text(0, 3);
  };
  GoodsDraft draft = readGoods(id);
  draft.note = u"新款"_qs;
  draft.salePrice = 99;
  ASSERT_TRUE(changeGoods(id, draft, false, prompt));
  EXPECT_EQ(kept(), u"10 11 10.5 TJ88"_qs);
  EXPECT_EQ(prompt.questions.size(), asked);
  draft.purchasePrice = 12;
  draft.name = u"钛架二代"_qs;
  draft.barcode = u"691"_qs;
  ASSERT_TRUE(changeGoods(id, draft, false, prompt));
  EXPECT_EQ(kept(), u"12 12 12 TJED"_qs);
  EXPECT_EQ(prompt.questions.size(), asked);
  draft.name = u"钛架"_qs;
  draft.barcode = u"690"_qs;
  prompt.willSayYes();
  prompt.willSayYes();
  ASSERT_TRUE(changeGoods(id, draft, false, prompt));
  EXPECT_EQ(prompt.questions.size(), asked + 2);

  // A cell of the list, looked at as the form would; a copy leaves out what is this article's alone.
  EXPECT_TRUE(changeGoodsCell(id, "g_sj", u"88.555"_qs, prompt));
  EXPECT_TRUE(changeGoodsCell(id, "g_zdkc", u"6"_qs, prompt));
  EXPECT_FALSE(changeGoodsCell(id, "g_zdkc", u"-1"_qs, prompt));
  EXPECT_FALSE(changeGoodsCell(id, "g_sj", u"-1"_qs, prompt));
  prompt.willSayNo();
  EXPECT_TRUE(changeGoodsCell(id, "g_sptm", u"692"_qs, prompt));
  EXPECT_FALSE(changeGoodsCell(id, "g_sptm", u"690"_qs, prompt));
  draft = readGoods(id);
  EXPECT_EQ(std::tuple(draft.salePrice, draft.lowestStock, draft.barcode), std::tuple(88.56, 6, u"692"_qs));
  session().canSeeCost = false;
  const GoodsDraft copy = copyOfGoods(id);
  session().canSeeCost = true;
  EXPECT_EQ(std::tuple(copy.number + copy.barcode, copy.purchasePrice, copy.salePrice, copy.name),
            std::tuple(QString(), 0.0, 88.56, u"钛架"_qs));
}

TEST_F(GoodsChangeTest, UsedGoodsStayAndMonthFiguresToo) {
  setClock(u"2026-03-05"_qs);
  const auto fresh = addArticle(u"30000001"_qs, u"甲"_qs, frames.number, 4);
  const auto sold = addArticle(u"30000002"_qs, u"乙"_qs, frames.number);
  used(u"30000002"_qs);
  EXPECT_EQ(
      prompt.refused(deleteGoods(sold, prompt)),
      u"该商品已发生过业务，单据号：XS21050310001 不能删除！\r\n\r\n商品信息 30000002 乙\r\n\r\n不再使用的话，可以禁用。"_qs);
  EXPECT_FALSE(deleteGoods(fresh, prompt.willSayNo()));
  const auto month = lookupValue("select js_zje from jxc_kcjs where js_rq='2026-03' and ck_sn='100001'");
  EXPECT_TRUE(deleteGoods(fresh, prompt.willSayYes()));
  EXPECT_EQ(lookupValue("select count(*) from jxc_goodslist where g_sn='30000001'"), u"0"_qs);
  EXPECT_EQ(lookupValue("select top 1 log_note from jxc_log order by id desc"),
            u"删除商品，商品编号：30000001，商品名称：甲"_qs);
  EXPECT_EQ(lookupValue("select js_zje from jxc_kcjs where js_rq='2026-03' and ck_sn='100001'"), month);
}

TEST_F(GoodsChangeTest, ThousandsAtOnceAreAllOrNothing) {
  GoodsIds ids;
  {
    Transaction transaction(accountDb());
    for (int i = 0; i < 3000; ++i)
      ids.push_back(insertRow("jxc_goods", {{"g_sn", QString::number(40000000 + i)}, {"g_name", "x"}, {"g_jy", 0}}));
    transaction.commit();
  }
  used(u"40000007"_qs);
  int asked = 0;
  EXPECT_FALSE(deleteGoodsBatch(ids, [&](int) { return ++asked < 50; }));
  EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_name='x'"), u"3000"_qs);

  const auto result = deleteGoodsBatch(ids, {});
  ASSERT_TRUE(result);
  EXPECT_EQ(result->deleted, 2999);
  EXPECT_EQ(result->refusals,
            QStringList(u"商品编号：40000007 商品名称：x  已发生过业务，单据号：XS21050310001 不能删除！"_qs));
}

TEST_F(GoodsChangeTest, ClassGoesBelowAnotherWithItsGoods) {
  const GoodsClass glasses = addClass(1, u"太阳镜"_qs);
  const GoodsClass children = addClass(frames.key, u"儿童"_qs);
  addArticle(u"A"_qs, u"甲"_qs, children.number);
  ASSERT_TRUE(moveGoodsClass(frames.id, glasses.id, ClassPlacement::Below, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"类别移动成功！"_qs);
  EXPECT_EQ(lookupValue("select gc_sn from jxc_goods where g_sn='A'"), u"1002100100"_qs);
  EXPECT_EQ(nextGoodsSn(children.identity), u"50000001"_qs);  // the identity goes along unchanged

  EXPECT_FALSE(moveGoodsClass(glasses.id, frames.id, ClassPlacement::Below, prompt));  // its own child
  EXPECT_FALSE(moveGoodsClass(glasses.id, glasses.id, ClassPlacement::NextLine, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"移动的类别不能与目标类别相同，请选择其他类别！"_qs);
  const auto root = goodsClasses().front();
  EXPECT_FALSE(moveGoodsClass(glasses.id, root.id, ClassPlacement::PreviousLine, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"当前类别是最高级类别，不能出现同级别的类别！"_qs);
  const auto lenses = goodsClasses()[1];
  EXPECT_FALSE(moveGoodsClass(lenses.id, glasses.id, ClassPlacement::Below, prompt));
  // 10 digits below the moved class and 7 of the target are more than 15, although the tree would have room.
  const GoodsClass care = addClass(1, u"护理"_qs);
  const GoodsClass box = addClass(care.key, u"盒"_qs);
  EXPECT_FALSE(moveGoodsClass(glasses.id, box.id, ClassPlacement::Below, prompt));
  EXPECT_EQ(prompt.lastNotice(), u"类别‘儿童’ 层数移动之后超过底层，不能移动到下级类别！"_qs);
}

TEST_F(GoodsChangeTest, TheFourWalksKeepChildrenWithTheirParents) {
  const GoodsClass b = addClass(1, u"乙"_qs);
  const GoodsClass c = addClass(1, u"丙"_qs);
  addClass(b.key, u"乙下"_qs);
  addClass(c.key, u"丙下"_qs);
  QStringList downward;
  for (const GoodsClass& one : goodsClassesDownward())
    downward << one.name;
  EXPECT_TRUE(downward.join(u' ').endsWith(u"乙 乙下 丙 丙下"_qs));
  const auto place = [](const QString& name) {
    for (const GoodsClass& one : goodsClasses()) {
      if (one.name == name) return one;
    }
    return GoodsClass{};
  };
  const auto move = [&](const QString& what, const QString& where, ClassPlacement placement) {
    ASSERT_TRUE(moveGoodsClass(place(what).id, place(where).id, placement, prompt));
    QStringList keys;
    for (const GoodsClass& one : goodsClasses())
      keys << QString::number(one.key);
    EXPECT_EQ(keys, QStringList({u"1"_qs, u"2"_qs, u"3"_qs, u"4"_qs, u"5"_qs, u"6"_qs, u"7"_qs}));  // no gap, no double
  };
  const QStringList atFirst = {u"所有类别< "_qs,       u"镜片<所有类别 1000"_qs, u"镜架<所有类别 1001"_qs,
                               u"乙<所有类别 1002"_qs, u"丙<所有类别 1003"_qs,   u"乙下<乙 1002100"_qs,
                               u"丙下<丙 1003100"_qs};
  ASSERT_EQ(tree(), atFirst);
  move(u"丙"_qs, u"镜架"_qs, ClassPlacement::PreviousLine);  // forward, before
  EXPECT_EQ(tree(), QStringList({atFirst[0], atFirst[1], atFirst[4], atFirst[2], atFirst[3], atFirst[5], atFirst[6]}));
  move(u"丙"_qs, u"乙"_qs, ClassPlacement::NextLine);  // back, after
  EXPECT_EQ(tree(), atFirst);
  move(u"丙"_qs, u"镜架"_qs, ClassPlacement::NextLine);    // forward, after
  move(u"丙"_qs, u"乙"_qs, ClassPlacement::PreviousLine);  // back, before: stays
  EXPECT_EQ(tree(), QStringList({atFirst[0], atFirst[1], atFirst[2], atFirst[4], atFirst[3], atFirst[5], atFirst[6]}));
  // Beside a class of another parent it takes a number of that parent.
  move(u"丙下"_qs, u"乙下"_qs, ClassPlacement::PreviousLine);
  EXPECT_EQ(place(u"丙下"_qs).number, u"1002101"_qs);
  EXPECT_EQ(place(u"丙下"_qs).parentKey, place(u"乙"_qs).key);
}

TEST_F(GoodsChangeTest, LevelsChangeTheTreeAloneAndABranchWithGoodsStays) {
  const GoodsClass metal = addClass(frames.key, u"金属"_qs);
  const GoodsClass care = addClass(1, u"护理"_qs);
  addArticle(u"A1"_qs, u"钛架"_qs, metal.number);
  EXPECT_FALSE(raiseGoodsClass(frames.id, prompt)) << "above it there is only the root";
  EXPECT_TRUE(raiseGoodsClass(metal.id, prompt));
  EXPECT_EQ(tree(), QStringList({u"所有类别< "_qs, u"镜片<所有类别 1000"_qs, u"镜架<所有类别 1001"_qs,
                                 u"金属<所有类别 1001100"_qs, u"护理<所有类别 1002"_qs}));
  EXPECT_TRUE(lowerGoodsClass(metal.id, prompt));  // below the line after it
  EXPECT_TRUE(tree().contains(u"金属<护理 1001100"_qs));
  EXPECT_TRUE(lowerGoodsClass(care.id, prompt));  // the last line goes below the one before
  EXPECT_TRUE(tree().contains(u"护理<镜架 1002"_qs));

  EXPECT_FALSE(hangGoodsClass(frames.id, metal.id, prompt)) << "not below its own branch";
  EXPECT_EQ(prompt.refused(lowerGoodsClass(2, prompt)), u"该类别是系统内置类别，不能移动！"_qs);

  // The branch of 护理 holds goods of another number.
  EXPECT_EQ(prompt.refused(deleteGoodsClass(care.id, prompt)).section(u'\n', 0, 0),
            u"该类别下有商品信息，不能删除！\r"_qs);
  EXPECT_TRUE(hangGoodsClass(metal.id, frames.id, prompt));
  EXPECT_TRUE(deleteGoodsClass(care.id, prompt.willSayYes()));
  EXPECT_TRUE(tree().contains(u"金属<镜架 1001100"_qs));
}

}  // namespace jxc::goods_change_test
