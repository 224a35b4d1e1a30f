// 打印出口: where a paper goes from a screen: preview, printer, PDF file.
#pragma once

#include "core/prompt.h"
#include "platform/report/report.h"

#include <QString>

#include <functional>
#include <optional>

class QWidget;

namespace jxc {

namespace ui {
class Grid;
}

/// The ways to paper. Tests put their own in place of the windows and of the printer.
struct PrintOutlet {
  std::function<void(const report::Pages& pages, QWidget* parent)> preview;
  std::function<void(const report::Pages& pages, QWidget* parent)> printAsking;  // with the system's dialog
  std::function<void(const report::Pages& pages)> print;                         // at once, on the usual printer
};
PrintOutlet& printOutlet();
/// The windows and the printer again.
void restorePrintOutlet();

enum class PrintWay : char { Preview, Ask, AtOnce, Pdf };

/// Lays the report out and sends it on its way. Failures (no printer, disk full) are thrown as std::runtime_error with
/// a message for the operator. `name` is what files and print jobs are called.
void sendToPaper(const report::Report& report, PrintWay way, QWidget* parent, const QString& name = {});

/// Makes the report of a command, or nothing when the operator left a choice.
using ReportMaker = std::function<std::optional<report::Report>()>;
/// "打印预览", "打印", "另存为PDF" in the pop-up menu of a list.
void addPrintMenu(ui::Grid& grid, ReportMaker report, std::function<QString()> name);

}  // namespace jxc
