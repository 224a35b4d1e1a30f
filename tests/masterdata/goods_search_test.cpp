// Search in memory: the same rows in the same order as the query gives, whatever is typed.
#include "masterdata/goods_search.h"

#include "core/pinyin.h"
#include "harness/account_set_fixture.h"
#include "harness/row_texts.h"
#include "masterdata/goods.h"
#include "masterdata/goods_classes.h"

#include <random>

namespace jxc::goods_search_test {

class GoodsSearchTest : public test::AccountSetFixture {
 protected:
  static void put(const QString& number, const QString& name, const QString& model, const QString& colour,
                  const Value& barcode = Value(), const QString& sphere = {}, const QString& cylinder = {}) {
    execSql(
        "insert into jxc_goods (g_sn,g_name,gg_name,color_name,g_sptm,g_jm,g_qgd,g_sgd,gc_sn,g_zhxs,g_jy) "
        "values (?,?,?,?,?,?,?,?,'1000',1,0)",
        number, name, model, colour, barcode, makeJm(name).left(32), sphere, cylinder);
  }

  // Both ways to the same answer.
  static QStringList found(const RowSet& all, const QString& typed, const QString& classNumber = {}) {
    const QStringList queried = test::textsOf(selectGoods({.key = typed, .classNumber = classNumber}), {"g_sn"});
    QStringList filtered;
    for (const int row : GoodsIndex(all).find(typed, classNumber))
      filtered << all[row].text("g_sn");
    EXPECT_EQ(filtered, queried) << typed.toStdString();
    return filtered;
  }
};

TEST_F(GoodsSearchTest, WordsMatchAsTheQueryMatchesThem) {
  put(u"20000002"_qs, u"板材架 Ray-Ban"_qs, u"54□16"_qs, u"玳瑁"_qs, "6901");
  put(u"20000001"_qs, u"镜片:屈光度-2.25:散光度-0.75"_qs, u"1.56"_qs, u""_qs, "é_1", u"-2.25"_qs, u"-0.75"_qs);
  put(u"A 1"_qs, u"😀 笑脸镜盒"_qs, u"１００％"_qs, u"Café"_qs);
  const RowSet all = selectGoods({});

  EXPECT_EQ(found(all, u""_qs), QStringList({u"20000001"_qs, u"20000002"_qs, u"A 1"_qs}));
  EXPECT_EQ(found(all, u"ray-ban 玳"_qs), QStringList(u"20000002"_qs));
  EXPECT_EQ(found(all, u"156 -2.25"_qs), QStringList());
  EXPECT_EQ(found(all, u"1.56 -2.25 -0.75"_qs), QStringList(u"20000001"_qs));
  EXPECT_EQ(found(all, u"😀"_qs), QStringList(u"A 1"_qs));
  EXPECT_EQ(found(all, u"caf_"_qs), QStringList(u"A 1"_qs));      // "_" is any one character …
  EXPECT_EQ(found(all, u"é_1"_qs), QStringList(u"20000001"_qs));  // … but é is é
  EXPECT_EQ(found(all, u"6901玳瑁"_qs), QStringList());           // no word runs over two columns
  EXPECT_EQ(found(all, u"100001"_qs), QStringList());
  EXPECT_EQ(found(all, u"' or 1=1 --"_qs), QStringList());
  EXPECT_EQ(found(all, u"00%"_qs), QStringList());         // full width is another character …
  EXPECT_EQ(found(all, u"%"_qs), QStringList(u"A 1"_qs));  // … but for the marks that are stored so
  EXPECT_EQ(found(all, QString(10000, u'长')), QStringList());
  EXPECT_EQ(found(all, u"2"_qs, u"1001"_qs), QStringList());
}

TEST_F(GoodsSearchTest, PowersAreNumbersAndLettersAreSpoken) {
  const auto lens = [&](const char* number, const QString& sphere, const QString& cylinder) {
    put(QString::fromLatin1(number), u"重庆1.56"_qs, {}, {}, {}, sphere, cylinder);
  };
  lens("L1", u"-3.00"_qs, u"+0"_qs);
  lens("L2", u"-3.25"_qs, u"-3"_qs);
  lens("L3", u"3"_qs, u"-0.75"_qs);
  put(u"F1"_qs, u"长城架 -3"_qs, u"54-16"_qs, {}, {}, u"?"_qs);
  put(u"F2"_qs, u"张行架"_qs, {}, {});
  put(u"C1"_qs, u"日抛 -3.5"_qs, {}, {});  // contact lenses without powers of their own have them behind the name
  put(u"C2"_qs, u"日抛-3.50 30片"_qs, {}, {});
  const RowSet all = selectGoods({});
  for (const auto& [typed, expected] : {
           std::pair{u"-3"_qs, u"L1"_qs},
           {u"1.56 −3.000"_qs, u"L1"_qs},
           {u"－3.25"_qs, u"L2"_qs},
           {u"-3.25-3"_qs, u"L2"_qs},
           {u"-3/-0"_qs, u"L1"_qs},
           {u"+3 -.75"_qs, u"L3"_qs},
           {u"3"_qs, u"L3 F1 C1 C2"_qs},
           {u"1.56 +0"_qs, u""_qs},
           {u"54-16"_qs, u"F1"_qs},
           {u"cq"_qs, u"L1 L2 L3"_qs},
           {u"ZQ"_qs, u"L1 L2 L3"_qs},
           {u"ccj"_qs, u"F1"_qs},
           {u"ZHJ"_qs, u"F2"_qs},
           {u"-3.50"_qs, u"C1 C2"_qs},
           {u"CH"_qs, u""_qs},
           {u"-1 -2 -3"_qs, u""_qs},
       }) {
    QStringList numbers = found(all, typed);
    numbers.sort();
    QStringList wanted = expected.split(u' ', Qt::SkipEmptyParts);
    wanted.sort();
    EXPECT_EQ(numbers, wanted) << typed.toStdString();
  }
}

TEST_F(GoodsSearchTest, AnyTypingGivesTheRowsOfTheQuery) {
  std::mt19937 random(20210503);
  const QString letters = u"aB1_ 镜-."_qs;
  const auto text = [&](int longest) {
    QString result;
    for (auto left = random() % static_cast<unsigned>(longest + 1); left > 0; --left)
      result += letters[static_cast<qsizetype>(random() % static_cast<unsigned>(letters.size()))];
    return result;
  };
  for (int i = 0; i < 300; ++i)
    put(QString::number(1000 + i), text(8), text(6), text(4), text(5));
  const RowSet all = selectGoods({});
  int hits = 0;
  for (int i = 0; i < 300; ++i)
    hits += static_cast<int>(found(all, text(4), i % 2 == 0 ? u"1000"_qs : QString()).size());
  EXPECT_GT(hits, 300);  // the random words do find something
}

}  // namespace jxc::goods_search_test
