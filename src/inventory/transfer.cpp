#include "inventory/transfer.h"

#include "core/session.h"
#include "core/statements.h"
#include "core/text.h"
#include "inventory/inventory_lines.h"
#include "stock/ledger.h"

namespace jxc::transfer {
namespace transfer_detail {

bool goesAtSalePrice() {
  return session().cs_dbdj == u"1";
}

double priceOf(const QString& goods, const LinePlace& place) {
  if (session().cs_dbdj == u"2") return lookupNumber("select g_jj from jxc_goods where g_sn=?", goods);
  return getGoodsCost(goods, place.warehouse, place.date);
}

constexpr LineDescription kLines = {
    .family = &families::transfer,
    .price = priceOf,
    .priceIsTyped = false,
    .retailOf = "g_sj",
    .retailCounts = goesAtSalePrice,
    .rounding = {LineRounding::Scanned, LineRounding::Scanned, LineRounding::Scanned},
    .quantityRefusal = u"数量必须大于0，重新输入！",
    .shortRefusal = u"调拨数量不能大于库存数量，重新输入！",
    .shortQuestion = u"调拨数量不能大于库存数量，调拨后将产生负库存，继续调拨吗?",
    .everyChangeIsTested = true,
    .barcodes = BarcodesOf::Stock,
    .takesNewGoods = false,
};

class TransferLines final : public InventoryLines {
 public:
  using InventoryLines::InventoryLines;

  /// Nobody learns a cost by trying prices: without the right to see it the row says the same of every price.
  SheetPrice takeSheetPrice(LineDraft& line, double yuan) const override {
    if (!session().canSeeCost) return {.warning = u"单价未采用（没有查看成本的权限）"_qs};
    if (goesByRetail()) {
      line.retail = yuan;
      line.amounts.setWorth(yuan);
    } else {
      line.amounts.setPrice(yuan);
    }
    return {};
  }
};

class TransferRules final : public RulesOver<TransferDraft> {
 public:
  const DocumentFamily& family() const override { return families::transfer; }
  const LineRules& lines() const override { return lines_; }

  SaveResult save(const TransferDraft& draft, Prompt& prompt) const override {
    if (refused({withoutGoods(family(), draft.number, u"没有调拨商品，不能保存！"_qs),
                 {draft.salesperson.isEmpty(), u"请选择经办人！"_qs, Subject::Employee},
                 {draft.warehouse.isEmpty(), u"请选择调出仓库！"_qs, Subject::Warehouse},
                 {draft.into.isEmpty(), u"请选择调入仓库！"_qs, Subject::WarehouseInto},
                 warehouseGone(draft.warehouse),
                 warehouseDeleted(draft.into, Subject::WarehouseInto),
                 {draft.into == draft.warehouse, u"调出仓库与调入仓库不能相同！"_qs, Subject::WarehouseInto}},
                prompt) ||
        !mayGoShort(checkStockShort(draft.number, draft.warehouse, QStringView(family().shortageAtAudit)), prompt))
      return {.number = draft.number};
    const auto writeHead = [&](const QString& number) {
      updateRow(family().head, insertWaitingHead(family(), draft, number), {{family().into, draft.into}});
    };
    return saveDocument(
        family(), {.number = draft.number, .date = draft.date, .warehouse = draft.warehouse, .writeHead = writeHead},
        prompt);
  }

 private:
  TransferLines lines_{kLines};
};

}  // namespace transfer_detail

const RulesOver<TransferDraft>& rules() {
  static const transfer_detail::TransferRules all;
  return all;
}

}  // namespace jxc::transfer
