#include "engine/posting.h"

#include <stdexcept>
#include <utility>

namespace jxc {
namespace ahead_detail {

bool isSelect(std::string_view sql) {
  const std::size_t start = sql.find_first_not_of(" \t\r\n");
  return start != std::string_view::npos && sql.substr(start).starts_with("select");
}

}  // namespace ahead_detail

void postStatement(Database& database, const SqlText& sql, std::span<const Value> values) {
  if (Posting* const posting = database.posting())
    posting->post(sql, values);
  else
    database.execute(sql, values);
}

Ahead::Ahead(Database& database, const SqlText& sql, std::span<const Value> values) : posting_(database.posting()) {
  if (posting_) {
    outcome_ = posting_->sendAhead(sql, values);
    return;
  }
  Outcome now;
  now.there = true;
  if (ahead_detail::isSelect(sql.view()))
    now.rows = database.select(sql, values);
  else
    now.changed = database.execute(sql, values);
  outcome_ = std::make_shared<const Outcome>(std::move(now));
}

const Outcome& Ahead::outcome() const {
  if (!outcome_->there) posting_->collect();
  if (!outcome_->there) throw std::logic_error("an outcome outlived its transaction");
  return *outcome_;
}

}  // namespace jxc
