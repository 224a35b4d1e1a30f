// 审核语句: the statements of an audit by hand, for the bare interfaces of both engines.
#pragma once

namespace jxc::bench {

/// The statements in which a receipt and a sale differ.
struct Words {
  const char *lines, *heads, *shortage, *head, *audited, *strays, *due, *cash, *partner, *carried, *running, *owed,
      *moved, *marked, *ledger, *effects, *employee;
};
inline constexpr Words receiptWords = {
    "select count(*) from jxc_jhsp where j_sn=?",
    "select count(*) from jxc_jhd where j_sn=?",
    nullptr,
    "select * from jxc_jhd where j_sn=? order by j_status desc,id",
    "update jxc_jhd set j_status=1,j_checker='admin',j_chkrq=? where j_sn=?",
    "delete from jxc_jhd where j_status=0 and j_sn=?",
    "select a.j_yfje from jxc_jhd a join jxc_user b on a.u_sn=b.u_sn join jxc_ghsxx c on a.ghs_sn=c.ghs_sn join "
    "jxc_ckxx d "
    "on a.ck_sn=d.ck_sn where a.j_sn=?",
    "insert into jxc_xjyh "
    "(xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) "
    "values (?,?,'采购进货',0,'默认员工','普通供货商',?,'主仓库',?,'','admin','1',0)",
    "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,"
    "k_flag,k_rq,gl_djh) values (?,'admin','100001',?,0,0,0,0,?,'ghs','CJ','采购进货单','',1,?,?)",
    "select k_ljje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq<? order by k_rq desc,id desc limit 1",
    "select id,k_ljje,k_qcje+k_yfje-k_sfje from jxc_ysyfk where k_type='ghs' and k_ghskh=? and k_rq>=? order by "
    "k_rq,id",
    "update jxc_ghsxx set ghs_lwje=? where ghs_sn=?",
    "update jxc_jhsp set jh_rksl=jh_sl where j_sn=?",
    "update jxc_jhsp set id2=id,jh_qxsl=0 where j_sn=?",
    "insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
    "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_"
    "note,"
    "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) "
    "select "
    "'cj',a.j_sn,a.j_jhrq,b.g_sn,c.g_name,c.g_jm,c.dw_name,b.jh_dj,0,0,b.jh_sl,b.jh_dzl,b.jh_zje,b.jh_je,b.jh_tax,"
    "b.jh_taxdj,b.jh_taxje,c.g_lsj,0,0,'admin',?,0,0,c.g_pjjj,0,0,a.j_note,b.jh_bz,d.u_name,b.a_name,a.ck_sn,e.ck_name,"
    "a.ghs_sn,f.ghs_name,c.gg_name,c.color_name,b.jh_sl,b.id2,a.j_sn2,'',0 from jxc_jhd a join jxc_jhsp b on "
    "a.j_sn=b.j_sn "
    "join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on a.u_sn=d.u_sn join jxc_ckxx e on a.ck_sn=e.ck_sn join "
    "jxc_ghsxx f "
    "on a.ghs_sn=f.ghs_sn where a.j_sn=? order by b.id",
    "select a.id,a.g_sn,a.gl_sl,a.gl_dj from jxc_goodslist a join jxc_jhsp b on a.id2=b.id2 and a.g_sn=b.g_sn and "
    "a.gl_djh=b.j_sn where a.g_sn<>'00000000' and a.gl_djh=? order by a.id",
    "update jxc_user set u_cgpl=u_cgpl+1 where u_sn='100001'"};
inline constexpr Words saleWords = {
    "select count(*) from jxc_lsxssp where gl_djh=?",
    "select count(*) from jxc_lsxsd where gl_djh=?",
    "select a.g_sn from (select g_sn,sum(ls_sl) as sl from jxc_lsxssp where gl_djh=? and g_sn<>'00000000' group by "
    "g_sn) a,"
    "jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn limit 1",
    "select * from jxc_lsxsd where gl_djh=? order by ls_status desc,id",
    "update jxc_lsxsd set ls_status=1,ls_checker='admin',ls_chkrq=? where gl_djh=?",
    "delete from jxc_lsxsd where ls_status=0 and gl_djh=?",
    "select a.ls_yfje from jxc_lsxsd a join jxc_user b on a.u_sn=b.u_sn join jxc_khxx c on a.kh_sn=c.kh_sn join "
    "jxc_ckxx d on "
    "a.ck_sn=d.ck_sn where a.gl_djh=?",
    "insert into jxc_xjyh "
    "(xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) "
    "values (?,?,'商品销售',0,'默认员工','普通客户',?,'主仓库',?,'','admin','1',0)",
    "insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,"
    "k_flag,k_rq,gl_djh) values (?,'admin','100001',?,0,0,0,0,?,'kh','XS','商品销售单','',1,?,?)",
    "select k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh=? and k_rq<? order by k_rq desc,id desc limit 1",
    "select id,k_ljje,k_qcje+k_yfje-k_sfje from jxc_ysyfk where k_type='kh' and k_ghskh=? and k_rq>=? order by k_rq,id",
    "update jxc_khxx set kh_lwje=? where kh_sn=?",
    "update jxc_lsxssp set ls_cksl=ls_sl where gl_djh=?",
    "update jxc_lsxssp set id2=id,ls_qxsl=0 where gl_djh=?",
    "insert into jxc_goodslist "
    "(gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_cbj,gl_zcb,gl_sl,gl_dzl,gl_zje,"
    "gl_je,gl_tax,gl_taxdj,gl_taxje,gl_lsj,gl_lr,gl_qxsl,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_"
    "note,"
    "gl_bz,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,id2,gl_djh2,gl_fdmc,gl_dqkc) "
    "select "
    "'xs',a.gl_djh,a.ls_xsrq,b.g_sn,c.g_name||ifnull(b.t_zp,''),c.g_jm,c.dw_name,b.ls_dj,b.ls_cbj,b.ls_zcb,b.ls_sl,"
    "b.ls_dzl,b.ls_zje,b.ls_je,b.ls_tax,b.ls_taxdj,b.ls_taxje,b.ls_lsj,b.ls_je-b.ls_zcb,b.ls_qxsl,'admin',?,0,0,c.g_"
    "pjjj,0,"
    "0,a.ls_note,b.ls_bz,d.u_name,b.a_name,a.ck_sn,e.ck_name,a.kh_sn,f.kh_name,c.gg_name,c.color_name,0,b.id2,a.gl_"
    "djh2,'',0 "
    "from jxc_lsxsd a join jxc_lsxssp b on a.gl_djh=b.gl_djh join jxc_goods c on b.g_sn=c.g_sn join jxc_user d on "
    "a.u_sn=d.u_sn join jxc_ckxx e on a.ck_sn=e.ck_sn join jxc_khxx f on a.kh_sn=f.kh_sn where a.gl_djh=? order by "
    "b.id",
    "select a.id,a.g_sn,a.gl_sl,a.gl_dj from jxc_goodslist a join jxc_lsxssp b on a.id2=b.id2 and a.g_sn=b.g_sn and "
    "a.gl_djh=b.gl_djh where a.g_sn<>'00000000' and a.gl_djh=? order by a.id",
    "update jxc_user set u_xspl=u_xspl+1 where u_sn='100001'"};

}  // namespace jxc::bench
