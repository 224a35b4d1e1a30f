-- Members: a card with money and points, and the one who introduced it.
insert into jxc_hyxx (hy_sn,hy_fsn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_mm,hy_jf,hy_zjf,hy_zhje,hy_ye,hy_zje,hy_jrrq,hy_dqrq,hy_sj,hy_qx,hy_cs,hy_syje,hy_xjsyje,hy_note,hy_sex,hy_sr,hy_tele,hy_mobile,hy_email,hy_zjlx,hy_zjhm,hy_dwzy,hy_address,hy_qtxx,hy_cg,hy_chk) values ('100002','','100001','张三','ZS',1,'100001','100001','123',120,150,300,0,850.5,'2021-01-02','',1,0,3,0,0,'','男','1990-05-12','0571-12345','13800000000','','身份证','','','杭州','',0,0)
insert into jxc_hyxx (hy_sn,hy_fsn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_mm,hy_jf,hy_zjf,hy_zhje,hy_ye,hy_zje,hy_jrrq,hy_dqrq,hy_sj,hy_qx,hy_cs,hy_syje,hy_xjsyje,hy_note,hy_sex,hy_sr,hy_tele,hy_mobile,hy_email,hy_zjlx,hy_zjhm,hy_dwzy,hy_address,hy_qtxx,hy_cg,hy_chk) values ('100003','100002','88012','李四','LS',1,'100001','100001','',0,0,50.25,0,0,'2021-03-04','2022-03-04',0,1,0,0,0,'','女','1985-11-30','','','','','','','','',0,0)
-- Card numbers: only six digits make the series; no card twice.
select max(hy_bh) as sn from jxc_hyxx where len(hy_bh)=6 and isnumeric(hy_bh) 
select hy_bh from jxc_hyxx where hy_bh='100001'
select hy_bh from jxc_hyxx where hy_bh='100001' and hy_sn<>'100003'
-- Grade by points, with its ways out.
select hl_sn from jxc_hyfl where hl_jfxx<=150 and hl_jfsx>=150
select top 1 hl_sn from jxc_hyfl order by hl_jfxx
select hy_zjf,hy_jf,hy_sj,hl_sn from jxc_hyxx where hy_sn='100002'
select hh_yh1 from jxc_hyyh where hh_sn='100001'
-- Points for a deposit, points back when the introduced member goes.
update jxc_hyxx set hy_zjf=hy_zjf+10,hy_jf=hy_jf+10,hl_sn='100002' where hy_sn='100002'
select top 1 hy_sn from jxc_lsxsd where hy_sn='100003'
update jxc_hyxx set hy_zjf=hy_zjf-5,hy_jf=hy_jf-5 where hy_sn='100002'
-- A change of the card, of its password; a transfer between cards.
select * from jxc_hyxx where id=2
update jxc_hyxx set hy_bh='100009',hy_mm='456' where id=2
update jxc_hyxx set hy_mm='789' where id=2
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,xf_note,xf_zt,a_name) values ('XF21050310001','100002','2021-05-03 10:20:30',-50,0,-50,0,0,0,0,0,0,'100009:向会员88012转出50元','会员转帐','admin')
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,xf_note,xf_zt,a_name) values ('XF21050310001','100003','2021-05-03 10:20:30',50,0,50,0,0,0,0,0,0,'88012:由会员100009转入50元','会员转帐','admin')
update jxc_hyxx set hy_zhje=hy_zhje-50 where hy_bh='100009'
update jxc_hyxx set hy_zhje=hy_zhje+50 where hy_bh='88012'
select hy_sn,hy_bh,hy_name from jxc_hyxx where hy_sn<>'100001' and (hy_bh like '%8%' or hy_name like '%8%' or hy_sn like '%8%') order by id
-- Adjustments of points and spending; clearing what the list shows.
update jxc_hyxx set hy_zjf=hy_zjf+(-20),hy_jf=hy_jf+(-20),hl_sn='100002' where id=2
update jxc_hyxx set hy_zje=hy_zje+(99.9) where id=2
update jxc_hyxx set hy_zje=0,hy_ye=0 where hy_sn<>'100001' and hl_sn like '%100002%' and (hy_bh like '%张%' or hy_jm like '%张%' or hy_name like '%张%' or hy_tele like '%张%' or hy_mobile like '%张%') and hy_status<>0
update jxc_hyxx set hy_zjf=0,hy_jf=0,hl_sn='100001' where hy_sn<>'100001' and hl_sn like '%%' and (hy_bh like '%无此人%' or hy_name like '%无此人%')
-- Lists of members, usable, blocked, and by more conditions.
select a.*,iif(a.hy_status=0,'不可用','可用') as status,iif(a.hy_qx=0,'无期限','有期限') as qx,iif(a.hy_sj=0,'否','是') as jfsj,b.hl_zk as hl_zk,b.hl_name,c.hh_name  from jxc_hyxx a,jxc_hyfl b,jxc_hyyh c where a.hl_sn=b.hl_sn and a.hh_sn=c.hh_sn and a.hy_sn<>'100001' and a.hl_sn like '%%' and (a.hy_bh like '%%' or a.hy_jm like '%%' or a.hy_name like '%%' or a.hy_tele like '%%' or a.hy_mobile like '%%')  and a.hy_status<>0  order by a.id desc
select a.*,iif(a.hy_status=0,'不可用','可用') as status,iif(a.hy_qx=0,'无期限','有期限') as qx,iif(a.hy_sj=0,'否','是') as jfsj,b.hl_zk as hl_zk,b.hl_name,c.hh_name  from jxc_hyxx a,jxc_hyfl b,jxc_hyyh c where a.hl_sn=b.hl_sn and a.hh_sn=c.hh_sn and a.hy_sn<>'100001' and a.hl_sn like '%100001%' and (a.hy_bh like '%1%' or a.hy_jm like '%1%' or a.hy_name like '%1%' or a.hy_tele like '%1%' or a.hy_mobile like '%1%')  and a.hy_status=0  order by a.id desc
select a.*,b.hl_zk as hl_zk,b.hl_name,c.hh_name  from jxc_hyxx a,jxc_hyfl b,jxc_hyyh c where a.hl_sn=b.hl_sn and a.hh_sn=c.hh_sn and a.hy_sn<>'100001' and a.hh_sn='100001' and a.hy_jf>=0 and a.hy_zje<=1000 and a.hy_zhje>10 and a.hy_sr>='1980-01-01' and a.hy_sr<='1999-12-31' and a.hy_jrrq>='2021-01-01' and a.hy_jrrq<='2021-12-31' and a.hy_dqrq>='' and a.hy_dqrq<='9999-12-31' and a.hy_zjhm like '%%' and a.hy_tele like '%0571%' order by a.id desc
select a.*,b.hy_bh,b.hy_name from jxc_posxsd a,jxc_hyxx b where a.hy_sn=b.hy_sn and a.pos_xsrq>='2021-05-01' and a.pos_xsrq<='2021-05-31 23:59:59' and (b.hy_bh like '%1%' or b.hy_name like '%1%') order by a.gl_djh desc
select a.*,b.hy_bh,b.hy_name from jxc_hyxf a,jxc_hyxx b where a.hy_sn=b.hy_sn and a.xf_rq>='2021-05-01' and a.xf_rq<='2021-05-31 23:59:59' and (b.hy_bh like '%1%' or b.hy_name like '%1%') order by a.gl_djh desc
-- Mobile numbers for a text file.
select hy_bh,hy_name,hy_mobile from jxc_hyxx where hy_mobile<>'' and hy_mobile is not null order by id
select hy_bh,hy_name,hy_mobile from jxc_hyxx where hy_mobile<>'' and hy_mobile is not null and hy_jf>=100 order by id
select hy_bh,hy_name,hy_mobile from jxc_hyxx where hy_mobile<>'' and hy_mobile is not null and hy_jf<=0 order by id
select hy_bh,hy_name,hy_mobile from jxc_hyxx where hy_mobile<>'' and hy_mobile is not null and hy_sr like '%05-12%' order by id
-- Import: cards and names that are there already.
select hy_bh from jxc_hyxx where hy_bh='88012'
select hy_name from jxc_hyxx where hy_name='李四'
-- Grades and benefit schemes.
select * from jxc_hyyh order by id
select top 1 hh_sn from jxc_hyxx where hh_sn='100001'
insert into jxc_hyyh (hh_sn,hh_name,hh_zl,hh_yh1,hh_yh2,hh_yh3,hh_zlname,hh_note) values ('100002','消费返现',1,1,100,5,'消费金额转现金','累计消费 100 元，转换现金 5 元')
insert into jxc_hyyh (hh_sn,hh_name,hh_zl,hh_yh1,hh_yh2,hh_yh3,hh_zlname,hh_note) values ('100003','充值赠送',2,1,0,0,'充值赠送金额','')
select hh_sn from jxc_hyyh where hh_sn='100002' or hh_name='消费返现'
select hh_sn from jxc_hyyh where hh_zl=2
update jxc_hyyh set hh_name='消费返现金',hh_yh2=200,hh_yh3=12,hh_note='累计消费 200 元，转换现金 12 元' where id=2
delete from jxc_hyyh where hh_sn='100009'
select * from jxc_hyfl order by hl_jfxx
select top 1 hl_sn from jxc_hyxx where hl_sn='100002'
insert into jxc_hyfl (hl_sn,hl_name,hl_zk,hl_jfxx,hl_jfsx) values ('100003','金卡会员',0.85,1000000,9999999)
update jxc_hyfl set hl_name='黄金会员',hl_zk=0.8,hl_jfxx=1000000,hl_jfsx=99999999 where hl_sn='100003'
delete from jxc_hyfl where hl_sn='100003'
-- Top-ups: gift settings, the first one of a new card, a later one, many at once.
insert into jxc_hyczzs (hs_sn,hs_zsfs,hs_txt,hs_myje,hs_czje,hs_zsje,hs_note) values ('100001',1,'充值后按月赠送',30,1000,100,'充值1000元赠送100元，按月赠送，每月10日自动到账：30元')
select hs_sn from jxc_hyczzs where hs_czje=1000
select hs_sn from jxc_hyczzs where hs_czje=1000 and id<>1
update jxc_hyczzs set hs_zsfs=2,hs_txt='充值后按月消费赠送(当月不消费即作废)',hs_myje=20,hs_czje=1000,hs_zsje=100,hs_note='充值1000元赠送100元，按月赠送，每月消费时到账：20元，当月不消费即作废' where id=1
select * from jxc_hyczzs order by id
select hh_zl,hh_yh1 from jxc_hyyh where hh_sn='100003'
select * from jxc_hyczzs where hs_czje=1000
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_djq,xf_czk,xf_xj,xf_xyk,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zsrq,hs_zsfs,hs_myje,hs_zsje,xf_zt) values ('XF21020510001','100002','2021-02-05 10:20:30',1000,0,0,0,1000,0,0,0,0,'admin','会员开户时充值','2021-02-05',1,30,100,'储值卡续费')
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_djq,xf_czk,xf_xj,xf_xyk,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zsrq,hs_zsfs,hs_myje,hs_zsje,xf_zt) values ('XF21020510002','100003','2021-02-05 10:20:30',500,0,0,0,0,500,0,0,0,'admin','','2021-02-05',2,20,100,'储值卡续费')
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_djq,xf_czk,xf_xj,xf_xyk,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zsrq,hs_zsfs,hs_myje,hs_zsje,xf_zt) values ('XF21050910001','100003','2021-05-09 10:20:30',500,0,0,0,500,0,0,0,0,'admin','','2021-05-09',3,2,30,'储值卡续费')
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_djq,xf_czk,xf_xj,xf_xyk,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zsrq,hs_zsfs,hs_myje,hs_zsje,xf_zt) values ('XF21050910002','100002','2021-05-09 10:20:30',500,0,0,0,500,0,0,0,0,'admin','','2021-05-09',4,2,30,'储值卡续费')
update jxc_hyxx set hy_zhje=1000 where hy_sn='100002'
insert into jxc_xjyh (xj_rq,gl_djh,xj_dlx,xj_je,ghs_name,ghs_sn,xj_kmmc,a_name,xj_chk,xj_ljje) values ('2021-05-09','XF21050910001','储值卡续费',500,'李四','100003','现金','admin','1',0)
update jxc_hyxx set hy_zhje=hy_zhje+1100 ,hy_jf=hy_jf+50,hy_zjf=hy_zjf+50,hl_sn='100002' where hy_sn='100003'
update jxc_hyxx set hy_chk=0
select * from jxc_hyxx where hy_sn<>'100001' and hy_status<>0 order by id
update jxc_hyxx set hy_chk=1
select a.*,b.hh_zl,b.hh_yh1 from jxc_hyxx a,jxc_hyyh b where a.hh_sn=b.hh_sn and a.hy_chk<>0 and a.hy_sn<>'100001' order by a.id
insert into jxc_smshy (gl_djh,hy_sn,hy_mobile,sms_rq,sms_note,a_name) values ('SM21050910001','100002','13800000000','2021-05-09 10:20:30','【晴川公司】尊敬的张三 您好：您已成功充值500，您的储值卡当前余额为800.25。','admin')
-- Gifts released by the month and by the day at the first login of a day.
select max(datediff('m',xf_zsrq,'2021-05-12')) as num from jxc_hyxf where hs_zsfs=1 and hs_zsje>=hs_myje and datediff('m',xf_zsrq,'2021-05-12')>=1
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zt,xf_zsrq,hs_zsfs,hs_myje,hs_zsje) select 'XF21051210001',hy_sn,'2021-05-12',3*hs_myje,0,0,0,0,0,0,0,0,'admin',gl_djh+'该单据充值按月赠送，本次赠送：3个月','按月到账','2021-05-12',-1,0,0 from jxc_hyxf where hs_zsfs=1 and hs_zsje>=hs_myje*3 and datediff('m',xf_zsrq,'2021-05-12')>=3
update jxc_hyxf set xf_zsrq='2021-05-12',hs_zsje=hs_zsje-hs_myje*3 where hs_zsfs=1 and hs_zsje>=hs_myje*3 and datediff('m',xf_zsrq,'2021-05-12')>=3
update jxc_hyxf set xf_zsrq='2021-04-12',hs_zsje=hs_zsje-hs_myje*datediff('m',xf_zsrq,'2021-04-12') where hs_zsfs=2 and  hs_zsje>=hs_myje and datediff('m',xf_zsrq,'2021-04-12')>=1
update jxc_hyxf set hs_zsje=0 where hs_zsfs=2 and hs_zsje<0
select max(datediff('d',xf_zsrq,'2021-05-12')) as num from jxc_hyxf where hs_zsfs=3 and hs_zsje>=hs_myje and datediff('d',xf_zsrq,'2021-05-12')>=1
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zt,xf_zsrq,hs_zsfs,hs_myje,hs_zsje) select 'XF21051210001',hy_sn,'2021-05-12',3*hs_myje,0,0,0,0,0,0,0,0,'admin',gl_djh+'该单据充值按天赠送，本次赠送：3天','按天到账','2021-05-12',-3,0,0 from jxc_hyxf where hs_zsfs=3 and hs_zsje>=hs_myje*3 and datediff('d',xf_zsrq,'2021-05-12')>=3
update jxc_hyxf set xf_zsrq='2021-05-12',hs_zsje=hs_zsje-hs_myje*3 where hs_zsfs=3 and hs_zsje>=hs_myje*3 and datediff('d',xf_zsrq,'2021-05-12')>=3
update jxc_hyxf set xf_zsrq='2021-05-11',hs_zsje=hs_zsje-hs_myje*datediff('d',xf_zsrq,'2021-05-11') where hs_zsfs=4 and  hs_zsje>=hs_myje and datediff('d',xf_zsrq,'2021-05-11')>=1
update jxc_hyxf set hs_zsje=0 where hs_zsfs=4 and hs_zsje<0
update jxc_hyxx,jxc_hyxf set jxc_hyxx.hy_zhje=jxc_hyxx.hy_zhje+jxc_hyxf.xf_je where (jxc_hyxx.hy_sn=jxc_hyxf.hy_sn)  and (jxc_hyxf.hs_zsfs=-1 or jxc_hyxf.hs_zsfs=-3) and jxc_hyxf.gl_djh='XF21051210001'
-- A member's sale: what the till left, and the gift that its first sale of the month or day releases.
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_jy,g_pjjj,g_dzll,g_iszp,g_zpjf,g_tjsp,g_tssp,g_tsjf,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000001','护理液500ml','HLY500ML',12,30,20,0,12,1,1,100,0,0,0,'1000',2,'付','500ml','','100001')
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_jy,g_pjjj,g_dzll,g_iszp,g_zpjf,g_tjsp,g_tssp,g_tsjf,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000002','太阳镜','TYJ',50,168,20,0,50,1,0,0,1,1,15,'1000',2,'付','','黑色','100001')
insert into jxc_posxsd (gl_djh,hy_sn,pos_xsrq,kh_sn,ck_sn,pos_yfje,pos_sfje,a_name,u_sn,pos_xj,pos_czk,pos_bcjf,pos_jfye) values ('XS21051210001','100003','2021-05-12 10:20:30','100001','100001',198,198,'admin','100001',98,100,0,0)
insert into jxc_posxssp (gl_djh,g_sn,pos_dj,pos_sl,pos_zje,t_zp,a_name,pos_dzl) values ('XS21051210001','10000001',30,1,30,'','admin',1)
insert into jxc_posxssp (gl_djh,g_sn,pos_dj,pos_sl,pos_zje,t_zp,a_name,pos_dzl) values ('XS21051210001','10000002',168,1,168,'','admin',1)
select pos_czk,pos_yfje,pos_xsrq,pos_jfye,pos_bcjf from jxc_posxsd where gl_djh='XS21051210001'
select hs_myje from jxc_hyxf where hs_zsfs=2 and hs_zsje>=hs_myje and datediff('m',xf_zsrq,'2021-05-12')>=1 and hy_sn='100003'
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zt,xf_zsrq,hs_zsfs,hs_myje,hs_zsje) select 'XS21051210001',hy_sn,'2021-05-12',hs_myje,0,0,0,0,0,0,0,0,'admin',gl_djh+'该单据充值按月消费赠送，本次消费赠送：1个月','本月消费到账','2021-05-12',-2,0,0 from jxc_hyxf where hs_zsfs=2 and hs_zsje>=hs_myje and datediff('m',xf_zsrq,'2021-05-12')>=1 and hy_sn='100003'
update jxc_hyxf set xf_zsrq='2021-05-12',hs_zsje=hs_zsje-hs_myje where hs_zsfs=2 and hs_zsje>=hs_myje and datediff('m',xf_zsrq,'2021-05-12')>=1 and hy_sn='100003'
update jxc_hyxx set hy_zhje=hy_zhje+20 where hy_sn='100003'
update jxc_posxsd set pos_zftype='1' where gl_djh='XS21051210001'
select hs_myje from jxc_hyxf where hs_zsfs=4 and hs_zsje>=hs_myje and datediff('d',xf_zsrq,'2021-05-12')>=1 and hy_sn='100002'
insert into jxc_hyxf (gl_djh,hy_sn,xf_rq,xf_je,xf_yhje,xf_xj,xf_czk,xf_xyk,xf_djq,xf_wxje,xf_zfbje,xf_zlje,a_name,xf_note,xf_zt,xf_zsrq,hs_zsfs,hs_myje,hs_zsje) select 'XS21051210001',hy_sn,'2021-05-12',hs_myje,0,0,0,0,0,0,0,0,'admin',gl_djh+'该单据充值按天消费赠送，本次消费赠送：1天','今天消费到账','2021-05-12',-4,0,0 from jxc_hyxf where hs_zsfs=4 and hs_zsje>=hs_myje and datediff('d',xf_zsrq,'2021-05-12')>=1 and hy_sn='100002'
update jxc_hyxf set xf_zsrq='2021-05-12',hs_zsje=hs_zsje-hs_myje where hs_zsfs=4 and hs_zsje>=hs_myje and datediff('d',xf_zsrq,'2021-05-12')>=1 and hy_sn='100002'
-- Points of a sale: by the piece on special goods, on the money of the rest.
select sum(a.pos_sl*b.g_tsjf) as tsjf from jxc_posxssp a,jxc_goods b where a.g_sn=b.g_sn and b.g_tssp<>0 and a.gl_djh='XS21051210001'
select sum(a.pos_zje) as zje from jxc_posxssp a,jxc_goods b where a.g_sn=b.g_sn and b.g_tssp<>0 and a.gl_djh='XS21051210001'
select sum(a.pos_zje) as zje from jxc_posxssp a,jxc_goods b where a.g_sn=b.g_sn and b.g_tjsp=0 and b.g_tssp=0 and a.gl_djh='XS21051210001'
select sum(-1*a.pos_zje) as zje from jxc_posxssp a,jxc_goods b where a.g_sn=b.g_sn and b.g_tjsp=0 and b.g_tssp=0 and a.gl_djh='XS21051210001'
select hy_jf,hy_zjf,hy_ye,hy_sj,hl_sn,hy_sr,hh_sn from jxc_hyxx where hy_sn='100003'
select hh_yh2,hh_yh3 from jxc_hyyh where hh_sn='100002'
update jxc_hyxx set hy_cs=hy_cs+1,hy_zje=hy_zje+(100),hy_zhje=hy_zhje-(100) where hy_sn='100003'
update jxc_hyxx set hy_cs=hy_cs-1,hy_zje=hy_zje+(-100) where hy_sn='100003'
update jxc_hyxx set hy_zjf=hy_zjf+34,hy_jf=hy_jf+34,hl_sn='100002',hy_zje=hy_zje+198,hy_cs=hy_cs+1,hy_zhje=hy_zhje-(100)+0 where hy_sn='100003'
update jxc_posxsd set pos_bcjf=34,pos_zjf=84,pos_jfye=0 where gl_djh='XS21051210001'
update jxc_hyxx set hy_zjf=hy_zjf-(34),hy_jf=hy_jf-(34),hl_sn='100001',hy_zje=hy_zje+(-198),hy_cs=hy_cs-1,hy_zhje=hy_zhje-(0) where hy_sn='100003'
update jxc_posxsd set pos_bcjf=-1*34,pos_zjf=50,pos_jfye=-1*0 where gl_djh='XT21051210001'
update jxc_hyxx set hy_ye=8 where hy_sn='100003'
-- A sale or a return is taken back, and with it the gift of the month.
update jxc_hyxx set hy_zjf=hy_zjf-(34),hy_jf=hy_jf-(34),hy_zje=hy_zje-(198),hy_cs=hy_cs-1,hy_zhje=hy_zhje+100-(0) where hy_sn='100003'
select id from jxc_hyxf where hs_zsfs=-2 and left(xf_zsrq,7)='2021-05' and hy_sn='100003'
select count(*) as num from jxc_posxsd where datediff('m',pos_xsrq,'2021-05-12')=0 and hy_sn='100003'
select xf_je from jxc_hyxf where id=9
delete from jxc_hyxf where id=9
update jxc_hyxx set hy_zhje=hy_zhje-(20) where hy_sn='100003'
update jxc_hyxf set xf_zsrq='2021-04-12',hs_zsje=hs_zsje+hs_myje where hs_zsfs=2 and  datediff('m',xf_zsrq,'2021-05-12')=0 and hy_sn='100003'
select id from jxc_hyxf where hs_zsfs=-4 and xf_zsrq='2021-05-12' and hy_sn='100002'
select count(*) as num from jxc_posxsd where datediff('d',pos_xsrq,'2021-05-12')=0 and hy_sn='100002'
update jxc_hyxf set xf_zsrq='2021-05-11',hs_zsje=hs_zsje+hs_myje where hs_zsfs=4 and  datediff('d',xf_zsrq,'2021-05-12')=0 and hy_sn='100002'
update jxc_hyxx set hy_zjf=hy_zjf-(-34),hy_jf=hy_jf-(-34),hy_zje=hy_zje-(-198),hy_cs=hy_cs+1,hy_zhje=hy_zhje+(0)-(-100) where hy_sn='100003'
update jxc_hyxx set hl_sn='100002' where hy_sn='100003'
-- Rules of points, and goods that earn by the piece.
select * from jxc_jfsz
update jxc_jfsz set jf_jfgz=1,jf_mfje=10,jf_dbjf=3,jf_dbrq1='2021-05-01',jf_dbrq2='2021-05-07',jf_srjflx=1,jf_srjfbs=2,jf_srjfts=3,jf_yelj=1,jf_hyr=1,jf_hyrmy1='08',jf_hyrmy2='10',jf_hyrzk=0.9
select g_sn,g_name,g_jm,g_tsjf from jxc_goods where g_tssp<>0 and g_sn<>'00000000' order by id
update jxc_goods set g_tsjf=15,g_tssp=1 where g_sn='10000002'
update jxc_goods set g_tsjf=5,g_tssp=1 where gc_sn like '1000%'
update jxc_goods set g_tsjf=0,g_tssp=0 where g_sn='10000002'
-- Redemption of gifts against points.
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (20,12,0,'100001','10000001',20)
select hy_bh from jxc_hyxx where hy_status<>0 and (hy_bh='88012' or hy_tele='88012' or hy_mobile='88012')
select a.g_sn,a.g_jm,a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_zpjf,b.kc_sl from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and a.g_iszp<>0 and a.g_jy=0 and b.ck_sn='100001' and (a.g_sn like '%护%' or a.g_jm like '%护%' or a.g_name like '%护%') order by a.id
select max(gl_djh) as sn from jxc_dhd where gl_djh like 'DH210512%'
insert into jxc_dhzp (gl_djh,g_sn,dh_zpjf,dh_sl,dh_jf,a_name) select 'DH21051210001',g_sn,g_zpjf,1,g_zpjf,'admin' from jxc_goods where g_sn='10000001'
update jxc_dhzp set dh_sl=dh_sl+1,dh_jf=dh_jf+dh_zpjf where gl_djh='DH21051210001' and g_sn='10000001'
update jxc_dhzp set dh_sl=2,dh_jf=dh_zpjf*2 where id=1
select sum(dh_jf) as jf,sum(dh_sl) as sl from jxc_dhzp where gl_djh='DH21051210001'
insert into jxc_dhd (gl_djh,hy_sn,dh_dhrq,dh_sl,dh_jf,dh_note,a_name,ck_sn) values ('DH21051210001','100003','2021-05-12 10:20:30',2,200,'兑换','admin','100001')
update jxc_hyxx set hy_jf=hy_jf-200 where hy_sn='100003'
select sum(a.dh_sl) as sl,sum(a.dh_sl*b.kc_cbj) as cb from jxc_dhzp a,jxc_kcsp b where a.g_sn=b.g_sn and b.ck_sn='100001' and a.gl_djh='DH21051210001'
insert into jxc_yyfy (gl_djh,fy_rq,fy_lx,fy_je,u_sn,fy_note,a_name,fy_sc,fy_flag,de_sn,fy_kmmc,fy_chk) values ('DH21051210001','2021-05-12','费用',24*-1,'100001','兑换赠品数量 2 的成本费用','admin','费用','1','100001','现金','1')
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,gl_lr,gl_dzl,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,gl_kc,gl_pjjj,gl_kczje,gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_bz,gl_note,gl_tax,gl_taxdj,gl_taxje,gl_je,gl_lsj,gl_cbj,gl_zcb,id2,gl_djh2,gl_qxsl) select 'dh' as glflag,b.gl_djh,'2021-05-12',b.g_sn,d.g_name,d.g_jm,d.dw_name,h.kc_cbj,b.dh_sl,b.dh_sl*h.kc_cbj,0 as lr,1 as dzl,'默认员工',c.a_name,c.ck_sn,f.ck_name,c.hy_sn,g.hy_name,d.gg_name,d.color_name,b.dh_sl,'',0,0,0,0,'admin','2021-05-12',0,0,'',c.dh_note,0,h.kc_cbj,0,b.dh_sl*h.kc_cbj,0,0,0,b.id,'',0 from jxc_dhzp b,jxc_dhd c,jxc_goods d,jxc_ckxx f,jxc_hyxx g,jxc_kcsp h where b.gl_djh=c.gl_djh and b.g_sn=d.g_sn and c.ck_sn=f.ck_sn and c.hy_sn=g.hy_sn and b.g_sn=h.g_sn and c.ck_sn=h.ck_sn and b.gl_djh='DH21051210001' order by b.id
update jxc_kcsp set kc_sl=kc_sl-(2),kc_zsl=kc_zsl-(2) where g_sn='10000001' and ck_sn='100001'
insert into jxc_kcsp (kc_sl,kc_zsl,kc_cbj,kc_xssl,g_sn,ck_sn) values (-1*2,-1*2,0,0,'10000002','100001')
update jxc_goods set g_kc=g_kc-(2) where g_sn='10000001'
delete from jxc_dhzp where gl_djh='DH21051210009' and a_name='admin'
update jxc_hyxx set hy_jf=hy_jf+200 where hy_sn='100003'
delete from jxc_dhzp where id=1
-- A member that goes takes his journal along.
delete from jxc_hyxx where hy_sn='100003'
delete from jxc_hyxf where hy_sn='100003'
