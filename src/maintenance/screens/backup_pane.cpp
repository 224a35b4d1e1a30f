#include "maintenance/screens/backup_pane.h"

#include "core/archive_look.h"
#include "core/login.h"
#include "core/screens/main_form.h"
#include "ui/display.h"
#include "ui/message_box_prompt.h"
#include "ui/progress.h"
#include "ui/skin.h"

namespace jxc {
namespace backup_pane_detail {

constexpr int kLook = 300;              // ms between two looks at what runs behind
constexpr int kRehearsal = 10 * 60000;  // ms: not in the first minutes of the day, when everybody begins

/// In the middle of a command no copy can begin, nor can its outcome be written down; while an archive is looked into
/// its books stand in the place of the shop's. Both come a moment later.
bool isAtOtherWork() {
  return isCommandAtWork() || isArchiveInUse();
}

}  // namespace backup_pane_detail

BackupPane::BackupPane(QWidget* parent) : QPushButton(parent) {
  setObjectName(QStringLiteral("RzStatusPane_Backup"));
  setProperty("sideCommand", true);
  setFocusPolicy(Qt::NoFocus);
  looking_.setInterval(backup_pane_detail::kLook);
  connect(&looking_, &QTimer::timeout, this, [this] { look(); });
  rehearsing_.setInterval(backup_pane_detail::kRehearsal);
  connect(&rehearsing_, &QTimer::timeout, this, [this] { lookAtRehearsal(); });
  rehearsing_.start();
  mainFormHooks().backupDatabase = [this] { begin(); };
  mainFormHooks().backupOnWayOut = [this] { return wayOut(); };
}

BackupPane::~BackupPane() {
  mainFormHooks().backupDatabase = {};
  mainFormHooks().backupOnWayOut = {};
}

void BackupPane::refresh() {
  const BackupState state = backupState();
  setText(running_     ? QStringLiteral("正在备份 %1%").arg(running_->percent())
          : rehearsal_ ? QStringLiteral("正在试恢复")
                       : state.words());
  QStringList more{state.file, state.failure, state.rehearsalWords()};
  more.removeAll(QString());
  setToolTip(more.join(u'\n'));
  setAccessibleDescription(more.join(u'\n'));
  ui::setLook(*this, "alarming", state.isAlarming() && !running_);
}

void BackupPane::begin() {
  if (running_) return;
  if (backup_pane_detail::isAtOtherWork())
    return QTimer::singleShot(backup_pane_detail::kLook, this, [this] { begin(); });
  const BackupSettings settings = backupSettings();
  if (settings.folder.isEmpty()) return;
  try {
    running_ = std::make_unique<RunningBackup>(settings);
  } catch (const DbError&) {
    return;  // the set was moved away: everything says so
  }
  looking_.start();
  refresh();
}

void BackupPane::look() {
  if (backup_pane_detail::isAtOtherWork()) return;
  try {
    if (running_ && running_->isDone()) {
      const std::unique_ptr<RunningBackup> ended = std::move(running_);
      ended->finish();
    }
    if (rehearsal_ && rehearsal_->isDone()) {
      const std::unique_ptr<Rehearsal> ended = std::move(rehearsal_);
      ended->finish();
    }
  } catch (const DbError&) {
    // It stands in the state, in red.
  }
  if (!running_ && !rehearsal_) looking_.stop();
  refresh();
}

void BackupPane::lookAtRehearsal() {
  if (running_ || rehearsal_ || backup_pane_detail::isAtOtherWork() || !isRehearsalDue()) return;
  rehearsal_ = std::make_unique<Rehearsal>();
  looking_.start();
  refresh();
}

bool BackupPane::wayOut() {
  stop();
  const BackupSettings settings = backupSettings();
  if (settings.folder.isEmpty()) return true;
  QString failure;
  try {
    ui::Progress progress(QStringLiteral("正在备份帐套……"), window());
    backUpNow(settings, progress.report());
  } catch (const DbError& error) {
    failure = error.message();
  }
  return failure.isEmpty() || ui::MessageBoxPrompt(window()).ask(
                                  QStringLiteral("退出时的备份没有写成。\r\n\r\n%1\r\n\r\n仍要退出吗？").arg(failure));
}

void BackupPane::stop() {
  looking_.stop();
  running_.reset();
  rehearsal_.reset();
}

}  // namespace jxc
