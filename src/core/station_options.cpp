#include "core/station_options.h"

#include "core/program_directory.h"
#include "core/text.h"
#include "engine/error.h"

#include <QDir>
#include <QMap>
#include <QSettings>
#include <QString>
#include <QVariant>

namespace jxc {
namespace station_options_detail {

QString file() {
  return programPath(u"Layout/station.ini"_qs);
}

/// What was read or kept, of this program directory.
QVariant& known(const QString& name) {
  static QMap<std::pair<QString, QString>, QVariant> options;
  return options[{programDirectory(), name}];
}

QVariant read(const QString& name) {
  QVariant& value = known(name);
  if (!value.isValid() && !programDirectory().isEmpty())
    value = QSettings(file(), QSettings::IniFormat).value(name, QString());
  return value;
}

void keep(const QString& name, const QVariant& value) {
  known(name) = value;
  if (programDirectory().isEmpty()) return;
  QDir().mkpath(programPath(u"Layout"_qs));
  QSettings settings(file(), QSettings::IniFormat);
  settings.setValue(name, value);
  settings.sync();
  if (settings.status() != QSettings::NoError)
    throw DbError(DbError::Kind::File, u"本机选项不能写入："_qs + settings.fileName());
}

}  // namespace station_options_detail

bool stationOption(QStringView name) {
  return station_options_detail::read(name.toString()).toBool();
}

void setStationOption(QStringView name, bool on) {
  station_options_detail::keep(name.toString(), on);
}

QString stationText(QStringView name) {
  return station_options_detail::read(name.toString()).toString();
}

void keepStationText(QStringView name, const QString& text) {
  station_options_detail::keep(name.toString(), text);
}

}  // namespace jxc
