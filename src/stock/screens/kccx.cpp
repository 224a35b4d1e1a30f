// 当前库存查询: what stands in the warehouses now, what stood there at the end of a day, where one goods stands, and
// lenses by their powers.
#include "masterdata/goods_lenses.h"
#include "stock/screens/goods_enquiry.h"
#include "stock/screens/kccx_goods.h"
#include "stock/screens/kccx_jj.h"
#include "stock/screens/kccx_stock.h"
#include "stock/screens/lens_pane.h"

namespace jxc {
namespace kccx_detail {

using ui::Asks;
using ui::ColumnKind;

constexpr ui::Criterion kLensCriteria[] = {
    {Asks::Warehouse, "comCk4", "仓库：", fillOwnWarehouses},
    {Asks::Key, "tKey4", "镜片信息："},
};
constexpr ui::ColumnSpec kProductColumns[] = {{"g_qc", "商品名称", ColumnKind::Text, 40}};
constexpr ui::ColumnSpec kLensColumns[] = {{"g_name", "镜片名称", ColumnKind::Text, 40}};

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
constexpr std::string_view kOfGoods = "gridKc gridLs gridSp3";
constexpr Right kChangesAverage{.group = "kcgl", .position = 17, .andCost = true};
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Ckmx", .caption = "查看明细", .key = "F8", .views = kOfGoods},
    {.name = "btnKchd", .caption = "库存核对", .key = "F7", .right = {"kcgl", 16}, .opens = "F_kccx_Hd"},
    {.name = "btn_Xgjj", .caption = "修改均价", .key = "F6", .right = kChangesAverage, .views = "gridKc"}};
constexpr ui::EnquiryTab kTabs[] = {
    {.name = "cxTab1",
     .caption = "当前库存",
     .criteria = kccx_stock::inputs,
     .views = kccx_stock::views,
     .commands = kStockCommands,
     .search = "btnCx1"},
    {.name = "cxTab2",
     .caption = "历史库存",
     .criteria = kccx_stock::historyInputs,
     .views = kccx_stock::historyViews,
     .search = "btnCx2"},
    {.name = "cxTab3",
     .caption = "商品信息",
     .criteria = kccx_goods::inputs,
     .views = kccx_goods::views,
     .search = "btnCx3"},
    {.name = "cxTab4", .caption = "镜片明细查询", .criteria = kLensCriteria, .views = kLenses, .search = "btnCx4"}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Kccx", .title = "当前库存查询", .tabs = kTabs, .commands = kCommands, .focus = "tkey"};

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
    on(command("btn_Ckmx"), [this] {
      if (const auto row = shown().current()) showMovements(*row, criteria().warehouse);
    });
    on(command("btn_Xgjj"), [this] {
      const auto row = shown().current();
      if (row && changeAverageOf(*row, criteria().warehouse)) rowsChanged();
    });
  }

 protected:
  void complete(Criteria& criteria) const override {
    if (shown().spec().name != "gridKc") return;
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
