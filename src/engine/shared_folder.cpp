#include "engine/shared_folder.h"

#include <QFile>

#include <sys/stat.h>

namespace jxc {

bool isSharedFolder(const QString& folder) {
  struct stat found {};
  constexpr mode_t sharing = S_ISGID | S_IWGRP;
  return ::stat(QFile::encodeName(folder).constData(), &found) == 0 && (found.st_mode & sharing) == sharing;
}

}  // namespace jxc
