// 购销单据夹具: a shop with three goods whose documents are driven through their screens.
#pragma once

#include "core/statements.h"
#include "screens/harness/screen_test.h"

#include <QTabWidget>
#include <QTableView>

#include <gtest/gtest.h>

namespace jxc::test {

inline constexpr const char* kSaveReceipt =
    "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的采购单，可以在“待审核采\r\n\r\n购单”"
    "面板中，进行修改及审核操作！";
inline constexpr const char* kSaveSale =
    "单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的销售单，可以在“待审核销\r\n\r\n售单”"
    "面板中，进行修改及审核操作！";
inline constexpr const char* kSaveSaleAudited =
    "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“销售退货查询”功能中取消审核！";
inline constexpr const char* kSaveReceiptAudited =
    "单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“进退货查询”功能中取消审核！";
inline constexpr const char* kSaleGoesShort = "库存数量小于销售数量，销售后将产生负库存，继续销售吗?";

class TradingScreenTest : public ScreenTest {
 protected:
  TradingScreenTest() {
    setParameter("cs_xjyh", 1);
    setParameter("cs_possk", 1);
  }

  struct Goods {
    QString sn, name, barcode;
    double cost = 10, price = 20, stock = 0;
    QString product = {}, sphere = {}, cylinder = {};  // of a lens
    int bought = 0;                                    // times
  };
  static void addGoods(const Goods& g) {
    insertRow("jxc_goods", {{"g_sn", g.sn},
                            {"g_name", g.name},
                            {"g_jm", u"JJ"},
                            {"g_sptm", g.barcode},
                            {"g_jj", g.cost},
                            {"g_scjj", g.cost},
                            {"g_pjjj", g.cost},
                            {"g_kc", g.stock},
                            {"g_cgpl", g.bought},
                            {"g_xspl", 0},
                            {"g_jy", 0},
                            {"g_gdcbj", 0},
                            {"dw_name", u"付"},
                            {"gg_name", u""},
                            {"color_name", u""},
                            {"gc_sn", g.product.isEmpty() ? u"1001" : u"1000"},
                            {"g_sj", g.price},
                            {"g_lsj", g.price},
                            {"g_qc", g.product.isEmpty() ? g.name : g.product},
                            {"g_qgd", g.sphere},
                            {"g_sgd", g.cylinder},
                            {"g_isjp", g.product.isEmpty() ? 0 : 1}});
    if (g.stock != 0)
      insertRow("jxc_kcsp", {{"g_sn", g.sn},
                             {"ck_sn", u"100001"},
                             {"kc_sl", g.stock},
                             {"kc_zsl", g.stock},
                             {"kc_cbj", g.cost},
                             {"kc_xssl", 0.0}});
  }

  /// Rows of a statement, cells by a blank, rows by " | ".
  template <class... Args>
  static QString rows(const SqlText& sql, const Args&... args) {
    const RowSet all = openSelect(sql, args...);
    QStringList lines;
    for (int row = 0; row < all.rowCount(); ++row) {
      QStringList cells;
      for (int column = 0; column < all.columnCount(); ++column)
        cells << all.text(row, column);
      lines << cells.join(u' ');
    }
    return lines.join(u" | "_qs);
  }
  /// Keys of a scanner, wherever the focus is.
  static void scan(ui::Screen& s, QStringView code) {
    typeIn(*s.focusWidget(), code);
    press(s, "Return");
  }
  static void showWaiting(ui::Screen& s) {
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    settle();
  }
  static bool cellOpens(ui::Screen& s, std::string_view grid, int row, std::string_view field) {
    const auto columns = s.grid(grid).spec().columns;
    for (int i = 0; i < static_cast<int>(columns.size()); ++i)
      if (columns[static_cast<std::size_t>(i)].field == field) {
        const auto* model = s.grid(grid).view()->model();
        return model->flags(model->index(row, i)).testFlag(Qt::ItemIsEditable);
      }
    ADD_FAILURE() << "no column " << field;
    return false;
  }
};

}  // namespace jxc::test
