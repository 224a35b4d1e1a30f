// 尚未提供: the page of a command whose screen is not there yet.
#pragma once

#include <QString>

namespace jxc {

/// Names the function and says that it is not there yet; Esc leaves.
void showNotYet(const QString& caption, const QString& screen);

}  // namespace jxc
