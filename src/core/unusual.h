// 不寻常的单据: figures and days that are possible and hardly ever meant, asked about once a document.
#pragma once

#include "core/prompt.h"

#include <QString>

namespace jxc {

/// What a document is about to be saved with.
struct FiguresOfDocument {
  double pieces = 0, yuan = 0;  // the largest of a line, either sign
  QString date;
  QString newest;     // date of the newest document beside it; empty: there is none
  QString lastEntry;  // of the log, by lastLogEntry
};

/// More than this of anything is a bar code that went into the wrong input.
inline constexpr double mostUsual = 1'000'000;
/// Older than the newest document by more days than this is a slip of the month or the year.
inline constexpr int usualDaysBack = 31;

/// Asks, in one question, whether all of it is meant. A day after today is asked about where it is chosen, and not
/// once more. True: there is nothing unusual, or the operator stands by it.
bool confirmUnusual(const FiguresOfDocument& document, Prompt& prompt);

/// The moment of the last entry of the log: where this machine's clock is behind it, it went back.
inline constexpr const char* lastLogEntry = "select max(log_time) from jxc_log";

}  // namespace jxc
