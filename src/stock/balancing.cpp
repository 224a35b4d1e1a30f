// 差额平衡: settles a paid amount that differs from the payable: balancePurchase and balanceSale of stock/posting.h.
#include "core/defaults.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "stock/posting.h"

#include <cmath>
#include <cstdint>

namespace jxc {
namespace balancing_detail {

/// A remainder up to this many yuan is accepted, and the paid amount follows the total.
constexpr double acceptedRest = 0.4;

/// What differs between the two line tables.
struct Side {
  const char* countLines;       // lines that take part in spreading
  const char* takeShare;        // values: share, number, share
  const char* taxedPrice;       // values: digits, number
  const char* price;            // values: digits, number
  const char* amounts;          // value: number
  const char* total;            // value: number
  const char* followHead;       // values: total, total, number
  const char* changeBalancing;  // values: difference, difference, number
  void (*insertBalancing)(const QString& number, double difference);
};

const Side purchaseSide = {
    .countLines = "select count(*) from jxc_jhsp where jh_sl>0 and j_sn=?",
    .takeShare = "update jxc_jhsp set jh_zje=jh_zje-(?) where j_sn=? and jh_zje>=? and jh_sl>0",
    .taxedPrice = "update jxc_jhsp set jh_taxdj=round(jh_zje/jh_sl+0.000000001,?) where jh_sl>0 and j_sn=?",
    .price = "update jxc_jhsp set jh_dj=round(jh_taxdj/(1+jh_tax/100)+0.000000001,?) where jh_sl>0 and j_sn=?",
    .amounts = "update jxc_jhsp set jh_je=jh_dj*jh_sl,jh_taxje=jh_zje-jh_dj*jh_sl where jh_sl>0 and j_sn=?",
    .total = "select sum(jh_zje) as zje from jxc_jhsp where j_sn=?",
    .followHead = "update jxc_jhd set j_yfje=?,j_sfje=? where j_sn=?",
    // The net amount follows the total, or the ledger would show yesterday's difference.
    .changeBalancing = "update jxc_jhsp set jh_zje=?,jh_je=? where g_sn='00000000' and j_sn=?",
    .insertBalancing =
        [](const QString& number, double difference) {
          insertRow("jxc_jhsp", {{"j_sn", number},
                                 {"jh_dj", 0.0},
                                 {"jh_sl", 0.0},
                                 {"jh_zje", difference},
                                 {"g_sn", QStringLiteral("00000000")},
                                 {"a_name", session().a_name},
                                 {"jh_je", difference},
                                 {"jh_tax", 0.0},
                                 {"jh_taxdj", 0.0},
                                 {"jh_taxje", 0.0},
                                 {"jh_rksl", 0.0},
                                 {"jh_dzl", 1.0}});
        },
};

const Side saleSide = {
    .countLines = "select count(*) from jxc_lsxssp where t_zp='' and ls_sl>0 and gl_djh=?",
    .takeShare = "update jxc_lsxssp set ls_zje=ls_zje-(?) where gl_djh=? and t_zp='' and ls_zje>=? and ls_sl>0",
    .taxedPrice =
        "update jxc_lsxssp set ls_taxdj=round(ls_zje/(ls_dzl*ls_sl)+0.000000001,?) "
        "where t_zp='' and ls_sl>0 and ls_dzl<>0 and gl_djh=?",
    .price =
        "update jxc_lsxssp set ls_dj=round(ls_taxdj/(1+ls_tax/100)+0.000000001,?) "
        "where t_zp='' and ls_sl>0 and gl_djh=?",
    .amounts =
        "update jxc_lsxssp set ls_je=ls_dj*ls_sl,ls_taxje=ls_zje-ls_dj*ls_sl where t_zp='' and ls_sl>0 and gl_djh=?",
    .total = "select sum(ls_zje) as zje from jxc_lsxssp where gl_djh=?",
    .followHead = "update jxc_lsxsd set ls_yfje=?,ls_sfje=? where gl_djh=?",
    .changeBalancing = "update jxc_lsxssp set ls_zje=?,ls_je=? where g_sn='00000000' and gl_djh=?",
    .insertBalancing =
        [](const QString& number, double difference) {
          insertRow("jxc_lsxssp", {{"gl_djh", number},
                                   {"ls_dj", 0.0},
                                   {"ls_sl", 0.0},
                                   {"ls_zje", difference},
                                   {"g_sn", QStringLiteral("00000000")},
                                   {"a_name", session().a_name},
                                   {"ls_je", difference},
                                   {"ls_cbj", 0.0},
                                   {"ls_zcb", 0.0},
                                   {"ls_cbj2", 0.0},
                                   {"ls_tax", 0.0},
                                   {"ls_taxdj", 0.0},
                                   {"ls_taxje", 0.0},
                                   {"ls_lsj", 0.0},
                                   {"ls_cksl", 0.0},
                                   {"ls_qxsl", 0.0},
                                   {"ls_zhje", 0.0},
                                   {"ls_dhbz", 0},
                                   {"ls_dhdj", 0.0},
                                   {"ls_dzl", 1.0},
                                   {"t_zp", QString()},
                                   {"ghs_sn", defaultSupplierSn()}});
        },
};

void spread(const Side& side, const QString& number, double paid, double payable) {
  const double lines = lookupNumber(side.countLines, number);
  if (lines == 0) return;
  const int digits = moneyDigits();
  double total = payable;
  double rest = payable - paid;
  while (rest > acceptedRest) {
    const double share = roundEps(rest / lines, digits);
    const std::int64_t bearing = execSql(side.takeShare, share, number, share);
    execSql(side.taxedPrice, digits, number);
    execSql(side.price, digits, number);
    execSql(side.amounts, number);
    total = lookupNumber(side.total, number);
    rest = total - paid;
    // A share that rounds to nothing, or that no line can bear, would be asked for for ever.
    if (share == 0 || bearing == 0) break;
  }
  execSql(side.followHead, total, total, number);
}

void balance(const Side& side, const QString& number, double paid, double payable) {
  const double difference = paid - payable;
  if (std::fabs(difference) < 0.000001) return;
  Transaction transaction(accountDb());
  if (session().cs_xsjgts == u"1") {
    if (execSql(side.changeBalancing, difference, difference, number) == 0) side.insertBalancing(number, difference);
  } else {
    spread(side, number, paid, payable);
  }
  transaction.commit();
}

}  // namespace balancing_detail

void balancePurchase(const QString& number, double paid, double payable) {
  balancing_detail::balance(balancing_detail::purchaseSide, number, paid, payable);
}

void balanceSale(const QString& number, double paid, double payable) {
  balancing_detail::balance(balancing_detail::saleSide, number, paid, payable);
}

}  // namespace jxc
