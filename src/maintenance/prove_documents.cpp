// 单据核对: heads against lines, lines against the ledgers, orphans, doubles and drafts.
#include "accounts/attachments.h"
#include "accounts/partner_ledger.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "maintenance/proof_books.h"
#include "stock/document_rules.h"
#include "stock/internal_documents.h"
#include "stock/partial_movement.h"

#include <algorithm>
#include <cmath>
#include <unordered_map>
#include <unordered_set>

namespace jxc::proof {
namespace prove_documents_detail {

QString numberOf(const Books& books, const Document& document) {
  return u"单据 "_qs + books.numbers.shown(document.number);
}

/// Ledger rows that an audited document of these lines has.
int rowsDue(const Document& document) {
  if (document.family->hasMoney()) return document.lines;
  if (document.family->partial) return 0;
  const internal_documents::Rules& rules = internal_documents::rulesOf(*document.family);
  return rules.rowsALine * document.movingLines + rules.rowsOfHead;
}

void proveTrading(Books& books, const Document& document) {
  const DocumentFamily& family = *document.family;
  const auto amounts = [&](double stored, double due) {
    return [&books, &document, stored, due] {
      return Place{numberOf(books, document), numberText(stored), numberText(due)};
    };
  };
  // The head owes what the lines come to, with or without the balancing line, in the digits of totals.
  const double all = family.headSign * document.total;
  const double withoutBalancing = all - family.headSign * document.balancing;
  const auto isDue = [&](double sum) {
    return sameAmount(document.due, sum) || sameAmount(document.due, roundEps(sum, books.digits.total));
  };
  if (document.lines > 0 && !isDue(all) && !isDue(withoutBalancing))
    books.findings.add(Kind::HeadAmount, amounts(document.due, withoutBalancing));
  if (!document.audited || document.isCarried()) return;
  if (document.ledgerRows == document.lines) {
    const double pieces = family.headSign * document.pieces;
    if (!sameAmount(document.ledgerTotal, all))
      books.findings.add(Kind::LedgerAmount, amounts(document.ledgerTotal, all));
    else if (!sameAmount(document.ledgerPieces, pieces))
      books.findings.add(Kind::LedgerAmount, amounts(document.ledgerPieces, pieces));
  }
  // A balancing line is there for what was paid above or below what is due, and for nothing else. Returns carry the
  // line of what they give back.
  const double difference = document.settlement == 0 ? document.paid - document.due : 0;
  if (!family.discount.empty() && !sameAmount(document.balancing, 0) && !sameAmount(document.balancing, difference))
    books.findings.add(Kind::StaleBalancing, amounts(document.balancing, difference));
  if (document.fromTill) return;  // its money goes the till's own way
  const double ledgerDue = document.settlement == 0 ? document.paid : document.due;
  if (document.partnerRows != 1 || !sameAmount(document.partnerDue, ledgerDue) ||
      !sameAmount(document.partnerPaid, document.paid))
    books.findings.add(Kind::PartnerLine, [&] {
      const auto figures = [](int rows, double due, double paid) {
        return u"%1 行，应收（付） "_qs.arg(rows) + numberText(due) + u" 已收（付） "_qs + numberText(paid);
      };
      return Place{numberOf(books, document), figures(document.partnerRows, document.partnerDue, document.partnerPaid),
                   figures(1, ledgerDue, document.paid)};
    });
  // Whether invoices were kept when it was audited, the parameter of today does not tell.
  if (document.invoiceRows > 1 || (document.invoiceRows == 1 && !sameAmount(document.invoiceDue, ledgerDue)))
    books.findings.add(Kind::InvoiceLine, [&] {
      return Place{numberOf(books, document),
                   u"%1 行，应开 "_qs.arg(document.invoiceRows) + numberText(document.invoiceDue),
                   u"1 行，应开 "_qs + numberText(ledgerDue)};
    });
  const double cash = family.side == PartnerType::Supplier ? -document.paid : document.paid;
  if (document.cashRows != 1 || !sameAmount(document.cash, cash))
    books.findings.add(Kind::CashLine, [&] {
      return Place{numberOf(books, document), u"%1 行，金额 "_qs.arg(document.cashRows) + numberText(document.cash),
                   u"1 行，金额 "_qs + numberText(cash)};
    });
}

void proveHead(Books& books, const Document& document) {
  const auto here = [&](const QString& stored, const QString& due) {
    return [&books, &document, stored, due] { return Place{numberOf(books, document), stored, due}; };
  };
  const auto rows = [](int count) { return u"%1 行"_qs.arg(count); };
  if (document.auditedHeads > 1)
    books.findings.add(Kind::DocumentTwice, here(u"%1 张"_qs.arg(document.auditedHeads), u"1 张"_qs));
  else if (document.heads > 1)
    books.findings.add(Kind::DocumentSharedNumber, here(u"%1 张"_qs.arg(document.heads), u"1 张"_qs));
  // The balancing line settles goods: alone it is no document.
  if (document.goodsLines == 0) books.findings.add(Kind::NoLines, here(rows(document.lines), {}));
  if (document.audited != document.signedOff)
    books.findings.add(Kind::Checker,
                       here(document.signedOff ? u"有审核人，状态未审核"_qs : u"已审核，没有审核人"_qs, {}));
  if (document.audited) {
    // Of two heads under one number, the lines of one wait still.
    const bool shared = document.heads > 1;
    if (document.lines > 0 && !document.isCarried() &&
        (shared ? document.ledgerRows == 0 || document.ledgerRows > rowsDue(document)
                : document.ledgerRows != rowsDue(document)))
      books.findings.add(Kind::RowsMissing, here(rows(document.ledgerRows), rows(rowsDue(document))));
  } else if (document.ledgerRows > 0 || document.partnerRows > 0 || document.cashRows > 0) {
    books.findings.add(Kind::WaitingPosted, here(u"流水 %1 行，往来账 %2 行，现金账 %3 行"_qs.arg(document.ledgerRows)
                                                     .arg(document.partnerRows)
                                                     .arg(document.cashRows),
                                                 u"没有"_qs));
  }
  if (document.audited && document.heads == 1 && document.goodsLines > 0 && document.moved) {
    const auto open = [&] { return here(u"%1 行待入库（出库）"_qs.arg(document.openLines), {})(); };
    if (*document.moved && document.openLines > 0) books.findings.add(Kind::GoodsUnmoved, open);
    if (!*document.moved && document.openLines == 0) books.findings.add(Kind::MoveUnmarked, open);
  }
  if (document.overLines > 0)
    books.findings.add(Kind::MovedTooMuch, here(u"%1 行超过数量"_qs.arg(document.overLines), u"没有"_qs));
  if (document.family->hasMoney() && document.heads == 1) proveTrading(books, document);
}

/// What counts, splits and bundles made the stock worth more or less stands as an expense or an income. The cost of a
/// loss or an overflow may be brought up to date long after its audit: theirs is not held against it.
void proveDifferences(Books& books) {
  std::unordered_map<int, double> booked;
  for (const Row row : books.select("select gl_djh,sum(fy_je) as je from jxc_yyfy where gl_djh<>'' group by gl_djh"))
    if (const int number = books.numbers.find(row.text("gl_djh").toStdString()); number >= 0)
      booked[number] = row.number("je");
  for (const Document& document : books.documents) {
    const DocumentFamily* const family = document.family;
    if (!family || !document.audited || document.heads != 1 || document.ledgerRows == 0) continue;
    if (family->hasMoney() || family->partial || leavesCost(*family)) continue;
    const internal_documents::Rules& rules = internal_documents::rulesOf(*family);
    if (rules.differenceWord.empty()) continue;
    const double stored = booked[document.number], due = document.ledgerTotal;
    if (sameAmount(stored, due) || (stored == 0 && std::fabs(due) < rules.leastDifference)) continue;
    books.findings.add(Kind::DifferenceLine, [&] {
      return Place{numberOf(books, document), numberText(stored), numberText(due)};
    });
  }
}

/// What was put away or issued of a line is the sum of the documents that did it. A line that moved with its audit has
/// none.
void proveParts(Books& books) {
  for (const PartialMovement* m : {&partial::putaway, &partial::issue}) {
    const DocumentFamily &f = *m->family, &s = *m->source;
    const std::string sql = compose(
        "select a.{} as djh,a.g_sn,a.{} as moved,x.sl from (select b.{} as lid,b.g_sn,sum(b.{}) as sl from {} "
        "b,{} c where b.{}=c.{} and c.{}=1 group by b.{},b.g_sn) x,{} a where a.{}=x.lid and a.g_sn=x.g_sn",
        {s.number, m->moved(), f.line.sourceLine, f.line.columns->quantity, f.lines, f.head, f.number, f.number,
         f.status, f.line.sourceLine, s.lines, s.line.link});
    for (const Row row : books.select(sql))
      if (!sameAmount(row.number("moved"), row.number("sl")))
        books.findings.add(Kind::PartsDiffer, [&] {
          return Place{u"单据 "_qs + row.text("djh") + u" 商品 "_qs + row.text("g_sn"), row.text("moved"),
                       row.text("sl")};
        });
  }
}

/// A line of a loan against its returns, which follow it by `id2` in the order in which they were made: what came back,
/// what was kept, and the deposit, of which nothing goes back that the rent has used or that went back before.
void proveLoans(Books& books) {
  struct Lent {
    Place at;
    double pieces = 0, back = 0, sold = 0, used = 0, deposit = 0;
  } lent;
  std::int64_t line = 0;
  double back = 0, sold = 0, used = 0, left = 0;
  const auto figures = [](double b, double s, double u) {
    return u"已还 "_qs + numberText(b) + u" 转销售 "_qs + numberText(s) + u" 已用押金 "_qs + numberText(u);
  };
  const auto close = [&] {
    if (line == 0) return;
    if (!sameAmount(back, lent.back) || !sameAmount(sold, lent.sold) || !sameAmount(used, lent.used))
      books.findings.add(Kind::LoanDiffers, [&] {
        return Place{lent.at.place, figures(lent.back, lent.sold, lent.used), figures(back, sold, used)};
      });
    if (lent.back + lent.sold > lent.pieces + 1e-6)
      books.findings.add(Kind::LoanTooMuch, [&] {
        return Place{lent.at.place, numberText(lent.back + lent.sold), numberText(lent.pieces)};
      });
  };
  const std::string sql =
      "select a.id,a.gl_djh,a.g_sn,a.id2,a.jh_sl,a.jh_hhsl,a.jh_xssl,a.jh_yj,a.jh_yj2,a.jh_zzj,a.jh_thyj from "
      "jxc_khjhsp a,jxc_khjh b where a.gl_djh=b.gl_djh and b.jh_status=1 order by a.id2,a.id";
  for (const Row row : books.select(sql)) {
    const QString place = u"单据 "_qs + row.text("gl_djh") + u" 商品 "_qs + row.text("g_sn");
    if (row.integer("id2") != line) {
      close();
      line = row.integer("id2");
      // A return whose loan line is gone stands for nothing that was lent.
      const bool isLoan = row.integer("id") == line;
      lent = {{place, {}, {}}};
      back = sold = used = left = 0;
      if (isLoan) {
        lent = {{place, {}, {}},       row.number("jh_sl"),  row.number("jh_hhsl"),
                row.number("jh_xssl"), row.number("jh_yj2"), row.number("jh_yj")};
        left = lent.deposit;
        continue;
      }
    }
    back += row.number("jh_hhsl");
    sold += row.number("jh_xssl");
    used += row.number("jh_zzj");
    left -= row.number("jh_zzj");
    const double refund = row.number("jh_thyj"), most = std::max(0.0, left);
    if (refund > most + 1e-6)
      books.findings.add(Kind::DepositTooMuch, [&] { return Place{place, numberText(refund), numberText(most)}; });
    left -= refund;
  }
  close();
}

std::unordered_set<std::string> numbersIn(Books& books, std::string_view table) {
  std::unordered_set<std::string> numbers;
  books.eachRow(table, "gl_djh", [&](const WalkedRow& row) { numbers.emplace(row.utf8(1)); });
  return numbers;
}

/// What stands in the ledgers, or in the tables of lines, without a head.
class Headless {
 public:
  explicit Headless(Books& books)
      : books_(books),
        till_(numbersIn(books, "jxc_posxsd")),
        returned_(numbersIn(books, "jxc_posthd")),
        gifts_(numbersIn(books, "jxc_dhd")) {}
  void prove(const Document& document) {
    const std::string& number = books_.numbers.text(document.number);
    const auto rows = [&](int count) {
      return [this, &document, count] { return Place{numberOf(books_, document), u"%1 行"_qs.arg(count), u"没有"_qs}; };
    };
    const bool elsewhere = till_.contains(number) || returned_.contains(number);
    if (document.ledgerRows > 0 && document.ledgerKind != 'r' && document.ledgerKind != 'o' && !elsewhere &&
        !(document.ledgerKind == 'd' && gifts_.contains(number)))
      books_.findings.add(Kind::LedgerOrphan, rows(document.ledgerRows));
    if (document.partnerRows > 0 && !elsewhere) books_.findings.add(Kind::PartnerOrphan, rows(document.partnerRows));
    if (document.cashRows > 0 && !elsewhere) books_.findings.add(Kind::CashOrphan, rows(document.cashRows));
    if (document.lines > 0)
      books_.findings.add(Kind::Draft, [&] {
        const QString maker =
            books_.select(compose("select a_name from {} where id=?", {document.lineTable}), document.firstLine)
                .front()
                .text("a_name");
        const bool known = !books_.select("select a_name from jxc_admin where a_name=?", maker).isEmpty();
        return Place{numberOf(books_, document) + u" 操作员 "_qs + maker + (known ? QString() : u"（已不存在）"_qs),
                     u"%1 行明细"_qs.arg(document.lines),
                     {}};
      });
  }

 private:
  Books& books_;
  std::unordered_set<std::string> till_, returned_, gifts_;
};

void proveCodes(Books& books) {
  struct Code {
    std::string_view table, field;
    std::u16string_view name;
  };
  for (const Code& code :
       {Code{"jxc_goods", "g_sn", u"商品"}, Code{"jxc_khxx", "kh_sn", u"客户"}, Code{"jxc_ghsxx", "ghs_sn", u"供货商"},
        Code{"jxc_ckxx", "ck_sn", u"仓库"}, Code{"jxc_hyxx", "hy_sn", u"会员"}, Code{"jxc_user", "u_sn", u"员工"},
        Code{"jxc_ysyfk_dj", "gl_djh", u"收付款单"}}) {
    const std::string sql =
        compose("select {} as code,count(*) as num from {} where {}<>'' group by {} having count(*)>1",
                {code.field, code.table, code.field, code.field});
    for (const Row row : books.select(sql))
      books.findings.add(Kind::CodeTwice, [&] {
        return Place{words(code.name) + u' ' + row.text("code"), row.text("num") + u" 条"_qs, u"1 条"_qs};
      });
  }
}

/// Contracts against the receipts and sales that have them, from both ends; and their files, which another machine may
/// have. What a closing took along has left its number here.
void proveContracts(Books& books) {
  std::unordered_set<std::string> contracts;
  const std::string closed = books.closedUntil.substr(0, 10);
  for (const Row row : books.select("select * from jxc_htgl order by id")) {
    const QString name = u"合同 "_qs + row.text("ht_sn") + u' ' + row.text("ht_name"), document = row.text("gl_djh");
    contracts.insert(row.text("ht_sn").toStdString());
    const int number = document.isEmpty() ? -1 : books.numbers.find(document.toStdString());
    const bool stands = number >= 0 && static_cast<std::size_t>(number) < books.documents.size() &&
                        books.documents[static_cast<std::size_t>(number)].heads > 0;
    if (!document.isEmpty() && !stands && (closed.empty() || dateOfNumber(document).toStdString() > closed))
      books.findings.add(Kind::ContractOrphan, [&] { return Place{name, document, u"没有"_qs}; });
    const attachments::Place file{row.text("ht_path"), row.text("ht_fujian"), row.text("ht_fjname")};
    if (!file.shown.isEmpty() && file.folder != attachments::kOnServer && attachments::pathOf(file).isEmpty())
      books.findings.add(Kind::ContractFile, [&] { return Place{name, file.shown, {}}; });
  }
  for (const DocumentFamily* family : {&families::purchaseReceipt, &families::sale})
    for (const Row row : books.select(compose("select {} as djh,{} as ht from {} where {}<>'' order by id",
                                              {family->number, family->contract, family->head, family->contract})))
      if (!contracts.contains(row.text("ht").toStdString()))
        books.findings.add(Kind::ContractGone, [&] {
          return Place{u"单据 "_qs + row.text("djh"), u"合同 "_qs + row.text("ht"), {}};
        });
}

}  // namespace prove_documents_detail

void proveDocuments(Books& books) {
  using namespace prove_documents_detail;
  books.step(96, u"核对单据"_qs);
  Headless headless(books);
  for (const Document& document : books.documents) {
    if (document.family)
      proveHead(books, document);
    else
      headless.prove(document);
  }
  proveDifferences(books);
  proveParts(books);
  proveLoans(books);
  proveContracts(books);
  books.step(98, u"核对编号"_qs);
  proveCodes(books);
  const RowSet staged = books.select("select a_name,count(*) as num from jxc_tempspxf where g_sn<>'' group by a_name");
  for (const Row row : staged)
    books.findings.add(Kind::Staging, row.integer("num"),
                       {u"操作员 "_qs + row.text("a_name"), row.text("num") + u" 行"_qs, {}});
}

}  // namespace jxc::proof
