// 库存单据语句: the statements of an audit by hand of a transfer and of a loss, for the bare interfaces of both
// engines, and documents to audit.
#pragma once

#include <QString>

namespace jxc::bench {

/// The statements in which the kinds differ; null: not of this kind.
struct HouseWords {
  const char *lines, *head, *heads, *shortage, *audited, *strays, *ledger[2], *note;
  bool master, cost, expense;
};

#define JXC_LEDGER(flag, sign, price, quantity, amount, warehouse, text, note, head, body, date)                       \
  "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,"       \
  "gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,"      \
  "gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc," \
  "gl_dqkc) select '" flag "',a.gl_djh,a." date ",b.g_sn,c.g_name,c.g_jm,c.dw_name," price ",0,0," sign quantity       \
  ",1," sign amount "," sign amount ",0," price ",0,0,0,0,'admin',?,0,0," price ",0,0,a." note                         \
  ",'',d.u_name,b.a_name,a." warehouse ",e.ck_name,'','" text "',c.gg_name,c.color_name," quantity                     \
  ",0,'','',0 from " head " a join " body                                                                              \
  " b on a.gl_djh=b.gl_djh join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn "                        \
  "join jxc_ckxx e on a." warehouse "=e.ck_sn where a.gl_djh=?"

inline constexpr HouseWords transferWords = {
    .lines = "select count(*) from jxc_dbsp where gl_djh=?",
    .head = "select * from jxc_kcdbd where gl_djh=? order by db_status desc,id",
    .heads = "select count(*) from jxc_kcdbd where gl_djh=?",
    .shortage =
        "select a.g_sn from (select g_sn,sum(db_sl) as sl from jxc_dbsp where gl_djh=? group by g_sn) a,jxc_kcsp "
        "b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn limit 1",
    .audited = "update jxc_kcdbd set db_status=1,db_checker='admin',db_chkrq=? where gl_djh=?",
    .strays = "delete from jxc_kcdbd where db_status=0 and gl_djh=?",
    .ledger = {JXC_LEDGER("db", "", "b.db_dj", "b.db_sl", "b.db_dj*b.db_sl", "ck_in", "调拨入库", "db_note",
                          "jxc_kcdbd", "jxc_dbsp", "db_dbrq") " order by b.id",
               JXC_LEDGER("db", "-1*", "b.db_dj", "b.db_sl", "b.db_dj*b.db_sl", "ck_out", "调拨出库", "db_note",
                          "jxc_kcdbd", "jxc_dbsp", "db_dbrq") " order by b.id"},
    .cost = true};
inline constexpr HouseWords lossWords = {
    .lines = "select count(*) from jxc_bssp where gl_djh=?",
    .head = "select * from jxc_bsd where gl_djh=? order by bs_status desc,id",
    .heads = "select count(*) from jxc_bsd where gl_djh=?",
    .audited = "update jxc_bsd set bs_status=1,bs_checker='admin',bs_chkrq=? where gl_djh=?",
    .strays = "delete from jxc_bsd where bs_status=0 and gl_djh=?",
    .ledger = {JXC_LEDGER("bs", "-1*", "b.bs_dj", "b.bs_sl", "b.bs_zje", "ck_sn", "商品报损", "bs_note", "jxc_bsd",
                          "jxc_bssp", "bs_bsrq") " order by b.id"},
    .note = "报损单",
    .master = true,
    .expense = true};
#undef JXC_LEDGER

/// Waiting documents of so many lines; their goods differ from document to document. Goods go from the first warehouse
/// to "100002".
QString waitingTransfer(const QString& date, int lines, int seed);
QString waitingLoss(const QString& date, int lines, int seed);

}  // namespace jxc::bench
