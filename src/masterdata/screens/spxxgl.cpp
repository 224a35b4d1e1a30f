#include "masterdata/screens/spxxgl.h"

#include "core/refusal.h"
#include "core/rights.h"
#include "core/session.h"
#include "core/text.h"
#include "masterdata/goods.h"
#include "masterdata/screens/goods_class_picker.h"
#include "masterdata/screens/goods_picture.h"
#include "masterdata/screens/spxxgl_add.h"
#include "masterdata/screens/spxxgl_lens.h"
#include "masterdata/screens/spxxgl_modi.h"
#include "masterdata/screens/spxxgl_prices.h"
#include "masterdata/screens/spxxgl_small.h"
#include "output/money_reports.h"
#include "output/screens/print_outlet.h"
#include "ui/progress.h"

#include <QAction>
#include <QApplication>
#include <QItemSelectionModel>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTableView>
#include <QTreeWidget>

#include <algorithm>

namespace jxc {
namespace spxxgl_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tkey", "输入商品相关信息查询商品F6：", FieldKind::Text, "", 100},
    {"chkDisp", "显示禁用商品", FieldKind::Check},
    {"chkPic", "单击显示图片", FieldKind::Check},
};
constexpr ui::ColumnSpec kColumns[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 12},
    {"g_name", "商品全名", ColumnKind::Text, 30},
    {"g_qgd", "屈光度", ColumnKind::Power, 8},
    {"g_sgd", "散光度", ColumnKind::Power, 8},
    {"gc_name", "商品类别", ColumnKind::Text, 12},
    {"gg_name", "规格型号", ColumnKind::Text, 16},
    {"color_name", "颜色", ColumnKind::Text, 8},
    {"dw_name", "单位", ColumnKind::Text, 6},
    {"g_sptm", "商品条码", ColumnKind::Text, 15, {.editable = true}},
    {.field = "g_kc", .caption = "当前库存", .kind = ColumnKind::Quantity, .use = {.sum = true}},
    {"g_jj", "预设进价", ColumnKind::Money, 0, {}, kSeesCost},
    {"g_sj", "预设售价", ColumnKind::Money, 0, {.editable = true}, kSeesPrice},
    {"g_sj1", "一级批发价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_sj2", "二级批发价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_sj3", "三级批发价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_sj4", "四级批发价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_sj5", "五级批发价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_lsj", "零售价", ColumnKind::Money, 0, {}, kSeesPrice},
    {"g_zdkc", "库存下限", ColumnKind::Number, 0, {.editable = true}},
    {"g_jm", "简码", ColumnKind::Text, 12},
    {"g_qc", "商品名称", ColumnKind::Text, 20},
    {"g_gdcbj", "销售成本价", ColumnKind::Flag},
    {"g_iszp", "赠品", ColumnKind::Flag},
    {"g_jy", "禁用", ColumnKind::Flag},
    {"g_sccs", "产品产地", ColumnKind::Text, 20},
    {"g_bz", "备注", ColumnKind::Text, 20},
    {"g_scjj", "上次进价", ColumnKind::Money, 0, {.hidden = true}, kSeesCost},
    {"g_pjjj", "成本均价", ColumnKind::Money, 0, {.hidden = true}, kSeesCost},
    {.field = "dw_name2", .caption = "辅助单位", .use = {.hidden = true}},
    {.field = "fzkc", .caption = "辅助库存", .kind = ColumnKind::Quantity, .use = {.hidden = true}},
};
constexpr ui::GridSpec kGrids[] = {{"gridSp", "商品列表", kColumns, "没有符合条件的商品，按F2增加", "id", "spxxgl"}};
constexpr ui::CommandSpec kCommands[] = {{"btnRAddQt", "增加商品", "F2"},     {"btnRAddJp", "增加镜片", "F7"},
                                         {"btnRAddPl", "批量增加镜片", "F8"}, {"btnModi2", "修改", "F3"},
                                         {"btnDele2", "删除", "Ctrl+D"},      {"btnMore", "更多操作"},
                                         {"btn_Export", "导出", "Ctrl+S"},    {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Spxxgl",
                                    .title = "商品信息管理",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tkey"};

constexpr int kWatch = 5000;  // ms between looks at what other stations have written

constexpr std::string_view kLevelColumns[] = {"g_sj1", "g_sj2", "g_sj3", "g_sj4", "g_sj5"};
constexpr std::string_view kStockColumns[] = {"g_kc", "fzkc"};

}  // namespace spxxgl_detail

TF_Spxxgl::TF_Spxxgl()
    : Screen(spxxgl_detail::kScreen),
      tree_(new GoodsClassTree(GoodsClassTree::Show::All, prompt())),
      picture_(new QLabel),
      more_(new QMenu(this)) {
  picture_->setObjectName(QStringLiteral("imagePic"));
  picture_->setAccessibleName(QStringLiteral("商品图片"));
  picture_->setAlignment(Qt::AlignCenter);
  picture_->setFrameShape(QFrame::StyledPanel);
  picture_->setProperty("emptyHint", true);
  picture_->setFixedHeight(fontMetrics().height() * 10);
  picture_->hide();

  auto area = panel();
  auto [left, right] = area.columns(1, 4);
  left.widget(tree_, 1).widget(picture_);
  right.row("tkey chkDisp chkPic").grid("gridSp");
  area.buttons("btnRAddQt btnRAddJp btnRAddPl btnModi2 btnDele2 btnMore btn_Export | btnCancel");

  gridSp.setMultiSelect(true);
  gridSp.setRowFilter([this](const RowSet& rows, bool areNew) {
    if (areNew) index_ = GoodsIndex(rows);
    // With the search on Enter the query has found the rows already.
    return onEnter_ ? index_.find({}) : index_.find(tkey.text(), classNumber());
  });
  // Disabled goods are listed on demand, their stock is no stock to sell.
  gridSp.setCounts([](const Row& row) { return !row.flag("g_jy"); });
  gridSp.setRowLook([](const Row& row) { return row.flag("g_jy") ? ui::RowLook::Muted : ui::RowLook::Normal; });
  gridSp.onCurrentChanged([this] { showPicture(); });

  tree_->offerEditing();
  tree_->onCurrentChanged([this] { narrow(); });
  gridSp.followKeysOf(tkey.widget());
  tkey.onChanged([this] {
    if (!onEnter_) narrow();
  });
  tkey.onEnter([this] {
    if (onEnter_) load();
    if (!gridSp.isEmpty()) gridSp.focusRows();
    return true;
  });
  chkDisp.onChanged([this] { load(); });
  chkPic.onChanged([this] { showPicture(); });
  const auto adding = [this](std::string_view name, std::function<bool()> add) {
    on(command(name), [this, add = std::move(add)] {
      if (warehouseIsMissing()) return;
      if (add()) load();
      tree_->reload();  // classes may have been made on the way
    });
  };
  adding("btnRAddQt", [this] { return ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add").addTo(tree_->current()) > 0; });
  adding("btnRAddJp", [this] { return ui::screenAs<TF_Spxxgl_Add2>("F_Spxxgl_Add2").addTo(tree_->current()) > 0; });
  adding("btnRAddPl", [this] { return ui::screenAs<TF_Spxxgl_Add3>("F_Spxxgl_Add3").addTo(tree_->current()); });
  addCommands();
  watch_.setInterval(spxxgl_detail::kWatch);
  connect(&watch_, &QTimer::timeout, this, [this] { followOtherStations(); });
}

void TF_Spxxgl::addCommands() {
  const auto button = [this](std::string_view name, bool (TF_Spxxgl::*action)()) {
    on(command(name), [this, action] {
      if (gridSp.current() && (this->*action)()) load();
    });
  };
  button("btnModi2", &TF_Spxxgl::modify);
  button("btnDele2", &TF_Spxxgl::deleteOne);
  gridSp.onActivated([this] { command("btnModi2").click(); });
  gridSp.onChanged([this](const Row& row, std::string_view column, const QString& text) {
    changeGoodsCell(row.integer("id"), column, text, prompt());
    load();
  });

  listCommand("btnRModi", u"修改商品"_qs, [this] { return modify(); });
  listCommand("btnRCopy", u"复制为新商品"_qs, [this] { return copy(); });
  listCommand("btnRDel", u"删除商品"_qs, [this] { return deleteOne(); });
  listCommand("btnRDeleLb", u"批量删除选中的商品"_qs, [this] { return deleteMarked(); });
  listCommand("btnRForbid", u"禁用(解除禁用)商品"_qs, [this] { return disableOne(); });
  listCommand("btnRForbidPl", u"批量禁用选中的商品"_qs, [this] { return disableMarked(); });
  listCommand("btnRModiLb", u"修改选中商品的类别"_qs, [this] { return changeClass(); });
  listCommand("btnRModiJm", u"修改商品简码"_qs, [this] {
    return ui::screenAs<TF_Spxxgl_Jm>("F_Spxxgl_Jm").edit(gridSp.currentId(), gridSp.currentText("g_jm"));
  });
  listCommand("btnRZdkc", u"修改选中商品的最低库存"_qs,
              [this] { return ui::screenAs<TF_Spxxgl_Zdkc>("F_Spxxgl_Zdkc").edit(marked()); });
  listCommand("brnRPfj", u"批量定义批发价"_qs, [this] {
    return ui::screenAs<TF_Spxxgl_Pfj>("F_Spxxgl_Pfj")
        .run(gridSp.currentText("gc_sn"), gridSp.currentText("gc_name"), marked());
  });
  commission_ = listCommand("btnRTc", u"POS销售提成设置"_qs, [this] {
    ui::screenAs<TF_Spxxgl_Tc>("F_Spxxgl_Tc").edit(gridSp.currentText("g_sn"), gridSp.currentText("g_name"));
    return false;
  });
  listCommand("btnRGdcbj", u"预设进价作为销售成本价"_qs, [this] { return fixCost(true); });
  listCommand("btnRGdcbj2", u"取消预设进价作为销售成本价"_qs, [this] { return fixCost(false); });
  listCommand("btnRPic", u"显示商品图片"_qs, [this] {
    chkPic.setChecked(true);
    showPicture();
    return false;
  });
  listCommand("btnRDispGoods", u"显示该类别的商品"_qs, [this] {
    showThisClass();
    return false;
  });
  listCommand("btnRPrinSele", u"打印选中商品的价签"_qs, [this] { return printLabels(marked()); });
  listCommand("btnRPrinAll", u"打印列表中全部商品的价签"_qs, [this] { return printLabels(shown()); });
  command("btnMore").setMenu(more_);
  tree_->addMenuCommand("btnMoveLevel", u"类别移动"_qs, true, [this] { moveClass(); });
}

QAction* TF_Spxxgl::listCommand(const char* name, const QString& caption, std::function<bool()> action) {
  auto* entry = gridSp.addMenuCommand(caption, [this, action = std::move(action)] {
    if (gridSp.current() && action()) load();
  });
  entry->setObjectName(QString::fromLatin1(name));
  more_->addAction(entry);
  return entry;
}

GoodsIds TF_Spxxgl::marked() const {
  GoodsIds ids;
  for (const Row& row : gridSp.selectedRows())
    ids.push_back(row.integer("id"));
  return ids;
}

GoodsIds TF_Spxxgl::shown() const {
  GoodsIds ids;
  for (const Row& row : gridSp.shownRows())
    ids.push_back(row.integer("id"));
  return ids;
}

bool TF_Spxxgl::printLabels(const GoodsIds& ids) {
  if (isRefused({!hasRight(kSeesPrice), u"您没有权限查看商品销售价，不能打印价签！"_qs}, prompt())) return false;
  sendToPaper(priceLabelReport(ids), PrintWay::Preview, this, QStringLiteral("商品价签"));
  return false;  // nothing changed
}

bool TF_Spxxgl::modify() {
  const std::int64_t id = gridSp.currentId();
  return gridSp.currentNumber("g_isjp") != 0 ? ui::screenAs<TF_Spxxgl_Modi2>("F_Spxxgl_Modi2").edit(id)
                                             : ui::screenAs<TF_Spxxgl_Modi>("F_Spxxgl_Modi").edit(id);
}

bool TF_Spxxgl::copy() {
  if (warehouseIsMissing()) return false;
  const std::int64_t id = gridSp.currentId();
  const int added = gridSp.currentNumber("g_isjp") != 0 ? ui::screenAs<TF_Spxxgl_Add2>("F_Spxxgl_Add2").addLike(id)
                                                        : ui::screenAs<TF_Spxxgl_Add>("F_Spxxgl_Add").addLike(id);
  tree_->reload();  // classes may have been made on the way
  return added > 0;
}

bool TF_Spxxgl::deleteOne() {
  const QString number = gridSp.currentText("g_sn");
  if (!deleteGoods(gridSp.currentId(), prompt())) return false;
  removeGoodsPicture(number);
  return true;
}

bool TF_Spxxgl::deleteMarked() {
  return ui::screenAs<TF_Spxxgl_Dele>("F_Spxxgl_Dele").deleteMarked(marked()) > 0;
}

bool TF_Spxxgl::disableOne() {
  setGoodsDisabled(gridSp.currentId(), gridSp.currentNumber("g_jy") == 0);
  chkDisp.setChecked(true);
  return true;
}

bool TF_Spxxgl::disableMarked() {
  const GoodsIds ids = marked();
  if (!flipGoodsDisabled(ids, prompt(), ui::progressOnDemand(QStringLiteral("正在禁用商品……"), this))) return false;
  chkDisp.setChecked(true);
  return true;
}

bool TF_Spxxgl::changeClass() {
  const GoodsIds ids = marked();
  const auto chosen =
      ui::screenAs<TF_Spxxgl_Class>("F_Spxxgl_Class").pick(GoodsClassTree::Show::All, gridSp.currentText("gc_sn"));
  tree_->reload();  // classes may have been made on the way
  if (!chosen) return false;
  return changeGoodsClass(ids, chosen->number, prompt(), ui::progressOnDemand(QStringLiteral("正在修改类别……"), this));
}

bool TF_Spxxgl::fixCost(bool on) {
  const GoodsIds ids = marked();
  return setGoodsFixedCost(ids, on, prompt(), ui::progressOnDemand(QStringLiteral("正在修改销售成本价……"), this));
}

void TF_Spxxgl::showThisClass() {
  const std::int64_t id = gridSp.currentId();
  tree_->select(gridSp.currentText("gc_sn"));
  gridSp.selectId(id);
}

void TF_Spxxgl::moveClass() {
  const auto chosen = tree_->current();
  if (!chosen || !ui::screenAs<TF_Spxxgl_Move>("F_Spxxgl_Move").move(*chosen)) return;
  tree_->reload();
  load();
}

void TF_Spxxgl::activate() {
  onEnter_ = strIsTrue(session().cs_hcj);
  tkey.setLabel(onEnter_ ? QStringLiteral("输入商品相关信息,回车查询F6：")
                         : QStringLiteral("输入商品相关信息查询商品F6："));
  tkey.clear();
  showColumns();
  commission_->setVisible(hasRight("qtcz", 19));
  tree_->search().clear();
  tree_->reload();
  written_ = writesOfOthers();
  load();
}

void TF_Spxxgl::showColumns() {
  using namespace spxxgl_detail;
  for (const auto name : kLevelColumns)
    gridSp.setColumnVisible(name, strIsTrue(session().cs_cs013));
  gridSp.setColumnVisible("g_lsj", strIsTrue(session().cs_lsj));
  for (const auto name : kStockColumns)
    gridSp.setColumnAllowed(name, !isWarehouseBound());
}

QString TF_Spxxgl::classNumber() const {
  const auto chosen = tree_->current();
  return chosen ? chosen->number : QString();
}

void TF_Spxxgl::load() {
  GoodsFilter filter{.withDisabled = chkDisp.isChecked()};
  if (onEnter_) {
    filter.key = tkey.text();
    filter.classNumber = classNumber();
  }
  gridSp.loadQuery(goodsListStatement(filter));
}

void TF_Spxxgl::showEvent(QShowEvent* event) {
  watch_.start();
  Screen::showEvent(event);
}

void TF_Spxxgl::hideEvent(QHideEvent* event) {
  watch_.stop();
  Screen::hideEvent(event);
}

// Another station may have written: the list is read anew, behind what the operator does, and he keeps his row. Goods
// that he has marked stay marked: then, and while a dialog stands over the list, it waits.
void TF_Spxxgl::followOtherStations() {
  if (gridSp.isLoading() || QApplication::activeModalWidget() != this) return;
  if (gridSp.view()->selectionModel()->selectedRows().size() > 1) return;
  const auto written = writesOfOthers();
  if (written && written == written_) return;
  // Without a cheap way to ask, the list is read every minute.
  if (!written && ++looks_ % (60000 / spxxgl_detail::kWatch) != 0) return;
  written_ = written;
  gridSp.reload();
}

void TF_Spxxgl::narrow() {
  if (onEnter_) return load();
  gridSp.refilter();
}

void TF_Spxxgl::showPicture() {
  picture_->setVisible(chkPic.isChecked());
  if (!chkPic.isChecked()) return;
  const QPixmap picture = goodsPicture(goodsPictureFile(gridSp.currentText("g_sn")), picture_->size() - QSize(6, 6));
  if (picture.isNull()) {
    picture_->setText(QStringLiteral("该商品没有图片"));
  } else {
    picture_->setPixmap(picture);
  }
}

bool TF_Spxxgl::warehouseIsMissing() {
  if (exists("select ck_sn from jxc_ckxx")) return false;
  prompt().notice(QStringLiteral("请先添加仓库信息！"));
  return true;
}

bool TF_Spxxgl::keyPressed(QKeyEvent& event) {
  if (event.key() == Qt::Key_F6) {
    tkey.focus();
    return true;
  }
  return false;
}

namespace spxxgl_detail {
const ui::Registered<TF_Spxxgl> kRegistered{"F_Spxxgl"};
}

}  // namespace jxc
