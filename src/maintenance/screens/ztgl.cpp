// 帐套管理: the list of account sets, and the dialogs that make, change, back up and restore one.
#include "maintenance/account_sets.h"
#include "maintenance/screens/backup_page.h"
#include "ui/file_dialogs.h"
#include "ui/paragraph.h"
#include "ui/progress.h"

#include <QLabel>
#include <QMenu>

#include <optional>

namespace jxc {
namespace ztgl_detail {

using ui::ColumnKind;
using ui::FieldKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"zt_sn", "编号", ColumnKind::Text, 8},          {"zt_name", "帐套名称", ColumnKind::Text, 24},
    {"zt_default", "默认帐套", ColumnKind::Flag, 8}, {"zt_forbid", "是否禁用", ColumnKind::Flag, 8},
    {"place", "数据位置", ColumnKind::Text, 10},     {"zt_note", "备注", ColumnKind::Text, 24},
};
constexpr ui::GridSpec kGrids[] = {{"gridZt", "帐套列表", kColumns, "没有帐套"}};
constexpr ui::CommandSpec kCommands[] = {{"btn_Add", "增加", "F2"},
                                         {"btn_Modi", "修改", "F3"},
                                         {"btn_Backup", "备份恢复", "F6"},
                                         {"btn_Dele", "删除", "Ctrl+D"},
                                         {"btn_Exit", "退出", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Ztgl", .title = "帐套管理", .grids = kGrids, .commands = kCommands, .focus = "gridZt"};

constexpr ui::FieldSpec kEditFields[] = {
    {"tname", "帐套名称：", FieldKind::Text, "", 64},
    {"tnote", "备注：", FieldKind::Text, "", 64},
    {"chkDefault", "默认帐套", FieldKind::Check},
    {"chkForbid", "禁用", FieldKind::Check},
};
constexpr ui::CommandSpec kSave[] = {{"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kAdd = {
    .name = "F_Ztgl_Add", .title = "增加帐套", .fields = kEditFields, .commands = kSave, .focus = "tname"};
constexpr ui::ScreenSpec kModi = {
    .name = "F_Ztgl_Modi", .title = "修改帐套", .fields = kEditFields, .commands = kSave, .focus = "tname"};

constexpr ui::FieldSpec kBackUpFields[] = {
    {"tname", "帐套名称：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tnote", "备注：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tPath", "备份路径：", FieldKind::Text},
};
constexpr ui::FieldSpec kRestoreFields[] = {
    {"tname", "帐套名称：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tnote", "备注：", FieldKind::Text, "", 64, ui::ReadOnly},
    {"tPath", "恢复路径：", FieldKind::Text},
};
constexpr ui::CommandSpec kCopyCommands[] = {
    {"btnBrowse", "浏览", "F4"}, {"btnOK", "确定", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kBackUp = {
    .name = "F_Ztgl_BackUp", .title = "备份帐套", .fields = kBackUpFields, .commands = kCopyCommands, .focus = "tPath"};
constexpr ui::ScreenSpec kRestore = {.name = "F_Ztgl_Restore",
                                     .title = "恢复帐套",
                                     .fields = kRestoreFields,
                                     .commands = kCopyCommands,
                                     .focus = "tPath"};

/// Makes a set, or changes one.
class EditSet : public ui::Screen {
 public:
  explicit EditSet(const ui::ScreenSpec& spec) : Screen(spec) {
    panel().form({"tname", "tnote"}).row("chkDefault chkForbid |").buttons("| btnOK btnCancel");
    showWholePath(field("tname"));  // as wide as where it is shown
    on(command("btnOK"), [this] { saveValue(); });
  }

  /// `set` without an id: a new one. Whether something was saved.
  bool edit(AccountSets& sets, const AccountSet& set) {
    sets_ = &sets;
    set_ = set;
    return showModal();
  }

 protected:
  void activate() override {
    field("tname").load(set_.name);
    field("tnote").load(set_.note);
    field("chkDefault").load(set_.isDefault ? 1 : 0);
    field("chkForbid").load(set_.isForbidden ? 1 : 0);
    field("chkForbid").setEnabled(!set_.isBuiltIn());
  }

 private:
  void saveValue() {
    if (!sets_) return;
    const AccountSetDraft draft{set_.id, field("tname").text(), field("tnote").text(), field("chkDefault").isChecked(),
                                field("chkForbid").isChecked()};
    command("btnOK").setEnabled(false);
    const bool saved = draft.id == 0 ? sets_->add(draft, prompt()) : sets_->modify(draft, prompt());
    command("btnOK").setEnabled(true);
    if (saved) accept();
  }

  AccountSets* sets_ = nullptr;
  AccountSet set_;
};

struct TF_Ztgl_Add : EditSet {
  TF_Ztgl_Add() : EditSet(kAdd) {}
};
struct TF_Ztgl_Modi : EditSet {
  TF_Ztgl_Modi() : EditSet(kModi) {}
};

/// Nobody is to guess at the end of a name which set he writes over; 64 characters have room on a small display.
void showWhole(ui::Field& field, const QString& text) {
  constexpr int frame = 24;
  field.load(text);
  field.widget()->setMinimumWidth(field.widget()->fontMetrics().horizontalAdvance(text) + frame);
}

/// Copies a set away, or from a copy back: the set, and a path on F5.
class CopySet : public ui::Screen {
 public:
  using Screen::Screen;
  bool of(const AccountSet& set) {
    set_ = set;
    return showModal();
  }

 protected:
  void bind(const std::function<QString()>& browse, const std::function<bool()>& run) {
    showWholePath(tPath);
    on(command("btnBrowse"), [this, browse] {
      if (const QString chosen = browse(); !chosen.isEmpty()) tPath.setText(chosen);
    });
    on(command("btnOK"), [this, run] {
      if (run())
        accept();
      else
        tPath.focus();
    });
  }
  void activate() override {
    showWhole(field("tname"), set_.name);
    showWhole(field("tnote"), set_.note);
    tPath.clear();
  }

  ui::Field& tPath = field("tPath");
  AccountSet set_;
};

class TF_Ztgl_BackUp : public CopySet {
 public:
  TF_Ztgl_BackUp() : CopySet(kBackUp) {
    panel().form({"tname", "tnote"}).row("tPath btnBrowse").buttons("| btnOK btnCancel");
    bind([this] { return ui::chooseFolder(this, QStringLiteral("选择备份目录")); },
         [this] {
           return backUpAccountSet(set_, tPath.text(), ui::progressOnDemand(QStringLiteral("正在备份帐套……"), this),
                                   prompt())
               .has_value();
         });
  }
};

class TF_Ztgl_Restore : public CopySet {
 public:
  TF_Ztgl_Restore() : CopySet(kRestore), facts_(ui::paragraph(this, "lFacts")) {
    panel()
        .form({"tname", "tnote"})
        .row("tPath btnBrowse")
        .text(QStringLiteral("按F5先查看备份里有什么，确认以后才恢复；这个帐套现在的数据先另存为“(恢复前)”。"))
        .widget(facts_)
        .stretch()
        .buttons("| btnOK btnCancel");
    tPath.onChanged([this] { facts_->clear(); });
    bind(
        [this] {
          return ui::chooseOpenFile(this, QStringLiteral("选择备份文件"), QStringLiteral("(*.DAT);;(*.mdb);;(*)"));
        },
        [this] {
          return restoreFrom(*this, prompt(), tPath, *facts_,
                             [this](OpenedBackup& backup, const RestoreReports& reports) {
                               return restoreAccountSet(set_, backup, prompt(), reports);
                             });
        });
  }

 protected:
  void activate() override {
    CopySet::activate();
    facts_->clear();
  }

 private:
  QLabel* facts_;
};

class TF_Ztgl : public ui::Screen {
 public:
  TF_Ztgl() : Screen(kScreen), list_(grid("gridZt")) {
    panel().grid("gridZt").buttons("btn_Add btn_Modi btn_Dele btn_Backup | btn_Exit");
    auto* menu = new QMenu(this);
    const auto entry = [&](const char* name, const QString& text, auto work) {
      menu->addAction(text, this, [this, work] { onSet(work); })->setObjectName(QLatin1StringView(name));
    };
    entry("btnBackUp", QStringLiteral("备份帐套(&B)"),
          [](const AccountSet& set) { return ui::screenAs<TF_Ztgl_BackUp>("F_Ztgl_BackUp").of(set); });
    entry("btnRestore", QStringLiteral("恢复帐套(&R)"), [this](const AccountSet& set) {
      return mayRestoreAccountSet(set, prompt()) && ui::screenAs<TF_Ztgl_Restore>("F_Ztgl_Restore").of(set);
    });
    command("btn_Backup").setMenu(menu);
    on(command("btn_Add"), [this] {
      if (sets_ && ui::screenAs<TF_Ztgl_Add>("F_Ztgl_Add").edit(*sets_, {})) refresh(list_.rowCount());
    });
    on(command("btn_Modi"), [this] { modify(); });
    on(command("btn_Dele"),
       [this] { onSet([this](const AccountSet& set) { return sets_->remove(set.id, prompt()); }); });
    list_.onActivated([this] { modify(); });
  }

 protected:
  void activate() override {
    try {
      sets_.emplace();
      for (const QString& remark : sets_->remarks())
        prompt().notice(remark);
    } catch (const std::exception& failure) {
      sets_.reset();
      prompt().notice(QStringLiteral("帐套目录打不开：") + QString::fromUtf8(failure.what()));
    }
    for (const char* each : {"btn_Add", "btn_Modi", "btn_Backup", "btn_Dele"})
      command(each).setEnabled(sets_.has_value());
    refresh(0);
  }

  bool mayLeave() override {
    sets_.reset();
    return true;
  }

 private:
  void refresh(int row) {
    list_.setRows(sets_ ? sets_->rows() : RowSet());
    if (!list_.isEmpty()) list_.selectRow(std::clamp(row, 0, list_.rowCount() - 1));
  }

  /// `work` tells whether it changed something.
  template <class Work>
  void onSet(Work work) {
    const auto row = list_.current();
    if (!sets_ || !row) return;
    const int place = list_.currentRow();
    if (const auto set = sets_->find(row->integer("id")); !set || work(*set)) refresh(place);
  }

  void modify() {
    onSet([this](const AccountSet& set) {
      const bool saved = ui::screenAs<TF_Ztgl_Modi>("F_Ztgl_Modi").edit(*sets_, set);
      sets_->ensureDefault();
      return saved;
    });
  }

  ui::Grid& list_;
  std::optional<AccountSets> sets_;
};

const ui::Registered<TF_Ztgl> kList{"F_Ztgl"};
const ui::Registered<TF_Ztgl_Add> kNew{"F_Ztgl_Add"};
const ui::Registered<TF_Ztgl_Modi> kChange{"F_Ztgl_Modi"};
const ui::Registered<TF_Ztgl_BackUp> kBackUpScreen{"F_Ztgl_BackUp"};
const ui::Registered<TF_Ztgl_Restore> kRestoreScreen{"F_Ztgl_Restore"};

}  // namespace ztgl_detail
}  // namespace jxc
