// The replay of the stock ledger and the audit of a receipt beside the same reads and writes by hand on bare SQLite.
#include "core/clock.h"
#include "core/data_module.h"
#include "core/schema/schema.h"
#include "core/schema/upgrade.h"
#include "core/session.h"
#include "engine/sqlite/sqlite_database.h"
#include "purchasing/receipt.h"
#include "stock/ledger.h"

#include <QTemporaryDir>

#include <array>
#include <benchmark/benchmark.h>
#include <cmath>
#include <list>
#include <string>
#include <vector>

namespace jxc {
namespace replay_bench {

/// An account set in a file of its own, with its durable commits, and the administrator at work.
class Shop {
 public:
  Shop() {
    SqliteOptions options;
    options.create = true;
    dataModule().installAccountDb(openSqlite(directory_.filePath(QStringLiteral("jxc.mdb")), options));
    createAllTables(accountDb());
    upgradeSchema(accountDb());
    session() = Session{};
    session().a_name = QStringLiteral("admin");
    session().a_sn = session().r_sn = QStringLiteral("100001");
    loadSession();
  }
  ~Shop() { dataModule().closeAccountDb(); }
  sqlite3* native() { return sqlite::asSqlite(accountDb()).native(); }

 private:
  QTemporaryDir directory_;
};

class YesPrompt : public Prompt {
 public:
  void notice(const QString& text) override { throw std::runtime_error(text.toStdString()); }
  bool ask(const QString&) override { return true; }
  Answer askOrCancel(const QString&) override { return Answer::Yes; }
};

/// One prepared statement of the bare interface; values are bound in order.
class Bare {
 public:
  Bare(sqlite3* connection, const char* text) {
    sqlite3_stmt* raw = nullptr;
    if (sqlite3_prepare_v3(connection, text, -1, SQLITE_PREPARE_PERSISTENT, &raw, nullptr) != SQLITE_OK)
      throw std::runtime_error(sqlite3_errmsg(connection));
    statement_.reset(raw);
  }
  Bare& operator<<(double value) { return sqlite3_bind_double(get(), ++bound_, value), *this; }
  Bare& operator<<(sqlite3_int64 value) { return sqlite3_bind_int64(get(), ++bound_, value), *this; }
  Bare& operator<<(const std::string& value) {
    sqlite3_bind_text(get(), ++bound_, value.data(), static_cast<int>(value.size()), SQLITE_TRANSIENT);
    return *this;
  }
  bool step() { return sqlite3_step(get()) == SQLITE_ROW; }
  void run() {
    if (sqlite3_step(get()) != SQLITE_DONE) throw std::runtime_error(sqlite3_errmsg(sqlite3_db_handle(get())));
    reset();
  }
  void reset() {
    sqlite3_reset(get());
    bound_ = 0;
  }
  double number(int column) { return sqlite3_column_double(get(), column); }
  sqlite3_int64 integer(int column) { return sqlite3_column_int64(get(), column); }
  std::string text(int column) {
    const auto* raw = reinterpret_cast<const char*>(sqlite3_column_text(get(), column));
    return raw ? raw : "";
  }
  sqlite3_stmt* get() { return statement_.get(); }

 private:
  sqlite::StatementHandle statement_;
  int bound_ = 0;
};

// ---- replay ------------------------------------------------------------------------------------------------------

constexpr int ledgerRows = 10000;

/// One goods with ten thousand rows, four sales between two receipts. The first row's id.
std::int64_t fillLedger() {
  execSql("insert into jxc_goods (g_sn,g_name,g_pjjj,g_kc) values ('A','镜架',10,0)");
  execSql("insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) values ('A','100001',0,0,0)");
  std::int64_t first = 0;
  Transaction transaction(accountDb());
  for (int i = 0; i <= ledgerRows; ++i) {
    const bool receipt = i % 5 == 0;
    const double price = 10 + i % 7;
    const double quantity = receipt ? 12 : 2;
    const auto id = insertRow("jxc_goodslist", {{"gl_flag", receipt ? u"cj" : u"xs"},
                                                {"gl_kdrq", QDate(2020, 1, 1).addDays(i / 10).toString(Qt::ISODate)},
                                                {"g_sn", u"A"},
                                                {"ck_sn", u"100001"},
                                                {"gl_sl", quantity},
                                                {"gl_dj", price},
                                                {"gl_je", price * quantity},
                                                {"gl_sqsl", 0.0},
                                                {"gl_sqje", 0.0},
                                                {"gl_pjjj", 0.0},
                                                {"gl_kc", 0.0},
                                                {"gl_kczje", 0.0}});
    if (i == 0) first = id;
  }
  transaction.commit();
  return first;
}

/// A first receipt of another quantity: every later row gets other figures.
void disturb(std::int64_t first, bool odd) {
  execSql("update jxc_goodslist set gl_sl=?,gl_je=? where id=?", odd ? 13.0 : 12.0, odd ? 156.0 : 120.0, first);
}

void replayStatements(benchmark::State& state) {
  Shop shop;
  const auto first = fillLedger();
  bool odd = false;
  for (auto _ : state) {
    Transaction transaction(accountDb());
    if (state.range(0)) disturb(first, odd = !odd);
    replayLedger(first);
    transaction.commit();
  }
  state.counters["million rows"] = benchmark::Counter(
      ledgerRows * 1e-6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

double roundTo(double value, double scale) {
  return std::round((value + 1e-9) * scale) / scale;
}

void replayBare(benchmark::State& state) {
  Shop shop;
  const auto first = fillLedger();
  sqlite3* db = shop.native();
  Bare begin(db, "begin immediate"), commit(db, "commit");
  Bare anchor(db, "select g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=?");
  Bare opening(db,
               "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
               "order by gl_kdrq desc,id desc limit 1");
  Bare rows(db,
            "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
            "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id");
  Bare write(db, "update jxc_goodslist set gl_sqsl=?,gl_sqje=?,gl_pjjj=?,gl_kc=?,gl_kczje=? where id=?");
  Bare cost(db, "update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?");
  Bare other(db, "update jxc_goodslist set gl_sl=?,gl_je=? where id=?");
  struct Line {
    sqlite3_int64 id;
    bool in;
    double quantity, net, price, stored[5];
  };
  std::vector<Line> lines;
  bool odd = false;
  for (auto _ : state) {
    begin.run();
    if (state.range(0)) {
      odd = !odd;
      (other << (odd ? 13.0 : 12.0) << (odd ? 156.0 : 120.0) << static_cast<sqlite3_int64>(first)).run();
    }
    (anchor << static_cast<sqlite3_int64>(first)).step();
    const std::string goods = anchor.text(0), date = anchor.text(1), warehouse = anchor.text(2);
    anchor.reset();
    double q = 0, p = 10, a = 0;
    if ((opening << goods << warehouse << date).step()) {
      q = opening.number(0);
      p = opening.number(1);
      a = opening.number(2);
    }
    opening.reset();
    lines.clear();
    rows << goods << warehouse << date;
    while (rows.step())
      lines.push_back({rows.integer(0),
                       rows.text(1) == "cj",
                       rows.number(2),
                       rows.number(3),
                       rows.number(4),
                       {rows.number(5), rows.number(6), rows.number(7), rows.number(8), rows.number(9)}});
    rows.reset();
    for (const Line& line : lines) {
      const double before[2] = {q, a};
      if (line.in) {
        const bool against = q < 0;
        const double pool = against ? std::fabs(q) + line.quantity : q + line.quantity;
        const double value = against ? std::fabs(a) + line.net : a + line.net;
        q = roundTo(q + line.quantity, 100);
        p = q == 0 ? line.price : std::fabs(value / pool);
      } else {
        q = roundTo(q - line.quantity, 100);
      }
      p = roundTo(p, 100);
      a = roundTo(p * q, 100);
      const double now[5] = {before[0], before[1], p, q, a};
      bool same = true;
      for (int i = 0; i < 5; ++i)
        same = same && std::fabs(now[i] - line.stored[i]) < 5e-7;
      if (!same) (write << now[0] << now[1] << now[2] << now[3] << now[4] << line.id).run();
    }
    (cost << p << warehouse << goods).run();
    commit.run();
  }
  state.counters["million rows"] = benchmark::Counter(
      ledgerRows * 1e-6, benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

BENCHMARK(replayStatements)->Name("replay 10000 rows, statements")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);
BENCHMARK(replayBare)->Name("replay 10000 rows, bare interface")->Arg(1)->Arg(0)->Unit(benchmark::kMillisecond);

// ---- audit -------------------------------------------------------------------------------------------------------

constexpr int linesOfReceipt = 50;
constexpr int receipts = 60;

/// Waiting receipts of fifty goods each, over the same fifty goods.
std::vector<QString> waitingReceipts() {
  YesPrompt prompt;
  for (int i = 0; i < linesOfReceipt; ++i)
    execSql("insert into jxc_goods (g_sn,g_name,g_pjjj,g_scjj,g_jj,g_kc,g_cgpl) values (?,'镜架',0,0,0,0,0)",
            QString::number(1000 + i));
  std::vector<QString> numbers;
  for (int i = 0; i < receipts; ++i) {
    Transaction transaction(accountDb());
    receipt::ReceiptDraft draft = receipt::newReceipt();
    for (int line = 0; line < linesOfReceipt; ++line) {
      receipt::LineDraft entry = receipt::newLine(QString::number(1000 + line));
      entry.amounts.setQuantity(1 + line % 5);
      entry.amounts.setPrice(10 + i % 3);
      receipt::addLine(receipt::Lines::Draft, draft.number, draft.date, entry);
    }
    draft.settlement = receipt::Settlement::RestOnAccount;
    numbers.push_back(receipt::saveReceipt(draft, prompt).number);
    transaction.commit();
  }
  return numbers;
}

void auditStatements(benchmark::State& state) {
  Shop shop;
  const std::vector<QString> numbers = waitingReceipts();
  YesPrompt prompt;
  std::size_t next = 0;
  for (auto _ : state)
    if (checkDj(families::purchaseReceipt, numbers[next++], prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
}
BENCHMARK(auditStatements)->Name("audit of 50 lines, statements")->Iterations(receipts)->Unit(benchmark::kMillisecond);

/// What audit of a receipt reads and writes, as somebody would write it who knows nothing but SQLite.
class BareAudit {
 public:
  explicit BareAudit(sqlite3* db) : db_(db) {}
  void run(const std::string& number, const std::string& today);

 private:
  Bare& sql(const char* text) {
    for (auto& [known, statement] : statements_)
      if (known == text) return statement;
    return statements_.emplace_back(text, Bare(db_, text)).second;
  }
  sqlite3* db_;
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
    double quantity, net, stored[5];
  };
  std::vector<Line> lines;
  Bare& rows = sql("select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
                   "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id")
               << sn << warehouse << date;
  while (rows.step())
    lines.push_back({rows.integer(0),
                     rows.number(2),
                     rows.number(3),
                     {rows.number(5), rows.number(6), rows.number(7), rows.number(8), rows.number(9)}});
  rows.reset();
  for (const Line& line : lines) {
    const double before[2] = {q, a};
    p = roundTo(std::fabs((a + line.net) / (q + line.quantity)), 100);
    q = roundTo(q + line.quantity, 100);
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
  (sql("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?") << p << warehouse << sn).run();
  const double average =
      one(sql("select round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2) from jxc_kcsp where g_sn=?") << sn);
  (sql("update jxc_goods set g_kc=g_kc+?,g_cgpl=g_cgpl+1,g_scjj=?,ghs_sn=?,g_pjjj=? where g_sn=?")
   << quantity << price << partner << average << sn)
      .run();
}

void BareAudit::run(const std::string& number, const std::string& today) {
  const std::string partner = "100001", account = "现金";
  sql("begin immediate").run();
  one(sql("select count(*) from jxc_jhsp where j_sn=?") << number);
  one(sql("select count(*) from jxc_jhd where j_sn=?") << number);
  one(sql("select * from jxc_jhd where j_sn=? order by j_status desc,id") << number);
  (sql("update jxc_jhd set j_status=1,j_checker='admin',j_chkrq=? where j_sn=?") << today << number).run();
  (sql("delete from jxc_jhd where j_status=0 and j_sn=?") << number).run();
  const double due = one(sql("select a.j_yfje from jxc_jhd a join jxc_user b on a.u_sn=b.u_sn join jxc_ghsxx c on "
                             "a.ghs_sn=c.ghs_sn join jxc_ckxx d on a.ck_sn=d.ck_sn where a.j_sn=?")
                         << number);
  (sql("insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,"
       "xj_ljje) values (?,?,'采购进货',0,'默认员工','普通供货商',?,'主仓库',?,'','admin','1',0)")
   << today << number << partner << account)
      .run();
  double carried = one(sql("select xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? "
                           "order by xj_rq desc,id desc limit 1")
                       << account << today);
  carry(sql("select id,xj_ljje,xj_je from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? order by xj_rq,id")
            << account << today,
        "update jxc_xjyh set xj_ljje=? where id=?", carried);
  (sql("insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,"
       "k_note,k_flag,k_rq,gl_djh) values (?,'admin','100001',?,0,0,0,0,?,'ghs','CJ','采购进货单','',1,?,?)")
   << partner << account << due << today << number)
      .run();
  carried = one(sql("select k_ljje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq<? "
                    "order by k_rq desc,id desc limit 1")
                << partner << today);
  carry(sql("select id,k_ljje,k_qcje+k_yfje-k_sfje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq>=? "
            "order by k_rq,id")
            << partner << today,
        "update jxc_ysyfk set k_ljje=? where id=?", carried);
  (sql("update jxc_ghsxx set ghs_lwje=? where ghs_sn=?") << due << partner).run();
  (sql("update jxc_jhsp set jh_rksl=jh_sl where j_sn=?") << number).run();
  (sql("update jxc_jhsp set id2=id,jh_qxsl=0 where j_sn=?") << number).run();
  (sql("insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,gl_je,"
       "gl_tax,gl_taxdj,gl_taxje,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,"
       "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) "
       "select 'cj',a.j_sn,a.j_jhrq,b.g_sn,c.g_name,b.jh_dj,0,0,b.jh_sl,b.jh_dzl,b.jh_zje,b.jh_je,b.jh_tax,b.jh_taxdj,"
       "b.jh_taxje,0,0,'admin',?,0,0,c.g_pjjj,0,0,a.j_note,b.jh_bz,d.u_name,b.a_name,a.ck_sn,e.ck_name,a.ghs_sn,"
       "f.ghs_name,b.jh_sl,b.id2,a.j_sn2,'',0 from jxc_jhd a join jxc_jhsp b on a.j_sn=b.j_sn join jxc_goods c on "
       "b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn join jxc_ckxx e on a.ck_sn=e.ck_sn join jxc_ghsxx f on "
       "a.ghs_sn=f.ghs_sn where a.j_sn=? order by b.id")
   << today << number)
      .run();
  struct Effect {
    sqlite3_int64 id;
    std::string goods;
    double quantity, price;
  };
  std::vector<Effect> effects;
  Bare& rows = sql("select a.id,a.g_sn,a.gl_sl,a.gl_dj from jxc_goodslist a join jxc_jhsp b on a.id2=b.id2 and "
                   "a.g_sn=b.g_sn and a.gl_djh=b.j_sn where a.g_sn<>'00000000' and a.gl_djh=? order by a.id")
               << number;
  while (rows.step())
    effects.push_back({rows.integer(0), rows.text(1), rows.number(2), rows.number(3)});
  rows.reset();
  for (const Effect& effect : effects)
    goods(effect.id, effect.goods, effect.quantity, effect.price, partner);
  (sql("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)") << today << number).run();
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')"));
  one(sql("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)")
      << today.substr(0, 7));
  const double stock = one(sql("select sum(kc_sl),sum(kc_sl*kc_cbj) from jxc_kcsp where ck_sn='100001'"));
  (sql("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn='100001'") << stock << stock << today.substr(0, 7))
      .run();
  sql("update jxc_user set u_cgpl=u_cgpl+1 where u_sn='100001'").run();
  sql("commit").run();
}

void auditBare(benchmark::State& state) {
  Shop shop;
  const std::vector<QString> numbers = waitingReceipts();
  BareAudit audit(shop.native());
  const std::string today = clock::today().toStdString();
  std::size_t next = 0;
  for (auto _ : state)
    audit.run(numbers[next++].toStdString(), today);
}
BENCHMARK(auditBare)->Name("audit of 50 lines, bare interface")->Iterations(receipts)->Unit(benchmark::kMillisecond);

}  // namespace replay_bench
}  // namespace jxc
