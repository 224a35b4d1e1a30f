// Lists and summaries over a grown ledger, beside the shortest statement that somebody would write for the same
// figures.
#include "accounts/partner_overview.h"
#include "filled_shop.h"
#include "masterdata/partner_side.h"
#include "stock/stock_enquiry.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace summary_bench {

using bench::Bare;
using bench::shopWith;

void run(benchmark::State& state, const Sql& statement) {
  for (auto _ : state)
    state.counters["rows"] = openSelect(statement).rowCount();
}

void currentStock(benchmark::State& state, int rows) {
  shopWith(rows);
  run(state, std::get<Sql>(Source(jxc::currentStock).ask({})));
}

void currentStockBare(benchmark::State& state, int rows) {
  Bare statement(shopWith(rows).native(),
                 "select g.*, k.a, k.b, k.c from (select g_sn, sum(kc_sl) a, sum(kc_zsl) b, sum(kc_zsl*kc_cbj) c "
                 "from jxc_kcsp where g_sn<>'00000000' group by g_sn) k join jxc_goods g on g.g_sn=k.g_sn "
                 "where g.g_jy=0 order by g.g_sn");
  double sum = 0;
  for (auto _ : state)
    sum += statement.takeAll();
  benchmark::DoNotOptimize(sum);
}

QString daysBack(int days) {
  return QDate::currentDate().addDays(-days).toString(Qt::ISODate);
}

void payables(benchmark::State& state, int rows) {
  shopWith(rows);
  run(state, partner_books::overviewSummary(partner_books::owedLedger, supplierSide,
                                            {.from = daysBack(31), .to = daysBack(0)}));
}

void payablesBare(benchmark::State& state, int rows) {
  Bare statement(shopWith(rows).native(),
                 "select k_ghskh, (select k_ljje from jxc_ysyfk o where o.k_type='ghs' and o.k_ghskh=a.k_ghskh and "
                 "o.k_rq<? order by k_rq desc,id desc limit 1), sum(k_yfje), sum(k_sfje) from jxc_ysyfk a "
                 "where k_type='ghs' and k_rq>=? and k_rq<=? group by k_ghskh");
  const std::string from = daysBack(31).toStdString(), to = daysBack(0).toStdString();
  double sum = 0;
  for (auto _ : state) {
    statement << from << from << to;
    while (statement.step())
      sum += statement.number(1) + statement.number(2) - statement.number(3);
    statement.reset();
  }
  benchmark::DoNotOptimize(sum);
}

/// The last fifty rows of one goods: what a card of its movements shows.
void movements(benchmark::State& state, int rows) {
  shopWith(rows);
  for (auto _ : state)
    benchmark::DoNotOptimize(openSelect("select top 50 * from jxc_goodslist where g_sn=? and ck_sn=? "
                                        "order by gl_kdrq desc,id desc",
                                        QStringLiteral("1000007"), QStringLiteral("100001"))
                                 .rowCount());
}

void movementsBare(benchmark::State& state, int rows) {
  Bare statement(shopWith(rows).native(),
                 "select * from jxc_goodslist where g_sn=? and ck_sn=? order by gl_kdrq desc,id desc limit 50");
  double sum = 0;
  for (auto _ : state) {
    statement << std::string("1000007") << std::string("100001");
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

constexpr bench::Pair kPairs[] = {{"current stock of 1000 goods", currentStock, currentStockBare},
                                  {"payables of a month, summary", payables, payablesBare},
                                  {"last 50 movements of a goods", movements, movementsBare}};

const bool registered = bench::registerPairs(kPairs);

}  // namespace summary_bench
}  // namespace jxc
