// 应收应付帐表: what each partner owed, what came and went in a period, and what is owed at its end.
#include "accounts/partner_overview.h"
#include "accounts/screens/partner_overview_screens.h"
#include "accounts/settling.h"
#include "core/text.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace yskgl_detail {

using ui::Asks;
using ui::ColumnKind;

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
      {.asks = Asks::Partner,
       .name = "tKhName1",
       .label = joined<Text::noun, "：">,
       .pick = isCustomer ? pickCustomer : pickSupplier},
      {Asks::Employee, "comUser", "经办人：", employees},
      {Asks::Key, "tkey", "查找："},
      {.asks = Asks::Box,
       .name = "chkZero",
       .label = joined<"期末", Text::owed, "为零的", Text::noun, "不显示">,
       .box = partner_books::kHidesSettled},
      {.asks = Asks::Box,
       .name = "chkAll",
       .label = joined<"所有", Text::noun>,
       .box = partner_books::kWithIdlePartners,
       .views = "gridHz"},
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
  static constexpr Right seesPrice = isCustomer ? kSeesPrice : kSeesCost;
  static constexpr ui::ColumnSpec goodsColumns[] = {
      {"g_sn", "商品编号"},
      {"g_name", "商品名称", ColumnKind::Text, 24},
      {"gg_name", "规格型号"},
      {"color_name", "颜色"},
      {"dw_name", "单位", ColumnKind::Text, 6},
      {"gl_sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
      {.field = "gl_dj", .caption = "单价", .kind = ColumnKind::Money, .right = seesPrice},
      {.field = "gl_zje", .caption = "金额", .kind = ColumnKind::Money, .use = {.sum = true}, .right = seesPrice},
      {"ck_name", "仓库"},
      {"gl_bz", "备注", ColumnKind::Text, 20},
  };
  static constexpr ui::ColumnSpec totals[] = {
      {"k_ghskh", joined<Text::noun, "编号">},
      {"name", joined<Text::noun>, ColumnKind::Text, 28},
      {"qcje", joined<"期初", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
      {"yfje", joined<"本期", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
      {"sfje", joined<"本期", Text::got>, ColumnKind::Money, 14, {.sum = true}},
      {"wfje", joined<"期末", Text::owed>, ColumnKind::Money, 14, {.sum = true}},
  };

  static Sql detail(const Criteria& criteria) { return partner_books::overviewDetail(partnerSide(Side), criteria); }
  static Sql summary(const Criteria& criteria) { return partner_books::overviewSummary(partnerSide(Side), criteria); }
  /// Documents whose goods the lower list shows.
  static bool hasGoods(const Row& row) {
    const QString number = row.text("gl_djh");
    const auto begins = [&](const char16_t* prefix) { return number.startsWith(QStringView(prefix)); };
    return isCustomer ? begins(u"XS") || begins(u"XT") || begins(u"XH") : begins(u"CJ") || begins(u"CT");
  }
  static ui::RowLook open(const Row& row, std::string_view column) {
    return column == "k_ljje" && row.number(column) != 0 ? ui::RowLook::Bad : ui::RowLook::Normal;
  }

  static constexpr ui::RowsBelow goods = {
      {"gridGoods", "单据商品", goodsColumns,
       isCustomer ? "销售单和退货单的商品在这里显示" : "采购单和退货单的商品在这里显示"},
      partner_books::documentGoods,
      [](Criteria& criteria, const Row& row) { criteria.document = row.text("gl_djh"); },
      hasGoods};
  static constexpr ui::EnquiryView views[] = {
      {.grid = {"gridMx", joined<Text::owed, "明细">, lines, "该时间段内没有往来", "id",
                isCustomer ? "yskgl" : "yfkgl"},
       .source = {detail, partner_books::kPartnersHaveNoWarehouse},
       .mode = {"rMxb", "明细表"},
       .leads = {.document = "gl_djh"},
       .below = &goods,
       .paper = isCustomer ? "yskmxb" : "yfkmxb",
       .rowLook = [](const Row& row) { return row.integer("dsort") == 1 ? ui::RowLook::Muted : ui::RowLook::Normal; },
       .cellLook = open},
      {.grid = {"gridHz", joined<Text::owed, "汇总">, totals, "该时间段内没有往来", "k_ghskh"},
       .source = {summary, partner_books::kPartnersHaveNoWarehouse},
       .mode = {"rHzb", "汇总表"},
       .chart = {.label = "name", .measure = "wfje"},
       .leads = {"gridMx", [](Criteria& criteria, const Row& row) { criteria.partner = row.text("k_ghskh"); }, "name"},
       .paper = isCustomer ? "yskglhzb" : "yfkglhzb"}};
  static constexpr ui::EnquiryTab tabs[] = {{.criteria = criteria, .views = views}};
  static constexpr ui::EnquiryCommand commands[] = {{.name = "btn_Fukuan",
                                                     .caption = isCustomer ? "销售收款" : "采购付款",
                                                     .key = "F6",
                                                     .parameter = &SystemParameters::cs_zerocost},
                                                    {"btn_Cxjs", "重新计算", "F8"}};
  static constexpr ui::EnquirySpec enquiry = {
      .name = isCustomer ? "F_Yskgl" : "F_Yfkgl",
      .title = joined<Text::owed, "款管理">,
      .tabs = tabs,
      .commands = commands,
      .focus = "tKhName1",
      .explanation = isCustomer ? "说明：期末应收为负数表示该客户在我方存有货品的预付款。"
                                : "说明：期末应付为负数表示我方在该供货商存有货品的预付款。"};
};

template <PartnerType Side>
struct OverviewScreen : ui::EnquiryScreen {
  static constexpr bool isCustomer = Side == PartnerType::Customer;

  OverviewScreen() : EnquiryScreen(Overview<Side>::enquiry) {
    on(command("btn_Fukuan"), [this] { settle(); });
    on(command("btn_Cxjs"), [this] {
      const Criteria asked = criteria();
      auto& repair = ui::screenAs<PartnerRepairScreen>(isCustomer ? "F_Yskgl_Js" : "F_Yfkgl_Js");
      if (repair.run(asked.partner, asked.from)) rowsChanged();
    });
  }

 private:
  void settle() {
    if (shown().spec().name != "gridMx")
      return prompt().notice(words(joined<PartnerText<Side>::taken, "只能在“明细表”进行！">));
    const auto row = shown().current();
    if (!row) return;
    const partner_books::OverviewLine line{row->text("gl_djh"), row->number("k_yfje"), row->number("k_sfje")};
    const auto settlement = partner_books::openSettlement(partnerSide(Side), line, prompt());
    auto& settling = ui::screenAs<SettlementScreen>(isCustomer ? "F_Yskgl_Sk" : "F_Yfkgl_Fk");
    if (settlement && settling.edit(*settlement)) rowsChanged();
  }
};

const ui::RegisteredEnquiry<OverviewScreen<PartnerType::Customer>> kYskgl{Overview<PartnerType::Customer>::enquiry};
const ui::RegisteredEnquiry<OverviewScreen<PartnerType::Supplier>> kYfkgl{Overview<PartnerType::Supplier>::enquiry};

}  // namespace yskgl_detail
}  // namespace jxc
