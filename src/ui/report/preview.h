// 打印预览: a window that shows prepared pages: zoom, pages, thumbnails, search, print, save.
#pragma once

#include "platform/report/pages.h"

#include <QString>

class QWidget;

namespace jxc::ui {

/// Shows the pages until the window is left.
void showPreview(const report::Pages& pages, QWidget* parent = nullptr);

}  // namespace jxc::ui
