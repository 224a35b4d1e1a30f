// 部门: the list of departments that expenses are booked on.
#pragma once

#include "core/named_list.h"

namespace jxc {

extern const NamedList departmentList;

}  // namespace jxc
