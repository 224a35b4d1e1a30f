-- What the till leaves behind: two sales of a day, one with a member and a prescription, and a return.
insert into jxc_goods (g_sn,g_name,g_jm,g_jj,g_sj,g_kc,g_jy,g_pjjj,g_dzll,g_isjp,g_iszp,g_zpjf,g_tjsp,g_tssp,g_tsjf,g_tclb,g_tc,g_ygtc,g_jgtc,g_xsytc,g_ygtc2,g_jgtc2,g_xsytc2,g_sptm,g_sccs,g_bz,gc_sn,gc_cid,dw_name,gg_name,color_name,ghs_sn) values ('10000001','树脂镜片1.56','SZJP1.56',20.5,99.9,10,0,20.5,1,1,0,0,0,0,0,0,0,5,10,1.5,0,1,0,'6901234567892','丹阳','','1000',2,'片','标准','无色','100001')
insert into jxc_hyxx (hy_sn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_mm,hy_jf,hy_zjf,hy_zhje,hy_ye,hy_zje,hy_jrrq,hy_sj,hy_qx,hy_cs,hy_sr,hy_tele,hy_mobile) values ('100002','100001','张三','ZS',1,'100001','100001','123',120,150,300,0,850.5,'2021-01-02',1,0,3,'1990-05-03','0571-12345','13800000000')
insert into jxc_posxsd (gl_djh,hy_sn,pos_xsrq,kh_sn,ck_sn,pos_yfje,pos_sfje,pos_mlje,a_name,u_sn,pos_note,pos_zffs,pos_xj,pos_czk,pos_yhk,pos_djq,pos_yhje,pos_yhzkje,pos_wxje,pos_zfbje,pos_zftype,pos_transactionid,pos_name,pos_tele,pos_qjz,pos_qjy,pos_zjz,pos_zjy,pos_zxz,pos_zxy,pos_jzslz,pos_jzsly,pos_tj,pos_add,pos_yt,pos_qjrq,pos_bz,pos_ygs,pos_jgy,pos_xsy,u_ygs,u_jgy,u_xsy,pos_rjid,pos_bcjf,pos_jfye,pos_zlje,pos_zjf) values ('XS21050310001','100002','2021-05-03 10:20:30','100001','100001',199.8,200,0,'admin','100001','',0,200,0,0,0,0,0,0,0,'','','张三','13800000000','-2.50','-3.00','-0.75','-0.50','90','85','1.0','1.0','63','','','2021-05-05','','默认员工','默认员工','默认员工','100001','100001','100001','',19,0,0.2,169)
insert into jxc_posxsd (gl_djh,hy_sn,pos_xsrq,kh_sn,ck_sn,pos_yfje,pos_sfje,pos_mlje,a_name,u_sn,pos_note,pos_zffs,pos_xj,pos_czk,pos_yhk,pos_djq) values ('XS21050310002','','2021-05-03 18:00:00','100001','100001',99.9,99.9,0,'admin','100001','',0,99.9,0,0,0)
insert into jxc_posxssp (gl_djh,g_sn,pos_dj,pos_sl,pos_zje,t_zp,a_name,pos_dzl,pos_cbj,pos_zcb,pos_lsj,pos_zhje,t_scrq,t_ph,t_yxq) values ('XS21050310001','10000001',99.9,2,199.8,'','admin',1,20.5,41,99.9,199.8,'','','')
insert into jxc_posxssp (gl_djh,g_sn,pos_dj,pos_sl,pos_zje,t_zp,a_name,pos_dzl,pos_cbj,pos_zcb,pos_lsj,pos_zhje,t_scrq,t_ph,t_yxq) values ('XS21050310002','10000001',99.9,1,99.9,'(赠品)','admin',1,20.5,20.5,99.9,99.9,'','','')
insert into jxc_posthd (gl_djh,hy_sn,pos_xsrq,kh_sn,ck_sn,pos_yfje,pos_sfje,a_name,u_sn,pos_rjid,pos_bcjf) values ('XT21050310001','','2021-05-03 19:00:00','100001','100001',-99.9,-99.9,'admin','100001','',0)
insert into jxc_posthsp (gl_djh,g_sn,pos_dj,pos_xssl,pos_sl,pos_zje,a_name,pos_dzl,pos_cbj,pos_zcb) values ('XT21050310001','10000001',99.9,1,1,99.9,'admin',1,20.5,20.5)
insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,gl_dj,gl_sl,gl_zje,gl_je,gl_lr,gl_cbj,gl_zcb,u_name,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gl_fdmc) values ('xs','XS21050310001','2021-05-03 10:20:30','10000001','树脂镜片1.56',99.9,2,199.8,199.8,158.8,20.5,41,'默认员工','admin','100001','主仓库','100001','普通客户','99')
-- Flow of documents and of lines; a sale without a member keeps its row.
select e.*,f.hy_bh,f.hy_name from (select a.*,b.u_name,c.ck_name from jxc_posxsd a,jxc_user b,jxc_ckxx c where a.u_sn=b.u_sn and a.ck_sn=c.ck_sn and a.pos_xsrq>='2021-05-01' and a.pos_xsrq<='2021-05-31 23:59:59' ) e left outer join (select hy_sn,hy_bh,hy_name from jxc_hyxx) f on e.hy_sn=f.hy_sn  order by pos_xsrq desc
select e.*,f.hy_bh,f.hy_name from (select a.*,b.u_name,c.ck_name from jxc_posxsd a,jxc_user b,jxc_ckxx c where a.u_sn=b.u_sn and a.ck_sn=c.ck_sn and a.pos_xsrq>='2021-05-01' and a.pos_xsrq<='2021-05-31 23:59:59' and a.u_sn='100001' and a.a_name='admin' and c.ck_asn like '%100001%' ) e left outer join (select hy_sn,hy_bh,hy_name from jxc_hyxx) f on e.hy_sn=f.hy_sn  where (e.gl_djh like '%XS%' or f.hy_bh like '%XS%' or f.hy_name like '%XS%') order by pos_xsrq desc
select e.*,f.hy_bh,f.hy_name from (select a.gl_djh,a.g_sn,a.pos_dj,a.pos_sl,a.pos_zje,a.pos_dzl,(b.g_name+a.t_zp) as g_name,c.hy_sn,c.pos_xsrq,d.ck_name from jxc_posxssp a,jxc_goods b,jxc_posxsd c,jxc_ckxx d where a.g_sn=b.g_sn and a.gl_djh=c.gl_djh and c.ck_sn=d.ck_sn and c.pos_xsrq>='2021-05-01' and c.pos_xsrq<='2021-05-31 23:59:59' and d.ck_asn like '%100001%' ) e left outer join (select hy_sn,hy_bh,hy_name from jxc_hyxx) f on e.hy_sn=f.hy_sn where (e.gl_djh like '%镜%' or f.hy_bh like '%镜%' or f.hy_name like '%镜%' or e.g_sn like '%镜%' or e.g_name like '%镜%') order by pos_xsrq desc
-- Ranking of what the till sold: the mark 99 keeps office sales out.
select a.g_sn,max(g_name) as gname,sum(gl_sl) as sl,sum(gl_zje) as zje,sum(gl_lr) as lr,iif(sum(gl_zje)<>0,round(sum(gl_lr)*100/sum(gl_zje),2),0) as lrl from jxc_goodslist a,jxc_ckxx b where a.ck_sn=b.ck_sn and (gl_flag='xs' or gl_flag='xt') and gl_fdmc='99' and gl_kdrq>='2021-05-01' and gl_kdrq<='2021-05-31 23:59:59' and (g_sn like '%镜%' or g_name like '%镜%') group by a.g_sn order by a.g_sn
select a.ghs_name,sum(gl_sl) as sl,sum(gl_zje) as zje,sum(gl_lr) as lr from jxc_goodslist a,jxc_ckxx b where a.ck_sn=b.ck_sn and (gl_flag='xs' or gl_flag='xt') and gl_fdmc='99' and gl_kdrq>='2021-05-01' and gl_kdrq<='2021-05-31 23:59:59' and b.ck_asn like '%100001%' group by a.ghs_name order by sum(gl_sl) desc
select c.gc_sn,max(d.gc_name) as gcname,sum(gl_sl) as sl,sum(gl_zje) as zje,sum(gl_lr) as lr from jxc_goodslist a,jxc_ckxx b,jxc_goods c,jxc_goodsclass d where a.ck_sn=b.ck_sn and a.g_sn=c.g_sn and c.gc_sn=d.gc_sn and (gl_flag='xs' or gl_flag='xt') and gl_fdmc='99' and gl_kdrq>='2021-05-01' and gl_kdrq<='2021-05-31 23:59:59' group by c.gc_sn order by c.gc_sn
-- What members bought at the till.
select a.*,b.hy_bh,b.hy_name,b.hy_zhje,c.hl_name,b.hy_mobile,iif(left(gl_djh,2)='XT','销售退货单','商品销售单') as dlx from jxc_posxsd a,jxc_hyxx b,jxc_hyfl c,jxc_ckxx d where a.hy_sn=b.hy_sn and b.hl_sn=c.hl_sn and a.ck_sn=d.ck_sn and a.pos_xsrq>='2021-05-01' and a.pos_xsrq<='2021-05-31 23:59:59' and b.hl_sn='100001' and left(a.gl_djh,2)='XS' and (b.hy_bh like '%张%' or b.hy_name like '%张%' or b.hy_jm like '%张%' or b.hy_mobile like '%张%') order by a.id desc
select a.*,iif(a.gl_zje<>0,round(a.gl_lr*100/a.gl_zje,2),0) as lrl from jxc_goodslist a,jxc_posxsd b,jxc_hyxx c,jxc_hyfl d,jxc_ckxx e where a.gl_djh=b.gl_djh and b.hy_sn=c.hy_sn and c.hl_sn=d.hl_sn and a.ck_sn=e.ck_sn and (a.gl_flag='xs' or a.gl_flag='xt') and a.gl_fdmc='99' and a.gl_kdrq>='2021-05-01' and a.gl_kdrq<='2021-05-31 23:59:59' order by a.id desc
-- Cashiers, to the minute of a shift.
select a.a_name,max(b.a_sn) as sn,sum(a.pos_yfje) as yfje,sum(a.pos_sfje) as sfje from jxc_posxsd a,jxc_admin b,jxc_ckxx c where a.a_name=b.a_name and a.ck_sn=c.ck_sn and a.pos_xsrq>='2021-05-03 09:00:00' and a.pos_xsrq<='2021-05-03 17:30:59' and a.a_name like '%a%' group by a.a_name
select a.*,c.ck_name from jxc_posxsd a,jxc_ckxx c where a.ck_sn=c.ck_sn and a.pos_xsrq>='2021-05-03 09:00:00' and a.pos_xsrq<='2021-05-03 17:30:59' and a.a_name='admin' order by a.id desc
select m.gl_djh,m.g_sn,n.g_name,m.pos_dj,m.pos_sl,m.pos_zje,m.pos_zcb,m.pos_zje-m.pos_zcb as lr from jxc_posxssp m,jxc_goods n,jxc_posxsd p where m.g_sn=n.g_sn and m.gl_djh=p.gl_djh and p.a_name='admin' and p.pos_xsrq>='2021-05-03 09:00:00' and p.pos_xsrq<='2021-05-03 17:30:59' order by m.id
-- The cashier's cash in and out, in two columns of one list.
insert into jxc_crk (gl_djh,crk_rq,crk_je,crk_flag,crk_note,a_name) values ('','2021-05-03',100,'r','备用金','admin')
insert into jxc_crk (gl_djh,crk_rq,crk_je,crk_flag,crk_note,a_name) values ('','2021-05-03',35.5,'c','买文具','admin')
select *,iif(crk_flag='r',crk_je,0) as rje,iif(crk_flag='c',crk_je,0) as cje from jxc_crk where crk_rq>='2021-05-01' and crk_rq<='2021-05-31 23:59:59' order by id desc
-- Commission of the optometrist, the workshop and the salesperson: by the piece or as a share.
select '验光师' as lx,b.pos_ygs as name,c.g_name,a.pos_sl,a.pos_zje,a.pos_sl*c.g_ygtc as tcje,'按件提成' as tclx from jxc_posxssp a,jxc_posxsd b,jxc_goods c where a.gl_djh=b.gl_djh and a.g_sn=c.g_sn and c.g_ygtc2=0 and b.u_ygs='100001' union all select '加工员' as lx,b.pos_jgy as name,c.g_name,a.pos_sl,a.pos_zje,a.pos_zje*c.g_jgtc*0.01 as tcje,'按比例提成' as tclx from jxc_posxssp a,jxc_posxsd b,jxc_goods c where a.gl_djh=b.gl_djh and a.g_sn=c.g_sn and c.g_jgtc2=1 and b.u_jgy='100001' union all select '销售员' as lx,b.pos_xsy as name,c.g_name,a.pos_sl,a.pos_zje,a.pos_sl*c.g_xsytc as tcje,'按件提成' as tclx from jxc_posxssp a,jxc_posxsd b,jxc_goods c where a.gl_djh=b.gl_djh and a.g_sn=c.g_sn and c.g_xsytc2=0 and b.u_xsy='100001'
update jxc_posxsd set pos_ygs='王验光' where u_ygs='100001'
update jxc_posxsd set pos_jgy='李加工' where u_jgy='100001'
update jxc_posxsd set pos_xsy='陈销售' where u_xsy='100001'
-- Numbers are kept apart from the till's.
select max(gl_djh) as sn from jxc_posxssp where gl_djh like 'XS210503%'
select max(gl_djh) as sn from jxc_posthsp where gl_djh like 'XT210503%'
-- Scan-to-pay: a charge, one that is left open, and the list.
insert into jxc_wxfk (gl_djh,auth_code,out_trade_no,total_fee,mch_create_ip,service,err_code,err_msg,trade_type,transaction_id,out_transaction_id,mch_id,time_end,wx_flag,wx_time,a_name) values ('XS21050310003','134567890123456789','XS21050310003',12.34*100,'192.168.1.5','unified.trade.micropay','','','pay.weixin.micropay','T1','W1','M100','20210503102030','spxs','2021-05-03 10:20:30','admin')
insert into jxc_wxfk (gl_djh,auth_code,out_trade_no,total_fee,mch_create_ip,service,err_code,err_msg,trade_type,transaction_id,out_transaction_id,mch_id,time_end,wx_flag,wx_time,a_name) values ('XS21050310004','284567890123456789','XS21050310004',500,'192.168.1.5','unified.trade.micropay','USERPAYING','需要查询','','','','M100','','spxs','2021-05-03 11:00:00','admin')
select *,total_fee/100 as xsje,refund_fee/100 as thje from jxc_wxfk where wx_time>='2021-05-01' and wx_time<='2021-05-31 23:59:59'  and (gl_djh like '%XS%' or a_name like '%XS%')  and (trade_type like '%weixin%' or trade_type='')  order by id desc
select *,total_fee/100 as xsje,refund_fee/100 as thje from jxc_wxfk where wx_time>='2021-05-01' and wx_time<='2021-05-31 23:59:59'  and trade_type like '%alipay%'  order by id desc
delete from jxc_wxfk where id=2
-- Settings of the slip are replaced whole.
select * from jxc_posprint
delete from jxc_posprint
insert into jxc_posprint (pp_zjdy,pp_dkqx,pp_zdqz,pp_dyfs,pp_dyj,pp_kd,pp_bt1,pp_bt2,pp_jz1,pp_jz2,pp_khs,pp_fs,pp_xfjf,pp_fkfs,pp_jedx,pp_bzxx) values (1,0,1,1,0,1,'眼镜店','欢迎惠顾','','','2','1',1,1,1,0)
select * from jxc_posfont
select * from jxc_poscs
select pos_com from jxc_poskx
-- Reprinting a sale, a slip and a return.
select * from jxc_posxsd where gl_djh='XS21050310001'
select hy_bh,hy_zhje,hy_zjf,hy_name,hy_tele,hy_mobile from jxc_hyxx where hy_sn='100002'
select a.g_sn,a.pos_dj,a.pos_dzl,a.pos_sl,a.pos_zje,a.pos_dj*a.pos_dzl as zhdj,b.g_name,c.* from jxc_posxssp a,jxc_goods b,jxc_posxsd c where a.g_sn=b.g_sn and a.gl_djh=c.gl_djh and a.gl_djh='XS21050310001' order by a.id
select a.g_sn,a.pos_dj,a.pos_dzl,a.pos_sl,a.pos_zje,(b.g_name+a.t_zp) as g_name,b.dw_name,b.g_sccs,b.gg_name from jxc_posxssp a,jxc_goods b where a.g_sn=b.g_sn and a.gl_djh='XS21050310002' order by a.id
-- Cancelling a sale of the till.
delete from jxc_posxsd where gl_djh='XS21050310002'
delete from jxc_posxssp where gl_djh='XS21050310002'
