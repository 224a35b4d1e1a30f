#include "core/refusal.h"

namespace jxc {

void Prompt::refuse(const Refusal& refusal) {
  notice(refusal.text);
}

}  // namespace jxc
