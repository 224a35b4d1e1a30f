// Documents of a shop on paper: printed to PDF, read back by a reader that is not ours, compared with the books.
#include "output/money_reports.h"
#include "output/paper.h"
#include "output/printed_documents.h"

#include <QRegularExpression>

namespace jxc::documents_on_paper_test {

class DocumentsOnPaper : public test::PaperTest {
 protected:
  DocumentsOnPaper() {
    execSql(
        "update jxc_company set c_name='晴川眼镜有限公司',c_tele='0571-88886666',c_address='杭州市西湖区文三路90号'");
    execSql(
        "update jxc_khxx set kh_name='杭州视康眼科门诊部',kh_lxr='周敏',kh_tele='0571-87654321',"
        "kh_address='杭州市上城区中河路66号'");
    execSql("update jxc_ghsxx set ghs_name='上海明视光学有限公司',ghs_lxr='赵强' where ghs_sn='100001'");
    loadSession();
    for (int i = 0; i < 12; ++i) {
      const QString sn = u"1000%1"_qs.arg(1001 + i);
      addGoods(sn, 10 + i);
      execSql("update jxc_goods set g_name=?,gg_name=?,color_name='黑' where g_sn=?", u"板材镜架%1"_qs.arg(i + 1),
              u"5%1-18"_qs.arg(i % 10), sn);
    }
  }
  std::vector<Line> lines(int count, double price = 12.5) const {
    std::vector<Line> all;
    for (int i = 0; i < count; ++i)
      all.push_back({u"1000%1"_qs.arg(1001 + i % 12), 1.0 + i % 3, price + i % 7});
    return all;
  }
  QStringList printed(const QString& number) {
    return readBack(savedDocumentReport(documentFamily(number), number), number);
  }
  QStringList readBack(const report::Report& report, const QString& name = {}) {
    const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
    return PaperTest::readBack(report, QString::fromLatin1(test->name()) + u'_' + name);
  }
  /// The words of one kind in the order of the paper.
  static QStringList words(const QStringList& paper, const char* pattern) {
    QStringList found;
    const QRegularExpression expression(QString::fromUtf8(pattern));
    for (const QString& line : paper)
      for (auto match = expression.globalMatch(line); match.hasNext();)
        found << match.next().captured(1);
    return found;
  }
  static bool says(const QStringList& paper, const QString& text) {
    // A reader puts blanks where letters stand apart.
    return QString(paper.join(u'\n')).remove(u' ').contains(QString(text).remove(u' '));
  }
  /// Every line of the document stands on the paper with its goods, quantity and amount, in order.
  void expectLines(const QStringList& paper, const QString& number, const DocumentFamily& family,
                   std::string_view quantity) {
    const RowSet books = openSelect(compose("select g_sn,{},{} from {} where {}=? order by id",
                                            {quantity, family.line.columns->total, family.lines, family.number}),
                                    number);
    int row = 0;
    for (const QString& line : paper) {
      const auto goods = QRegularExpression(u"^\\s*(\\d+)\\s+(1000\\d{4})\\s"_qs).match(line);
      if (!goods.hasMatch()) continue;
      ASSERT_LT(row, books.rowCount());
      EXPECT_EQ(goods.captured(1).toInt(), row + 1);
      EXPECT_EQ(goods.captured(2), books.text(row, 0));
      const QString figures = QString(line).remove(u',');
      EXPECT_TRUE(figures.contains(u' ' + books.text(row, 1) + u' ')) << line.toStdString();
      EXPECT_TRUE(figures.contains(QString::number(books.number(row, 2), 'f', 2))) << line.toStdString();
      ++row;
    }
    EXPECT_EQ(row, books.rowCount());
  }
};

TEST_F(DocumentsOnPaper, AReceiptAndItsReturn) {
  receipt::ReceiptDraft draft = draftReceipt("2021-05-02", lines(9));
  draft.paid = 100;
  draft.note = u"镜架请附质检报告"_qs;
  draft.settlement = receipt::Settlement::RestOnAccount;
  const QString number = save(draft);
  const double due = lookupNumber("select j_yfje from jxc_jhd where j_sn=?", number);
  const QStringList paper = printed(number);
  expectLines(paper, number, families::purchaseReceipt, "jh_sl");
  for (const QString& text :
       {u"采购进货单"_qs, u"晴川眼镜有限公司"_qs, u"供货商：上海明视光学有限公司"_qs, number, u"赵强"_qs,
        u"备注：镜架请附质检报告"_qs, u"第1页共1页"_qs, u"应付：%1"_qs.arg(due, 0, 'f', 2), u"实付：100.00"_qs,
        u"大写："_qs + printedCapitals(due)})
    EXPECT_TRUE(says(paper, text)) << text.toStdString() << "\n" << paper.join(u'\n').toStdString();

  audit(number);
  const QString back = waitingReturn(families::purchaseReturn, "2021-05-03", lines(3), 20);
  const QStringList other = printed(back);
  expectLines(other, back, families::purchaseReturn, "th_sl");
  EXPECT_TRUE(says(other, u"采购退货单"_qs));
  EXPECT_FALSE(says(other, u"负"_qs));
}

TEST_F(DocumentsOnPaper, ASaleAndItsReturnWithBalances) {
  receive("2021-05-01", lines(12));
  const QString number = waitingSale("2021-05-03", lines(10, 99.9), 500);
  const double due = lookupNumber("select ls_yfje from jxc_lsxsd where gl_djh=?", number);
  const QStringList paper = printed(number);
  expectLines(paper, number, families::sale, "ls_sl");
  EXPECT_TRUE(says(paper, u"累计欠款：%L1"_qs.arg(due - 500, 0, 'f', 2))) << paper.join(u'\n').toStdString();
  EXPECT_TRUE(says(paper, u"客户：杭州视康眼科门诊部"_qs));
  EXPECT_EQ(words(paper, "合计 +([\\d.]+)"),
            QStringList(lookupValue("select sum(ls_sl) from jxc_lsxssp where gl_djh=?", number)));

  // Without the right to see prices no price is on the paper.
  session().salesTemplate = u"spxs4.fr3"_qs;
  const QStringList plain = printed(number);
  EXPECT_FALSE(says(plain, u"单价"_qs) || says(plain, u"应收"_qs));
  EXPECT_TRUE(words(plain, "(\\d+\\.\\d\\d)").isEmpty()) << plain.join(u'\n').toStdString();

  const QString back = waitingReturn(families::saleReturn, "2021-05-03", lines(2, 99.9));
  const QStringList other = printed(back);
  expectLines(other, back, families::saleReturn, "th_sl");
  EXPECT_TRUE(says(other, u"顾客退货单"_qs));
}

TEST_F(DocumentsOnPaper, TwoHundredLinesLongNamesAndLargeAmounts) {
  execSql("update jxc_goods set g_name=? where g_sn='10001001'",
          u"进口超薄1.74非球面防蓝光双面复合膜变色偏光渐进多焦点镜片（带防伪标识）O'Neil \"限量\" <纪念版>"_qs);
  execSql("update jxc_khxx set kh_name=?",
          u"浙江省杭州市上城区视觉健康管理与配镜连锁服务有限责任公司中河路旗舰店（含眼科门诊部）'A'"_qs);
  std::vector<Line> many = lines(200, 1234567.89);
  const QString number = waitingSale("2021-05-03", many, 0);
  const QString note = u"镜片请附检测报告，渐进片逐副核对瞳高瞳距；"_qs.repeated(9) + u"完"_qs;
  execSql("update jxc_lsxsd set ls_note=? where gl_djh=?", note, number);
  const QStringList paper = printed(number);
  EXPECT_TRUE(paper.join(QString()).remove(u' ').contains(note));
  expectLines(paper, number, families::sale, "ls_sl");
  const double due = lookupNumber("select ls_yfje from jxc_lsxsd where gl_djh=?", number);
  EXPECT_GT(due, 400e6);
  EXPECT_TRUE(says(paper, u"%L1"_qs.arg(due, 0, 'f', 2)));
  EXPECT_TRUE(says(paper, printedCapitals(due))) << printedCapitals(due).toStdString();
  EXPECT_TRUE(says(paper, u"O'Neil\"限量\"<纪念版>"_qs));
  // Every page says whose it is and which one of how many.
  const QStringList pages = words(paper, "第 *(\\d+) *页 *共");
  ASSERT_GT(pages.size(), 10);
  for (qsizetype i = 0; i < pages.size(); ++i)
    EXPECT_EQ(pages[i].toInt(), i + 1);
  EXPECT_EQ(words(paper, "(单据编号：)").size(), pages.size());
}

TEST_F(DocumentsOnPaper, MoneyPapers) {
  using partner_books::Kind;
  partner_books::Draft due;
  due.partner = customer();
  due.date = u"2021-05-03"_qs;
  due.amount = 1234.5;
  due.employee = u"100001"_qs;
  const QString number = *partner_books::saveDocument(customerSide, Kind::Due, due, prompt);
  const auto paperOf = [&] { return readBack(partnerDocumentReport(customerSide, Kind::Due, number), number); };
  for (const bool audited : {false, true}) {
    if (audited) {
      EXPECT_TRUE(partner_books::auditDocument(customerSide, Kind::Due, number));
    }
    const QStringList paper = paperOf();  // the balance counts it in, before and after
    EXPECT_TRUE(says(paper, number) && says(paper, u"壹仟贰佰叁拾肆元伍角"_qs)) << paper.join(u'\n').toStdString();
    EXPECT_EQ(words(paper, "应收余额 +([\\d,.]+)"), QStringList{"1,234.50"}) << paper.join(u'\n').toStdString();
  }

  partner_books::Draft payment = due;
  payment.amount = 200;
  payment.rounding = 0.5;
  payment.account = u"现金"_qs;
  const QString receipt = *partner_books::saveDocument(customerSide, Kind::Payment, payment, prompt);
  EXPECT_TRUE(partner_books::checkSkDj(receipt));
  const QStringList paper = readBack(partnerDocumentReport(customerSide, Kind::Payment, receipt), receipt);
  EXPECT_TRUE(says(paper, u"贰佰元整"_qs) && says(paper, u"1,034.00"_qs)) << paper.join(u'\n').toStdString();

  cash::LineDraft moved = cash::newLine(cash::Movement::Transfer);
  moved.account = u"现金"_qs;
  moved.target = u"工行帐号"_qs;
  moved.amount = 60;
  moved.employee = u"王芳"_qs;
  const QString slip = *cash::saveLine(moved, prompt);
  const QStringList transfer = readBack(cashSlipReport(slip), slip);
  EXPECT_TRUE(says(transfer, u"现金银行转账单"_qs) && says(transfer, u"工行帐号"_qs) && says(transfer, u"陆拾元整"_qs))
      << transfer.join(u'\n').toStdString();

  const expenses::Draft rent{.date = u"2021-05-03"_qs,
                             .type = u"费用"_qs,
                             .amount = 1280.5,
                             .employee = u"100001"_qs,
                             .department = u"100001"_qs,
                             .account = u"工行帐号"_qs,
                             .note = u"五月房租"_qs};
  const QString spent = *expenses::save(rent, prompt);
  const QStringList voucher = readBack(expenseSlipReport(spent), spent);
  for (const QString& text : {u"费用单"_qs, spent, u"默认部门"_qs, u"1,280.50"_qs, u"壹仟贰佰捌拾元伍角"_qs,
                              u"工行帐号"_qs, u"五月房租"_qs, u"默认员工"_qs})
    EXPECT_TRUE(says(voucher, text)) << text.toStdString() << voucher.join(u'\n').toStdString();
}

}  // namespace jxc::documents_on_paper_test
