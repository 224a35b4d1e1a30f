// 单据高级查询: what a list of documents is asked for beside its inputs: goods that stand on them, who made them, and
// of a transfer which end the warehouse is.
#pragma once

#include "core/enquiry.h"
#include "ui/screen.h"

namespace jxc {

class DocumentSearch : public ui::Screen {
 public:
  /// Shows what was asked for last, and takes what is asked for now: `employee`, `group` (goods) and `boxes`. False: it
  /// was left without.
  bool ask(Criteria& criteria);

 protected:
  /// Places the inputs in these rows.
  DocumentSearch(const ui::ScreenSpec& spec, std::span<const std::string_view> rows);
  void activate() override;

 private:
  Criteria asked_;
};

}  // namespace jxc
