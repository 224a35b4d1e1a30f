// 采购进货规则的屏幕接口: the rules of purchasing/receipt.h behind the interfaces that all trading screens use.
#include "masterdata/goods.h"
#include "purchasing/receipt.h"

namespace jxc::receipt {
namespace receipt_rules_detail {

class ReceiptLines final : public LineRules {
 public:
  LineDraft newLine(const QString& goods, const LinePlace&, bool staged) const override {
    return receipt::newLine(goods, staged);
  }
  std::optional<LineDraft> loadLine(Lines where, std::int64_t id) const override {
    return receipt::loadLine(where, id);
  }
  LineResult addLine(Lines where, const LinePlace& place, const LineDraft& draft, Prompt&) const override {
    return receipt::addLine(where, place.number, place.date, draft);
  }
  bool changeLine(Lines where, std::int64_t id, const LinePlace&, const LineDraft& draft, Prompt&) const override {
    return receipt::changeLine(where, id, draft);
  }
  double setChange(const QString& value, QStringView field, Lines where, std::int64_t id, Prompt&) const override {
    return receipt::setChange(value, field, where, id);
  }
  ScanResult enterBarcode(const LinePlace& place, const QString& code, bool oncePerGoods, Prompt&) const override {
    return receipt::enterBarcode(place.number, place.date, code, oncePerGoods);
  }

  BoundStatement goodsToPick(const LinePlace& place, const PickFilter& wanted) const override {
    Filter filter;
    addGoodsConditions(filter, {.key = wanted.key, .classNumber = wanted.classNumber});
    if (wanted.inStock) filter.add("b.kc_sl>0");
    if (wanted.ofPartner)
      filter.add(
          "a.g_sn in (select x.g_sn from jxc_jhsp x,jxc_jhd y where x.j_sn=y.j_sn and y.j_status=1 and y.ghs_sn=?)",
          place.partner);
    BoundStatement list;
    list.sql =
        "select a.*,iif(b.kc_sl is null,0,b.kc_sl) as kc_sl from jxc_goods a left join "
        "(select g_sn,kc_sl from jxc_kcsp where ck_sn=?) b on a.g_sn=b.g_sn" +
        filter.where() + " order by a.g_cgpl desc,a.g_sn";
    list.values.emplace_back(place.warehouse);
    list.values.insert(list.values.end(), filter.values().begin(), filter.values().end());
    return list;
  }
  bool mayStage(const QString& goods, const LinePlace& place, Lines target, PickingMemory& memory,
                Prompt& prompt) const override {
    return receipt::mayStage(goods, place.number, target, memory, prompt);
  }
  std::int64_t stageGoods(const QString& goods, double quantity, const LinePlace& place, Lines target,
                          PickingMemory& memory, Prompt& prompt) const override {
    return receipt::stageGoods(goods, quantity, place.number, target, memory, prompt);
  }
  CopyResult copyStaged(const LinePlace& place, Lines target) const override {
    return receipt::copyStaged(place.number, place.date, target);
  }

  RowSet history(const QString& goods, const QString& partner) const override { return receiptHistory(goods, partner); }
  RowSet quotes(const QString& goods, const QString& partner) const override { return supplierQuotes(goods, partner); }
};

class ReceiptRules final : public DocumentRules {
 public:
  const DocumentFamily& family() const override { return families::purchaseReceipt; }
  const LineRules& lines() const override { return lines_; }

  TradingDraft fresh(const QString& lastDate) const override { return newReceipt(lastDate); }
  RowSet draftLines(const QString& number) const override { return receipt::draftLines(number); }
  double payable(const QString& number) const override { return receipt::payable(number); }
  double paidAfter(double payable, double typed) const override { return receipt::paidAfter(payable, typed); }
  SaveResult save(const TradingDraft& draft, Prompt& prompt) const override { return saveReceipt(draft, prompt); }

  RowSet waiting(const WaitingFilter& filter) const override { return waitingReceipts(filter); }
  RowSet waitingLines(const QString& number) const override { return receipt::waitingLines(number); }
  std::optional<AuditDraft> loadForAudit(const QString& number) const override { return receipt::loadForAudit(number); }
  AuditOutcome audit(const AuditDraft& draft, Prompt& prompt) const override {
    return saveCheckedValueTab2(draft, prompt);
  }

 private:
  ReceiptLines lines_;
};

}  // namespace receipt_rules_detail

const DocumentRules& rules() {
  static const receipt_rules_detail::ReceiptRules all;
  return all;
}

}  // namespace jxc::receipt
