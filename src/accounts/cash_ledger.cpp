#include "accounts/cash_ledger.h"

#include "core/posting.h"
#include "core/statements.h"

namespace jxc {

AskedBalance askXjyh(const QString& account, const QString& date) {
  const Ahead before = sendAhead(
      "select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq<? order by xj_rq desc,id desc",
      account, date);
  const Ahead lines = sendAhead(
      "select id,xj_ljje,xj_je,0 as lowering from jxc_xjyh where xj_chk='1' and xj_kmmc=? and xj_rq>=? "
      "order by xj_rq,id",
      account, date);
  return {before, lines, "update jxc_xjyh set xj_ljje=? where id=?"};
}

void recomputeXjyh(const QString& account, const QString& date) {
  askXjyh(account, date).carry();
}

double xjyhBalanceNow(const QString& account) {
  return lookupNumber("select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc=? order by xj_rq desc,id desc",
                      account);
}

}  // namespace jxc
