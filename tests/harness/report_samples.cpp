#include "harness/report_samples.h"

#include "engine/number_text.h"
#include "harness/gui.h"
#include "output/templates.h"
#include "platform/report/template_file.h"

#include <QProcess>

#include <gtest/gtest.h>

namespace jxc::test {

report::Template delivered(const char* name) {
  return report::parseTemplate(deliveredTemplate(QString::fromLatin1(name)));
}

report::Report deliveredReport(const char* name, int rows) {
  needGui();
  return report::sampleReport(delivered(name), rows);
}

report::Report saleReport(int rows) {
  needGui();
  report::Template t = delivered("spxs");
  usePaper(t.page, report::papers().front());
  return report::sampleReport(t, rows);
}

RowSet rowsOf(std::vector<std::string> columns, std::initializer_list<std::initializer_list<const char*>> rows) {
  RowSet set(std::move(columns));
  for (const auto& row : rows) {
    for (const char* cell : row) {
      const auto number = parseNumber(cell);
      if (*cell == '\0')
        set.addNull();
      else if (number)
        set.addReal(*number);
      else
        set.addText(cell);
    }
  }
  return set;
}

QString textOfPdf(const QString& file) {
  QProcess reader;
  reader.start(QStringLiteral("pdftotext"), {QStringLiteral("-layout"), file, QStringLiteral("-")});
  EXPECT_TRUE(reader.waitForFinished()) << "pdftotext (package poppler-utils) is missing";
  return QString::fromUtf8(reader.readAllStandardOutput());
}

QStringList linesOf(const report::Pages& pages) {
  QStringList lines;
  for (int page = 0; page < pages.count(); ++page)
    lines << pages.lines(page);
  return lines;
}

}  // namespace jxc::test
