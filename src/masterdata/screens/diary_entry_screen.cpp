#include "masterdata/screens/diary_entry_screen.h"

#include "core/clock.h"
#include "core/reading.h"

namespace jxc {

DiaryEntryScreen::DiaryEntryScreen(const ui::ScreenSpec& spec) : Screen(spec) {
  on(command("btnOK"), [this] {
    if (!checkFields()) return;
    draft_.date = field("dateRz").text();
    draft_.note = field("tnote").text();
    if (saveEmployeeDiary(draft_, prompt())) accept();
  });
}

bool DiaryEntryScreen::edit(EmployeeDiaryDraft draft) {
  draft_ = std::move(draft);
  return showModal();
}

void DiaryEntryScreen::activate() {
  if (draft_.date.isEmpty()) draft_.date = clock::today();
  field("tuser").setText(lookupValue("select u_name from jxc_user where u_sn=?", draft_.employee));
  field("dateRz").load(draft_.date);
  field("tnote").load(draft_.note);
}

namespace diary_entry_screen_detail {

using ui::FieldKind;

constexpr ui::FieldSpec kEntryFields[] = {
    {"tuser", "员工：", FieldKind::Text, "", 32, ui::ReadOnly},
    {"dateRz", "日期：", FieldKind::Date},
    {"tnote", "内容：", FieldKind::Memo, "jxc_ywyrz.rz_note"},
};
constexpr ui::CommandSpec kEntryCommands[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {.name = "F_Ywyrz_Add",
                                 .title = "增加员工日志",
                                 .fields = kEntryFields,
                                 .commands = kEntryCommands,
                                 .focus = "tnote"};
constexpr ui::ScreenSpec kModi = {.name = "F_Ywyrz_Modi",
                                  .title = "修改员工日志",
                                  .fields = kEntryFields,
                                  .commands = kEntryCommands,
                                  .focus = "tnote"};

struct TF_Ywyrz_Add : DiaryEntryScreen {
  TF_Ywyrz_Add() : DiaryEntryScreen(kAdd) {}
};
struct TF_Ywyrz_Modi : DiaryEntryScreen {
  TF_Ywyrz_Modi() : DiaryEntryScreen(kModi) {}
};

const ui::Registered<TF_Ywyrz_Add> kEntryAdd{"F_Ywyrz_Add"};
const ui::Registered<TF_Ywyrz_Modi> kEntryModi{"F_Ywyrz_Modi"};

}  // namespace diary_entry_screen_detail
}  // namespace jxc
