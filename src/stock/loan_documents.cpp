// 客户借货、还货过账: what loan and loan return do beyond stock, as values of stock/internal_documents.h.
#include "core/log.h"
#include "core/posting.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/document.h"
#include "stock/internal_documents.h"
#include "stock/ledger_rows.h"
#include "stock/loans.h"

#include <algorithm>

namespace jxc::internal_documents {
namespace loan_documents_detail {

/// Price and amount are cost: a loan is no sale.
std::string insertStatement(const DocumentFamily& family, std::string_view flag, std::string_view mark,
                            std::string_view quantity, std::string_view ownQuantity) {
  return ledgerInsert({.family = &family,
                       .partner = &ledgerCustomers,
                       .different = {{"gl_flag", flag},
                                     {"gl_fdmc", mark},
                                     {"gl_dj", "b.jh_dj"},
                                     {"gl_pjjj", "b.jh_dj"},
                                     {"gl_sl", quantity},
                                     {"gl_zje", "b.jh_zje"},
                                     {"gl_sysl", ownQuantity},
                                     {"id2", "b.id2"}}});
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
  updateRow("jxc_khjhsp", loanLine,
            {{field, std::max(0.0, line.number(0, 0) + sign * row.number("gl_sl"))},
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
    postRow("jxc_yyfy", {{"gl_djh", head.number},
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

/// What the customer kept was a return and a sale at one stroke: neither is left without the other.
void removeSale(const QString& number) {
  if (const QString sale = loans::saleOf(number); !sale.isEmpty()) removeWaiting(families::sale, sale);
}
QString alsoRemovesSale(const QString& number) {
  const QString sale = loans::saleOf(number);
  return sale.isEmpty() ? QString() : u"\r\n\r\n借转销售产生的待审核销售单 "_qs + sale + u" 将一并删除。"_qs;
}

}  // namespace loan_documents_detail

Rules loanRules() {
  return {.family = &families::loan,
          .rowsALine = 1,
          .inserts = {loan_documents_detail::insertStatement(families::loan, "'jh'", "'jh'", "b.jh_sl", "b.jh_sl")},
          .markLines = "update jxc_khjhsp set id2=id where gl_djh=?",
          .outwards = true,
          .master = Master::Stock,
          .bindsChecker = true,
          .heldBy = loans::returnedBy};
}

Rules loanReturnRules() {
  using namespace loan_documents_detail;
  return {.family = &families::loanReturn,
          .rowsALine = 1,
          .inserts = {insertStatement(families::loanReturn, "'hh'", "iif(b.jh_flag='销售','xs','hh')",
                                      "iif(b.jh_flag='销售',b.jh_xssl,b.jh_hhsl)",
                                      "iif(b.jh_flag='销售',b.jh_xssl,b.jh_zzj)")},
          .master = Master::Stock,
          .bindsChecker = true,
          .bringsIn = true,
          .rowPosted = closeLoanLine,
          .posted = bookRent,
          .rowCancelled = reopenLoanLine,
          .cancelled = removeSale,
          .heldBy = loans::soldBy,
          .cancelsAlso = alsoRemovesSale,
          .cancelDeletes = true};
}

}  // namespace jxc::internal_documents
