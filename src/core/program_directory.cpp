#include "core/program_directory.h"

#include "engine/shared_folder.h"
#include "platform/machine.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <array>

namespace jxc::program_directory_detail {

inline constexpr std::array folders{"data", "report", "Layout", "picture", "skinfiles"};

QString& directory() {
  static QString path = QDir::currentPath();
  return path;
}

QString homeArgument(const QStringList& arguments) {
  const QString option = QStringLiteral("--home");
  for (qsizetype i = 1; i < arguments.size(); ++i) {
    if (arguments[i] == option && i + 1 < arguments.size()) return arguments[i + 1];
    if (arguments[i].startsWith(option + u'=')) return arguments[i].mid(option.size() + 1);
  }
  return {};
}

}  // namespace jxc::program_directory_detail

namespace jxc {

QString findProgramDirectory(const QStringList& arguments, const QString& executableDirectory) {
  if (const QString home = program_directory_detail::homeArgument(arguments); !home.isEmpty())
    return QDir(home).absolutePath();
  const QDir beside(executableDirectory);
  if (beside.exists(QStringLiteral("data"))) return beside.absolutePath();
  // A package puts the executable into a folder that belongs to the machine, not to a shop.
  const bool isInstalled = beside.dirName() == u"bin" || !QFileInfo(beside.absolutePath()).isWritable();
  return isInstalled ? userDataDirectory() : beside.absolutePath();
}

void setProgramDirectory(const QString& directory) {
  program_directory_detail::directory() = QDir(directory).absolutePath();
  // Layouts, templates and pictures of one user are there for the others too, and for nobody else.
  if (isSharedFolder(programDirectory())) makeFilesOfGroup();
  makePrivateFolder(programPath(QStringLiteral("data")));
  for (const char* folder : program_directory_detail::folders)
    QDir().mkpath(programPath(QLatin1String(folder)));
}

const QString& programDirectory() {
  return program_directory_detail::directory();
}

QString programPath(const QString& relative) {
  return programDirectory() + u'/' + relative;
}

QString packageDirectory() {
  // Started from its sources (./run), what is supplied lies among them.
  if (const QString told = qEnvironmentVariable("JXC_SHARE"); !told.isEmpty()) return told;
  if (!QCoreApplication::instance()) return {};
  const QDir share(QCoreApplication::applicationDirPath() + QStringLiteral("/../share/jxc"));
  return share.exists() ? share.canonicalPath() : QString();
}

QString suppliedPath(const QString& relative) {
  const QString own = programPath(relative);
  const QString package = packageDirectory();
  return package.isEmpty() || QFileInfo::exists(own) ? own : package + u'/' + relative;
}

}  // namespace jxc
