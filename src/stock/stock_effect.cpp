#include "stock/stock_effect.h"

#include "core/statements.h"
#include "stock/ledger_replay.h"

#include <algorithm>
#include <set>
#include <utility>
#include <vector>

namespace jxc {
namespace stock_effect_detail {

Ahead changeBalance(const StockEffect& effect, int sign) {
  if (effect.sold == 0)
    return sendAhead("update jxc_kcsp set kc_sl=kc_sl+(?),kc_zsl=kc_zsl+(?) where ck_sn=? and g_sn=?",
                     sign * effect.physical, sign * effect.book, effect.warehouse, effect.goods);
  return sendAhead("update jxc_kcsp set kc_xssl=kc_xssl+(?),kc_sl=kc_sl+(?),kc_zsl=kc_zsl+(?) where ck_sn=? and g_sn=?",
                   sign * effect.sold, sign * effect.physical, sign * effect.book, effect.warehouse, effect.goods);
}

void makeBalance(const StockEffect& effect, int sign) {
  postSql("insert into jxc_kcsp (kc_sl,kc_cbj,kc_xssl,g_sn,ck_sn,kc_zsl) values (?,?,?,?,?,?)", sign * effect.physical,
          effect.firstCost, sign * effect.sold, effect.goods, effect.warehouse, sign * effect.book);
}

double averageOr(const Ahead& asked, double price) {
  const double average = asked.number();
  return average == -1 ? price : average;
}

void postTogether(std::span<const StockEffect> effects, MasterOrder order, const ChangeMaster& changeMaster) {
  const std::size_t count = effects.size();
  std::vector<Ahead> balances;
  std::vector<std::optional<Ahead>> averages(count);
  std::vector<LedgerReplay> replays;
  const auto askAverage = [&](std::size_t i) {
    if (effects[i].movesCost) averages[i] = askGoodsAvgCost(effects[i].goods);
  };
  const auto changeMasters = [&] {
    for (std::size_t i = 0; i < count; ++i)
      changeMaster(effects[i], averages[i] ? std::optional(averageOr(*averages[i], effects[i].price)) : std::nullopt);
  };

  balances.reserve(count);
  replays.reserve(count);
  for (const StockEffect& effect : effects)
    balances.push_back(changeBalance(effect, 1));
  if (order == MasterOrder::BeforeReplay)
    for (std::size_t i = 0; i < count; ++i)
      askAverage(i);
  for (const StockEffect& effect : effects)
    replays.emplace_back(LedgerAnchor{effect.id, effect.goods, effect.warehouse, effect.date, effect.flag});

  for (std::size_t i = 0; i < count; ++i) {
    if (balances[i].changed() > 0) continue;
    makeBalance(effects[i], 1);
    if (order == MasterOrder::BeforeReplay) askAverage(i);
  }
  // A goods without earlier rows is replayed from the average of its master.
  if (order == MasterOrder::BeforeReplay) changeMasters();
  for (LedgerReplay& replay : replays)
    replay.askMissing();
  for (LedgerReplay& replay : replays)
    replay.write();
  if (order == MasterOrder::BeforeReplay) return;
  for (std::size_t i = 0; i < count; ++i)
    askAverage(i);
  changeMasters();
}

/// How many of the first rows know nothing of each other; not too many, because their later rows are held in memory.
/// An average is over all warehouses, everything else goes by goods and warehouse.
std::size_t unrelated(std::span<const StockEffect> effects, bool byGoods) {
  constexpr std::size_t most = 50;
  std::set<std::pair<QStringView, QStringView>> met;
  std::size_t count = 0;
  while (count < std::min(effects.size(), most) &&
         met.emplace(effects[count].goods, byGoods ? QStringView() : effects[count].warehouse).second)
    ++count;
  return count;
}

}  // namespace stock_effect_detail

void applyToBalance(const StockEffect& effect, int sign) {
  using namespace stock_effect_detail;
  if (changeBalance(effect, sign).changed() == 0) makeBalance(effect, sign);
}

double averageOr(const QString& goods, double price) {
  return stock_effect_detail::averageOr(askGoodsAvgCost(goods), price);
}

void postEffects(std::span<const StockEffect> effects, MasterOrder order, const ChangeMaster& changeMaster) {
  using namespace stock_effect_detail;
  const bool byGoods = std::ranges::any_of(effects, &StockEffect::movesCost);
  for (std::span<const StockEffect> rest(effects); !rest.empty();) {
    const std::size_t count = unrelated(rest, byGoods);
    postTogether(rest.first(count), order, changeMaster);
    rest = rest.subspan(count);
  }
}

}  // namespace jxc
