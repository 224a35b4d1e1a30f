// 进退货查询: audited receipts and returns to suppliers: what is open of them, payment, whole return, cancel.
#include "stock/screens/trade_list_screen.h"

namespace jxc {
namespace jthcx_detail {

using namespace document_list_screen;  // NOLINT(google-build-using-namespace): inside this file's own namespace

using Purchases = List<"F_Jthcx", "进退货查询", SeveralKinds | OfSuppliers | WithMoney,
                       DocumentSet<families::purchaseReceipt, families::purchaseReturn>, "jthmxb">;
constexpr ui::EnquirySpec kEnquiry = Purchases::with(Purchases::kTabs, tradeCommands<PartnerType::Supplier, Purchases>);

const ui::RegisteredEnquiry<TradeListOf<PartnerType::Supplier>> kRegistered{kEnquiry};

}  // namespace jthcx_detail
}  // namespace jxc
