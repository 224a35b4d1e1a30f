// 库存报损报溢: one screen for loss and overflow, and its satellites: goods list, line dialog, spreadsheet.
#include "core/text.h"
#include "inventory/screens/inventory_parts.h"
#include "inventory/write_off.h"
#include "stock/screens/line_import_screen.h"
#include "stock/screens/line_screen.h"

namespace jxc {
namespace bsby_detail {

using ui::ColumnKind;
using ui::FieldKind;

// ---- the document ------------------------------------------------------------------------------------------------

constexpr ui::FieldSpec kFields[] = {
    {"comDjlx", "单据类型：", FieldKind::Combo},
    {"dateCg", "单据日期：", FieldKind::Date},
    {"comCk", "仓库：", FieldKind::Combo},
    {"gldjh", "单据编号：", FieldKind::Text, "jxc_bsd.gl_djh", 0, ui::ReadOnly},
    {"comUser", "经办人：", FieldKind::Combo},
    {"tSptm", "商品条码：", FieldKind::Text, "jxc_goods.g_sptm"},
    {"tnote", "备注：", FieldKind::Text, "jxc_bsd.bs_note", 0, ui::OffersRemarks},
    {"tkey", "查找：", FieldKind::Text, "", 50},
    {"comSort", "排序：", FieldKind::Combo},
};

constexpr auto kLines =
    inventory_parts::lineColumns<"bs_">(std::array{ui::ColumnSpec{"bs_note", "备注", ColumnKind::Text, 16}});
constexpr ui::ColumnSpec kWaiting[] = {
    {"djlx", "单据类型", ColumnKind::Text, 9},  {"gl_djh", "单据编号", ColumnKind::Text, 16},
    {"bs_bsrq", "单据日期", ColumnKind::Date},  {"ck_name", "仓库", ColumnKind::Text, 16},
    {"u_name", "经办人", ColumnKind::Text, 10}, {"a_name", "操作员", ColumnKind::Text, 10},
    {"bs_note", "备注", ColumnKind::Text, 28},
};
constexpr ui::GridSpec kGrids[] = {
    {"gridLines", "报损报溢商品", kLines, "扫描商品条码，或按F2添加商品"},
    {"gridWaiting", "待审核单据", kWaiting, "没有待审核的报损单和报溢单"},
    {"gridWaitingLines", "单据商品", kLines, "选择上面的单据，这里显示它的商品"},
};
constexpr std::string_view kHeadForm[] = {"comDjlx comCk dateCg gldjh", "comUser tnote"};
constexpr std::string_view kOwn[] = {"comDjlx"};

constexpr DocumentScreenSpec kDocument = inventory_parts::documentOf({
    .screen = {.name = "F_Bsby",
               .title = "库存报损报溢",
               .fields = kFields,
               .grids = kGrids,
               .commands = inventory_parts::documentCommands,
               .focus = "tSptm"},
    .draftTitle = "商品报损/报溢",
    .waitingTitle = "报损/报溢审核",
    .auditedList = "F_Bsby_Djcx",
    .auditedTitle = "报损报溢查询",
    .pickScreen = "F_Bsby_Add",
    .lineScreen = "F_Bsby_Sele",
    .importScreen = "F_Bsby_Import",
    .make = {{"kcgl", 3}, u"库存报损报溢！"},
    .audit = {{"kcgl", 10}, u"库存报损报溢审核！"},
    .headForm = kHeadForm,
    .waitingButtons = "btnRCheck btnPreview btn_Check btn_Date btn_Dele btn_ChaKan btn_Prin |",
    .own = kOwn,
});

class TF_Bsby : public DocumentScreenOver<DocumentDraft> {
 public:
  TF_Bsby() : DocumentScreenOver(kDocument, write_off::rules()) {
    comDjlx.onChanged([this] { kindChanged(); });
  }

 protected:
  void fillLists() override {
    DocumentScreenOver::fillLists();
    comDjlx.setItems({{u"报损单"_qs, words(families::loss.prefix)}, {u"报溢单"_qs, words(families::overflow.prefix)}},
                     true);
  }
  void beginDraft(const QString& lastDate) override { draft() = write_off::fresh(chosenKind(), lastDate); }
  QString findUnsaved() const override {
    const QString lost = unsavedDraft(families::loss);
    return lost.isEmpty() ? unsavedDraft(families::overflow) : lost;
  }
  void recallDraft() override { comDjlx.setKey(words(documentFamily(draft().number).prefix)); }
  void linesChanged() override {
    DocumentScreenOver::linesChanged();
    // Lines stand in the table of their kind.
    comDjlx.setReadOnly(!gridLines.isEmpty());
  }
  report::Report draftReport() override { return draftDocumentReport(draftFamily(), draft()); }

 private:
  const DocumentFamily& chosenKind() const { return documentFamily(comDjlx.key()); }
  void kindChanged() {
    if (gridLines.isEmpty()) setNumber(newDocumentNumber(chosenKind(), draft().date));
  }

  ui::Field& comDjlx = field("comDjlx");
};

// ---- goods list, one line ----------------------------------------------------------------------------------------

constexpr auto kStaging =
    inventory_parts::stagingColumns(std::array{ui::ColumnSpec{"ts_note", "备注", ColumnKind::Text, 16}});
constexpr auto kPickGrids = inventory_parts::pickGrids(kStaging);
class TF_Bsby_Add : public GoodsPickScreen {
 public:
  TF_Bsby_Add()
      : GoodsPickScreen(inventory_parts::pickOf("F_Bsby_Add", "报损报溢 - 选择商品", kPickGrids,
                                                rulesOf<write_off::rules>, "F_Bsby_Sele")) {}
};

constexpr ui::FieldSpec kLineFields[] = {
    {"tsl", "数量：", FieldKind::Quantity, "", 0, ui::NoMinus},
    {"tdj", "单价：", FieldKind::Money},
    {"tzje", "金额：", FieldKind::Money},
    {"tnote", "备注：", FieldKind::Text, "jxc_bssp.bs_note", 0, ui::OffersRemarks},
};
constexpr LineScreenSpec kLine = {.screen = {.name = "F_Bsby_Sele",
                                             .title = "报损报溢商品明细",
                                             .fields = kLineFields,
                                             .commands = trading_parts::okCancel,
                                             .focus = "tsl"},
                                  .rules = rulesOf<write_off::rules>,
                                  .price = "tdj"};

class TF_Bsby_Sele : public LineScreen {
 public:
  TF_Bsby_Sele() : LineScreen(kLine) {}
};

const ui::Registered<TF_Bsby> kRegistered{"F_Bsby"};
const ui::Registered<TF_Bsby_Add> kRegisteredAdd{"F_Bsby_Add"};
const ui::Registered<TF_Bsby_Sele> kRegisteredSele{"F_Bsby_Sele"};
const RegisteredImport kRegisteredImport{"F_Bsby_Import", rulesOf<write_off::rules>};

}  // namespace bsby_detail
}  // namespace jxc
