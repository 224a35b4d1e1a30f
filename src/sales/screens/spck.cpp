// 商品出库: the screen of the issue and its satellites: open lines of sales to pick from, one line.
#include "stock/screens/partial_screen.h"

namespace jxc {
namespace spck_detail {

using Parts = partial_parts::Parts<PartnerType::Customer, partial::issueRules, "F_Spck", "ck", "gldjh", "gl_djh2",
                                   "出库", "销售">;
constexpr PartialScreenSpec kDocument = Parts::screen({
    .employeeFlag = "u_xs",
    .make = {{"xsgl", 6}, u"商品出库！", {"xsgl", 10}},
    .audit = {{"xsgl", 9}, u"商品出库审核！"},
});

class TF_Spck : public PartialScreen {
 public:
  TF_Spck() : PartialScreen(kDocument) {}
};

const ui::Registered<TF_Spck> kRegistered{"F_Spck"};
const ui::Registered<Parts::Pick> kRegisteredAdd{"F_Spck_Add"};
const ui::Registered<Parts::Line> kRegisteredSele{"F_Spck_Sele"};

}  // namespace spck_detail
}  // namespace jxc
