#include "engine/number_text.h"

#include "engine/value.h"

#include <cstdio>
#include <gtest/gtest.h>
#include <random>

namespace jxc {

TEST(NumberText, ReadsAsAPersonWritesIt) {
  const std::pair<double, const char*> figures[] = {{99.9, "99.9"},
                                                    {0.1 + 0.7, "0.8"},
                                                    {100, "100"},
                                                    {-12.5, "-12.5"},
                                                    {-0.0, "0"},
                                                    {0.000001, "0.000001"},
                                                    {0.00005, "0.00005"},
                                                    {1.0 / 3, "0.333333333333333"},
                                                    {123456789.123456, "123456789.123456"},
                                                    {1e15, "1e+15"},
                                                    {-0.000001, "-0.000001"},
                                                    {0.0000125, "0.0000125"},
                                                    {999999999999999, "999999999999999"}};
  for (const auto& [figure, text] : figures)
    EXPECT_EQ(numberText(figure), QLatin1String(text));
}

TEST(NumberText, AgreesWithTheGeneralFormatOfFifteenDigits) {
  std::mt19937 dice(7);
  std::uniform_real_distribution<double> mantissa(-1, 1);
  std::uniform_int_distribution<int> exponent(-3, 14), decimals(0, 8);
  for (int i = 0; i < 20000; ++i) {
    double figure = mantissa(dice) * std::pow(10.0, exponent(dice));
    if (i % 2 == 0) figure = std::round(figure * std::pow(10.0, decimals(dice))) / std::pow(10.0, decimals(dice));
    if (std::fabs(figure) < 0.0001) continue;
    char expected[40];
    std::snprintf(expected, sizeof expected, "%.15g", figure);
    NumberBuffer buffer;
    ASSERT_EQ(formatNumber(figure, buffer), std::string_view(expected));
  }
}

TEST(NumberText, OnlyNumbersAreRead) {
  EXPECT_EQ(parseNumber(" 12.50 "), 12.5);
  EXPECT_EQ(parseNumber("+3"), 3);
  EXPECT_EQ(parseNumber(".5"), 0.5);
  EXPECT_EQ(parseNumber("1e3"), 1000);
  for (const char* text : {"", " ", "12a", "1,000", "inf", "nan", "--1", "+-1", "0x10", "一百"})
    EXPECT_FALSE(parseNumber(text)) << text;
  EXPECT_EQ(Value("").number(), 0);
  EXPECT_EQ(Value("12件").number(), 0);
  EXPECT_EQ(Value("12.5").integer(), 13);
  EXPECT_EQ(Value("-0.5").integer(), -1);
  EXPECT_EQ(Value(true).text(), QStringLiteral("1"));
  EXPECT_EQ(Value().text(), QString());
}

TEST(NumberText, StoredNumbersKeepSixDecimals) {
  EXPECT_EQ(toSixDecimals(0.1 + 0.7), 0.8);
  EXPECT_EQ(toSixDecimals(1.0 / 3), 0.333333);
  EXPECT_EQ(toSixDecimals(2.0 / 3), 0.666667);
  EXPECT_EQ(toSixDecimals(-2.0 / 3), -0.666667);
  // Halves go away from zero as decimals, also those whose double lies a hair below the half.
  EXPECT_EQ(toSixDecimals(1.0000005), 1.000001);
  EXPECT_EQ(toSixDecimals(-1.0000005), -1.000001);
  EXPECT_EQ(toSixDecimals(0.1234565), 0.123457);
  EXPECT_EQ(toSixDecimals(1.0000004999), 1.0);
  EXPECT_EQ(toSixDecimals(12345678.1234565), 12345678.123457);
  EXPECT_FALSE(std::signbit(toSixDecimals(-0.0000001)));
  EXPECT_EQ(toSixDecimals(1e15 + 0.5), 1e15 + 0.5);
  EXPECT_EQ(toSixDecimals(42), 42);
  // Rounding twice changes nothing.
  std::mt19937 dice(11);
  std::uniform_real_distribution<double> any(-1e8, 1e8);
  for (int i = 0; i < 20000; ++i) {
    const double once = toSixDecimals(any(dice));
    ASSERT_EQ(toSixDecimals(once), once);
  }
}

}  // namespace jxc
