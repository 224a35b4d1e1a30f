#include "core/file_names.h"

#include <QRegularExpression>

namespace jxc {

QString asFileName(QString text) {
  static const QRegularExpression kForbidden(QStringLiteral("[\\\\/:*?\"<>|\\x00-\\x1f]"));
  return text.replace(kForbidden, QStringLiteral("-"));
}

}  // namespace jxc
