// 文件名: titles and names of partners as names of files.
#pragma once

#include <QString>

namespace jxc {

/// The text with a dash for whatever no file name may hold, on any system.
QString asFileName(QString text);

}  // namespace jxc
