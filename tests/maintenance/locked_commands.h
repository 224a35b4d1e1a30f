// 锁定的命令: what writes on a day, as the tests of the period lock call it. The rules prove each of them refused; the
// screens prove that each of their commands is one of these, or writes on no day.
#pragma once

#include <string_view>

namespace jxc::test {

inline constexpr std::string_view kLockedCommands[] = {
    "save",         "head",          "date",         "line",          "audit",          "cancel",
    "rest",         "loan back",     "loan kept",    "cash save",     "cash audit",     "cash cancel",
    "account",      "account gone",  "partner save", "partner audit", "partner cancel", "settle",
    "partner",      "partner gone",  "expense save", "expense audit", "expense cancel", "invoice save",
    "invoice gone", "invoice audit", "excluded",     "registered",    "gift",           "opening",
    "opening gone", "goods gone",    "average",      "sync",
};

}  // namespace jxc::test
