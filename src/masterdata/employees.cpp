#include "masterdata/employees.h"

#include "core/deletion.h"
#include "core/letter_search.h"
#include "core/log.h"
#include "core/mentions.h"
#include "core/numbers.h"
#include "core/pinyin.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

#include <array>

namespace jxc {
namespace employees_detail {

std::optional<Hindrance> hindrance(const Row& row) {
  static constexpr KeyColumn byName[] = {{"jxc_goodslist", "u_name"}, {"jxc_zcmx", "u_name"}, {"jxc_xjyh", "u_name"}};
  static constexpr KeyColumn byNumber[] = {{"jxc_ysyfk", "u_sn"}, {"jxc_yyfy", "u_sn"}};
  const QString number = row.text("u_sn");
  if (number == QLatin1String("100001")) return Hindrance{u"系统内置员工，不能删除！"_qs, {}, orRename()};
  QString holder = firstMention(byName, row.text("u_name"));
  if (holder.isEmpty()) holder = firstMention(byNumber, number);
  if (!holder.isEmpty()) return Hindrance{u"该员工已发生过业务，不能删除！"_qs, holder, orDisable()};
  // A document that waits would be on no list without him. Diaries may go on without.
  holder = firstMentionAnywhere(number, {"u_sn"}, {"jxc_user", "jxc_ywyrz", "jxc_khlx", "jxc_ghslx"});
  if (holder.isEmpty()) return {};
  return Hindrance{u"该员工正在使用，不能删除！"_qs, holder, orDisable()};
}

void renameInHistory(const QString& before, const QString& now) {
  static constexpr std::array copies{
      "update jxc_goodslist set u_name=? where u_name=?", "update jxc_xjyh set u_name=? where u_name=?",
      "update jxc_posxsd set pos_ygs=? where pos_ygs=?",  "update jxc_posxsd set pos_jgy=? where pos_jgy=?",
      "update jxc_posxsd set pos_xsy=? where pos_xsy=?",  "update jxc_zcmx set u_name=? where u_name=?",
  };
  for (const char* sql : copies)
    execSql(sql, now, before);

  // Customers hold their bound employees as "name,name,": replace whole entries only.
  const QString entry = before + QLatin1Char(',');
  for (const Row row : openSelect("select id,kh_uname from jxc_khxx where kh_uname like ?",
                                  QStringLiteral("%") + entry + QStringLiteral("%"))) {
    execSql("update jxc_khxx set kh_uname=? where id=?", replaceListEntry(row.text("kh_uname"), before, now),
            row.integer("id"));
  }
}

bool anyCommissionSet() {
  return exists("select id from jxc_goods where g_ygtc<>0 or g_jgtc<>0 or g_xsytc<>0");
}

}  // namespace employees_detail

EmployeeDraft readEmployee(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_user where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该员工已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  EmployeeDraft draft;
  draft.id = id;
  draft.name = row.text("u_name");
  draft.duty = row.text("u_duty");
  draft.phone = row.text("u_tele");
  draft.address = row.text("u_address");
  draft.note = row.text("u_note");
  draft.commission = row.number("u_tc");
  draft.commissionOn = static_cast<int>(row.integer("u_tcfs"));
  draft.commissionFromProfit = row.number("u_zdlr");
  draft.buys = row.flag("u_cg");
  draft.sells = row.flag("u_xs");
  draft.stocks = row.flag("u_kc");
  draft.optometrist = row.flag("u_yg");
  draft.workshop = row.flag("u_jg");
  draft.posSales = row.flag("u_xsy");
  draft.disabled = row.flag("u_jy");
  draft.warehouseKey = row.text("ck_sn");
  draft.warehouseName = row.text("ck_name");
  return draft;
}

std::optional<QString> saveEmployee(const EmployeeDraft& draft, Prompt& prompt) {
  const QString name = sanitizeKeyword(draft.name.trimmed());
  const bool atTheTill = draft.optometrist || draft.workshop || draft.posSales;
  if (refused({{name.isEmpty(), u"员工姓名必须填写！"_qs, Subject::Name},
               {exists("select u_sn from jxc_user where u_name=? and id<>?", name, draft.id), u"员工姓名不能重复！"_qs,
                Subject::Name},
               {atTheTill && !employees_detail::anyCommissionSet(), u"选择POS销售属性时必须在商品管理设置提成！"_qs,
                Subject::TillDuties}},
              prompt))
    return {};

  Transaction transaction(accountDb());
  QString number;
  std::int64_t id = draft.id;
  const QString former = lookupValue("select u_name from jxc_user where id=?", id);
  if (id == 0) {
    id = insertRow("jxc_user", {{"u_cgpl", 0}, {"u_xspl", 0}});
    number = serialOfNewRow("jxc_user", "u_sn", id);
    updateRow("jxc_user", id, {{"u_sn", number}});
  } else {
    number = lookupValue("select u_sn from jxc_user where id=?", id);
    if (!former.isEmpty() && former != name) employees_detail::renameInHistory(former, name);
  }
  updateRow("jxc_user", id,
            {{"u_name", name},
             {"u_jm", makeJm(name).left(32)},
             {"u_duty", sanitizeKeyword(draft.duty)},
             {"u_tele", sanitizeKeyword(draft.phone)},
             {"u_address", sanitizeKeyword(draft.address)},
             {"u_note", sanitizeKeyword(draft.note)},
             {"u_tc", draft.commission},
             {"u_tcfs", draft.commissionOn},
             {"u_zdlr", draft.commissionFromProfit},
             {"u_tctxt", draft.commissionOn == 0 ? QStringLiteral("按销售额提成") : QStringLiteral("按毛利提成")},
             {"u_cg", draft.buys},
             {"u_xs", draft.sells},
             {"u_kc", draft.stocks},
             {"u_yg", draft.optometrist},
             {"u_jg", draft.workshop},
             {"u_xsy", draft.posSales},
             {"u_jy", draft.disabled},
             {"ck_sn", draft.warehouseKey},
             {"ck_name", draft.warehouseName}});
  logChange("jxc_user", former, name);
  transaction.commit();
  return number;
}

bool deleteEmployee(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_user",
                       .question = QStringLiteral("您确定要删除当前员工吗！"),
                       .hindrance = employees_detail::hindrance,
                       .alsoDelete = [](const Row& row) { logChange("jxc_user", row.text("u_name"), {}); }},
                      id, prompt);
}

void toggleEmployeeDisabled(std::int64_t id) {
  execSql("update jxc_user set u_jy=iif(u_jy=0,1,0) where id=?", id);
}

Sql employeeListStatement(const QString& typed) {
  Filter filter;
  addNameSearch(filter, "u_sn", "u_jm", "u_name", typed);
  return Sql("select * from jxc_user").where(filter).add(" order by id");
}

}  // namespace jxc
