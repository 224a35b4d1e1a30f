#include "core/screens/help.h"

#include "core/startup.h"
#include "platform/machine.h"

#include <QDesktopServices>
#include <QFile>
#include <QUrl>

namespace jxc {

void openHelp(Prompt& prompt) {
  const QString file = suppliedPath(QStringLiteral("readme.htm"));
  if (!QFile::exists(file)) return prompt.notice(QStringLiteral("帮助文档不存在！"));
  if (hasBrowser() && QDesktopServices::openUrl(QUrl::fromLocalFile(file))) return;
  prompt.notice(
      QStringLiteral("本机没有可以打开帮助文档的浏览器，请安装浏览器后再按F1。\r\n\r\n帮助文档：%1").arg(file));
}

}  // namespace jxc
