// 客户借货、还货过账: what loan and loan return do beyond stock, as values of stock/internal_documents.h.
#include "core/log.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/internal_documents.h"

#include <algorithm>

namespace jxc::internal_documents {
namespace loan_documents_detail {

/// Ledger rows over lines, head and names. Price and amount are cost: a loan is no sale.
std::string insertStatement(std::string_view flag, std::string_view mark, std::string_view quantity,
                            std::string_view ownQuantity) {
  std::string sql =
      "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,"
      "gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,"
      "gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,"
      "gl_fdmc,gl_dqkc) ";
  for (const std::string_view part :
       {std::string_view("select '"), flag, std::string_view("',a.gl_djh,a.jh_rq,c.g_sn,c.g_name,c.g_jm,c.dw_name,"),
        std::string_view("b.jh_dj,0,0,"), quantity,
        std::string_view(",1,b.jh_zje,b.jh_zje,0,b.jh_dj,0,0,0,0,?,?,0,0,b.jh_dj,0,0,'','',d.u_name,b.a_name,e.ck_sn,"),
        std::string_view("e.ck_name,a.kh_sn,f.kh_name,c.gg_name,c.color_name,"), ownQuantity,
        std::string_view(",b.id2,'',"), mark,
        std::string_view(",0 from jxc_khjh a,jxc_khjhsp b,jxc_goods c,jxc_user d,jxc_ckxx e,jxc_khxx f "),
        std::string_view("where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.u_sn=d.u_sn and a.ck_sn=e.ck_sn and "),
        std::string_view("a.kh_sn=f.kh_sn and a.gl_djh=? order by b.id")})
    sql += part;
  return sql;
}

bool isSold(const Row& row) {
  return row.text("gl_fdmc") == u"xs";
}

/// What a ledger row of a return uses up of the deposit of its loan line. The row's own figure is the rent when goods
/// came back, and the quantity when they were sold.
double rentOf(const Row& row) {
  if (!isSold(row)) return row.number("gl_sysl");
  return lookupNumber("select sum(jh_zzj) from jxc_khjhsp where gl_djh=? and id2=? and g_sn=?", row.text("gl_djh"),
                      row.integer("id2"), row.text("g_sn"));
}

/// Quantity back (`jh_hhsl`) or sold (`jh_xssl`), and deposit used up, of the loan line of a ledger row.
void changeLoanLine(const Row& row, int sign) {
  const bool sold = isSold(row);
  const char* const field = sold ? "jh_xssl" : "jh_hhsl";
  const std::int64_t loanLine = row.integer("id2");
  const RowSet line = openSelect(compose("select {},jh_yj2 from jxc_khjhsp where id=?", {field}), loanLine);
  if (line.isEmpty()) return;
  // Goods that the customer keeps are all that was open: the quantity is assigned, not added.
  const double before = sold && sign > 0 ? 0 : line.number(0, 0);
  updateRow("jxc_khjhsp", loanLine,
            {{field, std::max(0.0, before + sign * row.number("gl_sl"))},
             {"jh_yj2", std::max(0.0, line.number(0, 1) + sign * rentOf(row))}});
}

void closeLoanLine(const Row& row) {
  changeLoanLine(row, 1);
}
void reopenLoanLine(const Row& row) {
  changeLoanLine(row, -1);
}

/// The rent is the only money that a return books, as an income of the account that takes it.
void bookRent(const Head& head, std::int64_t) {
  for (const Row account : openSelect("select sum(jh_zzj) as zzj,jh_kmmc from jxc_khjhsp where jh_zzj<>0 and gl_djh=? "
                                      "group by jh_kmmc order by jh_kmmc",
                                      head.number)) {
    if (account.number("zzj") == 0) continue;
    insertRow("jxc_yyfy", {{"gl_djh", head.number},
                           {"fy_rq", head.date},
                           {"fy_lx", u"收入"_qs},
                           {"fy_je", account.number("zzj")},
                           {"u_sn", head.salesperson},
                           {"fy_note", u"还货单"_qs + head.number + u"产生的借货收入"_qs},
                           {"a_name", session().a_name},
                           {"fy_sc", u"收入"_qs},
                           {"fy_flag", u"2"_qs},
                           {"de_sn", u"100001"_qs},
                           {"fy_kmmc", account.text("jh_kmmc")},
                           {"fy_chk", u"1"_qs}});
  }
  writeLog(words(families::loanReturn.savedLog) + head.number + u"，共1种商品"_qs);  // whatever the number of lines
}

}  // namespace loan_documents_detail

Rules loanRules() {
  return {.family = &families::loan,
          .rowsALine = 1,
          .inserts = {loan_documents_detail::insertStatement("jh", "'jh'", "b.jh_sl", "b.jh_sl")},
          .markLines = "update jxc_khjhsp set id2=id where gl_djh=?",
          .outwards = true,
          .master = Master::Stock,
          .bindsChecker = true};
}

Rules loanReturnRules() {
  using namespace loan_documents_detail;
  return {
      .family = &families::loanReturn,
      .rowsALine = 1,
      .inserts = {insertStatement("hh", "iif(b.jh_flag='销售','xs','hh')", "iif(b.jh_flag='销售',b.jh_xssl,b.jh_hhsl)",
                                  "iif(b.jh_flag='销售',b.jh_xssl,b.jh_zzj)")},
      .master = Master::Stock,
      .bindsChecker = true,
      .rowPosted = closeLoanLine,
      .posted = bookRent,
      .rowCancelled = reopenLoanLine,
      .cancelDeletes = true};
}

}  // namespace jxc::internal_documents
