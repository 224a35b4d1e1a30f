// 打印: prepared pages to a printer, with and without the system's dialog.
#pragma once

#include "platform/report/pages.h"

#include <QString>
#include <QStringList>

class QWidget;

namespace jxc::ui {

struct PrintJob {
  QString printer;  // empty: the system's usual one
  int copies = 1;
  int from = 1, to = 0;  // pages from 1; 0: to the last
  QString toFile;        // a PDF instead of paper
};

/// Asks for printer, pages and copies first; false when the operator leaves it.
bool printWithDialog(const report::Pages& pages, QWidget* parent);
/// Prints at once. Throws std::runtime_error with a message for the operator when there is no such printer or it
/// refuses.
void printPages(const report::Pages& pages, const PrintJob& job = {});
QStringList printerNames();

}  // namespace jxc::ui
