// Spreadsheets: what was written is read back by readers of others, cell by cell, and by our own.
#include "harness/sheets_by_python.h"
#include "platform/sheet/row_export.h"
#include "sheet/sheet_files.h"

#include <QDir>
#include <QJsonArray>
#include <QTemporaryDir>

#include <csignal>
#include <sys/resource.h>

namespace jxc::test {
namespace sheet_test {

/// Cells in one form whoever read them: "s:text", "n:number" with the fifteen digits that a spreadsheet keeps,
/// "d:date", "" for none.
using Table = std::vector<QStringList>;

QString number(double value) {
  return u"n:"_qs + QString::number(value, 'g', 15);
}

Table rowsOf(const QJsonValue& sheet) {
  Table table;
  for (const QJsonValue row : sheet[u"rows"_qs].toArray()) {
    QStringList line;
    for (const QJsonValue cell : row.toArray())
      line << cell.toString();
    table.push_back(line);
  }
  return table;
}

Table readByUs(const QString& path, int sheet = 0) {
  Table table;
  openExcel(path)->readRows(
      [&](int row, std::span<const SheetCell> cells) {
        EXPECT_EQ(row, static_cast<int>(table.size()));
        QStringList line;
        for (const SheetCell& cell : cells) {
          using Kind = SheetCell::Kind;
          if (cell.kind == Kind::Number)
            line << number(cell.number);
          else
            line << (cell.kind == Kind::Empty ? QString()
                                              : (cell.kind == Kind::Date ? u"d:"_qs : u"s:"_qs) + cell.text);
        }
        table.push_back(line);
        return true;
      },
      sheet);
  return table;
}

void expectSame(const Table& read, const Table& wanted, const char* reader) {
  ASSERT_EQ(read.size(), wanted.size()) << reader;
  for (std::size_t r = 0; r < wanted.size(); ++r) {
    for (qsizetype c = 0; c < std::max(read[r].size(), wanted[r].size()); ++c) {
      ASSERT_EQ(read[r].value(c).left(200), wanted[r].value(c).left(200))
          << reader << " line " << r + 1 << " column " << c + 1;
      ASSERT_EQ(read[r].value(c), wanted[r].value(c)) << reader << " line " << r + 1 << " column " << c + 1;
    }
  }
}

/// A list with everything that has ever gone wrong in somebody's spreadsheet, and what must be read of it.
struct Tricky {
  Sheet sheet;
  Table wanted;
};

/// The reader of the library fails on texts that go over two cuts; other readers show that these are right.
enum class LongTexts { With, Without };

Tricky trickyList(LongTexts longTexts) {
  const QString longest(32767, u'镜');
  const QString tooLong = QString(20000, u'a') + QString(20000, u'片');
  const QString cut = tooLong.left(32766) + u'…';
  const auto t = [](QStringView text) { return QString(u"s:"_qs + text.toString()); };
  Tricky list;
  list.sheet.name = u"商品/清单[1]"_qs;
  list.sheet.columns = {{u"名称"_qs},
                        {u"数量"_qs, SheetKind::Quantity, 2},
                        {u"金额"_qs, SheetKind::Money, 2, 16, u"￥"_qs},
                        {u"日期"_qs, SheetKind::Date},
                        {u"备注"_qs, SheetKind::Number}};
  list.wanted.push_back({t(u"名称"), t(u"数量"), t(u"金额"), t(u"日期"), t(u"备注")});
  std::vector<std::vector<Value>> rows;
  const auto add = [&](std::vector<Value> cells, const QStringList& wanted) {
    rows.push_back(std::move(cells));
    list.wanted.push_back(wanted);
  };
  add({u"镜片1.56 非球面", 12.5, 1234.5, u"2026-05-03", 7},
      {t(u"镜片1.56 非球面"), number(12.5), number(1234.5), u"d:2026-05-03"_qs, number(7)});
  add({u"😀👓", -0.5, -99.95, u"2026-05-03 08:30:00", 123456789012345.0},
      {t(u"😀👓"), number(-0.5), number(-99.95), u"d:2026-05-03 08:30:00"_qs, number(123456789012345.0)});
  add({u"他说\"好\"，'a'<b>&c;", 0, 0.1 + 0.2, u"不详", u"00123"},
      {t(u"他说\"好\"，'a'<b>&c;"), number(0), number(0.1 + 0.2), t(u"不详"), number(123)});
  add({u"000123", {}, {}, {}, {}}, {t(u"000123"), {}, {}, {}, {}});
  add({u"=1+1", u"", u" ", u"1900-02-28", u"abc"}, {t(u"=1+1"), {}, t(u" "), t(u"1900-02-28"), t(u"abc")});
  add({u"+86 138", 1e-7, 999999999999.99, u"2026-13-01", 9007199254740993LL},
      {t(u"+86 138"), number(1e-7), number(999999999999.99), t(u"2026-13-01"), t(u"9007199254740993")});
  add({u"  前后有空格  ", 1, 1, u"1900-03-01", 1},
      {t(u"  前后有空格  "), number(1), number(1), u"d:1900-03-01"_qs, number(1)});
  add({u"第一行\r\n第二行\t尾", 1, 1, u"2099-12-31", 1},
      {t(u"第一行\n第二行\t尾"), number(1), number(1), u"d:2099-12-31"_qs, number(1)});
  add({QString::fromUtf16(u"a\u0001b\u001fc\ufffe") + QChar(0xd83d), 1, 1, {}, 1},
      {t(u"abc"), number(1), number(1), {}, number(1)});
  add({u"ñ é ü", 1, 1, {}, 1}, {t(u"ñ é ü"), number(1), number(1), {}, number(1)});
  if (longTexts == LongTexts::With) {
    add({longest, 1, 1, {}, 1}, {t(longest), number(1), number(1), {}, number(1)});
    add({tooLong, 1, 1, {}, 1}, {t(cut), number(1), number(1), {}, number(1)});
  }
  add({10001, 1, 1, {}, 1}, {t(u"10001"), number(1), number(1), {}, number(1)});
  list.sheet.rows = heldRows(rows);
  list.sheet.sums = {u"合计", 19, 1000000001150.15, {}, {}};
  list.wanted.push_back({t(u"合计"), number(19), number(1000000001150.15), {}, {}});
  list.sheet.notes = {u"日期：2026-05-01 至 2026-05-31"_qs};
  list.wanted.push_back({t(u"日期：2026-05-01 至 2026-05-31"), {}, {}, {}, {}});
  return list;
}

}  // namespace sheet_test

class SheetTest : public testing::Test {
 protected:
  QString path(const QString& name) const { return folder_.filePath(name); }
  QTemporaryDir folder_;
};

TEST_F(SheetTest, EveryCellComesBackByReadersOfOthers) {
  using namespace sheet_test;
  const QString xls = path(u"商品 清单.xls"_qs), xlsx = path(u"商品 清单.xlsx"_qs);
  Tricky list = trickyList(LongTexts::Without);
  ASSERT_TRUE(writeSheet(xls, list.sheet));
  expectSame(readByUs(xls), list.wanted, "our xls");

  list = trickyList(LongTexts::With);
  ASSERT_TRUE(writeSheet(xls, list.sheet));
  ASSERT_TRUE(writeSheet(xlsx, list.sheet));
  expectSame(readByUs(xlsx), list.wanted, "our xlsx");
  for (const QString& file : {xls, xlsx}) {
    const QJsonObject book = readByPython(file);
    ASSERT_EQ(book.keys(), QStringList{u"商品清单1"_qs});
    const QJsonValue sheet = book[u"商品清单1"_qs];
    expectSame(rowsOf(sheet), list.wanted, qPrintable(file));
    EXPECT_EQ(sheet[u"freeze"_qs].toString(), u"A2"_qs);
    EXPECT_NEAR(sheet[u"widths"_qs][2].toDouble(), 16, 1);
    EXPECT_EQ(
        sheet[u"formats"_qs].toVariant().toStringList(),
        QStringList({u"@"_qs, u"0.00"_qs, u"\"￥\"#,##0.00;-\"￥\"#,##0.00"_qs, u"yyyy-mm-dd"_qs, u"General"_qs}));
    EXPECT_TRUE(sheet[u"bold"_qs][0].toBool());
    EXPECT_FALSE(sheet[u"bold"_qs][5].toBool());
  }

  // What a text looks like does not matter: our escape is undone by whoever knows it.
  Sheet code{.columns = {{u"a"_qs}}, .rows = heldRows({{u"_x0041_"}, {u"a_x000D_b"}, {u"_xyz_"}})};
  writeSheet(path(u"code.xlsx"_qs), code);
  EXPECT_EQ(readByUs(path(u"code.xlsx"_qs)),
            (Table{{u"s:a"_qs}, {u"s:_x0041_"_qs}, {u"s:a_x000D_b"_qs}, {u"s:_xyz_"_qs}}));
}

// Texts are cut at every 8,224 bytes of an .xls file, wherever that falls in one.
TEST_F(SheetTest, ThousandsOfTextsAndSeveralSheets) {
  using namespace sheet_test;
  Table wanted{{u"s:a"_qs, u"s:b"_qs}};
  std::vector<std::vector<Value>> rows;
  unsigned random = 1;
  for (int i = 0; i < 4000; ++i) {
    random = random * 1103515245 + 12345;
    const auto length = static_cast<int>(random >> 16) % 190 + 1;
    const QString wide = QString::number(i) + QString(length, QChar(0x4e00 + i));
    const QString narrow = QString::number(i) + QString(length, QChar('a' + i % 26));
    rows.push_back({wide, narrow});
    wanted.push_back({u"s:"_qs + wide, u"s:"_qs + narrow});
  }
  const Sheet sheets[] = {{.name = u"1"_qs, .columns = {{u"x"_qs}}, .rows = heldRows({{1}})},
                          {.name = u"2"_qs, .columns = {{u"a"_qs}, {u"b"_qs}}, .rows = heldRows(rows)},
                          {.name = u"3"_qs}};
  for (const QString& ending : {u".xls"_qs, u".xlsx"_qs}) {
    const QString file = path(u"many"_qs + ending);
    ASSERT_TRUE(writeSheets(file, sheets));
    EXPECT_EQ(openExcel(file)->sheetNames(), QStringList({u"1"_qs, u"2"_qs, u"3"_qs}));
    expectSame(readByUs(file, 1), wanted, "ours");
    EXPECT_EQ(openExcel(file)->rows(2).columnCount(), 0);
  }
  const Sheet same[] = {{.name = u"一"_qs}, {.name = u"一*"_qs}};
  EXPECT_THROW(writeSheets(path(u"same.xls"_qs), same), SheetError);
}

TEST_F(SheetTest, ADayThatTheLibraryWouldShiftIsNamed) {
  const auto write = [this](const QString& file, const char* day) {
    const Sheet sheet{.columns = {{u"a"_qs}, {u"日期"_qs, SheetKind::Date}},
                      .rows = heldRows({{u"x"_qs, QString::fromUtf8(day)}})};
    ASSERT_TRUE(writeSheet(path(file), sheet));
  };
  write(u"ahead.xls"_qs, "2100-02-27");
  EXPECT_EQ(openExcel(path(u"ahead.xls"_qs))->rows().text(0, 1), u"2100-02-27"_qs);
  write(u"ahead.xls"_qs, "2100-03-01");
  try {
    openExcel(path(u"ahead.xls"_qs))->rows();
    FAIL() << "was read";
  } catch (const SheetError& error) {
    EXPECT_TRUE(error.message().contains(u"第 2 行第 2 列"_qs)) << error.what();
  }
  write(u"ahead.xlsx"_qs, "2100-03-01");
  EXPECT_EQ(openExcel(path(u"ahead.xlsx"_qs))->rows().text(0, 1), u"2100-03-01"_qs);
}

TEST_F(SheetTest, ATextThatTheLibraryLosesItsWayInIsNamed) {
  for (const QChar letter : {u'x', u'中'})
    for (const int length : {4000, 8000, 16000, 20000, 32000}) {
      SCOPED_TRACE(length);
      const QString text = u"备注"_qs + QString(length, letter);
      const Sheet sheet{.columns = {{u"a"_qs}, {u"b"_qs}}, .rows = heldRows({{u"1"_qs, text}, {u"2"_qs, u"后"_qs}})};
      ASSERT_TRUE(writeSheet(path(u"long.xls"_qs), sheet));
      try {
        const RowSet rows = openExcel(path(u"long.xls"_qs))->rows();
        EXPECT_EQ(rows.text(0, 1), text);
        EXPECT_EQ(rows.text(1, 1), u"后"_qs);
        EXPECT_LE(length, 8000);
      } catch (const SheetError& error) {
        EXPECT_TRUE(error.message().contains(u"以“备注"_qs)) << error.what();
        EXPECT_GT(length, 4000);
      }
    }
}

// What `select … into 1 in 'file'` writes: one sheet after the other in one file.
TEST_F(SheetTest, RowsOfQueriesShareAFile) {
  RowSet goods({"g_sn", "g_kc"}), stock({"x"});
  goods.addText("00100001");
  goods.addReal(1.5);
  goods.addText("12");
  goods.addNull();
  stock.addInteger(7);
  const QString file = path(u"分店.xls"_qs);
  addRowsToFile(goods, u"1"_qs, file);
  addRowsToFile(goods, u"2"_qs, file);
  addRowsToFile(stock, u"2"_qs, file);
  const auto book = openExcel(file);
  EXPECT_EQ(book->sheetNames(), QStringList({u"1"_qs, u"2"_qs}));
  const RowSet first = book->rows(0), second = book->rows(1);
  ASSERT_EQ(first.rowCount(), 2);
  EXPECT_EQ(first[0].value("g_sn"), Value(u"00100001"));
  EXPECT_EQ(first[1].value("g_sn"), Value(u"12"));
  EXPECT_EQ(first[0].value("g_kc"), Value(1.5));
  EXPECT_TRUE(first[1].isNull("g_kc"));
  ASSERT_EQ(second.rowCount(), 1);
  EXPECT_EQ(second[0].value("x"), Value(7));
  writeBytes(file, "no spreadsheet");
  EXPECT_THROW(addRowsToFile(stock, u"1"_qs, file), SheetError);
  EXPECT_EQ(bytesOf(file), "no spreadsheet");
}

TEST_F(SheetTest, WhatAnXlsCannotHoldIsRefusedWithAdvice) {
  Sheet sheet{.columns = {{u"编号"_qs, SheetKind::Number}}};
  sheet.rows = {65535, [](int row, std::span<Value> cells) { cells[0] = row; }};
  const QString xls = path(u"long.xls"_qs);
  ASSERT_TRUE(writeSheet(xls, sheet));
  EXPECT_EQ(openExcel(xls)->rows().rowCount(), 65535);
  sheet.rows.count = 65536;
  const QByteArray before = bytesOf(xls);
  try {
    writeSheet(xls, sheet);
    FAIL();
  } catch (const SheetError& error) {
    EXPECT_TRUE(error.message().contains(u"请改用 .xlsx"_qs)) << error.what();
  }
  EXPECT_EQ(bytesOf(xls), before);
  ASSERT_TRUE(writeSheet(path(u"long.xlsx"_qs), sheet));
  const RowSet rows = openExcel(path(u"long.xlsx"_qs))->rows();
  EXPECT_EQ(rows.rowCount(), 65536);
  EXPECT_EQ(rows[65535].integer("编号"), 65535);
  EXPECT_THROW(writeSheet(path(u"a.csv"_qs), sheet), SheetError);
  EXPECT_THROW(writeSheet(path(u"没有/a.xlsx"_qs), sheet), SheetError);
}

TEST_F(SheetTest, AFullDiskOrAStopLeavesTheOldFile) {
  using namespace sheet_test;
  Sheet sheet{.columns = {{u"a"_qs}}};
  sheet.rows = {20000, [](int row, std::span<Value> cells) { cells[0] = QString::number(row * 7919); }};
  for (const QString& ending : {u".xls"_qs, u".xlsx"_qs}) {
    const QString file = path(u"old"_qs + ending);
    writeBytes(file, "old contents");
    QFile::setPermissions(file, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup);
    const auto rights = QFile::permissions(file);

    EXPECT_FALSE(writeSheet(file, sheet, [](int percent) { return percent < 50; }));
    EXPECT_EQ(bytesOf(file), "old contents");
    // The rows are written, and the file is put together.
    {
      SheetBook book(file);
      ASSERT_TRUE(book.add(sheet));
      EXPECT_FALSE(book.finish([] { return false; }));
    }
    EXPECT_EQ(bytesOf(file), "old contents");

    rlimit whole{};
    getrlimit(RLIMIT_FSIZE, &whole);
    const auto handler = std::signal(SIGXFSZ, SIG_IGN);
    for (const rlim_t limit : {rlim_t{0}, rlim_t{5000}, rlim_t{60000}}) {
      const rlimit small{limit, whole.rlim_max};
      setrlimit(RLIMIT_FSIZE, &small);
      QString message;
      try {
        writeSheet(file, sheet);
      } catch (const SheetError& error) {
        message = error.message();
      }
      setrlimit(RLIMIT_FSIZE, &whole);
      EXPECT_TRUE(message.contains(u"原来的文件保持不变"_qs) && message.contains(file))
          << ending.toStdString() << ' ' << limit << ' ' << message.toStdString();
      EXPECT_EQ(bytesOf(file), "old contents");
    }
    std::signal(SIGXFSZ, handler);
    EXPECT_EQ(QDir(folder_.path()).entryList({u"*"_qs + ending}, QDir::Files | QDir::Hidden).size(), 1);

    EXPECT_TRUE(writeSheet(file, sheet));
    EXPECT_EQ(QFile::permissions(file), rights);
    EXPECT_TRUE(writeSheet(path(u"new"_qs + ending), sheet));
    expectAsItsFolderHasIt(path(u"new"_qs + ending));
    EXPECT_EQ(openExcel(file)->rows().rowCount(), 20000);
  }
}

}  // namespace jxc::test
