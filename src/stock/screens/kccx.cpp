// 当前库存查询: the panel of current stock, and the small dialog behind "查找".
#include "core/clock.h"
#include "core/fillers.h"
#include "core/rights.h"
#include "core/session.h"
#include "masterdata/goods_classes.h"
#include "masterdata/goods_lenses.h"
#include "output/money_reports.h"
#include "output/screens/print_outlet.h"
#include "stock/screens/power_matrix.h"
#include "stock/stock_enquiry.h"
#include "ui/grid_output.h"
#include "ui/screen.h"

#include <QTabWidget>

namespace jxc {
namespace kccx_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"comCk", "仓库：", FieldKind::Combo},
    {"tsplb", "商品类别：", FieldKind::Combo},
    {"tkey", "商品信息：", FieldKind::Text, "", 50},
    {"chk0", "不显示库存为零的商品", FieldKind::Check},
    {"chkJy", "显示禁用商品", FieldKind::Check},
    {"comCk4", "仓库：", FieldKind::Combo},
    {"tKey4", "镜片信息：", FieldKind::Text, "", 50},
};
constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号"},
    {"g_name", "商品名称", ColumnKind::Text, 24},
    {"gc_name", "类别"},
    {"gg_name", "规格型号"},
    {"color_name", "颜色"},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"kcsl", "当前库存", ColumnKind::Quantity, 0, true},
    {"kczsl", "帐面库存(含未入库)", ColumnKind::Quantity, 0, true},
    {"xssl", "销售总数", ColumnKind::Quantity, 0, true},
    {"g_scjj", "上次进价", ColumnKind::Money},
    {"cbjj", "成本均价", ColumnKind::Money},
    {"kczje", "库存总值", ColumnKind::Total, 0, true},
    {"g_sj", "预设售价", ColumnKind::Money},
    {"xszje", "售价总值", ColumnKind::Total, 0, true},
    {.field = "fzkc", .caption = "辅助单位库存", .kind = ColumnKind::Quantity, .hidden = true},
    {.field = "g_sptm", .caption = "商品条码", .hidden = true},
    {.field = "g_sccs", .caption = "商品产地", .hidden = true},
};
constexpr ui::ColumnSpec kLensColumns[] = {{"g_name", "镜片名称", ColumnKind::Text, 40}};
constexpr ui::GridSpec kGrids[] = {
    {"gridKc", "当前库存", kColumns, "没有符合条件的商品，改变条件后按F2查询", "id", "kccx"},
    {"gridJp4", "镜片", kLensColumns, "没有符合条件的镜片，改变条件后按F2查询", "g_name"}};
constexpr ui::CommandSpec kCommands[] = {{"btnCx1", "查询", "F2"},       {"btnCx", "查找", "F3"},
                                         {"btnAll", "全部", "F4"},       {"btnCx4", "查询", "F2"},
                                         {"btn_Prin", "打印", "Ctrl+P"}, {"btn_Export", "导出", "Ctrl+S"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Kccx",
                                    .title = "当前库存查询",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tkey"};

constexpr ui::FieldSpec kSearchFields[] = {
    {"comCk", "仓库：", FieldKind::Combo},
    {"comGhs", "供货商：", FieldKind::Combo},
    {"comBj", "当前库存：", FieldKind::Combo},
    {"tsl", "数量：", FieldKind::Quantity},
};
constexpr ui::CommandSpec kSearchCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kSearch = {
    .name = "F_Kccx_Cx", .title = "查找库存", .fields = kSearchFields, .commands = kSearchCommands, .focus = "comCk"};

std::vector<ListItem> warehouses() {
  Filter bound;
  addWarehouseBinding(bound);
  // An operator bound to warehouses chooses among his own; the others may take all at once.
  return fillWarehouseCombo(isWarehouseBound() ? QString() : QStringLiteral("所有仓库"), bound);
}

/// Classes in tree order, indented by their level.
std::vector<ListItem> classes() {
  std::vector<ListItem> items{{QStringLiteral("所有类别"), {}}};
  for (const GoodsClass& each : goodsClasses()) {
    if (each.isRoot()) continue;
    const auto level = (each.number.size() - 4) / 3;
    items.push_back({QString(level * 2, QChar(u'　')) + each.name, each.number});
  }
  return items;
}

}  // namespace kccx_detail

class TF_Kccx_Cx : public ui::Screen {
 public:
  TF_Kccx_Cx();
  ui::Field& comCk = field("comCk");
  ui::Field& comGhs = field("comGhs");
  ui::Field& comBj = field("comBj");
  ui::Field& tsl = field("tsl");

 protected:
  void activate() override;
};

class TF_Kccx : public ui::Screen {
 public:
  TF_Kccx();
  ui::Field& comCk = field("comCk");
  ui::Field& tsplb = field("tsplb");
  ui::Field& tkey = field("tkey");
  ui::Field& chk0 = field("chk0");
  ui::Field& chkJy = field("chkJy");
  ui::Grid& gridKc = grid("gridKc");
  ui::Field& comCk4 = field("comCk4");
  ui::Field& tKey4 = field("tKey4");
  ui::Grid& gridJp4 = grid("gridJp4");

 protected:
  void activate() override;

 private:
  void placeLenses(ui::Panel page);
  void queryLenses();
  QString lensWarehouse() const { return comCk4.key() == u"-1" ? QString() : comCk4.key(); }  // empty: all
  void query();
  void search();
  void showAll();
  void exportShown();
  void print();
  StockFilter filter() const;
  QString supplier_;
  std::optional<StockComparison> comparison_;
  PowerMatrix* matrix_;
  QTabWidget* pages_;
};

TF_Kccx_Cx::TF_Kccx_Cx() : Screen(kccx_detail::kSearch) {
  panel().form({"comCk", "comGhs", "comBj tsl"}).buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { accept(); });
}

void TF_Kccx_Cx::activate() {
  comCk.setItems(kccx_detail::warehouses(), true);
  std::vector<ListItem> suppliers{{QStringLiteral("所有供货商"), {}}};
  for (const Row row : fillSuppliers())
    suppliers.push_back({row.text("ghs_name"), row.text("ghs_sn")});
  comGhs.setItems(suppliers);
  std::vector<ListItem> signs{{QStringLiteral("不限"), {}}};
  for (const char16_t* sign : {u"=", u">=", u"<=", u"<>", u">", u"<"}) {
    signs.push_back({QString::fromUtf16(sign), QString::fromUtf16(sign)});
  }
  comBj.setItems(signs);
  tsl.setNumber(0);
}

TF_Kccx::TF_Kccx() : Screen(kccx_detail::kScreen) {
  resize(1160, 660);
  auto area = panel();
  area.page("cxTab1", QStringLiteral("当前库存"))
      .row("comCk tsplb tkey btnCx1 |")
      .row("chk0 chkJy | btnCx btnAll")
      .grid("gridKc");
  placeLenses(area.page("cxTab4", QStringLiteral("镜片明细查询")));
  area.buttons("btn_Prin btn_Export | btnCancel");
  pages_ = area.tabs();
  tkey.onEnter([this] {
    query();
    return true;
  });
  for (ui::Field* each : {&comCk, &tsplb, &chk0, &chkJy}) {
    each->onChanged([this] { query(); });
  }
  connect(pages_, &QTabWidget::currentChanged, this, [this](int page) {
    if (page == 1 && gridJp4.isEmpty()) queryLenses();
    (page == 1 ? tKey4 : tkey).focus();
  });
  on(command("btnCx1"), [this] { query(); });
  on(command("btnCx"), [this] { search(); });
  on(command("btnAll"), [this] { showAll(); });
  on(command("btn_Export"), [this] { exportShown(); });
  on(command("btn_Prin"), [this] { print(); });
}

// Of the lens page the table of powers is wanted, not the list of names beside it.
void TF_Kccx::exportShown() {
  if (pages_->currentIndex() == 0) return ui::exportGrid(gridKc);
  if (!matrix_->isEmpty()) ui::exportSheet(matrix_->sheet(), gridJp4.currentText("g_name"), this);
}

// Lenses of one name by their powers, spheres downwards and cylinders across.
void TF_Kccx::placeLenses(ui::Panel page) {
  matrix_ = new PowerMatrix;
  page.row("comCk4 tKey4 btnCx4 |");
  auto [names, table] = page.columns(2, 5);
  names.grid("gridJp4");
  table.widget(matrix_, 1);
  on(command("btnCx4"), [this] { queryLenses(); });
  tKey4.onEnter([this] {
    queryLenses();
    return true;
  });
  comCk4.onChanged([this] { queryLenses(); });
  gridJp4.followKeysOf(tKey4.widget());
  gridJp4.onCurrentChanged([this] {
    const QString name = gridJp4.currentText("g_name");
    matrix_->show(name.isEmpty() ? PowerTable{} : lensPowerTable(name, lensWarehouse()));
  });
}

void TF_Kccx::queryLenses() {
  gridJp4.loadQuery(lensNamesStatement(tKey4.text(), lensWarehouse()));
}

void TF_Kccx::activate() {
  pages_->setCurrentIndex(0);
  comCk4.setItems(kccx_detail::warehouses(), true);
  tKey4.clear();
  gridJp4.clearRows();
  comCk.setItems(kccx_detail::warehouses(), true);
  tsplb.setItems(kccx_detail::classes(), true);
  const bool seesCost = hasRight("kcgl", 16);
  for (const char* column : {"g_scjj", "cbjj", "kczje"})
    gridKc.setColumnAllowed(column, seesCost);
  for (const char* column : {"g_sj", "xszje"})
    gridKc.setColumnAllowed(column, session().canSeePrice);
  query();
}

StockFilter TF_Kccx::filter() const {
  return {.warehouse = comCk.key(),
          .classNumber = tsplb.key(),
          .key = tkey.trimmed(),
          .supplier = supplier_,
          .comparison = comparison_,
          .hideZero = chk0.isChecked(),
          .withDisabled = chkJy.isChecked()};
}

void TF_Kccx::query() {
  gridKc.loadQuery(currentStockStatement(filter()));
}

void TF_Kccx::search() {
  auto& dialog = ui::screenAs<TF_Kccx_Cx>("F_Kccx_Cx");
  if (!dialog.showModal()) return;
  comCk.setKey(dialog.comCk.key());
  supplier_ = dialog.comGhs.key();
  comparison_.reset();
  if (!dialog.comBj.key().isEmpty()) comparison_ = StockComparison{dialog.comBj.key(), dialog.tsl.number()};
  query();
}

void TF_Kccx::showAll() {
  tkey.clear();
  tsplb.setIndex(0);
  supplier_.clear();
  comparison_.reset();
  query();
}

void TF_Kccx::print() {
  gridKc.waitLoaded();
  report::Report report = listReport(u"kccx", gridKc.rows(), clock::today());
  report.setText(u"ckName", comCk.text());
  // Paper shows what the role sees on the screen.
  report.setNumber(u"seesCost", hasRight("kcgl", 16) ? 1 : 0);
  report.setNumber(u"seesPrice", session().canSeePrice ? 1 : 0);
  sendToPaper(report, PrintWay::Preview, this, windowTitle());
}

namespace kccx_detail {
const ui::Registered<TF_Kccx> kRegistered{"F_Kccx"};
const ui::Registered<TF_Kccx_Cx> kSearchRegistered{"F_Kccx_Cx"};
}  // namespace kccx_detail

}  // namespace jxc
