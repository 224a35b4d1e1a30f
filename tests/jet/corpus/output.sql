-- Printing: the sale, purchase and return that the statements read.
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_jy,g_pjjj,g_dzll,g_sptm,g_sccs,g_bz,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000001','钛架','TJ',120,380,5,0,120,1,'6901234567892','深圳','','1000',2,'付','52-18','黑色','100001')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (5,120,0,'100001','10000001',5)
insert into jxc_jhd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,j_note,a_name,j_sn2,j_yhje,j_hkje,j_th,j_crk,j_qk,j_fpno,j_fpje,j_yf,j_bzf,j_yffs,j_status,j_checker,j_chkrq,j_jsfs,j_kmmc) values ('CJ21050310001','100001','100001','2021-05-03',1200,1000,'100001','','admin','A-1',0,0,0,1,0,'',0,0,0,'',1,'admin','2021-05-03',1,'现金')
insert into jxc_jhsp (j_sn,g_sn,jh_dj,jh_sl,jh_je,jh_tax,jh_taxdj,jh_taxje,jh_zje,jh_rksl,jh_qxsl,jh_dzl,jh_bz,a_name) values ('CJ21050310001','10000001',120,10,1200,0,120,0,1200,10,0,1,'','admin')
insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,ls_note,a_name,gl_djh2,ls_yhje,ls_hkje,ls_fpno,ls_fpje,ls_yf,ls_bzf,ls_yffs,ls_status,ls_checker,ls_chkrq,ls_jsfs,ls_kmmc,ls_dhbz) values ('XS21050310001','100001','100001','2021-05-03',760,760,'100001','','admin','',0,0,'',0,12,0,'对方付运费',1,'admin','2021-05-03',0,'现金',0)
insert into jxc_lsxssp (gl_djh,g_sn,ls_dj,ls_sl,ls_je,ls_cbj,ls_zcb,ls_tax,ls_taxdj,ls_taxje,ls_lsj,ls_zje,a_name,ls_dzl,ls_bz,t_zp) values ('XS21050310001','10000001',380,2,760,120,240,0,380,0,380,760,'admin',1,'','')
insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,th_xsrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,a_name,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc) values ('XT21050310001','100001','100001','2021-05-03',-380,-380,0,'100001','','admin',1,'admin','2021-05-03',0,'现金')
insert into jxc_xsthsp (gl_djh,g_sn,th_dj,th_cbj,th_zcb,th_sl,th_je,th_tax,th_taxdj,th_taxje,th_zje,th_lsj,a_name,th_dzl,th_bz) values ('XT21050310001','10000001',380,120,120,1,380,0,380,0,380,380,'admin',1,'')
insert into jxc_thd (gl_djh,ghs_sn,ck_sn,th_thrq,th_yfje,th_sfje,th_hkje,u_sn,th_note,a_name,th_status,th_checker,th_chkrq,th_jsfs,th_kmmc) values ('CT21050310001','100001','100001','2021-05-03',-120,-120,0,'100001','','admin',1,'admin','2021-05-03',0,'现金')
insert into jxc_kcdbd (gl_djh,ck_out,ck_in,db_dbrq,db_status,u_sn,db_note,a_name) values ('DB21050310001','100001','100001','2021-05-03',0,'100001','','admin')
insert into jxc_dbsp (gl_djh,g_sn,db_sl,db_dj,db_sj,db_zje,a_name) values ('DB21050310001','10000001',2,120,380,240,'admin')
insert into jxc_cgd (j_sn,ghs_sn,ck_sn,j_jhrq,j_yfje,j_sfje,u_sn,a_name,j_status) values ('CD21050310001','100001','100001','2021-05-03',1200,0,'100001','admin',1)
insert into jxc_xsd (gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,a_name,ls_status) values ('XD21050310001','100001','100001','2021-05-03',760,0,'100001','admin',1)
insert into jxc_cfd (gl_djh,ck_sn,cf_cfrq,g_sn,cf_cbj,cf_sl,cf_status,u_sn,a_name,cf_note) values ('CF21050310001','100001','2021-05-03','10000001',120.5,3,0,'100001','admin','')
insert into jxc_kbd (gl_djh,ck_sn,kb_kbrq,g_sn,kb_cbj,kb_sl,kb_status,u_sn,a_name,kb_note) values ('KB21050310001','100001','2021-05-03','10000001',140,2,0,'100001','admin','')
insert into jxc_bsd (gl_djh,ck_sn,bs_bsrq,bs_status,u_sn,bs_note,a_name) values ('BS21050310001','100001','2021-05-03',0,'100001','','admin')
insert into jxc_byd (gl_djh,ck_sn,by_byrq,by_status,u_sn,by_note,a_name) values ('BY21050310001','100001','2021-05-03',0,'100001','','admin')
insert into jxc_kcpd (gl_djh,pd_sl,kc_sl,pd_rq,pd_note,pd_status,ck_sn,u_sn,a_name) values ('PD21050310001',5,5,'2021-05-03','',0,'100001','100001','admin')
insert into jxc_khjh (kh_sn,jh_rq,gl_djh,ck_sn,u_sn,jh_status,jh_flag,a_name,jh_note) values ('100001','2021-05-03','JH21050310001','100001','100001',0,'jh','admin','')
-- Heads of saved documents, with the names that are printed.
select a.*,b.ck_name,c.u_name from jxc_jhd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.j_sn='CJ21050310001'
select ghs_name,ghs_lxr,ghs_tele,ghs_address from jxc_ghsxx where ghs_sn='100001'
select a.*,b.ck_name,c.u_name from jxc_thd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='CT21050310001'
select a.*,b.ck_name,c.u_name from jxc_lsxsd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='XS21050310001'
select kh_name,kh_lxr,kh_tele,kh_address,kh_note from jxc_khxx where kh_sn='100001'
select a.*,b.ck_name,c.u_name from jxc_xsthd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='XT21050310001'
select b.ck_name as dcck,c.ck_name as drck,d.u_name,a.* from jxc_kcdbd a,jxc_ckxx b,jxc_ckxx c,jxc_user d where a.ck_out=b.ck_sn and a.ck_in=c.ck_sn and a.u_sn=d.u_sn and a.gl_djh='DB21050310001'
select sum(a.db_sl*b.g_sj) as zje from jxc_dbsp a,jxc_goods b where a.g_sn=b.g_sn and a.gl_djh='DB21050310001'
select a.*,b.ck_name,c.u_name from jxc_cgd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.j_sn='CD21050310001'
select a.*,b.ck_name,c.u_name from jxc_xsd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='XD21050310001'
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,c.ck_name,d.u_name,a.cf_cbj*a.cf_sl as zje from jxc_cfd a,jxc_goods b,jxc_ckxx c,jxc_user d where a.g_sn=b.g_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.gl_djh='CF21050310001' order by a.id desc
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,c.ck_name,d.u_name,a.kb_cbj*a.kb_sl as zje from jxc_kbd a,jxc_goods b,jxc_ckxx c,jxc_user d where a.g_sn=b.g_sn and a.ck_sn=c.ck_sn and a.u_sn=d.u_sn and a.gl_djh='KB21050310001' order by a.id desc
select a.*,b.ck_name,c.u_name from jxc_bsd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='BS21050310001'
select a.*,b.ck_name,c.u_name from jxc_byd a,jxc_ckxx b,jxc_user c where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.gl_djh='BY21050310001'
select * from jxc_kcpd where gl_djh='PD21050310001'
select a.*,b.ck_name,c.u_name,d.kh_name,d.kh_lxr,d.kh_tele,d.kh_address from jxc_khjh a,jxc_ckxx b,jxc_user c,jxc_khxx d where a.ck_sn=b.ck_sn and a.u_sn=c.u_sn and a.kh_sn=d.kh_sn and a.gl_djh='JH21050310001'
-- Lines of a document in the order that the parameters ask for.
select a.*,(b.g_name+a.t_zp) as g_name,b.dw_name,b.gg_name,b.color_name,a.ls_taxdj*a.ls_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_lsxssp a,jxc_goods b,jxc_goodsclass c where a.ls_dzl>0 and a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.gl_djh='XS21050310001'  order by a.id
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,a.jh_taxdj*a.jh_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_jhsp a,jxc_goods b,jxc_goodsclass c where a.g_sn<>'' and a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.j_sn='CJ21050310001'  order by a.g_sn
select a.*,b.g_name,b.dw_name,b.gg_name,b.color_name,a.th_taxdj*a.th_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_xsthsp a,jxc_goods b,jxc_goodsclass c where a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.gl_djh='XT21050310001'  order by b.g_name
-- A fixed count of lines a page: staged ids, with empty ones behind.
delete from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) select id,'admin' from jxc_lsxssp where gl_djh='XS21050310001' order by id
select count(*) from jxc_tempspxf where a_name='admin'
insert into jxc_tempspxf (rid,a_name) values (0,'admin')
select y.* from jxc_tempspxf x left join (select a.*,(b.g_name+a.t_zp) as g_name,b.dw_name,b.gg_name,b.color_name,a.ls_taxdj*a.ls_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_lsxssp a,jxc_goods b,jxc_goodsclass c where a.ls_dzl>0 and a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.gl_djh='XS21050310001' ) y  on x.rid=y.id where x.a_name='admin' order by x.id
select y.* from jxc_tempspxf x left join (select a.*,(b.g_name+a.t_zp) as g_name,b.dw_name,b.gg_name,b.color_name,a.ls_taxdj*a.ls_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_lsxssp a,jxc_goods b,jxc_goodsclass c where a.ls_dzl>0 and a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.gl_djh='XS21050310001' ) y  on x.rid=y.id where x.a_name='admin' order by y.g_sn
select y.* from jxc_tempspxf x left join (select a.*,(b.g_name+a.t_zp) as g_name,b.dw_name,b.gg_name,b.color_name,a.ls_taxdj*a.ls_dzl as sj,b.g_sptm,b.g_bz,b.g_sccs,c.gc_name from jxc_lsxssp a,jxc_goods b,jxc_goodsclass c where a.ls_dzl>0 and a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and a.gl_djh='XS21050310001' ) y  on x.rid=y.id where x.a_name='admin' order by y.g_name
delete from jxc_tempspxf where a_name='admin'
-- Barcode labels: the list, its counts, one row a label.
select g_sn from jxc_goods where g_sn='10000001'
select g_sn from jxc_tm where g_sn='10000001'
insert into jxc_tm (g_sn,tm_sl) values ('10000001',2)
update jxc_tm set tm_sl=tm_sl+1.5 where g_sn='10000001'
select a.*,b.g_name,g_sptm,g_sj from jxc_tm a,jxc_goods b where a.g_sn=b.g_sn order by a.id
delete from jxc_txm
insert into jxc_txm (tm_code) values ('6901234567892')
insert into jxc_txm (tm_code) values ('6901234567892')
select a.tm_code,b.* from jxc_txm a,jxc_goods b where a.tm_code=b.g_sptm order by a.id
delete from jxc_tm where g_sn='10000001'
-- Courier companies.
select * from jxc_kdgs order by id
select kg_name from jxc_kdgs where kg_name='顺丰快递'
select kg_name from jxc_kdgs where kg_name='顺丰快递' and id<>2
select max(kg_sn) as sn from jxc_kdgs
insert into jxc_kdgs (kg_sn,kg_name) values ('1024','京东快递')
update jxc_kdgs set kg_name='京东物流' where id=24
-- Waybills: a new one, one for a sale, the earlier recipients.
select a.*,b.kt_name as ktname from jxc_khxx a,jxc_khtype b where a.kt_sn=b.kt_sn and a.kh_forbid=0 order by a.id
select distinct top 100 kd_sjr,kd_dest,kd_dwmc2,kd_address2,kd_tele2,kd_mobile2,kd_zip2 from jxc_kdd order by kd_sjr desc
select a.*,b.kg_name from jxc_kdd a,jxc_kdgs b where a.kg_sn=b.kg_sn and a.gl_djh='XS21050310001'
select a.*,b.kh_name,b.kh_address,b.kh_tele,b.kh_lxr,b.z_name from jxc_lsxsd a,jxc_khxx b where a.kh_sn=b.kh_sn and a.gl_djh='XS21050310001'
select * from jxc_kdd where 1>2
insert into jxc_kdd (kd_dh,kg_sn,kd_rq,kd_zl,kd_je,kd_jjr,kd_src,kd_dwmc,kd_address,kd_tele,kd_mobile,kd_zip,kd_sjr,kd_dest,kd_dwmc2,kd_address2,kd_tele2,kd_mobile2,kd_zip2,kd_note,gl_djh,a_name) values ('SF1001','1002','2021-05-03',0.5,12,'小李','杭州','晴川公司','文三路1号','0571-12345','13800000001','310000','王五','上海','普通客户','南京路2号','021-12345','13900000002','200000','','XS21050310001','admin')
select * from jxc_kdd where id=1
update jxc_kdd set kd_dh='SF1002',kd_zl=0.75 where id=1
select top 1 id from jxc_kdd order by id desc
select a.*,b.kg_name from jxc_kdd a,jxc_kdgs b where a.kg_sn=b.kg_sn and a.id=1
select distinct top 100 kd_sjr,kd_dest,kd_dwmc2,kd_address2,kd_tele2,kd_mobile2,kd_zip2 from jxc_kdd where kd_sjr like '%王%' or kd_dwmc2 like '%王%' or kd_address2 like '%王%' or kd_tele2 like '%王%' order by kd_sjr desc
-- Lists of waybills, one by one and summed by company and recipient.
select a.*,b.kg_name from jxc_kdd a,jxc_kdgs b where a.kg_sn=b.kg_sn and a.kd_rq>='2021-05-01' and a.kd_rq<='2021-05-31' and (a.kd_dh like '%SF%' or a.kd_sjr like '%SF%' or a.kd_jjr like '%SF%' or a.kd_tele like '%SF%' or a.kd_tele2 like '%SF%' or a.kd_address like '%SF%' or a.kd_address2 like '%SF%') and a.kg_sn='1002'  order by a.id desc
select a.kg_name,b.* from jxc_kdgs a,(select kg_sn,kd_dwmc2,count(*) as djsl,sum(kd_je) as yfje from jxc_kdd where kd_rq>='2021-05-01' and kd_rq<='2021-05-31' and (kd_dh like '%SF%' or kd_sjr like '%SF%' or kd_jjr like '%SF%' or kd_tele like '%SF%' or kd_tele2 like '%SF%' or kd_address like '%SF%' or kd_address2 like '%SF%') group by kg_sn,kd_dwmc2) b where a.kg_sn=b.kg_sn order by a.kg_sn
delete from jxc_kdd where id=1
