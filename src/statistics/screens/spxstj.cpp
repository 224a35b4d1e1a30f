// 商品销售统计: what was sold, as lines, by goods and class; by supplier, beside what was bought; by customer.
#include "statistics/screens/spxstj_fx.h"
#include "statistics/screens/trade_columns.h"
#include "statistics/screens/trade_screen.h"

namespace jxc {
namespace spxstj_detail {

using namespace trade_columns;

constexpr auto kSide = PartnerType::Customer;

// ---- 按供货商统计 ----

constexpr ui::Criterion kSupplierInputs[] = {
    {Asks::From, "tdate21", "日期："},
    {Asks::To, "tdate22", "至"},
    {.asks = Asks::Partner, .name = "tGhs2", .label = "供货商：", .pick = pickSupplier},
    {Asks::Key, "tkey2", "商品信息："},
    {Asks::GoodsClass, "tsplb2", "商品类别：", goodsClassItems},
    {Asks::Warehouse, "comCk2", "仓库："},
    {.asks = Asks::Box, .name = "chkAll2", .label = "包括没有进销的供货商", .box = kEverySupplier, .views = "gridGhs"}};
/// Whose it is, is said where suppliers stand beside each other: the one of the document, or the one of the goods.
constexpr auto boughtAndSold(bool ofSuppliers) {
  return std::array{
      ColumnSpec{"jhsl", ofSuppliers ? "进货数量(单据)" : "进货数量", ColumnKind::Quantity, 8, {.sum = true}},
      ColumnSpec{"jhje", ofSuppliers ? "进货金额(单据)" : "进货金额", ColumnKind::Total, 0, {.sum = true}, kSeesCost},
      ColumnSpec{"xssl", ofSuppliers ? "销售数量(商品)" : "销售数量", ColumnKind::Quantity, 8, {.sum = true}},
      ColumnSpec{"xsje", ofSuppliers ? "销售金额(商品)" : "销售金额", ColumnKind::Total, 0, {.sum = true}, kSeesPrice},
      ColumnSpec{"zcb", "成本", ColumnKind::Total, 0, {.sum = true}, kSeesCost},
      ColumnSpec{"lr", "毛利", ColumnKind::Total, 0, {.sum = true}, kSeesProfit},
      ColumnSpec{
          .field = "lrl", .caption = "毛利率(%)", .kind = ColumnKind::Percent, .width = 8, .right = kSeesProfit}};
}
constexpr std::array kCompletion{ColumnSpec{"wcl", "销售完成率(%)", ColumnKind::Percent, 10}};
constexpr auto kSuppliers = ui::joinedTables(
    std::array{ColumnSpec{"ghs_sn", "供货商编号"}, ColumnSpec{"ghs_name", "供货商", ColumnKind::Text, 24}},
    boughtAndSold(true), kCompletion);
constexpr auto kSupplierGoods = ui::joinedTables(goodsNames, boughtAndSold(false), kCompletion);
constexpr auto kSupplierLines = ui::joinedTables(
    std::array{ColumnSpec{"gl_kdrq", "日期", ColumnKind::Date}, ColumnSpec{"gl_djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"ghs_name", "往来单位", ColumnKind::Text, 14}},
    goodsNamesNoColour, boughtAndSold(false),
    std::array{ColumnSpec{.field = "ck_name", .caption = "仓库", .use = {.hidden = true}},
               ColumnSpec{.field = "u_name", .caption = "经办人", .use = {.hidden = true}}});
constexpr ui::RowsBelow kLinesOfSupplier = {.grid = {"gridSub2", "供货商商品明细", kSupplierLines, "没有进货和销售"},
                                            .source = supplierLines,
                                            .narrow = narrowTo<TradeBy::Partner>,
                                            .document = "gl_djh",
                                            .mode = {"rSub2", "商品明细"}};
constexpr ui::RowsBelow kGoodsOfSupplier = {
    .grid = {"gridSub1", "供货商商品汇总", kSupplierGoods, "没有进货和销售", "g_sn"},
    .source = supplierGoods,
    .narrow = narrowTo<TradeBy::Partner>,
    .mode = {"rSub1", "商品汇总"},
    .next = &kLinesOfSupplier};
constexpr ui::EnquiryView kSupplierViews[] = {
    {.grid = {"gridGhs", "按供货商统计", kSuppliers, "该时间段内没有进货和销售", "ghs_sn"},
     .source = supplierTrade,
     .mode = {"rGhs", "供货商"},
     .chart = {.label = "ghs_name", .measure = "xsje"},
     .leads = {"gridMx2", narrowTo<TradeBy::Partner>, "ghs_name"},
     .below = &kGoodsOfSupplier},
    {.grid = {"gridMx2", "供货商进销明细", kSupplierLines, "该时间段内没有进货和销售"},
     .source = supplierLines,
     .mode = {"rMx2", "明细表"},
     .leads = {.document = "gl_djh"}}};

// ---- 商品销售统计表, 按客户统计 ----

constexpr auto kClasses = sums<kSide, classColumns>, kCustomers = sums<kSide, partnerColumns<kSide>>;
constexpr auto kCustomerClasses =
    ui::joinedTables(partnerColumns<kSide>, std::array{classColumns[1]}, figures<kSide, "">());
constexpr ui::EnquiryView kGoodsViews[] = {
    lineView<kSide>("gridMx1", "rMx1", "销售商品明细表"),
    sumView<kSide, TradeBy::Goods>("gridHz", "rHz", "销售商品汇总表", goodsSums<kSide>, "g_sn", "g_name", "gridMx1"),
    sumView<kSide, TradeBy::GoodsClass>("gridFl", "rFl", "销售商品分类统计表", kClasses, "gc_sn", "gc_name", "gridHz")};
constexpr ui::EnquiryView kCustomerViews[] = {
    sumView<kSide, TradeBy::Partner>("gridKh", "rKh", "按客户", kCustomers, "ghs_sn", "ghs_name", "gridMx3"),
    sumView<kSide, TradeBy::PartnerClass>("gridKhFl", "rKhFl", "按客户和商品类别", kCustomerClasses, "rowkey",
                                          "ghs_name", "gridMx3"),
    lineView<kSide>("gridMx3", "rMx3")};

constexpr ui::EnquiryTab kTabs[] = {tab<"1">("商品销售统计表", inputs<kSide, "1", false>, kGoodsViews),
                                    tab<"2">("按供货商统计", kSupplierInputs, kSupplierViews),
                                    tab<"3">("按客户统计", inputs<kSide, "3", false>, kCustomerViews)};
constexpr ui::EnquiryCommand kCommands[] = {
    furtherConditions,
    {.name = "btn_Fx", .caption = "分析", .key = "F6"},
    {.name = "btn_FxHang", .caption = "分析所选", .key = "F7", .views = "gridHz gridFl gridGhs gridKh gridKhFl"}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Spxstj", .title = "商品销售统计", .tabs = kTabs, .commands = kCommands};

class TF_Spxstj : public TradeScreen {
 public:
  TF_Spxstj() : TradeScreen(kEnquiry) {
    on(command("btn_Fx"), [this] { analyse({criteria(), {}}); });
    on(command("btn_FxHang"), [this] { analyse(criteriaOfRow()); });
  }

 private:
  void analyse(const std::pair<Criteria, QString>& asked) {
    const bool ofSupplier = shown().spec().name == "gridGhs" || shown().spec().name == "gridMx2";
    ui::screenAs<TF_Spxstj_Fx>("F_Spxstj_Fx")
        .analyse(ofSupplier ? salesOfSupplier(asked.first) : asked.first, asked.second);
  }
};

const ui::RegisteredEnquiry<TF_Spxstj> kRegistered{kEnquiry};

}  // namespace spxstj_detail
}  // namespace jxc
