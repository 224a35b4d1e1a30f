#include "inventory/conversions.h"

#include "core/session.h"
#include "core/small_lookups.h"
#include "core/text.h"
#include "inventory/inventory_lines.h"
#include "inventory/one_list.h"
#include "stock/ledger.h"

namespace jxc::conversions {
namespace conversions_detail {

double costOfWarehouse(const QString& goods, const LinePlace& place) {
  return lookupNumber("select kc_cbj from jxc_kcsp where g_sn=? and ck_sn=?", goods, place.warehouse);
}
double costToPropose(const QString& goods, const LinePlace& place) {
  return getGoodsCost(goods, place.warehouse, place.date);
}

constexpr LineDescription kSplitLines = {
    .family = &families::split, .price = costToPropose, .quantityRefusal = u"数量不能为0！"};
constexpr LineDescription kBundleLines = {
    .family = &families::bundle,
    .price = costOfWarehouse,
    .priceIsTyped = false,
    .rounding = {LineRounding::Scanned, LineRounding::Scanned, LineRounding::Scanned},
    .quantityRefusal = u"数量不能为0或负数！",
    .everyChangeIsTested = true};

constexpr ConversionRules::Direction kSplit = {.family = &families::split,
                                               .noGoods = u"被拆分商品不存在，请选择被拆分商品！",
                                               .noQuantity = u"拆分数量必须大于0！",
                                               .intoItself = u"商品不能拆分成自己！",
                                               .beyondStock = u"拆分数量不允许大于库存数量！",
                                               .noParts = u"请添加拆分成的商品！"};
constexpr ConversionRules::Direction kBundle = {.family = &families::bundle,
                                                .noGoods = u"捆绑商品不存在，请选择捆绑商品！",
                                                .noQuantity = u"捆绑数量必须大于0！",
                                                .intoItself = u"商品不能由自己捆绑而成！",
                                                .beyondStock = u"被捆绑商品的数量不能大于库存数量！",
                                                .noParts = u"请添加被捆绑的商品！"};

/// Parts of a conversion. Each stands in a warehouse of its own: cost and stock are those of that one.
class ConversionLines final : public InventoryLines {
 public:
  ConversionLines(const LineDescription& lines, const ConversionRules::Direction& direction)
      : InventoryLines(lines), direction_(direction) {}

  bool mayWrite(const LineDraft& draft, const LinePlace& place, Prompt& prompt) const override {
    return !isWhole(draft.goods, place, prompt) &&
           InventoryLines::mayWrite(draft, inWarehouse(place, draft.warehouse), prompt);
  }
  bool cellAllows(const QString& value, QStringView field, Lines where, std::int64_t id, const LinePlace& place,
                  Prompt& prompt) const override {
    const std::optional<LineDraft> line = loadLine(where, id);
    return !line || InventoryLines::cellAllows(value, field, where, id, inWarehouse(place, line->warehouse), prompt);
  }
  /// What is bundled is taken from the shelf now: no parameter lets it go below that.
  bool stockAllows(const QString& goods, double quantity, const LinePlace& place, Prompt& prompt,
                   PickingMemory*) const override {
    if (isTooMany(quantity, prompt)) return false;
    if (family().comesIn || !isBeyondStock(goods, quantity, place.warehouse)) return true;
    return !isRefused({words(direction_.beyondStock), Subject::Quantity}, prompt);
  }
  bool mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                Prompt& prompt) const override {
    return !isWhole(goods, place, prompt) && InventoryLines::mayStage(goods, place, target, memory, prompt);
  }
  void takeWarehouse(LineDraft& line, const LinePlace& place) const override {
    InventoryLines::takeWarehouse(line, place);
    if (!priceMayChange()) line.amounts.setPrice(description_.price(line.goods, place));
  }

 protected:
  Coded goodsOfBarcode(const QString& barcode, const LinePlace& place) const override {
    Coded coded = InventoryLines::goodsOfBarcode(barcode, place);
    if (!coded.refusal && coded.goods == wholeOf(family(), place.number))
      coded.refusal = {words(direction_.intoItself), Subject::Barcode};
    return coded;
  }

 private:
  /// Staging rows know no warehouse: theirs is the one that the goods are picked from.
  static LinePlace inWarehouse(LinePlace place, const QString& warehouse) {
    if (!warehouse.isEmpty()) place.warehouse = warehouse;
    return place;
  }
  bool isWhole(const QString& goods, const LinePlace& place, Prompt& prompt) const {
    return refused({{goods == wholeOf(family(), place.number), words(direction_.intoItself), Subject::Lines, goods}},
                   prompt);
  }

  const ConversionRules::Direction& direction_;
};

/// Both directions on one screen.
class BothRules final : public RulesOver<ConversionDraft> {
 public:
  const DocumentFamily& family() const override { return families::split; }
  const LineRules& lines() const override { return split().lines(); }
  const DocumentRules& of(const QString& number) const override { return directionOf(number); }
  ConversionDraft fresh(const QString& lastDate) const override { return split().fresh(lastDate); }
  SaveResult save(const ConversionDraft& draft, Prompt& prompt) const override {
    return directionOf(draft.number).save(draft, prompt);
  }

  RowSet waiting(const WaitingFilter& filter) const override {
    constexpr std::string_view shown[] = {"gl_djh", "cf_cfrq", "g_sn",   "whole_name", "cf_sl",  "cf_cbj",
                                          "ck_sn",  "ck_name", "u_name", "a_name",     "cf_note"};
    const ListOfKind lists[] = {{split().waiting(filter), u"拆分"_qs}, {bundle().waiting(filter), u"捆绑"_qs}};
    return oneList(lists, shown, filter.newestFirst);
  }

 private:
  static const ConversionRules& directionOf(const QString& number) {
    return number.startsWith(QStringView(families::bundle.prefix)) ? bundle() : split();
  }
};

}  // namespace conversions_detail

const ConversionRules& split() {
  using namespace conversions_detail;
  static const ConversionLines lines{kSplitLines, kSplit};
  static const ConversionRules rules{kSplit, lines};
  return rules;
}

const ConversionRules& bundle() {
  using namespace conversions_detail;
  static const ConversionLines lines{kBundleLines, kBundle};
  static const ConversionRules rules{kBundle, lines};
  return rules;
}

const RulesOver<ConversionDraft>& both() {
  static const conversions_detail::BothRules rules;
  return rules;
}

}  // namespace jxc::conversions
