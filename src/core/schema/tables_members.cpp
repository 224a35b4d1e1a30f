// 会员表: card holders with their grades and benefit schemes, stored value, points and redemption.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_members_detail {

constexpr std::string_view kGrade = R"(
    hl_sn varchar(8)
    hl_name nvarchar(32)
    hl_zk numeric(28,6)
    hl_jfxx numeric(28,6)
    hl_jfsx numeric(28,6))";
constexpr std::array<std::string_view, 2> kGradeSeeds = {
    "(hl_sn,hl_name,hl_zk,hl_jfxx,hl_jfsx) values ('100001','普通会员',1,0,0)",
    "(hl_sn,hl_name,hl_zk,hl_jfxx,hl_jfsx) values ('100002','初级会员',1,1,999999)"};

constexpr std::string_view kMember = R"(
    hy_sn varchar(8)
    hy_fsn varchar(8)
    hy_bh varchar(32)
    hy_name nvarchar(32)
    hy_jm varchar(32)
    hy_status bit
    hl_sn varchar(8)
    hh_sn varchar(8)
    hy_mm varchar(16)
    hy_jf numeric(28,6)
    hy_zjf numeric(28,6)
    hy_zhje numeric(28,6)
    hy_ye numeric(28,6)
    hy_zje numeric(28,6)
    hy_jrrq varchar(16)
    hy_dqrq varchar(16)
    hy_sj bit
    hy_qx bit
    hy_cs int
    hy_syje numeric(28,6)
    hy_xjsyje numeric(28,6)
    hy_note nvarchar(200)
    hy_fd varchar(32)
    hy_fdzt varchar(32)
    hy_hyidkh varchar(32)
    hy_glnl int
    hy_sex nvarchar(2)
    hy_sr varchar(16)
    hy_tele varchar(32)
    hy_mobile varchar(16)
    hy_email varchar(64)
    hy_zjlx nvarchar(64)
    hy_zjhm nvarchar(64)
    hy_dwzy nvarchar(64)
    hy_address nvarchar(64)
    hy_qtxx nvarchar(64)
    hy_cg bit
    hy_chk bit)";
// The walk-in customer: redeems gifts without a card, is on no list.
constexpr std::array<std::string_view, 1> kMemberSeeds = {
    "(hy_sn,hy_fsn,hy_bh,hy_name,hy_jm,hy_status,hl_sn,hh_sn,hy_mm,hy_jf,hy_zjf,hy_zhje,hy_ye,hy_zje,hy_jrrq,hy_dqrq,"
    "hy_sj,hy_qx,hy_cs,hy_syje,hy_xjsyje,hy_note,hy_glnl,hy_cg,hy_chk) values ('100001','','0000','无卡客户','WKKH',1,"
    "'100001','100001','',0,0,0,0,0,'2010-01-01','',0,0,0,0,0,'',0,0,0)"};

constexpr std::string_view kLevel = R"(
    hj_sn varchar(8)
    hj_jbid varchar(16)
    hj_jbmc nvarchar(32)
    hj_zkl numeric(28,6)
    hj_jfxx numeric(28,6)
    hj_jfsx numeric(28,6))";

constexpr std::string_view kPointRules = R"(
    jf_jfgz int
    jf_mfje numeric(28,6)
    jf_djjf bit
    jf_jsrjf int
    jf_jsrjl int
    jf_dbjf int
    jf_dbrq1 varchar(32)
    jf_dbrq2 varchar(32)
    jf_srjflx int
    jf_srjfbs int
    jf_srjfts int
    jf_yelj bit
    jf_hysk bit
    jf_qchy bit
    jf_xgxf bit
    jf_hyr int
    jf_hyr1 varchar(32)
    jf_hyr2 varchar(32)
    jf_hyrmy1 varchar(2)
    jf_hyrmy2 varchar(2)
    jf_hyrzk numeric(28,6)
    jf_ick bit
    jf_icktype int)";
constexpr std::array<std::string_view, 1> kPointRulesSeeds = {
    "(jf_jfgz,jf_mfje,jf_djjf,jf_jsrjf,jf_jsrjl,jf_dbjf,jf_dbrq1,jf_dbrq2,jf_srjflx,jf_srjfbs,jf_srjfts,jf_yelj,"
    "jf_hysk,jf_qchy,jf_xgxf,jf_hyr,jf_hyr1,jf_hyr2,jf_hyrmy1,jf_hyrmy2,jf_hyrzk,jf_ick,jf_icktype) "
    "values (1,0,0,0,0,0,'','',0,0,0,0,0,0,0,0,'','','','',0,0,0)"};

constexpr std::string_view kPointChange = R"(
    hy_sn varchar(8)
    jf_xfjf numeric(28,6)
    jf_rq varchar(32)
    a_name nvarchar(32)
    jf_note nvarchar(200))";

constexpr std::string_view kOldStoredValue = R"(
    hy_sn varchar(8)
    xf_je numeric(28,6)
    hy_rq varchar(32)
    a_admin nvarchar(32)
    hy_bz nvarchar(64))";

constexpr std::string_view kSaleLine = R"(
    gl_djh varchar(16)
    g_sn varchar(32)
    hy_dj numeric(28,6)
    hy_sl numeric(28,6)
    hy_zje numeric(28,6)
    a_name nvarchar(32)
    hy_dzl numeric(28,6)
    hy_zhje numeric(28,6)
    t_ph varchar(64)
    t_yxq varchar(16))";

constexpr std::string_view kSaleHead = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    hy_xsrq varchar(32)
    hy_je numeric(28,6)
    a_name nvarchar(32)
    u_sn varchar(8)
    hy_note nvarchar(200)
    hy_zffs int
    hy_xj numeric(28,6)
    hy_czk numeric(28,6)
    hy_yhk numeric(28,6)
    hy_djq numeric(28,6)
    hy_zfje numeric(28,6)
    hy_bcjf numeric(28,6)
    hy_jfye numeric(28,6)
    hy_zhje numeric(28,6)
    hy_zjf numeric(28,6))";

constexpr std::string_view kRedemptionHead = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    dh_dhrq varchar(32)
    dh_sl numeric(28,6)
    dh_jf numeric(28,6)
    dh_note nvarchar(200)
    a_name nvarchar(32)
    ck_sn varchar(8))";

constexpr std::string_view kRedemptionLine = R"(
    gl_djh varchar(16)
    g_sn varchar(32)
    dh_zpjf numeric(28,6)
    dh_sl numeric(28,6)
    dh_jf numeric(28,6)
    a_name nvarchar(32))";

constexpr std::string_view kScheme = R"(
    hh_sn varchar(8)
    hh_name nvarchar(32)
    hh_zl int
    hh_yh1 numeric(28,6)
    hh_yh2 numeric(28,6)
    hh_yh3 numeric(28,6)
    hh_zlname nvarchar(32)
    hh_note nvarchar(200))";
constexpr std::array<std::string_view, 1> kSchemeSeeds = {
    "(hh_sn,hh_name,hh_zl,hh_yh1,hh_yh2,hh_yh3,hh_zlname,hh_note) "
    "values ('100001','不优惠',0,1,0,0,'存款优惠','实际款=所付存款*1')"};

constexpr std::string_view kTopUpGift = R"(
    hs_sn varchar(8)
    hs_zsfs int
    hs_txt nvarchar(32)
    hs_myje numeric(28,6)
    hs_czje numeric(28,6)
    hs_zsje numeric(28,6)
    hs_note nvarchar(200))";

constexpr std::string_view kStoredValue = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    xf_rq varchar(32)
    xf_je numeric(28,6)
    xf_yhje numeric(28,6)
    xf_xj numeric(28,6)
    xf_czk numeric(28,6)
    xf_xyk numeric(28,6)
    xf_djq numeric(28,6)
    xf_wxje numeric(28,6)
    xf_zfbje numeric(28,6)
    xf_zlje numeric(28,6)
    xf_note nvarchar(200)
    xf_zt varchar(32)
    xf_fdzt varchar(32)
    xf_fd varchar(32)
    xf_zsrq varchar(16)
    hs_zsfs int
    hs_myje numeric(28,6)
    hs_zsje numeric(28,6)
    xf_id varchar(32)
    a_name nvarchar(32))";

constexpr TableDefinition kTables[] = {
    {"jxc_hyfl", kGrade, kGradeSeeds},
    {"jxc_hyxx", kMember, kMemberSeeds},
    {"jxc_hyjbxx", kLevel},
    {"jxc_jfsz", kPointRules, kPointRulesSeeds},
    {"jxc_jfdh", kPointChange},
    {"jxc_czxf", kOldStoredValue},
    {"jxc_hyxssp", kSaleLine},
    {"jxc_hyxsd", kSaleHead},
    {"jxc_dhd", kRedemptionHead},
    {"jxc_dhzp", kRedemptionLine},
    {"jxc_hyyh", kScheme, kSchemeSeeds},
    {"jxc_hyczzs", kTopUpGift},
    {"jxc_hyxf", kStoredValue},
};

}  // namespace tables_members_detail

std::span<const TableDefinition> membersTables() {
  return tables_members_detail::kTables;
}

}  // namespace jxc::schema
