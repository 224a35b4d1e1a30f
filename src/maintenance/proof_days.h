// 单据日期核对: whether the days of documents go with the order in which they were written.
#pragma once

#include <QString>

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace jxc::proof {

class Findings;

/// Documents of one kind, or lines entered by hand, to be seen in the order in which they were written: that of their
/// `id`. One that is dated further back than usual behind those before it is hinted at. Nothing keeps the day of
/// writing itself, so only what is certain counts: one that merely waited for its audit is not dated back.
class DaysInOrder {
 public:
  explicit DaysInOrder(Findings& findings);
  /// Days are "yyyy-MM-dd" with or without a time. `audited` is empty while it waits, or where that is not kept.
  void see(std::string_view number, std::string_view day, std::string_view audited);
  void see(const QString& number, const QString& day, const QString& audited);

 private:
  void rememberNewest(std::string_view number, std::string_view day, std::string_view written);

  Findings& findings_;
  const std::string today_;
  std::string newest_, usualFrom_;
};

/// What was entered by hand and comes in the order of a ledger.
struct EnteredByHand {
  std::int64_t id;
  std::string number, day, audited;
};
/// Brings it into the order in which it was written and looks at its days. Both lines of a transfer are one.
void proveDays(Findings& findings, std::vector<EnteredByHand> entered);

}  // namespace jxc::proof
