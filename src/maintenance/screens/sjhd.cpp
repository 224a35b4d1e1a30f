// 数据核对: proves that the books agree and lists what does not: the first wrong row of each kind, and what mends it.
#include "core/reading.h"
#include "maintenance/prove.h"
#include "stock/screens/repair_screen.h"
#include "ui/paragraph.h"
#include "ui/progress.h"
#include "ui/screen.h"

namespace jxc {
namespace sjhd_detail {

using ui::ColumnKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"weight", "结论", ColumnKind::Text, 6},  {"checked", "核对项目", ColumnKind::Text, 14},
    {"num", "处数", ColumnKind::Number, 6},   {"place", "第一处", ColumnKind::Text, 44},
    {"stored", "现为", ColumnKind::Text, 22}, {"due", "应为", ColumnKind::Text, 22},
    {"reason", "原因", ColumnKind::Text, 40}, {"repair", "处理", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {{"gridFindings", "核对结果", kColumns, "按F5开始核对"}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "开始核对", "F5"},
                                         {"btn_Cxjs", "重新计算结存", "F6"},
                                         {"btn_Jgtb", "出库成本价同步", "F7"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Sjhd", .title = "数据核对", .grids = kGrids, .commands = kCommands, .focus = "gridFindings"};

class TF_Sjhd : public ui::Screen {
 public:
  TF_Sjhd()
      : Screen(kScreen),
        list_(grid("gridFindings")),
        summary_(ui::paragraph(this, "summary")),
        detail_(ui::paragraph(this, "detail")) {
    panel()
        .text(QStringLiteral(
            "在内存中重新推算库存、成本、现金、往来和发票，与已保存的数据比较。只读取，不修改任何数据。"))
        .widget(summary_)
        .grid("gridFindings")
        .widget(detail_)
        .buttons("btn_Cxjs btn_Jgtb | btnOK btnCancel");
    list_.setRowLook([](const Row& row) {
      const auto weight = static_cast<proof::Weight>(row.integer("level"));
      if (weight == proof::Weight::Wrong) return ui::RowLook::Bad;
      return weight == proof::Weight::Note ? ui::RowLook::Muted : ui::RowLook::Normal;
    });
    list_.onCurrentChanged([this] { showDetail(); });
    on(command("btnOK"), [this] { prove(); });
    on(command("btn_Cxjs"), [this] { repair("F_Kccx_Js"); });
    on(command("btn_Jgtb"), [this] { repair("F_Jxctj_Tb"); });
  }

 protected:
  void activate() override {
    list_.setEmptyText(QStringLiteral("按F5开始核对"));
    list_.setRows(proof::Proof{}.rows());
    summary_->clear();
    showDetail();
  }

 private:
  void prove() {
    const proof::Proof proof = proof::proveAccount(ui::progressInWords(windowTitle(), this));
    list_.setEmptyText(proof.finished ? QStringLiteral("没有发现错误") : QStringLiteral("核对已停止"));
    list_.setRows(proof.rows());
    summary_->setText(proof.summary());
    if (!list_.isEmpty()) list_.selectRow(0);
    showDetail();
    list_.focusRows();
  }

  // What was found before is no longer true.
  void repair(const char* screen) {
    if (ui::screenAs<LedgerRepairScreen>(screen).repairFrom({}, {})) activate();
  }

  void showDetail() {
    const auto row = list_.current();
    if (!row) return detail_->clear();
    const auto line = [&row](const char16_t* name, std::string_view field) {
      const QString text = row->text(field);
      return text.isEmpty() ? QString() : QString::fromUtf16(name) + text;
    };
    QStringList lines{line(u"第一处：", "place"), line(u"现为：", "stored"), line(u"应为：", "due"),
                      line(u"原因：", "reason"), line(u"处理：", "repair")};
    lines.removeAll(QString());
    detail_->setText(lines.join(u'\n'));
  }

  ui::Grid& list_;
  QLabel* summary_;
  QLabel* detail_;
};

const ui::Registered<TF_Sjhd> kRegistered{"F_Sjhd"};

}  // namespace sjhd_detail
}  // namespace jxc
