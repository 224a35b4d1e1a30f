#include "core/file_names.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

namespace jxc {

QString asFileName(QString text) {
  static const QRegularExpression kForbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]"));
  return text.replace(kForbidden, QStringLiteral("-"));
}

QString freeFileName(const QString& folder, const QString& name, const QString& ending) {
  const QDir place(folder);
  QString file = place.filePath(name + ending);
  for (int next = 2; QFileInfo::exists(file); ++next)
    file = place.filePath(name + u'_' + QString::number(next) + ending);
  return file;
}

}  // namespace jxc
