// 当前库存查询: what stands in the warehouses now, and lenses by their powers.
#include "masterdata/goods_classes.h"
#include "masterdata/goods_lenses.h"
#include "stock/screens/lens_pane.h"
#include "stock/stock_enquiry.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace kccx_detail {

using ui::Asks;
using ui::ColumnKind;

constexpr ui::Criterion kStockCriteria[] = {
    {Asks::Warehouse, "comCk", "仓库：", fillOwnWarehouses},
    {Asks::GoodsClass, "tsplb", "商品类别：", goodsClassItems},
    {Asks::Key, "tkey", "商品信息："},
    {.asks = Asks::Box, .name = "chk0", .label = "不显示库存为零的商品", .box = kHidesZeroStock},
    {.asks = Asks::Box, .name = "chkJy", .label = "显示禁用商品", .box = kWithDisabledGoods},
};
constexpr ui::Criterion kLensCriteria[] = {
    {Asks::Warehouse, "comCk4", "仓库：", fillOwnWarehouses},
    {Asks::Key, "tKey4", "镜片信息："},
};
constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称", ColumnKind::Text, 24},
    {"g_qgd", "屈光度", ColumnKind::Power, 8},
    {"g_sgd", "散光度", ColumnKind::Power, 8},
    {"gc_name", "类别"},
    {"gg_name", "规格型号"},
    {"color_name", "颜色"},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"kcsl", "当前库存", ColumnKind::Quantity, 0, {.sum = true}},
    {"kczsl", "帐面库存(含未入库)", ColumnKind::Quantity, 0, {.sum = true}},
    {"xssl", "销售总数", ColumnKind::Quantity, 0, {.sum = true}},
    {.field = "g_scjj", .caption = "上次进价", .kind = ColumnKind::Money, .right = kSeesStockCost},
    {.field = "cbjj", .caption = "成本均价", .kind = ColumnKind::Money, .right = kSeesStockCost},
    {"kczje", "库存总值", ColumnKind::Total, 0, {.sum = true}, kSeesStockCost},
    {.field = "g_sj", .caption = "预设售价", .kind = ColumnKind::Money, .right = kSeesPrice},
    {"xszje", "售价总值", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
    {.field = "fzkc", .caption = "辅助单位库存", .kind = ColumnKind::Quantity, .use = {.hidden = true}},
    {.field = "g_sptm", .caption = "商品条码", .use = {.hidden = true}},
    {.field = "g_sccs", .caption = "商品产地", .use = {.hidden = true}},
};
constexpr ui::ColumnSpec kProductColumns[] = {{"g_qc", "商品名称", ColumnKind::Text, 40}};
constexpr ui::ColumnSpec kLensColumns[] = {{"g_name", "镜片名称", ColumnKind::Text, 40}};

constexpr ui::EnquiryView kStock[] = {{.grid = {"gridKc", "当前库存", kColumns, "没有符合条件的商品", "id", "kccx"},
                                       .source = currentStock,
                                       .chart = {.label = "g_name", .measure = "kcsl"},
                                       .paper = "kccx"}};
// By name each article of a range is a table of one cell: the product is proposed.
constexpr ui::EnquiryView kLenses[] = {{.grid = {"gridCp4", "镜片商品", kProductColumns, "没有符合条件的镜片", "g_qc"},
                                        .source = lensProducts,
                                        .mode = {"rCp4", "按商品名称"},
                                        .beside = makeProductPane},
                                       {.grid = {"gridJp4", "镜片", kLensColumns, "没有符合条件的镜片", "g_name"},
                                        .source = lensNames,
                                        .mode = {"rJp4", "按镜片全名"},
                                        .beside = makeLensPane}};
constexpr ui::EnquiryCommand kStockCommands[] = {{"btnCx", "查找", "F3"}, {"btnAll", "全部", "F4"}};
constexpr ui::EnquiryTab kTabs[] = {
    {.name = "cxTab1",
     .caption = "当前库存",
     .criteria = kStockCriteria,
     .views = kStock,
     .commands = kStockCommands,
     .search = "btnCx1"},
    {.name = "cxTab4", .caption = "镜片明细查询", .criteria = kLensCriteria, .views = kLenses, .search = "btnCx4"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Kccx", .title = "当前库存查询", .tabs = kTabs, .focus = "tkey"};

}  // namespace kccx_detail

class TF_Kccx : public ui::EnquiryScreen {
 public:
  TF_Kccx() : EnquiryScreen(kccx_detail::kEnquiry) {
    on(command("btnCx"), [this] {
      ui::Screen& dialog = ui::screenNamed("F_Kccx_Cx");
      if (!dialog.showModal()) return;
      field("comCk").setKey(dialog.field("comCk").key());
      chosen_ = {.partner = dialog.field("comGhs").key(),
                 .kind = dialog.field("comBj").key(),
                 .amount = dialog.field("tsl").number()};
      search();
    });
    on(command("btnAll"), [this] {
      field("tkey").clear();
      field("tsplb").setIndex(0);
      chosen_ = {};
      search();
    });
  }

 protected:
  void complete(Criteria& criteria) const override {
    criteria.partner = chosen_.partner;
    criteria.kind = chosen_.kind;
    criteria.amount = chosen_.amount;
  }

 private:
  Criteria chosen_;  // in the dialog
};

namespace kccx_detail {
const ui::RegisteredEnquiry<TF_Kccx> kRegistered{kEnquiry};
}  // namespace kccx_detail

}  // namespace jxc
