#include "core/reading.h"

#include "core/data_module.h"
#include "engine/writes_of_others.h"

namespace jxc {

Value readValue(const SqlText& select, std::span<const Value> values) {
  return accountDb().lookup(select, values);
}

RowSet readRows(const SqlText& select, std::span<const Value> values) {
  return accountDb().select(select, values);
}

std::int64_t count(const Sql& select) {
  return readValue("select count(*) as found from (" + select.text() + ") found", select.values()).integer();
}

bool exists(const Sql& select) {
  return !readValue("select top 1 1 as found from (" + select.text() + ") found", select.values()).isNull();
}

std::optional<std::int64_t> writesOfOthers() {
  return writesOfOthers(accountDb());
}

}  // namespace jxc
