#include "stock/screens/goods_enquiry.h"

#include "statistics/purchase_sale_stock.h"
#include "statistics/screens/movement_columns.h"
#include "stock/stock_alerts.h"
#include "ui/display.h"

namespace jxc {
namespace goods_enquiry_detail {

using ui::Asks;
using ui::ColumnKind;

constexpr std::string_view kMovements = "F_Kccx_Mx", kBatches = "F_Kccx_Pc";

constexpr ui::Criterion kMovementInputs[] = {
    {Asks::From, "tdate1", "日期："},
    {Asks::To, "tdate2", "至"},
    {Asks::Warehouse, "comCk", "仓库："},
    {.asks = Asks::Box, .name = "chkCbj", .label = "销售按成本价显示", .box = kAtCost, .right = kSeesPrice}};
constexpr auto kMovementColumns = movement_columns::ofOneGoods(kSeesStockCost);
constexpr ui::EnquiryView kMovementViews[] = {{.grid = {"gridMx", "库存明细", kMovementColumns, "该时间段内没有进出库"},
                                               .source = stockMovements,
                                               .leads = {.document = "gl_djh"},
                                               .paper = "jxctjmx",
                                               .cellLook = movement_columns::sideOf}};
constexpr ui::EnquiryTab kMovementTabs[] = {{.criteria = kMovementInputs, .views = kMovementViews}};
constexpr ui::EnquirySpec kMovementEnquiry = {.name = kMovements,
                                              .title = "商品库存明细表",
                                              .tabs = kMovementTabs,
                                              .first = ui::FirstPeriod::UntilToday,
                                              .focus = "gridMx"};

constexpr ui::Criterion kBatchInputs[] = {{Asks::Warehouse, "comCk", "仓库："}, {Asks::Key, "tkey", "批号："}};
constexpr ui::ColumnSpec kBatchColumns[] = {{"g_sn", "商品编号"},
                                            {"g_name", "商品名称", ColumnKind::Text, 28},
                                            {"t_ph", "批号", ColumnKind::Text, 18},
                                            {"t_scrq", "生产日期", ColumnKind::Date},
                                            {"t_yxq", "有效期", ColumnKind::Date},
                                            {"t_sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
                                            {"ck_name", "仓库"}};
constexpr ui::EnquiryView kBatchViews[] = {
    {.grid = {"gridPc", "商品批次", kBatchColumns, "没有批次信息：库存不按批次登记"}, .source = batches}};
constexpr ui::EnquiryTab kBatchTabs[] = {{.criteria = kBatchInputs, .views = kBatchViews}};
constexpr ui::EnquirySpec kBatchEnquiry = {.name = kBatches, .title = "商品批次信息", .tabs = kBatchTabs};

const ui::RegisteredEnquiry<GoodsEnquiry> kRegisteredMovements{kMovementEnquiry}, kRegisteredBatches{kBatchEnquiry};

void show(std::string_view screen, const Row& goods, const QString& warehouse) {
  ui::screenAs<GoodsEnquiry>(screen).showOf(goods.text("g_sn"), goods.text("g_name"), warehouse);
}

}  // namespace goods_enquiry_detail

void GoodsEnquiry::showOf(const QString& goods, const QString& name, const QString& warehouse) {
  goods_ = goods;
  warehouse_ = warehouse;
  setWindowTitle(ui::qs(enquiry().title) + u'(' + name + u')');
  showModal();
  goods_.clear();
  warehouse_.reset();
  setWindowTitle(ui::qs(enquiry().title));
}

void GoodsEnquiry::activate() {
  EnquiryScreen::activate();
  if (!warehouse_) return;
  // What was asked for of the goods before is none of this one's.
  resetInputs();
  if (!warehouse_->isEmpty()) field("comCk").setKey(*warehouse_);
  search();
}

void showMovements(const Row& goods, const QString& warehouse) {
  goods_enquiry_detail::show(goods_enquiry_detail::kMovements, goods, warehouse);
}

void showBatches(const Row& goods, const QString& warehouse) {
  goods_enquiry_detail::show(goods_enquiry_detail::kBatches, goods, warehouse);
}

}  // namespace jxc
