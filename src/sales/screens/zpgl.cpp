// 赠品管理: goods that members get for points, in use and not, and what they redeemed.
#include "masterdata/gifts.h"
#include "stock/screens/goods_figure_screen.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace zpgl_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kPointFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tjf", "兑换积分：", FieldKind::Quantity, "jxc_goods.g_zpjf"},
};
constexpr ui::CommandSpec kPointCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kPoints = {
    .name = "F_Zpgl_Sele", .title = "赠品积分", .fields = kPointFields, .commands = kPointCommands, .focus = "tjf"};

/// The points of one goods; with them it is in use.
class TF_Zpgl_Sele : public GoodsFigureScreen {
 public:
  TF_Zpgl_Sele() : GoodsFigureScreen(kPoints) { panel().form({"tname", "tjf"}).buttons("| btnOK btnCancel"); }
  bool edit(const Row& row) {
    field("tjf").setNumber(row.number("g_zpjf"));
    return ask(row);
  }

 private:
  bool change(Prompt& asked) override { return gifts::use(id(), field("tjf").number(), asked); }
};

constexpr ui::ColumnSpec kGoods[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 12},
    {"g_name", "商品名称", ColumnKind::Text, 30},
    {"gg_name", "规格型号", ColumnKind::Text, 16},
    {"color_name", "颜色", ColumnKind::Text, 8},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"g_kc", "当前库存", ColumnKind::Quantity},
    {"g_sj", "预设售价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_zpjf", "兑换积分", ColumnKind::Quantity},
};
constexpr ui::ColumnSpec kRedeemed[] = {
    {"rq", "兑换时间", ColumnKind::Date, 18},
    {"gl_djh", "单据号", ColumnKind::Text, 15},
    {"hy_bh", "会员卡号", ColumnKind::Text, 12},
    {"hy_name", "会员姓名", ColumnKind::Text, 10},
    {"g_sn", "赠品编号", ColumnKind::Text, 12},
    {"spmc", "赠品名称", ColumnKind::Text, 26},
    {"dh_sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
    {"dh_zpjf", "单件积分", ColumnKind::Quantity},
    {"dh_jf", "积分合计", ColumnKind::Quantity, 0, {.sum = true}},
    {"a_name", "操作员", ColumnKind::Text, 8},
};
constexpr ui::Criterion kGoodsCriteria[] = {{Asks::Key, "tkey1", "商品信息："}};
constexpr ui::Criterion kRedeemedCriteria[] = {{Asks::From, "tdate1", "日期："},
                                               {Asks::To, "tdate2", "至"},
                                               {Asks::Warehouse, "comCk", "仓库："},
                                               {Asks::Key, "tkey2", "会员、赠品或单据："}};

constexpr NoWarehouse kOfTheShop{"which goods are gifts holds for the whole shop"};

constexpr ui::EnquiryView kGoodsViews[] = {
    {.grid = {"gridSy", "使用中的赠品", kGoods, "没有使用中的赠品，在“未使用的赠品”中按F4启用"},
     .source = {gifts::goodsInUse, kOfTheShop},
     .mode = {"rSy", "使用中的赠品"},
     .leads = {.command = "btn_Sele"}},
    {.grid = {"gridWsy", "未使用的赠品", kGoods, "没有未使用的赠品，在商品信息中勾选“该商品可作为赠品”"},
     .source = {gifts::goodsNotInUse, kOfTheShop},
     .mode = {"rWsy", "未使用的赠品"},
     .leads = {.command = "btn_Sele"}}};
constexpr ui::EnquiryView kRedeemedViews[] = {
    {.grid = {"gridDh", "兑换记录", kRedeemed, "该时间段内没有兑换"}, .source = gifts::redemptions}};

bool stop(const Row& row, Prompt&) {
  gifts::stopUsing(row.integer("id"));
  return true;
}
bool edit(const Row& row, Prompt&) {
  return ui::screenAs<TF_Zpgl_Sele>("F_Zpgl_Sele").edit(row);
}
constexpr ui::EnquiryCommand kGoodsCommands[] = {
    {.name = "btn_Sele", .caption = "设置积分", .key = "F4", .rule = edit},
    {.name = "btn_Stop", .caption = "取消使用", .key = "Ctrl+D", .views = "gridSy", .rule = stop}};

constexpr ui::EnquiryTab kTabs[] = {{.name = "cxTab1",
                                     .caption = "商品赠品",
                                     .criteria = kGoodsCriteria,
                                     .views = kGoodsViews,
                                     .commands = kGoodsCommands,
                                     .search = "btnSearch1"},
                                    {.name = "cxTab2",
                                     .caption = "兑换记录",
                                     .criteria = kRedeemedCriteria,
                                     .views = kRedeemedViews,
                                     .search = "btnSearch2",
                                     .period = "btnDate2"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Zpgl", .title = "赠品管理", .tabs = kTabs, .focus = "tkey1"};

const ui::Registered<TF_Zpgl_Sele> kRegisteredPoints{"F_Zpgl_Sele"};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace zpgl_detail
}  // namespace jxc
