// 进度: long work in the window's own thread, with a bar and a way to stop it.
#pragma once

#include <QString>

#include <functional>
#include <memory>

class QProgressDialog;
class QWidget;

namespace jxc::ui {

/// Comes up when the work takes longer than a blink. Give it to work that reports: `progress.report()` is the
/// `std::function<bool(int percent)>` that rules and the database layer take; false means stop.
class Progress {
 public:
  explicit Progress(const QString& title, QWidget* parent = nullptr, bool mayCancel = true);
  ~Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;

  /// 0 to 100; returns false once the operator has pressed 取消.
  bool step(int percent);
  void setText(const QString& text);
  std::function<bool(int)> report() {
    return [this](int percent) { return step(percent); };
  }

 private:
  std::unique_ptr<QProgressDialog> dialog_;
};

/// For a rule that asks before it works and tells afterwards: the bar comes with the first report and goes with 100, so
/// that it never lies over a question.
std::function<bool(int)> progressOnDemand(const QString& title, QWidget* parent);
/// The same for a rule that says what it is doing.
std::function<bool(int percent, const QString& doing)> progressInWords(const QString& title, QWidget* parent);

}  // namespace jxc::ui
