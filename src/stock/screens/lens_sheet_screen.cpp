#include "stock/screens/lens_sheet_screen.h"

#include "core/text.h"
#include "masterdata/goods_lenses.h"
#include "masterdata/lens_sheet.h"
#include "stock/document.h"
#include "ui/display.h"
#include "ui/list_search.h"
#include "ui/quantity_sheet.h"
#include "ui/screen.h"

#include <QLabel>
#include <QTableView>

#include <algorithm>
#include <cmath>

namespace jxc {
namespace lens_sheet_screen_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"tqgd", "增加屈光度：", FieldKind::Text, "", 8},
    {"tsgd", "增加散光度：", FieldKind::Text, "", 8},
    {"tdj", "本表单价：", FieldKind::Money, "", 0, ui::NoMinus, "0为各按原价"},
};
constexpr ui::ColumnSpec kProducts[] = {{"g_qc", "商品名称", ColumnKind::Text, 18},
                                        {"gs", "光度数", ColumnKind::Number, 6}};
constexpr ui::GridSpec kGrids[] = {{"gridProducts", "镜片商品", kProducts, "没有镜片，请在商品资料中批量增加镜片"}};
constexpr ui::CommandSpec kCommands[] = {
    {"btnSearch", "查询", "F2"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Jpgd",
                                    .title = "镜片光度表",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "tkey"};

constexpr double kStrongest = 99;  // dioptres

class TF_Jpgd : public ui::Screen {
 public:
  TF_Jpgd()
      : Screen(kScreen),
        sheet_(new ui::QuantitySheet(this)),
        hint_(new QLabel(this)),
        search_(field("tkey"), grid("gridProducts"), lensSheetProducts) {
    sheet_->view()->setAccessibleName(u"镜片光度表"_qs);
    hint_->setObjectName(QStringLiteral("lHint"));
    hint_->setProperty("explanation", true);
    auto area = panel();
    auto [products, cells] = area.columns(2, 9);
    products.row("tkey btnSearch").grid("gridProducts");
    cells.widget(hint_).widget(sheet_, 1).row("tqgd tsgd tdj |");
    area.buttons("| btnOK btnCancel");
    grid("gridProducts").onCurrentChanged([this] { showProduct(); });
    grid("gridProducts").onActivated([this] { sheet_->focusCells(); });
    sheet_->onChanged([this] { showHint(); });
    sheet_->onPasted([this](const auto& pasted) { tellPasted(pasted); });
    field("tqgd").onEnter([this] { return addPower("tqgd", &LensSheet::addSphere); });
    field("tsgd").onEnter([this] { return addPower("tsgd", &LensSheet::addCylinder); });
    field("tdj").onChanged([this] { takePrice(); });
    on(command("btnSearch"), [this] { field("tkey").focus(); });
    on(command("btnOK"), [this] { takeOver(); });
  }

  CopyResult enter(const ManyLines& lines, const LinePlace& place, Lines target, bool mayMake, bool hasPrice) {
    lines_ = &lines;
    hasPrice_ = hasPrice;
    place_ = place;
    target_ = target;
    mayMake_ = mayMake;
    result_ = {.lines = 0, .number = place.number};
    showModal();
    sheets_.clear();
    return result_;
  }

  QSize sizeHint() const override { return {1264, 672}; }

 protected:
  void activate() override {
    sheets_.clear();
    current_ = -1;
    field("tqgd").setVisible(mayMake_);
    field("tsgd").setVisible(mayMake_);
    field("tdj").setVisible(hasPrice_);
    const QString last = last_;
    search_.begin();
    auto& products = grid("gridProducts");
    products.waitLoaded();
    for (const Row row : products.rows())
      if (row.text("g_qc") == last) products.selectId(row.integer("id"));
    showProduct();
  }

  /// With a product there the quantities are what one came for; F2 leads back to the search.
  void showEvent(QShowEvent* event) override {
    Screen::showEvent(event);
    if (current_ >= 0) sheet_->focusCells();
  }

  void enterPressed(ui::Field& field) override {
    if (field.spec().name != "tkey") return Screen::enterPressed(field);
    search_.enterSearches();
    grid("gridProducts").waitLoaded();
    sheet_->focusCells();
  }

  bool mayLeave() override {
    const bool typed =
        std::any_of(sheets_.begin(), sheets_.end(), [](const LensSheet& sheet) { return !sheet.isEmpty(); });
    if (!typed) return true;
    switch (prompt().askOrCancel(u"光度表中的数量还未保存，是否保存？"_qs)) {
      case Answer::Yes:
        takeOver();
        return false;  // it has closed itself, or something is in the way
      case Answer::No:
        return true;
      default:
        return false;
    }
  }

 private:
  /// Quantities stay with their product while another one is looked at.
  void showProduct() {
    if (!lines_) return;
    const QString product = grid("gridProducts").currentText("g_qc");
    if (product.isEmpty() || (current_ >= 0 && sheet().product == product)) return;
    last_ = product;
    const auto known =
        std::find_if(sheets_.begin(), sheets_.end(), [&](const LensSheet& each) { return each.product == product; });
    current_ = static_cast<int>(known - sheets_.begin());
    if (known == sheets_.end()) sheets_.push_back(readLensSheet(product, *lines_, place_));
    showSheet();
  }

  void takePrice() {
    if (current_ < 0) return;
    const double yuan = field("tdj").number();
    sheet().price = yuan > 0 ? std::optional(yuan) : std::nullopt;
  }

  LensSheet& sheet() { return sheets_[static_cast<std::size_t>(current_)]; }

  void showSheet() {
    ui::QuantitySheet::Source source;
    source.corner = u"屈/散"_qs;
    for (const double power : sheet().spheres)
      source.rows << ui::displayPower(powerText(power));
    for (const double power : sheet().cylinders)
      source.columns << ui::displayPower(powerText(power));
    source.cell = [this](int row, int column) {
      using Kind = ui::QuantitySheet::Cell::Kind;
      const LensSheet::Cell& cell = sheet().at(row, column);
      const bool isNew = cell.goods.isEmpty() && mayMake_;
      return ui::QuantitySheet::Cell{.kind = isNew          ? Kind::New
                                             : cell.offered ? Kind::Open
                                                            : Kind::Locked,
                                     .stock = cell.stock,
                                     .quantity = cell.quantity,
                                     .marked = cell.goesShort,
                                     .zero = cell.quantity == 0 && sheet().holds(cell),
                                     .hidesStock = hidesStock()};
    };
    source.change = [this](int row, int column, std::optional<double> quantity) {
      LensSheet::Cell& cell = sheet().at(row, column);
      cell.quantity = quantity.value_or(0);
      cell.isTyped = quantity.has_value();
    };
    sheet_->show(std::move(source));
    field("tdj").setNumber(sheet().price.value_or(0));
    showHint();
  }

  void showHint() {
    double all = 0;
    for (const LensSheet& each : sheets_)
      all += each.total();
    const auto text = [](double pieces) { return numberText(pieces); };
    QString hint = current_ < 0 ? QString() : sheet().product + u"　本表 "_qs + text(sheet().total());
    if (current_ >= 0 && all != sheet().total()) hint += u"　全部 "_qs + text(all);
    hint += hidesStock() ? u"　行为屈光度，列为散光度；"_qs : u"　行为屈光度，列为散光度；格内左边是库存，"_qs;
    if (lines_ && lines_->quantities().zero) hint += u"空格不计，输入的0也算；"_qs;
    hint_->setText(hint + u"可直接输入数量，或粘贴表格中复制的区域"_qs);
  }

  bool hidesStock() const { return lines_ && target_ == Lines::Draft && lines_->hidesStock(); }

  bool addPower(const char* name, void (LensSheet::*add)(double)) {
    auto& input = field(name);
    if (current_ < 0 || input.isEmpty()) return false;
    const QString typed = input.trimmed();
    const auto power = ui::readNumber(typed);
    input.clear();
    if (refused({{!power || std::abs(*power) > kStrongest, u"“%1”不是光度，请输入 -99 到 +99 之间的数！"_qs.arg(typed),
                  std::string_view(name) == "tqgd" ? Subject::Sphere : Subject::Cylinder}},
                prompt()))
      return true;
    (sheet().*add)(*power);
    showSheet();
    sheet_->focusCells();
    return true;
  }

  void tellPasted(const ui::QuantitySheet::Pasted& pasted) {
    if (pasted.unreadable + pasted.locked + pasted.outside == 0) return;
    prompt().notice(
        u"已填入 %1 个数量。\r\n\r\n不是数量：%2 处\r\n\r\n本单不能选的光度：%3 处\r\n\r\n超出光度表：%4 处"_qs
            .arg(pasted.taken)
            .arg(pasted.unreadable)
            .arg(pasted.locked)
            .arg(pasted.outside));
  }

  void takeOver() {
    const auto taken = takeLensSheets(sheets_, *lines_, place_, target_, prompt());
    if (!taken) return sheet_->refresh();
    result_ = *taken;
    accept();
  }

  ui::QuantitySheet* sheet_;
  QLabel* hint_;
  ui::ListSearch search_;
  const ManyLines* lines_ = nullptr;
  LinePlace place_;
  Lines target_ = Lines::Draft;
  bool mayMake_ = false, hasPrice_ = false;
  std::vector<LensSheet> sheets_;
  int current_ = -1;
  QString last_;  // product, proposed the next time
  CopyResult result_;
};

const ui::Registered<TF_Jpgd> kRegistered{"F_Jpgd"};

}  // namespace lens_sheet_screen_detail

CopyResult enterLensSheets(const DocumentRules& rules, const LinePlace& place, Lines target, bool mayMake) {
  const LineRules& lines = rules.lines();
  const bool hasPrice =
      !rules.family().line.columns->price.empty() && lines.priceMayChange() && seesAmounts(rules.family());
  return enterLensSheets(lines, place, target, mayMake, hasPrice);
}

CopyResult enterLensSheets(const ManyLines& lines, const LinePlace& place, Lines target, bool mayMake, bool hasPrice) {
  return ui::screenAs<lens_sheet_screen_detail::TF_Jpgd>("F_Jpgd").enter(lines, place, target, mayMake, hasPrice);
}

}  // namespace jxc
