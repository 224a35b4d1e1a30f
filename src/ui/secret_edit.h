// 密码输入框: a masked line that keeps what is typed in a buffer of its own, which is wiped.
#pragma once

#include <QLineEdit>

#include <array>

namespace jxc::ui {

/// The line itself holds a stand-in for each character from the moment on that the character was typed: a text that
/// grows is copied again and again, and none of these copies can be wiped. It is empty again by `clear`,
/// and when its window closes: screens are kept.
class SecretEdit : public QLineEdit {
 public:
  explicit SecretEdit(QWidget* parent = nullptr);
  ~SecretEdit() override;

  /// A copy, for whoever wipes it.
  QString secret() const;

 protected:
  void hideEvent(QHideEvent* event) override;

 private:
  void takeIn(const QString& shown);

  static constexpr int kMost = 128;
  std::array<char16_t, kMost> typed_{};
  int length_ = 0;
  bool isReplacing_ = false;
};

}  // namespace jxc::ui
