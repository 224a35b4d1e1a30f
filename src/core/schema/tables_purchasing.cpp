// 采购表: receipts, returns to suppliers and putaway.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_purchasing_detail {

constexpr TableDefinition tables[] = {
    {"jxc_jhd", R"(
      j_sn        varchar(16)
      ghs_sn      varchar(8)
      ck_sn       varchar(8)
      j_jhrq      varchar(32)
      j_yfje      numeric(28,6)  -- payable, without the balancing line
      j_sfje      numeric(28,6)  -- paid at once
      u_sn        varchar(8)
      j_note      nvarchar(200)
      a_name      nvarchar(32)
      j_sn2       nvarchar(16)   -- original number
      j_yhje      numeric(28,6)  -- discount
      j_hkje      numeric(28,6)  -- paid later
      j_th        int            -- returned whole
      j_crk       bit            -- all put away
      j_qk        bit            -- straight to the shelf
      j_fpno      varchar(32)
      j_fpje      numeric(28,6)
      j_yf        numeric(28,6)  -- freight
      j_bzf       numeric(28,6)  -- packing
      j_yffs      varchar(16)    -- who pays them
      j_dhdid     varchar(16)    -- number of the return
      j_status    int            -- 1 audited
      j_checker   nvarchar(32)
      j_chkrq     varchar(16)
      j_jsfs      int            -- 0 settled with what is paid, 1 the rest on account
      j_kmmc      nvarchar(32)   -- account
      ht_sn       varchar(8)     -- contract
      j_dhbz      int
)"},

    {"jxc_jhsp", R"(
      j_sn        varchar(16)
      jh_dj       numeric(28,6)
      jh_sl       numeric(28,6)
      jh_je       numeric(28,6)  -- before tax
      jh_tax      numeric(28,6)  -- percent
      jh_taxdj    numeric(28,6)
      jh_taxje    numeric(28,6)
      jh_zje      numeric(28,6)  -- with tax
      jh_rksl     numeric(28,6)  -- put away
      jh_qxsl     numeric(28,6)  -- never to be put away
      jh_dzl      numeric(28,6)
      gl_djh2     nvarchar(16)
      jh_bz       nvarchar(64)
      id2         int            -- own id from the audit on: key of the line
      id3         int            -- reserved: order line
      g_sn        varchar(32)    -- 00000000 on the balancing line
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    // Amounts of the head are negated, those of its lines are not.
    {"jxc_thd", R"(
      gl_djh      varchar(16)
      ghs_sn      varchar(8)
      ck_sn       varchar(8)
      th_thrq     varchar(32)
      th_yfje     numeric(28,6)
      th_sfje     numeric(28,6)
      th_hkje     numeric(28,6)
      u_sn        varchar(8)
      th_note     nvarchar(200)
      th_status   int
      th_checker  nvarchar(32)
      th_chkrq    varchar(16)
      th_jsfs     int
      th_kmmc     nvarchar(32)
      th_fpno     varchar(32)
      th_fpje     numeric(28,6)
      a_name      nvarchar(32)
      th_qk       bit
)"},

    {"jxc_thsp", R"(
      gl_djh      varchar(16)
      g_sn        varchar(32)
      th_dj       numeric(28,6)
      th_sl       numeric(28,6)
      th_dzl      numeric(28,6)
      th_bz       nvarchar(64)
      id2         int            -- line of the receipt whose putaway was cancelled, else 0
      th_je       numeric(28,6)
      th_tax      numeric(28,6)
      th_taxdj    numeric(28,6)
      th_taxje    numeric(28,6)
      th_zje      numeric(28,6)
      a_name      nvarchar(32)
      t_ph        varchar(64)
      t_scrq      varchar(16)
      t_yxq       varchar(16)
)"},

    {"jxc_rkd", R"(
      gl_djh      varchar(16)
      rk_rq       varchar(32)
      rk_zsl      numeric(28,6)
      ck_sn       varchar(8)
      ghs_sn      varchar(8)
      u_sn        varchar(8)
      rk_note     nvarchar(200)
      a_name      nvarchar(32)
      rk_status   int
      rk_checker  nvarchar(32)
      rk_chkrq    varchar(16)
)"},

    {"jxc_rksp", R"(
      gl_djh      varchar(16)
      rk_sl       numeric(28,6)
      g_sn        varchar(32)
      a_name      nvarchar(32)
      j_sn        varchar(16)    -- the receipt
      id2         int            -- its line
      t_jhrq      varchar(32)    -- delivery date
      t_ph        varchar(64)
      t_scrq      varchar(16)
      g_xlh       text           -- numbers of the single pieces
)"},
};

}  // namespace tables_purchasing_detail

std::span<const TableDefinition> purchasingTables() {
  return tables_purchasing_detail::tables;
}

}  // namespace jxc::schema
