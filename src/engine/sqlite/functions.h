// SQL 函数: what the emitted SQLite text calls: decimals, conversions, texts and dates of the dialect.
#pragma once

#include <sqlite3.h>
#include <string_view>

namespace jxc::sqlite {

/// Makes the functions known to a connection. Their failures carry a message that begins with a sign of their kind.
void registerFunctions(sqlite3* connection);

namespace function_failure {
constexpr std::string_view kTooWide = "jxc-width:";          // then the place, for example jxc_goods.g_name
constexpr std::string_view kNoNumber = "jxc-number:";        // then the text that should be a number
constexpr std::string_view kArithmetic = "jxc-arithmetic:";  // then what cannot be calculated
}  // namespace function_failure

}  // namespace jxc::sqlite
