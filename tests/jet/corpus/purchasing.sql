-- Goods and documents that the statements below work on
insert into jxc_goods (g_sn,g_name,g_qc,g_jm,g_jj,g_sj,g_scjj,g_pjjj,g_kc,g_zhxs,g_jy,g_sptm,gc_cid,gc_sn,dw_name,gg_name,color_name,ghs_sn,g_cgpl,g_xspl,g_sccs,g_bz) values ('20000001','镜片甲','镜片甲','JPJ',5,12,5,5,10,1,0,'690001',2,'1000','片','','','100001',0,0,'','')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (10,5,0,'20000001','100001',10)
insert into jxc_jhd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,j_note,a_name,j_status,j_checker,j_chkrq,j_jsfs,j_kmmc,j_yhje,j_hkje,j_th,j_crk,j_qk,j_fpno,j_fpje,j_yf,j_bzf,j_yffs,j_sn2,ht_sn,j_dhdid) values ('CJ21050310001','100001','100001','2021-05-03',50,40,'100001','','admin',1,'admin','2021-05-03',0,'现金',0,0,0,0,0,'',0,0,0,'','','','')
insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_rksl,jh_qxsl,jh_dzl,jh_bz,gl_djh2) values ('CJ21050310001',5,10,56.5,'20000001','admin',50,13,5.65,6.5,0,0,1,'','')
update jxc_jhsp set id2=id where j_sn='CJ21050310001'

-- Receipt: line dialog and barcode
select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn='20000001' order by a.j_sn desc,a.id desc
select top 10 b.j_jhrq,a.* from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and a.g_sn='20000001' and b.ghs_sn='100001' order by a.j_sn desc,a.id desc
select top 10 a.*,b.ghs_name from jxc_ghsbj a,jxc_ghsxx b where a.ghs_sn=b.ghs_sn and a.g_sn='20000001' and a.ghs_sn='100001' order by a.id desc
select g_sn from jxc_goods where g_sptm='690001'
select a.id from jxc_jhsp a,jxc_goods b where a.g_sn=b.g_sn and a.j_sn='CJ21050310001' and a.a_name='admin' and b.g_sptm='690001'
update jxc_jhsp set jh_sl=jh_sl+1,jh_je=round(jh_dj*(jh_sl+1)*jh_dzl+0.000000001,2),jh_zje=round(jh_taxdj*(jh_sl+1)*jh_dzl+0.000000001,2),jh_taxje=round((jh_taxdj-jh_dj)*(jh_sl+1)*jh_dzl+0.000000001,2),jh_rksl=jh_rksl+1 where id=1
select b.*,a.g_name,a.dw_name,a.gg_name,a.color_name from jxc_goods a,jxc_jhsp b where a.g_sn=b.g_sn and b.j_sn='CJ21050310001' and b.a_name='admin' order by b.id
insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_rksl,jh_dzl,jh_bz) select 'CJ21050310001',ts_dj,ts_sl,ts_zje,g_sn,a_name,ts_je,ts_tax,ts_taxdj,ts_taxje,ts_sl,ts_dzl,ts_note from jxc_tempspxf where a_name='admin' order by id

-- Receipt: edits in the grid
update jxc_jhsp set jh_dj=6,jh_taxdj=round(6*(1+jh_tax/100.00)+0.000000001,2) where id=1
update jxc_jhsp set jh_sl=12,jh_rksl=0 where id=1
update jxc_jhsp set jh_taxdj=6.78,jh_dj=round(6.78/(1+jh_tax/100.00)+0.000000001,2) where id=1
update jxc_jhsp set jh_tax=9,jh_taxdj=round(jh_dj*(1+9/100.00)+0.000000001,2) where id=1
update jxc_jhsp set jh_dzl=0.9,jh_je=round(jh_dj*jh_sl*0.9+0.000000001,2),jh_zje=round(jh_taxdj*jh_sl*0.9+0.000000001,2),jh_taxje=round((jh_taxdj-jh_dj)*jh_sl*0.9+0.000000001,2) where id=1
update jxc_jhsp set jh_je=round(jh_dj*jh_sl*jh_dzl+0.000000001,2),jh_zje=round(jh_taxdj*jh_sl*jh_dzl+0.000000001,2),jh_taxje=round((jh_taxdj-jh_dj)*jh_sl*jh_dzl+0.000000001,2) where id=1
update jxc_tempspxf set ts_dj=6,ts_taxdj=round(6*(1+ts_tax/100.00)+0.000000001,2) where id=1
update jxc_tempspxf set ts_je=round(ts_dj*ts_sl*ts_dzl+0.000000001,2),ts_zje=round(ts_taxdj*ts_sl*ts_dzl+0.000000001,2),ts_taxje=round((ts_taxdj-ts_dj)*ts_sl*ts_dzl+0.000000001,2) where id=1

-- Receipt: totals, save, contract, audit dialog
select sum(jh_zje) as zje from jxc_jhsp where g_sn<>'00000000' and j_sn='CJ21050310001'
select sum(jh_zje) as zje from jxc_jhsp where j_sn='CJ21050310001'
update jxc_jhd set j_yfje=56.5,j_sfje=56.5 where j_sn='CJ21050310001'
update jxc_jhd set j_yfje=56.5 where j_sn='CJ21050310001'
update jxc_jhsp set jh_rksl=jh_sl where j_sn='CJ21050310009'
update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where j_sn='CJ21050310009'
update jxc_htgl set ghs_sn='100001',gl_djh='CJ21050310001' where ht_sn='100001'
update jxc_jhd set j_yhje=0,j_status=1,j_checker='admin',j_chkrq='2021-05-03',j_jsfs=1,j_sfje=40,j_note='',j_kmmc='现金' where j_sn='CJ21050310001'
select a.*,b.ghs_name,c.ck_name,d.u_name from jxc_jhd a,jxc_ghsxx b,jxc_ckxx c,jxc_user d where a.ghs_sn=b.ghs_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.j_status=0 order by a.id desc
insert into jxc_jhsp (j_sn,jh_dj,jh_sl,jh_zje,g_sn,a_name,t_scrq) select 'CJ21050310003',ts_dj,ts_sl,ts_zje,g_sn,a_name,t_scrq from jxc_tempspxf where a_name='admin' and (ts_dzl=0 or ts_dzl=1) order by id
delete from jxc_jhsp where j_sn='CJ21050310003' and a_name='admin'
select g_sn,g_name from jxc_goods where g_sn='20000001'

-- Return to the supplier
select distinct a.*,d.kc_sl from jxc_goods a,jxc_kcsp d where a.g_sn=d.g_sn and a.g_jy=0 and a.g_sn<>'00000000' and d.ck_sn='100001' and d.kc_sl>0 order by a.g_cgpl desc
select a.*,iif(b.kc_sl is null,0,b.kc_sl) as kc_sl from jxc_goods a left join (select g_sn,kc_sl from jxc_kcsp where ck_sn='100001') b on a.g_sn=b.g_sn where a.g_jy=0 and a.g_sn<>'00000000' order by a.g_cgpl desc
select j_sn from jxc_jhd where j_sn='CJ21050310001' and j_th=1
insert into jxc_thsp (gl_djh,g_sn,th_dj,th_sl,th_zje,a_name,th_je,th_tax,th_taxdj,th_taxje,th_dzl,th_bz) select 'CT21050310001',g_sn,jh_dj,jh_sl,jh_zje,'admin',jh_je,jh_tax,jh_taxdj,jh_taxje,jh_dzl,jh_bz from jxc_jhsp where j_sn='CJ21050310001' order by id
select sum(th_zje) as zje from jxc_thsp where gl_djh='CT21050310001'
insert into jxc_thd (gl_djh,ghs_sn,ck_sn,th_thrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc,th_fpno,th_fpje,a_name,th_qk) values ('CT21050310001','100001','100001','2021-05-03',-56.5,-56.5,0,'100001','',0,'','',0,'现金','',0,'admin',0)
update jxc_jhd set j_th=1,j_dhdid='CT21050310001' where j_sn='CJ21050310001'
update jxc_jhd set j_th=0,j_dhdid='' where j_dhdid='CT21050310001'
update jxc_thd set th_yfje=(-1*56.5),th_sfje=(-1*56.5) where gl_djh='CT21050310001'
update jxc_thd set th_status=1,th_checker='admin',th_chkrq='2021-05-03' where gl_djh='CT21050310001'
delete from jxc_thd where th_status=0 and gl_djh='CT21050310001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,id2,gl_djh2,gl_qxsl) select 'ct' as glflag,a.gl_djh,a.th_thrq,b.g_sn,c.g_name,c.g_jm,c.dw_name,b.th_dj,-1*b.th_sl,-1*b.th_zje,0,b.th_dzl,d.u_name,b.a_name,e.ck_sn,e.ck_name,f.ghs_sn,f.ghs_name,c.gg_name,c.color_name,-1*b.th_sl,'',0,0,c.g_pjjj,0,a.th_checker,a.th_chkrq,0,0,b.th_bz,a.th_note,b.th_tax,b.th_taxdj,-1*b.th_taxje,-1*b.th_je,0,b.id2,'',0 from jxc_thd a,jxc_thsp b,jxc_goods c,jxc_user d,jxc_ckxx e,jxc_ghsxx f where a.gl_djh=b.gl_djh and b.g_sn=c.g_sn and a.u_sn=d.u_sn and a.ck_sn=e.ck_sn and a.ghs_sn=f.ghs_sn and a.gl_djh='CT21050310001' order by b.id
update jxc_kcsp set kc_sl=kc_sl+(-2),kc_zsl=kc_zsl+(-2) where ck_sn='100001' and g_sn='20000001'

-- Putaway
select a.g_name,a.g_jm,a.gg_name,a.dw_name,a.g_sptm,a.color_name,b.* from jxc_goods a,jxc_jhsp b,jxc_jhd c where a.g_jy=0 and a.g_sn<>'00000000' and a.g_sn=b.g_sn and b.j_sn=c.j_sn and c.j_status=1 and b.jh_sl>b.jh_rksl+b.jh_qxsl and c.ck_sn='100001' and c.ghs_sn='100001' order by b.j_sn,b.g_sn
insert into jxc_tempspxf (g_sn,ts_sl,t_zp,ghs_sn,t_jhrq,a_name) values ('20000001',3,'CJ21050310001','1','2021-05-04','admin')
insert into jxc_rksp (gl_djh,rk_sl,g_sn,a_name,j_sn,id2,t_jhrq) select 'RK21050310001',ts_sl,g_sn,a_name,t_zp,ghs_sn,t_jhrq from jxc_tempspxf where a_name='admin' order by id
insert into jxc_rksp (gl_djh,rk_sl,g_sn,a_name,j_sn,id2,t_jhrq) select 'RK21050310002',jh_sl-jh_rksl,g_sn,'admin',j_sn,id2,'2021-05-04' from jxc_jhsp where  g_sn<>'00000000' and j_sn='CJ21050310001' and jh_sl>jh_rksl+jh_qxsl order by id
insert into jxc_rkd (gl_djh,rk_rq,rk_zsl,ck_sn,ghs_sn,u_sn,rk_note,a_name,rk_status,rk_checker,rk_chkrq) values ('RK21050310001','2021-05-04',3,'100001','100001','100001','','admin',0,'','')
select top 1 a.j_sn,a.g_sn from jxc_jhsp a,jxc_rksp b,jxc_rkd c where a.id2=b.id2 and b.gl_djh=c.gl_djh and a.g_sn=b.g_sn and a.jh_sl<a.jh_rksl+a.jh_qxsl+b.rk_sl and b.gl_djh='RK21050310001' order by b.id
select a.*,b.jh_dj*a.rk_sl as zje from jxc_rksp a,jxc_jhsp b where a.id2=b.id2 and a.g_sn=b.g_sn and a.gl_djh='RK21050310001' and a.g_sn<>'00000000' order by a.id
update jxc_kcsp set kc_sl=kc_sl+3 where ck_sn='100001' and g_sn='20000001'
update jxc_goods set g_kc=g_kc+3 where g_sn='20000001'
update jxc_jhsp set jh_rksl=jh_rksl+3 where id2=1
select distinct j_sn from jxc_rksp where gl_djh='RK21050310001' order by j_sn
select top 1 id from jxc_jhsp where jh_sl>jh_rksl+jh_qxsl and j_sn='CJ21050310001' order by id
update jxc_jhd set j_crk=1 where j_sn='CJ21050310001'
select top 1 b.gl_djh from jxc_rksp a,jxc_thsp b where a.id2=b.id2 and a.gl_djh='RK21050310001' and a.g_sn<>'00000000' order by a.id
update jxc_goods set g_kc=g_kc-(3) where g_sn='20000001'
update jxc_kcsp set kc_sl=kc_sl-(3) where ck_sn='100001' and g_sn='20000001'
update jxc_jhsp set jh_rksl=jh_rksl-(3) where id2=1
update jxc_jhsp set jh_rksl=0 where jh_rksl<0 and id2=1
update jxc_jhd set j_crk=0 where j_sn='CJ21050310001'
update jxc_rkd set rk_status=0,rk_chkrq='',rk_checker='' where gl_djh='RK21050310001'

-- Putaway given up: a return for what never came
update jxc_jhsp set jh_qxsl=jh_sl-jh_rksl where jh_sl>jh_rksl+jh_qxsl and j_sn='CJ21050310001'
update jxc_jhsp set jh_qxsl=0 where jh_qxsl<0 and j_sn='CJ21050310001'
insert into jxc_thsp (gl_djh,th_dj,th_sl,th_zje,g_sn,a_name,th_je,th_tax,th_taxdj,th_taxje,th_dzl,id2) select 'CT21050310002',jh_dj,jh_qxsl,jh_qxsl*jh_taxdj*jh_dzl,g_sn,a_name,jh_qxsl*jh_dj*jh_dzl,jh_tax,jh_taxdj,jh_qxsl*jh_dj*jh_tax/100,jh_dzl,id2 from jxc_jhsp where j_sn='CJ21050310001' and jh_qxsl>0 order by id
update jxc_thsp set th_zje=round(th_zje+0.000000001,2),th_je=round(th_je+0.000000001,2),th_taxje=round(th_taxje+0.000000001,2) where gl_djh='CT21050310002'
select id,gl_sl,g_sn,ck_sn from jxc_goodslist where g_sn<>'00000000' and gl_djh='CT21050310001' order by id
update jxc_kcsp set kc_zsl=kc_zsl+(-7) where ck_sn='100001' and g_sn='20000001'
update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where jh_sl>jh_rksl+jh_qxsl

-- Enquiries
select * from (select a.j_sn as djh,a.ghs_sn,a.ck_sn,a.j_jhrq as rq,a.j_yfje as yfje,a.j_sfje as sfje,(a.j_yfje-a.j_sfje-a.j_yhje-a.j_hkje) as wfje,a.j_yhje as yhje,'采购进货' as gtype,a.u_sn,a.j_note as dnote,a.a_name,a.j_sn2,a.j_th,b.ghs_name,b.ghs_jm,c.u_name,d.ck_name,'1' as dsort,a.ht_sn,a.j_checker as checker,a.j_chkrq as chkrq,a.j_hkje as hkje,a.j_yf,a.j_bzf,a.j_yffs from jxc_jhd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.j_status=1 and d.ck_asn like '%100001%'  union select a.gl_djh as djh,a.ghs_sn,a.ck_sn,a.th_thrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,(a.th_yfje-a.th_sfje-a.th_hkje) as wfje,0 as yhje,'采购退货' as gtype,a.u_sn,a.th_note as dnote,a.a_name,'' as j_sn2,'' as j_th,b.ghs_name,b.ghs_jm,c.u_name,d.ck_name,'2' as dsort,'' as ht_sn,a.th_checker as checker,a.th_chkrq as chkrq,a.th_hkje as hkje,0 as j_yf,0 as j_bzf,'' as j_yffs from jxc_thd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1 ) DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31 23:59:59' and (ghs_sn like '%PT%' or ghs_name like '%PT%' or ghs_jm like '%PT%' or djh like '%PT%' or j_sn2 like '%PT%' or dnote like '%PT%') and wfje>0  and ck_sn='100001' and a_name='admin' order by rq desc,dsort,djh desc
select * from (select a.j_sn as djh,a.j_jhrq as rq,'1' as dsort from jxc_jhd a where a.j_status=1) DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31 23:59:59' order by rq,dsort,djh
select a.*,b.g_sptm from jxc_goodslist a,jxc_goods b,jxc_ckxx d where a.g_sn=b.g_sn and a.ck_sn=d.ck_sn and a.gl_kdrq>='2021-05-01' and a.gl_kdrq<='2021-05-31 23:59:59' and (a.gl_flag='cj' or a.gl_flag='ct')  order by a.gl_kdrq desc,a.gl_flag,a.gl_djh desc,a.id desc
select a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz,b.* from jxc_goods a,(select x.ghs_name,x.ghs_sn,x.g_sn,x.gl_kdrq,sum(x.gl_sl) as sl,sum(x.gl_zje) as zje,sum(x.gl_je) as je,sum(x.gl_taxje) as taxje from jxc_goodslist x,jxc_ckxx y where x.ck_sn=y.ck_sn and x.gl_kdrq>='2021-05-01' and x.gl_kdrq<='2021-05-31 23:59:59' and (x.gl_flag='cj' or x.gl_flag='ct') group by x.ghs_name,x.ghs_sn,x.g_sn,x.gl_kdrq) b where a.g_sn=b.g_sn order by b.gl_kdrq desc,b.g_sn,b.ghs_name
select a.g_name,a.dw_name,b.* from jxc_goods a,(select x.ghs_name,x.ghs_sn,x.g_sn,left(x.gl_kdrq,7) as tjrq,sum(x.gl_sl) as sl,sum(x.gl_zje) as zje,sum(x.gl_je) as je,sum(x.gl_taxje) as taxje from jxc_goodslist x,jxc_ckxx y where x.ck_sn=y.ck_sn and x.gl_kdrq>='2021-05-01' and x.gl_kdrq<='2021-05-31 23:59:59' and (x.gl_flag='cj' or x.gl_flag='ct') group by x.ghs_name,x.ghs_sn,x.g_sn,left(x.gl_kdrq,7)) b where a.g_sn=b.g_sn order by b.tjrq desc,b.g_sn,b.ghs_name
select a.* from jxc_goodslist a,jxc_goods b,jxc_ghsxx c,jxc_ckxx d where a.g_sn=b.g_sn and a.ghs_sn=c.ghs_sn and a.ck_sn=d.ck_sn and (a.gl_flag='cj' or a.gl_flag='ct') and a.gl_kdrq>='2021-05-01' and a.gl_kdrq<='2021-05-31 23:59:59' and b.gc_sn like '1000%' order by a.gl_kdrq,a.id
select b.g_sn,b.g_name,sum(a.gl_sl) as sl,sum(a.gl_zje) as zje from jxc_goodslist a,jxc_goods b,jxc_ckxx d where a.g_sn=b.g_sn and a.ck_sn=d.ck_sn and (a.gl_flag='cj' or a.gl_flag='ct') group by b.g_sn,b.g_name order by b.g_sn
select c.gc_name,sum(a.gl_sl) as sl,sum(a.gl_zje) as zje from jxc_goodslist a,jxc_goods b,jxc_goodsclass c where a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and (a.gl_flag='cj' or a.gl_flag='ct') group by c.gc_name order by c.gc_name
