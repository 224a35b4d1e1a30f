// 启动: the program directory, the first account set, and how a failure is told.
#pragma once

#include <QString>
#include <QStringList>

#include <exception>

namespace jxc {

/// Everything the program finds stands below one directory: data, report, Layout, picture, skinfiles.
/// `--home DIR` when given; beside the executable when a `data` folder is there or may be made there; otherwise, for an
/// installed package, a folder of the user.
QString findProgramDirectory(const QStringList& arguments, const QString& executableDirectory);
/// Sets the program directory of this process and makes its missing folders.
void setProgramDirectory(const QString& directory);
const QString& programDirectory();
/// Absolute path of "report/cgjh.fr3" and the like.
QString programPath(const QString& relative);

/// On the first start of a program directory, whose `data` folder holds nothing at all, makes the account database with
/// all tables and the catalogue. Never touches what is there: a damaged file, or a missing one beside other data, is
/// left for openAccountDb to report. Returns whether a set was made.
bool createFirstAccountSet();
/// Makes the catalogue when it is missing, with the built-in set and the sets whose files are there.
void ensureCatalogueFile();

/// What the operator reads of a failure that no screen caught: the message with its ASCII letters lowered. A message
/// that names the account file is fatal: the program ends after it.
struct FriendlyFailure {
  QString text;
  bool fatal = false;
};
FriendlyFailure friendlyFailure(const std::exception& failure);

}  // namespace jxc
