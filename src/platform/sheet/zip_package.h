// 压缩包: the parts of an .xlsx file, read as streams with a limit, because a small file may hold endless zeros.
#pragma once

#include "platform/sheet/sheet.h"

#include <QIODevice>
#include <QString>
#include <QStringList>

#include <memory>

namespace jxc {

class ZipPackage {
 public:
  static constexpr qint64 kMostBytes = qint64{800} << 20;  // of one part, unpacked

  /// One part, unpacked as it is read. Reading ends early, and `isWhole` is false, when the part is damaged, longer
  /// than allowed, or no XML (no ">" for megabytes). Only one may be open at a time.
  class Part : public QIODevice {
   public:
    Part(void* file, qint64 most);
    ~Part() override;
    bool isSequential() const override { return true; }
    bool atEnd() const override { return ended_ && QIODevice::atEnd(); }
    /// After the end: everything was read and its check sum is right.
    bool isWhole();
    bool isTooLong() const { return tooLong_; }

   protected:
    qint64 readData(char* data, qint64 wanted) override;
    qint64 writeData(const char*, qint64) override { return -1; }

   private:
    void* file_;
    qint64 left_;
    qint64 sinceTag_ = 0;
    bool ended_ = false;
    bool damaged_ = false;
    bool tooLong_ = false;
    bool closed_ = false;
  };

  /// Throws SheetError when it is no such file.
  explicit ZipPackage(const QString& path);
  ~ZipPackage();
  ZipPackage(const ZipPackage&) = delete;
  ZipPackage& operator=(const ZipPackage&) = delete;

  QStringList partNames() const;
  bool has(const QString& name) const;
  /// Names are compared without regard to case. Null when there is no such part.
  std::unique_ptr<Part> open(const QString& name, qint64 most) const;

 private:
  void* file_;
};

}  // namespace jxc
