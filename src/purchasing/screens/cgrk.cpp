// 商品入库: the screen of the putaway and its satellites: open lines of receipts to pick from, one line.
#include "stock/screens/modi_date.h"
#include "stock/screens/partial_screen.h"

namespace jxc {
namespace cgrk_detail {

using ui::FieldKind;
using Parts = partial_parts::Parts<PartnerType::Supplier, "rk_", "j_sn", "入库", "采购">;

constexpr ui::FieldSpec kFields[] = {
    {"tghs", "供货商：", FieldKind::Picker},
    {"dateCg", "入库日期：", FieldKind::Date},
    {"jsn", "单据编号：", FieldKind::Text, "jxc_rkd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tnote", "备注：", FieldKind::Text, "jxc_rkd.rk_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
    {"tOpenKey", "查找：", FieldKind::Text, "", 50},
};
constexpr std::string_view kHeadForm[] = {"tghs dateCg jsn", "comCk comUser tnote"};

QString changeDate(const QString& number) {
  return changeDocumentDate(families::putaway, number);
}

constexpr PartialScreenSpec kDocument = {
    .document = partial_parts::documentOf({
        .screen = {.name = "F_Cgrk",
                   .title = "商品入库",
                   .fields = kFields,
                   .grids = Parts::documentGrids,
                   .commands = Parts::commands,
                   .focus = "tSptm"},
        .draftTitle = "商品入库",
        .waitingTitle = "待审核入库单",
        .openTitle = "待入库采购单",
        .auditedList = "F_Cgrk_Djcx",
        .auditedTitle = "入库查询",
        .employeeFlag = "u_cg",
        .showsScanned = true,
        .pickScreen = "F_Cgrk_Add",
        .lineScreen = "F_Cgrk_Sele",
        .changeHead = changeDate,
        .make = {{"cggl", 8}, u"商品入库！"},
        .audit = {{"cggl", 9}, u"商品入库审核！"},
        .headForm = kHeadForm,
    }),
    .rules = partial::putawayRules,
    .pickPartner = pickSupplier,
    .partner = "tghs",
};

class TF_Cgrk : public PartialScreen {
 public:
  TF_Cgrk() : PartialScreen(kDocument) {}
};

class TF_Cgrk_Add : public GoodsPickScreen {
 public:
  TF_Cgrk_Add()
      : GoodsPickScreen(partial_parts::pickOf<partial::putawayRules>({.name = "F_Cgrk_Add",
                                                                      .title = "商品入库 - 选择待入库商品",
                                                                      .fields = Parts::pickFields,
                                                                      .grids = Parts::pickGrids,
                                                                      .commands = Parts::pickCommands,
                                                                      .focus = "tkey"},
                                                                     "F_Cgrk_Sele")) {}
};

class TF_Cgrk_Sele : public LineScreen {
 public:
  TF_Cgrk_Sele()
      : LineScreen({.screen = {.name = "F_Cgrk_Sele",
                               .title = "入库商品明细",
                               .fields = Parts::lineFields,
                               .commands = trading_parts::okCancel,
                               .focus = "tsl"},
                    .rules = rulesOf<partial::putawayRules>}) {}
};

const ui::Registered<TF_Cgrk> kRegistered{"F_Cgrk"};
const ui::Registered<TF_Cgrk_Add> kRegisteredAdd{"F_Cgrk_Add"};
const ui::Registered<TF_Cgrk_Sele> kRegisteredSele{"F_Cgrk_Sele"};

}  // namespace cgrk_detail
}  // namespace jxc
