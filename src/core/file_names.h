// 文件名: titles and names of partners as names of files.
#pragma once

#include <QString>

namespace jxc {

/// The text with a dash for whatever no file name may hold, on any system.
QString asFileName(QString text);
/// Path of a file in the folder that is not there yet: of two files of one second the later gets "_2" behind its name.
QString freeFileName(const QString& folder, const QString& name, const QString& ending);

}  // namespace jxc
