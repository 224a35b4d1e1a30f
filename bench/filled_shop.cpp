#include "filled_shop.h"

#include "house_words.h"
#include "stock/document.h"

#include <QDate>

#include <cstdlib>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <utility>

namespace jxc::bench {
namespace filled_shop_detail {

/// Two years of a shop: a thousand goods, of each a receipt of twelve pieces between four sales of two, documents of
/// fifty lines, each with its cash and partner line.
void fillBooks(sqlite3* db, int rows) {
  const auto run = [db](const char* text) { Bare(db, text).run(); };
  run("begin immediate");
  Bare goods(db,
             "insert into jxc_goods "
             "(g_sn,g_name,g_jm,dw_name,g_pjjj,g_scjj,g_jj,g_sj,g_lsj,g_kc,g_cgpl,g_xspl,g_jy,g_gdcbj,gc_sn)"
             " values (?,'镜架','JJ','付',10,10,10,20,20,0,0,0,0,0,'1000')");
  Bare stock(db, "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj,kc_xssl) values (?,'100001',0,0,10,0)");
  for (int i = 0; i < goodsCount; ++i) {
    (goods << goodsCode(i)).run();
    (stock << goodsCode(i)).run();
  }
  Bare ledger(
      db,
      "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,gl_je,"
      "gl_tax,gl_taxdj,gl_taxje,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,"
      "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) values "
      "(?,?,?,?,'镜架',10,0,0,?,1,?,?,0,10,0,0,0,'admin',?,?,?,10,?,?,'','','默认员工','admin','100001','主仓库',"
      "'100001','普通供货商',0,0,'','',0)");
  Bare cash(
      db,
      "insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,"
      "xj_ljje) values (?,?,'采购进货',-10,'默认员工','普通供货商','100001','主仓库','现金','','admin','1',?)");
  Bare partner(
      db,
      "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,"
      "k_note,k_flag,k_rq,gl_djh) values ('100001','admin','100001','现金',0,0,0,?,10,'ghs','CJ','采购进货单','',1,"
      "?,?)");
  std::vector<double> stocks(goodsCount);
  const QDate first = QDate::currentDate().addDays(-730);
  std::string day;
  for (int i = 0; i < rows; ++i) {
    const int which = i % goodsCount;
    const bool in = i / goodsCount % 5 == 0;
    const double quantity = in ? 12 : 2;
    const int document = i / linesOfDocument;
    const std::string number = (in ? "CJ0" : "XS0") + std::to_string(10000000 + document);
    if (i % linesOfDocument == 0) {
      day = first.addDays(static_cast<qint64>(i) * 730 / rows).toString(Qt::ISODate).toStdString();
      (cash << day << number << -10.0 * (document + 1)).run();
      (partner << 10.0 * (document + 1) << day << number).run();
    }
    double& q = stocks[static_cast<std::size_t>(which)];
    const double before = q;
    q += in ? quantity : -quantity;
    (ledger << std::string(in ? "cj" : "xs") << number << day << goodsCode(which) << quantity << quantity * 10
            << quantity * 10 << day << before << before * 10 << q << q * 10)
        .run();
  }
  Bare balance(db, "update jxc_kcsp set kc_sl=?,kc_zsl=? where g_sn=?");
  Bare master(db, "update jxc_goods set g_kc=? where g_sn=?");
  for (int i = 0; i < goodsCount; ++i) {
    const double q = stocks[static_cast<std::size_t>(i)];
    (balance << q << q << goodsCode(i)).run();
    (master << q << goodsCode(i)).run();
  }
  // No statistics for the planner: an account set has none, and such that were made before the first document lead it
  // to walk over all receipts of a supplier for each line of one.
  run("commit");
}

}  // namespace filled_shop_detail

std::string goodsCode(int index) {
  return std::to_string(1000000 + index);
}

namespace filled_shop_detail {

Shop& shopMadeBy(Fill fill, int lines) {
  dataModule();  // outlives the shop, which closes its file there
  static std::optional<Shop> shop;
  static std::pair<Fill, int> made;
  if (made != std::pair{fill, lines} || !dataModule().isAccountOpen() || &accountDb() != shop->database()) {
    shop.reset();
    shop.emplace();
    fill(shop->native(), lines);
    made = {fill, lines};
  }
  return *shop;
}

}  // namespace filled_shop_detail

Shop& shopWith(int rows) {
  return filled_shop_detail::shopMadeBy(filled_shop_detail::fillBooks, rows);
}

Shop& shopOfOneGoods(Fill fill, int lines) {
  Shop& shop = filled_shop_detail::shopMadeBy(fill, lines);
  if (openSelect("select id from jxc_goods where g_sn='1000000'").isEmpty())
    execSql(
        "insert into jxc_goods (g_sn,g_name,g_jm,dw_name,g_jy,gg_name,color_name) values "
        "('1000000','镜架','JJ','付',0,'','')");
  return shop;
}

QString waitingDocument(bool sale, const QString& date, int lines, int seed) {
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

const std::vector<int>& ledgerSizes() {
  static const std::vector<int> sizes = [] {
    const char* wanted = std::getenv("JXC_BENCH_ROWS");
    std::istringstream words(wanted && *wanted ? wanted : "10000,1000000");
    std::vector<int> list;
    for (std::string word; std::getline(words, word, ',');)
      list.push_back(std::stoi(word));
    return list;
  }();
  return sizes;
}

std::string named(const char* what, int rows, bool byHand) {
  return std::string(what) + " [" + std::to_string(rows) + " rows], " + (byHand ? "by hand" : "statements");
}

// ---- documents within the house --------------------------------------------------------------------------------

namespace filled_shop_detail {

/// Lines and their head; `line` and `head` write what the kind has besides.
QString waiting(const DocumentFamily& family, const QString& date, int lines, int seed,
                std::initializer_list<Field> line, std::initializer_list<Field> head) {
  Transaction transaction(accountDb());
  const QString number = newDocumentNumber(family, date);
  for (int i = 0; i < lines; ++i) {
    const QString goods = QString::fromStdString(goodsCode((seed * 7 + i * 13) % goodsCount));
    updateRow(family.lines, insertRow(family.lines, {{family.number, number}, {"g_sn", goods}, {"a_name", u"admin"}}),
              line);
  }
  const std::int64_t id = insertRow(
      family.head,
      {{family.number, number}, {family.date, date}, {family.status, 0}, {"u_sn", u"100001"}, {"a_name", u"admin"}});
  updateRow(family.head, id, head);
  transaction.commit();
  return number;
}

}  // namespace filled_shop_detail

QString waitingTransfer(const QString& date, int lines, int seed) {
  return filled_shop_detail::waiting(families::transfer, date, lines, seed,
                                     {{"db_sl", 1.0}, {"db_dj", 10.0}, {"db_sj", 20.0}, {"db_zje", 10.0}},
                                     {{"ck_out", u"100001"}, {"ck_in", u"100002"}, {"db_note", u""}});
}

QString waitingLoss(const QString& date, int lines, int seed) {
  return filled_shop_detail::waiting(families::loss, date, lines, seed,
                                     {{"bs_sl", 1.0}, {"bs_dj", 10.0}, {"bs_zje", 10.0}, {"bs_note", u""}},
                                     {{"ck_sn", u"100001"}, {"bs_note", u""}});
}

// ---- work ---------------------------------------------------------------------------------------------------------

namespace filled_shop_detail {

double pagesSoFar(int which) {
  int now = 0, most = 0;
  sqlite3_db_status(sqlite::asSqlite(accountDb()).native(), which, &now, &most, 0);
  return now;
}

double stepsSoFar() {
  double steps = 0;
  sqlite3* const db = sqlite::asSqlite(accountDb()).native();
  for (sqlite3_stmt* each = sqlite3_next_stmt(db, nullptr); each; each = sqlite3_next_stmt(db, each))
    steps += sqlite3_stmt_status(each, SQLITE_STMTSTATUS_VM_STEP, 0);
  return steps;
}

}  // namespace filled_shop_detail

WorkSoFar::WorkSoFar()
    : steps_(filled_shop_detail::stepsSoFar()),
      missed_(filled_shop_detail::pagesSoFar(SQLITE_DBSTATUS_CACHE_MISS)),
      written_(filled_shop_detail::pagesSoFar(SQLITE_DBSTATUS_CACHE_WRITE)) {}

void WorkSoFar::tellEach(benchmark::State& state) const {
  const auto each = static_cast<double>(state.iterations());
  const WorkSoFar now;
  state.counters["steps"] = (now.steps_ - steps_) / each;
  state.counters["missed"] = (now.missed_ - missed_) / each;
  state.counters["written"] = (now.written_ - written_) / each;
}

void measure(benchmark::State& state, const Audits& audits) {
  std::vector<QString> numbers;
  for (benchmark::IterationCount i = 0; i < state.max_iterations + audits.warmUps; ++i)
    numbers.push_back(audits.make());
  YesPrompt prompt;
  std::size_t next = 0;
  const auto audit = [&] {
    const QString& number = numbers[next++];
    if (audits.byHand)
      audits.byHand(number.toStdString());
    else if (checkDj(audits.family, number, prompt) != AuditOutcome::Audited)
      throw std::runtime_error("not audited");
  };
  for (int i = 0; i < audits.warmUps; ++i)
    audit();
  const WorkSoFar before;
  for (auto _ : state)
    audit();
  before.tellEach(state);
}

bool registerPairs(std::span<const Pair> pairs, int most) {
  for (const int rows : ledgerSizes()) {
    if (rows > most) continue;
    for (const Pair& pair : pairs)
      for (const bool byHand : {false, true})
        benchmark::RegisterBenchmark(named(pair.name, rows, byHand).c_str(), [pair, byHand,
                                                                              rows](benchmark::State& state) {
          (byHand ? pair.byHand : pair.statements)(state, rows);
        })->Unit(benchmark::kMillisecond);
  }
  return true;
}

}  // namespace jxc::bench
