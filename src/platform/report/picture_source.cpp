#include "platform/report/band_block.h"

#include <QBuffer>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>

namespace jxc::report {

namespace picture_source_detail {

/// Whether it is a picture, by its first bytes: pictures are read when they are painted.
bool isReadable(const PictureSource& source) {
  if (source.drawing) return true;
  if (source.bytes.isEmpty()) return QImageReader(source.file).canRead();
  QBuffer buffer;
  buffer.setData(source.bytes);
  buffer.open(QIODevice::ReadOnly);
  return QImageReader(&buffer).canRead();
}

/// Whether a picture lies below the program directory, in which the folder of pictures is. A template may come from
/// anywhere, and shall not print what lies elsewhere on the machine.
bool isBelow(const QString& file, const QString& pictureFolder) {
  if (pictureFolder.isEmpty()) return true;
  const QString program = QFileInfo(QFileInfo(pictureFolder).path()).canonicalFilePath();
  return QFileInfo(file).canonicalFilePath().startsWith(program + u'/');
}

}  // namespace picture_source_detail

/// -1 when there is none: goods without a picture are nothing out of the ordinary.
int BandMaker::pictureIndex(const QString& content, QString& fault) {
  const auto known = pictures_.constFind(content);
  if (known != pictures_.constEnd()) {
    if (*known == -2) fault = QStringLiteral("图片无法读取");
    return *known;
  }
  PictureSource source;
  if (content.startsWith(u"data:")) {
    const qsizetype comma = content.indexOf(u',');
    source.bytes = QByteArray::fromBase64(QStringView(content).mid(comma + 1).toLatin1());
  } else if (constexpr QStringView kDrawing = u"drawing:"; options_.drawings && content.startsWith(kDrawing)) {
    const auto found = options_.drawings->find(content.mid(kDrawing.size()).toLower());
    if (found != options_.drawings->end()) source.drawing = found->second;
  } else {
    QString name = content;
    name.replace(u'\\', u'/');
    const QString file = QDir(options_.pictureFolder).filePath(name);
    if (picture_source_detail::isBelow(file, options_.pictureFolder)) source.file = file;
  }
  int index = -1;
  if (source.drawing || !source.bytes.isEmpty() || QFileInfo(source.file).isFile()) {
    if (picture_source_detail::isReadable(source)) {
      index = static_cast<int>(data_.pictures.size());
      data_.pictures.push_back(std::move(source));
    } else {
      index = -2;
      fault = QStringLiteral("图片无法读取");
    }
  }
  pictures_.insert(content, index);
  return index;
}

}  // namespace jxc::report
