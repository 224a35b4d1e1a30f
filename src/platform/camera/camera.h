// 摄像头: pictures from a camera of this machine, for the catalogue. Nothing of it is made before it is asked for.
#pragma once

#include <QImage>
#include <QString>

#include <functional>
#include <memory>

namespace jxc {

/// Whether a camera is connected, without waking the multimedia service on a machine that has none.
bool isCameraConnected();

/// The first camera of the machine, running as long as the object lives. Hooks come in the window's thread.
class Camera {
 public:
  /// `frame` gets some ten pictures a second; `failed` gets a text for the operator when the camera cannot be used,
  /// and no frame comes then.
  Camera(std::function<void(const QImage&)> frame, std::function<void(const QString&)> failed);
  ~Camera();
  Camera(const Camera&) = delete;
  Camera& operator=(const Camera&) = delete;

 private:
  struct Session;
  std::unique_ptr<Session> session_;
};

}  // namespace jxc
