#include "stock/screens/repair_screen.h"

#include "core/clock.h"
#include "core/fillers.h"
#include "core/session.h"
#include "stock/stock_sync.h"
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
constexpr std::string_view kRecomputeForm[] = {"tdate1 comCk"};
constexpr RepairScreenSpec kRecompute = {
    .screen = {.name = "F_Kccx_Js",
               .title = "重新计算结存数据",
               .fields = kRecomputeFields,
               .commands = kCommands,
               .focus = "tdate1"},
    .form = kRecomputeForm,
    .warning =
        "从开始日期起重新计算库存流水的结存数量、成本均价和结存金额，\n并更正当前库存、商品成本均价和销售总数。\n"
        "计算之前请先备份数据。",
    .question = "重新计算会修改期末结存及其他数据，\r\n\r\n并且不可恢复。现在是否重新计算？",
    .running = "正在重新计算：",
    .done = "重新计算完成！",
};

constexpr ui::FieldSpec kCostFields[] = {
    {"tdate1", "开始日期：", FieldKind::Date},
    {"comCk", "仓库：", FieldKind::Combo},
    {"chkJg", "修改原始单据的价格（销售单修改成本价）", FieldKind::Check},
};
constexpr std::string_view kCostForm[] = {"tdate1 comCk", "chkJg"};
constexpr RepairScreenSpec kCost = {
    .screen = {.name = "F_Jxctj_Tb",
               .title = "出库成本价同步",
               .fields = kCostFields,
               .commands = kCommands,
               .focus = "tdate1"},
    .form = kCostForm,
    .warning =
        "先录入销售、后补录较早的采购时，\n已出库商品的成本价不会自动更新。\n"
        "同步把开始日期之后出库商品的成本价改为当时的成本均价。\n同步会修改数据并且不可恢复，请先备份数据。",
    .question = "价格同步会修改数据，\r\n\r\n并且不可恢复。现在是否同步？",
    .running = "正在同步：",
    .done = "单价同步完成！",
};

constexpr ui::FieldSpec kSyncFields[] = {{"comKctb", "同步方式：", FieldKind::Combo}};
constexpr std::string_view kSyncForm[] = {"comKctb"};
constexpr RepairScreenSpec kSync = {
    .screen =
        {.name = "F_Kccx_Tb", .title = "库存同步", .fields = kSyncFields, .commands = kCommands, .focus = "comKctb"},
    .form = kSyncForm,
    .warning =
        "对“库存核对”列表中的商品，用结存数量替换当前库存，\n或者在库存流水中增加一行“同步”，使结存等于当前库存。\n"
        "同步会修改数据并且不可恢复，请先备份数据。",
    .question = "库存数据同步将修改商品的库存，\r\n\r\n并且不可恢复。现在是否同步？",
    .running = "正在同步：",
    .done = "同步完成！",
};

class TF_Kccx_Js : public LedgerRepairScreen {
 public:
  TF_Kccx_Js() : LedgerRepairScreen(kRecompute) {
    for (ui::Field* each : {&tdate1, &comCk})
      each->onChanged([this] { forgetPosition(); });
  }

 protected:
  bool run(const RepairProgress& progress, RepairPosition& position) override {
    return recomputeLedger(tdate1.text(), warehouse(), progress, &position);
  }
};

class TF_Jxctj_Tb : public LedgerRepairScreen {
 public:
  TF_Jxctj_Tb() : LedgerRepairScreen(kCost) {
    for (ui::Field* each : {&tdate1, &comCk, &chkJg})
      each->onChanged([this] { forgetPosition(); });
  }
  ui::Field& chkJg = field("chkJg");

 protected:
  bool run(const RepairProgress& progress, RepairPosition& position) override {
    return syncOutgoingCost(tdate1.text(), warehouse(), chkJg.isChecked(), progress, &position);
  }
};

class TF_Kccx_Tb : public RepairScreen {
 public:
  TF_Kccx_Tb() : RepairScreen(kSync) {
    comKctb.setItems({{QStringLiteral("用结存数量替换当前库存数量"), QStringLiteral("0")},
                      {QStringLiteral("用当前库存数量替换结存数量"), QStringLiteral("1")}});
    comKctb.onChanged([this] { forgetPosition(); });
  }
  bool syncAll(const RowSet& places) {
    places_ = places;
    return showModal();
  }
  ui::Field& comKctb = field("comKctb");

 protected:
  bool run(const RepairProgress& progress, RepairPosition& position) override {
    const SyncWay way = comKctb.key() == u"0" ? SyncWay::StockFollows : SyncWay::LedgerFollows;
    return syncStock(places_, way, progress, &position);
  }

 private:
  RowSet places_;
};

const ui::Registered<TF_Kccx_Js> kRecomputeRegistered{"F_Kccx_Js"};
const ui::Registered<TF_Jxctj_Tb> kCostRegistered{"F_Jxctj_Tb"};
const ui::Registered<TF_Kccx_Tb> kSyncRegistered{"F_Kccx_Tb"};

}  // namespace repair_screen_detail

RepairScreen::RepairScreen(const RepairScreenSpec& spec)
    : Screen(spec.screen), description_(spec), state_(new QLabel(this)) {
  state_->setObjectName(QStringLiteral("state"));
  panel().warning(QString::fromUtf8(spec.warning));
  panel().form(spec.form);
  panel().widget(state_).stretch().buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { start(); });
}

bool LedgerRepairScreen::repairFrom(const QString& date, const QString& warehouse) {
  date_ = date;
  warehouse_ = warehouse;
  const bool finished = showModal();
  date_.clear();
  warehouse_.clear();
  return finished;
}

void LedgerRepairScreen::activate() {
  Filter bound;
  addWarehouseBinding(bound);
  comCk.setItems(fillWarehouseCombo(isWarehouseBound() ? QString() : QStringLiteral("所有仓库"), bound));
  if (!warehouse_.isEmpty()) comCk.setKey(warehouse_);
  tdate1.setText(date_.isEmpty() ? clock::today().left(8) + QStringLiteral("01") : date_);
  forgetPosition();
}

QString LedgerRepairScreen::warehouse() {
  const QString key = comCk.key();
  return key == QStringView(allKey) ? QString() : key;
}

void RepairScreen::forgetPosition() {
  position_ = {};
  state_->clear();
}

void RepairScreen::start() {
  if (!checkFields()) return;
  if (position_.isEmpty() && !prompt().ask(QString::fromUtf8(description_.question))) return;
  bool finished = false;
  {
    ui::Progress progress(windowTitle(), this);
    finished = run(
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

bool syncListed(const RowSet& places) {
  return ui::screenAs<repair_screen_detail::TF_Kccx_Tb>("F_Kccx_Tb").syncAll(places);
}

}  // namespace jxc
