#include "maintenance/proof_days.h"

#include "core/clock.h"
#include "core/text.h"
#include "core/unusual.h"
#include "maintenance/proof_findings.h"
#include "stock/document_rules.h"

#include <QDate>

#include <algorithm>

namespace jxc::proof {
namespace proof_days_detail {

constexpr std::size_t kDay = 10;  // letters of "yyyy-MM-dd"

QString shown(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

/// The first day that is usual beside this one.
std::string usualFrom(const std::string& newest) {
  return QDate::fromString(shown(newest), Qt::ISODate).addDays(-usualDaysBack).toString(Qt::ISODate).toStdString();
}

}  // namespace proof_days_detail

DaysInOrder::DaysInOrder(Findings& findings) : findings_(findings), today_(clock::today().toStdString()) {}

void DaysInOrder::see(std::string_view number, std::string_view at, std::string_view auditedAt) {
  using namespace proof_days_detail;
  if (at.size() < kDay) return;
  const std::string_view day = at.substr(0, kDay), audited = auditedAt.substr(0, kDay);
  // It stood by the day of its audit: what is dated behind that was none of those before it.
  const std::string_view written = audited.size() < kDay ? std::string_view(today_) : audited;
  if (day > newest_) return rememberNewest(number, day, written);
  if (day >= usualFrom_) return;
  const std::string newest(std::min<std::string_view>(newest_, written));
  if (day >= usualFrom(newest)) return;
  findings_.add(Kind::DatedBack, [&] {
    return Place{u"单据 "_qs + shown(number), shown(day) + u"，当时最近的同类单据 "_qs + shown(newest), {}};
  });
}

void DaysInOrder::see(const QString& number, const QString& day, const QString& audited) {
  see(number.toStdString(), day.toStdString(), audited.toStdString());
}

void DaysInOrder::rememberNewest(std::string_view number, std::string_view day, std::string_view written) {
  // A waiting one may have been given a later day since: its number keeps the first. And a day ahead is no measure.
  std::string then(std::min(day, written));
  if (const std::string first = dateOfNumber(proof_days_detail::shown(number)).toStdString(); !first.empty())
    then = std::min(then, first);
  if (then <= newest_) return;
  newest_ = then;
  usualFrom_ = proof_days_detail::usualFrom(newest_);
}

void proveDays(Findings& findings, std::vector<EnteredByHand> entered) {
  std::ranges::sort(entered, {}, &EnteredByHand::id);
  DaysInOrder days(findings);
  const std::string* last = nullptr;
  for (const EnteredByHand& each : entered) {
    if (!last || *last != each.number) days.see(each.number, each.day, each.audited);
    last = &each.number;
  }
}

}  // namespace jxc::proof
