// What no catalogue should have to take: it is refused in clear words or cleaned, and nothing is half done.
#include "core/program_directory.h"
#include "masterdata/goods_classes.h"
#include "masterdata/screens/goods_form.h"
#include "screens/harness/screen_test.h"

#include <QFile>
#include <QLabel>
#include <QTemporaryDir>
#include <QTreeWidget>

namespace jxc::test {
namespace catalog_bad_input_test {

class CatalogBadInputTest : public ScreenTest {
 protected:
  CatalogBadInputTest() { setProgramDirectory(folder_.path()); }
  ~CatalogBadInputTest() override { setProgramDirectory({}); }
  static double count() { return lookupNumber("select count(*) from jxc_goods where g_sn<>'00000000'"); }
  /// A class chosen from its list, as an operator does.
  void chooseClass(ui::Screen& s, const QString& name) {
    expectScreen("F_Spxxgl_Class", [name](ui::Screen& classes) {
      auto* tree = classes.findChild<QTreeWidget*>(u"treeLb"_qs);
      tree->setCurrentItem(tree->findItems(name, Qt::MatchExactly | Qt::MatchRecursive).front());
      press(classes, "F5");
    });
    static_cast<GoodsForm&>(s).gc_name.pick();
  }
  QTemporaryDir folder_;
  GoodsClass frames_ = *addGoodsClass(1, u"镜架"_qs, prompt);
};

TEST_F(CatalogBadInputTest, NamesCodesPricesAndPictures) {
  open("F_Spxxgl_Add", [&](ui::Screen& s) {
    auto& form = static_cast<GoodsForm&>(s);
    chooseClass(s, u"镜架"_qs);

    // Blanks are no code, and those around one do not belong to it.
    type(s, "g_sn", u"   ");
    type(s, "g_name", u"x");
    expectNotice(u"商品编号必须填写！"_qs);
    press(s, "F5");
    s.field("g_sn").setText(u"  K 1\t"_qs);
    s.field("g_name").setText(u"O'Neil \"100%\"\x01\r\n😀"_qs);
    // The minus key does nothing here, and what is pasted does not pass either.
    type(s, "g_sj", u"-5");
    EXPECT_EQ(s.field("g_sj").number(), 5);
    s.field("g_sj").setNumber(-5);
    expectNotice(u"价格和数量不能小于零！"_qs);
    press(s, "F5");
    EXPECT_EQ(count(), 0);
    s.field("g_sj").setNumber(5);

    QFile none(folder_.filePath(u"none.jpg"_qs));
    ASSERT_TRUE(none.open(QIODevice::WriteOnly) && none.write("no picture") > 0);
    none.close();
    expectNotice(u"图片文件不能读取，请选择其他图片！"_qs);
    form.usePicture(none.fileName());
    EXPECT_EQ(s.findChild<QLabel*>(u"imagePic"_qs)->text(), u"没有图片"_qs);
    press(s, "F5");
    EXPECT_EQ(count(), 1);
    EXPECT_FALSE(QFile::exists(folder_.filePath(u"picture/K 1.jpg"_qs)));

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

TEST_F(CatalogBadInputTest, RangesThatNobodyMeans) {
  open("F_Spxxgl_Add3", [&](ui::Screen& s) {
    chooseClass(s, u"镜片"_qs);
    const auto range = [&](const char* from, const char* to, double low, double high) {
      s.field(from).setNumber(low);
      s.field(to).setNumber(high);
    };
    type(s, "g_qc", u"1.60");
    range("g_qgd", "g_qgd1", 0, -1);
    expectNotice(u"屈光度范围不正确！"_qs);
    press(s, "F5");
    range("g_qgd", "g_qgd1", -250, 0);
    range("g_sgd", "g_sgd1", -250, 0);
    expectQuestion(u"将增加 1002001 个商品，确定增加吗？"_qs, Answer::No);
    press(s, "F5");
    range("g_qgd", "g_qgd1", -1e9, 1e9);
    expectNotice(u"范围太大：最多可以增加 9999999 个商品！"_qs);
    press(s, "F5");
    EXPECT_EQ(count(), 0);
    range("g_qgd", "g_qgd1", 0, 0);
    range("g_sgd", "g_sgd1", 0, 0);
    press(s, "F5");
  });
  EXPECT_EQ(count(), 1);
}

}  // namespace catalog_bad_input_test
}  // namespace jxc::test
