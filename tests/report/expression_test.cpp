// What expressions and formats print, and what becomes of those that cannot be printed.
#include "harness/gui.h"
#include "harness/qt_printers.h"
#include "harness/report_samples.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <utility>

namespace jxc::report_expression_test {

using namespace report;
using test::rowsOf;

/// Prints one object over one row.
class ReportExpression : public testing::Test {
 protected:
  ReportExpression() { test::needGui(); }

  QString print(const QString& content) {
    Item item = textItem(0, 0, 190, 10, content);
    item.format = format;
    item.hideZero = hideZero;
    Template t;
    addBand(t, BandKind::MasterData, 10).items.push_back(item);
    Report report(t);
    for (const auto& [name, expression] : variables)
      report.setVariable(name, expression);
    report.setFunction(u"Capitals", 1, 1, [](std::span<const Value> values) -> Value {
      if (values[0].number() < 0) throw std::runtime_error("负数没有大写");
      return QStringLiteral("大写") + values[0].text();
    });
    report.setNow(QStringLiteral("2026-05-03 14:05:09"));
    report.setRows(rows);
    const Pages pages = report.prepare();
    faults = pages.faults();
    return test::linesOf(pages).join(u'|');
  }
  QString value(const char* expression) { return print(u'[' + QString::fromUtf8(expression) + u']'); }
  QString formatted(const char* expression, const char* pattern) {
    format = QString::fromUtf8(pattern);
    QString result = value(expression);
    format.clear();
    return result;
  }

  RowSet rows =
      rowsOf({"sl", "dj", "name", "code", "nothing", "rq"}, {{"3", "0.1", "镜架", "0012x", "", "2026-05-03"}});
  std::vector<std::pair<QString, QString>> variables;
  std::vector<Fault> faults;
  QString format;
  bool hideZero = false;
};

TEST_F(ReportExpression, TheGrammarIsThatOfTheDialect) {
  const std::pair<const char*, const char*> cases[] = {
      {"sl*dj", "0.3"},
      {"0.1+0.2", "0.3"},
      {"sl/2", "1.5"},
      {"7\\2 & '/' & 7 mod 2", "3/1"},
      {"2^10", "1024"},
      {"-sl+10", "7"},
      {"name+'（'+code+'）'", "镜架（0012x）"},
      {"'编号'+sl", "编号3"},
      {"'12'+1", "13"},
      {"name & nothing & '。'", "镜架。"},
      {"nothing+1", ""},
      {"iif(sl>2,'多','少')", "多"},
      {"iif(dj<>0,sl/dj,0)", "30"},
      {"nz(nothing,'无')", "无"},
      {"iif(name like '镜%' and not code like '%Y','是','否')", "是"},
      {"iif(sl between 1 and 3 and sl in (1,3),1,0)", "1"},
      {"iif(nothing is null,'空','')", "空"},
      {"left(name,1) & right(name,1) & mid('ABCDE',2,3) & len(name)", "镜架BCD2"},
      {"instr('甲乙丙','丙') & ucase('ab') & trim('  x ') & replace('a-b','-','+') & string(3,'*')", "3ABxa+b***"},
      {"round(2.675,2) & ' ' & int(-1.5) & ' ' & fix(-1.5) & ' ' & abs(-2) & ' ' & sgn(-5)", "2.68 -2 -1 2 -1"},
      {"val('12.5元')", "12.5"},
      {"format(1234.5,'#,##0.00') & format(rq,'yyyy/mm')", "1,234.502026/05"},
      {"date() & ' ' & time()", "2026-05-03 14:05:09"},
      {"year(rq)*100+month(rq) & weekday(rq)", "2026051"},
      {"datediff('d','2026-01-01',rq) & dateadd('m',1,'2026-01-31')", "1222026-02-28"},
      {"[name] & [code]", "镜架0012x"},
      {"field.code", "0012x"},
      {"Capitals(sl)", "大写3"},
      {"'it''s [ok]'", "it's [ok]"},
      {"'a' < 'b' and 10 > 9", "1"},
      {"true", "1"},
  };
  for (const auto& [expression, expected] : cases)
    EXPECT_EQ(value(expression), QString::fromUtf8(expected)) << expression;
  EXPECT_EQ(print(QStringLiteral("单价[dj]元×[sl] [未闭合")), QStringLiteral("单价0.1元×3 [未闭合"));
}

TEST_F(ReportExpression, VariablesHoldExpressionTextAndGoBeforeFields) {
  variables = {{QStringLiteral("KHNAME"), quoted(u"O'Neill \"x\"")},
               {QStringLiteral("je"), QStringLiteral("sl*dj")},
               {QStringLiteral("name"), QStringLiteral("'变量'")},
               {QStringLiteral("empty"), QString()}};
  EXPECT_EQ(value("khName"), QStringLiteral("O'Neill \"x\""));
  EXPECT_EQ(value("je"), QStringLiteral("0.3"));
  EXPECT_EQ(value("name"), QStringLiteral("变量"));
  EXPECT_EQ(value("field.name & var.name"), QStringLiteral("镜架变量"));
  EXPECT_EQ(value("empty"), QString());
  EXPECT_TRUE(faults.empty());
  // A document that is not there leaves its names unset: nothing on paper, but told to whoever writes the template.
  EXPECT_EQ(print(QStringLiteral("客户：[kehu]")), QStringLiteral("客户："));
  ASSERT_EQ(faults.size(), 1u);
  EXPECT_TRUE(faults[0].message.contains(u"kehu"));
}

TEST_F(ReportExpression, FormatsOfNumbersAndDates) {
  EXPECT_EQ(formatted("1234567.891", "#,##0.00"), QStringLiteral("1,234,567.89"));
  EXPECT_EQ(formatted("0.5", "#.00"), QStringLiteral(".50"));
  EXPECT_EQ(formatted("-3", "￥#,##0.00元"), QStringLiteral("-￥3.00元"));
  EXPECT_EQ(formatted("0.1234", "0.0%"), QStringLiteral("12.3%"));
  EXPECT_EQ(formatted("'12.5'", "0.00"), QStringLiteral("12.50"));
  EXPECT_EQ(formatted("name", "0.00"), QStringLiteral("镜架"));
  EXPECT_EQ(formatted("rq", "yyyy年m月d日"), QStringLiteral("2026年5月3日"));
  EXPECT_EQ(formatted("now()", "hh:nn"), QStringLiteral("14:05"));
  EXPECT_EQ(formatted("nothing", "0.00"), QString());
  hideZero = true;
  EXPECT_EQ(formatted("0", "#,##0.00"), QString());
  EXPECT_EQ(formatted("0.001", "0.00"), QString());
  EXPECT_EQ(value("sl-3"), QString());
  EXPECT_EQ(value("sl"), QStringLiteral("3"));
}

TEST_F(ReportExpression, AFaultPrintsAMarkAndIsListedWithItsPlace) {
  const char* faulty[] = {"sl+",        "nosuch(1)",      "sl/0",   "name*2",     "Sum(Sum(sl))", "Sum(sl,'oben')",
                          "left(name)", "(select 1)",     "'offen", "?",          "Capitals(-1)", "Capitals(1,2)",
                          "a.b",        "Sum(sl,'page')", "sl ~ 1", "1e400*1e400"};
  for (const char* expression : faulty) {
    const QString printed = value(expression);
    // A quote that nobody closes swallows the bracket: then all of it is words.
    if (printed != u'[' + QString::fromUtf8(expression) + u']') {
      EXPECT_EQ(printed, QStringLiteral("#错误")) << expression;
      ASSERT_EQ(faults.size(), 1u) << expression;
      EXPECT_EQ(faults[0].content, QString::fromUtf8(expression));
      EXPECT_TRUE(faults[0].where.startsWith(u"明细行")) << expression;
      EXPECT_FALSE(faults[0].message.isEmpty());
    } else {
      EXPECT_STREQ(expression, "'offen");
    }
  }
}

TEST_F(ReportExpression, VariablesThatNameOneAnotherEndInAFault) {
  variables = {{QStringLiteral("a"), QStringLiteral("b+1")}, {QStringLiteral("b"), QStringLiteral("a+1")}};
  EXPECT_EQ(value("a"), QStringLiteral("#错误"));
  ASSERT_EQ(faults.size(), 1u);
  variables = {{QStringLiteral("s"), QStringLiteral("Sum(s)")}};
  EXPECT_EQ(value("s"), QStringLiteral("#错误"));
  // Doubled forty times it would be a text of a million million characters.
  variables = {{QStringLiteral("v0"), QStringLiteral("'0123456789'")}};
  for (int i = 1; i <= 40; ++i)
    variables.push_back({QStringLiteral("v%1").arg(i), QStringLiteral("v%1 & v%1").arg(i - 1)});
  EXPECT_EQ(value("v40"), QStringLiteral("#错误"));
  EXPECT_EQ(value("len(v10)"), QStringLiteral("10240"));
  // The same as a number is looked at once each.
  for (auto& [name, expression] : variables)
    expression = name == u"v0" ? QStringLiteral("1") : QString(expression).replace(u'&', u'+');
  EXPECT_EQ(value("v40"), QStringLiteral("1099511627776"));
  EXPECT_EQ(print(u'[' + QString(5000, u'(') + u'1' + QString(5000, u')') + u']'), QStringLiteral("#错误"));
}

TEST_F(ReportExpression, SumsKnowTheirRange) {
  rows = rowsOf({"g", "n"}, {{"a", "1"}, {"a", "2"}, {"b", "0.1"}, {"b", "0.2"}, {"b", ""}});
  Template t;
  t.groups = {{.by = QStringLiteral("g")}};
  addBand(t, BandKind::MasterData, 10)
      .items.push_back(textItem(0, 0, 190, 10,
                                QStringLiteral("[n] [Sum(n)] [Sum(n,'report')] [Sum(n,'running')] [Count(n)] "
                                               "[Count(*)] [Max(n,'running')] [Min(n)] [Sum(iif(n>0.1,n,0))]")));
  Report report(t);
  report.setRows(rows);
  EXPECT_EQ(
      test::linesOf(report.prepare()),
      (QStringList{QStringLiteral("1 3 3.3 1 2 2 1 1 3"), QStringLiteral("2 3 3.3 3 2 2 2 1 3"),
                   QStringLiteral("0.1 0.3 3.3 3.1 2 3 2 0.1 0.2"), QStringLiteral("0.2 0.3 3.3 3.3 2 3 2 0.1 0.2"),
                   QStringLiteral(" 0.3 3.3 3.3 2 3 2 0.1 0.2")}));
}

}  // namespace jxc::report_expression_test
