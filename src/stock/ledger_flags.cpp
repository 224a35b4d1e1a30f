#include "stock/ledger_flags.h"

#include <algorithm>
#include <iterator>

namespace jxc {
namespace ledger_flags_detail {

using enum MovementGroup;
using enum MovesAverage;
using enum LedgerWriter;

// `kb` moves the average with both of its rows, deliberately unlike `cf` and `db`: a bundle is new goods made of old
// ones, and what went into it leaves at the price that was agreed for it.
constexpr LedgerFlag table[] = {
    // flag, caption, caption of a negative row, group, moves the average, written by
    {"qc", u"期初数", u"", In, Always},
    {"cj", u"采购入库单", u"", In, Always},
    {"ct", u"采购退货单", u"", In, Always},
    {"db", u"库存调拨入库", u"库存调拨出库", In, Inflow},
    {"cf", u"拆分入库", u"被拆分出库", In, Inflow},
    {"kb", u"捆绑入库", u"被捆绑出库", In, Always},
    {"pd", u"库存盘点单", u"", In, Always},
    {"bs", u"商品报损", u"", In, No},
    {"by", u"商品报溢", u"", In, No},
    {"hh", u"客户还货", u"", In, No},
    {"xs", u"商品销售单", u"顾客退货单", Out, No},
    {"xt", u"顾客退货单", u"", Out, No},
    {"jh", u"客户借货", u"", Out, No},
    {"dh", u"积分换赠品", u"", Out, No},
    {"sc", u"生产入库单", u"", In, Always, Exchange},
    {"st", u"次品返工单", u"", In, Always, Exchange},
    {"jg", u"加工入库", u"", In, Always, Exchange},
    {"ws", u"外发加工收货", u"", In, Always, Exchange},
    {"bh", u"", u"", In, Inflow, Exchange},
    {"pl", u"配料出库", u"", In, No, Exchange},
    {"wp", u"外发配料消耗", u"", In, No, Exchange},
    {"wt", u"外发配料调整", u"", In, No, Exchange},
    {"bf", u"", u"", In, No, Exchange},
    {"ly", u"部门领用单", u"", Out, No, Exchange},
    {"lt", u"部门退回单", u"", Out, No, Exchange},
};

constexpr std::size_t letters = 2;
static_assert(std::all_of(std::begin(table), std::end(table),
                          [](const LedgerFlag& entry) { return entry.flag.size() == letters; }));

}  // namespace ledger_flags_detail

const LedgerFlag* findLedgerFlag(std::string_view flag) {
  // Asked for every row that a replay walks: two letters compared as such take no call.
  if (flag.size() != ledger_flags_detail::letters) return nullptr;
  for (const LedgerFlag& entry : ledger_flags_detail::table)
    if (flag[0] == entry.flag[0] && flag[1] == entry.flag[1]) return &entry;
  return nullptr;
}

const LedgerFlag* findLedgerFlag(QStringView flag) {
  return findLedgerFlag(flag.toUtf8().toStdString());
}

const std::string& rowsBehindAverage() {
  static const std::string condition = [] {
    std::string any;
    for (const LedgerFlag& entry : ledger_flags_detail::table)
      if (!entry.setsCost()) any.append(any.empty() ? "(gl_flag='" : " or gl_flag='").append(entry.flag).append("'");
    return any + ")";
  }();
  return condition;
}

QString ledgerCaption(QStringView flag, double quantity) {
  const LedgerFlag* entry = findLedgerFlag(flag);
  if (!entry) return {};
  const bool reverse = quantity < 0 && !entry->reverseCaption.empty();
  return QStringView(reverse ? entry->reverseCaption : entry->caption).toString();
}

}  // namespace jxc
