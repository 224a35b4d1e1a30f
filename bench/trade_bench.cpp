// Statistics of a year over the stock ledger, beside the shortest statement that somebody would write for the same
// figures.
#include "engine/first_rows.h"
#include "filled_shop.h"
#include "statistics/trade_totals.h"
#include "year_shop.h"

#include <algorithm>
#include <array>
#include <benchmark/benchmark.h>
#include <utility>

namespace jxc {
namespace trade_bench {

using bench::Bare;

constexpr int kFirstRows = 80;

constexpr auto kBought = PartnerType::Supplier, kSold = PartnerType::Customer;

struct Case {
  const char* name;
  PartnerType side;
  TradeBy by;
  const char* groupedBy;  // by hand, with the names that are shown and the tables beside the ledger
  const char* names = "";
  const char* joined = "";
};
constexpr const char* kWithClass = " join jxc_goods g on g.g_sn=x.g_sn join jxc_goodsclass c on c.gc_sn=g.gc_sn";
constexpr const char* kWithCustomer = " join jxc_khxx k on k.kh_sn=x.ghs_sn";
constexpr Case kCases[] = {
    {"purchases of a year by goods", kBought, TradeBy::Goods, "x.g_sn", ",max(x.g_name)"},
    {"purchases of a year by day, goods and supplier", kBought, TradeBy::PartnerGoodsDay,
     "substr(x.gl_kdrq,1,10),x.g_sn,x.ghs_sn", ",max(x.ghs_name)"},
    {"sales of a year by goods", kSold, TradeBy::Goods, "x.g_sn", ",max(x.g_name)"},
    {"sales of a year by class", kSold, TradeBy::GoodsClass, "g.gc_sn", ",max(c.gc_name)", kWithClass},
    {"sales of a year by supplier of the goods", kSold, TradeBy::GoodsSupplier, "g.ghs_sn", ",max(s.ghs_name)",
     " join jxc_goods g on g.g_sn=x.g_sn join jxc_ghsxx s on s.ghs_sn=g.ghs_sn"},
    {"sales of a year by customer", kSold, TradeBy::Partner, "x.ghs_sn", ",max(x.ghs_name)"},
    {"sales of a year by customer and class", kSold, TradeBy::PartnerClass, "x.ghs_sn,g.gc_sn",
     ",max(x.ghs_name),max(c.gc_name)", kWithClass},
    {"sales of a year by type of customer", kSold, TradeBy::CustomerType, "k.kt_name", "", kWithCustomer},
    {"sales of a year by region", kSold, TradeBy::Region, "k.z_name", "", kWithCustomer},
    {"sales of a year by employee", kSold, TradeBy::Employee, "x.u_name"},
    {"sales of a year by day", kSold, TradeBy::Day, "substr(x.gl_kdrq,1,10)"},
    {"sales of a year by month", kSold, TradeBy::Month, "substr(x.gl_kdrq,1,7)"},
    {"sales of a year by day, goods and customer", kSold, TradeBy::PartnerGoodsDay,
     "substr(x.gl_kdrq,1,10),x.g_sn,x.ghs_sn", ",max(x.ghs_name)"},
    {"sales of a year by month, goods and customer", kSold, TradeBy::PartnerGoodsMonth,
     "substr(x.gl_kdrq,1,7),x.g_sn,x.ghs_sn", ",max(x.ghs_name)"}};

/// Lines of one side from a moment to the last one.
std::string ofSide(PartnerType side, const std::string& from = "?1") {
  return std::string(" where gl_flag in ") + (side == kBought ? "('cj','ct')" : "('xs','xt')") +
         " and gl_kdrq>=" + from + " and gl_kdrq<=?2";
}

std::string handWritten(const Case& each, const std::string& from = "?1") {
  const std::string sums =
      std::string("select ") + each.groupedBy + each.names +
      ",sum(gl_sl) as sl,sum(gl_je) as je,sum(gl_taxje) as taxje,sum(gl_zje) as zje,sum(gl_zcb) as "
      "zcb,sum(gl_lr) as lr,case when sum(gl_je)<>0 then round(sum(gl_lr)*100/sum(gl_je),2) else 0 "
      "end as lrl from jxc_goodslist x" +
      each.joined + ofSide(each.side, from) + " group by " + each.groupedBy;
  if (each.by != TradeBy::PartnerGoodsDay && each.by != TradeBy::PartnerGoodsMonth) return sums;
  return "select a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz,b.* from jxc_goods a join (" +
         sums + ") b on a.g_sn=b.g_sn order by 8 desc,9,10";
}

template <std::size_t Index>
void statements(benchmark::State& state, int rows) {
  bench::yearWith(rows);
  const Criteria year{.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
  for (auto _ : state)
    state.counters["rows"] =
        openSelect(tradeTotals(kCases[Index].side, kCases[Index].by, year, Warehouses(year))).rowCount();
}

template <std::size_t Index>
void byHand(benchmark::State& state, int rows) {
  Bare statement(bench::yearWith(rows), handWritten(kCases[Index]).c_str());
  double sum = 0;
  for (auto _ : state) {
    statement << std::string("2025-01-01") << std::string("2025-12-31 23:59:59");
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

const Case& byDay(PartnerType side) {
  return *std::ranges::find_if(
      kCases, [side](const Case& each) { return each.side == side && each.by == TradeBy::PartnerGoodsDay; });
}

/// The latest days, which the window shows ahead of the rest.
template <PartnerType Side>
void latestDays(benchmark::State& state, int rows) {
  bench::yearWith(rows);
  const Criteria year{.from = QStringLiteral("2025-01-01"), .to = QStringLiteral("2025-12-31")};
  for (auto _ : state) {
    EnquiryReader reader(accountDb(), {}, [&](const RowSet& first) {
      state.counters["rows"] = first.rowCount();
      throw EnquiryStopped();  // they are all that is measured
    });
    try {
      latestFirst(Side, TradeBy::PartnerGoodsDay, year, Warehouses(year))(reader);
      return state.SkipWithError("no first page");
    } catch (const EnquiryStopped&) {
    }
  }
}

template <PartnerType Side>
void latestDaysByHand(benchmark::State& state, int rows) {
  const std::string from = "(select substr(min(gl_kdrq),1,10) from (select gl_kdrq from jxc_goodslist" + ofSide(Side) +
                           " order by gl_kdrq desc limit 200))";
  Bare statement(bench::yearWith(rows), handWritten(byDay(Side), from).c_str());
  double sum = 0;
  for (auto _ : state) {
    statement << std::string("2025-01-01") << std::string("2025-12-31 23:59:59");
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

/// Lines of the last days, of which a tenth of a year has 100,000: the first screenful, which the window shows ahead of
/// the rest, or all of them.
template <bool Whole>
void lines(benchmark::State& state, int rows) {
  bench::yearWith(rows);
  const Criteria days{.from = QStringLiteral("2025-11-20"), .to = QStringLiteral("2025-12-31")};
  for (auto _ : state) {
    const Sql all = tradeLines(PartnerType::Customer, days, Warehouses(days));
    const auto first = firstRows(std::string_view(all.text()), kFirstRows);
    if (!first) return state.SkipWithError("the first page does not come sooner");
    state.counters["rows"] = readRows(std::string_view(Whole ? all.text() : *first), all.values()).rowCount();
  }
}

template <bool Whole>
void linesByHand(benchmark::State& state, int rows) {
  Bare statement(
      bench::yearWith(rows),
      (std::string("select x.*,case when gl_je<>0 then round(gl_lr*100/gl_je,2) else 0 end from jxc_goodslist "
                   "x where gl_flag in ('xs','xt') and gl_kdrq>=? and gl_kdrq<=? order by gl_kdrq desc,id "
                   "desc") +
       (Whole ? "" : " limit " + std::to_string(kFirstRows)))
          .c_str());
  double sum = 0;
  for (auto _ : state) {
    statement << std::string("2025-11-20") << std::string("2025-12-31 23:59:59");
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}
constexpr bench::Pair kLines[] = {
    {"first page of the purchases of a year by day, goods and supplier", latestDays<kBought>,
     latestDaysByHand<kBought>},
    {"first page of the sales of a year by day, goods and customer", latestDays<kSold>, latestDaysByHand<kSold>},
    {"first page of the lines of six weeks", lines<false>, linesByHand<false>},
    {"all lines of six weeks", lines<true>, linesByHand<true>}};

template <std::size_t... Index>
constexpr auto pairsOf(std::index_sequence<Index...>) {
  return std::array{bench::Pair{kCases[Index].name, statements<Index>, byHand<Index>}...};
}
constexpr auto kPairs = pairsOf(std::make_index_sequence<std::size(kCases)>());

const bool registered =
    bench::registerPairs(kPairs, bench::mostOfYear) && bench::registerPairs(kLines, bench::mostOfYear);

}  // namespace trade_bench
}  // namespace jxc
