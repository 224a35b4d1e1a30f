// 账目核对: running balances of cash, partners and invoices, and what they hold for each document.
#include "accounts/expenses.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "maintenance/proof_books.h"

#include <map>
#include <set>
#include <vector>

namespace jxc::proof {
namespace prove_money_detail {

/// Documents whose effects in the money ledgers the document checks look at.
bool isTrading(std::string_view number) {
  const DocumentFamily* const family = findFamily(number);
  return family && family->hasMoney();
}

Place balancePlace(const QString& whose, const Row& row, std::string_view stored, double due) {
  return {whose + u" 单据 "_qs + row.text("gl_djh") + u" 日期 "_qs + row.text("rq") + u" 第 "_qs + row.text("id") +
              u" 号"_qs,
          row.text(stored), numberText(due)};
}

// ---- partners ----------------------------------------------------------------------------------------------------

using Last = std::map<QString, double>;

Last provePartnerLines(Books& books) {
  const RowSet lines = books.select(
      "select id,k_type,k_ghskh,k_rq as rq,k_qcje,k_yfje,k_sfje,k_ljje,gl_djh,k_djlx from jxc_ysyfk "
      "order by k_ghskh,k_type,k_rq,id");
  Last last;
  QString whose;
  double balance = 0;
  enum { Id, Type, Partner, Date, Opening, Due, Paid, Running, Number, Kind_ };
  for (int row = 0; row < lines.rowCount(); ++row) {
    const QString side = lines.text(row, Type) + lines.text(row, Partner);
    if (side != whose) balance = 0;
    whose = side;
    balance += lines.number(row, Opening) + lines.number(row, Due) - lines.number(row, Paid);
    if (!sameAmount(lines.number(row, Running), balance))
      books.findings.add(Kind::PartnerBalance, [&] {
        const QString name = lines.utf8(row, Type) == "kh" ? u"客户 "_qs : u"供货商 "_qs;
        return balancePlace(name + lines.text(row, Partner), lines[row], "k_ljje", balance);
      });
    balance = lines.number(row, Running);
    last[whose] = balance;
    const std::string_view number = lines.utf8(row, Number);
    if (!isTrading(number) || !isTrading(lines.utf8(row, Kind_))) continue;
    Document& document = books.document(number);
    ++document.partnerRows;
    document.partnerDue += lines.number(row, Due);
    document.partnerPaid += lines.number(row, Paid);
  }
  return last;
}

void proveMasters(Books& books, const Last& last, const SqlText& masters, const QString& type, const QString& name) {
  const RowSet rows = books.select(masters);
  for (int row = 0; row < rows.rowCount(); ++row) {
    const auto found = last.find(type + rows.text(row, 0));
    const double due = found == last.end() ? 0 : found->second;
    if (!sameAmount(rows.number(row, 1), due))
      books.findings.add(Kind::PartnerMaster, [&] {
        return Place{name + rows.text(row, 0), numberText(rows.number(row, 1)), numberText(due)};
      });
  }
}

// ---- cash --------------------------------------------------------------------------------------------------------

void proveCash(Books& books) {
  const RowSet lines = books.select(
      "select id,xj_kmmc,xj_rq as rq,xj_je,xj_ljje,gl_djh,xj_dlx,xj_chk from jxc_xjyh order by xj_kmmc,xj_rq,id");
  enum { Id, Account, Date, Amount, Running, Number, What, Counted };
  QString account;
  double balance = 0;
  std::vector<double> takenOut;  // by cancels of transfers, between the line before and this one
  for (int row = 0; row < lines.rowCount(); ++row) {
    if (lines.text(row, Account) != account) {
      account = lines.text(row, Account);
      balance = 0;
      takenOut.clear();
    }
    if (lines.utf8(row, Counted) != "1") {
      // A transfer that was audited once has kept its running balance; one that never was has none.
      if (lines.utf8(row, Number).starts_with("XZ") && lines.number(row, Running) != 0)
        takenOut.push_back(lines.number(row, Amount));
      continue;
    }
    balance += lines.number(row, Amount);
    const double stored = lines.number(row, Running);
    if (!sameAmount(stored, balance)) {
      const bool known = addsUp(stored - balance, takenOut);
      books.findings.add(known ? Kind::CashTransferCancelled : Kind::CashBalance,
                         [&] { return balancePlace(u"账户 "_qs + account, lines[row], "xj_ljje", balance); });
    }
    balance = stored;
    takenOut.clear();
    const std::string_view number = lines.utf8(row, Number);
    if (!isTrading(number) || lines.utf8(row, What) == "费用付款") continue;
    Document& document = books.document(number);
    ++document.cashRows;
    document.cash += lines.number(row, Amount);
  }
}

// ---- invoices ----------------------------------------------------------------------------------------------------

/// Whether the document that a line came from has gone with a closing, or stands there with all rows carried on. A
/// number tells the day on which it was given.
bool isOfClosedDays(const Books& books, const Document& document, const std::string& number) {
  if (books.closedUntil.empty() || document.closed || document.heads > 0) return document.closed;
  const std::string until = books.closedUntil;
  return number.substr(2, 6) <= until.substr(2, 2) + until.substr(5, 2) + until.substr(8, 2);
}

/// Lines of documents: one for each, as long as it is audited, whether it counts or was excluded.
void proveInvoiceOfDocument(Books& books, const Row& row, const std::string& number) {
  // A closing leaves what was excluded, as it waits; audited again later, it counts from that day on.
  if (!row.flag("fp_check") && row.text("rq").toStdString() <= books.closedUntil) return;
  Document& document = books.document(number);
  if (isOfClosedDays(books, document, number)) return;
  ++document.invoiceRows;
  document.invoiceDue += row.number("fp_yfje");
  if (document.audited) return;
  books.findings.add(Kind::InvoiceOrphan, [&] {
    return Place{u"单据 "_qs + row.text("gl_djh"), row.text("fp_yfje"), {}};
  });
}

/// Invoices by hand: a number is one invoice of its own side, and lowers what is still to invoice, no more.
bool isInvoiceByHand(const Row& row, std::set<QString>& seen) {
  const QString number = row.text("gl_djh");
  const bool customer = row.text("fp_type") == u"kh";
  return number.startsWith(customer ? u"XP" : u"CP") && row.text("fp_djlx") == number.left(2) &&
         row.number("fp_yfje") == 0 && seen.insert(number).second;
}

void proveInvoices(Books& books) {
  const RowSet lines = books.select(
      "select id,fp_type,fp_ghskh,fp_rq as rq,fp_qcje,fp_yfje,fp_kpje,fp_ljje,gl_djh,fp_djlx,fp_check from jxc_fpdjb "
      "order by fp_ghskh,fp_type,fp_rq,id");
  QString whose;
  double balance = 0;
  std::set<QString> byHand;
  for (const Row row : lines) {
    const QString side = row.text("fp_type") + row.text("fp_ghskh");
    if (side != whose) balance = 0;
    whose = side;
    const auto name = [&] { return row.text("fp_type") == u"kh" ? u"客户 "_qs : u"供货商 "_qs; };
    if (row.flag("fp_check")) {
      balance += row.number("fp_qcje") + row.number("fp_yfje") - row.number("fp_kpje");
      if (!sameAmount(row.number("fp_ljje"), balance))
        books.findings.add(Kind::InvoiceBalance,
                           [&] { return balancePlace(name() + row.text("fp_ghskh"), row, "fp_ljje", balance); });
      balance = row.number("fp_ljje");
    }
    const std::string number = row.text("gl_djh").toStdString();
    if (isTrading(number)) {
      proveInvoiceOfDocument(books, row, number);
    } else if (!number.empty() && !isInvoiceByHand(row, byHand)) {
      books.findings.add(Kind::InvoiceByHand, [&] {
        return Place{name() + row.text("fp_ghskh") + u" 单据 "_qs + row.text("gl_djh"), row.text("fp_yfje"), u"0"_qs};
      });
    }
  }
}

// ---- receipts and payments ---------------------------------------------------------------------------------------

/// What stands in the ledgers for an entry of `jxc_ysyfk_dj`.
struct Entry {
  bool known = false, audited = false, payment = false, customer = false;
  double due = 0, paid = 0, rounding = 0;
  int ledgerRows = 0, cashRows = 0, roundingRows = 0, stockRows = 0;
  double ledgerDue = 0, ledgerPaid = 0, cash = 0, rounded = 0, stockRounded = 0;
};

bool isWhole(const Entry& entry) {
  if (!entry.audited)
    return entry.ledgerRows == 0 && entry.cashRows == 0 && entry.roundingRows == 0 && entry.stockRows == 0;
  if (entry.ledgerRows != 1 || !sameAmount(entry.ledgerDue, entry.due) || !sameAmount(entry.ledgerPaid, entry.paid))
    return false;
  if (!entry.payment) return true;
  const int rounding = entry.rounding != 0;
  return entry.cashRows == 1 && sameAmount(entry.cash, entry.customer ? entry.paid : -entry.paid) &&
         entry.roundingRows == rounding && entry.stockRows == rounding && sameAmount(entry.rounded, -entry.rounding) &&
         sameAmount(entry.stockRounded, -entry.rounding);
}

void provePayments(Books& books) {
  std::map<QString, Entry> entries;
  for (const Row row : books.select("select gl_djh,k_check,k_djlx,k_type,k_yfje,k_sfje,k_mlje from jxc_ysyfk_dj")) {
    Entry& entry = entries[row.text("gl_djh")];
    entry.known = true;
    entry.audited = entry.audited || row.flag("k_check");
    entry.payment = row.text("k_djlx") == u"SK" || row.text("k_djlx") == u"FK";
    entry.customer = row.text("k_type") == u"kh";
    entry.due = row.number("k_yfje");
    entry.paid = row.number("k_sfje");
    entry.rounding = entry.payment ? row.number("k_mlje") : 0;
  }
  for (const Row row :
       books.select("select gl_djh,gl_djh2,k_djlx,k_djtxt,k_yfje,k_sfje from jxc_ysyfk "
                    "where gl_djh<>'' and (k_djlx='SK' or k_djlx='FK' or k_djlx='YS' or k_djlx='YF')")) {
    // A rounding line has a number of its own and points to its payment; the opening balance of a partner may come from
    // no document.
    if (row.text("k_djtxt").endsWith(u"(抹零)")) {
      Entry& entry = entries[row.text("gl_djh2")];
      ++entry.roundingRows;
      entry.rounded += row.number("k_yfje");
      continue;
    }
    if (row.text("k_djtxt").startsWith(u"期初") && !entries.contains(row.text("gl_djh"))) continue;
    Entry& entry = entries[row.text("gl_djh")];
    ++entry.ledgerRows;
    entry.ledgerDue += row.number("k_yfje");
    entry.ledgerPaid += row.number("k_sfje");
  }
  for (const Row row : books.select("select gl_djh,xj_je from jxc_xjyh where xj_dlx='收款单' or xj_dlx='付款单'")) {
    Entry& entry = entries[row.text("gl_djh")];
    ++entry.cashRows;
    entry.cash += row.number("xj_je");
  }
  // Found by goods: the balancing lines of documents carry numbers of their own kinds.
  for (const Row row :
       books.select("select gl_djh,gl_djh2,gl_zje from jxc_goodslist where g_sn='00000000' and gl_djh2<>''")) {
    const QString number = row.text("gl_djh");
    if (!number.startsWith(u"YS") && !number.startsWith(u"YF")) continue;
    Entry& entry = entries[row.text("gl_djh2")];
    ++entry.stockRows;
    entry.stockRounded += row.number("gl_zje");
  }
  for (const auto& [number, entry] : entries) {
    const auto place = [&number = number, &entry = entry] {
      const auto figures = [](int rows, int cash, int rounding, int stock) {
        return u"往来账 %1 行，现金账 %2 行，抹零 %3 行，抹零流水 %4 行"_qs.arg(rows).arg(cash).arg(rounding).arg(
            stock);
      };
      const int rounding = entry.audited && entry.rounding != 0;
      return Place{u"单据 "_qs + number, figures(entry.ledgerRows, entry.cashRows, entry.roundingRows, entry.stockRows),
                   entry.audited ? figures(1, entry.payment, rounding, rounding) + u"，金额 "_qs +
                                       numberText(entry.payment ? entry.paid : entry.due)
                                 : u"没有账目"_qs};
    };
    if (entry.known) {
      if (!isWhole(entry)) books.findings.add(Kind::PaymentLine, place);
      continue;
    }
    if (entry.roundingRows > 0 || entry.stockRows > 0) books.findings.add(Kind::RoundingOrphan, place);
    if (entry.ledgerRows > 0) books.findings.add(Kind::PartnerOrphan, place);
    if (entry.cashRows > 0) books.findings.add(Kind::CashOrphan, place);
  }
}

// ---- expenses ----------------------------------------------------------------------------------------------------

/// What was entered as an expense or income, and what stands for it in the cash ledger.
struct Expense {
  bool known = false, isBooked = false;
  double amount = 0;
  QString account;
  int cashRows = 0;
  double cash = 0;
  bool elsewhere = false;  // a line of another account
};

/// One cash line each once it is audited, unless it is not booked; freight, rent and differences go with the document
/// that brought them.
void proveExpenses(Books& books) {
  std::map<QString, Expense> entered;
  for (const Row row : books.select("select gl_djh,fy_je,fy_chk,fy_kmmc from jxc_yyfy "
                                    "where gl_djh like 'FY%' or gl_djh like 'SR%'")) {
    Expense& expense = entered[row.text("gl_djh")];
    expense.known = true;
    if (row.text("fy_chk") != u"1" || row.text("fy_kmmc") == expenses::kNotBooked) continue;
    expense.isBooked = true;
    expense.amount += row.number("fy_je");
    expense.account = row.text("fy_kmmc");
  }
  for (const Row row : books.select("select gl_djh,xj_je,xj_kmmc from jxc_xjyh "
                                    "where gl_djh like 'FY%' or gl_djh like 'SR%'")) {
    Expense& expense = entered[row.text("gl_djh")];
    ++expense.cashRows;
    expense.cash += row.number("xj_je");
    expense.elsewhere = expense.elsewhere || row.text("xj_kmmc") != expense.account;
  }
  for (const auto& [number, expense] : entered) {
    const bool whole = expense.isBooked
                           ? expense.cashRows == 1 && !expense.elsewhere && sameAmount(expense.cash, expense.amount)
                           : expense.cashRows == 0;
    if (whole) continue;
    books.findings.add(expense.known ? Kind::ExpenseLine : Kind::CashOrphan, [&number = number, &expense = expense] {
      const auto figures = [](int rows, double cash) { return u"现金账 %1 行，金额 "_qs.arg(rows) + numberText(cash); };
      return Place{u"单据 "_qs + number, figures(expense.cashRows, expense.cash),
                   figures(expense.isBooked, expense.isBooked ? expense.amount : 0) +
                       (expense.isBooked ? u"，账户 "_qs + expense.account : QString())};
    });
  }
}

}  // namespace prove_money_detail

void proveMoney(Books& books) {
  using namespace prove_money_detail;
  books.step(90, u"核对往来账"_qs);
  const Last last = provePartnerLines(books);
  proveMasters(books, last, "select kh_sn,kh_lwje from jxc_khxx order by kh_sn", u"kh"_qs, u"客户 "_qs);
  proveMasters(books, last, "select ghs_sn,ghs_lwje from jxc_ghsxx order by ghs_sn", u"ghs"_qs, u"供货商 "_qs);
  books.step(92, u"核对现金银行账"_qs);
  proveCash(books);
  books.step(94, u"核对发票账"_qs);
  proveInvoices(books);
  provePayments(books);
  proveExpenses(books);
}

}  // namespace jxc::proof
