-- Start, login, session
select top 1 skin_name from jxc_skin order by id
select * from jxc_admin where a_jyt=0 order by id
select a_pwd from jxc_admin where a_name='admin'
select * from jxc_admin where a_name='admin' and a_pwd=''
select * from jxc_company
select * from jxc_xtcs
select * from jxc_backup
select * from jxc_jfsz
select * from jxc_smscs
select e_send,e_date from jxc_email
select c_jc from jxc_company 
insert into jxc_skin (skin_name,a_name) values ('iMaginary','小王')
select skin_name from jxc_skin where a_name='小王'
update jxc_skin set skin_name='Blue' where a_name='小王'

-- Schema: stamp, probes, seeds, definitions
select cs_employdate from jxc_xtcs
update jxc_xtcs set cs_employdate='2014-02-08'
select * from jxc_goods where 1>2
select back_days from jxc_backup
create table [jxc_probe] ([id] Counter, [p_sn] varchar (8) null, [p_name] nvarchar (64) null, [p_sl] numeric(28,6) null, [p_pl] int null, [p_xs] integer null, [p_flag] bit null, [p_note] text null, Constraint StatePrimary Primary key ([id]))
alter table jxc_probe add back_days int null
update jxc_probe set back_days=0
alter table jxc_probe alter column p_name nvarchar(128) null
insert into [jxc_probe] (p_sn,p_name,p_sl) values ('100001','试',1.5)
create index [ix_probe_p_sn] on [jxc_probe] (p_sn)
drop table jxc_probe
update jxc_backup set back_days=0
select fy_lx from jxc_fylx where fy_lx='运费'
insert into jxc_fylx (fy_lx,fy_fx,fy_note) values ('运费',0,'运费支出')
insert into jxc_fylx (fy_lx,fy_fx,fy_note) values ('包装费',0,'包装费支出')
update jxc_goods set g_kc=0,ghs_sn='100001'
update jxc_jhd set j_status=1,j_checker=a_name,j_chkrq=j_jhrq,j_jsfs=0,j_kmmc='现金'
update jxc_xjyh set xj_je=-1*xj_je where left(gl_djh,2)='FK' and xj_je>0 
update jxc_jhd set j_yfje=j_yfje+j_yhje where j_status=1 and j_yfje=j_sfje and j_yhje<>0
update jxc_lsxsd set ls_yfje=ls_yfje+ls_yhje where ls_status=1 and ls_yfje=ls_sfje and ls_yhje<>0
select kg_sn from jxc_kdgs where kg_sn='1018'
update jxc_yyfy set fy_flag='1' where fy_sc='费用'
update jxc_yyfy set fy_flag='2' where fy_sc='收入'
update jxc_role set cggl=cggl+'1',xsgl=xsgl+'1' where r_sn<>'100001'
update jxc_goods set g_tssp=0,g_tsjf=0
select distinct j_sn from jxc_jhsp where jh_sl>jh_rksl+jh_qxsl order by j_sn
select distinct gl_djh from jxc_lsxssp where ls_sl>ls_cksl+ls_qxsl order by gl_djh
update jxc_lsxssp,jxc_goods set jxc_lsxssp.ls_cbj=jxc_goods.g_pjjj,jxc_lsxssp.ls_zcb=jxc_goods.g_pjjj*jxc_lsxssp.ls_sl where jxc_lsxssp.g_sn=jxc_goods.g_sn
update jxc_xtcs set cs_employdate='1900-01-01'

-- Numbers
select max(u_sn) as sn from jxc_user
select max(j_sn) as sn from jxc_jhd where j_sn like 'CJ210503%'
select max(gl_djh) as sn from jxc_lsxsd where gl_djh like 'XS210503%'
select max(gl_djh) as sn from jxc_posxssp where gl_djh like 'XS210503%'
select max(gl_djh) as sn from jxc_lsxssptemp where gl_djh like 'XS210503%'
select max(gl_djh) as sn from jxc_posthsp where gl_djh like 'XT210503%'
select max(gl_djh) as sn from jxc_ysyfk_dj where gl_djh like 'SK210503%'
select top 1 id from jxc_jhsp where j_sn='CJ21050310001'
select top 1 id from jxc_jhsp where j_sn='CJ21050310001' and a_name='admin'
select top 1 id from jxc_jhsp where j_sn='CJ21050310001' and a_name<>'admin'
select top 1 id from jxc_user where u_sn='100001' order by id desc
select top 1 id from jxc_user where u_sn='100001' order by id
select top 1 ck_sn from jxc_ckxx where ck_pos<>0

-- Defaults
select top 1 u_sn from jxc_user where u_name='' or u_name is null order by id
select top 1 u_sn from jxc_user order by id
select top 1 u_name from jxc_user where u_name='' or u_name is null order by id
select top 1 u_name from jxc_user order by id
select top 1 ghs_sn from jxc_ghsxx where ghs_default<>0 and ghs_forbid=0 order by id
select top 1 ghs_sn from jxc_ghsxx where ghs_forbid=0 order by id
select top 1 ghs_name from jxc_ghsxx where ghs_default<>0 and ghs_forbid=0 order by id
select top 1 kh_sn from jxc_khxx where kh_default<>0 and kh_forbid=0 order by id
select top 1 kh_sn from jxc_khxx where kh_forbid=0 order by id
select top 1 kh_name from jxc_khxx where kh_default<>0 and kh_forbid=0 order by id
select top 1 ck_sn from jxc_ckxx where ck_default<>0 order by id
select top 1 ck_sn from jxc_ckxx order by id
select top 1 ck_name from jxc_ckxx where ck_default<>0 order by id

-- Lists of the inputs
select * from jxc_dw order by id
select * from jxc_color where color_name<>'' order by id
select * from jxc_admin where a_jyt=0 and a_sn='100001' order by id
select * from jxc_user where u_jy=0 order by id
select * from jxc_user where u_jy=0 and u_cg<>0 order by id
select * from jxc_user where u_jy=0 and u_xs<>0 and (ck_sn='-1' or ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%')) order by id
select u_sn,u_name,1 as dsort from jxc_user where u_jy=0 and u_xs<>0 and instr('100001,',u_sn)>0 union select u_sn,u_name,2 as dsort from jxc_user where u_jy=0 and u_xs<>0 and instr('100001,',u_sn)=0 order by dsort,u_sn
select u_sn,u_name,1 as dsort from jxc_user where u_jy=0 and u_xs<>0 and instr('100001,',u_sn)>0 and (ck_sn='-1' or ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%')) union select u_sn,u_name,2 as dsort from jxc_user where u_jy=0 and u_xs<>0 and instr('100001,',u_sn)=0 and (ck_sn='-1' or ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%')) order by dsort,u_sn
select kh_usn from jxc_khxx where kh_sn='100001'
select * from jxc_ghsxx where ghs_forbid=0 order by id asc
select * from jxc_ghsxx where ghs_forbid=0 order by id desc
select * from jxc_ghsxx where ghs_forbid=0 and (ck_sn='-1' or ck_sn in (select ck_sn from jxc_ckxx where ck_asn like '%100001%')) order by id asc
select a.*,b.kt_name as ktname from jxc_khxx a,jxc_khtype b where a.kt_sn=b.kt_sn and a.kh_forbid=0 order by a.id desc

-- Small services
select max(gc_sn) as gcsn from jxc_goodsclass where len(gc_sn)=4
select max(gc_sn) as gcsn from jxc_goodsclass where gc_sn like '1000%' and len(gc_sn)=4+3
select max(g_sn) from jxc_goods where isnumeric(g_sn) and len(g_sn)=8 and g_sn like '25%'
select * from jxc_log where 1>2
insert into jxc_log (log_time,a_name,log_note) values ('2021-05-03 10:00:00','admin','登录系统')
delete from jxc_tempspxf where a_name='admin'
select kc_sl from jxc_kcsp where g_sn='00000000' and ck_sn='100001'
update jxc_user set u_cgpl=u_cgpl+1 where u_sn='100001'
update jxc_user set u_xspl=u_xspl+1 where u_sn='100001'
select top 1 kt_sn from jxc_khxx where kh_sn='100001'
select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcsp where g_sn='00000000') order by ck_sn
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (0,0,0,'100001','00000000',0)
select ck_sn from jxc_ckxx where ck_sn not in (select ck_sn from jxc_kcjs where js_rq='2021-05') order by ck_sn
insert into jxc_kcjs (js_rq,js_sl,js_zje,ck_sn,js_xssl,js_xsje,js_cgsl,js_cgje,js_xslr,js_xscb) values ('2021-05',0,0,'100001',0,0,0,0,0,0)
select sum(kc_sl) as sl,sum(kc_sl*kc_cbj) as zje,ck_sn from jxc_kcsp group by ck_sn
update jxc_kcjs set js_sl=12.5,js_zje=100.25 where js_rq='2021-05' and ck_sn='100001'
select z_name from jxc_zone where z_name='省会地区'
insert into jxc_zone (z_sn,z_name,z_jm,z_default) values ('100004','海外','HW',0)
insert into jxc_djbz (dj_sn,dj_name,dj_pl) values ('100001','现金结清',0)
select * from jxc_djbz order by dj_pl desc,id

-- Parameters
select top 1 '单据号：'+j_sn+'，商品编号：'+g_sn from jxc_jhsp where jh_sl>jh_rksl+jh_qxsl order by id desc
update jxc_jhsp set jh_rksl=jh_sl,jh_qxsl=0 where jh_sl>jh_rksl+jh_qxsl
select top 1 '单据号：'+gl_djh+'，商品编号：'+g_sn from jxc_lsxssp where ls_sl>ls_cksl+ls_qxsl order by id desc
update jxc_lsxssp set ls_cksl=ls_sl,ls_qxsl=0 where ls_sl>ls_cksl+ls_qxsl
update jxc_company set c_name='晴川眼镜店',c_jc='晴川',c_lxr='小李',c_tele='0571-1',c_address='中山路1号'
delete from jxc_xtcs
insert into jxc_xtcs (cs_cgdj,cs_xsdj,cs_xgdj,cs_kc,cs_hbfh,cs_tax,cs_zdzk,cs_employdate) values (0,1,1,0,'￥',13,0.8,'2021-07-15')
select cs_tax,cs_zdzk from jxc_xtcs
select * from jxc_poscs
select * from jxc_email
select * from jxc_gnb order by id

-- Operators, roles, rights
select a.cggl from jxc_role a,jxc_admin b where a.r_sn=b.r_sn and b.a_name='admin'
select ck_sn from jxc_ckxx where ck_asn like '%100001%'
select qtcz from jxc_role where r_sn='100001'
select a_name from jxc_admin where a_name='小王'
insert into jxc_admin (a_sn,a_name,r_sn,a_zreoje,a_pwd,a_pos,a_jy,a_jyt) values ('100002','小王','100001',5,'1',0,0,0)
select a_name from jxc_admin where a_name='小王' and id<>1
update jxc_admin set a_jy=1,a_jyt=1 where a_sn='100002'
select * from jxc_ckxx where ck_aname like '%admin,%'
update jxc_ckxx set ck_aname='小王,' where id=1
select top 1 a_name from jxc_jhd where a_name='小王' union select top 1 a_name from jxc_lsxsd where a_name='小王'
delete from jxc_admin where a_sn='100002'
select r_name from jxc_role where r_name='店员'
insert into jxc_role (r_sn,r_name,cggl,xsgl,kcgl,wlzk,tjgl,rcgl,qtcz) values ('100002','店员','1010','11','','','','','')
select r_name from jxc_role where r_name='店员' and id<>1
select r_sn from jxc_admin where r_sn='100002'
delete from jxc_role where r_sn='100002'
select a_sn from jxc_admin where a_name='admin' and a_pwd=''
update jxc_admin set a_pwd='1' where a_name='admin'
select * from jxc_admin where a_name like '%ad%' or a_sn like '%ad%' order by id

-- Main window: tips, reminders, lock, note pad
select t_mryt from jxc_txdisp where t_mryt='1'
select t_sjtx from jxc_txdisp where t_sjtx='0'
select top 1 tx_dx from jxc_tx where (tx_dx='全体人员' or tx_dx='admin') and (tx_sj='程序启动时' or (tx_sj='2021-05-03' and tx_zt='0')  or (tx_sj like '%03%' and tx_fs=4)  or (tx_sj like '%2%' and tx_fs=3))
update jxc_tx set tx_zt='1' where (tx_dx='全体人员' or tx_dx='admin') and (tx_sj='程序启动时' or (tx_sj='2021-05-03' and tx_zt='0')  or (tx_sj like '%03%' and tx_fs=4)  or (tx_sj like '%2%' and tx_fs=3))
select top 2 * from jxc_mryt order by mr_state,id
update jxc_mryt set mr_state='0'
update jxc_mryt set mr_state='1',mr_rq='2021-05-03' where id=1
select top 1 * from jxc_mryt where id>1 order by id
select top 1 * from jxc_mryt where id<3 order by id desc
select top 1 * from jxc_mryt order by id desc
update jxc_txdisp set t_mryt='0'
select a_name from jxc_admin where a_name='admin' and a_pwd='1'
select * from jxc_bqjl
insert into jxc_bqjl (bq_txt,bq_flag) values ('无内容','')
update jxc_bqjl set bq_txt='记得盘点' where id=1
select * from jxc_jbgl order by id desc
insert into jxc_log (log_time,a_name,log_note,log_hash) values ('2021-05-03 10:00:00','admin','登录系统','')
select lc_hash from jxc_logchain
update jxc_logchain set lc_hash=''
select min(id) from jxc_log
select top 1 sd_rq from jxc_zmsd order by id desc
select id,sd_rq,sd_time,a_name,iif(sd_rq='','解除锁定','锁定到 ' & sd_rq) as what from jxc_zmsd order by id desc
insert into jxc_zmsd (sd_rq,sd_time,a_name,sd_lsid) values ('2021-04-30','2021-05-03 10:00:00','admin',7)
select top 1 sd_rq,sd_lsid from jxc_zmsd order by id desc
select top 10000 id,log_time,a_name,log_note,log_hash from jxc_log where id>0 order by id
select top 1 a_sn from jxc_admin where a_pwd<>''
select * from jxc_adminmm where a_sn='100001'
insert into jxc_adminmm (a_sn,mm_hash,mm_old,mm_fails,mm_failed) values ('100001','',1,0,'')
update jxc_adminmm set mm_fails=1,mm_failed='2021-05-03 10:00:00' where a_sn='100001'
