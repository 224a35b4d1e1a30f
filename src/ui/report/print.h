// 打印: prepared pages to a printer, with and without the system's dialog.
#pragma once

#include "platform/report/pages.h"

#include <QString>
#include <QStringList>

#include <stdexcept>

class QWidget;

namespace jxc::ui {

struct PrintJob {
  QString printer;  // empty: the system's usual one
  int copies = 1;
  int from = 1, to = 0;  // pages from 1; 0: to the last
  QString toFile;        // a PDF instead of paper
};

/// Paper was wanted and there is none: no printer, or it refuses. The message is meant for the operator.
class PrintError : public std::runtime_error {
 public:
  /// `trouble` without a full stop; `advice`: what to do about it.
  explicit PrintError(const QString& trouble, const QString& advice = {})
      : std::runtime_error((trouble + (advice.isEmpty() ? advice : u'，' + advice) + u'。').toStdString()),
        trouble_(trouble) {}
  const QString& trouble() const { return trouble_; }

 private:
  QString trouble_;
};

/// Asks for printer, pages and copies first; false when the operator leaves it.
bool printWithDialog(const report::Pages& pages, QWidget* parent);
/// Prints at once. Throws PrintError when there is no such printer or it refuses.
void printPages(const report::Pages& pages, const PrintJob& job = {});
QStringList printerNames();

}  // namespace jxc::ui
