#include "stock/screens/line_screen.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "stock/screens/goods_pick_screen.h"
#include "ui/display.h"

#include <QLabel>
#include <QTabWidget>

namespace jxc {
namespace line_screen_detail {

constexpr int kShownDecimals = 6;  // of a price that a typed total left with an endless fraction

QString describe(const QString& goods, const QString& warehouse) {
  const RowSet rows = openSelect("select g_name,gg_name,color_name,dw_name from jxc_goods where g_sn=?", goods);
  QStringList parts{goods};
  if (!rows.isEmpty()) {
    for (const char* column : {"g_name", "gg_name", "color_name"})
      if (const QString text = rows.front().text(column); !text.isEmpty()) parts << text;
    parts << u"库存 "_qs + getStockQty(goods, warehouse) + u' ' + rows.front().text("dw_name");
  }
  return parts.join(u"　"_qs);
}

}  // namespace line_screen_detail

LineScreen::LineScreen(const LineScreenSpec& spec)
    : Screen(spec.screen),
      price(field(spec.price)),
      description_(spec),
      rules_(spec.rules()),
      goods_(new QLabel(this)),
      tabs_(panel()) {
  goods_->setObjectName(QStringLiteral("lGoods"));
  goods_->setTextInteractionFlags(Qt::TextSelectableByMouse);
  const std::string first = "tsl " + std::string(spec.price) + " tdzl";
  const std::string last = spec.cost.empty() ? "tnote" : std::string(spec.cost) + " tnote";
  panel().widget(goods_).form({first, "ttax ttaxdj tzje", last});
  tabs_ = panel();
  tabs_.page("tabHistory", ui::qs(spec.historyTitle)).grid("gridHistory");
  tabs_.page("tabQuotes", ui::qs(spec.quotesTitle)).grid("gridQuotes");
  panel().buttons(spec.askPrice ? "btnSpsj | btnOK btnCancel" : "| btnOK btnCancel");
  if (spec.askPrice)
    on(command("btnSpsj"), [this] {
      double chosen = draft_.amounts.price();
      description_.askPrice(draft_.goods, chosen);
      if (chosen != draft_.amounts.price()) draft_.amounts.setPrice(chosen);
      showAmounts();
    });

  bind(tsl, &LineAmounts::setQuantity);
  bind(price, &LineAmounts::setPrice);
  bind(tdzl, &LineAmounts::setDiscount);
  bind(ttax, &LineAmounts::setTax);
  bind(ttaxdj, &LineAmounts::setTaxedPrice);
  bind(tzje, &LineAmounts::setTotal);
  tnote.onEnter([this] {
    saveValue();
    return true;
  });
  gridHistory.onActivated([this] { offerPrice(gridHistory, description_.historyPrice); });
  gridQuotes.onActivated([this] { offerPrice(gridQuotes, description_.quotesPrice); });
  on(btnOK, [this] { saveValue(); });
}

LineResult LineScreen::edit(const Request& request) {
  request_ = request;
  result_ = {};
  result_.number = request.place.number;
  if (request.id != 0) {
    const std::optional<LineDraft> line = rules_.lines().loadLine(request.where, request.id);
    if (!line) return result_;
    draft_ = *line;
  } else {
    draft_ = rules_.lines().newLine(request.goods, request.place, request.where == Lines::Staging);
    draft_.amounts.setQuantity(request.quantity);
  }
  showModal();
  return result_;
}

void LineScreen::showByParameters() {
  const bool prices = pricesInSight(rules_.family());
  const bool tax = prices && strIsTrue(session().cs_hs);
  const bool discount = strIsTrue(session().cs_jhzk);
  ttax.setVisible(tax);
  ttaxdj.setVisible(tax);
  tdzl.setVisible(discount);
  price.setVisible(prices);
  tzje.setVisible(prices);
  for (auto* grid : {&gridHistory, &gridQuotes}) {
    showPrices(*grid, rules_.family());
    for (const auto& column : grid->spec().columns) {
      const std::string_view field = column.field;
      if (field.ends_with("_tax") || field.ends_with("_taxdj")) grid->setColumnVisible(field, tax);
      if (field.ends_with("_dzl")) grid->setColumnVisible(field, discount);
    }
  }
  // A total or a price with tax would change the price by another way.
  const bool fixed = !rules_.lines().priceMayChange();
  for (auto* field : {&price, &ttaxdj, &tzje})
    field->setReadOnly(fixed);
  if (description_.askPrice) command("btnSpsj").setVisible(prices && !fixed);
  if (description_.cost.empty()) return;
  auto& cost = field(description_.cost);
  cost.setVisible(session().canSeeCost && strIsTrue(session().cs_cs002));
  cost.setReadOnly(!(session().canChangeSaleCost && strIsTrue(session().cs_cs002)));
}

void LineScreen::activate() {
  showByParameters();
  goods_->setText(line_screen_detail::describe(draft_.goods, request_.place.warehouse));
  gridHistory.setRows(rules_.lines().history(draft_.goods, request_.place.partner));
  const RowSet quotes = rules_.lines().quotes(draft_.goods, request_.place.partner);
  gridQuotes.setRows(quotes);
  tabs_.tabs()->setTabVisible(1, !quotes.isEmpty());
  tabs_.tabs()->setCurrentIndex(0);
  tnote.setText(draft_.note);
  if (!description_.cost.empty()) field(description_.cost).setNumber(draft_.cost);
  showAmounts();
}

void LineScreen::bind(ui::Field& field, void (LineAmounts::*set)(double)) {
  field.onChanged([this, &field, set] {
    (draft_.amounts.*set)(field.number());
    showAmounts(&field);
  });
}

void LineScreen::offerPrice(ui::Grid& grid, std::string_view column) {
  if (!grid.current() || price.isReadOnly()) return;
  draft_.amounts.setPrice(grid.currentNumber(column));
  showAmounts();
  tsl.focus();
}

void LineScreen::showAmounts(const ui::Field* typing) {
  const LineAmounts& line = draft_.amounts;
  const auto show = [typing](ui::Field& field, double figure) {
    if (&field != typing) field.setNumber(roundEps(figure, line_screen_detail::kShownDecimals));
  };
  show(tsl, line.quantity());
  show(price, line.price());
  show(tdzl, line.discount());
  show(ttax, line.tax());
  show(ttaxdj, line.taxedPrice());
  show(tzje, line.total());
}

void LineScreen::saveValue() {
  if (!checkFields()) return;
  draft_.note = tnote.trimmed();
  if (!description_.cost.empty() && !field(description_.cost).isReadOnly())
    draft_.cost = field(description_.cost).number();
  const LineRules& lines = rules_.lines();
  if (!lines.mayWrite(draft_, request_.place, prompt())) return tsl.focus();
  if (request_.id == 0) {
    result_ = lines.addLine(request_.where, request_.place, draft_, prompt());
  } else if (lines.changeLine(request_.where, request_.id, request_.place, draft_, prompt())) {
    result_.id = request_.id;
  }
  accept();
}

}  // namespace jxc
