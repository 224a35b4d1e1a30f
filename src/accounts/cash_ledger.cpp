#include "accounts/cash_ledger.h"

#include "accounts/running_balance.h"
#include "core/statements.h"

namespace jxc {

void recomputeXjyh(const QString& account, const QString& date) {
  const double carried = lookupNumber(
      "select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? order by xj_rq desc,id desc",
      account, date);
  const RowSet lines = openSelect(
      "select id,xj_ljje,xj_je,0 as lowering from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? "
      "order by xj_rq,id",
      account, date);
  carryBalance(carried, lines, "update jxc_xjyh set xj_ljje=? where id=?");
}

double xjyhBalanceNow(const QString& account) {
  return lookupNumber("select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? order by xj_rq desc,id desc",
                      account);
}

}  // namespace jxc
