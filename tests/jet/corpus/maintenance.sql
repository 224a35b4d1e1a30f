-- The list of account sets; it lives in a file of its own, so the table is made here and dropped again.
create table [jxc_xtzt] ([id] Counter, [zt_sn] varchar (8) null, [zt_name] nvarchar (64) null, [zt_default] bit null, [zt_forbid] bit null, [zt_note] nvarchar (64) null, [zt_dbname] varchar (64) null, [zt_dbpwd] varchar (64) null, Constraint StatePrimary Primary key ([id]))
insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) values ('100001','晴川进销存',1,0,'','jxc.mdb','')
select * from jxc_xtzt order by id 
select max(zt_sn) as sn from jxc_xtzt
update jxc_xtzt set zt_default=0
insert into jxc_xtzt (zt_sn,zt_name,zt_default,zt_forbid,zt_note,zt_dbname,zt_dbpwd) values ('100002','二店',1,0,'','jxc_100002.mdb','jxc913')
update jxc_xtzt set zt_name='二分店',zt_note='备注',zt_default=0,zt_forbid=1 where id=2
update jxc_xtzt set zt_default=0 where id<>1 
select zt_sn from jxc_xtzt where zt_default<>0
update jxc_xtzt set zt_default=1 where zt_sn='100001'
delete from jxc_xtzt where id=2
drop table jxc_xtzt
-- Backup settings: one row, replaced whole, none at first.
select back_path from jxc_backup
select back_days from jxc_backup
delete from jxc_backup
insert into jxc_backup (back_auto,back_sj,back_days,back_path,back_exit) values (1,4,7,'D:\backup',1)
select * from jxc_backup
-- A fresh start keeps the goods but not their stock; the probe that finds out whether a table is there.
update jxc_goods set g_kc=0,ghs_sn='100001'
select * from jxc_goods where 1>2
select * from jxc_company
update jxc_company set c_name='光明眼镜有限公司',c_jc='光明眼镜',c_tele='0571-8888',c_address='解放路8号' where id=1
-- The operation log.
select * from jxc_log where 1>2
insert into jxc_log (log_time,a_name,log_note) values ('2021-05-31 23:59:59','admin','登录系统')
select * from jxc_log order by id desc
select * from jxc_log where log_time>='2021-05-01' and log_time<='2021-05-31 23:59:59' and (log_note like '%登录%' or a_name like '%登录%') order by id desc
select * from jxc_log where log_time>='2000-01-01' and log_time<='9999-12-31 23:59:59' and (log_note like '%%' or a_name like '%%') order by id desc
delete from jxc_log 
-- The branch that this copy is, and what it sends to the head office as sheets of one file.
select * from jxc_fd
select fd_sn from jxc_fd 
update jxc_fd set fd_sn='100002',fd_name='西湖店'
delete from jxc_fd
insert into jxc_fd (fd_sn,fd_name,fd_dcrq) values ('100002','西湖店','')
update jxc_fd set fd_dcrq='2021-05-31'
check: select * into 1 in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_goods
check: select g_sn,kc_sl,kc_cbj into 2 in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_kcsp
check: select a.gl_djh,a.ls_dj,a.ls_sl,a.a_name,a.ls_zhje,b.ls_xsrq into 3 in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_lsxssp a,jxc_lsxsd b where a.gl_djh=b.gl_djh and b.ls_xsrq>='2021-05-01' and b.ls_xsrq<='2021-05-31'
check: select a.gl_djh,a.th_dj,a.th_sl,a.a_name,a.th_zhje,b.th_xsrq into 4 in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_xsthsp a,jxc_xsthd b where a.gl_djh=b.gl_djh and b.th_xsrq>='2021-05-01' and b.th_xsrq<='2021-05-31'
check: select fd_sn,fd_name into 5 in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_fd
check: select * into [1] in '系统数据库21_05_31_10_20_30.xls' 'EXCEL 8.0;' from jxc_goods
