#include "core/rounding.h"

#include "harness/account_set_fixture.h"

#include <cmath>
#include <limits>
#include <random>

namespace jxc {

TEST(Rounding, HalvesThatBinaryNumbersMissStillGoUp) {
  // 1.005, 2.675 and 0.285 lie just below the half as doubles.
  EXPECT_EQ(roundEps(1.005, 2), 1.01);
  EXPECT_EQ(roundEps(2.675, 2), 2.68);
  EXPECT_EQ(roundEps(0.285, 2), 0.29);
  EXPECT_EQ(roundEps(0.1 + 0.7, 2), 0.8);
  EXPECT_EQ(roundEps(1.0 / 3 * 3, 6), 1.0);
  EXPECT_EQ(roundEps(2.5, 0), 3.0);
  EXPECT_EQ(roundEps(0.0000005, 6), 0.000001);
  // Millions of yuan, where a double no longer holds the billionth.
  EXPECT_EQ(roundEps(98765432.105, 2), 98765432.11);
  EXPECT_EQ(roundEps(1234567890.005, 2), 1234567890.01);
}

TEST(Rounding, BelowZeroTheBillionthPullsHalvesTowardsZero) {
  EXPECT_EQ(roundEps(-1.005, 2), -1.0);
  EXPECT_EQ(roundEps(-2.5, 0), -2.0);
  EXPECT_EQ(roundEps(-2.51, 0), -3.0);
  EXPECT_FALSE(std::signbit(roundEps(-0.004, 2))) << "no -0 on a document";
  EXPECT_TRUE(std::isinf(roundEps(std::numeric_limits<double>::infinity(), 2)));
}

TEST(Rounding, AgreesWithExactDecimalsOverWhateverTheDatabaseHolds) {
  // Stored figures are whole millionths, so the exact answer can be had in whole numbers.
  std::mt19937_64 random(20210503);
  std::uniform_int_distribution<int> magnitude(0, 12), digitsOf(0, 6);
  for (int i = 0; i < 200'000; ++i) {
    std::int64_t bound = 1000;
    for (int m = magnitude(random); m > 0; --m)
      bound *= 10;
    const std::int64_t drawn = std::uniform_int_distribution<std::int64_t>(-bound, bound)(random) / 5 * 5;
    // Below minus a million a double does not hold the billionth.
    const std::int64_t millionths = drawn < -1'000'000'000'000 ? -drawn : drawn;
    const int digits = digitsOf(random);
    std::int64_t unit = 1'000'000'000;
    for (int d = 0; d < digits; ++d)
      unit /= 10;
    const std::int64_t shifted = millionths * 1000 + 1;  // billionths
    const std::int64_t half = shifted < 0 ? -unit / 2 : unit / 2;
    const double expected = static_cast<double>((shifted + half) / unit) / (1e9 / static_cast<double>(unit));
    ASSERT_EQ(roundEps(static_cast<double>(millionths) / 1e6, digits), expected) << millionths << " at " << digits;
  }
}

class RoundingStory : public test::AccountSetFixture {};

TEST_F(RoundingStory, AStatementRoundsAsTheProgramDoes) {
  // Balancing and spreading of discounts go on in the program with what a statement has rounded.
  execSql("delete from jxc_kcsp");
  std::mt19937_64 random(7);
  for (int i = 0; i < 500; ++i) {
    const int bound = i % 2 == 0 ? 10'000'000 : 2'000'000'000;
    const double amount = std::uniform_int_distribution<int>(-bound, bound)(random) * (i % 3 == 0 ? 0.005 : 0.0005);
    insertRow("jxc_kcsp", {{"kc_sl", amount}});
  }
  for (const Row row : openSelect("select kc_sl,round(kc_sl+0.000000001,2) as r2,round(kc_sl+0.000000001,3) as r3,"
                                  "round(kc_sl+0.000000001,0) as r0 from jxc_kcsp")) {
    const double amount = row.number("kc_sl");
    EXPECT_EQ(row.number("r2"), roundEps(amount, 2)) << row.text("kc_sl").toStdString();
    EXPECT_EQ(row.number("r3"), roundEps(amount, 3)) << row.text("kc_sl").toStdString();
    EXPECT_EQ(row.number("r0"), roundEps(amount, 0)) << row.text("kc_sl").toStdString();
  }
}

}  // namespace jxc
