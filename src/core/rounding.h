// 舍入: the one rounding of money, price and quantity, and the digits that the parameters set.
#pragma once

#include <string>

namespace jxc {

/// Adds 0.000000001, then rounds half away from zero to `digits` (0..6) decimals: exactly what `round(x+0.000000001,n)`
/// does in a statement. So a half goes up, and below zero it goes towards zero (-0.005 gives 0); from some million yuan
/// below zero a double cannot hold the billionth, and halves go away from zero again. Never -0. Infinite and undefined
/// values come back as they are.
double roundEps(double value, int digits);
/// The same of an expression of a statement.
std::string roundedExpression(const std::string& expression, int digits);

int moneyDigits();     // money and unit price: cs_xsws
int quantityDigits();  // quantities: cs_cbjs
int totalDigits();     // totals: cs_jews when cs_zjews is on, the money digits otherwise

double roundMoney(double value);
double roundTotal(double value);
/// Rounds to the total digits only while totals have decimals of their own (cs_zjews); otherwise the value as it is.
double roundTotalIfSeparate(double value);

}  // namespace jxc
