#include "core/screens/help.h"

#include "core/startup.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace jxc {

void openHelp(Prompt& prompt) {
  const QString file = suppliedPath(QStringLiteral("readme.htm"));
  if (!QFile::exists(file)) return prompt.notice(QStringLiteral("帮助文档不存在！"));
  QDesktopServices::openUrl(QUrl::fromLocalFile(file));
}

}  // namespace jxc
