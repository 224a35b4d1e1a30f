// 购销单据夹具: a shop with three goods whose documents are driven through their screens.
#pragma once

#include "core/statements.h"
#include "harness/row_texts.h"
#include "screens/harness/screen_test.h"

#include <QDir>
#include <QTabWidget>
#include <QTableView>

namespace jxc::test {

/// What is asked before a document is saved that will wait in this panel.
inline QString saveQuestion(const char* document, const char* panel) {
  return u"单据保存后处于“未审核”状态，是否确认保存？\r\n\r\n处于“未审核”状态的%1，可以在“%2”面板中，进行修改及审核操作！"_qs
      .arg(QString::fromUtf8(document), QString::fromUtf8(panel));
}
/// The same of one that is audited at once; the enquiry takes it back.
inline QString saveAuditedQuestion(const char* enquiry) {
  return u"单据保存后将直接审核，是否确认保存？\r\n\r\n保存后如果有问题可以在“%1”功能中取消审核！"_qs.arg(
      QString::fromUtf8(enquiry));
}
inline const QString kSaveReceipt = saveQuestion("采购单", "待审核采\r\n\r\n购单");
inline const QString kSaveSale = saveQuestion("销售单", "待审核销\r\n\r\n售单");
inline const QString kSaveReturn = saveQuestion("退货单", "待审核\r\n\r\n退货单");
inline const QString kSaveTransfer = saveQuestion("调拨单", "待审核调\r\n\r\n拨单");
inline const QString kSaveLoss = saveQuestion("报损单", "报损/报溢\r\n\r\n审核");
inline const QString kSaveOverflow = saveQuestion("报溢单", "报损/报溢\r\n\r\n审核");
inline const QString kSaveCount = saveQuestion("盘点单", "待审核盘\r\n\r\n点单");
inline const QString kSaveSplit = saveQuestion("拆分单", "待审核拆\r\n\r\n分单");
inline const QString kSaveBundle = saveQuestion("捆绑单", "待审核捆\r\n\r\n绑单");
inline const QString kSaveReceiptAudited = saveAuditedQuestion("进退货查询");
inline const QString kSaveSaleAudited = saveAuditedQuestion("销售退货查询");
inline const QString kAuditAll =
    u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs;
inline const QString kUnsaved = u"当前单据还未保存，是否保存？"_qs;
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
    const bool isLens = !g.product.isEmpty();
    execSql(
        "insert into jxc_goods (g_sn,g_name,g_qc,g_sptm,g_jj,g_scjj,g_pjjj,g_sj,g_lsj,g_kc,g_cgpl,gc_sn,g_isjp,g_qgd,"
        "g_sgd,g_jm,g_xspl,g_jy,g_gdcbj,dw_name,gg_name,color_name) values "
        "(?,?,?,?,?,?,?,?,?,?,?,?,?,?,?,'JJ',0,0,0,'付','','')",
        g.sn, g.name, isLens ? g.product : g.name, g.barcode, g.cost, g.cost, g.cost, g.price, g.price, g.stock,
        g.bought, isLens ? u"1000" : u"1001", isLens, g.sphere, g.cylinder);
    if (g.stock != 0)
      execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',?,?,?,0)", g.sn,
              g.stock, g.stock, g.cost);
  }

  static void addLens(const QString& sn, const QString& product, const QString& sphere, const QString& cylinder,
                      double stock) {
    addGoods({sn, product + sphere + cylinder, {}, 8, 30, stock, product, sphere, cylinder});
  }

  /// Rows of a statement, cells by a blank, rows by " | ".
  template <class... Args>
  static QString rows(const SqlText& sql, const Args&... args) {
    return textsOf(openSelect(sql, args...)).join(u" | "_qs);
  }
  /// Lines of a document, "last digit of the goods × quantity @ price = total" of each; `initials` are of its columns.
  static QString lines(ui::Screen& s, const std::string& initials, std::string_view grid = "gridLines") {
    QStringList texts;
    for (const Row row : s.grid(grid).rows())
      texts << row.text("g_sn").right(1) + u'×' + row.text(initials + "_sl") + u'@' + row.text(initials + "_dj") +
                   u'=' + row.text(initials + "_zje");
    return texts.join(u' ');
  }
  /// Keys of a scanner, wherever the focus is.
  static void scan(ui::Screen& s, QStringView code) {
    typeIn(*s.focusWidget(), code);
    press(s, "Return");
  }
  /// Saves the document; this is what is asked.
  void save(ui::Screen& s, const QString& question) {
    expectQuestion(question, Answer::Yes);
    press(s, "F5");
  }
  /// Leaves the screen and what was begun on it.
  void leaveDraft(ui::Screen& s) {
    expectQuestion(kUnsaved, Answer::No);
    press(s, "Esc");
  }
  static void showWaiting(ui::Screen& s) {
    s.findChild<QTabWidget*>()->setCurrentIndex(1);
    settle();
  }
  /// With JXC_PICTURES=DIR the widget as a picture in that folder.
  static void picture(QWidget& widget, const QString& name) {
    const QString directory = qEnvironmentVariable("JXC_PICTURES");
    if (directory.isEmpty()) return;
    QDir().mkpath(directory);
    EXPECT_TRUE(widget.grab().save(directory + u'/' + name + u".png"_qs));
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
