// 单据查询: documents of all kinds under one roof, and the lists of the stock documents, which stand in their screens.
#include "core/text.h"
#include "stock/screens/document_list_screen.h"

#include <algorithm>

namespace jxc {
namespace djcx_detail {

using document_list_screen::List;

using Everything =
    DocumentSet<families::purchaseReceipt, families::purchaseReturn, families::sale, families::saleReturn,
                families::transfer, families::stocktake, families::loss, families::overflow, families::split,
                families::bundle, families::loan, families::loanReturn>;
using All =
    List<"F_Djcx", "单据查询", SeveralKinds | WithWaiting | OfSuppliers | OfCustomers | TwoWarehouses, Everything>;

/// Two letters of a kind and what its day and turn make of it.
bool isNumber(const QString& typed) {
  constexpr qsizetype kPrefix = 2, kShortest = 10;
  return typed.size() >= kShortest && findFamily(QStringView(typed)) &&
         std::all_of(typed.begin() + kPrefix, typed.end(), [](QChar letter) { return letter.isDigit(); });
}

class TF_Djcx : public DocumentListScreen {
 public:
  TF_Djcx() : DocumentListScreen(All::kSpec) {
    field("tkey").onEnter([this] {
      const QString typed = field("tkey").trimmed().toUpper();
      isNumber(typed) ? openDocument(typed) : search();
      return true;
    });
  }

 private:
  /// Whatever period and kind the list asks for: the paper in hand says which document is meant.
  void openDocument(const QString& typed) {
    field("tkey").clear();  // the next one may be scanned at once
    if (const auto number = findListed(Everything::families, typed, prompt()))
      ui::enquiryServices().openDocument(*number, *this);
  }
};

using Transfers = List<"F_Kcdb_Djcx", "库存调拨查询", TwoWarehouses, DocumentSet<families::transfer>>;
using Counted = List<"F_Kcpd_Djcx", "库存盘点查询", Counts, DocumentSet<families::stocktake>>;
using LossesAndOverflows =
    List<"F_Bsby_Djcx", "报损报溢查询", SeveralKinds, DocumentSet<families::loss, families::overflow>>;
using SplitsAndBundles =
    List<"F_Cfkb_Djcx", "拆分捆绑查询", SeveralKinds | Wholes, DocumentSet<families::split, families::bundle>>;

const ui::RegisteredEnquiry<TF_Djcx> kAll{All::kSpec};
const ui::RegisteredEnquiry<Transfers::Screen<"F_Kcdb_Cx">> kTransfers{Transfers::kSpec};
const ui::RegisteredEnquiry<Counted::Screen<>> kCounts{Counted::kSpec};
const ui::RegisteredEnquiry<LossesAndOverflows::Screen<>> kLosses{LossesAndOverflows::kSpec};
const ui::RegisteredEnquiry<SplitsAndBundles::Screen<"F_Cfkb_Cx">> kSplits{SplitsAndBundles::kSpec};

}  // namespace djcx_detail
}  // namespace jxc
