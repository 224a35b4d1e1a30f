// 商品图片: pictures of goods are files beside the database: picture/<number>.jpg.
#pragma once

#include <QPixmap>
#include <QString>

namespace jxc {

/// File of an article's picture; it need not be there.
QString goodsPictureFile(const QString& number);
/// Reads a bmp, gif, png or jpg and keeps it as the article's JPEG. Throws std::runtime_error with a text for the
/// operator when it is no picture or cannot be written; an old picture stays then.
void saveGoodsPicture(const QString& number, const QString& file);
void removeGoodsPicture(const QString& number);
/// The picture in at most this size; null when there is none.
QPixmap goodsPicture(const QString& file, const QSize& room);

}  // namespace jxc
