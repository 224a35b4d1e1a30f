#include "core/each_prompt.h"

#include "core/text.h"

namespace jxc {

std::optional<std::vector<EachAnswer>> askEach(Prompt& prompt, const EachQuestion& question) {
  if (auto* each = dynamic_cast<EachPrompt*>(&prompt)) return each->askEach(question);
  QString text = question.text + u"\r\n"_qs;
  for (const QStringList& item : question.items) {
    QStringList cells;
    for (qsizetype i = 0; i < item.size(); ++i)
      cells << (i < 2 ? item[i] : question.headings[i] + u' ' + item[i]);
    text += u"\r\n"_qs + cells.join(u"  "_qs);
  }
  text += u"\r\n\r\n是："_qs + question.first + u"\r\n否："_qs + question.second;
  const Answer answer = prompt.askOrCancel(text);
  if (answer == Answer::Cancel) return {};
  return std::vector(question.items.size(), answer == Answer::Yes ? EachAnswer::First : EachAnswer::Second);
}

}  // namespace jxc
