// 商品销售分析: what another screen asks for, drawn over months, days and years.
#pragma once

#include "ui/enquiry_screen.h"

namespace jxc {

class TF_Spxstj_Fx : public ui::EnquiryScreen {
 public:
  TF_Spxstj_Fx();
  /// All of what is asked for but its period; `words` say what it is narrowed to.
  void analyse(const Criteria& criteria, const QString& words);

 protected:
  void complete(Criteria& criteria) const override;

 private:
  Criteria asked_;
};

}  // namespace jxc
