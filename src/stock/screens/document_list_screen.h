// 单据列表屏幕: the enquiry over documents of any set of families, audited ones and those that wait. A screen names its
// families and what it shows of them; a document's own screen has it as its third panel.
#pragma once

#include "masterdata/screens/goods_columns.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "stock/document_list.h"
#include "stock/screens/document_search.h"
#include "ui/enquiry_screen.h"
#include "ui/joined_tables.h"

#include <array>

namespace jxc {

/// View, print and cancel the documents of a list. What differs a derived screen binds.
class DocumentListScreen : public ui::EnquiryScreen {
 protected:
  /// `search`: the form of what is asked for beside the inputs.
  explicit DocumentListScreen(const ui::EnquirySpec& spec, std::string_view search = "F_Djcx_Cx");
  void complete(Criteria& criteria) const override;
  /// The number of the current row, of a document or of one of its lines; empty without.
  QString currentNumber() const;

 private:
  void printDocument();
  void printAll();
  void cancelAll();

  MoreConditions more_;
};

/// What a list has to show.
enum ListShape : unsigned {
  OneKind = 0,
  SeveralKinds = 1,    // the kind is asked for and told
  WithWaiting = 2,     // waiting documents stand among the others
  OfSuppliers = 4,     // a partner of this side
  OfCustomers = 8,     // both: a partner of either side
  WithMoney = 16,      // due, paid and open
  TwoWarehouses = 32,  // goods come from one and go to another
  Counts = 64,         // book and difference
  Wholes = 128,        // what is taken apart or put together; each of its lines has a warehouse
  Parts = 256          // parts of other documents: pieces, and no amounts
};

namespace document_list_screen {

using ui::Asks;
using ui::ColumnKind;
using ui::ColumnSpec;

std::vector<ListItem> orders();
/// "共 12 张：采购进货 10 张 12345.00，采购退货 2 张 -100.00": without amounts for who must not see them.
QString kindTotals(const ui::Grid& list);
ui::RowLook lookOf(const Row& document);
ui::RowLook lookOfLine(const Row& line);
void toLines(Criteria& criteria, const Row& document);
bool cancelRow(const Row& document, Prompt& prompt);

/// How a column of an amount is used.
enum class Amount : char { Shown, Hidden, OfOneDocument };

template <unsigned Shape>
struct Columns {
  static constexpr bool has(unsigned part) { return (Shape & part) != 0; }
  static constexpr bool mixesRights = has(OfCustomers) && has(OfSuppliers);
  static constexpr bool isTransfer = has(TwoWarehouses) && !has(SeveralKinds);
  /// Amounts of several kinds are withheld by kind, in the statement, and not added up.
  static constexpr Right seesMoney = mixesRights ? Right{} : has(OfCustomers) ? kSeesPrice : kSeesCost;
  static constexpr std::string_view partner = mixesRights        ? "往来单位"
                                              : has(OfCustomers) ? joined<PartnerText<PartnerType::Customer>::noun>
                                                                 : joined<PartnerText<PartnerType::Supplier>::noun>;
  static constexpr ColumnSpec amount(std::string_view field, std::string_view caption, Amount use) {
    return {.field = field,
            .caption = caption,
            .kind = ColumnKind::Total,
            .use = {.sum = !mixesRights || use == Amount::OfOneDocument, .hidden = use == Amount::Hidden},
            .right = seesMoney};
  }
  /// These columns, or none.
  template <bool On, class... Column>
  static constexpr auto when(const Column&... columns) {
    if constexpr (On)
      return std::array<ColumnSpec, sizeof...(Column)>{columns...};
    else
      return std::array<ColumnSpec, 0>{};
  }

  /// Lines with a partner leave out what is seldom asked for, so that their figures are in sight on a small display.
  static constexpr bool isBroad = has(OfSuppliers | OfCustomers);

  template <bool OfLines>
  static constexpr auto whose = ui::joinedTables(
      when<has(SeveralKinds)>(ColumnSpec{"gtype", "单据类型", ColumnKind::Text, 8}),
      when<has(WithWaiting)>(ColumnSpec{"zt", "状态", ColumnKind::Text, 6, {.hidden = OfLines}}),
      when<isBroad>(ColumnSpec{"ghs_name", partner, ColumnKind::Text, OfLines ? 12 : 18}),
      when<true>(ColumnSpec{"ck_name", isTransfer ? "调出仓库" : "仓库", ColumnKind::Text, 10}),
      when<has(TwoWarehouses)>(ColumnSpec{
          "ck_in", isTransfer ? "调入仓库" : "对方仓库", ColumnKind::Text, 10, {.hidden = OfLines && !isTransfer}}),
      when<has(Wholes)>(ColumnSpec{"zg_name", "拆分捆绑商品", ColumnKind::Text, 22},
                        ColumnSpec{"zg_sl", "拆分捆绑数量", ColumnKind::Quantity, 10}));

  static constexpr auto documents = ui::joinedTables(
      when<true>(ColumnSpec{"djh", "单据号", ColumnKind::Text, 15}, ColumnSpec{"rq", "日期", ColumnKind::Date}),
      whose<false>,
      when<has(WithMoney)>(amount("yfje", has(OfCustomers) ? "应收金额" : "应付金额", Amount::Shown),
                           amount("sfje", has(OfCustomers) ? "实收金额" : "实付金额", Amount::Shown),
                           amount("yhje", "优惠金额", Amount::Hidden),
                           amount("hkje", has(OfCustomers) ? "收款金额" : "付款金额", Amount::Shown),
                           amount("wfje", has(OfCustomers) ? "未收金额" : "未付金额", Amount::Shown)),
      when<has(Parts)>(ColumnSpec{"zsl", "数量", ColumnKind::Quantity, 9, {.sum = true}}),
      when<!has(WithMoney) && !has(Parts)>(amount("zje", has(Counts) ? "差异金额" : "金额", Amount::Shown)),
      when<true>(ColumnSpec{"u_name", "经办人", ColumnKind::Text, 7}, ColumnSpec{"dnote", "备注", ColumnKind::Text, 14},
                 ColumnSpec{"checker", "审核人", ColumnKind::Text, 7},
                 ColumnSpec{"chkrq", "审核日期", ColumnKind::Date},
                 ColumnSpec{.field = "a_name", .caption = "操作员", .use = {.hidden = true}}),
      when<has(WithMoney)>(ColumnSpec{.field = "j_sn2", .caption = "原始单号", .use = {.hidden = true}},
                           ColumnSpec{.field = "fpno", .caption = "发票号码", .use = {.hidden = true}},
                           amount("yf", "运费", Amount::Hidden), amount("bzf", "包装费", Amount::Hidden),
                           ColumnSpec{.field = "yffs", .caption = "运费付款方", .use = {.hidden = true}}));

  static constexpr auto named(bool ofOne) {
    auto columns = goodsNames;
    columns.back().use.hidden = isBroad && !ofOne;  // pieces, pairs, boxes
    return columns;
  }
  /// The goods of one document, or of all.
  template <bool OfOne>
  static constexpr auto goods = ui::joinedTables(
      named(OfOne), when<has(Counts)>(ColumnSpec{"zmsl", "帐面数量", ColumnKind::Quantity, 8, {.sum = true}}),
      std::array{ColumnSpec{"gl_sl", has(Counts) ? "盘点数量" : "数量", ColumnKind::Quantity, 8, {.sum = true}}},
      when<has(Counts)>(ColumnSpec{"cysl", "差异数量", ColumnKind::Quantity, 8, {.sum = true}}),
      when<has(Parts)>(ColumnSpec{"gl_djh2", "原单号", ColumnKind::Text, 15}),
      when<!has(Parts)>(ColumnSpec{.field = "gl_dj", .caption = "单价", .kind = ColumnKind::Money, .right = seesMoney}),
      when<has(WithMoney)>(amount("gl_je", "金额", OfOne ? Amount::OfOneDocument : Amount::Hidden),
                           amount("gl_taxje", "税额", OfOne ? Amount::OfOneDocument : Amount::Hidden)),
      when<!has(Parts)>(amount("gl_zje",
                               has(Counts)      ? "差异金额"
                               : has(WithMoney) ? "总金额"
                                                : "金额",
                               OfOne ? Amount::OfOneDocument : Amount::Shown)),
      std::array{ColumnSpec{"gl_bz", "备注", ColumnKind::Text, 14, {.hidden = isBroad && !OfOne}},
                 ColumnSpec{.field = "t_ph", .caption = "批号", .use = {.hidden = true}},
                 ColumnSpec{.field = "t_yxq", .caption = "有效期", .use = {.hidden = true}}},
      when<has(Wholes)>(ColumnSpec{"ck_in", "明细仓库", ColumnKind::Text, 10}));
  static constexpr auto lines = ui::joinedTables(
      std::array{ColumnSpec{"rq", "日期", ColumnKind::Date}, ColumnSpec{"djh", "单据号", ColumnKind::Text, 15}},
      whose<true>, goods<false>);
};

/// A list of the documents of a set, as an enquiry. `Paper` is the template of its lines, or empty.
template <FixedText Name, FixedText Title, unsigned Shape, class Set, FixedText Paper = "">
struct List {
  using Shown = Columns<Shape>;
  static constexpr bool has(unsigned part) { return (Shape & part) != 0; }
  template <bool On, class... Input>
  static constexpr auto when(const Input&... inputs) {
    if constexpr (On)
      return std::array<ui::Criterion, sizeof...(Input)>{inputs...};
    else
      return std::array<ui::Criterion, 0>{};
  }
  static constexpr std::string_view kOfDocuments = "gridDj gridMx";
  static constexpr bool isOneSide = has(OfSuppliers) != has(OfCustomers);
  static constexpr auto kCriteria = ui::joinedTables(
      std::array{ui::Criterion{Asks::From, "tdate1", "日期："}, ui::Criterion{Asks::To, "tdate2", "至"},
                 ui::Criterion{Asks::Key, "tkey", "查找："}},
      when<has(SeveralKinds)>(ui::Criterion{Asks::Kind, "comLx", "单据类型：", Set::kinds}),
      std::array{ui::Criterion{Asks::Warehouse, "comCk", "仓库："}},
      when<isOneSide>(ui::Criterion{.asks = Asks::Partner,
                                    .name = "tGhs",
                                    .label = has(OfCustomers) ? "客户：" : "供货商：",
                                    .pick = has(OfCustomers) ? pickCustomer : pickSupplier}),
      std::array{ui::Criterion{
                     .asks = Asks::Order, .name = "comSort", .label = "排序：", .items = orders, .views = kOfDocuments},
                 ui::Criterion{
                     .asks = Asks::Descending, .name = "chkDesc", .label = "倒序", .on = true, .views = kOfDocuments}},
      when<has(WithMoney)>(ui::Criterion{
          .asks = Asks::Box, .name = "chkQk", .label = "只看欠款单据", .box = kUnpaidOnly, .views = kOfDocuments}),
      when<has(WithWaiting)>(
          ui::Criterion{.asks = Asks::Box, .name = "chkDsh", .label = "包括待审核", .box = kWaitingToo, .on = true},
          ui::Criterion{.asks = Asks::Box, .name = "chkZdsh", .label = "只看待审核", .box = kWaitingOnly}));
  static constexpr ui::RowsBelow kBelow = {
      .grid = {"gridDjMx", "单据商品", Shown::template goods<true>, "选择上面的单据，这里显示它的商品", "rowkey"},
      .source = Set::lines,
      .narrow = toLines};
  static constexpr std::array kViews{
      ui::EnquiryView{.grid = {"gridDj", "单据表", Shown::documents, "没有符合条件的单据", "rowkey"},
                      .source = Set::documents,
                      .mode = {"rDjb", "单据表"},
                      .leads = {.document = "djh"},
                      .below = &kBelow,
                      .rowLook = lookOf,
                      .foot = {"lHj", has(SeveralKinds) ? kindTotals : nullptr}},
      ui::EnquiryView{.grid = {"gridMx", "明细表", Shown::lines, "没有符合条件的商品", "rowkey"},
                      .source = Set::lines,
                      .mode = {"rMxb", "明细表"},
                      .leads = {.document = "djh"},
                      .paper = joined<Paper>,
                      .rowLook = lookOfLine}};
  static constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews}};
  static constexpr std::array kCommands{
      ui::EnquiryCommand{.name = "btn_Cx", .caption = "高级查询", .key = "F3"},
      ui::EnquiryCommand{.name = "btn_ChaKan", .caption = "查看单据", .key = "F8", .views = kOfDocuments},
      ui::EnquiryCommand{.name = "btn_Dydj", .caption = "打印单据", .key = "Ctrl+P", .views = kOfDocuments},
      ui::EnquiryCommand{.name = "btn_UnChk",
                         .caption = "取消审核",
                         .key = "F6",
                         .views = kOfDocuments,
                         .rule = cancelRow,
                         .preview = {"btn_Preview", "取消审核单据", "djh"}},
      ui::EnquiryCommand{.name = "btn_UnChkAll", .caption = "取消全部", .views = "gridDj"},
      ui::EnquiryCommand{.name = "btn_Lxdy", .caption = "连续打印", .views = "gridDj"}};
  /// The enquiry with these views and commands.
  static constexpr ui::EnquirySpec with(std::span<const ui::EnquiryTab> tabs,
                                        std::span<const ui::EnquiryCommand> commands) {
    return {.name = joined<Name>,
            .title = joined<Title>,
            .tabs = tabs,
            .commands = commands,
            .focus = "tkey",
            .printKey = "F7"};
  }
  static constexpr ui::EnquirySpec kSpec = with(kTabs, kCommands);

  /// The screen of a list that needs no command of its own.
  template <FixedText Search = "F_Djcx_Cx">
  struct Screen : DocumentListScreen {
    Screen() : DocumentListScreen(kSpec, joined<Search>) {}
  };
};

}  // namespace document_list_screen
}  // namespace jxc
