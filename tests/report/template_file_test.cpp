// Templates as files: what is written comes back, what is damaged says so, nothing is overwritten unasked.
#include "platform/report/template_file.h"

#include "harness/files.h"
#include "harness/qt_printers.h"
#include "harness/report_samples.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <functional>
#include <gtest/gtest.h>
#include <optional>

namespace jxc::report_file_test {

using namespace report;
using Kind = TemplateError::Kind;

std::optional<Kind> failure(const std::function<void()>& work, QString* message = nullptr) {
  try {
    work();
    return {};
  } catch (const TemplateError& error) {
    if (message) *message = error.message();
    return error.kind();
  }
}

/// Something of everything that a template can hold.
Template rich() {
  Template t = test::delivered("spxs");
  t.title = u"销售单 <\"&'> \n第二行"_qs;
  t.page.landscape = true;
  t.page.preprinted = true;
  t.page.columns = 2;
  t.page.columnGap = 2.125;
  t.page.flow = Flow::Across;
  t.fields = {{u"g_name"_qs, u"品名"_qs, u"镜架"_qs}};
  t.groups = {{.by = u"gc_name & '<'"_qs, .newPage = true, .keepTogether = true, .repeatHeader = false},
              {.by = u"1"_qs}};
  Band& header = addBand(t, BandKind::GroupHeader, 8.5);
  header.group = 1;
  header.visibleIf = u"a<b"_qs;
  header.newPage = header.splits = header.atBottom = true;
  header.onFirstPage = header.onLastPage = false;
  header.fill = QColor(1, 2, 3, 40);
  header.alternateFill = Qt::white;
  Item text = textItem(-1.5, 2.25, 30, 4, u"  留空 [a]\n第二行  "_qs, HAlign::Spread);
  text.name = u"t1"_qs;
  text.visibleIf = u"x>'1'"_qs;
  text.background = text.followHeight = text.wrap = text.shrink = text.grow = true;
  text.hideZero = text.hideRepeated = true;
  text.font = {.family = u"宋体"_qs,
               .size = 10.5,
               .bold = true,
               .italic = true,
               .underline = true,
               .strikeOut = true,
               .colour = QColor(9, 8, 7)};
  text.valign = VAlign::Bottom;
  text.lineSpacing = 1.25;
  text.paddingX = 0;
  text.paddingY = 1;
  text.rotation = 270;
  text.format = u"#,##0.00"_qs;
  text.frame = side::left | side::bottom;
  text.pen = {0.35, PenStyle::Double, Qt::red};
  text.fill = Qt::yellow;
  header.items.push_back(text);
  Item line = lineItem(0, 0, 10, 10);
  line.rising = true;
  header.items.push_back(line);
  header.items.push_back(shapeItem(0, 0, 1, 1, ShapeKind::Diamond));
  Item picture = pictureItem(0, 0, 5, 5, u"picture/[g_sn].jpg"_qs);
  picture.fit = PictureFit::Original;
  header.items.push_back(picture);
  for (const Symbology symbology : symbologies()) {
    Item code = barcodeItem(0, 0, 5, 5, u"[g_sptm]"_qs, symbology);
    code.showCode = false;
    code.correction = 3;
    header.items.push_back(code);
  }
  for (int kind = 0; kind <= static_cast<int>(BandKind::Overlay); ++kind)
    addBand(t, static_cast<BandKind>(kind), kind);
  return t;
}

TEST(ReportTemplateFile, EverythingComesBackAsItWas) {
  const Template t = rich();
  const QByteArray xml = templateXml(t);
  EXPECT_EQ(parseTemplate(xml), t);
  EXPECT_EQ(templateXml(parseTemplate(xml)), xml);
  EXPECT_EQ(parseTemplate(templateXml(Template())), Template());
  // What XML cannot hold is left out instead of making a file that nobody can read.
  Template odd;
  odd.title = u"a\u0001b"_qs;
  EXPECT_EQ(parseTemplate(templateXml(odd)).title, u"ab"_qs);
}

TEST(ReportTemplateFile, SavingKeepsWhatWasThereAndRefusesToLoseIt) {
  const QTemporaryDir folder;
  const QString path = folder.filePath(u"销售.fr3"_qs);
  QString message;
  EXPECT_EQ(failure([&] { loadTemplate(path); }, &message), Kind::Missing);
  EXPECT_TRUE(message.contains(path));
  EXPECT_EQ(failure([&] { loadTemplate(folder.path()); }), Kind::Unreadable);

  const Template first = test::delivered("spxs"), second = test::delivered("posxp58");
  saveTemplate(first, path, SaveMode::New);
  EXPECT_EQ(loadTemplate(path), first);
  EXPECT_EQ(failure([&] { saveTemplate(second, path, SaveMode::New); }), Kind::Exists);
  EXPECT_EQ(loadTemplate(path), first);
  saveTemplate(second, path, SaveMode::Replace);
  EXPECT_EQ(loadTemplate(path), second);
  ASSERT_EQ(backupsOf(path).size(), 1u);
  EXPECT_EQ(loadTemplate(backupsOf(path).front().path), first);

  // A newer program's file, then a damaged one: only who insists replaces it, and it is kept beside.
  for (const QByteArray& bytes : {QByteArray("<report version=\"2\" magic=\"x\"/>"), QByteArray("<report")}) {
    test::writeBytes(path, bytes);
    EXPECT_EQ(failure([&] { saveTemplate(first, path, SaveMode::Replace); }), Kind::WouldLose);
    EXPECT_EQ(test::bytesOf(path), bytes);
    saveTemplate(first, path, SaveMode::Force);
    EXPECT_EQ(loadTemplate(path), first);
    EXPECT_EQ(test::bytesOf(backupsOf(path).front().path), bytes);
  }
  EXPECT_EQ(failure([&] { saveTemplate(first, folder.filePath(u"no/such.fr3"_qs), SaveMode::New); }), Kind::Unwritable);
  // A model that could not be read again is not written.
  Template broken = first;
  broken.page.left = broken.page.right = 200;
  EXPECT_EQ(failure([&] { saveTemplate(broken, path, SaveMode::Replace); }), Kind::Damaged);
  EXPECT_EQ(loadTemplate(path), first);
  // Each save keeps what it replaced, the newest twenty of them by the time of their saving.
  for (int day = 1; day <= 24; ++day) {
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::ReadWrite));
    ASSERT_TRUE(file.setFileTime(QDateTime(QDate(2030, 1, day), QTime(8, 0)), QFileDevice::FileModificationTime));
    file.close();
    saveTemplate(day % 2 == 0 ? first : second, path, SaveMode::Replace);
  }
  ASSERT_EQ(backupsOf(path).size(), 20u);
  EXPECT_EQ(backupsOf(path).front().savedAt, QDateTime(QDate(2030, 1, 24), QTime(8, 0)));
  EXPECT_EQ(loadTemplate(backupsOf(path).front().path), second);
  EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 21);
}

TEST(ReportTemplateFile, DamageOfEveryKindIsToldAndNeverCrashes) {
  const QByteArray good = templateXml(rich());
  std::vector<std::pair<std::string, QByteArray>> damaged;
  // Cut off at forty places.
  for (qsizetype i = 0; i < 40; ++i)
    damaged.emplace_back("cut " + std::to_string(i), good.left(i * (good.size() - 10) / 40));
  // A byte turned over inside the structure.
  for (qsizetype i = 0; i < 20; ++i) {
    QByteArray bytes = good;
    const qsizetype at = bytes.indexOf("<", i * bytes.size() / 21);
    bytes[at] = '\x07';
    damaged.emplace_back("byte " + std::to_string(i), bytes);
  }
  const std::pair<const char*, std::vector<const char*>> replacements[] = {
      {"version=\"1\"", {"", "version=\"0\"", "version=\"-1\"", "version=\"one\"", "version=\"1\" version=\"1\""}},
      {"width=\"241\"",
       {"width=\"1e9\"", "width=\"nan\"", "width=\"inf\"", "width=\"-5\"", "width=\"\"", "width=\"10\""}},
      {"columns=\"2\"", {"columns=\"1000000\"", "columns=\"0\"", "columns=\"99999999999999999999\""}},
      {"column-gap=\"2.125\"", {"column-gap=\"999\""}},
      {"flow=\"across\"", {"flow=\"sideways\""}},
      {"landscape=\"yes\"", {"landscape=\"perhaps\""}},
      {"kind=\"overlay\"", {"kind=\"cellar\"", ""}},
      {"group=\"1\"", {"group=\"7\"", "group=\"-1\""}},
      {"rotation=\"270\"", {"rotation=\"45\""}},
      {"size=\"10.5\"", {"size=\"0\""}},
      {"pen-colour=\"#ff0000\"", {"pen-colour=\"reddish\""}},
      {"frame=\"left bottom\"", {"frame=\"left beneath\""}},
      {"symbology=\"qr\"", {"symbology=\"morse\""}},
      {"correction=\"3\"", {"correction=\"9\""}},
      {"follow-height=\"yes\"", {"follow-hight=\"yes\""}},
      {"<page ", {"<page width=\"10\" ", "<page width=\"300\" height=\"300\"/><page "}},
      {"</report>", {"</report><report version=\"1\"/>", "</report>rest"}},
      {"<field ", {"<field><field/></field><field "}},
      {"<band ", {"words<band ", "<hand/><band "}},
      {"<line ", {"<line><line/></line><line "}},
      {"name=\"khName\"", {""}},
  };
  for (const auto& [what, spoilt] : replacements)
    for (const char* by : spoilt) {
      EXPECT_TRUE(good.contains(what)) << what;
      damaged.emplace_back(std::string(what) + " -> " + by, QByteArray(good).replace(what, by));
    }
  damaged.emplace_back("empty", QByteArray());
  damaged.emplace_back("blank", QByteArray("   \n"));
  damaged.emplace_back("picture", QByteArray("\x89PNG\r\n\x1a\n\0\0\0", 11));
  damaged.emplace_back("zeros", QByteArray(5000, '\0'));
  damaged.emplace_back("another XML", QByteArray("<html><body/></html>"));
  damaged.emplace_back("old binary", QByteArray("TfrxReport\xff\xfe\x01", 13));
  damaged.emplace_back("bad UTF-8", QByteArray("<report version=\"1\" title=\"\xff\xfe\xfa\"/>"));
  damaged.emplace_back(
      "entity bomb", QByteArray("<?xml version=\"1.0\"?><!DOCTYPE r [<!ENTITY a \"aaaaaaaaaa\">"
                                "<!ENTITY b \"&a;&a;&a;&a;&a;&a;&a;&a;&a;&a;\"><!ENTITY c \"&b;&b;&b;&b;&b;&b;&b;&b;\">"
                                "]><report version=\"1\" title=\"&c;\"/>"));
  damaged.emplace_back("entity of itself",
                       QByteArray("<!DOCTYPE r [<!ENTITY a \"&a;\">]><report version=\"1\" title=\"&a;\"/>"));
  damaged.emplace_back("outside entity",
                       QByteArray("<!DOCTYPE r [<!ENTITY a SYSTEM \"file:///etc/passwd\">]>"
                                  "<report version=\"1\"><band kind=\"summary\"><text>&a;</text></band></report>"));
  damaged.emplace_back("unknown entity", QByteArray("<report version=\"1\" title=\"&nbsp;\"/>"));
  damaged.emplace_back("deep",
                       QByteArray("<report version=\"1\">") + QByteArray("<band kind=\"summary\">").repeated(100000));
  damaged.emplace_back(
      "many bands", "<report version=\"1\">" + QByteArray("<band kind=\"summary\"/>").repeated(100000) + "</report>");
  damaged.emplace_back("many texts", "<report version=\"1\"><band kind=\"summary\">" +
                                         QByteArray("<text/>").repeated(100000) + "</band></report>");
  damaged.emplace_back("many groups",
                       "<report version=\"1\">" + QByteArray("<group by=\"1\"/>").repeated(9) + "</report>");
  damaged.emplace_back("many names",
                       "<report version=\"1\">" + QByteArray("<variable name=\"a\"/>").repeated(3000) + "</report>");
  damaged.emplace_back("too large", "<report version=\"1\">" + QByteArray(20 << 20, ' ') + "</report>");

  for (const auto& [what, bytes] : damaged) {
    QString message;
    const auto kind = failure([&] { parseTemplate(bytes, u"xs.fr3"_qs); }, &message);
    EXPECT_EQ(kind, Kind::Damaged) << what;
    EXPECT_TRUE(message.contains(u"xs.fr3"_qs)) << what << ": " << message.toStdString();
  }
  EXPECT_GT(damaged.size(), 100u);

  QString message;
  EXPECT_EQ(failure([&] { parseTemplate("<report version=\"7\"><hologram/></report>", u"xs.fr3"_qs); }, &message),
            Kind::Newer);
  EXPECT_TRUE(message.contains(u'7')) << message.toStdString();
}

TEST(ReportTemplateFile, PapersHaveNamesAndRollsKeepTheirKind) {
  Template t;
  EXPECT_EQ(findPaper(t.page)->name, std::u16string_view(u"A4"));
  for (const Paper& paper : papers()) {
    usePaper(t.page, paper);
    EXPECT_EQ(findPaper(t.page), &paper);
    EXPECT_EQ(parseTemplate(templateXml(t)).page, t.page);
  }
  t.page.width = 123;
  EXPECT_EQ(findPaper(t.page), nullptr);
}

}  // namespace jxc::report_file_test
