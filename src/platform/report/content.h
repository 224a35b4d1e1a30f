// 文本内容: the words of an object with expressions in square brackets, and how their values are written.
#pragma once

#include "platform/report/expression.h"

#include <QString>

#include <vector>

namespace jxc::report {

/// "客户：[khName]" taken apart.
struct Content {
  struct Part {
    QString text;  // words as they stand, or the expression
    bool isExpression = false;
    Node node;
    QString fault;  // the expression cannot be understood
  };
  std::vector<Part> parts;
  bool usesPage = false, usesPages = false;
};

/// Brackets inside an expression count: "[[g name] & '[x]']" is one expression, over the field `g name`.
Content compileContent(const QString& content, Program& program);

/// A value as an object writes it: `format` for numbers ("#,##0.00", "0.0%", "￥0.00元") and dates ("yyyy年mm月dd日").
QString formatValue(const Value& value, const QString& format, bool hideZero);

}  // namespace jxc::report
