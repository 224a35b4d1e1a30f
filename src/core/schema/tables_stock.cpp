// 库存表: ledger, balances, stagings and the documents that move stock inside the house.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_stock_detail {

constexpr TableDefinition tables[] = {
    {"jxc_kcsp", R"(
      kc_sl       numeric(28,6)  -- on the shelf
      kc_cbj      numeric(28,6)  -- cost of the goods in this warehouse
      kc_zsl      numeric(28,6)  -- book stock: audited, whether put away or issued yet or not
      kc_xssl     numeric(28,6)  -- sold so far, net of returns
      g_sn        varchar(32)
      ck_sn       varchar(8)
)"},

    {"jxc_goodslist", R"(
      gl_flag     varchar(8)     -- kind of movement
      gl_djh      varchar(16)    -- document; empty on opening rows
      gl_kdrq     varchar(32)    -- document date: the order of the ledger
      g_sn        varchar(32)    -- 00000000 on a balancing row
      g_name      nvarchar(128)  -- copied at posting, like all names here
      g_jm        varchar(32)
      dw_name     nvarchar(64)
      gl_dj       numeric(28,6)  -- unit price before tax
      gl_cbj      numeric(28,6)  -- unit cost of a sale or customer return
      gl_zcb      numeric(28,6)  -- total cost of a sale or customer return
      gl_sl       numeric(28,6)  -- quantity, signed by the kind of movement
      gl_dzl      numeric(28,6)  -- discount factor
      gl_zje      numeric(28,6)  -- total with tax
      gl_je       numeric(28,6)  -- total before tax: what feeds the average
      gl_tax      numeric(28,6)  -- percent
      gl_taxdj    numeric(28,6)
      gl_taxje    numeric(28,6)
      gl_lsj      numeric(28,6)  -- retail price
      gl_lr       numeric(28,6)  -- gross profit
      gl_qxsl     numeric(28,6)  -- cancelled from putaway or issue
      gl_checker  nvarchar(32)
      gl_chkrq    varchar(16)
      gl_sqsl     numeric(28,6)  -- stock before this row
      gl_sqje     numeric(28,6)  -- stock value before this row
      gl_pjjj     numeric(28,6)  -- average cost after this row
      gl_kc       numeric(28,6)  -- stock after this row
      gl_kczje    numeric(28,6)  -- stock value after this row
      gl_note     nvarchar(200)  -- the document's remark
      gl_bz       nvarchar(64)   -- the line's remark
      u_name      nvarchar(32)
      a_name      nvarchar(32)
      ck_sn       varchar(8)
      ck_name     nvarchar(64)
      ghs_sn      varchar(8)     -- supplier, customer or member
      ghs_name    nvarchar(128)  -- his name, or the caption of an internal move
      gg_name     nvarchar(64)
      color_name  nvarchar(64)
      gl_sysl     numeric(28,6)  -- the line's own quantity as a plain figure; the rent on a loan's return
      id2         int            -- id2 of the document line
      gl_djh2     nvarchar(16)   -- original number
      gl_fdmc     varchar(64)    -- source: 99 from the till, jh and hh on loans
      gl_dqkc     numeric(28,6)  -- always 0
      t_ph        varchar(64)    -- batch, production and expiry: reserved
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_kcjs", R"(
      js_rq       varchar(16)    -- month, yyyy-MM
      js_sl       numeric(28,6)
      js_zje      numeric(28,6)
      js_xssl     numeric(28,6)
      js_xsje     numeric(28,6)
      js_cgsl     numeric(28,6)
      js_cgje     numeric(28,6)
      js_xslr     numeric(28,6)
      js_xscb     numeric(28,6)
      ck_sn       varchar(8)
)"},

    {"jxc_tkc", R"(
      g_sn        varchar(32)
      t_jhrq      varchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
      t_sl        numeric(28,6)
      t_dj        numeric(28,6)
      ck_sn       varchar(8)
)"},

    {"jxc_tempspxf", R"(
      g_sn        varchar(32)
      ts_dj       numeric(28,6)  -- unit price before tax
      ts_cbj      numeric(28,6)
      ts_zcb      numeric(28,6)
      ts_cbj2     numeric(28,6)  -- cost as shown on a sale
      ts_sl       numeric(28,6)
      id3         int            -- source order line
      rid         int            -- source record
      ts_je       numeric(28,6)
      ts_tax      numeric(28,6)
      ts_taxdj    numeric(28,6)
      ts_taxje    numeric(28,6)
      ts_lsj      numeric(28,6)
      ts_zje      numeric(28,6)
      a_name      nvarchar(32)   -- the operator who owns the row
      ts_dzl      numeric(28,6)
      t_jhrq      varchar(32)
      ts_note     nvarchar(200)
      t_zp        nvarchar(16)   -- gift mark
      ghs_sn      varchar(8)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_tempspbd", R"(
      t_rq        varchar(32)
      g_sn        varchar(32)
      g_name      nvarchar(128)
      t_cg        numeric(28,6)
      t_ct        numeric(28,6)
      t_cj        numeric(28,6)
      t_xs        numeric(28,6)
      t_xt        numeric(28,6)
      t_xj        numeric(28,6)
      a_name      nvarchar(32)
)"},

    {"jxc_kcdbd", R"(
      gl_djh      varchar(16)
      ck_out      varchar(8)     -- sending warehouse
      ck_in       varchar(8)     -- receiving warehouse
      db_dbrq     varchar(32)
      db_status   int
      db_checker  nvarchar(32)
      db_chkrq    varchar(16)
      u_sn        varchar(8)
      db_note     nvarchar(200)
      a_name      nvarchar(32)
)"},

    {"jxc_dbsp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)
      db_sl       numeric(28,6)
      db_dj       numeric(28,6)  -- moves the average of the receiving warehouse
      db_sj       numeric(28,6)  -- sale price, for information
      db_zje      numeric(28,6)
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_kcpd", R"(
      gl_djh      varchar(16)
      pd_sl       numeric(28,6)  -- counted, all lines
      kc_sl       numeric(28,6)  -- book, all lines
      pd_rq       varchar(32)
      pd_note     nvarchar(200)
      pd_status   int
      pd_checker  nvarchar(32)
      pd_chkrq    varchar(16)
      ck_sn       varchar(8)
      u_sn        varchar(8)
      a_name      nvarchar(32)
)"},

    {"jxc_kcpdsp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)
      pd_sl       numeric(28,6)  -- counted
      pd_dj       numeric(28,6)  -- cost of the difference
      pd_zje      numeric(28,6)  -- value of the difference
      id2         int            -- own id, set at audit
      kc_sl       numeric(28,6)  -- on the shelf when the line was made
      kc_zsl      numeric(28,6)  -- book stock when the line was made
      a_name      nvarchar(32)
      t_scrq      varchar(16)
      t_ph        varchar(64)
      t_yxq       varchar(16)
)"},

    {"jxc_kcpdtemp", R"(
      gl_djh      varchar(16)
      pd_sl       numeric(28,6)
      sp_sl       numeric(28,6)
      ck_name     varchar(32)
      pd_rq       varchar(32)
      pd_status   bit
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_yxq       varchar(16)
)"},

    {"jxc_bsd", R"(
      gl_djh      varchar(16)
      ck_sn       varchar(8)
      bs_bsrq     varchar(32)
      bs_status   int
      bs_checker  nvarchar(32)
      bs_chkrq    varchar(16)
      u_sn        varchar(8)
      bs_note     nvarchar(200)
      a_name      nvarchar(32)
)"},

    {"jxc_bssp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)
      bs_sl       numeric(28,6)  -- positive
      bs_dj       numeric(28,6)  -- cost of the warehouse when picked
      bs_zje      numeric(28,6)
      bs_note     nvarchar(200)
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_byd", R"(
      gl_djh      varchar(16)
      ck_sn       varchar(8)
      by_byrq     varchar(32)
      by_status   int
      by_checker  nvarchar(32)
      by_chkrq    varchar(16)
      u_sn        varchar(8)
      by_note     nvarchar(200)
      a_name      nvarchar(32)
)"},

    {"jxc_bysp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)
      by_sl       numeric(28,6)
      by_dj       numeric(28,6)
      by_zje      numeric(28,6)
      by_note     nvarchar(200)
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_cfd", R"(
      gl_djh      varchar(16)
      ck_sn       varchar(8)     -- issued from
      cf_cfrq     varchar(32)
      g_sn        varchar(32)    -- the goods taken apart
      cf_cbj      numeric(28,6)
      cf_sl       numeric(28,6)
      cf_status   int
      cf_checker  nvarchar(32)
      cf_chkrq    varchar(16)
      u_sn        varchar(8)
      a_name      nvarchar(32)
      cf_note     nvarchar(200)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_cfsp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)    -- goods arriving
      cf_dj       numeric(28,6)
      cf_sl       numeric(28,6)
      cf_zje      numeric(28,6)
      ck_sn       varchar(8)     -- receiving warehouse of the line
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_kbd", R"(
      gl_djh      varchar(16)
      ck_sn       varchar(8)
      kb_kbrq     varchar(32)
      g_sn        varchar(32)    -- the bundle
      kb_cbj      numeric(28,6)
      kb_sl       numeric(28,6)
      kb_status   int
      kb_checker  nvarchar(32)
      kb_chkrq    varchar(16)
      u_sn        varchar(8)
      a_name      nvarchar(32)
      kb_note     nvarchar(200)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_kbsp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)    -- goods consumed
      kb_dj       numeric(28,6)
      kb_sl       numeric(28,6)
      kb_zje      numeric(28,6)
      ck_sn       varchar(8)     -- issuing warehouse of the line
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_cfsptmp", R"(
      g_sn        varchar(32)
      g_name      nvarchar(128)
      tmp_cksl    numeric(28,6)  -- going out
      tmp_ckje    numeric(28,6)
      tmp_rksl    numeric(28,6)  -- coming in
      tmp_rkje    numeric(28,6)
      tmp_currkc  numeric(28,6)  -- stock before
      tmp_kc      numeric(28,6)  -- stock after
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},
};

}  // namespace tables_stock_detail

std::span<const TableDefinition> stockTables() {
  return tables_stock_detail::tables;
}

}  // namespace jxc::schema
