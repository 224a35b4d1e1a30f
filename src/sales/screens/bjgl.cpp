// 报价管理: prices promised to customers and offered by suppliers, a tab each.
#include "masterdata/partners.h"
#include "masterdata/quotations.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "sales/screens/bjgl_add.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace bjgl_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::FieldKind;

template <PartnerType Side>
struct Quoted {
  using Text = PartnerText<Side>;
  static constexpr bool isCustomer = Side == PartnerType::Customer;

  static constexpr ui::Criterion criteria[] = {
      {Asks::From, isCustomer ? "tdate11" : "tdate21", "日期："},
      {Asks::To, isCustomer ? "tdate12" : "tdate22", "至"},
      {.asks = Asks::Partner,
       .name = isCustomer ? "tname1" : "tname2",
       .label = joined<"按", Text::noun, "名称：">,
       .pick = pickPartner<Side>},
      {Asks::Key, isCustomer ? "tkey1" : "tkey2", "按商品信息："},
      {.asks = Asks::Box,
       .name = isCustomer ? "chkLast1" : "chkLast2",
       .label = "只看最新报价",
       .box = quotations::kOnlyLast},
  };
  static constexpr ui::ColumnSpec columns[] = {
      {"rq", "报价日期", ColumnKind::Date},
      {"name", joined<Text::noun, "名称">, ColumnKind::Text, 20},
      {"g_sn", "商品编号", ColumnKind::Text, 12},
      {"g_name", "商品名称", ColumnKind::Text, 26},
      {"gg_name", "规格型号", ColumnKind::Text, 12},
      {"color_name", "颜色", ColumnKind::Text, 8},
      {"dw_name", "单位", ColumnKind::Text, 6},
      {"bj", "单价", ColumnKind::Money, 0, {}, seesMoney<Side>},
      {"g_jj", "预设进价", ColumnKind::Money, 0, {}, kSeesCost},
      {"g_sj", "预设售价", ColumnKind::Money, 0, {}, kSeesPrice},
      {"u_name", "经办人", ColumnKind::Text, 8},
      {"note", "备注", ColumnKind::Text, 20},
      {.field = "a_name", .caption = "操作员", .use = {.hidden = true}},
  };
  static Sql list(const Criteria& criteria) { return quotations::list(partnerSide(Side), criteria); }
  static constexpr ui::EnquiryView views[] = {
      {.grid = {isCustomer ? "gridKh" : "gridGhs", joined<Text::noun, "报价">, columns, "该时间段内没有报价，按F3增加"},
       .source = {list, quotations::kOfTheShop},
       .leads = {.command = isCustomer ? "btn_Modi1" : "btn_Modi2"}}};

  static bool add(const Criteria& criteria, Prompt&) {
    return addQuotations<Side>(criteria.partner, partnerName(partnerSide(Side), criteria.partner));
  }
  static bool change(const Row& row, Prompt&) { return changeQuotation<Side>(row); }
  static bool remove(const Row& row, Prompt& prompt) {
    return quotations::remove(partnerSide(Side), row.integer("id"), prompt);
  }
  static constexpr ui::EnquiryCommand commands[] = {
      {.name = isCustomer ? "btn_Add1" : "btn_Add2",
       .caption = "增加报价",
       .key = "F3",
       .right = seesMoney<Side>,
       .whole = add},
      {.name = isCustomer ? "btn_Modi1" : "btn_Modi2",
       .caption = "修改",
       .key = "F4",
       .right = seesMoney<Side>,
       .rule = change},
      {.name = isCustomer ? "btn_Dele1" : "btn_Dele2",
       .caption = "删除单据",
       .key = "Ctrl+D",
       .right = seesMoney<Side>,
       .rule = remove},
      {.name = isCustomer ? "btn_Cx1" : "btn_Cx2", .caption = "高级查询", .key = "F6"}};
};

using Promised = Quoted<PartnerType::Customer>;
using Offered = Quoted<PartnerType::Supplier>;

constexpr ui::EnquiryTab kTabs[] = {{.name = "cxTab1",
                                     .caption = "我方报价",
                                     .criteria = Promised::criteria,
                                     .views = Promised::views,
                                     .commands = Promised::commands,
                                     .search = "btnSearch1",
                                     .period = "btnDate1"},
                                    {.name = "cxTab2",
                                     .caption = "供货商报价",
                                     .criteria = Offered::criteria,
                                     .views = Offered::views,
                                     .commands = Offered::commands,
                                     .search = "btnSearch2",
                                     .period = "btnDate2"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Bjgl",
                                      .title = "报价管理",
                                      .tabs = kTabs,
                                      .first = ui::FirstPeriod::LastTwelveMonths,
                                      .focus = "tname1",
                                      .explanation = "说明：同一单位、同一商品有多次报价时，以最后一次为准。"};

// ---- what is asked for besides -------------------------------------------------------------------------------------

constexpr ui::FieldSpec kMoreFields[] = {{"comUser", "经办人：", FieldKind::Combo},
                                         {"tnote", "备注：", FieldKind::Text, "", 50}};
constexpr ui::CommandSpec kMoreCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kMore = {
    .name = "F_Bjgl_Cx", .title = "报价高级查询", .fields = kMoreFields, .commands = kMoreCommands, .focus = "comUser"};

class TF_Bjgl_Cx : public ui::Screen {
 public:
  TF_Bjgl_Cx() : Screen(kMore) {
    panel().form({"comUser", "tnote"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { accept(); });
  }

 protected:
  void activate() override {
    field("comUser").setItems(fillKeyedCombo("jxc_user", "u_name", QStringLiteral("所有经办人"), "id", "u_sn"), true);
  }
};

class TF_Bjgl : public ui::EnquiryScreen {
 public:
  TF_Bjgl() : EnquiryScreen(kEnquiry) {
    for (const char* const name : {"btn_Cx1", "btn_Cx2"})
      on(command(name), [this] {
        ui::Screen& dialog = ui::screenNamed("F_Bjgl_Cx");
        if (!dialog.showModal()) return;
        const QString employee = dialog.field("comUser").key();
        employee_ = employee == QStringView(allKey) ? QString() : employee;
        note_ = dialog.field("tnote").trimmed();
        search();
      });
  }

 protected:
  void complete(Criteria& criteria) const override {
    criteria.employee = employee_;
    criteria.kind = note_;
  }

 private:
  QString employee_, note_;  // as the dialog was left
};

const ui::Registered<TF_Bjgl_Cx> kRegisteredMore{"F_Bjgl_Cx"};
const ui::RegisteredEnquiry<TF_Bjgl> kRegistered{kEnquiry};

}  // namespace bjgl_detail
}  // namespace jxc
