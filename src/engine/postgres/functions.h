// 服务器函数: what the emitted PostgreSQL text calls: functions of the schema `jxc`, made once in a database.
#pragma once

#include <string_view>

namespace jxc::postgres {

/// Statements that make the schema and its functions, or bring older ones up to date. `jxc.version()` says which stand.
std::string_view functionDefinitions();

/// Raised whenever a definition changes.
inline constexpr int functionVersion = 2;

namespace function_failure {
constexpr std::string_view tooWide = "JX001";   // the message is the place, for example jxc_goods.g_name
constexpr std::string_view noNumber = "JX002";  // the message is the text that should be a number
}  // namespace function_failure

}  // namespace jxc::postgres
