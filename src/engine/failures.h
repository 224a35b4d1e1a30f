// 失败: failures that every engine words alike.
#pragma once

#include "engine/error.h"
#include "engine/value.h"
#include "jet/plan.h"

#include <span>
#include <string_view>

namespace jxc {

/// "jxc_goods.g_name 的内容太长…"; `actual` below 0 when it is not known.
DbError tooWide(const QString& place, int limit, int actual = -1);

/// A statement that the translator refused.
DbError untranslatable(const jet::TranslateError& error, std::string_view text);

/// A call that does not fit its statement.
DbError misuse(const QString& message, std::string_view text);
void requireValues(const jet::Plan& plan, std::span<const Value> values, std::string_view text);

}  // namespace jxc
