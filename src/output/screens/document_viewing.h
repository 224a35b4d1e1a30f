// 查看单据: a document of any kind, known by its number, as its paper shows it.
#pragma once

#include "core/prompt.h"

#include <QString>

class QWidget;

namespace jxc {

/// Shows the paper of a trading or stock document, of a receivable, payable, receipt or payment, or of a cash slip.
/// Tells when a number has none.
void showDocument(const QString& number, QWidget* parent, Prompt& prompt);

}  // namespace jxc
