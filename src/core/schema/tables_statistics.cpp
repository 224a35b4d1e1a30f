// 统计表: working tables of the statistics, each row tagged with its operator.
#include "core/schema/table_definition.h"

namespace jxc::schema {
namespace tables_statistics_detail {

constexpr std::string_view kDayAnalysis = R"(
    yy_rq varchar(32)
    yy_cgsl numeric(28,6)
    yy_cgje numeric(28,6)
    yy_xssl numeric(28,6)
    yy_xsje numeric(28,6)
    yy_xscb numeric(28,6)
    yy_xslr numeric(28,6)
    a_name nvarchar(32))";

constexpr std::string_view kReportCatalogue = R"(
    b_sn varchar(8)
    b_lx int
    b_lxmc nvarchar(8)
    b_name nvarchar(32)
    b_file varchar(32))";

constexpr std::string_view kPriceStaging = R"(
    hl_sn varchar(8)
    hl_name nvarchar(32)
    g_name nvarchar(128)
    sp_sj numeric(28,6)
    sp_dzll numeric(28,6)
    sp_zk numeric(28,6)
    sp_dxdz varchar(8)
    sp_zzzk numeric(28,6)
    sp_tjsp varchar(8)
    sp_tj numeric(28,6)
    sp_zzdj numeric(28,6)
    a_name nvarchar(32))";

constexpr std::string_view kPriceHistory = R"(
    g_sn varchar(32)
    tj_rq varchar(32)
    tj_nr varchar(255)
    a_name nvarchar(32))";

constexpr std::string_view kSummary = R"(
    g_sn varchar(32)
    hz_txt1 nvarchar(32)
    hz_txt2 nvarchar(32)
    id2 int
    hz_flag varchar(4)
    hz_kc numeric(28,6)
    hz_kczje numeric(28,6)
    hz_rksl numeric(28,6)
    hz_rkzje numeric(28,6)
    hz_cksl numeric(28,6)
    hz_ckzje numeric(28,6)
    hz_glkc numeric(28,6)
    hz_glkczje numeric(28,6)
    a_name nvarchar(32))";

constexpr TableDefinition kTables[] = {
    {"jxc_tempyyfx", kDayAnalysis}, {"jxc_bbgl", kReportCatalogue}, {"jxc_sptjtmp", kPriceStaging},
    {"jxc_sptjb", kPriceHistory},   {"jxc_jxchz", kSummary},
};

}  // namespace tables_statistics_detail

std::span<const TableDefinition> statisticsTables() {
  return tables_statistics_detail::kTables;
}

}  // namespace jxc::schema
