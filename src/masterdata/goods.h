// 商品: rules of the catalogue: numbers, adding, the list and its search.
#pragma once

#include "core/prompt.h"
#include "core/reading.h"
#include "core/refusal.h"

#include <QString>

#include <array>
#include <cstdint>
#include <optional>
#include <vector>

namespace jxc {

/// What makes an article a lens: the product without powers, and the two powers as text ("-1.25").
struct LensPowers {
  QString product, sphere, cylinder;
};

/// What the operator keys in for one article. Prices are yuan, quantities units of `unit`.
struct GoodsDraft {
  QString number, name, barcode, unit, model, colour, origin, note;
  std::optional<QString> classNumber;  // gc_sn; empty is the root; nothing when no class was chosen
  QString warehouse;                   // ck_sn of the opening stock
  double purchasePrice = 0, salePrice = 0, retailPrice = 0;
  std::array<double, 5> levelPrices{};  // g_sj1 … g_sj5
  int lowestStock = 0;                  // pieces; below it the stock alert shows the article
  double openingStock = 0;
  bool fixedCost = false;  // the preset purchase price is the cost of sales
  bool mayBeGift = false;
  int commissionKind = 0;  // 0 none, 1 yuan a piece, 2 percent of sales, 3 percent of profit
  double commission = 0;
  bool warnSameName = true;        // ask when the name stands already
  std::optional<LensPowers> lens;  // only lenses have it
};

/// Next automatic goods number of a class: its identity padded to eight digits, ending in 1, or the highest plus one.
QString nextGoodsSn(std::int64_t classIdentity);
/// The number proposed after a class was picked; empty when numbers are typed by hand (`cs_spbh` off).
QString proposedGoodsSn(const QString& classNumber);

/// Saves a new article, with its opening stock and ledger row where there is one. Refusals and questions in the order
/// of the form. Returns the goods number, or nothing.
std::optional<QString> addGoods(const GoodsDraft& draft, Prompt& prompt);

/// What every article must have, in the order of the form.
Refusal missingIn(const GoodsDraft& draft);
/// What may be entered for an article with this `id` (0 for a new one): refusals and questions in the order of the
/// form. The draft must be clean. `before` is a changed article as it stands: what was not touched is not asked about.
bool mayKeepGoods(const GoodsDraft& draft, std::int64_t id, Prompt& prompt, const GoodsDraft& before = {});
/// Appends the row of a clean draft to the catalogue and returns its `id`. Inside the caller's transaction.
std::int64_t insertGoods(const GoodsDraft& draft);
/// Writes the preset prices of a draft.
void writeGoodsPrices(std::int64_t id, const GoodsDraft& draft);
/// A new preset purchase price is the last and the average one too, until the next receipt.
void startPurchasePrices(std::int64_t id, double price);
/// The draft as it is stored: texts trimmed and cleaned, no control characters.
GoodsDraft cleanGoodsDraft(const GoodsDraft& typed);

struct GoodsFilter {
  QString key;          // matched against six columns; several words must each match somewhere
  QString classNumber;  // this class and all below; empty for all
  bool withDisabled = false;
  QString lensProduct = {};  // only articles of this lens product (g_qc)
  QString number = {};       // only this one
};

/// Adds these conditions to a list over `jxc_goods a`: pick lists search as the catalogue does.
void addGoodsConditions(Filter& filter, const GoodsFilter& wanted);

/// Rows of the catalogue list, ordered by goods number, with `gc_name` and the stock in the second unit (`fzkc`).
RowSet selectGoods(const GoodsFilter& filter);
/// The statement and values of the same, for a list that loads in the background.
Sql goodsListStatement(const GoodsFilter& filter);

}  // namespace jxc
