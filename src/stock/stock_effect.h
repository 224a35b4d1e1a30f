// 库存过账: what the ledger rows of a document do to balance, running figures and goods master, many goods at once.
#pragma once

#include "core/posting.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <span>

namespace jxc {

/// One ledger row of a document and what it does to stock. Pieces and yuan.
struct StockEffect {
  std::int64_t id = 0;
  QString goods, warehouse, date, flag;
  double quantity = 0;  // gl_sl as stored
  double price = 0;
  double physical = 0;      // change of kc_sl and g_kc
  double book = 0;          // change of kc_zsl
  double sold = 0;          // change of kc_xssl
  double firstCost = 0;     // kc_cbj of a balance that has to be made
  bool movesCost = false;   // the goods' average is written anew
  std::int64_t source = 0;  // id2
};

/// Changes the balance of a goods in a warehouse by an effect, or by its opposite (sign −1); a missing balance is made.
void applyToBalance(const StockEffect& effect, int sign);

/// The goods' average over all warehouses as it stands, or `price` when there is no stock left.
double averageOr(const QString& goods, double price);

/// When the goods master takes stock and average: trading documents write it after the replay, so that the average
/// holds the new cost; split and bundle before it, so that it holds the old one. The shop's books have always been so.
enum class MasterOrder : char { AfterReplay, BeforeReplay };
/// Writes the goods master after one row; the average only where the row moves the cost.
using ChangeMaster = std::function<void(const StockEffect&, std::optional<double> average)>;

/// Posts rows of the ledger that have just been written, in their order. Rows of different goods know nothing of each
/// other, so that each step is taken for many of them before the next: on a server in two or three round trips.
void postEffects(std::span<const StockEffect> effects, MasterOrder order, const ChangeMaster& changeMaster);

}  // namespace jxc
