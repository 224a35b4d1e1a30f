// 尚未提供: the page of a command whose screen is not there yet.
#pragma once

#include <QString>

#include <string_view>

namespace jxc {

/// Opens a screen by its name; for one that is not there yet a page that says so, by the caption of its command.
void openOrTell(std::string_view screen, const QString& caption, const QString& searched = {});

}  // namespace jxc
