-- Goods, balances and ledger rows that the statements below work on
insert into jxc_goods (g_sn,g_name,g_qc,g_jm,g_jj,g_sj,g_scjj,g_pjjj,g_cbj,g_kc,g_zdkc,g_zhxs,g_jy,g_gdcbj,g_sptm,gc_cid,gc_sn,dw_name,gg_name,color_name,ghs_sn,g_qgd,g_sgd,g_isjp,g_sccs,g_cgpl,g_xspl,g_bz,g_lsj) values ('20000001','镜片甲','镜片甲','JPJ',5,12,5,5,5,10,20,1,0,0,'690001',2,'1000','片','','','100001','-1.25','-0.5',1,'丹阳',0,0,'',15)
insert into jxc_goods (g_sn,g_name,g_qc,g_jm,g_jj,g_sj,g_scjj,g_pjjj,g_cbj,g_kc,g_zdkc,g_zhxs,g_jy,g_gdcbj,g_sptm,gc_cid,gc_sn,dw_name,gg_name,color_name,ghs_sn,g_qgd,g_sgd,g_isjp,g_sccs,g_cgpl,g_xspl,g_bz,g_lsj) values ('20000002','镜架乙','镜架乙','JJY',50,120,50,50,50,3,0,1,0,0,'690002',2,'1000','副','','','100001','','',0,'温州',0,0,'',150)
insert into jxc_ckxx (ck_sn,ck_name,ck_jm,ck_asn,ck_aname,ck_default,ck_pos) values ('100002','分仓库','FCK','100001,','admin,',0,0)
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (10,5,0,'20000001','100001',10)
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (3,50,0,'20000002','100001',3)
insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb) values ('2021-05',13,200,'100001',0,0,0,0,0,0)
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_je,gl_dzl,gl_kc,gl_pjjj,gl_kczje,gl_sqsl,gl_sqje,gl_lr,ck_sn,ck_name,ghs_sn,ghs_name,u_name,a_name,id2,gl_fdmc,gl_taxje,gl_zcb,gl_cbj) values ('cj','CJ21050310001','2021-05-03','20000001','镜片甲','JPJ','片',5,10,50,50,1,10,5,50,0,0,0,'100001','主仓库','100001','普通供货商','默认员工','admin',1,'',0,0,0)
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_je,gl_dzl,gl_kc,gl_pjjj,gl_kczje,gl_sqsl,gl_sqje,gl_lr,ck_sn,ck_name,ghs_sn,ghs_name,u_name,a_name,id2,gl_fdmc,gl_taxje,gl_zcb,gl_cbj) values ('xs','XS21050410001','2021-05-04 10:00:00','20000001','镜片甲','JPJ','片',12,2,24,24,1,8,5,40,10,50,14,'100001','主仓库','100001','普通客户','默认员工','admin',1,'',0,10,5)

-- Replay
select gl_djh,g_sn,gl_kdrq,ck_sn,gl_flag from jxc_goodslist where id=1
select top 1 gl_kc,gl_pjjj,gl_kczje from jxc_goodslist where g_sn='20000001' and ck_sn='100001' and gl_kdrq<'2021-05-04' order by gl_kdrq desc,id desc
select g_pjjj from jxc_goods where g_sn='20000001'
select * from jxc_goodslist where g_sn='20000001' and ck_sn='100001' and gl_kdrq>='2021-05-03' order by gl_kdrq,id
select * from jxc_goodslist where g_sn='20000001' and ck_sn='100001' and gl_kdrq>='2021-05-03' and id<>1 order by gl_kdrq,id
update jxc_goodslist set gl_sqsl=10,gl_sqje=50 where id=2
update jxc_goodslist set gl_pjjj=5,gl_kc=8,gl_kczje=40 where id=2
update jxc_goodslist set gl_pjjj=5,gl_sqsl=10,gl_sqje=50,gl_kc=8,gl_kczje=40 where id=2
update jxc_kcsp set kc_cbj=5.5 where ck_sn='100001' and g_sn='20000001'

-- Costs
select iif(sum(kc_zsl)<>0,abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2)),-1) as cbj from jxc_kcsp where g_sn='20000001'
select iif(sum(kc_zsl)<>0,abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2)),-1) as cbj from jxc_kcsp where g_sn='99999999'
select g_gdcbj from jxc_goods where g_sn='20000001'
select g_jj from jxc_goods where g_sn='20000001'
select top 1 gl_pjjj from jxc_goodslist where ck_sn='100001' and g_sn='20000001' and gl_kdrq<='2021-05-31' order by gl_kdrq desc,id desc
select top 1 gl_pjjj from jxc_goodslist where ck_sn='100001' and g_sn='20000001' and gl_kdrq>'2021-04-01' order by gl_kdrq,id
select kc_cbj from jxc_kcsp where ck_sn='100001' and g_sn='20000001'
select top 1 gl_pjjj from jxc_goodslist where gl_flag<>'qc' and ck_sn='100001' and g_sn='20000001' and gl_kdrq='2021-05-03' and id<9 order by gl_kdrq desc,id desc
select top 1 gl_pjjj from jxc_goodslist where gl_flag<>'qc' and ck_sn='100001' and g_sn='20000001' and gl_kdrq<'2021-05-04' order by gl_kdrq desc,id desc
select top 1 gl_pjjj from jxc_goodslist where ck_sn='100001' and g_sn='20000001' and gl_kdrq<'2021-05-04' order by gl_kdrq desc,id desc
update jxc_goods set g_kc=g_kc+(5),g_cgpl=g_cgpl+1,g_scjj=5.5,ghs_sn='100001',g_pjjj=5.5 where g_sn='20000001'
update jxc_goods set g_pjjj=5.5 where g_pjjj<0 and g_sn='20000001'
update jxc_goods set g_kc=g_kc+(-5),g_cgpl=g_cgpl-1,g_pjjj=5 where g_sn='20000001'

-- Month rows
select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq='2021-06') order by ck_sn
insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb) values ('2021-06',0,0,'100001',0,0,0,0,0,0)
select sum(kc_sl) as sl,sum(kc_sl*kc_cbj) as zje,ck_sn from jxc_kcsp group by ck_sn
select sum(kc_sl) as sl,sum(kc_sl*kc_cbj) as zje from jxc_kcsp where ck_sn='100001'
update jxc_kcjs set js_sl=13,js_zje=200.5 where js_rq='2021-06' and ck_sn='100001'
update jxc_kcjs set js_sl=js_sl+(2),js_zje=js_zje+(10.5) where js_rq='2021-05' and ck_sn='100001'
update jxc_kcjs set js_sl=js_sl-(2),js_zje=js_zje-(10.5) where js_rq='2021-05' and ck_sn='100001'

-- Shortage of a document, one form a kind
select top 1 a.g_sn from (select g_sn,sum(jh_sl) as sl from jxc_jhsp where j_sn='CJ21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn
select top 1 a.g_sn from (select g_sn,sum(th_sl) as sl from jxc_thsp where gl_djh='CT21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn
select top 1 a.g_sn from (select g_sn,sum(ls_sl) as sl from jxc_lsxssp where gl_djh='XS21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn
select top 1 a.g_sn from (select g_sn,sum(th_sl) as sl from jxc_xsthsp where gl_djh='XT21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn
select top 1 a.g_sn from (select g_sn,sum(db_sl) as sl from jxc_dbsp where gl_djh='DB21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn
select top 1 a.g_sn from (select g_sn,sum(jh_sl) as sl from jxc_khjhsp where gl_djh='JH21050310001' and g_sn<>'00000000' group by g_sn) a,jxc_kcsp b where a.g_sn=b.g_sn and a.sl>b.kc_zsl and b.ck_sn='100001' order by a.g_sn

-- Recomputation
delete from jxc_goodslist where (ghs_name='期初结转' or ghs_name='库存同步') and gl_flag='qc'
select g_sn,ck_sn,count(*) as n from jxc_kcsp group by g_sn,ck_sn having count(*)>1
select top 1 id from jxc_kcsp where g_sn='20000001' and ck_sn='100001'
delete from jxc_kcsp where g_sn='20000001' and ck_sn='100001' and id<>1
select * from jxc_kcsp where g_sn<>'00000000' and ck_sn='100001' order by ck_sn,g_sn
select top 1 g_pjjj from jxc_goods where g_sn='20000001'
update jxc_goods set g_kc=0
select g_sn,sum(kc_sl) as kcsl from jxc_kcsp group by g_sn
update jxc_goods set g_kc=10 where g_sn='20000001'
select a.id,a.kc_xssl,b.sl from jxc_kcsp a,(select g_sn,ck_sn,sum(gl_sl) as sl from jxc_goodslist where gl_flag='xs' or gl_flag='xt' group by g_sn,ck_sn) b where a.g_sn=b.g_sn and a.ck_sn=b.ck_sn and a.kc_xssl<>b.sl
update jxc_kcsp set kc_xssl=2 where g_sn='20000001' and ck_sn='100001'

-- Costs of what left stock
select distinct g_sn,ck_sn from jxc_goodslist where g_sn<>'00000000' and gl_kdrq>='2021-05-01' and  ((gl_flag='bs') or (gl_flag='by') or (gl_flag='pl') or (gl_flag='wp') or (gl_flag='wt') or (gl_flag='hh') or (gl_flag='xt') or (gl_flag='lt') or (gl_flag='xs') or (gl_flag='ly') or (gl_flag='dh') or (gl_flag='jh')) and ck_sn='100001'
select * from jxc_goodslist where g_sn='20000001' and ck_sn='100001' and gl_kdrq>='2021-05-01' and (gl_flag='bs' or gl_flag='xs') order by gl_kdrq,id
update jxc_goodslist set gl_dj=(5.25),gl_zje=gl_sl*(5.25),gl_je=gl_sl*(5.25) where id=1
update jxc_bssp set bs_dj=5.25,bs_zje=bs_sl*5.25 where g_sn='20000001' and gl_djh='BS21050310001'
update jxc_bysp set by_dj=5.25,by_zje=by_sl*5.25 where g_sn='20000001' and gl_djh='BY21050310001'
update jxc_khjhsp set jh_dj=5.25,jh_zje=jh_sl*5.25 where g_sn='20000001' and gl_djh='JH21050310001'
update jxc_goodslist set gl_pjjj=(5.25),gl_kczje=gl_kc*(5.25) where id=1
update jxc_goodslist set gl_cbj=(5.25),gl_zcb=gl_sl*(5.25),gl_lr=gl_zje-gl_sl*(5.25) where id=2
update jxc_lsxssp set ls_cbj=5.25,ls_zcb=ls_sl*5.25 where g_sn='20000001' and gl_djh='XS21050410001'
update jxc_xsthsp set th_cbj=5.25,th_zcb=th_sl*5.25 where g_sn='20000001' and gl_djh='XT21050410001'

-- Staging
insert into jxc_tempspxf (g_sn,ts_dj,ts_sl,ts_zje,ts_je,ts_dzl,ts_tax,ts_taxdj,ts_taxje,a_name,ghs_sn,t_zp,ts_note,ts_cbj,ts_zcb,ts_cbj2,ts_lsj) values ('20000001',5,2,10,10,1,0,5,0,'admin','0','','',5,10,5,0)
delete from jxc_tempspxf where (g_sn='' or g_sn is null) and a_name='admin'
select * from jxc_tempspxf where a_name='admin' order by id

-- A receipt through its life
insert into jxc_jhd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,j_note,a_name,j_status,j_checker,j_chkrq,j_jsfs,j_kmmc,j_yhje,j_hkje,j_th,j_crk,j_qk,j_fpno,j_fpje,j_yf,j_bzf,j_yffs,j_sn2,ht_sn) values ('CJ21050310001','100001','100001','2021-05-03',50,40,'100001','','admin',0,'','',0,'现金',0,0,0,1,0,'',0,0,0,'','','')
insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_rksl,jh_qxsl,jh_dzl,jh_bz,gl_djh2) values ('CJ21050310001',5,10,50,'20000001','admin',50,0,5,0,0,0,1,'','')
update jxc_jhsp set j_sn='CJ21050310002' where j_sn='CJ21050310001' and a_name='admin'
update jxc_jhsp set j_sn='CJ21050310001' where j_sn='CJ21050310002'
select top 1 id from jxc_jhd where j_sn='CJ21050310001' order by id desc
select top 1 id from jxc_jhsp where j_sn='CJ21050310001' order by id
select * from jxc_jhd where j_sn='CJ21050310001'
select count(*) from jxc_jhd where j_sn='CJ21050310001'
select top 1 a_name from jxc_jhd where j_status=1 and j_sn='CJ21050310001' order by id desc
select a_name,min(id) as rid from jxc_jhd where j_status=0 and j_sn='CJ21050310001' group by a_name
update jxc_jhd set j_status=1,j_checker='admin',j_chkrq='2021-05-03',j_yhje=j_yfje-j_sfje where j_sn='CJ21050310001'
delete from jxc_jhd where j_status=0 and j_sn='CJ21050310001'
select a.*,b.u_name,c.ghs_name,d.ck_name from jxc_jhd a,jxc_user b,jxc_ghsxx c,jxc_ckxx d where a.u_sn=b.u_sn and a.ghs_sn=c.ghs_sn and a.ck_sn=d.ck_sn and a.j_sn='CJ21050310001'
insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) values ('2021-05-03','CJ21050310001','采购进货',-1*40,'默认员工','普通供货商','100001','主仓库','现金','','admin','1',0)
insert into jxc_ysyfk (k_ghskh,a_name,u_sn,k_fkfs,k_sfje,k_yhje,k_qcje,k_ljje,k_yfje,k_type,k_djlx,k_djtxt,k_note,k_flag,k_rq,gl_djh) values ('100001','admin','100001','现金',40,0,0,0,40,'ghs','CJ','采购进货单','',1,'2021-05-03','CJ21050310001')
insert into jxc_fpdjb (gl_djh,fp_rq,fp_no,fp_yfje,fp_sfje,fp_kpje,fp_qcje,fp_ljje,fp_flag,fp_type,fp_djlx,fp_djtxt,fp_note,fp_ghskh,fp_check,fp_checker,fp_chkrq,u_sn,a_name) values ('CJ21050310001','2021-05-03','',50,40,0,0,50,1,'ghs','CJ','采购进货单','','100001',1,'admin','2021-05-03','100001','admin')
insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,de_sn,fy_kmmc,fy_chk,fy_flag) values ('CJ21050310001','2021-05-03','运费',-1*8,'100001','采购单CJ21050310001产生的运费','admin','费用','100001','现金','1','1')
insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) values ('2021-05-03','CJ21050310001','费用付款',-1*8,'默认员工','普通供货商','100001','主仓库','现金','采购单CJ21050310001产生的运费','admin','1',0)
update jxc_jhsp set jh_rksl=jh_sl where j_sn='CJ21050310001'
update jxc_jhsp set id2=id,jh_qxsl=0 where j_sn='CJ21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,gl_cbj,gl_zcb,id2,gl_djh2,gl_qxsl) select 'cj' as glflag,a.j_sn,a.j_jhrq,b.g_sn,c.g_name,c.g_jm,c.dw_name,b.jh_dj,b.jh_sl,b.jh_zje,0,b.jh_dzl,d.u_name,b.a_name,e.ck_sn,e.ck_name,f.ghs_sn,f.ghs_name,c.gg_name,c.color_name,b.jh_sl,'',0,0,c.g_pjjj,0,a.j_checker,a.j_chkrq,0,0,b.jh_bz,a.j_note,b.jh_tax,b.jh_taxdj,b.jh_taxje,b.jh_je,0,0,0,b.id2,a.j_sn2,0 from jxc_jhd a,jxc_jhsp b,jxc_goods c,jxc_user d,jxc_ckxx e,jxc_ghsxx f where a.j_sn=b.j_sn and b.g_sn=c.g_sn and a.u_sn=d.u_sn and a.ck_sn=e.ck_sn and a.ghs_sn=f.ghs_sn and a.j_sn='CJ21050310001' order by b.id
select a.id,a.g_sn,a.ck_sn,a.gl_sl,a.gl_dj,b.jh_rksl from jxc_goodslist a,jxc_jhsp b where a.id2=b.id2 and a.g_sn=b.g_sn and a.g_sn<>'00000000' and a.gl_djh='CJ21050310001' order by a.id
select g_sn from jxc_kcsp where g_sn='20000001' and ck_sn='100001'
update jxc_kcsp set kc_sl=kc_sl+(10),kc_zsl=kc_zsl+(10) where ck_sn='100001' and g_sn='20000001'
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (10,5,0,'20000001','100002',10)
update jxc_kcsp set kc_xssl=kc_xssl+(2),kc_sl=kc_sl-(2),kc_zsl=kc_zsl-(2) where ck_sn='100001' and g_sn='20000001'
update jxc_kcsp set kc_sl=kc_sl-(-2),kc_zsl=kc_zsl-(-2),kc_xssl=kc_xssl+(-2) where ck_sn='100001' and g_sn='20000001'
update jxc_goods set g_kc=g_kc-(2),g_xspl=g_xspl+1 where g_sn='20000001'
update jxc_goods set g_kc=g_kc+(-2),g_cgpl=g_cgpl-1,g_pjjj=5 where g_sn='20000001'
update jxc_goodslist set gl_lr=gl_je where g_sn='00000000' and gl_djh='XS21050310001'

-- A paid amount that differs from the total
select top 1 id from jxc_jhsp where g_sn='00000000' and j_sn='CJ21050310001'
insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_rksl,jh_dzl) values ('CJ21050310001',0,0,-3.5,'00000000','admin',-3.5,0,0,0,0,1)
update jxc_jhsp set jh_zje=-3.5 where g_sn='00000000' and j_sn='CJ21050310001'
select count(*) from jxc_jhsp where jh_sl>0 and j_sn='CJ21050310001'
update jxc_jhsp set jh_zje=jh_zje-(1.17) where jh_zje>=1.17 and jh_sl>0 and j_sn='CJ21050310001'
update jxc_jhsp set jh_taxdj=round(jh_zje/jh_sl+0.000000001,2) where jh_sl>0 and j_sn='CJ21050310001'
update jxc_jhsp set jh_dj=round(jh_taxdj/(1+jh_tax/100)+0.000000001,2) where jh_sl>0 and j_sn='CJ21050310001'
update jxc_jhsp set jh_je=jh_dj*jh_sl,jh_taxje=jh_zje-jh_dj*jh_sl where jh_sl>0 and j_sn='CJ21050310001'
select sum(jh_zje) as zje from jxc_jhsp where j_sn='CJ21050310001'
update jxc_jhd set j_yfje=48.83,j_sfje=48.83 where j_sn='CJ21050310001'

-- Cancel of an audit
select top 1 gl_djh from jxc_rksp where j_sn='CJ21050310001'
select j_jhrq,ck_sn,ghs_sn,j_checker from jxc_jhd where j_status=1 and j_sn='CJ21050310001'
select xj_kmmc from jxc_xjyh where gl_djh='CJ21050310001'
update jxc_kcsp set kc_sl=kc_sl-(10),kc_zsl=kc_zsl-(10) where ck_sn='100001' and g_sn='20000001'
update jxc_goods set g_kc=g_kc-(10),g_cgpl=g_cgpl-1,g_pjjj=5 where g_sn='20000001'
update jxc_jhd set j_status=0,j_chkrq='',j_checker='',j_hkje=0 where j_sn='CJ21050310001'
delete from jxc_goodslist where gl_djh='CJ21050310001'
delete from jxc_xjyh where gl_djh='CJ21050310001' or xj_note like '%CJ21050310001%'
delete from jxc_yyfy where gl_djh='CJ21050310001'
delete from jxc_ysyfk where gl_djh='CJ21050310001' or gl_djh2='CJ21050310001'
delete from jxc_ysyfk_dj where gl_djh='CJ21050310001' or gl_djh2='CJ21050310001'
delete from jxc_fpdjb where gl_djh='CJ21050310001'
update jxc_jhsp set jh_qxsl=0 where id2=1
update jxc_thsp set id2=0 where gl_djh='CT21050310001'
update jxc_thd set th_note='' where gl_djh='CT21050310001'
update jxc_jhd set j_crk=0 where j_sn='CJ21050310001'
select top 1 gl_djh from jxc_cksp where gl_djh2='XS21050310001'
update jxc_lsxsd set ls_status=0,ls_chkrq='',ls_checker='',ls_hkje=0,ls_dhbz=0 where gl_djh='XS21050310001'
delete from jxc_posxssp where gl_djh='XS21050310001'
delete from jxc_posxsd where gl_djh='XS21050310001'
delete from jxc_yyfy where fy_note like '%XS21050310001%'
update jxc_xsthd set th_status=0,th_chkrq='',th_checker='',th_hkje=0,th_qk=0 where gl_djh='XT21050310001'
delete from jxc_yyfy where gl_djh='PD21050310001' or fy_note like '%PD21050310001%'
update jxc_khjhsp set jh_hhsl=jh_hhsl-(2) where id=1
update jxc_khjhsp set jh_hhsl=0 where jh_hhsl<0 and id=1
update jxc_khjhsp set jh_xssl=jh_xssl-(2) where id=1
delete from jxc_khjhsp where gl_djh='HH21050310001'
delete from jxc_khjh where gl_djh='HH21050310001'
select top 1 g_sn from jxc_thsp where gl_djh='CT21050310001' and g_sn not in (select g_sn from jxc_kcsp where ck_sn='100001')

-- Transfer
insert into jxc_kcdbd (gl_djh,ck_out,ck_in,db_dbrq,db_status,db_checker,db_chkrq,u_sn,db_note,a_name) values ('DB21050310001','100001','100002','2021-05-03',0,'','','100001','','admin')
insert into jxc_dbsp (gl_djh,g_sn,db_sl,db_dj,db_sj,db_zje,a_name) values ('DB21050310001','20000001',2,5,12,10,'admin')
select a.g_sn from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_sptm='690001' and b.ck_sn='100001' and b.kc_sl>0  order by a.g_sn
update jxc_dbsp set db_sl=db_sl+1,db_zje=(db_sl+1)*db_dj where id=1
select * from jxc_kcdbd where gl_djh='DB21050310001' order by id desc
delete from jxc_kcdbd where db_status=0 and gl_djh='DB21050310002'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj) select 'db' as glflag,a.gl_djh,a.db_dbrq,b.g_sn,c.g_name,c.g_jm,c.dw_name,b.db_dj,-1*b.db_sl,-1*b.db_dj*b.db_sl,0,1,d.u_name,b.a_name,e.ck_sn,e.ck_name,'','调拨出库',c.gg_name,c.color_name,b.db_sl,'',0,0,c.g_pjjj,0,'admin','2021-05-03',0,0,'',a.db_note,0,b.db_dj,0,-1*b.db_dj*b.db_sl,0 from jxc_kcdbd a,jxc_dbsp b,jxc_goods c,jxc_user d,jxc_ckxx e where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.u_sn=d.u_sn and a.ck_out=e.ck_sn and a.gl_djh='DB21050310001' order by b.id
update jxc_kcdbd set gl_djh='DB21050410001',db_dbrq='2021-05-04' where gl_djh='DB21050310001'
update jxc_dbsp set gl_djh='DB21050410001' where gl_djh='DB21050310001'
update jxc_kcdbd set db_status=0,db_chkrq='',db_checker='' where gl_djh='DB21050410001'

-- Stocktake
insert into jxc_kcpd (gl_djh,pd_sl,kc_sl,pd_rq,pd_note,pd_status,pd_checker,pd_chkrq,ck_sn,u_sn,a_name) values ('PD21050310001',9,10,'2021-05-03','',0,'','','100001','100001','admin')
insert into jxc_kcpdsp (gl_djh,g_sn,pd_sl,kc_sl,a_name,pd_dj,pd_zje,kc_zsl) select 'PD21050310001',g_sn,ts_sl,ts_dj,a_name,ts_dzl,ts_zje,ts_je from jxc_tempspxf where a_name='admin' and g_sn not in (select g_sn from jxc_kcpdsp where gl_djh='PD21050310001' and a_name='admin') order by id
select sum(pd_sl) as pdsl,sum(kc_sl) as kcsl from jxc_kcpdsp where gl_djh='PD21050310001'
insert into jxc_kcpdsp (gl_djh,g_sn,pd_sl,kc_sl,a_name,pd_dj,pd_zje,kc_zsl) select 'PD21050310001',g_sn,ts_sl,ts_zje,a_name,ts_dj,round((ts_sl-ts_zje)*ts_dj+0.000000001,2),ts_je from jxc_tempspxf where ghs_sn='0' and a_name='admin' order by id
select top 1 pd_rq from jxc_kcpd where ck_sn='100001' and pd_rq>'2021-05-02'
select top 1 gl_kdrq from jxc_goodslist where ck_sn='100001' and gl_kdrq>'2021-05-03 23:59:59' and g_sn in (select distinct g_sn from jxc_kcpdsp where gl_djh='PD21050310001') order by id
select top 1 gl_djh from jxc_goodslist where gl_djh<>'' and ck_sn='100001' and gl_kdrq>'2021-05-03 23:59:59' and g_sn in  (select distinct g_sn from jxc_kcpdsp where gl_djh='PD21050310001')  order by id
update jxc_kcpdsp set id2=id where gl_djh='PD21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_dzl,ghs_sn,ghs_name,gl_sysl,gl_pjjj,gl_taxdj,id2,ck_sn,ck_name,u_name,a_name,gl_kc,gl_kczje,gl_sqsl,gl_sqje) select 'pd' as glflag,a.gl_djh,a.pd_rq,b.g_sn,c.g_name,b.pd_dj,b.pd_sl-b.kc_sl,b.pd_zje,b.pd_zje,1,'','库存盘点',b.pd_sl,b.pd_dj,b.pd_dj,b.id2,d.ck_sn,d.ck_name,e.u_name,b.a_name,0,0,0,0 from jxc_kcpd a,jxc_kcpdsp b,jxc_goods c,jxc_ckxx d,jxc_user e where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.ck_sn=d.ck_sn and a.u_sn=e.u_sn and b.pd_sl<>b.kc_sl and a.gl_djh='PD21050310001' order by b.id
update jxc_kcsp set kc_sl=9,kc_zsl=9 where g_sn='20000001' and ck_sn='100001'
update jxc_goods set g_kc=g_kc+-1 where g_sn='20000001'
update jxc_goods set g_kc=g_kc+(-1) where g_sn='20000001'
update jxc_kcsp set kc_sl=kc_sl,kc_zsl=kc_zsl where g_sn='20000001' and ck_sn='100001'
select max(id) as rid from jxc_goodslist where gl_djh='PD21050310001'
select top 1 gl_djh from jxc_goodslist where ck_sn='100001' and gl_kdrq>='2021-05-03 23:59:59' and id>2 and g_sn in  (select distinct g_sn from jxc_kcpdsp where gl_djh='PD21050310001') 

-- Loss and overflow
insert into jxc_bsd (gl_djh,ck_sn,bs_bsrq,bs_status,bs_checker,bs_chkrq,u_sn,bs_note,a_name) values ('BS21050310001','100001','2021-05-03',0,'','','100001','','admin')
insert into jxc_bssp (gl_djh,bs_sl,bs_dj,bs_zje,bs_note,g_sn,a_name) select 'BS21050310001',a.ts_sl,b.kc_cbj,round(b.kc_cbj*a.ts_sl+0.000000001,2),a.ts_note,a.g_sn,a.a_name from jxc_tempspxf a,jxc_kcsp b where a.g_sn=b.g_sn and b.ck_sn='100001' and a.a_name='admin' order by a.id
update jxc_bssp set bs_sl=3,bs_zje=round(bs_dj*3+0.000000001,2),bs_note='碎' where id=1
insert into jxc_bysp (gl_djh,by_sl,by_dj,by_zje,by_note,g_sn,a_name) select 'BY21050310001',a.ts_sl,b.kc_cbj,round(b.kc_cbj*a.ts_sl+0.000000001,2),a.ts_note,a.g_sn,a.a_name from jxc_tempspxf a,jxc_kcsp b where a.g_sn=b.g_sn and b.ck_sn='100001' and a.a_name='admin' order by a.id
update jxc_kcsp set kc_sl=kc_sl+(-2),kc_zsl=kc_zsl+(-2) where g_sn='20000001' and ck_sn='100001'
update jxc_bsd set gl_djh='BS21050410001',bs_bsrq='2021-05-04' where gl_djh='BS21050310001'
update jxc_bssp set gl_djh='BS21050410001' where gl_djh='BS21050310001'
select 'BS' as lx,gl_djh,bs_bsrq as rq,bs_note as note,a_name from jxc_bsd where bs_status=0 union all select 'BY' as lx,gl_djh,by_byrq as rq,by_note as note,a_name from jxc_byd where by_status=0 order by rq

-- Split and bundle
insert into jxc_cfd (gl_djh,ck_sn,cf_cfrq,g_sn,cf_cbj,cf_sl,cf_status,cf_checker,cf_chkrq,u_sn,a_name,cf_note) values ('CF21050310001','100001','2021-05-03','20000001',5,1,0,'','','100001','admin','')
insert into jxc_cfsp (gl_djh,g_sn,cf_dj,cf_sl,cf_zje,ck_sn,a_name) values ('CF21050310001','20000002',50,1,50,'100001','admin')
select kc_sl from jxc_kcsp where ck_sn='100001' and g_sn='20000001'
delete from jxc_cfsptmp where a_name='admin'
insert into jxc_cfsptmp (g_sn,g_name,tmp_cksl,tmp_ckje,tmp_rksl,tmp_rkje,tmp_currkc,tmp_kc,a_name) values ('20000001','镜片甲',1,5,0,0,10,9,'admin')
insert into jxc_kbsp (gl_djh,g_sn,kb_dj,kb_sl,kb_zje,ck_sn,a_name) values ('KB21050310001','20000001',5,2,10,'100001','admin')
select sum(kb_zje)/4 as cbj,sum(kb_zje) as zje from jxc_kbsp where gl_djh='KB21050310001'
update jxc_goods set g_kc=g_kc+(1),g_pjjj=50 where g_sn='20000002'
insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,fy_flag,de_sn,fy_kmmc,fy_chk) values ('CF21050310001','2021-05-03','费用',45,'100001','拆分单CF21050310001成本差额','admin','费用','1','100001','现金','1')

-- Opening stock
select g_sn from jxc_kcsp where g_sn='20000001' and ck_sn='100002'
update jxc_kcjs set js_sl=js_sl+3,js_zje=js_zje+round(3*5.5+0.000000001,2) where js_rq='2021-05' and ck_sn='100001'
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (3,5.5,0,'20000002','100002',3)
update jxc_goods set g_kc=g_kc+3,g_jj=5.5,g_scjj=5.5,g_pjjj=5.5 where g_sn='20000002'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj) select 'qc' as glflag,'','2021-01-01',g_sn,g_name,g_jm,dw_name,g_jj,3,round(3*5.5+0.000000001,2),0 as lr,1 as dzl,'默认员工','admin','100002','分仓库','','期初建账',gg_name,color_name,3,'',0,3,g_jj,round(3*5.5+0.000000001,2),'admin','2021-05-03',0,0,g_bz,0,g_jj,0,round(3*5.5+0.000000001,2),0 from jxc_goods where g_sn='20000002'
update jxc_kcsp set kc_cbj=6,kc_sl=4,kc_zsl=4 where g_sn='20000002' and ck_sn='100002'
update jxc_goodslist set gl_dj=6,gl_sl=4,gl_zje=round(4*6+0.000000001,2),gl_pjjj=6,gl_kc=4,gl_taxdj=6,gl_kczje=round(4*6+0.000000001,2),gl_je=round(4*6+0.000000001,2) where gl_djh='' and g_sn='20000002' and ck_sn='100002'
select g_sn,g_jj from jxc_goods where g_sn<>'00000000' and g_sn not in (select g_sn from jxc_kcsp where ck_sn='100002') and gc_sn='1000' order by g_sn
select top 1 a.j_sn as gl_djh from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and a.g_sn='20000001' and b.ck_sn='100001' order by a.id
select top 1 a.gl_djh from jxc_lsxssp a,jxc_lsxsd b where a.gl_djh=b.gl_djh and a.g_sn='20000001' and b.ck_sn='100001' order by a.id
select top 1 gl_djh from jxc_goodslist where gl_flag<>'qc' and g_sn='20000001' and ck_sn='100001' order by id
delete from jxc_kcsp where g_sn='20000002' and ck_sn='100002'
update jxc_kcjs set js_sl=js_sl-(4),js_cgsl=js_cgsl-(4),js_zje=js_zje-(24),js_cgje=js_cgje-(24) where js_rq='2021-05' and ck_sn='100001'
update jxc_goods set g_kc=g_kc-(4) where g_sn='20000002'
delete from jxc_goodslist where g_sn='20000002' and ck_sn='100002'

-- Current stock
select a.*,c.gc_name,b.kcsl,b.kczsl,b.xssl,b.cbjj,round(kcsl/g_zhxs+0.000000001,2) as fzkc,round(b.cbjj*b.kcsl+0.000000001,2) as kczje,a.g_sj*b.kcsl as xszje from jxc_goods a,jxc_goodsclass c,(select g_sn,kc_sl as kcsl,kc_zsl as kczsl,kc_xssl as xssl,round(kc_cbj+0.000000001,2) as cbjj from jxc_kcsp where ck_sn='100001') b where a.g_sn=b.g_sn and a.g_sn<>'00000000' and a.gc_sn=c.gc_sn
select a.*,c.gc_name,b.kcsl,b.kczsl,b.xssl,b.cbjj,round(kcsl/g_zhxs+0.000000001,2) as fzkc,round(b.cbjj*b.kcsl+0.000000001,2) as kczje,a.g_sj*b.kcsl as xszje from jxc_goods a,jxc_goodsclass c,(select g_sn,kc_sl as kcsl,kc_zsl as kczsl,kc_xssl as xssl,round(kc_cbj+0.000000001,2) as cbjj from jxc_kcsp where ck_sn='100001') b where a.g_sn=b.g_sn and a.g_sn<>'00000000' and a.gc_sn=c.gc_sn and a.gc_sn like '1000%'  and (a.g_sn like '%J%' or a.g_jm like '%J%' or a.g_name like '%J%' or a.g_sccs like '%J%' or a.gg_name like '%J%' or a.g_sptm like '%J%' or a.color_name like '%J%')  and b.kcsl<>0  and a.g_jy=0  and a.ghs_sn='100001' and b.kcsl >=1 order by a.g_sn
select *,round(cbjj*kcsl+0.000000001,2) as kczje,round(kcsl/g_zhxs+0.000000001,2) as fzkc from (select a.*,c.gc_name,b.kcsl,b.kczsl,b.xssl,iif(b.kczsl<>0,abs(round(b.zje/b.kczsl+0.000000001,2)),a.g_pjjj) as cbjj,a.g_sj*b.kcsl as xszje from jxc_goods a,jxc_goodsclass c,(select g_sn,sum(kc_sl) as kcsl,sum(kc_zsl) as kczsl,sum(kc_xssl) as xssl,sum(kc_sl*kc_cbj) as zcbj,sum(kc_zsl*kc_cbj) as zje from jxc_kcsp x,jxc_ckxx y where x.ck_sn=y.ck_sn and g_sn<>'00000000' and y.ck_asn like '%100001%' group by g_sn) b where a.g_sn=b.g_sn and a.gc_sn=c.gc_sn) DERIVEDTBL order by g_sn

-- Stock of a past day
delete from jxc_jxchz where a_name='admin'
insert into jxc_jxchz (id2,a_name) select max(x.id),'admin' from jxc_goodslist x,(select max(gl_kdrq) as kdrq,g_sn,ck_sn from jxc_goodslist where ck_sn='100001' and gl_kdrq<='2021-05-31 23:59:59' group by g_sn,ck_sn) y where x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and x.gl_kdrq=y.kdrq group by x.g_sn,x.ck_sn
select a.g_sn,a.g_name,a.dw_name,a.g_pjjj,b.kc_sl,b.kc_zsl,b.ck_sn,d.ck_name,a.gg_name,a.color_name,d.gl_kc,d.gl_pjjj,gl_kczje,c.gc_name from jxc_goods a,jxc_kcsp b,jxc_goodsclass c,(select g_sn,ck_sn,gl_kc,gl_kczje,gl_pjjj,ck_name from jxc_goodslist where id in (select id2 from jxc_jxchz where a_name='admin')) d where a.g_sn=b.g_sn and b.g_sn=d.g_sn and b.ck_sn=d.ck_sn and a.gc_sn=c.gc_sn and a.g_jy=0 and a.g_sn<>'00000000' and b.ck_sn='100001' order by a.g_sn

-- Lens matrix
select g_kc,g_qgd,g_sgd,g_name from jxc_goods where g_name='镜片甲' order by g_sn
select b.kc_sl as g_kc,a.g_qgd,a.g_sgd,a.g_name from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_name='镜片甲' and b.ck_sn='100001' order by a.g_sn
select distinct a.g_qgd from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_name='镜片甲' and b.ck_sn like '%100001%' order by a.g_qgd
select distinct g_qgd from jxc_goods where g_name='镜片甲' order by g_qgd
select distinct g_sgd from jxc_goods where g_name='镜片甲' order by g_sgd

-- Book against ledger
insert into jxc_jxchz (hz_kc,a_name) select max(x.id),'admin' from jxc_goodslist x,(select max(gl_kdrq) as kdrq,g_sn,ck_sn from jxc_goodslist where ck_sn='100001' group by g_sn,ck_sn) y where x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and x.gl_kdrq=y.kdrq group by x.g_sn,x.ck_sn
select a.g_sn,a.g_name,a.g_jm,a.dw_name,a.g_pjjj,b.kc_sl,b.kc_zsl,b.ck_sn,d.ck_name,a.gg_name,a.color_name,d.gl_kc,gl_kczje from jxc_goods a,jxc_kcsp b,(select g_sn,ck_sn,gl_kc,gl_kczje,ck_name from jxc_goodslist where id in (select hz_kc from jxc_jxchz where a_name='admin')) d where a.g_sn=b.g_sn and b.g_sn=d.g_sn and b.ck_sn=d.ck_sn   and b.kc_zsl<>d.gl_kc 
select a.g_sn,a.g_name,a.g_jm,a.dw_name,a.g_pjjj,b.kc_sl,b.kc_zsl,b.ck_sn,d.ck_name,a.gg_name,a.color_name,d.gl_kc,gl_kczje from jxc_goods a,jxc_kcsp b,(select g_sn,ck_sn,gl_kc,gl_kczje,ck_name from jxc_goodslist where id in (select hz_kc from jxc_jxchz where a_name='admin')) d where a.g_sn=b.g_sn and b.g_sn=d.g_sn and b.ck_sn=d.ck_sn   and b.kc_sl<>d.gl_kc 
update jxc_kcsp set kc_sl=8,kc_zsl=8 where ck_sn='100001' and g_sn='20000001'
select sum(kc_sl) as kcsl from jxc_kcsp where g_sn='20000001'
update jxc_kcsp set kc_zsl=kc_sl where ck_sn='100001' and g_sn='20000001'
update jxc_kcsp set kc_zsl=8 where ck_sn='100001' and g_sn='20000001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_je,gl_lr,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_sysl,gl_fdmc,gl_dqkc,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note,gl_dzl,gl_tax,gl_taxdj,gl_taxje) select 'qc' as glflag,'','2021-05-31',g_sn,g_name,g_jm,dw_name,5,2,2*5,2*5,0,'admin','100001','主仓库','','同步',0,'',0,8,40,5,10,50,'库存同步',1,0,5,0 from jxc_goods where g_sn='20000001'

-- Average changed by hand
update jxc_kcsp set kc_cbj=5.75 where g_sn='20000001'
update jxc_goods set g_pjjj=5.75,g_cbj=5.75 where g_sn='20000001'
select top 1 id from jxc_goodslist where g_sn='20000001' and ck_sn='100001' order by gl_kdrq desc,id desc
update jxc_goodslist set gl_pjjj=5.75,gl_kczje=gl_kc*5.75 where id=2 
select iif(sum(kc_zsl)<>0,abs(round(sum(kc_cbj*kc_zsl)/sum(kc_zsl)+0.000000001,2)),0) as pjjj from jxc_kcsp where g_sn='20000001'

-- Alerts
select g_sn,g_name,dw_name,gg_name,color_name,g_zdkc,g_kc as kc,g_sccs,g_scjj,g_jj from jxc_goods where g_kc<g_zdkc and g_sn<>'00000000' and g_jy=0 and (g_sn like '%J%' or g_name like '%J%' or g_jm like '%J%') order by g_kc
select a.g_sn,a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_zdkc,b.kc_sl as kc,a.g_sccs,a.g_scjj,a.g_jj from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and b.kc_sl<a.g_zdkc and b.ck_sn='100001' and (a.g_sn like '%J%' or a.g_name like '%J%' or a.g_jm like '%J%') order by b.kc_sl
select b.j_jhrq as rq,'进货入库' as lx,a.jh_sl as sl,1 as xh from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn='20000001' and b.j_jhrq>='2021-05-01' and b.j_jhrq<='2021-05-31 23:59:59' union all select b.th_thrq as rq,'退货出库' as lx,a.th_sl as sl,2 as xh from jxc_thsp a,jxc_thd b where a.gl_djh=b.gl_djh and b.th_status=1 and a.g_sn='20000001' and b.th_thrq>='2021-05-01' and b.th_thrq<='2021-05-31 23:59:59' union all select b.ls_xsrq as rq,'销售出库' as lx,a.ls_sl as sl,3 as xh from jxc_lsxssp a,jxc_lsxsd b where a.gl_djh=b.gl_djh and b.ls_status=1 and a.g_sn='20000001' and b.ls_xsrq>='2021-05-01' and b.ls_xsrq<='2021-05-31 23:59:59' order by rq,xh
update jxc_goods set g_zdkc=5 where g_sn='20000001'
select a.*,b.g_name from jxc_tkc a,jxc_goods b where a.g_sn=b.g_sn and a.ck_sn='100001' order by a.t_yxq,a.t_ph

-- Month cost
select js_rq,sum(js_sl) as sl,round(sum(js_zje),2) as zje from jxc_kcjs x inner join jxc_ckxx y on x.ck_sn=y.ck_sn where y.ck_sn='100001' and js_rq>='2021-01' and js_rq<='2021-12' group by js_rq
select a.*,b.cgsl,b.cgzje,c.xssl,c.xszje,c.lr from ((select js_rq,sum(js_sl) as sl,round(sum(js_zje),2) as zje from jxc_kcjs x inner join jxc_ckxx y on x.ck_sn=y.ck_sn where y.ck_sn='100001' and js_rq>='2021-01' and js_rq<='2021-12' group by js_rq) a left join (select left(x.gl_kdrq,7) as rq,sum(x.gl_sl) as cgsl,sum(x.gl_zje) as cgzje,sum(x.gl_je) as cgje,sum(x.gl_taxje) as cgtax from jxc_goodslist x where (x.gl_flag='cj' or x.gl_flag='ct') and x.ck_sn='100001' group by left(x.gl_kdrq,7)) b on a.js_rq=b.rq) left join (select left(x.gl_kdrq,7) as rq,sum(x.gl_sl) as xssl,sum(x.gl_zje) as xszje,sum(x.gl_lr) as lr,sum(x.gl_zcb) as zcb,sum(x.gl_je) as xsje,sum(x.gl_taxje) as xstax from jxc_goodslist x where (x.gl_flag='xs' or x.gl_flag='xt') and x.ck_sn='100001' group by left(x.gl_kdrq,7)) c on a.js_rq=c.rq order by a.js_rq
