// What follows a document that was saved: its quiet line, its audit from the panel of new ones.
#include "core/habits.h"
#include "core/text.h"
#include "stock/screens/document_screen.h"

#include <QTabWidget>

namespace jxc {

void DocumentScreen::tellSaved(const SaveResult& saved) {
  lastSaved_ = saved.number;
  QString text = (saved.audited ? u"已保存并审核 "_qs : u"已保存 "_qs) + saved.number;
  if (!saved.audited) text += u" · F6审核"_qs;
  text += u" · Ctrl+P打印"_qs;
  if (isHabit(kSavesAtOnce)) text += u" · Ctrl+F5恢复保存前的询问"_qs;
  say(text);
}

/// The document that was saved last, from the panel of new ones and back to it.
void DocumentScreen::auditSaved() {
  const QString number = lastSaved_;
  panels_.tabs()->setCurrentIndex(kWaitingPanel);
  showAllWaiting();
  refreshWaiting(number);
  if (waitingNumber() == number) auditCurrent();
  panels_.tabs()->setCurrentIndex(kDraftPanel);
}

}  // namespace jxc
