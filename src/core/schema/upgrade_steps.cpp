// 升级步骤: the ladder itself. A step once released is never changed and never removed: databases that have seen it do
// not run it again, and those that have not must find it as it was.
#include "core/log.h"
#include "core/passwords.h"
#include "core/schema/upgrade.h"

#include <algorithm>

namespace jxc::schema {
namespace upgrade_steps_detail {

using When = UpgradeBlock::When;

UpgradeAction run(std::string_view sql) {
  return {UpgradeAction::Kind::Run, sql};
}
UpgradeAction recreate(std::string_view table) {
  return {UpgradeAction::Kind::Recreate, table};
}
UpgradeAction add(std::string_view table, std::vector<NewColumn> columns) {
  return {UpgradeAction::Kind::AddColumns, table, std::move(columns)};
}
UpgradeAction walk(void (*routine)(Database&)) {
  return {UpgradeAction::Kind::Call, {}, {}, routine};
}

UpgradeBlock always(std::vector<UpgradeAction> actions) {
  return {When::Always, {}, std::move(actions)};
}
UpgradeBlock missing(std::string probe, std::vector<UpgradeAction> actions) {
  return {When::Missing, std::move(probe), std::move(actions)};
}
UpgradeBlock noRow(std::string lookup, std::vector<UpgradeAction> actions) {
  return {When::NoRow, std::move(lookup), std::move(actions)};
}
UpgradeBlock guarded(std::vector<UpgradeAction> actions) {
  return {When::Guarded, {}, std::move(actions)};
}
/// The usual block: a probe on the first column, and all of them added when it is missing.
UpgradeBlock added(std::string_view table, std::vector<NewColumn> columns) {
  std::string probe = "select " + std::string(columns.front().name).append(" from ").append(table);
  return missing(std::move(probe), {add(table, std::move(columns))});
}

UpgradeStep step(std::string_view date, std::vector<UpgradeBlock> blocks) {
  return {date, date, std::move(blocks)};
}
UpgradeStep step(std::string_view guard, std::string_view stamp, std::vector<UpgradeBlock> blocks) {
  return {guard, stamp, std::move(blocks)};
}

// Documents wait for their audit from here on. What was there counts as audited by whoever made it; the stock ledger
// starts afresh from the balances.
UpgradeStep introduceAudit() {
  return step(
      "2013-10-31",
      {missing("select j_checker from jxc_jhd",
               {recreate("jxc_jxchz"), recreate("jxc_nj"), recreate("jxc_bqjl"),
                add("jxc_jhd", {{"j_status", "1"},
                                {"j_checker", "a_name"},
                                {"j_chkrq", "j_jhrq"},
                                {"j_jsfs", "0"},
                                {"j_kmmc", "'现金'"}}),
                add("jxc_thd", {{"th_status", "1"},
                                {"th_checker", "a_name"},
                                {"th_chkrq", "th_thrq"},
                                {"th_jsfs", "0"},
                                {"th_kmmc", "'现金'"}}),
                add("jxc_lsxsd", {{"ls_status", "1"},
                                  {"ls_checker", "a_name"},
                                  {"ls_chkrq", "left(ls_xsrq,10)"},
                                  {"ls_jsfs", "0"},
                                  {"ls_kmmc", "'现金'"}}),
                add("jxc_xsthd", {{"th_status", "1"},
                                  {"th_checker", "a_name"},
                                  {"th_chkrq", "left(th_xsrq,10)"},
                                  {"th_jsfs", "0"},
                                  {"th_kmmc", "'现金'"}}),
                add("jxc_kcdbd", {{"db_status", "1"}, {"db_checker", "a_name"}, {"db_chkrq", "db_dbrq"}}),
                add("jxc_bsd", {{"bs_status", "1"}, {"bs_checker", "a_name"}, {"bs_chkrq", "bs_bsrq"}}),
                add("jxc_byd", {{"by_status", "1"}, {"by_checker", "a_name"}, {"by_chkrq", "by_byrq"}}),
                add("jxc_cfd", {{"cf_status", "1"}, {"cf_checker", "a_name"}, {"cf_chkrq", "cf_cfrq"}}),
                add("jxc_kbd", {{"kb_status", "1"}, {"kb_checker", "a_name"}, {"kb_chkrq", "kb_kbrq"}}),
                add("jxc_goodslist", {{"gl_checker", "a_name"},
                                      {"gl_chkrq", "left(gl_kdrq,10)"},
                                      {"gl_sqsl", "0"},
                                      {"gl_sqje", "0"},
                                      {"gl_pjjj", "0"},
                                      {"gl_kc", "0"},
                                      {"gl_kczje", "0"},
                                      {"gl_note", "'[-前期数据-]'"}}),
                run("insert into jxc_goodslist (gl_flag,gl_djh,gl_kdrq,g_sn,g_name,g_jm,dw_name,gl_dj,gl_sl,gl_zje,"
                    "gl_lr,gl_dzl,a_name,ck_sn,ck_name,ghs_sn,ghs_name,gg_name,color_name,gl_sysl,gl_fdmc,gl_dqkc,"
                    "gl_checker,gl_chkrq,gl_sqsl,gl_sqje,gl_pjjj,gl_kc,gl_kczje,gl_note) "
                    "select 'qc','',date(),b.g_sn,b.g_name,b.g_jm,b.dw_name,a.kc_cbj,a.kc_sl,a.kc_sl*a.kc_cbj,"
                    "0,1,'admin',c.ck_sn,c.ck_name,'','期初结转',b.gg_name,b.color_name,a.kc_sl,'',0,"
                    "'admin',date(),0,0,a.kc_cbj,a.kc_sl,a.kc_sl*a.kc_cbj,'期初结转' "
                    "from jxc_kcsp a,jxc_goods b,jxc_ckxx c where a.g_sn=b.g_sn and a.ck_sn=c.ck_sn "
                    "and a.g_sn<>'00000000' order by a.id"),
                recreate("jxc_kcpd"), recreate("jxc_kcpdsp")}),
       // Payments to suppliers used to be booked with the sign of receipts.
       always({run("update jxc_xjyh set xj_je=-1*xj_je where left(gl_djh,2)='FK' and xj_je>0 ")})});
}

// Putaway, issue, tax, and documents of receivables and payables of their own.
UpgradeStep introducePutawayAndTax() {
  return step(
      "2014-01-01",
      {missing(
           "select kc_zsl from jxc_kcsp",
           {recreate("jxc_tempspxf"), recreate("jxc_rksp"), recreate("jxc_rkd"), recreate("jxc_cksp"),
            recreate("jxc_ckd"), recreate("jxc_import"), recreate("jxc_importchk"), recreate("jxc_importdata"),
            recreate("jxc_ysyfk_dj"), recreate("jxc_xtcs"), add("jxc_kcsp", {{"kc_zsl", "kc_sl"}}),
            run("insert into jxc_ysyfk_dj "
                "(gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,k_ljje,k_mlje,k_flag,k_type,k_djlx,"
                "k_djtxt,gl_djh2,k_note,k_check,k_checker,k_chkrq,u_sn,a_name,k_ghskh) "
                "select gl_djh,k_rq,k_fkfs,k_yfje,k_sfje,k_qcje,k_yhje,0,0,k_flag,k_type,k_djlx,"
                "k_djtxt,gl_djh2,k_note,1,a_name,left(k_rq,10),u_sn,a_name,k_ghskh from jxc_ysyfk "
                "where k_djlx='YF' or k_djlx='FK' or k_djlx='YS' or k_djlx='SK' order by id"),
            run("alter table jxc_goods alter column g_name nvarchar(128) null"),
            add("jxc_jhsp", {{"jh_je", "jh_zje"},
                             {"jh_tax", "0"},
                             {"jh_taxdj", "jh_dj"},
                             {"jh_taxje", "0"},
                             {"jh_rksl", "jh_sl"},
                             {"jh_qxsl", "0"}}),
            add("jxc_thsp", {{"th_je", "th_zje"}, {"th_tax", "0"}, {"th_taxdj", "th_dj"}, {"th_taxje", "0"}}),
            add("jxc_lsxssp", {{"ls_je", "ls_zje"},
                               {"ls_tax", "0"},
                               {"ls_taxdj", "ls_dj"},
                               {"ls_taxje", "0"},
                               {"ls_cksl", "ls_sl"},
                               {"ls_qxsl", "0"}}),
            add("jxc_lsxssptemp", {{"ls_je", "ls_zje"},
                                   {"ls_tax", "0"},
                                   {"ls_taxdj", "ls_dj"},
                                   {"ls_taxje", "0"},
                                   {"ls_cksl", "ls_sl"},
                                   {"ls_qxsl", "0"}}),
            add("jxc_xsthsp", {{"th_je", "th_zje"}, {"th_tax", "0"}, {"th_taxdj", "th_dj"}, {"th_taxje", "0"}}),
            add("jxc_goodslist",
                {{"gl_je", "gl_zje"}, {"gl_tax", "0"}, {"gl_taxdj", "gl_dj"}, {"gl_taxje", "0"}, {"gl_qxsl", "0"}})}),
       noRow("select fy_lx from jxc_fylx where fy_lx='运费'",
             {run("insert into jxc_fylx (fy_lx,fy_fx,fy_note) values ('运费',0,'运费支出')")}),
       noRow("select fy_lx from jxc_fylx where fy_lx='包装费'",
             {run("insert into jxc_fylx (fy_lx,fy_fx,fy_note) values ('包装费',0,'包装费支出')")})});
}

// Invoices, waybills, members, and costs on the lines of sales.
UpgradeStep introduceInvoicesAndCosts() {
  return step(
      "2014-01-02",
      {missing(
          "select j_fpno from jxc_jhd",
          {add("jxc_jhd", {{"j_fpno", "''"}, {"j_fpje", "0"}}), add("jxc_thd", {{"th_fpno", "''"}, {"th_fpje", "0"}}),
           add("jxc_lsxsd", {{"ls_fpno", "''"}, {"ls_fpje", "0"}}),
           add("jxc_xsthd", {{"th_fpno", "''"}, {"th_fpje", "0"}}),
           add("jxc_lsxssp", {{"ls_cbj", "0"}, {"ls_zcb", "0"}, {"ls_cbj2", "0"}, {"id2", "id"}}),
           add("jxc_lsxssptemp", {{"ls_cbj", "0"}, {"ls_zcb", "0"}, {"ls_cbj2", "0"}, {"id2", "id"}}),
           add("jxc_xsthsp", {{"th_cbj", "0"}, {"th_zcb", "0"}, {"id2", "0"}}), add("jxc_jhsp", {{"id2", "id"}}),
           add("jxc_thsp", {{"id2", "0"}}), add("jxc_goodslist", {{"gl_cbj", "0"}, {"gl_zcb", "0"}, {"id2", "0"}}),
           run("update jxc_lsxssp,jxc_goods set jxc_lsxssp.ls_cbj=jxc_goods.g_pjjj,jxc_lsxssp.ls_cbj2=jxc_goods.g_pjjj,"
               "jxc_lsxssp.ls_zcb=jxc_goods.g_pjjj*jxc_lsxssp.ls_sl where jxc_lsxssp.g_sn=jxc_goods.g_sn"),
           run("update jxc_xsthsp,jxc_goods set jxc_xsthsp.th_cbj=jxc_goods.g_pjjj,"
               "jxc_xsthsp.th_zcb=jxc_goods.g_pjjj*jxc_xsthsp.th_sl where jxc_xsthsp.g_sn=jxc_goods.g_sn"),
           run("update jxc_goodslist,jxc_goods set jxc_goodslist.gl_cbj=jxc_goods.g_pjjj,"
               "jxc_goodslist.gl_zcb=jxc_goods.g_pjjj*jxc_goodslist.gl_sl where jxc_goodslist.g_sn=jxc_goods.g_sn "
               "and (jxc_goodslist.gl_flag='xs' or jxc_goodslist.gl_flag='xt')"),
           // A ledger row finds its document line by this link from now on.
           run("update jxc_goodslist,jxc_jhsp set jxc_goodslist.id2=jxc_jhsp.id2 "
               "where jxc_goodslist.gl_djh=jxc_jhsp.j_sn and jxc_goodslist.g_sn=jxc_jhsp.g_sn"),
           run("update jxc_goodslist,jxc_lsxssp set jxc_goodslist.id2=jxc_lsxssp.id2 "
               "where jxc_goodslist.gl_djh=jxc_lsxssp.gl_djh and jxc_goodslist.g_sn=jxc_lsxssp.g_sn"),
           recreate("jxc_fpdjb"), recreate("jxc_kdd"), recreate("jxc_kdgs"), recreate("jxc_hyyh"), recreate("jxc_hyxf"),
           recreate("jxc_hyxx"), recreate("jxc_gnb"), recreate("jxc_jfsz"), recreate("jxc_poscs")})});
}

std::vector<UpgradeStep> ladder() {
  return {
      introduceAudit(),
      step("2013-12-08", {missing("select ck_aname from jxc_ckxx",
                                  {add("jxc_ckxx", {{"ck_aname"}, {"ck_asn"}}), walk(bindFirstOperatorToWarehouses)}),
                          added("jxc_khxx", {{"kh_uname", "'默认员工,'"}, {"kh_usn", "'100001,'"}})}),
      step("2013-12-15", {added("jxc_khxx", {{"ck_sn", "'-1'"}, {"ck_name", "'所有仓库'"}}),
                          added("jxc_ghsxx", {{"ck_sn", "'-1'"}, {"ck_name", "'所有仓库'"}}),
                          added("jxc_user", {{"ck_sn", "'-1'"}, {"ck_name", "'所有仓库'"}})}),
      // Documents settled with what was paid had lost their discount from the amount due. Runs once: a second run would
      // add it again.
      step("2013-12-18",
           {always({run("update jxc_jhd set j_yfje=j_yfje+j_yhje where j_status=1 and j_yfje=j_sfje and j_yhje<>0"),
                    run("update jxc_lsxsd set ls_yfje=ls_yfje+ls_yhje where ls_status=1 and ls_yfje=ls_sfje and "
                        "ls_yhje<>0")})}),
      introducePutawayAndTax(),
      introduceInvoicesAndCosts(),
      step("2014-01-04",
           {noRow("select top 1 ghs_sn from jxc_rkd order by id", {walk(fillPartnersOfPutawayAndIssue)})}),
      step("2014-02-08", {added("jxc_backup", {{"back_days", "0"}})}),
      step("2014-02-09", {added("jxc_backup", {{"back_exit", "0"}})}),
      step("2014-02-12", {added("jxc_jhd", {{"ht_sn", "''"}}), added("jxc_lsxsd", {{"ht_sn", "''"}})}),
      step("2014-02-13", {added("jxc_yyfy", {{"fy_flag", "'0'"}, {"fy_chk", "'1'"}, {"fy_kmmc", "'现金'"}})}),
      step("2014-02-14",
           {missing("select de_sn from jxc_dept", {recreate("jxc_dept")}), added("jxc_yyfy", {{"de_sn", "'100001'"}})}),
      // Takes courier companies of the shop's own with it.
      step("2014-02-15", {always({recreate("jxc_kdgs")})}),
      step("2014-02-18", {always({recreate("jxc_htgl"), recreate("jxc_ftpcs"),
                                  run("update jxc_yyfy set fy_flag='1' where fy_sc='费用'"),
                                  run("update jxc_yyfy set fy_flag='2' where fy_sc='收入'")})}),
      step("2014-02-19", {added("jxc_jhd", {{"j_yf", "0"}, {"j_bzf", "0"}, {"j_yffs", "''"}}),
                          added("jxc_lsxsd", {{"ls_yf", "0"}, {"ls_bzf", "0"}, {"ls_yffs", "''"}})}),
      step("2015-02-19", {added("jxc_jhsp", {{"jh_dzl", "1"}}), added("jxc_thsp", {{"th_dzl", "1"}})}),
      step("2015-02-20", {added("jxc_goods", {{"g_lsj", "g_sj"}}), added("jxc_lsxssp", {{"ls_lsj", "0"}}),
                          added("jxc_lsxssptemp", {{"ls_lsj", "0"}}), added("jxc_xsthsp", {{"th_lsj", "0"}}),
                          added("jxc_goodslist", {{"gl_lsj", "0"}})}),
      step("2015-02-21", {added("jxc_jhd", {{"j_sn2", "''"}}), added("jxc_lsxsd", {{"gl_djh2", "''"}}),
                          added("jxc_goodslist", {{"gl_djh2", "''"}})}),
      // A new right at the end of two groups, on for every role but the administrator's, which has it already.
      step("2015-02-24", {always({run("update jxc_role set cggl=cggl+'1',xsgl=xsgl+'1' where r_sn<>'100001'")})}),
      step("2015-02-25",
           {missing("select z_sn from jxc_zone", {recreate("jxc_zone")}),
            missing("select gt_sn from jxc_ghstype", {recreate("jxc_ghstype")}), added("jxc_khxx", {{"z_name", "''"}}),
            added("jxc_ghsxx", {{"z_name", "''"}, {"gt_name", "''"}})}),
      step("2015-02-26", {always({recreate("jxc_kdgs")})}),
      step("2015-02-27", {added("jxc_jhsp", {{"jh_bz", "''"}}), added("jxc_thsp", {{"th_bz", "''"}}),
                          added("jxc_lsxssp", {{"ls_bz", "''"}}), added("jxc_lsxssptemp", {{"ls_bz", "''"}}),
                          added("jxc_xsthsp", {{"th_bz", "''"}}), added("jxc_goodslist", {{"gl_bz", "''"}})}),
      step("2015-02-28", {added("jxc_goods", {{"g_zhxs", "1"}, {"dw_name2", "dw_name"}})}),
      step("2015-03-05", {added("jxc_goods", {{"g_gdcbj", "0"}})}),
      step("2015-03-07", {added("jxc_goods", {{"g_sptm2", "''"}, {"gg_jm", "''"}, {"color_jm", "''"}})}),
      step("2015-03-10", {added("jxc_kdd", {{"kd_dwmc2", "''"}, {"kd_mobile2", "''"}, {"kd_zip2", "''"}})}),
      step("2015-03-11", {noRow("select kg_sn from jxc_kdgs where kg_sn='1018'", {recreate("jxc_kdgs")})}),
      step("2015-03-16", {added("jxc_tmdy", {{"tm_codetype", "0"}, {"tm_codedisp", "1"}})}),
      step("2015-03-18", {noRow("select kg_sn from jxc_kdgs where kg_sn='1022'", {recreate("jxc_kdgs")})}),
      step("2015-03-20", {added("jxc_user", {{"u_yg", "0"}, {"u_jg", "0"}, {"u_xsy", "0"}})}),
      step("2015-03-22", {added("jxc_goods", {{"g_ygtc", "0"},
                                              {"g_jgtc", "0"},
                                              {"g_xsytc", "0"},
                                              {"g_ygtc2", "0"},
                                              {"g_jgtc2", "0"},
                                              {"g_xsytc2", "0"}})}),
      step("2015-04-22", {added("jxc_posxsd", {{"pos_ygs", "''"},
                                               {"pos_jgy", "''"},
                                               {"pos_xsy", "''"},
                                               {"u_ygs", "''"},
                                               {"u_jgy", "''"},
                                               {"u_xsy", "''"}})}),
      step("2015-04-26",
           {missing("select jp_jm from jxc_jplx", {recreate("jxc_jplx")}),
            added("jxc_goods", {{"g_isjp", "0"}, {"g_qc", "left(g_name,64)"}, {"g_qgd", "''"}, {"g_sgd", "''"}})}),
      step("2015-04-28", {added("jxc_posxsd", {{"pos_yhzkje", "0"}}), added("jxc_posthd", {{"pos_yhzkje", "0"}})}),
      step("2015-05-01", {added("jxc_posxssp", {{"pos_cbj", "0"}, {"pos_zcb", "0"}, {"pos_lsj", "0"}}),
                          added("jxc_posthsp", {{"pos_cbj", "0"}, {"pos_zcb", "0"}, {"pos_lsj", "0"}})}),
      step("2015-05-02", {added("jxc_hyxx", {{"hy_qx", "0"}, {"hy_dqrq", "''"}})}),
      step("2015-05-03",
           {missing("select hs_sn from jxc_hyczzs", {recreate("jxc_hyczzs")}),
            added("jxc_hyxf", {{"hs_zsfs", "0"}, {"hs_myje", "0"}, {"hs_zsje", "0"}, {"xf_zsrq", "''"}})}),
      step("2015-05-04", {added("jxc_jfsz", {{"jf_hyr", "0"},
                                             {"jf_hyr1", "''"},
                                             {"jf_hyr2", "''"},
                                             {"jf_hyrmy1", "''"},
                                             {"jf_hyrmy2", "''"},
                                             {"jf_hyrzk", "0"}})}),
      step("2015-05-05", {added("jxc_jfsz", {{"jf_srjflx", "0"}, {"jf_srjfbs", "0"}, {"jf_srjfts", "0"}})}),
      step("2015-05-08", {added("jxc_jfsz", {{"jf_ick", "0"}, {"jf_icktype", "0"}})}),
      // Stands twice, as it was released: the second finds the tables and does nothing.
      step("2016-01-01", {missing("select sms_sign from jxc_smscs",
                                  {recreate("jxc_sms"), recreate("jxc_smshy"), recreate("jxc_smscs")})}),
      step("2016-01-01", {missing("select sms_sign from jxc_smscs",
                                  {recreate("jxc_sms"), recreate("jxc_smshy"), recreate("jxc_smscs")})}),
      step("2016-06-06", {missing("select jh_rq from jxc_khjh", {recreate("jxc_khjh"), recreate("jxc_khjhsp")})}),
      step("2016-06-09",
           {added(
               "jxc_khjhsp",
               {{"jh_yj", "0"}, {"jh_yj2", "0"}, {"jh_zj", "0"}, {"jh_ts", "0"}, {"jh_zzj", "0"}, {"jh_thyj", "0"}})}),
      step("2016-07-18", {always({recreate("jxc_khjhsptmp")}),
                          added("jxc_khjhsp", {{"jh_kmmc", "'现金'"}, {"jh_sl2", "jh_sl"}, {"jh_xssl", "0"}})}),
      step("2016-07-20", {added("jxc_khjhsp", {{"t_mjph", "''"}, {"g_xlh", "''"}})}),
      step("2016-07-28", {added("jxc_tempspxf", {{"rid", "0"}, {"id3", "0"}})}),
      step("2016-08-08", {always({recreate("jxc_jxchz"), recreate("jxc_nj")})}),
      step("2016-08-28", {added("jxc_jhsp", {{"id3", "0"}}), added("jxc_lsxssp", {{"id3", "0"}}),
                          added("jxc_lsxssptemp", {{"id3", "0"}})}),
      step("2016-09-02", {always({recreate("jxc_jxchz"), recreate("jxc_nj")})}),
      // Shops that had wholesale prices keep using them: the switch comes on with its columns.
      step("2018-12-28",
           {added("jxc_goods",
                  {{"g_sj1", "g_sj"}, {"g_sj2", "g_sj"}, {"g_sj3", "g_sj"}, {"g_sj4", "g_sj"}, {"g_sj5", "g_sj"}}),
            added("jxc_xtcs", {{"cs_cs013", "1"},
                               {"cs_cs014", "0"},
                               {"cs_cs015", "0"},
                               {"cs_cs016", "0"},
                               {"cs_cs017", "0"},
                               {"cs_cs018", "0"},
                               {"cs_cs019", "0"}})}),
      step("2019-02-26", {missing("select kt_sn from jxc_khtype", {recreate("jxc_khtype")}),
                          added("jxc_khxx", {{"kt_sn", "'1000'"}, {"kt_name", "'零售客户'"}})}),
      step("2019-04-01", {missing("select auth_code from jxc_wxfk", {recreate("jxc_wxfk")}),
                          added("jxc_lsxsd", {{"ls_zftype", "''"}, {"ls_transactionid", "''"}})}),
      step("2019-04-04",
           {added("jxc_posxsd",
                  {{"pos_wxje", "0"}, {"pos_zfbje", "0"}, {"pos_zftype", "''"}, {"pos_transactionid", "''"}})}),
      step("2019-04-27",
           {added("jxc_posthd",
                  {{"pos_wxje", "0"}, {"pos_zfbje", "0"}, {"pos_zftype", "''"}, {"pos_transactionid", "''"}})}),
      step("2019-05-13", {added("jxc_hyxf", {{"xf_wxje", "0"}, {"xf_zfbje", "0"}})}),
      step("2019-05-25",
           {added("jxc_poshb", {{"jb_wxje", "0"}, {"jb_zfbje", "0"}, {"jb_wxje2", "0"}, {"jb_zfbje2", "0"}})}),
      step("2019-05-30", {added("jxc_xtcs", {{"cs_wxzf", "0"}, {"cs_mchid", "''"}, {"cs_key", "''"}})}),
      step("2019-08-20", "2019-08-21",
           {always({run("alter table jxc_goods alter column g_name nvarchar(128) null"),
                    run("alter table jxc_goodslist alter column g_name nvarchar(128) null"), recreate("jxc_tempspbd"),
                    recreate("jxc_cfsptmp"), recreate("jxc_sptjtmp")})}),
      step("2019-11-01", "2019-11-02",
           {added("jxc_posxsd", {{"pos_zlje", "0"}}), added("jxc_posthd", {{"pos_zlje", "0"}}),
            added("jxc_hyxf", {{"xf_zlje", "0"}}), added("jxc_poshb", {{"jb_zlje", "0"}, {"jb_zlje2", "0"}})}),
      step("2019-12-21", {added("jxc_email", {{"e_lx", "0"}, {"e_send", "0"}, {"e_date", "''"}})}),
      // This one came out a day early and stands before the one it followed.
      step("2020-02-13", {added("jxc_lsxssp", {{"t_zp", "''"}}), added("jxc_posxssp", {{"t_zp", "''"}}),
                          added("jxc_tempspxf", {{"t_zp", "''"}})}),
      step("2020-02-12", {added("jxc_lsxsd", {{"ls_dhbz", "0"},
                                              {"ls_lr", "0"},
                                              {"hy_sn", "''"},
                                              {"pos_zffs", "0"},
                                              {"pos_xj", "0"},
                                              {"pos_czk", "0"},
                                              {"pos_yhk", "0"},
                                              {"pos_djq", "0"},
                                              {"pos_rjid", "''"}})}),
      step("2020-02-22", {added("jxc_xsthd", {{"th_lr", "0"},
                                              {"hy_sn", "''"},
                                              {"pos_zffs", "0"},
                                              {"pos_xj", "0"},
                                              {"pos_czk", "0"},
                                              {"pos_yhk", "0"},
                                              {"pos_djq", "0"},
                                              {"pos_yhje", "0"},
                                              {"pos_rjid", "''"}})}),
      step("2020-05-21", {added("jxc_lsxssp", {{"ls_dhbz", "0"}, {"ls_dhdj", "0"}}),
                          added("jxc_lsxssptemp", {{"ls_dhbz", "0"}, {"ls_dhdj", "0"}})}),
      step("2020-06-19", {added("jxc_goods", {{"g_tssp", "0"}, {"g_tsjf", "0"}})}),
      step("2020-06-19", "2020-06-21", {always({run("update jxc_goods set g_tssp=0,g_tsjf=0")})}),
      step("2020-08-16", {added("jxc_lsxsd", {{"ls_ckrq", "''"}}), added("jxc_rksp", {{"t_jhrq", "''"}}),
                          added("jxc_cksp", {{"t_jhrq", "''"}})}),
      step("2020-08-28", {added("jxc_rksp", {{"g_xlh", "''"}}), added("jxc_cksp", {{"g_xlh", "''"}})}),
      step("2020-10-14", "2020-10-15",
           {added("jxc_jhd", {{"j_hkje", "0"}}), added("jxc_thd", {{"th_hkje", "0"}}),
            added("jxc_lsxsd", {{"ls_hkje", "0"}}), added("jxc_xsthd", {{"th_hkje", "0"}})}),
      step("2020-11-02", "2020-11-03", {always({recreate("jxc_importchk"), recreate("jxc_importdata")})}),
      step("2020-12-23", {added("jxc_jhd", {{"j_qk", "0"}}), added("jxc_lsxsd", {{"ls_qk", "0"}}),
                          added("jxc_thd", {{"th_qk", "0"}}), added("jxc_xsthd", {{"th_qk", "0"}})}),
      step("2021-01-18",
           {missing("select j_crk from jxc_jhd", {add("jxc_jhd", {{"j_crk", "1"}}), add("jxc_lsxsd", {{"ls_crk", "1"}}),
                                                  walk(reopenUnfinishedDocuments)})}),
      step("2021-02-20", "2021-02-21",
           {added("jxc_jhd", {{"j_dhdid", "''"}, {"j_th", "0"}}), added("jxc_lsxsd", {{"ls_th", "0"}})}),
      step("2021-02-23", {added("jxc_jhd", {{"j_dhbz", "0"}}), added("jxc_xtcs", {{"cs_cs020", "0"},
                                                                                  {"cs_cs021", "0"},
                                                                                  {"cs_cs022", "0"},
                                                                                  {"cs_cs023", "0"},
                                                                                  {"cs_cs024", "0"},
                                                                                  {"cs_cs025", "0"},
                                                                                  {"cs_cs026", "0"},
                                                                                  {"cs_cs027", "0"},
                                                                                  {"cs_cs028", "0"},
                                                                                  {"cs_cs029", "0"},
                                                                                  {"cs_cs030", "0"},
                                                                                  {"cs_cs031", "0"},
                                                                                  {"cs_cs032", "0"},
                                                                                  {"cs_cs033", "0"}})}),
      step("2021-04-03", {added("jxc_jhsp", {{"t_yxq", "''"}}), added("jxc_thsp", {{"t_yxq", "''"}}),
                          added("jxc_lsxssp", {{"t_yxq", "''"}}), added("jxc_xsthsp", {{"t_yxq", "''"}}),
                          added("jxc_goodslist", {{"t_yxq", "''"}}), added("jxc_tempspxf", {{"t_yxq", "''"}})}),
      step("2021-05-13", {added("jxc_kcpdsp", {{"kc_zsl", "kc_sl"}, {"id2", "id"}})}),
      step("2021-06-14", "2021-06-15",
           {guarded({run("alter table jxc_jhd alter column j_sn2 nvarchar(16) null"),
                     run("alter table jxc_lsxsd alter column gl_djh2 nvarchar(16) null"),
                     run("alter table jxc_cgd alter column j_sn2 nvarchar(16) null"),
                     run("alter table jxc_xsd alter column gl_djh2 nvarchar(16) null")})}),
      step("2021-07-05", {added("jxc_goods", {{"g_zpjf", "0"}, {"g_iszp", "0"}, {"g_sy", "0"}})}),
      step("2021-07-15", {added("jxc_xtcs", {{"cs_djzddysl", "0"}, {"cs_tmscff", "0"}, {"cs_posrq", "0"}})}),
      // The passwords themselves are hashed ahead of the first step. Without a chain every entry of the log fails, that
      // of a login too.
      UpgradeStep{.guard = "2026-11-26",
                  .stamp = "2026-11-26",
                  .blocks = {missing("select mm_hash from jxc_adminmm", {recreate("jxc_adminmm")}),
                             added("jxc_log", {{"log_hash"}}),
                             missing("select lc_hash from jxc_logchain", {walk(beginLogChain)}),
                             always({walk(forgetPlainPasswords)})},
                  .untilDone = true},
      // Every command that writes on a day asks whether the day is locked.
      UpgradeStep{.guard = "2026-11-27",
                  .stamp = "2026-11-27",
                  .blocks = {missing("select sd_lsid from jxc_zmsd", {recreate("jxc_zmsd")})},
                  .untilDone = true},
      step("2026-11-28", {missing("select bz_time from jxc_backupzk", {recreate("jxc_backupzk")})}),
      // The proof asks which day was closed last.
      UpgradeStep{.guard = "2026-11-29",
                  .stamp = "2026-11-29",
                  .blocks = {missing("select da_year from jxc_jsda", {recreate("jxc_jsda")})},
                  .untilDone = true},
      // Whoever deletes a waiting receipt or sale asks what goes with it.
      UpgradeStep{.guard = "2026-11-30",
                  .stamp = "2026-11-30",
                  .blocks = {missing("select ht_sn from jxc_htdj", {recreate("jxc_htdj")}),
                             missing("select ht_path from jxc_htwj", {recreate("jxc_htwj")})},
                  .untilDone = true},
      UpgradeStep{.guard = "2026-12-01",
                  .stamp = "2026-12-01",
                  .blocks = {added("jxc_jsda", {{"da_ql", "0"}}), added("jxc_backupzk", {{"bz_set", "''"}})},
                  .untilDone = true},
      step("2026-12-02", {missing("select ftp_zs from jxc_ftpaq", {recreate("jxc_ftpaq")})}),
      UpgradeStep{.guard = "2026-12-03",
                  .stamp = "2026-12-03",
                  .blocks = {added("jxc_htwj", {{"ht_rq", "''"}})},
                  .untilDone = true},
  };
}

}  // namespace upgrade_steps_detail

std::span<const UpgradeStep> upgradeSteps() {
  static const std::vector<UpgradeStep> steps = upgrade_steps_detail::ladder();
  return steps;
}

std::string newestStamp() {
  std::string newest;
  for (const UpgradeStep& step : upgradeSteps())
    newest = std::max(newest, std::string(step.stamp));
  return newest;
}

}  // namespace jxc::schema
