#include "engine/first_rows.h"

#include "jet/first_rows.h"
#include "jet/plan.h"

namespace jxc {

std::optional<std::string> firstRows(const SqlText& select, int rows) {
  try {
    return jet::firstRows(select.view(), rows);
  } catch (const jet::TranslateError&) {
    return {};
  }
}

}  // namespace jxc
