// Pictures of goods: files beside the database, always JPEG.
#include "harness/files.h"
#include "masterdata/screens/goods_camera.h"
#include "masterdata/screens/goods_picture.h"
#include "platform/camera/camera.h"
#include "screens/harness/screen_test.h"

#include <QFile>
#include <QImage>
#include <QLabel>

namespace jxc::test::catalog_picture_test {

class CatalogPictureTest : public ScreenTest {};

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
  writeBytes(file(u"b.jpg"_qs), "no picture");
  EXPECT_THROW(saveGoodsPicture(u"30000001"_qs, file(u"b.jpg"_qs)), std::runtime_error);
  EXPECT_TRUE(QFile::exists(file(u"picture/30000001.jpg"_qs)));

  // A number with a path in it does not lead out of the folder.
  saveGoodsPicture(u"../../x"_qs, file(u"a.png"_qs));
  EXPECT_TRUE(QFile::exists(file(u"picture/_._.._x.jpg"_qs)));
  removeGoodsPicture(u"30000001"_qs);
  EXPECT_FALSE(QFile::exists(file(u"picture/30000001.jpg"_qs)));
}

TEST_F(CatalogPictureTest, WithoutACameraThatIsSaidAndWithOneThePictureIsTaken) {
  if (isCameraConnected()) GTEST_SKIP() << "a camera is connected";
  open("F_Spxxgl_Add",
       [&](ui::Screen& s) { press(s, "Ctrl+T", u"没有找到摄像头，请连接摄像头后再试，或者选择图片文件！"_qs); });

  auto& camera = ui::screenAs<TF_Spxxgl_Cam>("F_Spxxgl_Cam");
  open(camera, [&](ui::Screen& s) {
    EXPECT_TRUE(s.findChild<QLabel*>(u"imageCam"_qs)->text().startsWith(u"没有找到摄像头"_qs));
    EXPECT_FALSE(s.command("btnOK").isEnabled());
    press(s, "F5");
    EXPECT_TRUE(s.isVisible());
    // What the camera of another machine would see.
    QImage frame(640, 480, QImage::Format_RGB32);
    frame.fill(Qt::darkGreen);
    camera.frameCame(frame);
    press(s, "F5");
    EXPECT_FALSE(s.isVisible());
  });
  EXPECT_EQ(QImage(cameraPictureFile()).size(), QSize(640, 480));
  saveGoodsPicture(u"30000009"_qs, cameraPictureFile());
  EXPECT_TRUE(QFile::exists(file(u"picture/30000009.jpg"_qs)));
}

}  // namespace jxc::test::catalog_picture_test
