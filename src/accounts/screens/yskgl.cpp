// 应收应付帐表: what each partner owed, what came and went in a period, and what is owed at its end.
#include "accounts/screens/document_goods.h"
#include "accounts/screens/partner_overview_parts.h"
#include "accounts/settling.h"
#include "ui/joined_tables.h"

namespace jxc {
namespace yskgl_detail {

using ui::ColumnKind;
using namespace partner_books;

template <PartnerType Side>
struct Overview : OverviewParts<Side, OwedBooks, PartnerText<Side>::owed, PartnerText<Side>::got> {
  using Text = PartnerText<Side>;
  using Parts = OverviewParts<Side, OwedBooks, Text::owed, Text::got>;
  static constexpr bool isCustomer = Side == PartnerType::Customer;

  static constexpr auto criteria = ui::joinedTables(Parts::asked, Parts::boxes);
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
  static Sql detail(const Criteria& criteria) { return overviewDetail(owedLedger, partnerSide(Side), criteria); }

  static constexpr ui::EnquiryView views[] = {
      {.grid = {"gridMx", joined<Text::owed, "明细">, lines, "该时间段内没有往来", "id",
                isCustomer ? "yskgl" : "yfkgl"},
       .source = {detail, kPartnersHaveNoWarehouse},
       .mode = {"rMxb", "明细表"},
       .leads = {.document = "gl_djh"},
       .below = &goodsOfDocument<Side>,
       .paper = isCustomer ? "yskmxb" : "yfkmxb",
       .rowLook = Parts::lineLook,
       .cellLook = Parts::open},
      Parts::summaryView("该时间段内没有往来", isCustomer ? "yskglhzb" : "yfkglhzb")};
  static constexpr ui::EnquiryTab tabs[] = {{.criteria = criteria, .views = views}};

  static bool settle(const Row& row, Prompt& prompt) {
    const OverviewLine line{row.text("gl_djh"), row.number("k_yfje"), row.number("k_sfje")};
    return editSettlement(partnerSide(Side), openSettlement(partnerSide(Side), line, prompt));
  }
  static constexpr ui::EnquiryCommand commands[] = {
      {.name = "btn_Fukuan",
       .caption = isCustomer ? "销售收款" : "采购付款",
       .key = "F6",
       .parameter = &SystemParameters::cs_zerocost,
       .views = "gridMx",
       .elsewhere = joined<Text::taken, "只能在“明细表”进行！">,
       .rule = settle},
      {.name = "btn_Cxjs",
       .caption = "重新计算",
       .key = "F8",
       .whole = Parts::template recompute < isCustomer ? FixedText{"F_Yskgl_Js"} : FixedText{"F_Yfkgl_Js"} > }};
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
