#include "inventory/write_off.h"

#include "core/text.h"
#include "inventory/inventory_lines.h"
#include "inventory/one_list.h"
#include "stock/ledger.h"

namespace jxc::write_off {
namespace write_off_detail {

constexpr LineRoundings kRounding = {LineRounding::Cell, LineRounding::Cell, LineRounding::Cell};

constexpr LineDescription kLost = {
    .family = &families::loss,
    .price = warehouseCost,
    .priceIsTyped = false,
    .rounding = kRounding,
    .quantityRefusal = u"数量必须大于0，重新输入！",
    .shortQuestion = u"报损数量大于库存数量，报损后将产生负库存，继续报损吗?",
    .everyChangeIsTested = true,
    .barcodes = BarcodesOf::KnownGoods,
    .knownGoodsOnly = true,
    .takesNewGoods = false,
};
constexpr LineDescription kFound = {
    .family = &families::overflow,
    .price = warehouseCost,
    .priceIsTyped = false,
    .rounding = kRounding,
    .quantityRefusal = u"数量必须大于0，重新输入！",
};

/// One of the two kinds.
class KindRules final : public RulesOver<DocumentDraft> {
 public:
  explicit KindRules(const LineDescription& lines) : lines_(lines), family_(*lines.family) {}

  const DocumentFamily& family() const override { return family_; }
  const LineRules& lines() const override { return lines_; }
  SaveResult save(const DocumentDraft& draft, Prompt& prompt) const override {
    if (isIncomplete(draft, prompt) ||
        (&family_ == &families::loss && !mayLoseBeyondStock(draft.number, draft.warehouse, prompt)))
      return {.saved = false, .number = draft.number};
    return saveDocument(family_,
                        {.number = draft.number,
                         .date = draft.date,
                         .writeHead = [&](const QString& number) { insertWaitingHead(family_, draft, number); }},
                        prompt);
  }

 protected:
  const DocumentFamily& shownAs() const override { return families::loss; }

 private:
  InventoryLines lines_;
  const DocumentFamily& family_;
};

const KindRules& kind(const DocumentFamily& family) {
  static const KindRules lost(kLost), found(kFound);
  return &family == &families::overflow ? found : lost;
}

/// Both, where no document has been chosen yet: as losses.
class BothRules final : public RulesOver<DocumentDraft> {
 public:
  const DocumentFamily& family() const override { return families::loss; }
  const LineRules& lines() const override { return kind(families::loss).lines(); }
  const DocumentRules& of(const QString& number) const override { return kindOf(number); }
  DocumentDraft fresh(const QString& lastDate) const override { return kind(families::loss).fresh(lastDate); }
  SaveResult save(const DocumentDraft& draft, Prompt& prompt) const override {
    return kindOf(draft.number).save(draft, prompt);
  }
  RowSet waiting(const WaitingFilter& filter) const override;

 private:
  static const KindRules& kindOf(const QString& number) {
    const DocumentFamily* const family = findFamily(number);
    return kind(family ? *family : families::loss);
  }
};

RowSet BothRules::waiting(const WaitingFilter& filter) const {
  constexpr std::string_view shown[] = {"gl_djh", "bs_bsrq", "ck_sn", "ck_name", "u_name", "a_name", "bs_note"};
  const ListOfKind lists[] = {{kind(families::loss).waiting(filter), u"报损单"_qs},
                              {kind(families::overflow).waiting(filter), u"报溢单"_qs}};
  return oneList(lists, shown, filter.newestFirst);
}

}  // namespace write_off_detail

const RulesOver<DocumentDraft>& rules() {
  static const write_off_detail::BothRules all;
  return all;
}

DocumentDraft fresh(const DocumentFamily& kind, const QString& lastDate) {
  return write_off_detail::kind(kind).fresh(lastDate);
}

}  // namespace jxc::write_off
