// 屏幕截图: pictures of the main window and of every screen, with demonstration data, without a display.
#pragma once

#include "app/demonstration.h"

#include <QString>

namespace jxc {

struct Pictures {
  QString folder;
  QString skin;
  QString account;  // a file; without it a demonstration account set of that size is made in memory
  Demonstration size = Demonstration::Usual;
  QString screens;  // a regular expression; empty: all, and the main window
};

/// Logs in and writes a PNG of each page of the main window, of each registered screen with each of its panels, and of
/// each list and chart of an enquiry, as large as the display allows. Enquiries of a given account set are asked for
/// the twelve months up to today. Words that a button, box or label has no room for are told on the error output. The
/// exit code of the process.
int takeScreenshots(const Pictures& pictures);

}  // namespace jxc
