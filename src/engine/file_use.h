// 文件占用: whether somebody works on an account file.
#pragma once

#include <QString>

namespace jxc {

/// Whether a program of this machine, this one included, has the account file open.
bool isAccountFileInUse(const QString& file);

}  // namespace jxc
