// 命令之后刷新: a command of many steps keeps those that it did, also when it fails half way.
#pragma once

namespace jxc::ui {

/// Runs a command, then reads the list anew, also when the command failed; its failure comes out. That the list cannot
/// be read then either adds nothing to it.
template <class Command, class Refresh>
void refreshAfter(Command&& command, Refresh&& refresh) {
  try {
    command();
  } catch (...) {
    try {
      refresh();
    } catch (...) {  // NOLINT(bugprone-empty-catch): the first failure says it
    }
    throw;
  }
  refresh();
}

}  // namespace jxc::ui
