// 操作员密码: how they are kept, compared and replaced; who fails too often waits.
#pragma once

#include "core/refusal.h"
#include "engine/database.h"

#include <QString>

namespace jxc {

/// Whether the operator with this number has to type one.
bool hasPassword(Database& database, const QString& number);
/// Whether any operator of the set has.
bool hasAnyPassword(Database& database);
/// Whether this is his password; changes nothing, so it does not count failures either.
bool isHisPassword(Database& database, const QString& number, const QString& typed);

/// Keeps a hash (core/password_hash.h) as the password of the operator; an empty one: he has none. Part of the caller's
/// transaction: make the hash before it begins.
void keepPassword(const QString& number, const QString& hash);
/// Forgets what is kept of an operator who is deleted.
void forgetPassword(const QString& number);

/// The one door: whether the operator with this number typed his password. A wrong one is told as `wrong`, counted and
/// logged; from the fifth in a row on he waits before each further attempt, at every station, also after a restart.
/// What an older build had kept is replaced by a hash of what was typed.
bool admits(const QString& number, const QString& typed, const Refusal& wrong, Prompt& prompt);

/// Replaces every password that stands there as it was typed by its hash. An older set begins its upgrade with it, so
/// that the copy made beforehand has none either.
void hashOldPasswords(Database& database);
/// Takes what stood there before out of the files of a server, which keep it behind the rows. May be done again.
void forgetPlainPasswords(Database& database);

}  // namespace jxc
