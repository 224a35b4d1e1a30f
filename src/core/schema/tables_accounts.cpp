// 账务表: partner, cash and invoice ledgers, expenses, fixed assets, period closing, contracts.
#include "core/schema/table_definition.h"

#include <array>

namespace jxc::schema {
namespace tables_accounts_detail {

constexpr std::string_view kCashLedger = R"(
    xj_rq varchar(32)
    gl_djh varchar(16)
    xj_dlx nvarchar(32)
    xj_je numeric(28,6)
    xj_ljje numeric(28,6)
    xj_chk varchar(1)
    u_name nvarchar(32)
    ghs_name nvarchar(128)
    ghs_sn varchar(8)
    ck_name nvarchar(64)
    xj_kmmc nvarchar(32)
    xj_note nvarchar(200)
    a_name nvarchar(32))";
// Every account begins with one audited opening line on the day the set is made.
constexpr std::array<std::string_view, 3> kCashLedgerSeeds = {
    "(xj_rq,gl_djh,xj_dlx,xj_je,xj_ljje,xj_chk,xj_kmmc,xj_note,a_name) "
    "values (date(),'','期初金额',0,0,'1','现金','现金期初数','admin')",
    "(xj_rq,gl_djh,xj_dlx,xj_je,xj_ljje,xj_chk,xj_kmmc,xj_note,a_name) "
    "values (date(),'','期初金额',0,0,'1','工行帐号','工行期初数','admin')",
    "(xj_rq,gl_djh,xj_dlx,xj_je,xj_ljje,xj_chk,xj_kmmc,xj_note,a_name) "
    "values (date(),'','期初金额',0,0,'1','建行帐号','建行期初数','admin')"};

constexpr std::string_view kPaymentDetail = R"(
    fk_sn varchar(16)
    gl_djh varchar(16)
    fk_je numeric(28,6)
    fk_lx bit)";

constexpr std::string_view kAccount = R"(
    yh_sn varchar(8)
    yh_type varchar(32)
    yh_name nvarchar(32)
    yh_zje numeric(28,6)
    yh_note nvarchar(200))";
// The blank behind the kind is how these three rows have always been stored; kinds are compared with it.
constexpr std::array<std::string_view, 3> kAccountSeeds = {
    "(yh_sn,yh_type,yh_name,yh_zje,yh_note) values ('100001','现金 ','现金',0,'')",
    "(yh_sn,yh_type,yh_name,yh_zje,yh_note) values ('100002','工行合计 ','工行帐号',0,'')",
    "(yh_sn,yh_type,yh_name,yh_zje,yh_note) values ('100003','建行合计 ','建行帐号',0,'')"};

constexpr std::string_view kExpense = R"(
    fy_rq varchar(32)
    gl_djh varchar(16)
    fy_lx nvarchar(64)
    fy_je numeric(28,6)
    fy_flag varchar(1)
    u_sn varchar(8)
    de_sn varchar(8)
    fy_kmmc nvarchar(32)
    fy_chk varchar(1)
    fy_note nvarchar(200)
    a_name nvarchar(32)
    fy_sc nvarchar(16))";

constexpr std::string_view kContract = R"(
    gl_djh varchar(16)
    ht_sn varchar(8)
    ht_rq varchar(32)
    ht_name nvarchar(64)
    ht_jm varchar(32)
    ht_note text
    ht_path nvarchar(128)
    ht_fujian varchar(32)
    ht_fjname nvarchar(64)
    ht_type varchar(4)
    a_name nvarchar(32)
    u_sn varchar(8)
    ghs_sn varchar(8))";

// Contracts that were added for a document: they go with it when it is given up. The document stands in the contract,
// empty as long as it is this operator's draft.
constexpr std::string_view kContractOfDocument = R"(
    ht_sn varchar(8)
    a_name nvarchar(32))";

// Files that no contract names: of contracts that are gone, until somebody has taken them off the disk, and of those
// that are not written yet, while the file is on its way.
constexpr std::string_view kFileOfContract = R"(
    ht_path nvarchar(128)
    ht_fujian varchar(32)
    ht_fjname nvarchar(64)
    ht_type varchar(4)
    ht_rq varchar(32)         -- until then it may still be on its way; empty: it may go)";

constexpr std::string_view kFtp = R"(
    ftp_ip varchar(32)
    ftp_user varchar(32)
    ftp_pwd varchar(32)
    ftp_port varchar(8)
    ftp_folder nvarchar(32))";

// What the operator said about the server of that address: whether it may do without encryption, and which certificate
// of its own he trusts.
constexpr std::string_view kFtpTrust = R"(
    ftp_ip varchar(32)
    ftp_port varchar(8)
    ftp_mw bit               -- unencrypted where it offers none
    ftp_zs varchar(64))";

constexpr std::string_view kCustomerContract = R"(
    ht_sn varchar(8)
    ht_rq varchar(32)
    ht_name nvarchar(64)
    ht_path nvarchar(128)
    ht_jm varchar(32)
    u_sn varchar(8)
    kh_sn varchar(8))";

constexpr std::string_view kExpenseType = R"(
    fy_lx nvarchar(64)
    fy_fx int
    fy_note nvarchar(200))";
constexpr std::array<std::string_view, 5> kExpenseTypeSeeds = {
    "(fy_lx,fy_fx,fy_note) values ('费用',0,'费用支出')", "(fy_lx,fy_fx,fy_note) values ('运费',0,'运费支出')",
    "(fy_lx,fy_fx,fy_note) values ('包装费',0,'包装费支出')",
    "(fy_lx,fy_fx,fy_note) values ('应付工资',0,'人员工资支出')", "(fy_lx,fy_fx,fy_note) values ('收入',1,'收入类型')"};

constexpr std::string_view kAssetMovement = R"(
    zc_rq varchar(32)
    zc_je numeric(28,6)
    zc_lx nvarchar(32)
    zc_note nvarchar(200)
    u_name nvarchar(32)
    a_name nvarchar(32))";

constexpr std::string_view kAsset = R"(
    zc_bh varchar(16)
    zc_mc nvarchar(32)
    zc_rq varchar(32)
    zc_lx nvarchar(32)
    zc_dw nvarchar(32)
    zc_je numeric(28,6)
    zc_bm nvarchar(32)
    zc_zjys varchar(4)
    zc_ghs nvarchar(32)
    zc_nbfl nvarchar(32)
    zc_ggxh nvarchar(32)
    zc_note nvarchar(200)
    u_name nvarchar(32)
    a_name nvarchar(32))";

constexpr std::string_view kClosing = R"(
    nj_jsrq varchar(16)
    nj_year varchar(16)
    nj_xm nvarchar(32)
    nj_ds int
    nj_sl numeric(28,6)
    nj_je numeric(28,6))";

// A copy of the set lies in the file, as it was before its closing.
constexpr std::string_view kClosingArchive = R"(
    da_time varchar(32)
    da_year varchar(16)
    da_file text
    a_name nvarchar(32)
    da_ql bit                 -- the set was emptied since: it locks no day any more)";

constexpr std::string_view kPartnerLedger = R"(
    gl_djh varchar(16)
    k_rq varchar(32)
    k_fkfs varchar(32)
    k_yfje numeric(28,6)
    k_sfje numeric(28,6)
    k_qcje numeric(28,6)
    k_yhje numeric(28,6)
    k_ljje numeric(28,6)
    k_flag int
    k_type varchar(4)
    k_djlx varchar(4)
    k_djtxt nvarchar(16)
    gl_djh2 nvarchar(16)
    k_note nvarchar(200)
    u_sn varchar(8)
    a_name nvarchar(32)
    k_ghskh varchar(8))";

constexpr std::string_view kPartnerDocument = R"(
    gl_djh varchar(16)
    k_rq varchar(32)
    k_fkfs varchar(32)
    k_yfje numeric(28,6)
    k_sfje numeric(28,6)
    k_qcje numeric(28,6)
    k_yhje numeric(28,6)
    k_ljje numeric(28,6)
    k_mlje numeric(28,6)
    k_flag int
    k_type varchar(4)
    k_djlx varchar(4)
    k_djtxt nvarchar(16)
    gl_djh2 nvarchar(16)
    k_note nvarchar(200)
    k_check bit
    k_checker nvarchar(32)
    k_chkrq varchar(16)
    u_sn varchar(8)
    a_name nvarchar(32)
    k_ghskh varchar(8))";

constexpr std::string_view kInvoice = R"(
    gl_djh varchar(16)
    fp_rq varchar(32)
    fp_no varchar(32)
    fp_yfje numeric(28,6)
    fp_sfje numeric(28,6)
    fp_kpje numeric(28,6)
    fp_qcje numeric(28,6)
    fp_ljje numeric(28,6)
    fp_flag int
    fp_type varchar(4)
    fp_djlx varchar(4)
    fp_djtxt nvarchar(16)
    fp_note nvarchar(200)
    fp_ghskh varchar(8)
    fp_check bit
    fp_checker nvarchar(32)
    fp_chkrq varchar(16)
    fp_kprq varchar(32)
    u_sn varchar(8)
    a_name nvarchar(32))";

constexpr TableDefinition kTables[] = {
    {"jxc_xjyh", kCashLedger, kCashLedgerSeeds},
    {"jxc_fkmx", kPaymentDetail},
    {"jxc_yhzh", kAccount, kAccountSeeds},
    {"jxc_yyfy", kExpense},
    {"jxc_htgl", kContract},
    {"jxc_htdj", kContractOfDocument},
    {"jxc_htwj", kFileOfContract},
    {"jxc_ftpcs", kFtp},
    {"jxc_ftpaq", kFtpTrust},
    {"jxc_khhtgl", kCustomerContract},
    {"jxc_fylx", kExpenseType, kExpenseTypeSeeds},
    {"jxc_zcmx", kAssetMovement},
    {"jxc_gdzc", kAsset},
    {"jxc_nj", kClosing},
    {"jxc_jsda", kClosingArchive},
    {"jxc_ysyfk", kPartnerLedger},
    {"jxc_ysyfk_dj", kPartnerDocument},
    {"jxc_fpdjb", kInvoice},
};

}  // namespace tables_accounts_detail

std::span<const TableDefinition> accountsTables() {
  return tables_accounts_detail::kTables;
}

}  // namespace jxc::schema
