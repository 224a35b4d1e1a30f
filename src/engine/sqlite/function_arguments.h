// 函数参数: how the SQL functions read what they are given and say what they refuse.
#pragma once

#include <sqlite3.h>
#include <string>
#include <string_view>

namespace jxc::sqlite {

inline bool isNull(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}

inline std::string_view textOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return text ? std::string_view(text, static_cast<std::size_t>(sqlite3_value_bytes(value))) : std::string_view();
}

inline void give(sqlite3_context* context, std::string_view text) {
  sqlite3_result_text(context, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
}

inline void refuse(sqlite3_context* context, std::string_view kind, std::string_view what) {
  const std::string message = std::string(kind) + std::string(what);
  sqlite3_result_error(context, message.data(), static_cast<int>(message.size()));
}

}  // namespace jxc::sqlite
