#include "year_shop.h"

#include "bare_shop.h"

#include <optional>

namespace jxc::bench {
namespace year_shop_detail {

constexpr const char* kFill[] = {
    "delete from jxc_goodsclass",
    "delete from jxc_khxx",
    "delete from jxc_ghsxx",
    "delete from jxc_user",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<59) "
    "insert into jxc_goodsclass (gc_sn,gc_name) select 1000+i,'类别'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<29) "
    "insert into jxc_ghsxx (ghs_sn,ghs_name) select 200000+i,'眼镜批发部'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<499) insert into jxc_khxx "
    "(kh_sn,kh_name,kt_name,z_name) select 300000+i,'眼镜店'||i,'类型'||(i%4),'地区'||(i%12) from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<7) "
    "insert into jxc_user (u_sn,u_name) select 100000+i,'员工'||i from n",
    "with recursive n(i) as (select 0 union all select i+1 from n where i<999) insert into jxc_goods "
    "(g_sn,g_name,g_jm,dw_name,gc_sn,ghs_sn,g_jy) select 1000000+i,'镜架'||i,'JJ','付',1000+i%60,200000+i%30,0 from n",
    "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) select g_sn,'100001',0,0,10 from jxc_goods where "
    "g_sn<>'00000000'",
    "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_zje,gl_zcb,gl_kc,gl_kczje) select "
    "'qc','','2024-12-31',g_sn,'100001',10,100,100,0,10,100 from jxc_goods where g_sn<>'00000000'",
};
constexpr const char* kLedger =
    "with recursive n(i) as (select 0 union all select i+1 from n where i<?1-1) insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lr,"
    "gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,gl_bz,u_name,a_name,ck_sn,ck_name,"
    "ghs_sn,ghs_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) select f,case f when 'cj' then 'CJ0' when 'xt' then 'XT0' "
    "else 'XS0' end||(10000000+i/20),d,1000000+g,'镜架'||g,20,10,10*q,q,1,22.6*q,20*q,13,22.6,2.6*q,10*q,0,'admin',d,"
    "9,90,10,8,80,'','','员工'||(i/20%8),'admin','100001','主仓库',case f when 'cj' then 200000+i/20%30 else "
    "300000+i/20%500 end,'眼镜店'||(i/20%500),0,0,'','',0 from (select i,i*7919%1000 as g,case i/20%10 when 0 then "
    "'cj' "
    "when 1 then case i/200%2 when 0 then 'xt' else 'xs' end else 'xs' end as f,case when i/20%10=1 and i/200%2=0 then "
    "-1 else 1+i%3 end as q,date('2025-01-01','+'||(i*365/?1)||' days') as d from n)";

/// The thousand are there; rows walk over all of them as they do over those.
constexpr const char* kManyGoods[] = {
    "with recursive n(i) as (select 1000 union all select i+1 from n where i<99999) insert into jxc_goods "
    "(g_sn,g_name,g_jm,dw_name,gc_sn,ghs_sn,g_jy) select 1000000+i,'镜架'||i,'JJ','付',1000+i%60,200000+i%30,0 from n",
    "insert into jxc_kcsp (g_sn,ck_sn,kc_sl,kc_zsl,kc_cbj) select g_sn,'100001',0,0,10 from jxc_goods where "
    "g_sn>='1001000'",
    "insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,ck_sn,gl_sl,gl_je,gl_zje,gl_zcb,gl_kc,gl_kczje) select "
    "'qc','','2024-12-31',g_sn,'100001',10,100,100,0,10,100 from jxc_goods where g_sn>='1001000'",
    "update jxc_goodslist set g_sn=1000000+id*7919%100000 where gl_flag<>'qc'",
};

}  // namespace year_shop_detail

const std::span<const char* const> manyGoods = year_shop_detail::kManyGoods;

sqlite3* yearWith(int rows, std::span<const char* const> more) {
  dataModule();  // outlives the shop, which closes its file there
  static std::optional<Shop> shop;
  static int made = -1;
  static const char* const* madeWith = nullptr;
  if (made == rows && madeWith == more.data() && dataModule().isAccountOpen() && &accountDb() == shop->database())
    return shop->native();
  shop.reset();
  shop.emplace();
  made = rows;
  madeWith = more.data();
  Bare(shop->native(), "begin immediate").run();
  for (const char* statement : year_shop_detail::kFill)
    Bare(shop->native(), statement).run();
  (Bare(shop->native(), year_shop_detail::kLedger) << static_cast<sqlite3_int64>(rows)).run();
  for (const char* statement : more)
    Bare(shop->native(), statement).run();
  Bare(shop->native(), "commit").run();
  return shop->native();
}

}  // namespace jxc::bench
