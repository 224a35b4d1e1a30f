// 键盘: what the keyboard itself says, beside the keys that windows are told of.
#pragma once

namespace jxc {

/// Whether Esc is held down at this moment in a window of this program. (X only; elsewhere always false.)
bool isEscapeDown();

}  // namespace jxc
