// Documents within the house beside the same reads and writes by hand on bare SQLite: a transfer and a loss of fifty
// lines, with few and with a million rows of the stock ledger behind.
#include "bare_replay.h"
#include "core/clock.h"
#include "filled_shop.h"
#include "house_words.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <QDate>

#include <benchmark/benchmark.h>
#include <vector>

namespace jxc {
namespace house_bench {

using bench::Bare;
using bench::Shop;
using bench::shopWith;

// ---- by hand -----------------------------------------------------------------------------------------------------

class BareAudit : bench::BareStatements {
 public:
  BareAudit(sqlite3* db, const bench::HouseWords& words) : BareStatements(db), words_(words) {}

  void run(const std::string& number, const std::string& date) {
    one(sql(words_.lines) << number);
    one(sql(words_.head) << number);
    if (words_.shortage) one(sql(words_.shortage) << number);
    sql("begin immediate").run();
    one(sql(words_.head) << number);
    if (words_.shortage) one(sql(words_.shortage) << number);
    effects(number, date);
    sql("commit").run();
  }

 private:
  void effects(const std::string& number, const std::string& date);

  const bench::HouseWords& words_;
};

void BareAudit::effects(const std::string& number, const std::string& date) {
  const std::string today = clock::today().toStdString();
  one(sql(words_.heads) << number);
  (sql(words_.audited) << today << number).run();
  (sql(words_.strays) << number).run();
  for (const char* insert : words_.ledger)
    if (insert) (sql(insert) << today << number).run();
  struct Effect {
    sqlite3_int64 id;
    std::string goods, warehouse;
    double quantity, price, amount;
  };
  std::vector<Effect> rows;
  Bare& posted = sql("select id,g_sn,ck_sn,gl_sl,gl_dj,gl_zje from jxc_goodslist where gl_djh=? order by id") << number;
  while (posted.step())
    rows.push_back(
        {posted.integer(0), posted.text(1), posted.text(2), posted.number(3), posted.number(4), posted.number(5)});
  posted.reset();
  double value = 0;
  for (const Effect& row : rows) {
    (sql("update jxc_kcsp set kc_sl=kc_sl+?,kc_zsl=kc_zsl+? where ck_sn=? and g_sn=?")
     << row.quantity << row.quantity << row.warehouse << row.goods)
        .run();
    if (changed() == 0)
      (sql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)")
       << row.quantity << row.price << row.goods << row.warehouse << row.quantity)
          .run();
    if (words_.master) (sql("update jxc_goods set g_kc=g_kc+? where g_sn=?") << row.quantity << row.goods).run();
    const double average = bench::replay(*this, row.id);
    if (words_.cost)
      (sql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?") << average << row.warehouse << row.goods).run();
    value += row.amount;
  }
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')"));
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)")
      << date.substr(0, 7));
  for (const char* warehouse : {"100001", "100002"})
    if (words_.ledger[1] || warehouse[5] == '1')
      (sql("update jxc_kcjs set js_sl=js_sl+?,js_zje=js_zje+? where js_rq=? and ck_sn=?")
       << value << value << date.substr(0, 7) << std::string(warehouse))
          .run();
  (sql("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)") << today << number).run();
  if (words_.expense && value != 0)
    (sql("insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,fy_flag,de_sn,fy_kmmc,fy_chk) "
         "values "
         "(?,?,'费用',?,'100001',?,'admin','费用','1','100001','现金','1')")
     << number << date << value << words_.note + number)
        .run();
}

// ---- measurements ------------------------------------------------------------------------------------------------

enum class Way : char { ByStatements, ByHand };

struct Case {
  const char* name;
  const DocumentFamily* family;
  const bench::HouseWords* words;
  QString (*make)(const QString& date, int lines, int seed);
};
constexpr int linesOfDocument = 50, audited = 200;

void audits(benchmark::State& state, const Case& each, int ledgerRows, Way way) {
  Shop& shop = shopWith(ledgerRows);
  static int day = 0, seed = 0;
  // A day of its own for each measurement, or the later ones would walk over the rows of the earlier ones.
  const QString date = QDate::currentDate().addDays(400 + ++day).toString(Qt::ISODate);
  if (!exists("select id from jxc_ckxx where ck_sn='100002'"))
    execSql("insert into jxc_ckxx (ck_sn,ck_name) values ('100002','分店')");
  ensureStockRows(date.left(7));
  BareAudit bare(shop.native(), *each.words);
  bench::Audits all{
      .family = *each.family,
      .warmUps = bench::goodsCount / linesOfDocument + 1,  // every goods was met once
      .make = [&] { return each.make(date, linesOfDocument, ++seed); },
  };
  if (way == Way::ByHand) all.byHand = [&](const std::string& number) { bare.run(number, date.toStdString()); };
  bench::measure(state, all);
}

constexpr Case cases[] = {
    {"transfer of 50 lines", &families::transfer, &bench::transferWords, bench::waitingTransfer},
    {"loss of 50 lines", &families::loss, &bench::lossWords, bench::waitingLoss},
};

const bool registered = [] {
  for (const int rows : bench::ledgerSizes())
    for (const Case& each : cases)
      for (const Way way : {Way::ByStatements, Way::ByHand})
        benchmark::RegisterBenchmark(bench::named(each.name, rows, way == Way::ByHand).c_str(),
                                     [&each, way, rows](benchmark::State& state) { audits(state, each, rows, way); })
            ->Iterations(audited)
            ->Unit(benchmark::kMillisecond);
  return true;
}();

}  // namespace house_bench
}  // namespace jxc
