// 报价: prices promised to customers and offered by suppliers. Of several for one partner and goods the last one
// counts; the earlier ones stay, and count again when it is deleted.
#pragma once

#include "core/enquiry.h"
#include "core/prompt.h"
#include "masterdata/partner_side.h"
#include "stock/document_rules.h"

#include <cstdint>
#include <optional>

namespace jxc::quotations {

/// What is asked for beside period, partner and goods: the employee, and in `kind` a part of the note.
inline constexpr unsigned kOnlyLast = 1u << 0;  // of each partner and goods the one that counts
inline constexpr NoWarehouse kOfTheShop{"a price is promised by the shop, whichever branch delivers"};
/// The quotations of one side in their order, whatever became of their employee: rq, g_sn and names, bj (yuan), sn and
/// name of the partner, note.
Sql list(const PartnerSide& side, const Criteria& criteria);

/// What a new one begins with: the price that counts, else the preset sale or purchase price; all in yuan.
struct Proposal {
  QString name;
  double purchasePrice = 0, salePrice = 0, price = 0;
};
/// Nothing for goods that are gone.
std::optional<Proposal> propose(const PartnerSide& side, const QString& partner, const QString& goods);

/// Goods to quote.
Sql goodsToQuote(const PickFilter& wanted);
/// Puts a goods at this price among the operator's picked ones; picked again it takes the new price. False: refused.
bool stage(const QString& goods, double yuan, Prompt& prompt);

struct Quotation {
  QString name, partner;  // as it stands in the input, and the code that was really chosen
  QString date, employee, note;
};
/// Makes quotations of all picked goods. How many; nothing when it was refused, and then they stay picked.
std::optional<int> save(const PartnerSide& side, const Quotation& head, Prompt& prompt);

/// Changes price (yuan) and note of one.
bool change(const PartnerSide& side, std::int64_t id, double yuan, const QString& note, Prompt& prompt);
/// Deletes one; the one before it counts again. Asks.
bool remove(const PartnerSide& side, std::int64_t id, Prompt& prompt);

/// A list of prices from a spreadsheet: its goods are picked at them.
const ManyLines& lines();
extern const LineImport sheet;

}  // namespace jxc::quotations
