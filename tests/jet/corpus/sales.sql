-- Goods and documents that the statements below work on
insert into jxc_goods (g_sn,g_name,g_qc,g_jm,g_jj,g_sj,g_sj1,g_scjj,g_pjjj,g_kc,g_zhxs,g_jy,g_sptm,gc_cid,gc_sn,dw_name,gg_name,color_name,ghs_sn,g_cgpl,g_xspl,g_lsj,g_iszp,g_sy,g_dzll,g_sccs,g_bz) values ('20000001','镜片甲','镜片甲','JPJ',5,12,11,5,5,10,1,0,'690001',2,'1000','片','','','100001',0,0,15,1,0,1,'','')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (10,5,0,'20000001','100001',10)
insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,ls_note,a_name,gl_djh2,ls_yhje,ls_hkje,ls_th,ls_crk,ls_qk,ls_fpno,ls_fpje,ls_yf,ls_bzf,ls_yffs,ls_status,ls_checker,ls_chkrq,ls_jsfs,ls_kmmc,ht_sn,ls_dhbz) values ('XS21050310001','100001','100001','2021-05-03',24,20,'100001','','admin','',0,0,0,0,0,'',0,0,0,'',1,'admin','2021-05-03',1,'现金','',0)
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_je,ls_cbj,ls_zcb,ls_cbj2,ls_tax,ls_taxdj,ls_taxje,ls_lsj,ls_zje,ls_cksl,ls_qxsl,a_name,ls_dzl,ls_bz,id3,ls_zhje,ls_dhbz,ls_dhdj,t_zp,ghs_sn) values ('XS21050310001','20000001',12,2,24,5,10,5,0,12,0,15,24,0,0,'admin',1,'',0,24,0,0,'','')
update jxc_lsxssp set id2=id where gl_djh='XS21050310001'

-- Sale: barcode and picking
select a.g_sn from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_sptm='690001' and b.ck_sn='100001'  and b.kc_sl>0  order by a.g_sn
update jxc_lsxssp set gl_djh='XS21050310002' where gl_djh='XS21050310009' and a_name='admin'
update jxc_lsxssp set ls_sl=ls_sl+1,ls_je=round(ls_dj*ls_dzl*(ls_sl+1)+0.000000001,2),ls_taxje=round(ls_dj*ls_dzl*(ls_tax/100.00)*(ls_sl+1)+0.000000001,2),ls_zje=round(ls_dj*ls_dzl*(1+ls_tax/100.00)*(ls_sl+1)+0.000000001,2),ls_zcb=round(ls_cbj*(ls_sl+1)+0.000000001,2),ls_cksl=ls_cksl+1  where id=1
update jxc_lsxssp set ls_sl=ls_sl+1,ls_je=ls_dj*ls_dzl*(ls_sl+1),ls_zje=ls_dj*ls_dzl*(1+ls_tax/100.00)*(ls_sl+1),ls_zcb=ls_cbj*(ls_sl+1) where id=1
select a.id from jxc_lsxssp a,jxc_goods b where a.g_sn=b.g_sn and a.gl_djh='XS21050310001' and a.g_sn='20000001' and b.g_sptm='690001' and a.a_name='admin'
select b.*,a.g_name+b.t_zp as g_name2,a.dw_name,a.gg_name,a.color_name from jxc_goods a,jxc_lsxssp b where a.g_sn=b.g_sn and b.gl_djh='XS21050310001' and b.a_name='admin' order by b.id
select a.*,b.kc_sl from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_jy=0 and a.g_sn<>'00000000' and b.ck_sn='100001' and b.kc_sl>0 order by a.g_xspl desc
select a.*,iif(b.kc_sl is null,0,b.kc_sl) as kc_sl from jxc_goods a left join (select g_sn,kc_sl from jxc_kcsp where ck_sn='100001') b on a.g_sn=b.g_sn where a.g_jy=0 and a.g_sn<>'00000000' order by a.g_xspl desc
select a.*,d.kc_sl from jxc_goods a,(select distinct g_sn from jxc_lsxssp x,jxc_lsxsd y where x.gl_djh=y.gl_djh and y.ls_status=1 and y.kh_sn='100001') b,jxc_kcsp d where a.g_sn=b.g_sn and a.g_sn=d.g_sn and d.ck_sn='100001' and a.g_jy=0 order by a.g_xspl desc
insert into jxc_tempspxf (g_sn,ts_dj,ts_sl,ts_zje,ts_je,ts_dzl,ts_tax,ts_taxdj,ts_taxje,a_name,ghs_sn,t_zp,ts_note,ts_cbj,ts_zcb,ts_cbj2,ts_lsj) values ('20000001',12,1,12,12,1,0,12,0,'admin','','','',5,5,5,15)
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_zje,ls_zhje,ls_je,ls_tax,ls_taxdj,ls_taxje,ls_lsj,ls_dzl,ls_cbj,ls_zcb,ls_cbj2,ls_cksl,a_name,ls_bz,t_zp,ghs_sn) select 'XS21050310001',g_sn,ts_dj,ts_sl,ts_zje,ts_zje,ts_je,ts_tax,ts_taxdj,ts_taxje,ts_lsj,ts_dzl,ts_cbj,ts_zcb,ts_cbj2,ts_sl,a_name,ts_note,t_zp,'' from jxc_tempspxf where a_name='admin' order by id
select top 20 b.ls_xsrq,a.*,c.kh_name,d.g_lsj from jxc_lsxssp a,jxc_lsxsd b,jxc_khxx c,jxc_goods d where b.ls_status=1 and a.gl_djh=b.gl_djh and b.kh_sn=c.kh_sn and a.g_sn=d.g_sn and a.g_sn='20000001' order by b.ls_xsrq desc,a.id desc
select top 20 b.ls_xsrq,a.*,c.kh_name,d.g_lsj from jxc_lsxssp a,jxc_lsxsd b,jxc_khxx c,jxc_goods d where b.ls_status=1 and a.gl_djh=b.gl_djh and b.kh_sn=c.kh_sn and a.g_sn=d.g_sn and a.g_sn='20000001' and b.kh_sn='100001' order by b.ls_xsrq desc,a.id desc
select top 10 * from jxc_khbj where g_sn='20000001' and kh_sn='100001' order by id desc

-- Sale: edits in the grid
update jxc_lsxssp set ls_dj=13,ls_taxdj=round(13*(1+ls_tax/100.00)+0.000000001,2) where id=1
update jxc_lsxssp set ls_je=round(ls_dj*ls_sl*ls_dzl+0.000000001,2),ls_zje=round(ls_taxdj*ls_sl*ls_dzl+0.000000001,2),ls_taxje=round((ls_taxdj-ls_dj)*ls_sl*ls_dzl+0.000000001,2) where id=1
update jxc_lsxssp set ls_sl=3,ls_cksl=3 where id=1
update jxc_lsxssp set ls_zcb=round(ls_cbj*ls_sl+0.000000001,2) where id=1
update jxc_lsxssp set ls_taxdj=14,ls_dj=round(14/(1+ls_tax/100.00)+0.000000001,2) where id=1
update jxc_lsxssp set ls_tax=13,ls_taxdj=round(ls_dj*(1+13/100.00)+0.000000001,2) where id=1
update jxc_lsxssp set ls_dzl=0.8 where id=1
update jxc_tempspxf set ts_sl=3 where id=1
update jxc_tempspxf set ts_zcb=round(ts_cbj*ts_sl+0.000000001,2) where id=1

-- Sale: totals, save, balance
select sum(ls_zje) as zje from jxc_lsxssp where g_sn<>'00000000' and gl_djh='XS21050310001'
update jxc_lsxssp set ls_cksl=ls_sl where gl_djh='XS21050310008'
update jxc_lsxssp set ls_cksl=ls_sl,ls_qxsl=0 where gl_djh='XS21050310008'
update jxc_htgl set ghs_sn='100001',gl_djh='XS21050310001' where ht_sn='100002'
update jxc_lsxssp set ls_zje=-4,ls_je=-4 where g_sn='00000000' and gl_djh='XS21050310001'
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_zje,ls_je,ls_dzl,ls_zhje,t_zp,ghs_sn,a_name,ls_tax,ls_taxdj,ls_taxje,ls_lsj,ls_cbj,ls_zcb,ls_cksl) values ('XS21050310001','00000000',0,0,-4,-4,1,0,'','100001','admin',0,0,0,0,0,0,0)
select count(*) from jxc_lsxssp where t_zp='' and ls_sl>0 and gl_djh='XS21050310001'
update jxc_lsxssp set ls_zje=ls_zje-(1.25) where t_zp='' and ls_zje>=1.25 and ls_sl>0 and gl_djh='XS21050310001'
update jxc_lsxssp set ls_taxdj=round(ls_zje/(ls_dzl*ls_sl)+0.000000001,2) where t_zp='' and ls_sl>0 and gl_djh='XS21050310001'
update jxc_lsxssp set ls_dj=round(ls_taxdj/(1+ls_tax/100)+0.000000001,2) where t_zp='' and ls_sl>0 and gl_djh='XS21050310001'
update jxc_lsxssp set ls_je=ls_dj*ls_sl,ls_taxje=ls_zje-ls_dj*ls_sl where ls_sl>0 and gl_djh='XS21050310001'
select sum(ls_zje) as zje from jxc_lsxssp where gl_djh='XS21050310001'
update jxc_lsxsd set ls_yfje=22.5,ls_sfje=22.5 where gl_djh='XS21050310001'
delete from jxc_lsxssp where gl_djh='XS21050310007' and a_name='admin'
select top 1 k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh='100001' and k_rq<='9999-12-31' order by k_rq desc,id desc

-- Sale: audit
select top 1 id from jxc_lsxssp where gl_djh='XS21050310001'
delete from jxc_lsxsd where ls_status=0 and gl_djh='XS21050310001'
select a.*,b.u_name,c.kh_name,d.ck_name from jxc_lsxsd a,jxc_user b,jxc_khxx c,jxc_ckxx d where a.u_sn=b.u_sn and a.kh_sn=c.kh_sn and a.ck_sn=d.ck_sn and a.gl_djh='XS21050310001'
update jxc_user set u_xspl=u_xspl+1 where u_sn='100001'
insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) values ('2021-05-03','XS21050310001','商品销售',20,'默认员工','普通客户','100001','主仓库','现金','','admin','1',0)
insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,k_flag,k_rq,gl_djh) values ('100001','admin','100001','现金',20,0,0,4,24,'kh','XS','商品销售单','',1,'2021-05-03','XS21050310001')
update jxc_lsxssp set id2=id,ls_qxsl=0 where gl_djh='XS21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,gl_cbj,gl_zcb,id2,gl_djh2,gl_qxsl) select 'xs' as glflag,a.gl_djh,a.ls_xsrq,b.g_sn,d.g_name+b.t_zp,d.g_jm,d.dw_name,b.ls_dj,b.ls_sl,b.ls_zje,b.ls_je-b.ls_zcb,b.ls_dzl,e.u_name,b.a_name,f.ck_sn,f.ck_name,c.kh_sn,c.kh_name,d.gg_name,d.color_name,0,'',0,0,d.g_pjjj,0,a.ls_checker,a.ls_chkrq,0,0,b.ls_bz,a.ls_note,b.ls_tax,b.ls_taxdj,b.ls_taxje,b.ls_je,b.ls_lsj,b.ls_cbj,b.ls_zcb,b.id2,a.gl_djh2,0 from jxc_lsxsd a,jxc_lsxssp b,jxc_khxx c,jxc_goods d,jxc_user e,jxc_ckxx f where a.gl_djh=b.gl_djh and a.kh_sn=c.kh_sn and b.g_sn=d.g_sn and a.u_sn=e.u_sn and a.ck_sn=f.ck_sn and a.gl_djh='XS21050310001' order by b.id
select g_name,gl_lr from jxc_goodslist where gl_djh='XS21050310001' and gl_lr<>gl_je
update jxc_goodslist set gl_lr=gl_je where g_sn='00000000' and gl_djh='XS21050310001'
update jxc_kcsp set kc_xssl=kc_xssl+2,kc_sl=kc_sl-(2),kc_zsl=kc_zsl-(2) where ck_sn='100001' and g_sn='20000001'
update jxc_goods set g_kc=g_kc-(2),g_xspl=g_xspl+1 where g_sn='20000001'
select a.*,a.ls_yfje-a.ls_sfje-a.ls_yhje as wfje,b.kh_name,c.ck_name,d.u_name from jxc_lsxsd a,jxc_khxx b,jxc_ckxx c,jxc_user d where a.kh_sn=b.kh_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.ls_status=0 and a.ls_dhbz=0  and a.kh_sn='100001' and (a.gl_djh like '%X%' or a.ls_note like '%X%') order by a.id desc
select * from jxc_goods where g_jy=0 and g_iszp<>0 order by g_sn
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_zje,ls_je,ls_taxdj,ls_taxje,ls_tax,ls_lsj,ls_dzl,t_zp,ls_cbj,ls_zcb,ls_cbj2,ls_cksl,a_name) values ('XS21050310001','20000001',0,1,0,0,0,0,0,0,1,'(赠品)',5,5,5,1,'admin')

-- Customer return
select a.*,d.kc_sl from jxc_goods a,(select distinct g_sn from jxc_lsxssp x,jxc_lsxsd y where x.gl_djh=y.gl_djh and y.ls_status=1 and y.kh_sn='100001') b,jxc_kcsp d where a.g_sn=b.g_sn and a.g_sn=d.g_sn and d.ck_sn='100001' and a.g_jy=0 and a.g_sn<>'00000000' order by a.g_xspl desc
select *,g_kc as kc_sl from jxc_goods where g_jy=0 and g_sn<>'00000000' order by g_xspl desc
select top 10 b.ls_xsrq,a.* from jxc_lsxssp a,jxc_lsxsd b where b.ls_status=1 and a.gl_djh=b.gl_djh and a.g_sn='20000001' order by b.ls_xsrq desc,a.id desc
insert into jxc_xsthsp (gl_djh,g_sn,th_dj,th_sl,th_dzl,th_zje,th_je,th_tax,th_taxdj,th_taxje,th_lsj,th_cbj,th_zcb,a_name,th_bz,th_zhje) select 'XT21050310001',g_sn,ls_dj,ls_sl,ls_dzl,ls_zje,ls_je,ls_tax,ls_taxdj,ls_taxje,ls_lsj,ls_cbj,ls_zcb,'admin','',ls_zje from jxc_lsxssp where gl_djh='XS21050310001' order by id
insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,th_xsrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,a_name,th_qk,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc,th_fpno,th_fpje) values ('XT21050310001','100001','100001','2021-05-03',-24,-24,0,'100001','','admin',0,1,'admin','2021-05-03',1,'现金','',0)
update jxc_lsxsd set ls_th=1,ls_fdmc='XT21050310001' where gl_djh='XS21050310001'
select sum(th_zje) as zje from jxc_xsthsp where gl_djh='XT21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_zcb,gl_cbj,gl_lr,gl_sysl,ck_sn,ck_name,ghs_sn,ghs_name,u_name,a_name,id2,gl_kc,gl_kczje,gl_sqsl,gl_sqje) select 'xt' as glflag,a.gl_djh,a.th_xsrq,b.g_sn,d.g_name,b.th_dj,-1*b.th_sl,-1*b.th_zje,-1*b.th_je,-1*b.th_zcb,b.th_cbj,b.th_zcb-b.th_je,b.th_sl,f.ck_sn,f.ck_name,c.kh_sn,c.kh_name,e.u_name,b.a_name,b.id2,0,0,0,0 from jxc_xsthd a,jxc_xsthsp b,jxc_khxx c,jxc_goods d,jxc_user e,jxc_ckxx f where a.gl_djh=b.gl_djh and a.kh_sn=c.kh_sn and b.g_sn=d.g_sn and a.u_sn=e.u_sn and a.ck_sn=f.ck_sn and a.gl_djh='XT21050310001' order by b.id

-- Issue
select a.g_name,a.g_jm,a.gg_name,a.g_sptm,a.color_name,a.dw_name,b.* from jxc_goods a,jxc_lsxssp b,jxc_lsxsd c where a.g_jy=0 and a.g_sn<>'00000000' and a.g_sn=b.g_sn and b.gl_djh=c.gl_djh and c.ls_status=1 and b.ls_sl>b.ls_cksl+b.ls_qxsl and c.ck_sn='100001' and c.kh_sn='100001' order by b.gl_djh,b.g_sn
select a.g_sn from jxc_goods a,jxc_lsxssp b,jxc_lsxsd c where a.g_sn=b.g_sn and b.gl_djh=c.gl_djh and b.ls_sl>b.ls_cksl+b.ls_qxsl and c.ls_status=1 and a.g_sptm='690001' and c.ck_sn='100001' and c.kh_sn='100001' order by a.g_sn
select top 1 b.id,b.id2,b.gl_djh from jxc_lsxssp b,jxc_lsxsd c where b.gl_djh=c.gl_djh and b.ls_sl>b.ls_cksl+b.ls_qxsl and b.g_sn='20000001' and c.ls_status=1 order by b.id
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (g_sn,ts_sl,t_zp,ghs_sn,t_jhrq,a_name) values ('20000001',1,'XS21050310001','1','2021-05-04','admin')
insert into jxc_cksp (gl_djh,ck_sl,g_sn,a_name,gl_djh2,id2,t_jhrq) select 'CK21050310001',ts_sl,g_sn,a_name,t_zp,ghs_sn,t_jhrq from jxc_tempspxf where a_name='admin' order by id
select top 1 a.g_sn from jxc_lsxssp a,jxc_kcsp b where a.g_sn=b.g_sn and a.ls_sl-a.ls_cksl-a.ls_qxsl>b.kc_sl and b.ck_sn='100001' and a.gl_djh='XS21050310001'
insert into jxc_cksp (gl_djh,ck_sl,g_sn,a_name,gl_djh2,id2,t_jhrq) select 'CK21050310002',ls_sl-ls_cksl,g_sn,'admin',gl_djh,id2,'2021-05-04' from jxc_lsxssp where g_sn<>'00000000' and gl_djh='XS21050310001' and ls_sl>ls_cksl+ls_qxsl order by id
insert into jxc_ckd (gl_djh,ck_rq,ck_zsl,ck_sn,kh_sn,u_sn,ck_note,a_name,ck_status,ck_checker,ck_chkrq) values ('CK21050310001','2021-05-04',1,'100001','100001','100001','','admin',0,'','')
select top 1 a.gl_djh,a.g_sn from jxc_lsxssp a,jxc_cksp b,jxc_ckd c where a.id2=b.id2 and b.gl_djh=c.gl_djh and a.g_sn=b.g_sn and a.ls_sl<a.ls_cksl+a.ls_qxsl+b.ck_sl and b.gl_djh='CK21050310001' order by b.id
select a.*,b.ls_dj*a.ck_sl as zje from jxc_cksp a,jxc_lsxssp b where a.id2=b.id2 and a.g_sn=b.g_sn and a.gl_djh='CK21050310001' and a.g_sn<>'00000000' order by a.id
update jxc_kcsp set kc_sl=kc_sl-(1) where ck_sn='100001' and g_sn='20000001'
update jxc_goods set g_kc=g_kc-(1) where g_sn='20000001'
update jxc_lsxssp set ls_cksl=ls_cksl+1 where id2=1
select distinct gl_djh2 from jxc_cksp where gl_djh='CK21050310001' order by gl_djh2
select top 1 id from jxc_lsxssp where ls_sl>ls_cksl+ls_qxsl and gl_djh='XS21050310001' order by id
update jxc_lsxsd set ls_crk=1 where gl_djh='XS21050310001'
update jxc_lsxssp set ls_cksl=0 where ls_cksl<0 and id2=1
update jxc_lsxsd set ls_crk=0 where gl_djh='XS21050310001'
update jxc_ckd set ck_status=0,ck_chkrq='',ck_checker='' where gl_djh='CK21050310001'
delete from jxc_ckd where ck_status=0 and gl_djh='CK21050310009'

-- Issue given up: a return for what never left
update jxc_lsxssp set ls_qxsl=ls_sl-ls_cksl where ls_sl>ls_cksl+ls_qxsl and gl_djh='XS21050310001'
update jxc_lsxssp set ls_qxsl=0 where ls_qxsl<0 and  gl_djh='XS21050310001'
insert into jxc_xsthsp (gl_djh,th_dj,th_sl,th_zje,g_sn,a_name,th_je,th_tax,th_taxdj,th_taxje,th_dzl,th_lsj,th_cbj,th_zcb,id2) select 'XT21050310002',ls_dj,ls_qxsl,ls_qxsl*ls_taxdj*ls_dzl,g_sn,a_name,ls_qxsl*ls_dj*ls_dzl,ls_tax,ls_taxdj,ls_qxsl*ls_dj*ls_tax/100,ls_dzl,ls_lsj,ls_cbj,ls_cbj*ls_qxsl,id2 from jxc_lsxssp where gl_djh='XS21050310001' and ls_qxsl>0 order by id
update jxc_xsthsp set th_zje=round(th_zje+0.000000001,2),th_je=round(th_je+0.000000001,2),th_taxje=round(th_taxje+0.000000001,2) where gl_djh='XT21050310002'
update jxc_kcsp set kc_zsl=kc_zsl-(-1),kc_xssl=kc_xssl+(-1) where ck_sn='100001' and g_sn='20000001'

-- Loans
insert into jxc_tempspxf (g_sn,ts_dj,ts_sl,ts_zje,ts_dzl,ts_tax,ts_taxdj,t_zp,a_name) values ('20000001',5,2,10,1,0.5,100,'现金','admin')
insert into jxc_khjhsp (gl_djh,jh_sl,g_sn,a_name,jh_flag,jh_dj,jh_zje,jh_hhsl,jh_xssl,gl_djh2,jh_sl2,jh_yj,jh_zj,jh_ts,jh_zzj,jh_thyj,jh_kmmc,jh_yj2) select 'JH21050310001',ts_sl,g_sn,a_name,'借货',ts_dj,ts_zje,0,0,'',ts_sl,ts_taxdj,ts_tax,0,0,0,t_zp,0 from jxc_tempspxf where a_name='admin' order by id
insert into jxc_khjh (kh_sn,jh_rq,gl_djh,ck_sn,u_sn,jh_status,jh_flag,jh_checker,jh_chkrq,a_name,jh_note) values ('100001','2021-05-03','JH21050310001','100001','100001',1,'jh','admin','2021-05-03','admin','')
delete from jxc_khjh where jh_status=0 and gl_djh='JH21050310001'
update jxc_khjhsp set id2=id where gl_djh='JH21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_pjjj,gl_taxdj,gl_sl,gl_sysl,gl_zje,gl_je,gl_dzl,gl_fdmc,gl_checker,gl_chkrq,ghs_sn,ghs_name,gl_note,gl_lr,gl_dqkc,gl_kc,gl_kczje,gl_sqsl,gl_sqje,gl_tax,gl_taxje,gl_lsj,id2,ck_sn,ck_name,u_name,a_name) select 'jh' as glflag,a.gl_djh,a.jh_rq,b.g_sn,c.g_name,b.jh_dj,b.jh_dj,b.jh_dj,b.jh_sl,b.jh_sl,b.jh_zje,b.jh_zje,1,'jh',a.jh_checker,a.jh_chkrq,f.kh_sn,f.kh_name,'',0,0,0,0,0,0,0,0,0,b.id2,e.ck_sn,e.ck_name,d.u_name,b.a_name from jxc_khjh a,jxc_khjhsp b,jxc_goods c,jxc_user d,jxc_ckxx e,jxc_khxx f where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.u_sn=d.u_sn and a.ck_sn=e.ck_sn and a.kh_sn=f.kh_sn and a.gl_djh='JH21050310001' order by b.id
update jxc_kcjs set js_sl=js_sl-(2),js_zje=js_zje-(10) where js_rq='2021-05' and ck_sn='100001'
update jxc_khjh set gl_djh='JH21050410001',jh_rq='2021-05-04' where gl_djh='JH21050310009'
update jxc_khjhsp set gl_djh='JH21050410001' where gl_djh='JH21050310009'
delete from jxc_khjhsptmp where a_name='admin'
insert into jxc_khjhsptmp (jh_sl,g_sn,a_name,jh_flag,jh_dj,jh_zje,jh_hhsl,jh_xssl,gl_djh2,jh_sl2,jh_yj,jh_zj,jh_ts,jh_zzj,jh_thyj,jh_kmmc,id2,jh_yj2) select jh_sl,g_sn,'admin','还货',jh_dj,jh_zje,jh_sl-jh_hhsl-jh_xssl,0,gl_djh,jh_sl2,jh_yj-jh_yj2,jh_zj,3,jh_zj*3*(jh_sl-jh_hhsl-jh_xssl),jh_yj-jh_yj2-jh_zj*3*(jh_sl-jh_hhsl-jh_xssl),jh_kmmc,id2,jh_yj2 from jxc_khjhsp where jh_sl>jh_hhsl+jh_xssl and gl_djh='JH21050310001' order by id
update jxc_khjhsptmp set jh_thyj=0 where jh_thyj<0 and a_name='admin'
select jh_sl-jh_hhsl from jxc_khjhsp where id2=1
insert into jxc_khjhsp (gl_djh,jh_sl,g_sn,a_name,jh_flag,jh_dj,jh_zje,jh_hhsl,jh_xssl,gl_djh2,jh_sl2,jh_yj,jh_zj,jh_ts,jh_zzj,jh_thyj,jh_kmmc,id2,jh_yj2) select 'HH21050610001',jh_sl,g_sn,a_name,jh_flag,jh_dj,jh_zje,jh_hhsl,0,gl_djh2,jh_sl2,jh_yj,jh_zj,jh_ts,jh_zzj,jh_thyj,jh_kmmc,id2,jh_zzj from jxc_khjhsptmp where a_name='admin' order by id
update jxc_khjhsp set jh_dj=5.2,jh_zje=jh_hhsl*5.2 where g_sn='20000001' and gl_djh='HH21050610001' and a_name='admin'
update jxc_khjhsp set jh_hhsl=jh_hhsl+(2),jh_yj2=jh_yj2+(3) where id=1
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_pjjj,gl_taxdj,gl_sl,gl_sysl,gl_zje,gl_je,gl_dzl,gl_fdmc,id2,ck_sn,ck_name,ghs_sn,ghs_name,a_name) select 'hh' as glflag,a.gl_djh,a.jh_rq,b.g_sn,c.g_name,b.jh_dj,b.jh_dj,b.jh_dj,b.jh_hhsl,b.jh_zzj,b.jh_zje,b.jh_zje,1,'hh',b.id2,e.ck_sn,e.ck_name,f.kh_sn,f.kh_name,b.a_name from jxc_khjh a,jxc_khjhsp b,jxc_goods c,jxc_ckxx e,jxc_khxx f where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.ck_sn=e.ck_sn and a.kh_sn=f.kh_sn and a.gl_djh='HH21050610001' order by b.id
select sum(jh_zzj) as zzj,jh_kmmc from jxc_khjhsp where jh_zzj<>0 and gl_djh='HH21050610001' group by jh_kmmc
update jxc_khjhsp set jh_xssl=2,jh_yj2=jh_yj2+(0) where id=1
select a.*,b.kh_name,c.ck_name,d.u_name from jxc_khjh a,jxc_khxx b,jxc_ckxx c,jxc_user d where a.kh_sn=b.kh_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.jh_status=1 and a.jh_flag='jh' and a.jh_rq>='2021-05-01' and a.jh_rq<='2021-05-31 23:59:59' and a.kh_sn='100001' and c.ck_asn like '%100001%' and (a.gl_djh like '%JH%' or a.jh_note like '%JH%') order by a.gl_djh desc
select a.*,b.g_name,b.g_jm from jxc_khjhsp a,jxc_goods b,jxc_khjh c where a.g_sn=b.g_sn and a.gl_djh=c.gl_djh and c.jh_status=1 and (a.g_sn like '%J%' or b.g_name like '%J%' or b.g_jm like '%J%') order by a.id

-- Quotations
insert into jxc_khbj (g_sn,kb_bj,kb_bjrq,kb_note,kh_sn,a_name,u_sn)  select g_sn,ts_dj,'2021-05-03','','100001',a_name,'100001' from jxc_tempspxf where a_name='admin' order by id
insert into jxc_ghsbj (g_sn,gb_bj,gb_bjrq,gb_note,ghs_sn,a_name,u_sn)  select g_sn,ts_dj,'2021-05-03','','100001',a_name,'100001' from jxc_tempspxf where a_name='admin' order by id
update jxc_khbj set kb_bj=10.5,kb_note='促销' where id=1
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,b.g_jj,b.g_sj,c.kh_name,d.u_name from jxc_khbj a,jxc_goods b,jxc_khxx c,jxc_user d where a.g_sn=b.g_sn and a.kh_sn=c.kh_sn and a.u_sn=d.u_sn and a.kb_bjrq>='2021-05-01' and a.kb_bjrq<='2021-05-31' order by a.id
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,b.g_jj,b.g_sj,c.ghs_name,d.u_name from jxc_ghsbj a,jxc_goods b,jxc_ghsxx c,jxc_user d where a.g_sn=b.g_sn and a.ghs_sn=c.ghs_sn and a.u_sn=d.u_sn and a.gb_bjrq>='2021-05-01' and a.gb_bjrq<='2021-05-31' order by a.id
delete from jxc_khbj where id=1
delete from jxc_ghsbj where id=1

-- Gifts
insert into jxc_zpxx (zp_sn,zp_name,zp_jm,zp_sl,zp_jf) values ('1001','眼镜盒','YJH',10,100)
select * from jxc_zpxx where zp_sn like '%Y%' or zp_name like '%Y%' or zp_jm like '%Y%' order by id desc
select zp_sn from jxc_zpjh where zp_sn='1001'
insert into jxc_zpjh (zp_sn,zp_jhrq,zp_sl,zp_note,a_name) values ('1001','2021-05-03',5,'','admin')
update jxc_zpxx set zp_sl=zp_sl+5 where zp_sn='1001'
select * from (select a.id,a.zp_sn,a.zp_jhrq as rq,a.zp_sl as zp_sl,1 as dsort from jxc_zpjh a where a.zp_sn='1001' union select a.id,a.g_sn as zp_sn,b.dh_dhrq as rq,-1*a.dh_sl as zp_sl,2 as dsort from jxc_dhzp a,jxc_dhd b where a.gl_djh=b.gl_djh and a.g_sn='1001' union select a.id,a.zp_sn,b.zp_zsrq as rq,-1*a.zp_sl as zp_sl,3 as dsort from jxc_zszp a,jxc_zsd b where a.gl_djh=b.gl_djh and a.zp_sn='1001') DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31' order by dsort,id desc
select * from jxc_goods where g_jy=0 and g_sn<>'00000000' and g_iszp<>0 and g_sy=0 order by g_sn
select * from jxc_goods where g_jy=0 and g_sn<>'00000000' and g_iszp<>0 and g_sy<>0 order by g_sn
update jxc_goods set g_zpjf=120 where g_sn='20000001'
update jxc_goods set g_sy=1 where g_sn='20000001'
