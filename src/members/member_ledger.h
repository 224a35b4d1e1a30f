// 会员消费: what a document of the till does to its member's points, grade, spending and stored value.
#pragma once

#include <QString>

namespace jxc {

/// UnXS, UnXT: a sale, a return is taken back.
enum class HySaleMode : char { UnXS, UnXT };

/// Applies document `number` of the till to the member's record, inside the caller's transaction. Taking back a sale
/// also takes back the stored value that was released because of it, when it was the member's only sale of the month
/// (of the day). Does nothing when the till left no such document. The grade follows the points in both directions,
/// also of a member whose grade is not raised by himself.
void applyHySale(const QString& number, const QString& member, HySaleMode mode);

}  // namespace jxc
