#include "core/rounding.h"

#include "core/session.h"
#include "core/text.h"
#include "engine/number_text.h"

#include <algorithm>

namespace jxc {

double roundEps(double value, int digits) {
  return roundDecimals(value + 0.000000001, std::clamp(digits, 0, 6));
}

std::string roundedExpression(const std::string& expression, int digits) {
  return "round(" + expression + "+0.000000001," + std::to_string(digits) + ")";
}

int moneyDigits() {
  return session().xswsDigits;
}

int quantityDigits() {
  return session().cbjsDigits;
}

int totalDigits() {
  return session().jewsDigits;
}

double roundMoney(double value) {
  return roundEps(value, moneyDigits());
}

double roundTotal(double value) {
  return roundEps(value, totalDigits());
}

double roundTotalIfSeparate(double value) {
  return strIsTrue(session().cs_zjews) ? roundTotal(value) : value;
}

}  // namespace jxc
