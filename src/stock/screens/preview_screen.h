// 预览影响: the list of what an audit or a cancel would change, before it is done.
#pragma once

#include "stock/what_if.h"

class QWidget;

namespace jxc {

/// Runs the command, takes it back (`whatIf`), and shows what it would have changed. `doing` names it: "审核单据CJ…".
void showWhatIf(const QString& doing, const QString& number, const std::function<bool(Prompt&)>& command);

}  // namespace jxc
