// 帐套目录: the file that lists the account sets, data/codeinfo.dll, beside the account database.
#pragma once

#include <QString>
#include <QStringList>

namespace jxc {

/// Makes the catalogue with its built-in account set (`100001`, jxc.mdb, the default) when the file is missing, with
/// its folder; a catalogue that is already there stays as it is. Throws DbError when it cannot be written or the file
/// is no database of this program. Returns what its opening found that an operator should read.
QStringList ensureCatalogueFile(const QString& path);

}  // namespace jxc
