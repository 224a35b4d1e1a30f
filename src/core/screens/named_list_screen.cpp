#include "core/screens/named_list_screen.h"

#include "ui/schema_width.h"

#include <QPushButton>

#include <algorithm>

namespace jxc {
namespace named_list_screen_detail {

constexpr ui::FieldSpec kFields[] = {{"tname", "名称：", ui::FieldKind::Text, "", 64}};
constexpr ui::CommandSpec kCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Name", .title = "名称", .fields = kFields, .commands = kCommands, .focus = "tname"};

bool has(const ui::ScreenSpec& spec, std::string_view command) {
  return std::any_of(spec.commands.begin(), spec.commands.end(), [&](const auto& c) { return c.name == command; });
}

}  // namespace named_list_screen_detail

NameScreen::NameScreen() : Screen(named_list_screen_detail::kScreen) {
  on(command("btnOK"), [this] {
    if (save_ && save_(field("tname").text(), prompt())) accept();
  });
  field("tname").onEnter([this] {
    command("btnOK").click();
    return true;
  });
}

bool NameScreen::edit(const QString& title, const QString& label, int width, const QString& name, Save save) {
  setWindowTitle(title);
  field("tname").setLabel(label);
  field("tname").setMaxLength(width);
  field("tname").load(name);
  save_ = std::move(save);
  const bool done = showModal();
  save_ = {};
  return done;
}

NamedListScreen::NamedListScreen(const ui::ScreenSpec& spec, const NamedList& list, const QString& noun)
    : NamedListScreen(spec, list, noun, [&list](const QString&) { return namedListStatement(list); }) {}

NamedListScreen::NamedListScreen(const ui::ScreenSpec& spec, const NamedList& list, const QString& noun, Query query)
    : ListScreen(spec, std::move(query)), words_(list), noun_(noun) {
  using named_list_screen_detail::has;
  if (has(spec, "btnAdd")) adding("btnAdd", [this] { return editWord(0); });
  if (has(spec, "btnModi")) {
    row("btnModi", [this](std::int64_t id) { return editWord(id); });
    rowActivated("btnModi");
  }
  if (has(spec, "btnDele")) row("btnDele", [this](std::int64_t id) { return deleteNamed(words_, id, prompt()); });
}

bool NamedListScreen::editWord(std::int64_t id) {
  const int width = ui::columnWidth(std::string(words_.table) + '.' + std::string(words_.name));
  const auto save = [this, id](const QString& typed, Prompt& prompt) { return saveNamed(words_, id, typed, prompt); };
  return ui::screenAs<NameScreen>("F_Name").edit((id == 0 ? QStringLiteral("增加") : QStringLiteral("修改")) + noun_,
                                                 noun_ + QStringLiteral("名称："), width, nameOf(words_, id), save);
}

namespace named_list_screen_detail {
const ui::Registered<NameScreen> kName{"F_Name"};
}

}  // namespace jxc
