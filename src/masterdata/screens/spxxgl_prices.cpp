#include "masterdata/screens/spxxgl_prices.h"

namespace jxc {
namespace spxxgl_prices_detail {

using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::FieldSpec kPfjFields[] = {
    {"comFw", "商品范围：", FieldKind::Combo},
    {"comJb", "批发价级别：", FieldKind::Combo},
    {"comJs", "计算依据：", FieldKind::Combo},
    {"tjgbl", "价格比例：", FieldKind::Percent, "", 0, ui::NoMinus},
};
constexpr ui::ScreenSpec kPfj = {
    .name = "F_Spxxgl_Pfj", .title = "批量定义批发价", .fields = kPfjFields, .commands = kCommands, .focus = "comJb"};

constexpr ui::FieldSpec kTcFields[] = {
    {"tspmc", "商品：", FieldKind::Text, "", 0, ui::ReadOnly},
    {"tygtc", "验光师提成：", FieldKind::Percent},
    {"comYgtc", "单位：", FieldKind::Combo},
    {"tjgtc", "加工师提成：", FieldKind::Percent},
    {"comJgtc", "单位：", FieldKind::Combo},
    {"txsytc", "销售员提成：", FieldKind::Percent},
    {"comXsytc", "单位：", FieldKind::Combo},
};
constexpr ui::ScreenSpec kTc = {
    .name = "F_Spxxgl_Tc", .title = "POS销售提成设置", .fields = kTcFields, .commands = kCommands, .focus = "tygtc"};

std::vector<ListItem> namesOf(const std::vector<PriceColumn>& columns) {
  std::vector<ListItem> items;
  for (const PriceColumn& one : columns)
    items.push_back({QString::fromUtf16(one.name), QString::number(items.size())});
  return items;
}

}  // namespace spxxgl_prices_detail

TF_Spxxgl_Pfj::TF_Spxxgl_Pfj() : Screen(spxxgl_prices_detail::kPfj) {
  panel()
      .form({"comFw", "comJb", "comJs", "tjgbl"})
      .text(QStringLiteral("批发价=预设售价 X 0.xxxx 的格式"))
      .buttons("| btnOK btnCancel");
  comJb.setItems(spxxgl_prices_detail::namesOf(bulkPriceTargets()));
  comJs.setItems(spxxgl_prices_detail::namesOf(bulkPriceSources()));
  command("btnOK").setProperty("main", true);
  on(command("btnOK"), [this] { setPrices(); });
}

bool TF_Spxxgl_Pfj::run(const QString& classNumber, const QString& className) {
  classNumber_ = classNumber;
  comFw.setItems(
      {{QStringLiteral("当前类别"), QStringLiteral("0")}, {QStringLiteral("全部商品"), QStringLiteral("1")}});
  comFw.widget()->setToolTip(QStringLiteral("当前类别：%1（不含下级类别）").arg(className));
  tjgbl.setNumber(1);
  return showModal();
}

void TF_Spxxgl_Pfj::setPrices() {
  const bool all = comFw.index() == 1;
  const auto& target = bulkPriceTargets()[static_cast<std::size_t>(comJb.index())];
  const auto& source = bulkPriceSources()[static_cast<std::size_t>(comJs.index())];
  // Prices of thousands of goods are gone with one key: the operator sees once more what he is about to do.
  const QString question = QStringLiteral("%1的%2将改为%3 X %4，确定修改吗？")
                               .arg(comFw.text(), comJb.text(), comJs.text(), numberText(tjgbl.number()));
  if (!prompt().ask(question)) return;
  setBulkPrice(target, source, tjgbl.number(), all ? std::nullopt : std::optional(classNumber_));
  accept();
}

TF_Spxxgl_Tc::TF_Spxxgl_Tc() : Screen(spxxgl_prices_detail::kTc) {
  panel()
      .form({"tspmc", "tygtc comYgtc", "tjgtc comJgtc", "txsytc comXsytc"})
      .text(QStringLiteral("注：选择%就是按照销售额比例提成，\n选择“元”就是按照每件固定金额提成。"))
      .buttons("| btnOK btnCancel");
  for (const auto* unit : {"comYgtc", "comJgtc", "comXsytc"}) {
    field(unit).setItems({{QStringLiteral("%"), QStringLiteral("0")}, {QStringLiteral("元"), QStringLiteral("1")}});
  }
  command("btnOK").setProperty("main", true);
  on(command("btnOK"), [this] { saveValue(); });
}

bool TF_Spxxgl_Tc::edit(const QString& goods, const QString& name) {
  goods_ = goods;
  const PosCommissions now = readPosCommissions(goods);
  field("tspmc").setText(name);
  const auto show = [this](const char* value, const char* unit, const PosCommission& commission) {
    field(value).setNumber(commission.value);
    field(unit).setIndex(commission.yuan ? 1 : 0);
  };
  show("tygtc", "comYgtc", now.optometrist);
  show("tjgtc", "comJgtc", now.workshop);
  show("txsytc", "comXsytc", now.salesman);
  return showModal();
}

void TF_Spxxgl_Tc::saveValue() {
  const auto read = [this](const char* value, const char* unit) {
    return PosCommission{field(value).number(), field(unit).index() == 1};
  };
  const PosCommissions commissions{.optometrist = read("tygtc", "comYgtc"),
                                   .workshop = read("tjgtc", "comJgtc"),
                                   .salesman = read("txsytc", "comXsytc")};
  if (savePosCommissions(goods_, commissions, prompt())) accept();
}

namespace spxxgl_prices_detail {
const ui::Registered<TF_Spxxgl_Pfj> kRegisteredPfj{"F_Spxxgl_Pfj"};
const ui::Registered<TF_Spxxgl_Tc> kRegisteredTc{"F_Spxxgl_Tc"};
}  // namespace spxxgl_prices_detail

}  // namespace jxc
