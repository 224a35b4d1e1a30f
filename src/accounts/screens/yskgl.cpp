// 应收应付帐表: what each partner owed, what came and went in a period, and what is owed at its end.
#include "accounts/partner_overview.h"
#include "accounts/screens/document_goods.h"
#include "accounts/screens/partner_overview_screens.h"
#include "accounts/settling.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace yskgl_detail {

using ui::Asks;
using ui::ColumnKind;
using namespace partner_books;

std::vector<ListItem> employees() {
  return fillKeyedCombo("jxc_user", "u_name", QStringLiteral("所有经办人"), "id", "u_sn");
}

template <PartnerType Side>
struct Overview {
  using Text = PartnerText<Side>;
  static constexpr bool isCustomer = Side == PartnerType::Customer;

  static constexpr ui::Criterion criteria[] = {
      {Asks::From, "tdate11", "日期："},
      {Asks::To, "tdate12", "至"},
      {.asks = Asks::Partner, .name = "tKhName1", .label = joined<Text::noun, "：">, .pick = pickPartner<Side>},
      {Asks::Employee, "comUser", "经办人：", employees},
      {Asks::Key, "tkey", "查找："},
      {.asks = Asks::Box,
       .name = "chkZero",
       .label = joined<"期末", Text::owed, "为零的", Text::noun, "不显示">,
       .box = kHidesSettled},
      {.asks = Asks::Box, .name = "chkAll", .label = joined<"所有", Text::noun>, .box = kWithIdle, .views = "gridHz"},
  };
  static constexpr ui::ColumnSpec lines[] = {
      {"name", joined<Text::noun>, ColumnKind::Text, 20},
      {"k_rq", "日期", ColumnKind::Date},
      {"gl_djh", "单据号", ColumnKind::Text, 15},
      {"k_djtxt", "类型", ColumnKind::Text, 12},
      {"k_qcje", joined<"期初", Text::owed>, ColumnKind::Money},
      {"k_yfje", joined<"本期", Text::owed>, ColumnKind::Money, 0, {.sum = true}},
      {"k_sfje", joined<"本期", Text::got>, ColumnKind::Money, 0, {.sum = true}},
      {"k_ljje", joined<"期末", Text::owed>, ColumnKind::Money},
      {"k_fkfs", "账户"},
      {"gl_djh2", "关联单据", ColumnKind::Text, 15},
      {"u_name", "经办人"},
      {"k_note", "备注", ColumnKind::Text, 24},
      {"a_name", "操作员"},
  };
  static constexpr ui::ColumnSpec totals[] = {
      {"k_ghskh", joined<Text::noun, "编号">},
      {"name", joined<Text::noun>, ColumnKind::Text, 28},
      {"qcje", joined<"期初", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
      {"yfje", joined<"本期", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
      {"sfje", joined<"本期", Text::got>, ColumnKind::Money, 14, {.sum = true}},
      {"wfje", joined<"期末", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
  };

  static Sql detail(const Criteria& criteria) { return overviewDetail(partnerSide(Side), criteria); }
  static Sql summary(const Criteria& criteria) { return overviewSummary(partnerSide(Side), criteria); }
  static ui::RowLook open(const Row& row, std::string_view column) {
    return column == "k_ljje" && row.number(column) != 0 ? ui::RowLook::Bad : ui::RowLook::Normal;
  }

  static constexpr ui::EnquiryView views[] = {
      {.grid = {"gridMx", joined<Text::owed, "明细">, lines, "该时间段内没有往来", "id",
                isCustomer ? "yskgl" : "yfkgl"},
       .source = {detail, kPartnersHaveNoWarehouse},
       .mode = {"rMxb", "明细表"},
       .leads = {.document = "gl_djh"},
       .below = &goodsOfDocument<Side>,
       .paper = isCustomer ? "yskmxb" : "yfkmxb",
       .rowLook = [](const Row& row) { return row.integer("dsort") == 1 ? ui::RowLook::Muted : ui::RowLook::Normal; },
       .cellLook = open},
      {.grid = {"gridHz", joined<Text::owed, "汇总">, totals, "该时间段内没有往来", "k_ghskh"},
       .source = {summary, kPartnersHaveNoWarehouse},
       .mode = {"rHzb", "汇总表"},
       .chart = {.label = "name", .measure = "wfje"},
       .leads = {"gridMx", [](Criteria& criteria, const Row& row) { criteria.partner = row.text("k_ghskh"); }, "name"},
       .paper = isCustomer ? "yskglhzb" : "yfkglhzb"}};
  static constexpr ui::EnquiryTab tabs[] = {{.criteria = criteria, .views = views}};

  static bool settle(const Row& row, Prompt& prompt) {
    const OverviewLine line{row.text("gl_djh"), row.number("k_yfje"), row.number("k_sfje")};
    return editSettlement(partnerSide(Side), openSettlement(partnerSide(Side), line, prompt));
  }
  static bool recompute(const Criteria& criteria, Prompt&) {
    auto& repair = ui::screenAs<PartnerRepairScreen>(isCustomer ? "F_Yskgl_Js" : "F_Yfkgl_Js");
    return repair.run(criteria.partner, criteria.from);
  }
  static constexpr ui::EnquiryCommand commands[] = {
      {.name = "btn_Fukuan",
       .caption = isCustomer ? "销售收款" : "采购付款",
       .key = "F6",
       .parameter = &SystemParameters::cs_zerocost,
       .views = "gridMx",
       .elsewhere = joined<Text::taken, "只能在“明细表”进行！">,
       .rule = settle},
      {.name = "btn_Cxjs", .caption = "重新计算", .key = "F8", .whole = recompute}};
  static constexpr ui::EnquirySpec enquiry = {
      .name = isCustomer ? "F_Yskgl" : "F_Yfkgl",
      .title = joined<Text::owed, "款管理">,
      .tabs = tabs,
      .commands = commands,
      .focus = "tKhName1",
      .explanation = isCustomer ? "说明：期末应收为负数表示该客户在我方存有货品的预付款。"
                                : "说明：期末应付为负数表示我方在该供货商存有货品的预付款。"};
};

const ui::RegisteredEnquiry<> kYskgl{Overview<PartnerType::Customer>::enquiry};
const ui::RegisteredEnquiry<> kYfkgl{Overview<PartnerType::Supplier>::enquiry};

}  // namespace yskgl_detail
}  // namespace jxc
