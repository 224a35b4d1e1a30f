#include "platform/camera/camera.h"

#include <QCamera>
#include <QCameraDevice>
#include <QDir>
#include <QElapsedTimer>
#include <QMediaCaptureSession>
#include <QMediaDevices>
#include <QVideoFrame>
#include <QVideoSink>

namespace jxc {
namespace camera_detail {

constexpr qint64 kBetweenFrames = 90;  // ms; a still picture needs no more

QString noCamera() {
  return QStringLiteral("没有找到摄像头，请连接摄像头后再试，或者选择图片文件！");
}

}  // namespace camera_detail

bool isCameraConnected() {
#ifdef Q_OS_LINUX
  // The multimedia service takes a second to start and ends the program on a machine without its plug-ins: it is not
  // asked where the system itself knows of no camera.
  if (QDir(QStringLiteral("/dev")).entryList({QStringLiteral("video*")}, QDir::System).isEmpty()) return false;
#endif
  return !QMediaDevices::videoInputs().isEmpty();
}

struct Camera::Session {
  explicit Session(const QCameraDevice& device) : camera(device) {
    capture.setCamera(&camera);
    capture.setVideoSink(&sink);
    sinceFrame.start();
  }
  // The camera goes first, the session that it feeds last.
  QMediaCaptureSession capture;
  QVideoSink sink;
  QCamera camera;
  QElapsedTimer sinceFrame;
};

Camera::Camera(std::function<void(const QImage&)> frame, std::function<void(const QString&)> failed) {
  using namespace camera_detail;
  if (!isCameraConnected()) {
    failed(noCamera());
    return;
  }
  session_ = std::make_unique<Session>(QMediaDevices::defaultVideoInput());
  auto* session = session_.get();
  QObject::connect(&session->sink, &QVideoSink::videoFrameChanged, &session->sink,
                   [session, frame = std::move(frame)](const QVideoFrame& taken) {
                     if (session->sinceFrame.elapsed() < kBetweenFrames) return;
                     session->sinceFrame.restart();
                     const QImage image = taken.toImage();
                     if (!image.isNull()) frame(image);
                   });
  QObject::connect(&session->camera, &QCamera::errorOccurred, &session->sink,
                   [failed = std::move(failed)](QCamera::Error, const QString& reason) {
                     failed(QStringLiteral("摄像头不能使用：") + reason);
                   });
  session->camera.start();
}

Camera::~Camera() {
  if (session_) session_->camera.stop();
}

}  // namespace jxc
