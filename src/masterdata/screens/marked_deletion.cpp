#include "masterdata/screens/marked_deletion.h"

#include "ui/progress.h"

namespace jxc {
namespace marked_deletion_detail {

constexpr ui::FieldSpec kFields[] = {{"tResult", "", ui::FieldKind::Memo, "", 0, ui::ReadOnly}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "开始删除", "F5"}, {"btnCancel", "退出", "Esc"}};

}  // namespace marked_deletion_detail

MarkedDeletion::MarkedDeletion(std::string_view name, std::string_view title)
    : Screen({.name = name,
              .title = title,
              .fields = marked_deletion_detail::kFields,
              .commands = marked_deletion_detail::kCommands}) {
  QWidget& result = *field("tResult").widget();
  result.setAccessibleName(QStringLiteral("删除结果"));
  result.setMinimumSize(fontMetrics().averageCharWidth() * 90, fontMetrics().height() * 16);
  on(command("btnOK"), [this] { deleteAll(); });
}

int MarkedDeletion::run(std::size_t marked, Delete action) {
  action_ = std::move(action);
  deleted_ = 0;
  command("btnOK").setEnabled(marked > 0);
  field("tResult").setText(QStringLiteral("已选中 %1 个商品，按F5开始删除。").arg(marked));
  showModal();
  return deleted_;
}

void MarkedDeletion::deleteAll() {
  const auto outcome = action_(ui::progressOnDemand(QStringLiteral("正在删除商品……"), this));
  if (!outcome) return field("tResult").setText(QStringLiteral("已取消，没有删除任何商品。"));
  deleted_ += outcome->deleted;
  QStringList lines = outcome->refusals;
  lines << QStringLiteral("成功删除：%1  个商品信息。").arg(outcome->deleted);
  field("tResult").setText(lines.join(u'\n'));
  command("btnOK").setEnabled(false);
}

}  // namespace jxc
