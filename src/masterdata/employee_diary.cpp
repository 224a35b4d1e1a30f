#include "masterdata/employee_diary.h"

#include "core/deletion.h"
#include "core/refusal.h"
#include "core/statements.h"
#include "core/text.h"

namespace jxc {
namespace employee_diary_detail {

// One kind of document each; their words are the same for all, so that one list holds them.
struct DeskDocuments {
  std::string_view select, date;
};
constexpr DeskDocuments kDocuments[] = {
    {R"(select a.id,a.j_sn as djh,a.j_jhrq as rq,a.j_yfje as yfje,a.j_sfje as sfje,
      a.j_yfje-a.j_sfje-a.j_yhje-a.j_hkje as wfje,'采购进货' as zflx,b.ghs_name as dwmc,c.u_name,d.ck_name,a.u_sn,1 as dsort
      from jxc_jhd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d
      where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.j_status=1)",
     "a.j_jhrq"},
    {R"(select a.id,a.gl_djh as djh,a.th_thrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,
      a.th_yfje-a.th_sfje-a.th_hkje as wfje,'采购退货' as zflx,b.ghs_name as dwmc,c.u_name,d.ck_name,a.u_sn,2 as dsort
      from jxc_thd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d
      where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1)",
     "a.th_thrq"},
    {R"(select a.id,a.gl_djh as djh,a.ls_xsrq as rq,a.ls_yfje as yfje,a.ls_sfje as sfje,
      a.ls_yfje-a.ls_sfje-a.ls_yhje-a.ls_hkje as wfje,'商品销售' as zflx,b.kh_name as dwmc,c.u_name,d.ck_name,a.u_sn,3 as dsort
      from jxc_lsxsd a,jxc_khxx b,jxc_user c,jxc_ckxx d
      where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.ls_status=1)",
     "a.ls_xsrq"},
    {R"(select a.id,a.gl_djh as djh,a.th_xsrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,
      a.th_yfje-a.th_sfje-a.th_hkje as wfje,'顾客退货' as zflx,b.kh_name as dwmc,c.u_name,d.ck_name,a.u_sn,4 as dsort
      from jxc_xsthd a,jxc_khxx b,jxc_user c,jxc_ckxx d
      where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1)",
     "a.th_xsrq"}};

}  // namespace employee_diary_detail

EmployeeDiaryDraft readEmployeeDiary(std::int64_t id) {
  const RowSet rows = openSelect("select * from jxc_ywyrz where id=?", id);
  if (rows.isEmpty()) throw DbError(DbError::Kind::Other, QStringLiteral("该日志已被其他操作员删除，请刷新列表！"));
  const Row row = rows.front();
  return {.id = id, .employee = row.text("u_sn"), .date = row.text("rz_rq"), .note = row.text("rz_note")};
}

bool saveEmployeeDiary(const EmployeeDiaryDraft& draft, Prompt& prompt) {
  const QString note = sanitizeKeyword(draft.note.trimmed());
  if (refused({{note.isEmpty(), u"日志内容必须填写！"_qs, Subject::Note}}, prompt)) return false;
  if (draft.id == 0) {
    execSql("insert into jxc_ywyrz (rz_rq,rz_note,u_sn) values (?,?,?)", draft.date, note, draft.employee);
  } else {
    updateRow("jxc_ywyrz", draft.id, {{"rz_rq", draft.date}, {"rz_note", note}});
  }
  return true;
}

bool deleteEmployeeDiary(std::int64_t id, Prompt& prompt) {
  return deleteAsking({.table = "jxc_ywyrz", .question = QStringLiteral("您确定要删除该日志信息吗！")}, id, prompt);
}

Sql employeeDiary(const Criteria& criteria) {
  return Sql("select * from jxc_ywyrz where u_sn=? order by rz_rq desc,id desc", criteria.employee);
}

Sql deskDocuments(const Criteria& criteria, const Warehouses& warehouses) {
  Sql all;
  for (const auto& document : employee_diary_detail::kDocuments) {
    Filter filter;
    filter.add("a.u_sn=?", criteria.employee);
    addPeriod(filter, criteria, document.date);
    warehouses.restrict(filter, "d.ck_sn");
    if (!all.isEmpty()) all.add(" union all ");
    all.add(document.select).andWhere(filter);
  }
  return all.add(" order by rq desc,dsort,djh desc");
}

}  // namespace jxc
