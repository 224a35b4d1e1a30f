// 图标: the drawings of this program, as lines on a field of 24 by 24, in the colours of the skin.
#pragma once

#include <QIcon>
#include <QString>

#include <string_view>

namespace jxc::ui {

/// A drawing by name ("glasses"), sharp at every size; an unknown name gives a plain sheet.
QIcon icon(std::string_view name);
bool hasIcon(std::string_view name);

}  // namespace jxc::ui
