#include "stock/screens/repair_screen.h"

#include "core/clock.h"
#include "core/fillers.h"
#include "core/session.h"
#include "ui/progress.h"

#include <QLabel>

namespace jxc {
namespace repair_screen_detail {

using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::FieldSpec kRecomputeFields[] = {
    {"tdate1", "开始日期：", FieldKind::Date},
    {"comCk", "仓库：", FieldKind::Combo},
};
constexpr RepairScreenSpec kRecompute = {
    .screen = {.name = "F_Kccx_Js",
               .title = "重新计算结存数据",
               .fields = kRecomputeFields,
               .commands = kCommands,
               .focus = "tdate1"},
    .warning =
        "从开始日期起重新计算库存流水的结存数量、成本均价和结存金额，\n并更正当前库存、商品成本均价和销售总数。\n"
        "计算之前请先备份数据。",
    .question = "重新计算会修改期末结存及其他数据，\r\n\r\n并且不可恢复。现在是否重新计算？",
    .running = "正在重新计算：",
    .done = "重新计算完成！",
};

constexpr ui::FieldSpec kSyncFields[] = {
    {"tdate1", "开始日期：", FieldKind::Date},
    {"comCk", "仓库：", FieldKind::Combo},
    {"chkJg", "修改原始单据的价格（销售单修改成本价）", FieldKind::Check},
};
constexpr RepairScreenSpec kSync = {
    .screen = {.name = "F_Jxctj_Tb",
               .title = "出库成本价同步",
               .fields = kSyncFields,
               .commands = kCommands,
               .focus = "tdate1"},
    .warning =
        "先录入销售、后补录较早的采购时，\n已出库商品的成本价不会自动更新。\n"
        "同步把开始日期之后出库商品的成本价改为当时的成本均价。\n同步会修改数据并且不可恢复，请先备份数据。",
    .question = "价格同步会修改数据，\r\n\r\n并且不可恢复。现在是否同步？",
    .running = "正在同步：",
    .done = "单价同步完成！",
};

class TF_Kccx_Js : public RepairScreen {
 public:
  TF_Kccx_Js() : RepairScreen(kRecompute) {}

 protected:
  bool run(const QString& date, const QString& warehouse, const RepairProgress& progress,
           RepairPosition& position) override {
    return recomputeLedger(date, warehouse, progress, &position);
  }
};

class TF_Jxctj_Tb : public RepairScreen {
 public:
  TF_Jxctj_Tb() : RepairScreen(kSync) {
    chkJg.onChanged([this] { forgetPosition(); });
  }
  ui::Field& chkJg = field("chkJg");

 protected:
  bool run(const QString& date, const QString& warehouse, const RepairProgress& progress,
           RepairPosition& position) override {
    return syncOutgoingCost(date, warehouse, chkJg.isChecked(), progress, &position);
  }
};

const ui::Registered<TF_Kccx_Js> kRecomputeRegistered{"F_Kccx_Js"};
const ui::Registered<TF_Jxctj_Tb> kSyncRegistered{"F_Jxctj_Tb"};

}  // namespace repair_screen_detail

RepairScreen::RepairScreen(const RepairScreenSpec& spec)
    : Screen(spec.screen), description_(spec), state_(new QLabel(this)) {
  state_->setObjectName(QStringLiteral("state"));
  panel().warning(QString::fromUtf8(spec.warning));
  if (hasField("chkJg"))
    panel().form({"tdate1 comCk", "chkJg"});
  else
    panel().form({"tdate1 comCk"});
  panel().widget(state_).stretch().buttons("| btnOK btnCancel");
  for (ui::Field* each : {&tdate1, &comCk})
    each->onChanged([this] { forgetPosition(); });
  on(command("btnOK"), [this] { start(); });
}

bool RepairScreen::repairFrom(const QString& date, const QString& warehouse) {
  date_ = date;
  warehouse_ = warehouse;
  const bool finished = showModal();
  date_.clear();
  warehouse_.clear();
  return finished;
}

void RepairScreen::activate() {
  Filter bound;
  addWarehouseBinding(bound);
  comCk.setItems(fillWarehouseCombo(isWarehouseBound() ? QString() : QStringLiteral("所有仓库"), bound));
  if (!warehouse_.isEmpty()) comCk.setKey(warehouse_);
  tdate1.setText(date_.isEmpty() ? clock::today().left(8) + QStringLiteral("01") : date_);
  forgetPosition();
}

void RepairScreen::forgetPosition() {
  position_ = {};
  state_->clear();
}

void RepairScreen::start() {
  if (!checkFields()) return;
  if (position_.isEmpty() && !prompt().ask(QString::fromUtf8(description_.question))) return;
  const QString key = comCk.key();
  const QString warehouse = key == QStringView(allKey) ? QString() : key;
  bool finished = false;
  {
    ui::Progress progress(windowTitle(), this);
    finished = run(
        tdate1.text(), warehouse,
        [&](int done, int total) {
          const QString place = QStringLiteral("%1 / %2").arg(done).arg(total);
          progress.setText(QString::fromUtf8(description_.running) + place);
          state_->setText(QStringLiteral("已停止：完成 ") + place + QStringLiteral("，按“确定”从停止处继续。"));
          return progress.step(done * 100 / total);
        },
        position_);
  }
  if (!finished) return;
  state_->clear();
  prompt().notice(QString::fromUtf8(description_.done));
  accept();
}

}  // namespace jxc
