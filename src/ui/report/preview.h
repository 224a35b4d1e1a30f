// 打印预览: the screen that shows prepared pages: zoom, pages, thumbnails, search, print, save.
#pragma once

#include "platform/report/pages.h"
#include "ui/report/page_view.h"
#include "ui/screen.h"

class QListView;

namespace jxc::ui {

class TF_Preview : public Screen {
 public:
  TF_Preview();
  ~TF_Preview() override;

  void setPages(const report::Pages& pages);
  PageView& view() { return *view_; }

 protected:
  void activate() override;
  void showEvent(QShowEvent* event) override;
  bool keyPressed(QKeyEvent& event) override;
  bool mayLeave() override { return true; }  // what was looked for

 private:
  class Thumbnails;
  void showPosition();
  void showZoom();
  void takeZoom();
  void takePage();
  void search();
  void nextHit(int step);
  void print(bool ask);
  void save(bool asPdf);
  void showFaults();

  PageView* view_;
  QListView* list_;
  Thumbnails* thumbnails_;
};

/// Shows the pages until the window is left.
void showPreview(const report::Pages& pages);

}  // namespace jxc::ui
