// 单据高级查询: what a list of documents is asked for beside its inputs: goods that stand on them, who made them, and
// of a transfer which end the warehouse is; of sums over documents, which ones by number or remark.
#pragma once

#include "core/enquiry.h"
#include "ui/screen.h"

class QPushButton;

namespace jxc {

/// Such a form and what it was left with last.
class MoreConditions {
 public:
  explicit MoreConditions(std::string_view form, QStringView word = u"高级查询") : form_(form), word_(word) {}
  /// Opens the form; its command says from now on whether something is restricted. False: it was left without.
  bool ask(QPushButton& command);
  Criteria& asked() { return asked_; }
  const Criteria& asked() const { return asked_; }

 private:
  std::string_view form_;
  QStringView word_;  // of its command
  Criteria asked_;
};

class DocumentSearch : public ui::Screen {
 public:
  /// Shows what was asked for last, and takes what is asked for now: `employee`, `group` (goods), `document`,
  /// `goodsClass` and `boxes`. False: it was left without.
  bool ask(Criteria& criteria);

 protected:
  /// Each of its inputs in a row of its own.
  explicit DocumentSearch(const ui::ScreenSpec& spec);
  void activate() override;

 private:
  Criteria asked_;
};

}  // namespace jxc
