// 商品出库: the screen of the issue and its satellites: open lines of sales to pick from, one line.
#include "stock/screens/modi_date.h"
#include "stock/screens/partial_screen.h"

namespace jxc {
namespace spck_detail {

using ui::FieldKind;
using Parts = partial_parts::Parts<PartnerType::Customer, "ck_", "gl_djh2", "出库", "销售">;

constexpr ui::FieldSpec kFields[] = {
    {"tkh", "客户：", FieldKind::Picker},
    {"dateCg", "出库日期：", FieldKind::Date},
    {"gldjh", "单据编号：", FieldKind::Text, "jxc_ckd.gl_djh", 0, ui::ReadOnly},
    {"comCk", "仓库：", FieldKind::Combo},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tnote", "备注：", FieldKind::Text, "jxc_ckd.ck_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
    {"tOpenKey", "查找：", FieldKind::Text, "", 50},
};
constexpr std::string_view kHeadForm[] = {"tkh dateCg gldjh", "comCk comUser tnote"};

QString changeDate(const QString& number) {
  return changeDocumentDate(families::issue, number);
}

constexpr PartialScreenSpec kDocument = {
    .document = partial_parts::documentOf({
        .screen = {.name = "F_Spck",
                   .title = "商品出库",
                   .fields = kFields,
                   .grids = Parts::documentGrids,
                   .commands = Parts::commands,
                   .focus = "tSptm"},
        .draftTitle = "商品出库",
        .waitingTitle = "待审核出库单",
        .openTitle = "待出库销售单",
        .auditedList = "F_Spck_Djcx",
        .auditedTitle = "出库查询",
        .employeeFlag = "u_xs",
        .numberInput = "gldjh",
        .showsScanned = true,
        .pickScreen = "F_Spck_Add",
        .lineScreen = "F_Spck_Sele",
        .changeHead = changeDate,
        .make = {{"xsgl", 6}, u"商品出库！", {"xsgl", 10}},
        .audit = {{"xsgl", 9}, u"商品出库审核！"},
        .headForm = kHeadForm,
    }),
    .rules = partial::issueRules,
    .pickPartner = pickCustomer,
    .partner = "tkh",
};

class TF_Spck : public PartialScreen {
 public:
  TF_Spck() : PartialScreen(kDocument) {}
};

class TF_Spck_Add : public GoodsPickScreen {
 public:
  TF_Spck_Add()
      : GoodsPickScreen(partial_parts::pickOf<partial::issueRules>({.name = "F_Spck_Add",
                                                                    .title = "商品出库 - 选择待出库商品",
                                                                    .fields = Parts::pickFields,
                                                                    .grids = Parts::pickGrids,
                                                                    .commands = Parts::pickCommands,
                                                                    .focus = "tkey"},
                                                                   "F_Spck_Sele")) {}
};

class TF_Spck_Sele : public LineScreen {
 public:
  TF_Spck_Sele()
      : LineScreen({.screen = {.name = "F_Spck_Sele",
                               .title = "出库商品明细",
                               .fields = Parts::lineFields,
                               .commands = trading_parts::okCancel,
                               .focus = "tsl"},
                    .rules = rulesOf<partial::issueRules>}) {}
};

const ui::Registered<TF_Spck> kRegistered{"F_Spck"};
const ui::Registered<TF_Spck_Add> kRegisteredAdd{"F_Spck_Add"};
const ui::Registered<TF_Spck_Sele> kRegisteredSele{"F_Spck_Sele"};

}  // namespace spck_detail
}  // namespace jxc
