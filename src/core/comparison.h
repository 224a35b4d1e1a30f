// 对比: the answer of an enquiry beside the same answer of an earlier period: the one just before, or the same days of
// last year.
#pragma once

#include "core/enquiry.h"
#include "core/periods.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jxc {

/// An earlier period, and how far its days or months lie back.
struct EarlierPeriod {
  Period period;
  int months = 0;   // so many months, or …
  qint64 days = 0;  // … so many days
  /// A day, month or year of it as the one of the later period that it stands beside: the 31st beside the last of a
  /// shorter month.
  QString forward(const QString& time) const;
  bool operator==(const EarlierPeriod&) const = default;
};
/// What a period of days or of months is compared with. A period from the first of a month on lies back by whole
/// months, so that the 1st to the 10th stand beside the 1st to the 10th; any other one, and a single day, by its own
/// length. Nothing for all time, for a period that ends before it begins, and where nothing is compared.
std::optional<EarlierPeriod> earlierPeriod(CompareWith with, const Period& asked);

/// What of an answer is compared.
struct Comparison {
  std::string_view key;  // the column that names a row in both answers
  bool byTime = false;   // it is a day or a month: rows stand in its order
  std::vector<std::string_view> figures;
};
/// The columns that a compared answer has more for each figure: the earlier one, and the change in percent, which is
/// null where there was nothing before.
std::string earlierField(std::string_view figure);
std::string changeField(std::string_view figure);
bool isEarlierField(std::string_view field);

/// The answer for these criteria with those columns. What was there only before is a row too, with figures of 0: the
/// sums of both periods are whole.
Question comparedQuestion(const Source& source, const Criteria& criteria, const Comparison& comparison);

}  // namespace jxc
