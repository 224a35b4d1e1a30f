// 销售表: sales, customer returns, issue, loans and gifts.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_sales_detail {

// Lines of a loan and of its return; the staging of a return has the same columns.
constexpr std::string_view loanLine = R"(
      gl_djh            varchar(16)
      g_sn              varchar(32)
      jh_dj             numeric(28,6)  -- unit cost
      jh_zje            numeric(28,6)
      jh_sl             numeric(28,6)  -- lent
      jh_hhsl           numeric(28,6)  -- returned: so far on a loan, by this line on a return
      jh_xssl           numeric(28,6)  -- turned into a sale
      jh_sl2            numeric(28,6)
      jh_yj             numeric(28,6)  -- deposit of the line
      jh_yj2            numeric(28,6)  -- deposit used up
      jh_zj             numeric(28,6)  -- rent a piece and day
      jh_ts             numeric(28,6)  -- days charged
      jh_zzj            numeric(28,6)  -- rent in all
      jh_thyj           numeric(28,6)  -- deposit paid back
      gl_djh2           nvarchar(16)   -- the loan, on a return
      jh_flag           varchar(4)     -- 借货, 还货 or 销售
      jh_kmmc           nvarchar(32)   -- account
      t_ph              varchar(64)
      t_mjph            varchar(64)
      t_scrq            varchar(16)
      t_yxq             varchar(16)
      g_xlh             text
      id2               int            -- own id on a loan, id of the loan line on a return
      a_name            nvarchar(32)
)";

constexpr TableDefinition tables[] = {
    {"jxc_lsxsd", R"(
      gl_djh            varchar(16)
      kh_sn             varchar(8)
      ck_sn             varchar(8)
      ls_xsrq           varchar(32)    -- with the time of day when cs_cs014 is on
      ls_yfje           numeric(28,6)  -- due
      ls_sfje           numeric(28,6)  -- received
      u_sn              varchar(8)
      ls_note           nvarchar(200)
      a_name            nvarchar(32)
      gl_djh2           nvarchar(16)   -- original number
      ls_yhje           numeric(28,6)  -- allowance
      ls_hkje           numeric(28,6)  -- received later
      ls_th             int            -- returned
      ls_crk            bit            -- all issued
      ls_qk             bit            -- straight from the shelf
      ls_fpno           varchar(32)
      ls_fpje           numeric(28,6)
      ls_yf             numeric(28,6)  -- freight
      ls_bzf            numeric(28,6)  -- packing
      ls_yffs           varchar(16)    -- who pays them
      ls_fdmc           varchar(50)    -- branch; number of the return on a returned sale
      ls_hy             varchar(50)
      ls_ckrq           varchar(16)
      ls_status         int            -- 1 audited
      ls_checker        nvarchar(32)
      ls_chkrq          varchar(16)
      ls_zftype         varchar(32)
      ls_transactionid  varchar(64)
      ls_jsfs           int            -- 0 settled with what is received, 1 the rest on account
      ls_kmmc           nvarchar(32)
      ht_sn             varchar(8)
      ls_dhbz           int            -- 1 on sales of the till
      ls_lr             numeric(28,6)
      hy_sn             varchar(8)
      pos_zffs          int            -- tender of the till
      pos_xj            numeric(28,6)
      pos_czk           numeric(28,6)
      pos_yhk           numeric(28,6)
      pos_djq           numeric(28,6)
      pos_rjid          varchar(50)
)"},

    {"jxc_lsxssp", R"(
      gl_djh            varchar(16)
      g_sn              varchar(32)
      ls_dj             numeric(28,6)
      ls_sl             numeric(28,6)
      ls_je             numeric(28,6)  -- before tax
      ls_cbj            numeric(28,6)  -- unit cost at entry
      ls_zcb            numeric(28,6)
      ls_cbj2           numeric(28,6)  -- cost as the operator sees it
      ls_tax            numeric(28,6)  -- percent
      ls_taxdj          numeric(28,6)
      ls_taxje          numeric(28,6)
      ls_lsj            numeric(28,6)  -- retail price
      ls_zje            numeric(28,6)  -- with tax
      ls_cksl           numeric(28,6)  -- issued
      ls_qxsl           numeric(28,6)  -- never to be issued
      a_name            nvarchar(32)   -- owner of an unsaved line
      ls_dzl            numeric(28,6)
      ls_bz             nvarchar(64)
      id2               int            -- own id from the audit on: key of the line
      id3               int            -- reserved: order line
      ls_zhje           numeric(28,6)
      ls_dhbz           int
      ls_dhdj           numeric(28,6)
      t_zp              nvarchar(16)   -- gift mark, shown behind the name
      ghs_sn            varchar(8)
      gl_djh2           nvarchar(16)
      t_ph              varchar(64)
      t_scrq            varchar(16)
      t_yxq             varchar(16)
)"},

    {"jxc_lsxssptemp", R"(
      gl_djh            varchar(16)
      g_sn              varchar(32)
      ls_dj             numeric(28,6)
      ls_sl             numeric(28,6)
      ls_je             numeric(28,6)
      ls_cbj            numeric(28,6)
      ls_zcb            numeric(28,6)
      ls_cbj2           numeric(28,6)
      ls_tax            numeric(28,6)
      ls_taxdj          numeric(28,6)
      ls_taxje          numeric(28,6)
      ls_lsj            numeric(28,6)
      ls_zje            numeric(28,6)
      ls_cksl           numeric(28,6)
      ls_qxsl           numeric(28,6)
      a_name            nvarchar(32)
      ls_dzl            numeric(28,6)
      ls_bz             nvarchar(64)
      id2               int
      id3               int
      ls_zhje           numeric(28,6)
      ls_dhbz           int
      ls_dhdj           numeric(28,6)
      ls_flag           varchar(8)
      ls_xsrq           varchar(32)
      ghs_sn            varchar(8)
      gl_djh2           nvarchar(16)
      t_ph              varchar(64)
      t_scrq            varchar(16)
      t_yxq             varchar(16)
)"},

    {"jxc_shdj", R"(
      gl_djh            varchar(16)
      ghs_sn            varchar(8)
      ck_sn             varchar(8)
      sh_rq             varchar(32)
      sh_yfje           numeric(28,6)
      sh_sfje           numeric(28,6)
      sh_yhje           numeric(28,6)
      u_sn              varchar(8)
      sh_note           nvarchar(200)
      a_name            nvarchar(32)
      gl_djh2           nvarchar(16)
      sh_th             int
      sh_flag           varchar(8)
      sh_djzt           int
      sh_kmmc           nvarchar(32)
)"},

    {"jxc_shsp", R"(
      gl_djh            varchar(16)
      g_sn              varchar(32)
      sh_dj             numeric(28,6)
      sh_sl             numeric(28,6)
      sh_zje            numeric(28,6)
      sh_dzl            numeric(28,6)
      sh_zhje           numeric(28,6)
      a_name            nvarchar(32)
      t_ph              varchar(64)
      t_scrq            varchar(16)
      t_yxq             varchar(16)
)"},

    // Amounts of the head are negated, those of its lines are not.
    {"jxc_xsthd", R"(
      gl_djh            varchar(16)
      kh_sn             varchar(8)
      ck_sn             varchar(8)
      th_xsrq           varchar(32)
      th_yfje           numeric(28,6)
      th_sfje           numeric(28,6)
      th_hkje           numeric(28,6)
      u_sn              varchar(8)
      th_note           nvarchar(200)
      a_name            nvarchar(32)
      th_qk             bit
      th_status         int
      th_checker        nvarchar(32)
      th_chkrq          varchar(16)
      th_jsfs           int
      th_kmmc           nvarchar(32)
      th_fpno           varchar(32)
      th_fpje           numeric(28,6)
      th_fdmc           varchar(50)
      th_lr             numeric(28,6)
      hy_sn             varchar(8)
      pos_zffs          int
      pos_xj            numeric(28,6)
      pos_czk           numeric(28,6)
      pos_yhk           numeric(28,6)
      pos_djq           numeric(28,6)
      pos_yhje          numeric(28,6)
      pos_rjid          varchar(50)
)"},

    {"jxc_xsthsp", R"(
      gl_djh            varchar(16)
      g_sn              varchar(32)
      th_dj             numeric(28,6)
      th_cbj            numeric(28,6)
      th_zcb            numeric(28,6)
      th_sl             numeric(28,6)
      id2               int            -- line of the sale whose issue was cancelled
      th_je             numeric(28,6)
      th_tax            numeric(28,6)
      th_taxdj          numeric(28,6)
      th_taxje          numeric(28,6)
      th_zje            numeric(28,6)
      th_lsj            numeric(28,6)
      a_name            nvarchar(32)
      th_dzl            numeric(28,6)
      th_bz             nvarchar(64)
      th_zhje           numeric(28,6)
      t_ph              varchar(64)
      t_scrq            varchar(16)
      t_yxq             varchar(16)
)"},

    {"jxc_ckd", R"(
      gl_djh            varchar(16)
      ck_rq             varchar(32)
      ck_zsl            numeric(28,6)
      ck_sn             varchar(8)
      kh_sn             varchar(8)
      u_sn              varchar(8)
      ck_note           nvarchar(200)
      a_name            nvarchar(32)
      ck_status         int
      ck_checker        nvarchar(32)
      ck_chkrq          varchar(16)
)"},

    {"jxc_cksp", R"(
      gl_djh            varchar(16)
      ck_sl             numeric(28,6)
      g_sn              varchar(32)
      a_name            nvarchar(32)
      gl_djh2           nvarchar(16)   -- the sale
      id2               int            -- its line
      t_jhrq            varchar(32)    -- delivery date
      t_ph              varchar(64)
      t_scrq            varchar(16)
      g_xlh             text
)"},

    {"jxc_ckjth", R"(
      g_sn              varchar(32)
      jt_sl             numeric(28,6)
      ghs_name          nvarchar(128)
      jt_flag           varchar(1)
      jt_rq             varchar(16)
)"},

    {"jxc_khjh", R"(
      kh_sn             varchar(8)
      jh_rq             varchar(32)
      gl_djh            varchar(16)
      ck_sn             varchar(8)
      u_sn              varchar(8)
      jh_status         int
      jh_flag           varchar(2)     -- jh loan, hh return
      jh_checker        nvarchar(32)
      jh_chkrq          varchar(16)
      a_name            nvarchar(32)
      jh_note           nvarchar(200)
)"},

    {"jxc_khjhsp", loanLine},
    {"jxc_khjhsptmp", loanLine},

    // Movements of loans of an older layout: nothing writes them, closing empties them by their date.
    {"jxc_jhgl", R"(
      gl_djh            varchar(16)
      jh_rq             varchar(32)
      kh_sn             varchar(8)
      g_sn              varchar(32)
      jh_sl             numeric(28,6)
      a_name            nvarchar(32)
)"},

    {"jxc_zpxx", R"(
      zp_sn             varchar(8)
      zp_name           nvarchar(32)
      zp_jm             varchar(32)
      zp_sl             numeric(28,6)  -- in store
      zp_jf             numeric(28,6)  -- points to redeem
)"},

    {"jxc_zpjh", R"(
      zp_sn             varchar(8)
      zp_jhrq           varchar(32)
      zp_sl             numeric(28,6)
      zp_note           nvarchar(200)
      a_name            nvarchar(32)
)"},

    {"jxc_zsd", R"(
      gl_djh            varchar(16)
      gl_xsdjh          varchar(16)    -- the sale it went with
      zp_zsrq           varchar(32)
      zp_sl             numeric(28,6)
      zp_zl             numeric(28,6)
      zp_note           nvarchar(200)
      a_name            nvarchar(32)
)"},

    {"jxc_zszp", R"(
      gl_djh            varchar(16)
      zp_sn             varchar(8)
      zp_sl             numeric(28,6)
      a_name            nvarchar(32)
)"},
};

}  // namespace tables_sales_detail

std::span<const TableDefinition> salesTables() {
  return tables_sales_detail::tables;
}

}  // namespace jxc::schema
