// 商品修改: changing, deleting and disabling goods, one at a time or many marked ones.
#pragma once

#include "masterdata/goods.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>
#include <vector>

namespace jxc {

using GoodsIds = std::vector<std::int64_t>;
/// Takes the progress in percent; false stops the work, and nothing of it stays.
using GoodsProgress = std::function<bool(int percent)>;

/// The article as its dialog shows it.
GoodsDraft readGoods(std::int64_t id);
/// Whether the number may still be changed: no purchase line and no stock row has it. A lens keeps its number only from
/// its first purchase on.
bool mayRenumberGoods(const GoodsDraft& draft);
/// Saves a changed article; refusals and questions in the order of the form. A new name, unit, model or colour
/// goes into the ledger rows of an ordinary article too; lenses keep their history as it was written.
/// `commissionForClass` gives the commission to all goods of the class.
bool changeGoods(std::int64_t id, const GoodsDraft& draft, bool commissionForClass, Prompt& prompt);

/// Deletes an article that was never bought or sold, with its opening stock. Asks. The month figures keep the opening
/// stock: they tell what was there.
bool deleteGoods(std::int64_t id, Prompt& prompt);

struct GoodsDeletion {
  int deleted = 0;
  QStringList numbers;  // of the deleted, whose pictures go
  QStringList refusals;
};
/// The same for many, without a question: what cannot go is told line by line. Nothing when it was cancelled.
std::optional<GoodsDeletion> deleteGoodsBatch(const GoodsIds& ids, const GoodsProgress& progress);

/// The balancing article of rebates stays disabled, whatever is asked.
void setGoodsDisabled(std::int64_t id, bool disabled);
/// Disables the enabled and enables the disabled ones. Asks.
bool flipGoodsDisabled(const GoodsIds& ids, Prompt& prompt, const GoodsProgress& progress);

bool changeGoodsMnemonic(std::int64_t id, const QString& mnemonic);
/// Puts goods into another class. Tells when no class was chosen.
bool changeGoodsClass(const GoodsIds& ids, const std::optional<QString>& classNumber, Prompt& prompt,
                      const GoodsProgress& progress);
/// Lower limit of stock in pieces. Asks, and tells how many were changed.
bool changeLowestStock(const GoodsIds& ids, int pieces, Prompt& prompt, const GoodsProgress& progress);
/// Preset purchase price as cost of sales, or no longer. Asks, and tells how many were changed.
bool setGoodsFixedCost(const GoodsIds& ids, bool on, Prompt& prompt, const GoodsProgress& progress);

/// Keeps the second unit in step: there are no second units, so it is the unit itself, with factor 1.
void syncUnit2(const QString& number);

/// A cell of the catalogue list: the preset sale price (`g_sj`), the barcode (`g_sptm`) or the lower limit (`g_zdkc`)
/// of one article, as it was typed. False: refused, or the operator said no to a barcode that another one has.
bool changeGoodsCell(std::int64_t id, std::string_view column, const QString& typed, Prompt& prompt);

/// A new article like this one: without its number and barcode, and without prices that the operator may not see.
GoodsDraft copyOfGoods(std::int64_t id);

}  // namespace jxc
