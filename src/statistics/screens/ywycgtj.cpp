// 业务员采购统计: by which documents each employee bought, what is open of them, and the goods.
#include "statistics/employee_totals.h"
#include "statistics/screens/employee_trade.h"
#include "stock/document_list.h"

namespace jxc {
namespace ywycgtj_detail {

using namespace employee_trade;

using Purchases = DocumentSet<families::purchaseReceipt, families::purchaseReturn>;

constexpr ColumnSpec yuan(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Total, 0, {.sum = true}, kSeesCost};
}
constexpr std::array kAmounts{yuan("yfje", "应付金额"), yuan("sfje", "实付金额"), yuan("yhje", "优惠金额"),
                              yuan("hkje", "后付金额"), yuan("wfje", "未付金额")};
constexpr auto kEmployees = ui::joinedTables(
    employeeNames, std::array{ColumnSpec{"djs", "单据数", ColumnKind::Quantity, 8, {.sum = true}}}, kAmounts);
constexpr auto kDocuments = ui::joinedTables(
    std::array{ColumnSpec{"rq", "日期", ColumnKind::Date}, ColumnSpec{"gtype", "单据类型"},
               ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"ghs_name", "供货商", ColumnKind::Text, 18}},
    kAmounts, std::array{ColumnSpec{"ck_name", "仓库"}, employeeNames[1], ColumnSpec{"dnote", "备注"}});

constexpr ui::Criterion kInputs[] = {
    {Asks::From, "tdate11", "日期："},
    {Asks::To, "tdate12", "至"},
    {.asks = Asks::Partner, .name = "tGhs1", .label = "供货商：", .pick = pickPartner<PartnerType::Supplier>},
    {Asks::Key, "tkey1", "单号备注："},
    {Asks::Warehouse, "comCk1", "仓库："},
    {Asks::Kind, "comLx1", "类型：", Purchases::kinds},
    employee<"1">};
constexpr std::string_view kNothing = nothingTraded<PartnerType::Supplier>;
constexpr ui::EnquiryView kViews[] = {{.grid = {"gridYwy1", "业务员采购", kEmployees, kNothing, "u_sn"},
                                       .source = purchasesByEmployee,
                                       .mode = {"rYwy1", "按业务员"},
                                       .chart = {.label = "u_name", .measure = "yfje"},
                                       .leads = {"gridDj", narrowTo<TradeBy::Employee>, "u_name"}},
                                      {.grid = {"gridDj", "业务员采购单据", kDocuments, kNothing, "rowkey"},
                                       .source = Purchases::documents,
                                       .mode = {"rDj1", "单据明细"},
                                       .leads = {.document = "djh"}}};
constexpr ui::EnquiryTab kTabs[] = {tab<"1">("采购单据", kInputs, kViews), Trade<PartnerType::Supplier, "2">::kTab};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Ywycgtj", .title = "业务员采购统计", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace ywycgtj_detail
}  // namespace jxc
