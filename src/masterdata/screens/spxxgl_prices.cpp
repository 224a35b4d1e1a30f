#include "masterdata/screens/spxxgl_prices.h"

#include "core/session.h"
#include "core/text.h"

#include <utility>

namespace jxc {
namespace spxxgl_prices_detail {

using ui::FieldKind;

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::FieldSpec kPfjFields[] = {
    {"comFw", "商品范围：", FieldKind::Combo}, {"comJb", "批发价级别：", FieldKind::Combo},
    {"comJs", "计算依据：", FieldKind::Combo}, {"tjgbl", "价格比例：", FieldKind::Percent, "", 0, ui::NoMinus},
    {"comQz", "取整到：", FieldKind::Combo},
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

/// What prices are computed from; what goods cost only for who may see it: a price that is made of it tells it.
std::vector<ListItem> sources() {
  std::vector<ListItem> items = namesOf(bulkPriceSources());
  if (!session().canSeeCost)
    std::erase_if(items, [](const ListItem& each) { return bulkPriceSources()[each.key.toULongLong()].isCost; });
  items.push_back({QStringLiteral("固定价格"), QString()});  // no key: it is no column
  return items;
}

}  // namespace spxxgl_prices_detail

TF_Spxxgl_Pfj::TF_Spxxgl_Pfj() : Screen(spxxgl_prices_detail::kPfj) {
  using namespace spxxgl_prices_detail;
  panel()
      .form({"comFw", "comJb", "comJs", "tjgbl", "comQz"})
      .text(QStringLiteral("批发价=预设售价 X 0.xxxx 的格式，再取整；选择“固定价格”时直接填写价格"))
      .buttons("| btnOK btnCancel");
  comJb.setItems(namesOf(bulkPriceTargets()));
  comJs.onChanged([this] { sourceChanged(); });
  std::vector<ListItem> steps = {{QStringLiteral("不取整"), QStringLiteral("0")}};
  for (const auto* step : {u"0.01", u"0.1", u"0.5", u"1", u"5", u"10"})
    steps.push_back({QString::fromUtf16(step) + u'元', QString::fromUtf16(step)});
  comQz.setItems(steps);
  on(command("btnOK"), [this] { setPrices(); });
}

bool TF_Spxxgl_Pfj::isFixed() const {
  return comJs.key().isEmpty();
}

void TF_Spxxgl_Pfj::sourceChanged() {
  tjgbl.setLabel(isFixed() ? QStringLiteral("价格：") : QStringLiteral("价格比例："));
}

bool TF_Spxxgl_Pfj::run(const QString& classNumber, const QString& className, std::vector<std::int64_t> marked) {
  classNumber_ = classNumber;
  marked_ = std::move(marked);
  comFw.setItems({{QStringLiteral("当前类别"), QStringLiteral("0")},
                  {QStringLiteral("全部商品"), QStringLiteral("1")},
                  {QStringLiteral("选中的商品"), QStringLiteral("2")}});
  // Whoever has marked several means them.
  comFw.setKey(marked_.size() > 1 ? u"2"_qs : u"0"_qs);
  comFw.widget()->setToolTip(QStringLiteral("当前类别：%1（不含下级类别）").arg(className));
  comJs.setItems(spxxgl_prices_detail::sources());
  comJs.setIndex(0);
  comQz.setIndex(0);
  sourceChanged();
  tjgbl.setNumber(1);
  return showModal();
}

void TF_Spxxgl_Pfj::setPrices() {
  BulkGoods goods;
  if (comFw.key() == u"0") goods.classNumber = classNumber_;
  if (comFw.key() == u"2") goods.ids = marked_;
  BulkPrice price{.target = bulkPriceTargets()[static_cast<std::size_t>(comJb.index())],
                  .source = {},
                  .factor = tjgbl.number(),
                  .step = comQz.key().toDouble()};
  if (!isFixed()) price.source = bulkPriceSources()[comJs.key().toULongLong()];
  // Prices of thousands of goods are gone with one key: the operator sees once more what he is about to do.
  QString now = numberText(tjgbl.number());
  if (price.source) now = comJs.text() + u" X "_qs + now;
  if (price.step > 0) now += QStringLiteral("，取整到") + comQz.text();
  if (!prompt().ask(QStringLiteral("%1（共 %2 个）的%3将改为%4，确定修改吗？")
                        .arg(comFw.text())
                        .arg(countGoods(goods))
                        .arg(comJb.text(), now)))
    return;
  prompt().notice(QStringLiteral("成功修改：%1  个商品的价格。").arg(setBulkPrice(price, goods)));
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
