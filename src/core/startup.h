// 启动: the first account set, and how a failure is told.
#pragma once

#include "core/program_directory.h"

#include <QString>
#include <QStringList>

#include <exception>

namespace jxc {

/// On the first start of a program directory, whose `data` folder holds nothing at all, makes the account database with
/// all tables and the catalogue. Never touches what is there: a damaged file, or a missing one beside other data, is
/// left for openAccountDb to report. Returns whether a set was made.
bool createFirstAccountSet();
/// Makes the catalogue of the program directory when it is missing, with the built-in set and the sets whose files are
/// there. Leaves it closed. Returns what its opening found that an operator should read.
QStringList ensureCatalogue();

/// What the operator reads of a failure that no screen caught: the message with its ASCII letters lowered. A message
/// that names the account file is fatal: the program ends after it.
struct FriendlyFailure {
  QString text;
  bool fatal = false;
};
FriendlyFailure friendlyFailure(const std::exception& failure);

}  // namespace jxc
