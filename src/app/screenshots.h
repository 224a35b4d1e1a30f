// 屏幕截图: pictures of the main window and of every screen, with demonstration data, without a display.
#pragma once

#include <QString>

namespace jxc {

/// Makes a demonstration account set in memory, logs in, and writes a PNG of each page of the main window and of each
/// registered screen into `folder`, in the look of a skin. The exit code of the process.
int takeScreenshots(const QString& folder, const QString& skin);

}  // namespace jxc
