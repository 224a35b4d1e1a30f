// 查看档案: for a while the account set in use is a copy from before a closing, which can only be read; the shop's own
// waits and comes back.
#pragma once

#include "engine/database.h"

#include <QString>

#include <memory>

namespace jxc {

class ArchiveLook {
 public:
  /// Opens the copy, to which nothing is ever written. Throws DbError when it is gone, damaged, or of an older version:
  /// nothing has changed then.
  explicit ArchiveLook(const QString& file);
  ~ArchiveLook();
  ArchiveLook(const ArchiveLook&) = delete;
  ArchiveLook& operator=(const ArchiveLook&) = delete;

 private:
  std::unique_ptr<Database> shop_;
};

/// Whether what is in use now is such a copy: no command that writes is offered, no backup is made of it, and the
/// screen lock, which would ask for the passwords of then, waits.
bool isArchiveInUse();
/// Why a command stands in grey meanwhile.
inline constexpr char16_t archiveReason[] = u"结算档案只能查看，不能修改！";

}  // namespace jxc
