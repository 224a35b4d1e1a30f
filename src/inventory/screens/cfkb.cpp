// 拆分捆绑: one wizard for both directions: what is taken apart or made, the goods on the other side, a look at the
// stock before and after; its goods list, its line dialog, and the documents of both kinds that wait.
#include "core/fillers.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "engine/number_text.h"
#include "inventory/conversions.h"
#include "inventory/screens/inventory_parts.h"
#include "masterdata/goods_to_pick.h"
#include "output/printed_documents.h"
#include "stock/screens/document_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "stock/screens/modi_date.h"
#include "stock/screens/trading_parts.h"
#include "ui/display.h"
#include "ui/picker_screen.h"

#include <QKeyEvent>
#include <QLabel>
#include <QTabWidget>

#include <array>

namespace jxc {
namespace cfkb_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the two directions in words ---------------------------------------------------------------------------------

struct Words {
  std::u16string_view title, goods, quantity, warehouse, date, value;  // of the inputs
  std::u16string_view parts;                                           // the second step
  std::u16string_view outOf;                                           // of what the whole is called in a sentence
};
constexpr Words kSplit = {.title = u"商品拆分",
                          .goods = u"被拆商品：",
                          .quantity = u"拆分数量：",
                          .warehouse = u"出库仓库：",
                          .date = u"拆分日期：",
                          .value = u"拆分总额：",
                          .parts = u"拆分成的商品",
                          .outOf = u"拆分"};
constexpr Words kBundle = {.title = u"商品捆绑",
                           .goods = u"捆绑成商品：",
                           .quantity = u"捆绑数量：",
                           .warehouse = u"入库仓库：",
                           .date = u"捆绑日期：",
                           .value = u"捆绑总额：",
                           .parts = u"被捆绑的商品",
                           .outOf = u"捆绑成"};

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"comFx", "业务：", FieldKind::Combo},
    {"tgname", "被拆商品：", FieldKind::Picker},
    {"tslcf", "拆分数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"comCk", "出库仓库：", FieldKind::Combo},
    {"dateCg", "拆分日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_cfd.gl_djh", 0, ui::ReadOnly},
    {"tkcsl", "库存数量：", FieldKind::Quantity, "", 0, ui::ReadOnly},
    {"tcbj", "成本价：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"cfzje", "拆分总额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tspje", "商品总额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tdwcb", "捆绑成本价：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"tce", "成本差额：", FieldKind::Money, "", 0, ui::ReadOnly},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tnote", "备注：", FieldKind::Text, "jxc_cfd.cf_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

/// Price, quantity and amount of a part; the price of a bundle's part does not open.
template <FixedText Prefix>
constexpr std::array<ui::ColumnSpec, 3> figures = {{
    {joined<Prefix, "dj">, "单价", ColumnKind::Money, 11, {.editable = true}, kSeesCost},
    {joined<Prefix, "sl">, "数量", ColumnKind::Quantity, 9, {.sum = true, .editable = true}},
    {joined<Prefix, "zje">, "金额", ColumnKind::Money, 12, {.sum = true}, kSeesCost},
}};
constexpr auto kLines =
    ui::joinedTables(inventory_parts::goodsOfLine, std::array{ui::ColumnSpec{"line_ck", "仓库", ColumnKind::Text, 12}},
                     figures<"cf_">, inventory_parts::barcodeOfLine);
constexpr ui::ColumnSpec kWaiting[] = {
    {"djlx", "业务", ColumnKind::Text, 6},
    {"gl_djh", "单据编号", ColumnKind::Text, 16},
    {"cf_cfrq", "日期", ColumnKind::Date},
    {"g_sn", "商品编号", ColumnKind::Text, 9},
    {"whole_name", "商品名称", ColumnKind::Text, 30},
    {"cf_sl", "数量", ColumnKind::Quantity, 8, {.sum = true}},
    {"cf_cbj", "成本价", ColumnKind::Money, 11, {}, kSeesCost},
    {"ck_name", "仓库", ColumnKind::Text, 12},
    {"u_name", "经办人", ColumnKind::Text, 7},
    {"a_name", "操作员", ColumnKind::Text, 7},
    {"cf_note", "备注", ColumnKind::Text, 12},
};
constexpr ui::ColumnSpec kPreview[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 9},
    {"g_name", "商品名称", ColumnKind::Text, 28},
    {"ck_name", "仓库", ColumnKind::Text, 12},
    {"tmp_currkc", "当前库存", ColumnKind::Quantity, 9},
    {"tmp_cksl", "出库数量", ColumnKind::Quantity, 9, {.sum = true}},
    {"tmp_rksl", "入库数量", ColumnKind::Quantity, 9, {.sum = true}},
    {"tmp_kc", "之后库存", ColumnKind::Quantity, 9},
    {"tmp_ckje", "出库金额", ColumnKind::Money, 11, {.sum = true}, kSeesCost},
    {"tmp_rkje", "入库金额", ColumnKind::Money, 11, {.sum = true}, kSeesCost},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "商品明细", kLines, "扫描商品条码，或按F2添加商品"},
    {"gridPreview", "库存变化", kPreview},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的拆分单、捆绑单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr ui::CommandSpec kCommands[] = {
    {"btnPanel", "条码选项"},
    {"btnAddOld", "添加商品", "F2"},
    {"btnModi", "修改", "F3"},
    {"btnDel", "删除", "Ctrl+D"},
    {"btnPrin", "打印", "Ctrl+P"},
    {"btnBack", "上一步", "F6"},
    {"btnNext", "下一步", "F5"},
    {"btnOK", "保存", "F5"},
    {"btnSearch", "查询", "F2"},
    {"btnRChk", "审核", "F6"},
    {"btnPreview", "预览影响", "F9", "列出审核后库存和成本的变化，不改动任何数据"},
    {"btn_Check", "全部审核", "F7"},
    {"btn_Date", "更改日期", "Ctrl+E"},
    {"btn_Dele", "删除单据", "Ctrl+Del"},
    {"btn_ChaKan", "查看单据", "F8"},
    {"btn_Prin", "打印单据", "Ctrl+P"},
    {"btnAdd", "新增商品", "Ctrl+N"},
    {"btnTab2Modi", "修改商品", "F3"},
    {"btnDele", "删除商品", "Ctrl+D"},
    {"btnCancel", "退出", "Esc"},
};
constexpr std::string_view kOwn[] = {"comFx", "tgname", "tslcf", "tkcsl",       "tcbj",    "cfzje",
                                     "tspje", "tdwcb",  "tce",   "gridPreview", "btnBack", "btnNext"};

constexpr const char* kSteps[] = {"pStep1", "pStep2", "pStep3"};

/// The first panel: one area a step, of which one is in sight.
void buildSteps(ui::Panel panel) {
  const auto label = [&](const char* name) {
    auto* made = new QLabel;
    made->setObjectName(QString::fromLatin1(name));
    made->setWordWrap(true);  // a long name must not widen the window
    panel.widget(made);
  };
  const auto step = [&](const char* name) {
    QWidget* made = nullptr;
    ui::Panel area = panel.area(made);
    made->setObjectName(QString::fromLatin1(name));
    return area;
  };
  panel.row("comFx jsn |");
  label("lSteps");
  label("lWhole");
  step(kSteps[0])
      .form({"tgname", "tslcf comCk dateCg", "tkcsl tcbj cfzje"})
      .text(QStringLiteral("按F2选择商品，或扫描它的条码；数量后按回车到下一步。"))
      .stretch();
  step(kSteps[1]).row("tSptm btnPanel | btnAddOld btnModi btnDel").grid("gridLines").form({"tspje tdwcb tce"});
  step(kSteps[2]).grid("gridPreview").form({"comUser tnote"});
}

QString changeDate(const QString& number) {
  return changeDocumentDate(documentFamily(number), number);
}

constexpr DocumentScreenSpec kDocument = {
    .screen = {.name = "F_Cfkb",
               .title = "商品拆分捆绑",
               .fields = kFields,
               .grids = kGrids,
               .commands = kCommands,
               .focus = "tgname"},
    .draftTitle = "商品拆分",
    .waitingTitle = "待审核单据",
    .auditedList = "F_Cfkb_Djcx",
    .auditedTitle = "拆分捆绑查询",
    .employeeFlag = "u_kc",
    .pickScreen = "F_Cfkb_Add",
    .lineScreen = "F_Cfkb_Sele",
    .changeHead = changeDate,
    .make = {{"kcgl", 5}, u"拆分捆绑！"},
    .audit = {{"kcgl", 11}, u"拆分捆绑审核！"},
    .addWaiting = {{"kcgl", 5}, u"拆分捆绑！"},
    .deleteWaiting = {{"kcgl", 5}, u"拆分捆绑！"},
    .saveRow = "btnPrin btnBack | btnNext btnOK btnCancel",
    .searchRow = "tkey btnSearch comSort |",
    .waitingButtons = "btnRChk btnPreview btn_Check btn_Date btn_Dele btn_ChaKan btn_Prin |",
    .lineButtons = "btnAdd btnTab2Modi btnDele |",
    .draftPanel = buildSteps,
    .own = kOwn,
};

// ---- the whole ---------------------------------------------------------------------------------------------------

constexpr ui::ColumnSpec kWholes[] = {
    {"g_sn", "商品编号", ColumnKind::Text, 9},     {"g_name", "商品名称", ColumnKind::Text, 30},
    {"gg_name", "规格型号", ColumnKind::Text, 12}, {"color_name", "颜色", ColumnKind::Text, 6},
    {"dw_name", "单位", ColumnKind::Text, 4},      {"kc_sl", "库存数量", ColumnKind::Quantity, 9},
};
constexpr ui::GridSpec kWholeGrid[] = {{"gridGoods", "商品列表", kWholes, "没有符合条件的商品"}};

/// One goods: of a split one that lies in the warehouse.
class TF_Cfkb_Goods : public ui::PickerScreen {
 public:
  TF_Cfkb_Goods()
      : PickerScreen({.screen = {.name = "F_Cfkb_Goods", .title = "拆分捆绑 - 选择商品", .grids = kWholeGrid},
                      .query = [this](const QString& typed) { return goods(typed); }}) {}

  std::optional<ListItem> pickFrom(const QString& warehouse, bool inStock) {
    warehouse_ = warehouse;
    inStock_ = inStock;
    const auto row = pick();
    if (!row) return {};
    return ListItem{row->text("g_name"), row->text("g_sn")};
  }

 private:
  Sql goods(const QString& typed) const {
    Filter filter;
    addGoodsConditions(filter, {.key = typed});
    if (inStock_) filter.add("b.kc_sl>0");
    return goodsByWarehouse(warehouse_, filter, "g_xspl");
  }
  QString warehouse_;
  bool inStock_ = false;
};

// ---- the screen --------------------------------------------------------------------------------------------------

class TF_Cfkb : public DocumentScreenOver<ConversionDraft> {
 public:
  TF_Cfkb();

 protected:
  void activate() override;
  void fillLists() override;
  void showByParameters() override;
  QString findUnsaved() const override { return unsavedDraft(now_->family()); }
  void beginDraft(const QString& lastDate) override { draft() = now_->fresh(lastDate); }
  void recallDraft() override { now_->recallWhole(draft()); }
  void showDraft() override;
  void collect() override;
  void linesChanged() override;
  SaveResult saveDraft() override { return now_->save(draft(), prompt()); }
  report::Report draftReport() override { return draftDocumentReport(now_->family(), draft(), now_->figures(draft())); }
  void focusDraft() override;
  void draftInSight(bool isIn) override;
  void enterBarcode(const QString& code) override;
  void scanDone() override { goOn(); }
  bool keyPressed(QKeyEvent& event) override;

 private:
  bool takesApart() const { return now_->takesApart(); }
  const Words& named() const { return takesApart() ? kSplit : kBundle; }
  void turn();
  void nameDirection();
  std::optional<ListItem> chooseWhole();
  void pickWhole(const QString& goods);
  void keep();
  void showFigures();
  void goOn();
  void showStep(int step);
  QString wholeInWords();

  ui::Field& comFx = field("comFx");
  ui::Field& tgname = field("tgname");
  ui::Field& tslcf = field("tslcf");
  ui::Grid& gridPreview = grid("gridPreview");
  QTabWidget* const tabs_ = findChild<QTabWidget*>();  // of the panels; the list of the third one has its own
  const ConversionRules* now_ = &conversions::split();
  int step_ = 0;
};

TF_Cfkb::TF_Cfkb() : DocumentScreenOver(kDocument, conversions::both()) {
  comFx.setItems({{u"商品拆分"_qs, u"CF"_qs}, {u"商品捆绑"_qs, u"KB"_qs}});
  comFx.onChanged([this] { turn(); });
  tgname.onPick([this] { return chooseWhole(); });
  tgname.onChanged([this] { pickWhole(tgname.key()); });
  comCk.onChanged([this] { keep(); });
  tslcf.onChanged([this] { showFigures(); });
  tslcf.onEnter([this] {
    goOn();
    return true;
  });
  on(command("btnNext"), [this] { goOn(); });
  on(command("btnBack"), [this] { showStep(step_ - 1); });
  addKey(command("btnBack"), "Alt+Left");
  addKey(command("btnNext"), "Alt+Right");
  gridPreview.setRowLook(
      [](const Row& row) { return row.number("tmp_kc") < 0 ? ui::RowLook::Warning : ui::RowLook::Normal; });
}

void TF_Cfkb::activate() {
  // What was begun and not saved comes back, whichever of the two it was.
  now_ = &conversions::split();
  if (unsavedDraft(families::split).isEmpty() && !unsavedDraft(families::bundle).isEmpty())
    now_ = &conversions::bundle();
  DocumentScreenOver::activate();
}

void TF_Cfkb::fillLists() {
  DocumentScreenOver::fillLists();
  nameDirection();
}

void TF_Cfkb::showByParameters() {
  DocumentScreenOver::showByParameters();
  const bool costs = session().canSeeCost;
  for (const char* input : {"tcbj", "cfzje", "tspje"})
    field(input).setVisible(costs);
  field("tce").setVisible(costs && takesApart());
  field("tdwcb").setVisible(costs && !takesApart());
  // A split asks the price of its parts, a bundle takes their cost.
  const auto lock = [](ui::Grid& lines, std::function<const DocumentRules&()> rules) {
    lines.setMayEdit([rules = std::move(rules)](const Row& row, std::string_view column) {
      return rules().lines().cellMayChange(row.text("g_sn"), false, lineFieldOf(column));
    });
  };
  lock(gridLines, [this]() -> const DocumentRules& { return *now_; });
  lock(gridWaitingLines, [this]() -> const DocumentRules& { return waitingRules(); });
}

// ---- direction ---------------------------------------------------------------------------------------------------

/// The other direction: what stands here stays where it is kept, and comes back with this one.
void TF_Cfkb::turn() {
  const QString now = words(now_->family().prefix);
  if (comFx.key() == now) return;
  if (!settleDate()) return comFx.setKey(now);
  keep();
  now_ = takesApart() ? &conversions::bundle() : &conversions::split();
  nameDirection();
  showByParameters();
  initTab();
}

void TF_Cfkb::nameDirection() {
  const Words& w = named();
  comFx.setKey(words(now_->family().prefix));
  tgname.setLabel(words(w.goods));
  tslcf.setLabel(words(w.quantity));
  comCk.setLabel(words(w.warehouse));
  dateCg.setLabel(words(w.date));
  field("cfzje").setLabel(words(w.value));
  tabs_->setTabText(0, words(w.title));
}

// ---- draft -------------------------------------------------------------------------------------------------------

void TF_Cfkb::showDraft() {
  const ConversionDraft& shown = draft();
  tgname.setPicked({lookupValue("select g_name from jxc_goods where g_sn=?", shown.goods), shown.goods});
  tslcf.setNumber(shown.quantity);
  DocumentScreenOver::showDraft();
  showStep(0);
}

void TF_Cfkb::collect() {
  DocumentScreenOver::collect();
  draft().goods = tgname.key();
  draft().quantity = tslcf.number();
}

void TF_Cfkb::keep() {
  collect();
  setNumber(now_->keepWhole(draft()));
  showFigures();
}

void TF_Cfkb::linesChanged() {
  DocumentScreenOver::linesChanged();
  showFigures();
}

void TF_Cfkb::showFigures() {
  collect();
  const ConversionFigures figures = now_->figures(draft());
  field("tkcsl").setNumber(figures.stock);
  field("tcbj").setNumber(figures.cost);
  field("cfzje").setNumber(figures.value);
  field("tspje").setNumber(figures.parts);
  field("tdwcb").setNumber(figures.cost);
  field("tce").setNumber(figures.difference());
  findChild<QLabel*>(u"lWhole"_qs)->setText(wholeInWords());
}

QString TF_Cfkb::wholeInWords() {
  const ConversionDraft& shown = draft();
  const RowSet goods = openSelect("select g_name,gg_name,color_name,dw_name from jxc_goods where g_sn=?", shown.goods);
  if (goods.isEmpty()) return {};
  const Row row = goods.front();
  QStringList parts{words(named().outOf) + u' ' + numberText(shown.quantity) + u' ' + row.text("dw_name"), shown.goods};
  for (const char* column : {"g_name", "gg_name", "color_name"})
    if (const QString text = row.text(column); !text.isEmpty()) parts << text;
  parts << comCk.text();
  return parts.join(u"　"_qs);
}

std::optional<ListItem> TF_Cfkb::chooseWhole() {
  return ui::screenAs<TF_Cfkb_Goods>("F_Cfkb_Goods").pickFrom(comCk.key(), takesApart());
}

void TF_Cfkb::pickWhole(const QString& goods) {
  tgname.setPicked({lookupValue("select g_name from jxc_goods where g_sn=?", goods), goods});
  keep();
  tslcf.focus();
}

void TF_Cfkb::enterBarcode(const QString& code) {
  if (step_ == 0) {
    const QString goods =
        lookupValue("select top 1 g_sn from jxc_goods where g_sptm=? order by g_sn", sanitizeText(code));
    if (!refused({{goods.isEmpty(), u"没有找到与该条码匹配的商品，请检查！\r\n\r\n条码："_qs + code, Subject::Barcode}},
                 prompt()))
      pickWhole(goods);
    return;
  }
  if (step_ == 2) showStep(1);
  DocumentScreenOver::enterBarcode(code);
}

/// F2 in any input of the first step: its goods is what there is to choose.
bool TF_Cfkb::keyPressed(QKeyEvent& event) {
  if (step_ != 0 || !isDraftInSight() || event.key() != Qt::Key_F2 || event.modifiers() != Qt::NoModifier)
    return DocumentScreenOver::keyPressed(event);
  if (const auto chosen = chooseWhole()) pickWhole(chosen->key);
  return true;
}

// ---- steps -------------------------------------------------------------------------------------------------------

void TF_Cfkb::goOn() {
  if (!settleDate() || !checkFields()) return;
  keep();
  if (step_ == 0) {
    if (now_->hasWhole(draft(), prompt()))
      showStep(1);
    else if (draft().goods.isEmpty())
      tgname.focus();
    else
      tslcf.focus();
  } else if (now_->hasParts(draft(), prompt())) {
    showStep(2);
  }
}

void TF_Cfkb::showStep(int step) {
  step_ = step;
  const QString titles[] = {u"选择商品"_qs, words(named().parts), u"核对保存"_qs};
  QStringList all;
  for (int i = 0; i < 3; ++i) {
    findChild<QWidget*>(QString::fromLatin1(kSteps[i]))->setVisible(i == step);
    const QString title = QString::number(i + 1) + u' ' + titles[i];
    all << (i == step ? u"<b>"_qs + title + u"</b>"_qs : title);
  }
  findChild<QLabel*>(u"lSteps"_qs)->setText(all.join(u"　→　"_qs));
  findChild<QLabel*>(u"lWhole"_qs)->setVisible(step > 0);
  if (step == 2) gridPreview.setRows(now_->preview(draft()));
  draftInSight(isDraftInSight());
  if (isVisible()) focusDraft();
}

void TF_Cfkb::draftInSight(bool isIn) {
  DocumentScreenOver::draftInSight(isIn);
  command("btnBack").setVisible(isIn && step_ > 0);
  command("btnNext").setVisible(isIn && step_ < 2);
  btnOK.setVisible(isIn && step_ == 2);
}

void TF_Cfkb::focusDraft() {
  if (step_ == 0) return tgname.key().isEmpty() ? tgname.focus() : tslcf.focus();
  if (step_ == 1) return DocumentScreenOver::focusDraft();
  if (comUser.key().isEmpty()) return comUser.focus();
  btnOK.setFocus();
}

// ---- goods list and line -----------------------------------------------------------------------------------------

constexpr ui::FieldSpec kPickFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comLb", "类别：", FieldKind::Combo},
    {"comCk", "仓库：", FieldKind::Combo},
    {"chkCk", "只显示有库存商品", FieldKind::Check},
    {"tsl", "默认添加数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
};
constexpr auto kStaging = ui::joinedTables(inventory_parts::goodsOfLine, figures<"ts_">);
constexpr auto kPickGrids = inventory_parts::pickGrids(kStaging);
constexpr GoodsPickSpec kPick = {.screen = {.name = "F_Cfkb_Add",
                                            .title = "拆分捆绑 - 添加商品",
                                            .fields = kPickFields,
                                            .grids = kPickGrids,
                                            .commands = trading_parts::pickCommands,
                                            .focus = "tkey"},
                                 .rules = rulesOf<conversions::both>,
                                 .lineScreen = "F_Cfkb_Sele"};

class TF_Cfkb_Add : public GoodsPickScreen {
 public:
  TF_Cfkb_Add() : GoodsPickScreen(kPick) {}
};

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tdj", "单价：", FieldKind::Money, "", 0, ui::NoMinus},
    {"tzje", "总金额：", FieldKind::Money, "", 0, ui::NoMinus},
    {"comCk", "仓库：", FieldKind::Combo},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Cfkb_Sele",
                                             .title = "拆分捆绑商品明细",
                                             .fields = kLineFields,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<conversions::both>,
                                  .price = "tdj"};

class TF_Cfkb_Sele : public LineScreen {
 public:
  TF_Cfkb_Sele() : LineScreen(kLine) {}
};

const ui::Registered<TF_Cfkb> kRegistered{"F_Cfkb"};
const ui::Registered<TF_Cfkb_Goods> kRegisteredGoods{"F_Cfkb_Goods"};
const ui::Registered<TF_Cfkb_Add> kRegisteredAdd{"F_Cfkb_Add"};
const ui::Registered<TF_Cfkb_Sele> kRegisteredSele{"F_Cfkb_Sele"};

}  // namespace cfkb_detail
}  // namespace jxc
