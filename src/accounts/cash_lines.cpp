#include "accounts/cash_lines.h"

#include "accounts/cash_ledger.h"
#include "core/clock.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "engine/waiting.h"

#include <array>

namespace jxc::cash {
namespace cash_lines_detail {

struct MovementWords {
  Movement movement;
  const char16_t* prefix;
  const char16_t* kind;  // xj_dlx
};
constexpr std::array kMovements{
    MovementWords{Movement::In, u"XJ", u"现金银行收款"},
    MovementWords{Movement::Out, u"XC", u"现金银行付款"},
    MovementWords{Movement::Transfer, u"XZ", u"现金银行转账"},
};

const MovementWords& wordsOf(Movement movement) {
  return kMovements[static_cast<std::size_t>(movement)];
}

const MovementWords* movementOf(const QString& number) {
  for (const auto& each : kMovements)
    if (number.startsWith(words(each.prefix))) return &each;
  return nullptr;
}

/// What stands against a draft, in the order in which the operator meets it. A line that waits behind the lock may
/// come out of it: only the new day counts.
Refusal refusal(const LineDraft& draft) {
  if (const Refusal locked = lockedOn(draft.date)) return locked;
  const Refusal employeeMissing{draft.employee.isEmpty(), u"请选择经办人！"_qs, Subject::Employee};
  if (draft.movement != Movement::Transfer) {
    if (draft.amount == 0) return {u"金额必须填写！"_qs, Subject::Amount};
    return employeeMissing;
  }
  if (draft.account == draft.target) return {u"出款、入款不能为同一个账户！"_qs, Subject::AccountInto};
  if (draft.amount <= 0) return {u"金额必须大于0！"_qs, Subject::Amount};
  if (employeeMissing) return employeeMissing;
  return {draft.amount > xjyhBalanceNow(draft.account), u"转出的金额不能大于出款账户中的金额！"_qs, Subject::Amount};
}

void insertLine(const LineDraft& draft, const QString& number, const QString& account, double amount) {
  insertRow("jxc_xjyh", {{"gl_djh", number},
                         {"xj_rq", draft.date},
                         {"xj_chk", u"0"},
                         {"xj_dlx", wordsOf(draft.movement).kind},
                         {"u_name", draft.employee},
                         {"xj_je", amount},
                         {"xj_ljje", 0.0},
                         {"xj_kmmc", account},
                         {"xj_note", sanitizeText(draft.note.trimmed()).left(200)},
                         {"a_name", session().a_name}});
}

QString insertNew(const LineDraft& draft) {
  const QString number = nextDocNoOn("jxc_xjyh", "gl_djh", words(wordsOf(draft.movement).prefix), draft.date);
  const bool leaves = draft.movement != Movement::In;
  insertLine(draft, number, draft.account, leaves ? -draft.amount : draft.amount);
  if (draft.movement == Movement::Transfer) insertLine(draft, number, draft.target, draft.amount);
  if (strIsTrue(session().cs_shdj)) checkDj(number);
  return number;
}

/// The row of a line as the database has it now; empty when it is gone.
RowSet lineOf(std::int64_t id) {
  return openSelect("select * from jxc_xjyh where id=?", id);
}

Refusal waitingLocked(const QString& number) {
  const RowSet rows = openSelect("select top 1 xj_rq from jxc_xjyh where gl_djh=? and xj_chk='0' order by id", number);
  return rows.isEmpty() ? Refusal() : lockedOn(rows.text(0, 0));
}

std::optional<QString> change(const LineDraft& draft) {
  const RowSet rows = lineOf(draft.id);
  if (rows.isEmpty() || rows.front().text("xj_chk") != u"0") return {};
  updateRow("jxc_xjyh", draft.id,
            {{"xj_rq", draft.date},
             {"u_name", draft.employee},
             {"xj_je", draft.movement == Movement::Out ? -draft.amount : draft.amount},
             {"xj_kmmc", draft.account},
             {"xj_note", sanitizeText(draft.note.trimmed()).left(200)}});
  return rows.front().text("gl_djh");
}

Filter conditions(const Criteria& criteria, const char* state) {
  Filter filter;
  filter.add("xj_chk=?", state);
  addPeriod(filter, criteria, "xj_rq");
  addChoice(filter, "xj_kmmc", criteria.account);
  addKey(filter, criteria, {"gl_djh", "xj_dlx", "ghs_name", "xj_note"});
  return filter;
}

}  // namespace cash_lines_detail

LineDraft newLine(Movement movement) {
  return {.movement = movement, .date = clock::today(), .account = {}, .target = {}, .employee = {}, .note = {}};
}

std::optional<LineDraft> openLine(std::int64_t id, Prompt& prompt) {
  using namespace cash_lines_detail;
  const RowSet rows = lineOf(id);
  if (rows.isEmpty() || rows.front().text("xj_chk") != u"0") return {};
  const Row row = rows.front();
  const MovementWords* kind = movementOf(row.text("gl_djh"));
  if (!kind || kind->movement == Movement::Transfer) {
    prompt.notice(QStringLiteral("只能修改出款和入款信息！"));
    return {};
  }
  const double amount = row.number("xj_je");
  return LineDraft{.id = id,
                   .movement = kind->movement,
                   .date = row.text("xj_rq"),
                   .account = row.text("xj_kmmc"),
                   .target = {},
                   .amount = kind->movement == Movement::Out ? -amount : amount,
                   .employee = row.text("u_name"),
                   .note = row.text("xj_note")};
}

std::optional<QString> saveLine(const LineDraft& draft, Prompt& prompt) {
  using namespace cash_lines_detail;
  if (isRefused(refusal(draft), prompt)) return {};
  const QString newest = lookupValue("select max(xj_rq) from jxc_xjyh where xj_rq<=?", clock::today() + u'~');
  const FiguresOfDocument figures{
      .yuan = draft.amount, .date = draft.date, .newest = newest, .lastEntry = lookupValue(lastLogEntry)};
  if (!confirmUnusual(figures, prompt)) return {};
  Refusal changed;
  {
    Transaction transaction(accountDb());
    // Money may have left the account at another station while the form stood open.
    changed = refusal(draft);
    if (!changed) {
      const auto number = draft.id == 0 ? insertNew(draft) : change(draft);
      transaction.commit();
      return number;
    }
  }
  isRefused(changed, prompt);
  return {};
}

bool checkDj(const QString& number) {
  using namespace cash_lines_detail;
  Transaction transaction(accountDb());
  const PeriodLock lock;
  const RowSet rows = openSelect("select * from jxc_xjyh where gl_djh=? and xj_chk='0'", number);
  for (const Row row : rows) {
    lock.demandOpen(row.text("xj_rq"));
    updateRow("jxc_xjyh", row.integer("id"), {{"xj_chk", u"1"}});
    recomputeXjyh(row.text("xj_kmmc"), row.text("xj_rq"));
  }
  transaction.commit();
  return !rows.isEmpty();
}

bool auditLine(const QString& number, Prompt& prompt) {
  return !isRefused(cash_lines_detail::waitingLocked(number), prompt) &&
         prompt.ask(QStringLiteral("您确定要审核当前信息吗！")) && checkDj(number);
}

bool cancelLine(std::int64_t id, Prompt& prompt) {
  using namespace cash_lines_detail;
  const RowSet rows = lineOf(id);
  if (rows.isEmpty()) return false;
  const Row line = rows.front();
  const QString number = line.text("gl_djh");
  if (!movementOf(number)) {
    prompt.notice(QStringLiteral("只能取消审核出款、入款和转账信息！"));
    return false;
  }
  const QString date = line.text("xj_rq");  // of an audited line it stays
  if (isRefused(lockedOn(date, OnDay::Booked), prompt) || !prompt.ask(QStringLiteral("您确定要取消审核当前信息吗！")))
    return false;

  Transaction transaction(accountDb());
  PeriodLock().demandOpen(date, OnDay::Booked);
  if (execSql("update jxc_xjyh set xj_chk='0' where gl_djh=? and xj_chk='1'", number) == 0) return false;
  // The account that the operator stands on. The other one of a transfer keeps what it showed: whoever cancels a
  // transfer corrects and audits it again, which writes both, or presses 重新计算.
  recomputeXjyh(line.text("xj_kmmc"), date);
  transaction.commit();
  return true;
}

bool deleteLine(const QString& number, Prompt& prompt) {
  if (!prompt.ask(QStringLiteral("您确定要删除该信息吗！"))) return false;
  Transaction transaction(accountDb());
  const bool audited = !lookupValue("select top 1 id from jxc_xjyh where gl_djh=? and xj_chk<>'0'", number).isEmpty();
  if (audited || number.isEmpty()) return false;
  const bool done = execSql("delete from jxc_xjyh where gl_djh=?", number) > 0;
  transaction.commit();
  return done;
}

Sql waitingLines(const Criteria& criteria) {
  return Sql("select * from jxc_xjyh").where(cash_lines_detail::conditions(criteria, "0")).add(" order by id desc");
}

Sql auditedLines(const Criteria& criteria) {
  return Sql("select * from jxc_xjyh")
      .where(cash_lines_detail::conditions(criteria, "1"))
      .add(" order by xj_kmmc,xj_rq,id");
}

Sql accountTotals(const Criteria& criteria) {
  Filter untilThen;  // the balance at the end of the period stands in the account's last line up to it
  untilThen.add("xj_chk='1'");
  addPeriod(untilThen, {.to = criteria.to}, "xj_rq");
  return Sql("select m.xj_kmmc,m.sfje,n.ljje from (select xj_kmmc,sum(xj_je) as sfje from jxc_xjyh")
      .where(cash_lines_detail::conditions(criteria, "1"))
      .add(R"( group by xj_kmmc) m left outer join
    (select xj_kmmc,xj_ljje as ljje from jxc_xjyh where xj_chk='1' and id in
      (select max(x.id) as rowid from jxc_xjyh x,
        (select max(xj_rq) as kdrq,xj_kmmc from jxc_xjyh)")
      .where(untilThen)
      .add(R"( group by xj_kmmc) y
       where x.xj_chk='1' and x.xj_kmmc=y.xj_kmmc and x.xj_rq=y.kdrq group by x.xj_kmmc)) n
    on m.xj_kmmc=n.xj_kmmc order by m.xj_kmmc)");
}

bool recomputeAccounts(const QString& account, const QString& from, Prompt& prompt) {
  const LongWork longWork;
  using namespace cash_lines_detail;
  const QString shown = account.isEmpty() ? QStringLiteral("全部账户") : account;
  if (!prompt.ask(u"当前账户："_qs + shown + u"，开始计算日期："_qs + from +
                  u"\r\n\r\n重新计算可能会修改期末金额，\r\n\r\n并且不可恢复。现在是否重新计算？"_qs))
    return false;
  {
    Transaction transaction(accountDb());
    const QString first = PeriodLock().openFrom(from);  // what is locked stays as it is
    if (!account.isEmpty()) {
      recomputeXjyh(account, first);
    } else {
      for (const Row row : openSelect("select * from jxc_yhzh order by id"))
        recomputeXjyh(row.text("yh_name"), first);
    }
    transaction.commit();
  }
  prompt.notice(QStringLiteral("重新计算完成！"));
  return true;
}

}  // namespace jxc::cash
