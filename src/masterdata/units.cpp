#include "masterdata/units.h"

#include "core/deletion.h"
#include "core/log.h"
#include "core/numbers.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {
namespace units_detail {

std::optional<QString> checkedName(const QString& typed, std::int64_t id, Prompt& prompt) {
  const QString name = sanitizeKeyword(typed.trimmed());
  if (refused({{name.isEmpty(), u"单位名称必须填写！"_qs, Subject::Name},
               {exists("select dw_sn from jxc_dw where dw_name=? and id<>?", name, id),
                u"单位名称已经存在，请重新输入！"_qs, Subject::Name}},
              prompt))
    return {};
  return name;
}

}  // namespace units_detail

std::optional<QString> addUnit(const QString& typed, Prompt& prompt) {
  const auto name = units_detail::checkedName(typed, 0, prompt);
  if (!name) return {};
  Transaction transaction(accountDb());
  const QString number = nextSerial("jxc_dw", "dw_sn");
  insertRow("jxc_dw", {{"dw_sn", number}, {"dw_name", *name}});
  logChange("jxc_dw", {}, *name);
  transaction.commit();
  return number;
}

bool renameUnit(std::int64_t id, const QString& typed, Prompt& prompt) {
  const auto name = units_detail::checkedName(typed, id, prompt);
  if (!name) return false;
  Transaction transaction(accountDb());
  logChange("jxc_dw", lookupValue("select dw_name from jxc_dw where id=?", id), *name);
  updateRow("jxc_dw", id, {{"dw_name", *name}});
  transaction.commit();
  return true;
}

bool deleteUnit(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_dw",
                       .question = QStringLiteral("您确定要删除该单位信息吗！"),
                       .alsoDelete = [](const Row& row) { logChange("jxc_dw", row.text("dw_name"), {}); }},
                      id, prompt);
}

RowSet selectUnits() {
  return openSelect("select * from jxc_dw order by id");
}

}  // namespace jxc
