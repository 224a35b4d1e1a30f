#include "maintenance/screens/nzjs_archive.h"

#include "core/archive_look.h"
#include "core/text.h"
#include "ui/commands.h"
#include "ui/enquiry_screen.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace jxc {
namespace nzjs_archive_detail {

using ui::ColumnKind;

constexpr ui::ColumnSpec kColumns[] = {
    {"page", "页面", ColumnKind::Text, 14},
    {"caption", "功能", ColumnKind::Text, 22},
    {"reason", "说明", ColumnKind::Text, 36},
};
constexpr ui::GridSpec kGrids[] = {
    {.name = "gridCommands", .caption = "档案中的功能", .columns = kColumns, .empty = "没有功能", .idField = "id"}};
constexpr ui::CommandSpec kCommands[] = {{"btn_Open", "打开", "F5"}, {"btn_Exit", "关闭档案", "Esc"}};
constexpr ui::ScreenSpec kScreen = {
    .name = "F_Nzjs_Archive", .title = "结算档案", .grids = kGrids, .commands = kCommands, .focus = "gridCommands"};

bool isEnquiry(std::string_view screen) {
  return std::ranges::any_of(ui::registeredEnquiries(), [&](const auto* each) { return each->name == screen; });
}

QString pageOf(ui::Page page) {
  const auto all = ui::pages();
  const auto found = std::ranges::find(all, page, &ui::PageDefinition::page);
  return found == all.end() ? u"系统维护"_qs : words(found->caption);
}

}  // namespace nzjs_archive_detail

TF_Nzjs_Archive::TF_Nzjs_Archive() : Screen(nzjs_archive_detail::kScreen) {
  panel()
      .text(QStringLiteral("这是结算以前的全部数据，只能查看、打印和导出；灰色的功能要写入数据，在档案里不能使用。"))
      .grid("gridCommands")
      .buttons("| btn_Open btn_Exit");
  gridCommands.setRowLook(
      [](const Row& row) { return row.text("reason").isEmpty() ? ui::RowLook::Normal : ui::RowLook::Muted; });
  gridCommands.onActivated([this] { openCurrent(); });
  on(command("btn_Open"), [this] { openCurrent(); });
}

void TF_Nzjs_Archive::activate() {
  setWindowTitle(u"结算档案（只读）：结算日期 "_qs + day);
  // Enquiries first; behind them, in grey, what an archive does not offer.
  RowSet rows({"id", "page", "caption", "screen", "reason"});
  std::int64_t id = 0;
  for (const bool looking : {true, false})
    for (const ui::CommandDefinition& each : ui::commands()) {
      if (each.screen.empty() || nzjs_archive_detail::isEnquiry(each.screen) != looking) continue;
      rows.addInteger(++id);
      rows.addText(nzjs_archive_detail::pageOf(each.page).toStdString());
      rows.addText(each.caption);
      rows.addText(each.screen);
      rows.addText(looking ? std::string() : QString::fromUtf16(archiveReason).toStdString());
    }
  gridCommands.setRows(std::move(rows));
  gridCommands.selectRow(0);
}

void TF_Nzjs_Archive::openCurrent() {
  const auto row = gridCommands.current();
  if (!row) return;
  if (const QString reason = row->text("reason"); !reason.isEmpty()) return prompt().notice(reason);
  ui::screenNamed(row->text("screen").toStdString()).showModal();
}

void showArchive(const QString& file, const QString& day, Prompt& prompt) {
  if (!QFileInfo::exists(file)) return prompt.notice(u"档案文件不在原来的地方："_qs + QDir::toNativeSeparators(file));
  try {
    const ArchiveLook looking(file);
    auto& screen = ui::screenAs<TF_Nzjs_Archive>("F_Nzjs_Archive");
    screen.day = day;
    screen.showModal();
  } catch (const DbError& error) {
    prompt.notice(error.message());
  }
}

namespace nzjs_archive_detail {
const ui::Registered<TF_Nzjs_Archive> kRegistered{"F_Nzjs_Archive"};
}

}  // namespace jxc
