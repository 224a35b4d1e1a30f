// 账目核对: running balances of cash, partners and invoices, and what they hold for each document.
#include "accounts/expenses.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "maintenance/proof_books.h"
#include "maintenance/proof_days.h"

#include <map>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

namespace jxc::proof {
namespace prove_money_detail {

/// Documents whose effects in the money ledgers the document checks look at.
bool isTrading(std::string_view number) {
  const DocumentFamily* const family = findFamily(number);
  return family && family->hasMoney();
}

/// Where a running balance goes wrong: the places of the columns.
struct BalanceColumns {
  int id, date, number, balance;
};
Place balancePlace(const QString& whose, const WalkedRow& row, const BalanceColumns& at, double due) {
  return {whose + u" 单据 "_qs + row.text(at.number) + u" 日期 "_qs + row.text(at.date) + u" 第 "_qs + row.text(at.id) +
              u" 号"_qs,
          row.text(at.balance), numberText(due)};
}

// ---- what was entered, and stands in the ledgers below ---------------------------------------------------------

/// What stands in the ledgers for an entry of `jxc_ysyfk_dj`.
struct Entry {
  bool known = false, audited = false, payment = false, customer = false;
  double due = 0, paid = 0, rounding = 0;
  int ledgerRows = 0, cashRows = 0, roundingRows = 0, stockRows = 0;
  double ledgerDue = 0, ledgerPaid = 0, cash = 0, rounded = 0, stockRounded = 0;
};

using Entries = std::map<QString, Entry>;  // by number

/// What was entered as an expense or income, and what stands for it in the cash ledger.
struct Expense {
  bool known = false, isBooked = false;
  double amount = 0;
  QString account;
  int cashRows = 0;
  double cash = 0;
  bool elsewhere = false;  // a line of another account
};

using Expenses = std::map<QString, Expense>;  // by number

bool isExpense(std::string_view number) {
  return number.starts_with("FY") || number.starts_with("SR");
}

Entries enteredPayments(Books& books) {
  Entries entries;
  DaysInOrder days(books.findings);
  for (const Row row : books.select("select gl_djh,k_check,k_djlx,k_type,k_yfje,k_sfje,k_mlje,k_rq,k_chkrq from "
                                    "jxc_ysyfk_dj order by id")) {
    days.see(row.text("gl_djh"), row.text("k_rq"), row.text("k_chkrq"));
    Entry& entry = entries[row.text("gl_djh")];
    entry.known = true;
    entry.audited = entry.audited || row.flag("k_check");
    entry.payment = row.text("k_djlx") == u"SK" || row.text("k_djlx") == u"FK";
    entry.customer = row.text("k_type") == u"kh";
    entry.due = row.number("k_yfje");
    entry.paid = row.number("k_sfje");
    entry.rounding = entry.payment ? row.number("k_mlje") : 0;
  }
  return entries;
}

Expenses enteredExpenses(Books& books) {
  Expenses entered;
  DaysInOrder days(books.findings);
  for (const Row row : books.select("select gl_djh,fy_je,fy_chk,fy_kmmc,fy_rq from jxc_yyfy "
                                    "where gl_djh like 'FY%' or gl_djh like 'SR%' order by id")) {
    days.see(row.text("gl_djh"), row.text("fy_rq"), QString());
    Expense& expense = entered[row.text("gl_djh")];
    expense.known = true;
    if (row.text("fy_chk") != u"1" || row.text("fy_kmmc") == expenses::kNotBooked) continue;
    expense.isBooked = true;
    expense.amount += row.number("fy_je");
    expense.account = row.text("fy_kmmc");
  }
  return entered;
}

// ---- partners ----------------------------------------------------------------------------------------------------

/// The running balance in the last row of each partner, by type and code.
using Last = std::unordered_map<std::string, double>;

/// What an entry by hand looks for among the partner lines.
void note(Entries& entries, std::string_view number, const QString& settled, std::string_view text, double due,
          double paid) {
  // A rounding line has a number of its own and points to its payment; the opening balance of a partner may come from
  // no document.
  if (text.ends_with("(抹零)")) {
    Entry& entry = entries[settled];
    ++entry.roundingRows;
    entry.rounded += due;
    return;
  }
  const QString known = QString::fromUtf8(number.data(), static_cast<qsizetype>(number.size()));
  if (text.starts_with("期初") && !entries.contains(known)) return;
  Entry& entry = entries[known];
  ++entry.ledgerRows;
  entry.ledgerDue += due;
  entry.ledgerPaid += paid;
}

bool isByHand(std::string_view kind) {
  return kind == "SK" || kind == "FK" || kind == "YS" || kind == "YF";
}

Last provePartnerLines(Books& books, Entries& entries) {
  enum { Id, Type, Partner, Date, Opening, Due, Paid, Running, Number, Form, Text, Settled };
  Last last;
  std::string whose;
  bool isAny = false;
  double balance = 0;
  const auto take = [&](const WalkedRow& row) {
    const std::string_view type = row.utf8(Type), partner = row.utf8(Partner);
    if (whose.size() != type.size() + partner.size() || !whose.starts_with(type) || !whose.ends_with(partner)) {
      if (isAny) last[whose] = balance;
      whose.assign(type).append(partner);
      balance = 0;
    }
    isAny = true;
    const double due = row.number(Due), paid = row.number(Paid), running = row.number(Running);
    balance += row.number(Opening) + due - paid;
    if (!sameAmount(running, balance))
      books.findings.add(Kind::PartnerBalance, [&] {
        const QString name = type == "kh" ? u"客户 "_qs : u"供货商 "_qs;
        return balancePlace(name + row.text(Partner), row, {Id, Date, Number, Running}, balance);
      });
    balance = running;
    const std::string_view number = row.utf8(Number), kind = row.utf8(Form);
    if (isByHand(kind) && !number.empty()) note(entries, number, row.text(Settled), row.utf8(Text), due, paid);
    if (!isTrading(number) || !isTrading(kind)) return;
    Document& document = books.document(number);
    ++document.partnerRows;
    document.partnerDue += due;
    document.partnerPaid += paid;
  };
  books.walk(
      "jxc_ysyfk",
      "select id,k_type,k_ghskh,k_rq as rq,k_qcje,k_yfje,k_sfje,k_ljje,gl_djh,k_djlx,k_djtxt,gl_djh2 from jxc_ysyfk "
      "order by k_ghskh,k_type,k_rq,id",
      92, take);
  if (isAny) last[whose] = balance;
  return last;
}

void proveMasters(Books& books, const Last& last, const SqlText& masters, std::string_view type, const QString& name) {
  const RowSet rows = books.select(masters);
  for (int row = 0; row < rows.rowCount(); ++row) {
    const auto found = last.find(std::string(type).append(rows.utf8(row, 0)));
    const double due = found == last.end() ? 0 : found->second;
    if (!sameAmount(rows.number(row, 1), due))
      books.findings.add(Kind::PartnerMaster, [&] {
        return Place{name + rows.text(row, 0), numberText(rows.number(row, 1)), numberText(due)};
      });
  }
}

// ---- cash --------------------------------------------------------------------------------------------------------

/// Money in, money out and transfers; all other lines come from documents.
bool isCashByHand(std::string_view number) {
  return number.starts_with("XJ") || number.starts_with("XC") || number.starts_with("XZ");
}

void proveCash(Books& books, Entries& entries, Expenses& expenses) {
  enum { Id, Account, Date, Amount, Running, Number, What, Counted };
  std::string account;
  double balance = 0;
  std::vector<double> takenOut;  // by cancels of transfers, between the line before and this one
  std::vector<EnteredByHand> byHand;
  const auto take = [&](const WalkedRow& row) {
    if (row.utf8(Account) != account) {
      account = row.utf8(Account);
      balance = 0;
      takenOut.clear();
    }
    const std::string_view number = row.utf8(Number), what = row.utf8(What);
    const double amount = row.number(Amount), stored = row.number(Running);
    if (isCashByHand(number)) byHand.push_back({row.integer(Id), std::string(number), std::string(row.utf8(Date)), {}});
    if (what == "收款单" || what == "付款单") {
      Entry& entry = entries[row.text(Number)];
      ++entry.cashRows;
      entry.cash += amount;
    }
    if (isExpense(number)) {
      Expense& expense = expenses[row.text(Number)];
      ++expense.cashRows;
      expense.cash += amount;
      expense.elsewhere = expense.elsewhere || row.text(Account) != expense.account;
    }
    if (row.utf8(Counted) != "1") {
      // A transfer that was audited once has kept its running balance; one that never was has none.
      if (number.starts_with("XZ") && stored != 0) takenOut.push_back(amount);
      return;
    }
    balance += amount;
    if (!sameAmount(stored, balance)) {
      const bool known = addsUp(stored - balance, takenOut);
      books.findings.add(known ? Kind::CashTransferCancelled : Kind::CashBalance, [&] {
        return balancePlace(u"账户 "_qs + row.text(Account), row, {Id, Date, Number, Running}, balance);
      });
    }
    balance = stored;
    takenOut.clear();
    if (!isTrading(number) || what == "费用付款") return;
    Document& document = books.document(number);
    ++document.cashRows;
    document.cash += amount;
  };
  books.walk("jxc_xjyh",
             "select id,xj_kmmc,xj_rq as rq,xj_je,xj_ljje,gl_djh,xj_dlx,xj_chk from jxc_xjyh order by xj_kmmc,xj_rq,id",
             94, take);
  proveDays(books.findings, std::move(byHand));
}

// ---- invoices ----------------------------------------------------------------------------------------------------

namespace invoice_line {
enum { Id, Type, Partner, Date, Opening, Due, Invoiced, Running, Number, Form, Counted };
}

/// Whether the document that a line came from has gone with a closing, or stands there with all rows carried on. A
/// number tells the day on which it was given.
bool isOfClosedDays(const Books& books, const Document& document, std::string_view number) {
  if (books.closedUntil.empty() || document.closed || document.heads > 0) return document.closed;
  const std::string& until = books.closedUntil;
  return number.size() > 8 && number.substr(2, 6) <= until.substr(2, 2) + until.substr(5, 2) + until.substr(8, 2);
}

/// Lines of documents: one for each, as long as it is audited, whether it counts or was excluded.
void proveInvoiceOfDocument(Books& books, const WalkedRow& row, std::string_view number) {
  using namespace invoice_line;
  // A closing leaves what was excluded, as it waits; audited again later, it counts from that day on.
  if (row.integer(Counted) == 0 && row.text(Date).toStdString() <= books.closedUntil) return;
  Document& document = books.document(number);
  if (isOfClosedDays(books, document, number)) return;
  ++document.invoiceRows;
  document.invoiceDue += row.number(Due);
  if (document.audited) return;
  books.findings.add(Kind::InvoiceOrphan, [&] { return Place{u"单据 "_qs + row.text(Number), row.text(Due), {}}; });
}

/// Invoices by hand: a number is one invoice of its own side, and lowers what is still to invoice, no more.
bool isInvoiceByHand(const WalkedRow& row, std::set<QString>& seen) {
  using namespace invoice_line;
  const QString number = row.text(Number);
  const bool customer = row.text(Type) == u"kh";
  return number.startsWith(customer ? u"XP" : u"CP") && row.text(Form) == number.left(2) && row.number(Due) == 0 &&
         seen.insert(number).second;
}

void proveInvoices(Books& books) {
  using namespace invoice_line;
  std::string whose, side;
  double balance = 0;
  std::set<QString> byHand;
  std::vector<EnteredByHand> entered;
  const auto take = [&](const WalkedRow& row) {
    side.assign(row.utf8(Type)).append(row.utf8(Partner));
    if (side != whose) balance = 0;
    whose.swap(side);
    const auto name = [&] { return (row.utf8(Type) == "kh" ? u"客户 "_qs : u"供货商 "_qs) + row.text(Partner); };
    if (row.integer(Counted) != 0) {
      balance += row.number(Opening) + row.number(Due) - row.number(Invoiced);
      const double running = row.number(Running);
      if (!sameAmount(running, balance))
        books.findings.add(Kind::InvoiceBalance, [&] {
          return balancePlace(name(), row, {Id, Date, Number, Running}, balance);
        });
      balance = running;
    }
    const std::string_view number = row.utf8(Number);
    if (isTrading(number)) {
      proveInvoiceOfDocument(books, row, number);
    } else if (!number.empty()) {
      entered.push_back({row.integer(Id), std::string(number), std::string(row.utf8(Date)), {}});
      if (isInvoiceByHand(row, byHand)) return;
      books.findings.add(Kind::InvoiceByHand, [&] {
        return Place{name() + u" 单据 "_qs + row.text(Number), row.text(Due), u"0"_qs};
      });
    }
  };
  books.walk(
      "jxc_fpdjb",
      "select id,fp_type,fp_ghskh,fp_rq as rq,fp_qcje,fp_yfje,fp_kpje,fp_ljje,gl_djh,fp_djlx,fp_check from jxc_fpdjb "
      "order by fp_ghskh,fp_type,fp_rq,id",
      96, take);
  proveDays(books.findings, std::move(entered));
}

// ---- receipts and payments ---------------------------------------------------------------------------------------

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

void provePayments(Books& books, Entries& entries) {
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

/// One cash line each once it is audited, unless it is not booked; freight, rent and differences go with the document
/// that brought them.
void proveExpenses(Books& books, const Expenses& entered) {
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
  Entries entries = enteredPayments(books);
  Expenses expenses = enteredExpenses(books);
  const Last last = provePartnerLines(books, entries);
  proveMasters(books, last, "select kh_sn,kh_lwje from jxc_khxx order by kh_sn", "kh", u"客户 "_qs);
  proveMasters(books, last, "select ghs_sn,ghs_lwje from jxc_ghsxx order by ghs_sn", "ghs", u"供货商 "_qs);
  books.step(92, u"核对现金银行账"_qs);
  proveCash(books, entries, expenses);
  books.step(94, u"核对发票账"_qs);
  proveInvoices(books);
  provePayments(books, entries);
  proveExpenses(books, expenses);
}

}  // namespace jxc::proof
