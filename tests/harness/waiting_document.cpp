#include "harness/waiting_document.h"

#include "core/session.h"
#include "stock/document.h"

namespace jxc::test {

QString waitingDocument(const DocumentFamily& family, const QString& date, Fields head,
                        std::initializer_list<Fields> lines) {
  const QString number = newDocumentNumber(family, date);
  updateRow(family.head,
            insertRow(family.head, {{family.number, number},
                                    {family.date, date},
                                    {family.status, 0},
                                    {family.checker, u""},
                                    {family.checkDate, u""},
                                    {"u_sn", u"100001"},
                                    {"a_name", session().a_name}}),
            head);
  for (const Fields& line : lines)
    updateRow(family.lines, insertRow(family.lines, {{family.number, number}, {"a_name", session().a_name}}), line);
  return number;
}

}  // namespace jxc::test
