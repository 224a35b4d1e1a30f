// The overviews of both ledgers over partners, beside the quickest statements by hand that were found: 2,000 partners
// of a side, 200,000 lines in each ledger over two years, a month asked for.
#include "accounts/partner_overview.h"
#include "bare_shop.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace partner_bench {

using bench::Bare;
using bench::Shop;
using partner_books::PartnerLedger;

constexpr int kPartners = 2000, kLines = 200000, kDays = 730;
const QDate kLastDay(2021, 5, 3);

QString daysBack(int days) {
  return kLastDay.addDays(-days).toString(Qt::ISODate);
}

void fill(Shop& shop) {
  Transaction transaction(accountDb());
  Bare partner(shop.native(), "insert into jxc_khxx (kh_sn,kh_name,kh_lwje,kh_forbid) values (?,?,0,0)");
  Bare owed(shop.native(),
            "insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_ljje,k_type,k_djlx,k_djtxt,u_sn,k_ghskh) "
            "values (?,?,'现金',?,?,0,?,'kh','XS','商品销售单','100001',?)");
  Bare invoiced(shop.native(),
                "insert into jxc_fpdjb (gl_djh,fp_rq,fp_yfje,fp_kpje,fp_qcje,fp_ljje,fp_type,fp_djlx,fp_djtxt,fp_check,"
                "u_sn,fp_ghskh) values (?,?,?,?,0,?,'kh','XS','商品销售单',?,'100001',?)");
  const auto codeOf = [](int i) { return std::to_string(200000 + i); };
  for (int i = 0; i < kPartners; ++i)
    (partner << codeOf(i) << "客户" + std::to_string(i)).run();
  std::vector<double> balances(kPartners), open(kPartners);
  for (int i = 0; i < kLines; ++i) {
    const int whose = i * 7 % kPartners;
    const double due = 10.0 + i % 97, paid = 9.0 + i % 89;
    const std::string number = "XS" + std::to_string(i),
                      day = daysBack(kDays - 1 - static_cast<int>(static_cast<std::int64_t>(i) * kDays / kLines))
                                .toStdString();
    const bool counts = i % 20 != 0;
    balances[static_cast<std::size_t>(whose)] += due - paid;
    if (counts) open[static_cast<std::size_t>(whose)] += due - paid;
    (owed << number << day << due << paid << balances[static_cast<std::size_t>(whose)] << codeOf(whose)).run();
    (invoiced << number << day << due << paid << (counts ? open[static_cast<std::size_t>(whose)] : 0.0)
              << static_cast<sqlite3_int64>(counts) << codeOf(whose))
        .run();
  }
  transaction.commit();
}

Shop& shop() {
  return bench::filledShop<fill>();
}
const Criteria& month() {
  static const Criteria asked{.from = daysBack(31), .to = daysBack(0)};
  return asked;
}

using Overview = Sql (*)(const PartnerLedger&, const PartnerSide&, const Criteria&);
void statements(benchmark::State& state, Overview overview, const PartnerLedger& ledger) {
  shop();
  const Sql asked = overview(ledger, customerSide, month());
  for (auto _ : state)
    state.counters["rows"] = openSelect(asked).rowCount();
}

/// The names of the ledger put into a text written for what is owed.
std::string inWordsOf(std::string text, bool invoices) {
  const auto replace = [&](const std::string& from, const std::string& to) {
    for (std::size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
      text.replace(at, from.size(), to);
  };
  replace("{counts}", invoices ? " and {a}fp_check<>0" : "");
  replace("{a}", "a.");
  if (!invoices) return text;
  replace("jxc_ysyfk", "jxc_fpdjb");
  replace("k_sfje", "fp_kpje");
  for (const char* name : {"k_ghskh", "k_type", "k_rq", "k_yfje", "k_ljje", "k_qcje", "k_djlx", "k_djtxt", "k_note"})
    replace(std::string("a.") + name, std::string("a.fp") + (name + 1));
  return text;
}

/// Every cell of the last month, again and again.
void askMonth(benchmark::State& state, Bare& statement) {
  const std::string from = daysBack(31).toStdString(), to = daysBack(0).toStdString() + " 23:59:59";
  double sum = 0;
  for (auto _ : state) {
    statement << from << to;
    sum += statement.takeAll();
  }
  benchmark::DoNotOptimize(sum);
}

/// Summed by partner along the index of his lines; the balance before is the first line that is met backwards.
void summaryBare(benchmark::State& state, bool invoices) {
  Bare statement(
      shop().native(),
      inWordsOf("select b.kh_sn,b.kh_name,(select a.k_ljje from jxc_ysyfk a where a.k_ghskh=b.kh_sn and a.k_type='kh' "
                "and a.k_rq<?1{counts} order by a.k_rq desc,a.id desc limit 1),m.y,m.s from jxc_khxx b join "
                "(select x.kh_sn as sn,sum(a.k_yfje) y,sum(a.k_sfje) s from jxc_khxx x join jxc_ysyfk a on "
                "a.k_ghskh=x.kh_sn where a.k_type='kh' and a.k_rq>=?1 and a.k_rq<=?2{counts} group by x.kh_sn) m "
                "on m.sn=b.kh_sn where b.kh_forbid=0 order by b.kh_sn",
                invoices)
          .c_str());
  askMonth(state, statement);
}

/// Opening rows and lines of the month, every cell that the list shows.
void detailBare(benchmark::State& state, bool invoices) {
  const std::string more = invoices ? "a.fp_no,a.fp_kprq,a.fp_checker,a.fp_chkrq" : "a.k_fkfs,a.gl_djh2,'',''";
  Bare statement(
      shop().native(),
      inWordsOf(
          "select a.id,a.k_ghskh,b.kh_name,?1 as rq,'','期初应收','期初应收',a.k_ljje,0,0,a.k_ljje,'','','','','',"
          "'',1 as dsort from jxc_khxx b join jxc_ysyfk a on a.id=(select a.id from jxc_ysyfk a where "
          "a.k_ghskh=b.kh_sn and a.k_type='kh' and a.k_rq<?1{counts} order by a.k_rq desc,a.id desc limit 1) "
          "where b.kh_forbid=0 union all select a.id,a.k_ghskh,b.kh_name,a.k_rq,a.gl_djh,a.k_djlx,a.k_djtxt,"
          "a.k_qcje,a.k_yfje,a.k_sfje,a.k_ljje," +
              more +
              ",c.u_name,a.a_name,2 from jxc_khxx b join jxc_ysyfk a on a.k_ghskh=b.kh_sn left join jxc_user c "
              "on c.u_sn=a.u_sn where b.kh_forbid=0 and a.k_type='kh' and a.k_rq>=?1 and a.k_rq<=?2{counts} "
              "order by 2,4,18,1",
          invoices)
          .c_str());
  askMonth(state, statement);
}

const bool registered = [] {
  using namespace partner_books;
  const auto pair = [](const char* what, Overview overview, const PartnerLedger& ledger,
                       void (*byHand)(benchmark::State&, bool)) {
    const bool invoices = &ledger == &invoiceLedger;
    const std::string name = std::string(what) + (invoices ? " of invoices of a month" : " of receivables of a month");
    benchmark::RegisterBenchmark((name + ", statements").c_str(), [=, &ledger](benchmark::State& state) {
      statements(state, overview, ledger);
    })->Unit(benchmark::kMicrosecond);
    benchmark::RegisterBenchmark((name + ", by hand").c_str(), [=](benchmark::State& state) {
      byHand(state, invoices);
    })->Unit(benchmark::kMicrosecond);
  };
  for (const PartnerLedger* ledger : {&owedLedger, &invoiceLedger}) {
    pair("overview, summary", overviewSummary, *ledger, summaryBare);
    pair("overview, detail", overviewDetail, *ledger, detailBare);
  }
  return true;
}();

}  // namespace partner_bench
}  // namespace jxc
