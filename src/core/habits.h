// 习惯: questions that an operator has answered once for all at this station.
#pragma once

#include "core/prompt.h"

namespace jxc {

/// "以后直接保存": the question before a document is saved.
inline constexpr Habit kSavesAtOnce{u"savesAtOnce", u"以后直接保存"};

/// Of the operator who is logged in.
bool isHabit(const Habit& habit);
/// Throws DbError(File) when it cannot be kept.
void setHabit(const Habit& habit, bool on);

}  // namespace jxc
