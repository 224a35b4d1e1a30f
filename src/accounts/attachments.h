// 合同附件: the files of contracts in folders of the program's own, each under a name that nobody chose.
#pragma once

#include "masterdata/partner_side.h"

#include <QString>

#include <stdexcept>

namespace jxc::attachments {

/// `ht_path` of a file that lies on a server.
inline constexpr const char16_t* kOnServer = u"远程FTP服务器";

/// Why a file cannot be taken, in words for the operator.
class AttachmentError : public std::runtime_error {
 public:
  explicit AttachmentError(const QString& message) : std::runtime_error(message.toStdString()) {}
};

/// Where an attachment lies, as it stands in the row of its contract.
struct Place {
  QString folder;  // ht_path: "ghsht/" or "khht/" below the program directory; of older sets a path of some machine
  QString stored;  // ht_fujian: its name there
  QString shown;   // ht_fjname: the name that it came with
};

/// Copies a file into the folder of a side, under a new name. The shown name is cut to the 64 characters that it may
/// have, its ending kept. Throws AttachmentError: no file, a folder, empty, not to be read, no room.
Place take(const PartnerSide& side, const QString& file);
/// Path of the file on this machine: the stored one, or of rows of older sets the one under its shown name; empty when
/// neither is there.
QString pathOf(const Place& place);
/// Removes a stored file; never one under its shown name, and nothing outside of the two folders. False: it is still
/// there.
bool remove(const Place& place);

}  // namespace jxc::attachments
