-- Partners, a sale and a purchase on account, their ledger lines.
insert into jxc_khxx (kh_sn,kh_name,kh_jm,kh_lxr,kh_tele,kh_address,kh_note,kh_lwje,kh_default,kh_pl,ck_sn,ck_name,kh_forbid,kh_uname,kh_usn,kt_sn,kt_name,z_name) values ('100002','光明眼镜','GMYJ','赵一','0571-8888','解放路8号','',0,0,0,'-1','所有仓库',0,'','','1001','一级','省会地区')
insert into jxc_ghsxx (ghs_sn,ghs_name,ghs_jm,ghs_lxr,ghs_tele,ghs_address,ghs_note,ghs_lwje,ghs_default,ghs_pl,ck_sn,ck_name,ghs_forbid,gt_name,z_name) values ('100002','镜片厂','JPC','钱二','0511-6666','丹阳','',0,0,0,'-1','所有仓库',0,'A级供货商','')
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_jy,g_pjjj,g_dzll,g_sptm,g_sccs,g_bz,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000001','树脂镜片1.56','SZJP1.56',20.5,99.9,10,0,20.5,1,'6901234567892','丹阳','','1000',2,'片','标准','无色','100002')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (10,20.5,0,'100001','10000001',10)
insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,ls_note,a_name,ls_yhje,ls_hkje,ls_yf,ls_bzf,ls_yffs,ls_status,ls_checker,ls_chkrq,ls_jsfs,ls_kmmc,ls_dhbz,ht_sn) values ('XS21050310001','100002','100001','2021-05-03',999,500,'100001','','admin',0,0,10,2,'我方付运费',1,'admin','2021-05-03',1,'现金',0,'')
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_je,ls_cbj,ls_zcb,ls_tax,ls_taxdj,ls_taxje,ls_zje,ls_cksl,ls_qxsl,a_name,ls_dzl,t_zp) values ('XS21050310001','10000001',99.9,10,999,20.5,205,0,99.9,0,999,10,0,'admin',1,'')
insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,th_xsrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,a_name,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc) values ('XT21050410001','100002','100001','2021-05-04',-99.9,0,0,'100001','','admin',1,'admin','2021-05-04',1,'现金')
insert into jxc_jhd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,j_note,a_name,j_yhje,j_hkje,j_yf,j_bzf,j_yffs,j_status,j_checker,j_chkrq,j_jsfs,j_kmmc,ht_sn) values ('CJ21050210001','100002','100001','2021-05-02',410,200,'100001','','admin',0,0,5,0,'我方付运费',1,'admin','2021-05-02',1,'现金','')
insert into jxc_jhsp (j_sn,g_sn,jh_dj,jh_sl,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_zje,jh_rksl,jh_qxsl,jh_dzl,a_name) values ('CJ21050210001','10000001',20.5,20,410,0,20.5,0,410,20,0,1,'admin')
insert into jxc_thd (gl_djh,ghs_sn,ck_sn,th_thrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,a_name,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc) values ('CT21050410001','100002','100001','2021-05-04',-20.5,0,0,'100001','','admin',1,'admin','2021-05-04',1,'现金')
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_je,gl_taxje,gl_lr,gl_cbj,gl_zcb,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_kc,gl_pjjj,gl_kczje,gl_fdmc) values ('cj','CJ21050210001','2021-05-02','10000001','树脂镜片1.56','SZJP1.56','片',20.5,20,410,410,0,0,0,0,'默认员工','admin','100001','主仓库','100002','镜片厂',20,20.5,410,'')
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_je,gl_taxje,gl_lr,gl_cbj,gl_zcb,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_kc,gl_pjjj,gl_kczje,gl_fdmc) values ('xs','XS21050310001','2021-05-03','10000001','树脂镜片1.56','SZJP1.56','片',99.9,10,999,999,0,794,20.5,205,'默认员工','admin','100001','主仓库','100002','光明眼镜',10,20.5,205,'')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('XS21050310001','2021-05-03','现金',999,500,0,0,499,1,'kh','XS','商品销售单','','','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('CJ21050210001','2021-05-02','现金',410,200,0,0,210,1,'ghs','CJ','采购进货单','','','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YS21042010001','2021-04-20','应收款',80,0,0,0,80,1,'kh','YS','期初应收款','','','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YF21042010001','2021-04-20','应付款',60,0,0,0,60,1,'ghs','YF','期初应付款','','','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YF21052010001','2021-05-20','应付款',60,0,0,0,120,1,'ghs','YF','增加应付款','','','100001','admin','100002')
-- Balances: at a date, before a row, now; and recomputing them.
select top 1 k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh='100002' and k_rq<='9999-12-31' order by k_rq desc,id desc
select top 1 k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh='100002' and k_rq<='2021-05-03' and id<3 order by k_rq desc,id desc
select top 1 round(k_ljje+0.000000001,2) from jxc_ysyfk where k_type='kh' and k_ghskh='100002' order by k_rq desc,id desc
select top 1 k_ljje from jxc_ysyfk where k_type='ghs' and k_ghskh='100002' and k_rq<'2021-05-02' order by k_rq desc,id desc
select * from jxc_ysyfk where k_type='ghs' and k_ghskh='100002' and k_rq>='2021-05-02' order by k_rq,id
update jxc_ysyfk set k_ljje=270 where id=2
update jxc_khxx set kh_lwje=499 where kh_sn='100002'
update jxc_ghsxx set ghs_lwje=210 where ghs_sn='100002'
select * from jxc_khxx where kh_sn='100002' order by id
select * from jxc_khxx order by id
select * from jxc_ghsxx order by id
-- Receivables and receipts as documents: entry, change, search, audit.
insert into jxc_ysyfk_dj (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_mlje,k_flag,k_type,k_djlx,k_djtxt,k_note,k_check,k_checker,k_chkrq,u_sn,a_name,k_ghskh) values ('YS21050510001','2021-05-05','应收款',100,0,0,0,0,0,1,'kh','YS','增加应收款','',0,'','','100001','admin','100002')
insert into jxc_ysyfk_dj (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_mlje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,k_check,k_checker,k_chkrq,u_sn,a_name,k_ghskh) values ('SK21050610001','2021-05-06','现金',0,98,0,0,0,2,-1,'kh','SK','单据收款','XS21050310001','单据【XS21050310001】收款 ',0,'','','100001','admin','100002')
insert into jxc_ysyfk_dj (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_mlje,k_flag,k_type,k_djlx,k_djtxt,k_note,k_check,k_checker,k_chkrq,u_sn,a_name,k_ghskh) values ('YF21050510001','2021-05-05','应付款',70,0,0,0,0,0,1,'ghs','YF','增加应付款','',0,'','','100001','admin','100002')
select max(gl_djh) as sn from jxc_ysyfk_dj where gl_djh like 'SK210506%'
update jxc_ysyfk_dj set a_name='admin',u_sn='100001',k_yfje=120,k_note='改',k_rq='2021-05-05' where id=1
select a.*,b.u_name,c.kh_name from jxc_ysyfk_dj a,jxc_user b,jxc_khxx c where a.u_sn=b.u_sn and a.k_ghskh=c.kh_sn and a.k_djlx='YS' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and (a.gl_djh like '%2105%' or a.k_note like '%2105%')  order by a.id desc
select a.*,b.u_name,c.kh_name from jxc_ysyfk_dj a,jxc_user b,jxc_khxx c where a.u_sn=b.u_sn and a.k_ghskh=c.kh_sn and a.k_djlx='SK' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and (a.gl_djh like '%2105%' or a.k_note like '%2105%')  order by a.id desc
select a.*,b.u_name,c.ghs_name from jxc_ysyfk_dj a,jxc_user b,jxc_ghsxx c where a.u_sn=b.u_sn and a.k_ghskh=c.ghs_sn and a.k_djlx='YF' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' order by a.id desc
select a.*,b.u_name,c.kh_name from jxc_ysyfk_dj a,jxc_user b,(select distinct m.* from jxc_khxx m,jxc_ckxx n where (m.ck_sn=n.ck_sn or m.ck_sn='-1') and m.kh_forbid=0 and n.ck_asn like '%100001%') c where a.u_sn=b.u_sn and a.k_ghskh=c.kh_sn and a.k_djlx='SK' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' order by a.id desc
select gl_djh from jxc_ysyfk_dj where k_check=1 and gl_djh='YS21050510001'
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YS21050510001','2021-05-05','应收款',120,0,0,0,619,1,'kh','YS','增加应收款','','改','100001','admin','100002')
update jxc_ysyfk_dj set k_check=1,k_checker='admin',k_chkrq='2021-05-06' where gl_djh='YS21050510001'
-- A receipt with two yuan rounded off: its own line, the rounding, the profit figures, the cash.
select a.*,b.u_name,c.kh_name from jxc_ysyfk_dj a,jxc_user b,jxc_khxx c where a.u_sn=b.u_sn and a.k_ghskh=c.kh_sn and a.gl_djh='SK21050610001'
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('SK21050610001','2021-05-06','现金',0,98,0,0,521,-1,'kh','SK','单据收款','XS21050310001','','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YS21050610001','2021-05-06','应收款',2*-1,0,0,0,519,1,'kh','YS','增加应收款(抹零)','SK21050610001','收款单抹零登记：SK21050610001','100001','admin','100002')
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,gl_cbj,gl_zcb,id2,gl_djh2,gl_qxsl) select 'xs',a.gl_djh,a.k_rq,'00000000','优惠商品','YHSP','',0,0,a.k_yfje,a.k_yfje,1,c.u_name,a.a_name,'100001','主仓库',a.k_ghskh,b.kh_name,'','',0,'',0,0,0,0,a.a_name,'2021-05-06',0,0,'',k_note,0,0,0,a.k_yfje,0,0,0,a.id,a.gl_djh2,0 from jxc_ysyfk a,jxc_khxx b,jxc_user c where a.u_sn=c.u_sn and a.k_ghskh=b.kh_sn and a.gl_djh2='SK21050610001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,gl_cbj,gl_zcb,id2,gl_djh2,gl_qxsl) select 'cj',a.gl_djh,a.k_rq,'00000000','优惠商品','YHSP','',0,0,a.k_yfje,0,1,c.u_name,a.a_name,'100001','主仓库',a.k_ghskh,b.ghs_name,'','',0,'',0,0,0,0,a.a_name,'2021-05-06',0,0,'',k_note,0,0,0,a.k_yfje,0,0,0,a.id,a.gl_djh2,0 from jxc_ysyfk a,jxc_ghsxx b,jxc_user c where a.u_sn=c.u_sn and a.k_ghskh=b.ghs_sn and a.gl_djh2='FK21050610001'
update jxc_ysyfk_dj set k_check=1,k_checker='admin',k_chkrq='2021-05-06' where gl_djh='SK21050610001'
insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,u_name,ghs_name,ghs_sn,ck_name,xj_kmmc,xj_note,a_name,xj_chk,xj_ljje) values ('2021-05-06','SK21050610001','收款单',98,'默认员工','光明眼镜','100002','','现金','','admin','1',0)
-- Settling one document; what is collected is kept on the document.
select ls_yfje-ls_sfje-ls_yhje-ls_hkje from jxc_lsxsd where gl_djh='XS21050310001'
select th_yfje-th_sfje-th_hkje from jxc_xsthd where gl_djh='XT21050410001'
select j_yfje-j_sfje-j_yhje-j_hkje from jxc_jhd where j_sn='CJ21050210001'
select th_yfje-th_sfje-th_hkje from jxc_thd where gl_djh='CT21050410001'
update jxc_lsxsd set ls_hkje=ls_hkje+98,ls_note='  收款:SK21050610001金额:98，收款日期：2021-05-06 ' where gl_djh='XS21050310001'
update jxc_xsthd set th_hkje=th_hkje+-10,th_note='  单据清款:-10，清款日期：2021-05-06 ' where gl_djh='XT21050410001'
update jxc_jhd set j_hkje=j_hkje+50,j_note='  付款:FK21050610001金额:50，付款日期：2021-05-06 ' where j_sn='CJ21050210001'
update jxc_thd set th_hkje=th_hkje+-5,th_note='  付款:FK21050610002' where gl_djh='CT21050410001'
-- Cancelling an audit, deleting a document that settled a sale.
select gl_djh from jxc_ysyfk_dj where k_check=0 and gl_djh='SK21050610001'
delete from jxc_ysyfk where gl_djh='SK21050610001' or gl_djh2='SK21050610001'
delete from jxc_xjyh where gl_djh='SK21050610001'
update jxc_ysyfk_dj set k_check=0,k_checker='',k_chkrq='' where gl_djh='SK21050610001'
delete from jxc_goodslist where gl_djh2='SK21050610001'
delete from jxc_ysyfk where gl_djh='YS21050510001'
update jxc_lsxsd set ls_hkje=ls_hkje-(98) where gl_djh='XS21050310001'
update jxc_lsxsd set ls_hkje=0 where ls_hkje<0 and gl_djh='XS21050310001'
update jxc_jhd set j_hkje=j_hkje-(60) where j_sn='CJ21050210001'
update jxc_jhd set j_hkje=0 where j_hkje<0 and j_sn='CJ21050210001'
delete from jxc_ysyfk_dj where id=1
-- Overview of receivables: opening rows and the rows of the period, then one row a customer.
select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01' group by k_ghskh) group by k_ghskh
select * from (select a.id,a.gl_djh,'2021-05-01' as k_rq,'期初应收' as k_fkfs,0 as k_yfje,0 as k_sfje,a.k_ljje as k_qcje,a.k_ljje,'期初应收' as k_djlx,'期初应收' as k_djtxt,'' as k_note,a.k_ghskh,b.kh_name,'' as u_name,1 as dsort from jxc_ysyfk a,jxc_khxx b where a.k_ghskh=b.kh_sn and b.kh_forbid=0 and a.id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01'  group by k_ghskh) group by k_ghskh) and a.k_ghskh='100002' union select a.id,a.gl_djh,a.k_rq,a.k_fkfs,a.k_yfje,a.k_sfje,a.k_qcje,a.k_ljje,a.k_djlx,a.k_djtxt,a.k_note,a.k_ghskh,b.kh_name,c.u_name,2 as dsort from jxc_ysyfk a,jxc_khxx b,jxc_user c where a.k_ghskh=b.kh_sn and a.u_sn=c.u_sn and a.k_type='kh' and b.kh_forbid=0 and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and (a.gl_djh like '%XS%' or a.k_note like '%XS%')) DERIVEDTBL order by k_ghskh,k_rq,dsort,id
select * from (select a.id,a.gl_djh,'2021-05-01' as k_rq,'期初应收' as k_fkfs,0 as k_yfje,0 as k_sfje,a.k_ljje as k_qcje,a.k_ljje,'期初应收' as k_djlx,'期初应收' as k_djtxt,'' as k_note,a.k_ghskh,b.kh_name,'' as u_name,1 as dsort from jxc_ysyfk a,jxc_khxx b where a.k_ghskh=b.kh_sn and b.kh_forbid=0 and a.id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01'  group by k_ghskh) group by k_ghskh) and a.k_ghskh='100002' and a.k_ljje<>0 union select a.id,a.gl_djh,a.k_rq,a.k_fkfs,a.k_yfje,a.k_sfje,a.k_qcje,a.k_ljje,a.k_djlx,a.k_djtxt,a.k_note,a.k_ghskh,b.kh_name,c.u_name,2 as dsort from jxc_ysyfk a,jxc_khxx b,jxc_user c where a.k_ghskh=b.kh_sn and a.u_sn=c.u_sn and a.k_type='kh' and b.kh_forbid=0 and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and (a.gl_djh like '%XS%' or a.k_note like '%XS%') and a.k_ghskh in (select k_ghskh from jxc_ysyfk where k_ljje<>0 and id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<='2021-05-31 23:59:59'  group by k_ghskh) group by k_ghskh))) DERIVEDTBL order by k_ghskh,k_rq,dsort,id
select a.kh_name,m.k_ghskh,m.yfje,m.sfje,iif(n.qcje is null,0,n.qcje) as qcje,iif(n.qcje is null,m.yfje-m.sfje,m.yfje+n.qcje-m.sfje) as wfje from jxc_khxx a,((select k_ghskh,sum(k_yfje) as yfje,sum(k_sfje) as sfje from jxc_ysyfk where k_type='kh' and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59' group by k_ghskh) m left outer join (select k_ghskh,k_ljje as qcje from jxc_ysyfk where id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01'  group by k_ghskh) group by k_ghskh)) n on m.k_ghskh=n.k_ghskh) where a.kh_sn=m.k_ghskh and a.kh_forbid=0 order by m.k_ghskh
select * from (select a.kh_name,m.k_ghskh,m.yfje,m.sfje,iif(n.qcje is null,0,n.qcje) as qcje,iif(n.qcje is null,m.yfje-m.sfje,m.yfje+n.qcje-m.sfje) as wfje from jxc_khxx a,((select k_ghskh,sum(k_yfje) as yfje,sum(k_sfje) as sfje from jxc_ysyfk where k_type='kh' and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59' group by k_ghskh) m left outer join (select k_ghskh,k_ljje as qcje from jxc_ysyfk where id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01'  group by k_ghskh) group by k_ghskh)) n on m.k_ghskh=n.k_ghskh) where a.kh_sn=m.k_ghskh and a.kh_forbid=0 union all select a.kh_name,b.k_ghskh,0 as yfje,0 as sfje,k_ljje as qcje,k_ljje as wfje from jxc_khxx a,jxc_ysyfk b where a.kh_sn=b.k_ghskh and a.kh_forbid=0 and b.id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<'2021-05-01'  group by k_ghskh) group by k_ghskh) and b.k_ghskh not in (select k_ghskh from jxc_ysyfk where k_type='kh' and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59')) DERIVEDTBL where wfje<>0 order by k_ghskh
-- The side of the suppliers gathers its opening rows first.
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) select max(id) as rowid,'admin' from jxc_ysyfk where k_type='ghs' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='ghs' and k_rq<'2021-05-01' group by k_ghskh) group by k_ghskh
select a.k_ljje as k_qcje,a.k_ghskh,b.ghs_name,1 as dsort from jxc_ysyfk a,jxc_ghsxx b where a.k_ghskh=b.ghs_sn and b.ghs_forbid=0 and a.id in (select rid from jxc_tempspxf where a_name='admin') 
select * from jxc_goodslist where gl_djh='XS21050310001' order by id
-- Statements of a partner: documents with what is still open.
select * from (select a.gl_djh as djh,a.kh_sn,a.ck_sn,a.ls_xsrq as rq,a.ls_yfje as yfje,a.ls_sfje as sfje,(a.ls_yfje-a.ls_sfje-a.ls_yhje-a.ls_hkje) as wfje,a.ls_yhje as yhje,'商品销售付款' as fktype,a.u_sn,a.ls_note as dnote,a.a_name,b.kh_name,b.kh_jm,c.u_name,d.ck_name,'1' as dsort,a.ls_checker as checker,a.ls_chkrq as chkrq,a.ls_hkje as hkje,a.ls_yf,a.ls_bzf,a.ls_yffs from jxc_lsxsd a,jxc_khxx b,jxc_user c,jxc_ckxx d where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.ls_status=1  union select a.gl_djh as djh,a.kh_sn,a.ck_sn,a.th_xsrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,(a.th_yfje-a.th_sfje-a.th_hkje) as wfje,0 as yhje,'销售退货支出' as fktype,a.u_sn,a.th_note as dnote,a.a_name,b.kh_name,b.kh_jm,c.u_name,d.ck_name,'2' as dsort,a.th_checker as checker,a.th_chkrq as chkrq,a.th_hkje as hkje,0 as ls_yf,0 as ls_bzf,'' as ls_yffs from jxc_xsthd a,jxc_khxx b,jxc_user c,jxc_ckxx d where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1 ) DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31 23:59:59' order by rq,dsort,djh
select * from (select a.gl_djh as djh,a.kh_sn,a.ck_sn,a.ls_xsrq as rq,a.ls_yfje as yfje,a.ls_sfje as sfje,(a.ls_yfje-a.ls_sfje-a.ls_yhje-a.ls_hkje) as wfje,a.ls_yhje as yhje,'商品销售付款' as fktype,a.u_sn,a.ls_note as dnote,a.a_name,b.kh_name,b.kh_jm,c.u_name,d.ck_name,'1' as dsort,a.ls_checker as checker,a.ls_chkrq as chkrq,a.ls_hkje as hkje,a.ls_yf,a.ls_bzf,a.ls_yffs from jxc_lsxsd a,jxc_khxx b,jxc_user c,jxc_ckxx d where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.ls_status=1  and a.gl_djh like '%X%'  and d.ck_asn like '%100001%'  union select a.gl_djh as djh,a.kh_sn,a.ck_sn,a.th_xsrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,(a.th_yfje-a.th_sfje-a.th_hkje) as wfje,0 as yhje,'销售退货支出' as fktype,a.u_sn,a.th_note as dnote,a.a_name,b.kh_name,b.kh_jm,c.u_name,d.ck_name,'2' as dsort,a.th_checker as checker,a.th_chkrq as chkrq,a.th_hkje as hkje,0 as ls_yf,0 as ls_bzf,'' as ls_yffs from jxc_xsthd a,jxc_khxx b,jxc_user c,jxc_ckxx d where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1  and a.gl_djh like '%X%'  and d.ck_asn like '%100001%' ) DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31 23:59:59' and kh_sn='100002'  order by rq desc,dsort,djh desc
select a.*,iif(a.gl_flag='xt',-1*a.gl_sl,a.gl_sl) as sl,iif(a.gl_flag='xt',-1*a.gl_zje,a.gl_zje) as zje from jxc_goodslist a where a.gl_djh='XS21050310001' order by a.id
select * from (select a.j_sn as djh,a.ghs_sn,a.j_jhrq as rq,a.j_yfje as yfje,a.j_sfje as sfje,(a.j_yfje-a.j_sfje-a.j_yhje-a.j_hkje) as wfje,a.j_yhje as yhje,'进货支付' as zflx,a.j_note as dnote,a.a_name,b.ghs_name,c.u_name,d.ck_name,'1' as dsort,a.j_hkje as hkje,a.j_yf,a.j_bzf,a.j_yffs from jxc_jhd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.j_status=1 and a.j_sn like '%C%' union select a.gl_djh as djh,a.ghs_sn,a.th_thrq as rq,a.th_yfje as yfje,a.th_sfje as sfje,(a.th_yfje-a.th_sfje-a.th_hkje) as wfje,0 as yhje,'退货还款' as zflx,a.th_note as dnote,a.a_name,b.ghs_name,c.u_name,d.ck_name,'2' as dsort,a.th_hkje as hkje,0 as j_yf,0 as j_bzf,'' as j_yffs from jxc_thd a,jxc_ghsxx b,jxc_user c,jxc_ckxx d where a.ghs_sn=b.ghs_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1 ) DERIVEDTBL where rq>='2021-05-01' and rq<='2021-05-31 23:59:59' and ghs_sn='100002'  order by rq,dsort,djh
-- Freight and packing, by partner and who pays.
select a.kh_name,b.* from jxc_khxx a,(select m.kh_sn,m.ls_yffs,sum(m.ls_yfje) as yfje,sum(m.ls_sfje) as sfje,sum(m.ls_yhje) as yhje,sum(m.ls_yf) as yf,sum(m.ls_bzf) as bzf,sum(n.sl2) as sl from (select y.gl_djh,sum(y.ls_sl) as sl2 from jxc_lsxsd x,jxc_lsxssp y,jxc_ckxx z where x.gl_djh=y.gl_djh and x.ls_status=1 and x.ck_sn=z.ck_sn and x.ls_xsrq>='2021-05-01' and x.ls_xsrq<='2021-05-31' and (x.ls_yf>0 or x.ls_bzf>0) group by y.gl_djh) n,jxc_lsxsd m where m.gl_djh=n.gl_djh group by m.kh_sn,m.ls_yffs) b where a.kh_sn=b.kh_sn  and (a.kh_sn like '%光%' or a.kh_jm like '%光%' or a.kh_name like '%光%')  order by a.kh_sn
select a.ghs_name,b.* from jxc_ghsxx a,(select m.ghs_sn,m.j_yffs,sum(m.j_yfje) as yfje,sum(m.j_sfje) as sfje,sum(m.j_yhje) as yhje,sum(m.j_yf) as yf,sum(m.j_bzf) as bzf,sum(n.sl2) as sl from (select y.j_sn,sum(y.jh_sl) as sl2 from jxc_jhd x,jxc_jhsp y,jxc_ckxx z where x.j_sn=y.j_sn and x.j_status=1 and x.ck_sn=z.ck_sn and x.j_jhrq>='2021-05-01' and x.j_jhrq<='2021-05-31' and (x.j_yf>0 or x.j_bzf>0) group by y.j_sn) n,jxc_jhd m where m.j_sn=n.j_sn group by m.ghs_sn,m.j_yffs) b where a.ghs_sn=b.ghs_sn  and b.ghs_sn='100002'  order by a.ghs_sn
-- The printed statement: the balance of one customer, of all together.
select top 1 k_ljje from jxc_ysyfk where k_type='kh' and k_ghskh='100002' and k_rq<='2021-05-31' order by k_rq desc,id desc
select sum(k_ljje) as ljje from jxc_ysyfk where id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<='2021-05-31'  group by k_ghskh) group by k_ghskh) 
-- What a partner bought: goods, lines, months, kinds, regions, who has stopped buying.
select a.g_sn,a.g_name,a.dw_name,a.g_kc,a.gg_name,a.color_name,a.g_sccs,a.g_bz,a.g_jm,b.sl,b.zje,b.je,b.taxje from jxc_goods a,(select g_sn,sum(c.gl_sl) as sl,sum(c.gl_zje) as zje,sum(c.gl_je) as je,sum(c.gl_taxje) as taxje from jxc_goodslist c,jxc_khxx e,jxc_ckxx d where c.ghs_sn=e.kh_sn and c.ck_sn=d.ck_sn  and (gl_flag='xs' or gl_flag='xt') and c.gl_kdrq>='2021-05-01' and c.gl_kdrq<='2021-05-31' and d.ck_asn like '%100001%'  group by c.g_sn) b where a.g_sn=b.g_sn order by a.id
select a.*,a.gl_lr as lr,iif(a.gl_je<>0,round(a.gl_lr*100.00/a.gl_je,2),0) as lrl from jxc_goodslist a,jxc_ckxx b,jxc_khxx c where a.ck_sn=b.ck_sn and a.ghs_sn=c.kh_sn and (gl_flag='xs' or gl_flag='xt') and a.gl_kdrq>='2021-05-01' and a.gl_kdrq<='2021-05-31 23:59:59' and c.kh_sn='100002' order by a.gl_kdrq desc,a.gl_djh desc,a.id desc
select sum(a.gl_sl) as xssl,sum(a.gl_zje) as xsje,sum(a.gl_lr) as xslr,left(a.gl_kdrq,7) as kdrq from jxc_goodslist a,jxc_ckxx b,jxc_khxx c where a.ck_sn=b.ck_sn and a.ghs_sn=c.kh_sn and (gl_flag='xs' or gl_flag='xt') and a.gl_kdrq>='2021-05-01' and a.gl_kdrq<='2021-05-31 23:59:59' group by left(a.gl_kdrq,7) order by left(a.gl_kdrq,7)
select d.kt_name as khtype,sum(b.gl_sl) as xssl,sum(b.gl_zje) as xsje,sum(b.gl_lr) as xslr,sum(b.gl_je) as je,sum(b.gl_taxje) as taxje from jxc_khxx a,jxc_goodslist b,jxc_ckxx c,jxc_khtype d where a.kh_sn=b.ghs_sn and a.kt_sn=d.kt_sn and b.ck_sn=c.ck_sn and (b.gl_flag='xs' or b.gl_flag='xt') and b.gl_kdrq>='2021-05-01' and b.gl_kdrq<='2021-05-31 23:59:59' group by d.kt_name
select iif(a.z_name='','无地区',a.z_name) as khtype,sum(b.gl_sl) as xssl,sum(b.gl_zje) as xsje,sum(b.gl_lr) as xslr,sum(b.gl_je) as je,sum(b.gl_taxje) as taxje from jxc_khxx a,jxc_goodslist b,jxc_ckxx c where a.kh_sn=b.ghs_sn and b.ck_sn=c.ck_sn and (b.gl_flag='xs' or b.gl_flag='xt') and b.gl_kdrq>='2021-05-01' and b.gl_kdrq<='2021-05-31 23:59:59' group by a.z_name
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (ghs_sn,a_name,g_sn) select ghs_sn,'admin',max(gl_kdrq) from jxc_goodslist where (gl_flag='xs' or gl_flag='xt') group by ghs_sn
delete from jxc_tempspxf where datediff('d',g_sn,date())<=30 and a_name='admin' 
select a.kh_sn,a.kh_name,b.g_sn as rq,c.zje from jxc_khxx a,jxc_tempspxf b,(select ghs_sn,sum(gl_zje) as zje from jxc_goodslist where (gl_flag='xs' or gl_flag='xt') group by ghs_sn) c where a.kh_sn=b.ghs_sn and a.kh_sn=c.ghs_sn and b.a_name='admin' order by b.g_sn
select a.g_sn,a.g_name,a.g_jm,a.dw_name,a.gg_name,a.color_name,a.g_sccs,a.g_bz,a.g_kc,b.sl,b.zje,b.je,b.taxje,b.rq from jxc_goods a,(select c.g_sn,max(c.gl_kdrq) as rq,sum(gl_sl) as sl,sum(gl_zje) as zje,sum(c.gl_je) as je,sum(c.gl_taxje) as taxje from jxc_goodslist c,jxc_ghsxx d,jxc_ckxx e where (c.gl_flag='cj' or c.gl_flag='ct') and c.ghs_sn=d.ghs_sn and c.ck_sn=e.ck_sn  and c.gl_kdrq>='2021-05-01' and c.gl_kdrq<='2021-05-31 23:59:59' group by g_sn) b where  a.g_sn=b.g_sn and a.g_sn<>'00000000' and a.g_jy=0  order by a.g_sn
-- Cash and bank: balances, recomputing, money in and out, transfers.
select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc='现金' order by xj_rq desc,id desc
select top 1 xj_ljje from jxc_xjyh where xj_chk='1' and xj_kmmc='现金' and xj_rq<'2021-05-03' order by xj_rq desc,id desc
select * from jxc_xjyh where xj_chk='1' and xj_kmmc='现金' and xj_rq>='2021-05-03' order by xj_rq,id
update jxc_xjyh set xj_ljje=0 where id=1
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) values ('XJ21050310001','2021-05-03','0','现金银行收款','默认员工',1000,0,'现金','','admin')
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) values ('XC21050310001','2021-05-03','0','现金银行付款','默认员工',200*-1,0,'现金','','admin')
update jxc_xjyh set xj_rq='2021-05-04',u_name='默认员工',xj_je=-250,xj_kmmc='现金',xj_note='改' where gl_djh='XC21050310001'
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) values ('XZ21050410001','2021-05-04','0','现金银行转账','默认员工',300*-1,0,'现金','','admin')
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) values ('XZ21050410001','2021-05-04','0','现金银行转账','默认员工',300,0,'工行帐号','','admin')
select * from jxc_xjyh where gl_djh='XZ21050410001'
update jxc_xjyh set xj_chk='1' where gl_djh='XZ21050410001'
update jxc_xjyh set xj_chk='0' where gl_djh='XZ21050410001'
delete from jxc_xjyh where gl_djh='XZ21050410001'
update jxc_xjyh set xj_chk='1' where gl_djh='XJ21050310001'
select * from jxc_xjyh where xj_chk='0' and xj_rq>='2021-05-01' and xj_rq<='2021-05-31'  and xj_kmmc='现金'  and (gl_djh like '%XC%' or xj_dlx like '%XC%' or ghs_name like '%XC%' or xj_note like '%XC%')  order by id desc
select * from jxc_xjyh where xj_chk='1' and xj_rq>='2021-05-01' and xj_rq<='2021-05-31 23:59:59'  order by xj_kmmc,xj_rq,id
select m.xj_kmmc,m.sfje,n.ljje from (select xj_kmmc,sum(xj_je) as sfje from jxc_xjyh where xj_chk='1' and xj_rq>='2021-05-01' and xj_rq<='2021-05-31' group by xj_kmmc) m  left outer join (select xj_kmmc,xj_ljje as ljje from jxc_xjyh where xj_chk='1' and id in (select max(x.id) as rowid from jxc_xjyh x,(select max(xj_rq) as kdrq,xj_kmmc from jxc_xjyh where xj_chk='1' and xj_rq<='2021-05-31' group by xj_kmmc) y where x.xj_chk='1' and x.xj_kmmc=y.xj_kmmc and x.xj_rq=y.kdrq group by x.xj_kmmc)) n on m.xj_kmmc=n.xj_kmmc order by m.xj_kmmc
select * from jxc_yhzh order by id
select u_sn,u_name from jxc_user where u_jy=0 and u_name<>'' order by id
-- Accounts: names and kinds are unique, a rename rewrites the ledger.
select yh_name from jxc_yhzh where yh_name='农行帐号' or yh_type='农行合计'
insert into jxc_yhzh (yh_sn,yh_type,yh_name,yh_zje,yh_note) values ('100004','农行合计','农行帐号',500,'')
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,xj_je,xj_ljje,xj_kmmc,xj_note,a_name) values ('','2021-05-03','1','期初金额',500,500,'农行帐号','农行帐号期初数','admin')
select yh_name from jxc_yhzh where (yh_name='农行' or yh_type='农行合计') and id<>4
update jxc_yhzh set yh_name='农行',yh_type='农行合计',yh_zje=600,yh_note='' where id=4
update jxc_xjyh set xj_je=600 where xj_dlx='期初金额' and xj_kmmc='农行帐号'
update jxc_xjyh set xj_kmmc='农行' where xj_kmmc='农行帐号'
select top 1 id from jxc_xjyh where xj_kmmc='农行' and xj_dlx<>'期初金额'
select xj_rq from jxc_xjyh where xj_kmmc='农行' and xj_dlx='期初金额'
delete from jxc_xjyh where xj_kmmc='农行'
delete from jxc_yhzh where id=4
-- Expenses and income: entry, audit into cash, lists, types.
insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,fy_flag,u_sn,de_sn,fy_kmmc,fy_chk,fy_note,a_name,fy_sc) values ('FY21050510001','2021-05-05','费用',100*-1,'1','100001','100001','现金','0','房租','admin','费用')
insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,fy_flag,u_sn,de_sn,fy_kmmc,fy_chk,fy_note,a_name,fy_sc) values ('SR21050510001','2021-05-05','收入',35.5,'2','100001','100001','不记入账户','0','','admin','收入')
select a.*,b.u_name,c.de_name from jxc_yyfy a,jxc_user b,jxc_dept c where a.u_sn=b.u_sn and a.de_sn=c.de_sn and a.gl_djh='FY21050510001'
update jxc_yyfy set fy_chk='1' where gl_djh='FY21050510001'
insert into jxc_xjyh (gl_djh,xj_rq,xj_chk,xj_dlx,u_name,xj_je,xj_ljje,xj_kmmc,ghs_name,xj_note,a_name) values ('FY21050510001','2021-05-05','1','费用付款','默认员工',-100,0,'现金','默认部门','房租','admin')
select a.*,b.u_name,c.de_name from jxc_yyfy a,jxc_user b,jxc_dept c where a.u_sn=b.u_sn and a.de_sn=c.de_sn and fy_chk='0' and a.fy_rq>='2021-05-01' and a.fy_rq<='2021-05-31'  and a.fy_lx='收入' and a.de_sn='100001' order by a.id
select a.*,b.u_name,c.de_name from jxc_yyfy a,jxc_user b,jxc_dept c where a.u_sn=b.u_sn and a.de_sn=c.de_sn and fy_chk='1' and (fy_flag='1' or fy_flag='2') and a.fy_rq>='2021-05-01' and a.fy_rq<='2021-05-31' and (a.gl_djh like '%FY%' or a.fy_kmmc like '%FY%' or a.fy_note like '%FY%' or b.u_name like '%FY%') order by a.id desc
select a.fy_lx,a.fy_note,fyje,c.de_name from jxc_fylx a,jxc_dept c,(select fy_lx,de_sn,sum(fy_je) as fyje from jxc_yyfy where fy_chk='1' and (fy_flag='1' or fy_flag='2') and fy_rq>='2021-05-01' and fy_rq<='2021-05-31' group by fy_lx,de_sn) b where a.fy_lx=b.fy_lx and b.de_sn=c.de_sn order by a.id
update jxc_yyfy set fy_chk='0' where gl_djh='FY21050510001'
delete from jxc_xjyh where gl_djh='FY21050510001'
delete from jxc_yyfy where gl_djh='SR21050510001'
select fy_lx from jxc_fylx where fy_lx='水电费'
insert into jxc_fylx (fy_lx,fy_fx,fy_note) values ('水电费',0,'')
select top 1 fy_lx from jxc_yyfy where fy_lx='水电费'
delete from jxc_fylx where id=6
-- Invoices still to issue and to receive.
insert into jxc_fpdjb (gl_djh,fp_rq,fp_no,fp_yfje,fp_sfje,fp_kpje,fp_qcje,fp_ljje,fp_flag,fp_type,fp_djlx,fp_djtxt,fp_note,fp_ghskh,fp_check,fp_checker,fp_chkrq,fp_kprq,u_sn,a_name) values ('XS21050310001','2021-05-03','',999,500,0,0,999,1,'kh','XS','商品销售单','','100002',1,'admin','2021-05-03','','100001','admin')
insert into jxc_fpdjb (gl_djh,fp_rq,fp_no,fp_yfje,fp_sfje,fp_kpje,fp_qcje,fp_ljje,fp_flag,fp_type,fp_djlx,fp_djtxt,fp_note,fp_ghskh,fp_check,fp_checker,fp_chkrq,fp_kprq,u_sn,a_name) values ('XP21050510001','2021-05-05','NO1',0,0,600,0,0,-1,'kh','XP','增加发票','','100002',0,'','','2021-05-05','100001','admin')
select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type='kh' and fp_ghskh='100002' and fp_rq<='9999-12-31' order by fp_rq desc,id desc
select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type='kh' and fp_ghskh='100002' and fp_rq<='2021-05-05' and id<2 order by fp_rq desc,id desc
select top 1 fp_ljje from jxc_fpdjb where fp_check<>0 and fp_type='kh' and fp_ghskh='100002' and fp_rq<'2021-05-05' order by fp_rq desc,id desc
update jxc_fpdjb set fp_check=1,fp_checker='admin',fp_chkrq='2021-05-05' where gl_djh='XP21050510001'
select * from jxc_fpdjb where fp_check<>0 and fp_type='kh' and fp_ghskh='100002' and fp_rq>='2021-05-03' order by fp_rq,id
update jxc_fpdjb set fp_ljje=399 where id=2
select * from jxc_fpdjb where gl_djh='XS21050310001'
update jxc_fpdjb set a_name='admin',u_sn='100001',fp_kpje=99,fp_no='NO2',fp_note='',fp_kprq='2021-05-06' where gl_djh='XS21050310001'
update jxc_fpdjb set fp_check=0,fp_checker='',fp_chkrq='' where id=1
select * from (select a.id,a.gl_djh,'2021-05-05' as fp_rq,'期初应开' as fp_djtxt,a.fp_ljje as fp_qcje,0 as fp_yfje,0 as fp_kpje,a.fp_ljje,a.fp_ghskh,b.kh_name,'' as u_name,1 as dsort from jxc_fpdjb a,jxc_khxx b where a.fp_ghskh=b.kh_sn and b.kh_forbid=0 and a.id in (select max(id) as rowid from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq+fp_ghskh in (select max(fp_rq)+fp_ghskh as rq from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq<'2021-05-05' group by fp_ghskh) group by fp_ghskh) union select a.id,a.gl_djh,a.fp_rq,a.fp_djtxt,a.fp_qcje,a.fp_yfje,a.fp_kpje,a.fp_ljje,a.fp_ghskh,b.kh_name,c.u_name,2 as dsort from jxc_fpdjb a,jxc_khxx b,jxc_user c where a.fp_ghskh=b.kh_sn and a.u_sn=c.u_sn and a.fp_type='kh' and a.fp_check<>0 and b.kh_forbid=0 and a.fp_rq>='2021-05-05' and a.fp_rq<='2021-05-31 23:59:59') DERIVEDTBL order by fp_ghskh,fp_rq,dsort,id
select a.kh_name,m.fp_ghskh,m.yfje,m.kpje,iif(n.qcje is null,0,n.qcje) as qcje,iif(n.qcje is null,m.yfje-m.kpje,m.yfje+n.qcje-m.kpje) as wfje from jxc_khxx a,((select fp_ghskh,sum(fp_yfje) as yfje,sum(fp_kpje) as kpje from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq>='2021-05-05' and fp_rq<='2021-05-31 23:59:59' group by fp_ghskh) m left outer join (select fp_ghskh,fp_ljje as qcje from jxc_fpdjb where id in (select max(id) as rowid from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq+fp_ghskh in (select max(fp_rq)+fp_ghskh as rq from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq<'2021-05-05' group by fp_ghskh) group by fp_ghskh)) n on m.fp_ghskh=n.fp_ghskh) where a.kh_sn=m.fp_ghskh and a.kh_forbid=0 order by m.fp_ghskh
delete from jxc_fpdjb where id=2
-- Fixed assets.
insert into jxc_gdzc (zc_bh,zc_mc,zc_rq,zc_lx,zc_dw,zc_je,zc_bm,zc_zjys,zc_ghs,zc_nbfl,zc_ggxh,zc_note,u_name,a_name) values ('ZC001','电脑验光仪','2021-05-01','设备','台',28000,'验光室','60','仪器厂','','KR-800','','默认员工','admin')
select * from jxc_gdzc where zc_bh='ZC001'
select * from jxc_gdzc where zc_rq>='2021-05-01' and zc_rq<='2021-05-31 23:59:59'  and zc_lx='设备' and (zc_bh like '%验%' or zc_mc like '%验%' or zc_lx like '%验%' or zc_ggxh like '%验%' or zc_note like '%验%') order by id desc
update jxc_gdzc set zc_je=27500,zc_note='议价' where id=1
delete from jxc_gdzc where id=9
-- Who owes what, the profit statement, the balance sheet, the charts.
select a.gl_djh as djh,a.k_rq as rq,a.k_yfje as yfje,a.k_sfje as sfje,(a.k_yfje-a.k_sfje) as wfje,k_djtxt as zflx,a.k_note as dnote,a.a_name,c.u_name,b.ghs_sn from jxc_ysyfk a,jxc_ghsxx b,jxc_user c where a.k_ghskh=b.ghs_sn and a.u_sn=c.u_sn and a.k_type='ghs' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and a.k_yfje-a.k_sfje<>0  order by a.k_rq desc
select a.gl_djh as djh,a.k_rq as rq,a.k_yfje as yfje,a.k_sfje as sfje,(a.k_yfje-a.k_sfje) as wfje,k_djtxt as zflx,a.k_note as dnote,a.a_name,c.u_name,b.kh_sn from jxc_ysyfk a,jxc_khxx b,jxc_user c where a.k_ghskh=b.kh_sn and a.u_sn=c.u_sn and a.k_type='kh' and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_ghskh='100002' and a.k_yfje-a.k_sfje=0  order by a.k_rq desc
delete from jxc_tempspxf where a_name='admin'
select sum(k_yfje) as je from jxc_ysyfk where (k_djlx='XS' or k_djlx='XT' or k_djlx='YS')
select fy_lx,iif(sum(fy_je) is null,0,sum(fy_je)) as fyje from jxc_yyfy where fy_sc='收入' group by fy_lx
select sum(gl_zcb) as je from jxc_goodslist where (gl_flag='xs' or gl_flag='xt')
select fy_lx,iif(sum(-1*fy_je) is null,0,sum(-1*fy_je)) as fyje from jxc_yyfy where fy_sc='费用' group by fy_lx
select sum(k_yfje) as cbje from jxc_ysyfk where k_type='ghs' and left(gl_djh,2)='WS'
select sum(k_yfje-k_sfje) as je from jxc_ysyfk where k_djlx='YF'
select sum(k_yfje) as je from jxc_ysyfk where (k_djlx='XS' or k_djlx='XT' or k_djlx='YS') and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59'
select fy_lx,iif(sum(fy_je) is null,0,sum(fy_je)) as fyje from jxc_yyfy where fy_sc='收入' and fy_rq>='2021-05-01' and fy_rq<='2021-05-31 23:59:59' group by fy_lx
select sum(gl_zcb) as je from jxc_goodslist where (gl_flag='xs' or gl_flag='xt') and gl_kdrq>='2021-05-01' and gl_kdrq<='2021-05-31 23:59:59'
select fy_lx,iif(sum(-1*fy_je) is null,0,sum(-1*fy_je)) as fyje from jxc_yyfy where fy_sc='费用' and fy_rq>='2021-05-01' and fy_rq<='2021-05-31 23:59:59' group by fy_lx
select sum(k_yfje) as cbje from jxc_ysyfk where k_type='ghs' and left(gl_djh,2)='WS' and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59'
select sum(k_yfje-k_sfje) as je from jxc_ysyfk where k_djlx='YF' and k_rq>='2021-05-01' and k_rq<='2021-05-31 23:59:59'
insert into jxc_tempspxf (g_sn,ts_zje,ts_note,ts_dj,a_name) values ('101',999,'  销售收入',0,'admin')
update jxc_tempspxf set ts_dj=999 where g_sn='101' and a_name='admin'
select * from jxc_tempspxf where a_name='admin' order by g_sn
select a.id,a.k_rq as rq,a.k_djtxt as lx,a.k_yfje as je,b.u_name,a.k_note as dnote,a.gl_djh from jxc_ysyfk a,jxc_user b where a.u_sn=b.u_sn and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and (a.k_djlx='XS' or a.k_djlx='XT' or a.k_djlx='YS')  order by a.id desc
select id,gl_kdrq as rq,'销售或顾客退货' as lx,gl_zcb as je,u_name,g_name as dnote,gl_djh from jxc_goodslist where gl_kdrq>='2021-05-01' and gl_kdrq<='2021-05-31 23:59:59' and (gl_flag='xs' or gl_flag='xt') order by id desc
select a.id,a.fy_rq as rq,a.fy_lx as lx,a.fy_je as je,b.u_name,a.fy_note as dnote,a.gl_djh from jxc_yyfy a,jxc_user b where a.u_sn=b.u_sn and a.fy_rq>='2021-05-01' and a.fy_rq<='2021-05-31 23:59:59' and a.fy_sc='费用' and a.fy_lx='费用' order by a.fy_rq desc
create table [jxc_wfshd] ([id] Counter, [gl_djh] varchar (16) null, [ws_shrq] varchar (32) null, [ws_yfje] numeric(28,6) null, [ws_note] nvarchar (200) null, [ws_status] int null, [u_sn] varchar (8) null, Constraint StatePrimary Primary key ([id]))
select a.ws_shrq as rq,'外发收货单' as lx,a.ws_yfje as je,b.u_name,a.ws_note as dnote,gl_djh from jxc_wfshd a,jxc_user b where a.u_sn=b.u_sn and a.ws_status=1 and a.ws_shrq>='2021-05-01' and a.ws_shrq<='2021-05-31 23:59:59' order by a.id desc
drop table jxc_wfshd
select a.id,a.k_rq as rq,a.k_djtxt as lx,a.k_yfje-a.k_sfje as je,b.u_name,a.k_note as dnote,a.gl_djh from jxc_ysyfk a,jxc_user b where a.u_sn=b.u_sn and a.k_rq>='2021-05-01' and a.k_rq<='2021-05-31 23:59:59' and a.k_djlx='YF' order by a.id desc
delete from jxc_tempspxf where a_name='admin'
select iif(sum(kc_sl*kc_cbj) is null,0,sum(kc_sl*kc_cbj)) as je from jxc_kcsp
select iif(sum(zc_je)is null,0,sum(zc_je)) as je from jxc_gdzc where zc_rq<='2021-05-31'
select top 1 xj_ljje from jxc_xjyh where xj_kmmc='现金' and xj_chk='1' and xj_rq<='2021-05-31' order by xj_rq desc,id desc
select sum(k_ljje) as k_qcje from jxc_ysyfk where id in (select max(id) as rowid from jxc_ysyfk where k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<='2021-05-31'  group by k_ghskh) group by k_ghskh)
select sum(k_ljje) as k_qcje from jxc_ysyfk where id in (select max(id) as rowid from jxc_ysyfk where k_type='ghs' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='ghs' and k_rq<='2021-05-31'  group by k_ghskh) group by k_ghskh)
insert into jxc_tempspxf (g_sn,ts_zje,ts_note,a_name) values ('100',205,'[资产合计]','admin')
select left(x.gl_kdrq,7) as js_rq,sum(x.gl_lr) as xslr from jxc_goodslist x,jxc_ckxx y where x.ck_sn=y.ck_sn and (x.gl_flag='xs' or x.gl_flag='xt') and left(x.gl_kdrq,7)>='2021-01' and left(x.gl_kdrq,7)<='2021-12' group by left(x.gl_kdrq,7) order by left(x.gl_kdrq,7) 
select Left(fy_rq,7) as js_rq,sum(-1*fy_je) as xslr from jxc_yyfy where fy_sc='费用' and Left(fy_rq,7)>='2021-01' and Left(fy_rq,7)<='2021-12' group by Left(fy_rq,7)
-- Contracts and where their files lie.
insert into jxc_htgl (gl_djh,ht_sn,ht_rq,ht_name,ht_jm,ht_note,ht_path,ht_fujian,ht_fjname,ht_type,a_name,u_sn,ghs_sn) values ('','100001','2021-05-03','年度供货','NDGH','条款','ghsht','1.pdf','合同.pdf','ghs','admin','100001','100002')
insert into jxc_htgl (gl_djh,ht_sn,ht_rq,ht_name,ht_jm,ht_note,ht_path,ht_fujian,ht_fjname,ht_type,a_name,u_sn,ghs_sn) values ('XS21050310001','100002','2021-05-03','团购','TG','','远程FTP服务器','2.pdf','团购.pdf','kh','admin','100001','100002')
select a.*,b.u_name,c.ghs_name from jxc_htgl a,jxc_user b,jxc_ghsxx c where a.u_sn=b.u_sn and a.ghs_sn=c.ghs_sn and a.ht_type='ghs' and a.ht_rq>='2021-05-01' and a.ht_rq<='2021-05-31 23:59:59'  and (a.ht_sn like '%供%' or a.ht_name like '%供%' or a.ht_jm like '%供%' or c.ghs_name like '%供%' or c.ghs_jm like '%供%' or c.ghs_sn like '%供%') order by a.id desc
select a.*,b.u_name,c.kh_name as ghs_name from jxc_htgl a,jxc_user b,jxc_khxx c where a.u_sn=b.u_sn and a.ghs_sn=c.kh_sn and a.ht_type='kh' and a.ht_rq>='2021-05-01' and a.ht_rq<='2021-05-31 23:59:59'  order by a.id desc
select * from jxc_ghsxx where ghs_forbid=0 order by id
select kh_sn as ghs_sn,kh_name as ghs_name,kh_jm as ghs_jm from jxc_khxx where kh_forbid=0 order by id
select * from jxc_htgl where ht_sn='100001'
update jxc_htgl set ghs_sn='100002',gl_djh='CJ21050210001' where ht_sn='100001'
select ht_path+ht_fjname from jxc_htgl where ht_path<>'远程FTP服务器' and  ht_sn='100001'
update jxc_jhd set ht_sn='' where j_sn='CJ21050210001'
update jxc_lsxsd set ht_sn='' where gl_djh='XS21050310001'
delete from jxc_htgl where ht_sn='100001'
-- Contracts of documents: added for one, or picked; what is tied, and what goes.
insert into jxc_htdj (ht_sn,a_name) values ('100002','admin')
insert into jxc_htwj (ht_path,ht_fujian,ht_fjname,ht_type,ht_rq) values ('khht/','20210503120000123456.pdf','合同.pdf','kh','2021-05-04 12:00:00')
update jxc_htwj set ht_rq='' where ht_fujian='20210503120000123456.pdf'
select * from jxc_htwj where ht_rq<='2021-05-03 12:00:00'
delete from jxc_htwj where ht_fujian='20210503120000123456.pdf'
select top 1 a.ht_sn from jxc_htdj a,jxc_htgl b where a.ht_sn=b.ht_sn and a.a_name='admin' and b.gl_djh='' and b.ht_type='kh' order by a.id desc
delete from jxc_htdj where ht_sn='100002' and (a_name<>'admin' or exists (select h.id from jxc_htgl h where h.ht_sn=jxc_htdj.ht_sn and h.gl_djh<>'' and h.gl_djh<>'XS21050310001'))
select distinct ht_sn from jxc_jhd where j_sn='CJ21050210001' and ht_sn<>''
select ht_sn+' '+ht_name from jxc_htgl where ht_sn='100002'
select a.*,b.u_name,c.kh_name as ghs_name from (jxc_htgl a left join jxc_user b on a.u_sn=b.u_sn) left join jxc_khxx c on a.ghs_sn=c.kh_sn where a.ht_type='kh' and a.ht_rq>='2021-05-01' order by a.id desc
update jxc_htgl set gl_djh='' where gl_djh<>'' and gl_djh not in (select j_sn from jxc_jhd) and gl_djh not in (select gl_djh from jxc_lsxsd)
delete from jxc_ftpcs
insert into jxc_ftpcs (ftp_ip,ftp_user,ftp_pwd,ftp_port,ftp_folder) values ('192.168.1.8','ht','pwd','21','合同')
select * from jxc_ftpcs
delete from jxc_ftpaq
insert into jxc_ftpaq (ftp_ip,ftp_port,ftp_mw,ftp_zs) values ('192.168.1.8','21',0,'')
select ftp_mw,ftp_zs from jxc_ftpaq where ftp_ip='192.168.1.8' and ftp_port='21'
-- Closing up to a date: what was done is counted and summed.
select top 1 nj_year from jxc_nj where nj_year>='2021-05-03'
select count(*) as ds,sum(j_yfje) as je from jxc_jhd where j_status=1 and j_jhrq<='2021-05-03 23:59:59'
select sum(a.jh_sl) as sl from jxc_jhsp a,jxc_jhd b where a.j_sn=b.j_sn and b.j_status=1 and b.j_jhrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(-1*th_yfje) as je from jxc_thd where th_status=1 and th_thrq<='2021-05-03 23:59:59'
select sum(a.th_sl) as sl from jxc_thsp a,jxc_thd b where a.gl_djh=b.gl_djh and b.th_status=1 and b.th_thrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(ls_yfje) as je from jxc_lsxsd where ls_status=1 and ls_xsrq<='2021-05-03 23:59:59'
select sum(a.ls_sl) as sl from jxc_lsxssp a,jxc_lsxsd b where a.gl_djh=b.gl_djh and b.ls_status=1 and b.ls_xsrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(-1*th_yfje) as je from jxc_xsthd where th_status=1 and th_xsrq<='2021-05-03 23:59:59'
select sum(a.th_sl) as sl from jxc_xsthsp a,jxc_xsthd b where a.gl_djh=b.gl_djh and b.th_status=1 and b.th_xsrq<='2021-05-03 23:59:59'
select count(*) as ds,0 as je from jxc_rkd where rk_status=1 and rk_rq<='2021-05-03 23:59:59'
select sum(a.rk_sl) as sl from jxc_rksp a,jxc_rkd b where a.gl_djh=b.gl_djh and b.rk_status=1 and b.rk_rq<='2021-05-03 23:59:59'
select count(*) as ds,0 as je from jxc_ckd where ck_status=1 and ck_rq<='2021-05-03 23:59:59'
select sum(a.ck_sl) as sl from jxc_cksp a,jxc_ckd b where a.gl_djh=b.gl_djh and b.ck_status=1 and b.ck_rq<='2021-05-03 23:59:59'
select count(*) as ds from jxc_kcdbd where db_status=1 and db_dbrq<='2021-05-03 23:59:59'
select sum(a.db_sl) as sl from jxc_dbsp a,jxc_kcdbd b where a.gl_djh=b.gl_djh and b.db_status=1 and b.db_dbrq<='2021-05-03 23:59:59'
select count(*) as ds from jxc_bsd where bs_status=1 and bs_bsrq<='2021-05-03 23:59:59'
select sum(a.bs_sl) as sl,sum(a.bs_zje) as je from jxc_bssp a,jxc_bsd b where a.gl_djh=b.gl_djh and b.bs_status=1 and b.bs_bsrq<='2021-05-03 23:59:59'
select count(*) as ds from jxc_byd where by_status=1 and by_byrq<='2021-05-03 23:59:59'
select sum(a.by_sl) as sl,sum(a.by_zje) as je from jxc_bysp a,jxc_byd b where a.gl_djh=b.gl_djh and b.by_status=1 and b.by_byrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(cf_sl) as sl,sum(cf_sl*cf_cbj) as je from jxc_cfd where cf_status=1 and cf_cfrq<='2021-05-03 23:59:59'
select sum(a.cf_sl) as sl,sum(a.cf_zje) as je from jxc_cfsp a,jxc_cfd b where a.gl_djh=b.gl_djh and b.cf_status=1 and b.cf_cfrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(kb_sl) as sl,sum(kb_sl*kb_cbj) as je from jxc_kbd where kb_status=1 and kb_kbrq<='2021-05-03 23:59:59'
select sum(a.kb_sl) as sl,sum(a.kb_zje) as je from jxc_kbsp a,jxc_kbd b where a.gl_djh=b.gl_djh and b.kb_status=1 and b.kb_kbrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(pd_sl) as sl,sum(kc_sl) as je from jxc_kcpd where pd_status=1 and pd_rq<='2021-05-03 23:59:59'
select count(*) as ds from jxc_khjh where jh_status=1 and jh_rq<='2021-05-03 23:59:59'
select sum(a.jh_sl) as sl,sum(a.jh_zje) as je from jxc_khjhsp a,jxc_khjh b where a.gl_djh=b.gl_djh and b.jh_status=1 and b.jh_rq<='2021-05-03 23:59:59'
select count(*) as ds,sum(fy_je) as je from jxc_yyfy where fy_chk='1' and fy_flag='1' and fy_rq<='2021-05-03 23:59:59'
select count(*) as ds,sum(fy_je) as je from jxc_yyfy where fy_chk='1' and fy_flag='2' and fy_rq<='2021-05-03 23:59:59'
select count(*) as ds,sum(dh_sl) as sl from jxc_dhd where dh_dhrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(j_yfje) as je from jxc_cgd where j_status=1 and j_jhrq<='2021-05-03 23:59:59'
select sum(a.jh_sl) as sl from jxc_cgsp a,jxc_cgd b where a.j_sn=b.j_sn and b.j_status=1 and b.j_jhrq<='2021-05-03 23:59:59'
select count(*) as ds,sum(ls_yfje) as je from jxc_xsd where ls_status=1 and ls_xsrq<='2021-05-03 23:59:59'
select sum(a.ls_sl) as sl from jxc_xssp a,jxc_xsd b where a.gl_djh=b.gl_djh and b.ls_status=1 and b.ls_xsrq<='2021-05-03 23:59:59'
insert into jxc_nj (nj_jsrq,nj_year,nj_xm,nj_ds,nj_sl,nj_je) values ('2021-06-01','2021-05-03','采购进货单',1,20,410)
insert into jxc_nj (nj_jsrq,nj_year,nj_xm,nj_ds,nj_sl,nj_je) values ('2021-06-01','2021-05-03','库存调拨单',0,0,0)
-- Closing: lines before heads.
delete from jxc_jhsp where j_sn in (select j_sn from jxc_jhd where j_jhrq<='2021-05-03 23:59:59')
delete from jxc_jhd where j_jhrq<='2021-05-03 23:59:59'
delete from jxc_thsp where gl_djh in (select gl_djh from jxc_thd where th_thrq<='2021-05-03 23:59:59')
delete from jxc_thd where th_thrq<='2021-05-03 23:59:59'
delete from jxc_lsxssp where gl_djh in (select gl_djh from jxc_lsxsd where ls_xsrq<='2021-05-03 23:59:59')
delete from jxc_lsxsd where ls_xsrq<='2021-05-03 23:59:59'
delete from jxc_xsthsp where gl_djh in (select gl_djh from jxc_xsthd where th_xsrq<='2021-05-03 23:59:59')
delete from jxc_xsthd where th_xsrq<='2021-05-03 23:59:59'
delete from jxc_rksp where gl_djh in (select gl_djh from jxc_rkd where rk_rq<='2021-05-03 23:59:59')
delete from jxc_rkd where rk_rq<='2021-05-03 23:59:59'
delete from jxc_cksp where gl_djh in (select gl_djh from jxc_ckd where ck_rq<='2021-05-03 23:59:59')
delete from jxc_ckd where ck_rq<='2021-05-03 23:59:59'
delete from jxc_dbsp where gl_djh in (select gl_djh from jxc_kcdbd where db_dbrq<='2021-05-03 23:59:59')
delete from jxc_kcdbd where db_dbrq<='2021-05-03 23:59:59'
delete from jxc_bssp where gl_djh in (select gl_djh from jxc_bsd where bs_bsrq<='2021-05-03 23:59:59')
delete from jxc_bsd where bs_bsrq<='2021-05-03 23:59:59'
delete from jxc_bysp where gl_djh in (select gl_djh from jxc_byd where by_byrq<='2021-05-03 23:59:59')
delete from jxc_byd where by_byrq<='2021-05-03 23:59:59'
delete from jxc_cfsp where gl_djh in (select gl_djh from jxc_cfd where cf_cfrq<='2021-05-03 23:59:59')
delete from jxc_cfd where cf_cfrq<='2021-05-03 23:59:59'
delete from jxc_kbsp where gl_djh in (select gl_djh from jxc_kbd where kb_kbrq<='2021-05-03 23:59:59')
delete from jxc_kbd where kb_kbrq<='2021-05-03 23:59:59'
delete from jxc_kcpdsp where gl_djh in (select gl_djh from jxc_kcpd where pd_rq<='2021-05-03 23:59:59')
delete from jxc_kcpd where pd_rq<='2021-05-03 23:59:59'
delete from jxc_posxssp where gl_djh in (select gl_djh from jxc_posxsd where pos_xsrq<='2021-05-03 23:59:59')
delete from jxc_posxsd where pos_xsrq<='2021-05-03 23:59:59'
delete from jxc_cgsp where j_sn in (select j_sn from jxc_cgd where j_jhrq<='2021-05-03 23:59:59')
delete from jxc_cgd where j_jhrq<='2021-05-03 23:59:59'
delete from jxc_xssp where gl_djh in (select gl_djh from jxc_xsd where ls_xsrq<='2021-05-03 23:59:59')
delete from jxc_xsd where ls_xsrq<='2021-05-03 23:59:59'
delete from jxc_dhzp where gl_djh in (select gl_djh from jxc_dhd where dh_dhrq<='2021-05-03 23:59:59')
delete from jxc_dhd where dh_dhrq<='2021-05-03 23:59:59'
delete from jxc_khjhsp where gl_djh in (select gl_djh from jxc_khjh where jh_rq<='2021-05-03 23:59:59')
delete from jxc_khjh where jh_rq<='2021-05-03 23:59:59'
delete from jxc_jhgl where jh_rq<='2021-05-03 23:59:59'
delete from jxc_kcjs where js_rq<='2021-05-03 23:59:59'
delete from jxc_tempspbd where t_rq<='2021-05-03 23:59:59'
delete from jxc_crk where crk_rq<='2021-05-03 23:59:59'
delete from jxc_kdd where kd_rq<='2021-05-03 23:59:59'
-- Closing: the last ledger row of each goods and warehouse becomes its opening row.
delete from jxc_goodslist where gl_kdrq<='2021-05-03 23:59:59' and id not in (select max(x.id) from jxc_goodslist x,(select max(gl_kdrq) as kdrq,g_sn,ck_sn from jxc_goodslist where gl_kdrq<='2021-05-03 23:59:59' group by g_sn,ck_sn) y where x.g_sn=y.g_sn and x.ck_sn=y.ck_sn and x.gl_kdrq=y.kdrq group by x.g_sn,x.ck_sn)
update jxc_goodslist set gl_sl=gl_kc,gl_dj=gl_pjjj,gl_zje=gl_kczje,gl_je=gl_kczje,gl_sqje=gl_kczje,gl_sqsl=gl_kc,gl_djh='',gl_flag='qc',ghs_name='数据结算结转',gl_note='数据结算结转',gl_kdrq='2021-05-03' where gl_kdrq<='2021-05-03 23:59:59'
-- Closing: one carry-forward row a partner for invoices, an account for cash, a partner for what is owed.
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) select max(id) as rowid,'admin' from jxc_fpdjb where fp_type='ghs' and fp_check<>0 and fp_rq+fp_ghskh in (select max(fp_rq)+fp_ghskh as rq from jxc_fpdjb where fp_type='ghs' and fp_check<>0 and fp_rq<='2021-05-03 23:59:59' group by fp_ghskh) group by fp_ghskh
insert into jxc_tempspxf (rid,a_name) select max(id) as rowid,'admin' from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq+fp_ghskh in (select max(fp_rq)+fp_ghskh as rq from jxc_fpdjb where fp_type='kh' and fp_check<>0 and fp_rq<='2021-05-03 23:59:59' group by fp_ghskh) group by fp_ghskh
delete from jxc_fpdjb where fp_rq<='2021-05-03 23:59:59' and id not in (select rid from jxc_tempspxf where a_name='admin')
delete from jxc_fpdjb where fp_ljje=0 and fp_rq<='2021-05-03 23:59:59'
update jxc_fpdjb set gl_djh='',fp_yfje=fp_ljje,fp_sfje=0,fp_kpje=0,fp_djtxt='数据结算结转',fp_note='数据结算结转',fp_rq='2021-05-03' where fp_rq<='2021-05-03 23:59:59'
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) select max(x.id) as rowid,'admin' from jxc_xjyh x,(select max(xj_rq) as kdrq,xj_kmmc from jxc_xjyh where xj_chk='1' and xj_rq<='2021-05-03 23:59:59' group by xj_kmmc) y where x.xj_chk='1' and x.xj_kmmc=y.xj_kmmc and x.xj_rq=y.kdrq group by x.xj_kmmc
delete from jxc_xjyh where xj_rq<='2021-05-03 23:59:59' and id not in (select rid from jxc_tempspxf where a_name='admin')
update jxc_xjyh set xj_je=xj_ljje,gl_djh='',xj_note='数据结算结转',xj_rq='2021-05-03',xj_dlx='数据结算结转',ghs_name='' where xj_rq<='2021-05-03 23:59:59'
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) select max(id) as rowid,'admin' from jxc_ysyfk where  k_type='ghs' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='ghs' and k_rq<='2021-05-03 23:59:59' group by k_ghskh) group by k_ghskh
insert into jxc_tempspxf (rid,a_name) select max(id) as rowid,'admin' from jxc_ysyfk where  k_type='kh' and k_rq+k_ghskh in (select max(k_rq)+k_ghskh as rq from jxc_ysyfk where k_type='kh' and k_rq<='2021-05-03 23:59:59' group by k_ghskh) group by k_ghskh
delete from jxc_ysyfk where k_rq<='2021-05-03 23:59:59' and id not in (select rid from jxc_tempspxf where a_name='admin')
delete from jxc_ysyfk where k_ljje=0 and k_rq<='2021-05-03 23:59:59'
update jxc_ysyfk set gl_djh='',k_yfje=k_ljje,k_sfje=0,k_yhje=0,k_qcje=0,k_djtxt='数据结算结转',k_note='数据结算结转',k_rq='2021-05-03' where k_rq<='2021-05-03 23:59:59'
delete from jxc_ysyfk_dj where k_rq<='2021-05-03 23:59:59'
delete from jxc_yyfy where fy_rq<='2021-05-03 23:59:59'
delete from jxc_log where log_time<='2021-05-03 23:59:59'
delete from jxc_nj where nj_sl=0 and nj_ds=0
select * from jxc_nj order by nj_year desc,id
-- Closing: the copies that were made before.
insert into jxc_jsda (da_time,da_year,da_file,a_name,da_ql) values ('2021-05-03 14:30:00','2021-04-30','D:/backup/x.DAT','admin',0)
select max(da_year) from jxc_jsda where da_ql=0 and da_year>='2021-04-30'
select id,da_time,da_year,da_file,a_name from jxc_jsda order by id desc
update jxc_goodslist set gl_je=gl_kc*gl_pjjj,gl_zje=gl_kc*gl_pjjj where gl_flag='qc' and gl_kdrq='2021-05-03' and gl_note='数据结算结转' and round(iif(gl_kc=0,gl_pjjj,abs(gl_kczje/iif(gl_kc=0,1,gl_kc)))+0.000000001,2)<>gl_pjjj
