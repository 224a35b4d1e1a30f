#include "purchasing/replenishing.h"

#include "core/text.h"
#include "purchasing/receipt.h"
#include "stock/document.h"

#include <vector>

namespace jxc::replenishing {

int draftReceipt(std::span<const Wanted> goods, Prompt& prompt) {
  const DocumentFamily& family = families::purchaseReceipt;
  LinePlace place{.number = unsavedDraft(family)};
  if (!place.number.isEmpty()) place.date = dateOfNumber(place.number);
  if (place.date.isEmpty()) {
    const TradingDraft fresh = receipt::newReceipt();
    place = {.number = fresh.number, .date = fresh.date, .partner = fresh.partner, .warehouse = fresh.warehouse};
  }
  const LineRules& lines = receipt::rules().lines();
  std::vector<LineDraft> drafts;
  for (const Wanted& each : goods) {
    if (each.pieces <= 0 || goodsOnDocument(family, place.number, each.goods, true)) continue;
    drafts.push_back(lines.newLine(each.goods, place, false));
    drafts.back().amounts.setQuantity(each.pieces);
  }
  if (refused({{goods.empty(), u"请先选择要进货的商品！"_qs},
               {drafts.empty(), u"选中的商品已经在未保存的采购进货单中！"_qs}},
              prompt))
    return 0;
  const auto added = lines.addLines(Lines::Draft, place, drafts);
  return added ? added->lines : 0;
}

}  // namespace jxc::replenishing
