// 备份的公共部分: what the two screens of the backup do alike.
#pragma once

#include "maintenance/backups.h"
#include "maintenance/restoring.h"
#include "ui/screen.h"

#include <functional>

class QLabel;

namespace jxc {

/// F5 of a backup screen: stores the settings, copies, tells. False when it was refused or stopped.
bool backUpFrom(ui::Screen& screen, Prompt& prompt, const BackupSettings& settings);
/// F5 of a screen that restores: looks into the file, shows what it holds in `facts`, and lets `restore` ask and write;
/// each has a bar. False: nothing has changed, and it was told why.
bool restoreFrom(ui::Screen& screen, Prompt& prompt, ui::Field& path, QLabel& facts,
                 const std::function<bool(OpenedBackup& backup, const RestoreReports& reports)>& restore);
/// An input of a path is as wide as most of them are long, or as its row.
void showWholePath(const ui::Field& path);
/// The operator chooses a folder for an input.
void chooseBackupFolder(ui::Screen& screen, ui::Field& path);

}  // namespace jxc
