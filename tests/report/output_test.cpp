// What leaves the program: PDF that another reader reads, pictures, barcodes; files that stay whole.
#include "harness/files.h"
#include "harness/gui.h"
#include "harness/qt_printers.h"
#include "harness/report_samples.h"
#include "platform/report/barcode.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QImage>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>
#include <QTemporaryDir>

#include <cmath>
#include <gtest/gtest.h>
#include <stdexcept>

namespace jxc::report_output_test {

using namespace report;

QString outputOf(const QString& program, const QStringList& arguments) {
  QProcess process;
  process.start(program, arguments);
  process.waitForFinished(20000);
  return QString::fromUtf8(process.readAllStandardOutput());
}

int blackDots(const QImage& image, const QRect& area) {
  int count = 0;
  for (int y = area.top(); y <= area.bottom(); ++y) {
    for (int x = area.left(); x <= area.right(); ++x)
      count += qGray(image.pixel(x, y)) < 128;
  }
  return count;
}

TEST(ReportOutput, AnotherReaderReadsTheChineseTextOfThePdf) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"销售单.pdf"_qs);
  Report report = test::deliveredReport("spxs", 25);
  const Pages pages = report.prepare();
  pages.writePdf(path);
  QString text = test::textOfPdf(path);
  text.remove(u' ');
  for (const char16_t* word :
       {u"晴川眼镜有限公司", u"商品销售单", u"客户：杭州视康眼科门诊部", u"日期：2021-05-03", u"壹万贰仟捌佰零陆元伍角",
        u"1.60非球面防蓝光镜片", u"第1页共3页", u"6,000.00", u"客户签收：", u"合计"}) {
    EXPECT_TRUE(text.contains(QString::fromUtf16(word))) << QString::fromUtf16(word).toStdString();
  }
  EXPECT_EQ(text.count(u"商品编号"_qs), 3);
  test::expectAsItsFolderHasIt(path);
  const QString info = outputOf(u"pdfinfo"_qs, {path});
  EXPECT_TRUE(info.contains(QRegularExpression(u"Pages:\\s+3"_qs)));
  EXPECT_TRUE(info.contains(QRegularExpression(u"683(\\.\\d+)? x 396"_qs))) << info.toStdString();

  pages.writePdf(path, 2, 2);
  EXPECT_TRUE(outputOf(u"pdfinfo"_qs, {path}).contains(QRegularExpression(u"Pages:\\s+1"_qs)));
}

TEST(ReportOutput, AFileThatCannotBeWrittenLeavesTheOldOneAlone) {
  const QTemporaryDir folder;
  const Pages pages = test::deliveredReport("posxp58", 3).prepare();
  EXPECT_THROW(pages.writePdf(folder.filePath(u"no/such.pdf"_qs)), std::runtime_error);
  EXPECT_THROW(pages.writePdf(folder.path()), std::runtime_error);
  EXPECT_THROW(Pages().writePdf(folder.filePath(u"a.pdf"_qs)), std::runtime_error);
  EXPECT_THROW(pages.writePng(folder.filePath(u"no/such.png"_qs)), std::runtime_error);
  EXPECT_TRUE(QDir(folder.path()).isEmpty());
}

TEST(ReportOutput, PicturesAreNumberedFromTheSecondPageOn) {
  const QTemporaryDir folder;
  const Pages pages = test::deliveredReport("spxs", 25).prepare();
  const QStringList files = pages.writePng(folder.filePath(u"单.png"_qs), 100);
  ASSERT_EQ(files.size(), 3);
  EXPECT_TRUE(files[2].endsWith(u"单-3.png"_qs));
  test::expectAsItsFolderHasIt(files[2]);
  const QImage image(files[0]);
  EXPECT_EQ(image.size(),
            QSize(static_cast<int>(std::lround(241 / 25.4 * 100)), static_cast<int>(std::lround(139.7 / 25.4 * 100))));
  EXPECT_GT(blackDots(image, image.rect()), 2000);
}

TEST(ReportOutput, BarsAreWholeDotsAndSayWhatTheyShould) {
  test::needGui();
  // 690123456789: the weights 1 and 3 give 1+3*... = 128, so the check digit is 2.
  const BarcodeField ean = encodeBarcode(u"690123456789"_qs, Symbology::Ean13, 1);
  EXPECT_EQ(ean.columns, 95);
  EXPECT_EQ(ean.shown, u"6901234567892"_qs);
  for (const int guard : {0, 2, 46, 48, 92, 94})
    EXPECT_TRUE(ean.isBlack(guard, 0)) << guard;
  const BarcodeField qr = encodeBarcode(u"单号XS1"_qs, Symbology::Qr, 1);
  EXPECT_EQ(qr.columns, qr.rows);
  EXPECT_GE(qr.columns, 21);

  Template t;
  t.page.width = t.page.height = 60;
  addBand(t, BandKind::ReportTitle, 30)
      .items.push_back(barcodeItem(0, 0, 40, 20, u"690123456789"_qs, Symbology::Ean13));
  const Pages pages = Report(t).prepare();
  ASSERT_TRUE(pages.faults().empty());
  EXPECT_EQ(pages.lines(0), QStringList{u"6901234567892"_qs});
  const QImage image = pages.image(0, 203);  // a label printer
  // Every run of black or white is a multiple of the same number of dots.
  const int y = static_cast<int>(15 / 25.4 * 203);
  std::vector<int> runs;
  int run = 0;
  for (int x = 1; x < image.width(); ++x) {
    ++run;
    if ((qGray(image.pixel(x, y)) < 128) != (qGray(image.pixel(x - 1, y)) < 128)) {
      runs.push_back(run);
      run = 0;
    }
  }
  ASSERT_EQ(runs.size(), 60u);  // 30 bars of an EAN, and the margin before
  for (std::size_t i = 1; i < runs.size(); ++i)
    EXPECT_EQ(runs[i] % 3, 0) << i;
}

TEST(ReportOutput, AReaderReadsEveryKindOfBarcode) {
  if (QStandardPaths::findExecutable(u"zbarimg"_qs).isEmpty()) GTEST_SKIP() << "no zbarimg";
  test::needGui();
  const QTemporaryDir folder;
  const std::pair<Symbology, const char*> codes[] = {
      {Symbology::Code128, "XS26050310001"}, {Symbology::Code39, "AB-12"}, {Symbology::Ean8, "1234567"},
      {Symbology::Ean13, "690123456789"},    {Symbology::Qr, "二维码"},    {Symbology::Interleaved25, "123456"}};
  for (const auto& [symbology, code] : codes) {
    Template t;
    t.page.width = t.page.height = 90;
    addBand(t, BandKind::ReportTitle, 40)
        .items.push_back(barcodeItem(0, 0, 60, 30, QString::fromUtf8(code), symbology));
    const QString file = Report(t).prepare().writePng(folder.filePath(u"code.png"_qs), 203).front();
    const QString found = outputOf(u"zbarimg"_qs, {u"-q"_qs, u"--raw"_qs, file});
    EXPECT_TRUE(found.startsWith(QString::fromUtf8(code))) << symbologyName(symbology).toString().toStdString();
  }
}

TEST(ReportOutput, ACodeThatCannotBeSaidIsMarkedAndListed) {
  const std::pair<Symbology, const char*> wrong[] = {{Symbology::Ean13, "6901234567890"}, {Symbology::Ean13, "123"},
                                                     {Symbology::Ean8, "眼镜"},           {Symbology::Code128, "眼镜"},
                                                     {Symbology::Interleaved25, "123"},   {Symbology::Codabar, "X1"}};
  test::needGui();
  for (const auto& [symbology, code] : wrong) {
    Template t;
    Band& band = addBand(t, BandKind::ReportTitle, 40);
    band.items.push_back(barcodeItem(0, 0, 60, 30, QString::fromUtf8(code), symbology));
    band.items.push_back(barcodeItem(0, 0, 60, 30, u"[nothing]"_qs, symbology));  // no code, no bars
    const Pages pages = Report(t).prepare();
    EXPECT_EQ(pages.lines(0), QStringList{u"#错误"_qs}) << code;
    EXPECT_EQ(pages.faults().back().content, QString::fromUtf8(code));
  }
}

TEST(ReportOutput, PicturesComeFromFilesFieldsAndTheTemplateItself) {
  test::needGui();
  const QTemporaryDir program, outside;
  const QString pictures = program.filePath(u"picture"_qs);
  ASSERT_TRUE(QDir().mkdir(pictures));
  const QDir folder(pictures);
  QImage red(40, 20, QImage::Format_RGB32);
  red.fill(Qt::red);
  ASSERT_TRUE(red.save(folder.filePath(u"100001.png"_qs)));
  test::writeBytes(folder.filePath(u"broken.png"_qs), "no picture");
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  red.save(&buffer, "PNG");

  Template t;
  t.page.width = t.page.height = 100;
  Band& row = addBand(t, BandKind::MasterData, 20);
  row.items.push_back(pictureItem(0, 0, 20, 20, u"[file]"_qs));
  Report report(t);
  report.setPictureFolder(pictures);
  // What lies elsewhere on the machine is no business of a template.
  const QString foreign = outside.filePath(u"secret.png"_qs);
  ASSERT_TRUE(red.save(foreign));
  const QString embedded = u"data:image/png;base64,"_qs + QString::fromLatin1(bytes.toBase64());
  RowSet rows({"file"});
  for (const QString& file : {u"100001.png"_qs, u"missing.jpg"_qs, u"broken.png"_qs, embedded, foreign,
                              u"../../"_qs + QFileInfo(outside.path()).fileName() + u"/secret.png"_qs})
    rows.addText(file.toStdString());
  report.setRows(std::move(rows));
  const Pages pages = report.prepare();
  // Goods without a picture are nothing out of the ordinary; a file that is none is.
  ASSERT_EQ(pages.faults().size(), 1u);
  EXPECT_EQ(pages.lines(0), QStringList{u"#错误"_qs});
  const QImage image = pages.image(0, 254);  // ten dots a millimetre
  const auto isRed = [&](double x, double y) {
    return image.pixelColor(static_cast<int>(x * 10), static_cast<int>(y * 10)) == QColor(Qt::red);
  };
  // Inside its box with its own shape: twice as wide as high.
  EXPECT_TRUE(isRed(20, 20));
  EXPECT_FALSE(isRed(20, 12));
  EXPECT_FALSE(isRed(20, 40));
  EXPECT_TRUE(isRed(20, 80));
}

TEST(ReportOutput, SearchFindsEveryPlaceInReadingOrder) {
  const Pages pages = test::saleReport(60).prepare();
  const auto hits = pages.find(u"绿膜"_qs);
  EXPECT_EQ(hits.size(), 60u);
  for (std::size_t i = 1; i < hits.size(); ++i) {
    EXPECT_TRUE(hits[i - 1].page < hits[i].page ||
                (hits[i - 1].page == hits[i].page && hits[i - 1].area.y() < hits[i].area.y()));
  }
  EXPECT_EQ(pages.find(u"xs21050310001"_qs).size(), static_cast<std::size_t>(pages.count()));
  EXPECT_TRUE(pages.find(QString()).empty());
  EXPECT_TRUE(pages.find(u"没有的字"_qs).empty());
}

TEST(ReportOutput, FiguresAreNeverCutAndTextsSayThatTheyAre) {
  test::needGui();
  Template t;
  Band& band = addBand(t, BandKind::ReportTitle, 40);
  const auto place = [&](double y, double width, const char16_t* content) -> Item& {
    band.items.push_back(textItem(0, y, width, 8, QString::fromUtf16(content)));
    return band.items.back();
  };
  place(0, 20, u"一段放不下的很长的文字");
  place(10, 20, u"12345678901.25");
  place(20, 6, u"12345678901.25");
  place(30, 20, u"一段缩小以后放得下的文字").shrink = true;
  const QStringList lines = Report(t).prepare().lines(0);
  ASSERT_EQ(lines.size(), 4);
  EXPECT_TRUE(lines[0].startsWith(u"一段放") && lines[0].endsWith(u'…')) << lines[0].toStdString();
  EXPECT_EQ(lines[1], u"12345678901.25"_qs);  // smaller type
  EXPECT_EQ(lines[2], u"###"_qs);
  EXPECT_EQ(lines[3], u"一段缩小以后放得下的文字"_qs);
}

}  // namespace jxc::report_output_test
