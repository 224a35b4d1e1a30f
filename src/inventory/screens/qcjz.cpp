// 期初建账: what stands in a warehouse before the first document, and the ways of entering it.
#include "core/clock.h"
#include "core/defaults.h"
#include "core/fillers.h"
#include "core/rights.h"
#include "core/text.h"
#include "inventory/opening_stock.h"
#include "masterdata/screens/goods_class_tree.h"
#include "masterdata/screens/marked_deletion.h"
#include "stock/screens/lens_sheet_screen.h"
#include "stock/screens/line_import_screen.h"
#include "ui/list_search.h"
#include "ui/progress.h"
#include "ui/screen.h"

#include <QLineEdit>

namespace jxc::qcjz_detail {

using opening_stock::Entry;
using ui::ColumnKind;
using ui::FieldKind;

constexpr Right kMakesGoods{"qtcz", 1};

// ---- one goods -----------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kQuantity{"tsl", "期初数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    kCost{"tcbj", "成本价：", FieldKind::Money, "", 0, ui::NoMinus};
constexpr ui::FieldSpec kAddFields[] = {{"tkey", "商品信息：", FieldKind::Text, "", 50}, kQuantity, kCost};
constexpr ui::FieldSpec kModiFields[] = {
    {"tname", "商品名称：", FieldKind::Text, "", 0, ui::ReadOnly}, kQuantity, kCost};
constexpr ui::ColumnSpec kAddColumns[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 12},
    {"g_name", "商品名称", ColumnKind::Text, 28},
    {"g_qgd", "屈光度", ColumnKind::Power, 8},
    {"g_sgd", "散光度", ColumnKind::Power, 8},
    {"gg_name", "规格型号", ColumnKind::Text, 14},
    {"color_name", "颜色", ColumnKind::Text, 8},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"g_sptm", "商品条码", ColumnKind::Text, 15},
    {"g_jj", "预设进价", ColumnKind::Money, 0, {}, kSeesCost},
};
constexpr ui::GridSpec kAddGrids[] = {{"gridGoods", "未建账商品", kAddColumns, "没有未建账的商品"}};
constexpr ui::CommandSpec kAddCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kAdd = {.name = "F_Qcjz_Add",
                                 .title = "期初库存",
                                 .fields = kAddFields,
                                 .grids = kAddGrids,
                                 .commands = kAddCommands,
                                 .focus = "tkey"};

constexpr ui::ScreenSpec kModi = {
    .name = "F_Qcjz_Modi", .title = "修改期初库存", .fields = kModiFields, .commands = kAddCommands, .focus = "tsl"};
constexpr char16_t kWhatCostIs[] = u"成本价是计算销售毛利的成本，也成为该商品的预设进价和成本均价。";

/// The cost of a form. Who may not see it types none: it stays what it is.
class CostInput {
 public:
  explicit CostInput(ui::Field& field) : field_(field) {}
  void show(double yuan) {
    yuan_ = yuan;
    field_.setVisible(hasRight(kSeesCost));
    field_.setNumber(yuan);
  }
  double yuan() const { return hasRight(kSeesCost) ? field_.number() : yuan_; }

 private:
  ui::Field& field_;
  double yuan_ = 0;
};

/// Enters goods one after the other until it is left.
class TF_Qcjz_Add : public ui::Screen {
 public:
  TF_Qcjz_Add()
      : Screen(kAdd), cost_(field("tcbj")), search_(field("tkey"), grid("gridGoods"), [this](const QString& typed) {
          return opening_stock::goodsToEnter(warehouse_, {.key = typed});
        }) {
    panel()
        .row("tkey")
        .grid("gridGoods")
        .row("tsl tcbj")  // as narrow as a number: beside its label, not at the far side of the list
        .text(QStringView(kWhatCostIs).toString())
        .buttons("| btnOK btnCancel");
    // Asked anew: the list has no cost for who may not see it.
    grid("gridGoods").onCurrentChanged([this] {
      cost_.show(opening_stock::proposedCost(grid("gridGoods").currentText("g_sn")));
    });
    grid("gridGoods").onActivated([this] { field("tsl").focus(); });
    on(command("btnOK"), [this] { save(); });
  }

  /// How many were entered.
  int enterInto(const QString& warehouse) {
    warehouse_ = warehouse;
    entered_ = 0;
    showModal();
    return entered_;
  }

  QSize sizeHint() const override { return {1000, 600}; }

 protected:
  void activate() override {
    field("tsl").clear();
    cost_.show(0);
    search_.begin();
  }
  void enterPressed(ui::Field& input) override {
    if (input.spec().name != "tkey") return Screen::enterPressed(input);
    if (!search_.enterSearches() && !grid("gridGoods").isEmpty()) field("tsl").focus();
  }

 private:
  void save() {
    const QString goods = grid("gridGoods").currentText("g_sn"), name = grid("gridGoods").currentText("g_name");
    const double pieces = field("tsl").number();
    if (!opening_stock::enter({goods, warehouse_, pieces, cost_.yuan()}, prompt())) return;
    ++entered_;
    say(u"已建账：%1 %2，数量 %3"_qs.arg(goods, name, numberText(pieces)));
    field("tsl").clear();
    search_.begin();
    field("tkey").focus();
  }

  CostInput cost_;
  ui::ListSearch search_;
  QString warehouse_;  // code
  int entered_ = 0;
};

/// Corrects what stands in a row of the list.
class TF_Qcjz_Modi : public ui::Screen {
 public:
  TF_Qcjz_Modi() : Screen(kModi), cost_(field("tcbj")) {
    panel().form({"tname", "tsl tcbj"}).text(QStringView(kWhatCostIs).toString()).buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] {
      if (opening_stock::change({goods_, warehouse_, field("tsl").number(), cost_.yuan()}, prompt())) accept();
    });
  }

  bool correct(const QString& warehouse, const Row& row) {
    warehouse_ = warehouse;
    goods_ = row.text("g_sn");
    field("tname").setText(goods_ + u' ' + row.text("g_name"));
    field("tsl").setNumber(row.number("kc_sl"));
    cost_.show(opening_stock::costOfBalance(row.integer("id")));
    return showModal();
  }

 private:
  CostInput cost_;
  QString warehouse_, goods_;  // codes
};

// ---- a class -------------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kClassFields[] = {
    {"tlb", "商品类别：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tsl", "期初数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr ui::CommandSpec kClassCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kClass = {
    .name = "F_Qcjz_Pl", .title = "批量建账", .fields = kClassFields, .commands = kClassCommands, .focus = "tsl"};

class TF_Qcjz_Pl : public ui::Screen {
 public:
  TF_Qcjz_Pl() : Screen(kClass) {
    panel()
        .form({"tlb", "tsl"})
        .text(u"该类别（不含下级类别）中尚未建账的每个商品都按此数量建账，成本价为各自的预设进价。"_qs)
        .buttons("| btnOK btnCancel");
    on(command("btnOK"), [this] { enterAll(); });
  }
  bool enterInto(const QString& warehouse, const GoodsClass& chosen) {
    warehouse_ = warehouse;
    class_ = chosen;
    return showModal();
  }

 protected:
  void activate() override {
    field("tlb").setText(class_.name);
    field("tsl").clear();
  }

 private:
  void enterAll() {
    const auto entered = opening_stock::enterClass(warehouse_, class_.number, field("tsl").number(), prompt(),
                                                   ui::progressOnDemand(u"正在批量建账……"_qs, this));
    if (!entered) return;
    prompt().notice(u"成功建账：%1  个商品。"_qs.arg(*entered));
    accept();
  }
  QString warehouse_;
  GoodsClass class_;
};

// ---- taking out ----------------------------------------------------------------------------------------------------

class TF_Qcjz_Dele : public MarkedDeletion {
 public:
  TF_Qcjz_Dele() : MarkedDeletion("F_Qcjz_Dele", "删除期初建账商品") {}
  int removeMarked(const QString& warehouse, const QStringList& goods) {
    return run(static_cast<std::size_t>(goods.size()), [=](const LineProgress& progress) -> std::optional<Outcome> {
      const auto removed = opening_stock::remove(warehouse, goods, progress);
      if (!removed) return {};
      return Outcome{removed->goods, removed->refusals};
    });
  }
};

// ---- the list ------------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {{"comCk", "选择仓库：", FieldKind::Combo},
                                     {"tkey", "商品信息：", FieldKind::Text, "", 50}};
constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 10},
    {"g_name", "商品名称", ColumnKind::Text, 24},
    {"g_qgd", "屈光度", ColumnKind::Power, 7},
    {"g_sgd", "散光度", ColumnKind::Power, 7},
    {"kc_sl", "库存数量", ColumnKind::Quantity, 9, {.sum = true}},
    {"kc_cbj", "成本价", ColumnKind::Money, 9, {}, kSeesCost},
    {"kczje", "库存金额", ColumnKind::Total, 11, {.sum = true}, kSeesCost},
    {"gg_name", "规格型号", ColumnKind::Text, 12},
    {"dw_name", "单位", ColumnKind::Text, 5},
    {"gc_name", "类别", ColumnKind::Text, 10},
    {.field = "color_name", .caption = "颜色", .use = {.hidden = true}},
    {.field = "g_sptm", .caption = "商品条码", .use = {.hidden = true}},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridKc", "期初库存", kColumns,
     "该仓库还没有商品：按F2逐个增加，F6按类别批量建账，F7从表格导入，F8按镜片光度表建账"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnAdd", "增加", "F2"},       {"btnModi", "修改数量或成本价", "F3"}, {"btnCx", "商品查询", "F4"},
    {"btnPlAdd", "批量建账", "F6"}, {"btnImport", "导入", "F7"},           {"btnJp", "镜片光度表", "F8"},
    {"btnDele", "删除", "Ctrl+D"},  {"btn_Export", "导出", "Ctrl+S"},      {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Qcjz",
                                    .title = "库存商品期初建帐",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tkey"};

class TF_Qcjz : public ui::Screen {
 public:
  TF_Qcjz()
      : Screen(kScreen),
        tree_(new GoodsClassTree(GoodsClassTree::Show::All, prompt())),
        search_(field("tkey"), list(), [this](const QString& typed) {
          const auto chosen = tree_->current();
          return opening_stock::balances(warehouse(), typed, chosen ? chosen->number : QString());
        }) {
    auto area = panel();
    area.row("comCk tkey |");
    auto [left, right] = area.columns(1, 4);
    left.widget(tree_, 1);
    right.grid("gridKc");
    area.buttons("btnAdd btnModi btnCx btnPlAdd btnImport btnJp btnDele btn_Export | btnCancel");
    list().setMultiSelect(true);
    list().onActivated([this] { correct(); });
    tree_->onCurrentChanged([this] { search_.search(); });
    field("comCk").onChanged([this] { search_.search(); });

    on(command("btnAdd"),
       [this] { entering([this] { return ui::screenAs<TF_Qcjz_Add>("F_Qcjz_Add").enterInto(warehouse()) > 0; }); });
    on(command("btnModi"), [this] { correct(); });
    on(command("btnCx"), [this] { field("tkey").focus(); });
    on(command("btnPlAdd"), [this] {
      entering([this] {
        const auto chosen = tree_->current();
        return chosen && ui::screenAs<TF_Qcjz_Pl>("F_Qcjz_Pl").enterInto(warehouse(), *chosen);
      });
    });
    on(command("btnImport"), [this] {
      entering([this] {
        return ui::screenAs<LineImportScreen>("F_Qcjz_Import").importInto(place(), Lines::Waiting).lines > 0;
      });
    });
    on(command("btnJp"), [this] {
      entering([this] {
        return enterLensSheets(opening_stock::lines(), place(), Lines::Waiting, hasRight(kMakesGoods),
                               hasRight(kSeesCost))
                   .lines > 0;
      });
    });
    on(command("btnDele"), [this] { removeMarked(); });
  }

 protected:
  void activate() override {
    const auto mine = fillOwnWarehouses();
    const QString last = warehouse();
    field("comCk").setItems(mine);
    field("comCk").setKey(keyToPropose(mine, last.isEmpty() ? defaultWarehouseSn() : last));
    tree_->search().clear();
    tree_->reload();
    search_.begin();
  }
  void enterPressed(ui::Field& input) override {
    if (input.spec().name != "tkey") return Screen::enterPressed(input);
    if (!search_.enterSearches() && !list().isEmpty()) list().focusRows();
  }

 private:
  ui::Grid& list() { return grid("gridKc"); }
  QString warehouse() { return field("comCk").key(); }
  LinePlace place() { return {.date = clock::today(), .warehouse = warehouse()}; }

  void entering(const std::function<bool()>& way) {
    if (refused({{warehouse().isEmpty(), u"请选择仓库！"_qs, Subject::Warehouse}}, prompt())) return;
    if (way()) list().reload();
    tree_->reload();  // a range of lenses may have been made on the way
  }

  void correct() {
    const auto row = list().current();
    if (!row || !opening_stock::mayChange(row->text("g_sn"), warehouse(), prompt())) return;
    if (ui::screenAs<TF_Qcjz_Modi>("F_Qcjz_Modi").correct(warehouse(), *row)) list().reload();
  }

  void removeMarked() {
    QStringList goods;
    for (const Row& row : list().selectedRows())
      goods << row.text("g_sn");
    if (!goods.isEmpty() && ui::screenAs<TF_Qcjz_Dele>("F_Qcjz_Dele").removeMarked(warehouse(), goods) > 0)
      list().reload();
  }

  GoodsClassTree* tree_;
  ui::ListSearch search_;
};

const ui::Registered<TF_Qcjz> kRegistered{"F_Qcjz"};
const ui::Registered<TF_Qcjz_Add> kRegisteredAdd{"F_Qcjz_Add"};
const ui::Registered<TF_Qcjz_Modi> kRegisteredModi{"F_Qcjz_Modi"};
const ui::Registered<TF_Qcjz_Pl> kRegisteredClass{"F_Qcjz_Pl"};
const ui::Registered<TF_Qcjz_Dele> kRegisteredDele{"F_Qcjz_Dele"};
const RegisteredImport kRegisteredImport{"F_Qcjz_Import", opening_stock::sheet, opening_stock::lines};

}  // namespace jxc::qcjz_detail
