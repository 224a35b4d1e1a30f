// 商品入库: the screen of the putaway and its satellites: open lines of receipts to pick from, one line.
#include "stock/screens/partial_screen.h"

namespace jxc {
namespace cgrk_detail {

using Parts =
    partial_parts::Parts<PartnerType::Supplier, partial::putawayRules, "F_Cgrk", "rk", "jsn", "j_sn", "入库", "采购">;
constexpr PartialScreenSpec kDocument = Parts::screen({
    .employeeFlag = "u_cg",
    .make = {{"cggl", 8}, u"商品入库！"},
    .audit = {{"cggl", 9}, u"商品入库审核！"},
});

class TF_Cgrk : public PartialScreen {
 public:
  TF_Cgrk() : PartialScreen(kDocument) {}
};

const ui::Registered<TF_Cgrk> kRegistered{"F_Cgrk"};
const ui::Registered<Parts::Pick> kRegisteredAdd{"F_Cgrk_Add"};
const ui::Registered<Parts::Line> kRegisteredSele{"F_Cgrk_Sele"};

}  // namespace cgrk_detail
}  // namespace jxc
