#include "core/screens/djbz.h"

#include "core/remarks.h"

#include <QPushButton>

namespace jxc {
namespace djbz_detail {

using ui::ColumnKind;

constexpr ui::FieldSpec kFields[] = {{"tkey", "查找：", ui::FieldKind::Text, "", 32}};
constexpr ui::ColumnSpec kColumns[] = {{"dj_name", "备注内容", ColumnKind::Text, 40},
                                       {"dj_pl", "使用次数", ColumnKind::Number}};
constexpr ui::GridSpec kGrids[] = {{"gridBz", "常用备注", kColumns, "还没有常用备注，按F2增加"}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "选用", "F5"},
                                         {"btnAdd", "增加", "F2"},
                                         {"btnModi", "修改", "F3"},
                                         {"btnDele", "删除", "Ctrl+D"},
                                         {"btnCancel", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Djbz",
                                    .title = "常用备注",
                                    .fields = kFields,
                                    .grids = kGrids,
                                    .commands = kCommands,
                                    .focus = "gridBz"};

}  // namespace djbz_detail

TF_Djbz::TF_Djbz()
    : NamedListScreen(djbz_detail::kScreen, remarkList, QStringLiteral("备注"),
                      [](const QString& typed) { return remarkListStatement(typed); }) {
  on(command("btnOK"), [this] { take(); });
  // Opened by itself the list is there to be kept in order; opened from a document to choose from.
  list.onActivated([this] { command(picking_ ? "btnOK" : "btnModi").click(); });
}

std::optional<QString> TF_Djbz::pick() {
  picking_ = true;
  const bool done = showModal();
  picking_ = false;
  return done ? std::optional(taken_) : std::nullopt;
}

void TF_Djbz::activate() {
  NamedListScreen::activate();
  command("btnOK").setVisible(picking_);
}

void TF_Djbz::take() {
  if (!picking_ || list.currentId() == 0) return;
  taken_ = list.currentText("dj_name");
  bumpRemarkCount(list.currentId());
  accept();
}

namespace djbz_detail {

const ui::Registered<TF_Djbz> kRegistered{"F_Djbz"};

// Inputs of all documents take their remarks from here.
const bool kSource = [] {
  ui::setRemarkSource([] { return ui::screenAs<TF_Djbz>("F_Djbz").pick(); });
  return true;
}();

}  // namespace djbz_detail

}  // namespace jxc
