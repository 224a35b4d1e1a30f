// Papers of the documents: which lines print, what the variables say, which form is taken.
#include "harness/files.h"
#include "output/money_reports.h"
#include "output/paper.h"
#include "output/printed_documents.h"
#include "platform/report/template_file.h"
#include "stock/trading_document.h"

namespace jxc::printing_test {

class PrintingTest : public test::PaperTest {
 protected:
  PrintingTest() {
    addGoods("A", 40);
    addGoods("B", 100);
    execSql("update jxc_goods set g_name='镜片' where g_sn='A'");
    execSql("update jxc_goods set g_name='镜架' where g_sn='B'");
  }
  static QStringList goodsOf(const RowSet& rows) { return test::textsOf(rows, {"g_sn"}); }
  static int blank(const RowSet& rows) { return static_cast<int>(goodsOf(rows).count(QString())); }
  std::vector<Line> manyLines(int count) const {
    std::vector<Line> lines;
    for (int i = 0; i < count; ++i)
      lines.push_back({i % 2 == 0 ? "B" : "A", 1.0 + i, 50});
    return lines;
  }
};

TEST_F(PrintingTest, LinesPrintInTheOrderOfTheParameterAndFillAFixedForm) {
  const QString number = waitingSale("2021-05-03", manyLines(12), 0);
  EXPECT_EQ(goodsOf(printLines(number, u"XS")).first(), "B");
  setParameter("cs_dysx", 1);
  EXPECT_EQ(goodsOf(printLines(number, u"XS")), QString("A A A A A A B B B B B B").split(u' '));
  setParameter("cs_dysx", 2);  // by name: 镜架 before 镜片
  EXPECT_EQ(goodsOf(printLines(number, u"XS")).first(), "B");

  // Twelve lines on forms of ten: eight empty ones, at the foot whatever the order is.
  setParameter("cs_cs005", 10);
  insertRow("jxc_tempspxf", {{"g_sn", u"A"}, {"a_name", session().a_name}});
  for (const int order : {0, 1, 2}) {
    setParameter("cs_dysx", order);
    const RowSet rows = printLines(number, u"XS");
    ASSERT_EQ(rows.rowCount(), 20) << order;
    EXPECT_EQ(blank(rows), 8) << order;
    EXPECT_EQ(goodsOf(rows).mid(12).join(QString()), "") << order;
  }
  // A line that is there for the books only does not print, and leaves no gap either; then ten are left to fill two.
  execSql("update jxc_lsxssp set ls_dzl=0 where id in (select top 2 id from jxc_lsxssp where gl_djh=? order by id)",
          number);
  EXPECT_EQ(printLines(number, u"XS").rowCount(), 10);
  EXPECT_EQ(blank(printLines(number, u"XS")), 0);
  // What the operator is picking meanwhile stays.
  EXPECT_EQ(lookupNumber("select count(*) from jxc_tempspxf"), 1);

  // Purchases have a form of their own; returns never fill up.
  setParameter("cs_cs006", 5);
  const QString receipt = receive("2021-05-02", {{"A", 3, 40}, {"B", 1, 100}});
  EXPECT_EQ(printLines(receipt, u"CJ").rowCount(), 5);
  const QString back = waitingReturn(families::saleReturn, "2021-05-03", {{"A", 1, 50}});
  EXPECT_EQ(printLines(back, u"XT").rowCount(), 1);
  EXPECT_THROW(printLines(number, u"ZZ"), std::out_of_range);
}

TEST_F(PrintingTest, PriceLabelsComeInTheOrderOfTheMarks) {
  constexpr int goods = 250;  // asked for in more than two portions
  std::vector<std::int64_t> marked;
  for (int i = 0; i < goods; ++i)
    marked.insert(marked.begin(), insertRow("jxc_goods", {{"g_sn", i}, {"g_name", u"镜架"}}));
  marked.insert(marked.begin() + 120, marked.back() + 1000);  // deleted by another station meanwhile
  insertRow("jxc_tempspxf", {{"g_sn", u"A"}, {"a_name", session().a_name}});
  const report::Report labels = priceLabelReport(marked);
  const QStringList numbers = goodsOf(labels.rows());
  ASSERT_EQ(numbers.size(), goods);
  for (int i = 0; i < goods; ++i)
    EXPECT_EQ(numbers[i].toInt(), goods - 1 - i);
  EXPECT_EQ(labels.rows().front().text("company"), session().c_jc);
  EXPECT_EQ(lookupNumber("select count(*) from jxc_tempspxf"), 1);
}

TEST_F(PrintingTest, GiftsAndGoodsWithoutAClassStandOnThePaper) {
  const QString number = waitingSale("2021-05-03", {{"A", 2, 50}, {"B", 1, 0}}, 0);
  execSql("update jxc_lsxssp set t_zp='(赠品)' where g_sn='B' and gl_djh=?", number);
  execSql("update jxc_lsxssp set t_zp=null where g_sn='A' and gl_djh=?", number);
  execSql("update jxc_goods set gc_sn='9999' where g_sn='A'");
  const RowSet rows = printLines(number, u"XS");
  ASSERT_EQ(rows.rowCount(), 2);
  EXPECT_EQ(rows[0].text("g_name"), "镜片");
  EXPECT_EQ(rows[1].text("g_name"), "镜架(赠品)");
  EXPECT_EQ(rows[0].number("sj"), 50);
}

TEST_F(PrintingTest, ADraftPrintsTheLinesOfItsOperatorOnly) {
  const QString number = newDocumentNumber(families::sale, "2021-05-03");
  for (const char* who : {"admin", "other"})
    test::writeLine(families::sale, number, "2021-05-03", {"A", 1, 50, {{"a_name", who}}});
  EXPECT_EQ(printLines(number, u"XS", LineScope::OwnDraft).rowCount(), 1);
  setParameter("cs_cs005", 4);
  EXPECT_EQ(blank(printLines(number, u"XS", LineScope::OwnDraft)), 3);
  EXPECT_EQ(printLines(number, u"XS").rowCount(), 4);
}

TEST_F(PrintingTest, VariablesOfATradingDocument) {
  execSql("update jxc_company set c_name='O''Neil 眼镜',c_tele='0571'");
  loadSession();
  execSql("update jxc_ghsxx set ghs_name='明''视',ghs_lxr='赵强' where ghs_sn='100001'");
  receipt::ReceiptDraft draft = draftReceipt("2021-05-02", {{"A", 10, 40}, {"B", 1, 103.5}});
  draft.paid = 500.5;
  draft.freight = 0.5;
  draft.settlement = receipt::Settlement::RestOnAccount;
  const QString number = save(draft);
  auto paper = report(u"cgjh");
  fillPrintVars(paper, number, u"cgjh");
  // Text stands in quotes, a quote in it twice: the expression stays whole.
  EXPECT_EQ(paper.variable(u"comName"), "'O''Neil 眼镜'");
  EXPECT_EQ(paper.variable(u"ghsName"), "'明''视'");
  EXPECT_EQ(paper.variable(u"ghsLxr"), "'赵强'");
  EXPECT_EQ(paper.variable(u"jhDate"), "'2021-05-02'");
  EXPECT_EQ(paper.variable(u"xxyf"), "'503.50'");
  EXPECT_EQ(paper.variable(u"xxsf"), "'500.50'");
  EXPECT_EQ(paper.variable(u"yunfei"), "'.50'");
  EXPECT_EQ(paper.variable(u"yf"), "'伍佰零叁元伍角'");
  EXPECT_EQ(paper.variable(u"Kmmc"), "'现金'");
  EXPECT_EQ(paper.variable(u"checker"), "''");
  EXPECT_EQ(paper.variable(u"khqk"), "");  // a supplier has no such line

  // A return's head holds minus the amounts; its paper reads like the screen.
  const QString back = waitingReturn(families::purchaseReturn, "2021-05-03", {{"A", 1, 40}}, 15);
  auto other = report(u"cgth");
  fillPrintVars(other, back, u"cgth");
  EXPECT_EQ(other.variable(u"yf"), "'肆拾元整'");
  EXPECT_EQ(other.variable(u"xxsf"), "'15.00'");
}

TEST_F(PrintingTest, BalancesBeforeAndAfterADocument) {
  receive("2021-05-01", {{"A", 50, 40}});
  sell("2021-05-01", {{"A", 1, 30}});  // owes 30
  const auto balances = [this](const QString& number, QStringView kind) {
    auto paper = report(u"spxs");
    fillPrintVars(paper, number, kind);
    return paper.variable(u"khqk") + u' ' + paper.variable(u"ljqkje");
  };
  const QString sale = waitingSale("2021-05-03", {{"A", 2, 100}}, 50);
  EXPECT_EQ(balances(sale, u"spxs"), "'30.00' '180.00'");
  EXPECT_EQ(audit(sale), AuditOutcome::Audited);
  EXPECT_EQ(balances(sale, u"spxs"), "'30.00' '180.00'");  // the same paper after the audit
  const QString cash = waitingSale("2021-05-03", {{"A", 1, 100}}, 100, 0);
  EXPECT_EQ(balances(cash, u"spxs"), "'180.00' '180.00'");
  const QString back = waitingReturn(families::saleReturn, "2021-05-03", {{"A", 1, 100}}, 20);
  EXPECT_EQ(balances(back, u"xsth"), "'180.00' '100.00'");
  EXPECT_EQ(audit(back), AuditOutcome::Audited);
  EXPECT_EQ(balances(back, u"xsth"), "'180.00' '100.00'");
}

TEST_F(PrintingTest, UnknownKindsAndLostDocumentsNameTheCompanyOnly) {
  for (const auto* kind : {u"nothing", u"cgd", u"spdd", u"xshh"}) {
    auto paper = report(u"spxs");
    fillPrintVars(paper, "XS21050399999", kind);
    EXPECT_NE(paper.variable(u"comName"), "");
    EXPECT_EQ(paper.variable(u"khName"), "");
  }
  auto lost = report(u"spxs");
  fillPrintVars(lost, "XS21050399999", u"spxs");
  EXPECT_EQ(lost.variable(u"ckName"), "");
  EXPECT_GE(lost.prepare().count(), 1);
}

TEST_F(PrintingTest, VariablesOfStockDocuments) {
  execSql("update jxc_goods set g_sj=99 where g_sn='A'");  // it went at the price of its day
  insertRow("jxc_ckxx", {{"ck_sn", u"100002"}, {"ck_name", u"二号店"}});
  const QString moved = test::waitingDocument(
      families::transfer, "2021-05-03", {{"ck_in", u"100002"}, {"db_note", u"补货"}}, {{"A", 4, 8, {{"db_sj", 12.5}}}});
  auto transfer = report(u"kcdbd");
  fillPrintVars(transfer, moved, u"kcdb");
  EXPECT_EQ(transfer.variable(u"ckIn"), "'二号店'");
  EXPECT_EQ(transfer.variable(u"yf"), "'伍拾元整'");
  EXPECT_EQ(printLines(moved, u"DB")[0].number("sjje"), 50);
  for (const bool seesCost : {true, false}) {
    session().canSeeCost = seesCost;
    const report::Report unsaved = draftDocumentReport(families::transfer, DocumentDraft{.number = moved});
    EXPECT_EQ(unsaved.variable(u"seesCost"), seesCost ? "1" : "0");
  }
  session().canSeeCost = true;

  const QString lost = test::waitingDocument(families::loss, "2021-05-03", {{"bs_note", u"断裂"}}, {});
  auto loss = report(u"bsby");
  fillPrintVars(loss, lost, u"spbs");
  EXPECT_EQ(loss.variable(u"title") + loss.variable(u"dNote"), "'商品报损单''断裂'");

  insertRow("jxc_ckxx", {{"ck_sn", u"100007"}, {"ck_name", u"三号店"}});
  // The warehouse of the second part was deleted.
  const QString taken =
      test::waitingDocument(families::split, "2021-05-03", {{"g_sn", u"B"}, {"cf_cbj", 100.0}, {"cf_sl", 3.0}},
                            {{"A", 1, 5, {{"ck_sn", u"100007"}}}, {"A", 1, 5, {{"ck_sn", u"100099"}}}});
  auto split = report(u"cfd");
  fillPrintVars(split, taken, u"spcf");
  EXPECT_EQ(split.variable(u"gName") + split.variable(u"cfSl") + split.variable(u"cfZje"), "'镜架''3''300.00'");
  const RowSet parts = printLines(taken, u"CF");
  ASSERT_EQ(parts.rowCount(), 2);
  EXPECT_EQ(parts[0].text("ck_name") + parts[1].text("ck_name"), "三号店");

  const QString counted =
      test::waitingDocument(families::stocktake, "2021-05-03", {{"pd_note", u"月末"}, {"ck_sn", u""}}, {});
  auto count = report(u"kcpdd");
  fillPrintVars(count, counted, u"kcpd");
  EXPECT_EQ(count.variable(u"Note") + count.variable(u"ckName"), "'月末'''");

  // A loan says what was lent also after a part of it came back, and the return says what came back.
  receive("2021-05-01", {{"A", 5, 40}});
  const QString lent = audited(test::waitingDocument(families::loan, "2021-05-03", {}, {{"A", 5, 40}}));
  const auto line = lookupValue("select id from jxc_khjhsp").toLongLong();
  const QString back = test::returnLoan("2021-05-03", line, 2, 0, 40),
                kept = test::returnLoan("2021-05-03", line, 0, 3, 40);
  EXPECT_EQ(printLines(lent, u"JH")[0].number("sl"), 5);
  EXPECT_EQ(printLines(back, u"HH")[0].number("sl"), 2);
  EXPECT_EQ(printLines(kept, u"HH")[0].number("sl"), 3);
  for (const auto& [number, word] : {std::pair{lent, "'借货'"}, std::pair{back, "'还货'"}}) {
    auto loan = report(u"khjh");
    fillPrintVars(loan, number, u"khjh");
    EXPECT_EQ(loan.variable(u"djName"), word);
  }
}

TEST_F(PrintingTest, TheFormFollowsRightsParametersAndTheChoice) {
  const DocumentFamily& sale = families::sale;
  const DocumentFamily& purchase = families::purchaseReceipt;
  EXPECT_EQ(templateOf(sale), "spxs.fr3");
  setParameter("cs_lsj", 1);
  EXPECT_EQ(templateOf(sale), "spxs2.fr3");
  EXPECT_FALSE(asksFormat(sale));
  setParameter("cs_cs010", 1);
  EXPECT_TRUE(asksFormat(sale));
  EXPECT_FALSE(asksFormat(purchase));
  EXPECT_EQ(templateChoices(sale).size(), 3u);
  chooseTemplate(sale, u"spxs4.fr3");
  EXPECT_EQ(templateOf(sale), "spxs4.fr3");
  loadSession();
  EXPECT_EQ(templateOf(sale), "spxs2.fr3");  // the choice holds until then

  // Who sees neither cost nor price is not offered a form that shows them, asked or not.
  setRights("100009", "qtcz", QString(40, u'0'));
  becomeOperator("店员", "100009", "100009");
  EXPECT_EQ(templateOf(sale), "spxs4.fr3");
  EXPECT_EQ(templateOf(purchase), "cgjh2.fr3");
  EXPECT_EQ(templateOf(families::purchaseReturn), "cgth2.fr3");
  EXPECT_EQ(templateOf(families::loss), "bsby2.fr3");
  EXPECT_EQ(templateOf(families::bundle), "kbd2.fr3");
  EXPECT_EQ(templateOf(families::stocktake), "kcpdd2.fr3");
  session().transferTemplate.clear();
  EXPECT_EQ(templateOf(families::transfer), "kcdbd3.fr3");
  session().transferTemplate = u"kcdbd2.fr3"_qs;  // it shows no cost anyway
  EXPECT_EQ(templateOf(families::transfer), "kcdbd2.fr3");
  ASSERT_EQ(templateChoices(sale).size(), 1u);
  EXPECT_EQ(QStringView(templateChoices(sale).front().file), u"spxs4.fr3");

  session().salesTemplate.clear();
  static_cast<void>(templateChoices(sale));
  EXPECT_EQ(session().salesTemplate, "spxs.fr3");
}

TEST_F(PrintingTest, ATemplateMayAskForCapitals) {
  report::Template design;
  report::addBand(design, report::BandKind::ReportTitle, 8)
      .items.push_back(report::textItem(0, 0, 100, 6, u"大写：[Capitals(12.5+val(''))]"_qs));
  EXPECT_EQ(reportOver(design).prepare().lines(0), QStringList{u"大写：壹拾贰元伍角"_qs});
  EXPECT_EQ(sampleOf(design).prepare().lines(0), QStringList{u"大写：壹拾贰元伍角"_qs});
}

TEST_F(PrintingTest, MissingTemplatesComeBackAndChangedOnesStay) {
  ASSERT_TRUE(QFile::remove(templatePath(u"spxs.fr3")));
  EXPECT_THROW(openReport(u"spxs"), report::TemplateError);
  test::writeBytes(templatePath(u"cgjh"), "mine");
  EXPECT_EQ(bringTemplates(), QStringList{"spxs.fr3"});
  EXPECT_NO_THROW(openReport(u"spxs"));
  EXPECT_EQ(test::bytesOf(templatePath(u"cgjh")), "mine");
  EXPECT_TRUE(QFile::remove(templatePath(u"cgjh")));
}

/// Every delivered template loads, and lays out its own sample without an expression that fails.
TEST_F(PrintingTest, EveryTemplateStandsOnItsOwn) {
  for (const KnownTemplate& each : knownTemplates()) {
    const QString name = words(each.name);
    SCOPED_TRACE(name.toStdString());
    if (deliveredTemplate(name).isEmpty()) {
      ADD_FAILURE() << "not delivered";
      continue;
    }
    const report::Pages pages = report::sampleReport(report::loadTemplate(templatePath(name))).prepare();
    EXPECT_GE(pages.count(), 1);
    keep(pages, name);
    for (const report::Fault& fault : pages.faults())
      ADD_FAILURE() << fault.where.toStdString() << ": " << fault.content.toStdString() << ": "
                    << fault.message.toStdString();
  }
}

/// Whatever the shop has written, a form of so many lines has these lines on each page, and its foot on the last.
TEST_F(PrintingTest, AFormOfFixedLinesHoldsThemAndItsFootWhateverTheTexts) {
  const QString longText = u"进口超薄1.74非球面防蓝光双面复合膜渐进多焦点镜片（带防伪标识）-12.50/-4.00"_qs.repeated(2);
  const auto isWords = [](const QString& sample) {
    return !sample.isEmpty() && std::any_of(sample.begin(), sample.end(), [](QChar c) { return c.unicode() > 0xff; });
  };
  int forms = 0;
  for (const KnownTemplate& each : knownTemplates()) {
    report::Template t = report::loadTemplate(templatePath(QStringView(each.name)));
    const bool isDocument =
        std::ranges::any_of(t.bands, [](const auto& b) { return b.kind == report::BandKind::Summary; });
    if (t.page.height > 200 || t.page.roll || !isDocument) continue;
    SCOPED_TRACE(words(each.name).toStdString());
    ++forms;
    for (report::Variable& variable : t.variables)
      if (isWords(variable.sample)) variable.sample = report::quoted(longText);
    for (report::DetailField& field : t.fields) {
      if (field.name == u"g_sn") field.sample = u"goods"_qs;
      if (isWords(field.sample) || field.name == u"gg_name") field.sample = longText;
    }
    for (const auto& [fixed, rows] : {std::pair{10, 10}, {10, 30}, {15, 15}}) {
      report::Report form = report::sampleReport(t, rows);
      form.setFixedLines(fixed);
      const report::Pages pages = form.prepare();
      if (fixed == 10 && rows == 10) keep(pages, u"fixed_"_qs + words(each.name));
      ASSERT_EQ(pages.count(), rows / fixed) << fixed;
      std::vector<int> lines(static_cast<std::size_t>(pages.count()));
      for (const report::Pages::Hit& hit : pages.find(u"goods"_qs))
        ++lines[static_cast<std::size_t>(hit.page)];
      EXPECT_EQ(lines, std::vector<int>(lines.size(), fixed));
    }
  }
  EXPECT_GT(forms, 20);
}

}  // namespace jxc::printing_test
