#include "platform/sheet/zip_package.h"

#include <QFile>

#include <algorithm>
#include <cstring>
#include <minizip/unzip.h>

namespace jxc {
namespace zip_package_detail {

constexpr qint64 kLongestTag = qint64{16} << 20;  // a cell holds 32,767 characters; nothing honest comes near
constexpr int kMostParts = 10000;
constexpr int kLongestName = 1024;

}  // namespace zip_package_detail

ZipPackage::Part::Part(void* file, qint64 most) : file_(file), left_(most) {
  open(QIODevice::ReadOnly);
}

ZipPackage::Part::~Part() {
  if (!closed_) unzCloseCurrentFile(file_);
}

bool ZipPackage::Part::isWhole() {
  if (!closed_) {
    closed_ = true;
    if (unzCloseCurrentFile(file_) != UNZ_OK) damaged_ = true;
  }
  return ended_ && !damaged_ && !tooLong_;
}

qint64 ZipPackage::Part::readData(char* data, qint64 wanted) {
  if (ended_ || closed_ || wanted <= 0) return ended_ ? -1 : 0;
  const int count = unzReadCurrentFile(file_, data, static_cast<unsigned>(std::min(wanted, qint64{1} << 20)));
  if (count <= 0) {
    ended_ = true;
    damaged_ = count < 0;
    return -1;
  }
  left_ -= count;
  const void* tag = memrchr(data, '>', static_cast<std::size_t>(count));
  sinceTag_ = tag ? data + count - static_cast<const char*>(tag) : sinceTag_ + count;
  if (left_ < 0 || sinceTag_ > zip_package_detail::kLongestTag) {
    ended_ = tooLong_ = true;
    return -1;
  }
  return count;
}

ZipPackage::ZipPackage(const QString& path) : file_(unzOpen64(QFile::encodeName(path).constData())) {
  if (!file_) throw SheetError(QStringLiteral("表格文件已损坏，不能打开"));
}

ZipPackage::~ZipPackage() {
  unzClose(file_);
}

QStringList ZipPackage::partNames() const {
  using namespace zip_package_detail;
  QStringList names;
  char name[kLongestName];
  for (int error = unzGoToFirstFile(file_); error == UNZ_OK && names.size() < kMostParts;
       error = unzGoToNextFile(file_)) {
    if (unzGetCurrentFileInfo64(file_, nullptr, name, sizeof name, nullptr, 0, nullptr, 0) != UNZ_OK) break;
    name[kLongestName - 1] = 0;
    names << QString::fromUtf8(name);
  }
  return names;
}

bool ZipPackage::has(const QString& name) const {
  constexpr int kAnyCase = 2;
  return unzLocateFile(file_, name.toUtf8().constData(), kAnyCase) == UNZ_OK;
}

std::unique_ptr<ZipPackage::Part> ZipPackage::open(const QString& name, qint64 most) const {
  if (!has(name)) return nullptr;
  unz_file_info64 info{};
  unzGetCurrentFileInfo64(file_, &info, nullptr, 0, nullptr, 0, nullptr, 0);
  if (info.flag & 1U) throw SheetError(QStringLiteral("表格文件有密码，请先用表格软件去掉密码再打开"));
  if (unzOpenCurrentFile(file_) != UNZ_OK) throw SheetError(QStringLiteral("表格文件已损坏，不能打开"));
  return std::make_unique<Part>(file_, most);
}

}  // namespace jxc
