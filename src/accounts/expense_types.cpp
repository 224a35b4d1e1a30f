#include "accounts/expense_types.h"

#include "core/deletion.h"
#include "core/mentions.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

#include <algorithm>
#include <array>

namespace jxc::expenses {
namespace expense_types_detail {

/// Written by the audit of documents: freight, packing, rent of loans, differences of counts.
constexpr std::array kWrittenByAudit{u"费用", u"收入", u"运费", u"包装费"};

constexpr char kUse[] = "select top 1 * from jxc_yyfy where fy_lx=? order by id";

bool isBuiltIn(const QString& name) {
  return std::ranges::any_of(kWrittenByAudit, [&](const char16_t* each) { return name == QStringView(each); });
}

Refusal refusal(const TypeDraft& draft, const TypeDraft& before) {
  if (draft.name.isEmpty()) return {u"类型名称必须填写！"_qs, Subject::Name};
  const QString taken = lookupValue("select fy_lx from jxc_fylx where fy_lx=? and id<>?", draft.name, draft.id);
  if (!taken.isEmpty()) return {u"类型已经存在，不能加入！"_qs, Subject::Name};
  const bool turns = draft.id != 0 && draft.side != before.side;
  return {turns && !openSelect(kUse, before.name).isEmpty(), u"该项目类型已发生业务，不能改变收支方向！"_qs,
          Subject::None};
}

}  // namespace expense_types_detail

TypeDraft readType(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_fylx where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该记录已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  return {.id = id,
          .name = row.text("fy_lx"),
          .side = row.integer("fy_fx") == 1 ? Side::Income : Side::Expense,
          .note = row.text("fy_note")};
}

bool mayChangeType(std::int64_t id, Prompt& prompt) {
  const bool fixed = expense_types_detail::isBuiltIn(readType(id).name);
  if (fixed) prompt.notice(QStringLiteral("系统内置类型，不能修改！"));
  return !fixed;
}

bool saveType(const TypeDraft& typed, Prompt& prompt) {
  using namespace expense_types_detail;
  TypeDraft draft = typed;
  draft.name = sanitizeText(typed.name.trimmed()).left(64);
  draft.note = sanitizeText(typed.note.trimmed()).left(200);
  if (draft.id != 0 && !mayChangeType(draft.id, prompt)) return false;
  Refusal refused;
  {
    Transaction transaction(accountDb());
    const TypeDraft before = draft.id == 0 ? TypeDraft{} : readType(draft.id);
    refused = refusal(draft, before);
    if (!refused) {
      const int direction = draft.side == Side::Income;
      if (draft.id == 0) {
        insertRow("jxc_fylx", {{"fy_lx", draft.name}, {"fy_fx", direction}, {"fy_note", draft.note}});
      } else {
        updateRow("jxc_fylx", draft.id, {{"fy_lx", draft.name}, {"fy_fx", direction}, {"fy_note", draft.note}});
        if (draft.name != before.name) execSql("update jxc_yyfy set fy_lx=? where fy_lx=?", draft.name, before.name);
      }
      transaction.commit();
      return true;
    }
  }
  return !isRefused(refused, prompt);
}

bool deleteType(std::int64_t id, Prompt& prompt) {
  return deleteAsking(
      {.table = "jxc_fylx",
       .question = QStringLiteral("您确定要删除该类型信息吗！"),
       .hindrance = [](const Row& row) -> std::optional<Hindrance> {
         const QString name = row.text("fy_lx");
         if (expense_types_detail::isBuiltIn(name)) return Hindrance{u"系统内置类型，不能删除！"_qs, {}, {}};
         const RowSet use = openSelect(expense_types_detail::kUse, name);
         if (use.isEmpty()) return {};
         return Hindrance{u"该项目类型已发生业务，不能删除！"_qs, rowInWords("jxc_yyfy", use.front()), orRename()};
       }},
      id, prompt);
}

Sql typeList() {
  return {"select id,fy_lx,iif(fy_fx=1,'收入','费用') as fx,fy_note from jxc_fylx order by id"};
}

std::vector<ListItem> fillTypes(Side side) {
  Filter filter;
  filter.add("fy_fx=?", static_cast<int>(side == Side::Income));
  return fillKeyedComboWhere("jxc_fylx", "fy_lx", {}, filter, "id", "fy_lx");
}

std::vector<ListItem> fillAllTypes() {
  return fillKeyedCombo("jxc_fylx", "fy_lx", QStringLiteral("全部项目"), "id", "fy_lx");
}

}  // namespace jxc::expenses
