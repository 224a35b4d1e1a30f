// What must hold in the cash, partner and invoice ledgers after any story.
#include "core/statements.h"
#include "harness/invariants.h"

#include <cmath>
#include <map>

namespace jxc::test::account_invariants {

bool same(double a, double b) {
  return std::fabs(a - b) < 1e-5;
}

/// Running balances against sums from the first line on. Columns: id, whose, stored balance, change.
QStringList runningBalances(const RowSet& rows, std::map<QString, double>& balances) {
  QStringList wrong;
  for (int row = 0; row < rows.rowCount(); ++row) {
    double& balance = balances[rows.text(row, 1)];
    balance += rows.number(row, 3);
    if (!same(rows.number(row, 2), balance))
      wrong << rows.text(row, 1) + u" line "_qs + rows.text(row, 0) + u": "_qs + rows.text(row, 2) + u", sum "_qs +
                   QString::number(balance);
  }
  return wrong;
}

QStringList cash() {
  std::map<QString, double> balances;
  return runningBalances(
      openSelect("select id,xj_kmmc,xj_ljje,xj_je from jxc_xjyh where xj_chk='1' order by xj_kmmc,xj_rq,id"), balances);
}

QStringList partners() {
  std::map<QString, double> balances;
  QStringList wrong = runningBalances(
      openSelect("select id,k_type+k_ghskh as partner,k_ljje,k_qcje+k_yfje-k_sfje as change from jxc_ysyfk "
                 "order by k_type,k_ghskh,k_rq,id"),
      balances);
  const auto onMaster = [&](const RowSet& rows) {
    for (int row = 0; row < rows.rowCount(); ++row)
      if (!same(rows.number(row, 1), balances[rows.text(row, 0)]))
        wrong << rows.text(row, 0) + u": "_qs + rows.text(row, 1) + u" on the partner"_qs;
  };
  onMaster(openSelect("select 'kh'+kh_sn as partner,kh_lwje from jxc_khxx"));
  onMaster(openSelect("select 'ghs'+ghs_sn as partner,ghs_lwje from jxc_ghsxx"));
  return wrong;
}

QStringList invoices() {
  std::map<QString, double> balances;
  return runningBalances(
      openSelect("select id,fp_type+fp_ghskh as partner,fp_ljje,fp_qcje+fp_yfje-fp_kpje as change from jxc_fpdjb "
                 "where fp_check<>0 order by fp_type,fp_ghskh,fp_rq,id"),
      balances);
}

const bool registered = addInvariant({u"cash balances"_qs, cash}) && addInvariant({u"partner balances"_qs, partners}) &&
                        addInvariant({u"invoice balances"_qs, invoices});

}  // namespace jxc::test::account_invariants
