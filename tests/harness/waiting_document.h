// 待审单据: a waiting document of any family, its head and lines written as bare rows.
#pragma once

#include "core/statements.h"
#include "stock/document_family.h"

#include <QString>

#include <initializer_list>

namespace jxc::test {

using Fields = std::initializer_list<Field>;

/// What every family has is filled in (number, date "yyyy-MM-dd", state, operator); `head` and each of `lines` hold
/// what the family's own tables have beside it. Nothing is checked or computed. Returns its number.
QString waitingDocument(const DocumentFamily& family, const QString& date, Fields head,
                        std::initializer_list<Fields> lines);

}  // namespace jxc::test
