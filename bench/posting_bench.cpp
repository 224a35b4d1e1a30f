// Audit of receipts and sales beside the same reads and writes by hand on bare SQLite: today and dated back, with few
// and with a million rows of the stock ledger behind.
#include "audit_words.h"
#include "bare_replay.h"
#include "core/clock.h"
#include "core/session.h"
#include "filled_shop.h"
#include "purchasing/receipt.h"
#include "stock/cancelling.h"
#include "stock/ledger.h"

#include <QDate>

#include <array>
#include <benchmark/benchmark.h>
#include <optional>
#include <vector>

namespace jxc {
namespace posting_bench {

using bench::Bare;
using bench::goodsCode;
using bench::goodsCount;
using bench::Shop;
using bench::shopWith;

// ---- by hand -----------------------------------------------------------------------------------------------------

/// What audit of a receipt or of a sale reads and writes, as somebody would write it who knows nothing but SQLite.
class BareAudit : bench::BareStatements {
 public:
  BareAudit(sqlite3* db, bool sale)
      : BareStatements(db), sale_(sale), words_(sale ? bench::saleWords : bench::receiptWords) {}
  void run(const std::string& number, const std::string& today);
  void setDate(const std::string& date) { date_ = date; }  // of the documents

 private:
  const bool sale_;
  const bench::Words& words_;
  std::string date_;

  void carry(Bare& rows, const char* update, double balance) {
    std::vector<std::array<double, 3>> lines;
    while (rows.step())
      lines.push_back({static_cast<double>(rows.integer(0)), rows.number(1), rows.number(2)});
    rows.reset();
    for (const auto& [id, stored, change] : lines) {
      balance += change;
      if (std::fabs(balance - stored) > 5e-7) (sql(update) << balance << static_cast<sqlite3_int64>(id)).run();
    }
  }
  void goods(sqlite3_int64 id, const std::string& sn, double quantity, double price, const std::string& partner);
};

void BareAudit::goods(sqlite3_int64 id, const std::string& sn, double quantity, double price,
                      const std::string& partner) {
  const std::string warehouse = "100001";
  if (sale_)
    (sql("update jxc_kcsp set kc_xssl=kc_xssl+?,kc_sl=kc_sl-?,kc_zsl=kc_zsl-? where ck_sn=? and g_sn=?")
     << quantity << quantity << quantity << warehouse << sn)
        .run();
  else
    (sql("update jxc_kcsp set kc_sl=kc_sl+?,kc_zsl=kc_zsl+? where ck_sn=? and g_sn=?")
     << quantity << quantity << warehouse << sn)
        .run();
  if (changed() == 0)
    (sql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)")
     << quantity << price << sn << warehouse << quantity)
        .run();
  const double p = bench::replay(*this, id);
  if (sale_) {
    (sql("update jxc_goods set g_kc=g_kc-?,g_xspl=g_xspl+1 where g_sn=?") << quantity << sn).run();
    return;
  }
  (sql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?") << p << warehouse << sn).run();
  const double average =
      one(sql("select round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2) from jxc_kcsp where g_sn=?") << sn);
  (sql("update jxc_goods set g_kc=g_kc+?,g_cgpl=g_cgpl+1,g_scjj=?,ghs_sn=?,g_pjjj=? where g_sn=?")
   << quantity << price << partner << average << sn)
      .run();
}

void BareAudit::run(const std::string& number, const std::string& today) {
  const std::string partner = "100001", account = "现金";
  one(sql(words_.lines) << number);
  one(sql(words_.head) << number);
  if (words_.shortage) one(sql(words_.shortage) << number);
  sql("begin immediate").run();
  one(sql(words_.head) << number);
  if (words_.shortage) one(sql(words_.shortage) << number);
  one(sql(words_.heads) << number);
  one(sql(words_.head) << number);
  (sql(words_.audited) << today << number).run();
  (sql(words_.strays) << number).run();
  Bare& head = sql(words_.due) << number;
  if (!head.step()) throw std::runtime_error("no head");
  const double due = head.number(0);
  head.reset();
  const std::string& date = date_;
  (sql(words_.cash) << date << number << partner << account).run();
  double carried = one(sql("select xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? "
                           "order by xj_rq desc,id desc limit 1")
                       << account << date);
  carry(sql("select id,xj_ljje,xj_je from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? order by xj_rq,id")
            << account << date,
        "update jxc_xjyh set xj_ljje=? where id=?", carried);
  (sql(words_.partner) << partner << account << due << date << number).run();
  carried = one(sql(words_.carried) << partner << date);
  carry(sql(words_.running) << partner << date, "update jxc_ysyfk set k_ljje=? where id=?", carried);
  (sql(words_.owed) << due << partner).run();
  (sql(words_.moved) << number).run();
  (sql(words_.marked) << number).run();
  (sql(words_.ledger) << today << number).run();
  struct Effect {
    sqlite3_int64 id;
    std::string goods;
    double quantity, price;
  };
  std::vector<Effect> effects;
  Bare& rows = sql(words_.effects) << number;
  while (rows.step())
    effects.push_back({rows.integer(0), rows.text(1), rows.number(2), rows.number(3)});
  rows.reset();
  for (const Effect& effect : effects)
    goods(effect.id, effect.goods, effect.quantity, effect.price, partner);
  (sql("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)") << today << number).run();
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')"));
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)")
      << date.substr(0, 7));
  const double stock = one(sql("select sum(kc_sl),sum(kc_sl*kc_cbj) from jxc_kcsp where ck_sn='100001'"));
  (sql("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn='100001'") << stock << stock << date.substr(0, 7))
      .run();
  sql(words_.employee).run();
  sql("commit").run();
}

// ---- measurements ------------------------------------------------------------------------------------------------

enum Way : int { ByStatements, ByHand };

/// A ledger that no other measurement has: documents of years stand beside it in this shop alone.
constexpr int besideDocuments = 20'000;

/// A hundred thousand audited sales of ten lines, and as many receipts, over the goods of the shop.
void fillDocuments(sqlite3* db) {
  Bare(db, "begin immediate").run();
  Bare(db,
       "with recursive n(i) as (select 0 union all select i+1 from n where i<99999) insert into jxc_lsxsd "
       "(gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,ls_note,a_name,ls_status,ls_checker,ls_chkrq,ls_crk,ls_dhbz) "
       "select 'XS2'||(1000000000+i),'100001','100001',date('2018-01-01','+'||(i/40)||' days'),100,100,'100001','',"
       "'admin',1,'admin',date('2018-01-01','+'||(i/40)||' days'),1,0 from n")
      .run();
  Bare(db,
       "with recursive n(i) as (select 0 union all select i+1 from n where i<999999) insert into jxc_lsxssp "
       "(gl_djh,g_sn,ls_dj,ls_sl,ls_je,ls_zje,ls_cbj,ls_zcb,a_name,id2,ls_cksl,ls_qxsl,t_zp) select "
       "'XS2'||(1000000000+i/10),1000000+i*7919%1000,20,1,20,20,10,10,'admin',i+1,1,0,'' from n")
      .run();
  Bare(db,
       "insert into jxc_jhd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,j_note,a_name,j_status,j_checker,j_chkrq,"
       "j_crk) select 'CJ'||substr(gl_djh,3),'100001',ck_sn,ls_xsrq,100,100,u_sn,'',a_name,1,'admin',ls_chkrq,1 from "
       "jxc_lsxsd")
      .run();
  Bare(db,
       "insert into jxc_jhsp (j_sn,g_sn,jh_dj,jh_sl,jh_je,jh_zje,a_name,id2,jh_rksl,jh_qxsl) select "
       "'CJ'||substr(gl_djh,3),g_sn,10,1,10,10,a_name,id2,1,0 from jxc_lsxssp")
      .run();
  Bare(db, "commit").run();
}

/// Each iteration audits another waiting document of `lines` lines, dated so many days back.
void audits(benchmark::State& state, bool sale, int ledgerRows, int lines, int daysBack, Way way) {
  Shop& shop = shopWith(ledgerRows);
  if (ledgerRows == besideDocuments && lookupNumber("select count(*) from jxc_lsxsd") < 1000)
    fillDocuments(shop.native());
  // A day of its own for each measurement, or the later ones would walk over the rows of the earlier ones.
  static int day = 0;
  const QString date = QDate::currentDate().addDays(++day - daysBack).toString(Qt::ISODate);
  ensureStockRows(date.left(7));
  static int seed = 0;
  BareAudit bare(shop.native(), sale);
  bare.setDate(date.toStdString());
  const std::string today = clock::today().toStdString();
  bench::Audits all{
      .family = sale ? families::sale : families::purchaseReceipt,
      // Statements are prepared, and every goods was met once: a shop in the middle of its day.
      .warmUps = daysBack == 0 ? goodsCount / lines + 1 : 1,
      .make = [&] { return bench::waitingDocument(sale, date, lines, ++seed); },
  };
  if (way == ByHand) all.byHand = [&](const std::string& number) { bare.run(number, today); };
  bench::measure(state, all);
}

struct Case {
  const char* name;
  bool sale;
  int lines, daysBack, iterations;
};
constexpr Case cases[] = {
    {"receipt of 50 lines", false, 50, 0, 200},
    {"sale of 50 lines", true, 50, 0, 200},
    {"receipt of 50 lines dated a year back", false, 50, 365, 10},
    {"receipt of 1000 lines", false, 1000, 0, 20},
};

const bool registered = [] {
  for (const int rows : bench::ledgerSizes())
    for (const Case& each : cases)
      for (const Way way : {ByStatements, ByHand})
        benchmark::RegisterBenchmark(bench::named(each.name, rows, way == ByHand).c_str(),
                                     [&each, way, rows](benchmark::State& state) {
                                       audits(state, each.sale, rows, each.lines, each.daysBack, way);
                                     })
            ->Iterations(each.iterations)
            ->Unit(benchmark::kMillisecond);
  for (const Case& each : cases)
    if (each.daysBack == 0 && each.lines == 50)
      benchmark::RegisterBenchmark(
          (std::string(each.name) + " beside 100,000 documents, statements").c_str(),
          [&each](benchmark::State& state) { audits(state, each.sale, besideDocuments, each.lines, 0, ByStatements); })
          ->Iterations(each.iterations)
          ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace posting_bench
}  // namespace jxc
