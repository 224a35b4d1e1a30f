// Files that are no good spreadsheets: every one gets its answer, in words for the operator, and nothing crashes.
#include "platform/sheet/ole_file.h"
#include "sheet/sheet_files.h"

#include <QTemporaryDir>

namespace jxc::test {
namespace damaged_sheet_test {

QByteArray goodFile(const QString& path) {
  Sheet sheet{.columns = {{u"编号"_qs}, {u"数量"_qs, SheetKind::Quantity, 2}, {u"日期"_qs, SheetKind::Date}}};
  std::vector<std::vector<Value>> rows;
  for (int i = 0; i < 50; ++i)
    rows.push_back({u"镜片%1号"_qs.arg(i * 977), i * 1.5, u"2026-05-03"});
  sheet.rows = heldRows(rows);
  writeSheet(path, sheet);
  return bytesOf(path);
}

QByteArray ole(const char* stream, const QByteArray& content) {
  return QByteArray::fromStdString(oleFile(stream, content.toStdString()));
}

QByteArray sheetXml(const QByteArray& rows) {
  return "<worksheet><sheetData>" + rows + "</sheetData></worksheet>";
}

}  // namespace damaged_sheet_test

class DamagedSheetTest : public testing::Test {
 protected:
  /// The answer to a file: the message, or how many rows it has.
  QString answer(const QString& path) const {
    try {
      const auto file = openExcel(path);
      int rows = 0;
      for (int i = 0; i < file->sheetNames().size(); ++i)
        rows += file->rows(i).rowCount();
      return u"%1 rows"_qs.arg(rows);
    } catch (const SheetError& error) {
      return error.message();
    }
  }
  void expect(const QByteArray& bytes, const QString& words, const QString& name, const char* what) {
    writeBytes(path(name), bytes);
    EXPECT_TRUE(answer(path(name)).contains(words)) << what << ": " << answer(path(name)).toStdString();
  }
  void expectZip(const ZipParts& parts, const QString& words, const char* what) {
    writeZip(path(u"z.xlsx"_qs), parts);
    EXPECT_TRUE(answer(path(u"z.xlsx"_qs)).contains(words)) << what << ": " << answer(path(u"z.xlsx"_qs)).toStdString();
  }
  QString path(const QString& name) const { return folder_.filePath(name); }
  QTemporaryDir folder_;
  const QString damaged_ = u"已损坏"_qs;
};

TEST_F(DamagedSheetTest, OtherThingsUnderTheNameOfASpreadsheet) {
  using namespace damaged_sheet_test;
  const QString xls = u"a.xls"_qs, xlsx = u"a.xlsx"_qs;
  EXPECT_TRUE(answer(path(u"none.xls"_qs)).contains(u"文件不存在"_qs));
  EXPECT_TRUE(answer(folder_.path()).contains(u"不能打开"_qs));
  expect({}, u"文件是空的"_qs, xlsx, "empty");
  expect("<html><table><tr><td>镜片</td></tr></table></html>", u"网页或文字"_qs, xls, "a web page");
  expect("编号,名称\n1,镜片\n", u"网页或文字"_qs, xlsx, "commas");
  expect(QByteArray::fromHex("ffd8ffe000104a46494600010100"), damaged_, xls, "a picture");
  expect("PK", damaged_, xlsx, "two letters of a package");
  expect(QByteArray::fromHex("d0cf11e0a1b11ae1"), damaged_, xls, "eight bytes of a container");
  expect(QByteArray::fromHex("d0cf11e0a1b11ae1") + QByteArray(5000, '\xff'), damaged_, xls, "a container of noise");
  expect(ole("WordDocument", QByteArray(5000, 'x')), u"文字文档"_qs, xls, "a letter");
  expect(ole("Contents", QByteArray(5000, 'x')), damaged_, xls, "a container of something else");
  expect(ole("Workbook", QByteArray(9000, '\x5a')), damaged_, xls, "a workbook of noise");
  expect(ole("Workbook", {}), damaged_, xls, "a workbook of nothing");
  expect(ole("EncryptedPackage", QByteArray(5000, 'x')), u"密码"_qs, xlsx, "an .xlsx with a password");
  const QByteArray locked = QByteArray::fromHex(
      "0908100000060500bb0dcc074100000006000000"  // a workbook
      "2f00060000004f2ab1c3"                      // the record of its password
      "0a000000");
  expect(ole("Workbook", locked + QByteArray(4200, '\0')), u"密码"_qs, xls, "an .xls with a password");
  writeZip(path(xlsx), xlsxParts(sheetXml("<row/>")), "secret");
  EXPECT_TRUE(answer(path(xlsx)).contains(u"密码"_qs)) << answer(path(xlsx)).toStdString();

  // The ending does not matter when the content is good.
  expect(goodFile(path(u"good.xls"_qs)), u"50 rows"_qs, xlsx, ".xls named .xlsx");
  expect(goodFile(path(u"good.xlsx"_qs)), u"50 rows"_qs, xls, ".xlsx named .xls");
}

TEST_F(DamagedSheetTest, PackagesWithSomethingWrongInside) {
  using namespace damaged_sheet_test;
  const QByteArray texts = "<sst><si><t>一</t></si><si><r><t>二</t></r><r><t>三</t></r><rPh><t>er</t></rPh></si></sst>";
  const auto without = [&](const std::string& name, const QByteArray& instead = {}) {
    ZipParts parts = xlsxParts(sheetXml("<row/>"), texts);
    for (auto& part : parts) {
      if (part.first == name) part = {instead.isEmpty() ? "other" : name, instead};
    }
    return parts;
  };
  expectZip({{"a.txt", "hello"}}, damaged_, "a package of something else");
  expectZip({{"[Content_Types].xml", "<Types/>"}, {"word/document.xml", "<d/>"}}, u"不是 .xlsx"_qs, "a letter");
  expectZip({{"mimetype", "application/vnd.oasis.opendocument.spreadsheet"}}, u"不是 .xlsx"_qs, "an .ods");
  expectZip(without("xl/workbook.xml", "<workbook><sheets/></workbook>"), u"没有工作表"_qs, "no sheets");
  expectZip(without("xl/workbook.xml", "<workbook><sheets>"), damaged_, "a workbook that is cut off");
  expectZip(without("xl/worksheets/sheet1.xml"), damaged_, "a sheet that is not there");
  expectZip(without("xl/sharedStrings.xml", "<sst><si><t>一</si></sst>"), damaged_, "texts with a wrong end");
  expectZip(without("xl/styles.xml", "<styleSheet"), damaged_, "styles that are cut off");
  const std::pair<const char*, QByteArray> sheets[] = {
      {"no sheet", "<html/>"},
      {"cut off", "<worksheet><sheetData><row><c><v>1</v></c>"},
      {"no number", sheetXml("<row/><row><c><v>12x</v></c></row>")},
      {"text that is not there", sheetXml("<row><c t=\"s\"><v>2</v></c></row>")},
      {"text below none", sheetXml("<row><c t=\"s\"><v>-1</v></c></row>")},
      {"column beyond the last", sheetXml("<row><c r=\"ZZZZ1\"><v>1</v></c></row>")},
      {"no place", sheetXml("<row><c r=\"12\"><v>1</v></c></row>")},
      {"rows backwards", sheetXml("<row r=\"5\"/><row r=\"4\"/>")},
      {"row beyond the last", sheetXml("<row r=\"99999999\"/>")},
      {"row no number", sheetXml("<row r=\"-1\"/>")},
      {"a world of entities", "<!DOCTYPE a [<!ENTITY a \"aaaaaaaaaa\"><!ENTITY b \"&a;&a;&a;&a;\">]>" +
                                  sheetXml("<row><c t=\"inlineStr\"><is><t>&b;</t></is></c></row>")},
      {"elements without end", "<worksheet>" + QByteArray("<a>").repeated(100000)},
      {"noise", QByteArray("\x00\x01\x02\xff\xfe", 5).repeated(100)},
  };
  for (const auto& [what, xml] : sheets)
    expectZip(xlsxParts(xml, texts), damaged_, what);

  // Small files that unpack to no end.
  const QString large = u"太大"_qs;
  expectZip(xlsxParts(QByteArray(20 << 20, ' ')), large, "blanks");
  expectZip(xlsxParts("<worksheet a=\"" + QByteArray(20 << 20, 'x') + "\"/>"), large, "one endless attribute");
  QByteArray many = "<row/><row><c r=\"XFD2\"><v>1</v></c></row>";
  for (int i = 3; i < 1500; ++i)
    many += "<row r=\"" + QByteArray::number(i * 600) + "\"><c><v>1</v></c></row>";
  const QByteArray head = "<row><c r=\"XFD1\"><v>1</v></c></row>";
  expectZip(xlsxParts(sheetXml(head + many.mid(6))), large, "a few cells, very far apart");
  expectZip(xlsxParts(sheetXml(QByteArray("<row/>").repeated(1100000))), damaged_, "more rows than there are");

  // And what looks strange but is good.
  writeZip(
      path(u"g.xlsx"_qs),
      xlsxParts(
          sheetXml("<row r=\"1\"><c r=\"A1\" t=\"s\"><v>1</v></c><c t=\"inlineStr\"><is><t>日期</t></is></c>"
                   "<c r=\"E1\" t=\"s\"><v>1</v></c></row>"
                   "<row r=\"4\"><c r=\"B4\" s=\"2\"><v>46145</v></c><c r=\"A4\" s=\"3\"><v>1.50</v></c>"
                   "<c r=\"D4\" t=\"b\"><v>1</v></c><c r=\"E4\" t=\"e\"><v>#N/A</v></c></row>"
                   "<row r=\"5\"><c r=\"B5\" s=\"4\"><v>46145.5</v></c><c r=\"A5\" t=\"str\"><f>1+1</f><v>二</v></c>"
                   "</row><row r=\"9\"/>"),
          texts));
  const RowSet rows = openExcel(path(u"g.xlsx"_qs))->rows();
  ASSERT_EQ(rows.columns(), (std::vector<std::string>{"二三", "日期", "F3", "F4", "二三1"}));
  ASSERT_EQ(rows.rowCount(), 4);
  EXPECT_TRUE(rows.isNull(0, 0));
  EXPECT_EQ(rows[2].number("二三"), 1.5);
  EXPECT_EQ(rows[2].text("日期"), u"2026-05-03"_qs);
  EXPECT_EQ(rows[2].integer("F4"), 1);
  EXPECT_TRUE(rows[2].isNull("二三1"));
  EXPECT_EQ(rows[3].text("日期"), u"2026-05-03 12:00:00"_qs);
  EXPECT_EQ(rows[3].text("二三"), u"二"_qs);
}

// Cut and changed anywhere: an answer each time, never a wrong number out of a package, which has check sums.
TEST_F(DamagedSheetTest, CutAndChangedBytes) {
  using namespace damaged_sheet_test;
  const QString xls = path(u"c.xls"_qs), xlsx = path(u"c.xlsx"_qs);
  const QByteArray goodXls = goodFile(xls), goodXlsx = goodFile(xlsx);
  unsigned random = 5;
  for (int round = 0; round < 300; ++round) {
    random = random * 1103515245 + 12345;
    QByteArray bytes = round % 2 ? goodXls : goodXlsx;
    const QString& file = round % 2 ? xls : xlsx;
    const auto at = static_cast<qsizetype>(random >> 8) % bytes.size();
    if (round % 3 == 0) {
      bytes.truncate(at);
    } else {
      bytes[at] = static_cast<char>(bytes[at] ^ (1 << (random >> 4) % 8));
    }
    writeBytes(file, bytes);
    const QString said = answer(file);
    EXPECT_FALSE(said.isEmpty());
    if (round % 2 == 0) {
      EXPECT_TRUE(said == u"50 rows"_qs || !said.endsWith(u" rows"_qs)) << said.toStdString();
    }
  }
}

}  // namespace jxc::test
