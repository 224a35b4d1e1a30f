// 售价: the price that a sale proposes to a customer.
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace jxc {

/// Price before tax and discount, in yuan, rounded to money digits: the customer's last quotation; by parameter
/// (`cs_xsdj`) what he paid last, or the column of his level; then the preset sale price. A level price of 0 counts as
/// a price here.
double getSalePrice(const QString& customer, const QString& goods);

/// One of the prices that a goods has besides: preset, levels one to five.
struct NamedPrice {
  QString name;
  double price;
};
std::vector<NamedPrice> goodsPrices(const QString& goods);

}  // namespace jxc
