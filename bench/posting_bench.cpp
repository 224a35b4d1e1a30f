// Audit of receipts and sales beside the same reads and writes by hand on bare SQLite: today and dated back, with few
// and with a million rows of the stock ledger behind.
#include "core/clock.h"
#include "core/session.h"
#include "filled_shop.h"
#include "purchasing/receipt.h"
#include "stock/cancelling.h"
#include "stock/ledger.h"

#include <QDate>

#include <array>
#include <benchmark/benchmark.h>
#include <list>
#include <optional>
#include <vector>

namespace jxc {
namespace posting_bench {

using bench::Bare;
using bench::goodsCode;
using bench::goodsCount;
using bench::roundTo;
using bench::Shop;
using bench::shopWith;
using bench::YesPrompt;

/// A waiting receipt or sale of this date; its goods differ from document to document.
QString waiting(bool sale, const QString& date, int lines, int seed) {
  Transaction transaction(accountDb());
  const DocumentFamily& family = sale ? families::sale : families::purchaseReceipt;
  const QString number = newDocumentNumber(family, date);
  for (int line = 0; line < lines; ++line) {
    const QString goods = QString::fromStdString(goodsCode((seed * 7 + line * 13) % goodsCount));
    const double quantity = 1 + line % 5;
    if (sale)
      insertRow("jxc_lsxssp", {{"gl_djh", number},
                               {"g_sn", goods},
                               {"a_name", session().a_name},
                               {"ls_dj", 20.0},
                               {"ls_sl", quantity},
                               {"ls_je", quantity * 20},
                               {"ls_cbj", 10.0},
                               {"ls_zcb", quantity * 10},
                               {"ls_tax", 0.0},
                               {"ls_taxdj", 20.0},
                               {"ls_taxje", 0.0},
                               {"ls_lsj", 20.0},
                               {"ls_zje", quantity * 20},
                               {"ls_cksl", 0.0},
                               {"ls_qxsl", 0.0},
                               {"ls_dzl", 1.0},
                               {"t_zp", u""}});
    else
      insertRow("jxc_jhsp", {{"j_sn", number},
                             {"g_sn", goods},
                             {"a_name", session().a_name},
                             {"jh_dj", 11.0},
                             {"jh_sl", quantity},
                             {"jh_je", quantity * 11},
                             {"jh_tax", 0.0},
                             {"jh_taxdj", 11.0},
                             {"jh_taxje", 0.0},
                             {"jh_zje", quantity * 11},
                             {"jh_rksl", quantity},
                             {"jh_qxsl", 0.0},
                             {"jh_dzl", 1.0},
                             {"jh_bz", u""}});
  }
  if (sale)
    insertRow("jxc_lsxsd", {{"gl_djh", number},
                            {"kh_sn", lookupValue("select top 1 kh_sn from jxc_khxx order by id")},
                            {"ck_sn", u"100001"},
                            {"ls_xsrq", date},
                            {"ls_yfje", 100.0},
                            {"ls_sfje", 0.0},
                            {"u_sn", u"100001"},
                            {"ls_note", u""},
                            {"a_name", session().a_name},
                            {"ls_status", 0},
                            {"ls_jsfs", 1},
                            {"ls_kmmc", u"现金"},
                            {"ls_dhbz", 0}});
  else
    insertRow("jxc_jhd", {{"j_sn", number},
                          {"ghs_sn", u"100001"},
                          {"ck_sn", u"100001"},
                          {"j_jhrq", date},
                          {"j_yfje", 100.0},
                          {"j_sfje", 0.0},
                          {"u_sn", u"100001"},
                          {"j_note", u""},
                          {"a_name", session().a_name},
                          {"j_status", 0},
                          {"j_jsfs", 1},
                          {"j_kmmc", u"现金"}});
  transaction.commit();
  return number;
}

// ---- by hand -----------------------------------------------------------------------------------------------------

/// The statements in which a receipt and a sale differ.
struct Words {
  const char *lines, *heads, *shortage, *head, *audited, *strays, *due, *cash, *partner, *carried, *running, *owed,
      *moved, *marked, *ledger, *effects, *employee;
};
constexpr Words receiptWords = {
    "select count(*) from jxc_jhsp where j_sn=?",
    "select count(*) from jxc_jhd where j_sn=?",
    nullptr,
    "select * from jxc_jhd where j_sn=? order by j_status desc,id",
    "update jxc_jhd set j_status=1,j_checker='admin',j_chkrq=? where j_sn=?",
    "delete from jxc_jhd where j_status=0 and j_sn=?",
    "select a.j_yfje from jxc_jhd a join jxc_user b on a.u_sn=b.u_sn join jxc_ghsxx c on a.ghs_sn=c.ghs_sn join "
    "jxc_ckxx d "
    "on a.ck_sn=d.ck_sn where a.j_sn=?",
    "insert into jxc_xjyh "
    "(xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) "
    "values (?,?,'采购进货',0,'默认员工','普通供货商',?,'主仓库',?,'','admin','1',0)",
    "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,"
    "k_flag,k_rq,gl_djh) values (?,'admin','100001',?,0,0,0,0,?,'ghs','CJ','采购进货单','',1,?,?)",
    "select k_ljje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq<? order by k_rq desc,id desc limit 1",
    "select id,k_ljje,k_qcje+k_yfje-k_sfje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq>=? order by "
    "k_rq,id",
    "update jxc_ghsxx set ghs_lwje=? where ghs_sn=?",
    "update jxc_jhsp set jh_rksl=jh_sl where j_sn=?",
    "update jxc_jhsp set id2=id,jh_qxsl=0 where j_sn=?",
    "insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
    "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_"
    "note,"
    "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) "
    "select "
    "'cj',a.j_sn,a.j_jhrq,b.g_sn,c.g_name,c.g_jm,c.dw_name,b.jh_dj,0,0,b.jh_sl,b.jh_dzl,b.jh_zje,b.jh_je,b.jh_tax,"
    "b.jh_taxdj,b.jh_taxje,c.g_lsj,0,0,'admin',?,0,0,c.g_pjjj,0,0,a.j_note,b.jh_bz,d.u_name,b.a_name,a.ck_sn,e.ck_name,"
    "a.ghs_sn,f.ghs_name,c.gg_name,c.color_name,b.jh_sl,b.id2,a.j_sn2,'',0 from jxc_jhd a join jxc_jhsp b on "
    "a.j_sn=b.j_sn "
    "join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn join jxc_ckxx e on a.ck_sn=e.ck_sn join "
    "jxc_ghsxx f "
    "on a.ghs_sn=f.ghs_sn where a.j_sn=? order by b.id",
    "select a.id,a.g_sn,a.gl_sl,a.gl_dj from jxc_goodslist a join jxc_jhsp b on a.id2=b.id2 and a.g_sn=b.g_sn and "
    "a.gl_djh=b.j_sn where a.g_sn<>'00000000' and a.gl_djh=? order by a.id",
    "update jxc_user set u_cgpl=u_cgpl+1 where u_sn='100001'"};
constexpr Words saleWords = {
    "select count(*) from jxc_lsxssp where gl_djh=?",
    "select count(*) from jxc_lsxsd where gl_djh=?",
    "select a.g_sn from (select g_sn,sum(ls_sl) as sl from jxc_lsxssp where gl_djh=? and g_sn<>'00000000' group by "
    "g_sn) a,"
    "jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn limit 1",
    "select * from jxc_lsxsd where gl_djh=? order by ls_status desc,id",
    "update jxc_lsxsd set ls_status=1,ls_checker='admin',ls_chkrq=? where gl_djh=?",
    "delete from jxc_lsxsd where ls_status=0 and gl_djh=?",
    "select a.ls_yfje from jxc_lsxsd a join jxc_user b on a.u_sn=b.u_sn join jxc_khxx c on a.kh_sn=c.kh_sn join "
    "jxc_ckxx d on "
    "a.ck_sn=d.ck_sn where a.gl_djh=?",
    "insert into jxc_xjyh "
    "(xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) "
    "values (?,?,'商品销售',0,'默认员工','普通客户',?,'主仓库',?,'','admin','1',0)",
    "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,"
    "k_flag,k_rq,gl_djh) values (?,'admin','100001',?,0,0,0,0,?,'kh','XS','商品销售单','',1,?,?)",
    "select k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh=? and k_rq<? order by k_rq desc,id desc limit 1",
    "select id,k_ljje,k_qcje+k_yfje-k_sfje from jxc_ysyfk where k_type='kh' and k_ghskh=? and k_rq>=? order by k_rq,id",
    "update jxc_khxx set kh_lwje=? where kh_sn=?",
    "update jxc_lsxssp set ls_cksl=ls_sl where gl_djh=?",
    "update jxc_lsxssp set id2=id,ls_qxsl=0 where gl_djh=?",
    "insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
    "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_"
    "note,"
    "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) "
    "select "
    "'xs',a.gl_djh,a.ls_xsrq,b.g_sn,c.g_name||ifnull(b.t_zp,''),c.g_jm,c.dw_name,b.ls_dj,b.ls_cbj,b.ls_zcb,b.ls_sl,"
    "b.ls_dzl,b.ls_zje,b.ls_je,b.ls_tax,b.ls_taxdj,b.ls_taxje,b.ls_lsj,b.ls_je-b.ls_zcb,b.ls_qxsl,'admin',?,0,0,c.g_"
    "pjjj,0,"
    "0,a.ls_note,b.ls_bz,d.u_name,b.a_name,a.ck_sn,e.ck_name,a.kh_sn,f.kh_name,c.gg_name,c.color_name,0,b.id2,a.gl_"
    "djh2,'',0 "
    "from jxc_lsxsd a join jxc_lsxssp b on a.gl_djh=b.gl_djh join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on "
    "a.u_sn=d.u_sn join jxc_ckxx e on a.ck_sn=e.ck_sn join jxc_khxx f on a.kh_sn=f.kh_sn where a.gl_djh=? order by "
    "b.id",
    "select a.id,a.g_sn,a.gl_sl,a.gl_dj from jxc_goodslist a join jxc_lsxssp b on a.id2=b.id2 and a.g_sn=b.g_sn and "
    "a.gl_djh=b.gl_djh where a.g_sn<>'00000000' and a.gl_djh=? order by a.id",
    "update jxc_user set u_xspl=u_xspl+1 where u_sn='100001'"};

/// What audit of a receipt or of a sale reads and writes, as somebody would write it who knows nothing but SQLite.
class BareAudit {
 public:
  BareAudit(sqlite3* db, bool sale) : db_(db), sale_(sale), words_(sale ? saleWords : receiptWords) {}
  void run(const std::string& number, const std::string& today);
  void setDate(const std::string& date) { date_ = date; }  // of the documents

 private:
  Bare& sql(const char* text) {
    for (auto& [known, statement] : statements_)
      if (known == text) return statement;
    return statements_.emplace_back(text, Bare(db_, text)).second;
  }
  sqlite3* db_;
  const bool sale_;
  const Words& words_;
  std::string date_;
  std::list<std::pair<const char*, Bare>> statements_;

  double one(Bare& statement) {
    const double value = statement.step() ? statement.number(0) : 0;
    statement.reset();
    return value;
  }
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
  if (sqlite3_changes(db_) == 0)
    (sql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)")
     << quantity << price << sn << warehouse << quantity)
        .run();
  Bare& anchor = sql("select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?") << id;
  anchor.step();
  const std::string date = anchor.text(1);
  anchor.reset();
  double q = 0, p = 0, a = 0;
  Bare& opening = sql("select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
                      "order by gl_kdrq desc,id desc limit 1")
                  << sn << warehouse << date;
  const bool found = opening.step();
  if (found) {
    q = opening.number(0);
    p = opening.number(1);
    a = opening.number(2);
  }
  opening.reset();
  if (!found) p = one(sql("select g_pjjj from jxc_goods where g_sn=?") << sn);
  struct Line {
    sqlite3_int64 id;
    bool in;
    double quantity, net, stored[5];
  };
  std::vector<Line> lines;
  Bare& rows = sql("select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
                   "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id")
               << sn << warehouse << date;
  while (rows.step())
    lines.push_back({rows.integer(0),
                     rows.text(1) == "cj",
                     rows.number(2),
                     rows.number(3),
                     {rows.number(5), rows.number(6), rows.number(7), rows.number(8), rows.number(9)}});
  rows.reset();
  for (const Line& line : lines) {
    const double before[2] = {q, a};
    if (line.in) {
      const double pool = q + line.quantity;
      if (pool != 0) p = roundTo(std::fabs((a + line.net) / pool), 100);
      q = roundTo(pool, 100);
    } else {
      q = roundTo(q - line.quantity, 100);
    }
    a = roundTo(p * q, 100);
    const double now[5] = {before[0], before[1], p, q, a};
    bool same = true;
    for (int i = 0; i < 5; ++i)
      same = same && std::fabs(now[i] - line.stored[i]) < 5e-7;
    if (!same)
      (sql("update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?")
       << now[0] << now[1] << now[2] << now[3] << now[4] << line.id)
          .run();
  }
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

double pagesSoFar(int which) {
  int now = 0, most = 0;
  sqlite3_db_status(sqlite::asSqlite(accountDb()).native(), which, &now, &most, 0);
  return now;
}

/// Steps of SQLite's machine over all prepared statements: the work itself, whatever else the computer does meanwhile.
double stepsSoFar() {
  double steps = 0;
  sqlite3* const db = sqlite::asSqlite(accountDb()).native();
  for (sqlite3_stmt* each = sqlite3_next_stmt(db, nullptr); each; each = sqlite3_next_stmt(db, each))
    steps += sqlite3_stmt_status(each, SQLITE_STMTSTATUS_VM_STEP, 0);
  return steps;
}

/// Each iteration audits another waiting document of `lines` lines, dated so many days back.
void audits(benchmark::State& state, bool sale, int ledgerRows, int lines, int daysBack, Way way) {
  Shop& shop = shopWith(ledgerRows);
  // A day of its own for each measurement, or the later ones would walk over the rows of the earlier ones.
  static int day = 0;
  const QString date = QDate::currentDate().addDays(++day - daysBack).toString(Qt::ISODate);
  YesPrompt prompt;
  ensureStockRows(date.left(7));
  static int seed = 0;
  // Statements are prepared, and every goods was met once: a shop in the middle of its day.
  const int warmUps = daysBack == 0 ? goodsCount / lines + 1 : 1;
  std::vector<QString> numbers;
  for (benchmark::IterationCount i = 0; i < state.max_iterations + warmUps; ++i)
    numbers.push_back(waiting(sale, date, lines, ++seed));
  const DocumentFamily& family = sale ? families::sale : families::purchaseReceipt;
  BareAudit bare(shop.native(), sale);
  bare.setDate(date.toStdString());
  const std::string today = clock::today().toStdString();
  std::size_t next = 0;
  const auto audit = [&] {
    const QString& number = numbers[next++];
    if (way == ByHand)
      bare.run(number.toStdString(), today);
    else if (checkDj(family, number, prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
  };
  for (int i = 0; i < warmUps; ++i)
    audit();
  // What may grow with the ledger behind: the work, pages that were not in the cache, pages written.
  const double steps = stepsSoFar();
  const double missed = pagesSoFar(SQLITE_DBSTATUS_CACHE_MISS), written = pagesSoFar(SQLITE_DBSTATUS_CACHE_WRITE);
  for (auto _ : state)
    audit();
  const auto each = static_cast<double>(state.iterations());
  state.counters["steps"] = (stepsSoFar() - steps) / each;
  state.counters["missed"] = (pagesSoFar(SQLITE_DBSTATUS_CACHE_MISS) - missed) / each;
  state.counters["written"] = (pagesSoFar(SQLITE_DBSTATUS_CACHE_WRITE) - written) / each;
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
  return true;
}();

}  // namespace posting_bench
}  // namespace jxc
