#include "masterdata/screens/goods_camera.h"

#include "core/program_directory.h"
#include "platform/camera/camera.h"

#include <QDir>
#include <QLabel>

namespace jxc {
namespace goods_camera_detail {

constexpr ui::CommandSpec kCommands[] = {{"btnOK", "拍照", "F5"}, {"btnCancel", "取消", "Esc"}};
constexpr ui::ScreenSpec kScreen = {.name = "F_Spxxgl_Cam", .title = "摄像头拍照", .commands = kCommands};

}  // namespace goods_camera_detail

QString cameraPictureFile() {
  return programPath(QStringLiteral("picture/jxc.jpg"));
}

TF_Spxxgl_Cam::TF_Spxxgl_Cam() : Screen(goods_camera_detail::kScreen), view_(new QLabel(this)) {
  view_->setObjectName(QStringLiteral("imageCam"));
  view_->setAccessibleName(QStringLiteral("摄像头画面"));
  view_->setAlignment(Qt::AlignCenter);
  view_->setFrameShape(QFrame::Box);
  view_->setWordWrap(true);
  view_->setMinimumSize(fontMetrics().averageCharWidth() * 64, fontMetrics().height() * 20);
  panel().widget(view_, 1).buttons("| btnOK btnCancel");
  on(btnOK, [this] { btnOKClick(); });
}

TF_Spxxgl_Cam::~TF_Spxxgl_Cam() = default;

QString TF_Spxxgl_Cam::shoot() {
  taken_.clear();
  showModal();
  return taken_;
}

void TF_Spxxgl_Cam::activate() {
  last_ = {};
  btnOK.setEnabled(false);
  view_->setText(QStringLiteral("正在打开摄像头……"));
  camera_ = std::make_unique<Camera>([this](const QImage& image) { frameCame(image); },
                                     [this](const QString& reason) { cameraFailed(reason); });
}

// The camera is for others too, and its light should not burn all day.
void TF_Spxxgl_Cam::hideEvent(QHideEvent* event) {
  camera_.reset();
  Screen::hideEvent(event);
}

void TF_Spxxgl_Cam::frameCame(const QImage& image) {
  last_ = image;
  btnOK.setEnabled(true);
  view_->setPixmap(
      QPixmap::fromImage(image.scaled(view_->size() - QSize(4, 4), Qt::KeepAspectRatio, Qt::SmoothTransformation)));
}

void TF_Spxxgl_Cam::cameraFailed(const QString& reason) {
  last_ = {};
  btnOK.setEnabled(false);
  view_->setText(reason);
}

void TF_Spxxgl_Cam::btnOKClick() {
  if (last_.isNull()) return;
  const QString file = cameraPictureFile();
  QDir().mkpath(QFileInfo(file).path());
  if (!last_.save(file, "JPG", 92)) {
    prompt().notice(QStringLiteral("图片不能保存：") + file);
    return;
  }
  taken_ = file;
  accept();
}

namespace goods_camera_detail {
const ui::Registered<TF_Spxxgl_Cam> kRegistered{"F_Spxxgl_Cam"};
}

}  // namespace jxc
