#include "core/list_audit.h"

#include "core/text.h"
#include "engine/server.h"

#include <QStringList>

#include <algorithm>
#include <stdexcept>

namespace jxc {
namespace list_audit_detail {

constexpr qsizetype kMostTold = 10;  // more do not fit a screen

/// Keeps what the rows tell. Questions are asked as they come.
class CollectingPrompt final : public Prompt {
 public:
  CollectingPrompt(Prompt& asked, const QString& deed) : asked_(asked), deed_(deed) {}
  void startDocument(const QString& number) { number_ = number; }
  void notice(const QString& text) override {
    told_ << (text.contains(number_) ? text : u"单据"_qs + number_ + u"：\r\n\r\n"_qs + text);
  }
  bool ask(const QString& text) override { return asked_.ask(text); }
  Answer askOrCancel(const QString& text) override { return asked_.askOrCancel(text); }

  void tell(const QString& summary) const {
    QStringList texts = told_.mid(0, kMostTold);
    if (!summary.isEmpty()) texts.prepend(summary);
    if (told_.size() > kMostTold)
      texts << u"…… 另有%1条提示，请单独%2这些单据。"_qs.arg(told_.size() - kMostTold).arg(deed_);
    if (!texts.isEmpty()) asked_.notice(texts.join(u"\r\n\r\n"_qs));
  }

 private:
  Prompt& asked_;
  const QString deed_;
  QString number_;
  QStringList told_;
};

/// Not what the next row would meet too.
bool isOfTheRow(const std::runtime_error& failure) {
  using enum DbError::Kind;
  if (dynamic_cast<const ConnectionLost*>(&failure) != nullptr) return false;
  const auto* inDatabase = dynamic_cast<const DbError*>(&failure);
  return !inDatabase || (inDatabase->kind() != Busy && inDatabase->kind() != File && inDatabase->kind() != Full);
}

}  // namespace list_audit_detail

std::optional<int> auditEach(const ListAudit& list, Prompt& prompt) {
  using namespace list_audit_detail;
  if (!prompt.ask(list.question)) return {};
  std::vector<ListedDocument> rows = list.waiting;
  std::stable_sort(rows.begin(), rows.end(),
                   [](const ListedDocument& a, const ListedDocument& b) { return a.id < b.id; });
  int audited = 0;
  CollectingPrompt collecting(prompt, list.deed);
  const auto tell = [&](const QString& how) {
    collecting.tell(
        list.listed
            ? u"%1%2，共 %3 个单据，\r\n\r\n%1成功 %4 个单据。"_qs.arg(list.deed, how).arg(*list.listed).arg(audited)
            : QString());
  };
  for (const ListedDocument& row : rows) {
    collecting.startDocument(row.number);
    try {
      if (list.audit(row, collecting)) ++audited;
    } catch (const std::runtime_error& failure) {
      if (!isOfTheRow(failure)) {
        tell(u"中断"_qs);
        throw;
      }
      collecting.notice(QString::fromUtf8(failure.what()));
    }
  }
  tell(u"完成"_qs);
  return audited;
}

}  // namespace jxc
