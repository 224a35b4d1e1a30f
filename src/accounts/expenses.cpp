#include "accounts/expenses.h"

#include "accounts/cash_ledger.h"
#include "core/clock.h"
#include "core/deletion.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "core/unusual.h"
#include "engine/number_text.h"
#include "stock/document_family.h"

#include <array>

namespace jxc::expenses {
namespace expenses_detail {

struct SideWords {
  const char16_t* word;    // fy_sc
  const char16_t* prefix;  // of its numbers
  const char16_t* flag;    // fy_flag
  const char16_t* cash;    // xj_dlx
  const char16_t* choose;  // told without a type
  double sign;             // of the stored amount
};
constexpr std::array kSides{SideWords{u"费用", u"FY", u"1", u"费用付款", u"请选择费用类型！", -1},
                            SideWords{u"收入", u"SR", u"2", u"收入收款", u"请选择收入类型！", 1}};

const SideWords& wordsOf(Side side) {
  return kSides[static_cast<std::size_t>(side)];
}

/// What stands against changing a line here: the document that brought it, by name.
Refusal foreign(const Row& line) {
  const QString number = line.text("gl_djh");
  if (isOwn(number)) return {};
  const DocumentFamily* const family = findFamily(number);
  const QString document = family ? words(family->name) + u' ' + number : number;
  if (document.isEmpty()) return {u"该信息不是在这里登记的，不能修改、删除或取消审核！"_qs};
  return {u"该信息由单据产生：\r\n\r\n"_qs + document + u"\r\n\r\n不能在这里修改、删除或取消审核，请处理该单据。"_qs};
}

RowSet lineOf(std::int64_t id) {
  return openSelect("select * from jxc_yyfy where id=?", id);
}

bool isGone(std::string_view table, std::string_view key, const QString& value) {
  return lookupValue(compose("select top 1 {} from {} where {}=?", {key, table, key}), value).isEmpty();
}

/// What the operator has left out, in the order in which he meets it.
Refusal missing(const Draft& draft) {
  if (draft.amount == 0) return {u"金额必须填写！"_qs, Subject::Amount};
  if (draft.type.isEmpty()) return {words(wordsOf(draft.side).choose), Subject::ExpenseType};
  if (draft.employee.isEmpty()) return {u"请选择经办人！"_qs, Subject::Employee};
  if (draft.account.isEmpty()) return {u"请选择账户！"_qs, Subject::Account};
  return {draft.department.isEmpty(), u"请选择部门！"_qs, Subject::Department};
}

/// An account may have been deleted since the line was entered: its money would go nowhere.
Refusal accountGone(const QString& account) {
  return {account != kNotBooked && isGone("jxc_yhzh", "yh_name", account),
          u"账户“"_qs + account + u"”已被删除或改名，请重新选择！"_qs, Subject::Account};
}

/// What another station has locked, renamed or deleted while the form stood open.
Refusal overtaken(const Draft& draft) {
  if (Refusal locked = lockedOn(draft.date)) return locked;
  const auto says = [](const QString& what) { return what + u"已被删除或改名，请重新选择！"_qs; };
  const QString type = lookupValue("select top 1 fy_lx from jxc_fylx where fy_lx=? and fy_fx=?", draft.type,
                                   static_cast<int>(draft.side == Side::Income));
  if (type.isEmpty()) return {says(u"类型“"_qs + draft.type + u'”'), Subject::ExpenseType};
  if (isGone("jxc_user", "u_sn", draft.employee)) return {says(u"经办人"_qs), Subject::Employee};
  if (isGone("jxc_dept", "de_sn", draft.department)) return {says(u"部门"_qs), Subject::Department};
  return accountGone(draft.account);
}

void logLine(const QString& what, const QString& number, const QString& type, double stored) {
  writeLog(what + number + u"，类型："_qs + type + u"，金额："_qs + numberText(stored));
}

/// The cash line of an audited expense, and the balances behind it. The department stands where others have a partner.
void postCash(const Row& line) {
  const QString account = line.text("fy_kmmc");
  if (account == kNotBooked) return;
  insertRow("jxc_xjyh", {{"gl_djh", line.text("gl_djh")},
                         {"xj_rq", line.text("fy_rq")},
                         {"xj_chk", u"1"},
                         {"xj_dlx", wordsOf(line.text("fy_flag") == u"1" ? Side::Expense : Side::Income).cash},
                         {"u_name", line.text("u_name")},
                         {"xj_je", line.number("fy_je")},
                         {"xj_ljje", 0.0},
                         {"xj_kmmc", account},
                         {"ghs_name", line.text("de_name")},
                         {"xj_note", line.text("fy_note")},
                         {"a_name", session().a_name}});
  recomputeXjyh(account, line.text("fy_rq"));
}

void removeCash(const Row& line) {
  const QString account = line.text("fy_kmmc");
  if (account == kNotBooked) return;
  execSql("delete from jxc_xjyh where gl_djh=?", line.text("gl_djh"));
  recomputeXjyh(account, line.text("fy_rq"));
}

/// With what its keys stand for; a row whose employee or department is gone is not left out.
Sql lines() {
  return {
      "select a.*,b.u_name,c.de_name from (jxc_yyfy a left outer join jxc_user b on a.u_sn=b.u_sn) "
      "left outer join jxc_dept c on a.de_sn=c.de_sn"};
}

/// Number of lines that were audited; a refusal when one of them cannot be.
std::size_t auditInside(const QString& number, Refusal& refusal) {
  std::size_t audited = 0;
  for (const Row line : openSelect(lines().add(" where a.gl_djh=? and a.fy_chk='0' order by a.id", number))) {
    refusal = lockedOn(line.text("fy_rq"));
    if (!refusal) refusal = accountGone(line.text("fy_kmmc"));
    if (refusal) return audited;
    updateRow("jxc_yyfy", line.integer("id"), {{"fy_chk", u"1"}});
    postCash(line);
    logLine(u"审核"_qs + line.text("fy_sc"), number, line.text("fy_lx"), line.number("fy_je"));
    ++audited;
  }
  return audited;
}

QString insertNew(const Draft& draft, Refusal& refusal) {
  const SideWords& side = wordsOf(draft.side);
  const QString number = nextDocNoOn("jxc_yyfy", "gl_djh", words(side.prefix), draft.date);
  const double stored = side.sign * draft.amount;
  insertRow("jxc_yyfy", {{"gl_djh", number},
                         {"fy_rq", draft.date},
                         {"fy_lx", draft.type},
                         {"fy_je", stored},
                         {"fy_flag", side.flag},
                         {"u_sn", draft.employee},
                         {"de_sn", draft.department},
                         {"fy_kmmc", draft.account},
                         {"fy_chk", u"0"},
                         {"fy_note", draft.note},
                         {"a_name", session().a_name},
                         {"fy_sc", side.word}});
  logLine(u"增加"_qs + words(side.word), number, draft.type, stored);
  if (strIsTrue(session().cs_shdj)) auditInside(number, refusal);
  return number;
}

/// Nothing: another station has audited or deleted it since it was opened.
std::optional<QString> change(const Draft& draft, const Row& line) {
  const SideWords& side = wordsOf(draft.side);
  const QString number = line.text("gl_djh");
  updateRow("jxc_yyfy", draft.id,
            {{"fy_rq", draft.date},
             {"fy_lx", draft.type},
             {"fy_je", side.sign * draft.amount},
             {"fy_flag", side.flag},
             {"u_sn", draft.employee},
             {"de_sn", draft.department},
             {"fy_kmmc", draft.account},
             {"fy_note", draft.note},
             {"a_name", session().a_name},
             {"fy_sc", side.word}});
  logLine(u"修改"_qs + words(side.word), number, draft.type, side.sign * draft.amount);
  return number;
}

Refusal audited(const Row& line, const char16_t* deed) {
  return {line.text("fy_chk") != u"0", u"该单据已审核，不能"_qs + words(deed) + u"！"_qs};
}

/// What stands against changing a waiting line: that it is gone, not ours, or audited by now.
Refusal unchangeable(const RowSet& rows) {
  if (rows.isEmpty()) return {u"该记录已被其他操作员删除，请刷新列表！"_qs};
  if (Refusal refusal = foreign(rows.front())) return refusal;
  return audited(rows.front(), u"修改");
}

/// Stands for the rows without a department, or type, when a sum of them is followed.
const QString kNone = QStringLiteral("-");

void addChoiceOrNone(Filter& filter, std::string_view column, const QString& chosen) {
  if (chosen == kNone)
    filter.add(compose("({}='' or {} is null)", {column, column}));
  else
    addChoice(filter, column, chosen);
}

Filter conditions(const Criteria& criteria, const char* state) {
  Filter filter;
  filter.add("a.fy_chk=?", state);
  addPeriod(filter, criteria, "a.fy_rq");
  addChoiceOrNone(filter, "a.fy_lx", criteria.kind);
  addChoiceOrNone(filter, "a.de_sn", criteria.partner);
  if (!hasRight(kSeesCost)) filter.add(kTellsNoCost);
  return filter;
}

Filter auditedConditions(const Criteria& criteria) {
  Filter filter = conditions(criteria, "1");
  filter.add("(a.fy_flag='1' or a.fy_flag='2')");
  return filter;
}

}  // namespace expenses_detail

QString wordOf(Side side) {
  return words(expenses_detail::wordsOf(side).word);
}

Draft newDraft(Side side) {
  return {
      .side = side, .date = clock::today(), .type = {}, .employee = {}, .department = {}, .account = {}, .note = {}};
}

bool isOwn(const QString& number) {
  return number.startsWith(u"FY") || number.startsWith(u"SR");
}

Draft draftOf(const Row& line) {
  const Side side = line.text("fy_flag") == u"2" ? Side::Income : Side::Expense;
  return {.id = line.integer("id"),
          .side = side,
          .date = line.text("fy_rq"),
          .type = line.text("fy_lx"),
          .amount = expenses_detail::wordsOf(side).sign * line.number("fy_je"),
          .employee = line.text("u_sn"),
          .department = line.text("de_sn"),
          .account = line.text("fy_kmmc"),
          .note = line.text("fy_note")};
}

std::optional<Draft> openForChange(std::int64_t id, Prompt& prompt) {
  using namespace expenses_detail;
  const RowSet rows = lineOf(id);
  if (isRefused(unchangeable(rows), prompt)) return {};
  return draftOf(rows.front());
}

std::optional<Draft> copyForToday(std::int64_t id, Prompt& prompt) {
  using namespace expenses_detail;
  const RowSet rows = lineOf(id);
  if (rows.isEmpty() || isRefused(foreign(rows.front()), prompt)) return {};
  Draft draft = draftOf(rows.front());
  draft.id = 0;
  draft.date = clock::today();
  return draft;
}

std::optional<QString> save(const Draft& typed, Prompt& prompt) {
  using namespace expenses_detail;
  Draft draft = typed;
  draft.note = sanitizeText(typed.note.trimmed()).left(200);
  draft.amount = toSixDecimals(typed.amount);
  if (refused({missing(draft), lockedOn(draft.date)}, prompt)) return {};
  const QString newest = lookupValue("select max(fy_rq) from jxc_yyfy where fy_rq<=?", clock::today() + u'~');
  const FiguresOfDocument figures{
      .yuan = draft.amount, .date = draft.date, .newest = newest, .lastEntry = lookupValue(lastLogEntry)};
  if (!confirmUnusual(figures, prompt)) return {};
  Refusal refusal;
  {
    Transaction transaction(accountDb());
    refusal = overtaken(draft);
    const RowSet rows = draft.id == 0 ? RowSet() : lineOf(draft.id);
    if (!refusal && draft.id != 0) refusal = unchangeable(rows);
    if (!refusal) {
      auto number = draft.id == 0 ? insertNew(draft, refusal) : change(draft, rows.front());
      transaction.commit();
      return number;
    }
  }
  isRefused(refusal, prompt);
  return {};
}

bool checkDj(const QString& number, Prompt& prompt) {
  using namespace expenses_detail;
  Refusal refusal;
  {
    Transaction transaction(accountDb());
    const std::size_t audited = auditInside(number, refusal);
    if (!refusal) {
      transaction.commit();
      return audited > 0;
    }
  }
  return !isRefused(refusal, prompt);
}

bool auditOne(const QString& number, Prompt& prompt) {
  return prompt.ask(QStringLiteral("您确定要审核当前信息吗！")) && checkDj(number, prompt);
}

bool auditAll(const RowSet& list, Prompt& prompt, const AuditProgress& progress) {
  ListAudit walk{
      .question = u"您的操作将审核当前列表中所有未审核的单据，确认吗？\r\n\r\n（如需审核某个单据，请按右键！）"_qs,
      .audit = [](const ListedDocument& line, Prompt& told) { return checkDj(line.number, told); },
      .listed = list.rowCount(),
      .progress = progress};
  for (const Row row : list)
    walk.waiting.push_back({.number = row.text("gl_djh"), .id = row.integer("id")});
  return auditEach(walk, prompt).has_value();
}

bool cancel(std::int64_t id, Prompt& prompt) {
  using namespace expenses_detail;
  const RowSet rows = lineOf(id);
  if (rows.isEmpty()) return false;
  const QString day = rows.front().text("fy_rq");
  if (refused({foreign(rows.front()), lockedOn(day, OnDay::Booked)}, prompt)) return false;
  if (!prompt.ask(QStringLiteral("您确定要取消审核当前信息吗！"))) return false;
  Transaction transaction(accountDb());
  const RowSet now = openSelect("select * from jxc_yyfy where id=? and fy_chk='1'", id);
  if (now.isEmpty()) return false;
  const Row line = now.front();
  PeriodLock().demandOpen(line.text("fy_rq"), OnDay::Booked);
  updateRow("jxc_yyfy", id, {{"fy_chk", u"0"}});
  removeCash(line);
  logLine(u"取消审核"_qs + line.text("fy_sc"), line.text("gl_djh"), line.text("fy_lx"), line.number("fy_je"));
  transaction.commit();
  return true;
}

bool remove(std::int64_t id, Prompt& prompt) {
  using namespace expenses_detail;
  return deleteAsking({.table = "jxc_yyfy",
                       .question = QStringLiteral("您确定要删除该信息吗！"),
                       .hindrance = [](const Row& line) -> std::optional<Hindrance> {
                         Refusal refusal = foreign(line);
                         if (!refusal) refusal = audited(line, u"删除");
                         if (!refusal) return {};
                         return Hindrance{refusal.text, {}, {}};
                       },
                       .alsoDelete =
                           [](const Row& line) {
                             logLine(u"删除"_qs + line.text("fy_sc"), line.text("gl_djh"), line.text("fy_lx"),
                                     line.number("fy_je"));
                           }},
                      id, prompt);
}

Sql waitingLines(const Criteria& criteria) {
  using namespace expenses_detail;
  return lines().where(conditions(criteria, "0")).add(" order by a.id");
}

Sql auditedLines(const Criteria& criteria) {
  using namespace expenses_detail;
  Filter filter = auditedConditions(criteria);
  addKey(filter, criteria, {"a.gl_djh", "a.fy_kmmc", "a.fy_note", "b.u_name"});
  return lines().where(filter).add(" order by a.id desc");
}

Sql totals(const Criteria& criteria) {
  using namespace expenses_detail;
  // A type that stands twice in an old set is one.
  return Sql(R"(select b.fy_lx,a.fy_note,b.fyje,c.de_name,b.de_sn,b.fy_lx+'|'+b.de_sn as rowkey
    from ((select x.fy_lx,x.de_sn,sum(x.fy_je) as fyje from (
      select iif(a.fy_lx is null or a.fy_lx='','-',a.fy_lx) as fy_lx,
        iif(a.de_sn is null or a.de_sn='','-',a.de_sn) as de_sn,a.fy_je from jxc_yyfy a)")
      .where(auditedConditions(criteria))
      .add(R"() x group by x.fy_lx,x.de_sn) b
    left outer join (select fy_lx,min(id) as tid,max(fy_note) as fy_note from jxc_fylx group by fy_lx) a
      on b.fy_lx=a.fy_lx) left outer join jxc_dept c on b.de_sn=c.de_sn order by a.tid,b.fy_lx,b.de_sn)");
}

std::vector<ListItem> fillDepartments(const QString& first) {
  return fillKeyedCombo("jxc_dept", "de_name", first, "id", "de_sn");
}

}  // namespace jxc::expenses
