#include "output/screens/print_outlet.h"

#include "ui/file_dialogs.h"
#include "ui/grid.h"
#include "ui/report/preview.h"
#include "ui/report/print.h"

namespace jxc {
namespace print_outlet_detail {

PrintOutlet realOutlet() {
  return {.preview = [](const report::Pages& pages, QWidget*) { ui::showPreview(pages); },
          .printAsking = [](const report::Pages& pages, QWidget* parent) { ui::printWithDialog(pages, parent); },
          .print = [](const report::Pages& pages) { ui::printPages(pages); }};
}

}  // namespace print_outlet_detail

PrintOutlet& printOutlet() {
  static PrintOutlet outlet = print_outlet_detail::realOutlet();
  return outlet;
}

void restorePrintOutlet() {
  printOutlet() = print_outlet_detail::realOutlet();
}

void sendToPaper(const report::Report& report, PrintWay way, QWidget* parent, const QString& name) {
  report::Pages pages = report.prepare();
  pages.setName(name);
  const PrintOutlet& outlet = printOutlet();
  switch (way) {
    case PrintWay::Preview:
      return outlet.preview(pages, parent);
    case PrintWay::Ask:
      return outlet.printAsking(pages, parent);
    case PrintWay::AtOnce:
      return outlet.print(pages);
    case PrintWay::Pdf:
      break;
  }
  const QString file =
      ui::chooseSaveFile(parent, QStringLiteral("另存为PDF"), pages.name(), QStringLiteral("PDF文件 (*.pdf)"));
  if (!file.isEmpty()) pages.writePdf(file);
}

void addPrintMenu(ui::Grid& grid, ReportMaker maker, std::function<QString()> name) {
  const auto add = [&](const QString& caption, PrintWay way) {
    grid.addMenuCommand(caption, [&grid, maker, name, way] {
      if (const auto report = maker()) sendToPaper(*report, way, grid.window(), name());
    });
  };
  add(QStringLiteral("打印预览"), PrintWay::Preview);
  add(QStringLiteral("打印…"), PrintWay::Ask);
  add(QStringLiteral("另存为PDF…"), PrintWay::Pdf);
}

}  // namespace jxc
