#include "core/unusual.h"

#include "core/clock.h"
#include "core/formats.h"

#include <QDate>
#include <QStringList>

#include <algorithm>
#include <cmath>

namespace jxc {
namespace unusual_detail {

QString shown(double number) {
  return NumberFormat{.kind = NumberFormat::Kind::Total, .decimals = 2}.format(number);
}

QDate day(const QString& text) {
  return QDate::fromString(text.left(10), Qt::ISODate);
}

}  // namespace unusual_detail

bool confirmUnusual(const FiguresOfDocument& document, Prompt& prompt) {
  using namespace unusual_detail;
  QStringList lines;
  if (std::fabs(document.pieces) > mostUsual)
    lines << QStringLiteral("数量 %1：是不是把条码扫进了数量栏？").arg(shown(document.pieces));
  if (std::fabs(document.yuan) > mostUsual) lines << QStringLiteral("金额 %1 元").arg(shown(document.yuan));
  const QString today = clock::today();
  if (document.date.left(10) <= today) {
    const QString newest = std::min(document.newest.left(10), today);  // one that was dated ahead is no measure
    const qint64 back = day(document.date).daysTo(day(newest));
    if (back > usualDaysBack)
      lines << QStringLiteral("日期 %1 比最近的单据（%2）早 %3 天").arg(document.date.left(10), newest).arg(back);
    if (const QString last = document.lastEntry.left(10); last > today)
      lines << QStringLiteral("本机今天是 %1，早于上一次操作的日期 %2：请检查本机的时钟").arg(today, last);
  }
  if (lines.isEmpty()) return true;
  return prompt.ask(QStringLiteral("这张单据有不寻常的地方：\r\n\r\n") + lines.join(QStringLiteral("\r\n")) +
                    QStringLiteral("\r\n\r\n确认没有输错，继续保存吗？"));
}

}  // namespace jxc
