// The example of docs/report-templates.md prints as the page says.
#include "harness/files.h"
#include "harness/gui.h"
#include "harness/qt_printers.h"
#include "platform/report/report.h"
#include "platform/report/template_file.h"

namespace jxc::report_documentation_test {

using namespace report;

TEST(ReportDocumentation, TheWorkedExamplePrints) {
  test::needGui();
  const QByteArray page = test::bytesOf(QStringLiteral(JXC_SOURCE_DIR "/docs/report-templates.md"));
  const qsizetype from = page.indexOf("```xml\n") + 7, to = page.indexOf("```", from);
  ASSERT_GT(to, from);
  const Template t = parseTemplate(page.mid(from, to - from));
  Report report = sampleReport(t, 5);
  const Pages pages = report.prepare();
  for (const Fault& fault : pages.faults())
    ADD_FAILURE() << fault.where.toStdString() << ": " << fault.message.toStdString();
  ASSERT_EQ(pages.count(), 1);
  EXPECT_FALSE(pages.find(QStringLiteral("明视眼镜销售单")).empty());
  EXPECT_FALSE(pages.find(QStringLiteral("日期：2026年5月3日")).empty());
  EXPECT_FALSE(pages.find(QStringLiteral("￥12,995.00")).empty());
  if (const QString picture = qEnvironmentVariable("JXC_REPORT_PICTURE"); !picture.isEmpty())
    pages.writePng(picture, 96);
}

}  // namespace jxc::report_documentation_test
