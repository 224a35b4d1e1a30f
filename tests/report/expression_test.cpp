// What expressions and formats print, and what becomes of those that cannot be printed.
#include "harness/gui.h"
#include "harness/qt_printers.h"
#include "harness/report_samples.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
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
      return u"大写"_qs + values[0].text();
    });
    report.setNow(u"2026-05-03 14:05:09"_qs);
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
  EXPECT_EQ(print(u"单价[dj]元×[sl] [未闭合"_qs), u"单价0.1元×3 [未闭合"_qs);
}

TEST_F(ReportExpression, VariablesHoldExpressionTextAndGoBeforeFields) {
  variables = {{u"KHNAME"_qs, quoted(u"O'Neill \"x\"")},
               {u"je"_qs, u"sl*dj"_qs},
               {u"name"_qs, u"'变量'"_qs},
               {u"empty"_qs, QString()}};
  EXPECT_EQ(value("khName"), u"O'Neill \"x\""_qs);
  EXPECT_EQ(value("je"), u"0.3"_qs);
  EXPECT_EQ(value("name"), u"变量"_qs);
  EXPECT_EQ(value("field.name & var.name"), u"镜架变量"_qs);
  EXPECT_EQ(value("empty"), QString());
  EXPECT_TRUE(faults.empty());
  // A document that is not there leaves its names unset: nothing on paper, but told to whoever writes the template.
  EXPECT_EQ(print(u"客户：[kehu]"_qs), u"客户："_qs);
  ASSERT_EQ(faults.size(), 1u);
  EXPECT_TRUE(faults[0].message.contains(u"kehu"));
}

TEST_F(ReportExpression, FormatsOfNumbersAndDates) {
  EXPECT_EQ(formatted("1234567.891", "#,##0.00"), u"1,234,567.89"_qs);
  EXPECT_EQ(formatted("0.5", "#.00"), u".50"_qs);
  EXPECT_EQ(formatted("-3", "￥#,##0.00元"), u"-￥3.00元"_qs);
  EXPECT_EQ(formatted("0.1234", "0.0%"), u"12.3%"_qs);
  EXPECT_EQ(formatted("'12.5'", "0.00"), u"12.50"_qs);
  EXPECT_EQ(formatted("name", "0.00"), u"镜架"_qs);
  EXPECT_EQ(formatted("rq", "yyyy年m月d日"), u"2026年5月3日"_qs);
  EXPECT_EQ(formatted("now()", "hh:nn"), u"14:05"_qs);
  EXPECT_EQ(formatted("nothing", "0.00"), QString());
  hideZero = true;
  EXPECT_EQ(formatted("0", "#,##0.00"), QString());
  EXPECT_EQ(formatted("0.001", "0.00"), QString());
  EXPECT_EQ(value("sl-3"), QString());
  EXPECT_EQ(value("sl"), u"3"_qs);
}

TEST_F(ReportExpression, AFaultPrintsAMarkAndIsListedWithItsPlace) {
  const char* faulty[] = {"sl+",        "nosuch(1)",      "sl/0",   "name*2",     "Sum(Sum(sl))", "Sum(sl,'oben')",
                          "left(name)", "(select 1)",     "'offen", "?",          "Capitals(-1)", "Capitals(1,2)",
                          "a.b",        "Sum(sl,'page')", "sl ~ 1", "1e400*1e400"};
  for (const char* expression : faulty) {
    const QString printed = value(expression);
    // A quote that nobody closes swallows the bracket: then all of it is words.
    if (printed != u'[' + QString::fromUtf8(expression) + u']') {
      EXPECT_EQ(printed, u"#错误"_qs) << expression;
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
  variables = {{u"a"_qs, u"b+1"_qs}, {u"b"_qs, u"a+1"_qs}};
  EXPECT_EQ(value("a"), u"#错误"_qs);
  ASSERT_EQ(faults.size(), 1u);
  variables = {{u"s"_qs, u"Sum(s)"_qs}};
  EXPECT_EQ(value("s"), u"#错误"_qs);
  // Doubled forty times it would be a text of a million million characters.
  variables = {{u"v0"_qs, u"'0123456789'"_qs}};
  for (int i = 1; i <= 40; ++i)
    variables.push_back({u"v%1"_qs.arg(i), u"v%1 & v%1"_qs.arg(i - 1)});
  EXPECT_EQ(value("v40"), u"#错误"_qs);
  EXPECT_EQ(value("len(v10)"), u"10240"_qs);
  // The same as a number is looked at once each.
  for (auto& [name, expression] : variables)
    expression = name == u"v0" ? u"1"_qs : QString(expression).replace(u'&', u'+');
  EXPECT_EQ(value("v40"), u"1099511627776"_qs);
  EXPECT_EQ(print(u'[' + QString(5000, u'(') + u'1' + QString(5000, u')') + u']'), u"#错误"_qs);
}

TEST_F(ReportExpression, SumsKnowTheirRange) {
  rows = rowsOf({"g", "n"}, {{"a", "1"}, {"a", "2"}, {"b", "0.1"}, {"b", "0.2"}, {"b", ""}});
  Template t;
  t.groups = {{.by = u"g"_qs}};
  addBand(t, BandKind::MasterData, 10)
      .items.push_back(textItem(0, 0, 190, 10,
                                QStringLiteral("[n] [Sum(n)] [Sum(n,'report')] [Sum(n,'running')] [Count(n)] "
                                               "[Count(*)] [Max(n,'running')] [Min(n)] [Sum(iif(n>0.1,n,0))]")));
  Report report(t);
  report.setRows(rows);
  EXPECT_EQ(test::linesOf(report.prepare()),
            (QStringList{u"1 3 3.3 1 2 2 1 1 3"_qs, u"2 3 3.3 3 2 2 2 1 3"_qs, u"0.1 0.3 3.3 3.1 2 3 2 0.1 0.2"_qs,
                         u"0.2 0.3 3.3 3.3 2 3 2 0.1 0.2"_qs, u" 0.3 3.3 3.3 2 3 2 0.1 0.2"_qs}));
}

TEST_F(ReportExpression, AnExpressionWithoutEndIsNotEvenRead) {
  EXPECT_EQ(value(("1" + std::string(3000, ' ') + "+1").c_str()), u"2"_qs);
  EXPECT_EQ(value(("1" + std::string(5000, ' ') + "+1").c_str()), u"#错误"_qs);
  ASSERT_FALSE(faults.empty());
}

}  // namespace jxc::report_expression_test
