// 程序目录: the one directory below which everything stands that the program finds.
#pragma once

#include <QString>
#include <QStringList>

namespace jxc {

/// Everything the program finds stands below one directory: data, report, Layout, picture, skinfiles.
/// `--home DIR` when given; beside the executable when a `data` folder is there or may be made there; otherwise, for an
/// installed package, a folder of the user.
QString findProgramDirectory(const QStringList& arguments, const QString& executableDirectory);
/// Sets the program directory of this process and makes its missing folders. In a directory that users of the machine
/// share, what the process makes from now on belongs to their group.
void setProgramDirectory(const QString& directory);
const QString& programDirectory();
/// Absolute path of "report/cgjh.fr3" and the like.
QString programPath(const QString& relative);
/// Folder of what a package installed besides the executable (share/jxc), or what JXC_SHARE says; empty when there is
/// none.
QString packageDirectory();
/// A file that comes with the program and that a shop may have its own of: "readme.htm", "skinfiles/夜间.skinres",
/// "report/cgjh.fr3". The one in the program directory when it is there, otherwise the package's; to be read only.
QString suppliedPath(const QString& relative);

}  // namespace jxc
