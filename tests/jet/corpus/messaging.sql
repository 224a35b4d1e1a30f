-- Members with and without a mobile, a goods item below its lower limit.
insert into jxc_hyxx (hy_sn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_jf,hy_zhje,hy_sr,hy_tele,hy_mobile,hy_address) values ('100002','100001','张三','ZS',1,'100001','100001',120,300,'1990-05-03','','13800000000','杭州')
insert into jxc_hyxx (hy_sn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_jf,hy_zhje,hy_sr,hy_tele,hy_mobile,hy_address) values ('100003','100002','李四','LS',1,'100001','100001',0,0,'','','','')
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_zdkc,g_kc,g_jy,g_pjjj,g_dzll,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000001','隐形护理液','YXHLY',12,30,10,3,0,12,1,'1000',2,'付','500ml','','100001')
insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,ck_sn,g_sn,kc_zsl) values (3,12,0,'100001','10000001',3)
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_taxje,gl_lr,gl_cbj,gl_zcb,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_fdmc) values ('cj','CJ21050310001','2021-05-03','10000001','隐形护理液',12,5,60,60,0,0,0,0,'默认员工','admin','100001','主仓库','100001','普通供货商','')
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_taxje,gl_lr,gl_cbj,gl_zcb,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_fdmc) values ('xs','XS21050310001','2021-05-03','10000001','隐形护理液',30,2,60,60,0,36,12,24,'默认员工','admin','100001','主仓库','100001','普通客户','')
insert into jxc_lsxsd (gl_djh,kh_sn,ck_sn,ls_xsrq,ls_yfje,ls_sfje,u_sn,a_name,ls_yhje,ls_hkje,ls_status) values ('XS21050310001','100001','100001','2021-05-03',60,50,'100001','admin',0,0,1)
insert into jxc_xsthd (gl_djh,kh_sn,ck_sn,th_xsrq,th_yfje,th_sfje,th_hkje,u_sn,a_name,th_status) values ('XT21050310001','100001','100001','2021-05-03',-30,-30,0,'100001','admin',1)
insert into jxc_jxchz (g_sn,hz_txt1,hz_txt2,hz_flag,hz_kc,hz_kczje,hz_rksl,hz_rkzje,hz_cksl,hz_ckzje,hz_glkc,hz_glkczje,a_name) values ('100001','默认员工','业务员按销售额提成','1001',60,50,0,0,0,2.5,0,5,'admin')
-- Settings of the messages are one row, replaced whole.
select * from jxc_smscs
select * from jxc_smscs where sms_user<>'' and sms_pwd<>''
delete from jxc_smscs
insert into jxc_smscs (sms_sign,sms_user,sms_pwd,sms_cznote,sms_xfnote) values ('晴川公司','user','pwd','尊敬的{hyname} 您好：您已成功充值{czje}。','尊敬的{hyname} 您好：您的会员卡{hybh}，消费{xfje}元。')
-- A draft to picked members, its date, its sending.
select hy_sn,hy_bh,hy_name,hy_mobile,hy_sr,hy_address,hy_jm from jxc_hyxx where hy_status<>0 and hy_sn<>'100001' and hy_mobile<>'' order by hy_sn
select hy_sn,hy_bh,hy_name,hy_mobile,hy_sr,hy_address,hy_jm from jxc_hyxx where hy_status<>0 and hy_sn<>'100001' and hy_mobile<>''  and (hy_name like '%张%' or hy_jm like '%张%' or hy_sn like '%张%' or hy_mobile like '%张%' or hy_address like '%张%') order by hy_sn
select max(gl_djh) as sn from jxc_sms where gl_djh like 'SM210503%'
insert into jxc_smshy (gl_djh,hy_sn,hy_mobile,sms_rq,sms_note,a_name) values ('SM21050310001','100002','13800000000','','','admin')
select a.*,b.hy_name,b.hy_bh,b.hy_sr,b.hy_zhje,b.hy_jf from jxc_smshy a,jxc_hyxx b where a.hy_sn=b.hy_sn and a.gl_djh='SM21050310001' order by a.id
update jxc_smshy set gl_djh='SM21050410001' where gl_djh='SM21050310001'
update jxc_sms set gl_djh='SM21050410001' where gl_djh='SM21050310001'
insert into jxc_sms (gl_djh,sms_rq,sms_note,a_name) values ('SM21050410001','2021-05-04','尊敬的{hyname}您好：新镜架到店。','admin')
update jxc_smshy set sms_rq='2021-05-04 10:20:30',sms_note='【晴川公司】尊敬的张三您好：新镜架到店。' where id=1
delete from jxc_smshy where id=9
delete from jxc_smshy where gl_djh='SM21050499999' and a_name='admin'
delete from jxc_sms where gl_djh='SM21050499999' and a_name='admin'
-- What was sent: search, resend, delete.
select a.*,b.hy_name,b.hy_bh,b.hy_address,b.hy_sr from jxc_smshy a,jxc_hyxx b where a.hy_sn=b.hy_sn and a.sms_rq>='2021-05-01' and a.sms_rq<='2021-05-31 23:59:59'  and (a.gl_djh like '%张%' or a.sms_note like '%张%' or b.hy_sn like '%张%' or b.hy_jm like '%张%' or b.hy_name like '%张%' or b.hy_bh like '%张%') order by a.gl_djh desc,a.hy_sn
insert into jxc_smshy (gl_djh,hy_sn,hy_mobile,sms_rq,sms_note,a_name) select 'SM21050510001',hy_sn,hy_mobile,'2021-05-05 09:00:00',sms_note,'admin' from jxc_smshy where id=1
delete from jxc_smshy where id=2
select count(*) from jxc_smshy where gl_djh='SM21050510001'
delete from jxc_sms where gl_djh='SM21050510001'
delete from jxc_smshy
delete from jxc_sms
-- Mail digest: whether it is due, what yesterday brought, the date it went.
select e_send,e_date from jxc_email
select * from jxc_email
update jxc_email set e_smtp='smtp.example.com',e_sqpwd='QWTZMBKDRXAHVNPE',e_email='owner@example.com',e_lx=1,e_fj1=1,e_fj2=1,e_fj3=1,e_fj4=1,e_fj9=0,e_send=1,e_date=''
select a.g_sn,max(a.g_name) as gname,max(a.ghs_name) as ghsname,sum(a.gl_sl) as sl,sum(a.gl_zcb) as zcb,sum(a.gl_zje) as zje,sum(a.gl_lr) as lr,sum(a.gl_je) as je,sum(a.gl_taxje) as taxje,iif(sum(a.gl_je)<>0,round(sum(a.gl_lr)*100/sum(a.gl_je),2),0) as lrl from jxc_goodslist a,jxc_goods b where a.g_sn=b.g_sn and (a.gl_flag='xs' or a.gl_flag='xt') and a.gl_kdrq>='2021-05-03' and a.gl_kdrq<='2021-05-03 23:59:59' group by a.g_sn
select b.gc_sn,max(c.gc_name) as gcname,sum(a.gl_sl) as sl,sum(a.gl_zje) as zje,sum(a.gl_je) as je,sum(a.gl_taxje) as taxje,sum(a.gl_lr) as lr,sum(a.gl_zcb) as zcb,iif(sum(a.gl_je)<>0,round(sum(a.gl_lr)*100/sum(a.gl_je),2),0) as lrl from jxc_goodslist a,jxc_goods b,jxc_goodsclass c where a.g_sn=b.g_sn and b.gc_sn=c.gc_sn and (a.gl_flag='xs' or a.gl_flag='xt') and a.gl_kdrq>='2021-05-03' and a.gl_kdrq<='2021-05-03 23:59:59' group by b.gc_sn
delete from jxc_jxchz where hz_flag='101' or hz_flag='201'
delete from jxc_jxchz where hz_flag='1002' and hz_ckzje=0
select * from jxc_jxchz where a_name='admin' order by g_sn,hz_flag
select * from (select a.*,b.kh_name,c.u_name,d.ck_name from (select gl_djh,kh_sn,u_sn,ck_sn,ls_xsrq as rq,ls_yfje as yfje,ls_sfje as sfje,(ls_yfje-ls_sfje-ls_yhje-ls_hkje) as wfje,'商品销售' as gtype,'1' as dsort from jxc_lsxsd where ls_status=1 union select gl_djh,kh_sn,u_sn,ck_sn,th_xsrq as rq,th_yfje as yfje,th_sfje as sfje,(th_yfje-th_sfje-th_hkje) as wfje,'顾客退货' as gtype,'2' as dsort from jxc_xsthd where th_status=1) a,jxc_khxx b,jxc_user c,jxc_ckxx d where a.kh_sn=b.kh_sn and a.u_sn=c.u_sn and a.ck_sn=d.ck_sn) DERIVEDTBL where rq>='2021-05-03' and rq<='2021-05-03 23:59:59' order by rq desc,dsort,gl_djh desc
select a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_sptm,a.g_sccs,a.g_bz,b.* from jxc_goods a,(select x.ghs_name,x.ghs_sn,x.g_sn,x.gl_kdrq,sum(x.gl_sl) as sl,sum(x.gl_zje) as zje,sum(x.gl_je) as je,sum(x.gl_taxje) as taxje from jxc_goodslist x,jxc_ckxx y where x.ck_sn=y.ck_sn and x.gl_kdrq>='2021-05-03' and x.gl_kdrq<='2021-05-03 23:59:59' and (x.gl_flag='cj' or x.gl_flag='ct') group by x.ghs_name,x.g_sn,x.gl_kdrq,x.ghs_sn) b where a.g_sn=b.g_sn order by b.gl_kdrq desc,b.g_sn,b.ghs_name
update jxc_email set e_date='2021-05-04'
-- Reminders: once, by weekday, by day of the month, at start.
insert into jxc_tx (tx_dx,tx_fs,tx_fstxt,tx_sj,tx_note,tx_tjsj,a_name,tx_lb,tx_flag,tx_ts,tx_zt,g_sn) values ('-1',1,'提醒一次','2021-05-03','库存报警提醒','2021-05-01 10:20:30','admin',0,'1','30','0','10000001')
insert into jxc_tx (tx_dx,tx_fs,tx_fstxt,tx_sj,tx_note,tx_tjsj,a_name,tx_lb,tx_flag,tx_ts,tx_zt,g_sn) values ('100001',3,'每周一、三','1,3,','商品过期提醒','2021-05-01 10:20:30','admin',0,'2','30','0','10000001')
insert into jxc_tx (tx_dx,tx_fs,tx_fstxt,tx_sj,tx_note,tx_tjsj,a_name,tx_lb,tx_flag,tx_ts,tx_zt,g_sn) values ('-1',4,'每月提醒','03','库存报警提醒','2021-05-01 10:20:30','admin',0,'1','30','0','10000001')
insert into jxc_tx (tx_dx,tx_fs,tx_fstxt,tx_sj,tx_note,tx_tjsj,a_name,tx_lb,tx_flag,tx_ts,tx_zt,g_sn) values ('100001',2,'每日提醒','程序启动时','库存报警提醒','2021-05-01 10:20:30','admin',0,'1','30','0','10000001')
select t_sjtx from jxc_txdisp where t_sjtx='0'
select top 1 tx_dx from jxc_tx where (tx_dx='全体人员' or tx_dx='100001') and (tx_sj='程序启动时' or (tx_sj='2021-05-03' and tx_zt='0') or (tx_sj like '%03%' and tx_fs=4) or (tx_sj like '%1%' and tx_fs=3))
update jxc_tx set tx_zt='1' where (tx_dx='全体人员' or tx_dx='100001') and (tx_sj='程序启动时' or (tx_sj='2021-05-03' and tx_zt='0') or (tx_sj like '%03%' and tx_fs=4) or (tx_sj like '%1%' and tx_fs=3))
select * from (select a.id,a.tx_sj,a.tx_note,'全体人员' as txdx,a.tx_tjsj,b.g_sn,b.g_name,b.g_jm,b.dw_name,b.gg_name,b.color_name,a.tx_fs,a.tx_dx from jxc_tx a,jxc_goods b where a.g_sn=b.g_sn and a.tx_dx='-1'  union all select a.id,a.tx_sj,a.tx_note,c.a_name as txdx,a.tx_tjsj,b.g_sn,b.g_name,b.g_jm,b.dw_name,b.gg_name,b.color_name,a.tx_fs,a.tx_dx from jxc_tx a,jxc_goods b,jxc_admin c where a.g_sn=b.g_sn and a.tx_dx=c.a_sn) DERIVEDTBL  where (g_sn like '%护%'  or g_name like '%护%' or g_jm like '%护%' or tx_note like '%护%') and tx_sj>='2021-05-01' and tx_sj<='2021-05-31'  order by tx_tjsj
select * from (select a.id,a.tx_sj,a.tx_note,'全体人员' as txdx,a.tx_tjsj,b.g_sn,b.g_name,b.g_jm,b.dw_name,b.gg_name,b.color_name,a.tx_fs,a.tx_dx from jxc_tx a,jxc_goods b where a.g_sn=b.g_sn and a.tx_dx='-1'  union all select a.id,a.tx_sj,a.tx_note,c.a_name as txdx,a.tx_tjsj,b.g_sn,b.g_name,b.g_jm,b.dw_name,b.gg_name,b.color_name,a.tx_fs,a.tx_dx from jxc_tx a,jxc_goods b,jxc_admin c where a.g_sn=b.g_sn and a.tx_dx=c.a_sn) DERIVEDTBL  where (g_sn like '%护%'  or g_name like '%护%' or g_jm like '%护%' or tx_note like '%护%') and tx_fs=1 or tx_fs=2 or tx_fs=3 and tx_sj like '%1%' or tx_fs=4 and tx_sj like '%03%' order by tx_tjsj
delete from jxc_tx where id=1
-- Stock below its limit, in all and in one warehouse; who owes money.
select g_sn,g_name,dw_name,gg_name,color_name,g_zdkc,g_kc as kc from jxc_goods where g_kc<g_zdkc and g_sn<>'00000000' and g_jy=0 and (g_sn like '%护%' or g_name like '%护%' or g_jm like '%护%')
select a.g_sn,a.g_name,a.dw_name,a.gg_name,a.color_name,a.g_zdkc,b.kc_sl as kc from jxc_goods a,jxc_kcsp b where a.g_sn=b.g_sn and b.ck_sn='100001' and b.kc_sl<a.g_zdkc and a.g_sn<>'00000000' and a.g_jy=0 and (a.g_sn like '%护%' or a.g_name like '%护%' or a.g_jm like '%护%')
insert into jxc_ysyfk (gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_flag,k_type,k_djlx,k_djtxt,gl_djh2,k_note,u_sn,a_name,k_ghskh) values ('YS21050310001','2021-05-03','应收款',100,0,0,0,100,1,'kh','YS','增加应收款','','','100001','admin','100001')
select a.*,b.kh_name,b.kh_tele,b.kh_address,c.u_name from jxc_ysyfk a,jxc_user c,jxc_khxx b  where a.k_ghskh=b.kh_sn and a.u_sn=c.u_sn and a.k_type='kh' and b.kh_forbid=0 and a.k_ljje<>0 and  a.id in (select max(id) from jxc_ysyfk where k_type='kh' and  k_rq+k_ghskh in (select max(k_rq)+k_ghskh from jxc_ysyfk where k_type='kh' group by k_ghskh) group by k_ghskh) and a.k_ghskh='100001' order by a.k_ghskh,a.k_rq,a.id
