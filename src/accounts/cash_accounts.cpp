#include "accounts/cash_accounts.h"

#include "accounts/cash_ledger.h"
#include "core/clock.h"
#include "core/deletion.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/period_lock.h"
#include "core/refusal.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "stock/document_family.h"

#include <array>

namespace jxc::cash {
namespace cash_accounts_detail {

const QString till = QStringLiteral("现金");
constexpr char kBusiness[] = "select top 1 * from jxc_xjyh where xj_kmmc=? and xj_dlx<>'期初金额' order by id";

/// What names an account beside the heads of documents.
constexpr std::array kRenames{
    "update jxc_xjyh set xj_kmmc=? where xj_kmmc=?",   "update jxc_ysyfk_dj set k_fkfs=? where k_fkfs=?",
    "update jxc_ysyfk set k_fkfs=? where k_fkfs=?",    "update jxc_yyfy set fy_kmmc=? where fy_kmmc=?",
    "update jxc_khjhsp set jh_kmmc=? where jh_kmmc=?",
};

/// Everything that names it: waiting documents would otherwise be posted to one that is no longer there.
void renameEverywhere(const QString& from, const QString& to) {
  for (const char* rename : kRenames)
    execSql(rename, to, from);
  for (const DocumentFamily& family : documentFamilies())
    if (!family.account.empty())
      execSql(compose("update {} set {}=? where {}=?", {family.head, family.account, family.account}), to, from);
}

Refusal refusal(const AccountDraft& draft) {
  if (draft.name.isEmpty()) return {u"账户名称必须填写！"_qs, Subject::Name};
  if (draft.type.isEmpty()) return {u"账户类型必须填写！"_qs, Subject::AccountKind};
  // A blank behind a word tells nobody two accounts apart: the kinds of the first three are stored with one.
  const QString taken = lookupValue("select yh_name from jxc_yhzh where (trim(yh_name)=? or trim(yh_type)=?) and id<>?",
                                    draft.name, draft.type.trimmed(), draft.id);
  return {!taken.isEmpty(), u"账户名称或账户类型不能重复！"_qs,
          taken.trimmed() == draft.name ? Subject::Name : Subject::AccountKind};
}

QString openingNote(const QString& account) {
  return account + QStringLiteral("期初数");
}

/// The first line of an account's ledger; empty: there is none.
QString firstDay(const QString& account) {
  return lookupValue("select min(xj_rq) from jxc_xjyh where xj_kmmc=?", account);
}
QString openingDay(const QString& account) {
  return lookupValue("select top 1 xj_rq from jxc_xjyh where xj_kmmc=? and xj_dlx='期初金额' order by id", account);
}
/// The opening amount of an account stands on its day, and all balances behind it go by it.
Refusal openingLocked(const QString& account) {
  const QString day = openingDay(account);
  return day.isEmpty() ? Refusal() : lockedOn(day, OnDay::Booked);
}

/// What an account began with is in the balance that a closing carried on: another amount would be added to it.
Refusal openingCarried(const QString& account) {
  return {exists("select top 1 id from jxc_xjyh where xj_kmmc=? and xj_dlx=?", account, words(carriedWords)),
          u"该账户已经数据结算，期初金额已结转，不能再修改！"_qs};
}

void insertOpening(const QString& account, double amount) {
  insertRow("jxc_xjyh", {{"xj_rq", PeriodLock().openFrom(clock::today())},
                         {"gl_djh", u""},
                         {"xj_dlx", u"期初金额"},
                         {"xj_je", amount},
                         {"xj_ljje", amount},
                         {"xj_chk", u"1"},
                         {"xj_kmmc", account},
                         {"xj_note", openingNote(account)},
                         {"a_name", session().a_name}});
}

void insertAccount(const AccountDraft& draft) {
  insertRow("jxc_yhzh", {{"yh_sn", nextSerial("jxc_yhzh", "yh_sn")},
                         {"yh_type", draft.type},
                         {"yh_name", draft.name},
                         {"yh_zje", draft.opening},
                         {"yh_note", draft.note}});
  insertOpening(draft.name, draft.opening);
  // The ledger may hold lines of an account of that name, deleted with its row alone by an older release.
  recomputeXjyh(draft.name, PeriodLock().openFrom(QString()));
}

void changeAccount(const AccountDraft& draft, const AccountDraft& before) {
  updateRow("jxc_yhzh", draft.id, {{"yh_type", draft.type}, {"yh_name", draft.name}, {"yh_note", draft.note}});
  if (draft.name != before.name) {
    renameEverywhere(before.name, draft.name);
    execSql("update jxc_xjyh set xj_note=? where xj_kmmc=? and xj_dlx='期初金额' and xj_note=?",
            openingNote(draft.name), draft.name, openingNote(before.name));
  }
  if (draft.opening != before.opening) setOpening(draft.id, draft.opening);
}

}  // namespace cash_accounts_detail

AccountDraft readAccount(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_yhzh where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该记录已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  return {.id = id,
          .name = row.text("yh_name"),
          .type = row.text("yh_type"),
          .note = row.text("yh_note"),
          .opening = row.number("yh_zje")};
}

bool mayChangeAccount(std::int64_t id, Prompt& prompt) {
  using namespace cash_accounts_detail;
  if (readAccount(id).name.trimmed() != till) return true;
  prompt.notice(QStringLiteral("“现金”不能修改！"));
  return false;
}

bool saveAccount(const AccountDraft& typed, Prompt& prompt) {
  using namespace cash_accounts_detail;
  AccountDraft draft = typed;
  // The kind keeps its trailing blank when it has one: kinds of the first three accounts are stored with it.
  draft.name = sanitizeText(typed.name.trimmed()).left(32);
  draft.type = typed.type.trimmed().isEmpty() ? QString() : sanitizeText(typed.type).left(32);
  draft.note = sanitizeText(typed.note.trimmed()).left(200);
  if (draft.id != 0 && !mayChangeAccount(draft.id, prompt)) return false;
  if (isRefused(refusal(draft), prompt)) return false;
  const AccountDraft before = draft.id == 0 ? AccountDraft{} : readAccount(draft.id);
  if (draft.id != 0 && draft.opening != before.opening && !mayChangeOpening(before.name, prompt)) return false;

  Refusal changed;
  {
    Transaction transaction(accountDb());
    changed = refusal(draft);
    if (!changed) {
      if (draft.id == 0)
        insertAccount(draft);
      else
        changeAccount(draft, readAccount(draft.id));
      transaction.commit();
      return true;
    }
  }
  return !isRefused(changed, prompt);
}

bool deleteAccount(std::int64_t id, Prompt& prompt) {
  return deleteAsking(
      {.table = "jxc_yhzh",
       .question = QStringLiteral("您确定要删除该银行账户吗！"),
       .hindrance = [](const Row& row) -> std::optional<Hindrance> {
         const QString name = row.text("yh_name");
         if (name.trimmed() == cash_accounts_detail::till) return Hindrance{u"“现金”不能删除！"_qs, {}, {}};
         const RowSet business = openSelect(cash_accounts_detail::kBusiness, name);
         if (business.isEmpty()) {
           const QString first = cash_accounts_detail::firstDay(name);
           const Refusal locked = first.isEmpty() ? Refusal() : lockedOn(first, OnDay::Booked);
           return locked ? std::optional(Hindrance{locked.text, {}, {}}) : std::nullopt;
         }
         return Hindrance{u"该账户已发生过业务，不能删除！"_qs, rowInWords("jxc_xjyh", business.front()), orRename()};
       },
       .alsoDelete = [](const Row& row) { execSql("delete from jxc_xjyh where xj_kmmc=?", row.text("yh_name")); }},
      id, prompt);
}

bool isAccountUsed(const QString& name) {
  return !openSelect(cash_accounts_detail::kBusiness, name).isEmpty();
}

bool mayChangeOpening(const QString& name, Prompt& prompt) {
  if (isRefused(cash_accounts_detail::openingLocked(name), prompt)) return false;
  if (isRefused(cash_accounts_detail::openingCarried(name), prompt)) return false;
  return !isAccountUsed(name) ||
         prompt.ask(QStringLiteral("该银行账户已有业务发生，\r\n\r\n建立期初帐将会改变该账户的余额，\r\n\r\n是否..."));
}

void setOpening(std::int64_t id, double amount) {
  using namespace cash_accounts_detail;
  Transaction transaction(accountDb());
  const QString name = readAccount(id).name;
  if (const Refusal locked = openingLocked(name)) throw PeriodLocked(locked.text.toStdString());
  if (const Refusal carried = openingCarried(name)) throw DbError(DbError::Kind::Other, carried.text);
  updateRow("jxc_yhzh", id, {{"yh_zje", amount}});
  const RowSet opening =
      openSelect("select top 1 id,xj_rq from jxc_xjyh where xj_kmmc=? and xj_dlx='期初金额' order by id", name);
  if (opening.isEmpty()) {
    insertOpening(name, amount);
    recomputeXjyh(name, openingDay(name));
  } else {
    updateRow("jxc_xjyh", opening.front().integer("id"), {{"xj_je", amount}});
    recomputeXjyh(name, opening.front().text("xj_rq"));
  }
  transaction.commit();
}

Sql accountList() {
  return {"select * from jxc_yhzh order by id"};
}

std::vector<ListItem> fillAccounts(const QString& first) {
  return fillKeyedCombo("jxc_yhzh", "yh_name", first, "id", "yh_name");
}

}  // namespace jxc::cash
