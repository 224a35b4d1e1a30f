// 固定资产台帐: the register of the shop's assets, and the form of one entry.
#include "accounts/fixed_assets.h"
#include "core/clock.h"
#include "core/defaults.h"
#include "core/text.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace gdzc_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::FieldKind;

// ---- form --------------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"tsn", "资产编号：", FieldKind::Text, "jxc_gdzc.zc_bh"},
    {"tname", "资产名称：", FieldKind::Text, "jxc_gdzc.zc_mc"},
    {"dateCg", "购置日期：", FieldKind::Date},
    {"comLx", "资产类型：", FieldKind::EditCombo, "jxc_gdzc.zc_lx"},
    {"tje", "金额：", FieldKind::Money},
    {"comDw", "单位：", FieldKind::EditCombo, "jxc_gdzc.zc_dw"},
    {"tzjys", "折旧月数：", FieldKind::Integer, "", 0, ui::NoMinus},
    {"comBm", "使用部门：", FieldKind::EditCombo, "jxc_gdzc.zc_bm"},
    {"tghs", "供货商：", FieldKind::Text, "jxc_gdzc.zc_ghs"},
    {"comNbfl", "内部分类：", FieldKind::EditCombo, "jxc_gdzc.zc_nbfl"},
    {"tggxh", "规格型号：", FieldKind::Text, "jxc_gdzc.zc_ggxh"},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_gdzc.zc_note", 0, ui::OffersRemarks},
};
constexpr ui::CommandSpec kFormCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kForm = {
    .name = "F_Gdzc_Zj", .title = "增加固定资产", .fields = kFields, .commands = kFormCommands, .focus = "tsn"};
constexpr int kMostMonths = 9999;

/// Proposals of an input: what stands in its column already, behind it the words of a list.
void propose(ui::Field& field, std::string_view column, const std::vector<ListItem>& more = {}) {
  std::vector<ListItem> items = assets::usedTexts(column);
  for (const ListItem& each : more)
    if (std::ranges::none_of(items, [&](const ListItem& item) { return item.text == each.text; }))
      items.push_back(each);
  field.setItems(items);
}

class TF_Gdzc_Zj : public ui::Screen {
 public:
  TF_Gdzc_Zj() : Screen(kForm) {
    panel()
        .form({"tsn tname", "dateCg comLx", "tje comDw", "tzjys comBm", "tghs comNbfl", "tggxh comUser", "tnote"})
        .buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { save(); });
    field("tsn").onLeft([this] { startFromFirst(); });
  }
  bool edit(const assets::Draft& draft) {
    draft_ = draft;
    const bool done = showModal();
    draft_ = {};
    return done;
  }

 protected:
  void activate() override {
    setWindowTitle(draft_.id == 0 ? u"增加固定资产"_qs : u"修改固定资产"_qs);
    propose(field("comLx"), "zc_lx");
    propose(field("comDw"), "zc_dw", fillPlainCombo("jxc_dw", "dw_name", {}, false, "id"));
    propose(field("comBm"), "zc_bm", fillPlainCombo("jxc_dept", "de_name", {}, false, "id"));
    propose(field("comNbfl"), "zc_nbfl");
    Filter filter;
    filter.add("u_jy=0").add("u_name<>''");
    field("comUser").setItems(fillKeyedComboWhere("jxc_user", "u_name", {}, filter, "id", "u_name"));
    if (draft_.date.isEmpty()) draft_.date = clock::today();
    if (draft_.employee.isEmpty()) draft_.employee = keyToPropose(field("comUser").items(), defaultEmployeeName());
    field("tsn").load(draft_.number);
    show(draft_, true);
    startedFrom_ = draft_.number;
  }

 private:
  /// What the operator has typed himself stays, when `all` does not say otherwise.
  void show(const assets::Draft& draft, bool all) {
    const auto load = [&](const char* name, const Value& value) {
      ui::Field& input = field(name);
      if (all || !input.isTouched()) input.load(value);
    };
    load("tname", draft.name);
    load("dateCg", draft.date);
    load("comLx", draft.kind);
    load("tje", draft.amount);
    load("comDw", draft.unit);
    load("tzjys", draft.months);
    load("comBm", draft.department);
    load("tghs", draft.supplier);
    load("comNbfl", draft.insideClass);
    load("tggxh", draft.model);
    load("comUser", draft.employee);
    load("tnote", draft.note);
  }
  /// A second entry of the same asset starts from its first one.
  void startFromFirst() {
    const QString number = field("tsn").trimmed();
    if (draft_.id != 0 || number == startedFrom_) return;
    startedFrom_ = number;
    if (const auto first = assets::assetOfNumber(number)) show(*first, false);
  }
  void save() {
    if (!checkFields()) return;
    const int months = field("tzjys").integer();
    if (months > kMostMonths) {
      field("tzjys").focus();
      return prompt().notice(u"折旧月数不能超过9999！"_qs);
    }
    const assets::Draft draft{.id = draft_.id,
                              .number = field("tsn").trimmed(),
                              .name = field("tname").trimmed(),
                              .date = field("dateCg").text(),
                              .kind = field("comLx").trimmed(),
                              .unit = field("comDw").trimmed(),
                              .amount = field("tje").number(),
                              .department = field("comBm").trimmed(),
                              .supplier = field("tghs").trimmed(),
                              .insideClass = field("comNbfl").trimmed(),
                              .model = field("tggxh").trimmed(),
                              .months = months,
                              .employee = field("comUser").key(),
                              .note = field("tnote").trimmed()};
    if (assets::saveAsset(draft, prompt())) accept();
  }

  assets::Draft draft_;
  QString startedFrom_;
};
const ui::Registered<TF_Gdzc_Zj> kRegisteredForm{"F_Gdzc_Zj"};

// ---- register ----------------------------------------------------------------------------------------------------

std::vector<ListItem> kinds() {
  std::vector<ListItem> items = assets::usedTexts("zc_lx");
  items.insert(items.begin(), {QStringLiteral("所有类型"), words(allKey)});
  return items;
}

constexpr ui::Criterion kCriteria[] = {{Asks::From, "tdate1", "日期："},
                                       {Asks::To, "tdate2", "至"},
                                       {Asks::Kind, "comLx", "类型：", kinds},
                                       {Asks::Key, "tkey", "查找："}};
constexpr ui::ColumnSpec kColumns[] = {
    {"zc_bh", "资产编号", ColumnKind::Text, 12},
    {"zc_mc", "资产名称", ColumnKind::Text, 18},
    {"zc_rq", "购置日期", ColumnKind::Date},
    {"zc_lx", "类型"},
    {"zc_je", "金额", ColumnKind::Money, 0, {.sum = true}},
    {"zc_zjys", "折旧月数", ColumnKind::Number, 8},
    {"gone", "已过月数(估算)", ColumnKind::Number, 12},
    {"rest", "净值(估算)", ColumnKind::Money, 0, {.sum = true}},
    {"zc_ggxh", "规格型号", ColumnKind::Text, 14},
    {"zc_dw", "单位", ColumnKind::Text, 6},
    {"zc_bm", "使用部门"},
    {"zc_ghs", "供货商", ColumnKind::Text, 14},
    {"zc_nbfl", "内部分类"},
    {"u_name", "经办人"},
    {"zc_note", "备注", ColumnKind::Text, 18},
    {"a_name", "操作员"},
};

bool add(const Criteria&, Prompt&) {
  return ui::screenAs<TF_Gdzc_Zj>("F_Gdzc_Zj").edit({});
}
bool modify(const Row& row, Prompt&) {
  const auto draft = assets::openAsset(row.integer("id"));
  return !draft || ui::screenAs<TF_Gdzc_Zj>("F_Gdzc_Zj").edit(*draft);
}
bool remove(const Row& row, Prompt& prompt) {
  return assets::deleteAsset(row.integer("id"), prompt);
}

constexpr ui::EnquiryCommand kCommands[] = {{.name = "btn_Add", .caption = "增加", .key = "F3", .whole = add},
                                            {.name = "btn_Modi", .caption = "修改", .key = "F4", .rule = modify},
                                            {.name = "btn_Dele", .caption = "删除", .key = "Ctrl+D", .rule = remove}};
constexpr ui::EnquiryView kViews[] = {{.grid = {"gridZc", "固定资产", kColumns, "没有固定资产，按F3增加", "id", "gdzc"},
                                       .source = {assets::assetList, assets::kAssetsHaveNoWarehouse},
                                       .leads = {.command = "btn_Modi"}}};
constexpr ui::EnquiryTab kTabs[] = {{.criteria = kCriteria, .views = kViews, .commands = kCommands}};
constexpr ui::EnquirySpec kEnquiry = {
    .name = "F_Gdzc",
    .title = "固定资产台帐",
    .tabs = kTabs,
    .first = ui::FirstPeriod::UntilToday,
    .focus = "gridZc",
    .explanation = "说明：已过月数和净值只是估算：净值按直线法从金额和折旧月数算出，不计入账目和报表。"};
const ui::RegisteredEnquiry<> kRegistered{kEnquiry};

}  // namespace gdzc_detail
}  // namespace jxc
