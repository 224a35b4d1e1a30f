// 升级步骤: what goes row by row.
#include "core/schema/upgrade.h"

#include <array>

namespace jxc::schema {

void bindFirstOperatorToWarehouses(Database& database) {
  const std::array<Value, 1> names{
      Value(database.lookup("select top 1 a_name from jxc_admin order by id").text() + u',')};
  database.execute("update jxc_ckxx set ck_aname=?,ck_asn='100001,'", names);
}

void fillPartnersOfPutawayAndIssue(Database& database) {
  for (const Row row : database.select("select id,gl_djh from jxc_rkd order by id")) {
    const std::array<Value, 1> number{row.value("gl_djh")};
    const Value supplier = database.lookup(
        "select top 1 b.ghs_sn from jxc_rksp a,jxc_jhd b where a.j_sn=b.j_sn and a.gl_djh=? order by a.id", number);
    const std::array<Value, 2> values{supplier, row.value("id")};
    database.execute("update jxc_rkd set ghs_sn=? where id=?", values);
  }
  for (const Row row : database.select("select id,gl_djh from jxc_ckd order by id")) {
    const std::array<Value, 1> number{row.value("gl_djh")};
    const Value customer = database.lookup(
        "select top 1 b.kh_sn from jxc_cksp a,jxc_lsxsd b where a.gl_djh2=b.gl_djh and a.gl_djh=? order by a.id",
        number);
    const std::array<Value, 2> values{customer, row.value("id")};
    database.execute("update jxc_ckd set kh_sn=? where id=?", values);
  }
}

void reopenUnfinishedDocuments(Database& database) {
  for (const Row row :
       database.select("select distinct j_sn from jxc_jhsp where jh_sl>jh_rksl+jh_qxsl order by j_sn")) {
    const std::array<Value, 1> number{row.value("j_sn")};
    database.execute("update jxc_jhd set j_crk=0 where j_sn=?", number);
  }
  for (const Row row :
       database.select("select distinct gl_djh from jxc_lsxssp where ls_sl>ls_cksl+ls_qxsl order by gl_djh")) {
    const std::array<Value, 1> number{row.value("gl_djh")};
    database.execute("update jxc_lsxsd set ls_crk=0 where gl_djh=?", number);
  }
}

}  // namespace jxc::schema
