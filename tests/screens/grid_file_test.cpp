// Lists over a file: what takes long can be stopped, and a layout is kept for each list.
#include "core/data_module.h"
#include "core/schema/schema.h"
#include "screens/harness/screen_test.h"

#include <QElapsedTimer>
#include <QFile>
#include <QHeaderView>
#include <QPushButton>
#include <QTableView>

namespace jxc::test {
namespace grid_file_test {

constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称"},
    {.field = "g_kc", .caption = "库存", .kind = ui::ColumnKind::Quantity, .use = {.sum = true}},
    {.field = "g_jj", .caption = "进价", .kind = ui::ColumnKind::Money},
};
constexpr ui::GridSpec kGrid = {"gridSp", "商品", kColumns, "没有商品"};

constexpr int kGoods = 2000;

}  // namespace grid_file_test

class GridFileTest : public ScreenTest {
 protected:
  GridFileTest() {
    dataModule().installAccountDb(openSqlite(file(QStringLiteral("jxc.mdb")), {.create = true}));
    createAllTables(accountDb());
    Transaction transaction(accountDb());
    for (int i = 0; i < grid_file_test::kGoods; ++i) {
      execSql("insert into jxc_goods (g_sn,g_name,g_kc,g_jj) values (?,?,?,?)", 20000000 + i,
              QStringLiteral("镜架%1号").arg(i), i % 7, i * 0.01);
    }
    transaction.commit();
  }
};

TEST_F(GridFileTest, ALongQueryShowsItselfAndCanBeStopped) {
  ui::Grid grid(grid_file_test::kGrid, "F_Test", nullptr);
  grid.show();
  grid.load("select * from jxc_goods where g_kc=? order by id", 5);
  grid.waitLoaded();
  const int before = grid.rowCount();
  auto* stop = grid.findChild<QPushButton*>(QStringLiteral("cancelLoad"));
  EXPECT_FALSE(stop->isVisible());
  grid.load("select a.* from jxc_goods a,jxc_goods b,jxc_goods c where a.g_kc+b.g_kc+c.g_kc<? order by a.id", 0);
  QElapsedTimer time;
  time.start();
  while (!stop->isVisible() && time.elapsed() < 10000)
    settle();
  ASSERT_TRUE(stop->isVisible());
  stop->click();
  EXPECT_FALSE(grid.isLoading());
  EXPECT_FALSE(stop->isVisible());
  settle();
  EXPECT_EQ(grid.rowCount(), before);
  grid.saveLayout();
  EXPECT_TRUE(QFile::exists(file(QStringLiteral("Layout/F_Test_gridSp.ini")))) << "each list has a layout of its own";
  const auto missesOne = [&grid] {
    grid.load("select id,g_sn from jxc_goods");
    grid.waitLoaded();  // behind the window, where the machine is busy
  };
  EXPECT_THROW(missesOne(), DbError) << "a column that is missing is no empty list";
}

}  // namespace jxc::test
