// 前台表: what the till leaves behind, scan-to-pay charges, and the settings that the till reads.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_pos_detail {

// The prescription: names ending in z are the left eye, in y the right one.
constexpr std::string_view kSaleHead = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    pos_xsrq varchar(32)
    kh_sn varchar(8)
    ck_sn varchar(8)
    pos_yfje numeric(28,6)
    pos_sfje numeric(28,6)
    pos_mlje numeric(28,6)
    a_name nvarchar(32)
    u_sn varchar(8)
    pos_note nvarchar(200)
    pos_zffs int
    pos_xj numeric(28,6)
    pos_czk numeric(28,6)
    pos_yhk numeric(28,6)
    pos_djq numeric(28,6)
    pos_yhje numeric(28,6)
    pos_yhzkje numeric(28,6)
    pos_wxje numeric(28,6)
    pos_zfbje numeric(28,6)
    pos_zftype varchar(32)
    pos_transactionid varchar(64)
    pos_name nvarchar(32)
    pos_tele nvarchar(32)
    pos_qjz nvarchar(8)
    pos_qjy nvarchar(8)
    pos_zjz nvarchar(8)
    pos_zjy nvarchar(8)
    pos_zxz nvarchar(8)
    pos_zxy nvarchar(8)
    pos_jzslz nvarchar(8)
    pos_jzsly nvarchar(8)
    pos_tj nvarchar(8)
    pos_add nvarchar(8)
    pos_yt nvarchar(8)
    pos_qjrq nvarchar(16)
    pos_bz nvarchar(8)
    pos_ygs varchar(16)
    pos_jgy varchar(16)
    pos_xsy varchar(16)
    u_ygs varchar(8)
    u_jgy varchar(8)
    u_xsy varchar(8)
    pos_rjid varchar(50)
    pos_bcjf numeric(28,6)
    pos_jfye numeric(28,6)
    pos_zlje numeric(28,6)
    pos_zjf numeric(28,6))";

constexpr std::string_view kSaleLine = R"(
    gl_djh varchar(16)
    g_sn varchar(32)
    pos_dj numeric(28,6)
    pos_sl numeric(28,6)
    pos_zje numeric(28,6)
    t_zp nvarchar(16)
    a_name nvarchar(32)
    pos_dzl numeric(28,6)
    pos_cbj numeric(28,6)
    pos_zcb numeric(28,6)
    pos_lsj numeric(28,6)
    pos_zhje numeric(28,6)
    t_scrq varchar(16)
    t_ph varchar(64)
    t_yxq varchar(16))";

// A return carries no prescription.
constexpr std::string_view kReturnHead = R"(
    gl_djh varchar(16)
    hy_sn varchar(8)
    pos_xsrq varchar(32)
    kh_sn varchar(8)
    ck_sn varchar(8)
    pos_yfje numeric(28,6)
    pos_sfje numeric(28,6)
    pos_mlje numeric(28,6)
    a_name nvarchar(32)
    u_sn varchar(8)
    pos_note nvarchar(200)
    pos_zffs int
    pos_xj numeric(28,6)
    pos_czk numeric(28,6)
    pos_yhk numeric(28,6)
    pos_djq numeric(28,6)
    pos_yhje numeric(28,6)
    pos_yhzkje numeric(28,6)
    pos_wxje numeric(28,6)
    pos_zfbje numeric(28,6)
    pos_zftype varchar(32)
    pos_transactionid varchar(64)
    pos_rjid varchar(50)
    pos_bcjf numeric(28,6)
    pos_jfye numeric(28,6)
    pos_zlje numeric(28,6)
    pos_zjf numeric(28,6))";

constexpr std::string_view kReturnLine = R"(
    gl_djh varchar(16)
    g_sn varchar(32)
    pos_dj numeric(28,6)
    pos_xssl numeric(28,6)
    pos_sl numeric(28,6)
    pos_zje numeric(28,6)
    a_name nvarchar(32)
    pos_dzl numeric(28,6)
    pos_cbj numeric(28,6)
    pos_zcb numeric(28,6)
    pos_lsj numeric(28,6)
    pos_zhje numeric(28,6)
    t_scrq varchar(16)
    t_ph varchar(64)
    t_yxq varchar(16))";

constexpr std::string_view kShift = R"(
    jb_begintime varchar(32)
    jb_endtime varchar(32)
    a_name nvarchar(32)
    jb_xjje numeric(28,6)
    jb_czkje numeric(28,6)
    jb_yhkje numeric(28,6)
    jb_djqje numeric(28,6)
    jb_wxje numeric(28,6)
    jb_zfbje numeric(28,6)
    jb_zlje numeric(28,6)
    jb_mlje numeric(28,6)
    jb_thje numeric(28,6)
    jb_rkje numeric(28,6)
    jb_ckje numeric(28,6)
    jb_xsje numeric(28,6)
    jb_xjje2 numeric(28,6)
    jb_yhkje2 numeric(28,6)
    jb_wxje2 numeric(28,6)
    jb_zfbje2 numeric(28,6)
    jb_zlje2 numeric(28,6)
    jb_xfje numeric(28,6)
    jb_yjje numeric(28,6)
    jb_sjje numeric(28,6)
    jb_note nvarchar(64))";

constexpr std::string_view kTill = R"(
    posnumber varchar(16)
    posname nvarchar(32)
    posunique varchar(32))";

constexpr std::string_view kDrawer = R"(
    pos_com varchar(8))";

// Cash that a cashier takes over or hands in: crk_flag is r for in, c for out.
constexpr std::string_view kCashierCash = R"(
    gl_djh varchar(16)
    crk_rq varchar(32)
    crk_flag varchar(1)
    crk_je numeric(28,6)
    crk_note nvarchar(200)
    a_name nvarchar(32)
    a_name2 nvarchar(32))";

constexpr std::string_view kDayHead = R"(
    gl_djh varchar(16)
    rj_rq varchar(32)
    rj_sl numeric(28,6)
    rj_je numeric(28,6)
    a_name nvarchar(32))";

constexpr std::string_view kDayLine = R"(
    gl_djh varchar(16)
    rj_xsrq varchar(32)
    g_sn varchar(32)
    rj_sl numeric(28,6)
    rj_je numeric(28,6)
    a_name nvarchar(32))";

// Amounts of a charge are fen, as the gateway counts them.
constexpr std::string_view kCharge = R"(
    gl_djh varchar(16)
    auth_code varchar(32)
    out_trade_no varchar(32)
    total_fee numeric(28,6)
    refund_fee numeric(28,6)
    mch_create_ip varchar(16)
    service varchar(64)
    out_refund_no varchar(32)
    err_code varchar(32)
    err_msg nvarchar(32)
    refund_id varchar(64)
    trade_type varchar(32)
    transaction_id varchar(64)
    out_transaction_id varchar(64)
    mch_id varchar(32)
    time_end varchar(32)
    wx_flag varchar(4)
    wx_time varchar(32)
    a_name nvarchar(32))";

constexpr std::string_view kSlip = R"(
    pp_zjdy bit
    pp_dkqx bit
    pp_zdqz bit
    pp_dyfs int
    pp_dyj int
    pp_kd int
    pp_bt1 nvarchar(64)
    pp_bt2 nvarchar(64)
    pp_jz1 nvarchar(64)
    pp_jz2 nvarchar(64)
    pp_khs varchar(2)
    pp_fs varchar(4)
    pp_xfjf bit
    pp_fkfs bit
    pp_jedx bit
    pp_bzxx bit)";
constexpr std::array<std::string_view, 1> kSlipSeeds = {
    "(pp_zjdy,pp_dkqx,pp_zdqz,pp_dyfs,pp_dyj,pp_kd,pp_bt1,pp_bt2,pp_jz1,pp_jz2,pp_khs,pp_fs,pp_xfjf,pp_fkfs,pp_jedx,"
    "pp_bzxx) values (0,0,0,0,0,0,'眼镜专卖店','欢迎惠顾','请妥善保管小票，凭小票取镜、保养和调校',"
    "'谢谢光临，欢迎再次惠顾','2','1',0,0,0,1)"};

constexpr std::string_view kSlipFont = R"(
    font_size varchar(32))";
constexpr std::array<std::string_view, 1> kSlipFontSeeds = {"(font_size) values ('14')"};

constexpr std::string_view kTillSettings = R"(
    pos_qxjk int
    pos_jkzl int
    pos_kxjk int
    pos_dkqx bit
    pos_tmlx int
    pos_jzqz varchar(4)
    pos_jsqz varchar(4)
    pos_jews int
    pos_djws int
    pos_zlws int)";
constexpr std::array<std::string_view, 1> kTillSettingsSeeds = {
    "(pos_qxjk,pos_jkzl,pos_kxjk,pos_dkqx,pos_tmlx,pos_jzqz,pos_jsqz,pos_jews,pos_djws,pos_zlws) "
    "values (0,0,0,0,0,'24','25',2,2,2)"};

constexpr TableDefinition kTables[] = {
    {"jxc_wxfk", kCharge},
    {"jxc_posxsd", kSaleHead},
    {"jxc_posxssp", kSaleLine},
    {"jxc_posprint", kSlip, kSlipSeeds},
    {"jxc_posfont", kSlipFont, kSlipFontSeeds},
    {"jxc_poshb", kShift},
    {"jxc_postable", kTill},
    {"jxc_posthsp", kReturnLine},
    {"jxc_posthd", kReturnHead},
    {"jxc_poskx", kDrawer},
    {"jxc_crk", kCashierCash},
    {"jxc_rjd", kDayHead},
    {"jxc_rjsp", kDayLine},
    {"jxc_poscs", kTillSettings, kTillSettingsSeeds},
};

}  // namespace tables_pos_detail

std::span<const TableDefinition> posTables() {
  return tables_pos_detail::kTables;
}

}  // namespace jxc::schema
