#include "core/build_info.h"

namespace jxc::build {

QString windowTitle(const QString& companyShort) {
  const QString name = QString::fromUtf16(programName);
  const QString release = QString::fromUtf16(version);
  if (companyShort.isNull()) return name + u' ' + release;
  return name + QStringLiteral(" [") + companyShort + QStringLiteral("] ") + release;
}

}  // namespace jxc::build
