#include "engine/sqlite/parameter_binding.h"

#include "engine/error.h"

namespace jxc::sqlite {
namespace parameter_binding_detail {

void check(int code) {
  if (code == SQLITE_OK) return;
  if (code == SQLITE_TOOBIG) throw DbError(DbError::Kind::Other, QStringLiteral("内容太大，数据库不能保存。"));
  throw DbError(DbError::Kind::Other, QStringLiteral("参数不能传给数据库（代码 %1）。").arg(code));
}

}  // namespace parameter_binding_detail

void ParameterBinder::putNull(int at) {
  parameter_binding_detail::check(sqlite3_bind_null(statement_, at));
}

void ParameterBinder::putInteger(int at, std::int64_t number) {
  parameter_binding_detail::check(sqlite3_bind_int64(statement_, at, number));
}

void ParameterBinder::putReal(int at, double number) {
  parameter_binding_detail::check(sqlite3_bind_double(statement_, at, number));
}

void ParameterBinder::putText(int at, std::string_view utf8) {
  parameter_binding_detail::check(
      sqlite3_bind_text64(statement_, at, utf8.data(), utf8.size(), SQLITE_STATIC, SQLITE_UTF8));
}

}  // namespace jxc::sqlite
