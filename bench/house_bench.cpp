// Documents within the house beside the same reads and writes by hand on bare SQLite: a transfer and a loss of fifty
// lines, with few and with a million rows of the stock ledger behind.
#include "bare_replay.h"
#include "core/clock.h"
#include "filled_shop.h"
#include "stock/document.h"
#include "stock/ledger.h"

#include <QDate>

#include <benchmark/benchmark.h>
#include <vector>

namespace jxc {
namespace house_bench {

using bench::Bare;
using bench::goodsCode;
using bench::Shop;
using bench::shopWith;
using bench::YesPrompt;

// ---- by hand -----------------------------------------------------------------------------------------------------

/// The statements in which the kinds differ; null: not of this kind.
struct Words {
  const char *lines, *head, *heads, *shortage, *audited, *strays, *ledger[2], *note;
  bool master, cost, expense;
};

#define JXC_LEDGER(flag, sign, price, quantity, amount, warehouse, text, note, head, body, date)                       \
  "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,"       \
  "gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,"      \
  "gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc," \
  "gl_dqkc) select '" flag "',a.gl_djh,a." date ",b.g_sn,c.g_name,c.g_jm,c.dw_name," price ",0,0," sign quantity       \
  ",1," sign amount "," sign amount ",0," price ",0,0,0,0,'admin',?,0,0," price ",0,0,a." note                         \
  ",'',d.u_name,b.a_name,a." warehouse ",e.ck_name,'','" text "',c.gg_name,c.color_name," quantity                     \
  ",0,'','',0 from " head " a join " body                                                                              \
  " b on a.gl_djh=b.gl_djh join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn "                        \
  "join jxc_ckxx e on a." warehouse "=e.ck_sn where a.gl_djh=?"

constexpr Words transferWords = {
    .lines = "select count(*) from jxc_dbsp where gl_djh=?",
    .head = "select * from jxc_kcdbd where gl_djh=? order by db_status desc,id",
    .heads = "select count(*) from jxc_kcdbd where gl_djh=?",
    .shortage =
        "select a.g_sn from (select g_sn,sum(db_sl) as sl from jxc_dbsp where gl_djh=? group by g_sn) a,jxc_kcsp "
        "b where a.g_sn=b.g_sn and a.sl>b.kc_sl and b.ck_sn='100001' order by a.g_sn limit 1",
    .audited = "update jxc_kcdbd set db_status=1,db_checker='admin',db_chkrq=? where gl_djh=?",
    .strays = "delete from jxc_kcdbd where db_status=0 and gl_djh=?",
    .ledger = {JXC_LEDGER("db", "", "b.db_dj", "b.db_sl", "b.db_dj*b.db_sl", "ck_in", "调拨入库", "db_note",
                          "jxc_kcdbd", "jxc_dbsp", "db_dbrq") " order by b.id",
               JXC_LEDGER("db", "-1*", "b.db_dj", "b.db_sl", "b.db_dj*b.db_sl", "ck_out", "调拨出库", "db_note",
                          "jxc_kcdbd", "jxc_dbsp", "db_dbrq") " order by b.id"},
    .cost = true};
constexpr Words lossWords = {.lines = "select count(*) from jxc_bssp where gl_djh=?",
                             .head = "select * from jxc_bsd where gl_djh=? order by bs_status desc,id",
                             .heads = "select count(*) from jxc_bsd where gl_djh=?",
                             .audited = "update jxc_bsd set bs_status=1,bs_checker='admin',bs_chkrq=? where gl_djh=?",
                             .strays = "delete from jxc_bsd where bs_status=0 and gl_djh=?",
                             .ledger = {JXC_LEDGER("bs", "-1*", "b.bs_dj", "b.bs_sl", "b.bs_zje", "ck_sn", "商品报损",
                                                   "bs_note", "jxc_bsd", "jxc_bssp", "bs_bsrq") " order by b.id"},
                             .note = "报损单",
                             .master = true,
                             .expense = true};
#undef JXC_LEDGER

class BareAudit : bench::BareStatements {
 public:
  BareAudit(sqlite3* db, const Words& words) : BareStatements(db), words_(words) {}

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

  const Words& words_;
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

// ---- waiting documents -------------------------------------------------------------------------------------------

QString waitingTransfer(const QString& date, int lines, int seed) {
  Transaction transaction(accountDb());
  const QString number = newDocumentNumber(families::transfer, date);
  for (int line = 0; line < lines; ++line)
    insertRow("jxc_dbsp", {{"gl_djh", number},
                           {"g_sn", QString::fromStdString(goodsCode((seed * 7 + line * 13) % bench::goodsCount))},
                           {"db_sl", 1.0},
                           {"db_dj", 10.0},
                           {"db_sj", 20.0},
                           {"db_zje", 10.0},
                           {"a_name", u"admin"}});
  insertRow("jxc_kcdbd", {{"gl_djh", number},
                          {"ck_out", u"100001"},
                          {"ck_in", u"100002"},
                          {"db_dbrq", date},
                          {"db_status", 0},
                          {"u_sn", u"100001"},
                          {"db_note", u""},
                          {"a_name", u"admin"}});
  transaction.commit();
  return number;
}

QString waitingLoss(const QString& date, int lines, int seed) {
  Transaction transaction(accountDb());
  const QString number = newDocumentNumber(families::loss, date);
  for (int line = 0; line < lines; ++line)
    insertRow("jxc_bssp", {{"gl_djh", number},
                           {"g_sn", QString::fromStdString(goodsCode((seed * 7 + line * 13) % bench::goodsCount))},
                           {"bs_sl", 1.0},
                           {"bs_dj", 10.0},
                           {"bs_zje", 10.0},
                           {"bs_note", u""},
                           {"a_name", u"admin"}});
  insertRow("jxc_bsd", {{"gl_djh", number},
                        {"ck_sn", u"100001"},
                        {"bs_bsrq", date},
                        {"bs_status", 0},
                        {"u_sn", u"100001"},
                        {"bs_note", u""},
                        {"a_name", u"admin"}});
  transaction.commit();
  return number;
}

// ---- measurements ------------------------------------------------------------------------------------------------

enum class Way : char { ByStatements, ByHand };

struct Case {
  const char* name;
  const DocumentFamily* family;
  const Words* words;
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
  YesPrompt prompt;
  BareAudit bare(shop.native(), *each.words);
  const int warmUps = bench::goodsCount / linesOfDocument + 1;  // every goods was met once
  std::vector<QString> numbers;
  for (benchmark::IterationCount i = 0; i < state.max_iterations + warmUps; ++i)
    numbers.push_back(each.make(date, linesOfDocument, ++seed));
  std::size_t next = 0;
  const auto audit = [&] {
    const QString& number = numbers[next++];
    if (way == Way::ByHand)
      bare.run(number.toStdString(), date.toStdString());
    else if (checkDj(*each.family, number, prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
  };
  for (int i = 0; i < warmUps; ++i)
    audit();
  for (auto _ : state)
    audit();
}

constexpr Case cases[] = {
    {"transfer of 50 lines", &families::transfer, &transferWords, waitingTransfer},
    {"loss of 50 lines", &families::loss, &lossWords, waitingLoss},
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
