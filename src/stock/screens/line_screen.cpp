#include "stock/screens/line_screen.h"

#include "core/fillers.h"
#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "stock/screens/audit_screen.h"
#include "stock/screens/goods_pick_screen.h"
#include "ui/display.h"
#include "ui/known_parts.h"

#include <QGridLayout>
#include <QLabel>
#include <QTabWidget>

#include <array>
#include <string>
#include <vector>

namespace jxc {
namespace line_screen_detail {

constexpr std::string_view kParts[] = {"tsl",         "tdzl",       "ttax",    "ttaxdj", "tzje",     "comCk",
                                       "tnote",       "tkcsl",      "tkczsl",  "tzj",    "tyj",      "comYhzh",
                                       "gridHistory", "gridQuotes", "btnSpsj", "btnOK",  "btnCancel"};

constexpr int kShownDecimals = 6;  // of a price that a typed total left with an endless fraction

QString describe(const QString& goods, const QString& warehouse, bool withStock) {
  const RowSet rows = openSelect("select g_name,gg_name,color_name,dw_name from jxc_goods where g_sn=?", goods);
  QStringList parts{goods};
  if (!rows.isEmpty()) {
    for (const char* column : {"g_name", "gg_name", "color_name"})
      if (const QString text = rows.front().text(column); !text.isEmpty()) parts << text;
    const QString unit = rows.front().text("dw_name");
    parts << (withStock ? u"库存 "_qs + getStockQty(goods, warehouse) + u' ' + unit : unit);
  }
  return parts.join(u"　"_qs);
}

}  // namespace line_screen_detail

LineScreen::LineScreen(const LineScreenSpec& spec)
    : Screen(spec.screen), description_(spec), rules_(spec.rules()), goods_(new QLabel(this)), tabs_(panel()) {
  const std::string_view own[] = {spec.price, spec.cost};
  ui::refuseUnknownParts(spec.screen, {line_screen_detail::kParts, own});
  build();
  bind("tsl", &LineAmounts::setQuantity);
  bind(spec.price, &LineAmounts::setPrice);
  bind("tdzl", &LineAmounts::setDiscount);
  bind("ttax", &LineAmounts::setTax);
  bind("ttaxdj", &LineAmounts::setTaxedPrice);
  bind("tzje", &LineAmounts::setTotal);
  if (auto* warehouse = optional("comCk")) warehouse->onChanged([this, warehouse] { takeWarehouse(warehouse->key()); });
  if (auto* note = optional("tnote"))
    note->onEnter([this] {
      saveValue();
      return true;
    });
  on(btnOK, [this] { saveValue(); });
}

void LineScreen::build() {
  goods_->setObjectName(QStringLiteral("lGoods"));
  goods_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  panel().widget(goods_);
  std::vector<std::string> rows;
  for (const auto& inputs : {std::array{std::string_view("tsl"), description_.price, std::string_view("tdzl")},
                             std::array{std::string_view("ttax"), std::string_view("ttaxdj"), std::string_view("tzje")},
                             std::array{std::string_view("tkcsl"), std::string_view("tkczsl"), std::string_view()},
                             std::array{std::string_view("tzj"), std::string_view("tyj"), std::string_view("comYhzh")},
                             std::array{description_.cost, std::string_view("comCk"), std::string_view("tnote")}}) {
    std::string row;
    for (const std::string_view input : inputs)
      if (hasField(input)) row.append(row.empty() ? "" : " ").append(input);
    rows.push_back(row);
  }
  std::vector<std::string_view> form;
  for (const std::string& row : rows)
    if (!row.empty()) form.push_back(row);
  panel().form(form);
  if (hasField("ttax")) raster_ = static_cast<QGridLayout*>(layout()->itemAt(layout()->count() - 1)->layout());
  if (!spec().grids.empty()) tabs_ = panel();
  for (const ui::GridSpec& each : spec().grids) {
    const bool isHistory = each.name == "gridHistory";
    tabs_
        .page(isHistory ? "tabHistory" : "tabQuotes",
              ui::qs(isHistory ? description_.historyTitle : description_.quotesTitle))
        .grid(each.name);
    ui::Grid& shown = grid(each.name);
    shown.onActivated([this, &shown, isHistory] {
      offerPrice(shown, isHistory ? description_.historyPrice : description_.quotesPrice);
    });
  }
  panel().buttons(description_.askPrice ? "btnSpsj | btnOK btnCancel" : "| btnOK btnCancel");
  if (!description_.askPrice) return;
  on(command("btnSpsj"), [this] {
    double chosen = draft_.amounts.price();
    description_.askPrice(draft_.goods, chosen);
    if (chosen != draft_.amounts.price()) draft_.amounts.setPrice(chosen);
    showAmounts();
  });
}

// What the parameters and rights leave of price, discount and tax closes up; the remark has a line of its own.
void LineScreen::placeInputs() {
  constexpr int kInLine = 3;
  while (const QLayoutItem* item = raster_->takeAt(0))
    delete item;
  int place = 0;
  for (const std::string_view name : {std::string_view("tsl"), description_.price, std::string_view("tdzl"),
                                      std::string_view("ttax"), std::string_view("ttaxdj"), std::string_view("tzje"),
                                      description_.cost, std::string_view("comCk"), std::string_view("tnote")}) {
    ui::Field* input = optional(name);
    if (!input || (input->widget()->isHidden() && input->widget()->testAttribute(Qt::WA_WState_ExplicitShowHide)))
      continue;
    const bool isNote = name == "tnote";
    if (isNote && place % kInLine != 0) place += kInLine - place % kInLine;
    const int line = place / kInLine, column = place % kInLine * 2;
    raster_->addWidget(input->label(), line, column, Qt::AlignRight | Qt::AlignVCenter);
    raster_->addWidget(input->widget(), line, column + 1, 1, isNote ? 2 * kInLine - 1 : 1);
    ++place;
  }
}

LineResult LineScreen::edit(const Request& request) {
  request_ = request;
  result_ = {};
  result_.number = request.place.number;
  if (request.id != 0) {
    const std::optional<LineDraft> line = lines().loadLine(request.where, request.id);
    if (refused({{!line, changedMeanwhile(request.place.number)}}, prompt())) return result_;
    draft_ = *line;
  } else {
    draft_ = lines().newLine(request.goods, request.place, request.where == Lines::Staging);
    if (request.quantity) draft_.amounts.setQuantity(*request.quantity);
  }
  showModal();
  return result_;
}

void LineScreen::showByParameters() {
  const bool prices = seesAmounts(rules_.family());
  const bool tax = prices && strIsTrue(session().cs_hs);
  const bool discount = strIsTrue(session().cs_jhzk);
  const auto show = [this](std::string_view name, bool on) {
    if (auto* input = optional(name)) input->setVisible(on);
  };
  show("ttax", tax);
  show("ttaxdj", tax);
  show("tdzl", discount);
  show(description_.price, prices);
  const bool stock = !hidesStock();
  show("tzje", prices && stock);
  show("tkcsl", stock);
  show("tkczsl", stock);
  for (ui::Grid* rows : grids()) {
    for (const auto& column : rows->spec().columns) {
      const std::string_view field = column.field;
      if (field.ends_with("_tax") || field.ends_with("_taxdj")) rows->setColumnVisible(field, tax);
      if (field.ends_with("_dzl")) rows->setColumnVisible(field, discount);
    }
  }
  // A total or a price with tax would change the price by another way.
  const bool fixed = !lines().priceMayChange();
  for (const std::string_view name : {description_.price, std::string_view("ttaxdj"), std::string_view("tzje")})
    if (auto* input = optional(name)) input->setReadOnly(fixed);
  if (description_.askPrice) command("btnSpsj").setVisible(prices && !fixed);
  if (auto* cost = optional(description_.cost)) {
    cost->setVisible(session().canSeeCost && strIsTrue(session().cs_cs002));
    cost->setReadOnly(!(session().canChangeSaleCost && strIsTrue(session().cs_cs002)));
  }
  if (raster_) placeInputs();
}

bool LineScreen::hidesStock() const {
  return request_.where != Lines::Waiting && lines().hidesStock();
}

void LineScreen::activate() {
  showByParameters();
  showWarehouse();
  for (ui::Grid* rows : grids()) {
    const bool isHistory = rows->spec().name == "gridHistory";
    const Sql found = isHistory ? lines().history(draft_.goods, request_.place.partner)
                                : lines().quotes(draft_.goods, request_.place.partner);
    if (found.isEmpty())
      rows->clearRows();
    else
      rows->readNow(found);
    if (!isHistory) tabs_.tabs()->setTabVisible(tabs_.tabs()->count() - 1, !rows->isEmpty());
  }
  if (tabs_.tabs()) tabs_.tabs()->setCurrentIndex(0);
  if (auto* note = optional("tnote")) note->setText(draft_.note);
  if (auto* cost = optional(description_.cost)) cost->setNumber(draft_.cost);
  if (auto* rent = optional("tzj")) rent->setNumber(draft_.rent);
  if (auto* deposit = optional("tyj")) deposit->setNumber(draft_.deposit);
  if (auto* account = optional("comYhzh")) {
    account->setItems(accountItems());
    account->setKey(draft_.account);
  }
  showAmounts();
}

void LineScreen::showWarehouse() {
  if (draft_.warehouse.isEmpty()) draft_.warehouse = request_.place.warehouse;
  if (auto* warehouse = optional("comCk")) {
    warehouse->setItems(fillOwnWarehouses());
    warehouse->setKey(draft_.warehouse);
    warehouse->setVisible(request_.where != Lines::Staging);
  }
  goods_->setText(line_screen_detail::describe(draft_.goods, draft_.warehouse, !hidesStock()));
}

void LineScreen::takeWarehouse(const QString& warehouse) {
  LinePlace there = request_.place;
  there.warehouse = warehouse;
  lines().takeWarehouse(draft_, there);
  showWarehouse();
  showAmounts();
}

void LineScreen::bind(std::string_view name, void (LineAmounts::*set)(double)) {
  auto* const input = optional(name);
  if (!input) return;
  input->onChanged([this, input, set] {
    (draft_.amounts.*set)(input->number());
    showAmounts(input);
  });
}

void LineScreen::offerPrice(ui::Grid& grid, std::string_view column) {
  const auto* const price = optional(description_.price);
  if (!grid.current() || !price || price->isReadOnly()) return;
  draft_.amounts.setPrice(grid.currentNumber(column));
  showAmounts();
  tsl.focus();
}

void LineScreen::showAmounts(const ui::Field* typing) {
  const LineAmounts& line = draft_.amounts;
  const auto show = [this, typing](std::string_view name, double figure) {
    auto* const input = optional(name);
    if (input && input != typing) input->setNumber(roundEps(figure, line_screen_detail::kShownDecimals));
  };
  show("tsl", line.quantity());
  show(description_.price, line.price());
  show("tdzl", line.discount());
  show("ttax", line.tax());
  show("ttaxdj", line.taxedPrice());
  show("tzje", line.total());
  show("tkcsl", draft_.shelf);
  show("tkczsl", draft_.book);
}

void LineScreen::saveValue() {
  if (!checkFields()) return;
  if (auto* note = optional("tnote")) draft_.note = note->trimmed();
  if (auto* cost = optional(description_.cost); cost && !cost->isReadOnly()) draft_.cost = cost->number();
  if (auto* rent = optional("tzj")) draft_.rent = rent->number();
  if (auto* deposit = optional("tyj")) draft_.deposit = deposit->number();
  if (auto* account = optional("comYhzh")) draft_.account = account->key();
  const LineRules& lines = this->lines();
  if (!lines.mayWrite(draft_, request_.place, prompt())) return tsl.focus();
  if (request_.id == 0) {
    result_ = lines.addLine(request_.where, request_.place, draft_, prompt());
  } else if (lines.changeLine(request_.where, request_.id, request_.place, draft_, prompt())) {
    result_.id = request_.id;
  }
  accept();
}

}  // namespace jxc
