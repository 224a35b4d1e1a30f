#include "core/without.h"

#include <string>

namespace jxc {

Sql without(std::span<const std::string_view> columns, const Sql& select) {
  std::string names;
  for (const std::string_view column : columns)
    names.append(names.empty() ? "without [" : ",[").append(column).append("]");
  return names.empty() ? select : Sql(names + ' ').add(select);
}

}  // namespace jxc
