#include "engine/posting.h"

namespace jxc {

void postStatement(Database& database, const SqlText& sql, std::span<const Value> values) {
  if (auto* posting = dynamic_cast<Posting*>(&database))
    posting->post(sql, values);
  else
    database.execute(sql, values);
}

}  // namespace jxc
