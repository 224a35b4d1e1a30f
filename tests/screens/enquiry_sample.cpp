// 示例查询: what was sold in a period, summed by goods; a sum leads to its lines, a line to its document. The page on
// adding an enquiry shows this file whole; tests hold for it as for every enquiry of the program.
#include "ui/enquiry_screen.h"

namespace jxc::enquiry_sample {

using ui::Asks;
using ui::ColumnKind;

Filter sold(const Criteria& criteria, const Warehouses& warehouses) {
  Filter filter;
  filter.add("gl_flag in ('xs','xt')");
  addPeriod(filter, criteria, "gl_kdrq");
  addKey(filter, criteria, {"g_sn", "g_name"});
  addChoice(filter, "g_sn", criteria.goods);  // of a sum that was followed
  warehouses.restrict(filter, "ck_sn");
  return filter;
}
Sql soldLines(const Criteria& criteria, const Warehouses& warehouses) {
  return Sql("select * from jxc_goodslist").where(sold(criteria, warehouses)).add(" order by gl_kdrq desc,id desc");
}
Sql soldByGoods(const Criteria& criteria, const Warehouses& warehouses) {
  return Sql(R"(select g_sn,max(g_name) as gname,sum(gl_sl) as sl,sum(gl_je) as je,sum(gl_lr) as lr
      from jxc_goodslist)")
      .where(sold(criteria, warehouses))
      .add(" group by g_sn order by g_sn");
}

constexpr ui::Criterion kCriteria[] = {{Asks::From, "tdate1", "日期："},
                                       {Asks::To, "tdate2", "至"},
                                       {Asks::Warehouse, "comCk", "仓库："},
                                       {Asks::Key, "tkey", "商品信息："},
                                       {Asks::Comparison, "comDb", "对比："}};
constexpr std::string_view kCompared[] = {"je"};
constexpr ui::ColumnSpec kSums[] = {{"g_sn", "商品编号"},
                                    {"gname", "商品名称", ColumnKind::Text, 24},
                                    {"sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
                                    {"je", "金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
                                    {"lr", "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesCost}};
constexpr ui::ColumnSpec kLines[] = {{"gl_kdrq", "日期", ColumnKind::Date},
                                     {"gl_djh", "单据号", ColumnKind::Text, 15},
                                     {"g_name", "商品名称", ColumnKind::Text, 24},
                                     {"ghs_name", "客户", ColumnKind::Text, 16},
                                     {"gl_sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
                                     {"gl_je", "金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice}};
constexpr ui::EnquiryView kViews[] = {
    {.grid = {"gridHz", "销售汇总", kSums, "这段时间没有销售", "g_sn"},
     .source = soldByGoods,
     .mode = {"rHzb", "汇总表"},
     .chart = {.label = "gname", .measure = "je"},
     .compares = kCompared,
     .leads = {"gridMx", [](Criteria& criteria, const Row& row) { criteria.goods = row.text("g_sn"); }, "gname"}},
    {.grid = {"gridMx", "销售明细", kLines, "这段时间没有销售"},
     .source = soldLines,
     .mode = {"rMxb", "明细表"},
     .leads = {.document = "gl_djh"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Sample", .title = "销售查询示例", .tabs = kTabs};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace jxc::enquiry_sample
