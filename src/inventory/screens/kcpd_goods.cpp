#include "inventory/screens/kcpd_goods.h"

#include "core/session.h"
#include "core/text.h"
#include "inventory/stocktaking.h"
#include "masterdata/goods_classes.h"
#include "ui/grid_output.h"
#include "ui/screen.h"

#include <QItemSelectionModel>
#include <QTableView>

namespace jxc {
namespace kcpd_goods_detail {

using stocktaking::Uncounted;
using ui::ColumnKind;

// ---- classes to choose from --------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kClassColumns[] = {{"gc_name", "类别", ColumnKind::Text, 18}};
constexpr ui::GridSpec kClasses = {"gridLb", "类别", kClassColumns};

/// A list of goods beside the classes that it is of: several may be marked, and a class is all below it.
class GoodsOfClasses : public ui::Screen {
 public:
  QSize sizeHint() const override { return {1060, 600}; }

 protected:
  explicit GoodsOfClasses(const ui::ScreenSpec& spec) : Screen(spec) {
    panel().text(u"按住Ctrl或Shift可以选择多个类别，Ctrl+A选择所有类别"_qs);
    auto [left, right] = panel().columns(1, 3);
    left.grid("gridLb");
    right.grid(spec.grids.back().name);
    gridLb.setMultiSelect(true);
    connect(gridLb.view()->selectionModel(), &QItemSelectionModel::selectionChanged, this, [this] {
      if (!filling_) reload();
    });
  }
  void activate() override {
    RowSet classes({"id", "gc_sn", "gc_name"});
    std::int64_t id = 0;
    for (const ListItem& each : goodsClassItems()) {
      classes.addInteger(++id);
      classes.addText(each.key == QString::fromUtf16(allKey) ? std::string() : each.key.toStdString());
      classes.addText(each.text.toStdString());
    }
    filling_ = true;
    gridLb.setRows(std::move(classes));
    gridLb.selectRow(0);
    filling_ = false;
    reload();
  }
  virtual void reload() = 0;
  /// Numbers of those that are marked; empty: all.
  QStringList chosen() const {
    QStringList numbers;
    for (const Row& each : gridLb.selectedRows())
      if (const QString number = each.text("gc_sn"); number.isEmpty())
        return {};
      else
        numbers << number;
    return numbers;
  }
  QString chosenInWords() const {
    QStringList names;
    for (const Row& each : gridLb.selectedRows())
      names << each.text("gc_name").trimmed();
    return names.isEmpty() ? u"所有类别"_qs : names.join(u'、');
  }

 private:
  ui::Grid& gridLb = grid("gridLb");
  bool filling_ = false;
};

// ---- goods that nobody has counted -------------------------------------------------------------------------------

constexpr ui::ColumnSpec kUncountedColumns[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 10},
    {"g_name", "商品名称", ColumnKind::Text, 28},
    {"gg_name", "规格型号", ColumnKind::Text, 12},
    {"color_name", "颜色", ColumnKind::Text, 8},
    {"dw_name", "单位", ColumnKind::Text, 5},
    {"kc_sl", "库存数量", ColumnKind::Quantity, 10, {.sum = true}},
    {"kc_zsl", "帐面库存", ColumnKind::Quantity, 10, {.sum = true}},
    {"kc_cbj", "成本价", ColumnKind::Money, 11, {}, kSeesCost},
    {.field = "g_sptm", .caption = "商品条码", .width = 15, .use = {.hidden = true}},
};
constexpr ui::GridSpec kUncountedGrids[] = {
    kClasses, {"gridGoods", "未盘商品", kUncountedColumns, "所选类别中有库存的商品都已在单据中"}};
constexpr ui::CommandSpec kUncountedCommands[] = {
    {"btnZero", "按0盘点", "F6", "列表中的商品都没有找到：盘点数量为0"},
    {"btnBook", "按帐面盘点", "F7", "列表中的商品没有清点：盘点数量等于库存，没有盈亏"},
    {"btnCancel", "不处理", "Esc"},
};
constexpr ui::ScreenSpec kUncounted = {.name = "F_Kcpd_Wp",
                                       .title = "未盘商品",
                                       .grids = kUncountedGrids,
                                       .commands = kUncountedCommands,
                                       .focus = "gridLb"};

class TF_Kcpd_Wp : public GoodsOfClasses {
 public:
  TF_Kcpd_Wp() : GoodsOfClasses(kUncounted) {
    panel().buttons("btnZero btnBook | btnCancel");
    on(command("btnZero"), [this] { take(Uncounted::Zero); });
    on(command("btnBook"), [this] { take(Uncounted::AsBook); });
  }
  CopyResult handle(const LinePlace& place, Lines where) {
    place_ = place;
    where_ = where;
    result_ = {};
    result_.number = place.number;
    showModal();
    return result_;
  }

 protected:
  void activate() override {
    const bool blind = where_ == Lines::Draft && stocktaking::rules().lines().hidesStock();
    for (const char* stock : {"kc_sl", "kc_zsl"})
      gridGoods.setColumnAllowed(stock, !blind);
    gridGoods.setColumnAllowed("kc_cbj", !blind && session().canSeeCost);
    GoodsOfClasses::activate();
  }

 private:
  void reload() override {
    gridGoods.readNow(stocktaking::uncounted(place_, where_, chosen()));
    for (const char* name : {"btnZero", "btnBook"})
      command(name).setEnabled(!gridGoods.isEmpty());
  }
  void take(Uncounted as) {
    const QString what = as == Uncounted::Zero ? u"盘点数量为0（没有找到）"_qs : u"盘点数量等于库存（没有盈亏）"_qs;
    if (!prompt().ask(u"列表中的 %1 种商品将加入盘点单，"_qs.arg(gridGoods.rowCount()) + what + u"，确认吗？"_qs))
      return;
    const CopyResult taken = stocktaking::takeUncounted(place_, where_, chosen(), as);
    isRefused(taken.closed, prompt());
    result_.lines += taken.lines;
    result_.number = place_.number = taken.number;
    reload();
    if (gridGoods.isEmpty() && chosen().isEmpty()) accept();
  }

  ui::Grid& gridGoods = grid("gridGoods");
  LinePlace place_;
  Lines where_ = Lines::Draft;
  CopyResult result_;
};

// ---- empty sheets ------------------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kSheetColumns[] = {
    {"gc_name", "类别", ColumnKind::Text, 14},    {"g_sn", "商品编号", ColumnKind::Text, 10},
    {"g_name", "商品名称", ColumnKind::Text, 28}, {"gg_name", "规格型号", ColumnKind::Text, 12},
    {"color_name", "颜色", ColumnKind::Text, 8},  {"dw_name", "单位", ColumnKind::Text, 5},
    {"g_sptm", "商品条码", ColumnKind::Text, 15}, {"pdsl", "盘点数量", ColumnKind::Text, 12},
};
constexpr ui::GridSpec kSheetGrids[] = {kClasses,
                                        {"gridSheet", "盘点表", kSheetColumns, "所选类别的商品在当前仓库中没有库存"}};
constexpr ui::CommandSpec kSheetCommands[] = {{"btnPrin", "打印", "Ctrl+P", "打印空白盘点表，盘点数量用笔填写"},
                                              {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kSheet = {
    .name = "F_Kcpd_Pdb", .title = "盘点表", .grids = kSheetGrids, .commands = kSheetCommands, .focus = "gridLb"};

class TF_Kcpd_Pdb : public GoodsOfClasses {
 public:
  TF_Kcpd_Pdb() : GoodsOfClasses(kSheet) {
    panel().buttons("btnPrin | btnCancel");
    // Whoever takes the paper along knows where to go.
    grid("gridSheet").setHeading([this] {
      return ui::GridHeading{u"盘点表"_qs, u"仓库："_qs + place_.text + u"　类别："_qs + chosenInWords()};
    });
    on(command("btnPrin"), [this] { ui::printGrid(grid("gridSheet")); });
  }
  void showOf(const ListItem& warehouse) {
    place_ = warehouse;
    showModal();
  }

 private:
  void reload() override { grid("gridSheet").setRows(stocktaking::countSheet(place_.key, chosen())); }

  ListItem place_;
};

// ---- another count -----------------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kJoinColumns[] = {
    {"gl_djh", "单据编号", ColumnKind::Text, 16},    {"pd_rq", "盘点日期", ColumnKind::Date},
    {"pd_sl", "盘点数量", ColumnKind::Quantity, 10}, {"a_name", "操作员", ColumnKind::Text, 10},
    {"pd_note", "备注", ColumnKind::Text, 28},
};
constexpr ui::GridSpec kJoinGrids[] = {{"gridJoin", "可以合并的盘点单", kJoinColumns, "没有可以合并的盘点单"}};
constexpr ui::CommandSpec kJoinCommands[] = {{"btnOK", "合并", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kJoin = {
    .name = "F_Kcpd_Hb", .title = "合并盘点单", .grids = kJoinGrids, .commands = kJoinCommands, .focus = "gridJoin"};

class TF_Kcpd_Hb : public ui::Screen {
 public:
  TF_Kcpd_Hb() : Screen(kJoin) {
    panel()
        .text(u"选择同一仓库、同一日期的待审核盘点单，它的商品将并入当前单据"_qs)
        .grid("gridJoin")
        .buttons("| btnOK btnCancel");
    grid("gridJoin").onActivated([this] { accept(); });
    on(command("btnOK"), [this] { accept(); });
  }
  QString choose(const RowSet& counts) {
    counts_ = counts;
    return showModal() ? grid("gridJoin").currentText("gl_djh") : QString();
  }
  QSize sizeHint() const override { return {760, 420}; }

 protected:
  void activate() override { grid("gridJoin").setRows(counts_); }

 private:
  RowSet counts_;
};

const ui::Registered<TF_Kcpd_Wp> kRegisteredUncounted{"F_Kcpd_Wp"};
const ui::Registered<TF_Kcpd_Pdb> kRegisteredSheet{"F_Kcpd_Pdb"};
const ui::Registered<TF_Kcpd_Hb> kRegisteredJoin{"F_Kcpd_Hb"};

}  // namespace kcpd_goods_detail

CopyResult handleUncounted(const LinePlace& place, Lines where) {
  return ui::screenAs<kcpd_goods_detail::TF_Kcpd_Wp>("F_Kcpd_Wp").handle(place, where);
}

void showCountSheet(const ListItem& warehouse) {
  ui::screenAs<kcpd_goods_detail::TF_Kcpd_Pdb>("F_Kcpd_Pdb").showOf(warehouse);
}

QString chooseJoined(const QString& number, Prompt& prompt) {
  const RowSet counts = stocktaking::joinable(number);
  if (counts.isEmpty()) {
    prompt.notice(u"没有同一仓库、同一日期的其他待审核盘点单！"_qs);
    return {};
  }
  return ui::screenAs<kcpd_goods_detail::TF_Kcpd_Hb>("F_Kcpd_Hb").choose(counts);
}

}  // namespace jxc
