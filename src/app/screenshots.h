// 屏幕截图: pictures of the main window and of every screen, with demonstration data, without a display.
#pragma once

#include <QString>

namespace jxc {

struct Pictures {
  QString folder;
  QString skin;
  QString account;  // a file; without it a demonstration account set is made in memory
  QString screens;  // a regular expression; empty: all, and the main window
};

/// Logs in and writes a PNG of each page of the main window, of each registered screen, and of each list and chart of
/// an enquiry. Enquiries of a given account set are asked for the twelve months up to today. The exit code of the
/// process.
int takeScreenshots(const Pictures& pictures);

}  // namespace jxc
