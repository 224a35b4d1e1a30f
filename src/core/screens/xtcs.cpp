#include "core/screens/xtcs.h"

#include "core/screens/idle_lock.h"
#include "core/session.h"
#include "ui/display.h"

#include <QPushButton>
#include <QTabWidget>

#include <string>
#include <vector>

namespace jxc {
namespace xtcs_detail {

using G = ParameterGroup;
using ui::FieldKind;

constexpr FieldKind kindOf(ParameterKind kind) {
  switch (kind) {
    case ParameterKind::Choice:
      return FieldKind::Combo;
    case ParameterKind::Flag:
      return FieldKind::Check;
    case ParameterKind::Number:
      return FieldKind::Integer;
    case ParameterKind::Decimal:
      return FieldKind::Percent;
    case ParameterKind::Secret:
      return FieldKind::Password;
    case ParameterKind::Text:
      break;
  }
  return FieldKind::Text;
}

struct Inputs {
  std::vector<std::string> columns;  // what the descriptions point to
  std::vector<ui::FieldSpec> fields;
};

/// Every parameter with an input becomes one.
const Inputs& inputs() {
  static const Inputs all = [] {
    Inputs made;
    made.columns.reserve(parameterTable().size());
    for (const auto& p : parameterTable()) {
      if (p.input.empty()) continue;
      const auto& column = made.columns.emplace_back(std::string(p.table) + '.' + std::string(p.field));
      const bool isNumber = p.kind == ParameterKind::Number || p.kind == ParameterKind::Decimal;
      made.fields.push_back({.name = p.input,
                             .label = p.label,
                             .kind = kindOf(p.kind),
                             .column = column,
                             .width = p.width,
                             .flags = isNumber ? unsigned(ui::NoMinus) : unsigned(ui::NoFlags),
                             .suffix = p.suffix});
    }
    made.fields.push_back({.name = "tIdle",  // of the workstation, not of the set
                           .label = "无人操作自动锁定：",
                           .kind = FieldKind::Integer,
                           .width = 4,
                           .flags = ui::NoMinus,
                           .suffix = "分钟（0 为不锁定）"});
    return made;
  }();
  return all;
}

constexpr ui::CommandSpec kCommands[] = {{"btnDefault", "恢复默认系统设置"},
                                         {"btnEmail", "发送测试邮件(仅测试,不含附件)"},
                                         {"btnOK", "确定", "F5"},
                                         {"btnCancel", "取消", "Esc"}};

ui::ScreenSpec description() {
  return {.name = "F_Xtcs", .title = "系统设置", .fields = inputs().fields, .commands = kCommands, .focus = "tname"};
}

const ParameterDefinition* dependentOf(const ParameterDefinition& box) {
  for (const auto& p : parameterTable()) {
    if (!p.switchedBy.empty() && p.switchedBy == box.input) return &p;
  }
  return nullptr;
}

/// The inputs of a group: lists and numbers in one raster, then the boxes, each with what it switches behind it.
void place(ui::Panel area, G group) {
  std::vector<std::string_view> raster;
  for (const auto& p : parameterTable()) {
    if (p.group == group && p.kind != ParameterKind::Flag && p.switchedBy.empty()) raster.push_back(p.input);
  }
  if (!raster.empty()) area.form(raster);
  for (const auto& p : parameterTable()) {
    if (p.group != group || p.kind != ParameterKind::Flag) continue;
    const auto* dependent = dependentOf(p);
    area.row(std::string(p.input) + (dependent ? ' ' + std::string(dependent->input) : std::string()) + " |");
  }
}

QWidget* frameOf(const ui::Field& field) {
  return field.widget()->parentWidget();
}

}  // namespace xtcs_detail

TF_Xtcs::TF_Xtcs() : Screen(xtcs_detail::description()) {
  using xtcs_detail::G;
  using xtcs_detail::place;
  auto area = panel();
  auto [company, mail] = area.page("cxTab1", QStringLiteral("公司信息"), ui::Panel::Scrolls).columns();
  place(company.group(QStringLiteral("公司信息")), G::Company);
  company.group(QStringLiteral("本机")).form({"tIdle"});
  company.stretch();
  auto digest = mail.group(QStringLiteral("邮件自动发送    只有系统管理员可以使用"));
  place(digest, G::Mail);
  digest.row("btnEmail |");
  mail.stretch();

  auto system = area.page("cxTab2", QStringLiteral("系统参数"), ui::Panel::Scrolls);
  auto [left, rest] = system.columns(1, 2);
  auto [middle, right] = rest.columns(1, 1);
  place(left.group(QStringLiteral("采购")), G::Purchasing);
  place(left.group(QStringLiteral("库存")), G::Stock);
  place(left.group(QStringLiteral("商品")), G::Goods);
  left.stretch();
  place(middle.group(QStringLiteral("销售")), G::Sales);
  place(middle.group(QStringLiteral("绑定与现金银行")), G::Binding);
  middle.stretch();
  place(right.group(QStringLiteral("单据")), G::Documents);
  place(right.group(QStringLiteral("小数位数与货币")), G::System);
  right.stretch();

  auto [till, scales] = area.page("cxTab3", QStringLiteral("POS参数"), ui::Panel::Scrolls).columns();
  place(till.group(QStringLiteral("POS前端")), G::Till);
  place(till.group(QStringLiteral("钱箱、客显")), G::Display);
  till.stretch();
  place(scales.group(QStringLiteral("电子秤条码")), G::Scales);
  place(scales.group(QStringLiteral("微信支付宝")), G::Hidden);
  scales.stretch();
  area.buttons("btnDefault | btnOK btnCancel");

  pages_ = area.tabs();
  mail_ = xtcs_detail::frameOf(field("temail"));
  mail_->setObjectName(QStringLiteral("RzGroupBox_EMail"));
  // Scan to pay is set up by the installer: its keys are no business of the shop.
  auto* gateway = xtcs_detail::frameOf(field("tmchid"));
  gateway->setObjectName(QStringLiteral("RzGroupBox_Wx"));
  gateway->hide();

  on(btnOK, [this] { saveValue(); });
  on(btnDefault, [this] { restoreStandard(); });
  on(btnEmail, [this] { sendTestMail(); });
  for (const auto& p : parameterTable()) {
    if (p.kind == ParameterKind::Number || p.kind == ParameterKind::Decimal) {
      if (!p.input.empty()) field(p.input).widget()->setMaximumWidth(80);
    }
    if (p.kind != ParameterKind::Choice) continue;
    std::vector<ListItem> items;
    for (const auto choice : p.choices)
      items.push_back({ui::qs(choice), QString::number(items.size())});
    field(p.input).setItems(items);
  }
  couple();
}

/// Lists bound to warehouses make no sense while operators are not, and the other way round.
void TF_Xtcs::couple() {
  auto& lists = field("chkShtc");
  auto& operators = field("chkCgyh");
  lists.onChanged([&lists, &operators] {
    if (lists.isChecked()) operators.setChecked(true);
  });
  operators.onChanged([&lists, &operators] {
    if (!operators.isChecked()) lists.setChecked(false);
  });
  for (const auto& p : parameterTable()) {
    if (!p.switchedBy.empty()) field(p.switchedBy).onChanged([this] { followSwitches(); });
  }
}

void TF_Xtcs::followSwitches() {
  for (const auto& p : parameterTable()) {
    if (!p.switchedBy.empty()) field(p.input).setEnabled(field(p.switchedBy).isChecked());
  }
}

void TF_Xtcs::activate() {
  mail_->setVisible(isAdministrator());
  pages_->setCurrentIndex(0);
  showValues(readParameters());
  field("tIdle").load(idleLockMinutes());
}

void TF_Xtcs::showValues(const ParameterValues& values) {
  for (const auto& p : parameterTable()) {
    if (p.input.empty()) continue;
    auto& input = field(p.input);
    if (p.kind == ParameterKind::Choice) {
      input.setIndex(static_cast<int>(values.integer(p.input)));
    } else {
      input.load(values.value(p.input));
    }
  }
  followSwitches();
}

ParameterValues TF_Xtcs::values() {
  ParameterValues values;
  for (const auto& p : parameterTable()) {
    if (p.input.empty()) continue;
    const auto& input = field(p.input);
    const bool isEmptied = p.kind == ParameterKind::Number && input.trimmed().isEmpty();
    values.set(p.input, p.kind == ParameterKind::Choice ? Value(input.index()) : isEmptied ? Value() : input.value());
  }
  return values;
}

void TF_Xtcs::saveValue() {
  auto typed = values();
  if (saveParameters(typed, prompt())) {
    keepIdleLockMinutes(std::max(0, field("tIdle").integer()));
    return accept();
  }
  // The operator may have thought better of putaway or issue before something else was refused.
  field("chkSprk").setChecked(typed.isOn("chkSprk"));
  field("chkSpck").setChecked(typed.isOn("chkSpck"));
}

void TF_Xtcs::restoreStandard() {
  if (!restoreStandardParameters(prompt())) return;
  showValues(readParameters());
  pages_->setCurrentIndex(1);
}

void TF_Xtcs::sendTestMail() {
  if (!checkMailSettings(values(), prompt())) return;
  prompt().notice(QStringLiteral("邮件发送功能尚未提供，邮件没有发送！"));
}

namespace xtcs_detail {
const ui::Registered<TF_Xtcs> kRegistered{"F_Xtcs"};
}

}  // namespace jxc
