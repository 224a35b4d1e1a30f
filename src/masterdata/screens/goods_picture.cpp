#include "masterdata/screens/goods_picture.h"

#include "core/program_directory.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QImageReader>
#include <QPainter>
#include <QSaveFile>

#include <stdexcept>

namespace jxc {
namespace goods_picture_detail {

constexpr int kLongestSide = 2400;  // a photograph of a camera is cut down to what a screen and a label can use

[[noreturn]] void refuse(const QString& text) {
  throw std::runtime_error(text.toStdString());
}

}  // namespace goods_picture_detail

QString goodsPictureFile(const QString& number) {
  // A number is typed by hand: it must not lead out of the folder.
  QString name = number;
  for (QChar& c : name) {
    if (QStringView(u"/\\:*?\"<>|").contains(c) || c < u' ') c = u'_';
  }
  if (name.startsWith(u'.')) name[0] = u'_';
  return programPath(QStringLiteral("picture/") + name + QStringLiteral(".jpg"));
}

void saveGoodsPicture(const QString& number, const QString& file) {
  using namespace goods_picture_detail;
  QImageReader reader(file);
  reader.setAutoTransform(true);
  const QSize size = reader.size();
  if (size.width() > kLongestSide || size.height() > kLongestSide) {
    reader.setScaledSize(size.scaled(kLongestSide, kLongestSide, Qt::KeepAspectRatio));
  }
  const QImage read = reader.read();
  if (read.isNull()) refuse(QStringLiteral("图片文件不能读取，请选择其他图片！"));
  // JPEG knows no transparency: what shows through is white paper.
  QImage image(read.size(), QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter(&image).drawImage(0, 0, read);

  const QString target = goodsPictureFile(number);
  QDir().mkpath(programPath(QStringLiteral("picture")));
  QSaveFile out(target);
  if (!out.open(QIODevice::WriteOnly) || !image.save(&out, "JPG", 88) || !out.commit()) {
    refuse(QStringLiteral("图片不能保存：") + out.errorString());
  }
}

void removeGoodsPicture(const QString& number) {
  QFile::remove(goodsPictureFile(number));
}

QPixmap goodsPicture(const QString& file, const QSize& room) {
  if (file.isEmpty() || !QFile::exists(file)) return {};
  QImageReader reader(file);
  reader.setAutoTransform(true);
  const QImage image = reader.read();
  if (image.isNull()) return {};
  return QPixmap::fromImage(image.scaled(room, Qt::KeepAspectRatio, Qt::SmoothTransformation));
}

}  // namespace jxc
