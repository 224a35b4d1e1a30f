// Any bytes as a report template: refused with words for the operator, or read; what was read is written and read
// again without loss, and can be laid out with sample rows.
#include "platform/report/report.h"
#include "platform/report/template_file.h"

#include <QGuiApplication>

#include <cstdint>
#include <cstdio>
#include <cstdlib>

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  static int count = 1;
  static char name[] = "template";
  static char* arguments[] = {name, nullptr};
  new QGuiApplication(count, arguments);
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace jxc::report;
  try {
    const Template read = parseTemplate(QByteArray(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size)));
    const QByteArray written = templateXml(read);
    if (parseTemplate(written) != read) {
      std::fprintf(stderr, "lost on the way:\n%s\n", written.constData());
      std::abort();
    }
    sampleReport(read, 3).prepare();
  } catch (const TemplateError&) {
    return 0;
  }
  return 0;
}
