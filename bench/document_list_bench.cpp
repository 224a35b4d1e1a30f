// The list of audited documents over a shop with 500,000 of them in two years: the first page of a month, and the whole
// month, of all kinds and of purchases alone; beside it the same rows by hand.
#include "bare_shop.h"
#include "engine/first_rows.h"
#include "stock/document_list.h"

#include <QDate>

#include <benchmark/benchmark.h>

namespace jxc {
namespace document_list_bench {

using bench::Bare;
using bench::Shop;

constexpr int documents = 500'000, days = 730, firstPage = 80;

QString daysBack(int back) {
  return QDate::currentDate().addDays(-back).toString(Qt::ISODate);
}

/// Of ten documents six are sales, two receipts, one a return, one a transfer; two lines each.
void fill(sqlite3* db) {
  const auto run = [db](const char* text) { Bare(db, text).run(); };
  run("begin immediate");
  run("insert into jxc_goods (g_sn,g_name,g_jm,dw_name,g_jy,gg_name,color_name) values ('1','镜架','JJ','付',0,'','')");
  Bare sales(db,
             "insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,u_sn,ls_xsrq,ls_yfje,ls_sfje,ls_yhje,ls_hkje,ls_note,a_name,"
             "ls_th,ls_status,ls_checker,ls_chkrq,ls_yf,ls_bzf,ls_yffs,ls_fpno,gl_djh2) values "
             "(?,'100001','100001','100001',?,20,10,0,0,'','admin',0,1,'admin',?,0,0,'','','')");
  Bare saleLines(db, "insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_je,ls_zje,t_zp) values (?,'1',10,1,10,10,'')");
  Bare receipts(db,
                "insert into jxc_jhd (j_sn,ghs_sn,ck_sn,u_sn,j_jhrq,j_yfje,j_sfje,j_yhje,j_hkje,j_note,a_name,j_th,"
                "j_status,j_checker,j_chkrq,j_yf,j_bzf,j_yffs,j_fpno,j_sn2) values "
                "(?,'100001','100001','100001',?,20,10,0,0,'','admin',0,1,'admin',?,0,0,'','','')");
  Bare receiptLines(db, "insert into jxc_jhsp (j_sn,g_sn,jh_dj,jh_sl,jh_je,jh_zje) values (?,'1',10,1,10,10)");
  Bare returns(db,
               "insert into jxc_thd (gl_djh,ghs_sn,ck_sn,u_sn,th_thrq,th_yfje,th_sfje,th_hkje,th_note,a_name,"
               "th_status,th_checker,th_chkrq,th_fpno) values "
               "(?,'100001','100001','100001',?,-20,-10,0,'','admin',1,'admin',?,'')");
  Bare returnLines(db, "insert into jxc_thsp (gl_djh,g_sn,th_dj,th_sl,th_je,th_zje) values (?,'1',10,1,10,10)");
  Bare transfers(db,
                 "insert into jxc_kcdbd (gl_djh,ck_out,ck_in,u_sn,db_dbrq,db_note,a_name,db_status,db_checker,db_chkrq)"
                 " values (?,'100001','100001','100001',?,'','admin',1,'admin',?)");
  Bare transferLines(db, "insert into jxc_dbsp (gl_djh,g_sn,db_dj,db_sl,db_zje) values (?,'1',10,1,10)");
  struct Kind {
    const char* prefix;
    Bare &head, &line;
  };
  const Kind kinds[] = {{"XS", sales, saleLines},
                        {"CJ", receipts, receiptLines},
                        {"CT", returns, returnLines},
                        {"DB", transfers, transferLines}};
  constexpr int turn[] = {0, 1, 0, 2, 0, 0, 1, 0, 3, 0};
  for (int i = 0; i < documents; ++i) {
    const Kind& kind = kinds[turn[i % 10]];
    const std::string day = daysBack(days - static_cast<int>(std::int64_t(i) * days / documents)).toStdString();
    const std::string number = kind.prefix + std::to_string(10'000'000'000 + i);
    (kind.head << number << day << day).run();
    for (int line = 0; line < 2; ++line)
      (kind.line << number).run();
  }
  run("commit");
}

void open(Shop& made) {
  fill(made.native());
}
Shop& shop() {
  return bench::filledShop<open>();
}

using All = DocumentSet<families::purchaseReceipt, families::purchaseReturn, families::sale, families::saleReturn,
                        families::transfer, families::stocktake, families::loss, families::overflow, families::split,
                        families::bundle, families::loan, families::loanReturn>;
using Purchases = DocumentSet<families::purchaseReceipt, families::purchaseReturn>;

/// A month a year ago, as the screen asks for it.
Criteria month(const char* key) {
  return {.from = daysBack(395),
          .to = daysBack(365),
          .key = QString::fromUtf8(key),
          .descending = true,
          .boxes = kWaitingToo};
}

Criteria monthOfAudits() {
  Criteria criteria = month("");
  criteria.order = QString::fromUtf16(kByAudit);
  return criteria;
}

template <class Set>
void page(benchmark::State& state, const Criteria& criteria, Sql (*statement)(const Criteria&, const Warehouses&),
          bool whole) {
  shop();
  for (auto _ : state) {
    const Sql all = statement(criteria, Warehouses(criteria));
    const auto first = firstRows(std::string_view(all.text()), firstPage);
    if (!whole && !first) return state.SkipWithError("the first page does not come sooner");
    state.counters["rows"] =
        readRows(whole ? std::string_view(all.text()) : std::string_view(*first), all.values()).rowCount();
  }
}

constexpr const char* byHandReceipts =
    "select a.j_sn as djh,'1' as sort,a.j_jhrq as rq,a.*,b.ghs_name,c.u_name,d.ck_name,a.j_yfje-a.j_sfje-a.j_yhje-"
    "a.j_hkje from jxc_jhd a left join jxc_ghsxx b on a.ghs_sn=b.ghs_sn left join jxc_user c on a.u_sn=c.u_sn left "
    "join jxc_ckxx d on a.ck_sn=d.ck_sn where j_status=1 and j_jhrq>=?1 and j_jhrq<=?2 order by j_jhrq desc,j_sn desc";

void receiptsByHand(benchmark::State& state, bool whole) {
  const std::string text = byHandReceipts + (whole ? std::string() : " limit " + std::to_string(firstPage));
  Bare statement(shop().native(), text.c_str());
  double taken = 0;
  int rows = 0;
  for (auto _ : state) {
    statement << daysBack(395).toStdString() << daysBack(365).toStdString();
    for (rows = 0; statement.step(); ++rows)
      taken += statement.takeRow();
    statement.reset();
  }
  benchmark::DoNotOptimize(taken);
  state.counters["rows"] = rows;
}

using Receipts = DocumentSet<families::purchaseReceipt>;
const bool registered = [] {
  const auto add = [](const char* name, auto run) {
    benchmark::RegisterBenchmark(name, run)->Unit(benchmark::kMillisecond);
  };
  add("documents: first page of receipts of a month, statements",
      [](benchmark::State& state) { page<Receipts>(state, month(""), Receipts::documents, false); });
  add("documents: first page of receipts of a month, by hand",
      [](benchmark::State& state) { receiptsByHand(state, false); });
  add("documents: receipts of a month, statements",
      [](benchmark::State& state) { page<Receipts>(state, month(""), Receipts::documents, true); });
  add("documents: receipts of a month, by hand", [](benchmark::State& state) { receiptsByHand(state, true); });
  add("documents: first page of all kinds of a month",
      [](benchmark::State& state) { page<All>(state, month(""), All::documents, false); });
  add("documents: first page of their lines",
      [](benchmark::State& state) { page<All>(state, month(""), All::lines, false); });
  add("documents: first page with a key that is in one of a hundred",
      [](benchmark::State& state) { page<All>(state, month("77"), All::documents, false); });
  add("documents: with a key that is in none",
      [](benchmark::State& state) { page<All>(state, month("没有"), All::documents, true); });
  add("documents: all kinds of a month",
      [](benchmark::State& state) { page<All>(state, month(""), All::documents, true); });
  add("documents: first page of all kinds by the day of the audit",
      [](benchmark::State& state) { page<All>(state, monthOfAudits(), All::documents, false); });
  add("documents: all kinds of a month by the day of the audit",
      [](benchmark::State& state) { page<All>(state, monthOfAudits(), All::documents, true); });
  return true;
}();

}  // namespace document_list_bench
}  // namespace jxc
