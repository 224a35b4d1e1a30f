#include "stock/screens/goods_pick_screen.h"

#include "accounts/partner_ledger.h"
#include "core/fillers.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "masterdata/goods_classes.h"
#include "output/printed_documents.h"
#include "stock/screens/line_screen.h"
#include "ui/display.h"
#include "ui/known_parts.h"

namespace jxc {
namespace goods_pick_screen_detail {

constexpr std::string_view kParts[] = {"tkey",      "comLb",       "comCk",     "tsl",      "chkCk",
                                       "gridGoods", "gridStaging", "btnSearch", "btnAdd",   "btnModi",
                                       "btnDel",    "btnZdrk",     "btnOK",     "btnCancel"};

constexpr qsizetype kPrefixLength = 3;  // "jh_", "th_", "ls_", "ts_"

std::string searchRow(const GoodsPickSpec& spec) {
  std::string row = "tkey btnSearch comLb";
  for (const auto& field : spec.screen.fields)
    if (field.name == "comCk" || field.name == "chkCk" || field.name == spec.partnerBox)
      row.append(" ").append(field.name);
  return row + " |";
}

/// All classes as a list, each set in by its level.
std::vector<ListItem> classItems() {
  std::vector<ListItem> items;
  for (const GoodsClass& each : goodsClassesDownward()) {
    const qsizetype level = each.isRoot() ? 0 : 1 + std::max<qsizetype>(0, each.number.size() - 4) / 3;
    items.push_back({QString(level * 2, u'　') + each.name, each.number});
  }
  return items;
}

}  // namespace goods_pick_screen_detail

void showLineColumns(ui::Grid& grid) {
  const bool tax = strIsTrue(session().cs_hs);
  const bool discount = strIsTrue(session().cs_jhzk);
  for (const auto& column : grid.spec().columns) {
    const QString field = lineFieldOf(column.field);
    if (field == u"tax" || field == u"taxdj" || field == u"taxje" || field == u"je")
      grid.setColumnVisible(column.field, tax);
    if (field == u"dzl") grid.setColumnVisible(column.field, discount);
    if (field == u"lsj") grid.setColumnVisible(column.field, strIsTrue(session().cs_lsj));
  }
}

void lockLineCells(ui::Grid& grid, const LineRules& rules) {
  grid.setMayEdit([&grid, &rules](const Row& row, std::string_view column) {
    const bool isGift = grid.rows().columnIndex("t_zp") >= 0 && !row.text("t_zp").isEmpty();
    return rules.cellMayChange(row.text("g_sn"), isGift, lineFieldOf(column));
  });
}

QString lineFieldOf(std::string_view column) {
  return ui::qs(column).mid(goods_pick_screen_detail::kPrefixLength);
}

GoodsPickScreen::GoodsPickScreen(const GoodsPickSpec& spec)
    : Screen(spec.screen),
      description_(spec),
      rules_(spec.rules()),
      search_(tkey, gridGoods, [this](const QString& typed) { return query(typed); }) {
  const std::string_view own[] = {spec.partnerBox};
  ui::refuseUnknownParts(spec.screen, {goods_pick_screen_detail::kParts, own});
  panel()
      .row(goods_pick_screen_detail::searchRow(spec))
      .grid("gridGoods", 3)
      .row(spec.group.empty() ? "tsl btnAdd | btnModi btnDel" : "tsl btnAdd btnZdrk | btnModi btnDel")
      .grid("gridStaging", 2)
      .buttons("| btnOK btnCancel");
  gridGoods.setMultiSelect(true);
  for (const std::string_view filter : {std::string_view("comLb"), std::string_view("chkCk"), spec.partnerBox})
    if (hasField(filter)) field(filter).onChanged([this] { search_.search(); });
  if (hasField("comCk"))
    field("comCk").onChanged([this] {
      place_.warehouse = field("comCk").key();
      search_.search();
    });
  gridGoods.onActivated([this] { pickOne(); });
  gridStaging.onActivated([this] { changeStaged(); });
  gridStaging.onChanged([this](const Row& row, std::string_view column, const QString& text) {
    const std::int64_t id = row.integer("id");
    if (lines().cellAllows(text, lineFieldOf(column), Lines::Staging, id, place_, prompt()))
      lines().setChange(text, lineFieldOf(column), Lines::Staging, id, prompt());
    showStaged(id);
  });
  gridStaging.setMayTakeOut([this] { return target_ != Lines::Draft || mayTakeOutUnsaved(prompt()); });
  on(command("btnSearch"), [this] {
    search_.search();
    backToSearch();
  });
  on(btnAdd, [this] { addMarked(); });
  if (!spec.group.empty()) on(command("btnZdrk"), [this] { addGroup(); });
  on(btnModi, [this] { changeStaged(); });
  on(btnDel, [this] { dropStaged(); });
  on(btnOK, [this] { takeOver(); });
}

CopyResult GoodsPickScreen::pick(const LinePlace& place, Lines target) {
  place_ = place;
  target_ = target;
  result_ = {};
  result_.number = place.number;
  showModal();
  return result_;
}

void GoodsPickScreen::activate() {
  clearStaging();
  memory_ = {};
  comLb.setItems(description_.groups ? description_.groups(place_) : goods_pick_screen_detail::classItems(), true);
  tsl.setNumber(1);
  tsl.setVisible(!description_.groups);
  if (hasField("comCk")) {
    field("comCk").setItems(fillOwnWarehouses());
    field("comCk").setKey(place_.warehouse);
  }
  const bool hidesStock = target_ == Lines::Draft && lines().hidesStock();
  if (hidesStock && hasField("chkCk")) field("chkCk").setChecked(false);
  if (hasField("chkCk")) field("chkCk").setVisible(!hidesStock);
  for (const auto& column : gridGoods.spec().columns)
    if (column.field == "kc_sl") gridGoods.setColumnAllowed(column.field, !hidesStock);
  for (const auto& column : gridGoods.spec().columns)
    if (column.field == "g_lsj") gridGoods.setColumnVisible(column.field, strIsTrue(session().cs_lsj));
  showLineColumns(gridStaging);
  lockLineCells(gridStaging, lines());
  showStaged();
  search_.begin();
}

bool GoodsPickScreen::isTicked(std::string_view box) {
  return hasField(box) && field(box).isChecked();
}

Sql GoodsPickScreen::query(const QString& typed) {
  const bool byStock = hasField("chkCk") && isTicked("chkCk") != description_.tickShowsAll;
  return lines().goodsToPick(
      place_,
      {.key = typed, .classNumber = comLb.key(), .inStock = byStock, .ofPartner = isTicked(description_.partnerBox)});
}

void GoodsPickScreen::enterPressed(ui::Field& field) {
  if (&field == &tkey) {
    if (!search_.enterSearches()) pickOne();
  } else if (&field == &tsl) {
    addMarked();
  } else {
    Screen::enterPressed(field);
  }
}

void GoodsPickScreen::pickOne() {
  if (gridGoods.selectedRows().size() > 1) return addMarked();
  const QString goods = gridGoods.currentText(description_.key);
  PickingMemory asksAnew;  // one goods is picked on purpose: a no to others before does not pass it over in silence
  if (goods.isEmpty() || !lines().mayStage(goods, place_, target_, asksAnew, prompt()))
    return tellPassedOver(asksAnew, prompt());
  auto& line = ui::screenAs<LineScreen>(description_.lineScreen);
  const std::optional<double> quantity = description_.groups ? std::nullopt : std::optional(tsl.number());
  const LineResult staged = line.edit({.where = Lines::Staging, .goods = goods, .quantity = quantity, .place = place_});
  showStaged(staged.id);
  backToSearch();
}

void GoodsPickScreen::addMarked() {
  const bool mayBe = tsl.number() > 0 || (tsl.number() == 0 && lines().quantities().zero);
  if (refused({{!mayBe, u"默认添加数量必须大于0！"_qs, Subject::Quantity}}, prompt())) return;
  add(gridGoods.selectedRows());
}

void GoodsPickScreen::addGroup() {
  const QString group = gridGoods.currentText(description_.group);
  std::vector<Row> rows;
  for (const Row row : gridGoods.rows())
    if (row.text(description_.group) == group) rows.push_back(row);
  add(rows);
}

void GoodsPickScreen::add(const std::vector<Row>& rows) {
  QStringList goods;
  for (const Row& row : rows)
    goods << row.text(description_.key);
  memory_.goesShort.reset();
  std::int64_t last = 0;
  for (const QString& each : goods)
    last = std::max(last, lines().stageGoods(each, tsl.number(), place_, target_, memory_, prompt()));
  showStaged(last);
  tellPassedOver(memory_, prompt());
  backToSearch();
}

void GoodsPickScreen::changeStaged() {
  const std::int64_t id = gridStaging.currentId();
  if (id == 0) return;
  ui::screenAs<LineScreen>(description_.lineScreen).edit({.where = Lines::Staging, .id = id, .place = place_});
  showStaged(id);
}

void GoodsPickScreen::dropStaged() {
  if (gridStaging.currentId() == 0) return;
  unstage(gridStaging.currentId());
  showStaged();
}

void GoodsPickScreen::takeOver() {
  result_ = lines().copyStaged(place_, target_);
  isRefused(result_.closed, prompt());
  accept();
}

bool GoodsPickScreen::mayLeave() {
  if (gridStaging.isEmpty()) return true;
  switch (prompt().askOrCancel(u"所选商品还未保存，是否保存？"_qs)) {
    case Answer::Yes:
      takeOver();
      return false;  // it has closed itself
    case Answer::No:
      clearStaging();
      return true;
    default:
      return false;
  }
}

void GoodsPickScreen::showStaged(std::int64_t current) {
  gridStaging.readNow(stagedLines());
  if (current != 0) gridStaging.selectId(current);
  btnModi.setEnabled(!gridStaging.isEmpty());
  btnDel.setEnabled(!gridStaging.isEmpty());
  if (hasField("comCk")) field("comCk").setReadOnly(!gridStaging.isEmpty());
}

void GoodsPickScreen::backToSearch() {
  tkey.focus();
}

}  // namespace jxc
