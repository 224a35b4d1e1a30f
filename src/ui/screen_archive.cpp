// A screen over a copy of the account set from before a closing: what writes is not offered.
#include "core/archive_look.h"
#include "core/text.h"
#include "ui/screen.h"

#include <algorithm>
#include <array>

namespace jxc::ui {

bool Screen::onlyLooks(const CommandSpec& command) const {
  constexpr std::array looking{"btn_Prin", "btnPrin", "btn_Export", "btnExport", "btnSearch", "btn_Search", "btnDate"};
  // More conditions, and the document or the lines behind a row.
  constexpr std::array<std::string_view, 6> asking{"btn_Cx",     "btn_Cx1",  "btn_Cx2",
                                                   "btn_ChaKan", "btn_Ckmx", "btn_Ckyd"};
  return command.key == "Esc" || std::ranges::find(asking, command.name) != asking.end() ||
         std::ranges::any_of(looking, [&](std::string_view name) { return command.name.starts_with(name); });
}

/// The title says so, and what writes stands in grey with the reason.
void Screen::closeWhatWrites() {
  constexpr auto mark = "closedByArchive";
  const bool reads = isArchiveInUse();
  const QString suffix = QStringLiteral("（结算档案，只读）");
  if (const QString title = windowTitle(); reads && !title.contains(QStringLiteral("只读")))
    setWindowTitle(title + suffix);
  else if (!reads && title.endsWith(suffix))
    setWindowTitle(title.chopped(suffix.size()));
  for (const CommandSpec& spec : spec_.commands) {
    QPushButton& button = command(spec.name);
    if (reads && !onlyLooks(spec)) {
      button.setEnabled(false);
      button.setToolTip(QString::fromUtf16(archiveReason));
      button.setProperty(mark, true);
    } else if (!reads && button.property(mark).toBool()) {
      button.setEnabled(true);
      button.setToolTip(words(spec.tooltip));
      button.setProperty(mark, false);
    }
  }
}

}  // namespace jxc::ui
