// 帮助文档: readme.htm of the program directory, in the viewer that the desktop has for it.
#pragma once

#include "core/prompt.h"

namespace jxc {

/// Opens it; says so when it is not there, or when nothing on this machine can show it.
void openHelp(Prompt& prompt);

}  // namespace jxc
