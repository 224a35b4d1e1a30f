#include "sales/loan_return.h"

#include "core/clock.h"
#include "core/numbers.h"
#include "core/posting.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "sales/loan.h"
#include "stock/document.h"
#include "stock/failing_command.h"
#include "stock/ledger.h"
#include "stock/line_amounts.h"
#include "stock/loans.h"
#include "stock/partial_movement.h"

#include <algorithm>
#include <initializer_list>
#include <map>
#include <set>
#include <string_view>
#include <vector>

namespace jxc::loan_return {
namespace loan_return_detail {

/// What the deposit leaves behind the rent.
double refundOf(double available, double rentTotal) {
  return lending::rounded(std::max(0.0, available - rentTotal));
}

using Lent = std::map<std::int64_t, loans::LoanLine>;

/// The line of the loan that is meant; null: it is gone, or its loan is no audited one any more.
const loans::LoanLine* lineIn(const Lent& lent, std::int64_t id) {
  const auto found = lent.find(id);
  return found == lent.end() ? nullptr : &found->second;
}

/// A staged line, and what its line of the loan says.
ReturnLine read(const Row& row, const Lent& all) {
  ReturnLine line{.id = row.integer("id"),
                  .loanLine = row.integer("id2"),
                  .goods = row.text("g_sn"),
                  .account = row.text("jh_kmmc"),
                  .cost = row.number("jh_dj"),
                  .quantity = row.number("jh_hhsl"),
                  .available = row.number("jh_yj"),
                  .rent = row.number("jh_zj"),
                  .rentTotal = row.number("jh_zzj"),
                  .refund = row.number("jh_thyj"),
                  .days = static_cast<int>(row.integer("jh_ts"))};
  if (const auto* lent = lineIn(all, line.loanLine)) {
    line.open = lent->open();
    line.held = lent->held();
    line.deposit = lent->deposit;
    line.rentUsed = lent->rentUsed;
  }
  return line;
}

std::vector<ReturnLine> staged() {
  std::vector<ReturnLine> all;
  const RowSet rows = openSelect("select * from jxc_khjhsptmp where a_name=? order by id", session().a_name);
  if (rows.isEmpty()) return all;
  const Lent lent = loans::linesOf(rows.front().text("gl_djh2"));
  for (const Row row : rows)
    all.push_back(read(row, lent));
  return all;
}

/// A line that is staged already, or one that comes, with what stays as it is said of its loan.
void write(const ReturnLine& line, const loans::LoanLine* comes = nullptr) {
  const loans::LoanLine lent = comes ? *comes : loans::LoanLine();
  const auto once = [comes](std::string_view name) { return comes ? name : std::string_view(); };
  const auto put = [&](std::initializer_list<Field> fields) {
    comes ? postRow("jxc_khjhsptmp", fields) : updateRow("jxc_khjhsptmp", line.id, fields);
  };
  put({{once("g_sn"), line.goods},
       {once("jh_flag"), u"还货"},
       {once("jh_sl"), lent.lent},
       {once("jh_xssl"), 0},
       {once("jh_dj"), line.cost},
       {once("jh_yj2"), lent.rentUsed},
       {once("gl_djh2"), lent.loan},
       {once("id2"), line.loanLine},
       {once("a_name"), session().a_name},
       {"jh_sl2", line.quantity},
       {"jh_hhsl", line.quantity},
       {"jh_ts", line.days},
       {"jh_zj", line.rent},
       {"jh_yj", line.available},
       {"jh_zzj", line.rentTotal},
       {"jh_thyj", line.refund},
       {"jh_kmmc", line.account},
       {"jh_zje", line.cost * line.quantity}});
}

/// Open lines of the loan that the return has not yet, or the oldest of them, with all that is open of each. How many.
int stageMissing(const ReturnDraft& draft, const RowSet& open, bool onlyOldest) {
  std::set<std::int64_t> there;
  for (const ReturnLine& each : staged())
    there.insert(each.loanLine);
  const Lent all = loans::linesOf(draft.loan);
  int added = 0;
  for (const Row row : open) {
    const auto* lent = lineIn(all, row.integer("id"));
    if (!lent || lent->open() <= 0 || there.contains(lent->id)) continue;  // another station may have been faster
    ReturnLine back{.loanLine = lent->id,
                    .goods = lent->goods,
                    .account = lent->account,
                    .cost = lent->cost,
                    .available = lent->held(),
                    .rent = lent->rent,
                    .days = lent->daysUntil(draft.date)};
    back.setQuantity(lent->open());
    write(back, lent);
    ++added;
    if (onlyOldest) break;
  }
  return added;
}

/// What a line cannot be, whatever stands in the tables by now.
Refusal impossible(const ReturnLine& line) {
  if (line.quantity <= 0) return {u"数量不能为0或负数，重新输入！"_qs, Subject::Quantity};
  if (line.quantity > line.open + 5e-7)
    return {u"还货数量不能超过："_qs + QString::number(line.open, 'g', 15), Subject::Quantity};
  if (line.days < 1) return {u"租借天数不能小于1！"_qs, Subject::Rent};
  if (const Refusal rent = lending::impossibleRent(std::max(line.rent, line.rentTotal)); rent) return rent;
  if (const Refusal rent = lending::impossibleRent(std::min(line.rent, line.rentTotal)); rent) return rent;
  if (const Refusal deposit = lending::impossibleDeposit(line.available); deposit) return deposit;
  if (line.available > line.held + 5e-7) return {u"可用押金不能大于剩余押金，重新输入！"_qs, Subject::Deposit};
  // Rent is taken from the deposit first: collected in cash beside it, it would be paid twice.
  if (line.available < std::min(line.held, line.rentTotal) - 5e-7)
    return {u"租金先从押金中扣除：可用押金不能小于"_qs + numberText(std::min(line.held, line.rentTotal)) + u'！',
            Subject::Deposit};
  // What the rent has used of a deposit, or what went back of it once, cannot go back.
  return {line.refund < 0 || line.refund > refundOf(line.available, line.rentTotal) + 5e-7,
          u"退回押金不能大于可用押金减去租金合计！"_qs, Subject::Refund};
}

/// What stands against the return as it was put together: loans change at other stations, too.
Refusal standsAgainst(const ReturnDraft& draft, const std::vector<ReturnLine>& lines) {
  const Lent all = loans::linesOf(draft.loan);
  for (const ReturnLine& line : lines) {
    const auto* lent = lineIn(all, line.loanLine);
    if (!lent || lent->partner != draft.partner || lent->warehouse != draft.warehouse)
      return changedMeanwhile(draft.loan);
    if (draft.date.left(10) < lent->date) return {u"还货日期不能早于借货日期："_qs + lent->date + u'！', Subject::Date};
    if (const Refusal bad = impossible(line); bad)
      return {u"商品【"_qs + line.goods + u"】\r\n\r\n"_qs + bad.text, Subject::Lines, line.goods};
    if (line.rentTotal != 0 || line.refund != 0)
      if (const Refusal gone = lending::accountGone(line.account, line.goods); gone) return gone;
  }
  return {};
}

/// The lines under the number, and what goods cost today: they come back at that.
void writeLines(const ReturnDraft& draft, const QString& number) {
  execSql(
      "insert into jxc_khjhsp (gl_djh,g_sn,jh_dj,jh_zje,jh_sl,jh_hhsl,jh_xssl,jh_sl2,jh_yj,jh_yj2,jh_zj,jh_ts,jh_zzj,"
      "jh_thyj,gl_djh2,jh_flag,jh_kmmc,id2,a_name) select "
      "?,g_sn,jh_dj,jh_zje,jh_sl,jh_hhsl,0,jh_sl2,jh_yj,jh_zzj,jh_zj,"
      "jh_ts,jh_zzj,jh_thyj,gl_djh2,jh_flag,jh_kmmc,id2,a_name from jxc_khjhsptmp where a_name=? order by id",
      number, session().a_name);
  for (const Row row : openSelect("select distinct g_sn from jxc_khjhsp where gl_djh=?", number)) {
    const QString goods = row.text("g_sn");
    const double cost = getGoodsCost(goods, draft.warehouse, draft.date);
    execSql("update jxc_khjhsp set jh_dj=?,jh_zje=jh_hhsl*? where g_sn=? and gl_djh=? and a_name=?", cost, cost, goods,
            number, session().a_name);
  }
}

}  // namespace loan_return_detail

void ReturnLine::setQuantity(double pieces) {
  quantity = roundedQuantity(pieces);
  rentTotal = lending::rounded(quantity * days * rent);
  refund = loan_return_detail::refundOf(available, rentTotal);
}

double ReturnLine::stays() const {
  if (quantity < open - 5e-7) return 0;
  return lending::rounded(std::max(0.0, held - rentTotal - refund));
}
double ReturnLine::toCollect() const {
  return lending::rounded(std::max(0.0, rentTotal - available));
}

std::optional<ReturnDraft> open(const QString& loan, std::int64_t line, Prompt& prompt) {
  const RowSet open = openSelect(partial::openLines(partial::lending, {.source = loan, .id = line}));
  const RowSet heads =
      openSelect("select * from jxc_khjh where jh_status>0 and jh_flag='jh' and gl_djh=? order by id", loan);
  if (refused(
          {{!hasRight(families::loanReturn.make), u"您没有客户借货管理的权限！"_qs},
           {heads.isEmpty(), changedMeanwhile(loan)},
           {open.isEmpty(), line != 0 ? u"该商品已经还货结束，无需还货！"_qs : u"该单据已经还货结束，无需还货！"_qs}},
          prompt))
    return {};
  const Row head = heads.front();
  ReturnDraft draft;
  draft.loan = loan;
  draft.loanDate = head.text("jh_rq").left(10);
  draft.partner = head.text("kh_sn");
  draft.warehouse = head.text("ck_sn");
  draft.salesperson = head.text("u_sn");
  draft.date = clock::today();
  draft.number = newDocumentNumber(families::loanReturn, draft.date);

  Transaction transaction(accountDb());
  discard();
  const int lines = loan_return_detail::stageMissing(draft, open, false);
  transaction.commit();
  if (refused({{lines == 0, changedMeanwhile(loan)}}, prompt)) return {};
  return draft;
}

std::optional<int> addMissing(const ReturnDraft& draft, const QString& barcode, Prompt& prompt) {
  const QString code = sanitizeText(barcode.trimmed());
  const RowSet open = openSelect(partial::openLines(partial::lending, {.source = draft.loan, .barcode = code}));
  if (refused({{open.isEmpty(),
                code.isEmpty() ? changedMeanwhile(draft.loan) : u"该借货单中没有此条码的未还商品，请检查！"_qs}},
              prompt))
    return {};
  Transaction transaction(accountDb());
  const int added = loan_return_detail::stageMissing(draft, open, !code.isEmpty());
  transaction.commit();
  return added;
}

Sql lines() {
  return Sql(
      "select a.*,b.g_name,b.g_jm,b.gg_name,b.color_name,b.dw_name,b.g_sptm,iif(a.jh_zzj>a.jh_yj,a.jh_zzj-a.jh_yj,0) "
      "as bsje from jxc_khjhsptmp a left join jxc_goods b on a.g_sn=b.g_sn where a.a_name=? order by a.id",
      session().a_name);
}

std::optional<ReturnLine> line(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_khjhsptmp where id=? and a_name=?", id, session().a_name);
  if (rows.isEmpty()) return {};
  return loan_return_detail::read(rows.front(), loans::linesOf(rows.front().text("gl_djh2")));
}

bool changeLine(const ReturnLine& changed, Prompt& prompt) {
  const auto before = line(changed.id);
  if (refused({{!before, changedMeanwhile({})}}, prompt)) return false;
  ReturnLine now = changed;
  now.open = before->open;
  now.held = before->held;
  if (isRefused(loan_return_detail::impossible(now), prompt)) return false;
  loan_return_detail::write(now);
  return true;
}

void removeLine(std::int64_t id) {
  execSql("delete from jxc_khjhsptmp where id=? and a_name=?", id, session().a_name);
}

void redate(ReturnDraft& draft, const QString& date) {
  draft.date = date;
  draft.number = newDocumentNumber(families::loanReturn, date);
  Transaction transaction(accountDb());
  const loan_return_detail::Lent all = loans::linesOf(draft.loan);
  for (ReturnLine& each : loan_return_detail::staged()) {
    const auto* lent = loan_return_detail::lineIn(all, each.loanLine);
    if (!lent) continue;
    each.days = lent->daysUntil(date);
    each.setQuantity(each.quantity);
    loan_return_detail::write(each);
  }
  transaction.commit();
}

void discard() {
  execSql("delete from jxc_khjhsptmp where a_name=?", session().a_name);
}

Money money() {
  Money sum;
  for (const ReturnLine& each : loan_return_detail::staged()) {
    sum.rent += each.rentTotal;
    sum.refund += each.refund;
    sum.toCollect += each.toCollect();
    sum.stays += each.stays();
  }
  return sum;
}

std::optional<QString> save(const ReturnDraft& draft, Prompt& prompt) {
  using namespace loan_return_detail;
  const DocumentFamily& f = families::loanReturn;
  const auto before = staged();
  if (refused({{before.empty(), u"单据表中没有数据，不能保存！"_qs, Subject::Lines},
               {draft.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
               auditGate(draft.number, draft.date),
               warehouseGone(draft.warehouse),
               standsAgainst(draft, before)},
              prompt) ||
      !prompt.ask(u"数据保存后不能再修改，是否确认保存！"_qs))
    return {};

  Refusal changed;
  QString number;
  onDocument(draft.number, u"保存", [&] {
    Transaction transaction(accountDb());
    const auto now = staged();
    changed = now.empty() ? Refusal(changedMeanwhile(draft.loan)) : standsAgainst(draft, now);
    if (changed) return;
    number = nextDocNoOn(f.lines, f.number, words(f.prefix), draft.date);
    writeLines(draft, number);
    const std::int64_t head = insertWaitingHead(f, draft, number);
    updateRow(f.head, head, {{f.partner, draft.partner}, {"jh_flag", u"hh"}});
    if (auditInside(f, number) != AuditOutcome::Audited) throw std::runtime_error("还货单没有审核。");
    updateRow(f.head, head, {{f.checkDate, draft.date}});
    discard();
    transaction.commit();
  });
  if (isRefused(changed, prompt)) return {};
  return number;
}

}  // namespace jxc::loan_return
