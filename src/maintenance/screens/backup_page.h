// 备份的公共部分: what the two screens of the backup do alike.
#pragma once

#include "maintenance/backups.h"
#include "ui/screen.h"

namespace jxc {

/// F5 of a backup screen: stores the settings, copies, tells. False when it was refused or stopped.
bool backUpFrom(ui::Screen& screen, Prompt& prompt, const BackupSettings& settings);
/// An input of a path is as wide as most of them are long.
void showWholePath(const ui::Field& path);
/// The operator chooses a folder for an input.
void chooseBackupFolder(ui::Screen& screen, ui::Field& path);

}  // namespace jxc
