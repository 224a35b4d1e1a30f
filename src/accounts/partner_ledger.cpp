#include "accounts/partner_ledger.h"

#include "core/posting.h"
#include "core/rounding.h"
#include "core/statements.h"

namespace jxc {

QString partnerTypeText(PartnerType type) {
  return type == PartnerType::Customer ? QStringLiteral("kh") : QStringLiteral("ghs");
}

AskedBalance askYsyfk(const QString& partner, PartnerType type, const QString& date) {
  const QString side = partnerTypeText(type);
  const Ahead before =
      sendAhead("select top 1 k_ljje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq<? order by k_rq desc,id desc",
                side, partner, date);
  const Ahead lines = sendAhead(
      "select id,k_ljje,k_qcje,k_yfje,k_sfje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq>=? order by k_rq,id",
      side, partner, date);
  AskedBalance balance(before, lines, "update jxc_ysyfk set k_ljje=? where id=?");
  balance.keepLast(type == PartnerType::Customer ? "update jxc_khxx set kh_lwje=? where kh_sn=?"
                                                 : "update jxc_ghsxx set ghs_lwje=? where ghs_sn=?",
                   partner);
  return balance;
}

void recomputeYsyfk(const QString& partner, PartnerType type, const QString& date) {
  askYsyfk(partner, type, date).carry();
}

double ysyfkBalanceAt(const QString& partner, PartnerType type, const QString& date, std::int64_t beforeId) {
  const QString side = partnerTypeText(type);
  if (beforeId == 0)
    return lookupNumber(
        "select top 1 k_ljje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq<=? order by k_rq desc,id desc", side,
        partner, date);
  return lookupNumber(
      "select top 1 k_ljje from jxc_ysyfk where k_type=? and k_ghskh=? and k_rq<=? and id<? "
      "order by k_rq desc,id desc",
      side, partner, date, beforeId);
}

double ysyfkBalanceNow(const QString& partner, PartnerType type) {
  return roundTotal(
      lookupNumber("select top 1 k_ljje from jxc_ysyfk where k_type=? and k_ghskh=? order by k_rq desc,id desc",
                   partnerTypeText(type), partner));
}

void removeRounding(const QString& payment) {
  // The line of the stock ledger is found by the number of the rounding: no index knows its other number.
  for (const Row rounding : openSelect("select gl_djh from jxc_ysyfk where gl_djh2=?", payment))
    postSql("delete from jxc_goodslist where gl_djh=? and gl_djh2=?", rounding.text("gl_djh"), payment);
  postSql("delete from jxc_ysyfk where gl_djh2=?", payment);
}

AskedBalance askFp(const QString& partner, PartnerType type, const QString& date) {
  const QString side = partnerTypeText(type);
  const Ahead before = sendAhead(
      "select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type=? and fp_ghskh=? and fp_rq<? "
      "order by fp_rq desc,id desc",
      side, partner, date);
  const Ahead lines = sendAhead(
      "select id,fp_ljje,fp_qcje,fp_yfje,fp_kpje from jxc_fpdjb where fp_check<>0 and fp_type=? and fp_ghskh=? "
      "and fp_rq>=? order by fp_rq,id",
      side, partner, date);
  return {before, lines, "update jxc_fpdjb set fp_ljje=? where id=?"};
}

void recomputeFp(const QString& partner, PartnerType type, const QString& date) {
  askFp(partner, type, date).carry();
}

double fpBalanceAt(const QString& partner, PartnerType type, const QString& date, std::int64_t beforeId) {
  const QString side = partnerTypeText(type);
  if (beforeId == 0)
    return lookupNumber(
        "select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type=? and fp_ghskh=? and fp_rq<=? "
        "order by fp_rq desc,id desc",
        side, partner, date);
  return lookupNumber(
      "select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type=? and fp_ghskh=? and fp_rq<=? and id<? "
      "order by fp_rq desc,id desc",
      side, partner, date, beforeId);
}

}  // namespace jxc
