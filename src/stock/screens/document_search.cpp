#include "stock/screens/document_search.h"

#include "core/fillers.h"
#include "masterdata/goods_classes.h"
#include "stock/document_list.h"

#include <QPushButton>

#include <vector>

namespace jxc {
namespace document_search_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"tgoods", "商品：", FieldKind::Text, "", 50},
    {"comUser", "经办人：", FieldKind::Combo},
    {"comCkLx", "仓库为：", FieldKind::Combo},  // of a transfer
};
constexpr std::span<const ui::FieldSpec> kWithoutEnds = std::span(kFields).first(2);
constexpr ui::FieldSpec kWithClass[] = {kFields[0], kFields[1], {"tsplb", "商品类别：", FieldKind::Combo}};
constexpr ui::FieldSpec kOfSums[] = {{"tdj", "单据号、备注：", FieldKind::Text, "", 50}, kFields[1]};
constexpr ui::CommandSpec kCommands[] = {
    {"btnAll", "全部", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};

constexpr ui::ScreenSpec form(std::string_view name, std::string_view title, std::span<const ui::FieldSpec> fields) {
  return {.name = name, .title = title, .fields = fields, .commands = kCommands, .focus = fields.front().name};
}
constexpr ui::ScreenSpec kAny = form("F_Djcx_Cx", "单据高级查询", kWithoutEnds);
constexpr ui::ScreenSpec kTransfers = form("F_Kcdb_Cx", "库存调拨高级查询", kFields);
constexpr ui::ScreenSpec kSplits = form("F_Cfkb_Cx", "拆分捆绑高级查询", kWithoutEnds);
constexpr ui::ScreenSpec kStatements = form("F_WlzwKh_Cx", "往来账务高级查询", kWithClass);
constexpr ui::ScreenSpec kSums = form("F_Spcgtj_Cx", "统计高级查找", kOfSums);

/// What inputs ask for, where a form has them.
struct Input {
  std::string_view name;
  QString Criteria::*value;
};
constexpr Input kTexts[] = {{"tgoods", &Criteria::group}, {"tdj", &Criteria::document}},
                kLists[] = {{"comUser", &Criteria::employee}, {"tsplb", &Criteria::goodsClass}};

template <const ui::ScreenSpec& Spec>
struct Form : DocumentSearch {
  Form() : DocumentSearch(Spec) {}
};
const ui::Registered<Form<kAny>> kRegistered{kAny.name};
const ui::Registered<Form<kTransfers>> kRegisteredTransfers{kTransfers.name};
const ui::Registered<Form<kSplits>> kRegisteredSplits{kSplits.name};
const ui::Registered<Form<kStatements>> kRegisteredStatements{kStatements.name};
const ui::Registered<Form<kSums>> kRegisteredSums{kSums.name};

}  // namespace document_search_detail

DocumentSearch::DocumentSearch(const ui::ScreenSpec& spec) : Screen(spec) {
  std::vector<std::string_view> rows;
  for (const ui::FieldSpec& each : spec.fields)
    rows.push_back(each.name);
  panel().form(rows).buttons("btnAll | btnOK btnCancel");
  on(command("btnOK"), [this] { accept(); });
  on(command("btnAll"), [this] {
    for (ui::Field* each : fields())
      each->spec().kind == ui::FieldKind::Combo ? each->setIndex(0) : each->clear();
    accept();
  });
}

bool MoreConditions::ask(QPushButton& command) {
  if (!ui::screenAs<DocumentSearch>(form_).ask(asked_)) return false;
  // Nobody wonders later where the other documents are.
  command.setText(word_.toString() + (asked_ == Criteria() ? QStringLiteral("(F3)") : QStringLiteral("：已限定(F3)")));
  return true;
}

bool DocumentSearch::ask(Criteria& criteria) {
  asked_ = criteria;
  if (!showModal()) return false;
  for (const auto& [name, text] : document_search_detail::kTexts)
    if (hasField(name)) criteria.*text = field(name).trimmed();
  for (const auto& [name, key] : document_search_detail::kLists)
    if (hasField(name)) criteria.*key = field(name).key() == QStringView(allKey) ? QString() : field(name).key();
  criteria.boxes = hasField("comCkLx") ? field("comCkLx").key().toUInt() : 0;
  return true;
}

void DocumentSearch::activate() {
  field("comUser").setItems(fillEmployees({}, QStringLiteral("所有经办人")));
  if (hasField("tsplb")) field("tsplb").setItems(goodsClassItems());
  for (const auto& [name, text] : document_search_detail::kTexts)
    if (hasField(name)) field(name).setText(asked_.*text);
  for (const auto& [name, key] : document_search_detail::kLists)
    if (hasField(name)) field(name).setKey((asked_.*key).isEmpty() ? QString::fromUtf16(allKey) : asked_.*key);
  if (!hasField("comCkLx")) return;
  field("comCkLx").setItems({{QStringLiteral("调出或调入仓库"), QStringLiteral("0")},
                             {QStringLiteral("调出仓库"), QString::number(kGoesOut)},
                             {QStringLiteral("调入仓库"), QString::number(kComesIn)}});
  field("comCkLx").setKey(QString::number(asked_.boxes));
}

}  // namespace jxc
