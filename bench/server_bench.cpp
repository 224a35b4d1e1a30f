// Audit of receipts and sales on a PostgreSQL server beside the same reads and writes by hand over libpq, with and
// without a longer way to the server.
#include "audit_words.h"
#include "filled_shop.h"
#include "server_shop.h"

namespace jxc {
namespace server_bench {

using bench::Pipeline;
using bench::Rows;

/// What audit of a receipt or of a sale reads and writes, as BareAudit of posting_bench.cpp does on SQLite.
class HandAudit {
 public:
  HandAudit(Pipeline& server, bool sale)
      : server_(server), sale_(sale), words_(sale ? bench::saleWords : bench::receiptWords) {}
  void run(const std::string& number, const std::string& date, const std::string& today);

 private:
  struct Goods {
    std::string id, sn;
    double quantity, price;
  };
  double carry(double balance, const Rows& lines, const char* update);
  void postStock(const std::vector<Goods>& all, const std::string& date);

  Pipeline& server_;
  const bool sale_;
  const bench::Words& words_;
};

double HandAudit::carry(double balance, const Rows& lines, const char* update) {
  for (int row = 0; row < lines.count(); ++row) {
    balance += lines.number(row, 2);
    if (std::fabs(balance - lines.number(row, 1)) > 5e-7)
      server_.send(update, balance, std::string(lines.text(row, 0)));
  }
  return balance;
}

/// No goods stands twice on these documents, so that each step is taken for all of them at once.
void HandAudit::postStock(const std::vector<Goods>& all, const std::string& date) {
  for (const Goods& goods : all) {
    if (sale_)
      server_.send(
          "update jxc_kcsp set kc_xssl=kc_xssl+?,kc_sl=kc_sl-?,kc_zsl=kc_zsl-? where ck_sn='100001' and g_sn=?",
          goods.quantity, goods.quantity, goods.quantity, goods.sn);
    else
      server_.send("update jxc_kcsp set kc_sl=kc_sl+?,kc_zsl=kc_zsl+? where ck_sn='100001' and g_sn=?", goods.quantity,
                   goods.quantity, goods.sn);
    server_.send(
        "select gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn=? and ck_sn='100001' and gl_kdrq<? "
        "order by gl_kdrq desc,id desc limit 1",
        goods.sn, date);
    server_.send(
        "select id,gl_flag,gl_sl,gl_je,gl_dj,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje from jxc_goodslist "
        "where g_sn=? and ck_sn='100001' and gl_kdrq>=? order by gl_kdrq,id",
        goods.sn, date);
  }
  const std::vector<Rows> found = server_.fetch();
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (found[3 * i].changed() != 1) throw std::runtime_error("every goods has a balance here");
    const double average = bench::replay(server_, found[3 * i + 1], found[3 * i + 2]);
    if (!sale_) server_.send("update jxc_kcsp set kc_cbj=? where ck_sn='100001' and g_sn=?", average, all[i].sn);
    if (sale_)
      server_.send("update jxc_goods set g_kc=g_kc-?,g_xspl=g_xspl+1 where g_sn=?", all[i].quantity, all[i].sn);
    else
      server_.send(
          "update jxc_goods set g_kc=g_kc+?,g_cgpl=g_cgpl+1,g_scjj=?,ghs_sn='100001',g_pjjj=(select "
          "round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2) from jxc_kcsp where g_sn=?) where g_sn=?",
          all[i].quantity, all[i].price, all[i].sn, all[i].sn);
  }
}

void HandAudit::run(const std::string& number, const std::string& date, const std::string& today) {
  const std::string partner = "100001", account = "现金", month = date.substr(0, 7);
  bench::beginAudit(server_, words_, number);

  server_.send(words_.audited, today, number).send(words_.strays, number).send(words_.due, number);
  server_.send(words_.cash, date, number, partner, account);
  server_.send(
      "select xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? order by xj_rq desc,id desc limit 1",
      account, date);
  server_.send("select id,xj_ljje,xj_je from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? order by xj_rq,id",
               account, date);
  const std::vector<Rows> cash = server_.fetch();
  if (cash[2].count() == 0) throw std::runtime_error("no head");
  const double due = cash[2].first();
  carry(cash[4].first(), cash[5], "update jxc_xjyh set xj_ljje=? where id=?");

  server_.send(words_.partner, partner, account, due, date, number);
  const std::size_t owed = server_.waiting();
  server_.send(words_.carried, partner, date).send(words_.running, partner, date);
  const std::vector<Rows> partners = server_.fetch();
  const double balance = carry(partners[owed].first(), partners[owed + 1], "update jxc_ysyfk set k_ljje=? where id=?");
  server_.send(words_.owed, balance, partner).send(words_.moved, number).send(words_.marked, number);
  server_.send(words_.ledger, today, number).send(words_.effects, number);
  const std::vector<Rows> stock = server_.fetch();
  std::vector<Goods> all;
  for (int row = 0; row < stock.back().count(); ++row)
    all.push_back({stock.back().text(row, 0), stock.back().text(row, 1), stock.back().number(row, 2),
                   stock.back().number(row, 3)});
  postStock(all, date);

  server_.send("insert into jxc_log (log_time,a_name,log_note) values (?,'admin',?)", today, number);
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000')");
  server_.send("select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq=?)", month);
  server_.send("select sum(kc_sl),sum(kc_sl*kc_cbj) from jxc_kcsp where ck_sn='100001'");
  const std::vector<Rows> sums = server_.fetch();
  server_.send("update jxc_kcjs set js_sl=?,js_zje=? where js_rq=? and ck_sn='100001'", sums.back().number(0, 0),
               sums.back().number(0, 1), month);
  server_.send(words_.employee).send("commit");
  server_.fetch();
}

const bool registered = [] {
  const auto handOf = [](bool sale) {
    return [sale](Pipeline& server, const std::string& number, const std::string& date, const std::string& today) {
      HandAudit(server, sale).run(number, date, today);
    };
  };
  const bool receipts =
      bench::registerOnServer({.what = "receipt of 50 lines",
                               .family = families::purchaseReceipt,
                               .make = [](const QString& date, int lines,
                                          int seed) { return bench::waitingDocument(false, date, lines, seed); },
                               .byHand = handOf(false)});
  return bench::registerOnServer({.what = "sale of 50 lines",
                                  .family = families::sale,
                                  .make = [](const QString& date, int lines,
                                             int seed) { return bench::waitingDocument(true, date, lines, seed); },
                                  .byHand = handOf(true)}) &&
         receipts;
}();

}  // namespace server_bench
}  // namespace jxc
