// 共享目录: a folder that several users of one machine share.
#pragma once

#include <QString>

namespace jxc {

/// A folder whose group may write and hands itself down (mode 2770): its owner means everything that is made in it for
/// the whole group.
bool isSharedFolder(const QString& folder);

}  // namespace jxc
