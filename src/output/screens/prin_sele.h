// 选择打印格式: the form that a document prints in, chosen before the print.
#pragma once

#include "output/printed_documents.h"
#include "ui/screen.h"

namespace jxc {

class TF_PrinSele : public ui::Screen {
 public:
  TF_PrinSele();
  ui::Field& rPrin1 = field("rPrin1");
  ui::Field& rPrin2 = field("rPrin2");
  ui::Field& rPrin3 = field("rPrin3");
  ui::Field& rPrin4 = field("rPrin4");
  ui::Field& comOwn = field("comOwn");  // designs that the shop has made itself

  /// Lets the operator choose; the choice stays in the session. False: there will be no print.
  bool choose(const DocumentFamily& family);

 protected:
  void showEvent(QShowEvent* event) override;
};

/// Asks for the form where the document's parameter wants it. False: there will be no print.
bool chooseForm(const DocumentFamily& family);

}  // namespace jxc
