#include "accounts/income_statement.h"

#include "accounts/expenses.h"
#include "accounts/partner_overview.h"
#include "core/clock.h"
#include "core/rights.h"
#include "core/text.h"

#include <algorithm>
#include <string>

namespace jxc {
namespace income_statement_detail {

using Amounts = std::vector<double>;

/// A column of the statement: the days of a period, both included; without days all time.
struct Span {
  QString from, to;
  bool isAllTime() const { return from.isEmpty() && to.isEmpty(); }
};
using Spans = std::vector<Span>;

/// What the role may read. Taken in the window's thread.
struct Sight {
  bool price = hasRight(kSeesPrice), cost = hasRight(kSeesCost);
};

struct OfType {
  QString type;
  Amounts amounts;
};

/// A group of types, 其他收入 or 其他费用, with what of it waits for its audit.
struct Group {
  Amounts sum, waiting;
  std::vector<OfType> types;
  int waits = 0;  // lines
};

struct Leaves {
  Amounts sales, cost, outside, payables;
  Group income, expenses;
};

/// Billed to customers: sales, returns, receivables by hand, what was rounded off a receipt.
constexpr char kSales[] = "(k_djlx='XS' or k_djlx='XT' or k_djlx='YS')";
constexpr char kOutside[] = "(k_type='ghs' and left(gl_djh,2)='WS')";
constexpr char kPayable[] = "k_djlx='YF'";
/// What a closing carried forward was billed before it. It has a kind of its own; older releases told it by these words
/// alone.
constexpr char kNotCarried[] = "(k_djtxt is null or k_djtxt<>'数据结算结转')";
constexpr char kSold[] = "(gl_flag='xs' or gl_flag='xt')";
/// A line of no type.
constexpr char kType[] = "iif(a.fy_lx is null or a.fy_lx='','-',a.fy_lx)";

std::string onlyIf(const std::string& condition, const std::string& amount) {
  return "iif(" + condition + "," + amount + ",0)";
}

QString firstOf(const QString& day) {
  return day.isEmpty() ? QStringLiteral("0000") : day;
}

/// Of a month its 31st: dates are texts.
QString lastDayOf(const QString& to) {
  constexpr qsizetype kMonth = 7;
  return to.size() == kMonth ? to + u"-31"_qs : to;
}

/// ",sum(…) as NAME0,sum(…) as NAME1": the amount in each of the spans.
void addSums(Sql& sql, const std::string& amount, const std::string& date, const Spans& spans, const char* name) {
  for (std::size_t i = 0; i < spans.size(); ++i) {
    const Span& span = spans[i];
    const std::string as = ") as " + (name + std::to_string(i));
    if (span.isAllTime())
      sql.add(",sum(" + amount + as);
    else
      sql.add(",sum(" + onlyIf(date + ">=? and " + date + "<=?", amount) + as, firstOf(span.from),
              partner_books::endOf(span.to));
  }
}

/// Rows of any of the spans, which are in their order.
Filter within(const Spans& spans, const std::string& date) {
  Filter filter;
  for (const Span& span : spans)
    if (span.isAllTime()) return filter;
  filter.add(date + ">=?", firstOf(spans.front().from)).add(date + "<=?", partner_books::endOf(spans.back().to));
  return filter;
}

Amounts amountsOf(const Row& row, const char* name, std::size_t count) {
  Amounts amounts;
  for (std::size_t i = 0; i < count; ++i)
    amounts.push_back(row.number(name + std::to_string(i)));
  return amounts;
}

Amounts plus(const Amounts& a, const Amounts& b, double sign = 1) {
  Amounts sum = a;
  for (std::size_t i = 0; i < sum.size(); ++i)
    sum[i] += sign * b[i];
  return sum;
}

/// One pass over each ledger, whatever the number of spans.
Leaves readLeaves(EnquiryReader& reader, const Spans& spans, const Sight& sight) {
  const std::size_t count = spans.size();
  Leaves leaves;
  Sql partners("select count(*) as num");
  addSums(partners, onlyIf(kSales, "k_yfje"), "k_rq", spans, "s");
  addSums(partners, onlyIf(kOutside, "k_yfje"), "k_rq", spans, "w");
  addSums(partners, onlyIf(kPayable, "k_yfje-k_sfje"), "k_rq", spans, "p");
  Filter billed = within(spans, "k_rq");
  billed.add(std::string("(") + kSales + " or " + kOutside + " or " + kPayable + ")").add(kNotCarried);
  const RowSet owed = reader.select(partners.add(" from jxc_ysyfk").where(billed));
  leaves.sales = amountsOf(owed.front(), "s", count);
  leaves.outside = amountsOf(owed.front(), "w", count);
  leaves.payables = amountsOf(owed.front(), "p", count);
  reader.progress(30);

  Sql ledger("select count(*) as num");
  addSums(ledger, "gl_zcb", "gl_kdrq", spans, "c");
  Filter sold = within(spans, "gl_kdrq");
  sold.add(kSold);
  leaves.cost = amountsOf(reader.select(ledger.add(" from jxc_goodslist").where(sold)).front(), "c", count);
  reader.progress(80);

  Sql booked("select a.fy_sc," + std::string(kType) + " as type,sum(iif(a.fy_chk='0',1,0)) as waits");
  addSums(booked, "a.fy_je", "a.fy_rq", spans, "e");
  addSums(booked, onlyIf("a.fy_chk='0'", "a.fy_je"), "a.fy_rq", spans, "u");
  Filter ours = within(spans, "a.fy_rq");
  ours.add("(a.fy_sc='收入' or a.fy_sc='费用')");
  if (!sight.cost) ours.add(expenses::kTellsNoCost);
  booked.add(" from jxc_yyfy a").where(ours).add(" group by a.fy_sc," + std::string(kType) + " order by a.fy_sc,type");
  for (Group* group : {&leaves.income, &leaves.expenses})
    group->sum = group->waiting = Amounts(count);
  for (const Row row : reader.select(booked)) {
    const bool earned = row.text("fy_sc") == u"收入";
    Group& group = earned ? leaves.income : leaves.expenses;
    const auto signedAs = [&](const char* name) {
      return plus(Amounts(count), amountsOf(row, name, count), earned ? 1 : -1);
    };
    group.types.push_back({row.text("type"), signedAs("e")});
    group.sum = plus(group.sum, group.types.back().amounts);
    group.waiting = plus(group.waiting, signedAs("u"));
    group.waits += static_cast<int>(row.integer("waits"));
  }
  return leaves;
}

/// The rows of a statement in their order; `put` gets the code by which a row sorts, the one by which it is followed,
/// its type, its label and its amounts.
template <class Put>
void layOut(const Leaves& leaves, const Sight& sight, const Put& put) {
  const auto group = [&](const char* code, const char16_t* label, const Group& g) {
    const QString head = QString::fromLatin1(code);
    put(head, head, QString(), words(label) + (sight.cost ? QString() : u"（不含库存差额）"_qs), g.sum);
    int number = 0;
    for (const OfType& each : g.types)
      put(head + QStringLiteral("%1").arg(++number, 3, 10, QLatin1Char('0')), head, each.type,
          u"    "_qs + (each.type == u"-" ? u"（未填类型）"_qs : each.type), each.amounts);
    if (g.waits > 0)
      put(head + u"999"_qs, head + u'w', QString(), u"    其中尚未审核 %1 笔"_qs.arg(g.waits), g.waiting);
  };
  const auto row = [&](const char* code, const char16_t* label, const Amounts& amounts) {
    put(QString::fromLatin1(code), QString::fromLatin1(code), QString(), words(label), amounts);
  };
  const Amounts income = plus(leaves.sales, leaves.income.sum);
  const Amounts spent = plus(plus(leaves.cost, leaves.expenses.sum), plus(leaves.outside, leaves.payables));
  if (sight.price) {
    row("100", u"[收入类]", income);
    row("101", u"  销售收入", leaves.sales);
  }
  group("102", u"  其他收入", leaves.income);
  if (sight.cost) {
    row("200", u"[支出类]", spent);
    row("201", u"  销售成本", leaves.cost);
  }
  group("202", u"  其他费用", leaves.expenses);
  if (sight.cost) {
    row("203", u"  外发加工费用", leaves.outside);
    row("204", u"  应付款项", leaves.payables);
  }
  if (sight.cost && sight.price) row("300", u"[总利润]", plus(income, spent, -1));
}

/// A table of the statement, with a column for each amount and `more` behind them.
RowSet table(const Leaves& leaves, const Sight& sight, const std::vector<std::string>& amounts,
             const std::vector<std::pair<std::string, QString>>& more = {}) {
  std::vector<std::string> columns{"rowkey", "g_sn", "code", "fy_lx", "ts_note", "waits"};
  columns.insert(columns.end(), amounts.begin(), amounts.end());
  for (const auto& each : more)
    columns.push_back(each.first);
  RowSet rows(columns);
  const auto text = [&rows](const QString& value) { rows.addText(value.toStdString()); };
  layOut(leaves, sight,
         [&](const QString& place, const QString& code, const QString& type, const QString& label, const Amounts& of) {
           text(code + u'|' + type);
           text(place);
           text(code);
           text(type);
           text(label);
           rows.addInteger(code.endsWith(u'w'));
           for (const double amount : of)
             rows.addReal(amount);
           for (const auto& each : more)
             text(each.second);
         });
  return rows;
}

// ---- what a row is made of ---------------------------------------------------------------------------------------

Sql partnerLines(const Criteria& criteria, const char* which, const std::string& amount) {
  Filter filter;
  filter.add(which).add(kNotCarried);
  addPeriod(filter, criteria, "a.k_rq");
  return Sql("select a.id,a.k_rq as rq,a.gl_djh,a.k_djtxt as lx,a.k_note as dnote,b.u_name," + amount +
             " as je from jxc_ysyfk a left outer join jxc_user b on a.u_sn=b.u_sn")
      .where(filter);
}

Sql soldLines(const Criteria& criteria, const std::string& amount, const Warehouses* warehouses = nullptr) {
  Filter filter;
  filter.add(kSold);
  addPeriod(filter, criteria, "a.gl_kdrq");
  if (warehouses) warehouses->restrict(filter, "a.ck_sn");
  return Sql("select a.id,a.gl_kdrq as rq,a.gl_djh,iif(a.gl_flag='xs','商品销售','顾客退货') as lx,a.g_name as dnote,"
             "a.u_name," +
             amount + " as je from jxc_goodslist a")
      .where(filter);
}

Sql bookedLines(const Criteria& criteria, const char* side, const std::string& amount) {
  Filter filter;
  filter.add("a.fy_sc=?", QString::fromUtf8(side));
  addPeriod(filter, criteria, "a.fy_rq");
  if (!criteria.group.isEmpty()) filter.add(std::string(kType) + "=?", criteria.group);
  if (criteria.kind.endsWith(u'w')) filter.add("a.fy_chk='0'");
  if (!hasRight(kSeesCost)) filter.add(expenses::kTellsNoCost);
  return Sql("select a.id,a.fy_rq as rq,a.gl_djh,a.fy_lx as lx,a.fy_note as dnote,b.u_name," + amount +
             " as je from jxc_yyfy a left outer join jxc_user b on a.u_sn=b.u_sn")
      .where(filter);
}

struct Part {
  std::string_view code;
  bool spends;
  bool Sight::*seen;  // null: everybody
  Sql (*lines)(const Criteria&, const std::string& sign);
};
constexpr Part kParts[] = {
    {"101", false, &Sight::price,
     [](const Criteria& c, const std::string& sign) { return partnerLines(c, kSales, sign + "a.k_yfje"); }},
    {"102", false, nullptr,
     [](const Criteria& c, const std::string& sign) { return bookedLines(c, "收入", sign + "a.fy_je"); }},
    {"201", true, &Sight::cost,
     [](const Criteria& c, const std::string& sign) { return soldLines(c, sign + "a.gl_zcb"); }},
    {"202", true, nullptr,
     [](const Criteria& c, const std::string& sign) { return bookedLines(c, "费用", sign + "(-1*a.fy_je)"); }},
    {"203", true, &Sight::cost,
     [](const Criteria& c, const std::string& sign) { return partnerLines(c, kOutside, sign + "a.k_yfje"); }},
    {"204", true, &Sight::cost,
     [](const Criteria& c, const std::string& sign) {
       return partnerLines(c, kPayable, sign + "(a.k_yfje-a.k_sfje)");
     }},
};

bool belongs(const Part& part, const std::string& code) {
  return code == "300" || code == part.code || (code.ends_with("00") && code[0] == part.code[0]);
}

const char kByDate[] = " order by rq desc,id desc";

}  // namespace income_statement_detail

Computation incomeStatement(const Criteria& criteria) {
  using namespace income_statement_detail;
  return [sight = Sight{}, spans = Spans{{}, {criteria.from, lastDayOf(criteria.to)}}](EnquiryReader& reader) {
    return table(readLeaves(reader, spans, sight), sight, {"ts_zje", "ts_dj"});
  };
}

Computation incomeByMonth(const Criteria& criteria) {
  using namespace income_statement_detail;
  constexpr int kMonths = 12;
  const QString year = criteria.kind.isEmpty() ? clock::today().left(4) : criteria.kind;
  Spans spans;
  std::vector<std::string> columns;
  for (int month = 1; month <= kMonths; ++month) {
    const QString name = year + QStringLiteral("-%1").arg(month, 2, 10, QLatin1Char('0'));
    Span span{name + u"-01"_qs, name + u"-31"_qs};
    if (!criteria.from.isEmpty()) span.from = std::max(span.from, criteria.from);
    if (!criteria.to.isEmpty()) span.to = std::min(span.to, lastDayOf(criteria.to));
    spans.push_back(span);
    columns.push_back("m" + std::to_string(month));
  }
  columns.emplace_back("zj");
  return [sight = Sight{}, spans, columns, year](EnquiryReader& reader) {
    Leaves leaves = readLeaves(reader, spans, sight);
    const auto total = [](Amounts& amounts) {
      double sum = 0;
      for (const double each : amounts)
        sum += each;
      amounts.push_back(sum);
    };
    for (Amounts* each : {&leaves.sales, &leaves.cost, &leaves.outside, &leaves.payables})
      total(*each);
    for (Group* group : {&leaves.income, &leaves.expenses}) {
      total(group->sum);
      total(group->waiting);
      for (OfType& type : group->types)
        total(type.amounts);
    }
    return table(leaves, sight, columns, {{"nf", year}});
  };
}

std::vector<ListItem> fillYears() {
  constexpr int kMost = 20;
  const int thisYear = clock::now().date().year();
  int first = thisYear;
  for (const char* oldest :
       {"select min(gl_kdrq) from jxc_goodslist where gl_kdrq>'1'", "select min(fy_rq) from jxc_yyfy where fy_rq>'1'"})
    if (const int year = lookupValue(oldest).left(4).toInt(); year > 0) first = std::min(first, year);
  std::vector<ListItem> years;
  for (int year = thisYear; year >= first && thisYear - year < kMost; --year)
    years.push_back({QString::number(year) + u"年"_qs, QString::number(year)});
  return years;
}

Sql incomeLines(const Criteria& criteria) {
  using namespace income_statement_detail;
  const Sight sight;
  std::string code = criteria.kind.toStdString();
  if (code.ends_with('w')) code.pop_back();
  Sql all;
  for (const Part& part : kParts) {
    if (!belongs(part, code) || (part.seen && !(sight.*part.seen))) continue;
    if (!all.isEmpty()) all.add(" union all ");
    all.add(part.lines(criteria, code == "300" && part.spends ? "-1*" : ""));
  }
  if (all.isEmpty()) all = bookedLines(criteria, "", "a.fy_je");
  return all.add(kByDate);
}

Sql profitByMonth(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace income_statement_detail;
  Filter filter;
  filter.add(kSold);
  addPeriod(filter, criteria, "gl_kdrq");
  warehouses.restrict(filter, "ck_sn");
  return Sql("select left(gl_kdrq,7) as js_rq,sum(gl_lr) as xslr from jxc_goodslist")
      .where(filter)
      .add(" group by left(gl_kdrq,7) order by left(gl_kdrq,7)");
}

Sql expensesByMonth(const Criteria& criteria) {
  Filter filter;
  filter.add("a.fy_sc='费用'");
  addPeriod(filter, criteria, "a.fy_rq");
  if (!hasRight(kSeesCost)) filter.add(expenses::kTellsNoCost);
  return Sql("select left(a.fy_rq,7) as js_rq,sum(-1*a.fy_je) as xslr from jxc_yyfy a")
      .where(filter)
      .add(" group by left(a.fy_rq,7) order by left(a.fy_rq,7)");
}

Sql profitLines(const Criteria& criteria, const Warehouses& warehouses) {
  using namespace income_statement_detail;
  return soldLines(criteria, "a.gl_lr", &warehouses).add(kByDate);
}

Sql expenseLines(const Criteria& criteria) {
  Criteria spent = criteria;
  spent.kind = QStringLiteral("202");
  return incomeLines(spent);
}

}  // namespace jxc
