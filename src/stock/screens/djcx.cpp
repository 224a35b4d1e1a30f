// 单据查询: documents of all kinds under one roof, and the lists of the stock documents, which stand in their screens.
#include "stock/screens/document_list_screen.h"

namespace jxc {
namespace djcx_detail {

using document_list_screen::List;

using All =
    List<"F_Djcx", "单据查询", SeveralKinds | WithWaiting | OfSuppliers | OfCustomers | TwoWarehouses, EveryDocument>;

class TF_Djcx : public DocumentListScreen {
 public:
  TF_Djcx() : DocumentListScreen(All::kSpec) {
    field("tkey").onEnter([this] {
      search();
      openTyped();
      return true;
    });
  }

 private:
  /// The paper in hand says which document is meant: it is looked at, and stands in the list for what is done with it.
  void openTyped() {
    const QString typed = field("tkey").trimmed().toUpper();
    if (!isDocumentNumber(typed)) return;
    if (const auto number = findListed(EveryDocument::families, typed, prompt()))
      ui::enquiryServices().openDocument(*number, *this);
    field("tkey").focus();  // the next number takes its place
  }
};

using Transfers = List<"F_Kcdb_Djcx", "库存调拨查询", TwoWarehouses, DocumentSet<families::transfer>>;
using Counted = List<"F_Kcpd_Djcx", "库存盘点查询", Counts, DocumentSet<families::stocktake>>;
using LossesAndOverflows =
    List<"F_Bsby_Djcx", "报损报溢查询", SeveralKinds, DocumentSet<families::loss, families::overflow>>;
using SplitsAndBundles =
    List<"F_Cfkb_Djcx", "拆分捆绑查询", SeveralKinds | Wholes, DocumentSet<families::split, families::bundle>>;

using Putaways = List<"F_Cgrk_Djcx", "入库查询", OfSuppliers | Parts, DocumentSet<families::putaway>>;
using Issues = List<"F_Spck_Djcx", "出库查询", OfCustomers | Parts, DocumentSet<families::issue>>;

const ui::RegisteredEnquiry<TF_Djcx> kAll{All::kSpec};
const ui::RegisteredEnquiry<Transfers::Screen<"F_Kcdb_Cx">> kTransfers{Transfers::kSpec};
const ui::RegisteredEnquiry<Counted::Screen<>> kCounts{Counted::kSpec};
const ui::RegisteredEnquiry<LossesAndOverflows::Screen<>> kLosses{LossesAndOverflows::kSpec};
const ui::RegisteredEnquiry<Putaways::Screen<>> kPutaways{Putaways::kSpec};
const ui::RegisteredEnquiry<Issues::Screen<>> kIssues{Issues::kSpec};
const ui::RegisteredEnquiry<SplitsAndBundles::Screen<"F_Cfkb_Cx">> kSplits{SplitsAndBundles::kSpec};

}  // namespace djcx_detail
}  // namespace jxc
