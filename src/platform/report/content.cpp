#include "platform/report/content.h"

#include "engine/date_text.h"
#include "engine/number_text.h"

#include <algorithm>

namespace jxc::report {

namespace content_detail {

/// Index behind the bracket that closes the one at `open`, or -1. Quoted text is passed over.
qsizetype closing(const QString& content, qsizetype open) {
  int depth = 0;
  QChar quote;
  for (qsizetype i = open; i < content.size(); ++i) {
    const QChar c = content[i];
    if (!quote.isNull()) {
      if (c == quote) quote = QChar();
    } else if (c == u'\'' || c == u'"') {
      quote = c;
    } else if (c == u'[') {
      ++depth;
    } else if (c == u']' && --depth == 0) {
      return i + 1;
    }
  }
  return -1;
}

bool isFigure(QChar c) {
  return c == u'0' || c == u'#' || c == u',' || c == u'.';
}

/// What stands around the figures of a number format stays: "￥#,##0.00元".
QString formatNumber(double number, const QString& format) {
  qsizetype from = 0, to = format.size();
  while (from < to && format[from] != u'0' && format[from] != u'#')
    ++from;
  while (to > from && !isFigure(format[to - 1]))
    --to;
  const QString suffix = format.mid(to);
  if (suffix.startsWith(u'%')) number *= 100;
  QString figures = QString::fromStdString(formatFigure(number, format.mid(from, to - from).toStdString()));
  QString sign;
  if (figures.startsWith(u'-')) {
    sign = QStringLiteral("-");
    figures.remove(0, 1);
  }
  return sign + format.left(from) + figures + suffix;
}

bool isZero(const QString& text) {
  bool hasDigit = false;
  for (const QChar c : text) {
    if (c >= u'1' && c <= u'9') return false;
    hasDigit |= c == u'0';
  }
  return hasDigit;
}

}  // namespace content_detail

Content compileContent(const QString& content, Program& program) {
  Content result;
  const auto words = [&](qsizetype from, qsizetype to) {
    if (to > from) result.parts.push_back({content.mid(from, to - from), false, {}, {}});
  };
  qsizetype at = 0;
  for (;;) {
    const qsizetype open = content.indexOf(u'[', at);
    const qsizetype end = open < 0 ? -1 : content_detail::closing(content, open);
    if (end < 0) {
      words(at, content.size());  // a bracket that nobody closes is a bracket
      return result;
    }
    words(at, open);
    Content::Part part{content.mid(open + 1, end - open - 2), true, {}, {}};
    try {
      part.node = program.compile(part.text);
      result.usesPage |= program.usesPage(part.node);
      result.usesPages |= program.usesPages(part.node);
    } catch (const ExpressionError& error) {
      part.fault = error.message;
    }
    result.parts.push_back(std::move(part));
    at = end;
  }
}

QString formatValue(const Value& value, const QString& format, bool hideZero) {
  if (value.isNull()) return {};
  const bool isText = value.kind() == Value::Kind::Text;
  if (format.isEmpty()) {
    const QString text = value.text();
    return hideZero && (isText ? content_detail::isZero(text) : value.number() == 0) ? QString() : text;
  }
  QString result = value.text();
  if (format.contains(u'0') || format.contains(u'#')) {
    // A number that a query or a variable holds as text is a number to whoever asked for figures.
    const auto number = isText ? parseNumber(result.toStdString()) : value.number();
    if (!number) return result;
    result = content_detail::formatNumber(*number, format);
    return hideZero && content_detail::isZero(result) ? QString() : result;
  }
  if (const auto moment = parseMoment(result.toStdString())) {
    result = QString::fromStdString(formatMoment(*moment, lowerCaseText(format.toStdString())));
  }
  return result;
}

}  // namespace jxc::report
