// 演示账套的收付款: the money side of maintenance/demo_trade.h.
#include "accounts/cash_ledger.h"
#include "accounts/cash_lines.h"
#include "accounts/expenses.h"
#include "accounts/partner_documents.h"
#include "accounts/settling.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "maintenance/demo_trade.h"

#include <algorithm>
#include <stdexcept>

namespace jxc::demo {

bool Trade::collectOnDelivery() {
  const auto due = std::find_if(fetches_.begin(), fetches_.end(), [&](const Fetch& each) { return each.day <= day_; });
  if (due == fetches_.end()) return false;
  const Fetch fetch = *due;
  fetches_.erase(due);
  const RowSet head =
      openSelect("select ls_yfje,ls_sfje,ls_hkje,ls_th from jxc_lsxsd where gl_djh=? and ls_status=1", fetch.number);
  if (head.isEmpty() || head.front().integer("ls_th") == 1) return false;  // brought back before it was fetched
  workAs(staff_.seller);
  const partner_books::OverviewLine line{
      .number = fetch.number, .due = head.front().number("ls_yfje"), .paid = head.front().number("ls_sfje")};
  const auto form = partner_books::openSettlement(customerSide, line, prompt_);
  if (!form) return false;
  const partner_books::SettlementDraft draft{.number = fetch.number,
                                             .date = today(),
                                             .amount = form->proposed,
                                             .account = account(),
                                             .employee = form->employee,
                                             .note = QStringLiteral("取镜")};
  if (!partner_books::settleDocument(customerSide, draft, prompt_))
    throw std::logic_error("demonstration: not settled");
  ++documents_;
  return true;
}

bool Trade::collectFromInstitution() {
  const QString& customer = random_.oneOf(staff_.institutions);
  const double owed = lookupNumber("select kh_lwje from jxc_khxx where kh_sn=?", customer);
  if (owed < 500) return false;
  workAs(staff_.manager);
  const double paid = static_cast<int>(owed * random_.between(60, 100) / 10000) * 100;
  if (paid <= 0) return false;
  partner_books::saveDocument(customerSide, partner_books::Kind::Payment,
                              {.partner = customer,
                               .date = today(),
                               .amount = paid,
                               .rounding = random_.chance(150) ? 0.5 : 0,
                               .account = QStringLiteral("工商银行"),
                               .employee = staff_.employees[0],
                               .note = QStringLiteral("结清上月货款")},
                              prompt_);
  ++documents_;
  return true;
}

bool Trade::paySupplier() {
  const QString& supplier = random_.oneOf(staff_.suppliers);
  const double owed = lookupNumber("select ghs_lwje from jxc_ghsxx where ghs_sn=?", supplier);
  const double bank = xjyhBalanceNow(QStringLiteral("工商银行"));
  const double paid = static_cast<int>(std::min(owed * random_.between(50, 100) / 100, bank / 2) / 100) * 100;
  if (paid < 500) return false;
  workAs(staff_.manager);
  partner_books::saveDocument(supplierSide, partner_books::Kind::Payment,
                              {.partner = supplier,
                               .date = today(),
                               .amount = paid,
                               .account = QStringLiteral("工商银行"),
                               .employee = staff_.employees[0],
                               .note = QStringLiteral("货款")},
                              prompt_);
  ++documents_;
  return true;
}

void Trade::bill(const PartnerSide& side) {
  const bool ours = &side == &customerSide;
  workAs(staff_.manager);
  partner_books::saveDocument(side, partner_books::Kind::Due,
                              {.partner = random_.oneOf(ours ? staff_.institutions : staff_.suppliers),
                               .date = today(),
                               .amount = random_.between(4, 30) * 20.0,
                               .employee = staff_.employees[ours ? 1 : 2],
                               .note = ours ? QStringLiteral("上门验光服务费") : QStringLiteral("加急加工费")},
                              prompt_);
  ++documents_;
}

bool Trade::bankTakings() {
  workAs(staff_.manager);
  bool moved = false;
  for (const auto* account : {u"现金", u"微信", u"支付宝"}) {
    const double there = xjyhBalanceNow(words(account));
    const double amount = static_cast<int>((there - 2000) / 1000) * 1000;
    if (amount < 1000) continue;
    moved = cash::saveLine({.movement = cash::Movement::Transfer,
                            .date = today(),
                            .account = words(account),
                            .target = QStringLiteral("工商银行"),
                            .amount = amount,
                            .employee = staff_.employeeNames[0],
                            .note = QStringLiteral("营业款存入银行")},
                           prompt_)
                .has_value() ||
            moved;
    ++documents_;
  }
  return moved;
}

bool Trade::payOwner() {
  constexpr double needed = 400000;
  const QString bank = QStringLiteral("工商银行");
  const double amount = static_cast<int>((xjyhBalanceNow(bank) - needed) / 10000) * 10000;
  if (amount <= 0) return false;
  payOut(bank, amount, u"股东分红", u"周敏");
  return true;
}

void Trade::payOut(const QString& account, double yuan, Word note, Word employee) {
  workAs(staff_.manager);
  cash::saveLine({.movement = cash::Movement::Out,
                  .date = today(),
                  .account = account,
                  .amount = yuan,
                  .employee = words(employee),
                  .note = words(note)},
                 prompt_);
  ++documents_;
}

void Trade::book(expenses::Side side, Word type, Word account, double yuan, Word note, std::size_t employee,
                 std::size_t shop) {
  workAs(staff_.manager);
  expenses::save({.side = side,
                  .date = today(),
                  .type = words(type),
                  .amount = yuan,
                  .employee = staff_.employees[employee],
                  .department = staff_.departments[shop],
                  .account = words(account),
                  .note = words(note)},
                 prompt_);
  ++documents_;
}

int Trade::auditMoney(int leave) {
  int audited = 0;
  const RowSet papers = openSelect("select gl_djh,k_type,k_djlx from jxc_ysyfk_dj where k_check=0 order by id");
  for (int row = 0; row < papers.rowCount() - leave; ++row) {
    const PartnerSide& side = papers.text(row, 1) == u"kh" ? customerSide : supplierSide;
    const bool due = papers.text(row, 2).startsWith(u'Y');
    audited += partner_books::auditDocument(side, due ? partner_books::Kind::Due : partner_books::Kind::Payment,
                                            papers.text(row, 0));
  }
  const RowSet lines =
      openSelect("select gl_djh,min(id) as first from jxc_xjyh where xj_chk='0' group by gl_djh order by 2");
  for (int row = 0; row < lines.rowCount() - leave; ++row)
    audited += cash::checkDj(lines.text(row, 0));
  const RowSet spent = openSelect("select gl_djh from jxc_yyfy where fy_chk='0' order by id");
  for (int row = 0; row < spent.rowCount() - leave; ++row)
    audited += expenses::checkDj(spent.text(row, 0), prompt_);
  return audited;
}

}  // namespace jxc::demo
