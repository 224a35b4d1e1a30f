// 纸面夹具: a shop with a program directory of its own, its delivered templates in it, and papers read back as text.
#pragma once

#include "core/program_directory.h"
#include "harness/gui.h"
#include "harness/report_samples.h"
#include "output/templates.h"
#include "stock/shop.h"

#include <QFile>
#include <QTemporaryDir>

namespace jxc::test {

class PaperTest : public ShopTest {
 protected:
  PaperTest() : before_(programDirectory()) {
    needGui();
    setProgramDirectory(home().path());
    bringTemplates();
  }
  ~PaperTest() override { setProgramDirectory(before_); }

  static report::Report report(QStringView name) { return openReport(name); }

  /// Words of a print as another program reads them from the PDF, its lines as they stand on the paper.
  QStringList readBack(const report::Report& report, const QString& name = QStringLiteral("paper")) {
    const QString file = home().filePath(name + QStringLiteral(".pdf"));
    const report::Pages pages = report.prepare();
    pages.writePdf(file);
    keep(pages, name);
    return textOfPdf(file).split(u'\n', Qt::SkipEmptyParts);
  }

  /// JXC_PAPERS=DIR keeps the papers, for whoever wants to look at them.
  static void keep(const report::Pages& pages, const QString& name) {
    const QString folder = qEnvironmentVariable("JXC_PAPERS");
    if (!folder.isEmpty()) pages.writePdf(folder + u'/' + name + QStringLiteral(".pdf"));
  }

  /// One for all tests of the process.
  static QTemporaryDir& home() {
    static QTemporaryDir directory;
    return directory;
  }

 private:
  const QString before_;
};

}  // namespace jxc::test
