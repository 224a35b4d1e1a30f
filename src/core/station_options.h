// 本机选项: what a workstation keeps for itself, whoever works at it and whatever the account set.
#pragma once

#include <QString>
#include <QStringView>

namespace jxc {

/// Empty until it was kept.
QString stationText(QStringView name);
/// Throws DbError(File) when it cannot be kept.
void keepStationText(QStringView name, const QString& text);
/// False until it was set. Without a program directory (a test) it holds as long as the program runs.
bool stationOption(QStringView name);
/// Throws DbError(File) when it cannot be kept.
void setStationOption(QStringView name, bool on);

}  // namespace jxc
