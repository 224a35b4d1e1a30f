// Adding goods and units as an operator does it; what no catalogue should have to take is refused in clear words or
// cleaned, and nothing is half done.
#include "harness/files.h"
#include "masterdata/goods.h"
#include "masterdata/goods_classes.h"
#include "masterdata/screens/goods_form.h"
#include "masterdata/screens/spxxgl_add.h"
#include "screens/harness/screen_test.h"

#include <QFile>
#include <QLabel>
#include <QTreeWidget>

namespace jxc::test::catalog_add_test {

class CatalogAddTest : public ScreenTest {
 protected:
  static double count() { return lookupNumber("select count(*) from jxc_goods where g_sn<>'00000000'"); }
  GoodsClass frames = *addGoodsClass(1, QStringLiteral("镜架"), prompt);

  /// F2 on the class input, and a class taken from the tree.
  void chooseClass(ui::Screen& screen, const QString& number) {
    expectScreen("F_Spxxgl_Class", [number](ui::Screen& s) {
      auto* tree = s.findChild<QTreeWidget*>(QStringLiteral("treeLb"));
      const auto items = tree->findItems(number, Qt::MatchExactly | Qt::MatchRecursive);
      ASSERT_EQ(items.size(), 1);
      tree->setCurrentItem(items.front());
      press(s, "F5");
    });
    screen.field("gc_name").pick();
  }
};

TEST_F(CatalogAddTest, OneArticleAfterTheOtherWithItsOpeningStock) {
  open("F_Spxxgl_Add", [&](ui::Screen& s) {
    chooseClass(s, QStringLiteral("镜架"));
    EXPECT_EQ(s.field("g_sn").text(), u"30000001"_qs);
    type(s, "g_name", u"钛架 'A' 100%");
    type(s, "g_jj", u"45.5");
    type(s, "g_kc", u"4");
    press(s, "F5");
    // Cleared for the next one, in the same class and with the next number.
    EXPECT_EQ(s.field("g_sn").text(), u"30000002"_qs);
    EXPECT_TRUE(s.field("g_name").isEmpty());
    EXPECT_EQ(s.field("g_kc").number(), 0);

    // The code of a maker's box: name, -, model; its second and fifth field make the origin.
    enter(s, "tewm", u"板材架，丹阳，B-1160，x，江苏");
    EXPECT_EQ(s.field("g_name").text(), u"板材架"_qs);
    EXPECT_EQ(s.field("gg_name").text(), u"B-1160"_qs);
    EXPECT_EQ(s.field("g_sccs").text(), u"江苏 丹阳"_qs);
    EXPECT_TRUE(s.field("tewm").isEmpty());
    enter(s, "tewm", u"只有，三，段");
    EXPECT_EQ(s.field("g_name").text(), u"板材架"_qs);
    press(s, "F5");
  });
  const RowSet goods = openSelect("select * from jxc_goods where gc_sn='1001' order by g_sn");
  ASSERT_EQ(goods.rowCount(), 2);
  EXPECT_EQ(goods[0].text("g_name"), u"钛架 ‘A‘ 100％"_qs);
  EXPECT_EQ(goods[0].number("g_kc"), 4);
  EXPECT_EQ(goods[1].text("gg_name"), u"B-1160"_qs);
  EXPECT_EQ(lookupValue("select gl_kczje from jxc_goodslist where g_sn='30000001'"), u"182"_qs);
}

TEST_F(CatalogAddTest, MissingUnitIsMadeOnTheWay) {
  expectScreen("F_Dwgl", [&](ui::Screen& s) {
    press(s, "F2", QStringLiteral("单位名称必须填写！"));
    type(s, "tname", u"副");
    press(s, "F2");
    press(s, "F5");  // takes the new one
  });
  open("F_Spxxgl_Add", [&](ui::Screen& s) {
    choose(s, "dw_name", QStringLiteral("增加新单位..."));
    EXPECT_EQ(s.field("dw_name").text(), u"副"_qs);
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_dw where dw_name='副'"), u"1"_qs);
}

TEST_F(CatalogAddTest, PurchaseGetsTheNewNumberBack) {
  auto& screen = ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add");
  using OpeningStock = TF_Spxxgl_Add::OpeningStock;
  expectScreen("F_Spxxgl_Add", [&](ui::Screen& s) {
    EXPECT_FALSE(s.field("g_kc").isVisible());
    chooseClass(s, QStringLiteral("镜架"));
    type(s, "g_name", u"新款镜架");
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_EQ(screen.addOne(OpeningStock::BroughtByDocument), u"30000001"_qs);

  expectScreen("F_Spxxgl_Add", [&](ui::Screen& s) {
    EXPECT_TRUE(s.field("g_kc").isVisible());
    press(s, "Esc");
  });
  EXPECT_EQ(screen.addOne(OpeningStock::Offered), QString());
}

TEST_F(CatalogAddTest, NumbersByHandAndHiddenInputs) {
  setParameter("cs_spbh", 0);
  setParameter("cs_cs013", 0);
  setRights(QStringLiteral("100002"), "qtcz", QStringLiteral("1111111111"));
  becomeOperator(QStringLiteral("clerk"), QStringLiteral("100002"), QStringLiteral("100002"));
  open("F_Spxxgl_Add", [&](ui::Screen& s) {
    chooseClass(s, QStringLiteral("镜架"));
    EXPECT_TRUE(s.field("g_sn").isEmpty());
    EXPECT_FALSE(s.field("g_sj3").isVisible());
    EXPECT_FALSE(s.field("comTcbl").isVisible());  // commissions need a right of their own
    press(s, "F5", QStringLiteral("商品编号必须填写！"));
    EXPECT_TRUE(s.field("g_sn").hasFocus());
  });
}

TEST_F(CatalogAddTest, NamesCodesPricesAndPictures) {
  open("F_Spxxgl_Add", [&](ui::Screen& s) {
    auto& form = static_cast<GoodsForm&>(s);
    chooseClass(s, u"镜架"_qs);

    // Blanks are no code, and those around one do not belong to it.
    type(s, "g_sn", u"   ");
    type(s, "g_name", u"x");
    press(s, "F5", u"商品编号必须填写！"_qs);
    s.field("g_sn").setText(u"  K 1\t"_qs);
    s.field("g_name").setText(u"O'Neil \"100%\"\x01\r\n😀"_qs);
    // The minus key does nothing here, and what is pasted does not pass either.
    type(s, "g_sj", u"-5");
    EXPECT_EQ(s.field("g_sj").number(), 5);
    s.field("g_sj").setNumber(-5);
    press(s, "F5", u"价格和数量不能小于零！"_qs);
    EXPECT_EQ(count(), 0);
    s.field("g_sj").setNumber(5);

    writeBytes(file(u"none.jpg"_qs), "no picture");
    expectNotice(u"图片文件不能读取，请选择其他图片！"_qs);
    form.usePicture(file(u"none.jpg"_qs));
    EXPECT_EQ(s.findChild<QLabel*>(u"imagePic"_qs)->text(), u"没有图片"_qs);
    press(s, "F5");
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(QFile::exists(file(u"picture/K 1.jpg"_qs)));

    // Ten thousand characters: as many as the column holds, no more can be keyed in.
    s.field("g_sn").setText(u"K2"_qs);
    s.field("g_name").setText(QString(10000, u'长'));
    EXPECT_EQ(s.field("g_name").text().size(), 128);
    press(s, "F5");
  });
  EXPECT_EQ(lookupValue("select g_name from jxc_goods where g_sn='K 1'"), u"O‘Neil “100％“😀"_qs);
  EXPECT_EQ(lookupNumber("select len(g_name) from jxc_goods where g_sn='K2'"), 128);
  EXPECT_EQ(count(), 2);
}

TEST_F(CatalogAddTest, RangesThatNobodyMeans) {
  open("F_Spxxgl_Add3", [&](ui::Screen& s) {
    chooseClass(s, u"镜片"_qs);
    const auto range = [&](const char* from, const char* to, double low, double high) {
      s.field(from).setNumber(low);
      s.field(to).setNumber(high);
    };
    type(s, "g_qc", u"1.60");
    range("g_qgd", "g_qgd1", -250, 0);
    range("g_sgd", "g_sgd1", -250, 0);
    press(s, "F5", u"将增加 1002001 个商品，确定增加吗？"_qs, Answer::No);
    range("g_qgd", "g_qgd1", -1e9, 1e9);
    press(s, "F5", u"范围太大：最多可以增加 9999999 个商品！"_qs);
    EXPECT_EQ(count(), 0);
    range("g_qgd", "g_qgd1", 0, 0);
    range("g_sgd", "g_sgd1", 0, 0);
    press(s, "F5");
  });
  EXPECT_EQ(count(), 1);
}

}  // namespace jxc::test::catalog_add_test
