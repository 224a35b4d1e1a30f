#include "output/screens/prin_sele.h"

#include "core/fillers.h"
#include "output/templates.h"

#include <array>
#include <vector>

namespace jxc {
namespace prin_sele_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kFields[] = {
    {"rPrin1", "销售单", FieldKind::Radio},
    {"rPrin2", "销售单(不含售价)", FieldKind::Radio},
    {"rPrin3", "销售单(含零售价)", FieldKind::Radio},
    {"rPrin4", "本店设计的格式：", FieldKind::Radio},
    {"comOwn", "", FieldKind::Combo},
};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_PrinSele", .title = "选择打印格式", .fields = kFields, .commands = kCommands, .focus = "rPrin1"};

}  // namespace prin_sele_detail

TF_PrinSele::TF_PrinSele() : Screen(prin_sele_detail::kScreen) {
  panel().group(QStringLiteral("打印格式")).form({"rPrin1", "rPrin2", "rPrin3"}).row("rPrin4 comOwn |");
  panel().buttons("| btnOK btnCancel");
  on(command("btnOK"), [this] { accept(); });
  comOwn.onChanged([this] {
    if (comOwn.hasFocus()) rPrin4.setChecked(true);
  });
  comOwn.widget()->setAccessibleName(QStringLiteral("本店设计的格式"));
  setMinimumWidth(320);
}

bool TF_PrinSele::choose(const DocumentFamily& family) {
  const std::vector<OfferedForm> forms = templateChoices(family);
  const QString now = templateOf(family);
  std::vector<ListItem> own;
  const std::array inputs{&rPrin1, &rPrin2, &rPrin3};
  std::size_t offered = 0;
  QString files[inputs.size()];
  for (const OfferedForm& form : forms) {
    if (form.isOwn) {
      own.push_back({form.caption, form.file});
    } else if (offered < inputs.size()) {
      inputs[offered]->setLabel(form.caption);
      inputs[offered]->setChecked(now == templateInUse(form.file) || (offered == 0 && forms.size() == 1));
      files[offered++] = form.file;
    }
  }
  for (std::size_t i = 0; i < inputs.size(); ++i)
    inputs[i]->setVisible(i < offered);
  rPrin4.setVisible(!own.empty());
  comOwn.setVisible(!own.empty());
  comOwn.setItems(own);
  comOwn.setKey(now);
  const bool isOwnNow = comOwn.key() == now && !own.empty();
  if (isOwnNow) rPrin4.setChecked(true);
  if (!isOwnNow && !own.empty()) comOwn.setIndex(0);
  if (!showModal()) return false;
  for (std::size_t i = 0; i < offered; ++i)
    if (inputs[i]->isChecked()) chooseTemplate(family, files[i]);
  if (rPrin4.isChecked() && !own.empty()) chooseTemplate(family, comOwn.key());
  return true;
}

void TF_PrinSele::showEvent(QShowEvent* event) {
  Screen::showEvent(event);
  // The arrows go on from the form of the last time.
  for (ui::Field* input : {&rPrin1, &rPrin2, &rPrin3, &rPrin4})
    if (input->isChecked()) input->focus();
}

bool chooseForm(const DocumentFamily& family) {
  return !asksFormat(family) || ui::screenAs<TF_PrinSele>("F_PrinSele").choose(family);
}

namespace prin_sele_detail {
const ui::Registered<TF_PrinSele> kRegistered{"F_PrinSele"};
}

}  // namespace jxc
