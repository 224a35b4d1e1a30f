// 时钟: today and now for every rule, in the forms that the database keeps as text.
#pragma once

#include <QDateTime>
#include <QString>

#include <optional>

namespace jxc::clock {

QDateTime now();
QString today();      // "yyyy-MM-dd"
QString timeOfDay();  // "HH:mm:ss"
QString stamp();      // "yyyy-MM-dd HH:mm:ss"
QString month();      // "yyyy-MM"

/// Fixes the clock (tests); nullopt lets it run again.
void setFixed(std::optional<QDateTime> moment);

}  // namespace jxc::clock
