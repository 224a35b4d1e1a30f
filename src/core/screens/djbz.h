// 常用备注: the list of standard remarks, kept in order here and taken from here into documents.
#pragma once

#include "core/screens/named_list_screen.h"

#include <QString>

#include <optional>

namespace jxc {

class TF_Djbz : public NamedListScreen {
 public:
  TF_Djbz();
  /// Lets the operator choose a remark and counts its use; nothing when he leaves without.
  std::optional<QString> pick();

 protected:
  void activate() override;

 private:
  void take();
  bool picking_ = false;
  QString taken_;
};

}  // namespace jxc
