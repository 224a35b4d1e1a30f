#include "simulation/station_door.h"

#include "engine/error.h"

namespace jxc::test {

void StationDoor::pass(std::string_view call, bool writes, std::string_view sql, std::span<const Value> values) {
  // What still runs while a killed station falls back through its own code has no database any more.
  if (killed_) throw Killed{};
  std::string what(sql.substr(0, 60));
  for (const Value& value : values)
    what += " | " + value.text().toStdString();
  const Fate fate = keeper_.knock(call, what, writes && depth_ == 0);
  switch (fate) {
    case Fate::Done:
      return;
    case Fate::Killed:
      killed_ = true;
      throw Killed{};
    case Fate::Cut:
    case Fate::CommitLost:
    case Fate::AnswerLost:
      return keeper_.cut(fate);  // the call itself finds out
    case Fate::Full:
      throw DbError(DbError::Kind::Full, QStringLiteral("磁盘已满。"));
    case Fate::Busy:
      throw DbError(DbError::Kind::Busy, QStringLiteral("其他电脑正在写入。"));
  }
}

RowSet StationDoor::select(const SqlText& sql, std::span<const Value> values) {
  pass("select", false, sql.view(), values);
  return books_->select(sql, values);
}

Value StationDoor::lookup(const SqlText& sql, std::span<const Value> values) {
  pass("lookup", false, sql.view(), values);
  return books_->lookup(sql, values);
}

std::int64_t StationDoor::execute(const SqlText& sql, std::span<const Value> values) {
  pass("execute", true, sql.view(), values);
  return books_->execute(sql, values);
}

void StationDoor::begin() {
  pass("begin", true);
  books_->begin();
  if (depth_++ == 0) keeper_.writing(true);
}

void StationDoor::commit() {
  // As of the engines: a commit ends its level however it ends.
  struct Level {
    StationDoor& door;
    ~Level() {
      if (--door.depth_ == 0) door.keeper_.writing(false);
    }
  };
  const bool last = depth_ == 1;
  {
    const Level ends{*this};
    try {
      pass("commit", false);
    } catch (...) {
      books_->rollback();
      throw;
    }
    books_->commit();
  }
  if (last) keeper_.kept();
}

void StationDoor::rollback() {
  books_->rollback();
  if (--depth_ == 0) keeper_.writing(false);
}

void StationDoor::post(const SqlText& sql, std::span<const Value> values) {
  pass("post", true, sql.view(), values);
  books_->posting()->post(sql, values);
}

std::shared_ptr<const Outcome> StationDoor::sendAhead(const SqlText& sql, std::span<const Value> values) {
  pass("ahead", false, sql.view(), values);
  return books_->posting()->sendAhead(sql, values);
}

void StationDoor::collect() {
  pass("collect", false);
  books_->posting()->collect();
}

}  // namespace jxc::test
