// 合同管理: contracts with suppliers and with customers.
#include "accounts/screens/contract_screens.h"
#include "masterdata/screens/partner_text.h"
#include "ui/enquiry_screen.h"
#include "ui/progress.h"

namespace jxc {
namespace htgl_detail {

using ui::Asks;
using ui::ColumnKind;

/// One side's page; `Number` tells its inputs and commands from those of the other.
template <PartnerType Side, FixedText Number>
struct Contracts {
  using Text = PartnerText<Side>;

  static constexpr ui::Criterion asked[] = {{Asks::From, joined<"tdate", Number, "1">, "日期："},
                                            {Asks::To, joined<"tdate", Number, "2">, "至"},
                                            {Asks::Key, joined<"tkey", Number>, "查找："}};
  static constexpr ui::ColumnSpec columns[] = {
      {"ht_sn", "合同编号", ColumnKind::Text, 9},
      {"ht_rq", "日期", ColumnKind::Date},
      {"ht_name", "合同名称", ColumnKind::Text, 28},
      {"ghs_name", joined<Text::noun>, ColumnKind::Text, 24},
      {"gl_djh", "关联单据", ColumnKind::Text, 15},
      {"ht_fjname", "附件", ColumnKind::Text, 24},
      {"u_name", "经办人"},
      {"a_name", "操作员"},
  };
  static Sql list(const Criteria& criteria) { return contracts::contractList(partnerSide(Side), criteria); }

  static auto form() -> TF_Htgl_Sele& { return ui::screenAs<TF_Htgl_Sele>("F_Htgl_Sele"); }
  static bool add(const Criteria&, Prompt&) { return form().edit(partnerSide(Side), {}).has_value(); }
  static bool modify(const Row& row, Prompt& prompt) {
    const auto opened = contracts::openContract(partnerSide(Side), row.text("ht_sn"), prompt);
    if (!opened) return true;
    return form()
        .edit(partnerSide(Side),
              {.number = opened->number,
               .name = opened->name,
               .date = opened->date,
               .partner = opened->partner,
               .employee = opened->employee,
               .content = opened->content,
               .file = {},
               .shown = opened->shown},
              opened->attachment)
        .has_value();
  }
  static bool look(const Row& row, Prompt& prompt) {
    const auto opened = contracts::openContract(partnerSide(Side), row.text("ht_sn"), prompt);
    if (opened) ui::screenAs<TF_Htgl_Chakan>("F_Htgl_Chakan").look(partnerSide(Side), *opened);
    return !opened;
  }
  static bool remove(const Row& row, Prompt& prompt) {
    return contracts::deleteContract(row.text("ht_sn"), prompt, ui::progressOnDemand(u"正在删除附件……"_qs, nullptr));
  }

  static constexpr ui::EnquiryCommand commands[] = {
      {.name = joined<"btn_Add", Number>, .caption = "增加", .key = "F3", .whole = add},
      {.name = joined<"btn_Modi", Number>, .caption = "修改", .key = "F4", .rule = modify},
      {.name = joined<"btn_Dele", Number>, .caption = "删除", .key = "Ctrl+D", .rule = remove},
      {.name = joined<"btn_ChaKan", Number>, .caption = "查看合同", .key = "F8", .rule = look}};
  static constexpr ui::EnquiryView views[] = {
      {.grid = {joined<"gridHt", Number>, joined<Text::noun, "合同">, columns, "该时间段内没有合同，按F3增加", "id"},
       .source = {list, contracts::kContractsHaveNoWarehouse},
       .leads = {.command = joined<"btn_ChaKan", Number>}}};
  static constexpr ui::EnquiryTab tab = {.name = joined<"cxTab", Number>,
                                         .caption = joined<Text::noun, "合同">,
                                         .criteria = asked,
                                         .views = views,
                                         .commands = commands,
                                         .search = joined<"btnSearch", Number>,
                                         .period = joined<"btnDate", Number>};
};

constexpr ui::EnquiryTab kTabs[] = {Contracts<PartnerType::Supplier, "1">::tab,
                                    Contracts<PartnerType::Customer, "2">::tab};
// Name and password of a server are for who may change the settings of the shop.
constexpr ui::EnquiryCommand kCommands[] = {
    {.name = "btn_Ftp", .caption = "FTP参数", .key = "F6", .right = {"qtcz", 11}, .opens = "F_Htgl_Ftp"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Htgl",
                                      .title = "合同管理",
                                      .tabs = kTabs,
                                      .commands = kCommands,
                                      .first = ui::FirstPeriod::YearToToday,
                                      .focus = "gridHt1"};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace htgl_detail
}  // namespace jxc
