// The console: account sets without a window.
#include "engine/sheet_export.h"
#include "maintenance/console_commands.h"
#include "platform/sheet/row_export.h"

#include <QCoreApplication>
#include <QFileInfo>

#include <iostream>

int main(int argc, char** argv) {
  QStringList words;
  for (int i = 1; i < argc; ++i)
    words << QString::fromUtf8(argv[i]);
  // No application object: nothing here waits for events, and it would complain about every locale but UTF-8.
  const QString executable = QFileInfo(QStringLiteral("/proc/self/exe")).symLinkTarget();
  jxc::setSheetExporter(jxc::sheetFiles());
  std::ios::sync_with_stdio(false);
  return jxc::runConsole(words, QFileInfo(executable).path(), {std::cin, std::cout, std::cerr},
                         jxc::maintenanceCommands());
}
