// The financial statements of a shop with a million rows of the stock ledger, 200,000 partner lines and 100,000 goods,
// and 500 expenses audited in one go; beside the shortest statements by hand on bare SQLite.
#include "accounts/balance_sheet.h"
#include "accounts/expenses.h"
#include "accounts/income_statement.h"
#include "bare_shop.h"

#include <benchmark/benchmark.h>

namespace jxc {
namespace statement_of_income_bench {

using bench::Bare;
using bench::Shop;

constexpr int kExpenses = 500;
const Criteria kYear{.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
constexpr char kDay[] = "2025-12-31";

/// Ten years of days, `i` in order.
constexpr char kDate[] = "date('2016-01-01','+'||(i*3652/%d)||' day')";

void fill(Shop& shop) {
  const auto rows = [&](int count, const std::string& insert) {
    char date[80];
    std::snprintf(date, sizeof date, kDate, count);
    std::string text = "with recursive n(i) as (select 0 union all select i+1 from n where i<" +
                       std::to_string(count - 1) + ") " + insert + " from n";
    if (const auto at = text.find("DATE"); at != std::string::npos) text.replace(at, 4, date);
    if (sqlite3_exec(shop.native(), text.c_str(), nullptr, nullptr, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(shop.native()));
  };
  rows(1'000'000,
       "insert into jxc_goodslist (gl_kdrq,gl_flag,g_sn,ck_sn,gl_sl,gl_je,gl_zje,gl_zcb,gl_lr,gl_djh,g_name,u_name) "
       "select DATE,case when i%3=0 then 'cj' when i%20=1 then 'xt' else 'xs' end,'G'||(i%100000),'100001',1,90,90,50+"
       "i%7,40,'XS'||i,'镜架'||i%100000,'王芳'");
  rows(100'000, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) select 'G'||i,'100001',i%30,i%30,50+i%7");
  for (const char* side : {"insert into jxc_khxx (kh_sn,kh_name,kh_forbid,kh_lwje) select 200000+i,'客户'||i,0,0",
                           "insert into jxc_ghsxx (ghs_sn,ghs_name,ghs_forbid,ghs_lwje) select 200000+i,'厂'||i,0,0"})
    rows(5'000, side);
  rows(
      200'000,
      "insert into jxc_ysyfk (k_rq,gl_djh,k_djlx,k_djtxt,k_type,k_ghskh,k_yfje,k_sfje,k_qcje,k_ljje,k_note,a_name) "
      "select DATE,'XS'||i,case i%10 when 0 then 'SK' when 1 then 'CJ' when 2 then 'YF' when 3 then 'YS' else 'XS' end,"
      "'商品销售',case when i%10 in (1,2) then 'ghs' else 'kh' end,200000+i%5000,90,40,0,i%97,'说明','admin'");
  rows(20'000,
       "insert into jxc_yyfy (fy_rq,gl_djh,fy_lx,fy_je,fy_flag,u_sn,de_sn,fy_kmmc,fy_chk,fy_sc) select DATE,'FY'||i,"
       "case i%3 when 0 then '费用' when 1 then '应付工资' else '收入' end,case i%3 when 2 then 90 else -50 end,'1',"
       "'100001','100001','现金','1',case i%3 when 2 then '收入' else '费用' end");
  rows(20'000,
       "insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,xj_ljje,xj_chk,xj_kmmc) select DATE,'XJ'||i,'现金银行收款',"
       "10,10*i,'1',case i%2 when 0 then '现金' else '工行帐号' end");
}

void incomeStatements(benchmark::State& state) {
  bench::filledShop<fill>();
  const Source source{incomeStatement, kStatementsAreOfTheShop};
  for (auto _ : state)
    benchmark::DoNotOptimize(answer(source, kYear).rowCount());
}

void incomeBare(benchmark::State& state) {
  sqlite3* db = bench::filledShop<fill>().native();
  Bare owed(db,
            "select sum(case when k_djlx in ('XS','XT','YS') then k_yfje end),sum(case when k_djlx in ('XS','XT','YS') "
            "and k_rq between ?1 and ?2 then k_yfje end),sum(case when k_djlx='YF' then k_yfje-k_sfje end),sum(case "
            "when k_djlx='YF' and k_rq between ?1 and ?2 then k_yfje-k_sfje end),sum(case when k_type='ghs' and "
            "gl_djh like 'WS%' then k_yfje end) from jxc_ysyfk");
  Bare cost(db,
            "select sum(gl_zcb),sum(case when gl_kdrq between ?1 and ?2 then gl_zcb end) from jxc_goodslist where "
            "gl_flag in ('xs','xt')");
  Bare booked(
      db,
      "select fy_sc,fy_lx,sum(fy_je),sum(case when fy_rq between ?1 and ?2 then fy_je end),sum(fy_chk='0') from "
      "jxc_yyfy group by 1,2");
  for (auto _ : state)
    for (Bare* each : {&owed, &cost, &booked}) {
      *each << std::string("2025-01-01") << std::string("2025-12-31 23:59:59");
      benchmark::DoNotOptimize(each->takeAll());
    }
}

void sheetStatements(benchmark::State& state) {
  bench::filledShop<fill>();
  const Source source{balanceSheet, kStatementsAreOfTheShop};
  for (auto _ : state)
    benchmark::DoNotOptimize(answer(source, {.to = QString::fromUtf8(kDay)}).rowCount());
}

void sheetBare(benchmark::State& state) {
  sqlite3* db = bench::filledShop<fill>().native();
  Bare stock(db, "select sum(kc_sl*kc_cbj) from jxc_kcsp");
  const std::string partner =
      "select sum((select k_ljje from jxc_ysyfk where k_ghskh=b.%1_sn and k_type='%1' and k_rq<=?1 order by k_rq "
      "desc,id "
      "desc limit 1)) from jxc_%1xx b";
  const auto of = [&](const char* side) {
    return QString::fromStdString(partner).arg(QLatin1String(side)).toStdString();
  };
  Bare due(db, of("kh").c_str()), owing(db, of("ghs").c_str());
  Bare accounts(
      db,
      "select (select xj_ljje from jxc_xjyh where xj_kmmc=yh_name and xj_chk='1' and xj_rq<=?1 order by xj_rq "
      "desc,id desc limit 1) from jxc_yhzh");
  for (auto _ : state) {
    benchmark::DoNotOptimize(stock.takeAll());
    for (Bare* each : {&due, &owing, &accounts}) {
      *each << std::string(kDay) + " 23:59:59";
      benchmark::DoNotOptimize(each->takeAll());
    }
  }
}

/// Entered today, on an account with a year of lines before it.
void auditStatements(benchmark::State& state) {
  bench::filledShop<fill>();
  bench::YesPrompt yes;
  for (auto _ : state) {
    state.PauseTiming();
    {
      Transaction transaction(accountDb());
      for (int i = 0; i < kExpenses; ++i) {
        expenses::Draft draft = expenses::newDraft(expenses::Side::Expense);
        draft.type = QStringLiteral("费用");
        draft.amount = 10 + i;
        draft.employee = draft.department = QStringLiteral("100001");
        draft.account = QStringLiteral("现金");
        if (!expenses::save(draft, yes)) throw std::runtime_error("not saved");
      }
      transaction.commit();
    }
    const RowSet waiting = openSelect("select gl_djh from jxc_yyfy where fy_chk='0' order by id");
    state.ResumeTiming();
    for (const Row row : waiting)
      if (!expenses::checkDj(row.text("gl_djh"), yes)) throw std::runtime_error("not audited");
    state.PauseTiming();
    execSql("delete from jxc_xjyh where gl_djh like 'FY%'");
    execSql("delete from jxc_yyfy where fy_rq>'2026'");
    state.ResumeTiming();
  }
}

BENCHMARK(incomeStatements)->Name("income statement of a year, statements")->Unit(benchmark::kMillisecond);
BENCHMARK(incomeBare)->Name("income statement of a year, by hand")->Unit(benchmark::kMillisecond);
BENCHMARK(sheetStatements)->Name("balance sheet, statements")->Unit(benchmark::kMillisecond);
BENCHMARK(sheetBare)->Name("balance sheet, by hand")->Unit(benchmark::kMillisecond);
BENCHMARK(auditStatements)->Name("audit of 500 expenses, statements")->Unit(benchmark::kMillisecond);

}  // namespace statement_of_income_bench
}  // namespace jxc
