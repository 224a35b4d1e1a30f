// 密码询问: a password that a command asks for, typed into an input that keeps nothing of it.
#pragma once

#include "ui/screen.h"

#include <optional>

namespace jxc::ui {

class SecretScreen : public Screen {
 public:
  explicit SecretScreen(const QString& question);
  /// Nothing: the operator left. For whoever wipes it.
  std::optional<QString> ask();

 protected:
  bool mayLeave() override { return true; }  // nothing is lost

 private:
  std::optional<QString> typed_;
};

}  // namespace jxc::ui
