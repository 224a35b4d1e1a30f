// 密码校验值: what is kept of a password: slow to try, and different for two who chose the same.
#pragma once

#include <QString>
#include <QStringView>

namespace jxc {

/// What an operator typed as it counts: character for character, but for blanks at both ends, which nobody sees in a
/// masked input. The one rule for every input of a password.
QStringView passwordIn(QStringView typed);

/// Argon2id with a salt of its own, as text that names its cost; about a tenth of a second, 64 MB meanwhile. Empty for
/// an empty password. Throws std::runtime_error when the memory is not there.
QString passwordHash(QStringView typed);
/// Of the hashes made from now on. Only a test wants the least.
enum class HashCost { Usual, Least };
void setHashCost(HashCost cost);
/// Whether this was hashed. An empty hash is matched by an empty password alone.
bool isPasswordOf(const QString& hash, QStringView typed);

}  // namespace jxc
