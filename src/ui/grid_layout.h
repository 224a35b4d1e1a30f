// 列表布局: the operator arranges the columns of a list and keeps that on this machine, one file a list.
#pragma once

#include <QString>

class QMenu;

namespace jxc::ui {

class Grid;

/// Keeps the columns of a list in Layout/<key>.ini and says so; the folder is made when it is missing.
void saveGridLayout(const QString& key, Grid& view);
/// Takes the kept layout when there is one; its widths are then the operator's, no longer automatic.
void restoreGridLayout(const QString& key, Grid& view);
/// Tells how columns are arranged, and lets them be.
void showLayoutHint(Grid& view);

/// The commands of a list's pop-up menu: `btnRDybj` first explains; once that was confirmed it saves.
void addLayoutCommands(QMenu& menu, Grid& view);

}  // namespace jxc::ui
