// 帐套目录: the file that lists the account sets, data/codeinfo.dll, beside the account database.
#pragma once

#include <QString>
#include <QStringList>

namespace jxc {

/// Makes the catalogue when the file is missing, with its folder, the built-in account set (`100001`, jxc.mdb, the
/// default) and the sets whose files stand beside it; a catalogue that is already there stays as it is. It is there
/// whole or not at all; half of one that an older program left is put aside under another name. Throws DbError when it
/// cannot be written or the file is no database of this program. Returns what an operator should read of that.
QStringList ensureCatalogueFile(const QString& path);

}  // namespace jxc
