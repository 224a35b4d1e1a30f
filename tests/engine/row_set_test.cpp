#include "engine/row_set.h"

#include "engine/error.h"

#include <gtest/gtest.h>

namespace jxc {
namespace row_set_test {

RowSet goods(int rows) {
  RowSet set(std::vector<std::string>{"id", "g_sn", "g_name", "g_pjjj", "g_note"});
  for (int i = 0; i < rows; ++i) {
    set.addInteger(i);
    set.addText(std::to_string(10000000 + i));
    set.addText("近视镜片 第" + std::to_string(i) + "号");
    set.addReal(i + 0.5);
    set.addNull();
  }
  return set;
}

}  // namespace row_set_test

TEST(RowSet, KeepsEveryCellOverManyBlocks) {
  const RowSet set = row_set_test::goods(20000);
  ASSERT_EQ(set.rowCount(), 20000);
  for (const Row row : set) {
    ASSERT_EQ(row.integer("ID"), row.index());
    ASSERT_EQ(row.text("g_sn"), QString::number(10000000 + row.index()));
    ASSERT_EQ(row.text("G_Name"), QStringLiteral("近视镜片 第%1号").arg(row.index()));
    ASSERT_EQ(row.number("g_pjjj"), row.index() + 0.5);
    ASSERT_TRUE(row.isNull("g_note"));
  }
  EXPECT_EQ(set.utf8(7, 1), "10000007");
  EXPECT_EQ(set.utf8(7, 0), "");
  EXPECT_EQ(set[3].value("g_pjjj"), Value(3.5));
  EXPECT_EQ(set.text(3, 3), QStringLiteral("3.5"));
}

TEST(RowSet, UnknownColumnsAndRowsAreToldNotGuessed) {
  const RowSet set = row_set_test::goods(1);
  EXPECT_EQ(set.columnIndex("g_nam"), -1);
  try {
    set.front().text("g_nam");
    FAIL();
  } catch (const DbError& error) {
    EXPECT_EQ(error.kind(), DbError::Kind::UnknownName);
    EXPECT_TRUE(error.message().contains(QLatin1String("g_nam")));
  }
  EXPECT_THROW(row_set_test::goods(0).front().text("g_sn"), DbError);
  const RowSet none;
  EXPECT_EQ(none.rowCount(), 0);
  EXPECT_EQ(none.columnIndex("id"), -1);
  EXPECT_TRUE(none.columns().empty());
  // Of two columns with one name the first is meant, as in a join that selects both.
  RowSet twice(std::vector<std::string>{"g_sn", "G_SN"});
  twice.addText("a");
  twice.addText("b");
  EXPECT_EQ(twice.front().text("g_sn"), QStringLiteral("a"));
}

TEST(RowSet, CopiesAreIndependentAndCheap) {
  RowSet one = row_set_test::goods(5000);
  const RowSet two = one;
  EXPECT_EQ(one.utf8(4999, 2).data(), two.utf8(4999, 2).data());  // the same rows
  one.addInteger(1);
  one.addText("00000000");
  one.addText(std::string(300000, 'x'));  // larger than a block of texts
  one.addReal(0);
  one.addText("优惠商品优惠商品");
  EXPECT_EQ(two.rowCount(), 5000);
  ASSERT_EQ(one.rowCount(), 5001);
  EXPECT_EQ(one.utf8(5000, 2).size(), 300000u);
  EXPECT_EQ(one.text(4999, 2), two.text(4999, 2));
  EXPECT_EQ(one.text(5000, 4), QStringLiteral("优惠商品优惠商品"));
}

TEST(RowSet, RepeatedTextsAreKeptOnce) {
  RowSet set(std::vector<std::string>{"ghs_name", "g_dw"});
  for (int i = 0; i < 10000; ++i) {
    set.addText("上海光学眼镜有限公司");
    set.addText("副");
  }
  EXPECT_LT(set.memory(), 10000u * 2 * 16 * 5 / 4 + 300000);
  EXPECT_EQ(set.text(9999, 0), QStringLiteral("上海光学眼镜有限公司"));
}

}  // namespace jxc
