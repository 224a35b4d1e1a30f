#include "stock/ledger_flags.h"

#include <algorithm>
#include <iterator>

namespace jxc {
namespace ledger_flags_detail {

using Group = MovementGroup;
using enum MovesAverage;
using enum ShownAmount;
using enum LedgerWriter;

// `kb` moves the average with both of its rows, deliberately unlike `cf` and `db`: a bundle is new goods made of old
// ones, and what went into it leaves at the price that was agreed for it.
constexpr LedgerFlag table[] = {
    // flag, caption, caption of a negative row, group, moves the average, counts as, amount, written by
    {"qc", u"期初数", u"", Group::In, Always, Counts::InSigned},
    {"cj", u"采购入库单", u"", Group::In, Always, Counts::In, BeforeTax},
    {"ct", u"采购退货单", u"", Group::In, Always, Counts::Out, BeforeTax},
    {"db", u"库存调拨入库", u"库存调拨出库", Group::In, Inflow, Counts::In},
    {"cf", u"拆分入库", u"被拆分出库", Group::In, Inflow, Counts::In},
    {"kb", u"捆绑入库", u"被捆绑出库", Group::In, Always, Counts::In},
    {"pd", u"库存盘点单", u"", Group::In, Always, Counts::InSigned},
    {"bs", u"商品报损", u"", Group::In, No, Counts::Out},
    {"by", u"商品报溢", u"", Group::In, No, Counts::In},
    {"hh", u"客户还货", u"", Group::In, No, Counts::In},
    {"xs", u"商品销售单", u"顾客退货单", Group::Out, No, Counts::Out, OfSale},
    {"xt", u"顾客退货单", u"", Group::Out, No, Counts::In, OfSale},
    {"jh", u"客户借货", u"", Group::Out, No, Counts::Out},
    {"dh", u"积分换赠品", u"", Group::Out, No, Counts::Out, BeforeTax},
    {"sc", u"生产入库单", u"", Group::In, Always, Counts::In, WithTax, Exchange},
    {"st", u"次品返工单", u"", Group::In, Always, Counts::Out, WithTax, Exchange},
    {"jg", u"加工入库", u"", Group::In, Always, Counts::In, WithTax, Exchange},
    {"ws", u"外发加工收货", u"", Group::In, Always, Counts::In, WithTax, Exchange},
    {"bh", u"", u"", Group::In, Inflow, Counts::Nowhere, WithTax, Exchange},
    {"pl", u"配料出库", u"", Group::In, No, Counts::Out, WithTax, Exchange},
    {"wp", u"外发配料消耗", u"", Group::In, No, Counts::Out, WithTax, Exchange},
    {"wt", u"外发配料调整", u"", Group::In, No, Counts::Out, WithTax, Exchange},
    {"bf", u"", u"", Group::In, No, Counts::Out, WithTax, Exchange},
    {"ly", u"部门领用单", u"", Group::Out, No, Counts::Out, WithTax, Exchange},
    {"lt", u"部门退回单", u"", Group::Out, No, Counts::In, WithTax, Exchange},
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

}  // namespace jxc
