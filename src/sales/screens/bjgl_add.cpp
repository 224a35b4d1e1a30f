#include "sales/screens/bjgl_add.h"

#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/rights.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "masterdata/goods_classes.h"
#include "masterdata/quotations.h"
#include "masterdata/screens/partner_picker.h"
#include "masterdata/screens/partner_text.h"
#include "sales/screens/price.h"
#include "stock/screens/line_import_screen.h"
#include "ui/list_search.h"
#include "ui/screen.h"

namespace jxc {
namespace bjgl_add_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the price of one goods ----------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPriceFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tjj", "预设进价：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tsj", "预设售价：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tdj", "报价：", FieldKind::Money, "", 0, ui::NoMinus},
};
constexpr ui::CommandSpec kPriceCommands[] = {
    {"btnSpsj", "选择售价", "F6"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kPrice = {
    .name = "F_Bjgl_Sele", .title = "商品报价", .fields = kPriceFields, .commands = kPriceCommands, .focus = "tdj"};

class TF_Bjgl_Sele : public ui::Screen {
 public:
  TF_Bjgl_Sele() : Screen(kPrice) {
    panel().form({"tname", "tjj tsj", "tdj"}).buttons("btnSpsj | btnOK btnCancel");
    on(command("btnSpsj"), [this] {
      double yuan = field("tdj").number();
      askGoodsPrice(goods_, yuan);
      field("tdj").setNumber(yuan);
    });
    on(command("btnOK"), [this] {
      if (quotations::stage(goods_, field("tdj").number(), prompt())) accept();
    });
  }
  /// Asks at which price a goods is quoted, and picks it.
  bool pick(const PartnerSide& side, const QString& partner, const QString& goods) {
    goods_ = goods;
    const auto proposed = quotations::propose(side, partner, goods);
    if (!proposed) return false;
    field("tname").setText(goods + u' ' + proposed->name);
    field("tjj").setNumber(proposed->purchasePrice);
    field("tsj").setNumber(proposed->salePrice);
    field("tdj").setNumber(proposed->price);
    return showModal();
  }

 protected:
  void activate() override {
    field("tjj").setVisible(hasRight(kSeesCost));
    field("tsj").setVisible(hasRight(kSeesPrice));
    command("btnSpsj").setVisible(hasRight(kSeesPrice));
  }

 private:
  QString goods_;
};

// ---- picking -------------------------------------------------------------------------------------------------------

template <PartnerType Side>
struct Adding {
  using Text = PartnerText<Side>;
  static constexpr bool isCustomer = Side == PartnerType::Customer;
  static constexpr std::string_view name = isCustomer ? "F_Bjgl_Add" : "F_Bjgl_Add2";
  static constexpr std::string_view partner = isCustomer ? "tKh" : "tGhs";
  static constexpr ui::FieldSpec fields[] = {
      {partner, joined<Text::noun, "名称：">, FieldKind::Picker},
      {"dateBj", "报价日期：", FieldKind::Date},
      {"comUser", "经办人：", FieldKind::Combo},
      {"tnote", "备注：", FieldKind::Text, isCustomer ? "jxc_khbj.kb_note" : "jxc_ghsbj.gb_note", 0, ui::OffersRemarks},
      {"tkey", "商品信息：", FieldKind::Text, "", 50},
      {"comLb", "类别：", FieldKind::Combo},
  };
  static constexpr ui::ColumnSpec goods[] = {
      {"g_sn", "商品编号", ColumnKind::Text, 12},
      {"g_name", "商品名称", ColumnKind::Text, 28},
      {"g_qgd", "屈光度", ColumnKind::Power, 8},
      {"g_sgd", "散光度", ColumnKind::Power, 8},
      {"gg_name", "规格型号", ColumnKind::Text, 14},
      {"color_name", "颜色", ColumnKind::Text, 8},
      {"dw_name", "单位", ColumnKind::Text, 6},
      {"g_jj", "预设进价", ColumnKind::Money, 0, {}, kSeesCost},
      {"g_sj", "预设售价", ColumnKind::Money, 0, {}, kSeesPrice},
  };
  static constexpr ui::ColumnSpec picked[] = {
      {"g_sn", "商品编号", ColumnKind::Text, 12},
      {"g_name", "商品名称", ColumnKind::Text, 28},
      {"gg_name", "规格型号", ColumnKind::Text, 14},
      {"color_name", "颜色", ColumnKind::Text, 8},
      {"dw_name", "单位", ColumnKind::Text, 6},
      {"ts_dj", "报价", ColumnKind::Money, 0, {.editable = true}, seesMoney<Side>},
  };
  static constexpr ui::GridSpec grids[] = {{"gridGoods", "商品", goods, "没有符合条件的商品"},
                                           {"gridStaging", "已选商品", picked, "在商品列表中按回车选择商品并输入报价"}};
  static constexpr ui::CommandSpec commands[] = {{"btnSearch", "查询", "F2"},  {"btnModi", "修改报价", "F3"},
                                                 {"btnDel", "移除", "Ctrl+D"}, {"btnImport", "导入", "Ctrl+I"},
                                                 {"btnOK", "保存", "F5"},      {"btnCancel", "退出", "Esc"}};
  static constexpr ui::ScreenSpec screen = {.name = name,
                                            .title = joined<"增加", Text::noun, "报价">,
                                            .fields = fields,
                                            .grids = grids,
                                            .commands = commands,
                                            .focus = partner};
};

template <PartnerType Side>
class QuotingScreen : public ui::Screen {
 public:
  QuotingScreen()
      : Screen(Adding<Side>::screen), search_(field("tkey"), grid("gridGoods"), [this](const QString& typed) {
          const QString chosen = field("comLb").key();
          const QString ofClass = chosen == QStringView(allKey) ? QString() : chosen;
          return quotations::goodsToQuote({.key = typed, .classNumber = ofClass});
        }) {
    panel()
        .form({Adding<Side>::isCustomer ? "tKh dateBj comUser" : "tGhs dateBj comUser", "tnote"})
        .row("tkey btnSearch comLb |")
        .grid("gridGoods", 3)
        .row("btnModi btnDel btnImport |")
        .grid("gridStaging", 2)
        .buttons("| btnOK btnCancel");
    partner().onPick([] { return pickPartner<Side>(); });
    field("comLb").onChanged([this] { search_.search(); });
    grid("gridGoods").onActivated([this] { pick(grid("gridGoods").currentText("g_sn")); });
    grid("gridStaging").onActivated([this] { pick(grid("gridStaging").currentText("g_sn")); });
    grid("gridStaging").onChanged([this](const Row& row, std::string_view, const QString& text) {
      quotations::stage(row.text("g_sn"), text.toDouble(), prompt());
      showPicked(row.integer("id"));
    });
    on(command("btnSearch"), [this] {
      search_.search();
      field("tkey").focus();
    });
    on(command("btnModi"), [this] { pick(grid("gridStaging").currentText("g_sn")); });
    on(command("btnDel"), [this] {
      unstage(grid("gridStaging").currentId());
      showPicked();
    });
    on(command("btnImport"), [this] {
      ui::screenAs<LineImportScreen>("F_Bjgl_Import").importInto({.partner = partner().key()}, Lines::Staging);
      showPicked();
    });
    on(command("btnOK"), [this] { save(); });
  }

  bool quoteFor(const QString& code, const QString& name) {
    partner().clear();
    if (!code.isEmpty()) partner().setPicked({name, code});
    return showModal();
  }

  QSize sizeHint() const override { return {1120, 660}; }

 protected:
  void activate() override {
    clearStaging();
    field("dateBj").setText(clock::today());
    const auto employees = fillEmployees(Adding<Side>::isCustomer ? "u_xs" : "u_cg");
    field("comUser").setItems(employees);
    field("comUser").setKey(keyToPropose(employees, defaultEmployeeSn()));
    field("comLb").setItems(goodsClassItems());
    field("tnote").clear();
    showPicked();
    search_.begin();
  }
  void enterPressed(ui::Field& input) override {
    if (input.spec().name != "tkey") return Screen::enterPressed(input);
    if (!search_.enterSearches()) pick(grid("gridGoods").currentText("g_sn"));
  }
  bool mayLeave() override {
    if (grid("gridStaging").isEmpty()) return true;
    switch (prompt().askOrCancel(u"所选商品还未保存，是否保存？"_qs)) {
      case Answer::Yes:
        save();
        return false;  // it has closed itself, or something is missing
      case Answer::No:
        clearStaging();
        return true;
      default:
        return false;
    }
  }

 private:
  ui::Field& partner() { return field(Adding<Side>::partner); }

  void pick(const QString& goods) {
    if (goods.isEmpty()) return;
    if (ui::screenAs<TF_Bjgl_Sele>("F_Bjgl_Sele").pick(partnerSide(Side), partner().key(), goods)) showPicked();
    field("tkey").focus();
  }
  void showPicked(std::int64_t current = 0) {
    auto& list = grid("gridStaging");
    list.readNow(stagedLines());
    if (current != 0) list.selectId(current);
    for (const char* const name : {"btnModi", "btnDel"})
      command(name).setEnabled(!list.isEmpty());
  }
  void save() {
    if (!checkFields()) return;
    const auto quoted = quotations::save(partnerSide(Side),
                                         {.name = partner().text(),
                                          .partner = partner().key(),
                                          .date = field("dateBj").text(),
                                          .employee = field("comUser").key(),
                                          .note = field("tnote").text()},
                                         prompt());
    if (!quoted) return;
    say(u"已保存 %1 的 %2 个商品的报价"_qs.arg(partner().text()).arg(*quoted));
    accept();
  }

  ui::ListSearch search_;
};

// ---- one that stands -----------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kModiFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tdw", "往来单位：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tdj", "报价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tnote", "备注：", FieldKind::Text, "jxc_khbj.kb_note", 0, ui::OffersRemarks},
};
constexpr ui::CommandSpec kModiCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kModi = {
    .name = "F_Bjgl_Modi", .title = "修改报价", .fields = kModiFields, .commands = kModiCommands, .focus = "tdj"};

class TF_Bjgl_Modi : public ui::Screen {
 public:
  TF_Bjgl_Modi() : Screen(kModi) {
    panel().form({"tname", "tdw", "tdj", "tnote"}).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] {
      if (quotations::change(*side_, id_, field("tdj").number(), field("tnote").text(), prompt())) accept();
    });
  }
  bool edit(const PartnerSide& side, const Row& row) {
    side_ = &side;
    id_ = row.integer("id");
    field("tname").setText(row.text("g_sn") + u' ' + row.text("g_name"));
    field("tdw").setText(row.text("name"));
    field("tdj").setNumber(row.number("bj"));
    field("tnote").setText(row.text("note"));
    return showModal();
  }

 private:
  const PartnerSide* side_ = nullptr;
  std::int64_t id_ = 0;
};

const ui::Registered<TF_Bjgl_Sele> kRegisteredPrice{"F_Bjgl_Sele"};
const ui::Registered<QuotingScreen<PartnerType::Customer>> kRegisteredCustomer{"F_Bjgl_Add"};
const ui::Registered<QuotingScreen<PartnerType::Supplier>> kRegisteredSupplier{"F_Bjgl_Add2"};
const ui::Registered<TF_Bjgl_Modi> kRegisteredModi{"F_Bjgl_Modi"};
const RegisteredImport kRegisteredImport{"F_Bjgl_Import", quotations::sheet, quotations::lines};

}  // namespace bjgl_add_detail

template <PartnerType Side>
bool addQuotations(const QString& partner, const QString& name) {
  using namespace bjgl_add_detail;
  return ui::screenAs<QuotingScreen<Side>>(Adding<Side>::name).quoteFor(partner, name);
}
template bool addQuotations<PartnerType::Customer>(const QString& partner, const QString& name);
template bool addQuotations<PartnerType::Supplier>(const QString& partner, const QString& name);

template <PartnerType Side>
bool changeQuotation(const Row& row) {
  return ui::screenAs<bjgl_add_detail::TF_Bjgl_Modi>("F_Bjgl_Modi").edit(partnerSide(Side), row);
}
template bool changeQuotation<PartnerType::Customer>(const Row& row);
template bool changeQuotation<PartnerType::Supplier>(const Row& row);

}  // namespace jxc
