// 拍照: takes the picture of an article with the camera of the machine.
#pragma once

#include "ui/screen.h"

#include <QImage>

#include <memory>

class QLabel;

namespace jxc {

class Camera;

class TF_Spxxgl_Cam : public ui::Screen {
 public:
  TF_Spxxgl_Cam();
  ~TF_Spxxgl_Cam() override;
  /// File of the picture that the operator took; empty when he took none. The caller removes it once it is used.
  QString shoot();

  /// What the camera sees, and what it has to say when it sees nothing.
  void frameCame(const QImage& image);
  void cameraFailed(const QString& reason);

 protected:
  void activate() override;
  void hideEvent(QHideEvent* event) override;

 private:
  void btnOKClick();
  QPushButton& btnOK = command("btnOK");
  QLabel* view_;
  std::unique_ptr<Camera> camera_;
  QImage last_;
  QString taken_;
};

/// Where a picture of the camera waits until the article is saved: picture/jxc.jpg.
QString cameraPictureFile();

}  // namespace jxc
