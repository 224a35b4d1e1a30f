// 发票管理: what is still to be invoiced to customers and by suppliers, line by line and summed, and what waits.
#include "accounts/partner_documents.h"
#include "accounts/screens/document_goods.h"
#include "accounts/screens/invoice_screens.h"
#include "accounts/screens/partner_overview_parts.h"
#include "core/text.h"
#include "ui/joined_tables.h"

namespace jxc {
namespace fpxs_detail {

using ui::ColumnKind;

std::vector<ListItem> kinds() {
  return {{QStringLiteral("已审核"), words(invoices::kAudited)}, {QStringLiteral("未审核"), words(invoices::kWaiting)}};
}

template <PartnerType Side>
struct Invoices : OverviewParts<Side, InvoiceBooks, "应开", "已开"> {
  using Text = PartnerText<Side>;
  using Parts = OverviewParts<Side, InvoiceBooks, "应开", "已开">;
  static constexpr bool isCustomer = Side == PartnerType::Customer;

  static constexpr auto criteria = ui::joinedTables(
      Parts::asked,
      std::array{
          ui::Criterion{.asks = ui::Asks::Kind, .name = "comZt", .label = "状态：", .items = kinds, .views = "gridMx"}},
      Parts::boxes);
  static constexpr ui::ColumnSpec lines[] = {
      {"name", joined<Text::noun>, ColumnKind::Text, 20},
      {"fp_rq", "日期", ColumnKind::Date},
      {"gl_djh", "单据号", ColumnKind::Text, 15},
      {"fp_djtxt", "类型", ColumnKind::Text, 12},
      {"fp_qcje", "期初应开", ColumnKind::Money},
      {"fp_yfje", "本期应开", ColumnKind::Money, 0, {.sum = true}},
      {"fp_kpje", "本期已开", ColumnKind::Money, 0, {.sum = true}},
      {"fp_ljje", "期末应开", ColumnKind::Money},
      {"fp_no", "发票号码", ColumnKind::Text, 12},
      {"fp_kprq", "开票日期", ColumnKind::Date},
      {"u_name", "经办人"},
      {"fp_note", "备注", ColumnKind::Text, 20},
      {"a_name", "操作员"},
      {"fp_checker", "审核人"},
      {"fp_chkrq", "审核日期", ColumnKind::Date},
  };
  static Sql detail(const Criteria& asked) { return invoices::invoiceLines(partnerSide(Side), asked); }

  static constexpr ui::EnquiryView views[] = {
      {.grid = {"gridMx", "发票明细", lines, "该时间段内没有发票", "id", isCustomer ? "fpxs" : "fpcg"},
       .source = {detail, partner_books::kPartnersHaveNoWarehouse},
       .mode = {"rMxb", "明细表"},
       .leads = {.document = "gl_djh"},
       .below = &goodsOfDocument<Side>,
       .paper = isCustomer ? "fpxsmxb" : "fpcgmxb",
       .rowLook = Parts::lineLook,
       .cellLook = Parts::open},
      Parts::summaryView("该时间段内没有发票")};
  static constexpr ui::EnquiryTab tabs[] = {{.criteria = criteria, .views = views}};

  static invoices::Line lineOf(const Row& row) {
    // The id of an opening row is that of the line that its balance comes from.
    return {row.integer("id"), row.integer("dsort") == 1 ? QString() : row.text("gl_djh")};
  }
  static bool add(const Criteria& asked, Prompt& prompt) {
    if (!partner_books::isPartnerChosen(partnerSide(Side), asked.partner, prompt)) return false;
    return ui::screenAs<InvoiceEntryScreen>(isCustomer ? "F_Fpxs_Sele" : "F_Fpcg_Sele")
        .edit({.partner = asked.partner});
  }
  static bool modify(const Row& row, Prompt& prompt) {
    const auto draft = invoices::openInvoice(partnerSide(Side), lineOf(row), prompt);
    return draft && ui::screenAs<InvoiceEntryScreen>(isCustomer ? "F_Fpxs_Sele" : "F_Fpcg_Sele").edit(*draft);
  }
  static bool remove(const Row& row, Prompt& prompt) {
    return invoices::deleteInvoice(partnerSide(Side), lineOf(row), prompt);
  }
  static bool registerOne(const Row& row, Prompt& prompt) {
    const auto opened = invoices::openRegistration(partnerSide(Side), lineOf(row), prompt);
    return opened &&
           ui::screenAs<InvoiceRegistrationScreen>(isCustomer ? "F_Fpxs_Sele2" : "F_Fpcg_Sele2").edit(*opened);
  }
  static bool excludeOne(const Row& row, Prompt& prompt) {
    return invoices::exclude(partnerSide(Side), lineOf(row), prompt);
  }
  static bool auditOne(const Row& row, Prompt& prompt) {
    return invoices::auditOne(partnerSide(Side), lineOf(row), prompt);
  }
  static bool auditAll(const Criteria& asked, Prompt& prompt) {
    return invoices::auditAll(partnerSide(Side), asked, prompt);
  }

  static constexpr Right kAudits{"wlzk", isCustomer ? 15 : 14};
  static constexpr std::string_view kAuditElsewhere = "审核操作只能在“明细表”进行。";
  static constexpr ui::EnquiryCommand commands[] = {
      {.name = "btnAdd", .caption = "增加", .key = "F3", .whole = add},
      {.name = "btnModi",
       .caption = "修改",
       .key = "F4",
       .views = "gridMx",
       .elsewhere = isCustomer ? kAuditElsewhere : "修改操作只能在“明细表”进行。",
       .rule = modify},
      {.name = "btnDele",
       .caption = "删除",
       .key = "Ctrl+D",
       .views = "gridMx",
       .elsewhere = isCustomer ? kAuditElsewhere : "删除操作只能在“明细表”进行。",
       .rule = remove},
      {.name = "btn_Xgjj",
       .caption = "发票登记",
       .key = "F6",
       .views = "gridMx",
       .elsewhere = "发票登记只能在“明细表”进行！",
       .rule = registerOne},
      {.name = "btn_UnChk",
       .caption = "排除",
       .key = "F7",
       .right = kAudits,
       .staysInSight = true,
       .views = "gridMx",
       .elsewhere = "排除发票只能在明细表进行！",
       .rule = excludeOne},
      {.name = "btn_CheckOne",
       .caption = "审核",
       .key = "F9",
       .right = kAudits,
       .staysInSight = true,
       .views = "gridMx",
       .elsewhere = kAuditElsewhere,
       .rule = auditOne},
      {.name = "btn_Check",
       .caption = "审核全部",
       .key = "Ctrl+F9",
       .right = kAudits,
       .staysInSight = true,
       .views = "gridMx",
       .elsewhere = kAuditElsewhere,
       .whole = auditAll},
      {.name = "btn_Cxjs",
       .caption = "重新计算",
       .key = "F8",
       .whole = Parts::template recompute < isCustomer ? FixedText{"F_Fpxs_Js"} : FixedText{"F_Fpcg_Js"} > }};
  static constexpr ui::EnquirySpec enquiry = {
      .name = isCustomer ? "F_Fpxs" : "F_Fpcg",
      .title = isCustomer ? "销售发票管理" : "进货发票管理",
      .tabs = tabs,
      .commands = commands,
      .focus = "tKhName1",
      .explanation = "说明：排除的发票和没有审核的发票不计入余额，状态选“未审核”时显示。"};
};

const ui::RegisteredEnquiry<> kFpxs{Invoices<PartnerType::Customer>::enquiry};
const ui::RegisteredEnquiry<> kFpcg{Invoices<PartnerType::Supplier>::enquiry};

}  // namespace fpxs_detail
}  // namespace jxc
