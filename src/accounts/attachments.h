// 合同附件: the files of contracts, in folders of the program's own or on a server, each under a name that nobody
// chose.
#pragma once

#include "masterdata/partner_side.h"

#include <QString>

#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>

namespace jxc::attachments {

/// `ht_path` of a file that lies on a server.
inline constexpr const char16_t* kOnServer = u"远程FTP服务器";

/// Where a new attachment goes.
enum class Keeper : std::uint8_t { Folder, Server };

/// How far a file is that is removed beside the window.
enum class Leaving : std::uint8_t {
  Going,  // or not begun, or the server was away, or it lies on another station: ask again
  Gone,
  Kept  // the server said no, which the log tells
};

/// Of a transfer, 0 to 100; false stops it. Called in the caller's thread, many times a second while a server is waited
/// for: a window stays alive by it. A file in a folder is copied a megabyte at a time.
using Progress = std::function<bool(int percent)>;

/// Why a file cannot be taken, fetched or removed, in words for the operator.
class AttachmentError : public std::runtime_error {
 public:
  explicit AttachmentError(const QString& message, bool leavesPart = false)
      : std::runtime_error(message.toStdString()), leavesPart_(leavesPart) {}
  /// Whether a part of it may lie where the file was to go.
  bool leavesPart() const { return leavesPart_; }

 private:
  bool leavesPart_;
};

/// The operator stopped it.
class AttachmentStopped : public AttachmentError {
 public:
  explicit AttachmentStopped(bool leavesPart = false) : AttachmentError(QStringLiteral("传输已取消！"), leavesPart) {}
};

/// Where an attachment lies, as it stands in the row of its contract.
struct Place {
  QString folder;  // ht_path: "ghsht/" or "khht/" below the program directory, or kOnServer; of older sets a path of
                   // some machine
  QString stored;  // ht_fujian: its name there
  QString shown;   // ht_fjname: the name that it came with
  const PartnerSide* side = &supplierSide;  // ht_type: on a server the folder follows from it
};

/// Where a file will be kept, under a new name. The shown name is cut to the 64 characters that it may have, its ending
/// kept. Throws AttachmentError: no file, a folder, empty, too large, not to be read.
Place placeFor(const PartnerSide& side, const QString& file, Keeper keeper = Keeper::Folder);
/// Copies it there. Throws AttachmentError: not to be read any more, changed meanwhile, no room, what the server said.
void take(const QString& file, const Place& place, const Progress& progress = {});
/// Path of the file on this machine, in its folder: the stored one, or of rows of older sets the one under its shown
/// name; empty when neither is there, and for one on a server.
QString pathOf(const Place& place);
/// Path of a file that can be opened: the one in its folder, or a copy from the server, to be read only, in a folder
/// that nobody else can look into and that goes with the program. Throws AttachmentError.
QString fetch(const Place& place, const Progress& progress = {});
/// Removes a stored file; never one under its shown name, and nothing outside of the two folders of either keeper. Why
/// it is still there, in words; nothing when it is gone. Where several stations share the books, one in a folder that
/// is not there is taken for that of another one.
std::optional<QString> remove(const Place& place, const Progress& progress = {});
/// The same, for whoever cannot wait: a file on a server is removed beside the window. Whoever asks again learns what
/// came of it, and begins anew where the server was not reached.
Leaving removeBeside(const Place& place);

}  // namespace jxc::attachments
