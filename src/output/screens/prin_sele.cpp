#include "output/screens/prin_sele.h"

#include "core/text.h"

#include <array>

namespace jxc {
namespace prin_sele_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"rPrin1", "销售单", FieldKind::Radio},
    {"rPrin2", "销售单(不含售价)", FieldKind::Radio},
    {"rPrin3", "销售单(含零售价)", FieldKind::Radio},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_PrinSele", .title = "选择打印格式", .fields = kFields, .commands = kCommands, .focus = "rPrin1"};

}  // namespace prin_sele_detail

TF_PrinSele::TF_PrinSele() : Screen(prin_sele_detail::kScreen) {
  panel().group(QStringLiteral("打印格式")).form({"rPrin1", "rPrin2", "rPrin3"});
  panel().buttons("| btnOK btnCancel");
  command("btnOK").setProperty("main", true);
  on(command("btnOK"), [this] { accept(); });
  setMinimumWidth(320);
}

bool TF_PrinSele::choose(const DocumentFamily& family) {
  choices_ = templateChoices(family);
  const QString now = templateOf(family);
  const std::array inputs{&rPrin1, &rPrin2, &rPrin3};
  for (std::size_t i = 0; i < inputs.size(); ++i) {
    const bool offered = i < choices_.size();
    inputs[i]->setVisible(offered);
    if (!offered) continue;
    inputs[i]->setLabel(words(choices_[i].caption));
    inputs[i]->setChecked(now == QStringView(choices_[i].file) || (i == 0 && choices_.size() == 1));
  }
  if (!showModal()) return false;
  for (std::size_t i = 0; i < choices_.size() && i < inputs.size(); ++i)
    if (inputs[i]->isChecked()) chooseTemplate(family, QStringView(choices_[i].file));
  return true;
}

void TF_PrinSele::showEvent(QShowEvent* event) {
  Screen::showEvent(event);
  // The arrows go on from the form of the last time.
  for (ui::Field* input : {&rPrin1, &rPrin2, &rPrin3})
    if (input->isChecked()) input->focus();
}

bool chooseForm(const DocumentFamily& family) {
  return !asksFormat(family) || ui::screenAs<TF_PrinSele>("F_PrinSele").choose(family);
}

namespace prin_sele_detail {
const ui::Registered<TF_PrinSele> kRegistered{"F_PrinSele"};
}

}  // namespace jxc
