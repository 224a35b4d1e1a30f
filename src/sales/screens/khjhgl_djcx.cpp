// 借货查询: the third panel of 客户借货管理: loans and returns, what is still out, deposits by account; goods come
// back, or are kept, from here.
#include "core/refusal.h"
#include "core/text.h"
#include "sales/loan_enquiry.h"
#include "sales/screens/khjhgl_back.h"
#include "stock/screens/document_list_screen.h"

namespace jxc {
namespace khjhgl_djcx_detail {

using namespace document_list_screen;  // NOLINT(google-build-using-namespace): inside this file's own namespace
using Loans = List<"F_Khjhgl_Djcx", "借货查询", SeveralKinds | OfCustomers, loan_enquiry::Documents>;

constexpr std::string_view kOfLines = "gridMx gridZj", kAllButSums = "gridDj gridMx gridZj";

/// What is out is out, whenever it was lent: no period, no kind.
constexpr auto kCriteria = [] {
  auto criteria = Loans::kCriteria;
  for (ui::Criterion& each : criteria)
    if (each.asks == Asks::From || each.asks == Asks::To || each.asks == Asks::Kind) each.views = Loans::kOfDocuments;
  return criteria;
}();

constexpr ColumnSpec money(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Total, 9, {.sum = true}};
}
constexpr ColumnSpec pieces(std::string_view field, std::string_view caption) {
  return {field, caption, ColumnKind::Quantity, 7, {.sum = true}};
}
constexpr std::array kDocuments{
    ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
    ColumnSpec{"rq", "日期", ColumnKind::Date},
    ColumnSpec{"gtype", "单据类型", ColumnKind::Text, 8},
    ColumnSpec{"ghs_name", "客户", ColumnKind::Text, 18},
    ColumnSpec{"ck_name", "仓库", ColumnKind::Text, 10},
    money("yj", "押金"),
    money("zzj", "租金"),
    money("thyj", "退回押金"),
    ColumnSpec{
        .field = "zje", .caption = "成本金额", .kind = ColumnKind::Total, .use = {.sum = true}, .right = kSeesCost},
    ColumnSpec{"u_name", "经办人", ColumnKind::Text, 7},
    ColumnSpec{"dnote", "备注", ColumnKind::Text, 14},
    ColumnSpec{"checker", "审核人", ColumnKind::Text, 7},
    ColumnSpec{"chkrq", "审核日期", ColumnKind::Date},
    ColumnSpec{.field = "a_name", .caption = "操作员", .use = {.hidden = true}}};
constexpr auto kCost = std::array{
    ColumnSpec{
        .field = "jh_dj", .caption = "成本价", .kind = ColumnKind::Money, .use = {.hidden = true}, .right = kSeesCost},
    ColumnSpec{.field = "jh_zje",
               .caption = "成本金额",
               .kind = ColumnKind::Total,
               .use = {.sum = true, .hidden = true},
               .right = kSeesCost}};
/// What is seldom asked for leaves its room to the money; the operator may show it.
constexpr ColumnSpec seldom(ColumnSpec column) {
  column.use.hidden = true;
  return column;
}
constexpr auto kGoods = [] {
  auto columns = goodsNames;
  columns[3].use.hidden = columns[4].use.hidden = true;  // colour, unit
  return columns;
}();
constexpr auto kLines = ui::joinedTables(
    std::array{ColumnSpec{"rq", "日期", ColumnKind::Date}, ColumnSpec{"djh", "单据号", ColumnKind::Text, 15},
               ColumnSpec{"gtype", "单据类型", ColumnKind::Text, 8},
               ColumnSpec{"gl_djh2", "借货单号", ColumnKind::Text, 15},
               ColumnSpec{"kh_name", "客户", ColumnKind::Text, 14}},
    kGoods,
    std::array{pieces("jh_sl", "数量"), pieces("jh_hhsl", "已还"), pieces("jh_xssl", "转销售"),
               seldom(pieces("opensl", "未还")), money("jh_yj", "押金"),
               seldom(ColumnSpec{"jh_zj", "每天租金", ColumnKind::Money, 8}),
               ColumnSpec{"jh_ts", "天数", ColumnKind::Number, 5}, money("jh_zzj", "租金"),
               money("jh_thyj", "退回押金"), ColumnSpec{"jh_kmmc", "收款账户", ColumnKind::Text, 9},
               ColumnSpec{.field = "ck_name", .caption = "仓库", .use = {.hidden = true}},
               ColumnSpec{.field = "u_name", .caption = "经办人", .use = {.hidden = true}}},
    kCost);
constexpr auto kOpen = ui::joinedTables(
    std::array{ColumnSpec{"rq", "借货日期", ColumnKind::Date}, ColumnSpec{"djh", "借货单号", ColumnKind::Text, 15},
               ColumnSpec{"kh_name", "客户", ColumnKind::Text, 16}},
    kGoods,
    std::array{pieces("opensl", "未还"), ColumnSpec{"jcts", "借出天数", ColumnKind::Number, 7},
               money("heldyj", "在押押金"), money("ysje", "至今租金"),
               ColumnSpec{"jh_zj", "每天租金", ColumnKind::Money, 8}, money("jh_yj", "押金"),
               money("jh_yj2", "已收租金"), pieces("jh_sl", "借货数量"), seldom(pieces("jh_hhsl", "已还")),
               seldom(pieces("jh_xssl", "转销售")), ColumnSpec{"jh_kmmc", "收款账户", ColumnKind::Text, 9},
               ColumnSpec{.field = "ck_name", .caption = "仓库", .use = {.hidden = true}},
               ColumnSpec{.field = "u_name", .caption = "经办人", .use = {.hidden = true}}},
    kCost);
constexpr ColumnSpec kDeposits[] = {{"jh_kmmc", "收款账户", ColumnKind::Text, 24},
                                    {"num", "借货商品行数", ColumnKind::Number, 12, {.sum = true}},
                                    {"heldyj", "在押押金", ColumnKind::Total, 14, {.sum = true}},
                                    {"hqyj", "其中商品已还清", ColumnKind::Total, 14, {.sum = true}}};

void toAccount(Criteria& criteria, const Row& row) {
  criteria.account = row.text("jh_kmmc");
}

constexpr ui::EnquiryView kViews[] = {{.grid = {"gridDj", "单据表", kDocuments, "没有符合条件的单据", "rowkey"},
                                       .source = loan_enquiry::Documents::documents,
                                       .mode = Loans::kViews[0].mode,
                                       .leads = {.document = "djh"},
                                       .below = &Loans::kBelow,
                                       .rowLook = lookOf},
                                      {.grid = {"gridMx", "明细表", kLines, "没有符合条件的商品", "rowkey"},
                                       .source = loan_enquiry::lines,
                                       .mode = Loans::kViews[1].mode,
                                       .leads = {.document = "djh"},
                                       .paper = "khjhmxb"},
                                      {.grid = {"gridZj", "在借商品", kOpen, "没有借出未还的商品", "rowkey"},
                                       .source = loan_enquiry::open,
                                       .mode = {"rZj", "在借商品"},
                                       .leads = {.document = "djh"},
                                       .paper = "khjhdjb"},
                                      {.grid = {"gridYj", "在押押金", kDeposits, "没有在押的押金", "jh_kmmc"},
                                       .source = loan_enquiry::deposits,
                                       .mode = {"rYj", "在押押金"},
                                       .leads = {"gridZj", toAccount, "jh_kmmc"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews}};

constexpr Right kRight = {"rcgl", 4};
constexpr auto kCommands = ui::joinedTables(
    std::array{ui::EnquiryCommand{
                   .name = "btn_Khhh", .caption = "客户还货", .key = "F9", .right = kRight, .views = kAllButSums},
               ui::EnquiryCommand{.name = "btn_Jzxs",
                                  .caption = "借转销售",
                                  .key = "F12",
                                  .right = kRight,
                                  .views = kOfLines,
                                  .elsewhere = "商品还货操作只能在“明细表”进行。"}},
    [] {
      auto commands = Loans::kCommands;
      for (ui::EnquiryCommand& each : commands)
        if (each.name == "btn_UnChk") {
          each.name = "btn_unCheck";
          each.views = "gridDj";
          each.elsewhere = "取消审核操作只能在“单据表”进行。";
        }
      return commands;
    }());
constexpr ui::EnquirySpec kSpec = Loans::with(kTabs, kCommands);

class TF_Khjhgl_Djcx : public DocumentListScreen {
 public:
  TF_Khjhgl_Djcx() : DocumentListScreen(kSpec) {
    on(command("btn_Khhh"), [this] { bringBack(); });
    on(command("btn_Jzxs"), [this] { keep(); });
  }

 private:
  bool isOfLines() const { return shown().spec().name != "gridDj"; }
  std::int64_t currentLine() const {
    const auto row = shown().current();
    return row && isOfLines() ? row->integer("lid") : 0;
  }
  /// The whole loan from the list of documents, one line from a list of lines.
  void bringBack() {
    const QString number = currentNumber();
    if (number.isEmpty()) return;
    if (refused({{!number.startsWith(words(families::loan.prefix)), u"请选择借货单！"_qs}}, prompt())) return;
    if (bringLoanBack(number, currentLine())) rowsChanged();
  }
  void keep() {
    if (refused({{currentLine() == 0, u"商品还货操作只能在“明细表”进行。"_qs}}, prompt())) return;
    if (!currentNumber().startsWith(words(families::loan.prefix))) return;
    if (keepLoanAsSale(currentLine())) rowsChanged();
  }
};

const ui::RegisteredEnquiry<TF_Khjhgl_Djcx> kRegistered{kSpec};

}  // namespace khjhgl_djcx_detail
}  // namespace jxc
