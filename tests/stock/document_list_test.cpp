// Documents as a list: what is open of them, which of them are meant, and in what order; figures worked out by hand.
#include "stock/document_list.h"

#include "stock/shop.h"

namespace jxc::document_list_test {

using Purchases = DocumentSet<families::purchaseReceipt, families::purchaseReturn>;
using Everything = DocumentSet<families::purchaseReceipt, families::purchaseReturn, families::sale,
                               families::saleReturn, families::transfer, families::loss>;

class DocumentListTest : public test::ShopTest {
 protected:
  DocumentListTest() {
    addGoods("A", 5);
    addGoods("B", 1);
    setClock(QStringLiteral("2021-05-20 10:00:00"));
    first_ = receive("2021-05-01", {{"A", 10, 5}, {"B", 4, 1}});  // 54
    second_ = receive("2021-05-03", {{"A", 1, 6}});               // 6
    back_ = waitingReturn(families::purchaseReturn, "2021-05-03", {{"A", 2, 5}});
    EXPECT_EQ(audit(back_), AuditOutcome::Audited);
    execSql("update jxc_jhd set j_sfje=20,j_hkje=10,j_yhje=4,j_sn2='gh-7',j_chkrq='2021-05-04' where j_sn=?", first_);
    execSql("update jxc_jhd set j_hkje=6,j_th=1,j_note='整单退' where j_sn=?", second_);
    sold_ = sell("2021-05-02 23:59:59", {{"A", 2, 12}});
    waiting_ = waitingSale("2021-05-02", {{"A", 1, 12}}, 0);
  }
  template <class Set>
  static QStringList listed(const Criteria& criteria, std::initializer_list<std::string_view> columns = {"djh"},
                            Sql (*source)(const Criteria&, const Warehouses&) = Set::documents) {
    return test::textsOf(answer(source, criteria), columns);
  }
  QString first_, second_, back_, sold_, waiting_;
};

TEST_F(DocumentListTest, TellsWhatIsOpenOfWhichDocumentsInWhichOrder) {
  const QString day3 = u"2021-05-03"_qs;
  struct Case {
    Criteria criteria;
    QStringList numbers;
  };
  const Case cases[] = {
      {{.descending = true}, {second_, back_, first_}},  // of a day the receipts first
      {{}, {first_, second_, back_}},
      {{.from = day3, .to = day3}, {second_, back_}},
      {{.from = u"2021-05-04"_qs, .to = u"2021-05-04"_qs, .order = QString::fromUtf16(kByAudit)}, {first_}},
      {{.order = QString::fromUtf16(kByAudit)}, {first_, second_, back_}},
      {{.boxes = kUnpaidOnly}, {first_}},  // of 54 were paid 20 and 10, and 4 let off; nothing is open of a return
      {{.kind = u"CT"_qs}, {back_}},
      {{.document = second_}, {second_}},
      {{.document = sold_}, {}},
      {{.partner = u"100001"_qs, .key = u"GH-7"_qs}, {first_}},
      {{.partner = u"100002"_qs}, {}},
      {{.key = u"整单"_qs}, {second_}},
      {{.key = second_.mid(1)}, {second_}},
      {{.from = u"2022-01-01"_qs, .key = second_.toLower() + u' '}, {second_}},  // the whole number, at any time
      {{.from = u"2022-01-01"_qs, .key = second_.mid(1)}, {}},
      {{.warehouse = u"100002"_qs}, {}},
      {{.employee = u"100001"_qs, .group = u"架b"_qs}, {first_}},
      {{.employee = u"999999"_qs}, {}},
  };
  for (const Case& each : cases)
    EXPECT_EQ(listed<Purchases>(each.criteria), each.numbers) << each.criteria.key.toStdString() << each.criteria.boxes;
  EXPECT_EQ(listed<Purchases>({}, {"yfje", "sfje", "yhje", "hkje", "wfje", "j_th", "gtype"}),
            QStringList({"54 20 4 10 20 0 采购进货", "6 0 0 6 0 1 采购进货", "-10 0 0 0 -10 0 采购退货"}));
  EXPECT_EQ(listed<Purchases>({.descending = true}, {"g_sn", "gl_sl", "gl_zje"}, Purchases::lines),
            QStringList({"A 1 6", "A -2 -10", "A 10 50", "B 4 4"}));

  EXPECT_EQ(listed<Purchases>({.group = u"B"_qs}, {"g_sn", "gl_sl"}, Purchases::lines), QStringList("B 4"));

  // Waiting documents stand among the others, or alone; an audited one has the day of its audit.
  EXPECT_EQ(listed<Everything>({.to = u"2021-05-02"_qs, .boxes = kWaitingToo}, {"djh", "zt"}),
            QStringList({first_ + u" 已审核"_qs, waiting_ + u" 待审核"_qs, sold_ + u" 已审核"_qs}));
  EXPECT_EQ(listed<Everything>({.boxes = kWaitingToo | kWaitingOnly}), QStringList(waiting_));

  // Either end of a transfer, or the one that is asked for.
  execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  const QString moved = test::waitingDocument(families::transfer, "2021-05-05", {{"ck_in", u"100002"}}, {{"A", 1, 5}});
  for (const auto& [end, warehouse, isListed] :
       {std::tuple(0u, u"100001"_qs, true), std::tuple(0u, u"100002"_qs, true),
        std::tuple(kGoesOut, u"100001"_qs, true), std::tuple(kGoesOut, u"100002"_qs, false),
        std::tuple(kComesIn, u"100001"_qs, false), std::tuple(kComesIn, u"100002"_qs, true)})
    EXPECT_EQ(listed<Everything>({.warehouse = warehouse, .kind = u"DB"_qs, .boxes = end | kWaitingOnly}),
              isListed ? QStringList(moved) : QStringList())
        << end << warehouse.toStdString();

  // Prices without cost: what was bought tells no amount, and neither do its lines.
  setRights("300001", "cggl", "11111111111111111111");
  setRights("300001", "xsgl", "11111111111111111111");
  setRights("300001", "qtcz", "00000000100000000000");
  becomeOperator("小王", "100002", "300001");
  EXPECT_EQ(listed<Everything>({}, {"djh", "yfje", "wfje", "zje"}),
            QStringList({first_ + u"   "_qs, sold_ + u" 24 24 24"_qs, second_ + u"   "_qs, back_ + u"   "_qs}));
  EXPECT_EQ(listed<Everything>({.document = first_}, {"gl_dj", "gl_je", "gl_taxje", "gl_zje"}, Everything::lines),
            QStringList({"   ", "   "}));
}

TEST_F(DocumentListTest, CancellingAllTellsHowFarItIsAndKeepsWhatItDidWhenItIsStopped) {
  QList<int> told;
  prompt.willSayYes();
  const QString numbers[] = {first_, second_, sold_};
  const auto cancelled = cancelAllListed(numbers, prompt, [&](int percent) {
    told << percent;
    return percent != 66;
  });
  EXPECT_EQ(cancelled, 2);
  EXPECT_EQ(told.first(), 0);
  EXPECT_EQ(told.last(), 100);
  EXPECT_EQ(prompt.lastNotice(), "取消审核已停止，共 3 个单据，\r\n\r\n取消审核成功 2 个单据。");
  // From the last posting on: the sale, then the second receipt.
  EXPECT_EQ(listed<Everything>({}), QStringList({first_, back_}));
}

}  // namespace jxc::document_list_test
