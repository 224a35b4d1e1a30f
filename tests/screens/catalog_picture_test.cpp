// Pictures of goods: files beside the database, always JPEG.
#include "core/program_directory.h"
#include "masterdata/screens/goods_picture.h"
#include "screens/harness/screen_test.h"

#include <QFile>
#include <QImage>
#include <QTemporaryDir>

namespace jxc::test {
namespace catalog_picture_test {

class CatalogPictureTest : public ScreenTest {
 protected:
  CatalogPictureTest() { setProgramDirectory(folder_.path()); }
  ~CatalogPictureTest() override { setProgramDirectory({}); }
  QString file(const QString& name) const { return folder_.filePath(name); }
  QTemporaryDir folder_;
};

TEST_F(CatalogPictureTest, AnyPictureBecomesTheJpegOfItsNumber) {
  QImage image(3000, 1000, QImage::Format_ARGB32);
  image.fill(Qt::transparent);
  ASSERT_TRUE(image.save(file(u"a.png"_qs)));
  saveGoodsPicture(u"30000001"_qs, file(u"a.png"_qs));
  const QImage kept(file(u"picture/30000001.jpg"_qs));
  EXPECT_EQ(kept.size(), QSize(2400, 800));               // cut down to what a screen can use
  EXPECT_EQ(kept.pixelColor(10, 10), QColor(Qt::white));  // what shows through is paper
  EXPECT_FALSE(goodsPicture(goodsPictureFile(u"30000001"_qs), {100, 100}).isNull());

  // What is no picture is refused, and the old one stays.
  QFile text(file(u"b.jpg"_qs));
  ASSERT_TRUE(text.open(QIODevice::WriteOnly) && text.write("no picture") > 0);
  text.close();
  EXPECT_THROW(saveGoodsPicture(u"30000001"_qs, file(u"b.jpg"_qs)), std::runtime_error);
  EXPECT_TRUE(QFile::exists(file(u"picture/30000001.jpg"_qs)));

  // A number with a path in it does not lead out of the folder.
  saveGoodsPicture(u"../../x"_qs, file(u"a.png"_qs));
  EXPECT_TRUE(QFile::exists(file(u"picture/_._.._x.jpg"_qs)));
  removeGoodsPicture(u"30000001"_qs);
  EXPECT_FALSE(QFile::exists(file(u"picture/30000001.jpg"_qs)));
}

}  // namespace catalog_picture_test
}  // namespace jxc::test
