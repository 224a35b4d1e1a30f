#include "stock/line_amounts.h"

#include "core/rounding.h"
#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"

#include <cmath>

namespace jxc {
namespace line_amounts_detail {

bool putawayInUse() {
  return strIsTrue(session().cs_sprk);
}
bool issueInUse() {
  return strIsTrue(session().cs_spck);
}

/// The value that a cell takes: what was typed, or what stands for it when that cannot be.
double cellValue(LineField field, const QString& typed) {
  bool isNumber = false;
  const double value = typed.trimmed().toDouble(&isNumber);
  const bool usable = isNumber && std::isfinite(value) && value > 0;
  const bool multiplies = field == LineField::Quantity || field == LineField::Discount;
  return usable ? value : multiplies ? 1 : 0;
}

}  // namespace line_amounts_detail

AmountRules AmountRules::current() {
  AmountRules rules;
  rules.moneyDigits = jxc::moneyDigits();
  rules.roundTotals = strIsTrue(session().cs_zjews);
  rules.totalDigits = jxc::totalDigits();
  rules.discountInUse = strIsTrue(session().cs_jhzk);
  return rules;
}

LineAmounts::LineAmounts(AmountRules rules, const LineFigures& stored)
    : rules_(rules),
      quantity_(stored.quantity),
      discount_(stored.discount),
      tax_(stored.tax),
      price_(stored.price),
      taxedPrice_(stored.taxedPrice),
      total_(stored.total) {}

void LineAmounts::retotal() {
  total_ = taxedPrice_ * discount_ * quantity_;
  if (rules_.roundTotals) total_ = roundEps(total_, rules_.totalDigits);
}

void LineAmounts::setQuantity(double units) {
  quantity_ = units;
  retotal();
}

void LineAmounts::setDiscount(double rate) {
  discount_ = rate;
  retotal();
}

void LineAmounts::setPrice(double yuan) {
  price_ = yuan;
  taxedPrice_ = price_ * (1 + tax_ / 100);
  retotal();
}

void LineAmounts::setTax(double percent) {
  tax_ = percent;
  taxedPrice_ = price_ * (1 + tax_ / 100);
  retotal();
}

void LineAmounts::setTaxedPrice(double yuan) {
  taxedPrice_ = yuan;
  price_ = tax_ > 0 ? taxedPrice_ / (1 + tax_ / 100) : taxedPrice_;
  retotal();
}

void LineAmounts::setTotal(double yuan) {
  total_ = yuan;
  if (rules_.discountInUse) {
    if (quantity_ != 0 && taxedPrice_ != 0) discount_ = total_ / (quantity_ * taxedPrice_);
  } else if (quantity_ != 0) {
    price_ = total_ / quantity_ / (tax_ / 100 + 1);
    taxedPrice_ = price_ * (1 + tax_ / 100);
  }
}

std::optional<LineFigures> LineAmounts::settled() const {
  if (quantity_ == 0) return std::nullopt;
  LineFigures line;
  line.quantity = quantity_;
  line.total = total_;
  if (total_ > 0 && price_ == 0) {
    line.discount = 1;
    line.tax = 0;
    line.price = line.taxedPrice = roundEps(total_ / quantity_, rules_.moneyDigits);
  } else {
    line.discount = discount_;
    line.tax = tax_;
    line.price = roundEps(price_, rules_.moneyDigits);
    line.taxedPrice = roundEps(taxedPrice_, rules_.moneyDigits);
  }
  line.net = line.quantity * line.price * line.discount;
  line.taxAmount = line.quantity * (line.taxedPrice - line.price) * line.discount;
  if (rules_.roundTotals) {
    line.net = roundEps(line.net, rules_.totalDigits);
    line.taxAmount = roundEps(line.taxAmount, rules_.totalDigits);
  }
  return line;
}

const LineColumns receiptLineColumns = {.table = "jxc_jhsp",
                                        .price = "jh_dj",
                                        .quantity = "jh_sl",
                                        .net = "jh_je",
                                        .tax = "jh_tax",
                                        .taxedPrice = "jh_taxdj",
                                        .taxAmount = "jh_taxje",
                                        .total = "jh_zje",
                                        .discount = "jh_dzl",
                                        .moved = "jh_rksl",
                                        .movedLater = line_amounts_detail::putawayInUse};
const LineColumns purchaseReturnLineColumns = {.table = "jxc_thsp",
                                               .price = "th_dj",
                                               .quantity = "th_sl",
                                               .net = "th_je",
                                               .tax = "th_tax",
                                               .taxedPrice = "th_taxdj",
                                               .taxAmount = "th_taxje",
                                               .total = "th_zje",
                                               .discount = "th_dzl"};
const LineColumns saleLineColumns = {.table = "jxc_lsxssp",
                                     .price = "ls_dj",
                                     .quantity = "ls_sl",
                                     .net = "ls_je",
                                     .tax = "ls_tax",
                                     .taxedPrice = "ls_taxdj",
                                     .taxAmount = "ls_taxje",
                                     .total = "ls_zje",
                                     .discount = "ls_dzl",
                                     .moved = "ls_cksl",
                                     .movedLater = line_amounts_detail::issueInUse,
                                     .cost = "ls_cbj",
                                     .costAmount = "ls_zcb"};
const LineColumns saleReturnLineColumns = {.table = "jxc_xsthsp",
                                           .price = "th_dj",
                                           .quantity = "th_sl",
                                           .net = "th_je",
                                           .tax = "th_tax",
                                           .taxedPrice = "th_taxdj",
                                           .taxAmount = "th_taxje",
                                           .total = "th_zje",
                                           .discount = "th_dzl",
                                           .cost = "th_cbj",
                                           .costAmount = "th_zcb"};
const LineColumns stagingLineColumns = {.table = "jxc_tempspxf",
                                        .price = "ts_dj",
                                        .quantity = "ts_sl",
                                        .net = "ts_je",
                                        .tax = "ts_tax",
                                        .taxedPrice = "ts_taxdj",
                                        .taxAmount = "ts_taxje",
                                        .total = "ts_zje",
                                        .discount = "ts_dzl",
                                        .cost = "ts_cbj",
                                        .costAmount = "ts_zcb"};

std::optional<LineField> lineFieldNamed(QStringView name) {
  if (name == u"dj") return LineField::Price;
  if (name == u"sl") return LineField::Quantity;
  if (name == u"taxdj") return LineField::TaxedPrice;
  if (name == u"tax") return LineField::Tax;
  if (name == u"dzl") return LineField::Discount;
  return std::nullopt;
}

double setLineField(const LineColumns& c, std::int64_t id, LineField field, const QString& typed) {
  const AmountRules rules = AmountRules::current();
  const int priceDigits = rules.moneyDigits;
  const int digits = rules.amountDigits();
  const double value = line_amounts_detail::cellValue(field, typed);

  Transaction transaction(accountDb());
  switch (field) {
    case LineField::Price:
      execSql(compose("update {} set {}=?,{}=round(?*(1+{}/100.00)+0.000000001,?) where id=?",
                      {c.table, c.price, c.taxedPrice, c.tax}),
              value, value, priceDigits, id);
      break;
    case LineField::TaxedPrice:
      execSql(compose("update {} set {}=?,{}=round(?/(1+{}/100.00)+0.000000001,?) where id=?",
                      {c.table, c.taxedPrice, c.price, c.tax}),
              value, value, priceDigits, id);
      break;
    case LineField::Tax:
      execSql(compose("update {} set {}=?,{}=round({}*(1+?/100.00)+0.000000001,?) where id=?",
                      {c.table, c.tax, c.taxedPrice, c.price}),
              value, value, priceDigits, id);
      break;
    case LineField::Discount:
      execSql(compose("update {} set {}=? where id=?", {c.table, c.discount}), value, id);
      break;
    case LineField::Quantity:
      execSql(compose("update {} set {}=? where id=?", {c.table, c.quantity}), value, id);
      if (!c.moved.empty())
        execSql(compose("update {} set {}=? where id=?", {c.table, c.moved}), c.movedLater() ? 0.0 : value, id);
      if (!c.cost.empty())
        execSql(compose("update {} set {}=round({}*{}+0.000000001,?) where id=?",
                        {c.table, c.costAmount, c.cost, c.quantity}),
                digits, id);
      break;
  }
  // A tax rate changes nothing before tax.
  if (field != LineField::Tax)
    execSql(compose("update {} set {}=round({}*{}*{}+0.000000001,?) where id=?",
                    {c.table, c.net, c.price, c.quantity, c.discount}),
            digits, id);
  execSql(compose("update {} set {}=round({}*{}*{}+0.000000001,?),{}=round(({}-{})*{}*{}+0.000000001,?) where id=?",
                  {c.table, c.total, c.taxedPrice, c.quantity, c.discount, c.taxAmount, c.taxedPrice, c.price,
                   c.quantity, c.discount}),
          digits, digits, id);
  transaction.commit();
  return value;
}

}  // namespace jxc
