#include "ui/report/print.h"

#include <QPageLayout>
#include <QPainter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>

#include <algorithm>

namespace jxc::ui {

namespace print_detail {

[[noreturn]] void fail(const QString& trouble, const QString& advice = {}) {
  throw PrintError(trouble, advice);
}

void setPage(QPrinter& printer, const report::Pages& pages, int page) {
  // The printer gets the paper as it is; margins are the template's, so that preprinted forms fit. (A page layout as a
  // whole would be refused for margins that the printer cannot reach.)
  const QSizeF size = pages.size(page);
  const bool lying = pages.isLandscape();
  printer.setFullPage(true);
  printer.setPageSize(QPageSize(lying ? size.transposed() : size, QPageSize::Millimeter));
  printer.setPageOrientation(lying ? QPageLayout::Landscape : QPageLayout::Portrait);
}

void run(QPrinter& printer, const report::Pages& pages, int from, int to, int copies) {
  const int first = std::max(1, from) - 1, end = to > 0 ? std::min(to, pages.count()) : pages.count();
  if (first >= end) fail(QStringLiteral("没有可以打印的页面"));
  printer.setDocName(pages.name());
  copies = std::clamp(copies, 1, 999);
  const bool itself = printer.supportsMultipleCopies();
  printer.setCopyCount(itself ? copies : 1);
  setPage(printer, pages, first);
  QPainter painter;
  if (!painter.begin(&printer)) {
    fail(QStringLiteral("打印机“%1”不能打印").arg(printer.printerName()), QStringLiteral("请检查是否接通"));
  }
  bool begun = false;
  for (int copy = 0; copy < (itself ? 1 : copies); ++copy) {
    for (int page = first; page < end; ++page) {
      if (begun) {
        setPage(printer, pages, page);
        printer.newPage();
      }
      begun = true;
      pages.paint(painter, page, printer.resolution() / 25.4);
    }
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error) {
    fail(QStringLiteral("打印机“%1”打印失败").arg(printer.printerName()));
  }
}

}  // namespace print_detail

QStringList printerNames() {
  return QPrinterInfo::availablePrinterNames();
}

void printPages(const report::Pages& pages, const PrintJob& job) {
  using print_detail::fail;
  if (!job.toFile.isEmpty()) return pages.writePdf(job.toFile, job.from, job.to);
  const QPrinterInfo chosen =
      job.printer.isEmpty() ? QPrinterInfo::defaultPrinter() : QPrinterInfo::printerInfo(job.printer);
  if (chosen.isNull()) {
    if (!job.printer.isEmpty()) fail(QStringLiteral("找不到打印机“%1”").arg(job.printer));
    fail(QStringLiteral("没有可用的打印机"), QStringLiteral("请先安装打印机，或者存为PDF"));
  }
  QPrinter printer(chosen, QPrinter::HighResolution);
  print_detail::run(printer, pages, job.from, job.to, job.copies);
}

bool printWithDialog(const report::Pages& pages, QWidget* parent) {
  if (pages.isEmpty()) print_detail::fail(QStringLiteral("没有可以打印的页面"));
  QPrinter printer(QPrinter::HighResolution);
  print_detail::setPage(printer, pages, 0);
  printer.setDocName(pages.name());  // a print into a file is proposed under it
  QPrintDialog dialog(&printer, parent);
  dialog.setObjectName(QStringLiteral("printDialog"));
  dialog.setOption(QAbstractPrintDialog::PrintPageRange, true);
  dialog.setOption(QAbstractPrintDialog::PrintToFile, true);
  dialog.setMinMax(1, pages.count());
  if (dialog.exec() != QDialog::Accepted) return false;
  const bool range = printer.printRange() == QPrinter::PageRange;
  const int from = range ? printer.fromPage() : 1, to = range ? printer.toPage() : 0;
  // A file is written beside and moved into place, as every file is.
  if (printer.outputFormat() == QPrinter::PdfFormat && !printer.outputFileName().isEmpty())
    pages.writePdf(printer.outputFileName(), from, to);
  else
    print_detail::run(printer, pages, from, to, printer.copyCount());
  return true;
}

}  // namespace jxc::ui
