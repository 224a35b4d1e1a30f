-- Class tree
select gc_pid from jxc_goodsclass where gc_key=2
select max(gc_sn) as gcsn from jxc_goodsclass where len(gc_sn)=4
select gc_sn from jxc_goodsclass where gc_key=1
select max(gc_sn) as gcsn from jxc_goodsclass where gc_sn like '1000%' and len(gc_sn)=4+3
select * from jxc_goodsclass order by gc_key
insert into jxc_goodsclass (gc_name,gc_pid,gc_cid,gc_sn,gc_jm,gc_key) values ('镜架',1,3,'1001','JJ',3)
insert into jxc_goodsclass (gc_name,gc_pid,gc_cid,gc_sn,gc_jm,gc_key) values ('金属架',3,4,'1001100','JSJ',4)
select top 1 g_sn from jxc_goods where gc_sn like '1001%'
select top 1 gc_name from jxc_goodsclass where len(gc_sn)+4>15 and gc_sn like '1001%'
update jxc_goodsclass set gc_key=-9999 where id=3
update jxc_goodsclass set gc_pid=-9999 where gc_pid=3
select * from jxc_goodsclass where gc_key>2 and gc_key<9 order by gc_key desc,gc_pid
select * from jxc_goodsclass where gc_key>2 and gc_key<=9 order by gc_key,gc_pid
update jxc_goodsclass set gc_key=gc_key+1 where id=4
update jxc_goodsclass set gc_pid=5 where gc_pid=5-1 
update jxc_goodsclass set gc_pid=4 where gc_pid=4+1 
update jxc_goodsclass set gc_key=3 where id=3
update jxc_goodsclass set gc_pid=3 where gc_pid=-9999
select * from jxc_goodsclass where gc_sn like '1001%' order by id
update jxc_goodsclass set gc_sn='1002' where id=3
update jxc_goods set gc_sn='1002' where gc_sn='1001'
select top 1 gc_name from jxc_goodsclass where (gc_jm like 'JP%' or gc_name like 'JP%') and gc_pid<>0
select * from jxc_goodsclass where gc_sn is null or gc_sn not like '1000%' order by id
select * from jxc_goodsclass where gc_sn is null or gc_sn like '1000%' order by id
select gc_cid from jxc_goodsclass where gc_sn='1000'

-- A new goods with its opening stock
select top 1 ck_sn from jxc_ckxx
select * from jxc_ckxx order by ck_default,id desc
delete from jxc_goodstmp
select max(g_sn) from jxc_goods where isnumeric(g_sn) and len(g_sn)=8 and g_sn like '3%'
select g_sn from jxc_goods where g_sn='30000001'
select g_sn from jxc_goods where g_sptm='690001' and g_sn<>'30000001'
select g_sn from jxc_goods where g_name='镜架乙' and id<>5
select ghs_sn from jxc_ghsxx where ghs_default<>0
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_sj1,g_sj2,g_sj3,g_sj4,g_sj5,g_lsj,g_zdkc,g_tjsp,g_sccs,g_bz,g_kc,g_zhxs,g_gdcbj,dw_name2,g_scjj,g_cbj,g_cgpl,g_xspl,g_jy,g_sptm,g_pjjj,g_dzll,g_hyj,g_tj,g_tjqx,g_dxdz,g_iszp,g_zpjf,g_clxs,g_yjlx,g_tym,g_sy,g_tclb,g_tc,g_tcje,g_bzq,g_qc,g_isjp,gc_cid,gc_sn,dw_name,gg_name,color_name,ghs_sn) values ('30000001','镜架乙','JJY',50,120,110,100,95,90,85,150,2,0,'温州','',4,1,0,'副',50,50,0,0,0,'690001',50,1,0,0,0,0,1,10,0,'','',0,2,5,0,0,'镜架乙',0,3,'1002','副','大','黑','100001')
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_zhxs,g_jy,g_isjp,g_qc,g_qgd,g_sgd,gc_cid,gc_sn,dw_name,ghs_sn,g_sptm,gg_name,color_name) values ('20000001','单光片:屈光度-1.25:散光度-0.5','DGP',5,12,0,1,0,1,'单光片','-1.25','-0.5',2,'1000','片','100001','','','')
insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb) values ('2021-05',0,0,'100001',0,0,0,0,0,0)
update jxc_kcjs set js_sl=js_sl+4 ,js_zje=js_zje+200 where js_rq='2021-05' and ck_sn='100001'
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (4,50,0,'30000001','100001',4)
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj) select 'qc' as glflag,'','2016-01-01',g_sn,g_name,g_jm,dw_name,g_jj,g_kc,round(g_jj*g_kc+0.000000001,2),0,1,'默认员工','admin','100001','主仓库','','期初建账',gg_name,color_name,g_kc,'',0,g_kc,g_jj,round(g_jj*g_kc+0.000000001,2),'admin','2021-05-03',0,0,g_bz,0,g_jj,0,round(g_jj*g_kc+0.000000001,2),0 from jxc_goods where g_sn='30000001'
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_kc,gl_pjjj,gl_kczje) select 'qc' as glflag,'','2021-05-03',g_sn,g_name,g_jj,g_kc,g_jj*g_kc,g_jj*g_kc,g_kc,g_jj,g_jj*g_kc from jxc_goods where g_sn='20000001'

-- Changes of a goods
select top 1 g_sn from jxc_jhsp where g_sn='30000001' union select top 1 g_sn from jxc_kcsp where g_sn='30000001'
update jxc_goods set g_name='镜架丙',g_jm='JJB',g_sptm='690002',g_jj=51,g_scjj=51,g_pjjj=51,g_gdcbj=1,g_iszp=0 where id=2
update jxc_goods set g_zhxs=10,dw_name2='盒' where g_sn='30000001'
update jxc_goods set dw_name2=dw_name,g_zhxs=1 where g_sn='30000001'
update jxc_goodslist set g_name='镜架丙' where g_name='镜架乙' and g_sn='30000001'
update jxc_goodslist set dw_name='付' where dw_name='副' and g_sn='30000001'
update jxc_goodslist set gg_name='中' where gg_name='大' and g_sn='30000001'
update jxc_goodslist set color_name='棕' where color_name='黑' and g_sn='30000001'
update jxc_goods set g_tclb=2,g_tc=5 where gc_sn='1002'
select top 1 j_sn from jxc_jhsp where g_sn='30000001' order by id
select top 1 gl_djh from jxc_lsxssp where g_sn='30000001' order by id
select top 1 gl_djh from jxc_goodslist where gl_flag<>'qc' and g_sn='30000001' order by id
update jxc_goods set g_jy=1 where id=3
update jxc_goods set g_jy=0 where g_sn<>'00000000' and id=3
update jxc_goods set gc_sn='1002',gc_cid=3 where id=2
update jxc_goods set g_jm='JJ' where id=2
update jxc_goods set g_zdkc=3 where id=2
update jxc_goods set g_gdcbj=1 where id=2
update jxc_goods set g_gdcbj=0 where id=2

-- List and search
select a.*,b.gc_name,round(g_kc/g_zhxs+0.000000001,2) as fzkc from jxc_goods a,jxc_goodsclass b where a.gc_sn=b.gc_sn
select a.*,b.gc_name,round(g_kc/g_zhxs+0.000000001,2) as fzkc from jxc_goods a,jxc_goodsclass b where a.gc_sn=b.gc_sn and a.g_jy=0 and a.g_sn<>'00000000'  and (a.g_sn like '%J%' or a.g_name like '%J%' or a.g_jm like '%J%' or a.g_sptm like '%J%' or a.gg_name like '%J%' or a.color_name like '%J%')  order by a.g_sn
select a.*,b.gc_name,round(g_kc/g_zhxs+0.000000001,2) as fzkc from jxc_goods a,jxc_goodsclass b where a.gc_sn=b.gc_sn and a.gc_sn like '1002%'  order by a.g_sn
select sum(g_kc) as gkc from jxc_goods where g_jy=0  and gc_sn like '1002%' 
select a.*,b.gc_name,'晴川公司' as company from jxc_goods a,jxc_goodsclass b where a.gc_sn=b.gc_sn and a.id=2
select a.*,b.gc_name from jxc_goods a,jxc_goodsclass b where a.gc_sn=b.gc_sn and a.g_jy=0 order by a.id
select *  from jxc_goodsprice order by id
delete from jxc_txm
insert into jxc_txm (tm_code) values ('690002')
select b.* from jxc_txm a,jxc_goods b where a.tm_code=b.g_sptm

-- Lenses
select * from jxc_jplx where jp_spmc like '%DG%' or jp_jm like '%DG%' order by jp_lx,id desc
insert into jxc_jplx (jp_lxmc,jp_zsl,jp_mcqc,jp_hsl,jp_spmc,jp_lx,jp_bz,jp_jm) values ('晴川','1.56','加膜','','晴川加膜折射1.56','0','','QCJMZS1.56')
select top 1 g_sn from jxc_jhsp where g_sn='20000001'
select distinct g_name from jxc_goods where g_isjp<>0 and (g_sn like '%D%' or g_name like '%D%' or g_jm like '%D%') order by g_name
select distinct a.g_name from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and b.ck_sn='100001' and a.g_isjp<>0 and (a.g_sn like '%D%' or a.g_name like '%D%' or a.g_jm like '%D%') order by a.g_name
select distinct g_qgd from jxc_goods where g_name='单光片' order by g_qgd
select distinct g_sgd from jxc_goods where g_name='单光片' order by g_sgd

-- Prices
select top 1 kb_bj from jxc_khbj where g_sn='30000001' and kh_sn='100001' order by id desc
select top 1 a.ls_dj from jxc_lsxssp a,jxc_lsxsd b where b.ls_status=1 and a.gl_djh=b.gl_djh and b.kh_sn='100001' and a.g_sn='30000001' order by a.id desc
select g_sj1 from jxc_goods where g_sn='30000001'
select g_sj from jxc_goods where g_sn='30000001'
select top 1 kt_sn from jxc_khxx where kh_sn='100001'
select g_sj,g_sj1,g_sj2,g_sj3,g_sj4,g_sj5 from jxc_goods where g_sn='30000001'
update jxc_goods set g_sj1=g_sj*0.85 
update jxc_goods set g_sj=g_jj*1.5  where gc_sn='1002' 
update jxc_goods set g_lsj=g_sj*1.25 
update jxc_goods set g_ygtc=5,g_jgtc=2,g_xsytc=3,g_ygtc2=0,g_jgtc2=1,g_xsytc2=0 where g_sn='30000001' 
select sum(a.gl_sl*b.g_tc) as tc from jxc_goodslist a,jxc_goods b where a.g_sn=b.g_sn and (a.gl_flag='xs' or a.gl_flag='xt') and b.g_tclb=1
select sum(a.gl_zje*b.g_tc)*0.01 as tc from jxc_goodslist a,jxc_goods b where a.g_sn=b.g_sn and (a.gl_flag='xs' or a.gl_flag='xt') and b.g_tclb=2
select sum(a.gl_lr*b.g_tc)*0.01 as tc from jxc_goodslist a,jxc_goods b where a.g_sn=b.g_sn and (a.gl_flag='xs' or a.gl_flag='xt') and b.g_tclb=3

-- Customers
select kh_name from jxc_khxx where kh_name='小店'
update jxc_khxx set kh_default=0
select * from jxc_khxx where 1>2
insert into jxc_khxx (kh_sn,kh_name,kh_jm,kh_lxr,kh_tele,kh_address,kh_note,kh_lwje,kh_default,kh_pl,ck_sn,ck_name,kh_forbid,kh_uname,kh_usn,kt_sn,kt_name,z_name) values ('100002','小店','XD','','','','',100,1,0,'-1','所有仓库',0,'默认员工,','100001,','1001','一级','省会地区')
delete from jxc_ysyfk_dj where k_type='kh' and k_ghskh='100002'
delete from jxc_ysyfk where k_type='kh' and k_ghskh='100002'
insert into jxc_ysyfk_dj (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_mlje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,k_check,k_checker,k_chkrq,u_sn,a_name,k_ghskh) values ('YS21050310001','2021-05-03','期初应收款',100,0,0,0,100,0,1,'kh','YS','期初应收款','','客户的期初应收款',1,'admin','2021-05-03','100001','admin','100002')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,k_note,u_sn,a_name,k_ghskh) select gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,k_note,u_sn,a_name,k_ghskh from jxc_ysyfk_dj where gl_djh='YS21050310001'
select kh_name from jxc_khxx where kh_name='小店' and id<>2
update jxc_goodslist set ghs_name='大店' where ghs_name='小店' and ghs_sn='100002'
update jxc_xjyh set ghs_name='大店' where ghs_name='小店' and ghs_sn='100002'
update jxc_ysyfk set k_ljje=80,k_yfje=80 where k_type='kh' and k_ghskh='100002'
update jxc_ysyfk_dj set k_ljje=80,k_yfje=80 where k_type='kh' and k_ghskh='100002'
select kh_sn from jxc_lsxsd where kh_sn='100002' union select kh_sn from jxc_posxsd where kh_sn='100002'
delete from jxc_xjyh where ghs_sn='100002' and gl_djh like 'SK%'
update jxc_khxx set kh_forbid=1 where id=2
update jxc_khxx set kh_jm='XD' where id=2
update jxc_khxx set kt_name='一级客户' where kt_name='一级'
update jxc_khtype set kt_name='一级客户' where kt_sn='1001'
insert into jxc_khlx (lx_rq,lx_note,u_sn,kh_sn) values ('2021-05-03','电话回访','100001','100002')
select * from jxc_khlx where kh_sn='100002' order by id desc
select top 1 kh_sn from jxc_khxx where kh_default<>0 and kh_forbid=0
select a.*,b.kt_name as ktname from jxc_khxx a,jxc_khtype b where a.kt_sn=b.kt_sn and a.kh_forbid=0 and (a.ck_sn='-1' or a.ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%')) order by a.id

-- Suppliers
insert into jxc_ghsxx (ghs_sn,ghs_name,ghs_jm,ghs_lxr,ghs_tele,ghs_address,ghs_note,ghs_lwje,ghs_default,ghs_pl,ghs_forbid,ck_sn,ck_name,gt_name,z_name) values ('100002','镜片厂','JPC','','','','',0,0,0,0,'-1','所有仓库','A级供货商','')
select ghs_sn from jxc_jhd where ghs_sn='100002'
delete from jxc_xjyh where ghs_sn='100002' and gl_djh like 'FK%'
select * from jxc_khxx where kh_forbid=0 order by id
select * from jxc_khxx where ck_sn='-1' or ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%') order by id
select top 1 ghs_sn from jxc_ghsxx where ghs_default<>0 and ghs_forbid=0
select * from jxc_ghstype order by id
insert into jxc_ghslx (lx_rq,lx_note,u_sn,ghs_sn) values ('2021-05-03','催货','100001','100002')
delete from jxc_ghsxx where ghs_sn='100002'

-- Warehouses, employees, dictionaries
update jxc_ckxx set ck_default=0
update jxc_ckxx set ck_pos=0
insert into jxc_ckxx (ck_sn,ck_name,ck_jm,ck_fzr,ck_aname,ck_asn,ck_default,ck_pos,ck_note) values ('100002','分仓库','FCK','','admin,','100001,',1,1,'')
insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb) select '2021-05',0,0,ck_sn,0,0,0,0,0,0 from jxc_ckxx where ck_sn='100002'
update jxc_goodslist set ck_name='总仓' where ck_name='主仓库'
update jxc_xjyh set ck_name='总仓' where ck_name='主仓库'
select top 1 ck_sn from jxc_goodslist where ck_sn='100002'
delete from jxc_ckxx where ck_sn='100002'
select * from jxc_user where u_jy=0 and u_kc<>0 order by id
select u_name from jxc_user where u_name='小张'
select top 1 g_sn from jxc_goods where g_ygtc<>0 or g_jgtc<>0 or g_xsytc<>0
insert into jxc_user (u_sn,u_name,u_jm,u_tc,u_cgpl,u_xspl,u_cg,u_xs,u_kc,u_yg,u_jg,u_xsy,ck_sn,ck_name,u_jy,u_tcfs,u_zdlr,u_tctxt) values ('100002','小张','XZ',5,0,0,1,1,1,0,0,0,'-1','所有仓库',0,1,20,'按毛利提成')
update jxc_goodslist set u_name='老张' where u_name='小张'
update jxc_xjyh set u_name='老张' where u_name='小张'
update jxc_posxsd set pos_ygs='老张' where pos_ygs='小张'
update jxc_posxsd set pos_jgy='老张' where pos_jgy='小张'
update jxc_posxsd set pos_xsy='老张' where pos_xsy='小张'
update jxc_zcmx set u_name='老张' where u_name='小张'
select * from jxc_khxx where kh_uname like '%小张,%'
update jxc_khxx set kh_uname='老张,' where id=1
select top 1 u_name as u_sn from jxc_goodslist where u_name='小张'
select top 1 u_sn from jxc_ysyfk where u_sn='100002'
select top 1 u_name as u_sn from jxc_zcmx where u_name='小张'
select top 1 u_sn from jxc_yyfy where u_sn='100002'
select top 1 u_name as u_sn from jxc_xjyh where u_name='小张'
update jxc_user set u_jy=1 where id=2
select u_sn,u_name,1 as dsort from jxc_user where u_jy=0 and instr('100001,',u_sn)>0 union select u_sn,u_name,2 as dsort from jxc_user where u_jy=0 and instr('100001,',u_sn)=0 order by dsort,u_sn 
select * from jxc_dw order by id
delete from jxc_dw where id=2
update jxc_zone set z_default=0
select top 1 z_name from jxc_ghsxx where z_name='省会地区'
select top 1 z_name from jxc_khxx where z_name='省会地区'
insert into jxc_dept (de_sn,de_name) values ('100002','验光部')
select top 1 de_sn from jxc_yyfy where de_sn='100002'
delete from jxc_dept where de_sn='100002'
insert into jxc_ywyrz (rz_rq,rz_note,u_sn) values ('2021-05-03','拜访客户','100001')
update jxc_ywyrz set rz_note='电话拜访' where id=1
select * from jxc_ywyrz where u_sn='100001' and rz_rq>='2021-05-01' and rz_rq<='2021-05-31' order by rz_rq,id
select a.j_sn as djh,a.j_yfje as yfje,a.j_sfje as sfje,'采购进货' as zflx,c.u_name,d.ck_name,a.u_sn,1 as dsort from jxc_jhd a,jxc_user c,jxc_ckxx d where a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.j_status=1 union select a.gl_djh as djh,a.th_yfje as yfje,a.th_sfje as sfje,'采购退货' as zflx,c.u_name,d.ck_name,a.u_sn,2 as dsort from jxc_thd a,jxc_user c,jxc_ckxx d where a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1 union select a.gl_djh as djh,a.ls_yfje as yfje,a.ls_sfje as sfje,'商品销售' as zflx,c.u_name,d.ck_name,a.u_sn,3 as dsort from jxc_lsxsd a,jxc_user c,jxc_ckxx d where a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.ls_status=1 union select a.gl_djh as djh,a.th_yfje as yfje,a.th_sfje as sfje,'顾客退货' as zflx,c.u_name,d.ck_name,a.u_sn,4 as dsort from jxc_xsthd a,jxc_user c,jxc_ckxx d where a.u_sn=c.u_sn and a.ck_sn=d.ck_sn and a.th_status=1 order by dsort,djh

-- Spreadsheet import
delete from jxc_importchk
delete from jxc_importchk where a_name='admin'
select * from jxc_import where i_tablename='jxc_goods' order by id
insert into jxc_importchk (i_fieldid,i_excelfield,i_sele,i_image,a_name) values ('g_sn','商品编号',1,0,'admin')
select a.*,b.i_fieldname from jxc_importchk a,jxc_import b where a.i_fieldid=b.i_fieldid and b.i_tablename='jxc_goods' and a.a_name='admin' order by a.id
delete from jxc_importdata
insert into jxc_importdata (id_exceldata,id_status,id_sele,id_image,a_name) values ('30000001 镜架乙','等待导入',1,1,'admin')
update jxc_importdata set id_status='导入成功',id_image=2 where id=1
select * from jxc_importdata where a_name='admin' order by id
select top 1 dw_sn from jxc_dw where dw_name='盒'
insert into jxc_dw (dw_sn,dw_name) values ('100004','盒')
insert into jxc_tym (g_tym,tym_sn) values ('人工泪液','100001')
insert into jxc_yjlx (g_yjlx,lx_sn) values ('滴眼液','100001')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) select g_kc,g_jj,0,g_sn,'100001',g_kc from jxc_goods where g_sn='30000001'
delete from jxc_goods where g_sn='30000001'
delete from jxc_goodslist where g_sn='30000001'
delete from jxc_kcsp where g_sn='30000001'
