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
  CollectingPrompt(Prompt& asked, const ListAudit& list) : asked_(asked), list_(list) {}
  void startDocument(const QString& number) { number_ = number; }
  void notice(const QString& text) override {
    told_ << (text.contains(number_) ? text : u"单据"_qs + number_ + u"：\r\n\r\n"_qs + text);
  }
  bool ask(const QString& text) override {
    goesOn(100);  // no bar lies over a question
    return asked_.ask(text);
  }
  Answer askOrCancel(const QString& text) override {
    goesOn(100);
    return asked_.askOrCancel(text);
  }
  bool goesOn(std::size_t percent) const { return !list_.progress || list_.progress(static_cast<int>(percent)); }

  void tell(const QString& summary) const {
    QStringList texts = told_.mid(0, kMostTold);
    if (!summary.isEmpty()) texts.prepend(summary);
    if (told_.size() > kMostTold)
      texts << u"…… 另有%1条提示，请单独%2这些单据。"_qs.arg(told_.size() - kMostTold).arg(list_.deed);
    if (!texts.isEmpty()) asked_.notice(texts.join(u"\r\n\r\n"_qs));
  }

 private:
  Prompt& asked_;
  const ListAudit& list_;
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
  int audited = 0, done = 0;
  CollectingPrompt collecting(prompt, list);
  bool stopped = false;
  const auto tell = [&](const QString& how) {
    collecting.goesOn(100);
    const qsizetype listed = list.listed.value_or(static_cast<qsizetype>(rows.size()));
    collecting.tell(
        list.listed || stopped
            ? u"%1%2，共 %3 个单据，\r\n\r\n%1成功 %4 个单据。"_qs.arg(list.deed, how).arg(listed).arg(audited)
            : QString());
    prompt.say(u"%1 张已%2，%3 张没有成功"_qs.arg(audited).arg(list.deed).arg(done - audited));
  };
  for (std::size_t i = 0; i < rows.size(); ++i) {
    stopped = !collecting.goesOn(i * 100 / rows.size());
    if (stopped) break;
    const ListedDocument& row = rows[i];
    ++done;
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
  tell(stopped ? u"已停止"_qs : u"完成"_qs);
  return audited;
}

}  // namespace jxc
