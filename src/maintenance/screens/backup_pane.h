// 备份栏: in the status bar, when the last good backup was made; and the backups that run behind the window.
#pragma once

#include "maintenance/backups.h"

#include <QPushButton>
#include <QTimer>

#include <memory>

namespace jxc {

/// Does what the window's timer and its way out ask for (`mainFormHooks()`): a backup that runs behind the window, and
/// one that the way out waits for. Once a week it rehearses the last good one. Red when something is wrong.
class BackupPane : public QPushButton {
 public:
  explicit BackupPane(QWidget* parent);
  ~BackupPane() override;

  /// Reads again how the backups stand.
  void refresh();
  /// A backup behind the window; nothing while one runs, or without a folder.
  void begin();
  /// One that is waited for; false when the operator would rather stay, because it failed.
  bool wayOut();
  /// Nothing runs any more, half a backup is thrown away: before the account set becomes another one.
  void stop();

 private:
  void look();
  void lookAtRehearsal();

  std::unique_ptr<RunningBackup> running_;
  std::unique_ptr<Rehearsal> rehearsal_;
  QTimer looking_, rehearsing_;
};

}  // namespace jxc
