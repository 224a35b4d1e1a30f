// Audit of a transfer and of a loss on a PostgreSQL server beside the same reads and writes by hand over libpq.
#include "filled_shop.h"
#include "house_words.h"
#include "server_shop.h"

namespace jxc {
namespace server_house_bench {

using bench::HouseWords;
using bench::Pipeline;
using bench::Rows;

/// What the audit reads and writes, as BareAudit of house_bench.cpp does on SQLite. No goods stands twice on these
/// documents, so that each step is taken for all of them at once.
class HandAudit {
 public:
  HandAudit(Pipeline& server, const HouseWords& words) : server_(server), words_(words) {}
  void run(const std::string& number, const std::string& date, const std::string& today);

 private:
  struct Effect {
    std::string id, goods, warehouse;
    double quantity, price, amount;
  };
  std::vector<Effect> posted(const std::string& number, const std::string& today);
  double postStock(const std::vector<Effect>& all, const std::string& date);

  Pipeline& server_;
  const HouseWords& words_;
};

std::vector<HandAudit::Effect> HandAudit::posted(const std::string& number, const std::string& today) {
  server_.send(words_.audited, today, number).send(words_.strays, number);
  for (const char* insert : words_.ledger)
    if (insert) server_.send(insert, today, number);
  server_.send("select id,g_sn,ck_sn,gl_sl,gl_dj,gl_zje from jxc_goodslist where gl_djh=? order by id", number);
  const std::vector<Rows> answers = server_.fetch();
  const Rows& rows = answers.back();
  std::vector<Effect> all;
  for (int row = 0; row < rows.count(); ++row)
    all.push_back({rows.text(row, 0), rows.text(row, 1), rows.text(row, 2), rows.number(row, 3), rows.number(row, 4),
                   rows.number(row, 5)});
  return all;
}

/// The value of the document, in yuan.
double HandAudit::postStock(const std::vector<Effect>& all, const std::string& date) {
  for (const Effect& each : all) {
    server_.send("update jxc_kcsp set kc_sl=kc_sl+?,kc_zsl=kc_zsl+? where ck_sn=? and g_sn=?", each.quantity,
                 each.quantity, each.warehouse, each.goods);
    server_.send(
        "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn=? and gl_kdrq<? "
        "order by gl_kdrq desc,id desc limit 1",
        each.goods, each.warehouse, date);
    server_.send(
        "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
        "where g_sn=? and ck_sn=? and gl_kdrq>=? order by gl_kdrq,id",
        each.goods, each.warehouse, date);
  }
  const std::vector<Rows> found = server_.fetch();
  double value = 0;
  for (std::size_t i = 0; i < all.size(); ++i) {
    const Effect& each = all[i];
    if (found[3 * i].changed() == 0)
      server_.send("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,0,?,?,?)", each.quantity,
                   each.price, each.goods, each.warehouse, each.quantity);
    // Goods that the second warehouse meets for the first time, before anything is measured.
    const bool isFirst = found[3 * i + 1].count() == 0;
    const double average = isFirst ? each.price : bench::replay(server_, found[3 * i + 1], found[3 * i + 2]);
    if (words_.master) server_.send("update jxc_goods set g_kc=g_kc+? where g_sn=?", each.quantity, each.goods);
    if (words_.cost)
      server_.send("update jxc_kcsp set kc_cbj=? where ck_sn=? and g_sn=?", average, each.warehouse, each.goods);
    value += each.amount;
  }
  return value;
}

void HandAudit::run(const std::string& number, const std::string& date, const std::string& today) {
  const std::string month = date.substr(0, 7);
  bench::beginAudit(server_, words_, number);

  const double value = postStock(posted(number, today), date);
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')");
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)", month);
  for (const std::string warehouse : {"100001", "100002"})
    if (words_.ledger[1] || warehouse == "100001")
      server_.send("update jxc_kcjs set js_sl=js_sl+?,js_zje=js_zje+? where js_rq=? and ck_sn=?", value, value, month,
                   warehouse);
  server_.send("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)", today, number);
  if (words_.expense)
    server_.send(
        "insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,fy_flag,de_sn,fy_kmmc,fy_chk) values "
        "(?,?,'费用',?,'100001',?,'admin','费用','1','100001','现金','1')",
        number, date, value, words_.note + number);
  server_.send("commit").fetch();
}

const bool registered = [] {
  const auto handOf = [](const HouseWords& words) {
    return [&words](Pipeline& server, const std::string& number, const std::string& date, const std::string& today) {
      HandAudit(server, words).run(number, date, today);
    };
  };
  const bool transfers = bench::registerOnServer({.what = "transfer of 50 lines",
                                                  .family = families::transfer,
                                                  .make = bench::waitingTransfer,
                                                  .byHand = handOf(bench::transferWords)});
  return bench::registerOnServer({.what = "loss of 50 lines",
                                  .family = families::loss,
                                  .make = bench::waitingLoss,
                                  .byHand = handOf(bench::lossWords)}) &&
         transfers;
}();

}  // namespace server_house_bench
}  // namespace jxc
