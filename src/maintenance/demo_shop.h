// 演示账套: a believable optical shop, made by the rules that the screens call. The same seed, size and last day make
// the same figures everywhere: pictures, measurements, tests and the guide stand on it.
#pragma once

#include <QDate>
#include <QString>

#include <cstdint>
#include <functional>

namespace jxc {

struct DemoPlan {
  int months = 12;
  std::uint64_t seed = 1;
  int goods = 600;
  int documentsADay = 40;  // on the average; a quiet Tuesday in November has fewer
  // Goods are put away and issued by documents of their own, and lent to customers, at the end of the last day.
  bool putaway = false;
  bool files = false;  // some contracts have a file below the program directory; of an account file of its own
  QDate lastDay;       // what is today in the shop; invalid: the day of the clock
};

/// What was made.
struct DemoOutcome {
  int documents = 0;        // of trade, stock and money
  int goods = 0;            // articles
  std::int64_t ledger = 0;  // rows of the stock ledger
};

/// Percent and what is being made.
using DemoProgress = std::function<void(int percent, const QString& what)>;

/// Fills the account set in use, which must be empty, and leaves the administrator logged in. The clock runs through
/// the shop's days meanwhile and is left on the evening of the last one: the caller sets it as he needs it.
DemoOutcome buildDemoShop(const DemoPlan& plan, const DemoProgress& progress = {});

/// The same as an account file of its own. The account set that was in use is closed. The clock runs again afterwards.
DemoOutcome makeDemoFile(const QString& file, const DemoPlan& plan, const DemoProgress& progress = {});

}  // namespace jxc
