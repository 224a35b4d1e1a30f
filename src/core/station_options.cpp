#include "core/station_options.h"

#include "core/program_directory.h"
#include "core/text.h"
#include "engine/error.h"

#include <QDir>
#include <QMap>
#include <QSettings>
#include <QString>

namespace jxc {
namespace station_options_detail {

QMap<QString, bool>& known() {
  static QMap<QString, bool> options;
  return options;
}

QString file() {
  return programPath(u"Layout/station.ini"_qs);
}

}  // namespace station_options_detail

bool stationOption(QStringView name) {
  using namespace station_options_detail;
  const QString key = name.toString();
  if (!known().contains(key))
    known()[key] = !programDirectory().isEmpty() && QSettings(file(), QSettings::IniFormat).value(key).toBool();
  return known()[key];
}

void setStationOption(QStringView name, bool on) {
  using namespace station_options_detail;
  known()[name.toString()] = on;
  if (programDirectory().isEmpty()) return;
  QDir().mkpath(programPath(u"Layout"_qs));
  QSettings settings(file(), QSettings::IniFormat);
  settings.setValue(name.toString(), on);
  settings.sync();
  if (settings.status() != QSettings::NoError)
    throw DbError(DbError::Kind::File, u"本机选项不能写入："_qs + settings.fileName());
}

}  // namespace jxc
