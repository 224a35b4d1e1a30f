// 结算命令: what is asked before a closing, the copy that is made of the set, and what is told afterwards.
#pragma once

#include "maintenance/period_closing.h"

namespace jxc::closing {

struct Command {
  Request request;
  bool backsUp = true;  // copies the set first
  RowSet listed{};      // of `whatGoes`, that the operator has before him
};

/// Takes the set for itself and makes the list once more: where it is another one by then, that is asked about, and
/// `show` shows it. Asks, copies the whole account set where it is wanted, closes (on a server as the owner of the
/// set), and gives the room of what went back to the disk. The balances before and after, as `closeBooks` has them;
/// nothing: refused, stopped, or the operator said no. What was stopped before its commit leaves everything as it was,
/// but for the copy.
std::optional<RowSet> closePeriod(const Command& command, Prompt& prompt, const Progress& progress = {},
                                  const std::function<void(const RowSet&)>& show = {});

}  // namespace jxc::closing
