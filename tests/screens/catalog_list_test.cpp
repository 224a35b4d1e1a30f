// The catalogue: classes at the left, goods at the right, search as one types.
#include "harness/articles.h"
#include "harness/row_texts.h"
#include "masterdata/goods_classes.h"
#include "masterdata/screens/spxxgl.h"
#include "screens/harness/screen_test.h"

#include <QAction>
#include <QLineEdit>
#include <QTableView>
#include <QTreeWidget>

namespace jxc::test::catalog_list_test {

class CatalogListTest : public ScreenTest {
 protected:
  CatalogListTest() {
    add(u"30000001"_qs, u"钛架 8801"_qs, frames.number, 4);
    add(u"30000002"_qs, u"板材架 9902"_qs, plates.number, 6);
    add(u"30000003"_qs, u"停产镜架"_qs, frames.number, 9);
    execSql("update jxc_goods set g_jy=1 where g_sn='30000003'");
  }

  void add(const QString& number, const QString& name, const QString& classNumber, double stock) {
    ASSERT_TRUE(addGoods(article(number, name, classNumber, stock), prompt));
  }

  static QStringList shown(ui::Screen& s) { return textsOf(s.grid("gridSp").shownRows(), {"g_sn"}); }
  static QTreeWidget& tree(ui::Screen& s) { return *s.findChild<QTreeWidget*>(QStringLiteral("treeLb")); }
  static void chooseClass(ui::Screen& s, const QString& name) {
    const auto items = tree(s).findItems(name, Qt::MatchExactly | Qt::MatchRecursive);
    ASSERT_EQ(items.size(), 1) << name.toStdString();
    tree(s).setCurrentItem(items.front());
  }

  GoodsClass frames = *addGoodsClass(1, QStringLiteral("镜架"), prompt);
  GoodsClass plates = *addGoodsClass(frames.key, QStringLiteral("板材"), prompt);
};

TEST_F(CatalogListTest, TypingAndClassesNarrowTheListAndItsTotal) {
  open("F_Spxxgl", [&](ui::Screen& s) {
    const auto total = [&] { return s.grid("gridSp").footerText("g_kc"); };
    EXPECT_EQ(shown(s), QStringList({u"30000001"_qs, u"30000002"_qs}));
    EXPECT_EQ(total(), u"10.00"_qs);
    type(s, "tkey", u"jia");
    EXPECT_EQ(shown(s), QStringList());
    type(s, "tkey", u"bc 99");
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs));
    EXPECT_EQ(total(), u"6.00"_qs);
    type(s, "tkey", u"");
    chooseClass(s, u"板材"_qs);
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs));
    chooseClass(s, u"镜架"_qs);
    check(s, "chkDisp", true);
    EXPECT_EQ(shown(s), QStringList({u"30000001"_qs, u"30000002"_qs, u"30000003"_qs}));
    EXPECT_EQ(total(), u"10.00"_qs);  // disabled goods are shown but do not count
    // Sorted by stock downwards, the search keeps that order.
    s.grid("gridSp").view()->sortByColumn(9, Qt::DescendingOrder);
    EXPECT_EQ(shown(s), QStringList({u"30000003"_qs, u"30000002"_qs, u"30000001"_qs}));
    type(s, "tkey", u"0"), type(s, "tkey", u"3000 架 9");
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs));
    type(s, "tkey", u"");
    EXPECT_EQ(shown(s), QStringList({u"30000003"_qs, u"30000002"_qs, u"30000001"_qs}));
    EXPECT_EQ(s.grid("gridSp").currentText("g_sn"), u"30000002"_qs);  // the row stays current
  });
}

TEST_F(CatalogListTest, SearchOnEnterWhenTheParameterSaysSo) {
  setParameter("cs_hcj", 1);
  open("F_Spxxgl", [&](ui::Screen& s) {
    type(s, "tkey", u"99");
    EXPECT_EQ(shown(s).size(), 2);
    press(s, "F6");
    press(s, "Return");
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs));
    chooseClass(s, u"镜片"_qs);
    EXPECT_EQ(shown(s), QStringList());
  });
}

TEST_F(CatalogListTest, ColumnsFollowTheRightsOfTheOperator) {
  const auto visible = [](ui::Screen& s, std::string_view column) { return s.grid("gridSp").isColumnVisible(column); };
  setParameter("cs_cs013", 1);
  open("F_Spxxgl", [&](ui::Screen& s) {
    EXPECT_TRUE(visible(s, "g_jj"));
    EXPECT_TRUE(visible(s, "g_sj1"));
    EXPECT_FALSE(visible(s, "g_lsj"));  // off by parameter
  });
  setRights(QStringLiteral("100002"), "qtcz", QStringLiteral("1111110100"));  // neither cost (7) nor prices (9)
  setParameter("cs_cgyh", 1);
  execSql("update jxc_ckxx set ck_asn='100002'");
  becomeOperator(QStringLiteral("clerk"), QStringLiteral("100002"), QStringLiteral("100002"));
  open("F_Spxxgl", [&](ui::Screen& s) {
    for (const auto column : {"g_jj", "g_sj", "g_sj1", "g_kc"})
      EXPECT_FALSE(visible(s, column)) << column;
    // Nor can they be read from what is copied or told.
    EXPECT_FALSE(s.grid("gridSp").tabSeparated(false).contains(u"进价"_qs));
  });
}

TEST_F(CatalogListTest, ClassesAreMadeRenamedFoundAndDeletedInTheTree) {
  open("F_Spxxgl", [&](ui::Screen& s) {
    chooseClass(s, u"镜架"_qs);
    pressIn(tree(s), "Ins");
    ASSERT_EQ(tree(s).currentItem()->text(0), u"新类别"_qs);
    tree(s).currentItem()->setText(0, u"儿童 'K'"_qs);
    settle();
    EXPECT_EQ(lookupValue("select gc_jm from jxc_goodsclass where gc_sn='1001101'"), u"ET ‘K‘"_qs);
    EXPECT_EQ(tree(s).currentItem()->text(0), u"儿童 ‘K‘"_qs);

    expectNotice(QStringLiteral("类别名称必须填写！"));
    tree(s).currentItem()->setText(0, u"  "_qs);
    settle();
    EXPECT_EQ(tree(s).currentItem()->text(0), u"儿童 ‘K‘"_qs);

    type(s, "tkey", u"");
    auto* search = s.findChild<QWidget*>(QStringLiteral("tname"));
    typeIn(*search, u"bc");
    EXPECT_EQ(tree(s).currentItem()->text(0), u"板材"_qs);
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs));

    expectNotice(
        QStringLiteral("该类别下有商品信息，不能删除！\r\n\r\n商品类别 1001100 板材\r\n用于：商品信息 30000002 "
                       "板材架 9902\r\n\r\n请先把这些商品改为其他类别，再删除。"));
    pressIn(tree(s), "Del");
    chooseClass(s, u"儿童 ‘K‘"_qs);
    expectQuestion(QStringLiteral("您确定要删除当前类别吗?"), Answer::Yes);
    pressIn(tree(s), "Del");
    EXPECT_EQ(tree(s).currentItem()->text(0), u"镜架"_qs);
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_goodsclass"), u"4"_qs);
}

TEST_F(CatalogListTest, GoodsAreChangedDisabledAndDeleted) {
  const auto run = [](ui::Screen& s, const char* name) { s.findChild<QAction*>(QString::fromLatin1(name))->trigger(); };
  open("F_Spxxgl", [&](ui::Screen& s) {
    press(s, "F3", "F_Spxxgl_Modi", [&](ui::Screen& m) {
      EXPECT_TRUE(m.field("g_sn").isReadOnly());  // there is stock under this number
      type(m, "g_name", u"钛架 8801 新款");
      type(m, "g_sj", u"398");
      press(m, "F5");
    });
    EXPECT_EQ(s.grid("gridSp").currentText("g_name"), u"钛架 8801 新款"_qs);

    expectScreen("F_Spxxgl_Jm", [&](ui::Screen& m) {
      EXPECT_EQ(m.field("tjm").text(), u"TJ 8801 XK"_qs);
      type(m, "tjm", u"tj'x");
      press(m, "F5");
    });
    run(s, "btnRModiJm");
    EXPECT_EQ(s.grid("gridSp").currentText("g_jm"), u"TJ‘X"_qs);

    run(s, "btnRForbid");  // stays in sight
    EXPECT_TRUE(s.field("chkDisp").isChecked());
    EXPECT_EQ(s.grid("gridSp").currentNumber("g_jy"), 1);

    // All marked: the disabled come back, the others go, and the balancing article stays what it is.
    s.grid("gridSp").view()->selectAll();
    expectQuestion(u"您的操作将禁用选中的所有商品，\r\n\r\n已禁用的商品将会解除禁用。\r\n\r\n确认吗？"_qs, Answer::Yes);
    run(s, "btnRForbidPl");
    EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_jy=0"), u"2"_qs);
    EXPECT_EQ(lookupValue("select g_jy from jxc_goods where g_sn='00000000'"), u"1"_qs);

    s.grid("gridSp").view()->selectAll();
    expectScreen("F_Spxxgl_Zdkc", [&](ui::Screen& m) {
      type(m, "tzdkc", u"3");
      expectQuestion(u"您确定要修改选中商品的最低库存吗！"_qs, Answer::Yes);
      press(m, "F5", u"成功修改：4  个商品信息。"_qs);
    });
    run(s, "btnRZdkc");

    expectScreen("F_Spxxgl_Dele", [&](ui::Screen& m) {
      press(m, "F5");
      EXPECT_EQ(m.field("tResult").text(),
                u"商品编号：00000000 商品名称：优惠商品  为系统内置商品，不能删除！\n成功删除：3  个商品信息。"_qs);
    });
    s.grid("gridSp").view()->selectAll();
    run(s, "btnRDeleLb");
    EXPECT_EQ(shown(s), QStringList(u"00000000"_qs));
    press(s, "Ctrl+D", u"该商品为系统内置商品，不能删除！\r\n\r\n商品信息 00000000 优惠商品"_qs);
    execSql("delete from jxc_ckxx");
    press(s, "F2", u"请先添加仓库信息！"_qs);
  });
  EXPECT_EQ(lookupValue("select count(*) from jxc_kcsp where g_sn<>'00000000'"), u"0"_qs);
}

TEST_F(CatalogListTest, ARowIsCopiedItsCellsAreTypedAndMarkedRowsArePriced) {
  const auto run = [](ui::Screen& s, const char* name) { s.findChild<QAction*>(QString::fromLatin1(name))->trigger(); };
  const auto of = [](const char* columns, const QString& number) {
    return textsOf(openSelect(Sql("select " + std::string(columns) + " from jxc_goods where g_sn=?", number)))
        .join(u'|');
  };
  execSql("update jxc_goods set g_sptm='6901',gg_name='8801' where g_sn='30000001'");
  open("F_Spxxgl", [&](ui::Screen& s) {
    ui::Grid& list = s.grid("gridSp");
    list.selectRow(0);
    expectScreen("F_Spxxgl_Add", [&](ui::Screen& add) {
      EXPECT_EQ(add.field("g_name").text(), u"钛架 8801"_qs);
      EXPECT_EQ(add.field("gg_name").text(), u"8801"_qs);
      EXPECT_TRUE(add.field("g_sptm").isEmpty()) << "the code is the old one's";
      EXPECT_EQ(add.field("g_kc").number(), 0) << "and so is the stock";
      type(add, "g_name", u"钛架 8803");
      press(add, "F5");
      press(add, "Esc");
    });
    run(s, "btnRCopy");
    const QString fresh = lookupValue("select g_sn from jxc_goods where g_name='钛架 8803'");
    EXPECT_EQ(shown(s), QStringList({u"30000001"_qs, u"30000002"_qs, fresh}));

    edit(s, "gridSp", 0, "g_sj", u"128.7");
    edit(s, "gridSp", 0, "g_zdkc", u"6");
    edit(s, "gridSp", 1, "g_sj", u"96.2");
    expectNotice(u"价格和数量不能小于零！"_qs);
    edit(s, "gridSp", 0, "g_zdkc", u"-1");
    expectQuestion(u"商品条码已经存在，确认输入吗？"_qs, Answer::No);
    edit(s, "gridSp", 1, "g_sptm", u"6901");
    EXPECT_EQ(of("g_sj,g_zdkc,g_sptm", u"30000001"_qs), u"128.7 6 6901");
    EXPECT_EQ(of("g_sj,g_sptm", u"30000002"_qs), u"96.2 ");

    // 128.7 × 0.83 = 106.82 and 96.2 × 0.83 = 79.85, to the next five yuan.
    list.view()->selectRow(0);
    list.view()->selectionModel()->select(list.view()->model()->index(1, 0),
                                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
    expectScreen("F_Spxxgl_Pfj", [&](ui::Screen& prices) {
      EXPECT_EQ(prices.field("comFw").text(), u"选中的商品"_qs);
      choose(prices, "comQz", u"5元"_qs);
      type(prices, "tjgbl", u"0.83");
      expectQuestion(u"选中的商品（共 2 个）的一级批发价将改为预设售价 X 0.83，取整到5元，确定修改吗？"_qs,
                     Answer::Yes);
      press(prices, "F5", u"成功修改：2  个商品的价格。"_qs);
    });
    run(s, "brnRPfj");
    EXPECT_EQ(of("g_sj1", u"30000001"_qs) + u' ' + of("g_sj1", u"30000002"_qs) + u' ' + of("g_sj1", fresh),
              u"105 80 0");
  });

  // Who may not see what goods cost cannot have a price made of it.
  setAllRights(QStringLiteral("100077"), QString(60, u'1'));
  takeRight(QStringLiteral("100077"), "qtcz", kSeesCost.position);
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  open("F_Spxxgl", [&](ui::Screen& s) {
    expectScreen("F_Spxxgl_Pfj", [](ui::Screen& prices) {
      for (const ListItem& base : prices.field("comJs").items())
        EXPECT_FALSE(base.text.contains(u'进') || base.text.contains(u"成本")) << base.text.toStdString();
      press(prices, "Esc");
    });
    run(s, "brnRPfj");
  });
}

TEST_F(CatalogListTest, ClassAndCostOfMarkedGoodsAndAClassMoved) {
  const auto run = [](ui::Screen& s, const char* name) { s.findChild<QAction*>(QString::fromLatin1(name))->trigger(); };
  open("F_Spxxgl", [&](ui::Screen& s) {
    s.grid("gridSp").view()->selectAll();
    expectScreen("F_Spxxgl_Class", [&](ui::Screen& m) {
      for (const char16_t* letter : {u"b", u"c"})
        typeIn(*m.focusWidget(), letter);
      EXPECT_EQ(m.findChild<QLineEdit*>("tname")->text(), "bc") << "of the tree they go to its search";
      press(m, "F5");
    });
    run(s, "btnRModiLb");
    EXPECT_EQ(lookupValue("select count(*) from jxc_goods where gc_sn='1001100'"), u"2"_qs);

    s.grid("gridSp").view()->selectAll();
    expectQuestion(u"您的操作将选中的商品预设进价作为销售成本价，确定修改吗？"_qs, Answer::Yes);
    expectNotice(u"成功设置：2  个商品预设进价作为销售成本价。"_qs);
    run(s, "btnRGdcbj");
    expectQuestion(u"您的操作将取消选中的商品预设进价作为销售成本价，确定修改吗？"_qs, Answer::No);
    run(s, "btnRGdcbj2");
    EXPECT_EQ(lookupValue("select count(*) from jxc_goods where g_gdcbj=1"), u"2"_qs);

    chooseClass(s, u"板材"_qs);
    expectScreen("F_Spxxgl_Move", [&](ui::Screen& m) {
      chooseClass(m, u"所有类别"_qs);
      press(m, "F5", u"类别移动成功！"_qs);
    });
    run(s, "btnMoveLevel");
    EXPECT_EQ(lookupValue("select count(*) from jxc_goods where gc_sn='1002'"), u"2"_qs);
    chooseClass(s, u"板材"_qs);
    EXPECT_EQ(shown(s).size(), 2);
  });
}

TEST_F(CatalogListTest, AClassChangesItsLevelByKeysAndByDragging) {
  open("F_Spxxgl", [&](ui::Screen& s) {
    chooseClass(s, u"板材"_qs);
    pressIn(tree(s), "Ctrl+Left");
    EXPECT_EQ(tree(s).currentItem()->parent()->text(0), u"所有类别"_qs);
    EXPECT_EQ(shown(s), QStringList(u"30000002"_qs)) << "its goods stay its own";
    pressIn(tree(s), "Ctrl+Right");
    EXPECT_EQ(tree(s).currentItem()->parent()->text(0), u"镜架"_qs);
    chooseClass(s, u"所有类别"_qs);
    pressIn(tree(s), "Ctrl+Right");
    EXPECT_EQ(lookupValue("select gc_pid from jxc_goodsclass where gc_key=1"), u"0"_qs);

    EXPECT_FALSE(tree(s).acceptDrops());
    s.findChild<QAction*>(u"btnDrag"_qs)->trigger();
    EXPECT_TRUE(tree(s).acceptDrops());
    chooseClass(s, u"板材"_qs);
    static_cast<TF_Spxxgl&>(s).classes().hangBelow(2);
    EXPECT_EQ(tree(s).currentItem()->text(0), u"板材"_qs);
    EXPECT_EQ(tree(s).currentItem()->parent()->text(0), u"镜片"_qs);
  });
  EXPECT_EQ(lookupValue("select gc_sn from jxc_goodsclass where gc_pid=2"), u"1001100"_qs);
}

}  // namespace jxc::test::catalog_list_test
