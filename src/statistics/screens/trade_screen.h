// 购销统计屏幕: an enquiry of purchases or sales that is asked for more than its inputs: who made the documents, and
// which.
#pragma once

#include "stock/screens/document_search.h"
#include "ui/enquiry_screen.h"

namespace jxc {

inline constexpr ui::EnquiryCommand furtherConditions{.name = "btn_Cx", .caption = "高级查找", .key = "F3"};

class TradeScreen : public ui::EnquiryScreen {
 public:
  /// Of an enquiry with the command `furtherConditions`.
  explicit TradeScreen(const ui::EnquirySpec& spec) : EnquiryScreen(spec) {
    on(command("btn_Cx"), [this] {
      if (more_.ask(command("btn_Cx"))) search();
    });
  }

 protected:
  void complete(Criteria& criteria) const override {
    criteria.employee = more_.asked().employee;
    criteria.document = more_.asked().document;
  }

 private:
  MoreConditions more_{"F_Spcgtj_Cx", u"高级查找"};
};

}  // namespace jxc
