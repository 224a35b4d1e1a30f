// 语句时钟: what date(), time() and now() of a statement say.
#pragma once

#include "jet/plan.h"

#include <string>

namespace jxc {

/// Where they look: "yyyy-MM-dd HH:mm:ss". Null lets them look at the clock of the machine.
void setFunctionClock(std::string (*now)());

/// The moment as the clock has it, or its date or time of day.
std::string clockText(jet::Moment moment);

}  // namespace jxc
