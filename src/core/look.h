// 界面外观: which look an operator has chosen.
#pragma once

#include <QString>

namespace jxc {

/// Keeps the operator's choice in `jxc_skin`; his row must be there (operatorSkin makes it).
void saveOperatorSkin(const QString& name);

}  // namespace jxc
