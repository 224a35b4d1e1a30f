// 库存盘点: what makes a count too late: movement of counted goods behind its date.
#pragma once

#include "stock/document.h"

#include <QString>

#include <optional>
#include <vector>

namespace jxc::stock_count {

/// Refusal at save: a later count of the warehouse, or later movement of counted goods.
std::optional<QString> tooLateToSave(const QString& number, const QString& warehouse, const QString& date);
/// Refusal at audit of a list: the count is void once counted goods moved behind its date.
std::optional<QString> overtaken(const QString& number);
/// Refusal of a cancel: counted goods moved after the count was audited.
std::optional<QString> movedSinceAudit(const QString& number);

/// `auditEach` of counts; those that were overtaken are passed over and told.
std::optional<int> auditAll(const std::vector<ListedDocument>& documents, Prompt& prompt);

}  // namespace jxc::stock_count
