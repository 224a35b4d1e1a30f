#include "core/remarks.h"

#include "core/statements.h"
#include "core/text.h"

namespace jxc {

constexpr NamedList remarkList{.table = "jxc_djbz",
                               .sn = "dj_sn",
                               .name = "dj_name",
                               .needsName = u"备注内容必须填写！",
                               .nameTaken = u"该备注已经存在，请重新输入！",
                               .deleteQuestion = u"您确定要删除该备注吗！"};

Sql remarkListStatement(const QString& typed) {
  Filter filter;
  if (!typed.isEmpty())
    filter.add("dj_name like ?", QStringLiteral("%") + sanitizeKeyword(typed) + QStringLiteral("%"));
  return Sql("select id,dj_sn,dj_name,iif(dj_pl is null,0,dj_pl) as dj_pl from jxc_djbz")
      .where(filter)
      .add(" order by iif(dj_pl is null,0,dj_pl) desc,id");
}

void bumpRemarkCount(std::int64_t id) {
  execSql("update jxc_djbz set dj_pl=iif(dj_pl is null,0,dj_pl)+1 where id=?", id);
}

}  // namespace jxc
