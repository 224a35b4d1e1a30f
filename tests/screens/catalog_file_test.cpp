// The catalogue over a file: it fills beside the window, and typing meanwhile is not lost.
#include "core/data_module.h"
#include "core/schema/schema.h"
#include "masterdata/goods.h"
#include "masterdata/goods_classes.h"
#include "masterdata/goods_lenses.h"
#include "masterdata/screens/spxxgl.h"
#include "screens/harness/screen_test.h"

#include <QTableView>

namespace jxc::test::catalog_file_test {

class CatalogFileTest : public ScreenTest {
 protected:
  CatalogFileTest() {
    dataModule().installAccountDb(openSqlite(file(QStringLiteral("jxc.mdb")), {.create = true}));
    createAllTables(accountDb());
    GoodsDraft draft;
    draft.number = u"x"_qs;
    draft.unit = u"片"_qs;
    draft.classNumber = u"1000"_qs;
    draft.salePrice = 120;
    for (; rows_ < 2000; rows_ += 41 * 17) {
      draft.name = QStringLiteral("1.%1非球面镜片").arg(500 + rows_ / 697);
      addLensRange(draft, {-10, 0, 0.25}, {-4, 0, 0.25}, prompt);
    }
  }
  int rows_ = 0;
};

TEST_F(CatalogFileTest, TheFirstRowsComeAtOnceAndTypingWaitsForNothing) {
  auto& screen = ui::screenNamed("F_Spxxgl");
  auto& grid = screen.grid("gridSp");
  screen.setModal(false);  // this test runs beside it, not inside
  screen.present();
  while (grid.isEmpty())
    settle();
  type(screen, "tkey", u"1.501 -2.25");  // while the rest is on its way
  while (grid.isLoading())
    settle();
  EXPECT_EQ(grid.rows().rowCount(), rows_);
  EXPECT_EQ(grid.rowCount(), 17);  // the sphere, whatever the cylinder
  for (int row = 0; row < grid.rowCount(); ++row)
    EXPECT_TRUE(grid.cellText(row, 1).contains(u"-2.25"_qs));

  // An article far down is changed: the list comes back to it.
  type(screen, "tkey", u"");
  grid.selectRow(grid.rowCount() - 5);
  const QString number = grid.currentText("g_sn");
  press(screen, "F3", "F_Spxxgl_Modi2", filled({{"g_sj", u"99"}}));
  while (grid.isLoading())
    settle();
  EXPECT_EQ(grid.currentText("g_sn"), number);
  EXPECT_EQ(grid.currentNumber("g_sj"), 99);
  EXPECT_EQ(grid.currentRow(), grid.rowCount() - 5);
  screen.done(0);
}

TEST_F(CatalogFileTest, WhatAnotherStationWritesComesIntoTheList) {
  const auto elsewhere = openSqlite(file(QStringLiteral("jxc.mdb")));
  open("F_Spxxgl", [&](ui::Screen& s) {
    auto& catalogue = static_cast<TF_Spxxgl&>(s);
    catalogue.gridSp.waitLoaded();
    type(s, "tkey", u"渐进");
    EXPECT_TRUE(catalogue.gridSp.isEmpty());
    elsewhere->execute("update jxc_goods set g_name='渐进多焦点' where g_sn='20000003'");

    catalogue.gridSp.view()->selectAll();
    catalogue.followOtherStations();
    catalogue.gridSp.waitLoaded();
    EXPECT_EQ(catalogue.gridSp.rowCount(), 1) << "the search stands over the new rows";
    EXPECT_EQ(catalogue.gridSp.currentText("g_sn"), u"20000003"_qs);

    // Marked goods wait for their command.
    type(s, "tkey", u"");
    catalogue.gridSp.view()->selectAll();
    elsewhere->execute("delete from jxc_goods where g_sn='20000003'");
    catalogue.followOtherStations();
    catalogue.gridSp.waitLoaded();
    EXPECT_EQ(catalogue.gridSp.rowCount(), rows_);
    catalogue.gridSp.selectRow(0);
    catalogue.followOtherStations();
    catalogue.gridSp.waitLoaded();
    EXPECT_EQ(catalogue.gridSp.rowCount(), rows_ - 1);
  });
}

}  // namespace jxc::test::catalog_file_test
