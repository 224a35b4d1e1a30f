// Statements of many customers as files: a file each, with the documents and the balance of its partner; what is left
// of them when the operator stops.
#include "accounts/partner_statement.h"
#include "masterdata/partners.h"
#include "output/money_reports.h"
#include "output/paper.h"

#include <QDir>

namespace jxc::test::statement_paper_test {

TEST_F(PaperTest, StatementsOfManyCustomersAreAFileEachUntilTheyAreStopped) {
  addGoods("A", 5);
  receive("2021-04-01", {{u"A"_qs, 9, 5}});
  const QString sold = sell("2021-05-02", {{u"A"_qs, 1, 100}}, 30);
  insertRow("jxc_khxx", {{"kh_sn", u"100002"}, {"kh_name", u"张三/西店"}, {"kh_forbid", 0}, {"ck_sn", u"-1"}});
  insertRow("jxc_ysyfk", {{"k_type", u"kh"}, {"k_ghskh", u"100002"}, {"k_rq", u"2021-04-30"}, {"k_ljje", 1234.5}});
  const Criteria may{.from = QStringLiteral("2021-05-01"), .to = QStringLiteral("2021-05-31")};
  const RowSet partners = partner_books::partnersOfStatements(customerSide, may);
  ASSERT_EQ(partners.rowCount(), 2);

  QTemporaryDir folder;
  const auto files = [&] { return QDir(folder.path()).entryList(QDir::Files); };
  EXPECT_EQ(writeStatements(customerSide, partners, may, folder.path(), [](int percent) { return percent < 50; }), 1);
  EXPECT_EQ(files().size(), 1);
  EXPECT_EQ(writeStatements(customerSide, partners, may, folder.path(), {}), 2);
  ASSERT_EQ(files().size(), 2);
  EXPECT_EQ(files().last(), "客户对账单-100002-张三-西店-2021-05-01至2021-05-31.pdf");

  const QString first = textOfPdf(folder.filePath(files().first())).remove(u' ');
  EXPECT_TRUE(first.contains(sold) && first.contains(u"商品销售付款") && first.contains(u"期末余额：70.00"))
      << first.toStdString();
  // Without a document it tells the balance.
  const QString idle = textOfPdf(folder.filePath(files().last())).remove(u' ');
  EXPECT_TRUE(idle.contains(u"客户对账单'张三/西店'") && idle.contains(u"期末余额：1,234.50")) << idle.toStdString();
  EXPECT_TRUE(readBack(statementReport(customerSide, may), u"all"_qs).join(QString()).contains(u"1,304.50"));
  EXPECT_THROW(writeStatements(customerSide, partners, may, folder.filePath(u"none"_qs), {}), std::runtime_error);

  // Whoever must not see what goods are sold for gets no balance either, which is not the same as none.
  setRights(QStringLiteral("100077"), "qtcz", QString(60, u'0'));
  becomeOperator(QStringLiteral("店员"), QStringLiteral("100099"), QStringLiteral("100077"));
  const QString withheld = readBack(statementReport(customerSide, may), u"withheld"_qs).join(QString()).remove(u' ');
  EXPECT_TRUE(withheld.contains(sold) && !withheld.contains(u"100.00") && !withheld.contains(u"70.00") &&
              withheld.contains(u"期末余额：客户确认"))
      << withheld.toStdString();
}

}  // namespace jxc::test::statement_paper_test
