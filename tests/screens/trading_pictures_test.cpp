// Documents at their fullest: 200 lines, long names, large amounts, every column switched on, on a small
// display. With JXC_PICTURES=DIR each screen is written there as a picture.
#include "core/formats.h"
#include "core/unusual.h"
#include "harness/waiting_document.h"
#include "screens/harness/trading_test.h"
#include "stock/document.h"

#include <QHeaderView>
#include <QPushButton>

#include <cmath>

namespace jxc::test::trading_pictures_test {

constexpr int kLines = 200;
const QString kBranch = QStringLiteral("城东大润发购物中心二楼眼镜分店仓库");

struct Document {
  const char* screen;
  const DocumentFamily* family;
  QString save;
};

class FullDocumentTest : public TradingScreenTest, public ::testing::WithParamInterface<Document> {
 protected:
  FullDocumentTest() {
    for (const char* on :
         {"cs_hs", "cs_jhzk", "cs_lsj", "cs_kp", "cs_ysdh", "cs_sprk", "cs_spck", "cs_kddy", "cs_xjyh"})
      setParameter(on, 1);
    execSql("update jxc_khxx set kh_name=?", u"某某市第一人民医院眼科中心验光配镜部（东区分院）"_qs);
    execSql("update jxc_ghsxx set ghs_name=?", u"江苏丹阳国际眼镜城鸿大光学仪器制造有限公司批发部"_qs);
    insertRow("jxc_ckxx", {{"ck_sn", u"100002"}, {"ck_name", kBranch}, {"ck_asn", u""}});
    for (int i = 0; i < kLines; ++i)
      addGoods({.sn = QString::number(10000001 + i),
                .name = u"清晰非球面加硬加膜防蓝光变色树脂镜片1.67折射率第%1批次特制"_qs.arg(i),
                .barcode = QString::number(6900000000000 + i),
                .cost = 1234567.89,
                .price = 2345678.99,
                .stock = 1000});
    for (int sphere = -32; sphere <= 8; ++sphere)
      for (int cylinder = -16; cylinder <= 0; ++cylinder)
        addLens(QString::number(20000000 + (sphere + 32) * 17 - cylinder), u"清晰1.56"_qs, numberText(sphere * 0.25),
                numberText(cylinder * 0.25), (sphere * 7 + cylinder * 3) % 11 + 12.0);
  }

  /// Lines as another station would have left them: the screen takes them up.
  void fillDraft(const QString& number) {
    const DocumentFamily& family = *GetParam().family;
    const LineTable& table = family.line;
    const LineColumns& c = *table.columns;
    const double price = 1234567.89, taxed = 1395061.72, quantity = 1000;
    Transaction transaction(accountDb());
    for (int i = 0; i < kLines; ++i)
      writeLine(family, number, u"2021-05-03"_qs,
                {QString::number(10000001 + i),
                 quantity,
                 price,
                 {{c.tax, 13},
                  {c.taxedPrice, taxed},
                  {c.taxAmount, (taxed - price) * quantity},
                  {c.total, taxed * quantity},
                  {table.retail, 2345678.99},
                  {table.countedShelf, 999},
                  {table.countedBook, 999},
                  {table.note, u"客户要求加急，先发一半，余下随下一批"_qs}}});
    transaction.commit();
  }

  /// Nothing that can be pressed is cut off, and the total of a line can be seen without scrolling.
  static void expectAllInSight(ui::Screen& s, std::string_view grid) {
    for (const auto* button : s.findChildren<QPushButton*>())
      if (button->isVisible()) {
        EXPECT_GE(button->width(), button->sizeHint().width()) << button->objectName().toStdString();
        EXPECT_TRUE(s.rect().contains(QRect(button->mapTo(&s, QPoint()), button->size())))
            << button->objectName().toStdString();
      }
    const auto* view = s.grid(grid).view();
    const auto columns = s.grid(grid).spec().columns;
    for (int i = 0; i < static_cast<int>(columns.size()); ++i)
      if (columns[static_cast<std::size_t>(i)].field.ends_with("_zje")) {
        const int right = view->columnViewportPosition(i) + view->columnWidth(i);
        EXPECT_LE(right, view->viewport()->width()) << grid;
        EXPECT_GE(view->columnWidth(i), view->fontMetrics().horizontalAdvance(s.grid(grid).cellText(0, i))) << grid;
      }
  }
};

TEST_P(FullDocumentTest, FitsASmallDisplay) {
  const Document& document = GetParam();
  const QString name = QString::fromLatin1(document.screen);
  fillDraft(newDocumentNumber(*document.family, u"2021-05-03"_qs));
  open(document.screen, [&](ui::Screen& s) {
    s.resize(1264, 672);
    settle();
    EXPECT_EQ(s.grid("gridLines").rowCount(), kLines);
    if (s.field("comCk").key().isEmpty()) choose(s, "comCk", s.field("comCk").items().front().text);
    expectAllInSight(s, "gridLines");
    if (s.hasField("comCk2")) choose(s, "comCk2", kBranch);
    picture(s, name);
    press(s, "F2", name.toStdString() + "_Add", [&](ui::Screen& pick) {
      pick.grid("gridGoods").waitLoaded();
      if (document.family->isCount())  // the first goods is on the count already; one behind it is not
        type(pick, "tkey", u"20000005");
      else
        expectQuestion(u"该商品已添加，需要重复添加吗？"_qs, Answer::Yes);
      pick.grid("gridGoods").waitLoaded();
      press(pick, "Return", name.toStdString() + "_Sele", [&](ui::Screen& line) {
        picture(line, name + u"_Sele"_qs);
        press(line, "Esc");
      });
      picture(pick, name + u"_Add"_qs);
      press(pick, "Esc");
    });
    press(s, "F12", "F_Jpgd", [&](ui::Screen& sheet) {
      sheet.resize(1264, 672);
      settle();
      auto* cells = sheet.findChild<QTableView*>("sheet");
      EXPECT_EQ(cells->model()->rowCount(), 41);
      EXPECT_EQ(cells->model()->columnCount(), 17);
      for (int i = 3; i < 17; ++i)
        cells->model()->setData(cells->model()->index(i, i % 9 + 4), i * 2);
      picture(sheet, name + u"_Jpgd"_qs);
      press(sheet, "Esc", u"光度表中的数量还未保存，是否保存？"_qs, Answer::No);
    });
    // More than a million in a line is asked about; what was counted as it stood differs by nothing.
    const LineColumns& columns = *document.family->line.columns;
    const double most = std::abs(
        lookupNumber(compose("select top 1 {} from {} where g_sn='10000001'", {columns.total, columns.table})));
    if (most > mostUsual)
      expectQuestion(u"这张单据有不寻常的地方：\r\n\r\n金额 "_qs +
                         NumberFormat{.kind = NumberFormat::Kind::Total, .decimals = 2}.format(most) +
                         u" 元\r\n\r\n确认没有输错，继续保存吗？"_qs,
                     Answer::Yes);
    save(s, document.save);
    showWaiting(s);
    expectAllInSight(s, "gridWaitingLines");
    picture(s, name + u"_waiting"_qs);
  });
}

INSTANTIATE_TEST_SUITE_P(Documents, FullDocumentTest,
                         ::testing::Values(Document{"F_Cgjh", &families::purchaseReceipt, kSaveReceipt},
                                           Document{"F_Cgth", &families::purchaseReturn, kSaveReturn},
                                           Document{"F_Spxs", &families::sale, kSaveSale},
                                           Document{"F_Xsth", &families::saleReturn, kSaveReturn},
                                           Document{"F_Kcdb", &families::transfer, kSaveTransfer},
                                           Document{"F_Bsby", &families::loss, kSaveLoss},
                                           Document{"F_Kcpd", &families::stocktake, kSaveCount}),
                         [](const auto& each) { return std::string(each.param.screen); });

}  // namespace jxc::test::trading_pictures_test
