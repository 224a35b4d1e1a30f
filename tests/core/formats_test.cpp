#include "core/formats.h"

#include "core/session.h"
#include "harness/qt_printers.h"

#include <gtest/gtest.h>

namespace jxc {

TEST(Formats, MoneyCarriesTheSymbolAndTotalsDoNot) {
  session() = Session{};
  session().cs_hbfh = QStringLiteral("￥");
  session().jewsDigits = 0;
  EXPECT_EQ(moneyFormat()->pattern(), QStringLiteral("￥,0.00;-￥,0.00"));
  EXPECT_EQ(moneyFormat()->maxLength(), 15);
  EXPECT_EQ(moneyFormat()->format(1234567.895), QStringLiteral("￥1,234,567.90"));
  EXPECT_EQ(moneyFormat()->format(-999.5), QStringLiteral("-￥999.50"));
  EXPECT_EQ(moneyFormat()->format(-0.001), QStringLiteral("￥0.00")) << "what rounds to nothing has no sign";
  EXPECT_EQ(totalFormat()->pattern(), QStringLiteral("#,0;-#,0"));
  EXPECT_EQ(totalFormat()->format(123456.5), QStringLiteral("123,457"));

  session().cs_hbfh.clear();
  EXPECT_EQ(moneyFormat()->pattern(), QStringLiteral("#,0.00;-#,0.00"));
  EXPECT_EQ(moneyFormat()->format(5), QStringLiteral("5.00"));
  session() = Session{};
}

TEST(Formats, QuantitiesBelowZeroHaveNoLeadingZero) {
  session() = Session{};
  EXPECT_EQ(quantityFormat()->pattern(), QStringLiteral("#0.00;-#.00"));
  EXPECT_EQ(quantityFormat()->format(0), QStringLiteral("0.00"));
  EXPECT_EQ(quantityFormat()->format(-0.5), QStringLiteral("-.50"));
  EXPECT_EQ(quantityFormat()->format(-12345.5), QStringLiteral("-12345.50"));
  session().cbjsDigits = 0;
  EXPECT_EQ(quantityFormat()->pattern(), QStringLiteral("#;-#"));
  EXPECT_EQ(quantityFormat()->format(0), QString());
  EXPECT_EQ(quantityFormat()->format(-3), QStringLiteral("-3"));
  session().cbjsDigits = -1;
  EXPECT_FALSE(quantityFormat().has_value()) << "no column holds so many";
  session() = Session{};
}

}  // namespace jxc
