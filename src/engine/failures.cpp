#include "engine/failures.h"

namespace jxc {
namespace failures_detail {

using Kind = DbError::Kind;

Kind kindOf(jet::TranslateError::Kind kind) {
  switch (kind) {
    case jet::TranslateError::Kind::Syntax:
      return Kind::Syntax;
    case jet::TranslateError::Kind::UnknownName:
      return Kind::UnknownName;
    case jet::TranslateError::Kind::Unsupported:
      return Kind::Unsupported;
    case jet::TranslateError::Kind::TypeMismatch:
      return Kind::TypeMismatch;
  }
  return Kind::Other;
}

/// What the translator says is for whoever wrote the statement; the operator is told that much in Chinese.
QString translationMessage(const jet::TranslateError& error) {
  const QString what = QString::fromUtf8(error.what());
  switch (error.kind) {
    case jet::TranslateError::Kind::Syntax:
      return QStringLiteral("语句有错：%1").arg(what);
    case jet::TranslateError::Kind::UnknownName:
      return QStringLiteral("数据库中没有语句所用的表或字段：%1").arg(what);
    case jet::TranslateError::Kind::Unsupported:
      return QStringLiteral("数据库不支持这种语句：%1").arg(what);
    case jet::TranslateError::Kind::TypeMismatch:
      return QStringLiteral("语句中的数据类型不符：%1").arg(what);
  }
  return what;
}

}  // namespace failures_detail

DbError tooWide(const QString& place, int limit, int actual) {
  QString text = QStringLiteral("%1 的内容太长：最多 %2 个字符").arg(place).arg(limit);
  if (actual >= 0) text += QStringLiteral("，现有 %1 个").arg(actual);
  return DbError(DbError::Kind::TooWide, text + QStringLiteral("。"));
}

DbError untranslatable(const jet::TranslateError& error, std::string_view text) {
  using namespace failures_detail;
  return DbError(kindOf(error.kind), translationMessage(error), std::string(text), error.position);
}

DbError misuse(const QString& message, std::string_view text) {
  return DbError(DbError::Kind::Syntax, message, std::string(text));
}

void requireValues(const jet::Plan& plan, std::span<const Value> values, std::string_view text) {
  if (static_cast<int>(values.size()) == plan.parameterCount) return;
  throw misuse(QStringLiteral("语句需要 %1 个参数，给了 %2 个。").arg(plan.parameterCount).arg(values.size()), text);
}

}  // namespace jxc
