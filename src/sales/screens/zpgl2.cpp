// 赠品库存: the small store of gift items outside the goods: what lies there, what came in and what went out.
#include "core/clock.h"
#include "masterdata/gifts.h"
#include "ui/enquiry_screen.h"

namespace jxc {
namespace zpgl2_detail {

using ui::Asks;
using ui::ColumnKind;
using ui::FieldKind;

// ---- one item ------------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kItemFields[] = {
    {"tsn", "赠品编号：", FieldKind::Text, "jxc_zpxx.zp_sn"},
    {"tname", "赠品名称：", FieldKind::Text, "jxc_zpxx.zp_name"},
    {"tsl", "赠品数量：", FieldKind::Quantity},
    {"tjf", "兑换积分：", FieldKind::Quantity},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {
    .name = "F_Zpgl2_Add", .title = "增加赠品", .fields = kItemFields, .commands = kCommands, .focus = "tsn"};
constexpr ui::ScreenSpec kModi = {
    .name = "F_Zpgl2_Modi", .title = "修改赠品", .fields = kItemFields, .commands = kCommands, .focus = "tname"};

class ItemScreen : public ui::Screen {
 public:
  explicit ItemScreen(const ui::ScreenSpec& spec) : Screen(spec) {
    panel().form({"tsn", "tname", "tsl tjf"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] {
      const gifts::Item typed{shown_.id, field("tsn").text(), field("tname").text(), field("tsl").number(),
                              field("tjf").number()};
      if (gifts::save(typed, shown_, prompt())) accept();
    });
  }
  /// A new one without an id.
  bool edit(std::int64_t id) {
    shown_ = gifts::read(id);
    return showModal();
  }

 protected:
  void activate() override {
    field("tsn").setText(shown_.number);
    field("tname").setText(shown_.name);
    field("tsl").setNumber(shown_.quantity);
    field("tjf").setNumber(shown_.points);
  }

 private:
  gifts::Item shown_;
};

// ---- what comes in -------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kReceiptFields[] = {
    {"tname", "赠品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"dateJh", "进货日期：", FieldKind::Date},
    {"tsl", "进货数量：", FieldKind::Quantity},
    {"tnote", "备注：", FieldKind::Text, "jxc_zpjh.zp_note", 0, ui::OffersRemarks},
};
constexpr ui::ScreenSpec kReceipt = {
    .name = "F_Zpgl2_Jh", .title = "赠品进货", .fields = kReceiptFields, .commands = kCommands, .focus = "tsl"};

class TF_Zpgl2_Jh : public ui::Screen {
 public:
  TF_Zpgl2_Jh() : Screen(kReceipt) {
    panel().form({"tname", "dateJh tsl", "tnote"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] {
      if (!checkFields()) return;
      if (gifts::receive(id_, {field("dateJh").text(), field("tsl").number(), field("tnote").text()}, prompt()))
        accept();
    });
  }
  bool receive(const Row& row) {
    id_ = row.integer("id");
    field("tname").setText(row.text("zp_sn") + u' ' + row.text("zp_name"));
    return showModal();
  }

 protected:
  void activate() override {
    field("dateJh").setText(clock::today());
    field("tsl").clear();
    field("tnote").clear();
  }

 private:
  std::int64_t id_ = 0;
};

// ---- the store -----------------------------------------------------------------------------------------------------

std::vector<ListItem> allItems() {
  return fillKeyedCombo("jxc_zpxx", "zp_name", u"所有赠品"_qs, "id", "zp_sn");
}

constexpr ui::Criterion kStoreCriteria[] = {{Asks::Key, "tkey", "赠品信息："}};
constexpr ui::Criterion kMovedCriteria[] = {
    {Asks::From, "tdate1", "日期："},
    {Asks::To, "tdate2", "至"},
    {.asks = Asks::Kind, .name = "comZp", .label = "赠品：", .items = allItems}};
constexpr ui::ColumnSpec kStore[] = {
    {"zp_sn", "赠品编号", ColumnKind::Text, 12}, {"zp_name", "赠品名称", ColumnKind::Text, 30},
    {"zp_jm", "简码", ColumnKind::Text, 14},     {"zp_sl", "库存数量", ColumnKind::Quantity, 0, {.sum = true}},
    {"zp_jf", "兑换积分", ColumnKind::Quantity},
};
constexpr ui::ColumnSpec kMoved[] = {
    {"lx", "类型", ColumnKind::Text, 10},
    {"rq", "日期", ColumnKind::Date, 18},
    {"zp_sn", "赠品编号", ColumnKind::Text, 12},
    {"zp_name", "赠品名称", ColumnKind::Text, 26},
    {"sl", "数量", ColumnKind::Quantity, 0, {.sum = true}},
    {"djh", "单据号", ColumnKind::Text, 15},
    {"note", "备注", ColumnKind::Text, 24},
    {"a_name", "操作员", ColumnKind::Text, 8},
};
constexpr ui::EnquiryView kStoreViews[] = {{.grid = {"gridZp", "赠品", kStore, "没有符合条件的赠品，按F3增加"},
                                            .source = {gifts::items, gifts::kOneStore},
                                            .leads = {.command = "btn_Modi"}}};
constexpr ui::EnquiryView kMovedViews[] = {{.grid = {"gridBd", "赠品变动", kMoved, "该时间段内没有变动", "rowkey"},
                                            .source = {gifts::movements, gifts::kOneStore}}};

bool add(const Criteria&, Prompt&) {
  return ui::screenAs<ItemScreen>("F_Zpgl2_Add").edit(0);
}
bool change(const Row& row, Prompt&) {
  return ui::screenAs<ItemScreen>("F_Zpgl2_Modi").edit(row.integer("id"));
}
bool remove(const Row& row, Prompt& prompt) {
  return gifts::remove(row.integer("id"), prompt);
}
bool receive(const Row& row, Prompt&) {
  return ui::screenAs<TF_Zpgl2_Jh>("F_Zpgl2_Jh").receive(row);
}
constexpr ui::EnquiryCommand kStoreCommands[] = {
    {.name = "btn_Add", .caption = "增加赠品", .key = "F3", .whole = add},
    {.name = "btn_Modi", .caption = "修改", .key = "F4", .rule = change},
    {.name = "btn_Dele", .caption = "删除", .key = "Ctrl+D", .rule = remove},
    {.name = "btn_Jh", .caption = "赠品进货", .key = "F6", .rule = receive},
    {.name = "btn_Bd", .caption = "查看变动", .key = "F7"}};
constexpr ui::EnquiryTab kTabs[] = {{.name = "cxTab1",
                                     .caption = "赠品库存",
                                     .criteria = kStoreCriteria,
                                     .views = kStoreViews,
                                     .commands = kStoreCommands,
                                     .search = "btnSearch1"},
                                    {.name = "cxTab2",
                                     .caption = "赠品变动",
                                     .criteria = kMovedCriteria,
                                     .views = kMovedViews,
                                     .search = "btnSearch2",
                                     .period = "btnDate2"}};
constexpr ui::EnquirySpec kEnquiry = {.name = "F_Zpgl2", .title = "赠品库存管理", .tabs = kTabs, .focus = "tkey"};

class TF_Zpgl2 : public ui::EnquiryScreen {
 public:
  TF_Zpgl2() : EnquiryScreen(kEnquiry) {
    on(command("btn_Bd"), [this] {
      const QString item = grid("gridZp").currentText("zp_sn");
      field("comZp").setItems(allItems());
      if (!item.isEmpty()) field("comZp").setKey(item);
      showView("gridBd");
      search();
    });
  }
};

const ui::RegisteredEnquiry<TF_Zpgl2> kRegistered{kEnquiry};
const ui::Registered<TF_Zpgl2_Jh> kRegisteredReceipt{"F_Zpgl2_Jh"};
const bool kRegisteredItems = [] {
  ui::registerScreen("F_Zpgl2_Add", [] { return static_cast<ui::Screen*>(new ItemScreen(kAdd)); });
  ui::registerScreen("F_Zpgl2_Modi", [] { return static_cast<ui::Screen*>(new ItemScreen(kModi)); });
  return true;
}();

}  // namespace zpgl2_detail
}  // namespace jxc
