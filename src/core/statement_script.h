// 语句脚本: several Jet statements in one text, told apart by semicolons.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace jxc {

/// One statement of a script, without the semicolon behind it, and the byte at which it begins.
struct ScriptStatement {
  std::string_view text;
  std::size_t offset = 0;
};

/// Cuts a script at its semicolons; those in quotes or brackets do not count. Between statements a line that begins
/// with
/// `--` is a remark. The views refer to `script`.
std::vector<ScriptStatement> splitStatements(std::string_view script);

/// Whether a statement gives rows: a select that is not written into a table or a file.
bool givesRows(std::string_view statement);

/// Line and column of a byte, both from 1; the column counts characters.
struct ScriptPosition {
  int line = 1;
  int column = 1;
};
ScriptPosition positionIn(std::string_view script, std::size_t offset);

}  // namespace jxc
